#include "library/importjob.h"
#include "tests/ui/progresswatcher.h"
#include "tests/ui/reporttest.h"

using namespace tarvel4;
using namespace TestFiles;

/** After each job the window can tell what became of each song, without a box of its own. */
class tst_WindowReport : public ReportTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void nothingIsShownBeforeTheFirstJob()
    {
        QVERIFY(!panel()->isVisible());
        QVERIFY(!find<QAction>("actionReport")->isEnabled());
    }

    void everyJobIsReported_data()
    {
        const Table<QString, QString> row;
        row("an import", "import", "Importazione: 6 importate");
        row("a synchronisation", "sync", "Sincronizzazione: 6 aggiornate");
        row("a transfer", "transfer", "Trasferimento: 2 già presenti, 4 copiate");
        row("an edit of all", "edit all", "Correzione: 6 corrette");
        row("an undo", "undo", "Annullamento: 6 tornate com'erano");
        row("an edit of one song leaves the report of the job before", "edit",
            "Importazione: 6 importate");
    }
    void everyJobIsReported()
    {
        const auto [job, expected] = cells<QString, QString>();
        import(everyFormat());
        if (job == text("transfer")) {
            write(path("card/songs/volare.mid"), "theirs");
            write(path("card/songs/volare.mp3"), "theirs");
            answerQuestions(text("no no"));
            m_driver->answerBox(QMessageBox::Ok);
            transferTo(path("card"));
        } else if (job == text("undo")) {
            make(text("sync"));
            undo();
        } else if (job != text("import")) {
            make(job);
        }
        QVERIFY2(!panel()->isVisible(), "a job without failures opens nothing");
        QVERIFY(find<QAction>("actionReport")->isEnabled());
        trigger("actionReport");
        QVERIFY(panel()->isVisible());
        QCOMPARE(heading(), expected);
    }

    void noReportOfAJobThatDidNotBegin()
    {
        import({addSong("VOLARE.mid", "a")});
        m_driver->click<BackupDialog>("abortPushButton");
        press("updateDataToolButton");
        trigger("actionReport");
        QCOMPARE(heading(), text("Importazione: 1 importata"));
        m_isSystemDisk = true;
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card"));
        QCOMPARE(heading(), text("Importazione: 1 importata"));
    }

    /** Without a box of its own: the driver expects none. */
    void failureOpensThePanel()
    {
        const QString bad = write(path("songs/bad.mid"), "rubbish");
        import({addSong("VOLARE.mid", "a"), bad});
        QVERIFY(panel()->isVisible());
        QVERIFY2(!list()->hasFocus(), "the focus stays where it was");
        QCOMPARE(heading(), text("Importazione: 1 non letta, 1 importata"));
        QCOMPARE(cell(0, 0), text("non letta"));
        QCOMPARE(cell(0, 1), text("bad.mid"));
        const Outcome notASong = ImportJob::read(bad).cause;
        QCOMPARE(cell(0, 2), notASong.sentence());
        QCOMPARE(rows(), 2);
        QCoreApplication::processEvents();
        QVERIFY2(list()->viewport()->height() >= 2 * list()->rowHeight(0), "two lines are seen");
        QVERIFY(table()->viewport()->height() >= 2 * table()->rowHeight(0));
    }

    void openPanelFollowsTheNextJob()
    {
        import({addSong("VOLARE.mid", "a"), addSong("nobody.mid", "b"), addSong("x.mid", "c")});
        trigger("actionReport");
        make(text("sync"));
        QCOMPARE(heading(), text("Sincronizzazione: 2 non nel catalogo, 1 aggiornata"));
        QCOMPARE(cell(2, 2), text("Interprete, Genere, Autore, Durata, Tempo (BPM), Tonalità"));
    }

    void cancelledJobTellsWhatItDidNotReach()
    {
        import(everyFormat());
        ProgressWatcher watcher;
        watcher.onValue = [](QProgressDialog &dialog, int value) {
            if (value == 2)
                ProgressWatcher::cancel(dialog);
        };
        make(text("sync"));
        trigger("actionReport");
        QCOMPARE(heading(), text("Sincronizzazione: 4 non raggiunte, 2 aggiornate"));
    }

    void copyThatFailsGivesItsCause()
    {
        const QString song = addSong("VOLARE.mid", "a");
        import({song});
        write(path("card/songs/VOLARE.mid/x"), "a folder has its name");
        answerQuestions(text("yes"));
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card"));
        QVERIFY(panel()->isVisible());
        QCOMPARE(heading(), text("Trasferimento: 1 non copiata"));
        QVERIFY(!cell(0, 2).isEmpty());
    }

    void companionsTroubleIsNamed()
    {
        using SongBytes::audio;
        using SongBytes::frame;
        using SongBytes::tag;
        const QString song = write(path("songs/a.mp3"), tag(frame("TIT2", "A")) + audio());
        write(path("songs/a.cdg"), "graphics");
        write(path("card/songs/a.cdg"), "theirs");
        import({song});
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card"));
        QCOMPARE(heading(), text("Trasferimento: 1 con la grafica (.cdg) non copiata"));
        QCOMPARE(cell(0, 2), text("a.cdg: esiste già"));
    }

    void songThatAnotherReplacedIsNotCalledCopied()
    {
        import({addSong("one/a.mid", "A"), addSong("two/a.mid", "B")});
        answerQuestions(text("yes"));
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card"));
        trigger("actionReport");
        QCOMPARE(heading(), text("Trasferimento: 1 sostituita, 1 copiata"));
        QVERIFY(read(path("card/songs/a.mid")) == read(path("songs/two/a.mid")));
    }

    void memoryThatCantBePreparedIsNamed()
    {
        import({addSong("a.mid", "A")});
        write(path("card/fsinfos.id3/x"), "a folder has its name");
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card"));
        QVERIFY(panel()->isVisible());
        QCOMPARE(heading(), text("Trasferimento: 1 problema della memoria, 1 copiata"));
        QVERIFY2(cell(0, 2).contains(text("fsinfos.id3: ")), qPrintable(cell(0, 2)));
        pressEnterOn(0); // leads nowhere, and says nothing untrue
        QVERIFY(hint().isEmpty());
    }
};

QTEST_MAIN(tst_WindowReport)
#include "tst_windowreport.moc"
