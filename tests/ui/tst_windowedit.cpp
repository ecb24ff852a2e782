#include "tests/ui/windowtest.h"

#include "ui/dataeditdialog.h"

#include <QCheckBox>
#include <QComboBox>

using namespace tarvel4;
using namespace TestFiles;

/** Going on from song to song in the editor, and what is said and kept there. */
class tst_WindowEdit : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void f2Edits()
    {
        importThree();
        focusRow(1);
        QString shown;
        m_driver->expect<DataEditDialog>([&shown](DataEditDialog &dialog) {
            shown = titleEdit(dialog)->text();
            dialog.reject();
        });
        QTest::keyClick(table(), Qt::Key_F2);
        QCOMPARE(shown, text("Tre"));
        QCOMPARE(m_window->focusWidget(), table());
    }

    void theRowMenuEdits()
    {
        importThree();
        QKeySequence keys;
        m_driver->expect<QMenu>([&keys](QMenu &menu) {
            QVERIFY(menu.actions().at(2)->isSeparator());
            keys = menu.actions().at(3)->shortcut();
            QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier,
                              menu.actionGeometry(menu.actions().at(3)).center());
        });
        QString shown;
        m_driver->expect<DataEditDialog>([&shown](DataEditDialog &dialog) {
            shown = titleEdit(dialog)->text();
            dialog.reject();
        });
        QWidget *viewport = table()->viewport();
        const QPoint place = centreOf(2, Title);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
        QCOMPARE(shown, text("Due"));
        QCOMPARE(keys, QKeySequence(Qt::Key_F2));
    }

    void steps_data()
    {
        const Table<int, QString, QString, QString> row;
        // from, steps, hidden rows, titles shown and which buttons each offers
        row("forward to the end", 0, "nn", "", "Uno:n Tre:pn Due:p");
        row("back to the start", 2, "pp", "", "Due:p Tre:pn Uno:n");
        row("there and back", 1, "npp", "", "Tre:pn Due:p Tre:pn Uno:n");
        row("a hidden row is passed over", 0, "n", "1", "Uno:n Due:p");
        row("a hidden row at the end is none", 0, "n", "2", "Uno:n Tre:p");
        row("hidden rows at both ends leave nowhere to go", 1, "", "02", "Tre:");
        row("at the end nothing happens", 2, "n", "", "Due:p Due:p");
    }
    /** With the keys; nothing was changed, so nothing is written. */
    void steps()
    {
        const auto [from, keys, hidden, shown] = cells<int, QString, QString, QString>();
        importThree();
        const QList<QByteArray> before = bytes();
        for (const QChar number : hidden)
            table()->setRowHidden(number.digitValue(), true);
        QStringList seen;
        m_driver->expect<DataEditDialog>([&, keys = keys](DataEditDialog &dialog) {
            const auto see = [&] {
                seen.append(titleEdit(dialog)->text() + QLatin1Char(':')
                            + text(isEnabled(dialog, "previousPushButton") ? "p" : "")
                            + text(isEnabled(dialog, "nextPushButton") ? "n" : ""));
            };
            see();
            for (const QChar key : keys) {
                QTest::keyClick(&dialog,
                                key == QLatin1Char('n') ? Qt::Key_PageDown : Qt::Key_PageUp,
                                Qt::AltModifier);
                see();
            }
            dialog.reject();
        });
        edit(from);
        QCOMPARE(seen.join(QLatin1Char(' ')), shown);
        QCOMPARE(bytes(), before);
        QCOMPARE(statuses(), text("0 0 0"));
        if (!keys.isEmpty())
            QCOMPARE(column(Title).at(table()->currentIndex().row()),
                     shown.section(QLatin1Char(' '), -1).section(QLatin1Char(':'), 0, 0));
    }

    void aStepSavesWhatWasChanged()
    {
        importThree();
        m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
            titleEdit(dialog)->setText(text("First"));
            click(dialog, "nextPushButton");
            QCOMPARE(titleEdit(dialog)->text(), text("Tre"));
            click(dialog, "nextPushButton");
            titleEdit(dialog)->setText(text("Third"));
            click(dialog, "savePushButton");
        });
        edit(0);
        QCOMPARE(column(Title), strings({"First", "Tre", "Third"}));
        QCOMPARE(statuses(), text("2 0 2"));
        QVERIFY(read(m_songs.at(0)).contains("First"));
        QVERIFY(read(m_songs.at(2)).contains("Third"));
    }

    void theTableFollowsAlsoWhereNoRowWasItsOwn()
    {
        importThree();
        m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
            click(dialog, "nextPushButton");
            dialog.reject();
        });
        table()->setCurrentIndex(QModelIndex());
        Q_EMIT table()->doubleClicked(model()->index(0, Title));
        QCOMPARE(table()->currentIndex().row(), 1);
        QVERIFY(table()->selectionModel()->isRowSelected(1, QModelIndex()));
    }

    void aStepAppliesToAll()
    {
        importThree();
        m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
            child<QLineEdit>(dialog, "authorLineEdit")->setText(text("NEW"));
            click(dialog, "checkBoxToAllAuthor");
            click(dialog, "nextPushButton");
            QVERIFY(!child<QCheckBox>(dialog, "checkBoxToAllAuthor")->isChecked());
            QCOMPARE(child<QLineEdit>(dialog, "authorLineEdit")->text(), text("NEW"));
            dialog.reject();
        });
        m_driver->answerBox(QMessageBox::Yes);
        edit(0);
        QCOMPARE(column(Author), strings({"NEW", "NEW", "NEW"}));
        QCOMPARE(statuses(), text("2 2 2"));
    }

    void aSongThatCantBeReadIsPassedOver()
    {
        importThree();
        QFile::remove(m_songs.at(1));
        QStringList seen;
        m_driver->expect<DataEditDialog>([&seen](DataEditDialog &dialog) {
            click(dialog, "nextPushButton");
            seen.append(titleEdit(dialog)->text());
            dialog.reject();
        });
        edit(0);
        QCOMPARE(seen, strings({"Due"}));
        QVERIFY(causeOf(1).startsWith(text("Non letta: ")));
    }

    void whereNothingElseCanBeReadTheSongStays()
    {
        importThree();
        QFile::remove(m_songs.at(0));
        QFile::remove(m_songs.at(1));
        m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
            titleEdit(dialog)->setText(text("Third"));
            click(dialog, "previousPushButton");
            QCOMPARE(titleEdit(dialog)->text(), text("Third"));
            QVERIFY(!isEnabled(dialog, "previousPushButton"));
            titleEdit(dialog)->setText(text("Last"));
            click(dialog, "savePushButton");
        });
        edit(2);
        QCOMPARE(column(Title).at(2), text("Last"));
        QVERIFY(read(m_songs.at(2)).contains("Last"));
    }

    void whatWasTypedOutlivesAFailedSave_data()
    {
        const Table<QString> row;
        row("of Salva", "savePushButton");
        row("of a step", "nextPushButton");
    }
    /** Also the second time; the song comes back, and all of it is saved. */
    void whatWasTypedOutlivesAFailedSave()
    {
        const auto [button] = cells<QString>();
        importThree();
        const QByteArray before = read(m_songs.at(0));
        const auto press = [button = button](DataEditDialog &dialog) {
            click(dialog, qPrintable(button));
        };
        const auto typed = [](const DataEditDialog &dialog) {
            return QStringList({titleEdit(dialog)->text(),
                                child<QLineEdit>(dialog, "authorLineEdit")->text(),
                                child<QLineEdit>(dialog, "bpmLineEdit")->text()});
        };
        const QStringList wanted = strings({"New", "Author", "95"});
        m_driver->expect<DataEditDialog>([&](DataEditDialog &dialog) {
            titleEdit(dialog)->setText(text("New"));
            child<QLineEdit>(dialog, "authorLineEdit")->setText(text("Author"));
            child<QLineEdit>(dialog, "bpmLineEdit")->setText(text("95"));
            QFile::remove(m_songs.at(0));
            press(dialog);
            if (dialog.isVisible()) { // a step: it is told above the dialog
                QCOMPARE(typed(dialog), wanted);
                dialog.accept();
            }
        });
        m_driver->answerBox(QMessageBox::Ok);
        if (button == text("nextPushButton"))
            m_driver->answerBox(QMessageBox::Ok);
        m_driver->expect<DataEditDialog>([&](DataEditDialog &dialog) {
            QCOMPARE(typed(dialog), wanted);
            write(m_songs.at(0), before);
            click(dialog, "savePushButton");
        });
        edit(0);
        QCOMPARE(column(Title), strings({"New", "Tre", "Due"}));
        QCOMPARE(column(Author).at(0), text("Author"));
        QCOMPARE(statuses(), text("2 0 0"));
        QCOMPARE(causeOf(0), QString());
        QVERIFY(read(m_songs.at(0)).contains("Author"));
    }

    void aSecondTryAppliesNothingToAllAgain()
    {
        importThree();
        const QByteArray before = read(m_songs.at(0));
        m_driver->expect<DataEditDialog>([&](DataEditDialog &dialog) {
            child<QComboBox>(dialog, "genreComboBox")->setEditText(text("Ska"));
            click(dialog, "checkBoxToAllGenre");
            QFile::remove(m_songs.at(0));
            click(dialog, "savePushButton");
        });
        m_driver->answerBox(QMessageBox::Yes);
        m_driver->answerBox(QMessageBox::Ok);
        m_driver->expect<DataEditDialog>([&](DataEditDialog &dialog) {
            QVERIFY(!dialog.applyToAllGenre());
            QVERIFY(!child<QCheckBox>(dialog, "checkBoxToAllGenre")->isChecked());
            child<QComboBox>(dialog, "genreComboBox")->setEditText(text("Pop"));
            write(m_songs.at(0), before);
            click(dialog, "savePushButton");
        });
        edit(0);
        QCOMPARE(column(Genre), strings({"Pop", "Ska", "Ska"}));
    }

    void theDialogSaysWhatTheSaveWouldDo()
    {
        using namespace SongBytes;
        m_songs = QStringList(
            TestFiles::write(path("songs/a.mf3"), mfx(3, {"Old", "", "", "", "", 0, 0}, midi0())));
        importOnlyThese();
        m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
            const auto *line = child<QLabel>(dialog, "noteLabel");
            QCOMPARE(line->text(), QString());
            retype(titleEdit(dialog), QStringLiteral("Citt\u00E0"));
            QCOMPARE(line->text(),
                     QStringLiteral("Titolo: questo formato non può contenere la "
                                    "lettera \"\u00E0\""));
            QCOMPARE(titleEdit(dialog)->accessibleDescription(), line->text().mid(8));
            QVERIFY(isEnabled(dialog, "savePushButton"));
            click(dialog, "savePushButton");
        });
        m_driver->answerBox(QMessageBox::Ok);
        m_driver->expect<DataEditDialog>([](DataEditDialog &dialog) {
            const auto *line = child<QLabel>(dialog, "noteLabel");
            QVERIFY(line->text().startsWith(text("Titolo: ")));
            retype(titleEdit(dialog), QStringLiteral("Pi\u00F9"));
            QVERIFY(line->text().contains(QStringLiteral("\u00F9")));
            retype(titleEdit(dialog), text("Citta'"));
            QCOMPARE(line->text(), QString());
            click(dialog, "savePushButton");
        });
        edit(0);
        QVERIFY(m_driver->lastBox.details.contains(text("questo formato non può contenere")));
        QCOMPARE(column(Title), strings({"Citta'"}));
    }

private:
    void importThree()
    {
        m_songs = threeSongs();
        importOnlyThese();
    }
    void importOnlyThese()
    {
        import(m_songs);
        QCOMPARE(model()->rowCount(), m_songs.size());
    }
    void focusRow(int row) const
    {
        QApplication::setActiveWindow(m_window.get());
        table()->setFocus();
        table()->selectRow(row);
        QTRY_VERIFY(table()->hasFocus());
    }
    /** Opens the editor of a row, also of one that is out of sight. */
    void edit(int row) const
    {
        table()->setCurrentIndex(model()->index(row, Title));
        Q_EMIT table()->doubleClicked(model()->index(row, Title));
    }
    QList<QByteArray> bytes() const
    {
        QList<QByteArray> all;
        for (const QString &song : m_songs)
            all.append(read(song));
        return all;
    }
    QString causeOf(int row) const
    {
        return model()->index(row, Type).data(Qt::ToolTipRole).toString();
    }
    static QLineEdit *titleEdit(const QWidget &dialog)
    {
        return child<QLineEdit>(dialog, "titleLineEdit");
    }
    static bool isEnabled(const QWidget &dialog, const char *name)
    {
        return child<QWidget>(dialog, name)->isEnabled();
    }

    QStringList m_songs;
};

QTEST_MAIN(tst_WindowEdit)
#include "tst_windowedit.moc"
