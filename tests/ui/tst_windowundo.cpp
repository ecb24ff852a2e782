#include "tests/ui/progresswatcher.h"
#include "tests/ui/undotest.h"
#include "ui/editmanydialog.h"

using namespace tarvel4;

/** What changed songs last is taken back byte for byte, and the table shows it. */
class tst_WindowUndo : public UndoTest
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
        Table<QString, QString, bool>();
        for (const bool isNew : {false, true}) {
            const auto row = [isNew](const char *sentence, const char *change, const char *kind) {
                QTest::addRow("%s%s", sentence, isNew ? ", by the next program" : "")
                    << text(change) << text(kind) << isNew;
            };
            row("an edit is taken back", "edit", "correzione dei dati");
            row("an edit that was applied to all is taken back", "edit all", "correzione dei dati");
            row("a synchronisation is taken back", "sync",
                "sincronizzazione con il database K\u2011Varo");
        }
    }
    void everyByteComesBack()
    {
        const auto [change, kind, inANewWindow] = cells<QString, QString, bool>();
        const QStringList songs = everyFormat();
        const QVector<QByteArray> before = bytesOf(songs);
        import(songs);
        make(change);
        const QVector<QByteArray> after = bytesOf(songs);
        const int changed = static_cast<int>(change == text("edit") ? 1 : songs.size());
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
        QCOMPARE(m_driver->boxes,
                 QStringList(
                     text("Information|Annulla l'ultima modifica|Song tornate com'erano: %1 di %1")
                         .arg(changed)));
        QCOMPARE(bytesOf(songs), before);

        m_driver->boxes.clear();
        answerQuestion(QMessageBox::Yes, &question);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QVERIFY2(question.contains(text("Ultima modifica: annullamento di una modifica")),
                 qPrintable(question));
        QCOMPARE(bytesOf(songs), after);
    }

    void songsThatCantBeTakenBackAreToldAndLeft_data()
    {
        const Table<QByteArray, QString> row;
        row("one that changed meanwhile", QByteArray("another program's"),
            "è stato cambiato da allora, perciò resta com'è");
        row("one that changed at its end only", QByteArray(),
            "è stato cambiato da allora, perciò resta com'è");
        row("one that is gone", QByteArray("(none)"), "");
    }
    void songsThatCantBeTakenBackAreToldAndLeft()
    {
        auto [now, cause] = cells<QByteArray, QString>();
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
                 text("Warning|Annulla l'ultima modifica|Song tornate com'erano: 5 di 6\n\n"
                      "Queste song restano come sono:\nvolare.mf3"));
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
        m_driver->click<DataEditDialog>("exitPushButton"); // which is offered again
        doubleClick(3);
        QVERIFY(descriptionOf(3).contains(text("Non salvata")));
        TestFiles::write(songs.at(0), edited);

        QCOMPARE(undo(),
                 text("Information|Annulla l'ultima modifica|Song tornate com'erano: 3 di 3"));
        QCOMPARE(statuses(), text("0 0 0 0"));
        QCOMPARE(column(Artist), before);
        QCOMPARE(descriptionOf(3), QString());
        QVERIFY(table()->columnWidth(Artist) < 400);
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
        QCOMPARE(undo(),
                 text("Information|Annulla l'ultima modifica|Song tornate com'erano: 2 di 6"));
        QCOMPARE(watcher.seen,
                 strings({"Annulla le modifiche|Rimetto le song com'erano...|Interrompi|6"}));
        QCOMPARE(watcher.labels, strings({"1 di 6", "2 di 6"}));
        for (const int last : {4, 5})
            expected[last] = before.at(last);
        QCOMPARE(bytesOf(songs), expected);
        QCOMPARE(statuses(), text("1 1 1 1 0 0"));
    }

    /** And not what the cancelled one took back; all of it is one change then. */
    void theRestIsTakenBackAfterACancel()
    {
        const QStringList songs = everyFormat();
        const QVector<QByteArray> before = bytesOf(songs);
        import(songs);
        make(text("sync"));
        const QVector<QByteArray> after = bytesOf(songs);
        {
            ProgressWatcher watcher;
            watcher.onValue = [](QProgressDialog &dialog, int value) {
                if (value == 2)
                    ProgressWatcher::cancel(dialog);
            };
            undo();
        }
        QVERIFY(bytesOf(songs) != before);

        QString question;
        m_driver->boxes.clear();
        answerQuestion(QMessageBox::Yes, &question);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        for (const char *part : {"Ultima modifica: sincronizzazione", "Song: 4\n",
                                 "prima che l'annullamento fosse interrotto: 2"})
            QVERIFY2(question.contains(text(part)), qPrintable(question));
        QCOMPARE(m_driver->boxes.value(0),
                 text("Information|Annulla l'ultima modifica|Song tornate com'erano: 6 di 6"));
        QCOMPARE(bytesOf(songs), before);
        QCOMPARE(statuses(), text("0 0 0 0 0 0"));

        undo();
        QCOMPARE(bytesOf(songs), after);
        undo();
        QCOMPARE(bytesOf(songs), before);
    }

    void rowsAreInTheirOrderAgain_data()
    {
        const Table<bool, int, QStringList> row;
        row("after an edit of all titles", false, Title, "b.mid a.mid c.mid");
        row("after an edit of several songs", true, Artist, "c.mid a.mid b.mid");
    }
    void rowsAreInTheirOrderAgain()
    {
        const auto [isOfSeveral, sorted, before] = cells<bool, int, QStringList>();
        import({addSong("c.mid", "Uno"), addSong("a.mid", "Tre"), addSong("b.mid", "Due")});
        table()->sortByColumn(sorted, Qt::AscendingOrder);
        QCOMPARE(column(Name), before);
        const int edited = static_cast<int>(before.indexOf(text("c.mid")));
        table()->setCurrentIndex(model()->index(edited, Title));
        if (isOfSeveral) {
            m_driver->expect<EditManyDialog>([](EditManyDialog &dialog) {
                click(dialog, "artistCheckBox");
                child<QComboBox>(dialog, "artistComboBox")->setEditText(text("NEW"));
                click(dialog, "applyPushButton");
            });
            trigger("actionEditMany");
        } else {
            m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
                click(dialog, "radioButtonTitle2");
                click(dialog, "checkBoxToAllTitle");
                click(dialog, "savePushButton");
            });
            m_driver->answerBox(QMessageBox::Yes);
            doubleClick(edited);
        }
        QCOMPARE(column(Name), strings({"a.mid", "b.mid", "c.mid"}));
        QCOMPARE(table()->currentIndex().row(), 2); // of c.mid still
        undo();
        QCOMPARE(column(Name), before);
        QCOMPARE(table()->currentIndex().row(), edited);
        QCOMPARE(statuses(), text("0 0 0"));
    }

    void nothingElseCanBeStartedMeanwhile_data()
    {
        const Table<bool> row;
        row("while a change is taken back", true);
        row("while songs are synchronised", false);
    }
    void nothingElseCanBeStartedMeanwhile()
    {
        const auto [isUndo] = cells<bool>();
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

    void clickWindow(const QWidget &widget, QPoint place, Click click) const
    {
        click(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
              widget.mapTo(m_window.get(), place), -1);
    }

    QString descriptionOf(int row) const
    {
        return model()->index(row, Type).data(Qt::AccessibleTextRole).toString();
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
