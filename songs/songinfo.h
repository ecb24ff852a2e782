#pragma once

#include <QString>
#include <QVector>

namespace tarvel4 {

/** A section marker of a song: the bar it stands at (1-based) and its label. */
struct Marker
{
    quint16 bar = 0;
    QString text;
};

inline bool operator==(const Marker &a, const Marker &b)
{
    return a.bar == b.bar && a.text == b.text;
}

inline bool operator!=(const Marker &a, const Marker &b)
{
    return !(a == b);
}

/** The metadata record that every module shares: read from a song, filled from the catalogue,
 * edited by the user. */
struct SongInfo
{
    QString title;
    QString artist;
    QString altArtist; ///< another name of the performer; only the catalogue knows it
    QString genre;
    QString author;
    qint32 length = 0; ///< seconds; 0 when a song has none, -1 when a catalogue value is no number
    qint32 bpm = 0; ///< beats per minute; 0 and -1 as for length
    QString key; ///< a name of the key table, such as "C", "A-" or "Bb"
    QString filename; ///< full path
    QString shortname; ///< file name without folder
    bool isPublisher = false; ///< published by the maker
    QVector<Marker> markers; ///< in file order
    QString format; ///< MetaSong::formatName() of the file
    QString mfxLongName; ///< MFx songs only
    quint8 mfxFlags = 0; ///< MFx songs only

    /** Empties every field; numbers become 0. */
    void clear();
};

/** Writes a record to the debug log, labelled, one line a field. */
void dumpSongInfo(const SongInfo &info);

} // namespace tarvel4
