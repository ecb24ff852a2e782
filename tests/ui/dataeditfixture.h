#pragma once

#include "tests/ui/dialogdriver.h"
#include "tests/ui/typing.h"
#include "ui/dataeditdialog.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>

namespace tarvel4 {

/** A song and short lists for the editor, and the hands of its user. */
namespace DataEditFixture {

template <class Widget> Widget *child(const QDialog &dialog, const QString &name)
{
    return dialog.findChild<Widget *>(name);
}

inline QLineEdit *edit(const QDialog &dialog, const char *name)
{
    return child<QLineEdit>(dialog, QLatin1String(name));
}

inline QComboBox *combo(const QDialog &dialog, const char *name)
{
    return child<QComboBox>(dialog, QLatin1String(name));
}

inline void click(const QDialog &dialog, const char *name)
{
    auto *button = child<QAbstractButton>(dialog, QLatin1String(name));
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

inline void retype(QLineEdit *edit, const QString &text)
{
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    typeText(edit, text);
}

inline SongInfo song()
{
    SongInfo song;
    song.title = QStringLiteral("Azzurro");
    song.artist = QStringLiteral("Celentano");
    song.genre = QStringLiteral("Leggera");
    song.author = QStringLiteral("Conte");
    song.length = 185;
    song.bpm = 120;
    song.key = QStringLiteral("A-");
    song.filename = QStringLiteral("/music/set.1/azzurro.live.mid");
    song.shortname = QStringLiteral("azzurro.live.mid");
    song.format = QStringLiteral("MIDI");
    return song;
}

inline void fill(DataEditDialog &dialog, const SongInfo &song)
{
    dialog.setArtists({QString(), QStringLiteral("ABBA"), QStringLiteral("CELENTANO"),
                       QStringLiteral("Celeste")});
    dialog.setGenres({QString(), QStringLiteral("LEGGERA"), QStringLiteral("Rock")});
    dialog.setKeys({QStringLiteral("C"), QStringLiteral("A-"), QStringLiteral("Bb")});
    dialog.setSong(song);
    dialog.show();
}

} // namespace DataEditFixture

} // namespace tarvel4
