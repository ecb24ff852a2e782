#include "tests/ui/windowtest.h"
#include "ui/appearance.h"

#include <QComboBox>
#include <QTranslator>

using namespace tarvel4;

namespace {

/** "NAME TEXT|NAME TEXT" of the entries, or of the menus in the bar. */
QString entriesOf(const QWidget &menu)
{
    QStringList entries;
    for (const QAction *action : menu.actions())
        entries.append((action->menu()              ? action->menu()->objectName()
                            : action->isSeparator() ? text("separator")
                                                    : action->objectName())
                       + QLatin1Char(' ') + action->text().remove(QLatin1Char('&')));
    return entries.join(QLatin1Char('|'));
}

/** The headers, and what a tool tip and a screen reader tell of each cell. */
QStringList textsOf(const QAbstractItemModel &model)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column) {
        texts += model.headerData(column, Qt::Horizontal).toString();
        for (int row = 0; row < model.rowCount(); ++row) {
            for (const int role : {Qt::DisplayRole, Qt::ToolTipRole, Qt::AccessibleTextRole})
                texts += model.index(row, column).data(role).toString();
        }
    }
    return texts;
}

} // namespace

/** The menus: what they hold, the language, the copyright question, and the dialogs they open. */
class tst_WindowMenus : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void menusAreInOrder_data()
    {
        const Table<QString, QString> row;
        row("menuBar",
            "menuFile File|menuPreferences Preferenze|menuStrumenti Strumenti|menuHelp Aiuto",
            "menuFile File|menuPreferences Preferences|menuStrumenti Tools|menuHelp Help");
        row("menuFile", "actionQuit Esci|separator |actionImportFolder Importa una cartella...",
            "actionQuit Quit|separator |actionImportFolder Import a folder...");
        row("menuPreferences", "menuLanguage Lingua|menuMessaggi_Copyright Messaggi Copyright",
            "menuLanguage Language|menuMessaggi_Copyright Copyright messages");
        row("menuLanguage", "actionItalian Italiano|actionEnglish English|actionGerman Deutsch",
            "actionItalian Italiano|actionEnglish English|actionGerman Deutsch");
        row("menuMessaggi_Copyright", "actionCopyrightYes Si|actionCopyrightNo No",
            "actionCopyrightYes Yes|actionCopyrightNo No");
        row("menuStrumenti",
            "optimizeMemory Rigenera il database delle song|actionSongsList Salva lista delle song|"
            "separator |actionUndo Annulla l'ultima modifica...|actionEditMany Modifica più "
            "song...|separator |actionPreview Anteprima della sincronizzazione...|"
            "actionReport Mostra l'ultimo resoconto|separator |menuSort Ordina per|"
            "separator |actionListen Ascolta|"
            "menuListenFromMark Ascolta da un marker",
            "optimizeMemory Rebuild the song database|actionSongsList Save the song list|"
            "separator |actionUndo Undo the last change...|actionEditMany Edit several songs...|"
            "separator |actionPreview Preview of the synchronisation...|actionReport Show the last "
            "report|separator |menuSort Sort by|separator |actionListen Listen|"
            "menuListenFromMark Listen from a marker");
        row("menuSort",
            " Formato| Titolo| Artista| Genere| Autore| Durata| Bpm| Tonalita'| Nome file|"
            "separator | Crescente| Decrescente",
            " Format| Title| Artist| Genre| Author| Length| Bpm| Key| File name|"
            "separator | Ascending| Descending");
        row("menuHelp",
            "actionContents Aiuto Tarvel4 Soft|actionAbout Informazioni|"
            "actionAbout_QT Informazioni su QT",
            "actionContents Tarvel4 Soft help|actionAbout About|actionAbout_QT About QT");
    }
    void menusAreInOrder()
    {
        const auto [italian, english] = cells<QString, QString>();
        openWindow();
        const auto *menu = find<QWidget>(QTest::currentDataTag());
        QCOMPARE(entriesOf(*menu), italian);
        trigger("actionEnglish");
        QCOMPARE(entriesOf(*menu), english);
        for (const char *name : {"actionItalian", "actionEnglish", "actionGerman",
                                 "actionCopyrightYes", "actionCopyrightNo"})
            QVERIFY(find<QAction>(name)->isCheckable());
    }

    void languageOfTheSettingIsTicked_data()
    {
        const Table<QString, QString> row;
        row("it ticks Italian", "it", "actionItalian");
        row("no setting ticks Italian", "", "actionItalian");
        row("en ticks English", "en", "actionEnglish");
        row("de ticks German, which is never visible", "de", "actionGerman");
        row("anything else ticks English", "IT", "actionEnglish");
    }
    void languageOfTheSettingIsTicked()
    {
        const auto [setting, expected] = cells<QString, QString>();
        if (!setting.isEmpty())
            settings().setValue(text("language"), setting);
        openWindow();
        QCOMPARE(ticked("menuLanguage"), expected);
        QVERIFY2(!find<QAction>("actionGerman")->isVisible(), "German is never visible");
        QVERIFY(find<QAction>("actionItalian")->isVisible());
    }

    void stepsTellTheirKeysInEachLanguage()
    {
        openWindow();
        const auto *step = find<QWidget>("selectDirToolButton");
        QVERIFY(step->toolTip().startsWith(text("Seleziona le basi musicali")));
        trigger("actionEnglish");
        QVERIFY2(step->toolTip().startsWith(text("Select the songs")), qPrintable(step->toolTip()));
        QVERIFY(step->toolTip().endsWith(text("(Ctrl+O)")));
    }

    void languageActions()
    {
        openWindow();
        const auto choose = [this](const char *action, const char *setting, const char *help) {
            trigger(action);
            QCOMPARE(settings().value(text("language")).toString(), text(setting));
            QCOMPARE(ticked("menuLanguage"), text(action));
            QCOMPARE(find<QMenu>("menuHelp")->title().remove(QLatin1Char('&')), text(help));
        };
        for (int round = 0; round < 2; ++round) {
            choose("actionEnglish", "en", "Help");
            choose("actionItalian", "it", "Aiuto");
            choose("actionGerman", "de", "Help"); // shows the English texts
            choose("actionGerman", "de", "Help"); // once more: it stays ticked
        }
    }

    void retranslatesAtOnce()
    {
        openWindow();
        const auto textsNow = [this] {
            QStringList all;
            for (const auto *button : m_window->findChildren<QAbstractButton *>())
                all.append(button->text());
            for (const auto *label : m_window->findChildren<QLabel *>())
                all.append(label->text());
            for (const auto *menu : m_window->findChildren<QMenu *>())
                all.append(menu->title());
            for (int column = 0; column < model()->columnCount(); ++column)
                all.append(model()->headerData(column, Qt::Horizontal).toString());
            return all.replaceInStrings(text("&"), QString()); // of the keys with Alt
        };
        const QStringList italian = textsNow();
        trigger("actionEnglish");
        const QStringList english = textsNow();
        QCOMPARE(english.size(), italian.size());
        for (const QString &each :
             {text("Preferenze"), text("Aiuto"), text("Titolo"), text("Nome file"),
              text("Sincronizza song con il\ndatabase K-Varo"),
              text("Abilita log (riavvio necessario!)")}) {
            QVERIFY2(italian.contains(each), qPrintable(each));
            QVERIFY2(!english.contains(each), qPrintable(each));
        }
        trigger("actionItalian");
        QCOMPARE(textsNow(), italian);
    }

    /** As in a window that was in that language from the start. */
    void aChangeOfLanguageLeavesNoTextBehind()
    {
        const auto textsOfWindow = [this](const char *language) {
            openWindowWithoutSummaries();
            import({addSong("VOLARE.mid", "a"), addSong("nobody.mid", "b"),
                    addSong("gone.mid", "c"), TestFiles::write(path("songs/bad.mid"), "rubbish")});
            QFile::remove(path("songs/gone.mid"));
            m_driver->click<BackupDialog>("exitPushButton");
            press("updateDataToolButton");
            if (language)
                trigger(language);
            const auto *counts = find<QLabel>("songCountsLabel");
            const bool isCounted = QTest::qWaitFor( // some time later
                [counts] { return counts->text().contains(text(", 1 ")); });
            QStringList texts{text(isCounted ? "" : "not counted")};
            for (const QObject *object : m_window->findChildren<QObject *>()) {
                for (const char *property : {"text", "title", "toolTip", "accessibleName",
                                             "accessibleDescription", "placeholderText"})
                    if (object->objectName() != text("announcement")) // it was made
                        texts += object->objectName() + QLatin1Char(' ')
                            + object->property(property).toString();
            }
            for (const auto *box : m_window->findChildren<QComboBox *>()) {
                for (int i = 0; i < box->count(); ++i)
                    texts += box->itemText(i);
            }
            for (const auto *view : m_window->findChildren<QTableView *>())
                texts += textsOf(*view->model());
            m_window.reset();
            return texts;
        };
        const QStringList changed = textsOfWindow("actionEnglish");
        QTranslator translator;
        Appearance::installLanguage(translator, text("en"));
        QCOMPARE(changed, textsOfWindow(nullptr));
    }

    void shortcuts_data()
    {
        Table<bool, int, int, QString>();
        for (const bool afterChange : {false, true}) {
            const auto row = [afterChange](const char *name, int modifier, int key,
                                           const char *dialog) {
                QTest::addRow("%s%s", name,
                              afterChange ? ", after the language has changed twice" : "")
                    << afterChange << modifier << key << dialog;
            };
            const int ctrl = Qt::ControlModifier;
            row("Ctrl+O imports", ctrl, Qt::Key_O, "QFileDialog");
            row("Ctrl+U synchronises", ctrl, Qt::Key_U, "tarvel4::BackupDialog");
            row("Ctrl+T transfers", ctrl, Qt::Key_T, "QFileDialog");
            row("Ctrl+Z undoes", ctrl, Qt::Key_Z, "QMessageBox");
            row("F1 helps", 0, Qt::Key_F1, "tarvel4::HelpDialog");
            row("Return edits the row", 0, Qt::Key_Return, "tarvel4::DataEditDialog");
            row("Enter edits the row", 0, Qt::Key_Enter, "tarvel4::DataEditDialog");
            row("Ctrl+Q closes the window", ctrl, Qt::Key_Q, "");
        }
    }
    void shortcuts()
    {
        const auto [afterChange, modifier, key, dialog] = cells<bool, int, int, QString>();
        openWindowWithoutSummaries();
        import({addSong("a.mid", "A")});
        for (const char *language : {"actionItalian", "actionEnglish", "actionItalian"}) {
            if (afterChange)
                trigger(language);
        }
        QApplication::setActiveWindow(m_window.get());
        table()->setFocus();
        table()->selectRow(0);
        QTRY_VERIFY(table()->hasFocus());
        m_opened.clear();
        if (!dialog.isEmpty())
            closeNextDialog();
        QTest::keyClick(table(), static_cast<Qt::Key>(key),
                        static_cast<Qt::KeyboardModifier>(modifier));
        QTRY_COMPARE(m_opened, dialog); // a button stays down for a moment first
        QCOMPARE(m_window->isVisible(), !dialog.isEmpty());
    }

    void copyrightOfTheSettingIsTicked_data()
    {
        const Table<QVariant, QString> row;
        row("no setting ticks Yes", QVariant(), "actionCopyrightYes");
        row("true ticks Yes", QVariant(true), "actionCopyrightYes");
        row("false ticks No", QVariant(false), "actionCopyrightNo");
    }
    void copyrightOfTheSettingIsTicked()
    {
        const auto [setting, expected] = cells<QVariant, QString>();
        if (setting.isValid())
            settings().setValue(text("copyrightAsk"), setting);
        openWindow();
        QCOMPARE(ticked("menuMessaggi_Copyright"), expected);
    }

    void copyrightActions()
    {
        openWindow();
        for (const bool asks : {false, true, true, false, false}) {
            const char *action = asks ? "actionCopyrightYes" : "actionCopyrightNo";
            trigger(action);
            QCOMPARE(settings().value(text("copyrightAsk")).toBool(), asks);
            QCOMPARE(ticked("menuMessaggi_Copyright"), text(action));
        }
    }

    void menuEntriesOpenTheirDialogs_data()
    {
        const Table<QString> row;
        row("optimizeMemory", "tarvel4::IndexDialog");
        row("actionSongsList", "tarvel4::SongsListDialog");
        row("actionUndo", "QMessageBox");
        row("actionContents", "tarvel4::HelpDialog");
        row("actionAbout", "tarvel4::AboutDialog");
        row("actionAbout_QT", "QMessageBox");
    }
    void menuEntriesOpenTheirDialogs()
    {
        const auto [dialog] = cells<QString>();
        openWindow();
        for (int round = 0; round < 2; ++round) {
            m_opened.clear();
            closeNextDialog();
            trigger(QTest::currentDataTag());
            QTRY_VERIFY(!m_opened.isEmpty());
            QCOMPARE(m_opened, dialog);
            trigger("actionEnglish"); // and after the language has changed
        }
    }

    void quitClosesTheWindow()
    {
        openWindow();
        QTimer::singleShot(0, find<QAction>("actionQuit"), &QAction::trigger);
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(!m_window->isVisible());
    }

private:
    QString ticked(const char *menu) const
    {
        QStringList names;
        for (const QAction *action : find<QMenu>(menu)->actions()) {
            if (action->isChecked())
                names.append(action->objectName());
        }
        return names.join(QLatin1Char(' '));
    }
    void closeNextDialog()
    {
        m_driver->expect<QDialog>([this](QDialog &dialog) {
            m_opened = text(dialog.metaObject()->className());
            dialog.close();
        });
    }

    QString m_opened;
};

QTEST_MAIN(tst_WindowMenus)
#include "tst_windowmenus.moc"
