#include "tests/ui/undotest.h"

#include <QLocale>
#include <QPushButton>

using namespace tarvel4;

/** What the user is shown and asked before songs are given earlier bytes. */
class tst_UndoQuestion : public UndoTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void questionTellsWhatItTakesBack_data()
    {
        const Table<QString, QString, int, QString> add;
        const auto row = [&add](const char *sentence, const char *language, const char *what,
                                int songs, const char *kind) {
            const bool isItalian = qstrcmp(language, "actionItalian") == 0;
            QStringList names;
            for (int i = 1; i <= qMin(songs, 10); ++i)
                names += text("%1.mid").arg(i);
            if (songs > 10)
                names += text("...");
            add(sentence, text(language), text(what), songs,
                (isItalian ? text("Annulla l'ultima modifica|Ultima modifica: %1\nData e ora: %2\n"
                                  "Song: %3\n\n%4\n\nVuoi rimettere queste song com'erano prima?")
                           : text("Undo the last change|Last change: %1\nDate and time: %2\n"
                                  "Songs: %3\n\n%4\n\nDo you want these songs back as they were "
                                  "before?"))
                    .arg(text(kind), QLocale::system().toString(runTime(), QLocale::ShortFormat),
                         QString::number(songs), names.join(QLatin1Char('\n'))));
        };
        const char *italian = "actionItalian";
        const char *english = "actionEnglish";
        row("an edit of a song", italian, "edit", 1, "correzione dei dati");
        row("a synchronisation of ten songs, all named", italian, "sync", 10,
            "sincronizzazione con il database K\u2011Varo"); // no line ends within the name
        row("an undo of eleven songs, ten named", italian, "undo", 11,
            "annullamento di una modifica");
        row("a restore", italian, "restore", 2, "ripristino da un backup");
        row("something that a later program does", italian, "tune", 1, "tune");
        row("an edit, in English", english, "edit", 11, "correction of song data");
        row("a synchronisation, in English", english, "sync", 1,
            "synchronisation with the K\u2011Varo database");
        row("an undo, in English", english, "undo", 1, "undoing of a change");
        row("a restore, in English", english, "restore", 1, "restoring from a backup");
    }
    void questionTellsWhatItTakesBack()
    {
        const auto [language, what, songs, expected] = cells<QString, QString, int, QString>();
        QStringList paths;
        for (int i = 1; i <= songs; ++i)
            paths += TestFiles::write(path(text("songs/%1.mid").arg(i)), "old");
        noteRun(text("an earlier run"), {TestFiles::write(path("songs/0.mid"), "old")});
        noteRun(what, paths);
        trigger(qPrintable(language));
        m_driver->expect<QMessageBox>([paths, expected = expected](QMessageBox &box) {
            QCOMPARE(box.icon(), QMessageBox::Question);
            QCOMPARE(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
            QCOMPARE(box.standardButton(box.defaultButton()), QMessageBox::No);
            QCOMPARE(box.textFormat(), Qt::PlainText);
            QCOMPARE(box.detailedText(), QDir::toNativeSeparators(paths.join(QLatin1Char('\n'))));
            QCOMPARE(box.windowTitle() + QLatin1Char('|') + box.text(), expected);
            box.button(QMessageBox::No)->click();
        });
        trigger("actionUndo");
    }

    void anythingButYesChangesNothing_data()
    {
        const Table<int> row;
        row("No", static_cast<int>(Qt::Key_N));
        row("Escape", static_cast<int>(Qt::Key_Escape));
        row("Return, as No is chosen beforehand", static_cast<int>(Qt::Key_Return));
        row("the frame", 0);
    }
    void anythingButYesChangesNothing()
    {
        const auto [way] = cells<int>();
        const QStringList songs = everyFormat();
        import(songs);
        make(text("sync"));
        const QVector<QByteArray> after = bytesOf(songs);
        m_driver->expect<QMessageBox>([way = way](QMessageBox &box) {
            if (way == 0)
                box.close();
            else if (way == Qt::Key_N)
                QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton);
            else
                QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(way));
        });
        trigger("actionUndo"); // a second box is not expected and fails the row
        QCOMPARE(bytesOf(songs), after);
        QCOMPARE(Journal(UserSettings::dataFolder()).runs()->size(), 1);
        QCOMPARE(statuses(), text("1 1 1 1 1 1"));
    }

    void nothingToUndoIsSaid_data()
    {
        const Table<QString, QString> row;
        row("in Italian", "actionItalian",
            "Information|Annulla l'ultima modifica|Non c'è nessuna modifica da annullare.");
        row("in English", "actionEnglish",
            "Information|Undo the last change|There is no change to undo.");
    }
    void nothingToUndoIsSaid()
    {
        const auto [language, expected] = cells<QString, QString>();
        trigger(qPrintable(language));
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QCOMPARE(m_driver->boxes.join(QLatin1Char(' ')), expected);
        QVERIFY(!QFile::exists(journalPath()));
    }

    void journalThatCantBeReadIsSaid()
    {
        QDir().mkpath(journalPath()); // a folder is no journal
        for (int i = 0; i < 3; ++i)
            m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        trigger("actionUndo");
        QVERIFY(m_driver->boxes.value(0).startsWith(
            text("Warning|Registro delle modifiche|Il registro")));
        QCOMPARE(
            m_driver->boxes.value(2),
            text("Warning|Annulla l'ultima modifica|Le ultime modifiche non si possono leggere: "
                 "nessuna song è cambiata."));
    }

    void itGoesOnWithoutATable()
    {
        const QString song = path("songs/a.mid");
        noteRun(text("edit"), {TestFiles::write(song, "old")});
        m_window.reset();
        QFile::remove(path("songsdb_debug"));
        QDir().mkpath(path("songsdb_debug")); // a folder is no catalogue
        openWindow();
        QVERIFY(!table()->model());
        undo();
        QCOMPARE(TestFiles::read(song), QByteArray("old"));
    }

    void saveThatWasCutShortIsPutRightFirst()
    {
        const QString song = path("songs/a.mid");
        noteRun(text("edit"), {TestFiles::write(song, "an old song")}, "torn");
        m_driver->answerBox(QMessageBox::Ok);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QCOMPARE(TestFiles::read(song), QByteArray("an old song"));
        QVERIFY(
            m_driver->boxes.value(0).startsWith(text("Information|Salvataggi interrotti|") + song));
        QVERIFY(m_driver->boxes.value(1).contains(text("nessuna modifica da annullare")));
    }
};

QTEST_MAIN(tst_UndoQuestion)
#include "tst_undoquestion.moc"
