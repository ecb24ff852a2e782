#pragma once

#include "storage/outcome.h"

#include <QByteArray>

#ifndef Q_OS_UNIX
#include <QFile>
#endif

QT_BEGIN_NAMESPACE
class QFileDevice;
QT_END_NAMESPACE

namespace tarvel4 {

/** A regular file opened for reading, with as few questions to the system as it takes: a library
 * has thousands of them. */
class RegularFile
{
public:
    enum class Kind { Unknown, Listed };

    /** Never waits: not for the writer of a FIFO either, which is not opened. With Kind::Listed, of
     * a file that a listing has just told to be regular, it is not asked again, nor its size. */
    explicit RegularFile(const QString &path, Kind kind = Kind::Unknown);
    ~RegularFile();
    Q_DISABLE_COPY(RegularFile)

    /** Why the file can't be read; done when it is open. */
    const Outcome &outcome() const { return m_outcome; }

    /** Bytes, when it was opened; 0 where nobody asked. */
    qint64 size() const { return m_size; }

    /** The next bytes, \a count where there are that many; fewer, and an outcome, after an error.
     */
    QByteArray read(int count);
    qint64 read(char *bytes, qint64 count); ///< the same into a buffer; the bytes read
    /** The same by one question to the system, of which a file's end is the only reason to give
     * fewer. */
    qint64 readOnce(char *bytes, qint64 count);

    /** Reads on until \a bytes, which may hold the file's first ones already, has \a size of them.
     */
    Outcome readUpTo(qint64 size, QByteArray &bytes);

private:
    Outcome m_outcome;
    qint64 m_size = 0;
#ifdef Q_OS_UNIX
    int m_file = -1;
#else
    QFile m_file;
#endif
};

/** What all readers of whole files share. */
namespace FileBytes {

/** No song is larger, and what an array of bytes can hold is little more. */
constexpr qint64 maxSize = 2000000000;

/** Tells people of a limit of so many bytes. */
QString sizeLimitText(qint64 bytes);

/** Makes \a bytes \a size bytes long; false where that is more than maxSize or than there is memory
 * for. */
bool grow(QByteArray &bytes, qint64 size);

/** As RegularFile::readUpTo(), from a file that is open for writing too. */
bool readUpTo(QFileDevice &file, qint64 size, QByteArray &bytes);

/** Reads on to the end of the file. */
bool readAll(QFileDevice &file, QByteArray &bytes);

} // namespace FileBytes

} // namespace tarvel4
