#pragma once

#include <QSet>
#include <QString>

#include <functional>

/** One song file that a scan found. */
struct ScannedSong
{
    QString relativePath; ///< below the root, begins with "/"
    quint32 date = 0; ///< last modification, as IndexEntry has it
    quint32 time = 0;
};

/**
 * Walks a memory for its songs, the entries of each folder in the order of their names: regular
 * files with a song's suffix. Folders "sfx" and "bridge", in any case, and names that begin with a
 * point are passed over; loops of links end.
 */
class MemoryScan
{
public:
    std::function<void(const QString &path)> onFolder; ///< full path of a folder that is entered
    std::function<void(const ScannedSong &song)> onSong;
    std::function<void(const QString &path)>
        onUnreadable; ///< a folder, or a name that can't be represented

    /** False when the root is no folder that can be listed: then nothing is known of its songs. */
    bool scan(const QString &root);

private:
    bool scanFolder(const QString &relativePath);

    QString m_root;
    QSet<QByteArray> m_entered; ///< identities of the folders met
};
