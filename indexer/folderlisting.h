#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/** What a scan needs of one folder, read with as few questions to the system as it takes. */
class FolderListing
{
public:
    struct Entry
    {
        QString name; ///< empty when the name can't be represented
        bool isFolder = false;
        quint32 date =
            0; ///< local time of the last modification, yyyy x 10000 + mm x 100 + dd; of files only
        quint32 time = 0; ///< hh x 10000 + mi x 100 + ss
    };

    /** Lists the sub-folders and those regular files whose names \a wanted accepts, in the order of
     * their names. */
    FolderListing(const QString &path, bool (*wanted)(const QString &name));

    bool isListed() const
    {
        return m_listed;
    } ///< false: no folder, or one that can't be read to its end
    const std::vector<Entry> &entries() const { return m_entries; }

    /** The same for two paths to one folder. */
    const QByteArray &identity() const { return m_identity; }

private:
    bool m_listed = false;
    QByteArray m_identity;
    std::vector<Entry> m_entries;
};
