#include "songs/id3/mp3rewrite.h"

#include "songs/id3/id3v2tag.h"
#include "storage/filebytes.h"
#include "storage/uniquefilename.h"

#include <QDebug>
#include <QFileInfo>

namespace tarvel4 {

namespace {

constexpr qint64 blockSize = 100'000;

/** A link would otherwise be replaced by the song, and the song that it points to left as it was.
 */
QString realPath(const QString &path)
{
    const QFileInfo info(path);
    return info.isSymLink() ? info.canonicalFilePath() : path;
}

/** The path up to its last point; a point in a folder's name is none of the song's. */
QString stemOf(const QString &path)
{
    const int point = path.lastIndexOf(QLatin1Char('.'));
    return point > path.lastIndexOf(QLatin1Char('/')) ? path.left(point) : path;
}

} // namespace

Mp3Rewrite::Mp3Rewrite(Disk &disk, const QString &path)
    : m_disk(disk)
    , m_path(realPath(path))
    , m_permission(m_path)
    , m_source(m_path)
{}

Mp3Rewrite::~Mp3Rewrite()
{
    if (!m_hasTemporary)
        return;
    m_temporary.close();
    if (!m_disk.remove(m_temporary.fileName()))
        qDebug() << "[MetaSong::saveToFile] WARNING: can't be removed:" << m_temporary.fileName();
}

bool Mp3Rewrite::write(const QByteArray &tag, const QByteArray &oldStart, qint64 audioStart)
{
    if (!QFileInfo(m_path).isFile()
        || !m_source.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to read from file.";
        return false;
    }
    m_sourceSize = m_source.size();
    m_sourceTime = m_source.fileTime(QFileDevice::FileModificationTime);
    if (!openTemporary(audioStart)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write "
                    "protected? Aborting!";
        return false;
    }
    if (!m_disk.write(m_temporary, tag)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to write tag of file.";
        return false;
    }
    if (!seekAudio(oldStart, audioStart)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to seek file.";
        return false;
    }
    if (!copyAudio(audioStart)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to copy part of file.";
        return false;
    }
    return finish();
}

bool Mp3Rewrite::openTemporary(qint64 audioStart)
{
    const QString stem = stemOf(m_path);
    const QString suffix = QStringLiteral(".tmp");
    if (isLeftover(stem + suffix, audioStart))
        m_disk.remove(stem + suffix);
    do {
        m_temporary.setFileName(uniqueFileName(stem, suffix));
        m_hasTemporary =
            m_temporary.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered);
    } while (!m_hasTemporary && m_temporary.exists());
    if (m_hasTemporary)
        Disk::inherit(m_temporary, m_source);
    return m_hasTemporary;
}

/** True for what a save that was killed left behind: nothing yet, or a tag with our mark, and
 * nothing after it but audio that the song still has. */
bool Mp3Rewrite::isLeftover(const QString &path, qint64 audioStart)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || QFileInfo(path).isSymLink()
        || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    if (file.size() == 0)
        return true;
    QByteArray start = file.read(Id3Format::headerSize);
    Id3v2Tag tag;
    if (!FileBytes::readUpTo(file, Id3v2Tag::bytesWanted(start), start) || !tag.parse(start)
        || !tag.hasEditMark() || !m_source.seek(audioStart)) {
        return false;
    }
    QByteArray audio;
    do {
        audio = file.read(blockSize);
        if (m_source.read(audio.size()) != audio)
            return false;
    } while (!audio.isEmpty());
    return true;
}

/** Another tag than the one that was read means that the audio begins elsewhere. */
bool Mp3Rewrite::seekAudio(const QByteArray &oldStart, qint64 audioStart)
{
    return m_source.seek(0) && m_source.read(oldStart.size()) == oldStart
        && m_source.seek(audioStart);
}

bool Mp3Rewrite::copyAudio(qint64 audioStart)
{
    QByteArray block(blockSize, Qt::Uninitialized);
    qint64 copied = 0;
    qint64 count = 0;
    while ((count = m_source.read(block.data(), blockSize)) > 0) {
        if (!m_disk.write(m_temporary, QByteArray::fromRawData(block.constData(), int(count))))
            return false;
        copied += count;
    }
    // A tag may claim a few bytes more than its file has; then there is no audio.
    return count == 0 && copied == qMax(qint64(0), m_sourceSize - audioStart);
}

bool Mp3Rewrite::isUnchanged() const
{
    const QFileInfo now(m_path);
    return now.isFile() && now.size() == m_sourceSize && now.lastModified() == m_sourceTime;
}

bool Mp3Rewrite::finish()
{
    if (!m_disk.sync(m_temporary)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to copy part of file.";
        return false;
    }
    m_source.close();
    m_temporary.close();
    if (!isUnchanged()) {
        qDebug() << "[MetaSong::saveToFile] Changed by somebody else meanwhile:" << m_path;
        return false;
    }
    if (!m_disk.replace(m_temporary.fileName(), m_path)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to replace file:" << m_path;
        return false;
    }
    m_hasTemporary = false;
    m_permission.keep();
    if (!m_disk.syncFolder(m_path)) {
        qDebug() << "[MetaSong::saveToFile] WARNING: not known to be on the medium:" << m_path;
        return false;
    }
    return true;
}

} // namespace tarvel4
