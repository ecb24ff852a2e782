#include "library/usersettings.h"
#include "storage/contenthash.h"
#include "storage/journal.h"
#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowtest.h"
#include "ui/dataeditdialog.h"

#include <QComboBox>
#include <QLocale>
#include <QPushButton>

using namespace tarvel4;

/** What changed songs last is shown, and taken back byte for byte where that is wanted. */
class tst_WindowUndo : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void everyByteComesBack_data()
    {
        columns<QString, QString, bool>("change", "kind", "inANewWindow");
        for (const bool isNew : {false, true}) {
            const auto row = [isNew](const char *sentence, const char *change, const char *kind) {
                QTest::addRow("%s%s", sentence, isNew ? ", by the next program" : "")
                    << text(change) << text(kind) << isNew;
            };
            row("an edit is taken back", "edit", "correzione dei dati");
            row("an edit that was applied to all is taken back", "edit all", "correzione dei dati");
            row("a synchronisation is taken back", "sync",
                "sincronizzazione con il database K-Varo");
        }
    }
    void everyByteComesBack()
    {
        QFETCH(QString, change);
        QFETCH(QString, kind);
        QFETCH(bool, inANewWindow);
        const QStringList songs = everyFormat();
        const QVector<QByteArray> before = bytesOf(songs);
        import(songs);
        make(change);
        const QVector<QByteArray> after = bytesOf(songs);
        const int changed = change == text("edit") ? 1 : songs.size();
        for (int i = 0; i < songs.size(); ++i)
            QCOMPARE(after.at(i) != before.at(i), i < changed);
        if (inANewWindow) {
            m_window.reset();
            openWindow();
        }

        QString question;
        answerQuestion(QMessageBox::Yes, &question);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QVERIFY2(question.contains(text("Ultima modifica: ") + kind), qPrintable(question));
        QCOMPARE(
            m_driver->boxes,
            QStringList(
                text("Annulla l'ultima modifica|Song tornate com'erano: %1 di %1").arg(changed)));
        QCOMPARE(bytesOf(songs), before);

        m_driver->boxes.clear();
        answerQuestion(QMessageBox::Yes, &question);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QVERIFY2(question.contains(text("Ultima modifica: annullamento di una modifica")),
                 qPrintable(question));
        QCOMPARE(bytesOf(songs), after);
    }

    void questionTellsWhatItTakesBack_data()
    {
        columns<QString, QString, int, QString>("language", "what", "songs", "expected");
        const auto row = [](const char *sentence, const char *language, const char *what, int songs,
                            const char *kind) {
            const bool isItalian = qstrcmp(language, "actionItalian") == 0;
            QStringList names;
            for (int i = 1; i <= qMin(songs, 10); ++i)
                names += text("%1.mid").arg(i);
            if (songs > 10)
                names += text("...");
            tarvel4::row(
                sentence, text(language), text(what), songs,
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
            "sincronizzazione con il database K-Varo");
        row("an undo of eleven songs, ten named", italian, "undo", 11,
            "annullamento di una modifica");
        row("a restore", italian, "restore", 2, "ripristino da un backup");
        row("something that a later program does", italian, "tune", 1, "tune");
        row("an edit, in English", english, "edit", 11, "correction of song data");
        row("a synchronisation, in English", english, "sync", 1,
            "synchronisation with the K-Varo database");
        row("an undo, in English", english, "undo", 1, "undoing of a change");
        row("a restore, in English", english, "restore", 1, "restoring from a backup");
    }
    void questionTellsWhatItTakesBack()
    {
        QFETCH(QString, what);
        QFETCH(int, songs);
        QStringList paths;
        for (int i = 1; i <= songs; ++i)
            paths += TestFiles::write(path(text("songs/%1.mid").arg(i)), "old");
        noteRun(text("an earlier run"), {TestFiles::write(path("songs/0.mid"), "old")});
        noteRun(what, paths);
        QFETCH(QString, language);
        trigger(qPrintable(language));
        m_driver->expect<QMessageBox>([paths](QMessageBox &box) {
            QCOMPARE(box.icon(), QMessageBox::Question);
            QCOMPARE(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
            QCOMPARE(box.standardButton(box.defaultButton()), QMessageBox::No);
            QCOMPARE(box.textFormat(), Qt::PlainText);
            QCOMPARE(box.detailedText(), paths.join(QLatin1Char('\n')));
            QTEST(box.windowTitle() + QLatin1Char('|') + box.text(), "expected");
            box.button(QMessageBox::No)->click();
        });
        trigger("actionUndo");
    }

    void anythingButYesChangesNothing_data()
    {
        columns<int>("way");
        row("No", static_cast<int>(Qt::Key_N));
        row("Escape", static_cast<int>(Qt::Key_Escape));
        row("Return, as No is chosen beforehand", static_cast<int>(Qt::Key_Return));
        row("the frame", 0);
    }
    void anythingButYesChangesNothing()
    {
        QFETCH(int, way);
        const QStringList songs = everyFormat();
        import(songs);
        make(text("sync"));
        const QVector<QByteArray> after = bytesOf(songs);
        m_driver->expect<QMessageBox>([way](QMessageBox &box) {
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
        columns<QString, QString>("language", "expected");
        row("in Italian", "actionItalian",
            "Annulla l'ultima modifica|Non c'è nessuna modifica da annullare.");
        row("in English", "actionEnglish", "Undo the last change|There is no change to undo.");
    }
    void nothingToUndoIsSaid()
    {
        QFETCH(QString, language);
        trigger(qPrintable(language));
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QTEST(m_driver->boxes.join(QLatin1Char(' ')), "expected");
        QCOMPARE(m_driver->lastBox.icon, QMessageBox::Information);
        QVERIFY(!QFile::exists(journalPath()));
    }

    void journalThatCantBeReadIsSaid()
    {
        QDir().mkpath(journalPath()); // a folder is no journal
        for (int i = 0; i < 3; ++i)
            m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        trigger("actionUndo");
        qWarning() << m_driver->boxes;
        QVERIFY(m_driver->boxes.value(0).startsWith(text("Registro delle modifiche|Il registro")));
        QCOMPARE(m_driver->boxes.value(2),
                 text("Annulla l'ultima modifica|Le ultime modifiche non si possono leggere: "
                      "nessuna song è cambiata."));
        QCOMPARE(m_driver->lastBox.icon, QMessageBox::Warning);
    }

    void songsThatCantBeTakenBackAreToldAndLeft_data()
    {
        columns<QByteArray, QString>("now", "cause");
        row("one that changed meanwhile", QByteArray("another program's"),
            "un altro programma l'ha cambiato nel frattempo: va riletto");
        row("one that changed at its end only", QByteArray(),
            "un altro programma l'ha cambiato nel frattempo: va riletto");
        row("one that is gone", QByteArray("(none)"), "");
    }
    void songsThatCantBeTakenBackAreToldAndLeft()
    {
        QFETCH(QByteArray, now);
        QFETCH(QString, cause);
        const QStringList songs = everyFormat();
        QVector<QByteArray> expected = bytesOf(songs);
        import(songs);
        make(text("sync"));
        const QString changed = songs.at(2);
        const QString title = column(Title).at(2);
        if (now.isEmpty())
            now = TestFiles::read(changed) + '\0';
        if (now == "(none)")
            QFile::remove(changed);
        else
            TestFiles::write(changed, now);
        expected[2] = now;
        const QString failed = undo();
        QCOMPARE(failed,
                 text("Annulla l'ultima modifica|Song tornate com'erano: 5 di 6\n\n"
                      "Queste song restano come sono:\nvolare.mf3"));
        QCOMPARE(m_driver->lastBox.icon, QMessageBox::Warning);
        QVERIFY2(m_driver->lastBox.details.startsWith(text("volare.mf3: ") + cause),
                 qPrintable(m_driver->lastBox.details));
        QCOMPARE(bytesOf(songs), expected);
        QCOMPARE(statuses(), text("0 0 3 0 0 0"));
        QCOMPARE(column(Title).at(2), title);
        QVERIFY(descriptionOf(2).contains(text("Non rimessa com'era: ") + cause));
    }

    /** Found by their paths: also sorted, and where a song is listed twice. */
    void rowsOfTheSongsAreRefreshed()
    {
        const QStringList songs = {addSong("c.mid", "Uno"), addSong("a.mid", "Tre"),
                                   addSong("b.mid", "Due")};
        import(songs + QStringList(path("songs/../songs/a.mid")));
        table()->sortByColumn(Name, Qt::AscendingOrder);
        const QStringList before = column(Artist);
        make(text("edit all"));
        QCOMPARE(column(Artist),
                 strings({"A NEW ARTIST", "A NEW ARTIST", "A NEW ARTIST", "A NEW ARTIST"}));
        table()->setColumnWidth(Artist, 400);
        const QByteArray edited = TestFiles::read(songs.at(0));

        // A later edit that can't be saved marks the row.
        m_driver->expect<DataEditDialog>([&songs](DataEditDialog &dialog) {
            child<QComboBox>(dialog, "artistComboBox")->setEditText(text("ANOTHER"));
            QFile::remove(songs.at(0));
            click(dialog, "savePushButton");
        });
        m_driver->answerBox(QMessageBox::Ok);
        doubleClick(3);
        QVERIFY(descriptionOf(3).contains(text("Non salvata")));
        TestFiles::write(songs.at(0), edited);

        QCOMPARE(undo(), text("Annulla l'ultima modifica|Song tornate com'erano: 3 di 3"));
        QCOMPARE(statuses(), text("0 0 0 0"));
        QCOMPARE(column(Artist), before);
        QCOMPARE(descriptionOf(3), QString());
        QVERIFY(table()->columnWidth(Artist) < 400);
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
        QVERIFY(m_driver->boxes.value(0).startsWith(text("Salvataggi interrotti|") + song));
        QVERIFY(m_driver->boxes.value(1).contains(text("nessuna modifica da annullare")));
    }

    void progressIsShownAndCancels()
    {
        const QStringList songs = everyFormat();
        const QVector<QByteArray> before = bytesOf(songs);
        import(songs);
        make(text("sync"));
        QVector<QByteArray> expected = bytesOf(songs);
        ProgressWatcher watcher;
        watcher.onValue = [](QProgressDialog &dialog, int value) {
            if (value == 2)
                ProgressWatcher::cancel(dialog);
        };
        QCOMPARE(undo(), text("Annulla l'ultima modifica|Song tornate com'erano: 2 di 6"));
        QCOMPARE(watcher.seen,
                 strings({"Annulla le modifiche|Rimetto le song com'erano...|Interrompi|6"}));
        QCOMPARE(watcher.labels, strings({"1 di 6", "2 di 6"}));
        for (const int last : {4, 5})
            expected[last] = before.at(last);
        QCOMPARE(bytesOf(songs), expected);
        QCOMPARE(statuses(), text("1 1 1 1 0 0"));
    }

    void nothingElseCanBeStartedMeanwhile_data()
    {
        columns<bool>("isUndo");
        row("while a change is taken back", true);
        row("while songs are synchronised", false);
    }
    void nothingElseCanBeStartedMeanwhile()
    {
        QFETCH(bool, isUndo);
        import(everyFormat());
        int values = 0;
        ProgressWatcher watcher;
        const auto tryEverything = [&](QProgressDialog &, int) {
            ++values;
            // a dialog that opens is not expected and fails the row
            for (const char *step :
                 {"selectDirToolButton", "updateDataToolButton", "transferFilesToolButton"}) {
                const auto *button = find<QToolButton>(step);
                clickWindow(*button, button->rect().center(), &QTest::mouseClick);
            }
            clickWindow(*table()->viewport(), centreOf(0, Title), &QTest::mouseDClick);
            QTest::keyClick(m_window->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
            trigger("actionUndo");
            QVERIFY(!m_window->close());
        };
        if (!isUndo)
            watcher.onValue = tryEverything;
        make(text("sync"));
        watcher.onValue = tryEverything;
        if (isUndo)
            undo();
        QCOMPARE(values, 6);
        QCOMPARE(statuses(), isUndo ? text("0 0 0 0 0 0") : text("1 1 1 1 1 1"));
    }

private:
    using Click = void (*)(QWindow *, Qt::MouseButton, Qt::KeyboardModifiers, QPoint, int);

    static QDateTime runTime() { return {QDate(2026, 12, 24), QTime(18, 5)}; }
    static QString journalPath() { return UserSettings::dataFolder() + text("/journal.db"); }

    void clickWindow(const QWidget &widget, QPoint place, Click click) const
    {
        click(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
              widget.mapTo(m_window.get(), place), -1);
    }

    /** Writes songs as one run, at a time of its own; \a torn: what a cut leaves of each. */
    static void noteRun(const QString &what, const QStringList &songs,
                        const QByteArray &torn = QByteArray())
    {
        Journal journal(UserSettings::dataFolder());
        {
            Journal::Run run(journal, what);
            QVector<JournalEntry> entries;
            for (const QString &song : songs) {
                const QByteArray old = TestFiles::read(song);
                entries += JournalEntry::of(
                    song, {FileChange::Way::InPlace, old, old + ", new", 0, nullptr}, old.size());
            }
            QVERIFY(run.add(entries));
            QVector<Journal::Settled> settled;
            for (const JournalEntry &entry : qAsConst(entries)) {
                ContentHash hash;
                hash.add(entry.oldBytes + ", new");
                settled.append({entry.id, hash.result()});
                TestFiles::write(entry.path, torn.isEmpty() ? entry.oldBytes + ", new" : torn);
            }
            if (torn.isEmpty())
                run.settle(settled);
        }
        JournalFile file(UserSettings::dataFolder(), {});
        QVERIFY(file.open(JournalFile::Access::Write));
        QSqlQuery query = file.prepare("UPDATE run SET time = ?");
        query.addBindValue(runTime().toMSecsSinceEpoch());
        QVERIFY(file.exec(query));
    }

    /** Says yes to taking the last change back; what is told in the end. */
    QString undo()
    {
        m_driver->boxes.clear();
        m_driver->answerBox(QMessageBox::Yes);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        return m_driver->boxes.value(1);
    }

    QString descriptionOf(int row) const
    {
        return model()->index(row, Type).data(Qt::AccessibleDescriptionRole).toString();
    }

    /** A song of each format that is written, all of them known to the catalogue. */
    QStringList everyFormat() const
    {
        using namespace SongBytes;
        const QByteArray midi = midi0(meta(3, "Old") + meta(2, "(c) K-VARO"));
        const MfxFields fields{"Old", "Old", "Old", "Old", "VOLARE"};
        QStringList songs;
        const auto add = [&](const char *name, const QByteArray &bytes) {
            songs += TestFiles::write(path(name), bytes);
        };
        add("songs/volare.mid", midi);
        add("songs/volare.kar", midi);
        add("songs/volare.mf3", mfx(3, fields, midi));
        add("songs/volare.mf4", mfx(4, fields, withFiller(midi)));
        add("songs/volare.mf5", mfx(5, fields, midi));
        add("songs/volare.mp3", tag(frame("TIT2", "Old")) + audio());
        return songs;
    }

    static QVector<QByteArray> bytesOf(const QStringList &songs)
    {
        QVector<QByteArray> bytes;
        for (const QString &song : songs)
            bytes += TestFiles::read(song);
        return bytes;
    }

    /** Has every song, or with "edit" the first one, changed by the window. */
    void make(const QString &change)
    {
        if (change == text("sync")) {
            m_driver->click<BackupDialog>("exitPushButton");
            press("updateDataToolButton");
            return;
        }
        const bool isToAll = change == text("edit all");
        m_driver->expect<DataEditDialog>([isToAll](DataEditDialog &dialog) {
            child<QComboBox>(dialog, "artistComboBox")->setEditText(text("A NEW ARTIST"));
            if (isToAll)
                click(dialog, "checkBoxToAllArtist");
            click(dialog, "savePushButton");
        });
        if (isToAll)
            m_driver->answerBox(QMessageBox::Yes);
        doubleClick(0);
        m_driver->boxes.clear();
    }

    void answerQuestion(QMessageBox::StandardButton button, QString *question)
    {
        m_driver->expect<QMessageBox>([button, question](QMessageBox &box) {
            *question = box.text();
            QTest::mouseClick(box.button(button), Qt::LeftButton);
        });
    }
};

QTEST_MAIN(tst_WindowUndo)
#include "tst_windowundo.moc"
