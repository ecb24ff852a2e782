#pragma once

#include "songs/midi/rawmidifile.h"
#include "songs/song.h"

namespace tarvel4 {

/** A MIDI song: everything is in its first track. */
class MidiSong : public Song
{
public:
    /** Takes the bytes of a whole file. */
    Outcome load(const QByteArray &bytes);

    std::unique_ptr<Song> clone() const override { return std::make_unique<MidiSong>(*this); }
    std::unique_ptr<Song> trial() const override;
    int format() const override { return m_midi.type(); }
    void readInto(SongInfo &info) const override;
    QString textIn(SongField field) const override;
    bool lacks(SongField field) const override;
    void write(SongField field, const SongInfo &info) override;
    TextLimits limitsOf(SongField field) const override;
    int addMarker(const Marker &marker) override { return m_midi.addMarker(marker); }
    bool yieldsTitleTo(const QString &title) const override;
    Outcome whyNotSavable() const override;
    FileChange change() const override;
    QByteArray midiData() const override { return m_midi.data(); }

private:
    RawMidiFile m_midi;
    QByteArray m_oldBytes; ///< as they were in the file
};

} // namespace tarvel4
