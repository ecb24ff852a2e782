#include "tests/ui/windowtest.h"

#include "ui/removabledrive.h"

#include <utility>

#include <QPushButton>

using namespace tarvel4;
using namespace TestFiles;

namespace {

using Ejection = RemovableDrive::Ejection;

/** What the drives in the test are asked, and what they answer. */
struct Script
{
    bool isRemovable = true;
    QList<Ejection> answers;
    QStringList folders; ///< asked about
    int ejections = 0;
    bool wasFlushed = false; ///< the transfer was over when a folder was asked about
};

class FakeDrive : public RemovableDrive
{
public:
    explicit FakeDrive(Script &script)
        : m_script(script)
    {}

    Ejection eject() override
    {
        ++m_script.ejections;
        return m_script.answers.takeFirst();
    }

private:
    Script &m_script;
};

class FakeDrives : public RemovableDrives
{
public:
    explicit FakeDrives(Script &script)
        : m_script(script)
    {}

    std::unique_ptr<RemovableDrive> driveOf(const QString &folder) override
    {
        m_script.folders += folder;
        m_script.wasFlushed = QFile::exists(folder + text("/../fsinfos.id3"));
        return m_script.isRemovable ? std::make_unique<FakeDrive>(m_script) : nullptr;
    }

private:
    Script &m_script;
};

constexpr char done[] = "Information|Trasferimento|Tutti i file sono stati copiati correttamente";
constexpr char offered[] = "Espelli";

} // namespace

/** Taking the memory out behind a transfer. */
class tst_WindowEject : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        m_script = Script();
        QDir().mkdir(path("card/music"));
        openWindowWithoutSummaries();
        import({addSong("a.mid", "Uno")});
    }
    void cleanup() { closeWindow(); }

    void okLeavesTheCardWhereItIs()
    {
        QStringList buttons;
        m_driver->expect<QMessageBox>([&buttons](QMessageBox &box) {
            for (const QAbstractButton *button : box.buttons())
                buttons += button->text();
            QCOMPARE(box.defaultButton(), box.button(QMessageBox::Ok));
            QCOMPARE(box.informativeText(),
                     text("Tutto è scritto: ora si può togliere la memoria."));
            QTest::keyClick(&box, Qt::Key_Escape);
        });
        transferTo(path("card/music"));
        QCOMPARE(buttons.size(), 2);
        QVERIFY(buttons.contains(text(offered)));
        QCOMPARE(m_script.folders, QStringList(path("card/music")));
        QVERIFY(m_script.wasFlushed);
        QCOMPARE(m_script.ejections, 0);
    }

    void ejections_data()
    {
        const Table<int, QString, QStringList> row; // of Ejection::Result; the cause; the boxes
        row("ejected", static_cast<int>(Ejection::Result::Ejected), "",
            QStringList(
                text("Information|Espulsione|La memoria è stata espulsa: ora la puoi togliere.")));
        row("unmounted only", static_cast<int>(Ejection::Result::Unmounted), "no <b>motor</b>",
            QStringList(text(
                "Information|Espulsione|La memoria è stata scollegata, quindi la puoi togliere, "
                "ma non è stata espulsa:\n\nno <b>motor</b>")));
        row("not possible", static_cast<int>(Ejection::Result::Failed), "in use",
            QStringList(
                text("Warning|Espulsione|Non è stato possibile espellere la memoria:\n\nin use")));
    }
    void ejections()
    {
        const auto [result, cause, boxes] = cells<int, QString, QStringList>();
        m_script.answers = {{static_cast<Ejection::Result>(result), cause}};
        m_driver->answerBox(text(offered));
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card/music"));
        QCOMPARE(m_driver->boxes, QStringList(text(done)) + boxes);
        QCOMPARE(m_driver->lastBox.format, Qt::PlainText);
        QCOMPARE(m_script.ejections, 1);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void failedOneIsTriedAgain()
    {
        m_script.answers = {{Ejection::Result::Failed, text("in use")},
                            {Ejection::Result::Ejected, {}}};
        m_driver->answerBox(text(offered));
        m_driver->answerBox(text("Riprova"));
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card/music"));
        QCOMPARE(m_driver->boxes.size(), 3);
        QCOMPARE(m_script.ejections, 2);
    }

    void otherFoldersHaveNoButton()
    {
        m_script.isRemovable = false;
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card/music"));
        QCOMPARE(m_driver->boxes, QStringList(text(done)));
        QCOMPARE(m_driver->lastBox.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    }

    void failedTransferOffersNothing()
    {
        m_isSystemDisk = true;
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card/music"));
        QCOMPARE(m_script.folders, QStringList());
    }

private:
    std::unique_ptr<RemovableDrives> makeDrives() override
    {
        return std::make_unique<FakeDrives>(m_script);
    }

    Script m_script;
};

QTEST_MAIN(tst_WindowEject)
#include "tst_windoweject.moc"
