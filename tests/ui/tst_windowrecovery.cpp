#include "library/usersettings.h"
#include "storage/journal.h"
#include "tests/ui/windowtest.h"
#include "ui/dataeditdialog.h"

#include <QComboBox>
#include <QProgressDialog>
#include <QTranslator>

#include <algorithm>

using namespace tarvel4;

namespace {

const char *const cutShort =
    "un salvataggio è stato interrotto, il contenuto di prima è tornato al "
    "suo posto";

} // namespace

/** What was cut short is put right where the window begins to work with songs, and told once, like
 * what is wrong with the journal of changes. */
class tst_WindowRecovery : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    /** Where nothing is put right at all, no other test waits for it. */
    void initTestCase()
    {
        init();
        const QString song = tear("songs/a.mid");
        m_driver->answerBox(QMessageBox::Ok);
        openWindow();
        const bool isTold = QTest::qWaitFor([this] { return m_driver->boxes.size() == 1; });
        const QByteArray now = TestFiles::read(song);
        closeWindow();
        QVERIFY(isTold);
        QCOMPARE(now, QByteArray("an old song"));
    }
    void init()
    {
        makeFolder();
        settings().setValue(text("copyrightAsk"), false);
    }
    void cleanup() { closeWindow(); }

    void nothingIsToldWhereNothingWasCutShort()
    {
        openWindow();
        QTest::qWait(50); // a box is not expected and fails the test
        QVERIFY(!QFile::exists(journalPath()));
    }

    void tornSongIsToldOnceAtTheStart()
    {
        const QString song = tear("songs/a.mid");
        bool wasOnShow = false;
        m_driver->expect<QMessageBox>([&](QMessageBox &box) {
            wasOnShow = m_window && m_window->windowHandle()->isExposed();
            QCOMPARE(box.icon(), QMessageBox::Information);
            QCOMPARE(box.textFormat(), Qt::PlainText);
            QCOMPARE(box.windowTitle() + QLatin1Char('|') + box.text(),
                     text("Salvataggi interrotti|") + song + text(": ") + text(cutShort));
            QCOMPARE(box.detailedText(), QString());
            box.button(QMessageBox::Ok)->click();
        });
        openWindow();
        QTRY_COMPARE(TestFiles::read(song), QByteArray("an old song"));
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QVERIFY2(wasOnShow, "a slow card does not keep the window from appearing");

        m_window->hide();
        m_window->show();
        m_window.reset();
        openWindow();
        QTest::qWait(50); // a second box is not expected and fails the test
    }

    void manySongsAreToldTogether_data()
    {
        const Table<bool, QString> row;
        row("in Italian", false,
            "Information|Salvataggi interrotti|Alcuni salvataggi erano stati interrotti.\n\n"
            "Song messe a posto: 2\nSong da mettere a posto più tardi: 1\n"
            "Song lasciate come sono: 1");
        row("in English", true,
            "Information|Interrupted saves|Some saves had been interrupted.\n\n"
            "Songs put right: 2\nSongs to be put right later: 1\nSongs left as they are: 1");
    }
    void manySongsAreToldTogether()
    {
        const auto [isEnglish, told] = cells<bool, QString>();
        QTranslator english;
        if (isEnglish) {
            QVERIFY(english.load(text(":/trans/tarvel4soft_en")));
            QCoreApplication::installTranslator(&english);
        }
        tear("songs/a.mid");
        tear("songs/b.mid");
        QFile::remove(tear("songs/away.mid"));
        TestFiles::write(tear("songs/new.mid"), SongBytes::midi0(SongBytes::meta(3, "Other")));
        m_driver->answerBox(QMessageBox::Ok);
        openWindow();
        QTRY_COMPARE(m_driver->boxes.size(), 1);
        QCOMPARE(m_driver->boxes.at(0), told);
        const QStringList lines = m_driver->lastBox.details.split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 4);
        QStringList names;
        for (const QString &line : lines)
            names += QFileInfo(line.section(text(": "), 0, 0)).fileName();
        std::sort(names.begin(), names.begin() + 2);
        QCOMPARE(names, strings({"a.mid", "b.mid", "away.mid", "new.mid"}));
        import({addSong("c.mid", "C")}); // a second box is not expected and fails the row
    }

    void songThatWaitsIsToldOnceAndPutRightAtAnImport()
    {
        const QString song = tear("songs/a.mid");
        QVERIFY(QFile::rename(song, path("elsewhere")));
        m_driver->answerBox(QMessageBox::Ok);
        openWindow();
        QTRY_COMPARE(m_driver->boxes.size(), 1);
        QVERIFY2(m_driver->boxes.at(0).startsWith(text("Information|Salvataggi interrotti|") + song
                                                  + text(": un salvataggio è stato interrotto e "
                                                         "sarà messo a posto quando")),
                 qPrintable(m_driver->boxes.at(0)));
        import({addSong("b.mid", "B")}); // another box is not expected and fails the test
        QVERIFY(QFile::rename(path("elsewhere"), song));
        m_driver->answerBox(QMessageBox::Ok);
        import({addSong("b.mid", "B")});
        QCOMPARE(m_driver->boxes.value(1),
                 text("Information|Salvataggi interrotti|") + song + text(": ") + text(cutShort));
        QCOMPARE(TestFiles::read(song), QByteArray("an old song"));
        import({addSong("b.mid", "B")}); // nor is a third
    }

    void songSetAsideIsToldAtTheImportOfItsNeighbour_data()
    {
        const Table<bool, QString> row;
        row("it gets its name again", false, "rimesso al suo posto dopo un'interruzione");
        row("its old copy goes", true, "tolta la vecchia copia lasciata da un'interruzione");
    }
    void songSetAsideIsToldAtTheImportOfItsNeighbour()
    {
        const auto [isThere, expected] = cells<bool, QString>();
        openWindow();
        const QString song = addSong("a.mp3", "A");
        const QByteArray mp3 = SongBytes::tag() + SongBytes::audio();
        TestFiles::write(Recovery::recoveryPathOf(song), mp3);
        if (isThere)
            TestFiles::write(song, mp3);
        else
            QFile::remove(song);
        m_driver->answerBox(QMessageBox::Ok);
        import({addSong("b.mid", "B")});
        QCOMPARE(
            m_driver->boxes,
            QStringList(text("Information|Salvataggi interrotti|") + song + text(": ") + expected));
        QCOMPARE(TestFiles::read(song), mp3);
        QCOMPARE(column(Title).size(), 1);
    }

    void damagedJournalIsToldOnceAtTheStart()
    {
        damageJournal();
        m_driver->answerBox(QMessageBox::Ok);
        openWindow();
        QTRY_COMPARE(m_driver->boxes.size(), 1);
        verifyDamage(m_driver->boxes.at(0));
        import({addSong("volare.mid", "A")});
        edit();
        synchronise(); // a second box is not expected and fails the test
        QCOMPARE(Journal(UserSettings::dataFolder()).runs()->size(), 2);
    }

    void journalThatIsDamagedLaterIsToldAfterTheJob_data()
    {
        const Table<bool> row;
        row("after an edit, and after what could not be saved", true);
        row("after a synchronisation", false);
    }
    void journalThatIsDamagedLaterIsToldAfterTheJob()
    {
        const auto [isEdit] = cells<bool>();
        openWindow();
        const QString song = addSong("volare.mid", "A");
        const QString other = addSong("b.mid", "B");
        import({song, other});
        damageJournal();
        QString told;
        QByteArray saved;
        const auto answer = [&] {
            m_driver->expect<QMessageBox>([&](QMessageBox &box) {
                told = box.windowTitle() + QLatin1Char('|') + box.text();
                saved = TestFiles::read(song);
                QVERIFY(!m_window->findChild<QProgressDialog *>());
                box.button(QMessageBox::Ok)->click();
            });
        };
        const QByteArray before = TestFiles::read(song);
        if (isEdit) {
            m_driver->expect<DataEditDialog>([&](DataEditDialog &dialog) {
                child<QComboBox>(dialog, "genreComboBox")->setEditText(text("Edited"));
                click(dialog, "checkBoxToAllGenre");
                QFile::remove(other);
                click(dialog, "savePushButton");
            });
            m_driver->answerBox(QMessageBox::Yes);
            m_driver->answerBox(QMessageBox::Ok);
            answer();
            doubleClick(0);
            QVERIFY(m_driver->boxes.value(1).startsWith(text("Warning|Modifica dati song|")));
        } else {
            m_driver->click<BackupDialog>("exitPushButton");
            answer();
            press("updateDataToolButton");
        }
        verifyDamage(told);
        QVERIFY2(saved != before, "it stops no save");
    }

    void journalThatIsDamagedBeforeAnUndoIsToldAfterIt()
    {
        openWindow();
        const QString song = addSong("volare.mid", "A");
        import({song});
        edit();
        const QByteArray edited = TestFiles::read(song);
        m_driver->expect<QMessageBox>([](QMessageBox &box) {
            damageJournal();
            QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
        });
        m_driver->answerBox(QMessageBox::Ok);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QCOMPARE(m_driver->boxes.value(0),
                 text("Information|Annulla l'ultima modifica|Song tornate com'erano: 0 di 1"));
        QVERIFY(m_driver->boxes.value(1).startsWith(
            text("Warning|Registro delle modifiche|Il registro ")));
        QCOMPARE(TestFiles::read(song), edited);
    }

private:
    static QString journalPath() { return UserSettings::dataFolder() + text("/journal.db"); }

    static void damageJournal() { TestFiles::write(journalPath(), QByteArray(50000, 'x')); }

    static void verifyDamage(const QString &box)
    {
        const QString expected = text("Registro delle modifiche|Il registro delle modifiche ")
            + journalPath() + text(" è danneggiato. È stato messo da parte come ");
        QVERIFY2(box.contains(expected), qPrintable(box));
    }

    /** A song whose save was cut short by the end of its program. */
    QString tear(const char *name) const
    {
        const QString song = TestFiles::write(path(name), "an old song");
        Journal journal(UserSettings::dataFolder());
        Journal::Run run(journal, text("edit"));
        QVector<JournalEntry> entries = {JournalEntry::of(
            song, {FileChange::Way::InPlace, "an old song", "new and much longer", 0, nullptr},
            QFileInfo(song).size())};
        if (!run.add(entries))
            qFatal("no journal");
        return TestFiles::write(song, "new");
    }

    void edit()
    {
        m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
            child<QLineEdit>(dialog, "titleLineEdit")->setText(text("Edited"));
            click(dialog, "savePushButton");
        });
        doubleClick(0);
    }

    void synchronise()
    {
        m_driver->click<BackupDialog>("exitPushButton");
        press("updateDataToolButton");
    }
};

QTEST_MAIN(tst_WindowRecovery)
#include "tst_windowrecovery.moc"
