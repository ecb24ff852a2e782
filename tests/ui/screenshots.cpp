#include "library/messagelog.h"
#include "library/usersettings.h"
#include "tests/ui/dialogdriver.h"
#include "tests/ui/stage.h"
#include "ui/aboutdialog.h"
#include "ui/appearance.h"
#include "ui/backupdialog.h"
#include "ui/dataeditdialog.h"
#include "ui/editmanydialog.h"
#include "ui/helpdialog.h"
#include "ui/indexdialog.h"
#include "ui/mainwindow.h"
#include "ui/nocopyrightdialog.h"
#include "ui/previewdialog.h"
#include "ui/proceeddialog.h"
#include "ui/progressdialog.h"
#include "ui/songslistdialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScreen>
#include <QTableView>
#include <QTemporaryDir>
#include <QTextStream>
#include <QToolTip>
#include <QTranslator>

#include <cstdlib>

using namespace tarvel4;

namespace {

/** The real window with the sample songs in it, on a screen that it fills, and its pictures. */
class Pictures
{
public:
    Pictures(const QString &folder, const QString &songs)
        : m_folder(folder)
        , m_songs(songs)
        , m_card(QFileInfo(songs).dir().filePath(text("Card")))
        , m_window(nullptr, std::make_unique<Stage::CardVolume>(m_card),
                   std::make_unique<Stage::SilentPlayers>(), std::make_unique<Stage::Drives>())
    {
        QCursor::setPos(m_window.screen()->geometry().bottomRight()); // hovers over nothing
        m_window.show();
        m_window.resize(m_window.screen()->availableSize());
        fitsIn(m_window);
    }

    bool isWhole() const { return m_isWhole; }

    void takeAll()
    {
        save(m_window, "empty");
        import("noPushButton");
        preview();
        import("yesPushButton");
        save(m_window, "main");
        search();
        edit();
        editMany();
        listen();
        undo();
        remove();
        import("noPushButton");
        transfer();
        import("noPushButton");
        report();
        toolTip();
        menus();
        box();
        help();
        memory();
        show(AboutDialog(&m_window), "about");
        show(BackupDialog(&m_window), "backup");
        show(ProgressDialog({text("Tarvel4 Soft"), text("3 / 7"), text("Cancel")}, 7, &m_window),
             "progress");
        NoCopyrightDialog question(&m_window);
        question.setFileName(text("SANTALUC.mid"));
        show(std::move(question), "question");
    }

private:
    template <class Widget> Widget *find(const char *name) { return child<Widget>(m_window, name); }

    void import(const char *answer)
    {
        QStringList files;
        for (const QFileInfo &song :
             QDir(m_songs).entryInfoList({text("*.m*"), text("*.kar")}, QDir::Files)) {
            if (song.suffix() != text("md"))
                files.append(song.absoluteFilePath());
        }
        DialogDriver driver;
        chooseFiles(driver, files, "files");
        driver.expect<ProceedDialog>([this, answer](ProceedDialog &dialog) {
            save(dialog, "summary");
            click(dialog, answer);
        });
        if (answer == QByteArray("yesPushButton"))
            answerQuestions(driver, "yesAllPushButton");
        QTest::mouseClick(find<QWidget>("selectDirToolButton"), Qt::LeftButton);
        find<QTableView>("userLibraryTableView")->selectRow(2);
    }

    void chooseFiles(DialogDriver &driver, const QStringList &files, const char *picture)
    {
        driver.expect<QFileDialog>([this, picture](QFileDialog &dialog) { save(dialog, picture); });
        driver.chooseFiles(files);
    }

    /** Of a synchronisation; some samples are not of the catalogue's maker. */
    static void answerQuestions(DialogDriver &driver, const char *answer)
    {
        driver.click<BackupDialog>("exitPushButton");
        for (int i = 0; i < 2; ++i)
            driver.click<NoCopyrightDialog>(answer);
    }

    void search()
    {
        find<QLineEdit>("searchLineEdit")->setText(text("TRAD"));
        save(m_window, "search");
        find<QLineEdit>("searchLineEdit")->setText(text("nowhere"));
        save(m_window, "nothing");
        find<QLineEdit>("searchLineEdit")->clear();
        auto *marks = find<QComboBox>("searchMarkComboBox");
        marks->setCurrentIndex(marks->count() - 1);
        save(m_window, "filter");
        marks->setCurrentIndex(0);
    }

    void editMany()
    {
        DialogDriver driver;
        driver.expect<EditManyDialog>([this](EditManyDialog &dialog) {
            dialog.choose({0, 2, 3});
            child<QCheckBox>(dialog, "authorCheckBox")->setChecked(true);
            child<QLineEdit>(dialog, "authorLineEdit")->setText(text("G. Verdi"));
            save(dialog, "many");
            dialog.reject();
        });
        find<QAction>("actionEditMany")->trigger();
    }

    void preview()
    {
        DialogDriver driver;
        driver.expect<PreviewDialog>([this](PreviewDialog &dialog) {
            save(dialog, "preview");
            dialog.reject();
        });
        find<QAction>("actionPreview")->trigger();
    }

    /** After a synchronisation in which a song was gone. */
    void report()
    {
        QFile::remove(QDir(m_songs).filePath(text("BELLACIA.kar")));
        DialogDriver driver;
        answerQuestions(driver, "noPushButton");
        find<QAbstractButton>("updateDataToolButton")->click();
        save(m_window, "report");
    }

    void transfer()
    {
        QDir().mkpath(m_card + text("/songs"));
        const QString name = text("/SANTALUC.mid");
        QFile::copy(m_songs + name, m_card + text("/songs") + name);
        DialogDriver driver;
        chooseFiles(driver, {m_card + text("/songs")}, "folders");
        driver.expect<NoCopyrightDialog>([this](NoCopyrightDialog &dialog) {
            save(dialog, "overwrite");
            click(dialog, "yesPushButton");
        });
        expectBox(driver, "transferred");
        find<QAbstractButton>("transferFilesToolButton")->click();
    }

    void expectBox(DialogDriver &driver, const char *picture)
    {
        driver.expect<QMessageBox>([this, picture](QMessageBox &box) {
            save(box, picture);
            box.reject();
        });
    }

    void listen()
    {
        find<QAction>("actionListen")->trigger();
        save(m_window, "listen");
        find<QAction>("actionListen")->trigger();
    }

    void undo()
    {
        DialogDriver driver;
        expectBox(driver, "undo");
        find<QAction>("actionUndo")->trigger();
    }

    void remove()
    {
        DialogDriver driver;
        driver.expect<QMenu>([this](QMenu &menu) {
            save(menu, "menu-row");
            menu.setActiveAction(menu.actions().at(5));
            QTest::keyClick(&menu, Qt::Key_Return);
        });
        expectBox(driver, "mark");
        auto *table = find<QTableView>("userLibraryTableView");
        Q_EMIT table->customContextMenuRequested(table->visualRect(table->currentIndex()).center());
        expectBox(driver, "delete");
        activate(m_window);
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Delete);
    }

    void memory()
    {
        UserSettings::setMediaRoot(m_card);
        IndexDialog index(&m_window);
        index.show();
        save(index, "index");
        click(index, "rebuildRadioButton");
        save(index, "index-rebuild");
        {
            DialogDriver driver;
            expectBox(driver, "index-result");
            click(index, "startPushButton");
        }
        save(index, "index-done");
        index.close();
        SongsListDialog list(&m_window);
        list.show();
        save(list, "list");
        DialogDriver driver;
        expectBox(driver, "list-result");
        click(list, "savePushButton");
        expectBox(driver, "list-overwrite");
        click(list, "savePushButton");
        list.close();
    }

    void edit()
    {
        DialogDriver driver;
        driver.expect<DataEditDialog>([this](DataEditDialog &dialog) {
            save(dialog, "edit");
            auto *genres = child<QComboBox>(dialog, "genreComboBox");
            genres->showPopup();
            save(*genres->view()->window(), "genres");
            genres->hidePopup();
            child<QLineEdit>(dialog, "titleLineEdit")->setText(text("Perché no"));
            save(dialog, "edit-note");
            dialog.reject();
        });
        auto *table = find<QTableView>("userLibraryTableView");
        table->setFocus();
        Q_EMIT table->doubleClicked(table->currentIndex());
    }

    void toolTip()
    {
        QToolTip::showText(m_window.mapToGlobal(QPoint(100, 200)), text("SANTALUC.mid"), &m_window);
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->inherits("QTipLabel"))
                save(*widget, "tooltip");
        }
        QToolTip::hideText();
    }

    void menus()
    {
        for (const char *name : {"menuFile", "menuPreferences", "menuLanguage", "menuStrumenti",
                                 "menuHelp", "menuSort", "menuListenFromMark"}) {
            auto *opened = find<QMenu>(name);
            opened->popup(m_window.mapToGlobal(QPoint(100, 30)));
            if (!opened->actions().isEmpty())
                opened->setActiveAction(opened->actions().constFirst());
            save(*opened, name);
            opened->close();
        }
    }

    void box()
    {
        QMessageBox box(QMessageBox::Warning, text("Tarvel4 Soft"), text("SANTALUC.mid"),
                        QMessageBox::Yes | QMessageBox::No, &m_window);
        box.setDetailedText(text("SANTALUC.mid\nFUNICULI.mid"));
        box.show();
        save(box, "box");
        for (QAbstractButton *button : box.buttons()) {
            if (box.buttonRole(button) == QMessageBox::ActionRole)
                button->click();
        }
        save(box, "details");
    }

    void help()
    {
        HelpDialog dialog(&m_window);
        dialog.show();
        save(dialog, "help");
        for (const char *words : {"1.", "F1"}) { // a chapter below a picture; the keys
            child<QLineEdit>(dialog, "searchLineEdit")->setText(text(words));
            save(dialog, *words == '1' ? "help-picture" : "help-keys");
        }
        child<QLineEdit>(dialog, "searchLineEdit")->setText(text("nowhere"));
        save(dialog, "help-nothing");
        dialog.close();
    }

    template <class Dialog> void show(Dialog &&dialog, const char *name)
    {
        dialog.show();
        save(dialog, name);
        dialog.close();
    }

    void save(QWidget &widget, const char *name)
    {
        if (!QTest::qWaitForWindowExposed(&widget))
            fail(text(name) + text(" was not shown"));
        // what a layout, a model of files and the counts below the table put off
        QTest::qWait(&widget == &m_window ? 150 : 30);
        fitsIn(widget);
        const QString file = text("%1/%2.png").arg(m_folder, text(name));
        if (!widget.grab().save(file))
            fail(file + text(" can't be written"));
    }

    void fitsIn(const QWidget &widget)
    {
        const QSize room = widget.screen()->availableSize();
        const QSize least = widget.minimumSizeHint().expandedTo(widget.minimumSize());
        if (least.width() <= room.width() && least.height() <= room.height())
            return;
        fail(text("%1 needs %2x%3, the screen %4x%5")
                 .arg(QLatin1String(widget.metaObject()->className()))
                 .arg(least.width())
                 .arg(least.height())
                 .arg(room.width())
                 .arg(room.height()));
    }

    void fail(const QString &why)
    {
        m_isWhole = false;
        QTextStream(stderr) << m_folder << ": " << why << "\n";
    }

    const QString m_folder;
    const QString m_songs;
    const QString m_card;
    MainWindow m_window;
    bool m_isWhole = true;
};

} // namespace

/** screenshots FOLDER SONGS it|en light|dark: pictures, of SONGS put into ./Musica and ./Card */
int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    MessageLog::silence();
    QTemporaryDir home; // for the settings, the journal and the catalogue of this run
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    const QApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        QTextStream(stderr) << "Usage: screenshots FOLDER SONGS it|en light|dark\n";
        return EXIT_FAILURE;
    }
    const QString folder = QDir(arguments.at(1)).absolutePath();
    const QString songs = QDir::current().filePath(text("Musica"));
    QDir().mkpath(folder);
    QDir().mkpath(songs);
    const QStringList songFiles{text("*.m*"), text("*.kar"), text("*.cdg")};
    for (const QFileInfo &song : QDir(arguments.at(2)).entryInfoList(songFiles, QDir::Files))
        QFile::copy(song.filePath(), songs + QLatin1Char('/') + song.fileName());

    settings().setValue(text("language"), arguments.at(3));
    QTranslator translator;
    Appearance::installLanguage(translator, arguments.at(3));
    Appearance::setScheme(arguments.at(4) == text("dark") ? Colours::Scheme::Dark
                                                          : Colours::Scheme::Light);
    Appearance::applyStyleSheet(text(":/style/default.qss"));
    Pictures pictures(folder, songs);
    pictures.takeAll();
    return pictures.isWhole() ? EXIT_SUCCESS : EXIT_FAILURE;
}
