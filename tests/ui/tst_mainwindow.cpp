#include "tests/ui/windowfixture.h"

#include "ui/aboutdialog.h"
#include "ui/appearance.h"
#include "ui/helpdialog.h"
#include "ui/indexdialog.h"
#include "ui/songslistdialog.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSpinBox>

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
    void menusAreInOrder();
    void everyTextFitsItsWidget_data();
    void everyTextFitsItsWidget();
    void atStartOnlyTheImportIsEnabled();
    void debugPanelsAreHidden();
    void tableIsSetUp();
    void catalogueThatCantBeOpened();
    void languageOfTheSettingIsTicked_data();
    void languageOfTheSettingIsTicked();
    void languageActions_data();
    void languageActions();
    void languageChangesBackAndForth();
    void retranslatesAtOnce();
    void copyrightOfTheSettingIsTicked_data();
    void copyrightOfTheSettingIsTicked();
    void copyrightActions();
    void logBoxesShowAndKeepTheSettings_data();
    void logBoxesShowAndKeepTheSettings();
    void hideTogglesTheDebugPanel();
    void menuEntriesOpenTheirDialogs_data();
    void menuEntriesOpenTheirDialogs();
    void aboutQtIsShown();
    void quitClosesTheWindow();
    void keyboardReachesTheStepsInOrder();
    void reloadStyleReadsTheProgramsFolder();

private:
    QScopedPointer<WindowFixture> m_window;
};

namespace {

QStringList textsOf(const QList<QAction *> &actions)
{
    QStringList texts;
    for (const QAction *action : actions)
        texts.append(action->objectName() + QLatin1Char(' ') + action->text());
    return texts;
}

QStringList namesOf(const QList<QAction *> &actions)
{
    QStringList names;
    for (const QAction *action : actions)
        names.append(action->menu() ? action->menu()->objectName() : action->objectName());
    return names;
}

} // namespace

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

void tst_MainWindow::menusAreInOrder()
{
    m_window->open();
    const auto actionsOf = [this](const char *menu) {
        return m_window->find<QMenu>(menu)->actions();
    };
    QCOMPARE(namesOf(m_window->find<QMenuBar>("menuBar")->actions()),
             QStringList({QStringLiteral("menuFile"), QStringLiteral("menuPreferences"),
                          QStringLiteral("menuStrumenti"), QStringLiteral("menuHelp")}));
    QCOMPARE(m_window->find<QMenu>("menuFile")->title(), QStringLiteral("File"));
    QCOMPARE(m_window->find<QMenu>("menuPreferences")->title(), QStringLiteral("Preferenze"));
    QCOMPARE(m_window->find<QMenu>("menuLanguage")->title(), QStringLiteral("Lingua"));
    QCOMPARE(m_window->find<QMenu>("menuMessaggi_Copyright")->title(),
             QStringLiteral("Messaggi Copyright"));
    QCOMPARE(m_window->find<QMenu>("menuStrumenti")->title(), QStringLiteral("Strumenti"));
    QCOMPARE(m_window->find<QMenu>("menuHelp")->title(), QStringLiteral("Aiuto"));
    QCOMPARE(
        namesOf(actionsOf("menuPreferences")),
        QStringList({QStringLiteral("menuLanguage"), QStringLiteral("menuMessaggi_Copyright")}));

    QCOMPARE(textsOf(actionsOf("menuFile")), QStringList({QStringLiteral("actionQuit Esci")}));
    QCOMPARE(textsOf(actionsOf("menuLanguage")),
             QStringList({QStringLiteral("actionItalian Italiano"),
                          QStringLiteral("actionEnglish English"),
                          QStringLiteral("actionGerman Deutsch")}));
    QCOMPARE(textsOf(actionsOf("menuMessaggi_Copyright")),
             QStringList({QStringLiteral("actionCopyrightYes Si"),
                          QStringLiteral("actionCopyrightNo No")}));
    QCOMPARE(textsOf(actionsOf("menuStrumenti")),
             QStringList({QStringLiteral("optimizeMemory Rigenera il database delle song"),
                          QStringLiteral("actionSongsList Salva lista delle song")}));
    QCOMPARE(textsOf(actionsOf("menuHelp")),
             QStringList({QStringLiteral("actionContents Aiuto Tarvel4 Soft"),
                          QStringLiteral("actionAbout Informazioni"),
                          QStringLiteral("actionAbout_QT Informazioni su QT")}));
    for (const char *name : {"actionItalian", "actionEnglish", "actionGerman", "actionCopyrightYes",
                             "actionCopyrightNo"})
        QVERIFY(m_window->find<QAction>(name)->isCheckable());
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
            label->contentsRect(), Qt::TextWordWrap | Qt::AlignVCenter, label->text());
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

void tst_MainWindow::debugPanelsAreHidden()
{
    m_window->open();
    QVERIFY(m_window->find<QGroupBox>("debugGroupBox")->isHidden());
    QVERIFY(m_window->find<QGroupBox>("debugKvaroGroupBox")->isHidden());
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

void tst_MainWindow::languageOfTheSettingIsTicked_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("ticked");
    QTest::newRow("it ticks Italian") << QStringLiteral("it") << QStringLiteral("actionItalian");
    QTest::newRow("no setting ticks Italian") << QString() << QStringLiteral("actionItalian");
    QTest::newRow("en ticks English") << QStringLiteral("en") << QStringLiteral("actionEnglish");
    QTest::newRow("de ticks German") << QStringLiteral("de") << QStringLiteral("actionGerman");
    QTest::newRow("anything else ticks English")
        << QStringLiteral("IT") << QStringLiteral("actionEnglish");
}

void tst_MainWindow::languageOfTheSettingIsTicked()
{
    QFETCH(QString, setting);
    QFETCH(QString, ticked);
    if (!setting.isEmpty())
        m_window->settings().setValue(QStringLiteral("language"), setting);
    m_window->settings().sync();
    m_window->open();
    for (const char *name : {"actionItalian", "actionEnglish", "actionGerman"})
        QCOMPARE(m_window->find<QAction>(name)->isChecked(), ticked == QLatin1String(name));
    QVERIFY2(!m_window->find<QAction>("actionGerman")->isVisible(), "German is never visible");
    QVERIFY(m_window->find<QAction>("actionItalian")->isVisible());
}

void tst_MainWindow::languageActions_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("help");
    QTest::newRow("Italian") << QStringLiteral("actionItalian") << QStringLiteral("it")
                             << QStringLiteral("Aiuto");
    QTest::newRow("English") << QStringLiteral("actionEnglish") << QStringLiteral("en")
                             << QStringLiteral("Help");
    QTest::newRow("German shows the English texts")
        << QStringLiteral("actionGerman") << QStringLiteral("de") << QStringLiteral("Help");
}

void tst_MainWindow::languageActions()
{
    QFETCH(QString, action);
    QFETCH(QString, setting);
    QFETCH(QString, help);
    m_window->open();
    m_window->trigger(action.toLatin1().constData());
    QCOMPARE(m_window->settings().value(QStringLiteral("language")).toString(), setting);
    for (const char *name : {"actionItalian", "actionEnglish", "actionGerman"})
        QCOMPARE(m_window->find<QAction>(name)->isChecked(), action == QLatin1String(name));
    QCOMPARE(m_window->find<QMenu>("menuHelp")->title(), help);

    m_window->trigger(action.toLatin1().constData()); // once more: it stays ticked
    QVERIFY(m_window->find<QAction>(action.toLatin1().constData())->isChecked());
}

void tst_MainWindow::languageChangesBackAndForth()
{
    m_window->open();
    for (int i = 0; i < 3; ++i) {
        m_window->trigger("actionEnglish");
        QCOMPARE(m_window->find<QMenu>("menuHelp")->title(), QStringLiteral("Help"));
        m_window->trigger("actionItalian");
        QCOMPARE(m_window->find<QMenu>("menuHelp")->title(), QStringLiteral("Aiuto"));
    }
}

void tst_MainWindow::retranslatesAtOnce()
{
    m_window->open();
    const auto textsNow = [this] {
        QStringList texts;
        for (const auto *button : m_window->window->findChildren<QAbstractButton *>())
            texts.append(button->text());
        for (const auto *label : m_window->window->findChildren<QLabel *>())
            texts.append(label->text());
        for (const auto *menu : m_window->window->findChildren<QMenu *>())
            texts.append(menu->title());
        for (int column = 0; column < m_window->model()->columnCount(); ++column)
            texts.append(m_window->model()->headerData(column, Qt::Horizontal).toString());
        return texts;
    };
    const QStringList italian = textsNow();
    m_window->trigger("actionEnglish");
    const QStringList english = textsNow();
    QCOMPARE(english.size(), italian.size());
    for (const QString &text :
         {QStringLiteral("Preferenze"), QStringLiteral("Aiuto"), QStringLiteral("Titolo"),
          QStringLiteral("Nome file"), QStringLiteral("Sincronizza song con il\ndatabase K-Varo"),
          QStringLiteral("Abilita log (riavvio necessario!)")}) {
        QVERIFY2(italian.contains(text), qPrintable(text));
        QVERIFY2(!english.contains(text), qPrintable(text));
    }
    m_window->trigger("actionItalian");
    QCOMPARE(textsNow(), italian);
}

void tst_MainWindow::copyrightOfTheSettingIsTicked_data()
{
    QTest::addColumn<QVariant>("setting");
    QTest::addColumn<bool>("asks");
    QTest::newRow("no setting asks") << QVariant() << true;
    QTest::newRow("true asks") << QVariant(true) << true;
    QTest::newRow("false does not ask") << QVariant(false) << false;
}

void tst_MainWindow::copyrightOfTheSettingIsTicked()
{
    QFETCH(QVariant, setting);
    QFETCH(bool, asks);
    if (setting.isValid())
        m_window->settings().setValue(QStringLiteral("copyrightAsk"), setting);
    m_window->settings().sync();
    m_window->open();
    QCOMPARE(m_window->find<QAction>("actionCopyrightYes")->isChecked(), asks);
    QCOMPARE(m_window->find<QAction>("actionCopyrightNo")->isChecked(), !asks);
}

void tst_MainWindow::copyrightActions()
{
    m_window->open();
    for (const bool asks : {false, true, true, false, false}) {
        m_window->trigger(asks ? "actionCopyrightYes" : "actionCopyrightNo");
        QCOMPARE(m_window->settings().value(QStringLiteral("copyrightAsk")).toBool(), asks);
        QCOMPARE(m_window->find<QAction>("actionCopyrightYes")->isChecked(), asks);
        QCOMPARE(m_window->find<QAction>("actionCopyrightNo")->isChecked(), !asks);
    }
}

void tst_MainWindow::logBoxesShowAndKeepTheSettings_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("key");
    QTest::newRow("the log is enabled")
        << QStringLiteral("dbgLogEnableCheckBox") << QStringLiteral("logenabled");
    QTest::newRow("the log is cleared")
        << QStringLiteral("dbgLogClearCheckBox") << QStringLiteral("logclear");
}

void tst_MainWindow::logBoxesShowAndKeepTheSettings()
{
    QFETCH(QString, box);
    QFETCH(QString, key);
    m_window->open();
    m_window->find<QGroupBox>("debugKvaroGroupBox")->show();
    QCheckBox *found = m_window->window->findChild<QCheckBox *>(box);
    QVERIFY(!found->isChecked());
    QVERIFY(!m_window->settings().contains(key));
    found->click();
    QCOMPARE(m_window->settings().value(key).toBool(), true);

    m_window->window.reset();
    m_window->open(); // the next window shows what was kept
    found = m_window->window->findChild<QCheckBox *>(box);
    QVERIFY(found->isChecked());
    found->click();
    QCOMPARE(m_window->settings().value(key).toBool(), false);
}

void tst_MainWindow::hideTogglesTheDebugPanel()
{
    m_window->open();
    auto *panel = m_window->find<QGroupBox>("debugGroupBox");
    auto *button = m_window->find<QPushButton>("dbgHidePushButton");
    button->click();
    QVERIFY(panel->isVisible());
    button->click();
    QVERIFY(!panel->isVisible());
}

void tst_MainWindow::menuEntriesOpenTheirDialogs_data()
{
    QTest::addColumn<QString>("action");
    for (const char *name : {"optimizeMemory", "actionSongsList", "actionContents", "actionAbout"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_MainWindow::menuEntriesOpenTheirDialogs()
{
    QFETCH(QString, action);
    m_window->open();
    if (action == QLatin1String("optimizeMemory"))
        m_window->driver.closeFrame<IndexDialog>();
    else if (action == QLatin1String("actionSongsList"))
        m_window->driver.closeFrame<SongsListDialog>();
    else if (action == QLatin1String("actionContents"))
        m_window->driver.closeFrame<HelpDialog>();
    else
        m_window->driver.closeFrame<AboutDialog>();
    m_window->trigger(action.toLatin1().constData());
}

void tst_MainWindow::aboutQtIsShown()
{
    m_window->open();
    m_window->driver.expect<QMessageBox>([](QMessageBox &box) { box.close(); });
    m_window->trigger("actionAbout_QT");
}

void tst_MainWindow::quitClosesTheWindow()
{
    m_window->open();
    QTimer::singleShot(0, m_window->find<QAction>("actionQuit"), &QAction::trigger);
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!m_window->window->isVisible());
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

void tst_MainWindow::reloadStyleReadsTheProgramsFolder()
{
    m_window->open();
    const QString file = QCoreApplication::applicationDirPath() + QStringLiteral("/default.qss");
    QVERIFY(!QFile::exists(file));
    m_window->write(file, "QLabel#nobody { color: red }");
    m_window->find<QPushButton>("dbgReloadStylePushButton")->click();
    QFile::remove(file);
    const QString applied = qApp->styleSheet();
    qApp->setStyleSheet(QString());
    QCOMPARE(applied, QStringLiteral("QLabel#nobody { color: red }"));
}

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
