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

    bool isComplete() const { return m_isComplete; }

private:
    bool enter(const QString &below, const Outcome &listed) override
    {
        const QString dest = m_dest + below;
        qDebug() << "Backing up directory:" << pathOf(below) << "to:" << dest;
        if (!listed || !make(dest)) {
            m_isComplete = false;
            return false;
        }
        leaveOut(dest); // it may lie in what is copied
        m_batches.push_back(
            std::make_unique<CopyBatch>(m_disk, dest, [this](int, const Outcome &outcome) {
                m_isComplete = m_isComplete && outcome;
            }));
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
        const bool isAdded =
            !QFileInfo::exists(target) && batch.add({0, source, target, QString(), QString()});
        if (batch.isFull())
            batch.commit();
        m_isComplete = m_isComplete && isAdded;
        return true;
    }

    void unreachable(const QString &below) override
    {
        qDebug() << "[backupDir] WARNING: can't be read:" << pathOf(below);
        m_isComplete = false;
    }

    static bool make(const QString &folder)
    {
        if (QFileInfo(folder).isDir())
            return true;
        qDebug() << "Making new dir:" << folder;
        return static_cast<bool>(CopyBatch::makeFolder(folder));
    }

    Disk &m_disk;
    QString m_dest;
    std::vector<std::unique_ptr<CopyBatch>> m_batches; ///< of the folders on the way down
    bool m_isComplete = true;
};

} // namespace

bool FolderBackup::backupDir(const QString &source, const QString &dest, Disk &disk)
{
    TreeCopy copy(disk, dest);
    copy.walk(source);
    return copy.isComplete();
}

} // namespace tarvel4
