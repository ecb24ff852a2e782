#include "tests/ui/focuschain.h"
#include "tests/ui/indexdialogfixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

using namespace tarvel4;

namespace {

/** Counts how often a widget is painted, and may make a slow one of it. */
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *watched, unsigned long delay = 0)
        : m_delay(delay)
    {
        watched->installEventFilter(this);
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            ++count;
            onPaint();
            QThread::msleep(m_delay);
        }
        return QObject::eventFilter(watched, event);
    }
    int count = 0;
    std::function<void()> onPaint = [] {};

private:
    unsigned long m_delay; ///< milliseconds
};

} // namespace

/** Updates, rebuilds and their reports. */
class tst_IndexDialog : public QObject, private IndexDialogFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

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
    void reportEndsAfterTheBox();
    void closing_data();
    void closing();
    void enterStartsARun();
    void tabGoesFromTopToBottom();
    void longPathsDoNotStretchTheDialog();
};

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
    m_dialog->initProgress(7); // as after a memory of seven songs
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
    for (int i = 0; i < 200; ++i)
        addSong(card() + QStringLiteral("/%1.mid").arg(i));
    choose(card(), true);
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.data()));
    PaintCounter bar(child<QProgressBar>("progressBar"), 8); // the run lasts over half a second
    PaintCounter number(child<QLabel>("numberLabel"));
    QSet<QString> paths;
    bar.onPaint = [&] { paths.insert(child<QLabel>("currentPathLabel")->text()); };
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
    QVERIFY2(barPainted >= 50, qPrintable(QString::number(barPainted)));
    QVERIFY2(numberPainted >= 6, qPrintable(QString::number(numberPainted)));
    QVERIFY2(paths.size() >= 6, "the path shows each song that is read");
}

void tst_IndexDialog::reportEndsAfterTheBox()
{
    choose(card(), true);
    QString before;
    DialogDriver driver;
    driver.expect<QMessageBox>([&](QMessageBox &box) {
        before = report();
        box.accept();
    });
    click("startPushButton");
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(before, QStringLiteral("Ottimizzazione memoria in corso..."));
    QCOMPARE(report(), plainReport());
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
