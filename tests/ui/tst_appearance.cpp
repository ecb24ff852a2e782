#include "ui/appearance.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QtTest>

using namespace tarvel4;

class tst_Appearance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void languages_data();
    void languages();
    void styleSheets_data();
    void styleSheets();
    void buttonsKeepTheirFontInEveryState();
    void linksHaveAColourOfThePalette();
};

void tst_Appearance::languages_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("word");
    QTest::newRow("it is Italian") << QStringLiteral("it") << QStringLiteral("Aiuto");
    QTest::newRow("en is English") << QStringLiteral("en") << QStringLiteral("Help");
    QTest::newRow("de is English too") << QStringLiteral("de") << QStringLiteral("Help");
    QTest::newRow("anything else is English") << QStringLiteral("fr") << QStringLiteral("Help");
}

void tst_Appearance::languages()
{
    QFETCH(QString, language);
    QFETCH(QString, word);
    QTranslator translator;
    Appearance::installLanguage(translator, language);
    QCOMPARE(QCoreApplication::translate("tarvel4::MainWindow", "Aiuto"), word);

    Appearance::installLanguage(translator, QStringLiteral("it"));
    QCOMPARE(QCoreApplication::translate("tarvel4::MainWindow", "Aiuto"), QStringLiteral("Aiuto"));
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Annulla"));
}

void tst_Appearance::styleSheets_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("style");
    QTest::newRow("the whole file") << QByteArray("QLabel{}") << QStringLiteral("QLabel{}");
    QTest::newRow("up to the first zero byte")
        << QByteArray("QLabel{}\0rubbish", 16) << QStringLiteral("QLabel{}");
    QTest::newRow("as Latin-1") << QByteArray("/*\xe8*/")
                                << QStringLiteral("/*") + QChar(0xe8) + QStringLiteral("*/");
    QTest::newRow("an empty file") << QByteArray() << QString();
}

void tst_Appearance::styleSheets()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, style);
    QTemporaryFile file;
    QVERIFY(file.open());
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
    file.close();
    qApp->setStyleSheet(QString());

    Appearance::applyStyleSheet(file.fileName());
    QCOMPARE(qApp->styleSheet(), style);

    Appearance::applyStyleSheet(file.fileName() + QStringLiteral(".missing"));
    QCOMPARE(qApp->styleSheet(), style);
}

/** A button is measured in its plain state: a wider font in another one would cut its text. */
void tst_Appearance::buttonsKeepTheirFontInEveryState()
{
    QFile file(QStringLiteral(":/style/default.qss"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString style = QString::fromLatin1(file.readAll());
    QVERIFY(style.contains(QLatin1String("QPushButton:default {")));
    const QRegularExpression fontOfAState(QStringLiteral("QPushButton:[^{}]*\\{[^}]*font"));
    const QRegularExpressionMatch found = fontOfAState.match(style);
    QVERIFY2(!found.hasMatch(), qPrintable(found.captured()));
}

void tst_Appearance::linksHaveAColourOfThePalette()
{
    const QPalette before = QApplication::palette();
    Appearance::colourLinks();
    Appearance::applyStyleSheet(QStringLiteral(":/style/default.qss"));
    QVERIFY(qApp->styleSheet().contains(QLatin1String("#0b7285")));
    QLabel label(QStringLiteral("<a href=\"x\">link</a>"));
    QCOMPARE(label.palette().color(QPalette::Link), QColor(QStringLiteral("#0b7285")));
    QTextDocument page;
    page.setHtml(label.text());
    QCOMPARE(page.begin().begin().fragment().charFormat().foreground().color(),
             QColor(QStringLiteral("#0b7285")));
    qApp->setStyleSheet(QString());
    QApplication::setPalette(before);
}

QTEST_MAIN(tst_Appearance)
#include "tst_appearance.moc"
