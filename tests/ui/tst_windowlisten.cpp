#include "tests/ui/fakeplayer.h"
#include "tests/ui/windowtest.h"
#include "ui/dataeditdialog.h"

#include <QPushButton>

using namespace tarvel4;
using namespace TestFiles;

/** Listening to the songs of the table. */
class tst_WindowListen : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        m_hasMidi = true;
        m_player.failure.clear();
        m_player.ms = 0;
        openWindowWithoutSummaries();
        const QByteArray marks =
            SongBytes::marker(3, "Refrain & more") + SongBytes::marker(1, "Intro");
        m_songs = QStringList{
            write(path("songs/a.mid"), SongBytes::midi0(SongBytes::meta(3, "Alfa") + marks)),
            addSong("b.mid", "Beta"),
            write(path("songs/c.mp3"),
                  SongBytes::tag(SongBytes::frame("TIT2", "Gamma")) + SongBytes::audio())};
        import(m_songs);
        m_calls.clear();
        selectRow(0);
    }
    void cleanup()
    {
        closeWindow();
        m_calls.clear();
    }

    void spacePlaysAndStops()
    {
        QVERIFY(!strip()->isVisible());
        space();
        QCOMPARE(m_calls, strings({"a.mid 0"}));
        QVERIFY(strip()->isVisible());
        QCOMPARE(label("listenTitleLabel"), text("▶  Alfa"));
        space();
        QCOMPARE(m_calls, strings({"a.mid 0", "stop"}));
        QVERIFY(!strip()->isVisible());
        QCOMPARE(table()->currentIndex().row(), 0);
        QVERIFY(table()->selectionModel()->isRowSelected(0, {}));
    }

    void anotherSongTakesItsPlace()
    {
        space();
        selectRow(1);
        space();
        QCOMPARE(m_calls, strings({"a.mid 0", "stop", "b.mid 0"}));
        QCOMPARE(label("listenTitleLabel"), text("▶  Beta"));
        QVERIFY(!find<QWidget>("listenMarksButton")->isVisible());
    }

    void positionAndMarkerAreShown()
    {
        space();
        QCOMPARE(label("listenTimeLabel"), text("0:00 / 0:00"));
        QCOMPARE(label("listenMarkLabel"), text("Intro"));
        m_player.ms = 4200;
        QTRY_COMPARE(label("listenMarkLabel"), text("Refrain & more"));
    }

    void beginsAtAMarker()
    {
        space();
        auto *marks = find<QPushButton>("listenMarksButton");
        QVERIFY(marks->isVisible());
        QCOMPARE(marks->menu()->actions().size(), 2);
        QCOMPARE(marks->menu()->actions().at(1)->text(), text("Refrain && more\t0:04"));
        marks->menu()->actions().at(1)->trigger();
        QCOMPARE(m_calls, strings({"a.mid 0", "a.mid 4000"}));
        QVERIFY(strip()->isVisible());
    }

    void toolsMenu()
    {
        QMenu *tools = find<QMenu>("menuStrumenti");
        QStringList texts;
        const auto look = [&] {
            texts.clear();
            Q_EMIT tools->aboutToShow();
            for (const QAction *action : tools->actions()) {
                if (action->isVisible() && !action->isSeparator())
                    texts += action->text();
            }
        };
        look();
        const QStringList before = texts.mid(0, texts.size() - 2);
        QCOMPARE(texts.mid(texts.size() - 2),
                 QStringList({text("Ascolta"), text("Ascolta da un marker")}));
        QMenu *marks = find<QMenu>("menuListenFromMark");
        Q_EMIT marks->aboutToShow();
        QCOMPARE(marks->actions().size(), 2);
        marks->actions().at(1)->trigger();
        QCOMPARE(m_calls, strings({"a.mid 4000"}));
        look();
        QCOMPARE(texts.at(texts.size() - 2), text("Ferma l'ascolto"));
        selectRow(1);
        Q_EMIT marks->aboutToShow();
        QCOMPARE(marks->actions().size(), 1);
        QVERIFY(!marks->actions().constFirst()->isEnabled());
        selectRow(2); // which nothing here plays
        look();
        QCOMPARE(texts, before);
        Q_EMIT tools->aboutToHide();
        selectRow(0);
        space(); // is not lost by a menu that did not offer it
        QCOMPARE(m_calls.constLast(), text("stop"));
    }

    void rowMenuTellsTheKey()
    {
        QKeySequence key;
        m_driver->expect<QMenu>([&key](QMenu &menu) {
            for (const QAction *action : menu.actions())
                key = action->text() == text("Ascolta") ? action->shortcut() : key;
            menu.close();
        });
        openMenu(0);
        QCOMPARE(key, QKeySequence(Qt::Key_Space));
    }

    void whatCantBeHeardIsNotOffered_data()
    {
        const Table<int, bool, QStringList> row;
        const QStringList named = strings(
            {"Remove from list", "Delete file", "", "&Modifica...", "Mostra nella cartella"});
        row("a song that a player knows", 0, true,
            named + QStringList{QString(), text("Ascolta"), text("Ascolta da un marker")});
        row("a kind without a player", 2, true, named);
        row("a system without players", 0, false, named);
    }
    void whatCantBeHeardIsNotOffered()
    {
        const auto [song, hasMidi, texts] = cells<int, bool, QStringList>();
        m_hasMidi = hasMidi;
        m_driver->chooseEntry(-1);
        openMenu(song);
        QCOMPARE(m_driver->menuTexts, texts);
        selectRow(song);
        space();
        QCOMPARE(m_calls.isEmpty(), !texts.contains(text("Ascolta")));
    }

    void rowMenuPlays()
    {
        m_driver->chooseEntry(6);
        openMenu(1);
        QCOMPARE(m_calls, strings({"b.mid 0"}));
        m_driver->chooseEntry(6);
        openMenu(1);
        QCOMPARE(m_driver->menuTexts.at(m_driver->menuTexts.size() - 2), text("Ferma l'ascolto"));
        QCOMPARE(m_calls, strings({"b.mid 0", "stop"}));
    }

    void failuresAreTold_data()
    {
        const Table<QString> row;
        row("at once", "now");
        row("while it plays", "later");
        row("the file is gone", "gone");
    }
    void failuresAreTold()
    {
        const auto [when] = cells<QString>();
        const QString why = text("no sound & <b>no</b> fun");
        m_player.failure = when == text("now") ? why : QString();
        if (when == text("gone"))
            QFile::remove(m_songs.at(0));
        m_driver->answerBox(QMessageBox::Ok);
        space();
        if (when == text("later"))
            m_player.end(why);
        const QString cause =
            when == text("gone") ? Outcome{Outcome::Code::NotFound, {}, {}, {}}.sentence() : why;
        QCOMPARE(m_driver->boxes,
                 QStringList(text("Warning|Ascolto|Non è possibile ascoltare la song:\n\na.mid: ")
                             + cause));
        QCOMPARE(m_driver->lastBox.format, Qt::PlainText);
        QVERIFY(!strip()->isVisible());
    }

    void endOfASongEndsTheListening()
    {
        space();
        m_player.end({});
        QVERIFY(!strip()->isVisible());
        space();
        QCOMPARE(m_calls, strings({"a.mid 0", "stop", "a.mid 0"}));
    }

    void stops_data()
    {
        const Table<QString> row;
        for (const char *what : {"import", "update", "transfer", "edit", "undo", "remove", "delete",
                                 "button", "close", "quit"})
            row(what, what);
    }
    void stops()
    {
        const auto [what] = cells<QString>();
        space();
        QCOMPARE(m_calls, strings({"a.mid 0"}));
        if (what == text("import")) {
            import({m_songs.at(1)});
        } else if (what == text("update")) {
            m_driver->click<BackupDialog>("exitPushButton");
            press("updateDataToolButton");
        } else if (what == text("transfer")) {
            m_driver->answerBox(QMessageBox::Ok);
            QDir().mkdir(path("card/music"));
            transferTo(path("card/music"));
        } else if (what == text("edit")) {
            m_driver->expect<DataEditDialog>([this](DataEditDialog &dialog) {
                QCOMPARE(m_calls.constLast(), text("stop"));
                trigger("actionListen"); // nothing plays below a dialog
                dialog.reject();
            });
            doubleClick(1);
        } else if (what == text("undo")) {
            m_driver->answerBox(QMessageBox::Ok);
            trigger("actionUndo");
        } else if (what == text("remove")) {
            m_driver->chooseEntry(0);
            openMenu(0);
        } else if (what == text("delete")) {
            m_driver->chooseEntry(1);
            m_driver->answerBox(QMessageBox::Yes);
            openMenu(0);
        } else if (what == text("button")) {
            press("listenStopButton");
        } else if (what == text("close")) {
            m_window->close();
        } else {
            m_window.reset();
        }
        QTRY_COMPARE(m_calls, strings({"a.mid 0", "stop"}));
    }

    void anotherSongMayLeave()
    {
        space();
        m_driver->chooseEntry(0);
        openMenu(1);
        m_driver->chooseEntry(1);
        m_driver->answerBox(QMessageBox::Yes);
        openMenu(1);
        QTest::qWait(1); // the table is looked at when it is whole again
        QCOMPARE(model()->rowCount(), 1);
        QCOMPARE(m_calls, strings({"a.mid 0"}));
        table()->sortByColumn(Title, Qt::DescendingOrder);
        QTest::qWait(1);
        QCOMPARE(m_calls, strings({"a.mid 0"}));
    }

    void keyboardIsNotLost_data()
    {
        const Table<bool> row;
        row("the button goes", true);
        row("the song ends while the button has the focus", false);
    }
    void keyboardIsNotLost()
    {
        const auto [byButton] = cells<bool>();
        space();
        auto *button = find<QPushButton>("listenStopButton");
        button->setFocus();
        QTRY_VERIFY(button->hasFocus());
        if (byButton)
            QTest::keyClick(button, Qt::Key_Space);
        else
            m_player.end({});
        QVERIFY(!strip()->isVisible());
        QVERIFY(table()->hasFocus());
    }

    void songIsNotHeldOpen()
    {
        if (!QFile::exists(text("/proc/self/fd")))
            QSKIP("Nothing here tells which files a process has open.");
        const QByteArray before = read(m_songs.at(0));
        space();
        QCOMPARE(read(m_songs.at(0)), before);
        for (const QFileInfo &open :
             QDir(text("/proc/self/fd")).entryInfoList(QDir::Files | QDir::System))
            QVERIFY(open.symLinkTarget() != m_songs.at(0));
    }

    void textsFollowTheLanguageWhileASongPlays()
    {
        space();
        const auto *title = find<QLabel>("listenTitleLabel");
        QCOMPARE(title->accessibleName(), text("In ascolto: Alfa"));
        trigger("actionEnglish");
        QCOMPARE(find<QPushButton>("listenStopButton")->text(), text("Stop"));
        QCOMPARE(title->accessibleName(), text("Listening to: Alfa"));
    }

private:
    std::unique_ptr<SongPlayers> makePlayers() override
    {
        return std::make_unique<FakePlayers>(m_player, m_hasMidi);
    }

    QWidget *strip() const { return find<QWidget>("listenStrip"); }
    QString label(const char *name) const { return find<QLabel>(name)->text(); }

    void selectRow(int row)
    {
        QApplication::setActiveWindow(m_window.get());
        table()->setFocus();
        table()->selectRow(row);
        QTRY_VERIFY(table()->hasFocus());
    }
    void space() { QTest::keyClick(table(), Qt::Key_Space); }

    void openMenu(int row)
    {
        const QPoint place = centreOf(row, Title);
        QWidget *viewport = table()->viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
    }

    QStringList m_calls;
    FakePlayer m_player{m_calls};
    bool m_hasMidi = true;
    QStringList m_songs;
};

QTEST_MAIN(tst_WindowListen)
#include "tst_windowlisten.moc"
