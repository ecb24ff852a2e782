#include "storage/regularfile.h"

#include "storage/systemerror.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <cerrno>
#include <new>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tarvel4 {

QByteArray RegularFile::read(int count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    bytes.truncate(static_cast<int>(std::max<qint64>(read(bytes.data(), count), 0)));
    return bytes;
}

/** Reads until there is no more, or until an error. */
qint64 RegularFile::read(char *bytes, qint64 count)
{
    qint64 done = 0;
    qint64 got = 0;
    while (done < count && (got = readOnce(bytes + done, count - done)) > 0)
        done += got;
    return done;
}

Outcome RegularFile::readUpTo(qint64 size, QByteArray &bytes)
{
    const qint64 missing = size - bytes.size();
    if (missing <= 0)
        return {};
    const QString path = m_outcome.path;
    if (!FileBytes::grow(bytes, size))
        return {Outcome::Code::TooLarge, path, FileBytes::sizeLimitText(FileBytes::maxSize), {}};
    if (read(bytes.data() + bytes.size() - missing, missing) == missing)
        return {};
    if (!m_outcome)
        return m_outcome;
    return {Outcome::Code::ChangedMeanwhile, path, {}, {}}; // shorter than it was
}

#ifdef Q_OS_UNIX

RegularFile::RegularFile(const QString &path, Kind kind)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (kind == Kind::Unknown && stat(name.constData(), &status) != 0) {
        m_outcome = SystemError::outcomeOf(false, path, false);
        return;
    }
    m_outcome.path = path;
    if (kind == Kind::Unknown && !S_ISREG(status.st_mode)) {
        m_outcome.code = Outcome::Code::NotAFile;
        return;
    }
    m_size = status.st_size;
    // O_NONBLOCK: a FIFO that took the file's place meanwhile must not hang the run
    m_file = open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (m_file < 0)
        m_outcome = SystemError::outcomeOf(false, path, false);
}

RegularFile::~RegularFile()
{
    if (m_file >= 0)
        close(m_file);
}

qint64 RegularFile::readOnce(char *bytes, qint64 count)
{
    ssize_t got = -1;
    do {
        got = ::read(m_file, bytes, static_cast<std::size_t>(count));
    } while (got < 0 && errno == EINTR);
    if (got < 0)
        m_outcome = SystemError::outcomeOf(false, m_outcome.path, false);
    return std::max<ssize_t>(got, 0);
}

#else

RegularFile::RegularFile(const QString &path, Kind)
    : m_file(path)
{
    const QFileInfo info(m_file);
    m_outcome.path = path;
    if (!info.exists())
        m_outcome.code = Outcome::Code::NotFound;
    else if (!info.isFile())
        m_outcome.code = Outcome::Code::NotAFile;
    else if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        m_outcome = SystemError::outcomeOf(false, path, false);
    else
        m_size = m_file.size();
}

RegularFile::~RegularFile() = default;

qint64 RegularFile::readOnce(char *bytes, qint64 count)
{
    SystemError::presumeFailedMedium();
    const qint64 got = m_file.read(bytes, count);
    if (got < 0)
        m_outcome = SystemError::outcomeOf(false, m_outcome.path, false);
    return std::max<qint64>(got, 0);
}

#endif

QString FileBytes::sizeLimitText(qint64 bytes)
{
    return QCoreApplication::translate("Outcome", "sono ammessi al massimo %1 byte")
        .arg(QLocale().toString(bytes));
}

bool FileBytes::grow(QByteArray &bytes, qint64 size)
{
    if (size > maxSize)
        return false;
    try {
        bytes.resize(static_cast<int>(size));
    } catch (const std::bad_alloc &) {
        return false;
    }
    return true;
}

bool FileBytes::readUpTo(QFileDevice &file, qint64 size, QByteArray &bytes)
{
    const qint64 begun = bytes.size();
    return size <= begun
        || (grow(bytes, size) && file.read(bytes.data() + begun, size - begun) == size - begun);
}

bool FileBytes::readAll(QFileDevice &file, QByteArray &bytes)
{
    return readUpTo(file, file.size(), bytes);
}

} // namespace tarvel4
