#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowtest.h"
#include "ui/appearance.h"

#include "storage/outcome.h"

#include <QAccessible>

using namespace tarvel4;
using namespace TestFiles;

/** Step 2 in the window: the backup's question, the copyright question, and what is enabled. */
class tst_WindowUpdate : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindow();
    }
    void cleanup() { closeWindow(); }

    void songsOfTheCatalogueAreWritten()
    {
        const QString known = addSong("volare.mid", "VOL");
        const QString unknown = addSong("nobody.mid", "y");
        const QByteArray untouched = read(unknown);
        importOnly({known, unknown});
        const int before = table()->columnWidth(Artist);
        update();
        QCOMPARE(statuses(), text("1 3"));
        QVERIFY2(table()->columnWidth(Artist) > before, "the columns fit the new texts");
        QCOMPARE(column(Title), strings({"Volare", "y"}));
        QCOMPARE(column(Artist), strings({"D. Modugno", ""}));
        QVERIFY(read(known).contains("Volare"));
        QCOMPARE(read(unknown), untouched);
        QCOMPARE(enabledSteps(), text("selectDir transferFiles"));
    }

    void notPublishedAnswers_data()
    {
        const Table<QString, QString> row;
        row("yes, then no", "yes no", "1 1 3");
        row("yes to all asks once", "yesAll", "1 1 1");
        row("no, then yes", "no yes", "3 1 1");
        row("no to all asks once, and published songs are updated all the same", "noAll", "3 1 3");
        row("closing the question is yes", "frame frame", "1 1 1");
    }
    void notPublishedAnswers()
    {
        const auto [answers, unpublishedPublishedUnpublished] = cells<QString, QString>();
        importOnly({addSong("one/VOLARE.mid", "a", false), addSong("AZZURRO.mid", "b"),
                    addSong("two/volare.mid", "c", false)});
        m_driver->click<BackupDialog>("exitPushButton");
        answerQuestions(answers);
        press("updateDataToolButton");
        QCOMPARE(m_asked, strings({"VOLARE.mid", "volare.mid"}).mid(0, answers.count(u' ') + 1));
        QCOMPARE(statuses(), unpublishedPublishedUnpublished);
    }

    void noQuestionWhereTheSettingIsOff()
    {
        importOnly({addSong("VOLARE.mid", "a", false)});
        trigger("actionCopyrightNo");
        update();
        QCOMPARE(statuses(), text("1"));
    }

    void backupAnswers_data()
    {
        const Table<QString, bool> row;
        row("going on without one updates, and makes no folder", "exitPushButton", true);
        row("Annulla leaves the songs alone", "abortPushButton", false);
        row("closing the dialog is Annulla", "", false);
    }
    void backupAnswers()
    {
        const auto [button, updated] = cells<QString, bool>();
        const QString song = addSong("VOLARE.mid", "a");
        const QByteArray before = read(song);
        importOnly({song});
        update(button);
        QCOMPARE(read(song) != before, updated);
        QCOMPARE(enabledSteps(),
                 text(updated ? "selectDir transferFiles" : "selectDir updateData transferFiles"));
        QVERIFY(QDir(path("backups")).isEmpty());
    }

    void backupIsMadeFirst()
    {
        const QStringList songs{addSong("VOLARE.mid", "a"), addSong("AZZURRO.mid", "b")};
        const QVector<QByteArray> before{read(songs.at(0)), read(songs.at(1))};
        importOnly(songs);
        chooseBackup(path("backups"));
        press("updateDataToolButton");
        QCOMPARE(m_driver->boxes, strings({"Information|Backup|Backup eseguito correttamente"}));
        QCOMPARE(m_driver->lastBox.format, Qt::PlainText);

        const QStringList folders = namesIn(path("backups"));
        QCOMPARE(folders.size(), 1);
        const QDir backup(path("backups") + QLatin1Char('/') + folders.constFirst());
        for (int i = 0; i < songs.size(); ++i) {
            QCOMPARE(read(backup.filePath(QFileInfo(songs.at(i)).fileName())), before.at(i));
            QVERIFY(read(songs.at(i)) != before.at(i));
        }
        QCOMPARE(statuses(), text("1 1"));
    }

    void backupThatFailsStopsTheUpdate()
    {
        const QString song = addSong("VOLARE.mid", "a");
        const QByteArray before = read(song);
        importOnly({song});
        QDir().mkpath(path("gone"));
        m_driver->click<BackupDialog>("browsePushButton");
        m_driver->chooseFiles({path("gone")});
        m_driver->expect<BackupDialog>([this](BackupDialog &dialog) {
            QDir(path("gone")).removeRecursively();
            click(dialog, "doBackupPushButton");
        });
        m_driver->answerBox(QMessageBox::Ok);
        press("updateDataToolButton");
        QCOMPARE(m_driver->boxes, strings({"Critical|Backup|Backup FALLITO !!!"}));
        QCOMPARE(m_driver->lastBox.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QCOMPARE(read(song), before);
        QCOMPARE(statuses(), text("0"));
        QCOMPARE(enabledSteps(), text("selectDir updateData transferFiles"));
    }

    void emptyTableIsNotUpdated()
    {
        importOnly({write(path("songs/bad.mid"), "rubbish")});
        press("updateDataToolButton"); // a dialog that is not expected fails the row
        QCOMPARE(enabledSteps(), text("selectDir updateData transferFiles"));
    }

    void cancelStopsBeforeTheNextSong_data()
    {
        const Table<int, bool, QString> row;
        row("before the first song", 0, false, "0 0 0");
        row("after the first song", 1, false, "1 0 0");
        row("after the first song, by the frame", 1, true, "1 0 0");
    }
    void cancelStopsBeforeTheNextSong()
    {
        const auto [atValue, byFrame, expected] = cells<int, bool, QString>();
        importOnly({addSong("one/VOLARE.mid", "a"), addSong("AZZURRO.mid", "b"),
                    addSong("two/VOLARE.mid", "c")});
        ProgressWatcher watcher;
        watcher.onValue = [&, atValue = atValue, byFrame = byFrame](QProgressDialog &dialog,
                                                                    int value) {
            if (value != atValue)
                return;
            if (byFrame)
                dialog.close();
            else
                ProgressWatcher::cancel(dialog);
        };
        watcher.onShow = [&](QProgressDialog &dialog) { watcher.onValue(dialog, 0); };
        update();
        QCOMPARE(statuses(), expected);
        QCOMPARE(enabledSteps(),
                 text("selectDir updateData transferFiles")); // it can be tried again
        QVERIFY(!QApplication::activeModalWidget());
    }

    void quitStopsBeforeTheNextSong_data()
    {
        const Table<QString, QString> row;
        row("while the backup is asked about", "backup", "0 0 0");
        row("while a song is asked about: it is left alone", "question", "1 3 0");
        row("while a song is written: it is finished", "song", "1 0 0");
    }
    void quitStopsBeforeTheNextSong()
    {
        const auto [during, expected] = cells<QString, QString>();
        importOnly({addSong("one/VOLARE.mid", "a"), addSong("AZZURRO.mid", "b", false),
                    addSong("two/VOLARE.mid", "c")});
        ProgressWatcher watcher;
        watcher.onValue = [&, &during = during](QProgressDialog &, int value) {
            if (during == text("song") && value == 1)
                m_window->quit();
        };
        if (during == text("backup"))
            m_driver->expect<BackupDialog>([this](BackupDialog &) { m_window->quit(); });
        else
            m_driver->click<BackupDialog>("exitPushButton");
        if (during == text("question"))
            m_driver->expect<NoCopyrightDialog>([this](NoCopyrightDialog &) { m_window->quit(); });
        QTimer::singleShot(0, this, [this] { press("updateDataToolButton"); });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(statuses(), expected);
    }

    void progressIsShown()
    {
        importOnly({addSong("VOLARE.mid", "a"), addSong("AZZURRO.mid", "b")});
        ProgressWatcher watcher;
        update();
        QCOMPARE(watcher.seen,
                 strings({"Aggiornamento file|Aggiorno la libreria...|Interrompi|2"}));
        QCOMPARE(watcher.labels, strings({"1 di 2", "2 di 2"}));
    }

    void nothingIsTransferredMeanwhile()
    {
        importOnly({addSong("VOLARE.mid", "a")});
        QStringList steps;
        ProgressWatcher watcher;
        watcher.onValue = [&](QProgressDialog &, int) { steps.append(enabledSteps()); };
        m_driver->expect<BackupDialog>([&](BackupDialog &dialog) {
            steps.append(enabledSteps());
            click(dialog, "exitPushButton");
        });
        press("updateDataToolButton");
        QCOMPARE(steps, strings({"selectDir", "selectDir"}));
        QCOMPARE(enabledSteps(), text("selectDir transferFiles"));
    }

    /** A screen reader can press what lies below the progress. */
    void nothingElseIsBegunMeanwhile()
    {
        importOnly({addSong("VOLARE.mid", "a"), addSong("AZZURRO.mid", "b")});
        ProgressWatcher watcher;
        int values = 0;
        watcher.onValue = [&](QProgressDialog &, int) {
            ++values;
            for (const char *step :
                 {"selectDirToolButton", "updateDataToolButton", "transferFilesToolButton"}) {
                auto *button = find<QAbstractButton>(step);
                const bool isEnabled = button->isEnabled();
                button->setEnabled(true); // as it is while several songs are edited
                button->click(); // a dialog that is not expected fails the row
                button->setEnabled(isEnabled);
            }
            for (const char *action : {"actionImportFolder", "actionEditMany", "actionUndo",
                                       "actionPreview", "optimizeMemory", "actionSongsList"})
                find<QAction>(action)->trigger();
        };
        update();
        QCOMPARE(values, 2);
        QCOMPARE(statuses(), text("1 1"));
    }

    void rowsAreAddressedAsSorted()
    {
        importOnly(
            {addSong("nobody.mid", "b"), addSong("VOLARE.mid", "c"), addSong("AZZURRO.mid", "a")});
        table()->sortByColumn(Title, Qt::AscendingOrder);
        QCOMPARE(column(Name), strings({"AZZURRO.mid", "nobody.mid", "VOLARE.mid"}));
        update();
        for (int i = 0; i < 3; ++i) {
            const QString name = column(Name).at(i);
            QCOMPARE(column(Status).at(i), text(name == text("nobody.mid") ? "3" : "1"));
            QVERIFY(read(path(text("songs/") + name)).contains(column(Title).at(i).toLatin1()));
        }
    }

    /** The row says why, also to a screen reader, without another box. */
    void songThatVanishedFails()
    {
        const QString gone = addSong("VOLARE.mid", "a");
        importOnly({gone, addSong("AZZURRO.mid", "b")});
        QFile::remove(gone);
        update();
        QCOMPARE(statuses(), text("3 1"));
        QVERIFY(!QFile::exists(gone));
        const Outcome notFound{Outcome::Code::NotFound, {}, {}, {}};
        QCOMPARE(spoken(0), text("MIDI, Non aggiornata: ") + notFound.sentence());
        QCOMPARE(spoken(1), text("MIDI, Aggiornata dal database K-Varo"));
    }

    void answersAreNoAlarm()
    {
        Appearance::followDesktop();
        const QString gone = addSong("gone.mid", "x");
        importOnly({gone, addSong("nobody.mid", "y"), addSong("AZZURRO.mid", "z", false)});
        QVERIFY(!hasAlarm(0));
        QFile::remove(gone);
        m_driver->click<BackupDialog>("exitPushButton");
        answerQuestions(text("no"));
        press("updateDataToolButton");
        QCOMPARE(statuses(), text("3 3 3")); // required: all the same in the table
        QCOMPARE(spoken(1), text("MIDI, Non aggiornata: non è nel catalogo"));
        QCOMPARE(spoken(2),
                 text("MIDI, Non aggiornata: non è stata pubblicata da K-Varo, lasciata "
                      "com'era"));
        QVERIFY2(hasAlarm(0), "the song is gone");
        QVERIFY(!hasAlarm(1));
        QVERIFY(!hasAlarm(2));
        QVERIFY2(markAt(1) == markAt(2) && markAt(1) != markAt(0), "neutral, but a mark");
    }

    void developersBackup()
    {
        importOnly({addSong("VOLARE.mid", "a")});
        chooseBackup(path("backups"));
        pressHidden("dbgBackupPushButton");
        QVERIFY(!QDir(path("backups")).isEmpty());
    }

private:
    /** What a screen reader says of a row's first cell. */
    QString spoken(int row) const
    {
        QAccessibleInterface *cells = QAccessible::queryAccessibleInterface(table());
        return cells->tableInterface()->cellAt(row, Type)->text(QAccessible::Name);
    }
    /** The part of a row in which its mark is drawn. */
    QImage markAt(int row) const
    {
        QRect place = table()->visualRect(model()->index(row, Type));
        place.setWidth(place.height());
        return table()->viewport()->grab(place).toImage();
    }
    bool hasAlarm(int row) const
    {
        const QImage mark = markAt(row);
        for (int y = 0; y < mark.height(); ++y) {
            for (int x = 0; x < mark.width(); ++x) {
                const QColor colour = mark.pixelColor(x, y);
                if (colour.red() > colour.blue() + 100)
                    return true;
            }
        }
        return false;
    }

    void update(const QString &backup = text("exitPushButton"))
    {
        m_driver->click<BackupDialog>(backup);
        press("updateDataToolButton");
    }
};

QTEST_MAIN(tst_WindowUpdate)
#include "tst_windowupdate.moc"
