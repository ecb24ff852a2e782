#include "tests/ui/dialogtest.h"
#include "ui/dataeditdialog.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

using namespace tarvel4;

/** What the editor says while a song is typed, and how it goes on to another one. */
class tst_EditNotes : public DialogTest<DataEditDialog>
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_song = SongInfo();
        m_song.title = text("Azzurro");
        m_song.length = 185;
        m_song.bpm = 120;
        m_song.key = text("A-");
        m_song.filename = text("/music/azzurro.mid");
        open();
        m_dialog->setKeys(strings({"C", "A-", "Bb"}));
        m_dialog->setSong(m_song);
    }

    /** As where a window manager is late to tell of a dialog that is closed by then. Its labels go
     * before the button. */
    void aDialogIsDestroyedThatHasTheFocusAgain()
    {
        QVERIFY(activate(*m_dialog));
        auto *button = find<QPushButton>("exitPushButton");
        m_dialog->hide();
        QApplication::setActiveWindow(m_dialog.get());
        button->setFocus();
        QCOMPARE(QApplication::focusWidget(), button);
        m_dialog.reset();
        QVERIFY(!QApplication::focusWidget());
    }

    void notesStandAtTheirFields()
    {
        using Grade = FieldNote::Grade;
        QVERIFY(activate(*m_dialog));
        const QSize size = m_dialog->size();
        SongInfo asked;
        m_dialog->setCheck([&asked](const SongInfo &song) {
            asked = song;
            if (song.title == text("Azzurro"))
                return QVector<FieldNote>();
            return QVector<FieldNote>{{Grade::Garbled, text("title"), text("is <b>odd</b>")},
                                      {Grade::NearLimit, text("genre"), text("few left")},
                                      {Grade::Refused, text("author"), text("is refused")}};
        });
        const auto *line = find<QLabel>("noteLabel");
        QCOMPARE(marks(), text(""));
        QCOMPARE(line->text(), text(""));

        edit("titleLineEdit")->setFocus();
        retype(edit("titleLineEdit"), text(" Nel blu "));
        QCOMPARE(asked.title, text("Nel blu"));
        QCOMPARE(asked.filename, m_song.filename);
        QCOMPARE(marks(), text("title genre author"));
        QCOMPARE(line->text(), text("Titolo: is <b>odd</b>"));
        QCOMPARE(line->textFormat(), Qt::PlainText);
        QVERIFY(!find<QLabel>("noteIconLabel")->pixmap().isNull());
        const auto *mark = edit("titleLineEdit")->actions().constFirst();
        QCOMPARE(mark->toolTip(), text("<p>is &lt;b&gt;odd&lt;/b&gt;</p>"));
        QCOMPARE(find("genreComboBox")->accessibleDescription(), text("few left"));

        find("genreComboBox")->setFocus();
        QCOMPARE(line->text(), text("Genere musicale: few left"));
        find("bpmLineEdit")->setFocus();
        QVERIFY2(line->text() == text("Autore: is refused"), "the gravest");
        QCOMPARE(m_dialog->size(), size);

        retype(edit("titleLineEdit"), text("Azzurro"));
        QCOMPARE(marks(), text(""));
        QCOMPARE(line->text(), text(""));
        QCOMPARE(find("genreComboBox")->accessibleDescription(), text(""));
    }

    void theNextSongHasNotesOfItsOwn()
    {
        m_dialog->setCheck([](const SongInfo &) {
            return QVector<FieldNote>{{FieldNote::Grade::Cut, text("title"), text("cut")}};
        });
        QCOMPARE(marks(), text("title"));
        m_dialog->setSong(m_song);
        QCOMPARE(marks(), text(""));
    }

    void changes_data()
    {
        const Table<QString, QString, bool> row;
        row("nothing", "", "", false);
        row("blanks around a title", "titleLineEdit", " Azzurro ", false);
        for (const char *field : {"titleLineEdit", "authorLineEdit", "artistComboBox",
                                  "genreComboBox", "lenMmLineEdit", "lenSsLineEdit", "bpmLineEdit"})
            row(field, text(field), "9", true);
    }
    void changes()
    {
        const auto [field, typed, isChanged] = cells<QString, QString, bool>();
        QVERIFY(!m_dialog->isChanged());
        if (!field.isEmpty())
            retype(edit(qPrintable(field)), typed);
        QCOMPARE(m_dialog->isChanged(), isChanged);
    }
    void aKeyAndWhatIsAppliedToAllAreChanges()
    {
        find<QComboBox>("keyComboBox")->setCurrentIndex(3);
        QVERIFY(m_dialog->isChanged());
        m_song.key = text("none of the list, and saved as an empty one");
        m_dialog->setSong(m_song);
        QVERIFY(!m_dialog->isChanged());
        press("checkBoxToAllGenre", 1, QMessageBox::Yes);
        QVERIFY(m_dialog->isChanged());
        m_dialog->clearApplyToAll();
        QVERIFY(!m_dialog->isChanged());
    }

    void stepsAreAskedFor()
    {
        QVERIFY(activate(*m_dialog));
        QStringList steps;
        connect(m_dialog.get(), &DataEditDialog::stepRequested,
                [&steps](int direction) { steps.append(QString::number(direction)); });
        const auto ask = [this, &steps] {
            steps.clear();
            QTest::keyClick(m_dialog.get(), Qt::Key_PageUp, Qt::AltModifier);
            QTest::keyClick(m_dialog.get(), Qt::Key_PageDown, Qt::AltModifier);
            click(*m_dialog, "previousPushButton");
            click(*m_dialog, "nextPushButton");
            return steps.join(QLatin1Char(' '));
        };
        QCOMPARE(ask(), text(""));
        m_dialog->setNeighbours(true, true);
        QCOMPARE(ask(), text("-1 1 -1 1"));
        m_dialog->setNeighbours(true, false);
        QCOMPARE(ask(), text("-1 -1"));
        m_dialog->setNeighbours(false, true);
        QCOMPARE(ask(), text("1 1"));
        QVERIFY(m_dialog->isVisible());
        const QString keys = QKeySequence(text("Alt+PgDown")).toString(QKeySequence::NativeText);
        QVERIFY(find("nextPushButton")->toolTip().contains(keys));
    }

private:
    /** The keys of the fields that are marked, from top to bottom. */
    QString marks() const
    {
        QStringList keys;
        for (const char *field :
             {"titleLineEdit", "artistComboBox", "genreComboBox", "authorLineEdit"}) {
            if (edit(field)->actions().constFirst()->isVisible())
                keys.append(text(field).remove(text("LineEdit")).remove(text("ComboBox")));
        }
        return keys.join(QLatin1Char(' '));
    }
    QLineEdit *edit(const char *name) const
    {
        auto *box = find<QComboBox>(name);
        return box ? box->lineEdit() : find<QLineEdit>(name);
    }

    SongInfo m_song;
};

QTEST_MAIN(tst_EditNotes)
#include "tst_editnotes.moc"
