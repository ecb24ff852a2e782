#include "library/folderscan.h"

#include "library/workflowlog.h"
#include "storage/debuglog.h"
#include "storage/folderwalk.h"
#include "storage/recovery.h"

#include <algorithm>
#include <array>

namespace tarvel4 {

namespace {

bool isNotHidden(const QString &name, bool)
{
    return !name.startsWith(QLatin1Char('.'));
}

bool isSongOrFolder(const QString &name, bool isFolder)
{
    return isNotHidden(name, isFolder) && (isFolder || FolderScan::isSongName(name));
}

bool isNotSetAside(const QString &name, bool isFolder)
{
    return isNotHidden(name, isFolder) && (isFolder || !Recovery::isRecoveryName(name));
}

bool isSetAside(const QString &name, bool isFolder)
{
    return isNotHidden(name, isFolder) && (isFolder || Recovery::isRecoveryName(name));
}

/** The walk of scanDir(), with its log. */
class Scan : public FolderWalk
{
public:
    Scan(FolderScan::Files files, const std::function<bool(const QString &)> &found,
         const std::function<void(const QString &)> &skipped,
         const std::function<void()> &leftFolder)
        : FolderWalk(
            {files == FolderScan::Files::All ? isNotSetAside : isSongOrFolder, false, true})
        , m_found(found)
        , m_skipped(skipped)
        , m_leftFolder(leftFolder)
    {}

private:
    void meet(const QString &below) override
    {
        if (!below.isEmpty())
            qCDebug(debugLog) << "[scanDir] Found directory:" << pathOf(below);
        qCDebug(debugLog) << "[scanDir] Analyzing directory:" << pathOf(below);
    }

    bool enter(const QString &below, const Outcome &listed) override
    {
        if (!listed)
            m_skipped(pathOf(below));
        return true;
    }

    void leave(const QString &below) override
    {
        if (m_leftFolder && !below.isEmpty())
            m_leftFolder();
    }

    bool file(const QString &below, const Item &) override
    {
        const QString path = pathOf(below);
        qCDebug(debugLog) << "[scanDir] Found file:" << path;
        const bool goOn = m_found(path);
        WorkflowLog::songEnd();
        return goOn;
    }

    void unreachable(const QString &below) override { m_skipped(pathOf(below)); }

    const std::function<bool(const QString &)> &m_found;
    const std::function<void(const QString &)> &m_skipped;
    const std::function<void()> &m_leftFolder;
};

/** Calls a function for each file with a wanted name, and says nothing of what it can't reach. */
class EachFile : public FolderWalk
{
public:
    EachFile(bool (*isWanted)(const QString &, bool),
             const std::function<void(const QString &)> &found,
             const std::function<bool()> &goesOn = {})
        : FolderWalk({isWanted, false, false})
        , m_found(found)
        , m_goesOn(goesOn)
    {}

private:
    bool enter(const QString &, const Outcome &) override { return !m_goesOn || m_goesOn(); }

    bool file(const QString &below, const Item &) override
    {
        m_found(pathOf(below));
        return true;
    }

    void unreachable(const QString &) override {}

    const std::function<void(const QString &)> &m_found;
    const std::function<bool()> &m_goesOn;
};

} // namespace

bool FolderScan::isSongName(const QString &fileName)
{
    constexpr std::array<const char *, 6> endings{".mid", ".kar", ".mp3", ".mf3", ".mf4", ".mf5"};
    return std::any_of(endings.begin(), endings.end(), [&fileName](const char *ending) {
        return fileName.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
    });
}

// required, although nothing in the program calls it
void FolderScan::countFiles(const QString &path, int &count)
{
    EachFile(isNotHidden, [&count](const QString &) { ++count; }).walk(path);
}

bool FolderScan::scanDir(const QString &path, const std::function<bool(const QString &)> &found,
                         const std::function<void(const QString &)> &skipped, Files files,
                         const std::function<void()> &leftFolder)
{
    return Scan(files, found, skipped, leftFolder).walk(path);
}

QStringList FolderScan::setAsideBelow(const QString &path, const std::function<bool()> &goesOn)
{
    QStringList files;
    const auto note = [&files](const QString &file) { files += Recovery::goesBackTo(file); };
    EachFile(isSetAside, note, goesOn).walk(path);
    return files;
}

} // namespace tarvel4
