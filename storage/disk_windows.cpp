#include "storage/disk.h"

#include "storage/systemerror.h"
#include "storage/windowshandle.h"
#include "storage/writepermission.h"

#include <QDir>
#include <QFile>
#include <QFileDevice>
#include <QFileInfo>
#include <QHash>
#include <QVector>

#include <array>
#include <optional>

#include <io.h>

namespace tarvel4 {

using SystemError::outcomeOf;

namespace {

Outcome::Code codeOf(DWORD error, bool isWriting)
{
    constexpr DWORD diskQuotaExceeded = 1295; // not in every compiler's headers
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
        return Outcome::Code::NotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_PRIVILEGE_NOT_HELD:
        return isWriting ? Outcome::Code::WriteDenied : Outcome::Code::ReadDenied;
    case ERROR_WRITE_PROTECT:
        return Outcome::Code::ReadOnlyVolume;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case diskQuotaExceeded:
        return Outcome::Code::NoRoom;
    case ERROR_FILE_TOO_LARGE:
        return Outcome::Code::TooLarge;
    case ERROR_FILENAME_EXCED_RANGE:
        return Outcome::Code::NameTooLong;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return Outcome::Code::AlreadyExists;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_BUSY:
        return Outcome::Code::InUse;
    default:
        return Outcome::Code::MediumFailed;
    }
}

/** Some file systems have nothing to flush for a volume or a folder, and say so. */
bool hasNothingToFlush(DWORD error)
{
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED
        || error == ERROR_INVALID_PARAMETER;
}

Outcome flushFile(const QString &path)
{
    const WritePermission permission(path); // what is read-only can't be opened to be flushed
    HANDLE opened = INVALID_HANDLE_VALUE;
    untilFree(path, [&] {
        opened = openShared(longPath(path), GENERIC_WRITE, OPEN_EXISTING);
        return opened != INVALID_HANDLE_VALUE;
    });
    const Handle file(opened);
    return outcomeOf(file.isOpen() && FlushFileBuffers(file.get()) != 0, path);
}

Outcome flushFolder(const QString &folder)
{
    const Handle handle(
        openShared(longPath(folder), GENERIC_WRITE, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
    if (!handle.isOpen())
        return outcomeOf(false, folder);
    return outcomeOf(FlushFileBuffers(handle.get()) != 0 || hasNothingToFlush(GetLastError()),
                     folder);
}

/** Where the volume of a path is mounted, with a backslash at its end: "C:\", or a folder. */
QString mountPointOf(const QString &path)
{
    const QString absolute = longPath(path);
    QVector<wchar_t> buffer(absolute.size() + MAX_PATH);
    if (!GetVolumePathNameW(wide(absolute), buffer.data(), static_cast<DWORD>(buffer.size())))
        return {};
    const QString mountPoint = QString::fromWCharArray(buffer.constData());
    const bool isDrive =
        mountPoint.startsWith(longPathPrefix) && mountPoint.mid(5, 1) == QLatin1String(":");
    return isDrive ? mountPoint.mid(longPathPrefix.size()) : mountPoint;
}

/** The name by which the volume itself is opened; empty where it has none, as on the network. */
QString deviceOf(const QString &mountPoint)
{
    constexpr int driveSize = 3;
    if (mountPoint.size() == driveSize && mountPoint.at(1) == QLatin1Char(':'))
        return QLatin1String("\\\\.\\") + mountPoint.left(2);
    std::array<wchar_t, MAX_PATH> name{};
    if (!GetVolumeNameForVolumeMountPointW(wide(mountPoint), name.data(),
                                           static_cast<DWORD>(name.size())))
        return {};
    const QString device = QString::fromWCharArray(name.data());
    return device.left(device.size() - 1);
}

/** Flushes all files and names of a volume; nothing where the system does not allow that, which it
 * does to few users. */
std::optional<Outcome> flushVolume(const QString &mountPoint)
{
    const QString device = deviceOf(mountPoint);
    if (device.isEmpty())
        return {};
    const Handle volume(openShared(device, GENERIC_WRITE, OPEN_EXISTING));
    if (!volume.isOpen())
        return {};
    if (FlushFileBuffers(volume.get()))
        return Outcome();
    const DWORD error = GetLastError();
    if (error == ERROR_ACCESS_DENIED || hasNothingToFlush(error))
        return {};
    return outcomeOf(false, mountPoint);
}

/** Waits until the names in these folders are on the medium. */
Outcome flushFolders(const QStringList &folders)
{
    Outcome outcome;
    QHash<QString, std::optional<Outcome>> volumes;
    for (const QString &folder : folders) {
        const QString mountPoint = mountPointOf(folder);
        auto volume = volumes.find(mountPoint);
        if (volume == volumes.end())
            volume = volumes.insert(mountPoint, flushVolume(mountPoint));
        Outcome flushed = volume->has_value() ? **volume : flushFolder(folder);
        if (flushed && !QFileInfo(folder).isDir())
            flushed = {Outcome::Code::NotFound, folder, {}, {}};
        if (outcome)
            outcome = flushed;
    }
    return outcome;
}

/** Opens \a file by its name, which it keeps, after a call whose error the system tells. */
Outcome openAs(QFile &file, DWORD disposition)
{
    const QString path = file.fileName();
    if (const Handle handle(openShared(longPath(path), GENERIC_WRITE, disposition));
        !handle.isOpen()) {
        Outcome denied = outcomeOf(false, path);
        if (disposition != CREATE_NEW && QFileInfo(path).isDir())
            denied.code = Outcome::Code::NotAFile;
        return denied;
    }
    SystemError::presumeFailedMedium();
    return outcomeOf(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered), path);
}

} // namespace

void SystemError::presumeFullDisk()
{
    SetLastError(ERROR_DISK_FULL);
}

void SystemError::presumeFailedMedium()
{
    SetLastError(ERROR_IO_DEVICE);
}

void SystemError::presumeDenied()
{
    SetLastError(ERROR_ACCESS_DENIED);
}

Outcome SystemError::outcomeOf(bool isDone, const QString &path, bool isWriting)
{
    if (isDone)
        return {Outcome::Code::Done, path, {}, {}};
    const DWORD error = GetLastError();
    const Outcome::Code code = codeOf(error, isWriting);
    QString detail;
    if (code == Outcome::Code::MediumFailed)
        detail = qt_error_string(static_cast<int>(error));
    else if (code == Outcome::Code::ReadOnlyVolume)
        detail = Outcome::volumeNameOf(path);
    return {code, path, detail, {}, static_cast<int>(error)};
}

Outcome Disk::openForWriting(QFile &file)
{
    const QString path = file.fileName();
    if (QFileInfo(path).isSymLink() && !remove(path))
        return {Outcome::Code::LinkOutOfMemory, path, {}, {}};
    return openAs(file, OPEN_ALWAYS);
}

Outcome Disk::createNew(QFile &file)
{
    return openAs(file, CREATE_NEW);
}

Outcome Disk::copyRange(QFileDevice &from, QFileDevice &to, qint64 size)
{
    return copyBlocks(from, to, size);
}

Outcome Disk::reserve(QFileDevice &file, qint64 size)
{
    return growWithZeros(file, size);
}

Outcome Disk::sync(QFileDevice &file)
{
    if (!file.flush())
        return outcomeOf(false, file.fileName());
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()));
    return outcomeOf(FlushFileBuffers(handle) != 0, file.fileName());
}

Outcome Disk::syncAll(const QStringList &paths)
{
    Outcome outcome;
    QStringList folders;
    for (const QString &path : paths) {
        const QFileInfo info(path);
        folders.append(info.isDir() ? info.absoluteFilePath() : info.absolutePath());
        if (info.isSymLink() && info.isFile())
            folders.append(info.canonicalPath());
        if (!info.isFile())
            continue;
        const Outcome flushed = flushFile(path);
        if (outcome)
            outcome = flushed;
    }
    folders.removeDuplicates();
    const Outcome named = flushFolders(folders);
    return outcome ? named : outcome;
}

void Disk::inherit(QFileDevice &file, const QFileDevice &model)
{
    file.setPermissions(model.permissions());
}

Outcome Disk::rename(const QString &from, const QString &to)
{
    constexpr DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    WritePermission permission(to); // what is read-only can't be replaced
    const auto move = [&] {
        return MoveFileExW(wide(longPath(from)), wide(longPath(to)), flags) != 0;
    };
    Outcome renamed = outcomeOf(untilFree(to, move), to);
    if (renamed)
        permission.keep();
    if (!renamed && QFileInfo(to).isDir())
        renamed.code = Outcome::Code::NotAFile;
    return renamed;
}

bool Disk::losesReplacedFiles(const QString &path) const
{
    std::array<wchar_t, MAX_PATH> name{};
    if (!GetVolumeInformationW(wide(mountPointOf(path)), nullptr, 0, nullptr, nullptr, nullptr,
                               name.data(), static_cast<DWORD>(name.size())))
        return false;
    const QString fileSystem = QString::fromWCharArray(name.data());
    return fileSystem.startsWith(QLatin1String("FAT"), Qt::CaseInsensitive)
        || fileSystem.compare(QLatin1String("exFAT"), Qt::CaseInsensitive) == 0;
}

} // namespace tarvel4
