#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/ui/dialogdriver.h"
#include "tests/ui/diskcheckprogram.h"
#include "tests/ui/forms.h"
#include "ui/indexdialog.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSettings>

using namespace tarvel4;

namespace {

constexpr int pastAnyTest = 20000; // milliseconds

/** Counts how often a widget is painted. */
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            ++count;
            onPaint();
        }
        return false;
    }
    int count = 0;
    std::function<void()> onPaint = [] {};
};

const QString done = text("Ottimizza memoria|Operazione completata con successo");
const QString failed = text("Ottimizza memoria|Operazione non riuscita.\nAssicurarsi che il disco "
                            "abbia sufficiente spazio libero e che non sia protetto da scrittura.");
const QString withErrors = text("Ottimizza memoria|Durante l'operazione si sono verificati alcuni "
                                "errori.\nConsultare il report per maggiori informazioni.");
const QString notChecked = text("ATTENZIONE|Controllo memoria non eseguito!");
const QString errorsLeft = text("Controllo memoria|Non è stato possibile correggere gli errori, è "
                                "necesario formattare la memoria");
const QString plainReport = text("Ottimizzazione memoria in corso...\nOperazione completata");

} // namespace

/** The index dialog, a memory of two songs, and a folder "E:" beside it that has a drive's name. */
class tst_IndexDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void opensWithTheStoredRoot();
    void missingRoots();
    void runs_data();
    void runs();
    void rebuildReadsEverySongAgain();
    void singleErrorTurnsTheFinalBox();
    void failures_data();
    void failures();
    void slotsShowWhatTheyAreGiven();
    void progressIsPaintedWithoutEvents();
    void enterStartsARunWhoseReportEndsAfterTheBox();
    void longPathsDoNotStretchTheDialog();
    void diskChecks_data();
    void diskChecks();
    void checkIsLeftOut_data();
    void checkIsLeftOut();
    void nothingIsUsableDuringARun();

private:
    template <class Widget> Widget *find(const char *name) const
    {
        return child<Widget>(*m_dialog, name);
    }
    QString report() const { return find<QPlainTextEdit>("reportPlainTextEdit")->toPlainText(); }
    QString card() const { return m_program->path(text("card")); }
    static QSettings settings() { return QSettings(text("kvaro"), text("tarvel4soft")); }
    /** How many of what a run disables can be used; 7 between runs. */
    int usable() const
    {
        int count = 0;
        for (const char *name :
             {"startPushButton", "closePushButton", "browsePushButton", "pathLineEdit",
              "updateRadioButton", "rebuildRadioButton", "checkDiskCheckBox"})
            count += find<QWidget>(name)->isEnabled() ? 1 : 0;
        return count;
    }
    void choose(const QString &path, bool rebuild, bool check = false) const
    {
        find<QLineEdit>("pathLineEdit")->setText(path);
        click(*m_dialog, rebuild ? "rebuildRadioButton" : "updateRadioButton");
        find<QAbstractButton>("checkDiskCheckBox")->setChecked(check);
    }
    /** Presses "Inizia", answers the boxes that come, and gives their texts. */
    QStringList run(int boxes = 1)
    {
        DialogDriver driver;
        for (int i = 0; i < boxes; ++i)
            driver.answerBox(QMessageBox::Ok);
        click(*m_dialog, "startPushButton");
        if (!driver.problems().isEmpty())
            driver.boxes.append(driver.problems());
        m_lastIcon = driver.lastBox.icon;
        return driver.boxes;
    }
    static bool isPrepared(const QString &root)
    {
        const QStringList files = QDir(root).entryList({text("*.id3")}, QDir::Files, QDir::Name);
        return files
            == strings({"aartist.id3", "artist.id3", "atitle.id3", "fsinfos.id3", "index.id3",
                        "ordfile.id3", "title.id3"});
    }

    QScopedPointer<DiskCheckProgram> m_program;
    QScopedPointer<IndexDialog> m_dialog;
    QMessageBox::Icon m_lastIcon = QMessageBox::NoIcon;
};

void tst_IndexDialog::init()
{
    settings().clear();
    m_program.reset(new DiskCheckProgram);
    TestFiles::write(card() + text("/a.mid"), "no more than a name");
    TestFiles::write(card() + text("/pop/b.mp3"), "no more than a name");
    TestFiles::write(text("E:/a.mid"), "no more than a name");
    m_dialog.reset(new IndexDialog(nullptr, {pastAnyTest, pastAnyTest}));
    m_dialog->show();
}

void tst_IndexDialog::cleanup()
{
    QCOMPARE(usable(), 7);
    m_dialog.reset();
    m_program.reset();
}

void tst_IndexDialog::opensWithTheStoredRoot()
{
    QCOMPARE(find<QLineEdit>("pathLineEdit")->text(), QString());
    QVERIFY(find<QAbstractButton>("updateRadioButton")->isChecked());
    QVERIFY(!find<QAbstractButton>("checkDiskCheckBox")->isChecked());
    QVERIFY(find<QPlainTextEdit>("reportPlainTextEdit")->isReadOnly());
    settings().setValue(text("mediaroot"), text("/media/card"));
    QCOMPARE(child<QLineEdit>(IndexDialog(), "pathLineEdit")->text(), text("/media/card"));
}

void tst_IndexDialog::missingRoots()
{
    for (const QString &path : strings({"", "/no/such/card"})) {
        choose(path, false);
        QCOMPARE(run(), strings({"Ottimizza memoria|Il percorso selezionato non esiste"}));
        QCOMPARE(m_lastIcon, QMessageBox::Warning);
        QCOMPARE(report(), QString());
        QCOMPARE(m_dialog->focusWidget(), find<QWidget>("pathLineEdit"));
    }
}

void tst_IndexDialog::runs_data()
{
    QTest::addColumn<bool>("rebuild");
    QTest::addColumn<QString>("separator");
    QTest::newRow("update") << false << QString();
    QTest::newRow("rebuild") << true << QString();
    QTest::newRow("a slash at the end of the path") << true << text("/");
}

void tst_IndexDialog::runs()
{
    QFETCH(bool, rebuild);
    QFETCH(QString, separator);
    m_dialog->errorFromIndexReceived(text("of an earlier run"));
    for (int round = 0; round < 2; ++round) { // a new memory and a prepared one
        choose(card() + separator, rebuild);
        QCOMPARE(run(), QStringList(done));
        QCOMPARE(m_lastIcon, QMessageBox::Information);
        QVERIFY(isPrepared(card()));
        QCOMPARE(report(), plainReport);
        QCOMPARE(find<QLabel>("numberLabel")->text(), text("2"));
        QCOMPARE(find<QLabel>("currentPathLabel")->text(), QString());
        const auto *bar = find<QProgressBar>("progressBar");
        QCOMPARE(bar->value(), bar->maximum());
    }
    QVERIFY(!settings().contains(text("mediaroot"))); // only a browsed folder is stored
}

void tst_IndexDialog::rebuildReadsEverySongAgain()
{
    choose(card(), true);
    QCOMPARE(run(), QStringList(done));
    const QString file = card() + text("/title.id3");
    const QByteArray titles = TestFiles::read(file);
    for (const bool rebuild : {false, true}) { // an update keeps what it finds
        TestFiles::write(file, QByteArray(titles).replace(4, 1, "Q"));
        choose(card(), rebuild);
        QCOMPARE(run(), QStringList(done));
        QCOMPARE(TestFiles::read(file) == titles, rebuild);
    }
}

void tst_IndexDialog::singleErrorTurnsTheFinalBox()
{
    // 252 characters below the root: one more than the index can hold
    const QString song = card() + QLatin1Char('/') + QString(200, QLatin1Char('d'))
        + QLatin1Char('/') + QString(46, QLatin1Char('s')) + text(".mid");
    QCOMPARE(song.size() - card().size(), 252);
    TestFiles::write(song, "no more than a name");
    choose(card(), false);
    QCOMPARE(run(), QStringList(withErrors));
    QCOMPARE(m_lastIcon, QMessageBox::Critical);
    QVERIFY(isPrepared(card())); // every index file was written all the same
    QCOMPARE(report(),
             text("Ottimizzazione memoria in corso...\nFile non importato, path troppo lungo: ")
                 + song + text("\nOperazione completata"));
    QCOMPARE(find<QLabel>("numberLabel")->text(), text("2"));
}

void tst_IndexDialog::failures_data()
{
    QTest::addColumn<bool>("rebuild");
    QTest::addColumn<QString>("root");
    QTest::newRow("an index file that can't be rebuilt") << true << text("card");
    QTest::newRow("an index file that can't be updated") << false << text("card");
    QTest::newRow("a root that is a file") << true << text("card/a.mid");
    QTest::newRow("a memory without songs") << false << text("empty");
}

void tst_IndexDialog::failures()
{
    QFETCH(bool, rebuild);
    QFETCH(QString, root);
    QVERIFY(QDir().mkpath(card() + text("/artist.id3/folder")));
    QVERIFY(QDir().mkpath(m_program->path(text("empty"))));
    m_dialog->initProgress(7); // as after a memory of seven songs
    choose(m_program->path(root), rebuild);
    QCOMPARE(run(), QStringList(failed));
    QCOMPARE(m_lastIcon, QMessageBox::Critical);
    QVERIFY(!isPrepared(card()));
    QCOMPARE(report(), plainReport);
    QCOMPARE(find<QProgressBar>("progressBar")->value(), 100);
    QCOMPARE(find<QProgressBar>("progressBar")->maximum(), 100);
}

void tst_IndexDialog::slotsShowWhatTheyAreGiven()
{
    m_dialog->updateLabelNum(42);
    QCOMPARE(find<QLabel>("numberLabel")->text(), text("42"));
    m_dialog->initProgress(70000);
    m_dialog->setProgressValue(35000);
    const auto *bar = find<QProgressBar>("progressBar");
    QCOMPARE(QVector<int>({bar->minimum(), bar->value(), bar->maximum()}),
             QVector<int>({0, 35000, 70000}));
    m_dialog->updateLabelCurrPath(text("/card/<b>x</b>.mid"));
    QCOMPARE(find<QLabel>("currentPathLabel")->text(), text("/card/<b>x</b>.mid"));
    QCOMPARE(find<QLabel>("currentPathLabel")->textFormat(), Qt::PlainText);
    m_dialog->errorFromIndexReceived(text("<i>one</i>"));
    m_dialog->errorFromIndexReceived(text("two"));
    QCOMPARE(report(), text("<i>one</i>\ntwo"));
}

void tst_IndexDialog::progressIsPaintedWithoutEvents()
{
    for (int i = 0; i < 200; ++i)
        TestFiles::write(card() + text("/%1.mid").arg(i), "no more than a name");
    choose(card(), true);
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.data()));
    PaintCounter bar(find<QProgressBar>("progressBar"));
    PaintCounter number(find<QLabel>("numberLabel"));
    QSet<QString> paths;
    bar.onPaint = [&] {
        paths.insert(find<QLabel>("currentPathLabel")->text());
        QThread::msleep(8); // so that the run lasts over half a second
    };
    DialogDriver driver;
    driver.expect<QMessageBox>([&](QMessageBox &box) {
        box.accept();
        QVERIFY2(bar.count >= 50, qPrintable(QString::number(bar.count)));
        QVERIFY2(number.count >= 6, qPrintable(QString::number(number.count)));
    });
    click(*m_dialog, "startPushButton"); // no event loop runs until the box comes
    QCOMPARE(driver.problems(), QString());
    QVERIFY2(paths.size() >= 6, "the path shows each song that is read");
}

void tst_IndexDialog::enterStartsARunWhoseReportEndsAfterTheBox()
{
    choose(card(), false);
    QString before;
    DialogDriver driver;
    driver.expect<QMessageBox>([&](QMessageBox &box) {
        before = report();
        box.accept();
    });
    QTest::keyClick(find<QLineEdit>("pathLineEdit"), Qt::Key_Return);
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(before, text("Ottimizzazione memoria in corso..."));
    QCOMPARE(report(), plainReport);
    QCOMPARE(m_dialog->focusWidget(), find<QWidget>("closePushButton"));
}

void tst_IndexDialog::longPathsDoNotStretchTheDialog()
{
    const QSize before = m_dialog->sizeHint();
    const QString path = QLatin1Char('/') + QString(2000, QLatin1Char('W'));
    m_dialog->updateLabelCurrPath(path);
    m_dialog->errorFromIndexReceived(path);
    find<QLineEdit>("pathLineEdit")->setText(path);
    QCoreApplication::processEvents();
    QVERIFY(m_dialog->minimumSizeHint().width() <= before.width());
    QCOMPARE(m_dialog->sizeHint().height(), before.height());
    QVERIFY(m_dialog->width() <= 900);
}

void tst_IndexDialog::diskChecks_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("boxes");
    QTest::newRow("no errors: goes on") << QByteArray("exit 0") << QStringList(done);
    QTest::newRow("errors fixed: goes on") << QByteArray("exit 1") << QStringList(done);
    QTest::newRow("errors left: stops without indexing")
        << QByteArray("exit 3") << QStringList(errorsLeft);
    QTest::newRow("not startable: says so and goes on")
        << QByteArray() << QStringList({notChecked, done});
    QTest::newRow("never ending: says so and goes on")
        << QByteArray("exec sleep 60") << QStringList({notChecked, done});
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
    m_dialog->errorFromIndexReceived(text("of an earlier run"));
    choose(text("E:/"), true, true);

    QCOMPARE(run(boxes.size()), boxes);
    const bool indexed = boxes.contains(done);
    QCOMPARE(isPrepared(text("E:")), indexed);
    QCOMPARE(report(), indexed ? plainReport : text("of an earlier run"));
    QCOMPARE(m_lastIcon, indexed ? QMessageBox::Information : QMessageBox::Critical);
    QCOMPARE(find<QProgressBar>("progressBar")->value(), 100);
    QCOMPARE(m_program->written(text("arguments")),
             script.isEmpty() ? QByteArray() : QByteArray("E:\n/F\n/R\n"));
}

void tst_IndexDialog::checkIsLeftOut_data()
{
    QTest::addColumn<QString>("root");
    QTest::addColumn<bool>("rebuild");
    QTest::addColumn<bool>("check");
    QTest::newRow("for a path without a drive, and says so") << text("card") << true << true;
    QTest::newRow("for an update") << text("E:") << false << true;
    QTest::newRow("where it is not ticked") << text("E:") << true << false;
}

void tst_IndexDialog::checkIsLeftOut()
{
    QFETCH(QString, root);
    QFETCH(bool, rebuild);
    QFETCH(bool, check);
    const QStringList boxes =
        rebuild && check ? QStringList({notChecked, done}) : QStringList(done);
    QVERIFY(m_program->write("exit 3"));
    choose(root, rebuild, check);
    QCOMPARE(run(boxes.size()), boxes);
    QVERIFY(m_program->written(text("arguments")).isNull());
    QVERIFY(isPrepared(root));
}

void tst_IndexDialog::nothingIsUsableDuringARun()
{
    QVERIFY(m_program->write("sleep 0.3; exit 0"));
    choose(text("E:"), true, true);
    m_dialog->updateLabelNum(7);
    m_dialog->setProgressValue(50);
    QStringList seen;
    QTimer::singleShot(100, this, [&] {
        seen = QStringList({find<QLabel>("numberLabel")->text(),
                            QString::number(find<QProgressBar>("progressBar")->value()),
                            QString::number(usable())});
        m_dialog->close();
        QTest::keyClick(m_dialog.data(), Qt::Key_Escape);
    });
    QCOMPARE(run(), QStringList(done));
    QCOMPARE(seen, strings({"0", "0", "0"}));
    QVERIFY(m_dialog->isVisible());
    m_dialog->close();
    QVERIFY(!m_dialog->isVisible());
}

QTEST_MAIN(tst_IndexDialog)
#include "tst_indexdialog.moc"
