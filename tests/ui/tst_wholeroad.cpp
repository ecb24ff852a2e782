#include "tests/ui/windowtest.h"

#include "indexer/indexverifier.h"
#include "ui/appearance.h"
#include "ui/dataeditdialog.h"
#include "ui/indexdialog.h"
#include "ui/songslistdialog.h"

#include <QComboBox>

using namespace tarvel4;
using namespace TestFiles;

/** The samples, clicked from import to song list, with the built-in catalogue and real files. */
class tst_WholeRoad : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void fromImportToList_data()
    {
        const Table<QString, bool> row;
        row("Italian", "it", true);
        row("English", "en", false);
    }
    void fromImportToList()
    {
        const auto [language, isItalian] = cells<QString, bool>();
        QTranslator translator;
        Appearance::installLanguage(translator, language);
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        QFile::remove(path("songsdb_debug")); // the built-in catalogue
        settings().setValue(text("language"), language);
        openWindow();

        importAndSynchronise();
        QCOMPARE(m_summary
                     == text("Sono stati esaminti 7 files, trovate 7 songs di cui 4 di (c)K-Varo"),
                 isItalian);
        QVERIFY(m_summary.contains(QLatin1Char('7')) && m_summary.contains(QLatin1Char('4')));
        QCOMPARE(statuses(), text("1 1 1 1 1 1 1"));
        QVERIFY(!QDir(path("backups")).isEmpty());
        correctOneSong();
        transfer();
        rebuildIndex();
        const QList<QByteArray> list = saveList().split('\n');

        QCOMPARE(list.size(), 9); // a header, seven songs, and the end of the last line
        QCOMPARE(list.constFirst() == "TITOLO;ARTISTA;FILE;", isItalian);
        QCOMPARE(list.constFirst().count(';'), 3);
        QVERIFY(list.contains("SANTA LUCIA;A SINGER;/music/SANTALUC.mid;"));
        QVERIFY(std::is_sorted(list.begin() + 1, list.end() - 1));
        const QStringList italianBoxes =
            strings({"Information|Backup|Backup eseguito correttamente",
                     "Information|Trasferimento|Tutti i file sono stati copiati correttamente",
                     "Information|Ottimizza memoria|Operazione completata con successo",
                     "Information|Salva lista song|Operazione completata"});
        QCOMPARE(m_driver->boxes.size(), 4);
        for (int i = 0; i < 4; ++i)
            QCOMPARE(m_driver->boxes.at(i) == italianBoxes.at(i), isItalian);
    }

private:
    QStringList copyOfSamples() const
    {
        QStringList songs;
        const QDir samples(QStringLiteral(TARVEL4_SAMPLES));
        const QStringList names = samples.entryList(
            strings({"*.mid", "*.kar", "*.mf?", "*.mp3", "*.cdg"}), QDir::Files, QDir::Name);
        for (const QString &name : names) {
            const QString copy = path(text("songs/") + name);
            if (QFile::copy(samples.filePath(name), copy) && !name.endsWith(text(".cdg")))
                songs.append(copy);
        }
        return songs;
    }

    void importAndSynchronise()
    {
        answerSummary("yesPushButton");
        chooseBackup(path("backups"));
        answerQuestions(text("yesAll"));
        import(copyOfSamples());
    }

    void correctOneSong()
    {
        const int row = static_cast<int>(column(Name).indexOf(text("SANTALUC.mid")));
        m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
            child<QComboBox>(dialog, "artistComboBox")->setEditText(text("A singer"));
            click(dialog, "savePushButton");
        });
        doubleClick(row);
        QCOMPARE(column(Artist).at(row), text("A singer"));
        QCOMPARE(column(Status).at(row), text("2"));
    }

    void transfer()
    {
        QVERIFY(QDir().mkpath(path("card/music")));
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card/music"));
        QCOMPARE(namesIn(path("card/music")).size(), 8);
        QVERIFY(QFile::exists(path("card/music/AULDLANG.cdg")));
        QVERIFY(IndexVerifier(path("card")).verify().isEmpty());
    }

    void rebuildIndex()
    {
        m_driver->expect<IndexDialog>([this](IndexDialog &dialog) {
            child<QLineEdit>(dialog, "pathLineEdit")->setText(path("card"));
            click(dialog, "rebuildRadioButton");
            click(dialog, "startPushButton");
            click(dialog, "closePushButton");
        });
        m_driver->answerBox(QMessageBox::Ok);
        trigger("optimizeMemory");
        QVERIFY(IndexVerifier(path("card")).verify().isEmpty());
    }

    QByteArray saveList()
    {
        m_driver->expect<SongsListDialog>([this](SongsListDialog &dialog) {
            child<QLineEdit>(dialog, "sourceLineEdit")->setText(path("card"));
            child<QLineEdit>(dialog, "targetLineEdit")->setText(path("list.csv"));
            click(dialog, "savePushButton");
            click(dialog, "exitPushButton");
        });
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionSongsList");
        return read(path("list.csv"));
    }
};

QTEST_MAIN(tst_WholeRoad)
#include "tst_wholeroad.moc"
