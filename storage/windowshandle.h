#pragma once

#include <QDir>
#include <QFileInfo>
#include <QString>

#include <windows.h>

namespace tarvel4 {

/** A handle of the system's, open as long as this is there. */
class Handle
{
public:
    explicit Handle(HANDLE handle)
        : m_handle(handle)
    {}
    ~Handle()
    {
        if (isOpen())
            CloseHandle(m_handle);
    }
    Q_DISABLE_COPY(Handle)

    bool isOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return m_handle; }

private:
    HANDLE m_handle;
};

inline const wchar_t *wide(const QString &path)
{
    return reinterpret_cast<const wchar_t *>(path.utf16());
}

const QLatin1String longPathPrefix("\\\\?\\");

/** A path as Qt hands it to the system: in full and with the prefix that lets it be longer than 260
 * characters. */
inline QString longPath(const QString &path)
{
    const QString full =
        QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    if (full.startsWith(longPathPrefix) || full.startsWith(QLatin1String("\\\\.\\")))
        return full;
    if (full.startsWith(QLatin1String("\\\\")))
        return QLatin1String("\\\\?\\UNC\\") + full.mid(2);
    return longPathPrefix + full;
}

/** Opens for others to read, write and rename meanwhile. */
inline HANDLE openShared(const QString &systemPath, DWORD access, DWORD disposition,
                         DWORD flags = FILE_ATTRIBUTE_NORMAL)
{
    constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return CreateFileW(wide(systemPath), access, sharedByAll, nullptr, disposition, flags, nullptr);
}

/** Between two tries at a file that somebody else has open; a test lets go of it there. */
inline decltype(&Sleep) waitForOthers = &Sleep;

/**
 * Makes a call again while somebody else has the file open that it would open, remove or replace: a
 * virus scanner, the search index and Explorer often hold a new one for a moment. The system's
 * error is that of a file in use then, too, where Windows says of a rename that it is denied.
 */
template <typename Call> bool untilFree(const QString &path, const Call &call)
{
    constexpr int mostTries = 10;
    constexpr DWORD milliseconds = 50;
    for (int tries = 1; !call(); ++tries) {
        DWORD error = GetLastError();
        bool isWorthATry = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
        if (error == ERROR_ACCESS_DENIED) {
            const Handle alone(CreateFileW(wide(longPath(path)), DELETE, 0, nullptr, OPEN_EXISTING,
                                           FILE_ATTRIBUTE_NORMAL, nullptr));
            const bool isHeld = !alone.isOpen() && GetLastError() == ERROR_SHARING_VIOLATION;
            isWorthATry = isHeld || alone.isOpen(); // it may have been let go of meanwhile
            error = isHeld ? ERROR_SHARING_VIOLATION : error;
        }
        SetLastError(error);
        if (!isWorthATry || tries == mostTries)
            return false;
        waitForOthers(milliseconds);
    }
    return true;
}

} // namespace tarvel4
