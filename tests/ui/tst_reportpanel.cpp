#include "db/usersongsreltablemodel.h"
#include "tests/storage/unixfile.h"
#include "tests/ui/reporttest.h"
#include "ui/appearance.h"

#include <QAccessible>
#include <QStandardPaths>

using namespace tarvel4;
using namespace TestFiles;

/** What can be done in the panel that shows the report of a job. */
class tst_ReportPanel : public ReportTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    /** 1280x800 at 200 %, below the window's title. */
    void smallWindowShowsThePanelInPlaceOfTheTable()
    {
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        m_window->resize(640, 372);
        QStringList songs = everyFormat();
        import(songs << write(path("songs/bad.mid"), "rubbish"));
        QCoreApplication::processEvents();
        QVERIFY(list()->viewport()->height() >= list()->rowHeight(0));
        QVERIFY(list()->mapTo(m_window.get(), list()->rect().bottomLeft()).y() < 372);
        pressEnterOn(2); // the row is to be seen: the panel gives way
        QCoreApplication::processEvents();
        QVERIFY(!panel()->isVisible() && table()->hasFocus());
        QVERIFY(table()->viewport()->height() >= table()->rowHeight(0) / 2);
        QCOMPARE(table()->currentIndex().row(), 1);
        trigger("actionReport");
        press("reportClosePushButton");
        QCoreApplication::processEvents();
        QVERIFY(table()->viewport()->height() >= table()->rowHeight(0) / 2);
        trigger("actionReport");
        QVERIFY(!table()->isVisible());
        QCOMPARE(m_window->height(), 372);
        QVERIFY(activate(*m_window));
        QTest::keyClick(m_window->focusWidget(), Qt::Key_F, Qt::ControlModifier);
        QVERIFY2(find<QLineEdit>("searchLineEdit")->hasFocus(), "the search gets its room");
        QVERIFY(table()->isVisible() && !panel()->isVisible());
        trigger("actionReport");
        QVERIFY(!table()->isVisible());
        m_window->resize(1024, 660);
        QCoreApplication::processEvents();
        QVERIFY(table()->isVisible());
        QVERIFY(table()->viewport()->height() > table()->rowHeight(0));
        QVERIFY(list()->viewport()->height() > list()->rowHeight(0));
    }

    void headingHasRoom_data()
    {
        const Table<int, bool> row;
        row("beside the buttons in a wide window", 1264, false);
        row("above them in a narrow one", 512, true);
    }
    void headingHasRoom()
    {
        const auto [width, isAbove] = cells<int, bool>();
        import(everyFormat());
        trigger("actionReport");
        m_window->resize(width, 700);
        QCoreApplication::processEvents();
        const auto *shown = find<QLabel>("reportHeadingLabel");
        const auto *button = find<QWidget>("reportSavePushButton");
        QCOMPARE(shown->geometry().bottom() < button->geometry().top(), isAbove);
        QVERIFY(shown->width() >= shown->fontMetrics().horizontalAdvance(text("Importazione:")));
    }

    void lineLeadsToItsRow_data()
    {
        const Table<bool> row;
        row("a click leaves the focus on the list", true);
        row("Enter takes the focus to the row", false);
    }
    void lineLeadsToItsRow()
    {
        const auto [isClick] = cells<bool>();
        QStringList songs;
        for (int i = 0; i < 60; ++i)
            songs += addSong("song" + QByteArray::number(100 + i) + ".mid", "t");
        import(songs);
        trigger("actionReport");
        QVERIFY(activate(*m_window));
        table()->sortByColumn(Name, Qt::DescendingOrder);
        list()->setFocus();
        if (isClick)
            QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier,
                              list()->visualRect(list()->model()->index(1, 1)).center());
        else
            pressEnterOn(1);
        const QModelIndexList selected = table()->selectionModel()->selectedRows(Name);
        QCOMPARE(selected.size(), 1);
        QCOMPARE(selected.first().data().toString(), text("song101.mid"));
        const QPoint place = table()->visualRect(selected.first()).center();
        QVERIFY(place.y() > 0 && place.y() < table()->viewport()->height());
        QCOMPARE(list()->hasFocus(), isClick);
        QCOMPARE(table()->hasFocus(), !isClick);
        QVERIFY(hint().isEmpty());
    }

    void lineWithoutARowSaysSo()
    {
        const QString bad = write(path("songs/bad.mid"), "rubbish");
        import({addSong("VOLARE.mid", "a"), bad});
        pressEnterOn(0, Qt::Key_Enter);
        QCOMPARE(hint(), text("Questa song non è nella tabella: ") + QDir::toNativeSeparators(bad));
        table()->setRowHidden(0, true);
        pressEnterOn(1);
        QVERIFY2(hint().startsWith(text("La riga di questa song ora è nascosta: ")),
                 qPrintable(hint()));
    }

    void nameThatLooksLikeHtmlIsToldAsItIs()
    {
        SKIP_WITHOUT_UNIX(true, "such names");
        const QString bad = write(path("songs/<i>bad<i>.mid"), "rubbish");
        import({bad});
        QCOMPARE(cell(0, 1), text("<i>bad<i>.mid"));
        QCOMPARE(list()->model()->index(0, 1).data(Qt::ToolTipRole).toString(),
                 text("<p>%1</p>").arg(QDir::toNativeSeparators(bad).toHtmlEscaped()));
    }

    void filterListsOneOutcome()
    {
        import({addSong("VOLARE.mid", "a"), addSong("nobody.mid", "b"), addSong("x.mid", "c")});
        make(text("sync"));
        trigger("actionReport");
        auto *filter = find<QComboBox>("reportFilterComboBox");
        QStringList offered;
        for (int i = 0; i < filter->count(); ++i)
            offered += filter->itemText(i);
        QCOMPARE(offered.join(QLatin1Char('|')),
                 text("Tutte (3)|Non nel catalogo (2)|Aggiornate (1)"));
        filter->setCurrentIndex(1);
        QCOMPARE(rows(), 2);
        QCOMPARE(cell(1, 1), text("x.mid"));
        filter->setCurrentIndex(2);
        QCOMPARE(rows(), 1);
        QCOMPARE(cell(0, 1), text("VOLARE.mid"));
        pressEnterOn(0);
        QCOMPARE(table()->currentIndex().row(), 0);
        filter->setCurrentIndex(0);
        QCOMPARE(rows(), 3);
    }

    void reportIsSavedAsText()
    {
        import({addSong("VOLARE.mid", "a"), write(path("songs/bad.mid"), "rubbish")});
        m_driver->chooseFiles({path("report.txt")});
        press("reportSavePushButton");
        const QString saved = QString::fromUtf8(read(path("report.txt")));
        QVERIFY2(saved.startsWith(heading() + QLatin1Char('\n')), qPrintable(saved));
        QVERIFY(saved.contains(text("\n\n1 non letta\n  ") + path("songs/bad.mid") + text(": ")));
        QVERIFY(saved.endsWith(text("\n\n1 importata\n  ") + path("songs/VOLARE.mid")
                               + QLatin1Char(0x0a)));
        QVERIFY(hint().startsWith(text("Salvato in ")));
    }

    void reportGoesWhereTheLastOneWent()
    {
        const QByteArray home = qgetenv("HOME");
        const auto back = qScopeGuard([&home] { qputenv("HOME", home); });
        QVERIFY(QDir().mkdir(path("home"))); // without a folder for documents
        qputenv("HOME", QFile::encodeName(path("home")));
        import({addSong("VOLARE.mid", "a")});
        trigger("actionReport");
        const QString documents =
            QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        for (const QString &start :
             {QFileInfo(documents).isDir() ? documents : QDir::homePath(), path("songs")}) {
            m_driver->expect<QFileDialog>([&start, this](QFileDialog &dialog) {
                QCOMPARE(dialog.directory().absolutePath(), start);
                QCOMPARE(child<QLineEdit>(dialog, "fileNameEdit")->text(), text("resoconto.txt"));
                child<QLineEdit>(dialog, "fileNameEdit")->setText(path("songs/new.txt"));
                QFile::remove(path("songs/new.txt"));
                static_cast<QDialog &>(dialog).accept();
            });
            press("reportSavePushButton");
            QVERIFY(QFile::exists(path("songs/new.txt")));
        }
    }

    void reportThatCantBeSavedTellsWhy()
    {
        const QString song = addSong("VOLARE.mid", "a");
        const QByteArray before = read(song);
        import({song, write(path("songs/bad.mid"), "rubbish")});
        m_driver->chooseFiles({song}); // the file dialog itself asks about what exists
        m_driver->lastGoesFirst();
        m_driver->answerBox(QMessageBox::Yes);
        m_driver->answerBox(QMessageBox::Ok);
        press("reportSavePushButton");
        QCOMPARE(m_driver->boxes.constLast(),
                 text("Critical|Salva il resoconto come testo|Il resoconto non è stato salvato."));
        QVERIFY2(m_driver->lastBox.details.contains(text("VOLARE.mid: non viene sovrascritto")),
                 qPrintable(m_driver->lastBox.details));
        QCOMPARE(read(song), before);
        QVERIFY(hint().isEmpty());
    }

    void panelIsClosedByButtonOrKey_data()
    {
        const Table<bool> row;
        row("by its button", true);
        row("by Escape", false);
    }
    void panelIsClosedByButtonOrKey()
    {
        const auto [byButton] = cells<bool>();
        import({addSong("VOLARE.mid", "a")});
        QVERIFY(activate(*m_window));
        QTest::keyClick(m_window->windowHandle(), Qt::Key_R, Qt::ControlModifier);
        QVERIFY(panel()->isVisible());
        QVERIFY2(list()->hasFocus() && list()->currentIndex().isValid(), "ready for the keys");
        if (byButton)
            press("reportClosePushButton");
        else
            QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
        QVERIFY(!panel()->isVisible());
        QVERIFY(table()->hasFocus());
        make(text("sync"));
        QVERIFY2(!panel()->isVisible(), "it stays closed where nothing failed");
    }

    void languageChangesAtOnce()
    {
        import({addSong("VOLARE.mid", "a"), addSong("nobody.mid", "b")});
        make(text("sync"));
        trigger("actionReport");
        find<QComboBox>("reportFilterComboBox")->setCurrentIndex(1);
        trigger("actionEnglish");
        QCOMPARE(heading(), text("Synchronisation: 1 not in the catalogue, 1 updated"));
        QCOMPARE(cell(0, 0), text("not in the catalogue"));
        QVERIFY2(list()->columnWidth(0) >= list()->fontMetrics().horizontalAdvance(cell(0, 0)),
                 "the column fits the new text");
        QCOMPARE(cell(0, 2), text("found neither by name nor by title"));
        QCOMPARE(list()->model()->headerData(2, Qt::Horizontal).toString(), text("Details"));
        auto *filter = find<QComboBox>("reportFilterComboBox");
        QCOMPARE(filter->currentText(), text("Not in the catalogue (1)"));
        QCOMPARE(rows(), 1);
        trigger("actionItalian");
        QCOMPARE(heading(), text("Sincronizzazione: 1 non nel catalogo, 1 aggiornata"));
    }

    void everyControlHasAName()
    {
        import({write(path("songs/bad.mid"), "rubbish")});
        QStringList names;
        for (const char *name : {"reportTableView", "reportFilterComboBox", "reportSavePushButton",
                                 "reportClosePushButton"}) {
            QAccessibleInterface *spoken =
                QAccessible::queryAccessibleInterface(find<QWidget>(name));
            QVERIFY2(spoken && !spoken->text(QAccessible::Name).isEmpty(), name);
            names += spoken->text(QAccessible::Name);
        }
        QCOMPARE(names.removeDuplicates(), 0);
        QCOMPARE(focusChain(list()).section(QLatin1Char(' '), 0, 3),
                 text("reportTableView reportFilterComboBox reportSavePushButton "
                      "reportClosePushButton"));
    }

    void tenThousandSongsAreShown()
    {
        constexpr int songs = 10000;
        auto *rowsOfSongs = qobject_cast<UserSongsRelTableModel *>(model());
        JobReport report(JobReport::Job::Synchronise);
        SongOutcome song;
        for (int i = 0; i < songs; ++i) {
            song.path = song.after.filename = path("songs/") + QString::number(i) + text(".mid");
            song.result = i % 3 ? SongResult::NotFound : SongResult::Updated;
            song.changes = {{text("title"), text("a"), text("b")}};
            report.add(song);
            QVERIFY(rowsOfSongs->appendSong(song.after));
        }
        report.finish({});
        QCOMPARE(rowsOfSongs->totalRows(), songs);
        panel()->setReport(report);
        panel()->show();
        QCoreApplication::processEvents();
        find<QComboBox>("reportFilterComboBox")->setCurrentIndex(1);
        QCoreApplication::processEvents();
        QCOMPARE(rows(), 6666);
        pressEnterOn(6665);
        QCOMPARE(table()->currentIndex().row(), songs - 2);
    }
};

QTEST_MAIN(tst_ReportPanel)
#include "tst_reportpanel.moc"
