#include "tests/ui/dialogdriver.h"
#include "tests/ui/focuschain.h"
#include "ui/proceeddialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

using namespace tarvel4;

using Act = std::function<void(ProceedDialog &)>;
Q_DECLARE_METATYPE(Act)

class tst_ProceedDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksWithItsTexts();
    void summaries_data();
    void summaries();
    void results_data();
    void results();
    void tickedBoxShowsNoMore();
    void tabGoesFromTopToBottom();

private:
    static QPushButton *button(const QDialog &dialog, const char *name)
    {
        return dialog.findChild<QPushButton *>(QLatin1String(name));
    }
    static QCheckBox *box(const QDialog &dialog)
    {
        return dialog.findChild<QCheckBox *>(QStringLiteral("checkBoxShowAgain"));
    }
};

void tst_ProceedDialog::asksWithItsTexts()
{
    const ProceedDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Riassunto importazione"));
    QCOMPARE(
        dialog.findChild<QLabel *>(QStringLiteral("questionLabel"))->text(),
        QStringLiteral("Si vuole procedere alla sincronizzazione automatica con il database?"));
    QCOMPARE(box(dialog)->text(), QStringLiteral("Non mostrare più messaggi sul copyright"));
    QCOMPARE(button(dialog, "yesPushButton")->text(), QStringLiteral("Si"));
    QCOMPARE(button(dialog, "noPushButton")->text(), QStringLiteral("No"));
}

void tst_ProceedDialog::summaries_data()
{
    QTest::addColumn<int>("songs");
    QTest::addColumn<int>("makerSongs");
    QTest::addColumn<int>("unknown");
    QTest::addColumn<QString>("text");
    QTest::newRow("10 songs, 3 of them by the maker, and 2 unrecognised files")
        << 10 << 3 << 2
        << QStringLiteral("Sono stati esaminti 12 files, trovate 10 songs di cui 3 di (c)K-Varo");
    QTest::newRow("nothing found")
        << 0 << 0 << 0
        << QStringLiteral("Sono stati esaminti 0 files, trovate 0 songs di cui 0 di (c)K-Varo");
    QTest::newRow("plain decimal numbers, without separators")
        << 1234567 << 1000 << 1
        << QStringLiteral(
               "Sono stati esaminti 1234568 files, trovate 1234567 songs di cui 1000 di (c)K-Varo");
}

void tst_ProceedDialog::summaries()
{
    QFETCH(int, songs);
    QFETCH(int, makerSongs);
    QFETCH(int, unknown);
    QFETCH(QString, text);
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    ProceedDialog dialog;
    dialog.setSummary(songs, makerSongs, unknown);
    QLocale::setDefault(QLocale::system());
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("msgLabel"))->text(), text);
}

void tst_ProceedDialog::results_data()
{
    const auto click = [](const char *name) {
        return Act([name](ProceedDialog &dialog) {
            QTest::mouseClick(button(dialog, name), Qt::LeftButton);
        });
    };
    const auto press = [](Qt::Key key) {
        return Act([key](ProceedDialog &dialog) { QTest::keyClick(dialog.focusWidget(), key); });
    };
    QTest::addColumn<Act>("act");
    QTest::addColumn<int>("result");
    QTest::newRow("\"Si\" gives 1") << click("yesPushButton") << 1;
    QTest::newRow("\"No\" gives 0") << click("noPushButton") << 0;
    QTest::newRow("closing gives 0") << Act([](ProceedDialog &dialog) { dialog.close(); }) << 0;
    QTest::newRow("Escape gives 0") << press(Qt::Key_Escape) << 0;
    QTest::newRow("Enter goes on") << press(Qt::Key_Return) << 1;
}

void tst_ProceedDialog::results()
{
    QFETCH(Act, act);
    QFETCH(int, result);
    DialogDriver driver;
    driver.expect<ProceedDialog>(act);
    ProceedDialog dialog;
    QCOMPARE(dialog.exec(), result);
    QVERIFY(dialog.showAgain());
    QCOMPARE(driver.problems(), QString());
}

void tst_ProceedDialog::tickedBoxShowsNoMore()
{
    ProceedDialog dialog;
    dialog.show();
    QVERIFY(dialog.showAgain());
    QTest::mouseClick(box(dialog), Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, box(dialog)->height() / 2));
    QVERIFY(!dialog.showAgain());
    QTest::keyClick(box(dialog), Qt::Key_Space);
    QVERIFY(dialog.showAgain());
}

void tst_ProceedDialog::tabGoesFromTopToBottom()
{
    ProceedDialog dialog;
    dialog.show();
    QCOMPARE(focusChain(box(dialog)),
             QStringList({QStringLiteral("checkBoxShowAgain"), QStringLiteral("yesPushButton"),
                          QStringLiteral("noPushButton")}));
}

QTEST_MAIN(tst_ProceedDialog)
#include "tst_proceeddialog.moc"
