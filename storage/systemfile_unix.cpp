#include "storage/systemfile.h"

#include "storage/systemerror.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace tarvel4 {

namespace fs = std::filesystem;

namespace {

/** A path as the standard library takes it, byte for byte what Qt hands to the system. */
fs::path native(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

} // namespace

bool SystemFile::isTaken(const QString &path)
{
    std::error_code error;
    return fs::exists(fs::symlink_status(native(path), error));
}

bool SystemFile::isSame(const QString &path, const QString &other)
{
    std::error_code error;
    return fs::equivalent(native(path), native(other), error);
}

Outcome SystemFile::makeFolder(const QString &path)
{
    std::error_code error;
    if (fs::create_directory(native(path), error))
        return {};
    if (!error)
        return {Outcome::Code::AlreadyExists, path, {}, {}};
    return Outcome::ofSystemError(error.default_error_condition().value(), path);
}

Outcome SystemFile::makeFolders(const QString &path)
{
    std::error_code error;
    fs::create_directories(native(path), error);
    if (!error)
        return {};
    return Outcome::ofSystemError(error.default_error_condition().value(), path);
}

bool SystemFile::removeEmptyFolder(const QString &path)
{
    std::error_code error;
    return fs::remove(native(path), error);
}

Outcome SystemFile::removeFile(const QString &path)
{
    SystemError::presumeFailedMedium();
    return SystemError::outcomeOf(QFile::remove(path) || !QFileInfo::exists(path), path);
}

void SystemFile::copyPermissions(const QString &source, const QString &target)
{
    // A card that knows no permissions refuses them; the copy is good all the same.
    std::error_code ignored;
    const fs::file_status status = fs::status(native(source), ignored);
    fs::permissions(native(target), status.permissions(), ignored);
}

} // namespace tarvel4
