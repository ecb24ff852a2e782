#include "tests/storage/table.h"
#include "tests/storage/unixfile.h"
#include "tests/ui/dialogdriver.h"
#include "tests/ui/dialogtexts.h"
#include "ui/aboutdialog.h"
#include "ui/appearance.h"
#include "ui/backupdialog.h"
#include "ui/dataeditdialog.h"
#include "ui/helpdialog.h"
#include "ui/indexdialog.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"
#include "ui/progressdialog.h"
#include "ui/songslistdialog.h"
#include "ui/statefile.h"

#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>

using namespace tarvel4;

using Act = std::function<void(QDialog &)>;
Q_DECLARE_METATYPE(Act)

namespace {

template <class Dialog> std::unique_ptr<QDialog> make()
{
    return std::make_unique<Dialog>();
}

template <> std::unique_ptr<QDialog> make<ProgressDialog>()
{
    const ProgressTexts texts{text("x"), text("x"), text("Interrompi")};
    return std::make_unique<ProgressDialog>(texts, 10, nullptr);
}

const QMap<QString, std::unique_ptr<QDialog> (*)()> makers{
    {text("about"), make<AboutDialog>},       {text("backup"), make<BackupDialog>},
    {text("edit"), make<DataEditDialog>},     {text("help"), make<HelpDialog>},
    {text("index"), make<IndexDialog>},       {text("list"), make<SongsListDialog>},
    {text("progress"), make<ProgressDialog>}, {text("question"), make<NoCopyrightDialog>},
    {text("summary"), make<ProceedDialog>}};

void browse(const QDialog &dialog, const char *button, const QString &folder)
{
    DialogDriver driver;
    driver.chooseFiles({folder});
    click(dialog, button);
}

Act clicking(const char *button)
{
    return [button](QDialog &dialog) { click(dialog, button); };
}

Act pressing(Qt::Key key, const char *field = nullptr)
{
    return [key, field](QDialog &dialog) {
        if (field)
            child(dialog, field)->setFocus();
        QTest::keyClick(dialog.focusWidget() ? dialog.focusWidget() : &dialog, key);
    };
}

Act choosingAFolderAnd(const Act &then)
{
    return [then](QDialog &dialog) {
        browse(dialog, "browsePushButton", QDir::tempPath());
        then(dialog);
    };
}

void closeFrame(QDialog &dialog)
{
    dialog.close();
}

} // namespace

/** What all dialogs have: texts in two languages, sizes, results, an order of their fields. */
class tst_Dialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { settings().clear(); }

    void texts_data()
    {
        Table<QString, QString, QString, QString>();
        for (const FormText &form : formTexts)
            QTest::addRow("%s %s", form.dialog, form.widget)
                << form.dialog << form.widget << form.italian << form.english;
    }
    void texts()
    {
        const auto [dialog, widget, italian, english] = cells<QString, QString, QString, QString>();
        const auto shown = [&dialog = dialog, &widget = widget] {
            const auto made = makers[dialog]();
            return widget.isEmpty() ? made->windowTitle()
                                    : child(*made, qPrintable(widget))->property("text").toString();
        };
        QCOMPARE(shown(), italian);
        QTranslator translator;
        Appearance::installLanguage(translator, text("en"));
        QCOMPARE(shown().remove(QLatin1Char('&')), english);
    }

    void controlsAreCalledDifferently_data()
    {
        const Table<QString> row;
        row("it", "it");
        row("en", "en");
    }
    /** What a screen reader calls each control of the editor, its numbers with their units. */
    void controlsAreCalledDifferently()
    {
        const auto [language] = cells<QString>();
        QTranslator translator;
        Appearance::installLanguage(translator, language);
        const auto made = makers[text("edit")]();
        made->show();
        QStringList names;
        for (QWidget *widget : made->findChildren<QWidget *>()) {
            const bool isInside = qobject_cast<QComboBox *>(widget->parentWidget());
            if (!(widget->focusPolicy() & Qt::TabFocus) || isInside || !widget->isVisible())
                continue;
            QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(widget);
            names.append(reader->text(QAccessible::Name));
            QVERIFY2(!names.constLast().isEmpty(), qPrintable(widget->objectName()));
        }
        QCOMPARE(names.removeDuplicates(), 0);
        QVERIFY(names.size() >= 18);
        const bool isItalian = language == text("it");
        for (const char *name :
             {isItalian ? "Durata, secondi" : "Length, seconds",
              isItalian ? "Applica il genere a tutte" : "Apply the genre to all"})
            QVERIFY2(names.contains(text(name)), name);
    }

    void sizes_data() { addDialogsInBothLanguages(); }
    /** No dialog is larger than a small screen, and none cuts a text, in either language. */
    void sizes()
    {
        const auto [dialog, language] = cells<QString, QString>();
        // 1024x700 at 200 %, where letters take some points less; wider ones than the system's
        // stand in for them under wine
        const QSize room(UnixFile::isHere ? 540 : 560, 350);
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        QTranslator translator;
        Appearance::installLanguage(translator, language);
        const auto made = makers[dialog]();
        made->show();
        QVERIFY(QTest::qWaitForWindowExposed(made.get()));
        made->resize(made->size().boundedTo(room));
        QCoreApplication::processEvents();
        QVERIFY2(made->height() <= room.height(), qPrintable(QString::number(made->height())));
        QVERIFY2(made->width() <= room.width(), qPrintable(QString::number(made->width())));

        for (const QPushButton *button : made->findChildren<QPushButton *>())
            QVERIFY2(!button->isVisible() || button->width() >= button->sizeHint().width(),
                     qPrintable(button->text()));
        for (const QLabel *label : made->findChildren<QLabel *>())
            QVERIFY2(!label->isVisible() || !label->wordWrap()
                         || label->height() >= label->heightForWidth(label->width()),
                     qPrintable(label->text()));
    }

    void results_data()
    {
        Table<QString, Act, int>();
        const auto row = [](const char *name, const char *dialog, const Act &act, int result) {
            QTest::addRow("%s: %s gives %d", dialog, name, result) << dialog << act << result;
        };
        const Act ok = [](QDialog &dialog) {
            auto *box = dialog.findChild<QDialogButtonBox *>();
            QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
        };
        row("Enter", "about", pressing(Qt::Key_Return), 1);
        row("OK", "help", ok, 1);
        row("Annulla", "backup", clicking("abortPushButton"), 0);
        row("Prosegui senza backup", "backup", clicking("exitPushButton"), 2);
        row("Esegui backup", "backup", choosingAFolderAnd(clicking("doBackupPushButton")), 1);
        row("Enter at a chosen folder", "backup", choosingAFolderAnd(pressing(Qt::Key_Return)), 1);
        row("closing at a chosen folder", "backup", choosingAFolderAnd(closeFrame), 0);
        row("Si", "question", clicking("yesPushButton"), 0);
        row("Si tutti", "question", clicking("yesAllPushButton"), 1);
        row("No", "question", clicking("noPushButton"), 2);
        row("No tutti", "question", clicking("noAllPushButton"), 3);
        row("a stray Enter, which changes no song,", "question", pressing(Qt::Key_Return), 2);
        row("a stray blank, which changes no song,", "question", pressing(Qt::Key_Space), 2);
        row("Si", "summary", clicking("yesPushButton"), 1);
        row("No", "summary", clicking("noPushButton"), 0);
        row("Enter", "summary", pressing(Qt::Key_Return), 1);
        row("Salva", "edit", clicking("savePushButton"), 1);
        row("Annulla", "edit", clicking("exitPushButton"), 0);
        for (const char *field :
             {"titleLineEdit", "radioButtonTitle1", "checkBoxToAllArtist", "artistComboBox",
              "genreComboBox", "authorLineEdit", "lenMmLineEdit", "lenSsLineEdit", "keyComboBox",
              "bpmLineEdit", "savePushButton"})
            row(field, "edit", pressing(Qt::Key_Return, field), 1);
        row("Chiudi", "index", clicking("closePushButton"), 0);
        row("Exit", "list", clicking("exitPushButton"), 0);
        for (const char *dialog : {"about", "help", "backup", "summary", "edit", "index", "list"}) {
            row("Escape", dialog, pressing(Qt::Key_Escape), 0);
            row("closing by the frame", dialog, closeFrame, 0);
        }
        row("Escape, a No,", "question", pressing(Qt::Key_Escape), 2);
        row("closing by the frame, a Si,", "question", closeFrame, 0);
    }
    void results()
    {
        const auto [dialog, act, result] = cells<QString, Act, int>();
        DialogDriver driver;
        driver.expect<QDialog>(act);
        const auto made = makers[dialog]();
        if (auto *edit = qobject_cast<DataEditDialog *>(made.get())) {
            SongInfo song;
            song.bpm = 95; // two digits, where three fit
            edit->setSong(song);
        }
        QCOMPARE(made->exec(), result);
    }

    void tabGoesFromTopToBottom_data()
    {
        const Table<QString, QString> row;
        row("backup", "doBackupPushButton",
            "directoryLineEdit browsePushButton doBackupPushButton exitPushButton abortPushButton");
        row("edit", "checkBoxToAllTitle",
            "titleLineEdit radioButtonTitle1 radioButtonTitle2 checkBoxToAllTitle artistComboBox "
            "checkBoxToAllArtist genreComboBox checkBoxToAllGenre authorLineEdit "
            "checkBoxToAllAuthor lenMmLineEdit lenSsLineEdit keyComboBox bpmLineEdit "
            "savePushButton exitPushButton");
        row("index", "checkDiskCheckBox",
            "pathLineEdit browsePushButton updateRadioButton rebuildRadioButton checkDiskCheckBox "
            "reportPlainTextEdit startPushButton closePushButton");
        row("list", "",
            "sourceLineEdit browseDirPushButton targetLineEdit browseFilePushButton orderComboBox "
            "savePushButton exitPushButton");
        row("question", "", "yesPushButton yesAllPushButton noPushButton noAllPushButton");
        row("summary", "", "checkBoxShowAgain yesPushButton noPushButton");
    }
    void tabGoesFromTopToBottom()
    {
        const auto [enabling, chain] = cells<QString, QString>();
        const auto made = makers[text(QTest::currentDataTag())]();
        if (!enabling.isEmpty())
            child(*made, qPrintable(enabling))->setEnabled(true);
        made->show();
        const QStringList names = chain.split(QLatin1Char(' '));
        QCOMPARE(focusChain(child(*made, qPrintable(names.first()))), chain);
        int y = 0;
        for (const QString &name : names) {
            const auto *widget = child(*made, qPrintable(name));
            const int top = widget->mapTo(made.get(), QPoint(0, 0)).y();
            // within a row, from left to right
            QVERIFY2(top >= y - widget->height(), qPrintable(name));
            y = top;
        }
    }

    void captionsLeadToTheirFields_data()
    {
        const Table<QString, QString> row;
        for (const FormText &form : formTexts) {
            if (form.field)
                row(form.widget, text(form.dialog), text(form.field));
        }
    }
    void captionsLeadToTheirFields()
    {
        const auto [dialog, field] = cells<QString, QString>();
        const auto made = makers[dialog]();
        const QWidget *buddy = child<QLabel>(*made, QTest::currentDataTag())->buddy();
        QVERIFY(buddy);
        QCOMPARE(buddy->objectName(), field);
    }

    void folderChoices_data()
    {
        const Table<QString, QString, QString, bool> row;
        row("of a backup", "backup", "browsePushButton", "directoryLineEdit", false);
        row("to index", "index", "browsePushButton", "pathLineEdit", true);
        row("of a list", "list", "browseDirPushButton", "sourceLineEdit", true);
    }
    void folderChoices()
    {
        const auto [dialog, button, field, isStored] = cells<QString, QString, QString, bool>();
        QFile::remove(StateFile::path());
        const QTemporaryDir folder;
        const QString link = folder.filePath(QString(200, QLatin1Char('x'))); // stretches no dialog
        QVERIFY(UnixFile::isHere ? QFile::link(folder.path(), link) : QDir().mkdir(link));
        const QFileInfo homes(text("/home"));
        const QString first = homes.isDir() ? homes.absoluteFilePath() : QDir::homePath();
        const auto made = makers[dialog]();
        made->show();
        const int width = made->sizeHint().width();
        for (const QString &chosen : {QString(), link, link}) {
            DialogDriver driver;
            driver.expect<QFileDialog>([&chosen, &first](QFileDialog &chooser) {
                QCOMPARE(chooser.windowTitle(), text("Scegli cartella"));
                QCOMPARE(chooser.directory().path(), chosen.isEmpty() ? first : chosen);
                QVERIFY(chooser.testOption(QFileDialog::ShowDirsOnly));
                QVERIFY(chooser.testOption(QFileDialog::DontResolveSymlinks));
                chooser.close(); // which keeps what was chosen before
            });
            click(*made, qPrintable(button));
            QCOMPARE(child<QLineEdit>(*made, qPrintable(field))->text(), chosen);
            QCOMPARE(settings().value(text("mediaroot")).toString(), isStored ? chosen : QString());
            browse(*made, qPrintable(button), link);
        }
        QCOMPARE(made->sizeHint().width(), width);
    }

private:
    static void addDialogsInBothLanguages()
    {
        Table<QString, QString>();
        for (const QString &dialog : makers.keys()) {
            for (const char *language : {"it", "en"})
                QTest::addRow("%s %s", qPrintable(dialog), language) << dialog << language;
        }
    }
};

QTEST_MAIN(tst_Dialogs)
#include "tst_dialogs.moc"
