#include "player/songplayers.h"

#include "tests/library/texts.h"
#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;

/** Which songs this system can play, and by what. */
class tst_SongPlayers : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void noSoundfontNoMidi()
    {
        const QByteArray before = qgetenv("XDG_DATA_DIRS");
        qputenv("XDG_DATA_DIRS", QFile::encodeName(path()));
        QVERIFY(!SystemPlayers().playerFor(SongSound::Kind::Midi));
        qputenv("XDG_DATA_DIRS", before);
    }

    void noPluginNoMp3()
    {
        QVERIFY(!SystemPlayers(QStringList()).playerFor(SongSound::Kind::Mp3));
        write(path("tarvel4soft_mp3.so"), "no plugin");
        QVERIFY(!SystemPlayers(QStringList(path())).playerFor(SongSound::Kind::Mp3));
    }

    void pluginIsFoundInTheTree()
    {
        const QStringList folders = SystemPlayers::installedPlugins();
        QVERIFY(folders.constFirst().endsWith(text("/tarvel4soft")));
        QVERIFY(folders.constLast().endsWith(text("../player")));
    }

    void playersAreMadeOnce()
    {
        SystemPlayers players(QStringList(text(TARVEL4_PLUGIN_FOLDER)));
        for (const auto kind : {SongSound::Kind::Midi, SongSound::Kind::Mp3})
            QCOMPARE(players.playerFor(kind), players.playerFor(kind));
    }

    void damagedMp3IsTold()
    {
        SystemPlayers players(QStringList(text(TARVEL4_PLUGIN_FOLDER)));
        SongPlayer *player = players.playerFor(SongSound::Kind::Mp3);
        if (!player)
            QSKIP("Nothing here plays MP3 (Debian: qtmultimedia5-dev, libqt5multimedia5-plugins)");
        SongSound sound;
        sound.kind = SongSound::Kind::Mp3;
        sound.path = write(path("a.mp3"), "this is no sound");
        QStringList ends;
        QCOMPARE(player->play(sound, 0, [&ends](const QString &cause) { ends += cause; }),
                 QString());
        QTRY_COMPARE_WITH_TIMEOUT(ends.size(), 1, 30000); // its plugins may be looked for first
        QVERIFY(ends.constFirst().startsWith(text("il sistema non può suonare questo file MP3 (")));
        QCOMPARE(player->position(), qint64{0});
    }
};

QTEST_GUILESS_MAIN(tst_SongPlayers)
#include "tst_songplayers.moc"
