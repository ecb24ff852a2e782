#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

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
    const QDateTime &modified() const { return m_modified; }

    /** The same for every name of one file; empty where none was there. */
    const QByteArray &identity() const { return m_identity; }

private:
    qint64 m_size = -1;
    QDateTime m_modified;
    QByteArray m_identity;
};

} // namespace tarvel4
