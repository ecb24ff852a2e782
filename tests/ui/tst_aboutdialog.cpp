#include "tests/ui/dialogdriver.h"
#include "ui/aboutdialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTextDocument>

using namespace tarvel4;

class tst_AboutDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheProgram();
    void versionLabelShowsVersionAndDate();
    void copyrightLabelLinksMakerAndSupport();
    void frames_data();
    void frames();
    void buildDates_data();
    void buildDates();
    void closes_data();
    void closes();

private:
    static QString labelText(const AboutDialog &dialog, const QString &name)
    {
        return dialog.findChild<QLabel *>(name)->text();
    }
    static QString plain(const QString &html)
    {
        QTextDocument document;
        document.setHtml(html);
        return document.toPlainText();
    }
};

void tst_AboutDialog::namesTheProgram()
{
    const AboutDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Informazioni"));
    QCOMPARE(labelText(dialog, QStringLiteral("titleLabel")), QStringLiteral("Tarvel4 Soft"));
}

void tst_AboutDialog::versionLabelShowsVersionAndDate()
{
    const QString html = labelText(AboutDialog(), QStringLiteral("versionLabel"));
    QVERIFY2(html.contains(QLatin1String("Version:&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp; 1.0<br/>"
                                         "Build date: ")),
             qPrintable(html));
    QVERIFY(html.endsWith(QLatin1String("<br/></p></body></html>")));
    const QStringList lines = plain(html).split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 3);
    const QString date = lines.at(1).mid(int(qstrlen("Build date: ")));
    QVERIFY2(QLocale::system().toDate(date, QLocale::ShortFormat).isValid(), qPrintable(date));
}

void tst_AboutDialog::copyrightLabelLinksMakerAndSupport()
{
    const AboutDialog dialog;
    const QString html = labelText(dialog, QStringLiteral("copyrightLabel"));
    QVERIFY(html.contains(QLatin1String("<a href=\"https://www.k-varo.example/\">K-Varo</a>")));
    QVERIFY(html.contains(QLatin1String("<a href=\"mailto:")));
    const QStringList lines = plain(html).split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines.at(1).startsWith(QLatin1String("Assistenza: ")));
    QVERIFY(dialog.findChild<QLabel *>(QStringLiteral("copyrightLabel"))->openExternalLinks());
}

void tst_AboutDialog::frames_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("version") << QStringLiteral("versionLabel");
    QTest::newRow("copyright") << QStringLiteral("copyrightLabel");
}

void tst_AboutDialog::frames()
{
    QFETCH(QString, label);
    const QString html = labelText(AboutDialog(), label);
    for (const char *part :
         {"<meta name=\"qrichtext\" content=\"1\" />", "white-space: pre-wrap",
          "font-family:'Sans Serif'", "font-size:12pt", "font-weight:400", "font-style:normal",
          "margin-top:0px", "margin-bottom:0px", "margin-left:0px", "margin-right:0px"})
        QVERIFY2(html.contains(QLatin1String(part)), part);
    QVERIFY(html.startsWith(QLatin1String("<html><head>")));
    QVERIFY(html.endsWith(QLatin1String("</p></body></html>")));
    QCOMPARE(html.count(QLatin1String("<p ")), 1);
}

void tst_AboutDialog::buildDates_data()
{
    QTest::addColumn<QString>("compilerDate");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a day of one digit is padded with a blank")
        << QStringLiteral("Dec  9 2016") << QLocale(QLocale::Italian) << QStringLiteral("09/12/16");
    QTest::newRow("a day of two digits")
        << QStringLiteral("Nov 21 2026") << QLocale(QLocale::Italian) << QStringLiteral("21/11/26");
    QTest::newRow("English months are read in a German system")
        << QStringLiteral("Oct  1 2026") << QLocale(QLocale::German) << QStringLiteral("01.10.26");
    QTest::newRow("an American date")
        << QStringLiteral("May 31 2026") << QLocale(QStringLiteral("en_US"))
        << QStringLiteral("5/31/26");
}

void tst_AboutDialog::buildDates()
{
    QFETCH(QString, compilerDate);
    QFETCH(QLocale, locale);
    QFETCH(QString, shown);
    QCOMPARE(AboutDialog::buildDate(compilerDate, locale), shown);
}

void tst_AboutDialog::closes_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Escape") << int(Qt::Key_Escape);
}

void tst_AboutDialog::closes()
{
    QFETCH(int, key);
    DialogDriver driver;
    driver.expect<AboutDialog>(
        [key](AboutDialog &dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key(key)); });
    AboutDialog().exec();
    QCOMPARE(driver.problems(), QString());
}

QTEST_MAIN(tst_AboutDialog)
#include "tst_aboutdialog.moc"
