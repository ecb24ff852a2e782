#pragma once

#include "storage/outcome.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QFile;
class QFileDevice;
QT_END_NAMESPACE

namespace tarvel4 {

/**
 * The one seam through which bytes, names and flushes reach a medium, so that a test can make it
 * fail at any step. Whoever writes a song, a copy or an index file takes a Disk by reference;
 * Disk::real() is the platform's. Each operation names the cause when it fails.
 */
class Disk
{
public:
    virtual ~Disk() = default;

    /**
     * Opens a file of which nothing is kept: created, or emptied where it is a regular one. A link
     * or a special file in its place is removed first, so that no byte leaves the folder and nobody
     * waits for a reader. The file has no name once it is open.
     */
    virtual Outcome openForWriting(QFile &file);

    /** Creates a file that is not there yet; AlreadyExists where anything has its name. */
    Outcome createNew(QFile &file);

    /** Writes all of \a bytes at the file's position and flushes them to the system. */
    virtual Outcome write(QFileDevice &file, const QByteArray &bytes);

    /**
     * Copies \a size bytes from the position of one open file to that of another one, and moves
     * both on. ChangedMeanwhile, with the path of \a from, where that ends early; the bytes before
     * that may have been written.
     */
    virtual Outcome copyRange(QFileDevice &from, QFileDevice &to, qint64 size);

    /** Makes sure that the file can grow to \a size bytes, without changing what it holds. Not
     * done: the file is as it was. */
    virtual Outcome reserve(QFileDevice &file, qint64 size);

    /** Cuts the file to \a size bytes. */
    virtual Outcome truncate(QFileDevice &file, qint64 size);

    /** Waits until the file's bytes are on the medium. A dead card is first noticed here. */
    virtual Outcome sync(QFileDevice &file);

    /**
     * Waits until these files' bytes and their names are on the medium; a file that is gone counts
     * by its removed name, a folder by the names in it. Each volume among them is flushed once
     * where the system can do that, and what else is on it then waits, too; a single file is
     * flushed by itself. A failure keeps none of the others from being flushed.
     */
    virtual Outcome syncAll(const QStringList &paths);

    /**
     * Gives the file \a from, which is on the medium, the name \a to, taking the place of an
     * existing file. One step where the file system can do it in one; on FAT, where that loses
     * files, the old one is set aside (storage/recovery.h) until the new one is safe. Not done:
     * \a to is what it was.
     */
    virtual Outcome replace(const QString &from, const QString &to);

    /** Removes a file; done when it is gone, also when it was not there. */
    virtual Outcome remove(const QString &path);

    /** Gives a new file the permissions, and where that is allowed the owner and, on Linux, the
     * extended attributes of another. */
    static void inherit(QFileDevice &file, const QFileDevice &model);

    /** True where a rename over an existing file can lose both (FAT, exFAT). */
    virtual bool losesReplacedFiles(const QString &path) const;

    static Disk &real();

protected:
    /** Gives a file another name, in one step, taking the place of an existing one. */
    virtual Outcome rename(const QString &from, const QString &to);

private:
    Outcome replaceKeepingOld(const QString &from, const QString &to);
    Outcome growWithZeros(QFileDevice &file, qint64 size);
    Outcome copyBlocks(QFileDevice &from, QFileDevice &to, qint64 size);
};

} // namespace tarvel4
