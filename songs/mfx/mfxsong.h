#pragma once

#include "songs/mfx/mfxheader.h"
#include "songs/midi/rawmidifile.h"
#include "songs/song.h"

namespace tarvel4 {

/** An MFx song: key, length and markers are in its MIDI stream, the rest in its header. */
class MfxSong : public Song
{
public:
    /** True when a file that begins so is an MFx song. */
    static bool isRecognised(const QByteArray &start);

    /** Takes the bytes of a whole file. */
    Outcome load(const QByteArray &bytes);

    std::unique_ptr<Song> clone() const override { return std::make_unique<MfxSong>(*this); }
    std::unique_ptr<Song> trial() const override;
    int format() const override { return m_header.version(); }
    void readInto(SongInfo &info) const override;
    QString textIn(SongField field) const override;
    bool lacks(SongField field) const override;
    void write(SongField field, const SongInfo &info) override;
    TextLimits limitsOf(SongField field) const override;
    int addMarker(const Marker &marker) override { return m_midi.addMarker(marker); }
    bool bpmNeedsPublisher() const override { return false; }
    void noteChange(const SongInfo &info) override;
    Outcome whyNotSavable() const override;
    FileChange change() const override;
    QByteArray midiData() const override { return m_midi.data(); }

private:
    void writeText(SongField field, MfxFormat::TextField place, const QString &text);
    QByteArray stream() const;
    QByteArray image() const;

    MfxHeader m_header;
    RawMidiFile m_midi;
    QByteArray m_oldBytes; ///< as they were in the file
    Outcome m_misfit; ///< the first text that the header could not hold
};

} // namespace tarvel4
