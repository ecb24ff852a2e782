#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace tarvel4 {

/** What a scan needs of one folder, read with as few questions to the system as it takes. */
class FolderListing
{
public:
    struct Entry
    {
        QString name; ///< as well as it can be said
        bool isFolder = false;
        bool isLink = false;
        bool isUsable = true; ///< false: the name can't be said, or the file not be looked at
        /** Of a file: local time of the last modification, yyyy x 10000 + mm x 100 + dd; 0 for a
         * year of more or less than four digits. */
        quint32 date = 0;
        quint32 time = 0; ///< hh x 10000 + mi x 100 + ss
    };

    using NameFilter = bool (*)(const QString &name, bool isFolder);

    /** Lists those sub-folders and regular files whose names \a isWanted accepts, in no order;
     * links are followed. */
    FolderListing(const QString &path, NameFilter isWanted);

    /** False: no folder, or one that can't be read to its end; the entries are those before. */
    bool isListed() const { return m_isListed; }
    const std::vector<Entry> &entries() const { return m_entries; }

    /** The same for two paths to one folder; empty when there is none. */
    const QByteArray &identity() const { return m_identity; }

private:
    bool m_isListed = false;
    QByteArray m_identity;
    std::vector<Entry> m_entries;
};

} // namespace tarvel4
