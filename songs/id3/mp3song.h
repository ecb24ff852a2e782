#pragma once

#include "songs/id3/id3v2tag.h"
#include "songs/song.h"

namespace tarvel4 {

class RegularFile;

/** An MP3: everything is in its tag, which holds no markers. */
class Mp3Song : public Song
{
public:
    /** True when a file of that name that begins so is taken for an MP3. */
    static bool isRecognised(const QString &path, const QByteArray &start);

    /** Reads the tag on from \a start, the file's first bytes. */
    Outcome load(RegularFile &file, const QByteArray &start);

    std::unique_ptr<Song> clone() const override { return std::make_unique<Mp3Song>(*this); }
    int format() const override;
    void readInto(SongInfo &info) const override;
    QString textIn(SongField field) const override;
    bool lacks(SongField field) const override;
    void write(SongField field, const SongInfo &info) override;
    void noteChange(const SongInfo &info) override;
    Outcome whyNotSavable() const override;
    FileChange change() const override;

private:
    void set(SongField field, const SongInfo &info);

    Id3v2Tag m_tag;
    QByteArray m_oldStart; ///< the tag as it was in the file
    QString m_fieldTooLong; ///< the field that made the tag too large
};

} // namespace tarvel4
