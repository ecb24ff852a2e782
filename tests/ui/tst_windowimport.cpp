#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowtest.h"

#include "storage/outcome.h"
#include "ui/backupdialog.h"
#include "ui/proceeddialog.h"

#include <QCheckBox>
#include <QHeaderView>

using namespace tarvel4;
using namespace TestFiles;

/** Step 1 in the window: the file dialog, the progress, the table, the summary, and what is enabled
 * meanwhile and afterwards. */
class tst_WindowImport : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void fileDialogAsksForSongs()
    {
        openWindow();
        m_driver->expect<QFileDialog>([](QFileDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), text("Seleziona i file da importare"));
            QCOMPARE(dialog.fileMode(), QFileDialog::ExistingFiles);
            QCOMPARE(dialog.directory().absolutePath(), QFileInfo(text("/")).absoluteFilePath());
            QCOMPARE(dialog.nameFilters(),
                     strings({"Songs (*.mid *.kar *.mp3 *.mf3 *.mf4 *.mf5)"}));
            dialog.reject();
        });
        press("selectDirToolButton");
        QCOMPARE(enabledSteps(), text("selectDir"));
    }

    void cancelledFileDialogChangesNothing()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        const QStringList titles = column(Title);
        m_driver->closeFrame<QFileDialog>();
        press("selectDirToolButton");
        QCOMPARE(column(Title), titles);
        QCOMPARE(enabledSteps(), text("selectDir updateData transferFiles"));
        pressHidden("dbgImportPushButton"); // imports what was chosen last
        QCOMPARE(column(Title), titles);
    }

    void songsFillTheTable()
    {
        openWindow();
        importOnly(threeSongs());
        QCOMPARE(column(Number), strings({"1", "2", "3"}));
        QCOMPARE(column(Type), strings({"MIDI", "MIDI", "MIDI"}));
        QCOMPARE(column(Title), strings({"Uno", "Tre", "Due"}));
        QCOMPARE(column(Name), strings({"c.mid", "a.mid", "b.kar"}));
        QCOMPARE(statuses(), text("0 0 0"));
    }

    void columnsFitTheirContents()
    {
        openWindowWithoutSummaries();
        const int before = table()->columnWidth(Title);
        import({addSong("a.mid", QByteArray(60, 'W'))});
        QVERIFY(table()->columnWidth(Title) > before);
    }

    void summaryCounts_data()
    {
        const Table<int, int, int, QString> row;
        row("songs, published songs and unreadable files", 1, 2, 1,
            "Sono stati esaminti 4 files, trovate 3 songs di cui 1 di (c)K-Varo");
        row("only unreadable files: their number, 0 and 0, and an empty table", 0, 0, 2,
            "Sono stati esaminti 2 files, trovate 0 songs di cui 0 di (c)K-Varo");
    }
    void summaryCounts()
    {
        const auto [published, others, unreadable, summary] = cells<int, int, int, QString>();
        QStringList files;
        for (int i = 0; i < published + others; ++i)
            files.append(addSong(QByteArray::number(i) + ".mid", "S", i < published));
        for (int i = 0; i < unreadable; ++i)
            files.append(write(path(text("songs/bad%1.mid").arg(i)), "rubbish"));
        openWindow();
        importOnly(files);
        QCOMPARE(m_summary, summary);
        const Outcome noSong{Outcome::Code::NotASong, {}, {}, {}};
        QCOMPARE(m_unread.count(noSong.sentence()), unreadable);
        QVERIFY(m_unread.startsWith(text("bad0.mid: ")));
        QCOMPARE(model()->rowCount(), published + others);
    }

    void summaryAnswers_data()
    {
        const Table<QString, QString, bool> row;
        row("No leaves the update to its button", "noPushButton", "", false);
        row("closing the summary is No", "", "", false);
        row("Si goes on to the update, whose button stays disabled", "yesPushButton",
            "exitPushButton", true);
        row("Si, but the update was cancelled: its button is enabled", "yesPushButton",
            "abortPushButton", false);
    }
    void summaryAnswers()
    {
        const auto [button, backup, updated] = cells<QString, QString, bool>();
        openWindow();
        m_driver->click<ProceedDialog>(button);
        if (!backup.isEmpty())
            m_driver->click<BackupDialog>(backup);
        import({addSong("VOLARE.mid", "x")});
        QCOMPARE(enabledSteps(),
                 text(updated ? "selectDir transferFiles" : "selectDir updateData transferFiles"));
        QCOMPARE(statuses(), text(updated ? "1" : "0"));
    }

    void summaryBoxIsKept_data()
    {
        const Table<bool> row;
        row("ticked with No: the next import shows no summary", true);
        row("not ticked: the next import shows it again", false);
    }
    void summaryBoxIsKept()
    {
        const auto [ticked] = cells<bool>();
        openWindow();
        m_driver->expect<ProceedDialog>([ticked = ticked](ProceedDialog &dialog) {
            child<QCheckBox>(dialog, "checkBoxShowAgain")->setChecked(ticked);
            click(dialog, "noPushButton");
        });
        import(threeSongs());
        QCOMPARE(settings().value(text("copyrightAsk")).toBool(), !ticked);
        QCOMPARE(find<QAction>("actionCopyrightYes")->isChecked(), !ticked);
        QCOMPARE(find<QAction>("actionCopyrightNo")->isChecked(), ticked);

        if (!ticked)
            answerSummary("noPushButton");
        import(threeSongs()); // a summary that is not expected fails the row
    }

    void aSongThatAPowerCutSetAsideGetsItsNameBack()
    {
        openWindowWithoutSummaries();
        write(path("songs/gone.mp3.tarvel4.bak"), "old");
        m_driver->answerBox(QMessageBox::Ok);
        import(threeSongs());
        QVERIFY(QFile::exists(path("songs/gone.mp3")));
        QCOMPARE(m_driver->boxes,
                 QStringList(text("Information|Salvataggi interrotti|") + path("songs/gone.mp3")
                             + text(": rimesso al suo posto dopo un'interruzione")));
    }

    void sameNamesInTwoFoldersAreTwoRows()
    {
        openWindowWithoutSummaries();
        import({addSong("one/a.mid", "Uno"), addSong("two/a.mid", "Due")});
        QCOMPARE(column(Title), strings({"Uno", "Due"}));
        QCOMPARE(column(Name), strings({"a.mid", "a.mid"}));
    }

    void nextImportReplacesTheRows()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        import({addSong("d.mid", "Quattro")});
        QCOMPARE(column(Title), strings({"Quattro"}));
        QCOMPARE(column(Number), strings({"1"}));
    }

    void tableThatCantBeClearedKeepsItsRows()
    {
        openWindow();
        importOnly(threeSongs());
        QVERIFY(QSqlQuery(QSqlDatabase::database(text("con_mem")))
                    .exec(text("create trigger keep before delete on usersongs begin select "
                               "raise(abort, 'kept'); end")));
        const QStringList before = column(Title);
        import({addSong("d.mid", "Quattro")}); // and no summary
        QCOMPARE(column(Title), before);
        QCOMPARE(enabledSteps(), text("selectDir transferFiles"));
    }

    void importAgainRepeatsTheChoice()
    {
        openWindowWithoutSummaries();
        const QStringList songs = threeSongs();
        import(songs);
        addSong("c.mid", "Changed");
        QFile::remove(songs.constLast());
        pressHidden("dbgImportPushButton");
        QCOMPARE(column(Title), strings({"Changed", "Tre"}));
    }

    void sortedTableTakesTheNextImport()
    {
        const auto isSorted = [this] {
            const QStringList titles = column(Title);
            return titles.size() == 3
                && (std::is_sorted(titles.begin(), titles.end())
                    || std::is_sorted(titles.rbegin(), titles.rend()));
        };
        openWindowWithoutSummaries();
        import(threeSongs());
        QHeaderView *header = table()->horizontalHeader();
        QTest::mouseClick(
            header->viewport(), Qt::LeftButton, Qt::NoModifier,
            QPoint(header->sectionViewportPosition(Title) + 20, header->height() / 2));
        QVERIFY(isSorted());
        import(threeSongs());
        QVERIFY2(isSorted(), "the header's arrow still tells the truth");
    }

    void progressIsShown()
    {
        openWindowWithoutSummaries();
        ProgressWatcher watcher;
        Qt::WindowModality modality = Qt::NonModal;
        watcher.onShow = [&](QProgressDialog &dialog) {
            modality = dialog.windowModality();
            QCOMPARE(dialog.parentWidget(), m_window.get());
        };
        import(threeSongs());
        QCOMPARE(watcher.seen, strings({"Lettura file|Importo la libreria...|Interrompi|3"}));
        QCOMPARE(modality, Qt::WindowModal);
        QCOMPARE(watcher.labels, strings({"1 di 3", "2 di 3", "3 di 3"}));
        QVERIFY(!QApplication::activeModalWidget());
    }

    /** Neither its button nor Escape nor the frame of its progress ends an import. */
    void importCantBeInterrupted()
    {
        openWindowWithoutSummaries();
        for (int way = 0; way < 3; ++way) {
            ProgressWatcher watcher;
            watcher.onValue = [way](QProgressDialog &dialog, int value) {
                if (value == 1 && way == 0)
                    ProgressWatcher::cancel(dialog);
                else if (value == 1 && way == 1)
                    QTest::keyClick(&dialog, Qt::Key_Escape);
                else if (value == 1)
                    dialog.close();
                QVERIFY2(dialog.isVisible(), "the window is not given free");
            };
            import(threeSongs());
            QCOMPARE(model()->rowCount(), 3);
        }
    }

    void windowCantBeUsedMeanwhile()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        ProgressWatcher watcher;
        const auto *button = find<QToolButton>("selectDirToolButton");
        watcher.onValue = [&](QProgressDialog &, int) {
            QVERIFY(!enabledSteps().contains(text("updateData")));
            QVERIFY(!enabledSteps().contains(text("transferFiles")));
            // a second file dialog is not expected and fails the test
            const QPoint place = button->mapTo(m_window.get(), button->rect().center());
            QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
            QVERIFY(!m_window->close());
        };
        import(threeSongs());
        QCOMPARE(watcher.labels.size(), 3);
        QCOMPARE(model()->rowCount(), 3);
        QVERIFY(m_window->isVisible());
        QVERIFY(m_window->close());
    }
};

QTEST_MAIN(tst_WindowImport)
#include "tst_windowimport.moc"
