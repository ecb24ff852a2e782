#include "tests/ui/windowtest.h"

#include "ui/appearance.h"
#include "ui/dataeditdialog.h"
#include "ui/helpdialog.h"
#include "ui/songslistdialog.h"

#include <QMenuBar>

using namespace tarvel4;

/** The whole road by somebody who has a keyboard and no mouse: each key goes to what has the focus.
 */
class tst_KeyboardRoad : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void fromImportToQuit_data()
    {
        const Table<QString, QString> row;
        row("Italian", "it", "Operazione completata");
        row("English", "en", "Operation completed");
    }
    void fromImportToQuit()
    {
        const auto [language, listBox] = cells<QString, QString>();
        const bool isItalian = language == text("it");
        m_boxes.clear();
        QTranslator translator;
        Appearance::installLanguage(translator, language);
        settings().setValue(text("language"), language);
        settings().setValue(text("mediaroot"), path("card"));
        openWindow();

        importAndSynchronise(isItalian);
        QCOMPARE(statuses(), text("1 1"));
        QCOMPARE(namesIn(path("backups")).size(), 1);
        searchAndEdit();
        sort(isItalian);
        transfer();
        QCOMPARE(namesIn(path("card/music")).size(), 2);
        saveList(isItalian);
        QVERIFY(TestFiles::read(path("list.csv")).contains("A SONG;"));
        QCOMPARE(m_boxes.constLast(), listBox);
        readHelp();

        m_driver.reset(); // all dialogs have come
        press(Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!m_window->isVisible());
    }

private:
    static QStringList namesIn(const QString &folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    /** To what has the focus, as a keyboard does. */
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QWidget *window = QApplication::activePopupWidget();
        if (!window)
            window = QApplication::activeModalWidget();
        if (!window) {
            window = m_window.get();
            QVERIFY(activate(*window)); // where no window manager gives it the focus back
        }
        QTest::keyClick(window->windowHandle(), key, modifiers);
    }
    void write(const QString &text) const
    {
        QVERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
        press(Qt::Key_A, Qt::ControlModifier);
        typeText(QApplication::focusWidget(), text);
    }
    /** With Tab, until the control has the focus. */
    void goTo(const char *control) const
    {
        for (int i = 0; i < 40; ++i) {
            const QWidget *focused = QApplication::focusWidget();
            if (focused && focused->objectName() == text(control))
                return;
            press(Qt::Key_Tab);
        }
        QFAIL(control);
    }
    /** Types a path into the next file dialog. */
    void expectPath(const QString &path)
    {
        m_driver->expect<QFileDialog>([this, path](QFileDialog &dialog) {
            goTo("fileNameEdit");
            write(path);
            // later, in the dialog's own loop: the next step is not to come before the dialog is
            // over
            for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
                QCoreApplication::postEvent(child(dialog, "fileNameEdit"),
                                            new QKeyEvent(type, Qt::Key_Return, Qt::NoModifier));
        });
    }
    template <class Dialog> void expectKeys(const QVector<Qt::Key> &keys)
    {
        m_driver->expect<Dialog>([this, keys](Dialog &) {
            for (const Qt::Key key : keys)
                press(key, key == Qt::Key_Return ? Qt::NoModifier : Qt::AltModifier);
        });
    }
    void expectReturn()
    {
        m_driver->expect<QMessageBox>([this](QMessageBox &box) {
            m_boxes.append(box.text());
            press(Qt::Key_Return);
        });
    }

    void importAndSynchronise(bool isItalian)
    {
        addSong("a.mid", "Volare");
        addSong("b.mid", "Azzurro");
        expectPath(QLatin1Char('"') + path("songs/a.mid") + text("\" \"") + path("songs/b.mid")
                   + QLatin1Char('"'));
        expectKeys<ProceedDialog>({isItalian ? Qt::Key_S : Qt::Key_Y});
        expectKeys<BackupDialog>({isItalian ? Qt::Key_S : Qt::Key_B});
        expectPath(path("backups"));
        m_driver->expect<BackupDialog>([this](BackupDialog &) { press(Qt::Key_Return); });
        expectReturn();
        press(Qt::Key_O, Qt::ControlModifier);
        QTRY_COMPARE(model()->rowCount(), 2);
        QTRY_COMPARE(statuses(), text("1 1"));
    }

    void searchAndEdit()
    {
        press(Qt::Key_F, Qt::ControlModifier);
        write(text("azz"));
        press(Qt::Key_Return); // to the first row that is shown
        QCOMPARE(m_window->focusWidget(), table());
        m_driver->expect<DataEditDialog>([this](DataEditDialog &) {
            press(Qt::Key_T, Qt::AltModifier);
            write(text("A song"));
            press(Qt::Key_S, Qt::AltModifier);
        });
        press(Qt::Key_F2);
        QTRY_VERIFY(column(Title).contains(text("A song")));
        QCOMPARE(m_window->focusWidget(), table());
        press(Qt::Key_F, Qt::ControlModifier);
        press(Qt::Key_Escape); // shows all songs again
        QCOMPARE(m_window->focusWidget(), table());
    }

    void sort(bool isItalian)
    {
        QCOMPARE(column(Name), strings({"a.mid", "b.mid"}));
        press(isItalian ? Qt::Key_S : Qt::Key_T, Qt::AltModifier); // the menu of the tools
        press(isItalian ? Qt::Key_P : Qt::Key_B);
        press(Qt::Key_T);
        QTRY_COMPARE(column(Name), strings({"b.mid", "a.mid"}));
        QCOMPARE(m_window->focusWidget(), table());
    }

    void transfer()
    {
        QVERIFY(QDir().mkpath(path("card/music")));
        expectPath(path("card/music"));
        expectReturn();
        press(Qt::Key_T, Qt::ControlModifier);
        QTRY_COMPARE(m_boxes.size(), 2);
        QTRY_VERIFY(find<QWidget>("transferFilesToolButton")->isEnabled());
    }

    void saveList(bool isItalian)
    {
        m_driver->expect<SongsListDialog>([this, isItalian](SongsListDialog &) {
            press(Qt::Key_F, Qt::AltModifier);
            write(path("list.csv"));
            press(isItalian ? Qt::Key_V : Qt::Key_S, Qt::AltModifier);
        });
        expectReturn();
        m_driver->expect<SongsListDialog>([this](SongsListDialog &) { press(Qt::Key_Escape); });
        press(isItalian ? Qt::Key_S : Qt::Key_T, Qt::AltModifier); // the menu of the tools
        press(Qt::Key_L);
        QTRY_VERIFY(QFile::exists(path("list.csv")));
        QTRY_VERIFY(!QApplication::activeModalWidget());
    }

    void readHelp()
    {
        bool isRead = false;
        m_driver->expect<HelpDialog>([this, &isRead](HelpDialog &) {
            press(Qt::Key_PageDown);
            isRead = true;
            press(Qt::Key_Escape);
        });
        press(Qt::Key_F1);
        QTRY_VERIFY(isRead);
        QTRY_VERIFY(!QApplication::activeModalWidget());
    }

    QStringList m_boxes; ///< their texts
};

QTEST_MAIN(tst_KeyboardRoad)
#include "tst_keyboardroad.moc"
