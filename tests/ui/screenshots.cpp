#include "library/messagelog.h"
#include "library/volume.h"
#include "tests/ui/dialogdriver.h"
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

/** The card is a folder that is no system disk. */
class CardVolume : public Volume
{
public:
    explicit CardVolume(QString card)
        : m_card(std::move(card))
    {}

    QString rootOf(const QString &) const override { return m_card; }
    bool isRootFolder(const QString &path) const override { return path == m_card; }
    bool isSystemDisk(const QString &) const override { return false; }

private:
    const QString m_card;
};

/** The real window with the sample songs in it, on a screen that it fills, and its pictures. */
class Stage
{
public:
    Stage(const QString &folder, const QString &songs)
        : m_folder(folder)
        , m_songs(songs)
        , m_card(QDir(songs).filePath(text("../Card")))
        , m_window(nullptr, std::make_unique<CardVolume>(m_card))
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
        import("noPushButton");
        report();
        overwrite();
        toolTip();
        menu();
        openFiles();
        box();
        show(AboutDialog(&m_window), "about");
        help();
        show(IndexDialog(&m_window), "index");
        show(SongsListDialog(&m_window), "list");
        show(BackupDialog(&m_window), "backup");
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
        driver.chooseFiles(files);
        driver.expect<ProceedDialog>([this, answer](ProceedDialog &dialog) {
            save(dialog, "summary");
            click(dialog, answer);
        });
        if (answer == QByteArray("yesPushButton"))
            answerQuestions(driver, "yesAllPushButton");
        QTest::mouseClick(find<QWidget>("selectDirToolButton"), Qt::LeftButton);
        find<QTableView>("userLibraryTableView")->selectRow(2);
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

    void overwrite()
    {
        QDir().mkpath(m_card + text("/songs"));
        const QString name = text("/SANTALUC.mid");
        QFile::copy(m_songs + name, m_card + text("/songs") + name);
        DialogDriver driver;
        driver.chooseFiles({m_card + text("/songs")});
        driver.expect<NoCopyrightDialog>([this](NoCopyrightDialog &dialog) {
            save(dialog, "overwrite");
            click(dialog, "yesPushButton");
        });
        driver.expect<QMessageBox>([this](QMessageBox &box) {
            save(box, "transferred");
            box.accept();
        });
        find<QAbstractButton>("transferFilesToolButton")->click();
        save(m_window, "report-transfer");
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

    void menu()
    {
        auto *opened = find<QMenu>("menuStrumenti");
        opened->popup(m_window.mapToGlobal(QPoint(100, 30)));
        opened->setActiveAction(opened->actions().constFirst());
        save(*opened, "menu");
        opened->close();
        auto *languages = find<QMenu>("menuLanguage");
        languages->popup(m_window.mapToGlobal(QPoint(100, 30)));
        save(*languages, "languages");
        languages->close();
    }

    void openFiles()
    {
        QFileDialog dialog(&m_window, QString(), m_songs);
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        show(std::move(dialog), "files");
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

/** screenshots FOLDER SONGS it|en light|dark: pictures of the window and its dialogs. */
int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    MessageLog::silence();
    // for the settings, the journal and the catalogue of this run
    QTemporaryDir home(QDir::temp().filePath(text("Music-XXXXXX")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    const QApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        QTextStream(stderr) << "Usage: screenshots FOLDER SONGS it|en light|dark\n";
        return EXIT_FAILURE;
    }
    const QString folder = QDir(arguments.at(1)).absolutePath();
    const QString songs = QDir(home.path()).filePath(text("Songs"));
    QDir().mkpath(folder);
    QDir().mkpath(songs);
    const QStringList songFiles{text("*.m*"), text("*.kar"), text("*.cdg")};
    for (const QFileInfo &song : QDir(arguments.at(2)).entryInfoList(songFiles, QDir::Files))
        QFile::copy(song.filePath(), songs + QLatin1Char('/') + song.fileName());
    QDir::setCurrent(home.path());

    settings().setValue(text("language"), arguments.at(3));
    QTranslator translator;
    Appearance::installLanguage(translator, arguments.at(3));
    Appearance::setScheme(arguments.at(4) == text("dark") ? Colours::Scheme::Dark
                                                          : Colours::Scheme::Light);
    Appearance::applyStyleSheet(text(":/style/default.qss"));
    Stage stage(folder, songs);
    stage.takeAll();
    return stage.isWhole() ? EXIT_SUCCESS : EXIT_FAILURE;
}
