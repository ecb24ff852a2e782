#include "tests/indexer/memoryfixture.h"
#include "tests/ui/dialogtest.h"
#include "tests/ui/diskcheckprogram.h"
#include "ui/indexdialog.h"

#include <QLabel>
#include <QPlainTextEdit>

using namespace tarvel4;
using namespace TestFiles;

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

const QString done = text("Information|Ottimizza memoria|Operazione completata con successo");
const QString failed =
    text("Critical|Ottimizza memoria|Operazione non riuscita.\nAssicurarsi che il disco "
         "abbia sufficiente spazio libero e che non sia protetto da scrittura.");
const QString withErrors =
    text("Critical|Ottimizza memoria|Durante l'operazione si sono verificati alcuni "
         "errori.\nConsultare il report per maggiori informazioni.");
const QString notChecked = text("Warning|ATTENZIONE|Controllo memoria non eseguito!");
const QString errorsLeft =
    text("Critical|Controllo memoria|Non è stato possibile correggere gli errori, è "
         "necesario formattare la memoria");
const QString plainReport = text("Ottimizzazione memoria in corso...\nOperazione completata");

} // namespace

/** The index dialog, a memory of two songs, and a folder "E:" beside it that has a drive's name. */
class tst_IndexDialog : public DialogTest<IndexDialog>
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        settings().clear();
        m_program = std::make_unique<DiskCheckProgram>();
        for (const QString &song : {card("/a.mid"), card("/pop/b.mp3"), text("E:/a.mid")})
            write(song, "no more than a name");
        for (const QString &file : MemoryFixture::preparedFiles())
            QFile::remove(text("E:/") + file); // a real drive keeps it from row to row
        open(nullptr, DiskCheckTimings{pastAnyTest, pastAnyTest});
    }
    void cleanup()
    {
        const bool isRebuild = find<QAbstractButton>("rebuildRadioButton")->isChecked();
        QCOMPARE(usable(), isRebuild ? 7 : 6); // an update offers no check
        m_dialog.reset();
        m_program.reset();
    }

    void opensWithTheStoredRoot()
    {
        QCOMPARE(textOf("pathLineEdit"), QString());
        QVERIFY(find<QAbstractButton>("updateRadioButton")->isChecked());
        QVERIFY(!find<QAbstractButton>("checkDiskCheckBox")->isChecked());
        QVERIFY(find<QPlainTextEdit>("reportPlainTextEdit")->isReadOnly());
        settings().setValue(text("mediaroot"), text("/media/card"));
        open();
        QCOMPARE(textOf("pathLineEdit"), text("/media/card"));
    }

    void checkIsOfferedForARebuildOnly()
    {
        auto *check = find<QAbstractButton>("checkDiskCheckBox");
        click(*m_dialog, "checkDiskCheckBox");
        QVERIFY(!check->isEnabled() && !check->isChecked());
        click(*m_dialog, "rebuildRadioButton");
        click(*m_dialog, "checkDiskCheckBox");
        QVERIFY(check->isEnabled() && check->isChecked());
        click(*m_dialog, "updateRadioButton");
        QVERIFY2(!check->isEnabled() && check->isChecked(),
                 "the choice waits for the next rebuild");
        click(*m_dialog, "rebuildRadioButton");
        QVERIFY(check->isEnabled() && check->isChecked());
    }

    void missingRoots()
    {
        for (const QString &path : strings({"", "/no/such/card"})) {
            choose(path, false);
            QCOMPARE(run(),
                     strings({"Warning|Ottimizza memoria|Il percorso selezionato non esiste"}));
            QCOMPARE(report(), QString());
            QCOMPARE(m_dialog->focusWidget(), find("pathLineEdit"));
        }
    }

    void runs_data()
    {
        const Table<bool, QString> row;
        row("update", false, "");
        row("rebuild", true, "");
        row("a slash at the end of the path", true, "/");
        row("a backslash at the end of the path", true, "\\");
    }
    void runs()
    {
        const auto [rebuild, separator] = cells<bool, QString>();
        QDir().mkdir(card() + separator); // where a backslash parts no names, it is one of this one
        m_dialog->errorFromIndexReceived(text("of an earlier run"));
        for (int round = 0; round < 2; ++round) { // a new memory and a prepared one
            choose(card() + separator, rebuild);
            QCOMPARE(run(), QStringList(done));
            QVERIFY(isPrepared(card()));
            QCOMPARE(report(), plainReport);
            QCOMPARE(label("numberLabel"), text("2"));
            QCOMPARE(label("currentPathLabel"), QString());
            const auto *bar = find<QProgressBar>("progressBar");
            QCOMPARE(bar->value(), bar->maximum());
        }
        QVERIFY(!settings().contains(text("mediaroot"))); // only a browsed folder is stored
    }

    void whatAPowerCutLeftAsideIsPutInOrderAndReported()
    {
        QVERIFY(QFile::rename(card("/a.mid"), card("/a.mid.tarvel4.bak")));
        choose(card(), false);
        QCOMPARE(run(), QStringList(done));
        QCOMPARE(report(),
                 text("Ottimizzazione memoria in corso...\n") + card("/a.mid")
                     + text(": rimesso al suo posto dopo un'interruzione\nOperazione completata"));
        QCOMPARE(label("numberLabel"), text("2"));
        QVERIFY(QFile::exists(card("/a.mid")));
    }

    void rebuildReadsEverySongAgain()
    {
        choose(card(), true);
        QCOMPARE(run(), QStringList(done));
        const QByteArray titles = read(card("/title.id3"));
        for (const bool rebuild : {false, true}) { // an update keeps what it finds
            write(card("/title.id3"), QByteArray(titles).replace(4, 1, "Q"));
            choose(card(), rebuild);
            QCOMPARE(run(), QStringList(done));
            QCOMPARE(read(card("/title.id3")) == titles, rebuild);
        }
    }

    void singleErrorTurnsTheFinalBox()
    {
        // 252 characters below the root: one more than the index can hold
        const QString song = card() + QLatin1Char('/') + QString(200, QLatin1Char('d'))
            + QLatin1Char('/') + QString(46, QLatin1Char('s')) + text(".mid");
        QCOMPARE(song.size() - card().size(), 252);
        write(song, "no more than a name");
        choose(card(), false);
        QCOMPARE(run(), QStringList(withErrors));
        QVERIFY(isPrepared(card())); // every index file was written all the same
        QCOMPARE(report(),
                 text("Ottimizzazione memoria in corso...\nFile non importato, path troppo lungo: ")
                     + song + text("\nOperazione completata"));
        QCOMPARE(label("numberLabel"), text("2"));
    }

    void reportKeepsTheTextsOfAllErrors()
    {
        QStringList told;
        for (const char letter : {'s', 't'}) {
            const QString song = card() + QLatin1Char('/') + QString(200, QLatin1Char('d'))
                + QLatin1Char('/') + QString(46, QLatin1Char(letter)) + text(".mid");
            write(song, "no more than a name");
            told += text("File non importato, path troppo lungo: ") + song;
        }
        choose(card(), true);
        QCOMPARE(run(), QStringList(withErrors));
        QStringList lines = report().split(QLatin1Char('\n'));
        lines.sort();
        QCOMPARE(lines.filter(text("File non importato")), told);
    }

    void failures_data()
    {
        const Table<bool, QString> row;
        row("an index file that can't be rebuilt", true, "card");
        row("an index file that can't be updated", false, "card");
        row("a root that is a file", true, "card/a.mid");
        row("a memory without songs", false, "empty");
    }
    void failures()
    {
        const auto [rebuild, root] = cells<bool, QString>();
        QVERIFY(QDir().mkpath(card("/artist.id3/folder")));
        QVERIFY(QDir().mkpath(m_program->path(text("empty"))));
        m_dialog->initProgress(7); // as after a memory of seven songs
        choose(m_program->path(root), rebuild);
        QCOMPARE(run(), QStringList(failed));
        QVERIFY(!isPrepared(card()));
        QCOMPARE(report(), plainReport);
        QCOMPARE(progress(), text("0 100 100"));
    }

    void slotsShowWhatTheyAreGiven()
    {
        m_dialog->updateLabelNum(42);
        QCOMPARE(label("numberLabel"), text("42"));
        m_dialog->initProgress(70000);
        m_dialog->setProgressValue(35000);
        QCOMPARE(progress(), text("0 35000 70000"));
        m_dialog->updateLabelCurrPath(text("/card/<b>x</b>.mid"));
        QCOMPARE(label("currentPathLabel"), text("/card/<b>x</b>.mid"));
        QCOMPARE(find<QLabel>("currentPathLabel")->textFormat(), Qt::PlainText);
        m_dialog->errorFromIndexReceived(text("<i>one</i>"));
        m_dialog->errorFromIndexReceived(text("two"));
        QCOMPARE(report(), text("<i>one</i>\ntwo"));
    }

    void progressIsPaintedWithoutEvents()
    {
        for (int i = 0; i < 120; ++i)
            write(card() + text("/%1.mid").arg(i), "no more than a name");
        choose(card(), true);
        QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
        PaintCounter bar(find("progressBar"));
        PaintCounter number(find("numberLabel"));
        QSet<QString> paths;
        bar.onPaint = [&] {
            paths.insert(label("currentPathLabel"));
            QThread::msleep(8); // so that the run lasts over half a second
        };
        DialogDriver driver;
        driver.expect<QMessageBox>([&](QMessageBox &box) {
            box.accept();
            QVERIFY2(bar.count >= 50, qPrintable(QString::number(bar.count)));
            QVERIFY2(number.count >= 6, qPrintable(QString::number(number.count)));
        });
        click(*m_dialog, "startPushButton"); // no event loop runs until the box comes
        QVERIFY2(paths.size() >= 6, "the path shows each song that is read");
    }

    void enterStartsARunWhoseReportEndsAfterTheBox()
    {
        choose(card(), false);
        QString before;
        DialogDriver driver;
        driver.expect<QMessageBox>([&](QMessageBox &box) {
            before = report();
            box.accept();
        });
        QTest::keyClick(find("pathLineEdit"), Qt::Key_Return);
        QCOMPARE(before, text("Ottimizzazione memoria in corso..."));
        QCOMPARE(report(), plainReport);
        QCOMPARE(m_dialog->focusWidget(), find("closePushButton"));
    }

    void longPathsDoNotStretchTheDialog()
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

    void diskChecks_data()
    {
        const Table<QByteArray, QStringList> row;
        row("no errors: goes on", QByteArray("exit 0"), QStringList(done));
        row("errors fixed: goes on", QByteArray("exit 1"), QStringList(done));
        row("errors left: stops without indexing", QByteArray("exit 3"), QStringList(errorsLeft));
        row("not startable: says so and goes on", QByteArray(), QStringList({notChecked, done}));
        row("never ending: says so and goes on", QByteArray("exec sleep 60"),
            QStringList({notChecked, done}));
    }
    void diskChecks()
    {
        const auto [script, boxes] = cells<QByteArray, QStringList>();
        const bool isEndless = script.contains("sleep");
        open(nullptr, DiskCheckTimings{pastAnyTest, isEndless ? 2000 : pastAnyTest});
        if (!script.isEmpty())
            QVERIFY(m_program->write(script));
        m_dialog->errorFromIndexReceived(text("of an earlier run"));
        choose(text("E:/"), true, true);

        QCOMPARE(run(static_cast<int>(boxes.size())), boxes);
        const bool indexed = boxes.contains(done);
        QCOMPARE(isPrepared(text("E:")), indexed);
        QCOMPARE(report(), indexed ? plainReport : text("of an earlier run"));
        QCOMPARE(find<QProgressBar>("progressBar")->value(), 100);
        if (isEndless && !m_program->hasBegun()) // on a busy machine it may be ended before that
            return;
        QCOMPARE(m_program->written(text("arguments")),
                 script.isEmpty() ? QByteArray() : QByteArray("E:\n/F\n/R\n"));
    }

    void checkIsLeftOut_data()
    {
        const Table<QString, bool, bool, QStringList> row;
        row("for a path without a drive, and says so", "card", true, true,
            QStringList({notChecked, done}));
        row("for an update", "E:", false, true, QStringList(done));
        row("where it is not ticked", "E:", true, false, QStringList(done));
    }
    void checkIsLeftOut()
    {
        const auto [root, rebuild, check, boxes] = cells<QString, bool, bool, QStringList>();
        QVERIFY(m_program->write("exit 3"));
        choose(root, rebuild, check);
        QCOMPARE(run(static_cast<int>(boxes.size())), boxes);
        QVERIFY(m_program->written(text("arguments")).isNull());
        QVERIFY(isPrepared(root));
    }

    void nothingIsUsableDuringARun()
    {
        QVERIFY(m_program->write("sleep 0.3; exit 0"));
        choose(text("E:"), true, true);
        m_dialog->updateLabelNum(7);
        m_dialog->setProgressValue(50);
        QString seen;
        QTimer::singleShot(100, this, [&] {
            seen = text("%1 songs, %2 %, %3 usable")
                       .arg(label("numberLabel"))
                       .arg(find<QProgressBar>("progressBar")->value())
                       .arg(usable());
            m_dialog->close();
            QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        });
        QCOMPARE(run(), QStringList(done));
        QCOMPARE(seen, text("0 songs, 0 %, 0 usable"));
        QVERIFY(m_dialog->isVisible());
        m_dialog->close();
        QVERIFY(!m_dialog->isVisible());
    }

private:
    QString card(const char *below = "") const
    {
        return m_program->path(text("card")) + text(below);
    }
    QString report() const { return find<QPlainTextEdit>("reportPlainTextEdit")->toPlainText(); }
    QString label(const char *name) const { return find<QLabel>(name)->text(); }
    QStringList run(int boxes = 1) { return press("startPushButton", boxes); }

    /** How many of what a run disables can be used; 7 between runs. */
    int usable() const
    {
        int count = 0;
        for (const char *name :
             {"startPushButton", "closePushButton", "browsePushButton", "pathLineEdit",
              "updateRadioButton", "rebuildRadioButton", "checkDiskCheckBox"})
            count += find(name)->isEnabled() ? 1 : 0;
        return count;
    }
    void choose(const QString &path, bool rebuild, bool check = false) const
    {
        find<QLineEdit>("pathLineEdit")->setText(path);
        click(*m_dialog, rebuild ? "rebuildRadioButton" : "updateRadioButton");
        find<QAbstractButton>("checkDiskCheckBox")->setChecked(check);
    }
    static bool isPrepared(const QString &root)
    {
        return QDir(root).entryList({text("*.id3")}, QDir::Files, QDir::Name)
            == MemoryFixture::preparedFiles();
    }

    std::unique_ptr<DiskCheckProgram> m_program;
};

QTEST_MAIN(tst_IndexDialog)
#include "tst_indexdialog.moc"
