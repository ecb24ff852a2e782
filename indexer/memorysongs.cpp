#include "indexer/memorysongs.h"

#include "indexer/indexformat.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel4 {

using namespace IndexFormat;

namespace {

template <std::size_t N> bool isOneOf(const QString &name, const std::array<const char *, N> &names)
{
    return std::any_of(names.begin(), names.end(), [&name](const char *candidate) {
        return name.compare(QLatin1String(candidate), Qt::CaseInsensitive) == 0;
    });
}

/** Paths that a record can't tell apart have one form: ISO 8859-1, without regard to case. */
QString recordForm(const QString &path)
{
    return QString::fromLatin1(path.toLatin1()).toCaseFolded();
}

} // namespace

MemorySongs::MemorySongs(const QString &root)
    : m_root(root)
{
    QSet<QString> entered;
    collect(QString(), entered);
    for (const QString &path : std::as_const(m_songs))
        m_left[recordForm(path)].append(path);
}

MemorySongs::Match MemorySongs::take(const QString &recordedPath, const QByteArray &stamp)
{
    QStringList &candidates = m_left[recordForm(recordedPath)];
    if (candidates.isEmpty())
        return {};
    const auto fits = [&](const QString &path) {
        return path.toLatin1() == recordedPath.toLatin1() && stampOf(path) == stamp;
    };
    const auto best = std::find_if(candidates.begin(), candidates.end(), fits);
    if (best != candidates.end())
        return {candidates.takeAt(static_cast<int>(best - candidates.begin())), true};
    const QString path = candidates.takeFirst();
    return {path, stampOf(path) == stamp};
}

QStringList MemorySongs::left() const
{
    QStringList songs;
    std::copy_if(
        m_songs.begin(), m_songs.end(), std::back_inserter(songs),
        [this](const QString &path) { return m_left.value(recordForm(path)).contains(path); });
    return songs;
}

/** Date and time of a song as a record has them. */
QByteArray MemorySongs::stampOf(const QString &path) const
{
    const QDateTime modified = QFileInfo(m_root + path).lastModified();
    // The first moment of 1970 is told as none.
    return (modified.isValid() ? modified : QDateTime::fromMSecsSinceEpoch(0))
        .toString(QStringLiteral("yyyyMMddhhmmss"))
        .toLatin1();
}

void MemorySongs::collect(const QString &below, QSet<QString> &entered)
{
    const QDir folder(m_root + below);
    if (entered.contains(folder.canonicalPath()))
        return; // a loop made by links
    entered.insert(folder.canonicalPath());
    const auto entries = folder.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &entry : entries) {
        const QString path = below + QLatin1Char('/') + entry.fileName();
        if (entry.fileName().startsWith(QLatin1Char('.')))
            continue;
        if (entry.isDir()) {
            if (!isOneOf(entry.fileName(), skippedFolders))
                collect(path, entered);
        } else if (entry.isFile() && isOneOf(entry.suffix(), songSuffixes)
                   && path.size() <= longestPath) {
            m_songs.append(path);
        }
    }
}

} // namespace tarvel4
