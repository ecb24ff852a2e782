#include "tests/ui/dialogdriver.h"
#include "tests/ui/diskcheckprogram.h"
#include "tests/ui/focuschain.h"
#include "ui/indexdialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>

namespace {

constexpr int pastAnyTest = 20000; // milliseconds

/** Counts how often a widget is painted. */
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
    int count = 0;
};

} // namespace

class tst_IndexDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void textsOfTheForm();
    void opensWithTheStoredRoot();
    void browsing();
    void cancelledBrowsing();
    void missingRoots_data();
    void missingRoots();
    void runs_data();
    void runs();
    void rebuildReadsEverySongAgain();
    void singleErrorTurnsTheFinalBox();
    void nextRunForgetsTheErrors();
    void failures_data();
    void failures();
    void memoryWithoutSongsIsNotPrepared();
    void slotsShowWhatTheyAreGiven();
    void progressIsPaintedWithoutEvents();
    void diskChecks_data();
    void diskChecks();
    void pathWithoutADriveSkipsTheCheck();
    void checkIsIgnoredByAnUpdate();
    void checkIsIgnoredWhereItIsNotTicked();
    void nothingIsUsableDuringARun();
    void dialogCantBeClosedDuringACheck_data();
    void dialogCantBeClosedDuringACheck();
    void closing_data();
    void closing();
    void enterStartsARun();
    void tabGoesFromTopToBottom();
    void longPathsDoNotStretchTheDialog();

private:
    template <class Widget> Widget *child(const char *name) const
    {
        return m_dialog->findChild<Widget *>(QLatin1String(name));
    }
    QString report() const { return child<QPlainTextEdit>("reportPlainTextEdit")->toPlainText(); }
    bool canBeUsed() const
    {
        return child<QPushButton>("startPushButton")->isEnabled()
            && child<QPushButton>("closePushButton")->isEnabled()
            && child<QPushButton>("browsePushButton")->isEnabled()
            && child<QLineEdit>("pathLineEdit")->isEnabled();
    }
    void choose(const QString &path, bool rebuild, bool check = false)
    {
        child<QLineEdit>("pathLineEdit")->setText(path);
        click(rebuild ? "rebuildRadioButton" : "updateRadioButton");
        if (check)
            click("checkDiskCheckBox");
    }
    void click(const char *name) const
    {
        auto *button = child<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    }
    /** Presses "Inizia", answers the boxes that come, and gives their texts. */
    QStringList run(int boxes = 1)
    {
        DialogDriver driver;
        for (int i = 0; i < boxes; ++i)
            driver.answerBox(QMessageBox::Ok);
        click("startPushButton");
        if (!driver.problems().isEmpty())
            driver.boxes.append(driver.problems());
        m_lastIcon = driver.lastBox.icon;
        return driver.boxes;
    }
    static QStringList done()
    {
        return {QStringLiteral("Ottimizza memoria|Operazione completata con successo")};
    }
    static QStringList failed()
    {
        return {QStringLiteral("Ottimizza memoria|Operazione non riuscita.\nAssicurarsi che il "
                               "disco abbia sufficiente "
                               "spazio libero e che non sia protetto da scrittura.")};
    }
    static QStringList withErrors()
    {
        return {QStringLiteral("Ottimizza memoria|Durante l'operazione si sono verificati alcuni "
                               "errori.\nConsultare il "
                               "report per maggiori informazioni.")};
    }
    static QString plainReport()
    {
        return QStringLiteral("Ottimizzazione memoria in corso...\nOperazione completata");
    }
    QString card() const { return m_program->path(QStringLiteral("card")); }
    static void addSong(const QString &path)
    {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("no more than a name");
    }
    static bool isPrepared(const QString &root)
    {
        for (const char *name : {"index.id3", "ordfile.id3", "title.id3", "artist.id3",
                                 "atitle.id3", "aartist.id3", "fsinfos.id3"}) {
            if (!QFileInfo(root + QLatin1Char('/') + QLatin1String(name)).isFile())
                return false;
        }
        return true;
    }
    static QString mediaRoot()
    {
        return QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft"))
            .value(QStringLiteral("mediaroot"))
            .toString();
    }

    QScopedPointer<DiskCheckProgram> m_program;
    QScopedPointer<IndexDialog> m_dialog;
    QMessageBox::Icon m_lastIcon = QMessageBox::NoIcon;
};

void tst_IndexDialog::init()
{
    QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft")).clear();
    m_program.reset(new DiskCheckProgram);
    addSong(card() + QStringLiteral("/a.mid"));
    addSong(card() + QStringLiteral("/pop/b.mp3"));
    m_dialog.reset(new IndexDialog(nullptr, {pastAnyTest, pastAnyTest}));
    m_dialog->show();
}

void tst_IndexDialog::cleanup()
{
    m_dialog.reset();
    m_program.reset();
}

void tst_IndexDialog::textsOfTheForm()
{
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Dialog"));
    QStringList texts;
    for (const QLabel *label : m_dialog->findChildren<QLabel *>())
        texts.append(label->text());
    for (const QAbstractButton *button : m_dialog->findChildren<QAbstractButton *>())
        texts.append(button->text());
    for (const QString &text :
         {QStringLiteral("Seleziona la cartella principale della Compact Flash o della Penna USB "
                         "che vuoi ottimizzare per Tarvel4"),
          QStringLiteral("Sfoglia"), QStringLiteral("Seleziona l'azione che vuoi eseguire:"),
          QStringLiteral("Ho inserito o eliminato alcune song, aggiorna database"),
          QStringLiteral("Ho problemi con gli archivi, ricostruisci database"),
          QStringLiteral("Controlla struttura memoria"), QStringLiteral("File found:"),
          QStringLiteral("0"), QStringLiteral("Report:"), QStringLiteral("Inizia"),
          QStringLiteral("Chiudi")})
        QVERIFY2(texts.contains(text), qPrintable(text));
    QVERIFY(child<QRadioButton>("updateRadioButton")->isChecked());
    QVERIFY(!child<QCheckBox>("checkDiskCheckBox")->isChecked());
    QVERIFY(child<QPlainTextEdit>("reportPlainTextEdit")->isReadOnly());
    QVERIFY(canBeUsed());
}

void tst_IndexDialog::opensWithTheStoredRoot()
{
    QCOMPARE(child<QLineEdit>("pathLineEdit")->text(), QString());
    QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft"))
        .setValue(QStringLiteral("mediaroot"), QStringLiteral("/media/card"));
    m_dialog.reset(new IndexDialog);
    QCOMPARE(child<QLineEdit>("pathLineEdit")->text(), QStringLiteral("/media/card"));
}

void tst_IndexDialog::browsing()
{
    DialogDriver driver;
    driver.expect<QFileDialog>([this](QFileDialog &chooser) {
        QCOMPARE(chooser.windowTitle(), QStringLiteral("Scegli cartella"));
        QCOMPARE(chooser.directory().path(), QStringLiteral("/home"));
        QVERIFY(chooser.testOption(QFileDialog::ShowDirsOnly));
        QVERIFY(chooser.testOption(QFileDialog::DontResolveSymlinks));
        chooser.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(card());
        static_cast<QDialog &>(chooser).accept();
    });
    click("browsePushButton");
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(child<QLineEdit>("pathLineEdit")->text(), card());
    QCOMPARE(mediaRoot(), card());
}

void tst_IndexDialog::cancelledBrowsing()
{
    child<QLineEdit>("pathLineEdit")->setText(QStringLiteral("/typed"));
    DialogDriver driver;
    driver.expect<QFileDialog>([](QFileDialog &chooser) { chooser.close(); });
    click("browsePushButton");
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(child<QLineEdit>("pathLineEdit")->text(), QStringLiteral("/typed"));
    QCOMPARE(mediaRoot(), QString());
}

void tst_IndexDialog::missingRoots_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no path") << QString();
    QTest::newRow("a folder that is not there") << QStringLiteral("/no/such/card");
}

void tst_IndexDialog::missingRoots()
{
    QFETCH(QString, path);
    choose(path, false);
    QCOMPARE(run(),
             QStringList(QStringLiteral("Ottimizza memoria|Il percorso selezionato non esiste")));
    QCOMPARE(m_lastIcon, QMessageBox::Warning);
    QCOMPARE(report(), QString());
    QVERIFY(canBeUsed());
}

void tst_IndexDialog::runs_data()
{
    QTest::addColumn<bool>("rebuild");
    QTest::addColumn<bool>("preparedBefore");
    QTest::addColumn<QString>("separator");
    QTest::newRow("update of a new memory") << false << false << QString();
    QTest::newRow("update of a prepared memory") << false << true << QString();
    QTest::newRow("rebuild of a new memory") << true << false << QString();
    QTest::newRow("rebuild of a prepared memory") << true << true << QString();
    QTest::newRow("a slash at the end of the path") << true << false << QStringLiteral("/");
}

void tst_IndexDialog::runs()
{
    QFETCH(bool, rebuild);
    QFETCH(bool, preparedBefore);
    QFETCH(QString, separator);
    if (preparedBefore) {
        choose(card(), true);
        QCOMPARE(run(), done());
    }
    choose(card() + separator, rebuild);
    QCOMPARE(run(), done());
    QCOMPARE(m_lastIcon, QMessageBox::Information);
    QVERIFY(isPrepared(card()));
    QCOMPARE(report(), plainReport());
    QCOMPARE(child<QLabel>("numberLabel")->text(), QStringLiteral("2"));
    QCOMPARE(child<QLabel>("currentPathLabel")->text(), QString());
    auto *bar = child<QProgressBar>("progressBar");
    QCOMPARE(bar->value(), bar->maximum());
    QVERIFY(canBeUsed());
    QCOMPARE(mediaRoot(), QString()); // only a browsed folder is stored
}

void tst_IndexDialog::rebuildReadsEverySongAgain()
{
    choose(card(), true);
    QCOMPARE(run(), done());
    const QFileInfo index(card() + QStringLiteral("/index.id3"));
    QCOMPARE(index.size(), qint64(2 * 270));
    QVERIFY(QFile::remove(card() + QStringLiteral("/a.mid")));
    choose(card(), true);
    QCOMPARE(run(), done());
    QCOMPARE(QFileInfo(index.filePath()).size(), qint64(270));
    QCOMPARE(child<QLabel>("numberLabel")->text(), QStringLiteral("1"));
}

void tst_IndexDialog::singleErrorTurnsTheFinalBox()
{
    // 252 characters below the root: one more than the index can hold
    const QString song = QStringLiteral("/") + QString(200, QLatin1Char('d')) + QLatin1Char('/')
        + QString(46, QLatin1Char('s')) + QStringLiteral(".mid");
    QCOMPARE(song.size(), 252);
    addSong(card() + song);
    choose(card(), false);
    QCOMPARE(run(), withErrors());
    QCOMPARE(m_lastIcon, QMessageBox::Critical);
    QVERIFY(isPrepared(card())); // every index file was written all the same
    QCOMPARE(report(),
             QStringLiteral("Ottimizzazione memoria in corso...\nFile non importato, path troppo "
                            "lungo: ")
                 + card() + song + QStringLiteral("\nOperazione completata"));
    QCOMPARE(child<QLabel>("numberLabel")->text(), QStringLiteral("2"));
    QVERIFY(canBeUsed());
}

void tst_IndexDialog::nextRunForgetsTheErrors()
{
    m_dialog->errorFromIndexReceived(QStringLiteral("an error"));
    choose(card(), false);
    QCOMPARE(run(), done());
    QCOMPARE(report(), plainReport());
}

void tst_IndexDialog::failures_data()
{
    QTest::addColumn<bool>("rebuild");
    QTest::addColumn<QString>("obstacle");
    QTest::newRow("an index file that can't be written")
        << true << QStringLiteral("card/artist.id3/folder");
    QTest::newRow("the same in an update") << false << QStringLiteral("card/artist.id3/folder");
    QTest::newRow("a root that is a file") << true << QString();
}

void tst_IndexDialog::failures()
{
    QFETCH(bool, rebuild);
    QFETCH(QString, obstacle);
    if (!obstacle.isEmpty())
        QVERIFY(QDir().mkpath(m_program->path(obstacle)));
    choose(obstacle.isEmpty() ? card() + QStringLiteral("/a.mid") : card(), rebuild);
    QCOMPARE(run(), failed());
    QCOMPARE(m_lastIcon, QMessageBox::Critical);
    QVERIFY(!isPrepared(card()));
    QCOMPARE(report(), plainReport());
    QCOMPARE(child<QProgressBar>("progressBar")->value(), 100);
    QCOMPARE(child<QProgressBar>("progressBar")->maximum(), 100);
    QVERIFY(canBeUsed());
}

void tst_IndexDialog::memoryWithoutSongsIsNotPrepared()
{
    const QTemporaryDir empty;
    choose(empty.path(), false);
    QCOMPARE(run(), failed());
    QVERIFY(canBeUsed());
}

void tst_IndexDialog::slotsShowWhatTheyAreGiven()
{
    m_dialog->updateLabelNum(42);
    QCOMPARE(child<QLabel>("numberLabel")->text(), QStringLiteral("42"));
    m_dialog->initProgress(70000);
    QCOMPARE(child<QProgressBar>("progressBar")->minimum(), 0);
    QCOMPARE(child<QProgressBar>("progressBar")->maximum(), 70000);
    m_dialog->setProgressValue(35000);
    QCOMPARE(child<QProgressBar>("progressBar")->value(), 35000);
    m_dialog->updateLabelCurrPath(QStringLiteral("/card/<b>x</b>.mid"));
    QCOMPARE(child<QLabel>("currentPathLabel")->text(), QStringLiteral("/card/<b>x</b>.mid"));
    QCOMPARE(child<QLabel>("currentPathLabel")->textFormat(), Qt::PlainText);
    m_dialog->errorFromIndexReceived(QStringLiteral("<i>one</i>"));
    m_dialog->errorFromIndexReceived(QStringLiteral("two"));
    QCOMPARE(report(), QStringLiteral("<i>one</i>\ntwo"));
}

void tst_IndexDialog::progressIsPaintedWithoutEvents()
{
    // in memory where that is possible: the index flushes what lies on a disk
    const QString inMemory = QStringLiteral("/dev/shm");
    const QTemporaryDir folder((QFileInfo(inMemory).isWritable() ? inMemory : QDir::tempPath())
                               + QStringLiteral("/tst_indexdialog-XXXXXX"));
    for (int i = 0; i < 3000; ++i)
        addSong(folder.filePath(QStringLiteral("%1.mid").arg(i)));
    choose(folder.path(), true);
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.data()));
    PaintCounter bar(child<QProgressBar>("progressBar"));
    PaintCounter number(child<QLabel>("numberLabel"));
    int barPainted = 0;
    int numberPainted = 0;
    DialogDriver driver;
    driver.expect<QMessageBox>([&](QMessageBox &box) {
        barPainted = bar.count;
        numberPainted = number.count;
        box.accept();
    });
    click("startPushButton"); // no event loop runs until the box comes
    QCOMPARE(driver.problems(), QString());
    QVERIFY2(barPainted >= 10, qPrintable(QString::number(barPainted)));
    QVERIFY2(numberPainted >= 4, qPrintable(QString::number(numberPainted)));
}

void tst_IndexDialog::diskChecks_data()
{
    const QString notRun = QStringLiteral("ATTENZIONE|Controllo memoria non eseguito!");
    const QString errorsLeft = QStringLiteral(
        "Controllo memoria|Non è stato possibile correggere gli errori, è necesario formattare la "
        "memoria");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("boxes");
    QTest::newRow("no errors: goes on") << QByteArray("exit 0") << done();
    QTest::newRow("errors fixed: goes on") << QByteArray("exit 1") << done();
    QTest::newRow("errors left: stops without indexing")
        << QByteArray("exit 3") << QStringList(errorsLeft);
    QTest::newRow("not startable: says so and goes on")
        << QByteArray() << QStringList(QStringList(notRun) + done());
    QTest::newRow("never ending: says so and goes on")
        << QByteArray("exec sleep 60") << QStringList(QStringList(notRun) + done());
    QTest::newRow("a question answered, then goes on")
        << QByteArray("printf 'Fix (Y/N)? '; read -r a; test \"$a\" = \"$(printf 's\\r')\"")
        << done();
}

void tst_IndexDialog::diskChecks()
{
    QFETCH(QByteArray, script);
    QFETCH(QStringList, boxes);
    m_dialog.reset(
        new IndexDialog(nullptr, {pastAnyTest, script.contains("sleep") ? 200 : pastAnyTest}));
    m_dialog->show();
    if (!script.isEmpty())
        QVERIFY(m_program->write(script));
    const QString root = QStringLiteral("E:"); // a folder of the working directory
    addSong(root + QStringLiteral("/a.mid"));
    m_dialog->errorFromIndexReceived(QStringLiteral("of an earlier run"));
    choose(root + QLatin1Char('/'), true, true);

    QCOMPARE(run(boxes.size()), boxes);
    const bool indexed = boxes.contains(done().constFirst());
    QCOMPARE(isPrepared(root), indexed);
    QCOMPARE(report(), indexed ? plainReport() : QStringLiteral("of an earlier run"));
    QCOMPARE(m_lastIcon, indexed ? QMessageBox::Information : QMessageBox::Critical);
    QCOMPARE(child<QProgressBar>("progressBar")->value(), 100);
    QCOMPARE(m_program->written(QStringLiteral("arguments")),
             script.isEmpty() ? QByteArray() : QByteArray("E:\n/F\n/R\n"));
    QVERIFY(canBeUsed());
}

void tst_IndexDialog::pathWithoutADriveSkipsTheCheck()
{
    QVERIFY(m_program->write("exit 3"));
    choose(card(), true, true);
    QCOMPARE(run(2),
             QStringList({QStringLiteral("ATTENZIONE|Controllo memoria non eseguito!")}) + done());
    QVERIFY(m_program->written(QStringLiteral("arguments")).isNull());
    QVERIFY(isPrepared(card()));
}

void tst_IndexDialog::checkIsIgnoredByAnUpdate()
{
    QVERIFY(m_program->write("exit 3"));
    addSong(QStringLiteral("E:/a.mid"));
    choose(QStringLiteral("E:"), false, true);
    QCOMPARE(run(), done());
    QVERIFY(m_program->written(QStringLiteral("arguments")).isNull());
}

void tst_IndexDialog::checkIsIgnoredWhereItIsNotTicked()
{
    QVERIFY(m_program->write("exit 3"));
    addSong(QStringLiteral("E:/a.mid"));
    choose(QStringLiteral("E:"), true);
    QCOMPARE(run(), done());
    QVERIFY(m_program->written(QStringLiteral("arguments")).isNull());
}

void tst_IndexDialog::nothingIsUsableDuringARun()
{
    QVERIFY(m_program->write("sleep 0.3; exit 0"));
    addSong(QStringLiteral("E:/a.mid"));
    choose(QStringLiteral("E:"), true, true);
    m_dialog->updateLabelNum(7);
    m_dialog->setProgressValue(50);
    bool looked = false;
    QTimer::singleShot(100, this, [&] {
        looked = true;
        for (const char *name :
             {"startPushButton", "closePushButton", "browsePushButton", "pathLineEdit",
              "updateRadioButton", "rebuildRadioButton", "checkDiskCheckBox"})
            QVERIFY2(!child<QWidget>(name)->isEnabled(), name);
        QCOMPARE(child<QLabel>("numberLabel")->text(), QStringLiteral("0"));
        QCOMPARE(child<QProgressBar>("progressBar")->value(), 0);
    });
    QCOMPARE(run(), done());
    QVERIFY(looked);
    QVERIFY(canBeUsed());
}

void tst_IndexDialog::dialogCantBeClosedDuringACheck_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("by its frame") << QStringLiteral("frame");
    QTest::newRow("with Escape") << QStringLiteral("escape");
}

void tst_IndexDialog::dialogCantBeClosedDuringACheck()
{
    QFETCH(QString, how);
    QVERIFY(m_program->write("sleep 0.3; exit 0"));
    addSong(QStringLiteral("E:/a.mid"));
    choose(QStringLiteral("E:"), true, true);
    bool stillThere = false;
    QTimer::singleShot(100, this, [&] {
        if (how == QLatin1String("frame"))
            m_dialog->close();
        else
            QTest::keyClick(m_dialog.data(), Qt::Key_Escape);
        stillThere = m_dialog->isVisible();
    });
    QCOMPARE(run(), done());
    QVERIFY(stillThere);
    QVERIFY(m_dialog->isVisible());
    m_dialog->close();
    QVERIFY(!m_dialog->isVisible());
}

void tst_IndexDialog::closing_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("Chiudi") << QStringLiteral("button");
    QTest::newRow("Escape") << QStringLiteral("escape");
    QTest::newRow("frame") << QStringLiteral("frame");
}

void tst_IndexDialog::closing()
{
    QFETCH(QString, how);
    if (how == QLatin1String("button"))
        click("closePushButton");
    else if (how == QLatin1String("escape"))
        QTest::keyClick(m_dialog.data(), Qt::Key_Escape);
    else
        m_dialog->close();
    QVERIFY(!m_dialog->isVisible());
}

void tst_IndexDialog::enterStartsARun()
{
    choose(card(), false);
    DialogDriver driver;
    driver.answerBox(QMessageBox::Ok);
    QTest::keyClick(child<QLineEdit>("pathLineEdit"), Qt::Key_Return);
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(driver.boxes, done());
    QCOMPARE(m_dialog->focusWidget(), child<QPushButton>("closePushButton"));
}

void tst_IndexDialog::tabGoesFromTopToBottom()
{
    QStringList chain = focusChain(child<QWidget>("pathLineEdit"));
    chain.removeAll(QString());
    QCOMPARE(chain.join(QLatin1Char(' ')),
             QStringLiteral("pathLineEdit browsePushButton updateRadioButton rebuildRadioButton "
                            "checkDiskCheckBox reportPlainTextEdit startPushButton "
                            "closePushButton"));
    for (const QLabel *label : m_dialog->findChildren<QLabel *>()) {
        if (label->objectName() == QLatin1String("pathLabel"))
            QCOMPARE(label->buddy(), child<QWidget>("pathLineEdit"));
        if (label->objectName() == QLatin1String("reportLabel"))
            QCOMPARE(label->buddy(), child<QWidget>("reportPlainTextEdit"));
    }
}

void tst_IndexDialog::longPathsDoNotStretchTheDialog()
{
    const QSize before = m_dialog->sizeHint();
    const QString path = QLatin1Char('/') + QString(2000, QLatin1Char('W'));
    m_dialog->updateLabelCurrPath(path);
    m_dialog->errorFromIndexReceived(path);
    child<QLineEdit>("pathLineEdit")->setText(path);
    QCoreApplication::processEvents();
    QCOMPARE(m_dialog->minimumSizeHint().width() <= before.width(), true);
    QCOMPARE(m_dialog->sizeHint().height(), before.height());
    QVERIFY(m_dialog->width() <= 900);
}

QTEST_MAIN(tst_IndexDialog)
#include "tst_indexdialog.moc"
