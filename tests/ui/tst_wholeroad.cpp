#include "tests/ui/windowfixture.h"

#include "indexer/indexverifier.h"
#include "ui/appearance.h"
#include "ui/backupdialog.h"
#include "ui/dataeditdialog.h"
#include "ui/indexdialog.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"
#include "ui/songslistdialog.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

using namespace tarvel4;

/** The samples, clicked from import to song list, with the built-in catalogue and real files. */
class tst_WholeRoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fromImportToList_data();
    void fromImportToList();

private:
    QStringList copyOfSamples() const;
    void importAndSynchronise();
    void correctOneSong();
    void transfer();
    void rebuildIndex();
    QByteArray saveList();

    WindowFixture *m_window = nullptr;
    QString m_summary;
    const QStringList m_italianBoxes{
        QStringLiteral("Backup|Backup eseguito correttamente"),
        QStringLiteral("Trasferimento|Tutti i file sono stati copiati correttamente"),
        QStringLiteral("Ottimizza memoria|Operazione completata con successo"),
        QStringLiteral("Salva lista song|Operazione completata")};
};

namespace {

constexpr char summary[] = "Sono stati esaminti 7 files, trovate 7 songs di cui 4 di (c)K-Varo";

} // namespace

void tst_WholeRoad::fromImportToList_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("isItalian");
    QTest::newRow("Italian") << QStringLiteral("it") << true;
    QTest::newRow("English") << QStringLiteral("en") << false;
}

void tst_WholeRoad::fromImportToList()
{
    QFETCH(QString, language);
    QFETCH(bool, isItalian);
    QTranslator translator;
    Appearance::installLanguage(translator, language);
    Appearance::applyStyleSheet(QStringLiteral(":/style/default.qss"));

    WindowFixture window;
    m_window = &window;
    QFile::remove(window.path("songsdb_debug")); // the built-in catalogue
    window.settings().setValue(QStringLiteral("language"), language);
    window.settings().sync();
    window.open();

    importAndSynchronise();
    QCOMPARE(m_summary == QLatin1String(summary), isItalian);
    QVERIFY(m_summary.contains(QLatin1Char('7')) && m_summary.contains(QLatin1Char('4')));
    QCOMPARE(window.column(WindowFixture::Status).join(QLatin1Char(' ')),
             QStringLiteral("1 1 1 1 1 1 1"));
    QVERIFY(!QDir(window.path("backups")).isEmpty());
    correctOneSong();
    transfer();
    rebuildIndex();
    const QList<QByteArray> list = saveList().split('\n');

    QCOMPARE(list.size(), 9); // a header, seven songs, and the end of the last line
    QCOMPARE(list.constFirst() == "TITOLO;ARTISTA;FILE;", isItalian);
    QCOMPARE(list.constFirst().count(';'), 3);
    QVERIFY(list.contains("SANTA LUCIA;A SINGER;/music/SANTALUC.mid;"));
    QVERIFY(std::is_sorted(list.begin() + 1, list.end() - 1));
    QCOMPARE(window.driver.boxes.size(), 4);
    QCOMPARE(window.driver.boxes == m_italianBoxes, isItalian);
    for (int i = 0; i < 4; ++i)
        QVERIFY(isItalian || window.driver.boxes.at(i) != m_italianBoxes.at(i));
    QVERIFY2(window.driver.problems().isEmpty(), qPrintable(window.driver.problems()));
}

QStringList tst_WholeRoad::copyOfSamples() const
{
    QStringList songs;
    const QDir samples(QStringLiteral(TARVEL4_SAMPLES));
    const QStringList names = samples.entryList({QStringLiteral("*.mid"), QStringLiteral("*.kar"),
                                                 QStringLiteral("*.mf?"), QStringLiteral("*.mp3"),
                                                 QStringLiteral("*.cdg")},
                                                QDir::Files, QDir::Name);
    for (const QString &name : names) {
        const QString copy = m_window->path("songs/") + name;
        if (QFile::copy(samples.filePath(name), copy) && !name.endsWith(QLatin1String(".cdg")))
            songs.append(copy);
    }
    return songs;
}

void tst_WholeRoad::importAndSynchronise()
{
    DialogDriver &driver = m_window->driver;
    driver.expect<ProceedDialog>([&](ProceedDialog &dialog) {
        m_summary = dialog.findChild<QLabel *>(QStringLiteral("msgLabel"))->text();
        driver.clickIn(dialog, QStringLiteral("yesPushButton"));
    });
    driver.click<BackupDialog>(QStringLiteral("browsePushButton"));
    driver.chooseFiles({m_window->path("backups")});
    driver.click<BackupDialog>(QStringLiteral("doBackupPushButton"));
    driver.answerBox(QMessageBox::Ok);
    driver.click<NoCopyrightDialog>(QStringLiteral("yesAllPushButton"));
    m_window->import(copyOfSamples());
}

void tst_WholeRoad::correctOneSong()
{
    DialogDriver &driver = m_window->driver;
    const int row = m_window->column(WindowFixture::Name).indexOf(QStringLiteral("SANTALUC.mid"));
    driver.expect<DataEditDialog>([&](DataEditDialog &dialog) {
        dialog.findChild<QComboBox *>(QStringLiteral("artistComboBox"))
            ->setEditText(QStringLiteral("A singer"));
        driver.clickIn(dialog, QStringLiteral("savePushButton"));
    });
    m_window->doubleClick(row, WindowFixture::Title);
    QCOMPARE(m_window->column(WindowFixture::Artist).at(row), QStringLiteral("A singer"));
    QCOMPARE(m_window->column(WindowFixture::Status).at(row), QStringLiteral("2"));
}

void tst_WholeRoad::transfer()
{
    QVERIFY(QDir().mkpath(m_window->path("card/music")));
    m_window->driver.answerBox(QMessageBox::Ok);
    m_window->transferTo(m_window->path("card/music"));
    QCOMPARE(QDir(m_window->path("card/music")).entryList(QDir::Files).size(), 8);
    QVERIFY(QFile::exists(m_window->path("card/music/AULDLANG.cdg")));
    QVERIFY(IndexVerifier(m_window->path("card")).verify().isEmpty());
}

void tst_WholeRoad::rebuildIndex()
{
    DialogDriver &driver = m_window->driver;
    driver.expect<IndexDialog>([&](IndexDialog &dialog) {
        dialog.findChild<QLineEdit *>(QStringLiteral("pathLineEdit"))
            ->setText(m_window->path("card"));
        driver.clickIn(dialog, QStringLiteral("rebuildRadioButton"));
        driver.clickIn(dialog, QStringLiteral("startPushButton"));
        driver.clickIn(dialog, QStringLiteral("closePushButton"));
    });
    driver.answerBox(QMessageBox::Ok);
    m_window->trigger("optimizeMemory");
    QVERIFY(IndexVerifier(m_window->path("card")).verify().isEmpty());
}

QByteArray tst_WholeRoad::saveList()
{
    DialogDriver &driver = m_window->driver;
    driver.expect<SongsListDialog>([&](SongsListDialog &dialog) {
        dialog.findChild<QLineEdit *>(QStringLiteral("sourceLineEdit"))
            ->setText(m_window->path("card"));
        dialog.findChild<QLineEdit *>(QStringLiteral("targetLineEdit"))
            ->setText(m_window->path("list.csv"));
        driver.clickIn(dialog, QStringLiteral("savePushButton"));
        driver.clickIn(dialog, QStringLiteral("exitPushButton"));
    });
    driver.answerBox(QMessageBox::Ok);
    m_window->trigger("actionSongsList");
    return WindowFixture::read(m_window->path("list.csv"));
}

QTEST_MAIN(tst_WholeRoad)
#include "tst_wholeroad.moc"
