#include "songs/songinfo.h"

#include <QtTest>

using namespace tarvel4;

class tst_SongInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clearEmptiesEveryField();
};

void tst_SongInfo::clearEmptiesEveryField()
{
    SongInfo info;
    info.title = info.artist = info.altArtist = info.genre = info.author = QStringLiteral("x");
    info.key = info.filename = info.shortname = info.format = info.mfxLongName = info.title;
    info.length = info.bpm = -1;
    info.isPublisher = true;
    info.markers = {{1, info.title}};
    info.mfxFlags = 1;

    info.clear();

    for (const QString &text :
         {info.title, info.artist, info.altArtist, info.genre, info.author, info.key, info.filename,
          info.shortname, info.format, info.mfxLongName}) {
        QCOMPARE(text, QString());
    }
    QCOMPARE(info.length, 0);
    QCOMPARE(info.bpm, 0);
    QVERIFY(!info.isPublisher);
    QVERIFY(info.markers.isEmpty());
    QCOMPARE(info.mfxFlags, quint8(0));
}

QTEST_GUILESS_MAIN(tst_SongInfo)
#include "tst_songinfo.moc"
