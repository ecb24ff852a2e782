#include "library/recoveryjob.h"

#include "tests/library/scriptedhost.h"
#include "tests/library/texts.h"
#include "tests/songs/songfixture.h"
#include "tests/storage/savefixture.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

Q_DECLARE_METATYPE(Recovery::Result)

/** The first step of whatever writes: real songs that are put in order, and how that is told. */
class tst_RecoveryJob : public SaveTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void aTornSongIsTheOldOneAgain_data() { addSuffixRows("mid mf3 mf4 mf5"); }
    /** Cut at every byte of its new bytes; most such songs can still be read. */
    void aTornSongIsTheOldOneAgain()
    {
        QFETCH(QString, suffix);
        const QByteArray oldBytes = songOf(suffix);
        const QString file = write(path("a."_s + suffix), oldBytes);
        MetaSong song = imported(file);
        setTitle(song, QString(20, QLatin1Char('T')));
        FileChange change;
        QVERIFY(song.planSave(change));
        for (int cut = 1; cut < change.newHead.size(); cut += 37) {
            write(file, oldBytes);
            Journal journal(journalFolder());
            noteAndDie(journal, file, Way::InPlace, change.newHead);
            write(file, change.newHead.left(cut) + oldBytes.mid(cut));
            const bool isTorn = read(file) != oldBytes && read(file) != change.newHead;
            ScriptedHost host;
            RecoveryJob(host).finishSaves(journal);
            QCOMPARE(host.events, isTorn ? QStringList("recovered 4 "_s + file) : QStringList());
            QVERIFY(read(file) == (isTorn ? oldBytes : read(file)));
            RecoveryJob(host).finishSaves(journal);
            QCOMPARE(host.events.size(), isTorn ? 1 : 0);
        }
    }

    void aSongThatWasChangedElsewhereIsLeftAlone_data() { addSuffixRows("mid mf3 mf4 mf5"); }
    void aSongThatWasChangedElsewhereIsLeftAlone()
    {
        QFETCH(QString, suffix);
        const QString file = write(path("a."_s + suffix), songOf(suffix));
        const auto titled = [&](const QString &title) {
            MetaSong song = imported(file);
            setTitle(song, title);
            FileChange change;
            return song.planSave(change) ? change.newHead : QByteArray();
        };
        Journal journal(journalFolder());
        noteAndDie(journal, file, Way::InPlace, titled("Ours"_s));
        const QByteArray theirs = write(file, titled("Somebody's"_s)).isEmpty() ? "" : read(file);
        ScriptedHost host;
        RecoveryJob(host).finishSaves(journal);
        QCOMPARE(host.events, QStringList("recovered 6 "_s + file));
        QCOMPARE(read(file), theirs);
    }

    void sentence_data()
    {
        QTest::addColumn<Recovery::Result>("result");
        QTest::addColumn<QString>("sentence");
        using Result = Recovery::Result;
        QTest::newRow("nothing of nothing") << Result::NoneThere << QString();
        QTest::newRow("a song that has its name again")
            << Result::GivenBack << text("/a.mp3: rimesso al suo posto dopo un'interruzione");
        QTest::newRow("an old copy that went")
            << Result::Removed
            << text("/a.mp3: tolta la vecchia copia lasciata da un'interruzione");
        QTest::newRow("an old copy that stays")
            << Result::Kept
            << text("/a.mp3: la vecchia copia lasciata da un'interruzione resta come "
                    "/a.mp3.tarvel4.bak");
        QTest::newRow("a song that has its old bytes again")
            << Result::PutBack
            << text("/a.mp3: un salvataggio è stato interrotto, il contenuto di prima è tornato al "
                    "suo posto");
        QTest::newRow("a song that waits, and why")
            << Result::Waits
            << text("/a.mp3: un salvataggio è stato interrotto e sarà messo a posto quando la song "
                    "si potrà di nuovo leggere e scrivere (%1)")
                   .arg(Outcome{Outcome::Code::NotFound, {}, {}, {}}.sentence());
        QTest::newRow("a song that somebody else changed")
            << Result::ChangedSince
            << text("/a.mp3: un salvataggio è stato interrotto, ma poi la song è stata cambiata da "
                    "un altro programma e resta com'è");
    }
    void sentence()
    {
        QFETCH(Recovery::Result, result);
        const Outcome cause{Outcome::Code::NotFound, {}, {}, {}};
        QTEST(RecoveryJob::sentence(text("/a.mp3"), result, cause), "sentence");
    }
};

QTEST_GUILESS_MAIN(tst_RecoveryJob)
#include "tst_recoveryjob.moc"
