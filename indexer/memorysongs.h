#pragma once

#include <QHash>
#include <QSet>
#include <QStringList>

namespace tarvel4 {

/**
 * The songs of a memory that belong into its index, for the verifier: a walk of its own, so that a
 * fault of the builder's can't hide itself.
 */
class MemorySongs
{
public:
    explicit MemorySongs(const QString &root);

    /** The song that a record stands for. */
    struct Match
    {
        QString path; ///< below the root; empty where no song is left
        bool hasStamp = false; ///< it has the record's date and time
    };

    /** The song that fits a record of this path and stamp best. Each song is given out once. */
    Match take(const QString &recordedPath, const QByteArray &stamp);

    /** The songs that were not given out, in the order of the walk. */
    QStringList left() const;

private:
    QByteArray stampOf(const QString &path) const;
    void collect(const QString &below, QSet<QString> &entered);

    QString m_root;
    QStringList m_songs; ///< paths below the root
    QHash<QString, QStringList> m_left; ///< by what a record can tell of their paths
};

} // namespace tarvel4
