#include "tests/ui/dialogdriver.h"
#include "tests/ui/focuschain.h"
#include "ui/nocopyrightdialog.h"

#include <QLabel>
#include <QPushButton>

using namespace tarvel4;

using Act = std::function<void(NoCopyrightDialog &)>;
Q_DECLARE_METATYPE(Act)

class tst_NoCopyrightDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksWithItsTexts();
    void results_data();
    void results();
    void questionCanBeReplaced();
    void fileNames_data();
    void fileNames();
    void tabGoesFromLeftToRight();

private:
    static QPushButton *button(const QDialog &dialog, const char *name)
    {
        return dialog.findChild<QPushButton *>(QLatin1String(name));
    }
    static QLabel *label(const QDialog &dialog, const char *name)
    {
        return dialog.findChild<QLabel *>(QLatin1String(name));
    }
};

void tst_NoCopyrightDialog::asksWithItsTexts()
{
    const NoCopyrightDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Richiesta conferma"));
    QCOMPARE(label(dialog, "captionLabel")->text(), QStringLiteral("Il file:"));
    QCOMPARE(label(dialog, "fileNameLabel")->text(), QStringLiteral("TextLabel"));
    QCOMPARE(label(dialog, "messageLabel")->text(),
             QStringLiteral("Non è stato pubblicato da K-Varo. Si vuole procedere comunque con le "
                            "modifiche?"));
    QCOMPARE(button(dialog, "yesPushButton")->text(), QStringLiteral("Si"));
    QCOMPARE(button(dialog, "yesAllPushButton")->text(), QStringLiteral("Si tutti"));
    QCOMPARE(button(dialog, "noPushButton")->text(), QStringLiteral("No"));
    QCOMPARE(button(dialog, "noAllPushButton")->text(), QStringLiteral("No tutti"));
}

void tst_NoCopyrightDialog::results_data()
{
    const auto click = [](const char *name) {
        return Act([name](NoCopyrightDialog &dialog) {
            QTest::mouseClick(button(dialog, name), Qt::LeftButton);
        });
    };
    const auto press = [](Qt::Key key) {
        return Act(
            [key](NoCopyrightDialog &dialog) { QTest::keyClick(dialog.focusWidget(), key); });
    };
    QTest::addColumn<Act>("act");
    QTest::addColumn<int>("result");
    QTest::newRow("\"Si\" gives 0") << click("yesPushButton") << 0;
    QTest::newRow("\"Si tutti\" gives 1") << click("yesAllPushButton") << 1;
    QTest::newRow("\"No\" gives 2") << click("noPushButton") << 2;
    QTest::newRow("\"No tutti\" gives 3") << click("noAllPushButton") << 3;
    QTest::newRow("closing with the window's close button answers as \"Si\" (0)")
        << Act([](NoCopyrightDialog &dialog) { dialog.close(); }) << 0;
    QTest::newRow("Escape is \"No\" (2)") << press(Qt::Key_Escape) << 2;
    QTest::newRow("a stray Enter changes no song") << press(Qt::Key_Return) << 2;
    QTest::newRow("a stray blank changes no song") << press(Qt::Key_Space) << 2;
}

void tst_NoCopyrightDialog::results()
{
    QFETCH(Act, act);
    QFETCH(int, result);
    DialogDriver driver;
    driver.expect<NoCopyrightDialog>(act);
    NoCopyrightDialog dialog;
    QCOMPARE(dialog.exec(), result);
    QCOMPARE(driver.problems(), QString());
}

void tst_NoCopyrightDialog::questionCanBeReplaced()
{
    NoCopyrightDialog dialog;
    dialog.setMessage(QStringLiteral("esiste già, vuoi sostituirlo?"));
    QCOMPARE(label(dialog, "messageLabel")->text(),
             QStringLiteral("esiste già, vuoi sostituirlo?"));
    QCOMPARE(label(dialog, "messageLabel")->textFormat(), Qt::PlainText);
}

void tst_NoCopyrightDialog::fileNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("an ordinary name") << QStringLiteral("song.mid");
    QTest::newRow("what looks like HTML is shown as it is") << QStringLiteral("<b>a</b>&amp;.mid");
    QTest::newRow("a mark for a mnemonic is shown as it is") << QStringLiteral("Rock&Roll.mid");
    QTest::newRow("a name of 250 characters without a blank")
        << QString(250, QLatin1Char('W')) + QStringLiteral(".mid");
    QTest::newRow("a name with a line break") << QStringLiteral("a\nb\nc\nd\ne\nf.mid");
    QTest::newRow("an empty name") << QString(QLatin1String(""));
}

void tst_NoCopyrightDialog::fileNames()
{
    QFETCH(QString, name);
    NoCopyrightDialog plain;
    plain.setFileName(QStringLiteral("song.mid"));
    NoCopyrightDialog dialog;
    dialog.setFileName(name);
    dialog.show();
    QCOMPARE(label(dialog, "fileNameLabel")->text(), name);
    QCOMPARE(label(dialog, "fileNameLabel")->textFormat(), Qt::PlainText);
    QVERIFY(dialog.width() <= 800);
    QCOMPARE(dialog.sizeHint().height(), plain.sizeHint().height());
}

void tst_NoCopyrightDialog::tabGoesFromLeftToRight()
{
    NoCopyrightDialog dialog;
    dialog.show();
    QCOMPARE(focusChain(button(dialog, "yesPushButton")),
             QStringList({QStringLiteral("yesPushButton"), QStringLiteral("yesAllPushButton"),
                          QStringLiteral("noPushButton"), QStringLiteral("noAllPushButton")}));
}

QTEST_MAIN(tst_NoCopyrightDialog)
#include "tst_nocopyrightdialog.moc"
