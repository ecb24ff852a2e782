#include "tests/library/logcapture.h"
#include "tests/ui/windowtest.h"

#include "ui/appearance.h"
#include "ui/colours.h"
#include "ui/dataeditdialog.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QSpinBox>

using namespace tarvel4;
using namespace TestFiles;

namespace {

/** Tells what the window's event filter is given, and what it does with it. */
class FilteringWindow : public MainWindow
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool kept = MainWindow::eventFilter(watched, event);
        seen.append({watched, kept});
        return kept;
    }

    QVector<QPair<QObject *, bool>> seen;
};

} // namespace

/** The window as it opens, and its hidden panels: the log's settings, and what developers try songs
 * and styles with. */
class tst_MainWindow : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void slotsAreInTheOrderOfTheMetaObject()
    {
        QStringList found;
        const QMetaObject &meta = MainWindow::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            found.append(QString::fromLatin1(meta.method(i).methodSignature()));
        QCOMPARE(
            found.join(QLatin1Char(' ')),
            text("on_selectDirToolButton_clicked() on_updateDataToolButton_clicked() "
                 "on_actionItalian_triggered() on_actionEnglish_triggered() "
                 "on_actionGerman_triggered() on_actionAbout_triggered() "
                 "on_actionAbout_QT_triggered() on_actionContents_triggered() "
                 "on_actionCopyrightYes_triggered() on_actionCopyrightNo_triggered() "
                 "onSongsTableViewDoubleClicked(QModelIndex) on_optimizeMemory_triggered() "
                 "on_transferFilesToolButton_clicked() on_actionSongsList_triggered() "
                 "onSongsTableViewShowContextMenu(QPoint) on_dbgImportPushButton_clicked() "
                 "on_dbgSavePushButton_clicked() on_dbgAddMarkerPushButton_clicked() "
                 "on_dbgShowDialogPushButton_clicked() on_dbgHidePushButton_clicked() "
                 "on_dbgBackupPushButton_clicked() on_dbgLogEnableCheckBox_toggled(bool) "
                 "on_dbgLogClearCheckBox_toggled(bool) on_dbgReloadStylePushButton_clicked()"));
    }

    void widgetsHaveTheirTexts_data()
    {
        const Table<QString> row;
        row("selectDirToolButton",
            "Seleziona le basi musicali che desideri inserire nella memoria di Tarvel");
        row("label_2", "Sincronizza song con il\ndatabase K-Varo");
        row("label_3", "Trasferisci song nella\nmemoria di Tarvel");
        row("debugKvaroGroupBox", "Opzioni nascoste");
        row("dbgLogEnableCheckBox", "Abilita log (riavvio necessario!)");
        row("dbgLogClearCheckBox", "Cancella log ad ogni avvio");
        row("debugGroupBox", "Debug");
        row("dbgAddMarkerPushButton", "Add Marker");
        row("dbgSavePushButton", "Save");
        row("dbgReloadStylePushButton", "Reload Stylesheet");
        row("dbgImportPushButton", "Import again");
        row("dbgHidePushButton", "Hide Debug");
        row("dbgBackupPushButton", "Backup");
        row("dbgShowDialogPushButton", "Manual Dialog");
    }
    void widgetsHaveTheirTexts()
    {
        const auto [shown] = cells<QString>();
        const auto *widget = find<QWidget>(QTest::currentDataTag());
        const char *property = qobject_cast<const QGroupBox *>(widget) ? "title" : "text";
        QCOMPARE(widget->property(property).toString(), shown);
        QCOMPARE(m_window->windowTitle(), text("Tarvel4 Soft"));
    }

    void picturesOfTheLabels()
    {
        const auto styleOf = [this](const char *name) {
            const auto *label = find<QLabel>(name);
            const QString style = label->styleSheet();
            const QString file = style.section(QLatin1Char('('), 1).section(QLatin1Char(')'), 0, 0);
            return QPixmap(file).isNull() ? text("no picture")
                                          : label->parentWidget()->objectName() + style;
        };
        QCOMPARE(styleOf("logoLabel"), text("centralWidgetimage: url(:/imgs/logo-tarvel4.png);"));
        QCOMPARE(styleOf("logoKvaroLabel"),
                 text("centralWidgetimage: url(:/imgs/logo-kvaro.png);"));
        QCOMPARE(styleOf("label"), text("frameimage:url(:/imgs/image-corner.png)"));
    }

    void picturesFollowTheScheme()
    {
        const auto light = qScopeGuard([before = QApplication::palette()] {
            QApplication::setPalette(before);
            qApp->setStyleSheet(QString());
        });
        Appearance::setScheme(Colours::Scheme::Dark);
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        for (const char *name : {"logoLabel", "logoKvaroLabel", "label"})
            QVERIFY2(find<QLabel>(name)->styleSheet().contains(text("-dark.png")), name);
    }

    void everyTextFitsItsWidget_data()
    {
        Table<QByteArray, QSize>();
        for (const char *language : {"actionItalian", "actionEnglish"}) {
            QTest::addRow("%s", language) << QByteArray(language) << QSize(1280, 800);
            QTest::addRow("%s at 200 %%", language) << QByteArray(language) << QSize(640, 400);
        }
    }
    void everyTextFitsItsWidget()
    {
        const auto [language, size] = cells<QByteArray, QSize>();
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        trigger(language.constData());
        m_window->resize(size);
        QCoreApplication::processEvents();
        QCOMPARE(m_window->size(), size); // no widget asks for more

        for (const char *name : {"label_2", "label_3"}) {
            const auto *label = find<QLabel>(name);
            const QRect words = label->fontMetrics().boundingRect(
                label->contentsRect(),
                static_cast<int>(Qt::TextWordWrap) | static_cast<int>(Qt::AlignVCenter),
                label->text());
            QVERIFY2(label->contentsRect().contains(words), name);
        }
        QVERIFY(table()->viewport()->height() > 4 * table()->fontMetrics().height());
    }

    void atStartOnlyTheImportIsEnabled()
    {
        QCOMPARE(enabledSteps(), text("selectDir"));
        for (const char *panel : {"debugGroupBox", "debugKvaroGroupBox"})
            QVERIFY2(find<QWidget>(panel)->isHidden(), panel);
    }

    void tableIsSetUp()
    {
        const QTableView *songs = table();
        QCOMPARE(songs->editTriggers(), QAbstractItemView::NoEditTriggers);
        QVERIFY(songs->isSortingEnabled());
        QCOMPARE(songs->selectionBehavior(), QAbstractItemView::SelectRows);
        QCOMPARE(songs->selectionMode(), QAbstractItemView::SingleSelection);
        QVERIFY(!songs->showGrid());
        QVERIFY(songs->verticalHeader()->isHidden());
        QVERIFY(!songs->alternatingRowColors());
        QCOMPARE(songs->contextMenuPolicy(), Qt::CustomContextMenu);

        QStringList shown;
        for (int i = 0; i < model()->columnCount(); ++i) {
            if (!songs->isColumnHidden(i))
                shown.append(model()->headerData(i, Qt::Horizontal).toString());
        }
        QCOMPARE(shown,
                 strings({"Formato", "Titolo", "Artista", "Genere", "Autore", "Durata", "Bpm",
                          "Tonalita'", "Nome file"}));
    }

    void catalogueThatCantBeOpenedLeavesAUsableWindowWithAnEmptyTable()
    {
        m_window.reset();
        QFile::remove(path("songsdb_debug"));
        QDir().mkpath(path("songsdb_debug")); // a folder is no catalogue
        const LogCapture log;
        openWindow();
        QVERIFY(LogCapture::has(text("Error initializing DB !!!")));
        QVERIFY(!table()->model());
        QCOMPARE(table()->contextMenuPolicy(), Qt::DefaultContextMenu);
        QCOMPARE(enabledSteps(), text("selectDir"));

        import({addSong("A.mid", "A")});
        QCOMPARE(enabledSteps(), text("selectDir transferFiles"));
        QDir().mkdir(path("elsewhere"));
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("elsewhere"));
        QVERIFY(QFile::exists(path("elsewhere/A.mid")));
        trigger("actionEnglish"); // the texts change, there are no headers to change
        QCOMPARE(find<QMenu>("menuHelp")->title().remove(QLatin1Char('&')), text("Help"));
    }

    void keyboardReachesTheStepsInOrder()
    {
        for (const char *name : {"updateDataToolButton", "transferFilesToolButton"})
            find<QToolButton>(name)->setEnabled(true);
        QApplication::setActiveWindow(m_window.get());
        find<QWidget>("selectDirToolButton")->setFocus();
        for (const char *name :
             {"selectDirToolButton", "updateDataToolButton", "transferFilesToolButton",
              "searchLineEdit", "searchMarkComboBox", "userLibraryTableView"}) {
            QTRY_COMPARE(m_window->focusWidget()->objectName(), text(name));
            QTest::keyClick(m_window->focusWidget(), Qt::Key_Tab);
        }
    }

    void windowFiltersTheEventsOfTheApplication()
    {
        FilteringWindow window;
        QObject stranger;
        QEvent event(QEvent::User);
        QCoreApplication::sendEvent(&stranger, &event);
        QVERIFY(window.seen.contains({&stranger, false}));
    }

    void logBoxesShowAndKeepTheSettings_data()
    {
        const Table<QString> row;
        row("dbgLogEnableCheckBox", "logenabled");
        row("dbgLogClearCheckBox", "logclear");
    }
    void logBoxesShowAndKeepTheSettings()
    {
        const auto [key] = cells<QString>();
        for (const bool before : {false, true}) {
            auto *box = find<QCheckBox>(QTest::currentDataTag());
            QCOMPARE(box->isChecked(), before);
            QCOMPARE(settings().contains(key), before);
            box->click();
            QCOMPARE(settings().value(key).toBool(), !before);
            m_window.reset();
            openWindow(); // the next window shows what was kept
        }
    }

    void debugPanelIsToggled()
    {
        for (const bool isShown : {true, false}) {
            pressHidden("dbgHidePushButton");
            QCOMPARE(find<QWidget>("debugGroupBox")->isVisible(), isShown);
        }
    }

    void reloadStyleReadsTheProgramsFolder()
    {
        const QString file = QCoreApplication::applicationDirPath() + text("/default.qss");
        QVERIFY(!QFile::exists(file));
        write(file, "QLabel#nobody { color: red }");
        pressHidden("dbgReloadStylePushButton");
        QFile::remove(file);
        const QString applied = qApp->styleSheet();
        qApp->setStyleSheet(QString());
        QCOMPARE(applied, text("QLabel#nobody { color: red }"));
    }

    void developersSaveAndMarker()
    {
        const QString song = addSong("b.mid", "Song");
        const QByteArray before = read(song);
        import({addSong("a.mid", "Song"), song});
        const LogCapture log;
        pressHidden("dbgSavePushButton"); // no row selected: nothing
        pressHidden("dbgAddMarkerPushButton");
        QCOMPARE(LogCapture::lines(), QStringList());

        table()->selectRow(1);
        pressHidden("dbgSavePushButton");
        QCOMPARE(LogCapture::lines().mid(0, 2),
                 strings({"[MainWindow] Saving row:  1", "Saving to file:  \"test_save.bin\""}));
        QCOMPARE(LogCapture::lines().constLast(), text("Ok"));
        QCOMPARE(read(path("test_save.bin")), before);

        find<QLineEdit>("dbgMarkerTextLineEdit")->setText(text("Refrain"));
        find<QSpinBox>("dbgMarkerBarSpinBox")->setValue(7);
        pressHidden("dbgAddMarkerPushButton");
        QVERIFY(LogCapture::has(text("[MainWindow] Adding marker to row:  1")));
        QVERIFY(read(path("test_addmarker.bin")).contains("Refrain"));
        QCOMPARE(read(song), before);
    }

    void developersDialog_data()
    {
        const Table<QString> row;
        row("savePushButton", "Accettato");
        row("exitPushButton", "Rifiutato");
    }
    void developersDialog()
    {
        const auto [line] = cells<QString>();
        m_driver->click<DataEditDialog>(QTest::currentDataTag());
        const LogCapture log;
        pressHidden("dbgShowDialogPushButton");
        QCOMPARE(LogCapture::lines().constLast(), line);
    }
};

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
