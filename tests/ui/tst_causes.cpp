#include "tests/ui/dialogdriver.h"
#include "tests/ui/preparedmemory.h"

#include "ui/indexdialog.h"
#include "ui/songslistdialog.h"

#include <QPushButton>

using namespace tarvel4;

/** What stands in the details of a message that tells of a failure. */
class tst_Causes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDamagedIndex_data();
    void aDamagedIndex();
};

void tst_Causes::aDamagedIndex_data()
{
    QTest::addColumn<bool>("isList");
    QTest::newRow("when the memory is optimised") << false;
    QTest::newRow("when its list is saved") << true;
}

void tst_Causes::aDamagedIndex()
{
    QFETCH(bool, isList);
    const QTemporaryDir folder;
    const QString root = folder.filePath(QStringLiteral("card"));
    PreparedMemory::write(root);
    TestFiles::write(root + QStringLiteral("/index.id3"), "xyz");
    DialogDriver driver;
    QString details;
    driver.expect<QMessageBox>([&details](QMessageBox &box) {
        details = box.detailedText();
        box.button(QMessageBox::Ok)->click();
    });
    QScopedPointer<QDialog> dialog;
    if (isList)
        dialog.reset(new SongsListDialog);
    else
        dialog.reset(new IndexDialog);
    dialog->show();
    const auto fillIn = [&](const char *name, const QString &text) {
        dialog->findChild<QLineEdit *>(QLatin1String(name))->setText(text);
    };
    fillIn(isList ? "sourceLineEdit" : "pathLineEdit", root);
    if (isList)
        fillIn("targetLineEdit", folder.filePath(QStringLiteral("list.csv")));
    driver.clickIn(*dialog,
                   isList ? QStringLiteral("savePushButton") : QStringLiteral("startPushButton"));
    QCOMPARE(driver.problems(), QString());
    QVERIFY2(details.startsWith(root + QStringLiteral("/index.id3: l'indice è danneggiato (")),
             qPrintable(details));
}

QTEST_MAIN(tst_Causes)
#include "tst_causes.moc"
