#include "tests/ui/dialogdriver.h"
#include "ui/appearance.h"
#include "ui/helpdialog.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QTextBrowser>

using namespace tarvel4;

using Act = std::function<void(HelpDialog &)>;
Q_DECLARE_METATYPE(Act)

class tst_HelpDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void pages_data();
    void pages();
    void languageChangeReloadsThePage();
    void missingPagesLeaveTheViewEmpty();
    void contentsLeadToTheirPlaces();
    void fitsTheScreen();
    void closes_data();
    void closes();

private:
    static void setLanguage(const QString &language)
    {
        QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft"))
            .setValue(QStringLiteral("language"), language);
    }
    static QTextBrowser *view(const QDialog &dialog) { return dialog.findChild<QTextBrowser *>(); }
    static bool isItalian(const QDialog &dialog)
    {
        return view(dialog)->toPlainText().contains(QLatin1String("prepara le tue basi musicali"));
    }
    static bool isEnglish(const QDialog &dialog)
    {
        return view(dialog)->toPlainText().contains(QLatin1String("your backing tracks"));
    }
};

void tst_HelpDialog::init()
{
    QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft")).clear();
}

void tst_HelpDialog::pages_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("italian");
    QTest::newRow("a missing setting shows the Italian page") << QString() << true;
    QTest::newRow("it shows the Italian page") << QStringLiteral("it") << true;
    QTest::newRow("en shows the English page") << QStringLiteral("en") << false;
    QTest::newRow("de shows the English page") << QStringLiteral("de") << false;
    QTest::newRow("IT is not exactly it") << QStringLiteral("IT") << false;
    QTest::newRow("anything else shows the English page") << QStringLiteral("--") << false;
}

void tst_HelpDialog::pages()
{
    QFETCH(QString, language);
    QFETCH(bool, italian);
    if (!language.isNull())
        setLanguage(language);
    const HelpDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Aiuto Tarvel4 Soft"));
    QCOMPARE(view(dialog)->documentTitle(), QStringLiteral("Tarvel4 Soft - help"));
    QCOMPARE(isItalian(dialog), italian);
    QCOMPARE(isEnglish(dialog), !italian);
}

void tst_HelpDialog::languageChangeReloadsThePage()
{
    QTranslator translator;
    HelpDialog dialog;
    dialog.show();
    QVERIFY(isItalian(dialog));

    setLanguage(QStringLiteral("en"));
    Appearance::installLanguage(translator, QStringLiteral("en"));
    QTRY_VERIFY(isEnglish(dialog));
    QCOMPARE(dialog.windowTitle(),
             QCoreApplication::translate("tarvel4::HelpDialog", "Aiuto Tarvel4 Soft"));

    setLanguage(QStringLiteral("it"));
    Appearance::installLanguage(translator, QStringLiteral("it"));
    QTRY_VERIFY(isItalian(dialog));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Aiuto Tarvel4 Soft"));
}

void tst_HelpDialog::missingPagesLeaveTheViewEmpty()
{
    Q_CLEANUP_RESOURCE(ui);
    {
        const HelpDialog dialog;
        QCOMPARE(view(dialog)->toPlainText(), QString());
    }
    Q_INIT_RESOURCE(ui);
    QVERIFY(isItalian(HelpDialog()));
}

void tst_HelpDialog::contentsLeadToTheirPlaces()
{
    HelpDialog dialog;
    dialog.resize(500, 300);
    dialog.show();
    QCOMPARE(view(dialog)->verticalScrollBar()->value(), 0);
    view(dialog)->setSource(QUrl(QStringLiteral("#trasferisci")));
    QVERIFY(view(dialog)->verticalScrollBar()->value() > 0);
    QVERIFY(isItalian(dialog));
}

void tst_HelpDialog::fitsTheScreen()
{
    HelpDialog dialog;
    dialog.show();
    const QSize screen = dialog.screen()->availableSize();
    QVERIFY(dialog.width() <= screen.width());
    QVERIFY(dialog.height() <= screen.height());
    QVERIFY(dialog.height() >= qMin(400, screen.height() / 2));
}

void tst_HelpDialog::closes_data()
{
    QTest::addColumn<Act>("act");
    QTest::newRow("Escape") << Act(
        [](HelpDialog &dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape); });
    QTest::newRow("OK") << Act([](HelpDialog &dialog) {
        auto *box = dialog.findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
        QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
}

void tst_HelpDialog::closes()
{
    QFETCH(Act, act);
    DialogDriver driver;
    driver.expect<HelpDialog>(act);
    HelpDialog().exec();
    QCOMPARE(driver.problems(), QString());
}

QTEST_MAIN(tst_HelpDialog)
#include "tst_helpdialog.moc"
