#pragma once

#include <QByteArray>

#ifndef Q_OS_UNIX
#include <QFile>
#endif

namespace tarvel4 {

/** A regular file opened for reading, with as few questions to the system as it takes: a library
 * has thousands of them. */
class SongFile
{
public:
    /** Never waits: not for the writer of a FIFO either, which is not opened. */
    explicit SongFile(const QString &path);
    ~SongFile();
    Q_DISABLE_COPY(SongFile)

    /** False when there is no regular file or it can't be read. */
    bool isOpen() const;

    /** Bytes, when it was opened. */
    qint64 size() const { return m_size; }

    /** The next bytes, \a count where there are that many. */
    QByteArray read(int count);

    /** As FileBytes::readUpTo(). */
    bool readUpTo(qint64 size, QByteArray &bytes);

private:
    qint64 read(char *bytes, qint64 count);

    qint64 m_size = 0;
#ifdef Q_OS_UNIX
    int m_file = -1;
#else
    QFile m_file;
#endif
};

} // namespace tarvel4
