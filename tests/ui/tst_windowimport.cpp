#include "tests/ui/windowfixture.h"

#include "storage/outcome.h"
#include "ui/backupdialog.h"
#include "ui/proceeddialog.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>

using namespace tarvel4;

/** Step 1 in the window: the file dialog, the table, the summary, and what is enabled afterwards.
 */
class tst_WindowImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window.reset(new WindowFixture); }
    void cleanup();

    void fileDialogAsksForSongs();
    void cancelledFileDialogChangesNothing();
    void songsFillTheTable();
    void columnsFitTheirContents();
    void summaryCounts_data();
    void summaryCounts();
    void summaryAnswers_data();
    void summaryAnswers();
    void summaryBoxIsKept_data();
    void summaryBoxIsKept();
    void noSummaryWhereTheSettingIsOff();
    void aSongThatAPowerCutSetAsideGetsItsNameBack();
    void sameNamesInTwoFoldersAreTwoRows();
    void nextImportReplacesTheRows();
    void tableThatCantBeClearedKeepsItsRows();
    void importAgainRepeatsTheChoice();
    void sortedTableTakesTheNextImport();
    void songsThatNobodyHereWrote();

private:
    void answerSummary(const QString &button = QStringLiteral("noPushButton"))
    {
        m_window->driver.click<ProceedDialog>(button);
    }
    void skipSummaries()
    {
        m_window->settings().setValue(QStringLiteral("copyrightAsk"), false);
        m_window->settings().sync();
    }
    QStringList midiSongsOfAGame() const;
    QStringList mp3SongsOfOthers() const;
    QStringList threeSongs()
    {
        return {m_window->addSong(QStringLiteral("c.mid"), "Uno"),
                m_window->addSong(QStringLiteral("a.mid"), "Tre"),
                m_window->addSong(QStringLiteral("b.kar"), "Due", false)};
    }

    QScopedPointer<WindowFixture> m_window;
};

void tst_WindowImport::cleanup()
{
    const QString problems = m_window->driver.problems();
    m_window.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

void tst_WindowImport::fileDialogAsksForSongs()
{
    m_window->open();
    m_window->driver.expect<QFileDialog>([](QFileDialog &dialog) {
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Seleziona i file da importare"));
        QCOMPARE(dialog.fileMode(), QFileDialog::ExistingFiles);
        QCOMPARE(dialog.directory().absolutePath(), QStringLiteral("/"));
        QCOMPARE(dialog.nameFilters(),
                 QStringList({QStringLiteral("Songs (*.mid *.kar *.mp3 *.mf3 *.mf4 *.mf5)")}));
        dialog.reject();
    });
    m_window->click("selectDirToolButton");
}

void tst_WindowImport::cancelledFileDialogChangesNothing()
{
    skipSummaries();
    m_window->open();
    m_window->import(threeSongs());
    const QStringList titles = m_window->column(WindowFixture::Title);
    m_window->driver.closeFrame<QFileDialog>();
    m_window->click("selectDirToolButton");
    QCOMPARE(m_window->column(WindowFixture::Title), titles);
    QVERIFY(m_window->enabled("updateDataToolButton"));
    QVERIFY(m_window->enabled("transferFilesToolButton"));
}

void tst_WindowImport::songsFillTheTable()
{
    m_window->open();
    answerSummary();
    m_window->import(threeSongs());
    QCOMPARE(m_window->column(0),
             QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
    QCOMPARE(m_window->column(WindowFixture::Type),
             QStringList({QStringLiteral("MIDI"), QStringLiteral("MIDI"), QStringLiteral("MIDI")}));
    QCOMPARE(m_window->column(WindowFixture::Title),
             QStringList({QStringLiteral("Uno"), QStringLiteral("Tre"), QStringLiteral("Due")}));
    QCOMPARE(
        m_window->column(WindowFixture::Name),
        QStringList({QStringLiteral("c.mid"), QStringLiteral("a.mid"), QStringLiteral("b.kar")}));
    QCOMPARE(m_window->column(WindowFixture::Status),
             QStringList({QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")}));
}

void tst_WindowImport::columnsFitTheirContents()
{
    skipSummaries();
    m_window->open();
    const int before = m_window->table()->columnWidth(WindowFixture::Title);
    m_window->import({m_window->addSong(QStringLiteral("a.mid"), QByteArray(60, 'W'))});
    QVERIFY(m_window->table()->columnWidth(WindowFixture::Title) > before);
}

void tst_WindowImport::summaryCounts_data()
{
    QTest::addColumn<int>("published");
    QTest::addColumn<int>("others");
    QTest::addColumn<int>("unreadable");
    QTest::addColumn<QString>("text");
    QTest::newRow("songs, published songs and unreadable files")
        << 1 << 2 << 1
        << QStringLiteral("Sono stati esaminti 4 files, trovate 3 songs di cui 1 di (c)K-Varo");
    QTest::newRow("only unreadable files leave an empty table")
        << 0 << 0 << 2
        << QStringLiteral("Sono stati esaminti 2 files, trovate 0 songs di cui 0 di (c)K-Varo");
}

void tst_WindowImport::summaryCounts()
{
    QFETCH(int, published);
    QFETCH(int, others);
    QFETCH(int, unreadable);
    QFETCH(QString, text);
    QStringList files;
    for (int i = 0; i < published + others; ++i)
        files.append(m_window->addSong(QStringLiteral("s%1.mid").arg(i), "S", i < published));
    for (int i = 0; i < unreadable; ++i)
        files.append(WindowFixture::write(
            m_window->path("songs/bad") + QString::number(i) + QStringLiteral(".mid"), "rubbish"));

    m_window->open();
    QString shown;
    QString problems;
    m_window->driver.expect<ProceedDialog>([&](ProceedDialog &dialog) {
        shown = dialog.findChild<QLabel *>(QStringLiteral("msgLabel"))->text();
        problems = dialog.findChild<QPlainTextEdit *>()->toPlainText();
        m_window->driver.clickIn(dialog, QStringLiteral("noPushButton"));
    });
    m_window->import(files);
    QCOMPARE(shown, text);
    const Outcome noSong{Outcome::Code::NotASong, {}, {}, {}};
    QCOMPARE(problems.count(noSong.sentence()), unreadable);
    QVERIFY(problems.startsWith(QStringLiteral("bad0.mid: ")));
    QCOMPARE(m_window->model()->rowCount(), published + others);
}

void tst_WindowImport::summaryAnswers_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("backup");
    QTest::addColumn<bool>("updated");
    const QString none;
    QTest::newRow("No leaves the update to its button")
        << QStringLiteral("noPushButton") << none << false;
    QTest::newRow("closing the summary is No") << none << none << false;
    QTest::newRow("Si goes on to the update, whose button stays disabled")
        << QStringLiteral("yesPushButton") << QStringLiteral("exitPushButton") << true;
    QTest::newRow("Si, but the update was cancelled: its button is enabled")
        << QStringLiteral("yesPushButton") << QStringLiteral("abortPushButton") << false;
}

void tst_WindowImport::summaryAnswers()
{
    QFETCH(QString, button);
    QFETCH(QString, backup);
    QFETCH(bool, updated);
    m_window->open();
    if (button.isEmpty())
        m_window->driver.closeFrame<ProceedDialog>();
    else
        m_window->driver.click<ProceedDialog>(button);
    if (!backup.isEmpty())
        m_window->driver.click<BackupDialog>(backup);
    m_window->import({m_window->addSong(QStringLiteral("VOLARE.mid"), "x")});
    QCOMPARE(m_window->enabled("updateDataToolButton"), !updated);
    QVERIFY(m_window->enabled("transferFilesToolButton"));
    QCOMPARE(m_window->column(WindowFixture::Status),
             QStringList({updated ? QStringLiteral("1") : QStringLiteral("0")}));
}

void tst_WindowImport::summaryBoxIsKept_data()
{
    QTest::addColumn<bool>("ticked");
    QTest::newRow("ticked with No: the next import shows no summary") << true;
    QTest::newRow("not ticked: the next import shows it again") << false;
}

void tst_WindowImport::summaryBoxIsKept()
{
    QFETCH(bool, ticked);
    m_window->open();
    m_window->driver.expect<ProceedDialog>([this, ticked](ProceedDialog &dialog) {
        dialog.findChild<QCheckBox *>(QStringLiteral("checkBoxShowAgain"))->setChecked(ticked);
        m_window->driver.clickIn(dialog, QStringLiteral("noPushButton"));
    });
    m_window->import(threeSongs());
    QCOMPARE(m_window->settings().value(QStringLiteral("copyrightAsk")).toBool(), !ticked);
    QCOMPARE(m_window->find<QAction>("actionCopyrightYes")->isChecked(), !ticked);
    QCOMPARE(m_window->find<QAction>("actionCopyrightNo")->isChecked(), ticked);

    if (!ticked)
        answerSummary();
    m_window->import(threeSongs()); // a summary that is not expected fails the row
}

void tst_WindowImport::noSummaryWhereTheSettingIsOff()
{
    skipSummaries();
    m_window->open();
    m_window->import(threeSongs());
    QVERIFY(m_window->enabled("updateDataToolButton"));
    QVERIFY(m_window->enabled("transferFilesToolButton"));
}

void tst_WindowImport::aSongThatAPowerCutSetAsideGetsItsNameBack()
{
    skipSummaries();
    m_window->open();
    WindowFixture::write(m_window->path("songs/gone.mp3.tarvel4.bak"), "old");
    m_window->import(threeSongs());
    QVERIFY(QFile::exists(m_window->path("songs/gone.mp3")));
}

void tst_WindowImport::sameNamesInTwoFoldersAreTwoRows()
{
    skipSummaries();
    m_window->open();
    m_window->import({m_window->addSong(QStringLiteral("one/a.mid"), "Uno"),
                      m_window->addSong(QStringLiteral("two/a.mid"), "Due")});
    QCOMPARE(m_window->column(WindowFixture::Title),
             QStringList({QStringLiteral("Uno"), QStringLiteral("Due")}));
    QCOMPARE(m_window->column(WindowFixture::Name),
             QStringList({QStringLiteral("a.mid"), QStringLiteral("a.mid")}));
}

void tst_WindowImport::nextImportReplacesTheRows()
{
    skipSummaries();
    m_window->open();
    m_window->import(threeSongs());
    m_window->import({m_window->addSong(QStringLiteral("d.mid"), "Quattro")});
    QCOMPARE(m_window->column(WindowFixture::Title), QStringList({QStringLiteral("Quattro")}));
    QCOMPARE(m_window->column(0), QStringList({QStringLiteral("1")}));
}

void tst_WindowImport::tableThatCantBeClearedKeepsItsRows()
{
    m_window->open();
    answerSummary();
    m_window->import(threeSongs());
    QVERIFY(QSqlQuery(QSqlDatabase::database(QStringLiteral("con_mem")))
                .exec(QStringLiteral("create trigger keep before delete on usersongs begin select "
                                     "raise(abort, 'kept'); end")));
    const QStringList before = m_window->column(WindowFixture::Title);
    m_window->import({m_window->addSong(QStringLiteral("d.mid"), "Quattro")}); // and no summary
    QCOMPARE(m_window->column(WindowFixture::Title), before);
    QVERIFY(!m_window->enabled("updateDataToolButton"));
    QVERIFY(m_window->enabled("transferFilesToolButton"));
}

void tst_WindowImport::importAgainRepeatsTheChoice()
{
    skipSummaries();
    m_window->open();
    const QStringList songs = threeSongs();
    m_window->import(songs);
    m_window->addSong(QStringLiteral("c.mid"), "Changed");
    QFile::remove(songs.constLast());
    m_window->find<QAbstractButton>("dbgImportPushButton")->click();
    QCOMPARE(m_window->column(WindowFixture::Title),
             QStringList({QStringLiteral("Changed"), QStringLiteral("Tre")}));
}

void tst_WindowImport::sortedTableTakesTheNextImport()
{
    skipSummaries();
    m_window->open();
    m_window->import(threeSongs());
    QHeaderView *header = m_window->table()->horizontalHeader();
    QTest::mouseClick(
        header->viewport(), Qt::LeftButton, Qt::NoModifier,
        QPoint(header->sectionViewportPosition(WindowFixture::Title) + 20, header->height() / 2));
    QStringList sorted = m_window->column(WindowFixture::Title);
    QVERIFY(std::is_sorted(sorted.begin(), sorted.end())
            || std::is_sorted(sorted.rbegin(), sorted.rend()));

    m_window->import(threeSongs());
    sorted = m_window->column(WindowFixture::Title);
    QCOMPARE(sorted.size(), 3);
    QVERIFY2(std::is_sorted(sorted.begin(), sorted.end())
                 || std::is_sorted(sorted.rbegin(), sorted.rend()),
             "the header's arrow still tells the truth");
}

/** The General MIDI songs that a Debian package installs. */
QStringList tst_WindowImport::midiSongsOfAGame() const
{
    const QDir folder(QStringLiteral("/usr/share/games/openttd/baseset/openmsx"));
    QStringList songs;
    const QStringList names = folder.entryList({QStringLiteral("*.mid")}, QDir::Files, QDir::Name);
    for (const QString &name : names) {
        songs.append(m_window->path("songs/") + name);
        QFile::copy(folder.filePath(name), songs.constLast());
    }
    return songs;
}

/** A second of tone from two encoders, with a tag of each version. */
QStringList tst_WindowImport::mp3SongsOfOthers() const
{
    const QString wave = m_window->path("tone.wav");
    const auto run = [](const char *program, const QString &arguments) {
        return QProcess::execute(QString::fromLatin1(program), arguments.split(QLatin1Char(' ')))
            == 0;
    };
    const QString quiet = QStringLiteral("-loglevel error -nostdin -y ");
    if (!run("ffmpeg", quiet + QStringLiteral("-f lavfi -i sine=duration=1 ") + wave))
        return {};

    QStringList songs;
    for (const char *version : {"3", "4"}) {
        songs.append(m_window->path("songs/ffmpeg") + QLatin1String(version)
                     + QStringLiteral(".mp3"));
        if (!run("ffmpeg",
                 quiet + QStringLiteral("-i ") + wave + QStringLiteral(" -id3v2_version ")
                     + QLatin1String(version)
                     + QStringLiteral(" -metadata title=Tone%1 -metadata artist=Ff ")
                           .arg(QLatin1String(version))
                     + songs.constLast()))
            return {};
    }
    songs.append(m_window->path("songs/lame.mp3"));
    if (!run("lame",
             QStringLiteral("--quiet --id3v2-only --id3v2-latin1 --tt Tone --ta La ") + wave
                 + QLatin1Char(' ') + songs.constLast()))
        return {};
    return songs;
}

void tst_WindowImport::songsThatNobodyHereWrote()
{
    const QStringList midi = midiSongsOfAGame();
    if (midi.isEmpty())
        QSKIP("The songs of openttd-openmsx are not installed.");
    const QStringList mp3 = mp3SongsOfOthers();
    if (mp3.isEmpty())
        QSKIP("ffmpeg or lame is not installed.");

    m_window->open();
    QString summary;
    m_window->driver.expect<ProceedDialog>([&](ProceedDialog &dialog) {
        summary = dialog.findChild<QLabel *>(QStringLiteral("msgLabel"))->text();
        m_window->driver.clickIn(dialog, QStringLiteral("noPushButton"));
    });
    m_window->import(midi + mp3);
    QCOMPARE(summary,
             QStringLiteral("Sono stati esaminti %1 files, trovate %1 songs di cui 0 di (c)K-Varo")
                 .arg(midi.size() + mp3.size()));
    QCOMPARE(m_window->model()->rowCount(), midi.size() + mp3.size());
    QCOMPARE(
        m_window->column(WindowFixture::Title).mid(midi.size()),
        QStringList({QStringLiteral("Tone3"), QStringLiteral("Tone4"), QStringLiteral("Tone")}));
    QCOMPARE(m_window->column(WindowFixture::Artist).mid(midi.size()),
             QStringList({QStringLiteral("Ff"), QStringLiteral("Ff"), QStringLiteral("La")}));
}

QTEST_MAIN(tst_WindowImport)
#include "tst_windowimport.moc"
