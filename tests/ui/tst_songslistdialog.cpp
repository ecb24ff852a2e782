#include "tests/indexer/memoryfixture.h"
#include "tests/ui/dialogtest.h"
#include "ui/songslistdialog.h"

#include <QComboBox>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace tarvel4;

class tst_SongsListDialog : public DialogTest<SongsListDialog>
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        settings().clear();
        m_memory = std::make_unique<MemoryFixture>();
        m_memory->putMidi(text("/card/a/w.mid"), "Waterloo", "Abba");
        m_memory->putMidi(text("/card/a/z.mid"), "Azzurro; live", "Celentano");
        m_memory->putMidi(text("/card/b.mid"), "Chiquitita", "Abba");
        QVERIFY(Index().rebuild(path("card")));
        open();
        fillIn(path("card"), path("list.csv"));
    }
    void cleanup()
    {
        QVERIFY(find("savePushButton")->isEnabled());
        QVERIFY(find("exitPushButton")->isEnabled());
        m_dialog.reset();
    }

    void orderBoxStartsWithTheTitle()
    {
        const auto *order = find<QComboBox>("orderComboBox");
        QCOMPARE(order->count(), 2);
        QCOMPARE(order->itemText(0), text("Titolo"));
        QCOMPARE(order->itemText(1), text("Artista"));
        QCOMPARE(order->currentIndex(), 0);
    }

    void defaultTargets_data()
    {
        const Table<QString, QString> row;
        row("no stored memory", "", "/SongsList.csv");
        row("a mounted memory", "/media/card", "/media/card/SongsList.csv");
        row("a slash at the end is enough", "/media/card/", "/media/card/SongsList.csv");
        row("backslashes become slashes", "E:\\my\\card", "E:/my/card/SongsList.csv");
        row("a backslash at the end is enough", "E:\\", "E:/SongsList.csv");
    }
    void defaultTargets()
    {
        const auto [root, target] = cells<QString, QString>();
        if (!root.isEmpty())
            settings().setValue(text("mediaroot"), root);
        open();
        QCOMPARE(textOf("sourceLineEdit"), root);
        QCOMPARE(textOf("targetLineEdit"), target);
    }

    void browsingForTheFile()
    {
        for (const bool isChosen : {false, true}) {
            DialogDriver driver;
            driver.expect<QFileDialog>([&](QFileDialog &chooser) {
                QCOMPARE(chooser.windowTitle(), text("Scegli nome del file"));
                QCOMPARE(chooser.acceptMode(), QFileDialog::AcceptSave);
                QCOMPARE(chooser.nameFilters(), strings({"File (*.csv)"}));
                child<QLineEdit>(chooser, "fileNameEdit")->setText(path("new.csv"));
                static_cast<QDialog &>(chooser).done(static_cast<int>(isChosen));
            });
            click(*m_dialog, "browseFilePushButton");
            QCOMPARE(textOf("targetLineEdit"), path(isChosen ? "new.csv" : "list.csv"));
        }
        QVERIFY(!settings().contains(text("mediaroot")));
    }

    void orders_data()
    {
        const Table<bool, QByteArray> row;
        const QByteArray azzurro("AZZURRO; LIVE;CELENTANO;/a/z.mid;\n");
        const QByteArray others("CHIQUITITA;ABBA;/b.mid;\nWATERLOO;ABBA;/a/w.mid;\n");
        row("by title, which may hold a semicolon", false, azzurro + others);
        row("by artist, then by title", true, others + azzurro);
    }
    void orders()
    {
        const auto [byArtist, list] = cells<bool, QByteArray>();
        TestFiles::write(path("list.csv"), QByteArray(5000, 'x')); // an earlier, longer list
        if (byArtist)
            QTest::keyClick(find("orderComboBox"), Qt::Key_Down);
        QCOMPARE(
            pressAndReplace(),
            QStringList({question, text("Information|Salva lista song|Operazione completata")}));
        QCOMPARE(TestFiles::read(path("list.csv")), QByteArray("TITOLO;ARTISTA;FILE;\n" + list));
        QCOMPARE(progress(), text("0 3 3"));
    }

    void existingListIsNotReplacedUnasked()
    {
        TestFiles::write(path("list.csv"), "an earlier list");
        QCOMPARE(press("savePushButton", 1, QMessageBox::No), QStringList(question));
        QCOMPARE(m_lastBox.buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(m_lastBox.addition, QDir::toNativeSeparators(path("list.csv")));
        QCOMPARE(TestFiles::read(path("list.csv")), QByteArray("an earlier list"));

        DialogDriver driver;
        driver.answerBox(QMessageBox::No);
        QTest::keyClick(find("targetLineEdit"), Qt::Key_Return);
        QCOMPARE(TestFiles::read(path("list.csv")), QByteArray("an earlier list"));
    }

    void listThatTheFileDialogAskedAboutIsNotAskedAboutAgain()
    {
        TestFiles::write(path("list.csv"), "an earlier list");
        const auto browse = [this] {
            DialogDriver driver;
            driver.expect<QFileDialog>([](QFileDialog &chooser) {
                static_cast<QDialog &>(chooser).done(QDialog::Accepted);
            });
            click(*m_dialog, "browseFilePushButton");
        };
        browse();
        QCOMPARE(textOf("targetLineEdit"), path("list.csv"));
        QCOMPARE(press("savePushButton"),
                 strings({"Information|Salva lista song|Operazione completata"}));
        QVERIFY(TestFiles::read(path("list.csv")).startsWith("TITOLO"));
        QCOMPARE(press("savePushButton", 1, QMessageBox::No), QStringList(question)); // once

        browse();
        TestFiles::write(path("other.csv"), "another list");
        fillIn(path("card"), path("other.csv"));
        QCOMPARE(press("savePushButton", 1, QMessageBox::No), QStringList(question));
    }

    void targetThatIsNoPlaceFollowsTheChosenMemory_data()
    {
        const Table<QString, QString, bool> row;
        row("a memory that is not there now", "/media/gone", "", true);
        row("a memory that is there keeps its list", "there", "", false);
        row("a target of the user's own is kept", "/media/gone", "/media/gone/mine.csv", false);
    }
    void targetThatIsNoPlaceFollowsTheChosenMemory()
    {
        auto [stored, typed, follows] = cells<QString, QString, bool>();
        if (stored == text("there"))
            stored = m_memory->root();
        settings().setValue(text("mediaroot"), stored);
        open();
        if (!typed.isEmpty())
            retype(find<QLineEdit>("targetLineEdit"), typed);
        const QString before = textOf("targetLineEdit");
        DialogDriver driver;
        driver.chooseFiles({path("card")});
        click(*m_dialog, "browseDirPushButton");
        QCOMPARE(textOf("targetLineEdit"), follows ? path("card/SongsList.csv") : before);
    }

    void failures_data()
    {
        const Table<QString, QString, QString> row;
        const QString noSource = text("Il percorso selezionato non esiste");
        const QString noTarget = text("Il percorso di destinazione non esiste");
        row("no source", "", "list.csv", noSource);
        row("a source that is not there", "none", "list.csv", noSource);
        row("no target", "card", "", noTarget);
        QVector<const char *> noFiles{"none/list.csv", "card", "card/index.id3/list"};
#ifdef Q_OS_UNIX
        noFiles += "pipe";
#endif
        for (const char *target : noFiles)
            QTest::addRow("a target that is no file: %s", target) << "card" << target << noTarget;
        row("an old index that ends inside a record", "torn", "list.csv",
            "Errore durante la creazione del file");
    }
    void failures()
    {
        const auto [source, target, message] = cells<QString, QString, QString>();
#ifdef Q_OS_UNIX
        QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0); // nobody reads it
#endif
        if (source == text("torn")) {
            QVERIFY(QFile::rename(path("card"), path("torn")));
            QVERIFY(QFile::resize(path("torn/index.id3"), 270 + 3));
        }
        const auto absolute = [this](const QString &name) {
            return name.isEmpty() ? name : path(qPrintable(name));
        };
        fillIn(absolute(source), absolute(target));
        QCOMPARE(press("savePushButton"), QStringList(text("Warning|Salva lista song|") + message));
        QCOMPARE(QFile::exists(path("list.csv")), source == text("torn"));
    }

    void unpreparedMemories_data()
    {
        Table<QString>();
        for (const QString &name : MemoryFixture::preparedFiles())
            QTest::addRow("without %s the memory is not prepared", qPrintable(name)) << name;
    }
    void unpreparedMemories()
    {
        const auto [missing] = cells<QString>();
        QVERIFY(QFile::remove(path("card/") + missing));
        const QString message = text("Warning|Salva lista song|Impossibile proseguire, la memoria "
                                     "non è preparata per Tarvel");
        for (const QByteArray &earlier : {QByteArray(), QByteArray("an earlier list")}) {
            TestFiles::write(path("list.csv"), earlier);
            QCOMPARE(earlier.isEmpty() ? press("savePushButton") : pressAndReplace(),
                     earlier.isEmpty() ? QStringList(message) : QStringList({question, message}));
            QCOMPARE(TestFiles::read(path("list.csv")), earlier);
        }
    }

    void slotsShowWhatTheyAreGiven()
    {
        m_dialog->initProgress(500);
        m_dialog->setProgressValue(250);
        QCOMPARE(progress(), text("0 250 500"));
    }

    void enterSaves()
    {
        DialogDriver driver;
        driver.answerBox(QMessageBox::Ok);
        QTest::keyClick(find("targetLineEdit"), Qt::Key_Return);
        QCOMPARE(driver.boxes, strings({"Information|Salva lista song|Operazione completata"}));
        QCOMPARE(m_dialog->focusWidget(), find("exitPushButton"));
    }

private:
    QString path(const char *name) const
    {
        return m_memory->path(QLatin1Char('/') + text(name));
    }
    void fillIn(const QString &source, const QString &target) const
    {
        find<QLineEdit>("sourceLineEdit")->setText(source);
        find<QLineEdit>("targetLineEdit")->setText(target);
    }

    QStringList pressAndReplace()
    {
        DialogDriver driver;
        driver.answerBox(QMessageBox::Yes);
        driver.answerBox(QMessageBox::Ok);
        click(*m_dialog, "savePushButton");
        return driver.boxes;
    }

    const QString question =
        text("Question|Salva lista song|Il file esiste già, vuoi sostituirlo?");
    std::unique_ptr<MemoryFixture> m_memory;
};

QTEST_MAIN(tst_SongsListDialog)
#include "tst_songslistdialog.moc"
