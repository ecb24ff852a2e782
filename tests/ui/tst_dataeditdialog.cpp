#include "tests/ui/dialogtest.h"
#include "ui/dataeditdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

using namespace tarvel4;

/** The editor: what a song fills its fields with, its choices, and what is saved. */
class tst_DataEditDialog : public DialogTest<DataEditDialog>
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_song = SongInfo();
        m_song.title = text("Azzurro");
        m_song.artist = text("Celentano");
        m_song.genre = text("Leggera");
        m_song.author = text("Conte");
        m_song.length = 185;
        m_song.bpm = 120;
        m_song.key = text("A-");
        m_song.filename = text("/music/set.1/azzurro.live.mid");
        m_song.format = text("MIDI");
        open();
        m_dialog->setArtists(strings({"", "ABBA", "CELENTANO", "Celeste"}));
        m_dialog->setGenres(strings({"", "LEGGERA", "Rock"}));
        m_dialog->setKeys(strings({"C", "A-", "Bb"}));
        m_dialog->setSong(m_song);
    }

    void songFillsTheFields()
    {
        QCOMPARE(find<QLabel>("fileNameLabel")->text(), m_song.filename);
        QCOMPARE(find<QLabel>("formatLabel")->text(), text("MIDI"));
        QStringList fields;
        for (const char *name : {"titleLineEdit", "authorLineEdit", "artistComboBox",
                                 "genreComboBox", "lenMmLineEdit", "lenSsLineEdit", "bpmLineEdit"})
            fields += edit(name)->text();
        QCOMPARE(fields, strings({"Azzurro", "Conte", "Celentano", "Leggera", "3", "5", "120"}));
        QCOMPARE(find<QComboBox>("keyComboBox")->currentText(), text("A-"));
        QVERIFY(isChecked("radioButtonTitle1") && !isChecked("radioButtonTitle2"));
        QVERIFY(!find("checkBoxToAllTitle")->isEnabled());
        QCOMPARE(forAll(), text(""));
    }

    void savedFields_data()
    {
        const Table<QString, QString, QString> row;
        row("a title without the blanks around it", "titleLineEdit", "  Nel blu \t",
            "Nel blu|Conte|Celentano|Leggera|A-|185|120");
        row("an author without the blanks around it", "authorLineEdit", " Modugno ",
            "Azzurro|Modugno|Celentano|Leggera|A-|185|120");
        row("an artist that is not listed, without the blanks around it", "artistComboBox",
            " Mina ", "Azzurro|Conte|Mina|Leggera|A-|185|120");
        row("a genre that is not listed, without the blanks around it", "genreComboBox", " Ska ",
            "Azzurro|Conte|Celentano|Ska|A-|185|120");
        row("a tempo", "bpmLineEdit", "95", "Azzurro|Conte|Celentano|Leggera|A-|185|95");
        row("an empty tempo as 0", "bpmLineEdit", "", "Azzurro|Conte|Celentano|Leggera|A-|185|0");
        row("an author of blanks as none", "authorLineEdit", "   ",
            "Azzurro||Celentano|Leggera|A-|185|120");
    }
    void savedFields()
    {
        const auto [field, typed, expected] = cells<QString, QString, QString>();
        retype(edit(qPrintable(field)), typed);
        QCOMPARE(saved(), expected);
    }

    void savingLeavesTheOtherFields()
    {
        SongInfo other;
        other.altArtist = text("alt");
        other.filename = text("/other.mid");
        other.shortname = text("other.mid");
        other.isPublisher = true;
        other.markers = {Marker{3, text("A")}};
        other.format = text("MF4");
        other.mfxLongName = text("LONG.MF4");
        other.mfxFlags = 5;
        m_dialog->getSong(other);
        QCOMPARE(QStringList({other.title, other.altArtist, other.filename, other.shortname,
                              other.format, other.mfxLongName}),
                 strings({"Azzurro", "alt", "/other.mid", "other.mid", "MF4", "LONG.MF4"}));
        QVERIFY(other.isPublisher);
        QCOMPARE(other.markers.size(), 1);
        QCOMPARE(static_cast<int>(other.mfxFlags), 5);
    }

    void lengths_data()
    {
        const Table<int, QString, QString, QString, int> row;
        const QString keep;
        const QString none = text("");
        const QString shown = text("3:5");
        row("185 seconds show 3 and 5", 185, shown, keep, keep, 185);
        row("empty minutes give the seconds", 185, shown, none, keep, 5);
        row("empty seconds count 0", 185, shown, keep, none, 180);
        row("both empty give 0", 185, shown, none, none, 0);
        row("99 minutes and 99 seconds give 6039 seconds", 185, shown, "99", "99", 6039);
        row("no length shows 0 and 0", 0, "0:0", keep, keep, 0);
        row("over 99 minutes are shown and kept", 7265, "121:5", keep, keep, 7265);
    }
    void lengths()
    {
        const auto [length, shown, minutes, seconds, saved] =
            cells<int, QString, QString, QString, int>();
        m_song.length = length;
        m_dialog->setSong(m_song);
        QLineEdit *const mm = edit("lenMmLineEdit");
        QLineEdit *const ss = edit("lenSsLineEdit");
        QCOMPARE(QString(mm->text() + QLatin1Char(':') + ss->text()), shown);
        if (!minutes.isNull())
            retype(mm, minutes);
        if (!seconds.isNull())
            retype(ss, seconds);
        m_dialog->getSong(m_song);
        QCOMPARE(m_song.length, saved);
    }

    void digits_data()
    {
        const Table<QString, QString, QString> row;
        row("a fourth digit of the tempo is refused", "bpmLineEdit", "1234", "123");
        row("letters are refused in the tempo", "bpmLineEdit", "1a2-b3.", "123");
        row("letters and a third digit are refused in the minutes", "lenMmLineEdit", "x4 y25",
            "42");
        row("a sign and a third digit are refused in the seconds", "lenSsLineEdit", "-789", "78");
        row("digits of other scripts are refused", "bpmLineEdit", "\u0663", "");
    }
    void digits()
    {
        const auto [field, typed, taken] = cells<QString, QString, QString>();
        retype(edit(qPrintable(field)), typed);
        QCOMPARE(edit(qPrintable(field))->text(), taken);
    }

    void keys_data()
    {
        const Table<QString, int, QString> row;
        row("a listed key", "Bb", 3, "Bb");
        row("a key in other letters is not listed, and saved empty", "bb", -1, "");
        row("an empty key selects the empty first entry", "", 0, "");
    }
    void keys()
    {
        const auto [key, selected, expected] = cells<QString, int, QString>();
        m_song.key = key;
        m_dialog->setSong(m_song);
        const auto *box = find<QComboBox>("keyComboBox");
        QCOMPARE(box->itemText(0), QString());
        QCOMPARE(box->currentIndex(), selected);
        QCOMPARE(saved().split(QLatin1Char('|')).at(4), expected);
    }

    void listOpensAtTheSongsText()
    {
        m_song.genre = text("Rock");
        m_song.artist = text("CELENTANO");
        m_dialog->setSong(m_song);
        QCOMPARE(find<QComboBox>("genreComboBox")->currentIndex(), 2);
        QCOMPARE(find<QComboBox>("artistComboBox")->currentIndex(), 2);
        m_song.genre = text("rock"); // which the list has in other letters only
        m_dialog->setSong(m_song);
        QCOMPARE(find<QComboBox>("genreComboBox")->currentIndex(), -1);
        QCOMPARE(find<QComboBox>("genreComboBox")->currentText(), text("rock"));
    }

    void listsAreReplaced()
    {
        m_dialog->setArtists(strings({"X"}));
        m_dialog->setGenres(strings({"Y", "Z"}));
        m_dialog->setKeys({});
        QCOMPARE(find<QComboBox>("artistComboBox")->count(), 1);
        QCOMPARE(find<QComboBox>("genreComboBox")->count(), 2);
        QCOMPARE(find<QComboBox>("keyComboBox")->count(), 1);
    }

    void songTextsArePlain()
    {
        const int width = m_dialog->width();
        m_song.filename = QString(300, QLatin1Char('W')) + text("<b>x</b>");
        m_song.title = m_song.artist = m_song.filename;
        m_dialog->setSong(m_song);
        QCOMPARE(find<QLabel>("fileNameLabel")->text(), m_song.filename);
        QCOMPARE(find<QLabel>("fileNameLabel")->textFormat(), Qt::PlainText);
        QVERIFY(m_dialog->sizeHint().width() <= width + 200);
        QCOMPARE(edit("titleLineEdit")->cursorPosition(), 0);
    }

    void passingThroughChangesNothing()
    {
        QVERIFY(activate(*m_dialog));
        // listed in other letters, the beginning of a listed one, not listed, none
        for (const QString &artist : strings({"Celentano", "Cele", "Mina", ""})) {
            m_song.artist = artist;
            m_dialog->setSong(m_song);
            edit("titleLineEdit")->setFocus();
            for (int i = 0; i < 15; ++i)
                QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Tab);
            QCOMPARE(saved(), text("Azzurro|Conte|%1|Leggera|A-|185|120").arg(artist));
        }
    }

    void typedArtistIsCompleted()
    {
        QVERIFY(activate(*m_dialog));
        edit("artistComboBox")->setFocus();
        retype(edit("artistComboBox"), text("ab"));
        QWidget *const offers = QApplication::activePopupWidget();
        QVERIFY(offers);
        QTest::keyClick(offers, Qt::Key_Down);
        QTest::keyClick(offers, Qt::Key_Return);
        QVERIFY(!QApplication::activePopupWidget());
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(saved(), text("Azzurro|Conte|ABBA|Leggera|A-|185|120"));
    }

    void titleSources_data()
    {
        const Table<QString, QString> row;
        row("only the last point ends the name", "/music/a.b.c.mid", "a.b.c");
        row("a path with no point gives the whole name", "/music/azzurro", "azzurro");
        row("a point only in a folder name gives the whole name", "/mu.sic/azzurro", "azzurro");
        row("an empty path", "", "");
    }
    void titleSources()
    {
        const auto [path, title] = cells<QString, QString>();
        m_song.filename = path;
        m_dialog->setSong(m_song);
        click(*m_dialog, "radioButtonTitle2");
        QCOMPARE(edit("titleLineEdit")->text(), title);
        click(*m_dialog, "radioButtonTitle1");
        QCOMPARE(edit("titleLineEdit")->text(), text("Azzurro"));
    }

    void titleFlagOutlivesItsBox()
    {
        const auto *box = find<QCheckBox>("checkBoxToAllTitle");
        click(*m_dialog, "radioButtonTitle2");
        QVERIFY(box->isEnabled() && !box->isChecked());
        press("checkBoxToAllTitle", 1, QMessageBox::Yes);
        QVERIFY(box->isChecked());
        click(*m_dialog, "radioButtonTitle1");
        QVERIFY(!box->isEnabled() && !box->isChecked());
        QVERIFY(m_dialog->applyToAllTitle()); // required
        QVERIFY(QMetaObject::invokeMethod(m_dialog.get(), "on_checkBoxToAllTitle_clicked"));
        QVERIFY(!m_dialog->applyToAllTitle());
    }

    void applyToAll_data()
    {
        const Table<QByteArray, QString> row;
        const QString question =
            text("%1 verrà applicato a tutte le song della lista, sei sicuro?");
        row("No leaves the author's box unchecked and its flag false", "checkBoxToAllAuthor",
            question.arg(text("L'autore inserito")));
        row("No leaves the artist's box unchecked and its flag false", "checkBoxToAllArtist",
            question.arg(text("L'interprete inserito")));
        row("No leaves the genre's box unchecked and its flag false", "checkBoxToAllGenre",
            question.arg(text("Il genere inserito")));
        row("No leaves the title's box unchecked and its flag false", "checkBoxToAllTitle",
            "Il titolo di tutte le song della lista verrà sovrascritto non il nome del file, "
            "sei sicuro?");
    }
    /** Yes ticks the box; No leaves it as it was, and so do Escape and a stray Enter. */
    void applyToAll()
    {
        const auto [checkBox, question] = cells<QByteArray, QString>();
        const char *name = checkBox.constData();
        click(*m_dialog, "radioButtonTitle2");
        for (const Qt::Key key : {Qt::Key_N, Qt::Key_Escape, Qt::Key_Return}) {
            DialogDriver driver;
            driver.expect<QMessageBox>([key](QMessageBox &box) {
                if (key == Qt::Key_N)
                    box.button(QMessageBox::No)->click();
                else
                    QTest::keyClick(box.focusWidget(), key);
            });
            QTest::keyClick(find(name), Qt::Key_Space);
            QVERIFY(!isChecked(name));
            QCOMPARE(forAll(), text(""));
        }
        QCOMPARE(press(name, 1, QMessageBox::Yes),
                 QStringList(text("Question|ATTENZIONE|") + question));
        QCOMPARE(m_lastBox.buttons, QMessageBox::Yes | QMessageBox::No);
        QVERIFY(isChecked(name));
        QCOMPARE(text("checkBoxToAll") + forAll(), text(name));

        click(*m_dialog, name); // unticked without a question
        QVERIFY(!isChecked(name));
        QCOMPARE(forAll(), text(""));
    }

    void nextSongStartsAfresh()
    {
        click(*m_dialog, "radioButtonTitle2");
        for (const char *box : {"checkBoxToAllAuthor", "checkBoxToAllArtist", "checkBoxToAllGenre",
                                "checkBoxToAllTitle"})
            press(box, 1, QMessageBox::Yes);
        QCOMPARE(forAll(), text("AuthorArtistGenreTitle"));
        m_dialog->setSong(m_song);
        QCOMPARE(forAll(), text(""));
        for (const QCheckBox *box : m_dialog->findChildren<QCheckBox *>())
            QVERIFY2(!box->isChecked(), qPrintable(box->objectName()));
        QVERIFY(!find("checkBoxToAllTitle")->isEnabled());
        QVERIFY(isChecked("radioButtonTitle1"));
        QCOMPARE(edit("titleLineEdit")->text(), text("Azzurro"));
    }

private:
    QLineEdit *edit(const char *name) const
    {
        auto *box = find<QComboBox>(name);
        return box ? box->lineEdit() : find<QLineEdit>(name);
    }
    bool isChecked(const char *name) const { return find<QAbstractButton>(name)->isChecked(); }
    /** "title|author|artist|genre|key|length|bpm" as the dialog would save them. */
    QString saved() const
    {
        SongInfo song = m_song;
        m_dialog->getSong(song);
        return QStringList({song.title, song.author, song.artist, song.genre, song.key,
                            QString::number(song.length), QString::number(song.bpm)})
            .join(QLatin1Char('|'));
    }
    /** The fields that every song of the list is to get. */
    QString forAll() const
    {
        return text(m_dialog->applyToAllAuthor() ? "Author" : "")
            + text(m_dialog->applyToAllArtist() ? "Artist" : "")
            + text(m_dialog->applyToAllGenre() ? "Genre" : "")
            + text(m_dialog->applyToAllTitle() ? "Title" : "");
    }

    SongInfo m_song;
};

QTEST_MAIN(tst_DataEditDialog)
#include "tst_dataeditdialog.moc"
