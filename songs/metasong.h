#pragma once

#include "songs/fieldcheck.h"
#include "songs/songinfo.h"
#include "storage/disk.h"
#include "storage/filechange.h"

#include <QStringList>

#include <memory>

namespace tarvel4 {

class RegularFile;
class Song;

/** Who asks for a record to be written into a song. */
enum class WrittenBy {
    User, ///< an edit: every field but the markers
    Catalogue, ///< an update: mostly what the song lacks
};

/** One song file in memory: recognises its format, and hands everything else to that. */
class MetaSong
{
public:
    /** The format codes; docs/formats.md, Song formats. */
    enum Format { Unknown = 0, Midi0 = 1, Midi1 = 2, Mf3 = 3, Mf4 = 4, Mf5 = 5, Mp3 = 6 };

    explicit MetaSong(Disk &disk = Disk::real());
    ~MetaSong();
    MetaSong(MetaSong &&) noexcept;

    /** Recognises and loads a regular file. Not done: nothing is loaded. */
    Outcome importFile(const QString &path);

    /** True for a file that importFile() takes; one that is set aside is asked about by the name to
     * which it goes back. */
    static bool isSong(const QString &path);

    /** Fills a record from the loaded song; filename and shortname are left empty for the caller.
     */
    void readInfo(SongInfo &info) const;

    /** Writes a record into the song in memory. */
    void setSongInfo(const SongInfo &info, WrittenBy writtenBy);

    /** What would become of the texts of a record that a user writes into the song in memory. */
    QVector<FieldNote> checkEdit(const SongInfo &edited) const;

    /** Puts a marker ahead of those present. Returns the bytes inserted; 0 when the song takes
     * none. */
    int addMarker(const QString &text, quint16 bar);

    /** Why saveToFile() would write nothing of the song in memory; done where it would. */
    Outcome whyNotSavable() const;

    /** What saveToFile() would do to the file that the song was loaded from, for a batch of them.
     * Not done: such a song can't be saved, and the log says so. */
    Outcome planSave(FileChange &change) const;

    /** Writes the song over \a path, at once. Not done: the file holds its old bytes, unless the
     * outcome says otherwise, and the log says why. */
    Outcome saveToFile(const QString &path);

    /** Writes the song's record to the debug log. */
    void dump() const;

    int format() const;
    /** The SMF bytes of a MIDI song, or those expanded from an MFx song; empty for MP3. */
    QByteArray midiData() const;

    static QString formatName(int format);
    static QStringList keyList();

private:
    Outcome importFile(const QString &path, const QString &name);
    Outcome load(const QString &name, RegularFile &file);

    Disk &m_disk;
    std::unique_ptr<Song> m_song; ///< null where nothing is loaded
};

} // namespace tarvel4
