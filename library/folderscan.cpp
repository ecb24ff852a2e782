#include "library/folderscan.h"

#include "library/workflowlog.h"
#include "storage/debuglog.h"
#include "storage/nativepath.h"
#include "storage/recovery.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <array>
#include <filesystem>
#include <vector>

namespace tarvel4 {

namespace {

namespace fs = std::filesystem;

struct Entry
{
    QString name;
    bool isNameable; ///< false: the locale can't say the name
    bool isFolder;
    bool isFile; ///< a regular one, or a link to one
};

Entry entryOf(const fs::directory_entry &entry)
{
    std::error_code error;
    const bool isFolder = entry.is_directory(error); // as the listing told, without a look at it
    const bool isFile = entry.is_regular_file(error);
    const fs::path name = entry.path().filename();
#ifdef Q_OS_WIN
    return {QString::fromStdWString(name.native()), true, isFolder, isFile};
#else
    const std::string &native = name.native();
    const bool isAscii =
        std::all_of(native.begin(), native.end(), [](char byte) { return byte > 0; });
    if (isAscii)
        return {QString::fromLatin1(native.data(), int(native.size())), true, isFolder, isFile};
    const QByteArray bytes = QByteArray::fromStdString(native);
    const QString decoded = QFile::decodeName(bytes);
    return {decoded, QFile::encodeName(decoded) == bytes, isFolder, isFile};
#endif
}

bool isSong(const QString &name)
{
    return FolderScan::isSongName(name);
}

bool isNotSetAside(const QString &name)
{
    return !Recovery::isRecoveryName(name);
}

/** Walks a folder tree in name order, each folder once. */
class Walk
{
public:
    Walk(bool (*isWanted)(const QString &), const std::function<bool(const QString &)> &found,
         const std::function<void(const QString &)> &skipped,
         const std::function<void()> &leftFolder)
        : m_isWanted(isWanted)
        , m_found(found)
        , m_skipped(skipped)
        , m_leftFolder(leftFolder)
    {}

    /** False when the walk was stopped. */
    bool folder(const QString &path)
    {
        qCDebug(debugLog) << "[scanDir] Analyzing directory:" << path;
        if (!enter(path))
            return true;
        const std::vector<Entry> entries = list(path);
        return std::all_of(entries.begin(), entries.end(),
                           [this, &path](const Entry &entry) { return this->entry(path, entry); });
    }

private:
    /** Remembers the folder; false where no path reaches it or where it was walked already, through
     * a link. */
    bool enter(const QString &path)
    {
        const QString canonical = QFileInfo(path).canonicalFilePath();
        if (canonical.isEmpty())
            m_skipped(path);
        if (canonical.isEmpty() || m_entered.contains(canonical))
            return false;
        m_entered.insert(canonical);
        return true;
    }

    /** The names of a folder, but for those that begin with a dot. */
    std::vector<Entry> list(const QString &path)
    {
        std::vector<Entry> entries;
        std::error_code error;
        fs::directory_iterator iterator(nativePath(path), error);
        while (!error && iterator != fs::directory_iterator()) {
            const Entry entry = entryOf(*iterator);
            if (!entry.name.startsWith(QLatin1Char('.')))
                entries.push_back(entry);
            iterator.increment(error);
        }
        if (error)
            m_skipped(path);
        std::sort(entries.begin(), entries.end(),
                  [](const Entry &a, const Entry &b) { return a.name < b.name; });
        return entries;
    }

    bool entry(const QString &folderPath, const Entry &entry)
    {
        if (!entry.isFolder && !m_isWanted(entry.name))
            return true;
        // QDir would take a name that begins with a colon for a path of its own.
        const QString path = folderPath.endsWith(QLatin1Char('/'))
            ? folderPath + entry.name
            : folderPath + QLatin1Char('/') + entry.name;
        const bool isThere = entry.isFolder || entry.isFile || QFileInfo::exists(path);
        if (!entry.isNameable || !isThere) {
            m_skipped(path);
            return true;
        }
        if (entry.isFolder) {
            qCDebug(debugLog) << "[scanDir] Found directory:" << path;
            const bool goOn = folder(path);
            if (m_leftFolder)
                m_leftFolder();
            return goOn;
        }
        return !entry.isFile || song(path);
    }

    bool song(const QString &path)
    {
        qCDebug(debugLog) << "[scanDir] Found file:" << path;
        const bool goOn = m_found(path);
        WorkflowLog::songEnd();
        return goOn;
    }

    bool (*m_isWanted)(const QString &name);
    const std::function<bool(const QString &)> &m_found;
    const std::function<void(const QString &)> &m_skipped;
    const std::function<void()> &m_leftFolder;
    QSet<QString> m_entered;
};

void addSetAside(const QString &path, QStringList &files, QSet<QString> &entered)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    if (entered.contains(canonical))
        return;
    entered.insert(canonical);
    std::error_code error;
    fs::directory_iterator iterator(nativePath(path), error);
    for (; !error && iterator != fs::directory_iterator(); iterator.increment(error)) {
        const Entry entry = entryOf(*iterator);
        if (entry.name.startsWith(QLatin1Char('.')) || !entry.isNameable)
            continue;
        const QString full = path + QLatin1Char('/') + entry.name;
        if (entry.isFolder)
            addSetAside(full, files, entered);
        else if (entry.isFile && Recovery::isRecoveryName(entry.name))
            files += Recovery::goesBackTo(full);
    }
}

void countBelow(const QString &path, int &count, QSet<QString> &entered)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    if (entered.contains(canonical))
        return;
    entered.insert(canonical);
    const QFileInfoList entries =
        QDir(path).entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::DirsFirst);
    for (const QFileInfo &entry : entries) {
        if (entry.isDir())
            countBelow(entry.filePath(), count, entered);
        else
            ++count;
    }
}

} // namespace

bool FolderScan::isSongName(const QString &fileName)
{
    constexpr std::array<const char *, 6> endings{".mid", ".kar", ".mp3", ".mf3", ".mf4", ".mf5"};
    return std::any_of(endings.begin(), endings.end(), [&fileName](const char *ending) {
        return fileName.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
    });
}

void FolderScan::countFiles(const QString &path, int &count)
{
    QSet<QString> entered;
    countBelow(path, count, entered);
}

bool FolderScan::scanDir(const QString &path, const std::function<bool(const QString &)> &found,
                         const std::function<void(const QString &)> &skipped, Files files,
                         const std::function<void()> &leftFolder)
{
    return Walk(files == Files::All ? isNotSetAside : isSong, found, skipped, leftFolder)
        .folder(path);
}

QStringList FolderScan::setAsideBelow(const QString &path)
{
    QStringList files;
    QSet<QString> entered;
    addSetAside(path, files, entered);
    return files;
}

} // namespace tarvel4
