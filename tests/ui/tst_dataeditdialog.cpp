#include "tests/library/texts.h"
#include "tests/ui/dialogdriver.h"
#include "tests/ui/forms.h"
#include "ui/dataeditdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

using namespace tarvel4;

/** The editor: what a song fills its fields with, its choices, and what is saved. */
class tst_DataEditDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void songFillsTheFields();
    void savedFields_data();
    void savedFields();
    void savingLeavesTheOtherFields();
    void lengths_data();
    void lengths();
    void digits_data();
    void digits();
    void keys_data();
    void keys();
    void listsAreReplaced();
    void songTextsArePlain();
    void passingThroughChangesNothing();
    void typedArtistIsCompleted();
    void titleSources_data();
    void titleSources();
    void titleFlagOutlivesItsBox();
    void applyToAll_data();
    void applyToAll();
    void nextSongStartsAfresh();

private:
    QLineEdit *edit(const QString &name) const
    {
        auto *box = m_dialog->findChild<QComboBox *>(name);
        return box ? box->lineEdit() : m_dialog->findChild<QLineEdit *>(name);
    }
    template <class Widget> Widget *find(const char *name) const
    {
        return child<Widget>(*m_dialog, name);
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
    void tick(const char *box) const
    {
        DialogDriver driver;
        driver.answerBox(QMessageBox::Yes);
        click(*m_dialog, box);
        QCOMPARE(driver.problems(), QString());
    }

    SongInfo m_song;
    QScopedPointer<DataEditDialog> m_dialog;
};

void tst_DataEditDialog::init()
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
    m_dialog.reset(new DataEditDialog);
    m_dialog->setArtists(strings({"", "ABBA", "CELENTANO", "Celeste"}));
    m_dialog->setGenres(strings({"", "LEGGERA", "Rock"}));
    m_dialog->setKeys(strings({"C", "A-", "Bb"}));
    m_dialog->setSong(m_song);
    m_dialog->show();
}

void tst_DataEditDialog::songFillsTheFields()
{
    QCOMPARE(find<QLabel>("fileNameLabel")->text(), m_song.filename);
    QCOMPARE(find<QLabel>("formatLabel")->text(), text("MIDI"));
    QStringList fields;
    for (const QString &name :
         strings({"titleLineEdit", "authorLineEdit", "artistComboBox", "genreComboBox",
                  "lenMmLineEdit", "lenSsLineEdit", "bpmLineEdit"}))
        fields += edit(name)->text();
    QCOMPARE(fields, strings({"Azzurro", "Conte", "Celentano", "Leggera", "3", "5", "120"}));
    QCOMPARE(find<QComboBox>("keyComboBox")->currentText(), text("A-"));
    QVERIFY(isChecked("radioButtonTitle1") && !isChecked("radioButtonTitle2"));
    QVERIFY(!find<QCheckBox>("checkBoxToAllTitle")->isEnabled());
    QCOMPARE(forAll(), text(""));
}

void tst_DataEditDialog::savedFields_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("saved");
    const auto row = [](const char *name, const char *field, const char *typed, const char *saved) {
        QTest::newRow(name) << text(field) << text(typed) << text(saved);
    };
    row("a title without the blanks around it", "titleLineEdit", "  Nel blu \t",
        "Nel blu|Conte|Celentano|Leggera|A-|185|120");
    row("an author without the blanks around it", "authorLineEdit", " Modugno ",
        "Azzurro|Modugno|Celentano|Leggera|A-|185|120");
    row("an artist that is not listed, without the blanks around it", "artistComboBox", " Mina ",
        "Azzurro|Conte|Mina|Leggera|A-|185|120");
    row("a genre that is not listed, without the blanks around it", "genreComboBox", " Ska ",
        "Azzurro|Conte|Celentano|Ska|A-|185|120");
    row("a tempo", "bpmLineEdit", "95", "Azzurro|Conte|Celentano|Leggera|A-|185|95");
    row("an empty tempo as 0", "bpmLineEdit", "", "Azzurro|Conte|Celentano|Leggera|A-|185|0");
    row("an author of blanks as none", "authorLineEdit", "   ",
        "Azzurro||Celentano|Leggera|A-|185|120");
}

void tst_DataEditDialog::savedFields()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    retype(edit(field), typed);
    QTEST(saved(), "saved");
}

void tst_DataEditDialog::savingLeavesTheOtherFields()
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

void tst_DataEditDialog::lengths_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("minutes");
    QTest::addColumn<QString>("seconds");
    QTest::addColumn<int>("saved");
    const QString keep;
    const QString none = text("");
    const QString shown = text("3:5");
    QTest::newRow("185 seconds show 3 and 5") << 185 << shown << keep << keep << 185;
    QTest::newRow("empty minutes give the seconds") << 185 << shown << none << keep << 5;
    QTest::newRow("empty seconds count 0") << 185 << shown << keep << none << 180;
    QTest::newRow("both empty give 0") << 185 << shown << none << none << 0;
    QTest::newRow("99 minutes and 99 seconds give 6039 seconds")
        << 185 << shown << text("99") << text("99") << 6039;
    QTest::newRow("no length shows 0 and 0") << 0 << text("0:0") << keep << keep << 0;
    QTest::newRow("over 99 minutes are shown and kept")
        << 7265 << text("121:5") << keep << keep << 7265;
}

void tst_DataEditDialog::lengths()
{
    QFETCH(int, length);
    QFETCH(QString, minutes);
    QFETCH(QString, seconds);
    m_song.length = length;
    m_dialog->setSong(m_song);
    QLineEdit *const mm = edit(text("lenMmLineEdit"));
    QLineEdit *const ss = edit(text("lenSsLineEdit"));
    QTEST(QString(mm->text() + QLatin1Char(':') + ss->text()), "shown");
    if (!minutes.isNull())
        retype(mm, minutes);
    if (!seconds.isNull())
        retype(ss, seconds);
    m_dialog->getSong(m_song);
    QTEST(m_song.length, "saved");
}

void tst_DataEditDialog::digits_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    const auto row = [](const char *name, const char *field, const char *typed, const char *taken) {
        QTest::newRow(name) << text(field) << text(typed) << text(taken);
    };
    row("a fourth digit of the tempo is refused", "bpmLineEdit", "1234", "123");
    row("letters are refused in the tempo", "bpmLineEdit", "1a2-b3.", "123");
    row("letters and a third digit are refused in the minutes", "lenMmLineEdit", "x4 y25", "42");
    row("a sign and a third digit are refused in the seconds", "lenSsLineEdit", "-789", "78");
    row("digits of other scripts are refused", "bpmLineEdit", "\u0663", "");
}

void tst_DataEditDialog::digits()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    retype(edit(field), typed);
    QTEST(edit(field)->text(), "taken");
}

void tst_DataEditDialog::keys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QString>("saved");
    QTest::newRow("a listed key") << text("Bb") << 3 << text("Bb");
    QTest::newRow("a key in other letters is not listed, and saved empty")
        << text("bb") << -1 << text("");
    QTest::newRow("an empty key selects the empty first entry") << text("") << 0 << text("");
}

void tst_DataEditDialog::keys()
{
    QFETCH(QString, key);
    m_song.key = key;
    m_dialog->setSong(m_song);
    QCOMPARE(find<QComboBox>("keyComboBox")->itemText(0), QString());
    QTEST(find<QComboBox>("keyComboBox")->currentIndex(), "selected");
    QTEST(saved().split(QLatin1Char('|')).at(4), "saved");
}

void tst_DataEditDialog::listsAreReplaced()
{
    m_dialog->setArtists(strings({"X"}));
    m_dialog->setGenres(strings({"Y", "Z"}));
    m_dialog->setKeys({});
    QCOMPARE(find<QComboBox>("artistComboBox")->count(), 1);
    QCOMPARE(find<QComboBox>("genreComboBox")->count(), 2);
    QCOMPARE(find<QComboBox>("keyComboBox")->count(), 1);
}

void tst_DataEditDialog::songTextsArePlain()
{
    const int width = m_dialog->width();
    m_song.filename = QString(300, QLatin1Char('W')) + text("<b>x</b>");
    m_song.title = m_song.artist = m_song.filename;
    m_dialog->setSong(m_song);
    QCOMPARE(find<QLabel>("fileNameLabel")->text(), m_song.filename);
    QCOMPARE(find<QLabel>("fileNameLabel")->textFormat(), Qt::PlainText);
    QVERIFY(m_dialog->sizeHint().width() <= width + 200);
    QCOMPARE(edit(text("titleLineEdit"))->cursorPosition(), 0);
}

void tst_DataEditDialog::passingThroughChangesNothing()
{
    QVERIFY(activate(*m_dialog));
    // listed in other letters, the beginning of a listed one, not listed, none
    for (const QString &artist : strings({"Celentano", "Cele", "Mina", ""})) {
        m_song.artist = artist;
        m_dialog->setSong(m_song);
        edit(text("titleLineEdit"))->setFocus();
        for (int i = 0; i < 15; ++i)
            QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Tab);
        QCOMPARE(saved(), text("Azzurro|Conte|%1|Leggera|A-|185|120").arg(artist));
    }
}

void tst_DataEditDialog::typedArtistIsCompleted()
{
    QVERIFY(activate(*m_dialog));
    edit(text("artistComboBox"))->setFocus();
    retype(edit(text("artistComboBox")), text("ab"));
    QWidget *const offers = QApplication::activePopupWidget();
    QVERIFY(offers);
    QTest::keyClick(offers, Qt::Key_Down);
    QTest::keyClick(offers, Qt::Key_Return);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(saved(), text("Azzurro|Conte|ABBA|Leggera|A-|185|120"));
}

void tst_DataEditDialog::titleSources_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("title");
    const auto row = [](const char *name, const char *path, const char *title) {
        QTest::newRow(name) << text(path) << text(title);
    };
    row("only the last point ends the name", "/music/a.b.c.mid", "a.b.c");
    row("a path with no point gives the whole name", "/music/azzurro", "azzurro");
    row("a point only in a folder name gives the whole name", "/mu.sic/azzurro", "azzurro");
    row("an empty path", "", "");
}

void tst_DataEditDialog::titleSources()
{
    QFETCH(QString, path);
    m_song.filename = path;
    m_dialog->setSong(m_song);
    click(*m_dialog, "radioButtonTitle2");
    QTEST(edit(text("titleLineEdit"))->text(), "title");
    click(*m_dialog, "radioButtonTitle1");
    QCOMPARE(edit(text("titleLineEdit"))->text(), text("Azzurro"));
}

void tst_DataEditDialog::titleFlagOutlivesItsBox()
{
    const auto *box = find<QCheckBox>("checkBoxToAllTitle");
    click(*m_dialog, "radioButtonTitle2");
    QVERIFY(box->isEnabled() && !box->isChecked());
    tick("checkBoxToAllTitle");
    QVERIFY(box->isChecked());
    click(*m_dialog, "radioButtonTitle1");
    QVERIFY(!box->isEnabled() && !box->isChecked());
    QVERIFY(m_dialog->applyToAllTitle()); // required
    QVERIFY(QMetaObject::invokeMethod(m_dialog.data(), "on_checkBoxToAllTitle_clicked"));
    QVERIFY(!m_dialog->applyToAllTitle());
}

void tst_DataEditDialog::applyToAll_data()
{
    QTest::addColumn<QString>("question");
    const QString question = text("%1 verrà applicato a tutte le song della lista, sei sicuro?");
    QTest::newRow("checkBoxToAllAuthor") << question.arg(text("L'autore inserito"));
    QTest::newRow("checkBoxToAllArtist") << question.arg(text("L'interprete inserito"));
    QTest::newRow("checkBoxToAllGenre") << question.arg(text("Il genere inserito"));
    QTest::newRow("checkBoxToAllTitle")
        << text("Il titolo di tutte le song della lista verrà sovrascritto non il nome del file, "
                "sei sicuro?");
}

/** Yes ticks the box; No leaves it as it was, and so do Escape and a stray Enter. */
void tst_DataEditDialog::applyToAll()
{
    QFETCH(QString, question);
    const char *name = QTest::currentDataTag();
    click(*m_dialog, "radioButtonTitle2");
    for (const int key : {0, static_cast<int>(Qt::Key_Escape), static_cast<int>(Qt::Key_Return)}) {
        DialogDriver driver;
        if (key == 0)
            driver.answerBox(QMessageBox::No);
        else
            driver.expect<QMessageBox>(
                [key](QMessageBox &box) { QTest::keyClick(box.focusWidget(), Qt::Key(key)); });
        QTest::keyClick(find<QCheckBox>(name), Qt::Key_Space);
        QCOMPARE(driver.problems(), QString());
        QVERIFY(!isChecked(name));
        QCOMPARE(forAll(), text(""));
    }
    DialogDriver driver;
    driver.answerBox(QMessageBox::Yes);
    click(*m_dialog, name);
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(driver.boxes, QStringList(text("ATTENZIONE|") + question));
    QCOMPARE(driver.lastBox.icon, QMessageBox::Question);
    QCOMPARE(driver.lastBox.buttons, QMessageBox::Yes | QMessageBox::No);
    QVERIFY(isChecked(name));
    QCOMPARE(text("checkBoxToAll") + forAll(), text(name));

    click(*m_dialog, name); // unticked without a question
    QVERIFY(!isChecked(name));
    QCOMPARE(forAll(), text(""));
}

void tst_DataEditDialog::nextSongStartsAfresh()
{
    click(*m_dialog, "radioButtonTitle2");
    for (const char *box :
         {"checkBoxToAllAuthor", "checkBoxToAllArtist", "checkBoxToAllGenre", "checkBoxToAllTitle"})
        tick(box);
    QCOMPARE(forAll(), text("AuthorArtistGenreTitle"));
    m_dialog->setSong(m_song);
    QCOMPARE(forAll(), text(""));
    for (const QCheckBox *box : m_dialog->findChildren<QCheckBox *>())
        QVERIFY2(!box->isChecked(), qPrintable(box->objectName()));
    QVERIFY(!find<QCheckBox>("checkBoxToAllTitle")->isEnabled());
    QVERIFY(isChecked("radioButtonTitle1"));
    QCOMPARE(edit(text("titleLineEdit"))->text(), text("Azzurro"));
}

QTEST_MAIN(tst_DataEditDialog)
#include "tst_dataeditdialog.moc"
