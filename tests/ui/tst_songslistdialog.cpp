#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/ui/dialogdriver.h"
#include "tests/ui/forms.h"
#include "tests/ui/preparedmemory.h"
#include "ui/songslistdialog.h"

#include <QComboBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>

#include <sys/stat.h>

using namespace tarvel4;

class tst_SongsListDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void orderBoxStartsWithTheTitle();
    void defaultTargets_data();
    void defaultTargets();
    void browsingForTheFile();
    void orders_data();
    void orders();
    void failures_data();
    void failures();
    void unpreparedMemories_data();
    void unpreparedMemories();
    void slotsShowWhatTheyAreGiven();
    void enterSaves();

private:
    template <class Widget> Widget *find(const char *name) const
    {
        return child<Widget>(*m_dialog, name);
    }
    void open()
    {
        m_dialog.reset(new SongsListDialog);
        m_dialog->show();
    }
    /** Saves the list, and gives the text of the box that comes, which has the \a icon. */
    QString save(QMessageBox::Icon icon)
    {
        DialogDriver driver;
        driver.answerBox(QMessageBox::Ok);
        click(*m_dialog, "savePushButton");
        if (driver.lastBox.icon != icon)
            return text("another icon");
        return driver.problems() + driver.boxes.join(QLatin1Char('\n'));
    }
    static QSettings settings() { return QSettings(text("kvaro"), text("tarvel4soft")); }
    QString path(const char *name) const { return m_dir->filePath(text(name)); }

    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<SongsListDialog> m_dialog;
};

void tst_SongsListDialog::init()
{
    settings().clear();
    m_dir.reset(new QTemporaryDir);
    PreparedMemory::write(path("card"));
    open();
    find<QLineEdit>("sourceLineEdit")->setText(path("card"));
    find<QLineEdit>("targetLineEdit")->setText(path("list.csv"));
}

void tst_SongsListDialog::cleanup()
{
    QVERIFY(find<QPushButton>("savePushButton")->isEnabled());
    QVERIFY(find<QPushButton>("exitPushButton")->isEnabled());
    m_dialog.reset();
}

void tst_SongsListDialog::orderBoxStartsWithTheTitle()
{
    const auto *order = find<QComboBox>("orderComboBox");
    QCOMPARE(order->count(), 2);
    QCOMPARE(order->itemText(0), text("Titolo"));
    QCOMPARE(order->itemText(1), text("Artista"));
    QCOMPARE(order->currentIndex(), 0);
}

void tst_SongsListDialog::defaultTargets_data()
{
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("target");
    const auto row = [](const char *name, const char *root, const char *target) {
        QTest::newRow(name) << text(root) << text(target);
    };
    row("no stored memory", "", "/SongsList.csv");
    row("a mounted memory", "/media/card", "/media/card/SongsList.csv");
    row("a slash at the end is enough", "/media/card/", "/media/card/SongsList.csv");
    row("backslashes become slashes", "E:\\my\\card", "E:/my/card/SongsList.csv");
    row("a backslash at the end is enough", "E:\\", "E:/SongsList.csv");
}

void tst_SongsListDialog::defaultTargets()
{
    QFETCH(QString, root);
    if (!root.isEmpty())
        settings().setValue(text("mediaroot"), root);
    open();
    QCOMPARE(find<QLineEdit>("sourceLineEdit")->text(), root);
    QTEST(find<QLineEdit>("targetLineEdit")->text(), "target");
}

void tst_SongsListDialog::browsingForTheFile()
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
        QCOMPARE(driver.problems(), QString());
        QCOMPARE(find<QLineEdit>("targetLineEdit")->text(),
                 path(isChosen ? "new.csv" : "list.csv"));
    }
    QVERIFY(!settings().contains(text("mediaroot")));
}

void tst_SongsListDialog::orders_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("by title, which may hold a semicolon") << QByteArray(
        "AZZURRO; LIVE;CELENTANO;/a/z.mid;\nCHIQUITITA;ABBA;/b.mp3;\nWATERLOO;ABBA;/a/w.mid;\n");
    QTest::newRow("by artist, then by title") << QByteArray(
        "CHIQUITITA;ABBA;/b.mp3;\nWATERLOO;ABBA;/a/w.mid;\nAZZURRO; LIVE;CELENTANO;/a/z.mid;\n");
}

void tst_SongsListDialog::orders()
{
    QFETCH(QByteArray, list);
    TestFiles::write(path("list.csv"), QByteArray(5000, 'x')); // an earlier, longer list
    if (!list.startsWith("AZZURRO"))
        QTest::keyClick(find<QComboBox>("orderComboBox"), Qt::Key_Down);
    QCOMPARE(save(QMessageBox::Information), text("Salva lista song|Operazione completata"));
    QCOMPARE(TestFiles::read(path("list.csv")), QByteArray("TITOLO;ARTISTA;FILE;\n" + list));
    QCOMPARE(find<QProgressBar>("progressBar")->maximum(), 3);
    QCOMPARE(find<QProgressBar>("progressBar")->value(), 3);
}

void tst_SongsListDialog::failures_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("message");
    const QString list = text("list.csv");
    const QString noSource = text("Il percorso selezionato non esiste");
    const QString noTarget = text("Il percorso di destinazione non esiste");
    QTest::newRow("no source") << QString() << list << noSource;
    QTest::newRow("a source that is not there") << text("none") << list << noSource;
    QTest::newRow("no target") << text("card") << QString() << noTarget;
    for (const QString &target : strings({"none/list.csv", "card", "pipe", "card/index.id3/list"}))
        QTest::newRow(qPrintable(text("a target that is no file: ") + target))
            << text("card") << target << noTarget;
    QTest::newRow("an old index that ends inside a record")
        << text("torn") << list << text("Errore durante la creazione del file");
}

void tst_SongsListDialog::failures()
{
    QFETCH(QString, source);
    QFETCH(QString, target);
    QFETCH(QString, message);
    QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0); // nobody reads it
    PreparedMemory::write(path("torn"));
    TestFiles::write(path("torn/index.id3"), PreparedMemory::pathRecord(0, "/a/w.mid") + "xyz");
    const auto absolute = [this](const QString &name) {
        return name.isEmpty() ? name : m_dir->filePath(name);
    };
    find<QLineEdit>("sourceLineEdit")->setText(absolute(source));
    find<QLineEdit>("targetLineEdit")->setText(absolute(target));
    QCOMPARE(save(QMessageBox::Warning), text("Salva lista song|") + message);
    QCOMPARE(QFile::exists(path("list.csv")), source == text("torn"));
}

void tst_SongsListDialog::unpreparedMemories_data()
{
    QTest::addColumn<QString>("missing");
    for (const char *name : {"index.id3", "ordfile.id3", "title.id3", "artist.id3", "atitle.id3",
                             "aartist.id3", "fsinfos.id3"})
        QTest::addRow("without %s", name) << text(name);
}

void tst_SongsListDialog::unpreparedMemories()
{
    QFETCH(QString, missing);
    QVERIFY(QFile::remove(path("card/") + missing));
    for (const QByteArray &earlier : {QByteArray(), QByteArray("an earlier list")}) {
        TestFiles::write(path("list.csv"), earlier);
        QCOMPARE(save(QMessageBox::Warning),
                 text("Salva lista song|Impossibile proseguire, la memoria non è preparata per "
                      "Tarvel"));
        QCOMPARE(TestFiles::read(path("list.csv")), earlier);
    }
}

void tst_SongsListDialog::slotsShowWhatTheyAreGiven()
{
    m_dialog->initProgress(500);
    m_dialog->setProgressValue(250);
    const auto *bar = find<QProgressBar>("progressBar");
    QCOMPARE(QVector<int>({bar->minimum(), bar->value(), bar->maximum()}),
             QVector<int>({0, 250, 500}));
}

void tst_SongsListDialog::enterSaves()
{
    DialogDriver driver;
    driver.answerBox(QMessageBox::Ok);
    QTest::keyClick(find<QLineEdit>("targetLineEdit"), Qt::Key_Return);
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(driver.boxes, strings({"Salva lista song|Operazione completata"}));
    QCOMPARE(m_dialog->focusWidget(), find<QWidget>("exitPushButton"));
}

QTEST_MAIN(tst_SongsListDialog)
#include "tst_songslistdialog.moc"
