#pragma once

#include "songs/mfx/mfxformat.h"

#include <QByteArray>
#include <QString>

namespace tarvel4 {

/**
 * The header of an MFx song, kept as its bytes so that what is not interpreted is written back
 * unchanged; docs/formats.md, MFx container.
 *
 * Without a header parsed the readers give empty texts and 0, and the writers do nothing.
 */
class MfxHeader
{
public:
    /** Takes all of \a bytes as the header. False when they are no MFx header or too short. */
    bool parse(const QByteArray &bytes);

    int version() const { return m_version; } ///< 3, 4 or 5; 0 when nothing was parsed
    const QByteArray &headerBytes() const { return m_header; }

    /** The bytes a header has in the files of a version; 0 for an unknown one. */
    static int sizeOf(int version);

    QString title() const { return text(MfxFormat::titleField); }
    QString artist() const { return text(MfxFormat::artistField); }
    QString author() const { return text(MfxFormat::authorField); }
    QString genre() const { return text(MfxFormat::genreField); }
    QString longName() const { return text(MfxFormat::longNameField); }
    int bpm() const;
    quint8 flags() const;

    bool hasTitle() const { return !title().isEmpty(); }
    bool hasArtist() const { return !artist().isEmpty(); }
    bool hasAuthor() const { return !author().isEmpty(); }
    bool hasGenre() const { return !genre().isEmpty(); }
    bool hasBpm() const; ///< 1..499

    /** Texts are cut to 32 characters. One that is not ASCII makes the header longer than a file
     * may have. */
    void setText(MfxFormat::TextField field, const QString &text);
    void setTitle(const QString &text) { setText(MfxFormat::titleField, text); }
    void setArtist(const QString &text) { setText(MfxFormat::artistField, text); }
    void setAuthor(const QString &text) { setText(MfxFormat::authorField, text); }
    void setGenre(const QString &text) { setText(MfxFormat::genreField, text); }
    void setBpm(int bpm); ///< the low 16 bits
    void setFlag(quint8 bits); ///< adds to the flags; none is ever cleared
    void setTotalSize(quint32 bytes);
    void setUncompressedSize(quint32 bytes);

private:
    QString text(MfxFormat::TextField field) const;

    QByteArray m_header;
    int m_version = 0;
};

} // namespace tarvel4
