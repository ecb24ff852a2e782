#include "indexer/folderlisting.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <ctime>
#include <dirent.h>
#include <sys/stat.h>

#include <memory>

namespace {

struct DirCloser
{
    void operator()(DIR *folder) const { closedir(folder); }
};

void setStamp(FolderListing::Entry &entry, time_t modified)
{
    tm local{};
    localtime_r(&modified, &local);
    entry.date = static_cast<quint32>((local.tm_year + 1900) * 10000 + (local.tm_mon + 1) * 100
                                      + local.tm_mday);
    entry.time = static_cast<quint32>(local.tm_hour * 10000 + local.tm_min * 100 + local.tm_sec);
}

QByteArray identityOf(const struct stat &status)
{
    return QByteArray::number(static_cast<qulonglong>(status.st_dev)) + ':'
        + QByteArray::number(static_cast<qulonglong>(status.st_ino));
}

} // namespace

FolderListing::FolderListing(const QString &path, bool (*wanted)(const QString &name))
{
    const std::unique_ptr<DIR, DirCloser> folder(opendir(QFile::encodeName(path).constData()));
    struct stat status
    {};
    if (!folder || fstat(dirfd(folder.get()), &status) != 0)
        return;
    m_identity = identityOf(status);

    errno = 0;
    while (const dirent *item = readdir(folder.get())) {
        const QByteArray raw(item->d_name);
        if (raw.startsWith('.'))
            continue;
        const QString name = QFile::decodeName(raw);
        const bool mayBeFolder =
            item->d_type == DT_DIR || item->d_type == DT_LNK || item->d_type == DT_UNKNOWN;
        const bool isWanted = wanted(name);
        if (!mayBeFolder && (!isWanted || item->d_type != DT_REG))
            continue;

        Entry entry;
        entry.isFolder = item->d_type == DT_DIR;
        if (!entry.isFolder) {
            if (fstatat(dirfd(folder.get()), item->d_name, &status, 0) != 0)
                continue; // gone meanwhile, or a link to nowhere
            entry.isFolder = S_ISDIR(status.st_mode);
            if (!entry.isFolder && !(isWanted && S_ISREG(status.st_mode)))
                continue;
            setStamp(entry, status.st_mtime);
        }
        if (QFile::encodeName(name) == raw)
            entry.name = name;
        m_entries.push_back(entry);
        errno = 0;
    }
    m_listed = errno == 0;
    std::sort(m_entries.begin(), m_entries.end(),
              [](const Entry &left, const Entry &right) { return left.name < right.name; });
}

#else

FolderListing::FolderListing(const QString &path, bool (*wanted)(const QString &name))
{
    const QFileInfo folder(path);
    m_listed = folder.isDir() && folder.isReadable();
    m_identity = folder.canonicalFilePath().toUtf8();
    const auto items = QDir(path).entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot);
    for (const QFileInfo &item : items) {
        if (item.fileName().startsWith(u'.') || (item.isFile() && !wanted(item.fileName())))
            continue;
        Entry entry;
        entry.name = item.fileName();
        entry.isFolder = item.isDir();
        entry.date = item.lastModified().toString(QStringLiteral("yyyyMMdd")).toUInt();
        entry.time = item.lastModified().toString(QStringLiteral("hhmmss")).toUInt();
        m_entries.push_back(entry);
    }
    std::sort(m_entries.begin(), m_entries.end(),
              [](const Entry &left, const Entry &right) { return left.name < right.name; });
}

#endif
