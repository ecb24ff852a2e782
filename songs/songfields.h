#pragma once

#include "songs/id3/id3v2tag.h"
#include "songs/mfx/mfxheader.h"
#include "songs/midi/rawmidifile.h"
#include "songs/songinfo.h"

namespace tarvel4 {

/** The fields of one song in memory, wherever its format keeps them, so that the rules of an edit
 * and of an update are written once. */
class SongFields
{
public:
    virtual ~SongFields() = default;

    // A field that a format does not have counts as present.
    virtual bool lacksMarkers() const { return false; }
    virtual bool lacksKey() const = 0;
    virtual bool lacksLength() const = 0;
    virtual bool lacksTitle() const = 0;
    virtual bool lacksAuthor() const = 0;
    virtual bool lacksBpm() const = 0;
    virtual bool lacksArtist() const = 0;
    virtual bool lacksGenre() const = 0;

    virtual QString artist() const = 0;

    virtual void setMarkers(const QVector<Marker> &) {}
    virtual void setKey(const QString &key) = 0;
    virtual void setLength(int seconds) = 0;
    virtual void setTitle(const QString &title) = 0;
    virtual void setAuthor(const QString &author) = 0;
    virtual void setBpm(int bpm) = 0;
    virtual void setArtist(const QString &artist) = 0;
    virtual void setGenre(const QString &genre) = 0;

    /** Whether an update gives a song that has a title this one in its place. */
    virtual bool yieldsTitleTo(const QString &) const { return false; }
    /** Whether an update writes the bpm only of a song that the maker published. */
    virtual bool bpmNeedsPublisher() const { return true; }
    /** What a format notes besides the fields, in an edit and in an update. */
    virtual void noteChange(const SongInfo &) {}
};

/** A MIDI song: everything is in its first track. */
class MidiFields : public SongFields
{
public:
    explicit MidiFields(RawMidiFile &midi)
        : m_midi(midi)
    {}

    bool lacksMarkers() const override { return !m_midi.hasMarkers(); }
    bool lacksKey() const override { return !m_midi.hasKey(); }
    bool lacksLength() const override { return !m_midi.hasLength(); }
    bool lacksTitle() const override { return !m_midi.hasTrackName(); }
    bool lacksAuthor() const override { return !m_midi.hasAuthor(); }
    bool lacksBpm() const override { return !m_midi.hasBpm(); }
    bool lacksArtist() const override { return !m_midi.hasArtist(); }
    bool lacksGenre() const override { return !m_midi.hasGenre(); }

    QString artist() const override { return m_midi.artist(); }

    void setMarkers(const QVector<Marker> &markers) override { m_midi.setMarkers(markers); }
    void setKey(const QString &key) override { m_midi.setKey(key); }
    void setLength(int seconds) override { m_midi.setLength(seconds); }
    void setTitle(const QString &title) override { m_midi.setTrackName(title); }
    void setAuthor(const QString &author) override { m_midi.setAuthor(author); }
    void setBpm(int bpm) override { m_midi.setBpm(bpm); }
    void setArtist(const QString &artist) override { m_midi.setArtist(artist); }
    void setGenre(const QString &genre) override { m_midi.setGenre(genre); }

    bool yieldsTitleTo(const QString &title) const override;

private:
    RawMidiFile &m_midi;
};

/** An MFx song: key, length and markers are in its MIDI stream, the rest in its header. */
class MfxFields : public SongFields
{
public:
    MfxFields(MfxHeader &header, RawMidiFile &midi)
        : m_header(header)
        , m_midi(midi)
    {}

    bool lacksMarkers() const override { return !m_midi.hasMarkers(); }
    bool lacksKey() const override { return !m_midi.hasKey(); }
    bool lacksLength() const override { return !m_midi.hasLength(); }
    bool lacksTitle() const override;
    bool lacksAuthor() const override;
    bool lacksBpm() const override { return !m_header.hasBpm(); }
    bool lacksArtist() const override;
    bool lacksGenre() const override;

    QString artist() const override { return m_header.artist(); }

    void setMarkers(const QVector<Marker> &markers) override { m_midi.setMarkers(markers); }
    void setKey(const QString &key) override { m_midi.setKey(key); }
    void setLength(int seconds) override { m_midi.setLength(seconds); }
    void setTitle(const QString &title) override { m_header.setTitle(title); }
    void setAuthor(const QString &author) override { m_header.setAuthor(author); }
    void setBpm(int bpm) override { m_header.setBpm(bpm); }
    void setArtist(const QString &artist) override { m_header.setArtist(artist); }
    void setGenre(const QString &genre) override { m_header.setGenre(genre); }

    bool bpmNeedsPublisher() const override { return false; }
    void noteChange(const SongInfo &info) override;

private:
    MfxHeader &m_header;
    RawMidiFile &m_midi;
};

/** An MP3: everything is in its tag, which holds no markers. */
class Mp3Fields : public SongFields
{
public:
    explicit Mp3Fields(Id3v2Tag &tag)
        : m_tag(tag)
    {}

    bool lacksKey() const override { return !m_tag.hasKey(); }
    bool lacksLength() const override { return !m_tag.hasLength(); }
    bool lacksTitle() const override { return !m_tag.hasTitle(); }
    bool lacksAuthor() const override { return !m_tag.hasAuthor(); }
    bool lacksBpm() const override { return !m_tag.hasBpm(); }
    bool lacksArtist() const override { return !m_tag.hasArtist(); }
    bool lacksGenre() const override { return !m_tag.hasGenre(); }

    QString artist() const override { return m_tag.artist(); }

    void setKey(const QString &key) override { m_tag.setKey(key); }
    void setLength(int seconds) override { m_tag.setLength(seconds); }
    void setTitle(const QString &title) override { m_tag.setTitle(title); }
    void setAuthor(const QString &author) override { m_tag.setAuthor(author); }
    void setBpm(int bpm) override { m_tag.setBpm(bpm); }
    void setArtist(const QString &artist) override { m_tag.setArtist(artist); }
    void setGenre(const QString &genre) override { m_tag.setGenre(genre); }

    void noteChange(const SongInfo &info) override;

private:
    Id3v2Tag &m_tag;
};

} // namespace tarvel4
