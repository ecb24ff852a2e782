#pragma once

#include "storage/disk.h"
#include "storage/writepermission.h"

#include <QByteArray>
#include <QDateTime>
#include <QFile>

namespace tarvel4 {

/** Writes an MP3 with a new tag beside itself, and gives it its own name once it is whole. Until
 * then, and whenever it fails, the song is untouched and nothing lies beside it. */
class Mp3Rewrite
{
public:
    Mp3Rewrite(Disk &disk, const QString &path);
    ~Mp3Rewrite();
    Q_DISABLE_COPY(Mp3Rewrite)

    /** Writes \a tag and the audio. The file must still begin with \a oldStart, and its audio at
     * \a audioStart. False: the log says why. */
    bool write(const QByteArray &tag, const QByteArray &oldStart, qint64 audioStart);

private:
    bool openTemporary(qint64 audioStart);
    bool isLeftover(const QString &path, qint64 audioStart);
    bool seekAudio(const QByteArray &oldStart, qint64 audioStart);
    bool copyAudio(qint64 audioStart);
    bool isUnchanged() const;
    bool finish();

    Disk &m_disk;
    QString m_path; ///< of the file itself, not of a link to it
    WritePermission m_permission;
    QFile m_source;
    QFile m_temporary;
    bool m_hasTemporary = false;
    qint64 m_sourceSize = 0;
    QDateTime m_sourceTime;
};

} // namespace tarvel4
