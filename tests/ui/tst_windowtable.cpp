#include "tests/library/logcapture.h"
#include "tests/ui/windowfixture.h"

#include "songs/metasong.h"
#include "ui/dataeditdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QScrollBar>
#include <QToolTip>

using namespace tarvel4;

/** What can be done in the song table: editing, removing and deleting a song, sorting. */
class tst_WindowTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void editIsOpenedFor_data();
    void editIsOpenedFor();
    void rejectedEditChangesNothing_data();
    void rejectedEditChangesNothing();
    void editIsLogged_data();
    void editIsLogged();
    void editOfASortedRow();
    void editReachesRowsFarDown();
    void unreadableSongOpensNoDialog();
    void failedSaveIsTold();
    void editOffersItsLists();
    void applyToAll_data();
    void applyToAll();
    void closedMenuChangesNothing();
    void removeFromList();
    void removeKeepsThePlace();
    void emptySpaceHasNoRow();
    void deleteFile_data();
    void deleteFile();
    void deleteOfAFileThatCantBeDeleted();
    void statusIsTold();
    void narrowCellsShowTheirTextAsTooltip();

private:
    void import(int songs);
    /** Opens the menu, chooses an entry and answers the question that follows, if any. */
    void openMenu(QPoint place, int entry,
                  QMessageBox::StandardButton answer = QMessageBox::NoButton)
    {
        m_window->driver.chooseEntry(entry);
        if (answer != QMessageBox::NoButton)
            m_window->driver.answerBox(answer);
        QTableView *table = m_window->table();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                table->viewport()->mapToGlobal(place));
        QApplication::sendEvent(table->viewport(), &event);
    }
    QPoint emptySpace() const
    {
        return m_window->table()->viewport()->rect().bottomLeft() - QPoint(-9, 9);
    }
    void retitle(
        const QString &title, const std::function<void()> &meanwhile = [] {})
    {
        m_window->driver.expect<DataEditDialog>([=](DataEditDialog &dialog) {
            meanwhile();
            dialog.findChild<QLineEdit *>(QStringLiteral("titleLineEdit"))->setText(title);
            m_window->driver.clickIn(dialog, QStringLiteral("savePushButton"));
        });
    }
    QString tooltipAt(int row, int column)
    {
        QToolTip::hideText();
        const QPoint place = m_window->centreOf(row, column);
        QHelpEvent event(QEvent::ToolTip, place, m_window->table()->viewport()->mapToGlobal(place));
        QApplication::sendEvent(m_window->table()->viewport(), &event);
        return QToolTip::text();
    }

    QScopedPointer<WindowFixture> m_window;
    QStringList m_songs;
};

void tst_WindowTable::init()
{
    m_window.reset(new WindowFixture);
    m_window->settings().setValue(QStringLiteral("copyrightAsk"), false);
    m_window->settings().sync();
    m_window->open();
}

void tst_WindowTable::cleanup()
{
    const QString problems = m_window->driver.problems();
    m_window.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

/** Imports songs s000.mid, s001.mid ... with the titles "Song 999", "Song 998" ... */
void tst_WindowTable::import(int songs)
{
    m_songs.clear();
    for (int i = 0; i < songs; ++i)
        m_songs.append(m_window->addSong(QStringLiteral("s%1.mid").arg(i, 3, 10, QLatin1Char('0')),
                                         "Song " + QByteArray::number(999 - i)));
    m_window->import(m_songs);
}

void tst_WindowTable::editIsOpenedFor_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("a double click") << false;
    QTest::newRow("Enter") << true;
}

void tst_WindowTable::editIsOpenedFor()
{
    QFETCH(bool, byKey);
    import(3);
    retitle(QStringLiteral("Edited"));
    if (byKey) {
        QApplication::setActiveWindow(m_window->window.get());
        m_window->table()->setFocus();
        m_window->table()->selectRow(1);
        QTRY_VERIFY(m_window->table()->hasFocus());
        QTest::keyClick(m_window->table(), Qt::Key_Return);
    } else {
        m_window->doubleClick(1, WindowFixture::Title);
    }
    QCOMPARE(m_window->column(WindowFixture::Title),
             QStringList({QStringLiteral("Song 999"), QStringLiteral("Edited"),
                          QStringLiteral("Song 997")}));
    QCOMPARE(m_window->column(WindowFixture::Status),
             QStringList({QStringLiteral("0"), QStringLiteral("2"), QStringLiteral("0")}));
    QVERIFY(WindowFixture::read(m_songs.at(1)).contains("Edited"));
}

void tst_WindowTable::rejectedEditChangesNothing_data()
{
    QTest::addColumn<bool>("byFrame");
    QTest::newRow("Annulla") << false;
    QTest::newRow("closing the dialog") << true;
}

void tst_WindowTable::rejectedEditChangesNothing()
{
    QFETCH(bool, byFrame);
    import(1);
    const QByteArray before = WindowFixture::read(m_songs.at(0));
    if (byFrame)
        m_window->driver.closeFrame<DataEditDialog>();
    else
        m_window->driver.click<DataEditDialog>(QStringLiteral("exitPushButton"));
    m_window->doubleClick(0, WindowFixture::Title);
    QCOMPARE(WindowFixture::read(m_songs.at(0)), before);
    QCOMPARE(m_window->column(WindowFixture::Status), QStringList({QStringLiteral("0")}));
}

void tst_WindowTable::editIsLogged_data()
{
    QTest::addColumn<bool>("isAccepted");
    QTest::newRow("accepted") << true;
    QTest::newRow("rejected") << false;
}

void tst_WindowTable::editIsLogged()
{
    QFETCH(bool, isAccepted);
    import(2);
    if (isAccepted)
        retitle(QStringLiteral("Edited"));
    else
        m_window->driver.click<DataEditDialog>(QStringLiteral("exitPushButton"));
    const LogCapture log;
    m_window->doubleClick(1, WindowFixture::Title);

    const QString path = QLatin1Char('"') + m_songs.at(1) + QLatin1Char('"');
    QStringList expected{QStringLiteral("File name:  ") + path,
                         QStringLiteral("[MainWindow] Manual modifing row:  1")};
    if (isAccepted)
        expected << QStringLiteral("Accepted") << QStringLiteral("Title      : \"Edited\"")
                 << QStringLiteral("Saving to file:  ") + path << QStringLiteral("Ok");
    else
        expected << QStringLiteral("Rejected!") << QStringLiteral("Title      : \"Song 998\"");
    int at = -1;
    for (const QString &line : std::as_const(expected)) {
        at = LogCapture::lines().indexOf(line, at + 1);
        QVERIFY2(at >= 0, qPrintable(line));
    }
}

void tst_WindowTable::editOfASortedRow()
{
    import(3);
    m_window->table()->sortByColumn(WindowFixture::Title, Qt::AscendingOrder);
    QCOMPARE(m_window->column(WindowFixture::Name).constFirst(), QStringLiteral("s002.mid"));
    retitle(QStringLiteral("Edited"));
    m_window->doubleClick(0, WindowFixture::Title);
    QVERIFY(WindowFixture::read(m_songs.at(2)).contains("Edited"));
    const int row = m_window->column(WindowFixture::Name).indexOf(QStringLiteral("s002.mid"));
    QCOMPARE(m_window->column(WindowFixture::Title).at(row), QStringLiteral("Edited"));
    QCOMPARE(m_window->column(WindowFixture::Status).at(row), QStringLiteral("2"));
}

void tst_WindowTable::editReachesRowsFarDown()
{
    import(280);
    m_window->table()->scrollToBottom();
    retitle(QStringLiteral("Edited"));
    m_window->doubleClick(279, WindowFixture::Title);
    QVERIFY(WindowFixture::read(m_songs.at(279)).contains("Edited"));
}

void tst_WindowTable::unreadableSongOpensNoDialog()
{
    import(2);
    QFile::remove(m_songs.at(0));
    m_window->doubleClick(0, WindowFixture::Title);
    QCOMPARE(m_window->column(WindowFixture::Status).at(0), QStringLiteral("0"));
    QVERIFY(tooltipAt(0, WindowFixture::Type).contains(QStringLiteral("Non letta: ")));
}

void tst_WindowTable::failedSaveIsTold()
{
    import(1);
    retitle(QStringLiteral("Edited"), [this] { QFile::remove(m_songs.at(0)); });
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->doubleClick(0, WindowFixture::Title);
    QCOMPARE(m_window->driver.lastBox.format, Qt::PlainText);
    QVERIFY(m_window->driver.boxes.at(0).contains(QStringLiteral("s000.mid")));
    QCOMPARE(m_window->column(WindowFixture::Status).at(0), QStringLiteral("2")); // all the same
    QVERIFY(tooltipAt(0, WindowFixture::Type).contains(QStringLiteral("Non salvata: il file ")));
}

void tst_WindowTable::editOffersItsLists()
{
    import(1);
    QStringList artists;
    QStringList genres;
    QStringList keys;
    m_window->driver.expect<DataEditDialog>([&](DataEditDialog &dialog) {
        const auto entries = [&dialog](const char *box) {
            const auto *found = dialog.findChild<QComboBox *>(QLatin1String(box));
            QStringList texts;
            for (int i = 0; i < found->count(); ++i)
                texts.append(found->itemText(i));
            return texts;
        };
        artists = entries("artistComboBox");
        genres = entries("genreComboBox");
        keys = entries("keyComboBox");
        dialog.reject();
    });
    m_window->doubleClick(0, WindowFixture::Title);
    QCOMPARE(artists, QStringList({QStringLiteral("D. Modugno"), QStringLiteral("A. Celentano")}));
    QCOMPARE(genres, QStringList({QStringLiteral("POP"), QStringLiteral("ROCK")}));
    QCOMPARE(keys, QStringList(QString()) + MetaSong::keyList());
}

void tst_WindowTable::applyToAll_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("column");
    QTest::newRow("author") << QStringLiteral("checkBoxToAllAuthor")
                            << static_cast<int>(WindowFixture::Author);
    QTest::newRow("artist") << QStringLiteral("checkBoxToAllArtist")
                            << static_cast<int>(WindowFixture::Artist);
    QTest::newRow("genre") << QStringLiteral("checkBoxToAllGenre")
                           << static_cast<int>(WindowFixture::Genre);
    QTest::newRow("title: each song gets its own name")
        << QStringLiteral("checkBoxToAllTitle") << static_cast<int>(WindowFixture::Title);
}

void tst_WindowTable::applyToAll()
{
    QFETCH(QString, box);
    QFETCH(int, column);
    import(3);
    const QString own = QStringLiteral("NEW");
    m_window->driver.expect<DataEditDialog>([this, box, own](DataEditDialog &dialog) {
        m_window->driver.clickIn(dialog, QStringLiteral("radioButtonTitle2"));
        dialog.findChild<QLineEdit *>(QStringLiteral("authorLineEdit"))->setText(own);
        dialog.findChild<QComboBox *>(QStringLiteral("artistComboBox"))->setEditText(own);
        dialog.findChild<QComboBox *>(QStringLiteral("genreComboBox"))->setEditText(own);
        m_window->driver.clickIn(dialog, box);
        m_window->driver.clickIn(dialog, QStringLiteral("savePushButton"));
    });
    m_window->driver.answerBox(QMessageBox::Yes);
    m_window->doubleClick(1, WindowFixture::Title);
    for (const int other : {WindowFixture::Author, WindowFixture::Artist, WindowFixture::Genre}) {
        const QString others = other == column ? own : QString();
        QCOMPARE(m_window->column(other), QStringList({others, own, others}));
    }
    const bool titles = column == WindowFixture::Title;
    QCOMPARE(m_window->column(WindowFixture::Title),
             QStringList({titles ? QStringLiteral("s000") : QStringLiteral("Song 999"),
                          QStringLiteral("s001"),
                          titles ? QStringLiteral("s002") : QStringLiteral("Song 997")}));
    QCOMPARE(m_window->column(WindowFixture::Status),
             QStringList({QStringLiteral("2"), QStringLiteral("2"), QStringLiteral("2")}));
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_WindowTable::closedMenuChangesNothing()
{
    import(1);
    openMenu(m_window->centreOf(0, 1), -1);
    QCOMPARE(m_window->driver.menuTexts,
             QStringList({QStringLiteral("Remove from list"), QStringLiteral("Delete file")}));
    QCOMPARE(m_window->model()->rowCount(), 1);
}

void tst_WindowTable::removeFromList()
{
    import(3);
    openMenu(m_window->centreOf(1, WindowFixture::Title), 0);
    QCOMPARE(m_window->column(WindowFixture::Name),
             QStringList({QStringLiteral("s000.mid"), QStringLiteral("s002.mid")}));
    QVERIFY2(QFile::exists(m_songs.at(1)), "the file is untouched");
}

void tst_WindowTable::removeKeepsThePlace()
{
    import(280);
    m_window->table()->scrollToBottom();
    const QScrollBar *bar = m_window->table()->verticalScrollBar();
    const int before = bar->value();
    openMenu(m_window->centreOf(275, WindowFixture::Title), 0);
    QCOMPARE(m_window->model()->rowCount(), 279);
    QCOMPARE(bar->value(), before - 1);
    QCOMPARE(m_window->table()->currentIndex().row(), 275);
}

void tst_WindowTable::emptySpaceHasNoRow()
{
    import(2);
    m_window->table()->selectRow(0); // which is not the one that was clicked
    openMenu(emptySpace(), 0);
    QCOMPARE(m_window->model()->rowCount(), 2);
    openMenu(emptySpace(), 1); // a question that is not expected fails the row
    QCOMPARE(m_window->model()->rowCount(), 2);
}

void tst_WindowTable::deleteFile_data()
{
    QTest::addColumn<bool>("yes");
    QTest::newRow("Yes deletes file and row") << true;
    QTest::newRow("No does nothing") << false;
}

void tst_WindowTable::deleteFile()
{
    QFETCH(bool, yes);
    import(2);
    openMenu(m_window->centreOf(0, 1), 1, yes ? QMessageBox::Yes : QMessageBox::No);
    QCOMPARE(m_window->driver.boxes,
             QStringList({QStringLiteral("Attenzione|Sei sicuro di voler cancellare il file?")}));
    QCOMPARE(m_window->driver.lastBox.icon, QMessageBox::Question);
    QCOMPARE(m_window->driver.lastBox.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(QFile::exists(m_songs.at(0)), !yes);
    QCOMPARE(m_window->model()->rowCount(), yes ? 1 : 2);
    QVERIFY(QFile::exists(m_songs.at(1)));
}

void tst_WindowTable::deleteOfAFileThatCantBeDeleted()
{
    import(2);
    QFile::remove(m_songs.at(0));
    QDir().mkpath(m_songs.at(0) + QStringLiteral("/a folder by now"));
    openMenu(m_window->centreOf(0, 1), 1, QMessageBox::Yes);
    QVERIFY2(m_window->model()->rowCount() == 1, "the row is removed all the same");
    QVERIFY(QFileInfo::exists(m_songs.at(0)));
}

void tst_WindowTable::statusIsTold()
{
    import(2);
    QCOMPARE(tooltipAt(0, WindowFixture::Type), QString());
    retitle(QStringLiteral("Edited"));
    m_window->doubleClick(0, WindowFixture::Title);
    QVERIFY(tooltipAt(0, WindowFixture::Type).contains(QStringLiteral("Modificata a mano")));
    QCOMPARE(m_window->column(WindowFixture::Type),
             QStringList({QStringLiteral("MIDI"), QStringLiteral("MIDI")}));
}

void tst_WindowTable::narrowCellsShowTheirTextAsTooltip()
{
    m_window->import({m_window->addSong(QStringLiteral("a.mid"), "<h1>Big & long title</h1>")});
    QCOMPARE(tooltipAt(0, WindowFixture::Title), QString());
    m_window->table()->setColumnWidth(WindowFixture::Title, 60);
    QVERIFY2(tooltipAt(0, WindowFixture::Title)
                 .contains(QStringLiteral("&lt;h1&gt;Big &amp; long title&lt;/h1&gt;")),
             "a text that looks like HTML stays a text");
}

QTEST_MAIN(tst_WindowTable)
#include "tst_windowtable.moc"
