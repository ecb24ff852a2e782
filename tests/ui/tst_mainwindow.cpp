#include "tests/ui/windowfixture.h"

#include "ui/appearance.h"

#include <QHeaderView>
#include <QLabel>

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

class tst_MainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window.reset(new WindowFixture); }
    void cleanup();

    void slotsAreInTheOrderOfTheMetaObject();
    void widgetsHaveTheirTexts_data();
    void widgetsHaveTheirTexts();
    void picturesOfTheLabels_data();
    void picturesOfTheLabels();
    void everyTextFitsItsWidget_data();
    void everyTextFitsItsWidget();
    void atStartOnlyTheImportIsEnabled();
    void tableIsSetUp();
    void catalogueThatCantBeOpened();
    void keyboardReachesTheStepsInOrder();
    void windowFiltersTheEventsOfTheApplication();

private:
    QScopedPointer<WindowFixture> m_window;
};

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
    const QStringList expected{QStringLiteral("on_selectDirToolButton_clicked()"),
                               QStringLiteral("on_updateDataToolButton_clicked()"),
                               QStringLiteral("on_actionItalian_triggered()"),
                               QStringLiteral("on_actionEnglish_triggered()"),
                               QStringLiteral("on_actionGerman_triggered()"),
                               QStringLiteral("on_actionAbout_triggered()"),
                               QStringLiteral("on_actionAbout_QT_triggered()"),
                               QStringLiteral("on_actionContents_triggered()"),
                               QStringLiteral("on_actionCopyrightYes_triggered()"),
                               QStringLiteral("on_actionCopyrightNo_triggered()"),
                               QStringLiteral("onSongsTableViewDoubleClicked(QModelIndex)"),
                               QStringLiteral("on_optimizeMemory_triggered()"),
                               QStringLiteral("on_transferFilesToolButton_clicked()"),
                               QStringLiteral("on_actionSongsList_triggered()"),
                               QStringLiteral("onSongsTableViewShowContextMenu(QPoint)"),
                               QStringLiteral("on_dbgImportPushButton_clicked()"),
                               QStringLiteral("on_dbgSavePushButton_clicked()"),
                               QStringLiteral("on_dbgAddMarkerPushButton_clicked()"),
                               QStringLiteral("on_dbgShowDialogPushButton_clicked()"),
                               QStringLiteral("on_dbgHidePushButton_clicked()"),
                               QStringLiteral("on_dbgBackupPushButton_clicked()"),
                               QStringLiteral("on_dbgLogEnableCheckBox_toggled(bool)"),
                               QStringLiteral("on_dbgLogClearCheckBox_toggled(bool)"),
                               QStringLiteral("on_dbgReloadStylePushButton_clicked()")};
    QCOMPARE(found, expected);
}

void tst_MainWindow::widgetsHaveTheirTexts_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *widget, const char *property, const char *text) {
        QTest::newRow(widget) << QString::fromUtf8(widget) << QString::fromUtf8(property)
                              << QString::fromUtf8(text);
    };
    row("MainWindow", "windowTitle", "Tarvel4 Soft");
    row("selectDirToolButton", "text",
        "Seleziona le basi musicali che desideri inserire nella memoria di Tarvel");
    row("label_2", "text", "Sincronizza song con il\ndatabase K-Varo");
    row("label_3", "text", "Trasferisci song nella\nmemoria di Tarvel");
    row("debugKvaroGroupBox", "title", "Opzioni nascoste");
    row("dbgLogEnableCheckBox", "text", "Abilita log (riavvio necessario!)");
    row("dbgLogClearCheckBox", "text", "Cancella log ad ogni avvio");
    row("debugGroupBox", "title", "Debug");
    row("dbgAddMarkerPushButton", "text", "Add Marker");
    row("dbgSavePushButton", "text", "Save");
    row("dbgReloadStylePushButton", "text", "Reload Stylesheet");
    row("dbgImportPushButton", "text", "Import again");
    row("dbgHidePushButton", "text", "Hide Debug");
    row("dbgBackupPushButton", "text", "Backup");
    row("dbgShowDialogPushButton", "text", "Manual Dialog");
}

void tst_MainWindow::widgetsHaveTheirTexts()
{
    QFETCH(QString, widget);
    QFETCH(QString, property);
    QFETCH(QString, text);
    m_window->open();
    const QWidget *found = widget == QLatin1String("MainWindow")
        ? m_window->window.get()
        : m_window->window->findChild<QWidget *>(widget);
    QVERIFY(found);
    QCOMPARE(found->property(property.toLatin1().constData()).toString(), text);
}

void tst_MainWindow::picturesOfTheLabels_data()
{
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("style");
    QTest::newRow("logoLabel") << QStringLiteral("centralWidget")
                               << QStringLiteral("image: url(:/imgs/logo-tarvel4.png);");
    QTest::newRow("logoKvaroLabel")
        << QStringLiteral("centralWidget") << QStringLiteral("image: url(:/imgs/logo-kvaro.png);");
    QTest::newRow("label") << QStringLiteral("frame")
                           << QStringLiteral("image:url(:/imgs/image-corner.png)");
}

void tst_MainWindow::picturesOfTheLabels()
{
    QFETCH(QString, parent);
    QFETCH(QString, style);
    m_window->open();
    const auto *label = m_window->find<QLabel>(QTest::currentDataTag());
    QVERIFY(label);
    QCOMPARE(label->styleSheet(), style);
    QCOMPARE(label->parentWidget()->objectName(), parent);
    const QString file = style.section(QLatin1Char('('), 1).section(QLatin1Char(')'), 0, 0);
    QVERIFY(!QPixmap(file).isNull());
}

void tst_MainWindow::everyTextFitsItsWidget_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QSize>("size");
    const QSize usual(1280, 800);
    const QSize halved(640, 400);
    QTest::newRow("Italian, 1280x800") << QStringLiteral("it") << usual;
    QTest::newRow("English, 1280x800") << QStringLiteral("en") << usual;
    QTest::newRow("Italian, 1280x800 at 200 %") << QStringLiteral("it") << halved;
    QTest::newRow("English, 1280x800 at 200 %") << QStringLiteral("en") << halved;
}

void tst_MainWindow::everyTextFitsItsWidget()
{
    QFETCH(QString, language);
    QFETCH(QSize, size);
    Appearance::applyStyleSheet(QStringLiteral(":/style/default.qss"));
    const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
    m_window->open();
    m_window->trigger(language == QLatin1String("it") ? "actionItalian" : "actionEnglish");
    m_window->window->resize(size);
    QCoreApplication::processEvents();
    QCOMPARE(m_window->window->size(), size); // no widget asks for more

    for (const char *name : {"label_2", "label_3"}) {
        const auto *label = m_window->find<QLabel>(name);
        const QRect text = label->fontMetrics().boundingRect(
            label->contentsRect(), int(Qt::TextWordWrap) | int(Qt::AlignVCenter), label->text());
        QVERIFY2(label->contentsRect().contains(text), name);
    }
    QVERIFY(m_window->table()->viewport()->height()
            > 4 * m_window->table()->fontMetrics().height());
}

void tst_MainWindow::atStartOnlyTheImportIsEnabled()
{
    m_window->open();
    QVERIFY(m_window->enabled("selectDirToolButton"));
    QVERIFY(!m_window->enabled("updateDataToolButton"));
    QVERIFY(!m_window->enabled("transferFilesToolButton"));
}

void tst_MainWindow::tableIsSetUp()
{
    m_window->open();
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
             QStringList({QStringLiteral("Formato"), QStringLiteral("Titolo"),
                          QStringLiteral("Artista"), QStringLiteral("Genere"),
                          QStringLiteral("Autore"), QStringLiteral("Durata"), QStringLiteral("Bpm"),
                          QStringLiteral("Tonalita'"), QStringLiteral("Nome file")}));
}

void tst_MainWindow::catalogueThatCantBeOpened()
{
    QFile::remove(m_window->path("songsdb_debug"));
    QDir().mkpath(m_window->path("songsdb_debug")); // a folder is no catalogue
    m_window->open();
    QVERIFY(!m_window->table()->model());
    QCOMPARE(m_window->table()->contextMenuPolicy(), Qt::DefaultContextMenu);
    QVERIFY(m_window->enabled("selectDirToolButton"));

    m_window->import({m_window->addSong(QStringLiteral("A.mid"), "A")});
    QVERIFY(!m_window->enabled("updateDataToolButton"));
    QVERIFY(m_window->enabled("transferFilesToolButton"));
    m_window->trigger("actionEnglish"); // the texts change, there are no headers to change
    QCOMPARE(m_window->find<QMenu>("menuHelp")->title(), QStringLiteral("Help"));
}

void tst_MainWindow::keyboardReachesTheStepsInOrder()
{
    m_window->open();
    for (const char *name : {"updateDataToolButton", "transferFilesToolButton"})
        m_window->find<QToolButton>(name)->setEnabled(true);
    QApplication::setActiveWindow(m_window->window.get());
    m_window->find<QWidget>("selectDirToolButton")->setFocus();
    for (const char *name : {"selectDirToolButton", "updateDataToolButton",
                             "transferFilesToolButton", "userLibraryTableView"}) {
        QTRY_COMPARE(m_window->window->focusWidget()->objectName(), QLatin1String(name));
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

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
