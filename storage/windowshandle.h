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

} // namespace tarvel4
