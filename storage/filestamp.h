#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <array>

namespace tarvel4 {

/** Tells whether somebody else changed a file since it was read, and which file it is. */
class FileStamp
{
public:
    FileStamp() = default;
    explicit FileStamp(const QString &path);

    /** True while the file is there with the size and modification time that it had. */
    bool matches(const QString &path) const;

    /** True when a regular file was there. */
    bool isFile() const { return m_size >= 0; }
    qint64 size() const { return m_size; }
    QDateTime modified() const { return QDateTime::fromMSecsSinceEpoch(m_modified / 1000000); }

    /** The same for every name of one file; empty where none was there. */
    QByteArray identity() const;

private:
    qint64 m_size = -1;
    qint64 m_modified = 0; ///< nanoseconds since 1970 in UTC, as fine as the system has them
#ifdef Q_OS_UNIX
    std::array<quint64, 2> m_identity = {}; ///< device and inode
#else
    QString m_identity; ///< canonical path
#endif
};

} // namespace tarvel4
