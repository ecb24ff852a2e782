#include "tests/library/texts.h"
#include "tests/ui/dialogdriver.h"
#include "tests/ui/forms.h"
#include "ui/aboutdialog.h"
#include "ui/appearance.h"
#include "ui/backupdialog.h"
#include "ui/helpdialog.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTranslator>

using namespace tarvel4;

/** What each of the simple dialogs has of its own: about, help, backup, question, summary. */
class tst_SimpleDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { settings().clear(); }

    void aboutTexts_data();
    void aboutTexts();
    void buildDates_data();
    void buildDates();
    void helpPages_data();
    void helpPages();
    void languageChangeReloadsTheHelp();
    void missingHelpPagesLeaveTheViewEmpty();
    void contentsOfTheHelpLeadToTheirPlaces();
    void helpHasAComfortableSize();
    void backupStartsWithoutAFolder();
    void chosenFolderEnablesTheBackup();
    void questionNamesTheFile_data();
    void questionNamesTheFile();
    void questionCanBeReplaced();
    void summaries();
    void tickedBoxShowsNoMore();
    void filesThatWereNotReadAreShownOnDemand();

private:
    static QSettings settings() { return QSettings(text("kvaro"), text("tarvel4soft")); }
    static QString pageOf(const QDialog &dialog)
    {
        return dialog.findChild<QTextBrowser *>()->toPlainText();
    }
    static bool isItalian(const QDialog &dialog)
    {
        return pageOf(dialog).contains(text("prepara le tue basi musicali"));
    }
    static bool isEnglish(const QDialog &dialog)
    {
        return pageOf(dialog).contains(text("your backing tracks"));
    }
};

void tst_SimpleDialogs::aboutTexts_data()
{
    QTest::addColumn<QStringList>("parts");
    QTest::addColumn<QString>("plain");
    QTest::newRow("versionLabel") << strings(
        {"Version:&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp; 1.0<br/>Build date: ", "<br/></p>"})
                                  << text("^Version:\\s+1\\.0\nBuild date: [\\d/.-]+\n$");
    QTest::newRow("copyrightLabel")
        << strings({"<a href=\"https://www.k-varo.example/\">K-Varo</a>", "<a href=\"mailto:"})
        << text("^Copyright © 2026 K-Varo\\. Tutti i diritti riservati\\.\nAssistenza: .+$");
}

void tst_SimpleDialogs::aboutTexts()
{
    QFETCH(QStringList, parts);
    QFETCH(QString, plain);
    const AboutDialog dialog;
    const auto *label = child<QLabel>(dialog, QTest::currentDataTag());
    const QString html = label->text();
    parts += strings({"<meta name=\"qrichtext\" content=\"1\" />", "white-space: pre-wrap",
                      "font-family:'Sans Serif'", "font-size:12pt", "font-weight:400",
                      "font-style:normal", "margin-top:0px", "margin-bottom:0px", "margin-left:0px",
                      "margin-right:0px"});
    for (const QString &part : qAsConst(parts))
        QVERIFY2(html.contains(part), qPrintable(part));
    QVERIFY(html.startsWith(text("<html><head>")) && html.endsWith(text("</p></body></html>")));
    QCOMPARE(html.count(text("<p ")), 1);
    QTextDocument document;
    document.setHtml(html);
    QVERIFY2(QRegularExpression(plain).match(document.toPlainText()).hasMatch(),
             qPrintable(document.toPlainText()));
    QVERIFY(child<QLabel>(dialog, "copyrightLabel")->openExternalLinks());
}

void tst_SimpleDialogs::buildDates_data()
{
    QTest::addColumn<QString>("compilerDate");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const char *date, const char *locale, const char *shown) {
        QTest::newRow(name) << text(date) << text(locale) << text(shown);
    };
    row("a day of one digit is padded with a blank", "Dec  9 2016", "it_IT", "09/12/16");
    row("English months are read in a German system", "Oct  1 2026", "de_DE", "01.10.26");
    row("an American date of two digits", "May 31 2026", "en_US", "5/31/26");
}

void tst_SimpleDialogs::buildDates()
{
    QFETCH(QString, compilerDate);
    QFETCH(QString, locale);
    QTEST(AboutDialog::buildDate(compilerDate, QLocale(locale)), "shown");
}

void tst_SimpleDialogs::helpPages_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("italian");
    QTest::newRow("a missing setting shows the Italian page") << QString() << true;
    QTest::newRow("it shows the Italian page") << text("it") << true;
    QTest::newRow("en shows the English page") << text("en") << false;
    QTest::newRow("de shows the English page") << text("de") << false;
    QTest::newRow("IT is not exactly it") << text("IT") << false;
}

void tst_SimpleDialogs::helpPages()
{
    QFETCH(QString, language);
    QFETCH(bool, italian);
    if (!language.isNull())
        settings().setValue(text("language"), language);
    const HelpDialog dialog;
    QCOMPARE(dialog.findChild<QTextBrowser *>()->documentTitle(), text("Tarvel4 Soft - help"));
    QCOMPARE(isItalian(dialog), italian);
    QCOMPARE(isEnglish(dialog), !italian);
}

void tst_SimpleDialogs::languageChangeReloadsTheHelp()
{
    QTranslator translator;
    HelpDialog dialog;
    dialog.show();
    settings().setValue(text("language"), text("en"));
    Appearance::installLanguage(translator, text("en"));
    QTRY_VERIFY(isEnglish(dialog));
    QCOMPARE(dialog.windowTitle(), text("Tarvel4 Soft help"));

    settings().setValue(text("language"), text("it"));
    Appearance::installLanguage(translator, text("it"));
    QTRY_VERIFY(isItalian(dialog));
    QCOMPARE(dialog.windowTitle(), text("Aiuto Tarvel4 Soft"));
}

void tst_SimpleDialogs::missingHelpPagesLeaveTheViewEmpty()
{
    Q_CLEANUP_RESOURCE(ui);
    const QString page = pageOf(HelpDialog());
    Q_INIT_RESOURCE(ui);
    QCOMPARE(page, QString());
}

void tst_SimpleDialogs::contentsOfTheHelpLeadToTheirPlaces()
{
    HelpDialog dialog;
    dialog.resize(500, 300);
    dialog.show();
    auto *view = dialog.findChild<QTextBrowser *>();
    QCOMPARE(view->verticalScrollBar()->value(), 0);
    view->setSource(QUrl(text("#trasferisci")));
    QVERIFY(view->verticalScrollBar()->value() > 0);
    QVERIFY(isItalian(dialog));
}

void tst_SimpleDialogs::helpHasAComfortableSize()
{
    HelpDialog dialog;
    dialog.show();
    const QSize screen = dialog.screen()->availableSize();
    QCOMPARE(dialog.size().boundedTo(screen), dialog.size());
    QVERIFY(dialog.height() >= qMin(400, screen.height() / 2));
}

void tst_SimpleDialogs::backupStartsWithoutAFolder()
{
    BackupDialog dialog;
    dialog.show();
    QVERIFY(child<QLineEdit>(dialog, "directoryLineEdit")->isReadOnly());
    QCOMPARE(dialog.focusWidget(), child(dialog, "browsePushButton"));
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(dialog.backupDir(), QString());
        QVERIFY(!child(dialog, "doBackupPushButton")->isEnabled());
        DialogDriver driver; // choosing no folder changes nothing
        driver.closeFrame<QFileDialog>();
        click(dialog, "browsePushButton");
        QCOMPARE(driver.problems(), QString());
    }
}

void tst_SimpleDialogs::chosenFolderEnablesTheBackup()
{
    const QTemporaryDir folder;
    BackupDialog dialog;
    dialog.show();
    DialogDriver driver;
    driver.chooseFiles({folder.path()});
    driver.closeFrame<QFileDialog>(); // the second choice is cancelled
    click(dialog, "browsePushButton");
    QCOMPARE(dialog.focusWidget(), child(dialog, "doBackupPushButton"));
    click(dialog, "browsePushButton");
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(dialog.backupDir(), folder.path());
    QVERIFY(child(dialog, "doBackupPushButton")->isEnabled());
}

void tst_SimpleDialogs::questionNamesTheFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("what looks like HTML is shown as it is") << text("<b>a</b>&amp;.mid");
    QTest::newRow("a mark for a mnemonic is shown as it is") << text("Rock&Roll.mid");
    QTest::newRow("a name of 250 characters without a blank") << QString(250, QLatin1Char('W'));
    QTest::newRow("a name with a line break") << text("a\nb\nc\nd\ne\nf.mid");
    QTest::newRow("an empty name") << text("");
}

void tst_SimpleDialogs::questionNamesTheFile()
{
    QFETCH(QString, name);
    NoCopyrightDialog plain;
    plain.setFileName(text("song.mid"));
    NoCopyrightDialog dialog;
    dialog.setFileName(name);
    dialog.show();
    const auto *label = child<QLabel>(dialog, "fileNameLabel");
    QCOMPARE(label->text(), name);
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QVERIFY(dialog.width() <= 800);
    QCOMPARE(dialog.sizeHint().height(), plain.sizeHint().height());
}

void tst_SimpleDialogs::questionCanBeReplaced()
{
    NoCopyrightDialog dialog;
    dialog.setMessage(text("esiste già, vuoi sostituirlo?"));
    const auto *label = child<QLabel>(dialog, "messageLabel");
    QCOMPARE(label->text(), text("esiste già, vuoi sostituirlo?"));
    QCOMPARE(label->textFormat(), Qt::PlainText);
}

void tst_SimpleDialogs::summaries()
{
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy)); // separates no thousands
    const auto systems = qScopeGuard([] { QLocale::setDefault(QLocale::system()); });
    const QString summary = text("Sono stati esaminti %1 files, trovate %2 songs di cui %3 di "
                                 "(c)K-Varo");
    ProceedDialog dialog;
    dialog.setSummary(10, 3, 2);
    const auto *label = child<QLabel>(dialog, "msgLabel");
    QCOMPARE(label->text(), summary.arg(text("12"), text("10"), text("3")));
    dialog.setSummary(1234567, 1000, 1);
    QCOMPARE(label->text(), summary.arg(text("1234568"), text("1234567"), text("1000")));
}

void tst_SimpleDialogs::tickedBoxShowsNoMore()
{
    ProceedDialog dialog;
    dialog.show();
    QVERIFY(dialog.showAgain());
    click(dialog, "checkBoxShowAgain");
    QVERIFY(!dialog.showAgain());
    QTest::keyClick(child(dialog, "checkBoxShowAgain"), Qt::Key_Space);
    QVERIFY(dialog.showAgain());
}

void tst_SimpleDialogs::filesThatWereNotReadAreShownOnDemand()
{
    ProceedDialog dialog;
    dialog.show();
    auto *show = child<QPushButton>(dialog, "problemsPushButton");
    auto *list = child<QPlainTextEdit>(dialog, "problemsTextEdit");
    QVERIFY(!show->isVisible() && !list->isVisible());

    dialog.setProblems({text("a.mid: <b>x</b>"), text("b.mid: y")});
    QVERIFY(show->isVisible() && !list->isVisible());
    show->click();
    QVERIFY(list->isVisible() && list->isReadOnly());
    QCOMPARE(list->toPlainText(), text("a.mid: <b>x</b>\nb.mid: y"));
    constexpr int smallScreen = 372;
    QVERIFY2(dialog.height() <= smallScreen, qPrintable(QString::number(dialog.height())));
    show->click();
    QVERIFY(!list->isVisible());
}

QTEST_MAIN(tst_SimpleDialogs)
#include "tst_simpledialogs.moc"
