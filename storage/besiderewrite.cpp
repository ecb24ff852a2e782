#include "storage/besiderewrite.h"

#include "storage/regularfile.h"
#include "storage/systemerror.h"

#include <QDebug>
#include <QFileInfo>

namespace tarvel4 {

namespace {

constexpr qint64 blockSize = 1 << 20;

/** A link would otherwise be replaced by the file, and the file that it leads to left as it was. */
QString realPath(const QString &path)
{
    const QFileInfo info(path);
    return info.isSymLink() ? info.canonicalFilePath() : path;
}

/** The path up to its last dot; a dot in a folder's name is none of the file's. */
QString stemOf(const QString &path)
{
    const auto dot = path.lastIndexOf(QLatin1Char('.'));
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

BesideRewrite::BesideRewrite(Disk &disk, const QString &path, const FileStamp &stamp,
                             const FileChange &change)
    : m_disk(disk)
    , m_path(realPath(path))
    , m_permission(m_path)
    , m_replacement(disk, m_path)
    , m_stamp(stamp.isFile() ? stamp : FileStamp(m_path))
    , m_change(change)
    , m_source(m_path)
{}

BesideRewrite::~BesideRewrite()
{
    removeTemporary();
}

Outcome BesideRewrite::open()
{
    Outcome outcome;
    SystemError::presumeFailedMedium();
    if (!QFileInfo(m_path).isFile())
        outcome = RegularFile(m_path).outcome();
    else if (!m_source.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        outcome = SystemError::outcomeOf(false, m_path, false);
    if (!outcome)
        qDebug() << "[MetaSong::saveToFile] Impossible to read from file.";
    m_temporaryPath = uniqueFileName(stemOf(m_path), QStringLiteral(".tmp"));
    return outcome;
}

Outcome BesideRewrite::write()
{
    const char *problem = "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write "
                          "protected? Aborting!";
    ContentHash hash;
    Outcome outcome = makeTemporary();
    if (outcome) {
        problem = "[MetaSong::saveToFile] Impossible to write tag of file.";
        hash.add(m_change.newHead);
        outcome = m_disk.write(m_temporary, m_change.newHead);
    }
    if (outcome) {
        problem = "[MetaSong::saveToFile] Impossible to seek file.";
        outcome = seekTail();
    }
    if (outcome) {
        problem = "[MetaSong::saveToFile] Impossible to copy part of file.";
        outcome = copyTail(hash);
    }
    m_temporary.close();
    if (outcome) {
        m_hash = hash.result();
        return outcome;
    }
    qDebug() << problem;
    removeTemporary();
    return outcome;
}

Outcome BesideRewrite::makeTemporary()
{
    Outcome created;
    do {
        m_temporaryPath = uniqueFileName(stemOf(m_path), QStringLiteral(".tmp"));
        m_temporary.setFileName(m_temporaryPath);
        created = m_disk.createNew(m_temporary);
    } while (created == Outcome::Code::AlreadyExists);
    m_hasTemporary = static_cast<bool>(created);
    if (m_hasTemporary)
        Disk::inherit(m_temporary, m_source);
    return created;
}

/** Other bytes than those that were read mean that what stays begins elsewhere. */
Outcome BesideRewrite::seekTail()
{
    if (m_source.seek(0) && m_source.read(m_change.oldHead.size()) == m_change.oldHead
        && m_source.seek(m_change.tail))
        return {};
    return {Outcome::Code::ChangedMeanwhile, m_path, {}, {}};
}

/** Reads each block for the hash before it is copied, so that the medium reads it once. */
Outcome BesideRewrite::copyTail(ContentHash &hash)
{
    // A tag may claim a few bytes more than its file has; then nothing is left.
    qint64 left = qMax<qint64>(0, m_stamp.size() - m_change.tail);
    QByteArray block(static_cast<int>(qMin(left, blockSize)), Qt::Uninitialized);
    while (left > 0) {
        const qint64 count = m_source.read(block.data(), qMin(left, blockSize));
        if (count < 0)
            return {Outcome::Code::MediumFailed, m_path, m_source.errorString(), {}};
        if (count == 0)
            break;
        hash.add(block.constData(), count);
        const qint64 end = m_source.pos();
        if (!m_source.seek(end - count))
            return {Outcome::Code::MediumFailed, m_path, m_source.errorString(), {}};
        const Outcome copied = m_disk.copyRange(m_source, m_temporary, count);
        if (!copied)
            return copied;
        left -= count;
    }
    char more = 0;
    if (left > 0 || m_source.read(&more, 1) > 0)
        return {Outcome::Code::ChangedMeanwhile, m_path, {}, {}};
    return {};
}

Outcome BesideRewrite::sync()
{
    QFile file(m_temporaryPath);
    SystemError::presumeFailedMedium();
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return SystemError::outcomeOf(false, m_temporaryPath);
    return m_disk.sync(file);
}

Outcome BesideRewrite::takeBack(const Outcome &cause)
{
    if (isSetAside())
        qDebug() << "[MetaSong::saveToFile] Impossible to replace file:" << m_path;
    else
        qDebug() << "[MetaSong::saveToFile] Impossible to copy part of file.";
    removeTemporary();
    return m_replacement.giveBack(cause);
}

Outcome BesideRewrite::setAside()
{
    m_source.close();
    if (!m_stamp.matches(m_path)) {
        qDebug() << "[MetaSong::saveToFile] Changed by somebody else meanwhile:" << m_path;
        removeTemporary();
        return {Outcome::Code::ChangedMeanwhile, m_path, {}, {}};
    }
    const Outcome outcome = m_replacement.setAside();
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] Impossible to replace file:" << m_path;
        removeTemporary();
    }
    return outcome;
}

Outcome BesideRewrite::publish()
{
    const Outcome outcome = m_replacement.publish(m_temporaryPath);
    if (outcome) {
        m_hasTemporary = false;
    } else {
        qDebug() << "[MetaSong::saveToFile] Impossible to replace file:" << m_path;
        removeTemporary();
    }
    return outcome;
}

bool BesideRewrite::confirm(Outcome &outcome)
{
    const bool wasSetAside = isSetAside();
    if (outcome || !wasSetAside)
        m_permission.keep();
    if (outcome) {
        m_replacement.removeOld();
        return wasSetAside;
    }
    if (wasSetAside) {
        qDebug() << "[MetaSong::saveToFile] Impossible to replace file:" << m_path;
        outcome = m_replacement.giveBack(outcome);
    } else {
        qDebug() << "[MetaSong::saveToFile] WARNING: not known to be on the medium:" << m_path;
        outcome = {Outcome::Code::NotConfirmed, m_path, {}, {}};
    }
    return false;
}

void BesideRewrite::removeTemporary()
{
    if (!m_hasTemporary)
        return;
    m_temporary.close();
    m_hasTemporary = false;
    if (!m_disk.remove(m_temporaryPath))
        qDebug() << "[MetaSong::saveToFile] WARNING: can't be removed:" << m_temporaryPath;
}

} // namespace tarvel4
