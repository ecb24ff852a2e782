#include "library/freespace.h"

#include "library/companion.h"
#include "library/songpath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QSet>
#include <QStorageInfo>

#include <algorithm>
#include <limits>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace tarvel4 {

namespace {

/** How a volume counts what its files take. */
class Blocks
{
public:
    explicit Blocks(const QStorageInfo &volume)
    {
        // A network drive tells how much it likes to move at once, not what a file takes.
        static const QStringList wholeBlocks{
            QStringLiteral("vfat"),  QStringLiteral("msdos"), QStringLiteral("fat"),
            QStringLiteral("fat16"), QStringLiteral("fat32"), QStringLiteral("exfat"),
            QStringLiteral("ext2"),  QStringLiteral("ext3"),  QStringLiteral("ext4"),
            QStringLiteral("xfs"),   QStringLiteral("tmpfs")};
        if (wholeBlocks.contains(QString::fromLatin1(volume.fileSystemType()), Qt::CaseInsensitive))
            m_size = qMax(1, volume.blockSize());
    }

    /** What a regular file takes; what can't be read will not be copied. */
    qint64 of(const QFileInfo &file) const
    {
        return file.isFile() && file.isReadable() ? ofBytes(file.size()) : 0;
    }

    qint64 ofBytes(qint64 bytes) const { return (bytes + m_size - 1) / m_size * m_size; }

private:
    qint64 m_size = 1;
};

/** The least that copies may take, summed up song by song in their order. */
class LeastNeed
{
public:
    explicit LeastNeed(const Blocks &blocks)
        : m_blocks(blocks)
    {}

    void add(const QString &source, const QString &destination)
    {
        const bool isFirst = !m_places.contains(destination.toCaseFolded());
        const bool isThere = addPlace(source, destination);
        const QString companion = isFirst && !isThere ? Companion::of(source) : QString();
        // required: one that is there already is not replaced
        if (!companion.isEmpty() && Companion::of(destination).isEmpty())
            addPlace(companion, Companion::destinationFor(destination));
    }

    qint64 sum() const
    {
        qint64 need = 0;
        for (const Place &place : m_places) {
            const qint64 change = place.smallestNew - place.old;
            need += place.isThere ? qMin<qint64>(0, change) : change;
        }
        return need;
    }

private:
    /** A name at the destination, without regard to case: one file or several. */
    struct Place
    {
        qint64 smallestNew = std::numeric_limits<qint64>::max();
        qint64 old = 0; ///< given back where the songs of this name are replaced
        bool isThere = false;
    };

    bool addPlace(const QString &source, const QString &destination)
    {
        Place &place = m_places[destination.toCaseFolded()];
        place.smallestNew = qMin(place.smallestNew, m_blocks.of(QFileInfo(source)));
        const QFileInfo old(destination);
        const bool isThere = old.isSymLink() || old.exists();
        place.isThere = place.isThere || isThere;
        if (isThere && !old.isSymLink() && !m_counted.contains(destination)) {
            m_counted.insert(destination);
            place.old += m_blocks.of(old);
        }
        return isThere;
    }

    const Blocks &m_blocks;
    QHash<QString, Place> m_places; ///< by case-folded path
    QSet<QString> m_counted; ///< existing destinations
};

/** False for a volume that compresses, or that may tell anything about itself. */
bool canBeJudged(const QStorageInfo &volume)
{
    const QByteArray type = volume.fileSystemType();
    return volume.isValid() && volume.isReady() && volume.bytesTotal() > 0
        && !type.startsWith("fuse.") && type != "btrfs" && type != "zfs" && type != "bcachefs";
}

qint64 freeBytes(const QString &folder)
{
    const QStorageInfo volume(folder);
#ifdef Q_OS_UNIX
    if (geteuid() == 0)
        return volume.bytesFree(); // what is kept back is kept back for this one
#endif
    return volume.bytesAvailable();
}

/** More than the copies take, found with few questions to the system: mostly there is room for
 * that. */
qint64 mostNeed(const QStringList &paths, const Blocks &blocks)
{
    qint64 need = 0;
    QSet<QString> folders;
    for (const QString &path : paths) {
        need += blocks.ofBytes(QFileInfo(path).size());
        folders.insert(path.left(path.lastIndexOf(QLatin1Char('/')) + 1));
    }
    for (const QString &folder : folders) {
        const QFileInfoList companions = QDir(folder).entryInfoList(
            {QStringLiteral("*.cdg")}, QDir::Files | QDir::Hidden, QDir::Unsorted);
        for (const QFileInfo &companion : companions)
            need += blocks.ofBytes(companion.size());
    }
    return need;
}

} // namespace

Outcome FreeSpace::check(const QStringList &paths, const QString &folder, Disk &disk)
{
    const QStorageInfo volume(folder);
    const Blocks blocks(volume);
    if (!canBeJudged(volume) || mostNeed(paths, blocks) <= freeBytes(folder))
        return {};
    LeastNeed need(blocks);
    for (const QString &path : paths)
        need.add(path, folder + QLatin1Char('/') + SongPath::fileName(path));
    if (need.sum() <= freeBytes(folder))
        return {};
    disk.syncAll({folder});
    const qint64 missing = need.sum() - freeBytes(folder);
    if (missing <= 0)
        return {};
    const QString amount =
        QLocale().formattedDataSize(missing, 1, QLocale::DataSizeTraditionalFormat);
    return {Outcome::Code::NoRoom,
            folder,
            QCoreApplication::translate("Outcome", "mancano almeno %1").arg(amount),
            {}};
}

} // namespace tarvel4
