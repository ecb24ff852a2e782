#include "tests/ui/dialogdriver.h"
#include "tests/ui/focuschain.h"
#include "tests/ui/preparedmemory.h"
#include "ui/songslistdialog.h"

#include <QComboBox>
#include <QLabel>
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

    void textsOfTheForm();
    void defaultTargets_data();
    void defaultTargets();
    void browsingForTheMemory();
    void browsingForTheFile();
    void cancelledBrowsing();
    void missingSources_data();
    void missingSources();
    void unwritableTargets_data();
    void unwritableTargets();
    void orders_data();
    void orders();
    void titleWithASemicolonShiftsItsLine();
    void unpreparedMemories_data();
    void unpreparedMemories();
    void failures_data();
    void failures();
    void slotsShowWhatTheyAreGiven();
    void closing_data();
    void closing();
    void enterSaves();
    void tabGoesFromTopToBottom();

private:
    template <class Widget> Widget *child(const char *name) const
    {
        return m_dialog->findChild<Widget *>(QLatin1String(name));
    }
    void open()
    {
        m_dialog.reset(new SongsListDialog);
        m_dialog->show();
    }
    void click(const char *name) const
    {
        QTest::mouseClick(child<QPushButton>(name), Qt::LeftButton);
    }
    QStringList save()
    {
        DialogDriver driver;
        driver.answerBox(QMessageBox::Ok);
        click("savePushButton");
        if (!driver.problems().isEmpty())
            driver.boxes.append(driver.problems());
        m_lastIcon = driver.lastBox.icon;
        return driver.boxes;
    }
    bool canBeUsed() const
    {
        return child<QPushButton>("savePushButton")->isEnabled()
            && child<QPushButton>("exitPushButton")->isEnabled();
    }
    static QSettings settings()
    {
        return QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft"));
    }
    static QStringList box(const QString &text)
    {
        return {QStringLiteral("Salva lista song|") + text};
    }
    static QString notPrepared()
    {
        return QStringLiteral("Impossibile proseguire, la memoria non è preparata per Tarvel");
    }
    QString path(const QString &name) const { return m_dir->filePath(name); }
    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }
    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void fillIn() const
    {
        child<QLineEdit>("sourceLineEdit")->setText(path(QStringLiteral("card")));
        child<QLineEdit>("targetLineEdit")->setText(path(QStringLiteral("list.csv")));
    }

    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<SongsListDialog> m_dialog;
    QMessageBox::Icon m_lastIcon = QMessageBox::NoIcon;
};

void tst_SongsListDialog::init()
{
    settings().clear();
    m_dir.reset(new QTemporaryDir);
    PreparedMemory::write(path(QStringLiteral("card")));
    open();
}

void tst_SongsListDialog::cleanup()
{
    m_dialog.reset();
    m_dir.reset();
}

void tst_SongsListDialog::textsOfTheForm()
{
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Save song list"));
    QCOMPARE(child<QLabel>("sourceLabel")->text(), QStringLiteral("CF/USB:"));
    QCOMPARE(child<QLabel>("targetLabel")->text(), QStringLiteral("File:"));
    QCOMPARE(child<QLabel>("orderLabel")->text(), QStringLiteral("Ordina per:"));
    QCOMPARE(child<QPushButton>("browseDirPushButton")->text(), QStringLiteral("Browse"));
    QCOMPARE(child<QPushButton>("browseFilePushButton")->text(), QStringLiteral("Browse"));
    QCOMPARE(child<QPushButton>("savePushButton")->text(), QStringLiteral("Salva"));
    QCOMPARE(child<QPushButton>("exitPushButton")->text(), QStringLiteral("Exit"));
    auto *order = child<QComboBox>("orderComboBox");
    QCOMPARE(order->count(), 2);
    QCOMPARE(order->itemText(0), QStringLiteral("Titolo"));
    QCOMPARE(order->itemText(1), QStringLiteral("Artista"));
    QCOMPARE(order->currentIndex(), 0);
}

void tst_SongsListDialog::defaultTargets_data()
{
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("target");
    QTest::newRow("no stored memory") << QString() << QStringLiteral("/SongsList.csv");
    QTest::newRow("a mounted memory")
        << QStringLiteral("/media/card") << QStringLiteral("/media/card/SongsList.csv");
    QTest::newRow("a slash at the end is enough")
        << QStringLiteral("/media/card/") << QStringLiteral("/media/card/SongsList.csv");
    QTest::newRow("backslashes become slashes")
        << QStringLiteral("E:\\my\\card") << QStringLiteral("E:/my/card/SongsList.csv");
    QTest::newRow("a backslash at the end is enough")
        << QStringLiteral("E:\\") << QStringLiteral("E:/SongsList.csv");
}

void tst_SongsListDialog::defaultTargets()
{
    QFETCH(QString, root);
    QFETCH(QString, target);
    if (!root.isEmpty())
        settings().setValue(QStringLiteral("mediaroot"), root);
    open();
    QCOMPARE(child<QLineEdit>("sourceLineEdit")->text(), root);
    QCOMPARE(child<QLineEdit>("targetLineEdit")->text(), target);
}

void tst_SongsListDialog::browsingForTheMemory()
{
    const QString target = child<QLineEdit>("targetLineEdit")->text();
    DialogDriver driver;
    driver.expect<QFileDialog>([this](QFileDialog &chooser) {
        QCOMPARE(chooser.windowTitle(), QStringLiteral("Scegli cartella"));
        QCOMPARE(chooser.directory().path(), QStringLiteral("/home"));
        chooser.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(m_dir->path());
        static_cast<QDialog &>(chooser).accept();
    });
    click("browseDirPushButton");
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(child<QLineEdit>("sourceLineEdit")->text(), m_dir->path());
    QCOMPARE(settings().value(QStringLiteral("mediaroot")).toString(), m_dir->path());
    QCOMPARE(child<QLineEdit>("targetLineEdit")->text(), target);
}

void tst_SongsListDialog::browsingForTheFile()
{
    DialogDriver driver;
    driver.expect<QFileDialog>([this](QFileDialog &chooser) {
        QCOMPARE(chooser.windowTitle(), QStringLiteral("Scegli nome del file"));
        QCOMPARE(chooser.acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(chooser.nameFilters(), QStringList(QStringLiteral("File (*.csv)")));
        chooser.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))
            ->setText(path(QStringLiteral("new.csv")));
        static_cast<QDialog &>(chooser).accept();
    });
    click("browseFilePushButton");
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(child<QLineEdit>("targetLineEdit")->text(), path(QStringLiteral("new.csv")));
    QVERIFY(!settings().contains(QStringLiteral("mediaroot")));
}

void tst_SongsListDialog::cancelledBrowsing()
{
    fillIn();
    for (const char *button : {"browseDirPushButton", "browseFilePushButton"}) {
        DialogDriver driver;
        driver.expect<QFileDialog>([](QFileDialog &chooser) { chooser.close(); });
        click(button);
        QCOMPARE(driver.problems(), QString());
    }
    QCOMPARE(child<QLineEdit>("sourceLineEdit")->text(), path(QStringLiteral("card")));
    QCOMPARE(child<QLineEdit>("targetLineEdit")->text(), path(QStringLiteral("list.csv")));
    QVERIFY(!settings().contains(QStringLiteral("mediaroot")));
}

void tst_SongsListDialog::missingSources_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("no path") << QString();
    QTest::newRow("a folder that is not there") << QStringLiteral("/no/such/card");
}

void tst_SongsListDialog::missingSources()
{
    QFETCH(QString, source);
    fillIn();
    child<QLineEdit>("sourceLineEdit")->setText(source);
    QCOMPARE(save(), box(QStringLiteral("Il percorso selezionato non esiste")));
    QCOMPARE(m_lastIcon, QMessageBox::Warning);
    QVERIFY(!QFile::exists(path(QStringLiteral("list.csv"))));
    QVERIFY(canBeUsed());
}

void tst_SongsListDialog::unwritableTargets_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("no path") << QString();
    QTest::newRow("in a folder that is not there") << QStringLiteral("none/list.csv");
    QTest::newRow("a folder") << QStringLiteral("card");
    QTest::newRow("a pipe that nobody reads") << QStringLiteral("pipe");
    QTest::newRow("below a file") << QStringLiteral("card/index.id3/list.csv");
}

void tst_SongsListDialog::unwritableTargets()
{
    QFETCH(QString, target);
    QCOMPARE(mkfifo(QFile::encodeName(path(QStringLiteral("pipe"))).constData(), 0600), 0);
    fillIn();
    child<QLineEdit>("targetLineEdit")->setText(target.isEmpty() ? QString() : path(target));
    QCOMPARE(save(), box(QStringLiteral("Il percorso di destinazione non esiste")));
    QCOMPARE(m_lastIcon, QMessageBox::Warning);
    QVERIFY(canBeUsed());
}

void tst_SongsListDialog::orders_data()
{
    QTest::addColumn<int>("order");
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("by title") << 0
                              << QByteArray("TITOLO;ARTISTA;FILE;\n"
                                            "AZZURRO; LIVE;CELENTANO;/a/z.mid;\n"
                                            "CHIQUITITA;ABBA;/b.mp3;\n"
                                            "WATERLOO;ABBA;/a/w.mid;\n");
    QTest::newRow("by artist, then by title") << 1
                                              << QByteArray("TITOLO;ARTISTA;FILE;\n"
                                                            "CHIQUITITA;ABBA;/b.mp3;\n"
                                                            "WATERLOO;ABBA;/a/w.mid;\n"
                                                            "AZZURRO; LIVE;CELENTANO;/a/z.mid;\n");
}

void tst_SongsListDialog::orders()
{
    QFETCH(int, order);
    QFETCH(QByteArray, list);
    write(QStringLiteral("list.csv"), QByteArray(5000, 'x')); // an earlier, longer list
    fillIn();
    auto *box = child<QComboBox>("orderComboBox");
    box->setFocus();
    for (int i = 0; i < order; ++i)
        QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(save(), this->box(QStringLiteral("Operazione completata")));
    QCOMPARE(m_lastIcon, QMessageBox::Information);
    QCOMPARE(read(QStringLiteral("list.csv")), list);
    QCOMPARE(child<QProgressBar>("progressBar")->maximum(), 3);
    QCOMPARE(child<QProgressBar>("progressBar")->value(), 3);
    QVERIFY(canBeUsed());
}

void tst_SongsListDialog::titleWithASemicolonShiftsItsLine()
{
    fillIn();
    QCOMPARE(save(), box(QStringLiteral("Operazione completata")));
    QVERIFY(read(QStringLiteral("list.csv")).contains("\nAZZURRO; LIVE;CELENTANO;/a/z.mid;\n"));
}

void tst_SongsListDialog::unpreparedMemories_data()
{
    QTest::addColumn<QString>("missing");
    for (const char *name : {"index.id3", "ordfile.id3", "title.id3", "artist.id3", "atitle.id3",
                             "aartist.id3", "fsinfos.id3"})
        QTest::newRow(qPrintable(QStringLiteral("without ") + QLatin1String(name)))
            << QString::fromLatin1(name);
}

void tst_SongsListDialog::unpreparedMemories()
{
    QFETCH(QString, missing);
    QVERIFY(QFile::remove(path(QStringLiteral("card/") + missing)));
    fillIn();
    QCOMPARE(save(), box(notPrepared()));
    QCOMPARE(m_lastIcon, QMessageBox::Warning);
    QCOMPARE(read(QStringLiteral("list.csv")), QByteArray());

    write(QStringLiteral("list.csv"), "an earlier list");
    QCOMPARE(save(), box(notPrepared()));
    QCOMPARE(read(QStringLiteral("list.csv")), QByteArray("an earlier list"));
    QVERIFY(canBeUsed());
}

void tst_SongsListDialog::failures_data()
{
    QTest::addColumn<QByteArray>("index");
    QTest::newRow("an old index that ends inside a record")
        << QByteArray(PreparedMemory::pathRecord(0, "/a/w.mid") + "xyz");
    QTest::newRow("an old index that ends inside its first record") << QByteArray("xyz");
}

void tst_SongsListDialog::failures()
{
    QFETCH(QByteArray, index);
    write(QStringLiteral("card/index.id3"), index);
    fillIn();
    QCOMPARE(save(), box(QStringLiteral("Errore durante la creazione del file")));
    QCOMPARE(m_lastIcon, QMessageBox::Warning);
    QVERIFY(canBeUsed());
}

void tst_SongsListDialog::slotsShowWhatTheyAreGiven()
{
    m_dialog->initProgress(500);
    QCOMPARE(child<QProgressBar>("progressBar")->minimum(), 0);
    QCOMPARE(child<QProgressBar>("progressBar")->maximum(), 500);
    m_dialog->setProgressValue(250);
    QCOMPARE(child<QProgressBar>("progressBar")->value(), 250);
}

void tst_SongsListDialog::closing_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("Exit") << QStringLiteral("button");
    QTest::newRow("Escape") << QStringLiteral("escape");
    QTest::newRow("frame") << QStringLiteral("frame");
}

void tst_SongsListDialog::closing()
{
    QFETCH(QString, how);
    if (how == QLatin1String("button"))
        click("exitPushButton");
    else if (how == QLatin1String("escape"))
        QTest::keyClick(m_dialog.data(), Qt::Key_Escape);
    else
        m_dialog->close();
    QVERIFY(!m_dialog->isVisible());
}

void tst_SongsListDialog::enterSaves()
{
    fillIn();
    DialogDriver driver;
    driver.answerBox(QMessageBox::Ok);
    QTest::keyClick(child<QLineEdit>("targetLineEdit"), Qt::Key_Return);
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(driver.boxes, box(QStringLiteral("Operazione completata")));
    QCOMPARE(m_dialog->focusWidget(), child<QPushButton>("exitPushButton"));
}

void tst_SongsListDialog::tabGoesFromTopToBottom()
{
    QCOMPARE(focusChain(child<QWidget>("sourceLineEdit")).join(QLatin1Char(' ')),
             QStringLiteral("sourceLineEdit browseDirPushButton targetLineEdit "
                            "browseFilePushButton orderComboBox savePushButton exitPushButton"));
    QCOMPARE(child<QLabel>("sourceLabel")->buddy(), child<QWidget>("sourceLineEdit"));
    QCOMPARE(child<QLabel>("targetLabel")->buddy(), child<QWidget>("targetLineEdit"));
    QCOMPARE(child<QLabel>("orderLabel")->buddy(), child<QWidget>("orderComboBox"));
}

QTEST_MAIN(tst_SongsListDialog)
#include "tst_songslistdialog.moc"
