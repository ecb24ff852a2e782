#include "tests/ui/dataeditfixture.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

using namespace tarvel4;

using namespace DataEditFixture;

using Flag = bool (DataEditDialog::*)() const;
Q_DECLARE_METATYPE(Flag)

/** The fields of the editor: what a song fills them with, and what is saved. */
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
    void listsAreReplaced();
    void songTextsArePlain();
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
