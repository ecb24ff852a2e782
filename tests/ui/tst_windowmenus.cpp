#include "tests/library/texts.h"
#include "tests/ui/windowfixture.h"

#include <QLabel>
#include <QMenuBar>

using namespace tarvel4;

/** The menus: what they hold, the language, the copyright question, and the dialogs they open. */
class tst_WindowMenus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window.reset(new WindowFixture); }
    void cleanup();

    void menusAreInOrder_data();
    void menusAreInOrder();
    void languageOfTheSettingIsTicked_data();
    void languageOfTheSettingIsTicked();
    void languageActions();
    void retranslatesAtOnce();
    void shortcuts_data();
    void shortcuts();
    void copyrightOfTheSettingIsTicked();
    void copyrightActions();
    void menuEntriesOpenTheirDialogs_data();
    void menuEntriesOpenTheirDialogs();
    void quitClosesTheWindow();

private:
    QStringList ticked(const char *menu) const
    {
        QStringList names;
        for (const QAction *action : m_window->find<QMenu>(menu)->actions()) {
            if (action->isChecked())
                names.append(action->objectName());
        }
        return names;
    }

    QScopedPointer<WindowFixture> m_window;
};

namespace {

/** "NAME TEXT" of each entry, or of each menu in the bar. */
QStringList entriesOf(const QWidget &menu)
{
    QStringList entries;
    for (const QAction *action : menu.actions())
        entries.append((action->menu() ? action->menu()->objectName() : action->objectName())
                       + QLatin1Char(' ') + action->text());
    return entries;
}

} // namespace

void tst_WindowMenus::cleanup()
{
    const QString problems = m_window->driver.problems();
    m_window.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

void tst_WindowMenus::menusAreInOrder_data()
{
    QTest::addColumn<QStringList>("italian");
    QTest::addColumn<QStringList>("english");
    QTest::newRow("menuBar") << strings({"menuFile File", "menuPreferences Preferenze",
                                         "menuStrumenti Strumenti", "menuHelp Aiuto"})
                             << strings({"menuFile File", "menuPreferences Preferences",
                                         "menuStrumenti Tools", "menuHelp Help"});
    QTest::newRow("menuFile") << strings({"actionQuit Esci"}) << strings({"actionQuit Quit"});
    QTest::newRow("menuPreferences")
        << strings({"menuLanguage Lingua", "menuMessaggi_Copyright Messaggi Copyright"})
        << strings({"menuLanguage Language", "menuMessaggi_Copyright Copyright messages"});
    const QStringList languages =
        strings({"actionItalian Italiano", "actionEnglish English", "actionGerman Deutsch"});
    QTest::newRow("menuLanguage") << languages << languages;
    QTest::newRow("menuMessaggi_Copyright")
        << strings({"actionCopyrightYes Si", "actionCopyrightNo No"})
        << strings({"actionCopyrightYes Yes", "actionCopyrightNo No"});
    QTest::newRow("menuStrumenti") << strings({"optimizeMemory Rigenera il database delle song",
                                               "actionSongsList Salva lista delle song"})
                                   << strings({"optimizeMemory Rebuild the song database",
                                               "actionSongsList Save the song list"});
    QTest::newRow("menuHelp") << strings({"actionContents Aiuto Tarvel4 Soft",
                                          "actionAbout Informazioni",
                                          "actionAbout_QT Informazioni su QT"})
                              << strings({"actionContents Tarvel4 Soft help", "actionAbout About",
                                          "actionAbout_QT About QT"});
}

void tst_WindowMenus::menusAreInOrder()
{
    m_window->open();
    const auto *menu = m_window->find<QWidget>(QTest::currentDataTag());
    QTEST(entriesOf(*menu), "italian");
    m_window->trigger("actionEnglish");
    QTEST(entriesOf(*menu), "english");
    for (const char *name : {"actionItalian", "actionEnglish", "actionGerman", "actionCopyrightYes",
                             "actionCopyrightNo"})
        QVERIFY(m_window->find<QAction>(name)->isCheckable());
}

void tst_WindowMenus::languageOfTheSettingIsTicked_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QStringList>("ticked");
    QTest::newRow("it ticks Italian") << text("it") << strings({"actionItalian"});
    QTest::newRow("no setting ticks Italian") << QString() << strings({"actionItalian"});
    QTest::newRow("en ticks English") << text("en") << strings({"actionEnglish"});
    QTest::newRow("de ticks German") << text("de") << strings({"actionGerman"});
    QTest::newRow("anything else ticks English") << text("IT") << strings({"actionEnglish"});
}

void tst_WindowMenus::languageOfTheSettingIsTicked()
{
    QFETCH(QString, setting);
    if (!setting.isEmpty())
        m_window->settings().setValue(text("language"), setting);
    m_window->settings().sync();
    m_window->open();
    QTEST(ticked("menuLanguage"), "ticked");
    QVERIFY2(!m_window->find<QAction>("actionGerman")->isVisible(), "German is never visible");
    QVERIFY(m_window->find<QAction>("actionItalian")->isVisible());
}

void tst_WindowMenus::languageActions()
{
    m_window->open();
    const auto choose = [this](const char *action, const char *setting, const char *help) {
        m_window->trigger(action);
        QCOMPARE(m_window->settings().value(text("language")).toString(), text(setting));
        QCOMPARE(ticked("menuLanguage"), strings({action}));
        QCOMPARE(m_window->find<QMenu>("menuHelp")->title(), text(help));
    };
    for (int round = 0; round < 2; ++round) {
        choose("actionEnglish", "en", "Help");
        choose("actionItalian", "it", "Aiuto");
        choose("actionGerman", "de", "Help"); // shows the English texts
        choose("actionGerman", "de", "Help"); // once more: it stays ticked
    }
}

void tst_WindowMenus::retranslatesAtOnce()
{
    m_window->open();
    const auto textsNow = [this] {
        QStringList all;
        for (const auto *button : m_window->window->findChildren<QAbstractButton *>())
            all.append(button->text());
        for (const auto *label : m_window->window->findChildren<QLabel *>())
            all.append(label->text());
        for (const auto *menu : m_window->window->findChildren<QMenu *>())
            all.append(menu->title());
        for (int column = 0; column < m_window->model()->columnCount(); ++column)
            all.append(m_window->model()->headerData(column, Qt::Horizontal).toString());
        return all;
    };
    const QStringList italian = textsNow();
    m_window->trigger("actionEnglish");
    const QStringList english = textsNow();
    QCOMPARE(english.size(), italian.size());
    for (const QString &each : {text("Preferenze"), text("Aiuto"), text("Titolo"),
                                text("Nome file"), text("Sincronizza song con il\ndatabase K-Varo"),
                                text("Abilita log (riavvio necessario!)")}) {
        QVERIFY2(italian.contains(each), qPrintable(each));
        QVERIFY2(!english.contains(each), qPrintable(each));
    }
    m_window->trigger("actionItalian");
    QCOMPARE(textsNow(), italian);
}

void tst_WindowMenus::shortcuts_data()
{
    QTest::addColumn<bool>("afterChange");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("dialog");
    for (const bool afterChange : {false, true}) {
        const auto row = [afterChange](const char *name, int key, const char *dialog) {
            QTest::addRow("%s%s", name, afterChange ? ", after the language has changed twice" : "")
                << afterChange << key << QString::fromLatin1(dialog);
        };
        row("Ctrl+O imports", static_cast<int>(Qt::CTRL) + Qt::Key_O, "QFileDialog");
        row("Ctrl+U synchronises", static_cast<int>(Qt::CTRL) + Qt::Key_U, "tarvel4::BackupDialog");
        row("Ctrl+T transfers", static_cast<int>(Qt::CTRL) + Qt::Key_T, "QFileDialog");
        row("F1 helps", Qt::Key_F1, "tarvel4::HelpDialog");
        row("Return edits the row", Qt::Key_Return, "tarvel4::DataEditDialog");
        row("Enter edits the row", Qt::Key_Enter, "tarvel4::DataEditDialog");
        row("Ctrl+Q closes the window", static_cast<int>(Qt::CTRL) + Qt::Key_Q, "");
    }
}

void tst_WindowMenus::shortcuts()
{
    QFETCH(bool, afterChange);
    QFETCH(int, key);
    QFETCH(QString, dialog);
    m_window->settings().setValue(text("copyrightAsk"), false);
    m_window->open();
    m_window->import({m_window->addSong(text("a.mid"), "A")});
    for (const char *language : {"actionItalian", "actionEnglish", "actionItalian"}) {
        if (afterChange)
            m_window->trigger(language);
    }
    QApplication::setActiveWindow(m_window->window.get());
    m_window->table()->setFocus();
    m_window->table()->selectRow(0);
    QTRY_VERIFY(m_window->table()->hasFocus());

    QString opened;
    if (!dialog.isEmpty())
        m_window->driver.expect<QDialog>([&opened](QDialog &found) {
            opened = QString::fromLatin1(found.metaObject()->className());
            found.close();
        });
    QTest::keyClick(m_window->table(), Qt::Key(key & ~Qt::CTRL),
                    Qt::KeyboardModifiers(key & Qt::CTRL));
    QTRY_COMPARE(opened, dialog); // a button stays down for a moment first
    QCOMPARE(m_window->window->isVisible(), !dialog.isEmpty());
}

void tst_WindowMenus::copyrightOfTheSettingIsTicked()
{
    for (const QVariant &setting : {QVariant(), QVariant(true), QVariant(false)}) {
        m_window.reset(new WindowFixture);
        if (setting.isValid())
            m_window->settings().setValue(text("copyrightAsk"), setting);
        m_window->settings().sync();
        m_window->open();
        QCOMPARE(ticked("menuMessaggi_Copyright"),
                 setting == false ? strings({"actionCopyrightNo"})
                                  : strings({"actionCopyrightYes"}));
    }
}

void tst_WindowMenus::copyrightActions()
{
    m_window->open();
    for (const bool asks : {false, true, true, false, false}) {
        const char *action = asks ? "actionCopyrightYes" : "actionCopyrightNo";
        m_window->trigger(action);
        QCOMPARE(m_window->settings().value(text("copyrightAsk")).toBool(), asks);
        QCOMPARE(ticked("menuMessaggi_Copyright"), strings({action}));
    }
}

void tst_WindowMenus::menuEntriesOpenTheirDialogs_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::newRow("optimizeMemory") << text("tarvel4::IndexDialog");
    QTest::newRow("actionSongsList") << text("tarvel4::SongsListDialog");
    QTest::newRow("actionContents") << text("tarvel4::HelpDialog");
    QTest::newRow("actionAbout") << text("tarvel4::AboutDialog");
    QTest::newRow("actionAbout_QT") << text("QMessageBox");
}

void tst_WindowMenus::menuEntriesOpenTheirDialogs()
{
    m_window->open();
    for (int round = 0; round < 2; ++round) {
        QString opened;
        m_window->driver.expect<QDialog>([&opened](QDialog &dialog) {
            opened = text(dialog.metaObject()->className());
            dialog.close();
        });
        m_window->trigger(QTest::currentDataTag());
        QTRY_COMPARE(opened.isEmpty(), false);
        QTEST(opened, "dialog");
        m_window->trigger("actionEnglish"); // and after the language has changed
    }
}

void tst_WindowMenus::quitClosesTheWindow()
{
    m_window->open();
    QTimer::singleShot(0, m_window->find<QAction>("actionQuit"), &QAction::trigger);
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!m_window->window->isVisible());
}

QTEST_MAIN(tst_WindowMenus)
#include "tst_windowmenus.moc"
