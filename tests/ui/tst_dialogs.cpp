#include "tests/library/texts.h"
#include "tests/ui/dialogdriver.h"
#include "tests/ui/dialogtexts.h"
#include "tests/ui/forms.h"
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

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTranslator>

using namespace tarvel4;

using Act = std::function<void(QDialog &)>;
Q_DECLARE_METATYPE(Act)

namespace {

template <class Dialog> std::unique_ptr<QDialog> make()
{
    return std::make_unique<Dialog>();
}

std::unique_ptr<QDialog> makeProgress()
{
    return std::make_unique<ProgressDialog>(ProgressTexts{text("x"), text("x"), text("Interrompi")},
                                            10, nullptr);
}

const QHash<QString, std::unique_ptr<QDialog> (*)()> makers{
    {text("about"), make<AboutDialog>},    {text("backup"), make<BackupDialog>},
    {text("edit"), make<DataEditDialog>},  {text("help"), make<HelpDialog>},
    {text("index"), make<IndexDialog>},    {text("list"), make<SongsListDialog>},
    {text("progress"), makeProgress},      {text("question"), make<NoCopyrightDialog>},
    {text("summary"), make<ProceedDialog>}};

void browse(const QDialog &dialog, const char *button, const QString &folder)
{
    DialogDriver driver;
    driver.chooseFiles({folder});
    click(dialog, button);
    QCOMPARE(driver.problems(), QString());
}

Act clicking(const char *button)
{
    return [button](QDialog &dialog) { click(dialog, button); };
}

Act pressing(Qt::Key key, const QString &field = QString())
{
    return [key, field](QDialog &dialog) {
        if (!field.isEmpty())
            dialog.findChild<QWidget *>(field)->setFocus();
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
    void init() { QSettings(text("kvaro"), text("tarvel4soft")).clear(); }

    void texts_data();
    void texts();
    void sizes_data();
    void sizes();
    void results_data();
    void results();
    void tabGoesFromTopToBottom_data();
    void tabGoesFromTopToBottom();
    void captionsLeadToTheirFields_data();
    void captionsLeadToTheirFields();
    void folderChoices_data();
    void folderChoices();
};

void tst_Dialogs::texts_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("italian");
    QTest::addColumn<QString>("english");
    for (const FormText &row : formTexts)
        QTest::addRow("%s %s", row.dialog, row.widget)
            << text(row.dialog) << text(row.widget) << text(row.italian) << text(row.english);
}

void tst_Dialogs::texts()
{
    QFETCH(QString, dialog);
    QFETCH(QString, widget);
    const auto shown = [&] {
        const auto made = makers[dialog]();
        return widget.isEmpty() ? made->windowTitle()
                                : made->findChild<QWidget *>(widget)->property("text").toString();
    };
    QTEST(shown(), "italian");
    QTranslator translator;
    Appearance::installLanguage(translator, text("en"));
    QTEST(shown(), "english");
}

void tst_Dialogs::sizes_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("language");
    for (const QString &dialog : makers.keys()) {
        for (const QString &language : strings({"it", "en"}))
            QTest::newRow(qPrintable(dialog + QLatin1Char(' ') + language)) << dialog << language;
    }
}

/** No dialog is larger than a small screen, and none cuts a text, in either language. */
void tst_Dialogs::sizes()
{
    QFETCH(QString, dialog);
    QFETCH(QString, language);
    const QSize room(640, 372); // 1280x800 at 200 %, below a window's title
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

void tst_Dialogs::results_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<Act>("act");
    QTest::addColumn<int>("result");
    const auto row = [](const char *name, const char *dialog, const Act &act, int result) {
        QTest::addRow("%s: %s gives %d", dialog, name, result) << text(dialog) << act << result;
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
    for (const char *field : {"titleLineEdit", "radioButtonTitle1", "checkBoxToAllArtist",
                              "artistComboBox", "genreComboBox", "authorLineEdit", "lenMmLineEdit",
                              "lenSsLineEdit", "keyComboBox", "bpmLineEdit", "savePushButton"})
        row(field, "edit", pressing(Qt::Key_Return, text(field)), 1);
    row("Chiudi", "index", clicking("closePushButton"), 0);
    row("Exit", "list", clicking("exitPushButton"), 0);
    for (const char *dialog : {"about", "help", "backup", "summary", "edit", "index", "list"}) {
        row("Escape", dialog, pressing(Qt::Key_Escape), 0);
        row("closing by the frame", dialog, closeFrame, 0);
    }
    row("Escape, a No,", "question", pressing(Qt::Key_Escape), 2);
    row("closing by the frame, a Si,", "question", closeFrame, 0);
}

void tst_Dialogs::results()
{
    QFETCH(QString, dialog);
    QFETCH(Act, act);
    DialogDriver driver;
    driver.expect<QDialog>(act);
    const auto made = makers[dialog]();
    if (auto *edit = qobject_cast<DataEditDialog *>(made.get())) {
        SongInfo song;
        song.bpm = 95; // two digits, where three fit
        edit->setSong(song);
    }
    QTEST(made->exec(), "result");
    QCOMPARE(driver.problems(), QString());
}

void tst_Dialogs::tabGoesFromTopToBottom_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("enabling");
    QTest::addColumn<QString>("chain");
    const auto row = [](const char *dialog, const char *enabling, const char *chain) {
        QTest::newRow(dialog) << text(dialog) << text(enabling) << text(chain);
    };
    row("backup", "doBackupPushButton",
        "directoryLineEdit browsePushButton doBackupPushButton exitPushButton abortPushButton");
    row("edit", "checkBoxToAllTitle",
        "titleLineEdit radioButtonTitle1 radioButtonTitle2 checkBoxToAllTitle artistComboBox "
        "checkBoxToAllArtist genreComboBox checkBoxToAllGenre authorLineEdit checkBoxToAllAuthor "
        "lenMmLineEdit lenSsLineEdit keyComboBox bpmLineEdit savePushButton exitPushButton");
    row("index", "",
        "pathLineEdit browsePushButton updateRadioButton rebuildRadioButton checkDiskCheckBox "
        "reportPlainTextEdit startPushButton closePushButton");
    row("list", "",
        "sourceLineEdit browseDirPushButton targetLineEdit browseFilePushButton orderComboBox "
        "savePushButton exitPushButton");
    row("question", "", "yesPushButton yesAllPushButton noPushButton noAllPushButton");
    row("summary", "", "checkBoxShowAgain yesPushButton noPushButton");
}

void tst_Dialogs::tabGoesFromTopToBottom()
{
    QFETCH(QString, dialog);
    QFETCH(QString, enabling);
    QFETCH(QString, chain);
    const auto made = makers[dialog]();
    if (!enabling.isEmpty())
        made->findChild<QWidget *>(enabling)->setEnabled(true);
    made->show();
    const QStringList names = chain.split(QLatin1Char(' '));
    QCOMPARE(focusChain(made->findChild<QWidget *>(names.first())), chain);
    int y = 0;
    for (const QString &name : names) {
        const auto *widget = made->findChild<QWidget *>(name);
        const int top = widget->mapTo(made.get(), QPoint(0, 0)).y();
        QVERIFY2(top >= y - widget->height(), qPrintable(name)); // within a row, from left to right
        y = top;
    }
}

void tst_Dialogs::captionsLeadToTheirFields_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("field");
    const auto row = [](const char *dialog, const char *caption, const char *field) {
        QTest::newRow(caption) << text(dialog) << text(field);
    };
    row("edit", "titoloSongLabel", "titleLineEdit");
    row("edit", "interpreteLabel", "artistComboBox");
    row("edit", "genereMusicaleLabel", "genreComboBox");
    row("edit", "autoreLabel", "authorLineEdit");
    row("edit", "durataLabel", "lenMmLineEdit");
    row("edit", "mmLabel", "lenMmLineEdit");
    row("edit", "ssLabel", "lenSsLineEdit");
    row("edit", "tonalitaLabel", "keyComboBox");
    row("edit", "bpmLabel", "bpmLineEdit");
    row("index", "pathLabel", "pathLineEdit");
    row("index", "actionLabel", "updateRadioButton");
    row("index", "reportLabel", "reportPlainTextEdit");
    row("list", "sourceLabel", "sourceLineEdit");
    row("list", "targetLabel", "targetLineEdit");
    row("list", "orderLabel", "orderComboBox");
}

void tst_Dialogs::captionsLeadToTheirFields()
{
    QFETCH(QString, dialog);
    const auto made = makers[dialog]();
    const QWidget *buddy = child<QLabel>(*made, QTest::currentDataTag())->buddy();
    QVERIFY(buddy);
    QTEST(buddy->objectName(), "field");
}

void tst_Dialogs::folderChoices_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("isStored");
    const QByteArray button("browsePushButton");
    QTest::newRow("of a backup") << text("backup") << button << text("directoryLineEdit") << false;
    QTest::newRow("to index") << text("index") << button << text("pathLineEdit") << true;
    QTest::newRow("of a list") << text("list") << QByteArray("browseDirPushButton")
                               << text("sourceLineEdit") << true;
}

void tst_Dialogs::folderChoices()
{
    QFETCH(QString, dialog);
    QFETCH(QByteArray, button);
    QFETCH(QString, field);
    QFETCH(bool, isStored);
    const QTemporaryDir folder;
    const QString link = folder.filePath(QString(200, QLatin1Char('x'))); // stretches no dialog
    QVERIFY(QFile::link(folder.path(), link));
    const auto made = makers[dialog]();
    made->show();
    const auto *edit = made->findChild<QLineEdit *>(field);
    const int width = made->sizeHint().width();
    for (const QString &chosen : {QString(), link, link}) {
        DialogDriver driver;
        driver.expect<QFileDialog>([](QFileDialog &chooser) {
            QCOMPARE(chooser.windowTitle(), text("Scegli cartella"));
            QCOMPARE(chooser.directory().path(), text("/home"));
            QVERIFY(chooser.testOption(QFileDialog::ShowDirsOnly));
            QVERIFY(chooser.testOption(QFileDialog::DontResolveSymlinks));
            chooser.close(); // which keeps what was chosen before
        });
        click(*made, button.constData());
        QCOMPARE(driver.problems(), QString());
        QCOMPARE(edit->text(), chosen);
        QCOMPARE(QSettings(text("kvaro"), text("tarvel4soft")).value(text("mediaroot")).toString(),
                 isStored ? chosen : QString());
        browse(*made, button.constData(), link);
    }
    QCOMPARE(made->sizeHint().width(), width);
}

QTEST_MAIN(tst_Dialogs)
#include "tst_dialogs.moc"
