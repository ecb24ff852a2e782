#include "tests/library/logcapture.h"
#include "tests/storage/unixfile.h"
#include "tests/ui/windowtest.h"

#include "songs/metasong.h"
#include "ui/dataeditdialog.h"

#include <QAccessible>
#include <QComboBox>
#include <QDesktopServices>
#include <QScrollBar>
#include <QToolTip>

using namespace tarvel4;
using namespace TestFiles;

/** What can be done in the song table: editing, removing and deleting a song, sorting. */
class tst_WindowTable : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus"); // and no file manager on it
    }
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void edits_data()
    {
        const Table<bool, QString> row;
        row("a double click edits", false, "savePushButton");
        row("Enter edits", true, "savePushButton");
        row("Annulla changes nothing", false, "exitPushButton");
        row("closing the dialog changes nothing", false, "");
    }
    void edits()
    {
        const auto [byKey, button] = cells<bool, QString>();
        import(3);
        const bool isSaved = button == text("savePushButton");
        const QByteArray before = read(m_songs.at(1));
        retitle({}, button);
        const LogCapture log;
        if (byKey) {
            QApplication::setActiveWindow(m_window.get());
            table()->setFocus();
            table()->selectRow(1);
            QTRY_VERIFY(table()->hasFocus());
            QTest::keyClick(table(), Qt::Key_Return);
        } else {
            doubleClick(1);
        }
        const QString title = text(isSaved ? "Edited" : "Song 998");
        QCOMPARE(column(Title), QStringList({text("Song 999"), title, text("Song 997")}));
        QCOMPARE(statuses(), text(isSaved ? "0 2 0" : "0 0 0"));
        QCOMPARE(column(Type), strings({"MIDI", "MIDI", "MIDI"}));
        QCOMPARE(tooltipAt(0, Type), QString());
        QCOMPARE(tooltipAt(1, Type).contains(text("Modificata a mano")), isSaved);
        QCOMPARE(spoken(1), text(isSaved ? "MIDI, Modificata a mano" : "MIDI"));
        QCOMPARE(read(m_songs.at(1)) == before, !isSaved);
        QCOMPARE(read(m_songs.at(1)).contains("Edited"), isSaved);

        const QString path = QLatin1Char('"') + m_songs.at(1) + QLatin1Char('"');
        QStringList lines{text("File name:  ") + path, text("[MainWindow] Manual modifing row:  1"),
                          text(isSaved ? "Accepted" : "Rejected!"),
                          text("Title      : \"%1\"").arg(title)};
        if (isSaved)
            lines << text("Saving to file:  ") + path << text("Ok");
        int at = -1;
        for (const QString &line : qAsConst(lines)) {
            at = static_cast<int>(LogCapture::lines().indexOf(line, at + 1));
            QVERIFY2(at >= 0, qPrintable(line));
        }
    }

    void editOfASortedRow()
    {
        import(3);
        table()->sortByColumn(Title, Qt::AscendingOrder);
        QCOMPARE(column(Name).constFirst(), text("s002.mid"));
        retitle();
        doubleClick(0);
        QVERIFY(read(m_songs.at(2)).contains("Edited"));
        const int row = static_cast<int>(column(Name).indexOf(text("s002.mid")));
        QCOMPARE(column(Title).at(row), text("Edited"));
        QCOMPARE(column(Status).at(row), text("2"));
    }

    void editReachesRowsFarDown()
    {
        import(280);
        table()->scrollToBottom();
        retitle();
        doubleClick(279);
        QVERIFY(read(m_songs.at(279)).contains("Edited"));
    }

    void unreadableSongOpensNoDialog()
    {
        import(2);
        QFile::remove(m_songs.at(0));
        doubleClick(0);
        QCOMPARE(column(Status).at(0), text("0"));
        QVERIFY(tooltipAt(0, Type).contains(text("Non letta: ")));
        QVERIFY(spoken(0).startsWith(text("MIDI, Non letta: ")));
    }

    void noRowIsNotEdited()
    {
        import(2);
        const LogCapture log;
        Q_EMIT table()->doubleClicked(QModelIndex()); // a dialog that is not expected fails the row
        QCOMPARE(LogCapture::lines(), QStringList());
        QCOMPARE(statuses(), text("0 0"));
    }

    void editOffersItsLists()
    {
        import(1);
        QStringList artists;
        QStringList genres;
        QStringList keys;
        m_driver->expect<DataEditDialog>([&](DataEditDialog &dialog) {
            const auto entries = [&dialog](const char *box) {
                QStringList texts;
                for (int i = 0; i < child<QComboBox>(dialog, box)->count(); ++i)
                    texts.append(child<QComboBox>(dialog, box)->itemText(i));
                return texts;
            };
            artists = entries("artistComboBox");
            genres = entries("genreComboBox");
            keys = entries("keyComboBox");
            dialog.reject();
        });
        doubleClick(0);
        QCOMPARE(artists, strings({"D. Modugno", "A. Celentano"}));
        QCOMPARE(genres, strings({"POP", "ROCK"}));
        QCOMPARE(keys, QStringList(QString()) + MetaSong::keyList());
    }

    void applyToAll_data()
    {
        const Table<QString, QStringList> row;
        row("author", "checkBoxToAllAuthor", strings({"Song 999", "NEW", "", ""}));
        row("artist", "checkBoxToAllArtist", strings({"Song 999", "", "NEW", ""}));
        row("genre", "checkBoxToAllGenre", strings({"Song 999", "", "", "NEW"}));
        row("title: each song gets its own name", "checkBoxToAllTitle",
            strings({"s000", "", "", ""}));
    }
    void applyToAll()
    {
        auto [box, titleAuthorArtistGenre] = cells<QString, QStringList>();
        import(3);
        m_driver->expect<DataEditDialog>([box = box](DataEditDialog &dialog) {
            click(dialog, "radioButtonTitle2");
            child<QLineEdit>(dialog, "authorLineEdit")->setText(text("NEW"));
            child<QComboBox>(dialog, "artistComboBox")->setEditText(text("NEW"));
            child<QComboBox>(dialog, "genreComboBox")->setEditText(text("NEW"));
            click(dialog, qPrintable(box));
            click(dialog, "savePushButton");
        });
        m_driver->answerBox(QMessageBox::Yes);
        doubleClick(1);
        const auto fieldsOf = [this](int row) {
            return QStringList({column(Title).at(row), column(Author).at(row),
                                column(Artist).at(row), column(Genre).at(row)});
        };
        QCOMPARE(fieldsOf(0), titleAuthorArtistGenre);
        QCOMPARE(fieldsOf(1), strings({"s001", "NEW", "NEW", "NEW"}));
        titleAuthorArtistGenre.replaceInStrings(text("999"), text("997"));
        QCOMPARE(fieldsOf(2), titleAuthorArtistGenre.replaceInStrings(text("s000"), text("s002")));
        QCOMPARE(statuses(), text("2 2 2"));
        QVERIFY(!QApplication::activeModalWidget());
    }

    void menu_data()
    {
        const Table<int, int, bool, bool> row;
        const int none = QMessageBox::NoButton;
        row("closing it changes nothing", -1, none, true, true);
        row("Remove from list leaves the file", 0, none, false, true);
        row("Delete file, and Yes: file and row are gone", 1, int{QMessageBox::Yes}, false, false);
        row("Delete file, and No: nothing happens", 1, int{QMessageBox::No}, true, true);
    }
    void menu()
    {
        const auto [entry, answer, isListed, isOnDisk] = cells<int, int, bool, bool>();
        import(3);
        openMenu(centreOf(1, Title), entry, static_cast<QMessageBox::StandardButton>(answer));
        QCOMPARE(m_driver->menuTexts,
                 strings({"Remove from list", "Delete file", "", "&Modifica...",
                          "Mostra nella cartella"}));
        if (entry == 1) {
            QCOMPARE(m_driver->boxes,
                     strings({"Question|Attenzione|Sei sicuro di voler cancellare il file?"}));
            QCOMPARE(m_driver->lastBox.buttons, QMessageBox::Yes | QMessageBox::No);
            QCOMPARE(m_driver->lastBox.addition, text("s001.mid"));
        }
        QCOMPARE(column(Name).contains(text("s001.mid")), isListed);
        QCOMPARE(QFile::exists(m_songs.at(1)), isOnDisk);
        for (const int other : {0, 2}) {
            QVERIFY(column(Name).contains(QFileInfo(m_songs.at(other)).fileName()));
            QVERIFY(QFile::exists(m_songs.at(other)));
        }
    }

    void deleteKeyAsksAboutTheCurrentSong()
    {
        import(3);
        QApplication::setActiveWindow(m_window.get());
        table()->setFocus();
        QTRY_VERIFY(table()->hasFocus());
        table()->setCurrentIndex({});
        QTest::keyClick(table(), Qt::Key_Delete); // a question that is not expected fails the row
        table()->selectRow(1);
        for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
            m_driver->answerBox(answer);
            QApplication::setActiveWindow(m_window.get());
            QTRY_VERIFY(table()->hasFocus());
            QTest::keyClick(table(), Qt::Key_Delete);
            QCOMPARE(m_driver->lastBox.addition, text("s001.mid"));
            QCOMPARE(QFile::exists(m_songs.at(1)), answer == QMessageBox::No);
        }
        QCOMPARE(column(Name), strings({"s000.mid", "s002.mid"}));
    }

    void aKeyPressedTwiceOpensOneDialog_data()
    {
        const Table<int, int> row;
        row("Delete", Qt::Key_Delete, Qt::NoModifier);
        row("F2", Qt::Key_F2, Qt::NoModifier);
        row("Return", Qt::Key_Return, Qt::NoModifier);
        row("Enter", Qt::Key_Enter, Qt::NoModifier);
        row("Ctrl+I", Qt::Key_I, Qt::ControlModifier);
        row("Shift+F10", Qt::Key_F10, Qt::ShiftModifier);
    }
    /** Before the dialog has the keys: an X server gives them to it some time later. */
    void aKeyPressedTwiceOpensOneDialog()
    {
        const auto [key, modifier] = cells<int, int>();
        SKIP_WITHOUT_UNIX(modifier == Qt::ShiftModifier,
                          "key of a menu: it tells a window only that one is wanted");
        import(2);
        markFailed(1);
        const auto press = [this, key = Qt::Key(key), modifier = Qt::KeyboardModifier(modifier)] {
            QApplication::setActiveWindow(m_window.get());
            QTest::keyClick(table(), key, modifier);
        };
        table()->setFocus();
        table()->selectRow(1);
        bool isOpened = false;
        m_driver->expect<QWidget>([&](QWidget &opened) {
            isOpened = true;
            press(); // a second one is not expected, and fails the row
            opened.close();
        });
        press();
        QVERIFY(isOpened);
    }

    void folderOfASongIsShown()
    {
        import(2);
        m_openedUrl = {};
        QDesktopServices::setUrlHandler(text("file"), this, "keepUrl");
        const auto end = qScopeGuard([] { QDesktopServices::unsetUrlHandler(text("file")); });
        if (!UnixFile::isHere) // explorer.exe shows a song that is there
            QVERIFY(QFile::remove(m_songs.at(1)));
        openMenu(centreOf(1, Title), 4);
        QTRY_COMPARE(m_openedUrl, QUrl::fromLocalFile(path("songs")));
        QCOMPARE(model()->rowCount(), 2);
    }

    void removeKeepsThePlace()
    {
        import(280);
        table()->scrollToBottom();
        const QScrollBar *bar = table()->verticalScrollBar();
        const int before = bar->value();
        openMenu(centreOf(275, Title), 0);
        QCOMPARE(model()->rowCount(), 279);
        QCOMPARE(bar->value(), before - 1);
        QCOMPARE(table()->currentIndex().row(), 275);
    }

    void removeOnEmptySpaceRemovesNoRow()
    {
        import(2);
        table()->selectRow(0); // which is not the one that was clicked
        openMenu(emptySpace(), 0);
        QCOMPARE(model()->rowCount(), 2);
        openMenu(emptySpace(), 1); // a question that is not expected fails the row
        QCOMPARE(model()->rowCount(), 2);
    }

    void fileThatCantBeDeletedLosesItsRowWithoutAMessage()
    {
        import(2);
        QFile::remove(m_songs.at(0));
        QDir().mkpath(m_songs.at(0) + text("/a folder by now"));
        openMenu(centreOf(0, 1), 1, QMessageBox::Yes); // a second box is not expected
        QVERIFY2(model()->rowCount() == 1, "the row is removed all the same");
        QVERIFY(QFileInfo::exists(m_songs.at(0)));
    }

    void narrowCellsShowTheirTextAsTooltip()
    {
        WindowTest::import({addSong("a.mid", "<h1>Big & long title</h1>")});
        QCOMPARE(tooltipAt(0, Title), QString());
        table()->setColumnWidth(Title, 60);
        QVERIFY2(tooltipAt(0, Title).contains(text("&lt;h1&gt;Big &amp; long title&lt;/h1&gt;")),
                 "a text that looks like HTML stays a text");
    }

public Q_SLOTS:
    void keepUrl(const QUrl &url) { m_openedUrl = url; }

private:
    QString spoken(int row) const
    {
        QAccessibleInterface *cells = QAccessible::queryAccessibleInterface(table());
        return cells->tableInterface()->cellAt(row, Type)->text(QAccessible::Name);
    }

    /** Imports songs s000.mid, s001.mid ... with the titles "Song 999", "Song 998" ... */
    void import(int songs)
    {
        m_songs.clear();
        for (int i = 0; i < songs; ++i)
            m_songs.append(addSong('s' + QByteArray::number(1000 + i).mid(1) + ".mid",
                                   "Song " + QByteArray::number(999 - i)));
        WindowTest::import(m_songs);
    }

    /** Opens the menu, chooses an entry and answers the question that follows, if any. */
    void openMenu(QPoint place, int entry,
                  QMessageBox::StandardButton answer = QMessageBox::NoButton)
    {
        m_driver->chooseEntry(entry);
        if (answer != QMessageBox::NoButton)
            m_driver->answerBox(answer);
        QWidget *viewport = table()->viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
    }
    QPoint emptySpace() const { return table()->viewport()->rect().bottomLeft() - QPoint(-9, 9); }

    /** Gives the song of the next edit the title "Edited", and presses a button. */
    void retitle(const std::function<void()> &meanwhile = {},
                 const QString &button = text("savePushButton"))
    {
        m_driver->expect<DataEditDialog>([=](DataEditDialog &dialog) {
            if (meanwhile)
                meanwhile();
            child<QLineEdit>(dialog, "titleLineEdit")->setText(text("Edited"));
            if (button.isEmpty())
                dialog.close();
            else
                click(dialog, qPrintable(button));
        });
    }

    QString tooltipAt(int row, int column) const
    {
        QToolTip::hideText();
        const QPoint place = centreOf(row, column);
        QHelpEvent event(QEvent::ToolTip, place, table()->viewport()->mapToGlobal(place));
        QApplication::sendEvent(table()->viewport(), &event);
        return QToolTip::text();
    }

    QStringList m_songs;
    QUrl m_openedUrl;
};

QTEST_MAIN(tst_WindowTable)
#include "tst_windowtable.moc"
