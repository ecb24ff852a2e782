#include "library/folderbackup.h"

#include "library/copybatch.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace tarvel4 {

namespace {

/** Copies a folder tree, each folder once. */
class TreeCopy
{
public:
    explicit TreeCopy(Disk &disk)
        : m_disk(disk)
    {}

    bool folder(const QString &source, const QString &dest)
    {
        qDebug() << "Backing up directory:" << source << "to:" << dest;
        const QFileInfo info(source);
        if (!info.isDir() || !info.isReadable() || !make(dest))
            return false;
        m_entered.insert(info.canonicalFilePath());
        m_entered.insert(QFileInfo(dest).canonicalFilePath()); // it may lie in what is copied

        CopyBatch batch(m_disk, dest);
        bool complete = true;
        const auto entries = QDir(source).entryInfoList(
            QDir::Dirs | QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
        for (const QFileInfo &entry : entries) {
            const QString target = dest + QLatin1Char('/') + entry.fileName();
            if (!entry.isDir())
                complete = file(entry.filePath(), target, batch) && complete;
            else if (!m_entered.contains(entry.canonicalFilePath()))
                complete = folder(entry.filePath(), target) && complete;
        }
        batch.finish();
        return complete && batch.failed().isEmpty();
    }

private:
    static bool make(const QString &folder)
    {
        if (QFileInfo(folder).isDir())
            return true;
        qDebug() << "Making new dir:" << folder;
        return QDir().mkdir(folder);
    }

    static bool file(const QString &source, const QString &target, CopyBatch &batch)
    {
        qDebug() << "Copying file:" << source;
        if (QFileInfo::exists(target))
            return false;
        const bool isAdded =
            batch.add({source, target, QString(), QString(), true}) == CopyBatch::StageResult::Yes;
        if (batch.isFull())
            batch.commit();
        return isAdded;
    }

    Disk &m_disk;
    QSet<QString> m_entered;
};

} // namespace

bool FolderBackup::backupDir(const QString &source, const QString &dest, Disk &disk)
{
    return TreeCopy(disk).folder(source, dest);
}

} // namespace tarvel4
