#pragma once

#include "songs/midi/midiformat.h"
#include "songs/songinfo.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

namespace tarvel4 {

/**
 * One Standard MIDI File in memory, and the song metadata kept in its first track. Events are found
 * by their bytes, never by parsing the track; docs/formats.md, MIDI metadata.
 */
class RawMidiFile
{
public:
    /** Takes the bytes of a whole file. False: no MIDI file of format 0 or 1; nothing changes. */
    bool load(const QByteArray &bytes);

    /** More bytes than one edit of each field, markers left out, can add. */
    static constexpr int mostEditBytes = 4096;
    /** The file without its events. What an edit of every text puts into it is found there as in
     * the whole file, since it comes ahead of all that was there. */
    RawMidiFile head() const;

    /** 1 for a file of format 0, 2 for format 1, 0 when nothing is loaded. */
    int type() const { return m_type; }

    /** The file's bytes, with every edit made so far. */
    const QByteArray &data() const { return m_data; }

    // Readers: an absent event gives an empty text or 0.
    QString trackName() const { return metaText(MidiFormat::Meta::TrackName); }
    QString genre() const { return songInfoText(MidiFormat::SubType::Genre); }
    QString artist() const { return songInfoText(MidiFormat::SubType::Artist); }
    QString author() const { return songInfoText(MidiFormat::SubType::Author); }
    int length() const { return songInfoNumber(MidiFormat::SubType::Length); } ///< seconds
    int bpm() const { return songInfoNumber(MidiFormat::SubType::Bpm); }
    QVector<Marker> markers() const;
    /** A name of the key table; empty, and a log line, for a code that is not in it. */
    QString key() const;
    /** True when the copyright notice names the maker. */
    bool isPublisher() const;

    // Presence of an event, whatever it holds.
    bool hasTrackName() const { return findMeta(MidiFormat::Meta::TrackName) >= 0; }
    bool hasGenre() const { return findSongInfo(MidiFormat::SubType::Genre) >= 0; }
    bool hasArtist() const { return findSongInfo(MidiFormat::SubType::Artist) >= 0; }
    bool hasAuthor() const { return findSongInfo(MidiFormat::SubType::Author) >= 0; }
    bool hasLength() const { return findSongInfo(MidiFormat::SubType::Length) >= 0; }
    bool hasBpm() const { return findSongInfo(MidiFormat::SubType::Bpm) >= 0; }
    bool hasMarkers() const { return findSongInfo(MidiFormat::SubType::Marker) >= 0; }
    bool hasKey() const { return findMeta(MidiFormat::Meta::KeySignature) >= 0; }

    // Writers: the events of that kind in the first track are replaced by one at its start. Texts
    // are cut to their first 125 characters.
    void setTrackName(const QString &text);
    void setGenre(const QString &text) { setSongInfo(MidiFormat::SubType::Genre, text); }
    void setArtist(const QString &text) { setSongInfo(MidiFormat::SubType::Artist, text); }
    void setAuthor(const QString &text) { setSongInfo(MidiFormat::SubType::Author, text); }
    void setLength(int seconds);
    void setBpm(int bpm);
    void setMarkers(const QVector<Marker> &markers);
    /** An empty or unknown name leaves the song without a key. */
    void setKey(const QString &name);

    /** Puts a marker ahead of those present. Returns the bytes inserted: 0 when nothing is loaded.
     */
    int addMarker(const Marker &marker);

    /** The 30 key names, in the order of their codes. */
    static QStringList keyList();
    /** True for a name that setKey() accepts: those of keyList() and three aliases, blanks
     * ignored. */
    static bool isKnownKey(const QString &name);

private:
    int findMeta(MidiFormat::Meta type) const;
    int findSongInfo(MidiFormat::SubType subType) const;
    bool isSongInfo(int event, MidiFormat::SubType subType) const;
    QString metaText(MidiFormat::Meta type) const;
    QString songInfoText(MidiFormat::SubType subType) const;
    int songInfoNumber(MidiFormat::SubType subType) const;
    void setSongInfo(MidiFormat::SubType subType, const QString &text);

    void removeMeta(MidiFormat::Meta type);
    void removeSongInfo(MidiFormat::SubType subType);
    template <typename Wanted> void removeEvents(Wanted isWanted);
    int insertEvent(MidiFormat::Meta type, const QByteArray &payload);
    int insertSongInfo(MidiFormat::SubType subType, const QByteArray &payload);
    void trackResized();

    QByteArray m_data;
    std::vector<int> m_events; ///< every 0xFF that one of our types follows, from the track on
    quint32 m_trackLength = 0; ///< as in the header of the first track
    int m_trackStart = 0; ///< the first byte after that header
    int m_trackLengthPos = 0; ///< its length field
    int m_type = 0;
};

} // namespace tarvel4
