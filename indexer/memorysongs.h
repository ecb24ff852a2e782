#pragma once

#include <QHash>
#include <QSet>
#include <QStringList>

/**
 * The songs of a memory that belong into its index, for the verifier: a walk of its own, so that a
 * fault of the builder's can't hide itself.
 */
class MemorySongs
{
public:
    explicit MemorySongs(const QString &root);

    /** A song that a record of this path and stamp may stand for, the one that fits best; empty
     * where none is left. Each song is given out once. */
    QString take(const QString &recordedPath, const QByteArray &stamp);

    /** The songs that were not given out, in the order of the walk. */
    QStringList left() const;

    /** Date and time of a song as a record has them. */
    QByteArray stampOf(const QString &path) const;

private:
    void collect(const QString &below, QSet<QString> &entered);

    QString m_root;
    QStringList m_songs; ///< paths below the root
    QHash<QString, QStringList> m_left; ///< by what a record can tell of their paths
};
