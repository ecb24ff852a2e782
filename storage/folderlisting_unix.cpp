#include "storage/folderlisting.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <memory>
#include <optional>

#include <dirent.h>
#include <sys/stat.h>

namespace tarvel4 {

namespace {

struct FolderCloser
{
    void operator()(DIR *folder) const { closedir(folder); }
};

QByteArray identityOfStatus(const struct stat &status)
{
    return QByteArray::number(static_cast<qulonglong>(status.st_dev)) + ':'
        + QByteArray::number(static_cast<qulonglong>(status.st_ino));
}

void setStamp(FolderListing::Entry &entry, std::time_t modified)
{
    constexpr int firstYear = 1900;
    constexpr int lastYear = 9999;
    struct tm local = {};
    if (!localtime_r(&modified, &local) || local.tm_year < -firstYear
        || local.tm_year > lastYear - firstYear)
        return;
    entry.date = static_cast<quint32>((local.tm_year + firstYear) * 10000 + (local.tm_mon + 1) * 100
                                      + local.tm_mday);
    entry.time = static_cast<quint32>(local.tm_hour * 10000 + local.tm_min * 100 + local.tm_sec);
}

void setName(FolderListing::Entry &entry, const char *bytes)
{
    const int size = static_cast<int>(qstrlen(bytes));
    const bool isAscii =
        std::all_of(bytes, bytes + size, [](char byte) { return static_cast<uchar>(byte) < 0x80; });
    entry.name = isAscii ? QString::fromLatin1(bytes, size)
                         : QFile::decodeName(QByteArray::fromRawData(bytes, size));
    entry.isUsable = isAscii || QFile::encodeName(entry.name) == bytes;
}

/** What a name stands for; nothing where it is not wanted. */
std::optional<FolderListing::Entry> look(int folder, const dirent &item,
                                         const FolderListing::Filter &filter)
{
    const auto isWanted = filter.isWanted;
    FolderListing::Entry entry;
    setName(entry, item.d_name);
    entry.isLink = item.d_type == DT_LNK;
    entry.isFolder = item.d_type == DT_DIR;
    const bool mayBeBoth = entry.isLink || item.d_type == DT_UNKNOWN;
    const bool mayBeFile = (mayBeBoth || item.d_type == DT_REG) && isWanted(entry.name, false);
    const bool mayBeFolder = (mayBeBoth || entry.isFolder) && isWanted(entry.name, true);
    if (!mayBeFile && !mayBeFolder)
        return {};
    if (entry.isFolder || (item.d_type == DT_REG && !filter.hasTimes))
        return entry;

    struct stat status = {};
    if (fstatat(folder, item.d_name, &status, 0) != 0) {
        const bool leadsNowhere = errno == ENOENT || errno == ENOTDIR || errno == ELOOP;
        entry.isUsable = false;
        return mayBeFile && (filter.hasDeadLinks || !leadsNowhere) ? std::optional(entry)
                                                                   : std::nullopt;
    }
    entry.isFolder = S_ISDIR(status.st_mode);
    if (!(entry.isFolder ? mayBeFolder : mayBeFile && S_ISREG(status.st_mode)))
        return {};
    if (filter.hasTimes && !entry.isFolder)
        setStamp(entry, status.st_mtime);
    return entry;
}

} // namespace

FolderListing::FolderListing(const QString &path, const Filter &filter)
{
    const std::unique_ptr<DIR, FolderCloser> folder(opendir(QFile::encodeName(path).constData()));
    struct stat status = {};
    if (!folder || fstat(dirfd(folder.get()), &status) != 0) {
        m_outcome = Outcome::ofSystemError(errno, path, false);
        return;
    }
    m_identity = identityOfStatus(status);

    errno = 0;
    while (const dirent *item = readdir(folder.get())) {
        if (const auto entry = look(dirfd(folder.get()), *item, filter))
            m_entries.push_back(*entry);
        errno = 0; // of the look, which the end of the folder must not be taken for
    }
    if (errno != 0)
        m_outcome = Outcome::ofSystemError(errno, path, false);
}

QByteArray FolderListing::identityOf(const QString &path)
{
    struct stat status = {};
    const bool isThere = stat(QFile::encodeName(path).constData(), &status) == 0;
    return isThere ? identityOfStatus(status) : QByteArray();
}

} // namespace tarvel4
