#include "tests/ui/dialogdriver.h"
#include "tests/ui/focuschain.h"
#include "ui/backupdialog.h"

#include <QLabel>
#include <QPushButton>

using namespace tarvel4;

using Act = std::function<void(BackupDialog &)>;
Q_DECLARE_METATYPE(Act)

class tst_BackupDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksWithItsTexts();
    void results_data();
    void results();
    void folderChooser();
    void chosenFolderEnablesTheBackup();
    void noChosenFolderLeavesTheBackupDisabled();
    void cancelledSecondChoiceKeepsTheFirst();
    void linkToAFolderStaysALink();
    void worksWithoutAMouse();
    void tabGoesFromTopToBottom();
    void longFolderDoesNotStretchTheDialog();

private:
    static QPushButton *button(const QDialog &dialog, const char *name)
    {
        return dialog.findChild<QPushButton *>(QLatin1String(name));
    }
    static QLineEdit *folderEdit(const QDialog &dialog)
    {
        return dialog.findChild<QLineEdit *>(QStringLiteral("directoryLineEdit"));
    }
    static void browse(BackupDialog &dialog, const QString &folder)
    {
        DialogDriver driver;
        driver.chooseFiles({folder});
        QTest::mouseClick(button(dialog, "browsePushButton"), Qt::LeftButton);
        QCOMPARE(driver.problems(), QString());
    }
    static void cancelBrowsing(BackupDialog &dialog)
    {
        DialogDriver driver;
        driver.expect<QFileDialog>([](QFileDialog &chooser) { chooser.close(); });
        QTest::mouseClick(button(dialog, "browsePushButton"), Qt::LeftButton);
        QCOMPARE(driver.problems(), QString());
    }
};

void tst_BackupDialog::asksWithItsTexts()
{
    const BackupDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Backup"));
    QCOMPARE(
        dialog.findChild<QLabel *>(QStringLiteral("backupLabel"))->text(),
        QStringLiteral("Si consiglia di effettuare un backup della libreria prima di procedere "
                       "con l'aggiornamento.\nSelezionare una cartella di destinazione per il "
                       "backup oppure premere 'Prosegui senza backup'."));
    QCOMPARE(button(dialog, "browsePushButton")->text(), QStringLiteral("Sfoglia..."));
    QCOMPARE(button(dialog, "abortPushButton")->text(), QStringLiteral("Annulla"));
    QCOMPARE(button(dialog, "exitPushButton")->text(), QStringLiteral("Prosegui senza backup"));
    QCOMPARE(button(dialog, "doBackupPushButton")->text(), QStringLiteral("Esegui backup"));
    QVERIFY(folderEdit(dialog)->isReadOnly());
    QVERIFY(!button(dialog, "doBackupPushButton")->isEnabled());
    QVERIFY(dialog.backupDir().isEmpty());
}

void tst_BackupDialog::results_data()
{
    const auto click = [](const char *name) {
        return Act([name](BackupDialog &dialog) {
            QTest::mouseClick(button(dialog, name), Qt::LeftButton);
        });
    };
    QTest::addColumn<Act>("act");
    QTest::addColumn<int>("result");
    QTest::newRow("\"Annulla\" gives 0") << click("abortPushButton") << 0;
    QTest::newRow("\"Prosegui senza backup\" gives 2") << click("exitPushButton") << 2;
    QTest::newRow("\"Esegui backup\" gives 1 once a folder is chosen")
        << Act([](BackupDialog &dialog) {
               browse(dialog, QDir::tempPath());
               QTest::mouseClick(button(dialog, "doBackupPushButton"), Qt::LeftButton);
           })
        << 1;
    QTest::newRow("closing by the frame gives 0")
        << Act([](BackupDialog &dialog) { dialog.close(); }) << 0;
    QTest::newRow("Escape gives 0")
        << Act([](BackupDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }) << 0;
    QTest::newRow("closing gives 0 also when a folder was chosen") << Act([](BackupDialog &dialog) {
        browse(dialog, QDir::tempPath());
        dialog.close();
    }) << 0;
}

void tst_BackupDialog::results()
{
    QFETCH(Act, act);
    QFETCH(int, result);
    DialogDriver driver;
    driver.expect<BackupDialog>(act);
    BackupDialog dialog;
    QCOMPARE(dialog.exec(), result);
    QCOMPARE(driver.problems(), QString());
}

void tst_BackupDialog::folderChooser()
{
    BackupDialog dialog;
    dialog.show();
    DialogDriver driver;
    driver.expect<QFileDialog>([](QFileDialog &chooser) {
        QCOMPARE(chooser.windowTitle(), QStringLiteral("Scegli cartella"));
        QCOMPARE(chooser.directory().path(), QStringLiteral("/home"));
        QVERIFY(chooser.testOption(QFileDialog::ShowDirsOnly));
        QVERIFY(chooser.testOption(QFileDialog::DontResolveSymlinks));
        chooser.close();
    });
    QTest::mouseClick(button(dialog, "browsePushButton"), Qt::LeftButton);
    QCOMPARE(driver.problems(), QString());
}

void tst_BackupDialog::chosenFolderEnablesTheBackup()
{
    const QTemporaryDir folder;
    BackupDialog dialog;
    dialog.show();
    browse(dialog, folder.path());
    QCOMPARE(dialog.backupDir(), folder.path());
    QCOMPARE(folderEdit(dialog)->text(), folder.path());
    QVERIFY(button(dialog, "doBackupPushButton")->isEnabled());
}

void tst_BackupDialog::noChosenFolderLeavesTheBackupDisabled()
{
    BackupDialog dialog;
    dialog.show();
    cancelBrowsing(dialog);
    QVERIFY(dialog.backupDir().isEmpty());
    QVERIFY(folderEdit(dialog)->text().isEmpty());
    QVERIFY(!button(dialog, "doBackupPushButton")->isEnabled());
}

void tst_BackupDialog::cancelledSecondChoiceKeepsTheFirst()
{
    const QTemporaryDir folder;
    BackupDialog dialog;
    dialog.show();
    browse(dialog, folder.path());
    cancelBrowsing(dialog);
    QCOMPARE(dialog.backupDir(), folder.path());
    QCOMPARE(folderEdit(dialog)->text(), folder.path());
    QVERIFY(button(dialog, "doBackupPushButton")->isEnabled());
}

void tst_BackupDialog::linkToAFolderStaysALink()
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("link"));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("target")));
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("target")), link));
    BackupDialog dialog;
    dialog.show();
    browse(dialog, link);
    QCOMPARE(dialog.backupDir(), link);
}

void tst_BackupDialog::worksWithoutAMouse()
{
    const QTemporaryDir folder;
    DialogDriver driver;
    driver.expect<BackupDialog>([](BackupDialog &dialog) {
        QCOMPARE(dialog.focusWidget(), button(dialog, "browsePushButton"));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        QCOMPARE(dialog.focusWidget(), button(dialog, "doBackupPushButton"));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    driver.chooseFiles({folder.path()});
    BackupDialog dialog;
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(dialog.backupDir(), folder.path());
    QCOMPARE(driver.problems(), QString());
}

void tst_BackupDialog::tabGoesFromTopToBottom()
{
    BackupDialog dialog;
    dialog.show();
    browse(dialog, QDir::tempPath());
    QCOMPARE(focusChain(folderEdit(dialog)),
             QStringList({QStringLiteral("directoryLineEdit"), QStringLiteral("browsePushButton"),
                          QStringLiteral("doBackupPushButton"), QStringLiteral("exitPushButton"),
                          QStringLiteral("abortPushButton")}));
}

void tst_BackupDialog::longFolderDoesNotStretchTheDialog()
{
    const QTemporaryDir folder;
    const QString deep = folder.filePath(QString(200, QLatin1Char('x')));
    QVERIFY(QDir().mkpath(deep));
    BackupDialog dialog;
    dialog.show();
    const int width = dialog.sizeHint().width();
    browse(dialog, deep);
    QCOMPARE(dialog.backupDir(), deep);
    QCOMPARE(dialog.sizeHint().width(), width);
}

QTEST_MAIN(tst_BackupDialog)
#include "tst_backupdialog.moc"
