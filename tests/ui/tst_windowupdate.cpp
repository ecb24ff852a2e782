#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowfixture.h"

#include "storage/outcome.h"
#include "ui/backupdialog.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>

using namespace tarvel4;

/** Step 2 in the window: the backup's question, the copyright question, and what is enabled. */
class tst_WindowUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void songsOfTheCatalogueAreWritten();
    void notPublishedAnswers_data();
    void notPublishedAnswers();
    void noQuestionWhereTheSettingIsOff();
    void backupAnswers_data();
    void backupAnswers();
    void backupIsMadeFirst();
    void backupThatFailsStopsTheUpdate();
    void emptyTableIsNotUpdated();
    void cancelStopsBeforeTheNextSong_data();
    void cancelStopsBeforeTheNextSong();
    void quitStopsBeforeTheNextSong_data();
    void quitStopsBeforeTheNextSong();
    void progressIsShown();
    void rowsAreAddressedAsSorted();
    void songThatVanishedFails();
    void developersBackup();

private:
    void import(const QStringList &files)
    {
        m_window->driver.click<ProceedDialog>(QStringLiteral("noPushButton"));
        m_window->import(files);
    }
    void update(const QString &backup = QStringLiteral("exitPushButton"))
    {
        m_window->driver.click<BackupDialog>(backup);
        m_window->click("updateDataToolButton");
    }
    void chooseBackupFolder(const QString &folder)
    {
        m_window->driver.click<BackupDialog>(QStringLiteral("browsePushButton"));
        m_window->driver.chooseFiles({folder});
        m_window->driver.click<BackupDialog>(QStringLiteral("doBackupPushButton"));
    }
    QStringList statuses() const { return m_window->column(WindowFixture::Status); }

    QScopedPointer<WindowFixture> m_window;
};

namespace {

/** Statuses written side by side, as "1 3". */
QStringList list(const char *statuses)
{
    return QString::fromLatin1(statuses).split(QLatin1Char(' '));
}

} // namespace

void tst_WindowUpdate::init()
{
    m_window.reset(new WindowFixture);
    m_window->open();
}

void tst_WindowUpdate::cleanup()
{
    const QString problems = m_window->driver.problems();
    m_window.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

void tst_WindowUpdate::songsOfTheCatalogueAreWritten()
{
    const QString known = m_window->addSong(QStringLiteral("volare.mid"), "VOL");
    const QString unknown = m_window->addSong(QStringLiteral("nobody.mid"), "y");
    const QByteArray untouched = WindowFixture::read(unknown);
    import({known, unknown});
    const int before = m_window->table()->columnWidth(WindowFixture::Artist);
    update();
    QCOMPARE(statuses(), list("1 3"));
    QVERIFY2(m_window->table()->columnWidth(WindowFixture::Artist) > before,
             "the columns fit the new texts");
    QCOMPARE(m_window->column(WindowFixture::Title),
             QStringList({QStringLiteral("Volare"), QStringLiteral("y")}));
    QCOMPARE(m_window->column(WindowFixture::Artist),
             QStringList({QStringLiteral("D. Modugno"), QString()}));
    QVERIFY(WindowFixture::read(known).contains("Volare"));
    QCOMPARE(WindowFixture::read(unknown), untouched);
    QVERIFY2(!m_window->enabled("updateDataToolButton"), "done: stays disabled");
    QVERIFY(m_window->enabled("transferFilesToolButton"));
}

void tst_WindowUpdate::notPublishedAnswers_data()
{
    QTest::addColumn<QStringList>("buttons"); // empty text: by the frame
    QTest::addColumn<QString>("expected"); // statuses of: unpublished, published, unpublished
    const auto button = [](const char *name) { return QString::fromLatin1(name); };
    QTest::newRow("yes, then no") << QStringList({button("yesPushButton"), button("noPushButton")})
                                  << button("1 1 3");
    QTest::newRow("yes to all asks once")
        << QStringList({button("yesAllPushButton")}) << button("1 1 1");
    QTest::newRow("no, then yes") << QStringList({button("noPushButton"), button("yesPushButton")})
                                  << button("3 1 1");
    QTest::newRow("no to all asks once, and published songs are updated all the same")
        << QStringList({button("noAllPushButton")}) << button("3 1 3");
    QTest::newRow("closing the question is yes")
        << QStringList({QString(), QString()}) << button("1 1 1");
}

void tst_WindowUpdate::notPublishedAnswers()
{
    QFETCH(QStringList, buttons);
    QFETCH(QString, expected);
    const QStringList names{QStringLiteral("VOLARE.mid"), QStringLiteral("volare.mid")};
    const QStringList files{m_window->addSong(QStringLiteral("one/") + names.at(0), "a", false),
                            m_window->addSong(QStringLiteral("AZZURRO.mid"), "b", true),
                            m_window->addSong(QStringLiteral("two/") + names.at(1), "c", false)};
    import(files);
    m_window->driver.click<BackupDialog>(QStringLiteral("exitPushButton"));
    QStringList asked;
    for (const QString &button : buttons)
        m_window->driver.expect<NoCopyrightDialog>([&, button](NoCopyrightDialog &dialog) {
            asked.append(dialog.findChild<QLabel *>(QStringLiteral("fileNameLabel"))->text());
            if (button.isEmpty())
                dialog.close();
            else
                m_window->driver.clickIn(dialog, button);
        });
    m_window->click("updateDataToolButton");
    QCOMPARE(asked, names.mid(0, buttons.size()));
    QCOMPARE(statuses(), list(expected.toLatin1().constData()));
}

void tst_WindowUpdate::noQuestionWhereTheSettingIsOff()
{
    import({m_window->addSong(QStringLiteral("VOLARE.mid"), "a", false)});
    m_window->trigger("actionCopyrightNo");
    update();
    QCOMPARE(statuses(), list("1"));
}

void tst_WindowUpdate::backupAnswers_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("updated");
    QTest::newRow("going on without one updates, and makes no folder")
        << QStringLiteral("exitPushButton") << true;
    QTest::newRow("Annulla leaves the songs alone") << QStringLiteral("abortPushButton") << false;
    QTest::newRow("closing the dialog is Annulla") << QString() << false;
}

void tst_WindowUpdate::backupAnswers()
{
    QFETCH(QString, button);
    QFETCH(bool, updated);
    const QString song = m_window->addSong(QStringLiteral("VOLARE.mid"), "a");
    const QByteArray before = WindowFixture::read(song);
    import({song});
    if (button.isEmpty())
        m_window->driver.closeFrame<BackupDialog>();
    else
        m_window->driver.click<BackupDialog>(button);
    m_window->click("updateDataToolButton");
    QCOMPARE(WindowFixture::read(song) != before, updated);
    QCOMPARE(m_window->enabled("updateDataToolButton"), !updated);
    QVERIFY(m_window->enabled("transferFilesToolButton"));
    QVERIFY(QDir(m_window->path("backups")).isEmpty());
}

void tst_WindowUpdate::backupIsMadeFirst()
{
    const QStringList songs{m_window->addSong(QStringLiteral("VOLARE.mid"), "a"),
                            m_window->addSong(QStringLiteral("AZZURRO.mid"), "b")};
    const QVector<QByteArray> before{WindowFixture::read(songs.at(0)),
                                     WindowFixture::read(songs.at(1))};
    import(songs);
    chooseBackupFolder(m_window->path("backups"));
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->click("updateDataToolButton");
    QCOMPARE(m_window->driver.boxes,
             QStringList({QStringLiteral("Backup|Backup eseguito correttamente")}));
    QCOMPARE(m_window->driver.lastBox.icon, QMessageBox::Information);
    QCOMPARE(m_window->driver.lastBox.format, Qt::PlainText);

    const QDir backups(m_window->path("backups"));
    const QStringList folders = backups.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QCOMPARE(folders.size(), 1);
    for (int i = 0; i < songs.size(); ++i) {
        QCOMPARE(WindowFixture::read(backups.filePath(folders.constFirst()) + QLatin1Char('/')
                                     + QFileInfo(songs.at(i)).fileName()),
                 before.at(i));
        QVERIFY(WindowFixture::read(songs.at(i)) != before.at(i));
    }
    QCOMPARE(statuses(), list("1 1"));
}

void tst_WindowUpdate::backupThatFailsStopsTheUpdate()
{
    const QString song = m_window->addSong(QStringLiteral("VOLARE.mid"), "a");
    const QByteArray before = WindowFixture::read(song);
    import({song});
    QDir().mkpath(m_window->path("gone"));
    m_window->driver.click<BackupDialog>(QStringLiteral("browsePushButton"));
    m_window->driver.chooseFiles({m_window->path("gone")});
    m_window->driver.expect<BackupDialog>([this](BackupDialog &dialog) {
        QDir(m_window->path("gone")).removeRecursively();
        m_window->driver.clickIn(dialog, QStringLiteral("doBackupPushButton"));
    });
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->click("updateDataToolButton");
    QCOMPARE(m_window->driver.boxes, QStringList({QStringLiteral("Backup|Backup FALLITO !!!")}));
    QCOMPARE(m_window->driver.lastBox.icon, QMessageBox::Critical);
    QCOMPARE(WindowFixture::read(song), before);
    QCOMPARE(statuses(), list("0"));
    QVERIFY(m_window->enabled("updateDataToolButton"));
}

void tst_WindowUpdate::emptyTableIsNotUpdated()
{
    import({WindowFixture::write(m_window->path("songs/bad.mid"), "rubbish")});
    QVERIFY(m_window->enabled("updateDataToolButton"));
    m_window->click("updateDataToolButton"); // a dialog that is not expected fails the row
    QVERIFY(m_window->enabled("updateDataToolButton"));
    QVERIFY(m_window->enabled("transferFilesToolButton"));
}

void tst_WindowUpdate::cancelStopsBeforeTheNextSong_data()
{
    QTest::addColumn<int>("atValue");
    QTest::addColumn<bool>("byFrame");
    QTest::addColumn<QString>("expected");
    QTest::newRow("before the first song") << 0 << false << QStringLiteral("0 0 0");
    QTest::newRow("after the first song") << 1 << false << QStringLiteral("1 0 0");
    QTest::newRow("after the first song, by the frame") << 1 << true << QStringLiteral("1 0 0");
}

void tst_WindowUpdate::cancelStopsBeforeTheNextSong()
{
    QFETCH(int, atValue);
    QFETCH(bool, byFrame);
    QFETCH(QString, expected);
    import({m_window->addSong(QStringLiteral("one/VOLARE.mid"), "a"),
            m_window->addSong(QStringLiteral("AZZURRO.mid"), "b"),
            m_window->addSong(QStringLiteral("two/VOLARE.mid"), "c")});
    ProgressWatcher watcher;
    const auto cancel = [byFrame](QProgressDialog &dialog) {
        if (byFrame)
            dialog.close();
        else
            dialog.findChild<QAbstractButton *>()->click();
    };
    watcher.onShow = [&](QProgressDialog &dialog) {
        if (atValue == 0)
            cancel(dialog);
    };
    watcher.onValue = [&](QProgressDialog &dialog, int value) {
        if (value == atValue)
            cancel(dialog);
    };
    update();
    QCOMPARE(statuses(), list(expected.toLatin1().constData()));
    QVERIFY2(m_window->enabled("updateDataToolButton"), "can be tried again");
    QVERIFY(m_window->enabled("transferFilesToolButton"));
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_WindowUpdate::quitStopsBeforeTheNextSong_data()
{
    QTest::addColumn<QString>("during");
    QTest::addColumn<QString>("expected");
    QTest::newRow("while the backup is asked about")
        << QStringLiteral("backup") << QStringLiteral("0 0 0");
    QTest::newRow("while a song is asked about: it is left alone")
        << QStringLiteral("question") << QStringLiteral("1 3 0");
    QTest::newRow("while a song is written: it is finished")
        << QStringLiteral("song") << QStringLiteral("1 0 0");
}

void tst_WindowUpdate::quitStopsBeforeTheNextSong()
{
    QFETCH(QString, during);
    QFETCH(QString, expected);
    import({m_window->addSong(QStringLiteral("one/VOLARE.mid"), "a"),
            m_window->addSong(QStringLiteral("AZZURRO.mid"), "b", false),
            m_window->addSong(QStringLiteral("two/VOLARE.mid"), "c")});
    const auto quit = [this] { m_window->window->quit(); };
    ProgressWatcher watcher;
    if (during == QLatin1String("song"))
        watcher.onValue = [quit](QProgressDialog &, int value) {
            if (value == 1)
                quit();
        };
    if (during == QLatin1String("backup"))
        m_window->driver.expect<BackupDialog>([quit](BackupDialog &) { quit(); });
    else
        m_window->driver.click<BackupDialog>(QStringLiteral("exitPushButton"));
    if (during == QLatin1String("question"))
        m_window->driver.expect<NoCopyrightDialog>([quit](NoCopyrightDialog &) { quit(); });
    QTimer::singleShot(0, this, [this] { m_window->click("updateDataToolButton"); });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(statuses(), list(expected.toLatin1().constData()));
}

void tst_WindowUpdate::progressIsShown()
{
    import({m_window->addSong(QStringLiteral("VOLARE.mid"), "a"),
            m_window->addSong(QStringLiteral("AZZURRO.mid"), "b")});
    ProgressWatcher watcher;
    update();
    QCOMPARE(
        watcher.seen,
        QStringList({QStringLiteral("Aggiornamento file|Aggiorno la libreria...|Interrompi|2")}));
    QCOMPARE(watcher.labels, QStringList({QStringLiteral("1 di 2"), QStringLiteral("2 di 2")}));
}

void tst_WindowUpdate::rowsAreAddressedAsSorted()
{
    import({m_window->addSong(QStringLiteral("nobody.mid"), "b"),
            m_window->addSong(QStringLiteral("VOLARE.mid"), "c"),
            m_window->addSong(QStringLiteral("AZZURRO.mid"), "a")});
    m_window->table()->sortByColumn(WindowFixture::Title, Qt::AscendingOrder);
    QCOMPARE(m_window->column(WindowFixture::Name),
             QStringList({QStringLiteral("AZZURRO.mid"), QStringLiteral("nobody.mid"),
                          QStringLiteral("VOLARE.mid")}));
    update();
    QMap<QString, QString> statusOf;
    for (int row = 0; row < 3; ++row)
        statusOf.insert(m_window->column(WindowFixture::Name).at(row), statuses().at(row));
    QCOMPARE(statusOf.value(QStringLiteral("AZZURRO.mid")), QStringLiteral("1"));
    QCOMPARE(statusOf.value(QStringLiteral("VOLARE.mid")), QStringLiteral("1"));
    QCOMPARE(statusOf.value(QStringLiteral("nobody.mid")), QStringLiteral("3"));
    for (int row = 0; row < 3; ++row) {
        const QString name = m_window->column(WindowFixture::Name).at(row);
        const QString title = m_window->column(WindowFixture::Title).at(row);
        QVERIFY(WindowFixture::read(m_window->path("songs/") + name).contains(title.toLatin1()));
    }
}

void tst_WindowUpdate::songThatVanishedFails()
{
    const QString gone = m_window->addSong(QStringLiteral("VOLARE.mid"), "a");
    import({gone, m_window->addSong(QStringLiteral("AZZURRO.mid"), "b")});
    QFile::remove(gone);
    update();
    QCOMPARE(statuses(), list("3 1"));
    QVERIFY(!QFile::exists(gone));

    // The row says why, also to a screen reader, without another box.
    const QString why = QStringLiteral("Non aggiornata: ")
        + Outcome{Outcome::Code::NotFound, {}, {}, {}}.sentence();
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(m_window->table());
    const QAccessibleInterface *cell = table->tableInterface()->cellAt(0, WindowFixture::Type);
    QCOMPARE(cell->text(QAccessible::Description), why);
    cell = table->tableInterface()->cellAt(1, WindowFixture::Type);
    QCOMPARE(cell->text(QAccessible::Description), QString());
}

void tst_WindowUpdate::developersBackup()
{
    import({m_window->addSong(QStringLiteral("VOLARE.mid"), "a")});
    chooseBackupFolder(m_window->path("backups"));
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->find<QAbstractButton>("dbgBackupPushButton")->click();
    QVERIFY(!QDir(m_window->path("backups")).isEmpty());
}

QTEST_MAIN(tst_WindowUpdate)
#include "tst_windowupdate.moc"
