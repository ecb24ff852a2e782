#include "tests/ui/indexdialogfixture.h"

#include <QLabel>

using namespace tarvel4;

/** The disk check before a rebuild, and the dialog meanwhile. */
class tst_IndexDialogCheck : public QObject, private IndexDialogFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void diskChecks_data();
    void diskChecks();
    void pathWithoutADriveSkipsTheCheck();
    void checkIsIgnoredByAnUpdate();
    void checkIsIgnoredWhereItIsNotTicked();
    void nothingIsUsableDuringARun();
    void dialogCantBeClosedDuringACheck_data();
    void dialogCantBeClosedDuringACheck();
};

void tst_IndexDialogCheck::diskChecks_data()
{
    const QString notRun = QStringLiteral("ATTENZIONE|Controllo memoria non eseguito!");
    const QString errorsLeft = QStringLiteral(
        "Controllo memoria|Non è stato possibile correggere gli errori, è necesario formattare la "
        "memoria");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("boxes");
    QTest::newRow("no errors: goes on") << QByteArray("exit 0") << done();
    QTest::newRow("errors fixed: goes on") << QByteArray("exit 1") << done();
    QTest::newRow("errors left: stops without indexing")
        << QByteArray("exit 3") << QStringList(errorsLeft);
    QTest::newRow("not startable: says so and goes on")
        << QByteArray() << QStringList(QStringList(notRun) + done());
    QTest::newRow("never ending: says so and goes on")
        << QByteArray("exec sleep 60") << QStringList(QStringList(notRun) + done());
    QTest::newRow("a question answered, then goes on")
        << QByteArray("printf 'Fix (Y/N)? '; read -r a; test \"$a\" = \"$(printf 's\\r')\"")
        << done();
}

void tst_IndexDialogCheck::diskChecks()
{
    QFETCH(QByteArray, script);
    QFETCH(QStringList, boxes);
    m_dialog.reset(
        new IndexDialog(nullptr, {pastAnyTest, script.contains("sleep") ? 200 : pastAnyTest}));
    m_dialog->show();
    if (!script.isEmpty())
        QVERIFY(m_program->write(script));
    const QString root = QStringLiteral("E:"); // a folder of the working directory
    addSong(root + QStringLiteral("/a.mid"));
    m_dialog->errorFromIndexReceived(QStringLiteral("of an earlier run"));
    choose(root + QLatin1Char('/'), true, true);

    QCOMPARE(run(boxes.size()), boxes);
    const bool indexed = boxes.contains(done().constFirst());
    QCOMPARE(isPrepared(root), indexed);
    QCOMPARE(report(), indexed ? plainReport() : QStringLiteral("of an earlier run"));
    QCOMPARE(m_lastIcon, indexed ? QMessageBox::Information : QMessageBox::Critical);
    QCOMPARE(child<QProgressBar>("progressBar")->value(), 100);
    QCOMPARE(m_program->written(QStringLiteral("arguments")),
             script.isEmpty() ? QByteArray() : QByteArray("E:\n/F\n/R\n"));
    QVERIFY(canBeUsed());
}

void tst_IndexDialogCheck::pathWithoutADriveSkipsTheCheck()
{
    QVERIFY(m_program->write("exit 3"));
    choose(card(), true, true);
    QCOMPARE(run(2),
             QStringList({QStringLiteral("ATTENZIONE|Controllo memoria non eseguito!")}) + done());
    QVERIFY(m_program->written(QStringLiteral("arguments")).isNull());
    QVERIFY(isPrepared(card()));
}

void tst_IndexDialogCheck::checkIsIgnoredByAnUpdate()
{
    QVERIFY(m_program->write("exit 3"));
    addSong(QStringLiteral("E:/a.mid"));
    choose(QStringLiteral("E:"), false, true);
    QCOMPARE(run(), done());
    QVERIFY(m_program->written(QStringLiteral("arguments")).isNull());
}

void tst_IndexDialogCheck::checkIsIgnoredWhereItIsNotTicked()
{
    QVERIFY(m_program->write("exit 3"));
    addSong(QStringLiteral("E:/a.mid"));
    choose(QStringLiteral("E:"), true);
    QCOMPARE(run(), done());
    QVERIFY(m_program->written(QStringLiteral("arguments")).isNull());
}

void tst_IndexDialogCheck::nothingIsUsableDuringARun()
{
    QVERIFY(m_program->write("sleep 0.3; exit 0"));
    addSong(QStringLiteral("E:/a.mid"));
    choose(QStringLiteral("E:"), true, true);
    m_dialog->updateLabelNum(7);
    m_dialog->setProgressValue(50);
    bool looked = false;
    QTimer::singleShot(100, this, [&] {
        looked = true;
        for (const char *name :
             {"startPushButton", "closePushButton", "browsePushButton", "pathLineEdit",
              "updateRadioButton", "rebuildRadioButton", "checkDiskCheckBox"})
            QVERIFY2(!child<QWidget>(name)->isEnabled(), name);
        QCOMPARE(child<QLabel>("numberLabel")->text(), QStringLiteral("0"));
        QCOMPARE(child<QProgressBar>("progressBar")->value(), 0);
    });
    QCOMPARE(run(), done());
    QVERIFY(looked);
    QVERIFY(canBeUsed());
}

void tst_IndexDialogCheck::dialogCantBeClosedDuringACheck_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("by its frame") << QStringLiteral("frame");
    QTest::newRow("with Escape") << QStringLiteral("escape");
}

void tst_IndexDialogCheck::dialogCantBeClosedDuringACheck()
{
    QFETCH(QString, how);
    QVERIFY(m_program->write("sleep 0.3; exit 0"));
    addSong(QStringLiteral("E:/a.mid"));
    choose(QStringLiteral("E:"), true, true);
    bool stillThere = false;
    QTimer::singleShot(100, this, [&] {
        if (how == QLatin1String("frame"))
            m_dialog->close();
        else
            QTest::keyClick(m_dialog.data(), Qt::Key_Escape);
        stillThere = m_dialog->isVisible();
    });
    QCOMPARE(run(), done());
    QVERIFY(stillThere);
    QVERIFY(m_dialog->isVisible());
    m_dialog->close();
    QVERIFY(!m_dialog->isVisible());
}

QTEST_MAIN(tst_IndexDialogCheck)
#include "tst_indexdialogcheck.moc"
