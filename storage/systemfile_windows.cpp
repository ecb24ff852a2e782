#include "storage/systemfile.h"

#include "storage/systemerror.h"
#include "storage/windowshandle.h"
#include "storage/writepermission.h"

#include <QFile>

namespace tarvel4 {

namespace {

bool readIdentity(const QString &path, BY_HANDLE_FILE_INFORMATION &identity)
{
    const Handle file(openShared(longPath(path), 0, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
    return file.isOpen() && GetFileInformationByHandle(file.get(), &identity) != 0;
}

} // namespace

bool SystemFile::isTaken(const QString &path)
{
    return GetFileAttributesW(wide(longPath(path))) != INVALID_FILE_ATTRIBUTES;
}

bool SystemFile::isSame(const QString &path, const QString &other)
{
    BY_HANDLE_FILE_INFORMATION one = {};
    BY_HANDLE_FILE_INFORMATION two = {};
    return readIdentity(path, one) && readIdentity(other, two)
        && one.dwVolumeSerialNumber == two.dwVolumeSerialNumber
        && one.nFileIndexHigh == two.nFileIndexHigh && one.nFileIndexLow == two.nFileIndexLow;
}

Outcome SystemFile::makeFolder(const QString &path)
{
    return SystemError::outcomeOf(CreateDirectoryW(wide(longPath(path)), nullptr) != 0, path);
}

Outcome SystemFile::makeFolders(const QString &path)
{
    return SystemError::outcomeOf(QDir().mkpath(path), path);
}

bool SystemFile::removeEmptyFolder(const QString &path)
{
    return RemoveDirectoryW(wide(longPath(path))) != 0;
}

Outcome SystemFile::removeFile(const QString &path)
{
    const WritePermission permission(path); // what is read-only can't be removed
    const auto remove = [&path] { return DeleteFileW(wide(longPath(path))) != 0; };
    return SystemError::outcomeOf(untilFree(path, remove) || !QFileInfo::exists(path), path);
}

void SystemFile::copyPermissions(const QString &source, const QString &target)
{
    QFile::setPermissions(target, QFile::permissions(source));
}

} // namespace tarvel4
