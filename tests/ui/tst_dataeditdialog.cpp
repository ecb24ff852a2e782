#include "tests/ui/dialogdriver.h"
#include "tests/ui/focuschain.h"
#include "tests/ui/typing.h"
#include "ui/dataeditdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

using Act = std::function<void(DataEditDialog &)>;
using Flag = bool (DataEditDialog::*)() const;
Q_DECLARE_METATYPE(Act)
Q_DECLARE_METATYPE(Flag)

class tst_DataEditDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsOfTheForm();
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
    void titleSources_data();
    void titleSources();
    void titleSourceAndItsBox();
    void titleFlagOutlivesItsBox();
    void disabledTitleBoxSetsTheFlagFalse();
    void applyToAll_data();
    void applyToAll();
    void applyToAllIsTakenBack_data();
    void applyToAllIsTakenBack();
    void nextSongStartsAfresh();
    void listsAreReplaced();
    void passingThroughChangesNothing_data();
    void passingThroughChangesNothing();
    void typedArtistIsCompleted();
    void results_data();
    void results();
    void enterSavesFromEveryField_data();
    void enterSavesFromEveryField();
    void tabGoesFromTopToBottom();
    void captionsLeadToTheirFields_data();
    void captionsLeadToTheirFields();
    void songTextsArePlain();

private:
    template <class Widget> static Widget *child(const QDialog &dialog, const QString &name)
    {
        return dialog.findChild<Widget *>(name);
    }
    static QLineEdit *edit(const QDialog &dialog, const char *name)
    {
        return child<QLineEdit>(dialog, QLatin1String(name));
    }
    static QComboBox *combo(const QDialog &dialog, const char *name)
    {
        return child<QComboBox>(dialog, QLatin1String(name));
    }
    static void click(const QDialog &dialog, const char *name)
    {
        auto *button = child<QAbstractButton>(dialog, QLatin1String(name));
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    }
    static void retype(QLineEdit *edit, const QString &text)
    {
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        typeText(edit, text);
    }
    /** Ticks or unticks a box and answers the question that comes. */
    static QString clickAndAnswer(const QDialog &dialog, const QString &box,
                                  QMessageBox::StandardButton answer)
    {
        DialogDriver driver;
        driver.answerBox(answer);
        click(dialog, box.toLatin1().constData());
        if (!driver.problems().isEmpty())
            return driver.problems();
        return driver.boxes.join(QLatin1Char('\n'));
    }
    static SongInfo song()
    {
        SongInfo song;
        song.title = QStringLiteral("Azzurro");
        song.artist = QStringLiteral("Celentano");
        song.genre = QStringLiteral("Leggera");
        song.author = QStringLiteral("Conte");
        song.length = 185;
        song.bpm = 120;
        song.key = QStringLiteral("A-");
        song.filename = QStringLiteral("/music/set.1/azzurro.live.mid");
        song.shortname = QStringLiteral("azzurro.live.mid");
        song.format = QStringLiteral("MIDI");
        return song;
    }
    static void fill(DataEditDialog &dialog, const SongInfo &song)
    {
        dialog.setArtists({QString(), QStringLiteral("ABBA"), QStringLiteral("CELENTANO"),
                           QStringLiteral("Celeste")});
        dialog.setGenres({QString(), QStringLiteral("LEGGERA"), QStringLiteral("Rock")});
        dialog.setKeys({QStringLiteral("C"), QStringLiteral("A-"), QStringLiteral("Bb")});
        dialog.setSong(song);
        dialog.show();
    }
};

void tst_DataEditDialog::textsOfTheForm()
{
    const DataEditDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Modifica dati song"));
    QCOMPARE(child<QLabel>(dialog, QStringLiteral("fileNameLabel"))->text(), QStringLiteral("--"));
    QCOMPARE(child<QLabel>(dialog, QStringLiteral("formatLabel"))->text(), QStringLiteral("--"));

    QStringList labels;
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        labels.append(label->text());
    for (const QString &text :
         {QStringLiteral("Percorso file:"), QStringLiteral("Formato:"),
          QStringLiteral("Modifica i dati della Song:"), QStringLiteral("Titolo Song:"),
          QStringLiteral("Interprete:"), QStringLiteral("Genere Musicale:"),
          QStringLiteral("Autore:"), QStringLiteral("Durata:"), QStringLiteral("mm"),
          QStringLiteral("ss"), QStringLiteral("Tonalità:"), QStringLiteral("BPM:")})
        QVERIFY2(labels.contains(text), qPrintable(text));

    QStringList buttons;
    for (const QAbstractButton *button : dialog.findChildren<QAbstractButton *>())
        buttons.append(button->objectName() + QLatin1Char('=') + button->text());
    for (const char *text :
         {"radioButtonTitle1=Usa il titolo", "radioButtonTitle2=Usa il filename",
          "checkBoxToAllTitle=Applica a tutti", "checkBoxToAllArtist=Applica a tutti",
          "checkBoxToAllGenre=Applica a tutti", "checkBoxToAllAuthor=Applica a tutti",
          "exitPushButton=Annulla", "savePushButton=Salva"})
        QVERIFY2(buttons.contains(QLatin1String(text)), text);
    QVERIFY(child<QGroupBox>(dialog, QStringLiteral("datiSongGroupBox")));
    QVERIFY(child<QGroupBox>(dialog, QStringLiteral("groupBoxTitle")));
}

void tst_DataEditDialog::songFillsTheFields()
{
    DataEditDialog dialog;
    fill(dialog, song());
    QCOMPARE(child<QLabel>(dialog, QStringLiteral("fileNameLabel"))->text(),
             QStringLiteral("/music/set.1/azzurro.live.mid"));
    QCOMPARE(child<QLabel>(dialog, QStringLiteral("formatLabel"))->text(), QStringLiteral("MIDI"));
    QCOMPARE(edit(dialog, "titleLineEdit")->text(), QStringLiteral("Azzurro"));
    QCOMPARE(edit(dialog, "authorLineEdit")->text(), QStringLiteral("Conte"));
    QCOMPARE(combo(dialog, "artistComboBox")->currentText(), QStringLiteral("Celentano"));
    QCOMPARE(combo(dialog, "genreComboBox")->currentText(), QStringLiteral("Leggera"));
    QCOMPARE(edit(dialog, "lenMmLineEdit")->text(), QStringLiteral("3"));
    QCOMPARE(edit(dialog, "lenSsLineEdit")->text(), QStringLiteral("5"));
    QCOMPARE(combo(dialog, "keyComboBox")->currentText(), QStringLiteral("A-"));
    QCOMPARE(edit(dialog, "bpmLineEdit")->text(), QStringLiteral("120"));
    QVERIFY(child<QRadioButton>(dialog, QStringLiteral("radioButtonTitle1"))->isChecked());
    QVERIFY(!child<QRadioButton>(dialog, QStringLiteral("radioButtonTitle2"))->isChecked());
    QVERIFY(!child<QCheckBox>(dialog, QStringLiteral("checkBoxToAllTitle"))->isEnabled());
    QVERIFY(!dialog.applyToAllAuthor());
    QVERIFY(!dialog.applyToAllArtist());
    QVERIFY(!dialog.applyToAllGenre());
    QVERIFY(!dialog.applyToAllTitle());
}

void tst_DataEditDialog::savedFields_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("saved");
    QTest::newRow("title") << QStringLiteral("titleLineEdit") << QStringLiteral("Volare")
                           << QStringLiteral("Volare|Conte|Celentano|Leggera|A-|185|120");
    QTest::newRow("author") << QStringLiteral("authorLineEdit") << QStringLiteral("Modugno")
                            << QStringLiteral("Azzurro|Modugno|Celentano|Leggera|A-|185|120");
    QTest::newRow("an artist that is not listed")
        << QStringLiteral("artistComboBox") << QStringLiteral("Mina")
        << QStringLiteral("Azzurro|Conte|Mina|Leggera|A-|185|120");
    QTest::newRow("a genre that is not listed")
        << QStringLiteral("genreComboBox") << QStringLiteral("Ska")
        << QStringLiteral("Azzurro|Conte|Celentano|Ska|A-|185|120");
    QTest::newRow("minutes") << QStringLiteral("lenMmLineEdit") << QStringLiteral("10")
                             << QStringLiteral("Azzurro|Conte|Celentano|Leggera|A-|605|120");
    QTest::newRow("seconds") << QStringLiteral("lenSsLineEdit") << QStringLiteral("59")
                             << QStringLiteral("Azzurro|Conte|Celentano|Leggera|A-|239|120");
    QTest::newRow("tempo") << QStringLiteral("bpmLineEdit") << QStringLiteral("95")
                           << QStringLiteral("Azzurro|Conte|Celentano|Leggera|A-|185|95");
    QTest::newRow("an empty tempo counts 0")
        << QStringLiteral("bpmLineEdit") << QString(QLatin1String(""))
        << QStringLiteral("Azzurro|Conte|Celentano|Leggera|A-|185|0");
    QTest::newRow("blanks around a title are trimmed")
        << QStringLiteral("titleLineEdit") << QStringLiteral("  Nel blu \t")
        << QStringLiteral("Nel blu|Conte|Celentano|Leggera|A-|185|120");
    QTest::newRow("blanks around an artist are trimmed")
        << QStringLiteral("artistComboBox") << QStringLiteral(" Mina ")
        << QStringLiteral("Azzurro|Conte|Mina|Leggera|A-|185|120");
    QTest::newRow("an author of blanks is empty")
        << QStringLiteral("authorLineEdit") << QStringLiteral("   ")
        << QStringLiteral("Azzurro||Celentano|Leggera|A-|185|120");
}

void tst_DataEditDialog::savedFields()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, saved);
    DataEditDialog dialog;
    fill(dialog, song());
    auto *box = child<QComboBox>(dialog, field);
    retype(box ? box->lineEdit() : child<QLineEdit>(dialog, field), typed);

    SongInfo result = song();
    dialog.getSong(result);
    QCOMPARE(QStringList({result.title, result.author, result.artist, result.genre, result.key,
                          QString::number(result.length), QString::number(result.bpm)})
                 .join(QLatin1Char('|')),
             saved);
}

void tst_DataEditDialog::savingLeavesTheOtherFields()
{
    DataEditDialog dialog;
    fill(dialog, song());
    SongInfo other;
    other.altArtist = QStringLiteral("alt");
    other.filename = QStringLiteral("/other.mid");
    other.shortname = QStringLiteral("other.mid");
    other.isPublisher = true;
    other.markers = {Marker{3, QStringLiteral("A")}};
    other.format = QStringLiteral("MF4");
    other.mfxLongName = QStringLiteral("LONG.MF4");
    other.mfxFlags = 5;
    dialog.getSong(other);
    QCOMPARE(other.altArtist, QStringLiteral("alt"));
    QCOMPARE(other.filename, QStringLiteral("/other.mid"));
    QCOMPARE(other.shortname, QStringLiteral("other.mid"));
    QVERIFY(other.isPublisher);
    QCOMPARE(other.markers.size(), 1);
    QCOMPARE(other.format, QStringLiteral("MF4"));
    QCOMPARE(other.mfxLongName, QStringLiteral("LONG.MF4"));
    QCOMPARE(int(other.mfxFlags), 5);
    QCOMPARE(other.title, QStringLiteral("Azzurro"));
}

void tst_DataEditDialog::lengths_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("minutes");
    QTest::addColumn<QString>("seconds");
    QTest::addColumn<int>("saved");
    const QString keep;
    const QString none = QStringLiteral("");
    QTest::newRow("a song of length 185 shows 3 and 5")
        << 185 << QStringLiteral("3:5") << keep << keep << 185;
    QTest::newRow("an empty minutes field gives the seconds")
        << 185 << QStringLiteral("3:5") << none << keep << 5;
    QTest::newRow("an empty seconds field counts 0")
        << 185 << QStringLiteral("3:5") << keep << none << 180;
    QTest::newRow("both empty give 0") << 185 << QStringLiteral("3:5") << none << none << 0;
    QTest::newRow("99 minutes and 99 seconds are accepted and give 6039 seconds")
        << 185 << QStringLiteral("3:5") << QStringLiteral("99") << QStringLiteral("99") << 6039;
    QTest::newRow("a third digit of the minutes is refused")
        << 0 << QStringLiteral("0:0") << QStringLiteral("123") << keep << 720;
    QTest::newRow("a third digit of the seconds is refused")
        << 0 << QStringLiteral("0:0") << keep << QStringLiteral("123") << 12;
    QTest::newRow("no length shows 0 and 0") << 0 << QStringLiteral("0:0") << keep << keep << 0;
    QTest::newRow("a length over 99 minutes is shown and kept")
        << 7265 << QStringLiteral("121:5") << keep << keep << 7265;
}

void tst_DataEditDialog::lengths()
{
    QFETCH(int, length);
    QFETCH(QString, shown);
    QFETCH(QString, minutes);
    QFETCH(QString, seconds);
    QFETCH(int, saved);
    DataEditDialog dialog;
    SongInfo info = song();
    info.length = length;
    fill(dialog, info);
    QLineEdit *const mm = edit(dialog, "lenMmLineEdit");
    QLineEdit *const ss = edit(dialog, "lenSsLineEdit");
    QCOMPARE(mm->text() + QLatin1Char(':') + ss->text(), shown);
    if (!minutes.isNull())
        retype(mm, minutes);
    if (!seconds.isNull())
        retype(ss, seconds);
    dialog.getSong(info);
    QCOMPARE(info.length, saved);
}

void tst_DataEditDialog::digits_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::newRow("a fourth digit of the tempo is refused")
        << QStringLiteral("bpmLineEdit") << QStringLiteral("1234") << QStringLiteral("123");
    QTest::newRow("letters are refused in the tempo")
        << QStringLiteral("bpmLineEdit") << QStringLiteral("1a2-b3.") << QStringLiteral("123");
    QTest::newRow("letters are refused in the minutes")
        << QStringLiteral("lenMmLineEdit") << QStringLiteral("x4 y2") << QStringLiteral("42");
    QTest::newRow("a sign is refused in the seconds")
        << QStringLiteral("lenSsLineEdit") << QStringLiteral("-7") << QStringLiteral("7");
    QTest::newRow("one digit is enough")
        << QStringLiteral("bpmLineEdit") << QStringLiteral("7") << QStringLiteral("7");
    QTest::newRow("digits of other scripts are refused")
        << QStringLiteral("bpmLineEdit") << QString(QChar(0x0663)) << QString(QLatin1String(""));
}

void tst_DataEditDialog::digits()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, text);
    DataEditDialog dialog;
    fill(dialog, song());
    auto *digits = child<QLineEdit>(dialog, field);
    retype(digits, typed);
    QCOMPARE(digits->text(), text);
}

void tst_DataEditDialog::keys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QString>("saved");
    QTest::newRow("a listed key") << QStringLiteral("Bb") << 3 << QStringLiteral("Bb");
    QTest::newRow("a key that is not listed selects nothing and is saved empty")
        << QStringLiteral("H") << -1 << QString();
    QTest::newRow("a key in other letters is not listed")
        << QStringLiteral("bb") << -1 << QString();
    QTest::newRow("an empty key selects the empty first entry")
        << QString(QLatin1String("")) << 0 << QString();
    QTest::newRow("a null key selects the empty first entry") << QString() << 0 << QString();
}

void tst_DataEditDialog::keys()
{
    QFETCH(QString, key);
    QFETCH(int, selected);
    QFETCH(QString, saved);
    DataEditDialog dialog;
    SongInfo info = song();
    info.key = key;
    fill(dialog, info);
    QCOMPARE(combo(dialog, "keyComboBox")->itemText(0), QString());
    QCOMPARE(combo(dialog, "keyComboBox")->currentIndex(), selected);
    dialog.getSong(info);
    QCOMPARE(info.key.isEmpty() ? QString() : info.key, saved);
}

void tst_DataEditDialog::titleSources_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("title");
    QTest::newRow("the name without its extension")
        << QStringLiteral("/music/azzurro.mid") << QStringLiteral("azzurro");
    QTest::newRow("only the last point ends the name")
        << QStringLiteral("/music/a.b.c.mid") << QStringLiteral("a.b.c");
    QTest::newRow("a path with no point gives the whole name")
        << QStringLiteral("/music/azzurro") << QStringLiteral("azzurro");
    QTest::newRow("a point only in a folder name gives the whole name")
        << QStringLiteral("/mu.sic/azzurro") << QStringLiteral("azzurro");
    QTest::newRow("a path without a folder")
        << QStringLiteral("azzurro.mid") << QStringLiteral("azzurro");
    QTest::newRow("an empty path") << QString(QLatin1String("")) << QString(QLatin1String(""));
}

void tst_DataEditDialog::titleSources()
{
    QFETCH(QString, path);
    QFETCH(QString, title);
    DataEditDialog dialog;
    SongInfo info = song();
    info.filename = path;
    fill(dialog, info);
    click(dialog, "radioButtonTitle2");
    QCOMPARE(edit(dialog, "titleLineEdit")->text(), title);
    click(dialog, "radioButtonTitle1");
    QCOMPARE(edit(dialog, "titleLineEdit")->text(), QStringLiteral("Azzurro"));
}

void tst_DataEditDialog::titleSourceAndItsBox()
{
    DataEditDialog dialog;
    fill(dialog, song());
    auto *box = child<QCheckBox>(dialog, QStringLiteral("checkBoxToAllTitle"));
    QVERIFY(!box->isEnabled());
    click(dialog, "radioButtonTitle2");
    QVERIFY(box->isEnabled());
    QVERIFY(!box->isChecked());
    clickAndAnswer(dialog, QStringLiteral("checkBoxToAllTitle"), QMessageBox::Yes);
    QVERIFY(box->isChecked());
    click(dialog, "radioButtonTitle1");
    QVERIFY(!box->isEnabled());
    QVERIFY(!box->isChecked());
}

void tst_DataEditDialog::titleFlagOutlivesItsBox()
{
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    clickAndAnswer(dialog, QStringLiteral("checkBoxToAllTitle"), QMessageBox::Yes);
    QVERIFY(dialog.applyToAllTitle());
    click(dialog, "radioButtonTitle1");
    QVERIFY(dialog.applyToAllTitle()); // required
}

void tst_DataEditDialog::disabledTitleBoxSetsTheFlagFalse()
{
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    clickAndAnswer(dialog, QStringLiteral("checkBoxToAllTitle"), QMessageBox::Yes);
    click(dialog, "radioButtonTitle1");
    QVERIFY(QMetaObject::invokeMethod(&dialog, "on_checkBoxToAllTitle_clicked"));
    QVERIFY(!dialog.applyToAllTitle());
}

void tst_DataEditDialog::applyToAll_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<Flag>("flag");
    QTest::addColumn<QString>("question");
    QTest::newRow("author")
        << QStringLiteral("checkBoxToAllAuthor") << &DataEditDialog::applyToAllAuthor
        << QStringLiteral(
               "L'autore inserito verrà applicato a tutte le song della lista, sei sicuro?");
    QTest::newRow("artist")
        << QStringLiteral("checkBoxToAllArtist") << &DataEditDialog::applyToAllArtist
        << QStringLiteral(
               "L'interprete inserito verrà applicato a tutte le song della lista, sei sicuro?");
    QTest::newRow("genre")
        << QStringLiteral("checkBoxToAllGenre") << &DataEditDialog::applyToAllGenre
        << QStringLiteral(
               "Il genere inserito verrà applicato a tutte le song della lista, sei sicuro?");
    QTest::newRow("title")
        << QStringLiteral("checkBoxToAllTitle") << &DataEditDialog::applyToAllTitle
        << QStringLiteral("Il titolo di tutte le song della lista verrà sovrascritto non il nome "
                          "del file, sei sicuro?");
}

void tst_DataEditDialog::applyToAll()
{
    QFETCH(QString, box);
    QFETCH(Flag, flag);
    QFETCH(QString, question);
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    auto *checkBox = child<QCheckBox>(dialog, box);

    DialogDriver driver;
    driver.answerBox(QMessageBox::Yes);
    click(dialog, box.toLatin1().constData());
    QCOMPARE(driver.problems(), QString());
    QCOMPARE(driver.boxes, QStringList(QStringLiteral("ATTENZIONE|") + question));
    QCOMPARE(driver.lastBox.icon, QMessageBox::Question);
    QCOMPARE(driver.lastBox.buttons, QMessageBox::Yes | QMessageBox::No);
    QVERIFY(checkBox->isChecked());
    QVERIFY((dialog.*flag)());
    int set = 0;
    for (const Flag each : {&DataEditDialog::applyToAllAuthor, &DataEditDialog::applyToAllArtist,
                            &DataEditDialog::applyToAllGenre, &DataEditDialog::applyToAllTitle})
        set += (dialog.*each)() ? 1 : 0;
    QCOMPARE(set, 1);

    click(dialog, box.toLatin1().constData()); // unticked without a question
    QVERIFY(!checkBox->isChecked());
    QVERIFY(!(dialog.*flag)());
}

void tst_DataEditDialog::applyToAllIsTakenBack_data()
{
    applyToAll_data();
}

/** Answering No leaves the box unchecked and its flag false; so do Escape and a stray Enter. */
void tst_DataEditDialog::applyToAllIsTakenBack()
{
    QFETCH(QString, box);
    QFETCH(Flag, flag);
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    auto *checkBox = child<QCheckBox>(dialog, box);

    clickAndAnswer(dialog, box, QMessageBox::No);
    QVERIFY(!checkBox->isChecked());
    QVERIFY(!(dialog.*flag)());

    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        DialogDriver driver;
        driver.expect<QMessageBox>(
            [key](QMessageBox &question) { QTest::keyClick(question.focusWidget(), key); });
        QTest::keyClick(checkBox, Qt::Key_Space);
        QCOMPARE(driver.problems(), QString());
        QVERIFY(!checkBox->isChecked());
        QVERIFY(!(dialog.*flag)());
    }
}

void tst_DataEditDialog::nextSongStartsAfresh()
{
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    for (const char *box :
         {"checkBoxToAllAuthor", "checkBoxToAllArtist", "checkBoxToAllGenre", "checkBoxToAllTitle"})
        clickAndAnswer(dialog, QLatin1String(box), QMessageBox::Yes);

    SongInfo next = song();
    next.title = QStringLiteral("Volare");
    dialog.setSong(next);
    QVERIFY(!dialog.applyToAllAuthor());
    QVERIFY(!dialog.applyToAllArtist());
    QVERIFY(!dialog.applyToAllGenre());
    QVERIFY(!dialog.applyToAllTitle());
    for (const QCheckBox *box : dialog.findChildren<QCheckBox *>())
        QVERIFY2(!box->isChecked(), qPrintable(box->objectName()));
    QVERIFY(!child<QCheckBox>(dialog, QStringLiteral("checkBoxToAllTitle"))->isEnabled());
    QVERIFY(child<QRadioButton>(dialog, QStringLiteral("radioButtonTitle1"))->isChecked());
    QCOMPARE(edit(dialog, "titleLineEdit")->text(), QStringLiteral("Volare"));
}

void tst_DataEditDialog::listsAreReplaced()
{
    DataEditDialog dialog;
    fill(dialog, song());
    dialog.setArtists({QStringLiteral("X")});
    dialog.setGenres({QStringLiteral("Y"), QStringLiteral("Z")});
    dialog.setKeys({});
    QCOMPARE(combo(dialog, "artistComboBox")->count(), 1);
    QCOMPARE(combo(dialog, "genreComboBox")->count(), 2);
    QCOMPARE(combo(dialog, "keyComboBox")->count(), 1);
    QCOMPARE(combo(dialog, "keyComboBox")->itemText(0), QString());
}

void tst_DataEditDialog::passingThroughChangesNothing_data()
{
    QTest::addColumn<QString>("artist");
    QTest::newRow("a listed artist") << QStringLiteral("ABBA");
    QTest::newRow("one that is listed in other letters") << QStringLiteral("Celentano");
    QTest::newRow("the beginning of a listed one") << QStringLiteral("Cele");
    QTest::newRow("one that is not listed") << QStringLiteral("Mina");
    QTest::newRow("none") << QString(QLatin1String(""));
}

void tst_DataEditDialog::passingThroughChangesNothing()
{
    QFETCH(QString, artist);
    DataEditDialog dialog;
    SongInfo info = song();
    info.artist = artist;
    fill(dialog, info);
    QVERIFY(activate(dialog));
    dialog.findChild<QLineEdit *>(QStringLiteral("titleLineEdit"))->setFocus();
    for (int i = 0; i < 15; ++i)
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);

    SongInfo saved;
    dialog.getSong(saved);
    QCOMPARE(saved.artist, artist);
    QCOMPARE(saved.genre, info.genre);
    QCOMPARE(saved.title, info.title);
    QCOMPARE(saved.key, info.key);
    QCOMPARE(saved.length, info.length);
    QCOMPARE(saved.bpm, info.bpm);
}

void tst_DataEditDialog::typedArtistIsCompleted()
{
    DataEditDialog dialog;
    fill(dialog, song());
    QVERIFY(activate(dialog));
    QLineEdit *const artist = combo(dialog, "artistComboBox")->lineEdit();
    artist->setFocus();
    retype(artist, QStringLiteral("ab"));
    QWidget *const offers = QApplication::activePopupWidget();
    QVERIFY(offers);
    QTest::keyClick(offers, Qt::Key_Down);
    QTest::keyClick(offers, Qt::Key_Return);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(dialog.isVisible());
    SongInfo saved;
    dialog.getSong(saved);
    QCOMPARE(saved.artist, QStringLiteral("ABBA"));
}

void tst_DataEditDialog::results_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<int>("result");
    QTest::newRow("\"Salva\" gives 1")
        << Act([](DataEditDialog &dialog) { click(dialog, "savePushButton"); }) << 1;
    QTest::newRow("\"Annulla\" gives 0")
        << Act([](DataEditDialog &dialog) { click(dialog, "exitPushButton"); }) << 0;
    QTest::newRow("closing the window gives 0")
        << Act([](DataEditDialog &dialog) { dialog.close(); }) << 0;
    QTest::newRow("Escape gives 0") << Act([](DataEditDialog &dialog) {
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
    }) << 0;
}

void tst_DataEditDialog::results()
{
    QFETCH(Act, act);
    QFETCH(int, result);
    DialogDriver driver;
    driver.expect<DataEditDialog>(act);
    DataEditDialog dialog;
    dialog.setSong(song());
    QCOMPARE(dialog.exec(), result);
    QCOMPARE(driver.problems(), QString());
}

void tst_DataEditDialog::enterSavesFromEveryField_data()
{
    QTest::addColumn<QString>("field");
    for (const char *field : {"titleLineEdit", "radioButtonTitle1", "checkBoxToAllArtist",
                              "artistComboBox", "genreComboBox", "authorLineEdit", "lenMmLineEdit",
                              "lenSsLineEdit", "keyComboBox", "bpmLineEdit", "savePushButton"})
        QTest::newRow(field) << QString::fromLatin1(field);
}

void tst_DataEditDialog::enterSavesFromEveryField()
{
    QFETCH(QString, field);
    DialogDriver driver;
    driver.expect<DataEditDialog>([field](DataEditDialog &dialog) {
        auto *widget = dialog.findChild<QWidget *>(field);
        widget->setFocus();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    DataEditDialog dialog;
    SongInfo info = song();
    info.bpm = 95; // two digits, where three fit
    fill(dialog, info);
    dialog.hide();
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(driver.problems(), QString());
}

void tst_DataEditDialog::tabGoesFromTopToBottom()
{
    DataEditDialog dialog;
    fill(dialog, song());
    click(dialog, "radioButtonTitle2");
    QStringList chain = focusChain(edit(dialog, "titleLineEdit"));
    chain.removeAll(QString()); // the line edits inside the boxes
    QCOMPARE(
        chain.join(QLatin1Char(' ')),
        QStringLiteral("titleLineEdit radioButtonTitle1 radioButtonTitle2 checkBoxToAllTitle "
                       "artistComboBox checkBoxToAllArtist genreComboBox checkBoxToAllGenre "
                       "authorLineEdit checkBoxToAllAuthor lenMmLineEdit lenSsLineEdit keyComboBox "
                       "bpmLineEdit savePushButton exitPushButton"));
    int y = 0;
    for (const QString &name : qAsConst(chain)) {
        const auto *widget = child<QWidget>(dialog, name);
        const int top = widget->mapTo(&dialog, QPoint(0, 0)).y();
        QVERIFY2(top >= y - widget->height(), qPrintable(name)); // within a row, from left to right
        y = top;
    }
}

void tst_DataEditDialog::captionsLeadToTheirFields_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("field");
    const QVector<QPair<QString, QString>> buddies = {
        {QStringLiteral("Titolo Song:"), QStringLiteral("titleLineEdit")},
        {QStringLiteral("Interprete:"), QStringLiteral("artistComboBox")},
        {QStringLiteral("Genere Musicale:"), QStringLiteral("genreComboBox")},
        {QStringLiteral("Autore:"), QStringLiteral("authorLineEdit")},
        {QStringLiteral("Durata:"), QStringLiteral("lenMmLineEdit")},
        {QStringLiteral("mm"), QStringLiteral("lenMmLineEdit")},
        {QStringLiteral("ss"), QStringLiteral("lenSsLineEdit")},
        {QStringLiteral("Tonalità:"), QStringLiteral("keyComboBox")},
        {QStringLiteral("BPM:"), QStringLiteral("bpmLineEdit")}};
    for (const auto &buddy : buddies)
        QTest::newRow(qPrintable(buddy.first)) << buddy.first << buddy.second;
}

void tst_DataEditDialog::captionsLeadToTheirFields()
{
    QFETCH(QString, caption);
    QFETCH(QString, field);
    const DataEditDialog dialog;
    const auto labels = dialog.findChildren<QLabel *>();
    const auto label = std::find_if(labels.begin(), labels.end(), [&caption](const QLabel *each) {
        return each->text() == caption;
    });
    QVERIFY(label != labels.end());
    QVERIFY((*label)->buddy());
    QCOMPARE((*label)->buddy()->objectName(), field);
}

void tst_DataEditDialog::songTextsArePlain()
{
    DataEditDialog plain;
    fill(plain, song());
    SongInfo info = song();
    info.filename = QLatin1Char('/') + QString(300, QLatin1Char('W')) + QStringLiteral("<b>x</b>");
    info.title = QString(300, QLatin1Char('W'));
    info.artist = info.title;
    DataEditDialog dialog;
    fill(dialog, info);
    const auto *path = child<QLabel>(dialog, QStringLiteral("fileNameLabel"));
    QCOMPARE(path->text(), info.filename);
    QCOMPARE(path->textFormat(), Qt::PlainText);
    QVERIFY(dialog.width() <= plain.width() + 200);
    QCOMPARE(edit(dialog, "titleLineEdit")->cursorPosition(), 0);
}

QTEST_MAIN(tst_DataEditDialog)
#include "tst_dataeditdialog.moc"
