#include "library/songpath.h"

#include "tests/library/texts.h"

#include <QtTest>

using namespace tarvel4;

class tst_SongPath : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names_data();
    void names();
    void catalogueKey_data();
    void catalogueKey();
};

void tst_SongPath::names_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("baseName");
    const auto row = [](const char *name, const char *path, const char *file, const char *base) {
        QTest::newRow(name) << text(path) << text(file) << text(base);
    };
    row("a song without a folder", "Azzurro.mid", "Azzurro.mid", "Azzurro");
    row("only the last point ends the name", "/m/a.b.mid", "a.b.mid", "a.b");
    row("a name without a point is whole", "/m/Azzurro", "Azzurro", "Azzurro");
    row("a point in a folder's name does not count", "/m.d/Azzurro", "Azzurro", "Azzurro");
    row("a name that is only a suffix", "/m/.mid", ".mid", "");
    row("a folder", "/m/", "", "");
    row("nothing", "", "", "");
}

void tst_SongPath::names()
{
    QFETCH(QString, path);
    QTEST(SongPath::fileName(path), "fileName");
    QTEST(SongPath::baseName(path), "baseName");
}

void tst_SongPath::catalogueKey_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("key");
    const auto row = [](const char *title, const char *name, const char *key) {
        QTest::newRow(title) << text(name) << text(key);
    };
    row("three letters in any case are an extension", "12Anni.MF5", "12ANNI");
    row("digits and underscores are word characters", "a.1_2", "A");
    row("a two-letter extension stays", "song.mf", "SONG.MF");
    row("a four-letter extension stays", "song.midi", "SONG.MIDI");
    row("only the last one is removed", "a.mid.mid", "A.MID");
    row("a blank is no word character", "a.m d", "A.M D");
    row("nothing", "", "");
}

void tst_SongPath::catalogueKey()
{
    QFETCH(QString, name);
    QTEST(SongPath::catalogueKey(name), "key");
}

QTEST_GUILESS_MAIN(tst_SongPath)
#include "tst_songpath.moc"
