#include "library/folderbackup.h"

#include "library/copybatch.h"
#include "storage/folderwalk.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <memory>
#include <vector>

namespace tarvel4 {

namespace {

bool isAny(const QString &name, bool)
{
    return name != QLatin1String(".") && name != QLatin1String("..");
}

/** Copies a folder tree, each folder once. */
class TreeCopy : public FolderWalk
{
public:
    TreeCopy(Disk &disk, const QString &dest)
        : FolderWalk({isAny, false, false})
        , m_disk(disk)
        , m_dest(dest)
    {}

    /** The first failure. */
    const Outcome &outcome() const { return m_outcome; }

private:
    bool enter(const QString &below, const Outcome &listed) override
    {
        const QString dest = m_dest + below;
        qDebug() << "Backing up directory:" << pathOf(below) << "to:" << dest;
        if (!isDone(listed, pathOf(below)) || !isDone(make(dest), dest))
            return false;
        leaveOut(dest); // it may lie in what is copied
        m_batches.push_back(std::make_unique<CopyBatch>(
            m_disk, dest, [this, dest](int, const Outcome &outcome) { isDone(outcome, dest); }));
        return true;
    }

    void leave(const QString &) override
    {
        m_batches.back()->finish();
        m_batches.pop_back();
    }

    bool file(const QString &below, const Item &) override
    {
        const QString source = pathOf(below);
        const QString target = m_dest + below;
        qDebug() << "Copying file:" << source;
        CopyBatch &batch = *m_batches.back();
        if (QFileInfo::exists(target))
            isDone({Outcome::Code::AlreadyExists, target, {}, {}}, target);
        else
            isDone(batch.add({0, source, target, QString(), QString()}), target);
        if (batch.isFull())
            batch.commit();
        return true;
    }

    void unreachable(const QString &below) override
    {
        qDebug() << "[backupDir] WARNING: can't be read:" << pathOf(below);
        isDone({Outcome::Code::NotFound, pathOf(below), {}, {}}, pathOf(below));
    }

    static Outcome make(const QString &folder)
    {
        if (QFileInfo(folder).isDir())
            return {};
        qDebug() << "Making new dir:" << folder;
        return CopyBatch::makeFolder(folder);
    }

    /** Keeps the first failure; \a path is what it happened to where it does not say so. */
    bool isDone(const Outcome &outcome, const QString &path)
    {
        if (!outcome && m_outcome) {
            m_outcome = outcome;
            if (m_outcome.path.isEmpty())
                m_outcome.path = path;
        }
        return static_cast<bool>(outcome);
    }

    Disk &m_disk;
    QString m_dest;
    std::vector<std::unique_ptr<CopyBatch>> m_batches; ///< of the folders on the way down
    Outcome m_outcome;
};

} // namespace

// required, although nothing in the program calls it
Outcome FolderBackup::backupDir(const QString &source, const QString &dest, Disk &disk)
{
    TreeCopy copy(disk, dest);
    copy.walk(source);
    return copy.outcome();
}

} // namespace tarvel4
