#include "tests/library/saveatonce.h"
#include "tests/library/updatefixture.h"

#include <QtTest>

using namespace tarvel4;

using namespace UpdateFixture;

namespace {

/** "field: before > after", markers as "1 Intro, 5 Verse". */
QString describe(const QVariant &value)
{
    if (value.type() != QVariant::List)
        return value.toString();
    QStringList markers;
    const QVariantList list = value.toList();
    for (const QVariant &marker : list) {
        const QVariantMap fields = marker.toMap();
        markers.append(fields.value(text("bar")).toString() + QLatin1Char(' ')
                       + fields.value(text("text")).toString());
    }
    return markers.join(text(", "));
}

QStringList describe(const QVector<FieldChange> &changes)
{
    QStringList lines;
    for (const FieldChange &change : changes)
        lines.append(
            text("%1: %2 > %3").arg(change.field, describe(change.before), describe(change.after)));
    return lines;
}

const QByteArray makers = "00 FF 02 06 4B2D5641524F"; // a copyright notice "K-VARO"

QByteArray copyright()
{
    return QByteArray::fromHex(makers);
}

/** Every field that a catalogue update can write, with values that the catalogue does not have. */
QByteArray allMidiFields()
{
    return meta(3, "Mine") + songInfo(1, "ROCK") + songInfo(2, "ADRIANO CELENTANO")
        + songInfo(3, "ME") + songInfo(4, "100") + songInfo(5, "90") + meta(0x59, hex("0000"))
        + marker(3, "Solo");
}

QByteArray allMp3Frames()
{
    return frame("TIT2", "Mine") + frame("TPE1", "ADRIANO CELENTANO") + frame("TCOM", "ME")
        + frame("TCON", "ROCK") + frame("TKEY", "C") + frame("TLEN", "100000")
        + frame("TBPM", "90");
}

} // namespace

/** What the dry run announces for each rule of the formats, and that the real run does just that.
 */
class tst_UpdatePlan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRealRunChangesWhatTheDryRunAnnounced_data();
    void theRealRunChangesWhatTheDryRunAnnounced();
};

void tst_UpdatePlan::theRealRunChangesWhatTheDryRunAnnounced_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("changes");

    const auto row = [](const QByteArray &name, const char *fileName, const QByteArray &bytes,
                        const QStringList &changes) {
        QTest::newRow(name.constData()) << text(fileName) << bytes << changes;
    };

    const QStringList texts = strings(
        {"title:  > AZZURRO", "artist:  > ADRIANO CELENTANO", "genre:  > POP", "author:  > CONTE"});
    const QStringList numbers = strings({"length: 0 > 200", "bpm: 0 > 120"});
    const QStringList markers = strings({"markers:  > 1 Intro, 5 Verse"});

    // MIDI
    for (int format = 0; format <= 1; ++format) {
        const auto song = [format](const QByteArray &events) {
            return format == 0 ? midi0(events) : midi1(events);
        };
        const QByteArray name = "MIDI " + QByteArray::number(format) + ": ";
        row(name + "everything missing in a song of the maker's", "12anni.mid", song(copyright()),
            texts + numbers + strings({"key:  > A-"}) + markers);
        row(name + "everything missing in another's song", "12anni.mid", song(QByteArray()),
            texts + markers);
        row(name + "everything present in a song of the maker's", "12anni.mid",
            song(copyright() + allMidiFields()), {});
        row(name + "everything present in another's song", "12anni.mid", song(allMidiFields()), {});
        row(name + "a placeholder is a text like any other", "12anni.kar",
            song(meta(3, "-") + songInfo(1, "--") + songInfo(2, "-") + songInfo(3, "-")),
            strings({"artist: - > CELENTANO"}) + markers);
    }
    row("MIDI: a title that the catalogue's begins with is completed", "12anni.mid",
        midi0(allMidiFields().replace(meta(3, "Mine"), meta(3, "azz"))),
        strings({"title: azz > AZZURRO"}));
    row("MIDI: an equal title is written as the catalogue has it", "12anni.mid",
        midi0(allMidiFields().replace(meta(3, "Mine"), meta(3, "Azzurro"))),
        strings({"title: Azzurro > AZZURRO"}));
    row("MIDI: a title inside the catalogue's is kept", "12anni.mid",
        midi0(allMidiFields().replace(meta(3, "Mine"), meta(3, "zurro"))), {});
    row("MIDI: an empty title is the start of any", "12anni.mid",
        midi0(allMidiFields().replace(meta(3, "Mine"), meta(3, ""))),
        strings({"title:  > AZZURRO"}));
    row("MIDI: the artist becomes the other name", "12anni.mid",
        midi0(allMidiFields().replace(songInfo(2, "ADRIANO CELENTANO"), songInfo(2, "CELENTANO"))),
        strings({"artist: CELENTANO > ADRIANO CELENTANO"}));
    row("MIDI: a third artist becomes the artist", "12anni.mid",
        midi0(allMidiFields().replace(songInfo(2, "ADRIANO CELENTANO"), songInfo(2, "MINA"))),
        strings({"artist: MINA > CELENTANO"}));
    row("MIDI: without another name a missing artist becomes the artist", "noalt.mid",
        midi0(meta(3, "Mine") + songInfo(1, "ROCK") + songInfo(3, "ME") + marker(1, "A")),
        strings({"artist:  > CELENTANO"}));
    row("MIDI: without another name a third artist becomes the artist", "noalt.mid",
        midi0(allMidiFields()), strings({"artist: ADRIANO CELENTANO > CELENTANO"}));
    row("MIDI: a key code outside the table counts as present", "12anni.mid",
        midi0(copyright() + allMidiFields().replace(hex("FF59020000"), hex("FF59020A00"))), {});
    row("MIDI: an alias of a key is read back as the key it stands for", "alias.mid",
        midi0(copyright() + allMidiFields().replace(meta(0x59, hex("0000")), QByteArray())),
        strings({"artist: ADRIANO CELENTANO > ADRIANO CELENTANO"}).mid(1) + strings({"key:  > E"}));
    row("MIDI: a key that is none is not written", "badkey.mid",
        midi0(copyright() + allMidiFields().replace(meta(0x59, hex("0000")), QByteArray())), {});
    row("MIDI: numbers that the catalogue lacks are not written", "bare.mid", midi0(copyright()),
        strings({"title:  > NUDA", "artist:  > ADRIANO CELENTANO", "genre:  > POP",
                 "author:  > CONTE"}));
    row("MIDI: texts are written as UTF-8 and read as Latin-1", "accent.mid",
        midi0(allMidiFields().replace(meta(3, "Mine"), QByteArray())),
        strings({"title:  > CittÃ"}));
    row("MIDI: a title is cut to 125 characters", "long.mid",
        midi0(allMidiFields().replace(meta(3, "Mine"), QByteArray())),
        {text("title:  > ") + QString(125, QLatin1Char('x'))});

    // MFx
    for (int version = 3; version <= 5; ++version) {
        const QByteArray name = "MF" + QByteArray::number(version) + ": ";
        const QByteArray file = "12anni.mf" + QByteArray::number(version);
        const auto song = [version](const MfxFields &fields, const QByteArray &events) {
            const QByteArray midi = midi0(events);
            return mfx(version, fields, version == 4 ? withFiller(midi) : midi);
        };
        const QByteArray streamFields =
            songInfo(4, "100") + meta(0x59, hex("0000")) + marker(3, "Solo");
        row(name + "everything missing", file.constData(), song(MfxFields(), QByteArray()),
            texts + numbers + strings({"key:  > A-"}) + markers + strings({"mfxFlags: 0 > 1"}));
        row(name + "everything present but the flag", file.constData(),
            song(allMfxFields(), streamFields), strings({"mfxFlags: 0 > 1"}));
        MfxFields flagged = allMfxFields();
        flagged.flags = 0x81;
        row(name + "other flags stay", file.constData(), song(flagged, streamFields), {});
        row(name + "placeholders count as missing", file.constData(),
            song({"-", "--", "-", "--", "", 499, 1}, streamFields),
            strings({"title: - > AZZURRO", "artist: -- > ADRIANO CELENTANO", "genre: -- > POP",
                     "author: - > CONTE"}));
        MfxFields fast = flagged;
        fast.bpm = 500;
        row(name + "a tempo of 500 counts as missing", file.constData(), song(fast, streamFields),
            strings({"bpm: 500 > 120"}));
        MfxFields artist = flagged;
        artist.artist = "CELENTANO";
        row(name + "the artist becomes the other name", file.constData(),
            song(artist, streamFields), strings({"artist: CELENTANO > ADRIANO CELENTANO"}));
        artist.artist = "MINA";
        row(name + "a third artist becomes the artist", file.constData(),
            song(artist, streamFields), strings({"artist: MINA > CELENTANO"}));
        MfxFields titled = flagged;
        titled.title = "AZZ";
        row(name + "a title that is there is kept", file.constData(), song(titled, streamFields),
            {});
        row(name + "a record without markers leaves the flag alone",
            ("bare.mf" + QByteArray::number(version)).constData(),
            song(allMfxFields(), streamFields), {});
        row(name + "a title is cut to 32 characters",
            ("long.mf" + QByteArray::number(version)).constData(),
            song({"", "ADRIANO CELENTANO", "ME", "ROCK", "", 90, 1}, streamFields),
            {text("title:  > ") + QString(32, QLatin1Char('x'))});
    }

    // MP3
    row("MP3: everything missing in a song of the maker's", "12anni.mp3",
        mp3(frame("TCOP", "K-VARO")), texts + numbers + strings({"key:  > A -"}));
    row("MP3: everything missing in another's song", "12anni.mp3", mp3(QByteArray()), texts);
    row("MP3: no tag at all", "12anni.MP3", audio(), texts);
    row("MP3: everything present in a song of the maker's", "12anni.mp3",
        mp3(frame("TCOP", "K-VARO") + allMp3Frames()), {});
    row("MP3: everything present in another's song", "12anni.mp3", mp3(allMp3Frames()), {});
    row("MP3: a placeholder is a text like any other", "12anni.mp3",
        mp3(frame("TIT2", "-") + frame("TPE1", "--") + frame("TCOM", "-") + frame("TCON", "-")),
        strings({"artist: -- > CELENTANO"}));
    row("MP3: a title that is there is kept", "12anni.mp3",
        mp3(allMp3Frames().replace("Mine", "AZZU")), {});
    row("MP3: the artist becomes the other name", "12anni.mp3",
        mp3(allMp3Frames().replace(frame("TPE1", "ADRIANO CELENTANO"), frame("TPE1", "CELENTANO"))),
        strings({"artist: CELENTANO > ADRIANO CELENTANO"}));
    row("MP3: a third artist becomes the artist", "12anni.mp3",
        mp3(allMp3Frames().replace(frame("TPE1", "ADRIANO CELENTANO"), frame("TPE1", "MINA"))),
        strings({"artist: MINA > CELENTANO"}));
    row("MP3: a tempo of 0 writes none", "zerobpm.mp3",
        mp3(frame("TCOP", "K-VARO") + allMp3Frames().replace(frame("TBPM", "90"), QByteArray())),
        {});
    row("MP3: numbers that the catalogue lacks are not written", "bare.mp3",
        mp3(frame("TCOP", "K-VARO")),
        strings({"title:  > NUDA", "artist:  > ADRIANO CELENTANO", "genre:  > POP",
                 "author:  > CONTE"}));
    row("MP3: texts are written as UTF-8 and read as Latin-1", "accent.mp3",
        mp3(allMp3Frames().replace(frame("TIT2", "Mine"), QByteArray())),
        strings({"title:  > CittÃ"}));
}

void tst_UpdatePlan::theRealRunChangesWhatTheDryRunAnnounced()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, changes);
    TestLibrary library(catalogue());
    const QString path = library.add(fileName, bytes);

    SongUpdate plan;
    QVERIFY(plan.load(path));
    QVERIFY(plan.match(library.db()));
    QVERIFY(plan.prepare());
    QCOMPARE(describe(plan.outcome(SongResult::Updated).changes), changes);
    QVERIFY(TestFiles::read(path) == bytes);

    SongUpdate real;
    QVERIFY(real.load(path));
    QVERIFY(real.match(library.db()));
    QVERIFY(real.prepare());
    QVERIFY(saveAtOnce(real));
    const SongOutcome done = real.outcome(SongResult::Updated);
    QCOMPARE(describe(done.changes), changes);

    // The file itself says the same, field by field.
    SongUpdate reread;
    QVERIFY(reread.load(path));
    const SongInfo &now = reread.before();
    const SongInfo &planned = done.after;
    QCOMPARE(now.title, planned.title);
    QCOMPARE(now.artist, planned.artist);
    QCOMPARE(now.genre, planned.genre);
    QCOMPARE(now.author, planned.author);
    QCOMPARE(now.length, planned.length);
    QCOMPARE(now.bpm, planned.bpm);
    QCOMPARE(now.key, planned.key);
    QCOMPARE(now.isPublisher, planned.isPublisher);
    QCOMPARE(now.markers, planned.markers);
    QCOMPARE(now.mfxLongName, planned.mfxLongName);
    QCOMPARE(now.mfxFlags, planned.mfxFlags);
    QCOMPARE(now.format, planned.format);
}

QTEST_GUILESS_MAIN(tst_UpdatePlan)
#include "tst_updateplan.moc"
