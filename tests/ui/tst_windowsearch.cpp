#include "tests/ui/windowtest.h"

#include "db/usersongsreltablemodel.h"
#include "ui/dataeditdialog.h"

#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>

using namespace tarvel4;

/** Finding songs: the search above the table, and the counts below it. */
class tst_WindowSearch : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void findsWhileTyping()
    {
        import({addSong("a.mid", "Perch\xe9"), addSong("b.mid", "Volare"), addSong("c.kar", "x")});
        QVERIFY(activate(*m_window));
        QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
        QTRY_VERIFY(field()->hasFocus());
        QTest::keyClicks(field(), text("perche"));
        QCOMPARE(shown(), text("a.mid"));
        field()->selectAll();
        QTest::keyClicks(field(), text("VOL mid"));
        QCOMPARE(shown(), text("b.mid"));
        QTest::keyClicks(field(), text("#"));
        QCOMPARE(shown(), QString());
        QTest::keyClick(field(), Qt::Key_Escape);
        QCOMPARE(field()->text(), QString());
        QCOMPARE(shown(), text("a.mid b.mid c.kar"));
        QTRY_VERIFY(table()->hasFocus());
    }

    void ctrlFSelectsWhatWasTyped()
    {
        import({addSong("a.mid", "x")});
        field()->setText(text("abc"));
        QVERIFY(activate(*m_window));
        table()->setFocus();
        QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
        QTRY_COMPARE(field()->selectedText(), text("abc"));
    }

    void keysLeadIntoTheTable_data()
    {
        const Table<int> row;
        row("Down", int{Qt::Key_Down});
        row("Return", int{Qt::Key_Return});
        row("Enter on the number pad", int{Qt::Key_Enter});
    }
    void keysLeadIntoTheTable()
    {
        const auto [key] = cells<int>();
        import({addSong("a.mid", "Uno"), addSong("b.mid", "Due")});
        QVERIFY(activate(*m_window));
        field()->setFocus();
        field()->setText(text("due"));
        QTest::keyClick(field(), static_cast<Qt::Key>(key));
        QTRY_VERIFY(table()->hasFocus());
        QCOMPARE(table()->currentIndex().row(), 1);
        QVERIFY(table()->selectionModel()->isRowSelected(1, QModelIndex()));
    }

    void hiddenSongIsNotTheCurrentOne()
    {
        import(threeSongs());
        table()->selectRow(1);
        field()->setText(text("uno"));
        QVERIFY2(!table()->currentIndex().isValid(), "Enter would edit a song that nobody sees");
        QVERIFY(!table()->selectionModel()->hasSelection());
        field()->clear();
        QVERIFY2(table()->selectionModel()->isRowSelected(1, QModelIndex()), "as before");

        field()->setText(text("uno"));
        table()->horizontalHeader()->setSortIndicator(Title, Qt::AscendingOrder);
        field()->clear();
        QCOMPARE(songNameOf(table()->currentIndex()), text("a.mid"));
    }

    void typingInTheTableReachesNoHiddenSong()
    {
        import(threeSongs());
        field()->setText(text("uno"));
        QVERIFY(activate(*m_window));
        table()->setFocus();
        table()->setCurrentIndex(model()->index(0, Title));
        QTest::keyClicks(table(), text("tre"));
        QCOMPARE(table()->currentIndex().row(), 0);
        field()->clear();
        QTest::qWait(QApplication::keyboardInputInterval() + 1);
        QTest::keyClicks(table(), text("tre"));
        QCOMPARE(table()->currentIndex().row(), 1);
    }

    void statesAreFiltered_data()
    {
        const Table<int, QString> row;
        row("all", 0, "AZZURRO.mid VOLARE.mid gone.mid nobody.mid");
        row("updated", 1, "AZZURRO.mid");
        row("already complete", 2, "");
        row("edited", 3, "VOLARE.mid");
        row("not updated", 4, "nobody.mid");
        row("failed", 5, "gone.mid");
    }
    void statesAreFiltered()
    {
        const auto [state, songs] = cells<int, QString>();
        importInAllStates();
        states()->setCurrentIndex(state);
        QCOMPARE(shown(), songs);
        field()->setText(text("nobody"));
        QCOMPARE(shown(), songs.contains(text("nobody")) ? text("nobody.mid") : QString());
    }

    void songsAreCounted_data()
    {
        const Table<QString, QString> row;
        row("in Italian", "actionItalian",
            "4 song, 1 mostrata, 1 aggiornata, 1 modificata a mano, 1 non aggiornata, 1 non "
            "riuscita. Anche quelle nascoste vengono sincronizzate.");
        row("in English", "actionEnglish",
            "4 songs, 1 shown, 1 updated, 1 edited by hand, 1 not updated, 1 failed. Hidden ones "
            "are synchronised, too.");
    }
    void songsAreCounted()
    {
        const auto [language, line] = cells<QString, QString>();
        QCOMPARE(counts(), text("0 song"));
        import({addSong("one.mid", "x")});
        QTRY_COMPARE(counts(), text("1 song"));
        importInAllStates();
        field()->setText(text("azz"));
        trigger(qPrintable(language));
        QTRY_COMPARE(counts(), line);
        QAccessibleInterface *label =
            QAccessible::queryAccessibleInterface(find<QLabel>("songCountsLabel"));
        QCOMPARE(label->text(QAccessible::Name), line);
        field()->clear();
        states()->setCurrentIndex(0);
        QVERIFY(counts().count(QLatin1Char(',')) == 4);
    }

    void pluralsAreCounted()
    {
        import({addSong("a.mid", "x"), addSong("b.mid", "y")});
        synchronise();
        QTRY_COMPARE(counts(), text("2 song, 2 non aggiornate"));
        field()->setText(text("mid"));
        QCOMPARE(counts(), text("2 song, 2 mostrate, 2 non aggiornate"));
        trigger("actionEnglish");
        QCOMPARE(counts(), text("2 songs, 2 shown, 2 not updated"));
    }

    void songsAreCountedByTheRuleOfTheReport_data()
    {
        const Table<QString, QString> row;
        row("in Italian", "actionItalian", "3 song, 1 aggiornata, 2 già complete");
        row("in English", "actionEnglish", "3 songs, 1 updated, 2 already complete");
    }
    /** A song to which the catalogue adds nothing looks like an updated one, and counts apart. */
    void songsAreCountedByTheRuleOfTheReport()
    {
        const auto [language, line] = cells<QString, QString>();
        const QStringList complete{addSong("AZZURRO.mid", "a"), addSong("VOLARE.mid", "b")};
        import(complete);
        synchronise();
        QTRY_COMPARE(counts(), text("2 song, 2 aggiornate"));
        import({complete.at(0), complete.at(1), addSong("VOLARE.kar", "c")});
        synchronise();
        QCOMPARE(statuses(), text("1 1 1"));
        for (int row = 0; row < 3; ++row)
            QCOMPARE(model()->index(row, Type).data(Qt::AccessibleTextRole).toString(),
                     text("MIDI, Aggiornata dal database K-Varo"));
        states()->setCurrentIndex(2);
        QCOMPARE(shown(), text("AZZURRO.mid VOLARE.mid"));
        states()->setCurrentIndex(0);

        trigger(qPrintable(language));
        QTRY_COMPARE(counts(), line);
        const QString heading = find<QLabel>("reportHeadingLabel")->text();
        QCOMPARE(heading.section(text(": "), 1), line.section(text(", "), 1));
    }

    void emptyTableSaysWhy()
    {
        const auto *label = find<QLabel>("emptyTableLabel");
        const QString hint =
            text("Qui compaiono le tue song: sceglile con il pulsante in alto a sinistra.");
        const auto spoken = [label] {
            return QAccessible::queryAccessibleInterface(const_cast<QLabel *>(label))
                ->text(QAccessible::Name);
        };
        QVERIFY(label->isVisible());
        QCOMPARE(spoken(), hint);
        QCOMPARE(table()->accessibleDescription(), hint);
        trigger("actionEnglish");
        QVERIFY(spoken() != hint && !spoken().isEmpty());
        trigger("actionItalian");

        import(threeSongs());
        QTRY_VERIFY(!label->isVisible());
        QCOMPARE(table()->accessibleDescription(), QString());
        field()->setText(text("#"));
        QVERIFY(label->isVisible());
        QCOMPARE(spoken(), text("Nessuna song corrisponde alla ricerca."));
        QVERIFY2(m_window->childAt(table()->mapTo(m_window.get(), table()->rect().center()))
                     == table()->viewport(),
                 "clicks reach the table");
        QCOMPARE(table()->accessibleDescription(), spoken());
    }

    void rowsThatChangeAreFilteredAnew()
    {
        import({addSong("a.mid", "Uno"), addSong("b.mid", "Uno"), addSong("c.mid", "Due")});
        field()->setText(text("uno"));
        m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
            child<QLineEdit>(dialog, "titleLineEdit")->setText(text("Due"));
            click(dialog, "savePushButton");
        });
        doubleClick(0);
        QCOMPARE(shown(), text("b.mid"));
        QVERIFY2(table()->currentIndex().row() == 1, "the next song on show");
        field()->clear();
        QCOMPARE(shown(), text("a.mid b.mid c.mid"));
    }

    void hiddenSongsAreSynchronised()
    {
        import({addSong("VOLARE.mid", "a"), addSong("AZZURRO.mid", "b")});
        field()->setText(text("AZZ"));
        synchronise();
        QCOMPARE(statuses(), text("1 1"));
        QCOMPARE(shown(), text("AZZURRO.mid"));
    }

    void removedRowGivesItsPlaceToOneOnShow()
    {
        import({addSong("a.mid", "Uno"), addSong("b.mid", "Due"), addSong("c.mid", "Uno")});
        field()->setText(text("uno"));
        m_driver->chooseEntry(0);
        QWidget *viewport = table()->viewport();
        const QPoint place = centreOf(0, Title);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
        QCOMPARE(shown(), text("c.mid"));
        QCOMPARE(songNameOf(table()->currentIndex()), text("c.mid"));
    }

    void importedSongsAreFiltered()
    {
        field()->setText(text("s3"));
        import(manySongs(300));
        QTRY_COMPARE(counts(),
                     text("300 song, 0 mostrate. Anche quelle nascoste vengono sincronizzate."));
        field()->setText(text("s29"));
        QCOMPARE(shown().count(QLatin1Char(' ')), 9);
    }

private:
    QLineEdit *field() const { return find<QLineEdit>("searchLineEdit"); }
    QComboBox *states() const { return find<QComboBox>("searchMarkComboBox"); }
    QString counts() const { return find<QLabel>("songCountsLabel")->text(); }
    QString shown() const { return shownNames().join(QLatin1Char(' ')); }

    void synchronise()
    {
        m_driver->click<BackupDialog>("exitPushButton");
        press("updateDataToolButton");
    }

    void importInAllStates()
    {
        const QString gone = addSong("gone.mid", "z");
        import({addSong("AZZURRO.mid", "x"), addSong("VOLARE.mid", "y"), gone,
                addSong("nobody.mid", "w")});
        QFile::remove(gone);
        synchronise();
        m_driver->expect<DataEditDialog>(
            [](DataEditDialog &dialog) { click(dialog, "savePushButton"); });
        doubleClick(1);
    }
};

QTEST_MAIN(tst_WindowSearch)
#include "tst_windowsearch.moc"
