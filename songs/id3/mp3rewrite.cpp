#include "songs/id3/mp3rewrite.h"

#include "songs/id3/id3v2tag.h"
#include "storage/regularfile.h"

#include <QDebug>
#include <QFileInfo>

#include <cerrno>

namespace tarvel4 {

namespace {

constexpr qint64 blockSize = 100'000;

/** A link would otherwise be replaced by the song, and the song that it leads to left as it was.
 */
QString realPath(const QString &path)
{
    const QFileInfo info(path);
    return info.isSymLink() ? info.canonicalFilePath() : path;
}

/** The path up to its last dot; a dot in a folder's name is none of the song's. */
QString stemOf(const QString &path)
{
    const int dot = path.lastIndexOf(QLatin1Char('.'));
    return dot > path.lastIndexOf(QLatin1Char('/')) ? path.left(dot) : path;
}

/** Stem and suffix, or with a number between them when that name is taken: "song.tmp",
 * "song.1.tmp" ... */
QString uniqueFileName(const QString &stem, const QString &suffix)
{
    QString name = stem + suffix;
    for (int number = 1; QFileInfo::exists(name) || QFileInfo(name).isSymLink(); ++number)
        name = stem + QLatin1Char('.') + QString::number(number) + suffix;
    return name;
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
    if (!m_disk.remove(m_temporaryPath))
        qDebug() << "[MetaSong::saveToFile] WARNING: can't be removed:" << m_temporaryPath;
}

Outcome Mp3Rewrite::write(const QByteArray &tag, const QByteArray &oldStart, qint64 audioStart)
{
    m_stamp = FileStamp(m_path);
    Outcome outcome = openSource();
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] Impossible to read from file.";
        return outcome;
    }
    outcome = openTemporary(audioStart);
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write "
                    "protected? Aborting!";
        return outcome;
    }
    outcome = m_disk.write(m_temporary, tag);
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] Impossible to write tag of file.";
        return outcome;
    }
    outcome = seekAudio(oldStart, audioStart);
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] Impossible to seek file.";
        return outcome;
    }
    outcome = copyAudio(audioStart);
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] Impossible to copy part of file.";
        return outcome;
    }
    return finish();
}

Outcome Mp3Rewrite::openSource()
{
    if (!m_stamp.isFile())
        return RegularFile(m_path).outcome();
    errno = EIO;
    if (!m_source.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Outcome::ofSystemError(errno, m_path, false);
    return {};
}

Outcome Mp3Rewrite::openTemporary(qint64 audioStart)
{
    const QString stem = stemOf(m_path);
    const QString suffix = QStringLiteral(".tmp");
    if (isLeftover(stem + suffix, audioStart))
        m_disk.remove(stem + suffix);
    Outcome created;
    do {
        m_temporary.setFileName(uniqueFileName(stem, suffix));
        m_temporaryPath = m_temporary.fileName();
        created = m_disk.createNew(m_temporary);
    } while (created == Outcome::Code::AlreadyExists);
    m_hasTemporary = static_cast<bool>(created);
    if (m_hasTemporary)
        Disk::inherit(m_temporary, m_source);
    return created;
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
Outcome Mp3Rewrite::seekAudio(const QByteArray &oldStart, qint64 audioStart)
{
    if (m_source.seek(0) && m_source.read(oldStart.size()) == oldStart && m_source.seek(audioStart))
        return {};
    return {Outcome::Code::ChangedMeanwhile, m_path, {}, {}};
}

Outcome Mp3Rewrite::copyAudio(qint64 audioStart)
{
    QByteArray block(blockSize, Qt::Uninitialized);
    qint64 copied = 0;
    qint64 count = 0;
    while ((count = m_source.read(block.data(), blockSize)) > 0) {
        const Outcome written = m_disk.write(
            m_temporary, QByteArray::fromRawData(block.constData(), static_cast<int>(count)));
        if (!written)
            return written;
        copied += count;
    }
    if (count < 0)
        return {Outcome::Code::MediumFailed, m_path, m_source.errorString(), {}};
    // A tag may claim a few bytes more than its file has; then there is no audio.
    if (copied != qMax(static_cast<qint64>(0), m_stamp.size() - audioStart))
        return {Outcome::Code::ChangedMeanwhile, m_path, {}, {}};
    return {};
}

Outcome Mp3Rewrite::finish()
{
    Outcome outcome = m_disk.sync(m_temporary);
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] Impossible to copy part of file.";
        return outcome;
    }
    m_source.close();
    m_temporary.close();
    if (!m_stamp.matches(m_path)) {
        qDebug() << "[MetaSong::saveToFile] Changed by somebody else meanwhile:" << m_path;
        return {Outcome::Code::ChangedMeanwhile, m_path, {}, {}};
    }
    outcome = m_disk.replace(m_temporaryPath, m_path);
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] Impossible to replace file:" << m_path;
        return outcome;
    }
    m_hasTemporary = false;
    m_permission.keep();
    if (!m_disk.syncFolder(m_path)) {
        qDebug() << "[MetaSong::saveToFile] WARNING: not known to be on the medium:" << m_path;
        return {Outcome::Code::NotConfirmed, m_path, {}, {}};
    }
    return {};
}

} // namespace tarvel4
