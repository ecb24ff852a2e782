#pragma once

#include "songs/id3/id3v2tag.h"
#include "songs/mfx/mfxheader.h"
#include "songs/midi/rawmidifile.h"
#include "songs/songinfo.h"
#include "storage/disk.h"

#include <QStringList>

namespace tarvel4 {

class SongFile;

/** One song file in memory: the only class that knows which format keeps which field where. */
class MetaSong
{
public:
    /** The format codes; docs/formats.md, Song formats. */
    enum Format { Unknown = 0, Midi0 = 1, Midi1 = 2, Mf3 = 3, Mf4 = 4, Mf5 = 5, Mp3 = 6 };

    explicit MetaSong(Disk &disk = Disk::real());

    /** Recognises and loads a regular file. False leaves a song that must be thrown away. */
    bool importFile(const QString &path);

    /** True for a file that importFile() takes; one that is set aside is asked about by the name to
     * which it goes back. */
    static bool isSong(const QString &path);

    /** Fills a record from the loaded song; filename and shortname are left empty for the caller.
     */
    void readInfo(SongInfo &info) const;

    /** Writes a record into the song in memory. \a manual: an edit of the user's, else a catalogue
     * update. */
    void setSongInfo(const SongInfo &info, bool manual);

    /** Puts a marker ahead of those present. Returns the bytes inserted; 0 when the song takes
     * none. */
    int addMarker(const QString &text, quint16 bar);

    /** True when the image in memory is one that saveToFile() would write. */
    bool isSavable() const;

    /** Writes the song over \a path. False: the file holds its old bytes, and the log says why. */
    bool saveToFile(const QString &path);

    /** Writes the song's record to the debug log. */
    void dump() const;

    int format() const { return m_format; }
    /** The SMF bytes of a MIDI song, or those expanded from an MFx song; empty for MP3. */
    const QByteArray &midiData() const { return m_midi.data(); }

    static QString formatName(int format);
    static QStringList keyList();

private:
    bool importFile(const QString &path, const QString &name);
    bool importMfx(const QByteArray &bytes);
    bool importMidi(const QByteArray &bytes);
    bool importMp3(SongFile &file, const QByteArray &start);

    bool isMidi() const { return m_format == Midi0 || m_format == Midi1; }
    bool isMfx() const { return m_format >= Mf3 && m_format <= Mf5; }
    /** The MIDI bytes as an MFx file of this version holds them, before compression. */
    QByteArray mfxStream() const;
    QByteArray image() const;

    Disk &m_disk;
    Id3v2Tag m_tag;
    MfxHeader m_header;
    RawMidiFile m_midi;
    int m_format = Unknown;
    QByteArray m_oldStart; ///< of the MP3 that was imported: its tag as it was
};

} // namespace tarvel4
