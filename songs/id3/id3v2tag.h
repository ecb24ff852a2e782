#pragma once

#include "songs/id3/id3format.h"

#include <QByteArray>
#include <QString>

#include <array>

namespace tarvel4 {

/** The tag in front of an MP3's audio: its text frames are read and replaced in place, everything
 * else in it is kept. docs/formats.md, ID3v2 tags. */
class Id3v2Tag
{
public:
    /**
     * Takes the tag from the first bytes of a file: all of them, or at least as many as
     * bytesWanted(). A file without a tag gets a new, empty one. False: the file is too short.
     */
    bool parse(const QByteArray &bytes);

    /** How many bytes of a file parse() looks at, told from its first headerSize bytes; too many
     * for a song when above maxSongBytes. */
    static qint64 bytesWanted(const QByteArray &header);

    /** The whole tag, to be written in front of the audio. */
    const QByteArray &tag() const { return m_tag; }
    /** Where the audio begins in the file that was parsed. */
    qint64 audioStart() const { return m_audioStart; }
    /** The size that the tag's header gives: its bytes without the header. */
    quint32 tagSize() const { return m_tagSize; }

    /** The text of the first frame of that ID; empty when there is none. */
    QString text(Id3Format::TextFrame frame) const;
    QString title() const { return text(Id3Format::TextFrame::Title); }
    QString artist() const { return text(Id3Format::TextFrame::Artist); }
    QString author() const { return text(Id3Format::TextFrame::Author); }
    QString genre() const { return text(Id3Format::TextFrame::Genre); }
    QString key() const { return text(Id3Format::TextFrame::Key); }
    int length() const; ///< seconds; 0 when unknown
    int bpm() const; ///< 0 when unknown
    bool isPublisher() const; ///< the copyright frame names the maker

    bool hasTitle() const { return has(Id3Format::TextFrame::Title); }
    bool hasArtist() const { return has(Id3Format::TextFrame::Artist); }
    bool hasAuthor() const { return has(Id3Format::TextFrame::Author); }
    bool hasGenre() const { return has(Id3Format::TextFrame::Genre); }
    bool hasKey() const { return has(Id3Format::TextFrame::Key); }
    bool hasLength() const { return has(Id3Format::TextFrame::Length); }
    bool hasBpm() const { return has(Id3Format::TextFrame::Bpm); }
    bool hasEditMark() const;

    // Writers: the first frame of that ID makes place for one at the start of the tag. An empty
    // text only removes.
    void setTitle(const QString &text) { setText(Id3Format::TextFrame::Title, text); }
    void setArtist(const QString &text) { setText(Id3Format::TextFrame::Artist, text); }
    void setAuthor(const QString &text) { setText(Id3Format::TextFrame::Author, text); }
    void setGenre(const QString &text) { setText(Id3Format::TextFrame::Genre, text); }
    void setKey(const QString &text) { setText(Id3Format::TextFrame::Key, text); }
    void setLength(int seconds);
    void setBpm(int bpm); ///< 0 or less only removes
    void addEditMark();

private:
    bool has(Id3Format::TextFrame frame) const { return position(frame) >= 0; }
    int position(Id3Format::TextFrame frame) const
    {
        return m_positions[static_cast<std::size_t>(frame)];
    }
    void setText(Id3Format::TextFrame frame, const QString &text);
    void removeFrame(Id3Format::TextFrame frame);
    void insertFrame(const char *id, const QByteArray &payload);
    void tagResized();
    void findFrames();

    QByteArray m_tag;
    std::array<int, Id3Format::frameCount> m_positions{}; ///< of each first frame; -1: none
    quint32 m_tagSize = 0;
    qint64 m_audioStart = 0;
};

} // namespace tarvel4
