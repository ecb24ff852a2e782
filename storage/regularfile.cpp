#include "storage/regularfile.h"

#include "storage/filebytes.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tarvel4 {

QByteArray SongFile::read(int count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    bytes.truncate(int(std::max<qint64>(read(bytes.data(), count), 0)));
    return bytes;
}

bool SongFile::readUpTo(qint64 size, QByteArray &bytes)
{
    const qint64 missing = size - bytes.size();
    return missing <= 0
        || (FileBytes::grow(bytes, size)
            && read(bytes.data() + bytes.size() - missing, missing) == missing);
}

#ifdef Q_OS_UNIX

SongFile::SongFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (stat(name.constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    m_size = status.st_size;
    // O_NONBLOCK: a FIFO that took the song's place meanwhile must not hang the run
    m_file = open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

SongFile::~SongFile()
{
    if (m_file >= 0)
        close(m_file);
}

bool SongFile::isOpen() const
{
    return m_file >= 0;
}

/** Reads until there is no more, or until an error; the bytes read. */
qint64 SongFile::read(char *bytes, qint64 count)
{
    qint64 done = 0;
    while (done < count) {
        const ssize_t got = ::read(m_file, bytes + done, std::size_t(count - done));
        if (got > 0)
            done += got;
        else if (got == 0 || errno != EINTR)
            break;
    }
    return done;
}

#else

SongFile::SongFile(const QString &path)
    : m_file(path)
{
    if (QFileInfo(m_file).isFile() && m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        m_size = m_file.size();
}

SongFile::~SongFile() = default;

bool SongFile::isOpen() const
{
    return m_file.isOpen();
}

qint64 SongFile::read(char *bytes, qint64 count)
{
    return m_file.read(bytes, count);
}

#endif

} // namespace tarvel4
