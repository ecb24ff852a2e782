#include "tests/library/logcapture.h"
#include "tests/library/texts.h"
#include "tests/ui/windowfixture.h"

#include "ui/appearance.h"
#include "ui/dataeditdialog.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

using namespace tarvel4;

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
class tst_MainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void slotsAreInTheOrderOfTheMetaObject();
    void widgetsHaveTheirTexts_data();
    void widgetsHaveTheirTexts();
    void picturesOfTheLabels();
    void everyTextFitsItsWidget_data();
    void everyTextFitsItsWidget();
    void atStartOnlyTheImportIsEnabled();
    void tableIsSetUp();
    void catalogueThatCantBeOpened();
    void keyboardReachesTheStepsInOrder();
    void windowFiltersTheEventsOfTheApplication();
    void logBoxesShowAndKeepTheSettings_data();
    void logBoxesShowAndKeepTheSettings();
    void debugPanelIsToggled();
    void reloadStyleReadsTheProgramsFolder();
    void developersSaveAndMarker();
    void developersDialog_data();
    void developersDialog();

private:
    QScopedPointer<WindowFixture> m_window;
};

void tst_MainWindow::init()
{
    m_window.reset(new WindowFixture);
    m_window->settings().setValue(text("copyrightAsk"), false);
    m_window->settings().sync();
    if (qstrcmp(QTest::currentTestFunction(), "catalogueThatCantBeOpened") != 0)
        m_window->open();
}

void tst_MainWindow::cleanup()
{
    const QString problems = m_window->driver.problems();
    m_window.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

void tst_MainWindow::slotsAreInTheOrderOfTheMetaObject()
{
    QStringList found;
    const QMetaObject &meta = MainWindow::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        found.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(found,
             strings({"on_selectDirToolButton_clicked()",
                      "on_updateDataToolButton_clicked()",
                      "on_actionItalian_triggered()",
                      "on_actionEnglish_triggered()",
                      "on_actionGerman_triggered()",
                      "on_actionAbout_triggered()",
                      "on_actionAbout_QT_triggered()",
                      "on_actionContents_triggered()",
                      "on_actionCopyrightYes_triggered()",
                      "on_actionCopyrightNo_triggered()",
                      "onSongsTableViewDoubleClicked(QModelIndex)",
                      "on_optimizeMemory_triggered()",
                      "on_transferFilesToolButton_clicked()",
                      "on_actionSongsList_triggered()",
                      "onSongsTableViewShowContextMenu(QPoint)",
                      "on_dbgImportPushButton_clicked()",
                      "on_dbgSavePushButton_clicked()",
                      "on_dbgAddMarkerPushButton_clicked()",
                      "on_dbgShowDialogPushButton_clicked()",
                      "on_dbgHidePushButton_clicked()",
                      "on_dbgBackupPushButton_clicked()",
                      "on_dbgLogEnableCheckBox_toggled(bool)",
                      "on_dbgLogClearCheckBox_toggled(bool)",
                      "on_dbgReloadStylePushButton_clicked()"}));
}

void tst_MainWindow::widgetsHaveTheirTexts_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *widget, const char *shown, const char *property = "text") {
        QTest::newRow(widget) << QByteArray(property) << text(shown);
    };
    row("selectDirToolButton",
        "Seleziona le basi musicali che desideri inserire nella memoria di Tarvel");
    row("label_2", "Sincronizza song con il\ndatabase K-Varo");
    row("label_3", "Trasferisci song nella\nmemoria di Tarvel");
    row("debugKvaroGroupBox", "Opzioni nascoste", "title");
    row("dbgLogEnableCheckBox", "Abilita log (riavvio necessario!)");
    row("dbgLogClearCheckBox", "Cancella log ad ogni avvio");
    row("debugGroupBox", "Debug", "title");
    row("dbgAddMarkerPushButton", "Add Marker");
    row("dbgSavePushButton", "Save");
    row("dbgReloadStylePushButton", "Reload Stylesheet");
    row("dbgImportPushButton", "Import again");
    row("dbgHidePushButton", "Hide Debug");
    row("dbgBackupPushButton", "Backup");
    row("dbgShowDialogPushButton", "Manual Dialog");
}

void tst_MainWindow::widgetsHaveTheirTexts()
{
    QFETCH(QByteArray, property);
    const auto *widget = m_window->find<QWidget>(QTest::currentDataTag());
    QTEST(widget->property(property.constData()).toString(), "shown");
    QCOMPARE(m_window->window->windowTitle(), text("Tarvel4 Soft"));
}

void tst_MainWindow::picturesOfTheLabels()
{
    const auto styleOf = [this](const char *name) {
        const auto *label = m_window->find<QLabel>(name);
        const QString style = label->styleSheet();
        const QString file = style.section(QLatin1Char('('), 1).section(QLatin1Char(')'), 0, 0);
        return QPixmap(file).isNull() ? text("no picture")
                                      : label->parentWidget()->objectName() + style;
    };
    QCOMPARE(styleOf("logoLabel"), text("centralWidgetimage: url(:/imgs/logo-tarvel4.png);"));
    QCOMPARE(styleOf("logoKvaroLabel"), text("centralWidgetimage: url(:/imgs/logo-kvaro.png);"));
    QCOMPARE(styleOf("label"), text("frameimage:url(:/imgs/image-corner.png)"));
}

void tst_MainWindow::everyTextFitsItsWidget_data()
{
    QTest::addColumn<QSize>("size");
    for (const char *language : {"actionItalian", "actionEnglish"}) {
        QTest::addRow("%s", language) << QSize(1280, 800);
        QTest::addRow("%s at 200 %%", language) << QSize(640, 400);
    }
}

void tst_MainWindow::everyTextFitsItsWidget()
{
    QFETCH(QSize, size);
    Appearance::applyStyleSheet(text(":/style/default.qss"));
    const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
    m_window->trigger(text(QTest::currentDataTag()).left(13).toLatin1().constData());
    m_window->window->resize(size);
    QCoreApplication::processEvents();
    QCOMPARE(m_window->window->size(), size); // no widget asks for more

    for (const char *name : {"label_2", "label_3"}) {
        const auto *label = m_window->find<QLabel>(name);
        const QRect words = label->fontMetrics().boundingRect(
            label->contentsRect(),
            static_cast<int>(Qt::TextWordWrap) | static_cast<int>(Qt::AlignVCenter), label->text());
        QVERIFY2(label->contentsRect().contains(words), name);
    }
    QVERIFY(m_window->table()->viewport()->height()
            > 4 * m_window->table()->fontMetrics().height());
}

void tst_MainWindow::atStartOnlyTheImportIsEnabled()
{
    QVERIFY(m_window->enabled("selectDirToolButton"));
    QVERIFY(!m_window->enabled("updateDataToolButton"));
    QVERIFY(!m_window->enabled("transferFilesToolButton"));
    for (const char *panel : {"debugGroupBox", "debugKvaroGroupBox"})
        QVERIFY2(m_window->find<QWidget>(panel)->isHidden(), panel);
}

void tst_MainWindow::tableIsSetUp()
{
    const QTableView *table = m_window->table();
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    QVERIFY(table->isSortingEnabled());
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table->selectionMode(), QAbstractItemView::SingleSelection);
    QVERIFY(!table->showGrid());
    QVERIFY(table->verticalHeader()->isHidden());
    QVERIFY(!table->alternatingRowColors());
    QCOMPARE(table->contextMenuPolicy(), Qt::CustomContextMenu);

    QStringList shown;
    for (int column = 0; column < table->model()->columnCount(); ++column) {
        if (!table->isColumnHidden(column))
            shown.append(table->model()->headerData(column, Qt::Horizontal).toString());
    }
    QCOMPARE(shown,
             strings({"Formato", "Titolo", "Artista", "Genere", "Autore", "Durata", "Bpm",
                      "Tonalita'", "Nome file"}));
}

void tst_MainWindow::catalogueThatCantBeOpened()
{
    QFile::remove(m_window->path("songsdb_debug"));
    QDir().mkpath(m_window->path("songsdb_debug")); // a folder is no catalogue
    m_window->open();
    QVERIFY(!m_window->table()->model());
    QCOMPARE(m_window->table()->contextMenuPolicy(), Qt::DefaultContextMenu);
    QVERIFY(m_window->enabled("selectDirToolButton"));

    m_window->import({m_window->addSong(text("A.mid"), "A")});
    QVERIFY(!m_window->enabled("updateDataToolButton"));
    QVERIFY(m_window->enabled("transferFilesToolButton"));
    m_window->trigger("actionEnglish"); // the texts change, there are no headers to change
    QCOMPARE(m_window->find<QMenu>("menuHelp")->title(), text("Help"));
}

void tst_MainWindow::keyboardReachesTheStepsInOrder()
{
    for (const char *name : {"updateDataToolButton", "transferFilesToolButton"})
        m_window->find<QToolButton>(name)->setEnabled(true);
    QApplication::setActiveWindow(m_window->window.get());
    m_window->find<QWidget>("selectDirToolButton")->setFocus();
    for (const char *name : {"selectDirToolButton", "updateDataToolButton",
                             "transferFilesToolButton", "userLibraryTableView"}) {
        QTRY_COMPARE(m_window->window->focusWidget()->objectName(), text(name));
        QTest::keyClick(m_window->window->focusWidget(), Qt::Key_Tab);
    }
}

void tst_MainWindow::windowFiltersTheEventsOfTheApplication()
{
    FilteringWindow window;
    QObject stranger;
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&stranger, &event);
    QVERIFY(window.seen.contains({&stranger, false}));
}

void tst_MainWindow::logBoxesShowAndKeepTheSettings_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("dbgLogEnableCheckBox") << text("logenabled");
    QTest::newRow("dbgLogClearCheckBox") << text("logclear");
}

void tst_MainWindow::logBoxesShowAndKeepTheSettings()
{
    QFETCH(QString, key);
    for (const bool before : {false, true}) {
        auto *box = m_window->find<QCheckBox>(QTest::currentDataTag());
        QCOMPARE(box->isChecked(), before);
        QCOMPARE(m_window->settings().contains(key), before);
        box->click();
        QCOMPARE(m_window->settings().value(key).toBool(), !before);
        m_window->window.reset();
        m_window->open(); // the next window shows what was kept
    }
}

void tst_MainWindow::debugPanelIsToggled()
{
    for (const bool isShown : {true, false}) {
        m_window->find<QPushButton>("dbgHidePushButton")->click();
        QCOMPARE(m_window->find<QWidget>("debugGroupBox")->isVisible(), isShown);
    }
}

void tst_MainWindow::reloadStyleReadsTheProgramsFolder()
{
    const QString file = QCoreApplication::applicationDirPath() + text("/default.qss");
    QVERIFY(!QFile::exists(file));
    m_window->write(file, "QLabel#nobody { color: red }");
    m_window->find<QPushButton>("dbgReloadStylePushButton")->click();
    QFile::remove(file);
    const QString applied = qApp->styleSheet();
    qApp->setStyleSheet(QString());
    QCOMPARE(applied, text("QLabel#nobody { color: red }"));
}

void tst_MainWindow::developersSaveAndMarker()
{
    const QString song = m_window->addSong(text("b.mid"), "Song");
    const QByteArray before = WindowFixture::read(song);
    m_window->import({m_window->addSong(text("a.mid"), "Song"), song});
    const LogCapture log;
    m_window->find<QPushButton>("dbgSavePushButton")->click(); // no row selected: nothing
    m_window->find<QPushButton>("dbgAddMarkerPushButton")->click();
    QCOMPARE(LogCapture::lines(), QStringList());

    m_window->table()->selectRow(1);
    m_window->find<QPushButton>("dbgSavePushButton")->click();
    QCOMPARE(LogCapture::lines().mid(0, 2),
             strings({"[MainWindow] Saving row:  1", "Saving to file:  \"test_save.bin\""}));
    QCOMPARE(LogCapture::lines().constLast(), text("Ok"));
    QCOMPARE(WindowFixture::read(m_window->path("test_save.bin")), before);

    m_window->find<QLineEdit>("dbgMarkerTextLineEdit")->setText(text("Refrain"));
    m_window->find<QSpinBox>("dbgMarkerBarSpinBox")->setValue(7);
    m_window->find<QPushButton>("dbgAddMarkerPushButton")->click();
    QVERIFY(LogCapture::has(text("[MainWindow] Adding marker to row:  1")));
    QVERIFY(WindowFixture::read(m_window->path("test_addmarker.bin")).contains("Refrain"));
    QCOMPARE(WindowFixture::read(song), before);
}

void tst_MainWindow::developersDialog_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("savePushButton") << QByteArray("Accettato");
    QTest::newRow("exitPushButton") << QByteArray("Rifiutato");
}

void tst_MainWindow::developersDialog()
{
    QFETCH(QByteArray, line);
    m_window->driver.click<DataEditDialog>(text(QTest::currentDataTag()));
    QTest::ignoreMessage(QtDebugMsg, line.constData());
    m_window->find<QPushButton>("dbgShowDialogPushButton")->click();
}

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
