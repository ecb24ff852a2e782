#include "tests/ui/windowfixture.h"

#include "ui/aboutdialog.h"
#include "ui/helpdialog.h"
#include "ui/indexdialog.h"
#include "ui/songslistdialog.h"

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

    void menusAreInOrder();
    void languageOfTheSettingIsTicked_data();
    void languageOfTheSettingIsTicked();
    void languageActions_data();
    void languageActions();
    void languageChangesBackAndForth();
    void retranslatesAtOnce();
    void menuTextsFollowTheLanguage();
    void shortcuts_data();
    void shortcuts();
    void copyrightOfTheSettingIsTicked_data();
    void copyrightOfTheSettingIsTicked();
    void copyrightActions();
    void menuEntriesOpenTheirDialogs_data();
    void menuEntriesOpenTheirDialogs();
    void aboutQtIsShown();
    void quitClosesTheWindow();

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

void tst_WindowMenus::cleanup()
{
    const QString problems = m_window->driver.problems();
    m_window.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

void tst_WindowMenus::menusAreInOrder()
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

void tst_WindowMenus::languageOfTheSettingIsTicked_data()
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

void tst_WindowMenus::languageOfTheSettingIsTicked()
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

void tst_WindowMenus::languageActions_data()
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

void tst_WindowMenus::languageActions()
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

void tst_WindowMenus::languageChangesBackAndForth()
{
    m_window->open();
    for (int i = 0; i < 3; ++i) {
        m_window->trigger("actionEnglish");
        QCOMPARE(m_window->find<QMenu>("menuHelp")->title(), QStringLiteral("Help"));
        m_window->trigger("actionItalian");
        QCOMPARE(m_window->find<QMenu>("menuHelp")->title(), QStringLiteral("Aiuto"));
    }
}

void tst_WindowMenus::retranslatesAtOnce()
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

void tst_WindowMenus::menuTextsFollowTheLanguage()
{
    m_window->open();
    m_window->trigger("actionEnglish");
    QStringList texts;
    for (const QMenu *menu : m_window->find<QMenuBar>("menuBar")->findChildren<QMenu *>()) {
        for (const QAction *action : menu->actions())
            texts.append(action->text());
    }
    for (const QAction *action : m_window->find<QMenuBar>("menuBar")->actions())
        texts.append(action->text());
    texts.sort();
    texts.removeDuplicates(); // what finds no room in the bar is in a menu of its own too
    QCOMPARE(texts.join(QLatin1Char('|')),
             QStringLiteral("About|About QT|Copyright messages|Deutsch|English|File|Help|Italiano|"
                            "Language|No|Preferences|Quit|Rebuild the song database|Save the song "
                            "list|Tarvel4 Soft help|Tools|Yes"));
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
        row("Ctrl+O imports", Qt::CTRL + Qt::Key_O, "QFileDialog");
        row("Ctrl+U synchronises", Qt::CTRL + Qt::Key_U, "tarvel4::BackupDialog");
        row("Ctrl+T transfers", Qt::CTRL + Qt::Key_T, "QFileDialog");
        row("F1 helps", Qt::Key_F1, "tarvel4::HelpDialog");
        row("Return edits the row", Qt::Key_Return, "tarvel4::DataEditDialog");
        row("Enter edits the row", Qt::Key_Enter, "tarvel4::DataEditDialog");
        row("Ctrl+Q closes the window", Qt::CTRL + Qt::Key_Q, "");
    }
}

void tst_WindowMenus::shortcuts()
{
    QFETCH(bool, afterChange);
    QFETCH(int, key);
    QFETCH(QString, dialog);
    m_window->settings().setValue(QStringLiteral("copyrightAsk"), false);
    m_window->open();
    m_window->import({m_window->addSong(QStringLiteral("a.mid"), "A")});
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

void tst_WindowMenus::copyrightOfTheSettingIsTicked_data()
{
    QTest::addColumn<QVariant>("setting");
    QTest::addColumn<bool>("asks");
    QTest::newRow("no setting asks") << QVariant() << true;
    QTest::newRow("true asks") << QVariant(true) << true;
    QTest::newRow("false does not ask") << QVariant(false) << false;
}

void tst_WindowMenus::copyrightOfTheSettingIsTicked()
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

void tst_WindowMenus::copyrightActions()
{
    m_window->open();
    for (const bool asks : {false, true, true, false, false}) {
        m_window->trigger(asks ? "actionCopyrightYes" : "actionCopyrightNo");
        QCOMPARE(m_window->settings().value(QStringLiteral("copyrightAsk")).toBool(), asks);
        QCOMPARE(m_window->find<QAction>("actionCopyrightYes")->isChecked(), asks);
        QCOMPARE(m_window->find<QAction>("actionCopyrightNo")->isChecked(), !asks);
    }
}

void tst_WindowMenus::menuEntriesOpenTheirDialogs_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("afterChange");
    for (const char *name :
         {"optimizeMemory", "actionSongsList", "actionContents", "actionAbout"}) {
        QTest::newRow(name) << QString::fromLatin1(name) << false;
        QTest::addRow("%s, after the language has changed", name)
            << QString::fromLatin1(name) << true;
    }
}

void tst_WindowMenus::menuEntriesOpenTheirDialogs()
{
    QFETCH(QString, action);
    QFETCH(bool, afterChange);
    m_window->open();
    if (afterChange)
        m_window->trigger("actionEnglish");
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

void tst_WindowMenus::aboutQtIsShown()
{
    m_window->open();
    m_window->driver.expect<QMessageBox>([](QMessageBox &box) { box.close(); });
    m_window->trigger("actionAbout_QT");
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
