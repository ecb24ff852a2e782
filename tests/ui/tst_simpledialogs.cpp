#include "tests/storage/table.h"
#include "tests/ui/dialogdriver.h"
#include "ui/aboutdialog.h"
#include "ui/appearance.h"
#include "ui/backupdialog.h"
#include "ui/helpdialog.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextBrowser>
#include <QTextDocument>

using namespace tarvel4;

namespace {

/** The language of the page that is shown, or "" where there is none. */
QString languageOf(const QDialog &help)
{
    const QString page = help.findChild<QTextBrowser *>()->toPlainText();
    if (page.isEmpty())
        return QString();
    const bool isItalian = page.contains(text("prepara le tue basi musicali"));
    const bool isEnglish = page.contains(text("your backing tracks"));
    return isItalian == isEnglish ? text("?") : text(isItalian ? "it" : "en");
}

} // namespace

/** What each of the simple dialogs has of its own: about, help, backup, question, summary. */
class tst_SimpleDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { settings().clear(); }

    void aboutTexts_data()
    {
        const Table<QStringList, QString> row;
        row("versionLabel",
            strings(
                {"Version:&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp; 1.0<br/>Build date: ", "<br/></p>"}),
            "^Version:\\s+1\\.0\nBuild date: [\\d/.-]+\n$");
        row("copyrightLabel",
            strings({"<a href=\"https://www.k-varo.example/\">K-Varo</a>", "<a href=\"mailto:"}),
            "^Copyright © 2026 K-Varo\\. Tutti i diritti riservati\\.\nAssistenza: .+$");
    }
    void aboutTexts()
    {
        auto [parts, plain] = cells<QStringList, QString>();
        const AboutDialog dialog;
        const QString html = child<QLabel>(dialog, QTest::currentDataTag())->text();
        parts += strings({"<meta name=\"qrichtext\" content=\"1\" />", "white-space: pre-wrap",
                          "font-family:'Sans Serif'", "font-size:12pt", "font-weight:400",
                          "font-style:normal", "margin-top:0px", "margin-bottom:0px",
                          "margin-left:0px", "margin-right:0px"});
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

    void buildDates_data()
    {
        const Table<QString, QString, QString> row;
        row("a day of one digit is padded with a blank", "Dec  9 2016", "it_IT", "09/12/16");
        row("English months are read in a German system", "Oct  1 2026", "de_DE", "01.10.26");
        row("an American date of two digits", "May 31 2026", "en_US", "5/31/26");
    }
    void buildDates()
    {
        const auto [compilerDate, locale, shown] = cells<QString, QString, QString>();
        QCOMPARE(AboutDialog::buildDate(compilerDate, QLocale(locale)), shown);
    }

    void helpPages_data()
    {
        const Table<QString, QString> row;
        row("a missing setting shows the Italian page", QString(), "it");
        row("it shows the Italian page", "it", "it");
        row("en shows the English page", "en", "en");
        row("de shows the English page", "de", "en");
        row("IT is not exactly it", "IT", "en");
    }
    void helpPages()
    {
        const auto [setting, page] = cells<QString, QString>();
        if (!setting.isNull())
            settings().setValue(text("language"), setting);
        const HelpDialog dialog;
        QCOMPARE(dialog.findChild<QTextBrowser *>()->documentTitle(), text("Tarvel4 Soft - help"));
        QCOMPARE(languageOf(dialog), page);
    }

    void languageChangeReloadsTheHelp()
    {
        QTranslator translator;
        HelpDialog dialog;
        dialog.show();
        for (const QString &language : strings({"en", "it"})) {
            settings().setValue(text("language"), language);
            Appearance::installLanguage(translator, language);
            QTRY_COMPARE(languageOf(dialog), language);
            QCOMPARE(dialog.windowTitle(),
                     text(language == text("en") ? "Tarvel4 Soft help" : "Aiuto Tarvel4 Soft"));
        }
    }

    void missingHelpPagesLeaveTheViewEmpty()
    {
        Q_CLEANUP_RESOURCE(ui);
        const QString language = languageOf(HelpDialog());
        Q_INIT_RESOURCE(ui);
        QCOMPARE(language, QString());
    }

    void contentsOfTheHelpLeadToTheirPlaces()
    {
        HelpDialog dialog;
        dialog.resize(500, 300);
        dialog.show();
        auto *view = dialog.findChild<QTextBrowser *>();
        QCOMPARE(view->verticalScrollBar()->value(), 0);
        view->setSource(QUrl(text("#trasferisci")));
        QVERIFY(view->verticalScrollBar()->value() > 0);
        QCOMPARE(languageOf(dialog), text("it"));
    }

    void helpHasAComfortableSize()
    {
        HelpDialog dialog;
        dialog.show();
        const QSize screen = dialog.screen()->availableSize();
        QCOMPARE(dialog.size().boundedTo(screen), dialog.size());
        QVERIFY(dialog.height() >= qMin(400, screen.height() / 2));
    }

    void backupNeedsAFolder()
    {
        const QTemporaryDir folder;
        BackupDialog dialog;
        dialog.show();
        QVERIFY(child<QLineEdit>(dialog, "directoryLineEdit")->isReadOnly());
        QCOMPARE(dialog.focusWidget(), child(dialog, "browsePushButton"));
        const auto browse = [&dialog](const QString &chosen) {
            DialogDriver driver;
            if (chosen.isEmpty())
                driver.closeFrame<QFileDialog>();
            else
                driver.chooseFiles({chosen});
            click(dialog, "browsePushButton");
        };
        QString kept;
        for (const QString &chosen : {QString(), folder.path(), QString()}) {
            QCOMPARE(dialog.backupDir(), kept);
            QCOMPARE(child(dialog, "doBackupPushButton")->isEnabled(), !kept.isEmpty());
            browse(chosen); // choosing no folder changes nothing
            if (!chosen.isEmpty()) {
                kept = chosen;
                QCOMPARE(dialog.focusWidget(), child(dialog, "doBackupPushButton"));
            }
        }
        QCOMPARE(dialog.backupDir(), folder.path());
        QVERIFY(child(dialog, "doBackupPushButton")->isEnabled());
    }

    void questionNamesTheFile_data()
    {
        const Table<QString> row;
        row("what looks like HTML is shown as it is", "<b>a</b>&amp;.mid");
        row("a mark for a mnemonic is shown as it is", "Rock&Roll.mid");
        row("a name of 250 characters without a blank", QString(250, QLatin1Char('W')));
        row("a name with a line break", "a\nb\nc\nd\ne\nf.mid");
        row("an empty name", "");
    }
    void questionNamesTheFile()
    {
        const auto [name] = cells<QString>();
        NoCopyrightDialog plain;
        QVERIFY2(child(plain, "comparisonWidget")->isHidden(), "there is nothing to compare");
        plain.setFileName(text("song.mid"));
        NoCopyrightDialog dialog;
        dialog.setFileName(name);
        dialog.setMessage(text("esiste già, vuoi sostituirlo?"));
        dialog.show();
        QCOMPARE(child<QLabel>(dialog, "fileNameLabel")->text(), name);
        QCOMPARE(child<QLabel>(dialog, "messageLabel")->text(),
                 text("esiste già, vuoi sostituirlo?"));
        for (const char *label : {"fileNameLabel", "messageLabel"})
            QCOMPARE(child<QLabel>(dialog, label)->textFormat(), Qt::PlainText);
        QVERIFY(dialog.width() <= 800);
        plain.setMessage(text("esiste già, vuoi sostituirlo?"));
        QCOMPARE(dialog.sizeHint().height(), plain.sizeHint().height());
    }

    void summaries_data()
    {
        const Table<int, int, int, QString> row;
        row("10 songs, 3 by the maker, and 2 unrecognised files put 12, 10 and 3", 10, 3, 2,
            "Sono stati esaminti 12 files, trovate 10 songs di cui 3 di (c)K-Varo");
        row("large numbers are plain", 1234567, 1000, 1,
            "Sono stati esaminti 1234568 files, trovate 1234567 songs di cui 1000 di (c)K-Varo");
    }
    void summaries()
    {
        const auto [songs, makers, unknown, summary] = cells<int, int, int, QString>();
        QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy)); // separates no thousands
        const auto systems = qScopeGuard([] { QLocale::setDefault(QLocale::system()); });
        ProceedDialog dialog;
        dialog.setSummary(songs, makers, unknown);
        QCOMPARE(child<QLabel>(dialog, "msgLabel")->text(), summary);
    }

    void tickedBoxShowsNoMore()
    {
        ProceedDialog dialog;
        dialog.show();
        QVERIFY(dialog.showAgain());
        click(dialog, "checkBoxShowAgain");
        QVERIFY(!dialog.showAgain());
        QTest::keyClick(child(dialog, "checkBoxShowAgain"), Qt::Key_Space);
        QVERIFY(dialog.showAgain());
    }

    void filesThatWereNotReadAreShownOnDemand()
    {
        ProceedDialog dialog;
        dialog.show();
        auto *show = child<QPushButton>(dialog, "problemsPushButton");
        auto *list = child<QPlainTextEdit>(dialog, "problemsTextEdit");
        QVERIFY(!show->isVisible() && !list->isVisible());

        dialog.setProblems(strings({"a.mid: <b>x</b>", "b.mid: y"}));
        QVERIFY(show->isVisible() && !list->isVisible());
        show->click();
        QVERIFY(list->isVisible() && list->isReadOnly());
        QCOMPARE(list->toPlainText(), text("a.mid: <b>x</b>\nb.mid: y"));
        constexpr int smallScreen = 372;
        QVERIFY2(dialog.height() <= smallScreen, qPrintable(QString::number(dialog.height())));
        show->click();
        QVERIFY(!list->isVisible());
    }
};

QTEST_MAIN(tst_SimpleDialogs)
#include "tst_simpledialogs.moc"
