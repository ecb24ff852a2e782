#pragma once

#include "library/songupdate.h"

#include "tests/library/testlibrary.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"

namespace tarvel4 {

/** The catalogue and the songs of the tests of one song's update. */
namespace UpdateFixture {

using namespace SongBytes;

inline const QVector<CatalogueRow> &catalogue()
{
    static const QVector<CatalogueRow> rows = [] {
        QVector<CatalogueRow> all;
        const auto row = [&all](const char *fileName, const char *title) -> CatalogueRow & {
            CatalogueRow added;
            added.fileName = text(fileName);
            added.title = text(title);
            all.append(added);
            return all.last();
        };
        row("12ANNI", "AZZURRO");
        row("NOALT", "SENZA ALTRO").altArtist.clear();
        CatalogueRow &bare = row("BARE", "NUDA");
        bare.length = QVariant();
        bare.bpm = text("lento");
        bare.key.clear();
        bare.markers = QVariant();
        row("ZEROBPM", "ZERO").bpm = 0;
        row("ALIAS", "ALIAS").key = text("G #");
        row("BADKEY", "CHIAVE").key = text("H");
        row("ACCENT", "Città");
        row("LONG", "x").title = QString(200, QLatin1Char('x'));
        row("TWICE1", "DUE VOLTE");
        row("TWICE2", "DUE VOLTE");
        row("", "SENZA NOME");
        row("SONG.MF", "DUE LETTERE");
        row("SONG.MIDI", "QUATTRO LETTERE");
        return all;
    }();
    return rows;
}

inline QByteArray mp3(const QByteArray &frames)
{
    return tag(frames) + audio();
}

inline MfxFields allMfxFields()
{
    return {"Mine", "ADRIANO CELENTANO", "ME", "ROCK", "LONG.MID", 90, 0};
}

} // namespace UpdateFixture

} // namespace tarvel4
