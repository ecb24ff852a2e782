#pragma once

#include "storage/disk.h"
#include "storage/filestamp.h"
#include "storage/writepermission.h"

#include <QByteArray>
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
     * \a audioStart. */
    Outcome write(const QByteArray &tag, const QByteArray &oldStart, qint64 audioStart);

private:
    Outcome openSource();
    Outcome openTemporary(qint64 audioStart);
    bool isLeftover(const QString &path, qint64 audioStart);
    Outcome seekAudio(const QByteArray &oldStart, qint64 audioStart);
    Outcome copyAudio(qint64 audioStart);
    Outcome finish();

    Disk &m_disk;
    QString m_path; ///< of the file itself, not of a link to it
    WritePermission m_permission;
    QFile m_source;
    QFile m_temporary;
    QString m_temporaryPath; ///< a file opened by the system has no name of its own
    bool m_hasTemporary = false;
    FileStamp m_stamp;
};

} // namespace tarvel4
