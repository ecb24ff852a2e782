#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowfixture.h"

#include "storage/outcome.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"

#include <QLabel>

using namespace tarvel4;

/** Step 3 in the window: where songs may go, the overwrite question, and the memory's index. */
class tst_WindowTransfer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window.reset(new WindowFixture); }
    void cleanup();

    void folderDialogIsAsked();
    void songsAreCopiedAndIndexed();
    void refusedFolders_data();
    void refusedFolders();
    void rootGetsASongsFolder();
    void overwriteAnswers_data();
    void overwriteAnswers();
    void questionShowsTheNameAsPlainText();
    void removedRowsAreCopiedAllTheSame();
    void failedCopyIsTold();
    void whatTheIndexCouldNotTakeInIsListed();
    void cancelledCopyIsTold();
    void progressIsShown();
    void buttonsAfterwards();

private:
    void importSongs(const QStringList &files)
    {
        m_window->driver.click<ProceedDialog>(QStringLiteral("noPushButton"));
        m_window->import(files);
    }
    QStringList twoSongs()
    {
        return {m_window->addSong(QStringLiteral("a.mid"), "Uno"),
                m_window->addSong(QStringLiteral("b.mid"), "Due")};
    }
    QString card(const char *name) const
    {
        return m_window->path("card/") + QString::fromUtf8(name);
    }

    QScopedPointer<WindowFixture> m_window;
};

void tst_WindowTransfer::cleanup()
{
    const QString problems = m_window->driver.problems();
    m_window.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

void tst_WindowTransfer::folderDialogIsAsked()
{
    m_window->open();
    importSongs(twoSongs());
    m_window->driver.expect<QFileDialog>([](QFileDialog &dialog) {
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Scegli cartella"));
        QVERIFY(dialog.testOption(QFileDialog::ShowDirsOnly));
        // where there is no such folder, its name stays in the dialog
        QCOMPARE(dialog.selectedFiles(), QStringList({QStringLiteral("/Volumes")}));
        dialog.reject();
    });
    m_window->click("transferFilesToolButton"); // cancelled: ends without a word
    QVERIFY(m_window->enabled("transferFilesToolButton"));
    QVERIFY(QDir(m_window->path("card")).isEmpty());
}

void tst_WindowTransfer::songsAreCopiedAndIndexed()
{
    m_window->open();
    const QStringList songs = twoSongs();
    importSongs(songs);
    QDir().mkpath(card("music"));
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(card("music"));
    QCOMPARE(m_window->driver.boxes,
             QStringList(
                 {QStringLiteral("Trasferimento|Tutti i file sono stati copiati correttamente")}));
    QCOMPARE(m_window->driver.lastBox.icon, QMessageBox::Information);
    QCOMPARE(m_window->driver.lastBox.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(m_window->driver.lastBox.addition,
             QStringLiteral("Tutto è scritto: ora si può togliere la memoria."));
    QCOMPARE(m_window->driver.lastBox.details, QString()); // nothing is hidden behind a button
    QCOMPARE(WindowFixture::read(card("music/a.mid")), WindowFixture::read(songs.at(0)));
    QCOMPARE(WindowFixture::read(card("music/b.mid")), WindowFixture::read(songs.at(1)));
    QVERIFY(QFile::exists(card("fsinfos.id3")));
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_WindowTransfer::refusedFolders_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("isSystemDisk");
    QTest::addColumn<QString>("text");
    QTest::newRow("the system disk")
        << QStringLiteral("music") << true
        << QStringLiteral("Non è possibile copiare i file sul disco di sistema");
    const QString reserved =
        QStringLiteral("Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST perchè "
                       "sono riservate, selezionare un'altra cartella");
    for (const char *name : {"sfx", "Bridge", "PLAYLIST"})
        QTest::newRow(name) << QString::fromLatin1(name) << false << reserved;
    QTest::newRow("the root, where no songs folder can be made")
        << QString() << false
        << QStringLiteral("Non è possibile copiare i file sulla cartella principale, creare o "
                          "selezionare una sottocartella");
}

void tst_WindowTransfer::refusedFolders()
{
    QFETCH(QString, folder);
    QFETCH(bool, isSystemDisk);
    QFETCH(QString, text);
    m_window->open(isSystemDisk);
    importSongs(twoSongs());
    if (folder.isEmpty())
        WindowFixture::write(card("songs"), "a file in the way");
    else
        QDir().mkpath(card("") + folder);
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(folder.isEmpty() ? m_window->path("card") : card("") + folder);
    QCOMPARE(m_window->driver.boxes, QStringList({QStringLiteral("Trasferimento|") + text}));
    QCOMPARE(m_window->driver.lastBox.icon, QMessageBox::Warning);
    QVERIFY(!QFile::exists(card("fsinfos.id3")));
    QVERIFY(m_window->enabled("transferFilesToolButton"));
}

void tst_WindowTransfer::rootGetsASongsFolder()
{
    m_window->open();
    importSongs(twoSongs());
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(m_window->path("card"));
    QVERIFY(QFile::exists(card("songs/a.mid")));
    QVERIFY(QFile::exists(card("songs/b.mid")));
}

void tst_WindowTransfer::overwriteAnswers_data()
{
    QTest::addColumn<QStringList>("buttons"); // empty text: by the frame
    QTest::addColumn<QString>("replaced"); // of a, b: "y" or "n"
    const auto button = [](const char *name) { return QString::fromLatin1(name); };
    QTest::newRow("yes, then no") << QStringList({button("yesPushButton"), button("noPushButton")})
                                  << button("yn");
    QTest::newRow("yes to all") << QStringList({button("yesAllPushButton")}) << button("yy");
    QTest::newRow("no, then yes") << QStringList({button("noPushButton"), button("yesPushButton")})
                                  << button("ny");
    QTest::newRow("no to all") << QStringList({button("noAllPushButton")}) << button("nn");
    QTest::newRow("closing the question is yes")
        << QStringList({QString(), QString()}) << button("yy");
}

void tst_WindowTransfer::overwriteAnswers()
{
    QFETCH(QStringList, buttons);
    QFETCH(QString, replaced);
    m_window->open();
    const QStringList songs = twoSongs();
    importSongs(songs);
    WindowFixture::write(card("music/a.mid"), "old");
    WindowFixture::write(card("music/b.mid"), "old");
    for (const QString &button : buttons) {
        if (button.isEmpty())
            m_window->driver.closeFrame<NoCopyrightDialog>();
        else
            m_window->driver.click<NoCopyrightDialog>(button);
    }
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(card("music"));
    for (int i = 0; i < 2; ++i) {
        const QByteArray now = WindowFixture::read(card(i == 0 ? "music/a.mid" : "music/b.mid"));
        const bool isReplaced = replaced.at(i) == QLatin1Char('y');
        QCOMPARE(now, isReplaced ? WindowFixture::read(songs.at(i)) : QByteArray("old"));
    }
}

void tst_WindowTransfer::questionShowsTheNameAsPlainText()
{
    m_window->open();
    importSongs({m_window->addSong(QStringLiteral("<b>a.mid"), "Uno")});
    WindowFixture::write(card("music/<b>a.mid"), "old");
    QStringList plain;
    QStringList rich;
    m_window->driver.expect<NoCopyrightDialog>([&](NoCopyrightDialog &dialog) {
        for (const auto *label : dialog.findChildren<QLabel *>())
            (label->textFormat() == Qt::PlainText ? plain : rich).append(label->text());
        m_window->driver.clickIn(dialog, QStringLiteral("noPushButton"));
    });
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(card("music"));
    QVERIFY(plain.contains(QStringLiteral("<b>a.mid")));
    QVERIFY((plain + rich).contains(QStringLiteral("esiste già, vuoi sostituirlo?")));
}

void tst_WindowTransfer::removedRowsAreCopiedAllTheSame()
{
    m_window->open();
    importSongs(twoSongs());
    QDir().mkpath(card("music"));
    m_window->driver.chooseEntry(0);
    Q_EMIT m_window->table()->customContextMenuRequested(m_window->centreOf(0, 1));
    QCOMPARE(m_window->model()->rowCount(), 1);
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(card("music"));
    QVERIFY(QFile::exists(card("music/a.mid")));
    QVERIFY(QFile::exists(card("music/b.mid")));
}

void tst_WindowTransfer::failedCopyIsTold()
{
    m_window->open();
    const QStringList songs = twoSongs();
    importSongs(songs);
    QFile::remove(songs.at(0));
    QDir().mkpath(card("music"));
    QStringList told;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    m_window->driver.expect<QMessageBox>([&](QMessageBox &box) {
        icon = box.icon();
        told << box.windowTitle() << box.text() << box.detailedText();
        box.button(QMessageBox::Ok)->click();
    });
    m_window->transferTo(card("music"));
    const Outcome gone{Outcome::Code::NotFound, songs.at(0), {}, {}};
    QCOMPARE(told,
             QStringList({QStringLiteral("Trasferimento"),
                          QStringLiteral("Non è stato possibile copiare uno o più file"),
                          QStringLiteral("a.mid: ") + gone.sentence()}));
    QCOMPARE(icon, QMessageBox::Critical);
    QVERIFY(QFile::exists(card("music/b.mid")));
    QVERIFY(!QFile::exists(card("fsinfos.id3")));
}

void tst_WindowTransfer::whatTheIndexCouldNotTakeInIsListed()
{
    m_window->open();
    importSongs(twoSongs());
    const QString folder = card("") + QString(125, QLatin1Char('d')) + QLatin1Char('/')
        + QString(125, QLatin1Char('d'));
    QVERIFY(QDir().mkpath(folder));
    QStringList told;
    m_window->driver.expect<QMessageBox>([&](QMessageBox &box) {
        told << box.text() << box.detailedText().split(u'\n');
        box.button(QMessageBox::Ok)->click();
    });
    m_window->transferTo(folder);
    const QString error = QStringLiteral("File non importato, path troppo lungo: ") + folder;
    QCOMPARE(told,
             QStringList({QStringLiteral("Non è stato possibile copiare uno o più file"),
                          error + QStringLiteral("/a.mid"), error + QStringLiteral("/b.mid")}));
}

void tst_WindowTransfer::cancelledCopyIsTold()
{
    m_window->open();
    importSongs(twoSongs());
    QDir().mkpath(card("music"));
    ProgressWatcher watcher;
    watcher.onShow = [](QProgressDialog &dialog) {
        dialog.findChild<QAbstractButton *>()->click();
    };
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(card("music"));
    QCOMPARE(m_window->driver.boxes,
             QStringList(
                 {QStringLiteral("Trasferimento|Non è stato possibile copiare uno o più file")}));
    QVERIFY(QDir(card("music")).isEmpty());
}

void tst_WindowTransfer::progressIsShown()
{
    m_window->open();
    importSongs(twoSongs());
    QDir().mkpath(card("music"));
    ProgressWatcher watcher;
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(card("music"));
    QCOMPARE(watcher.seen.size(), 2);
    QCOMPARE(watcher.seen.at(0),
             QStringLiteral("Trasferimento|Trasferimento file...|Interrompi|2"));
    QVERIFY(watcher.seen.at(1).startsWith(
        QStringLiteral("Aggiornamento|Aggiornamento database...|Interrompi|")));
    QVERIFY(watcher.labels.contains(QStringLiteral("2 di 2")));
    QCOMPARE(watcher.labels.constLast(), QStringLiteral("Aggiornamento database..."));
}

void tst_WindowTransfer::buttonsAfterwards()
{
    m_window->open();
    importSongs(twoSongs());
    QVERIFY(m_window->enabled("updateDataToolButton"));
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(m_window->path("card"));
    QVERIFY2(!m_window->enabled("updateDataToolButton"), "stays disabled");
    QVERIFY(m_window->enabled("transferFilesToolButton"));
}

QTEST_MAIN(tst_WindowTransfer)
#include "tst_windowtransfer.moc"
