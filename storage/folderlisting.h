#pragma once

#include "storage/outcome.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace tarvel4 {

/** What a walk needs of one folder, read with as few questions to the system as it takes. */
class FolderListing
{
public:
    struct Entry
    {
        QString name; ///< as well as it can be said
        bool isFolder = false;
        bool isLink = false;
        bool isUsable = true; ///< false: the name can't be said, or the file not be looked at
        /** Of a file, where times are wanted: local time of the last modification, yyyy x 10000 +
         * mm x 100 + dd; 0 for a year of more or less than four digits. */
        quint32 date = 0;
        quint32 time = 0; ///< hh x 10000 + mi x 100 + ss
    };

    struct Filter
    {
        bool (*isWanted)(const QString &name, bool isFolder);
        bool hasTimes = false; ///< costs a question a file
        bool hasDeadLinks = false; ///< a wanted file's name that leads nowhere is listed, unusable
    };

    /** Lists those sub-folders and regular files whose names are wanted, in no order; links are
     * followed. */
    FolderListing(const QString &path, const Filter &filter);

    /** A failure: no folder, or one that can't be read to its end; the entries are those before. */
    const Outcome &outcome() const { return m_outcome; }
    const std::vector<Entry> &entries() const { return m_entries; }

    /** The same for two paths to one folder; empty when it can't be read. */
    const QByteArray &identity() const { return m_identity; }
    static QByteArray identityOf(const QString &path);

private:
    Outcome m_outcome;
    QByteArray m_identity;
    std::vector<Entry> m_entries;
};

} // namespace tarvel4
