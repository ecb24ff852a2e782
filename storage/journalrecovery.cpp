#include "storage/journalrecovery.h"

#include "storage/contenthash.h"
#include "storage/journal.h"
#include "storage/regularfile.h"
#include "storage/savebatch.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace tarvel4 {

namespace {

using Recovery::Result;

/** True for what a save that was cut short leaves of a song in its own place: each byte is that of
 * the old or of the new bytes, or zero where the file was to be cut. Where it grew, a medium may
 * hold anything until it is written. */
bool isTorn(const QByteArray &bytes, const QByteArray &oldBytes, const QByteArray &newBytes)
{
    if (bytes.size() > qMax(oldBytes.size(), newBytes.size()))
        return false;
    const int explained = static_cast<int>(qMin(bytes.size(), oldBytes.size()));
    for (int i = 0; i < explained; ++i) {
        const char byte = bytes.at(i);
        const char newByte = i < newBytes.size() ? newBytes.at(i) : '\0';
        if (byte != oldBytes.at(i) && byte != newByte)
            return false;
    }
    return true;
}

/** True when \a bytes are those that \a expected begins with, or zero where they never came to the
 * medium. */
bool areWrittenOf(const QByteArray &bytes, const QByteArray &expected)
{
    return bytes.size() <= expected.size()
        && std::equal(bytes.begin(), bytes.end(), expected.begin(),
                      [](char byte, char wanted) { return byte == wanted || byte == '\0'; });
}

/** The same of the next \a count bytes of the two files, or up to the end of the first. */
bool areWrittenOf(QFile &file, QFile &song, qint64 count)
{
    constexpr qint64 blockSize = 1 << 16;
    while (count > 0) {
        const QByteArray bytes = file.read(qMin(count, blockSize));
        if (bytes.isEmpty())
            break;
        if (!areWrittenOf(bytes, song.read(bytes.size())))
            return false;
        count -= bytes.size();
    }
    return true;
}

/** True for a new file that did not come to its name: nothing, zeros, or as much of it as was
 * written. What else has the name is not ours. */
bool isUnfinished(const JournalEntry &entry)
{
    QFile file(entry.temporary);
    QFile song(entry.path);
    const QFileInfo info(entry.temporary);
    if (!info.isFile() || info.isSymLink() || info.size() > entry.newSize
        || !file.open(QIODevice::ReadOnly) || !song.open(QIODevice::ReadOnly))
        return false;
    if (Recovery::isBlank(entry.temporary))
        return true;
    const Splice &splice = entry.splice;
    return areWrittenOf(file, song, splice.prefix)
        && areWrittenOf(file.read(splice.newMiddle.size()), splice.newMiddle)
        && song.seek(splice.prefix + splice.oldMiddle.size())
        && areWrittenOf(file, song, splice.suffix);
}

/** Of a file that is replaced as a whole: its size and what stands where the two differ. */
bool holds(const JournalEntry &entry, const QString &path, qint64 size, const QByteArray &middle)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() == size && file.seek(entry.splice.prefix)
        && file.read(middle.size()) == middle;
}

/** Decides what becomes of a song whose save was cut short: a Journal::Decision. */
class Decider
{
public:
    Decider(Disk &disk, const Recovery::IsSong &isSong, const Recovery::Report &report)
        : m_disk(disk)
        , m_isSong(isSong)
        , m_report(report)
    {}

    std::optional<QByteArray> operator()(JournalEntry &entry) const
    {
        const Result setAside = Recovery::recover(m_disk, entry.path, m_isSong);
        if (setAside != Result::NoneThere)
            m_report(entry.path, setAside, {});
        Outcome readable = RegularFile(entry.path).outcome();
        if (readable == Outcome::Code::NotFound && isNamedAgain(entry)) {
            m_report(entry.path, Result::GivenBack, {});
            readable = {};
        }
        if (!readable)
            return waiting(entry, readable);
        const std::optional<QByteArray> settled =
            entry.way == FileChange::Way::Beside ? beside(entry) : inPlace(entry);
        if (!settled)
            return settled;
        // What was only in the system's memory when the run ended must not be lost now.
        const Outcome flushed = m_disk.syncAll({entry.path});
        return flushed ? settled : waiting(entry, flushed);
    }

private:
    /** A FAT that was hurt while the old file was set aside may have neither of its names; the new
     * file, which is whole by then, gets it. */
    bool isNamedAgain(const JournalEntry &entry) const
    {
        return entry.way == FileChange::Way::Beside && m_disk.losesReplacedFiles(entry.path)
            && holds(entry, entry.temporary, entry.newSize, entry.splice.newMiddle)
            && m_disk.replace(entry.temporary, entry.path);
    }

    std::optional<QByteArray> beside(const JournalEntry &entry) const
    {
        // Of a song that is new already it would be a second name, where FAT was hurt, and its end.
        const bool isOld = holds(entry, entry.path, entry.oldSize, entry.splice.oldMiddle)
            && entry.splice.oldMiddle != entry.splice.newMiddle;
        if (isOld && !entry.temporary.isEmpty() && isUnfinished(entry))
            m_disk.remove(entry.temporary);
        if (holds(entry, entry.path, entry.newSize, entry.splice.newMiddle)) {
            Outcome outcome;
            return ContentHash::ofFile(entry.path, outcome);
        }
        if (!holds(entry, entry.path, entry.oldSize, entry.splice.oldMiddle))
            m_report(entry.path, Result::ChangedSince, {});
        return QByteArray();
    }

    std::optional<QByteArray> inPlace(JournalEntry &entry) const
    {
        RegularFile file(entry.path);
        QByteArray bytes;
        if (const Outcome read = file.readUpTo(file.size(), bytes); !read)
            return waiting(entry, read);
        if (bytes == entry.oldBytes)
            return QByteArray();
        const QByteArray newBytes = entry.splice.newOf(entry.oldBytes);
        const bool isChangedSince =
            bytes != newBytes && !isTorn(bytes, entry.oldBytes, newBytes) && m_isSong(entry.path);
        if (isChangedSince) {
            // As if the run had written it: an undo can still bring the old bytes back.
            entry.splice = Splice::between(entry.oldBytes, bytes);
            entry.newSize = bytes.size();
            m_report(entry.path, Result::ChangedSince, {});
        }
        if (isChangedSince || bytes == newBytes) {
            ContentHash hash;
            hash.add(bytes);
            return hash.result();
        }
        Outcome outcome;
        SaveBatch batch(m_disk);
        batch.add(entry.path, {}, {FileChange::Way::InPlace, bytes, entry.oldBytes, 0, nullptr},
                  [&outcome](const Outcome &saved) { outcome = saved; });
        batch.commit();
        if (!outcome)
            return waiting(entry, outcome);
        qDebug() << "[JournalRecovery] the old bytes are back:" << entry.path;
        m_report(entry.path, Result::PutBack, {});
        return QByteArray();
    }

    std::optional<QByteArray> waiting(JournalEntry &entry, const Outcome &cause) const
    {
        if (!entry.isTold)
            m_report(entry.path, Result::Waits, cause);
        entry.isTold = true;
        return std::nullopt;
    }

    Disk &m_disk;
    const Recovery::IsSong &m_isSong;
    const Recovery::Report &m_report;
};

} // namespace

void JournalRecovery::recover(Journal &journal, Disk &disk, const Recovery::IsSong &isSong,
                              const Recovery::Report &report)
{
    journal.settleUnfinished(Decider(disk, isSong, report));
}

} // namespace tarvel4
