#pragma once

#include <QByteArray>
#include <QString>

QT_BEGIN_NAMESPACE
class QFileDevice;
QT_END_NAMESPACE

/**
 * The one seam through which bytes reach a medium, so that a test can make it fail at any step.
 * Whoever writes a song, a copy or an index file takes a Disk by reference; Disk::real() is the
 * platform's.
 */
class Disk
{
public:
    virtual ~Disk() = default;

    /** Writes all of \a bytes at the file's position and flushes them to the system; false when any
     * is missing. */
    virtual bool write(QFileDevice &file, const QByteArray &bytes);

    /** Waits until the file's bytes are on the medium. A dead card is first noticed here. */
    virtual bool sync(QFileDevice &file);

    /** Waits until everything written to the volume that holds \a path, names included, is on the
     * medium. */
    virtual bool syncVolume(const QString &path);

    /** Gives the file \a from the name \a to in one step, taking the place of an existing file. */
    virtual bool replace(const QString &from, const QString &to);

    /** Removes a file; true when it is gone, also when it was not there. */
    virtual bool remove(const QString &path);

    static Disk &real();
};
