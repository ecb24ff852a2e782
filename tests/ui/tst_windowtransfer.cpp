#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowtest.h"

#include "library/mountedmedia.h"
#include "storage/outcome.h"

using namespace tarvel4;
using namespace TestFiles;

/** Step 3 in the window: where songs may go, the overwrite question, and the memory's index. */
class tst_WindowTransfer : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        QDir().mkdir(card("music"));
        openWindow();
        m_songs = QStringList{addSong("a.mid", "Uno"), addSong("b.mid", "Due")};
        importOnly(m_songs);
    }
    void cleanup() { closeWindow(); }

    void folderDialogIsAsked()
    {
        const QString media = MountedMedia::startFolder(MountedMedia::list());
        m_driver->expect<QFileDialog>([&media](QFileDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), text("Scegli cartella"));
            QVERIFY(dialog.testOption(QFileDialog::ShowDirsOnly));
            // where there is no such folder, its name stays in the dialog
            QCOMPARE(dialog.selectedFiles(),
                     QStringList(media.isEmpty() ? text("/Volumes") : media));
            dialog.reject();
        });
        press("transferFilesToolButton"); // cancelled: ends without a word
        QVERIFY(enabledSteps().contains(text("transferFiles")));
        QCOMPARE(namesIn(path("card")), strings({"music"}));
    }

    void songsAreCopiedAndIndexed()
    {
        transfer();
        QCOMPARE(
            m_driver->boxes,
            strings({"Information|Trasferimento|Tutti i file sono stati copiati correttamente"}));
        QCOMPARE(m_driver->lastBox.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QCOMPARE(m_driver->lastBox.addition,
                 text("Tutto è scritto: ora si può togliere la memoria."));
        QCOMPARE(m_driver->lastBox.details, QString()); // nothing is hidden behind a button
        QCOMPARE(read(card("music/a.mid")), read(m_songs.at(0)));
        QCOMPARE(read(card("music/b.mid")), read(m_songs.at(1)));
        QVERIFY(QFile::exists(card("fsinfos.id3")));
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(enabledSteps(), text("selectDir transferFiles"));
    }

    void refusedFolders_data()
    {
        const Table<QString, bool, QString> row;
        row("the system disk", "music", true,
            "Non è possibile copiare i file sul disco di sistema");
        const QString reserved =
            text("Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST perchè sono "
                 "riservate, selezionare un'altra cartella");
        for (const char *name : {"sfx", "Bridge", "PLAYLIST"})
            row(name, text(name), false, reserved);
        row("the root, where no songs folder can be made", "", false,
            "Non è possibile copiare i file sulla cartella principale, creare o selezionare una "
            "sottocartella");
    }
    void refusedFolders()
    {
        const auto [folder, isSystemDisk, message] = cells<QString, bool, QString>();
        m_isSystemDisk = isSystemDisk;
        write(card("songs"), "a file in the way");
        const QString target = QDir::cleanPath(path(text("card/") + folder));
        QDir().mkpath(target);
        transfer(target);
        QCOMPARE(m_driver->boxes, QStringList(text("Warning|Trasferimento|") + message));
        QCOMPARE(m_driver->lastBox.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QVERIFY(!QFile::exists(card("fsinfos.id3")));
        QVERIFY(enabledSteps().contains(text("transferFiles")));
    }

    void rootGetsASongsFolder()
    {
        transfer(path("card"));
        QCOMPARE(namesIn(card("songs")), strings({"a.mid", "b.mid"}));
    }

    void overwriteAnswers_data()
    {
        const Table<QString, bool, bool> row;
        row("yes, then no", "yes no", true, false);
        row("yes to all", "yesAll", true, true);
        row("no, then yes", "no yes", false, true);
        row("no to all", "noAll", false, false);
        row("closing the question is yes", "frame frame", true, true);
    }
    void overwriteAnswers()
    {
        const auto [answers, isFirstReplaced, isSecondReplaced] = cells<QString, bool, bool>();
        write(card("music/a.mid"), "old");
        write(card("music/b.mid"), "old");
        answerQuestions(answers);
        transfer();
        QCOMPARE(read(card("music/a.mid")) == read(m_songs.at(0)), isFirstReplaced);
        QCOMPARE(read(card("music/b.mid")) == read(m_songs.at(1)), isSecondReplaced);
        QCOMPARE(read(card("music/a.mid")) != "old", isFirstReplaced);
        QCOMPARE(read(card("music/b.mid")) != "old", isSecondReplaced);
        QCOMPARE(m_asked, strings({"a.mid", "b.mid"}).mid(0, answers.count(u' ') + 1));
        QCOMPARE(m_question, text("esiste già, vuoi sostituirlo?"));
    }

    void answersForAllLastForOneTransfer()
    {
        for (int round = 1; round <= 2; ++round) {
            write(card("music/a.mid"), "old");
            write(card("music/b.mid"), "old");
            answerQuestions(text("noAll"));
            transfer();
            QCOMPARE(m_asked.size(), round);
        }
    }

    void overwriteQuestionTellsTheFilesApart()
    {
        const QDateTime old(QDate(2019, 3, 4), QTime(5, 6));
        const QLocale locale = QLocale::system();
        write(card("music/a.mid"), QByteArray(1234, 'x'));
        setModified(card("music/a.mid"), old);
        write(card("music/b.mid"), "x");
        setModified(card("music/b.mid"), QFileInfo(m_songs.at(1)).lastModified().addSecs(-1));
        QStringList facts;
        for (int song = 0; song < 2; ++song)
            m_driver->expect<NoCopyrightDialog>([&facts](NoCopyrightDialog &dialog) {
                for (const char *name : {"sourceFactsLabel", "destinationFactsLabel"}) {
                    QVERIFY(child<QLabel>(dialog, name)->isVisible());
                    facts += child<QLabel>(dialog, name)->text();
                }
                click(dialog, "noPushButton");
            });
        transfer();
        const auto expected = [&locale](const QString &size, const QDateTime &date) {
            return text("%1 byte, %2").arg(size, locale.toString(date, QLocale::ShortFormat));
        };
        const QFileInfo first(m_songs.at(0));
        QCOMPARE(facts.mid(0, 2),
                 QStringList({expected(QString::number(first.size()), first.lastModified())
                                  + text(" (più recente)"),
                              expected(locale.toString(1234), old)}));
        const QFileInfo second(card("music/b.mid")); // a second older: on FAT it may be the same
        QCOMPARE(facts.value(3), expected(text("1"), second.lastModified()));
        QVERIFY2(!facts.value(2).contains(text("recente")), qPrintable(facts.value(2)));
    }

    void removedRowsAreCopiedAllTheSame()
    {
        m_driver->chooseEntry(0);
        Q_EMIT table()->customContextMenuRequested(centreOf(0, Type));
        QCOMPARE(model()->rowCount(), 1);
        transfer();
        QCOMPARE(namesIn(card("music")), strings({"a.mid", "b.mid"}));
    }

    void failedCopyIsTold()
    {
        QFile::remove(m_songs.at(0));
        transfer();
        QCOMPARE(m_driver->boxes,
                 strings({"Critical|Trasferimento|Non è stato possibile copiare uno o più file"}));
        const Outcome gone{Outcome::Code::NotFound, m_songs.at(0), {}, {}};
        QCOMPARE(m_driver->lastBox.details, text("a.mid: ") + gone.sentence());
        QCOMPARE(m_driver->lastBox.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QVERIFY(QFile::exists(card("music/b.mid")));
        QVERIFY(!QFile::exists(card("fsinfos.id3")));
    }

    void whatTheIndexCouldNotTakeInIsListed()
    {
        const QString part(125, QLatin1Char('d'));
        const QString folder = path("card") + text("/%1/%1").arg(part);
        QVERIFY(QDir().mkpath(folder));
        transfer(folder);
        QCOMPARE(m_driver->boxes,
                 strings({"Critical|Trasferimento|Non è stato possibile copiare uno o più file"}));
        const QString error = text("File non importato, path troppo lungo: ") + folder;
        QCOMPARE(m_driver->lastBox.details, error + text("/a.mid\n") + error + text("/b.mid"));
    }

    void cancelledCopyIsTold()
    {
        ProgressWatcher watcher;
        watcher.onShow = ProgressWatcher::cancel;
        transfer();
        QCOMPARE(m_driver->boxes,
                 strings({"Critical|Trasferimento|Non è stato possibile copiare uno o più file"}));
        QVERIFY(QDir(card("music")).isEmpty());
    }

    void progressIsShown()
    {
        ProgressWatcher watcher;
        transfer();
        QCOMPARE(watcher.seen.size(), 2);
        QCOMPARE(watcher.seen.at(0), text("Trasferimento|Trasferimento file...|Interrompi|2"));
        QVERIFY(watcher.seen.at(1).startsWith(
            text("Aggiornamento|Aggiornamento database...|Interrompi|")));
        QVERIFY(watcher.labels.contains(text("2 di 2")));
        QCOMPARE(watcher.labels.constLast(), text("Aggiornamento database..."));
    }

private:
    QString card(const char *name) const { return path("card/") + text(name); }

    /** Transfers, and closes the box that comes in the end. */
    void transfer(const QString &folder)
    {
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(folder);
    }
    void transfer() { transfer(card("music")); }

    QStringList m_songs;
};

QTEST_MAIN(tst_WindowTransfer)
#include "tst_windowtransfer.moc"
