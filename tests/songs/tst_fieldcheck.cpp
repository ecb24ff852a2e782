#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

/** What is said of a text before it is saved is what the save then does. */
class tst_FieldCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void notes_data()
    {
        const Table<QString, QString, QString, QString> row;
        const QString plain;
        const auto x = [](int count) { return QString(count, QLatin1Char('x')); };
        const auto e = [](int count) { return QString(count, QChar(0xE9)); };
        row("mid: a short title in ASCII", "mid", "title", "Volare", plain);
        row("mid: 11 characters fit", "mid", "title", x(114), plain);
        row("mid: 10 characters fit", "mid", "title", x(115), "title caratteri che restano: 10");
        row("mid: no character fits", "mid", "artist", x(125), "artist caratteri che restano: 0");
        row("mid: one character is too many", "mid", "genre", x(126),
            "genre ne resteranno 125 caratteri su 126");
        row("mid: a letter is shown as two", "mid", "author", QStringLiteral("Cit\u00E0 \u00E9"),
            QStringLiteral("author il lettore mostrerà: Cit\u00C3\u00A0 \u00C3\u00A9"));
        row("mid: a letter is shown as one with no shape", "mid", "title", QStringLiteral("\u00C8"),
            QStringLiteral("title il lettore mostrerà: \u00C3")
                + QChar(QChar::ReplacementCharacter));
        row("mid: the longest title that others read", "mid", "title", x(1) + e(63),
            QStringLiteral("title il lettore mostrerà: x")
                + QStringLiteral("\u00C3\u00A9").repeated(63));
        row("mid: a title that makes others lose the song", "mid", "title", e(64),
            "title occuperebbe 128 byte, più di 127: altri programmi non leggerebbero più la song");
        row("mid: a longest artist is one byte shorter", "mid", "artist", x(1) + e(63),
            "artist occuperebbe 127 byte, più di 126: altri programmi non leggerebbero più la "
            "song");
        for (const char *suffix : {"mf3", "mf4", "mf5"}) {
            row(suffix, suffix, "title", QStringLiteral("Perch\u00E9"),
                "title! questo formato non può contenere la lettera \"\u00E9\"");
        }
        row("mf3: 32 characters are the most", "mf3", "author", x(33),
            "author ne resteranno 32 caratteri su 33");
        row("mf5: 3 characters fit", "mf5", "genre", x(29), "genre caratteri che restano: 3");
        row("mf3: a letter that is cut off is not refused", "mf3", "title", x(32) + e(1),
            "title ne resteranno 32 caratteri su 33");
        row("mp3: a letter is shown as two", "mp3", "title", QStringLiteral("\u00E9"),
            QStringLiteral("title il lettore mostrerà: \u00C3\u00A9"));
        row("mp3: a long title fits", "mp3", "title", x(5000), plain);
        row("mp3: a title larger than a tag", "mp3", "title", x(1'000'001),
            "title! il testo è troppo lungo: il tag avrebbe 1000068 byte, ne sono ammessi 1000000");
        row("mp3: an artist that hides the title from readers", "mp3", "artist", "THE TIT2"_s,
            QStringLiteral("title il lettore mostrerà: ") + QChar(QChar::ReplacementCharacter));
    }
    void notes()
    {
        const auto [suffix, field, typed, expected] = cells<QString, QString, QString, QString>();
        const MetaSong song = m_file.imported(suffix, songOf(suffix));
        SongInfo info = recordOf(song);
        textIn(info, field) = typed;
        const QVector<FieldNote> notes = song.checkEdit(info);
        QCOMPARE(told(notes).section(QLatin1Char('\n'), 0, 0), expected);
        QCOMPARE(textOf(recordOf(song)), textOf(recordOf(imported(m_file.path()))));

        MetaSong saved = imported(m_file.path());
        saved.setSongInfo(info, edit);
        const Outcome outcome = saved.saveToFile(m_file.path());
        const bool isRefused = expected.startsWith(field + QLatin1Char('!'));
        QCOMPARE(static_cast<bool>(outcome), !isRefused);
        if (isRefused)
            QCOMPARE(notes.constFirst().text, outcome.sentence());
        else if (expected.isEmpty())
            QCOMPARE(textIn(readBack(), field), typed);
        else if (expected.contains(QStringLiteral("mostrerà")))
            QCOMPARE(shown(textIn(readBack(), expected.section(QLatin1Char(' '), 0, 0))),
                     expected.section(QStringLiteral("mostrerà: "), 1));
        else if (expected.contains("resteranno"_s))
            QCOMPARE("ne resteranno %1 caratteri su %2"_s.arg(textIn(readBack(), field).size())
                         .arg(typed.size()),
                     expected.section(QLatin1Char(' '), 1));
    }

    void eachTextHasItsNote()
    {
        const MetaSong song = m_file.imported("mf4"_s, songOf("mf4"_s));
        SongInfo info;
        info.title = QStringLiteral("\u00E9");
        info.author = QStringLiteral("\u00E8");
        info.artist = QString(40, QLatin1Char('x'));
        info.genre = QString(30, QLatin1Char('x'));
        QCOMPARE(told(song.checkEdit(info)),
                 QStringLiteral("title! questo formato non può contenere la lettera \"\u00E9\"\n"
                                "author! questo formato non può contenere la lettera \"\u00E8\"\n"
                                "artist ne resteranno 32 caratteri su 40\n"
                                "genre caratteri che restano: 2"));
    }

    void textsThatOnlyTogetherAreTooLarge()
    {
        const QString half(600'000, QLatin1Char('x'));
        const MetaSong song = m_file.imported("mp3"_s, songOf("mp3"_s));
        SongInfo info;
        info.title = info.artist = half;
        QVERIFY(told(song.checkEdit(info))
                    .startsWith(QStringLiteral("artist! il testo è troppo lungo")));
        info.artist.clear();
        QCOMPARE(told(song.checkEdit(info)), QString());
    }

    void aSongThatIsTooLargeAsAWhole()
    {
        const int size = static_cast<int>(500'000 - midi1().size() - 8);
        const MetaSong song = m_file.imported(
            "mf3"_s,
            mfx(3, {}, midi1(hex("00 FF 01 00") + QByteArray(size, 'x') + hex("00 FF 01 00"))));
        QVERIFY(
            told(song.checkEdit(recordOf(song))).startsWith(QStringLiteral("! è troppo grande")));
    }

    void notesAreThoseOfTheWholeSong_data()
    {
        const Table<QString, QByteArray> row;
        const QByteArray keys = meta(0x59, hex("0000")) + meta(0x59, hex("FF01"));
        const QByteArray ours = meta(3, "Old") + keys + songInfo(1, "POP") + songInfo(2, "Old")
            + songInfo(3, "Old") + songInfo(4, "61") + songInfo(5, "99");
        const auto lengthOf = [](const char *length) {
            return "MTrk" + hex(length) + meta(3, "Old") + note() + endOfTrack();
        };
        const std::pair<const char *, QByteArray> tracks[] = {
            {"a title where a delta-time belongs", track(hex("FF03034F6C64") + note())},
            {"a key where a delta-time belongs", track(hex("FF59020000") + note())},
            {"our events twice", track(ours + note() + ours)},
            {"our events within others", track(meta(3, ours) + meta(0x4B, ours) + note())},
            {"a title that claims more than is there", track(hex("00FF03FF4F6C64"))},
            {"our events after a note", track(note() + ours + endOfTrack())},
            {"a track that claims to be empty", lengthOf("00000000")},
            {"a track that claims to be endless", lengthOf("FFFFFFFF")},
            {"a track whose length wraps when it grows", lengthOf("FFFFFFE0")},
            {"a track that is empty", track({})},
            {"many lyrics", track(meta(5, "la").repeated(20'000))},
        };
        for (const auto &[name, events] : tracks) {
            for (const char *suffix : {"mid", "mf3", "mf4", "mf5"})
                row(suffix + QByteArray(": ") + name, suffix, midi(0, {events}));
        }
    }
    /** Whatever is there beside the texts that are typed. */
    void notesAreThoseOfTheWholeSong()
    {
        const auto [suffix, bytes] = cells<QString, QByteArray>();
        const MetaSong song = m_file.imported(suffix, fileOf(suffix, bytes));
        const QString odd[] = {{},
                               "Volare"_s,
                               QStringLiteral("\u00E9"),
                               QString(40, u'x'),
                               QString(126, u'x'), // the length byte of the next ones is 0xFF
                               u'Y' + QString(84, QChar(0x20AC)) + QStringLiteral("\u00E9"),
                               QStringLiteral("\u0003") + QString(84, QChar(0x20AC)) + "xx"_s,
                               QString(84, QChar(0x20AC)) + QStringLiteral("\u00E9")};
        for (const QString &key : {QString(), "C"_s, "F - "_s, "A -"_s}) {
            for (const QString &text : odd) {
                for (const QString &other : odd) {
                    SongInfo typed = recordOf(song);
                    typed.key = key;
                    typed.title = typed.author = text;
                    typed.artist = typed.genre = other;
                    MetaSong whole = imported(m_file.path());
                    const QVector<FieldNote> notes = song.checkEdit(typed);
                    QCOMPARE(toldOfTexts(notes), expected(notes, typed, whole));
                }
            }
        }
    }

    void aSongThatJustFits_data()
    {
        const Table<int, bool> row;
        row("after the edit", 500'000, true);
        row("one byte is too much after the edit", 500'001, false);
    }
    void aSongThatJustFits()
    {
        const auto [size, fits] = cells<int, bool>();
        const QByteArray before = songInfo(4, "1");
        const auto edited = static_cast<int>(midi0(songInfo(4, "1")).size());
        const int syllables = size - edited - 9; // a long key becomes a longer length
        const QByteArray filling = hex("00FF0100") + QByteArray(syllables, 'x') + hex("00FF0100");
        const MetaSong song = m_file.imported("mf3"_s, mfx(3, {}, midi0(before + filling)));
        SongInfo typed = recordOf(song);
        typed.length = 11;
        QCOMPARE(told(song.checkEdit(typed)).isEmpty(), fits);
        MetaSong whole = imported(m_file.path());
        whole.setSongInfo(typed, edit);
        QCOMPARE(static_cast<bool>(whole.whyNotSavable()), fits);
    }

    void aCheckWritesNothingToTheLog()
    {
        for (const QString &suffix : words(everySuffix)) {
            const QByteArray oddKey = meta(0x59, hex("0A00"));
            const MetaSong song = m_file.imported(
                suffix,
                suffix == "mp3"_s ? songOf(suffix)
                                  : fileOf(suffix, midi(1, {track({}), track(oddKey)})));
            const LogCapture capture;
            SongInfo info;
            info.title = QStringLiteral("\u00E9");
            QCOMPARE(song.checkEdit(info).size(), 1);
            QCOMPARE(capture.lines(), QStringList());
        }
    }

    void nothingLoadedHasNoNotes() { QVERIFY(MetaSong().checkEdit(SongInfo()).isEmpty()); }

private:
    SongInfo readBack() const { return recordOf(imported(m_file.path())); }
    static QString &textIn(SongInfo &info, const QString &field)
    {
        return field == "title"_s ? info.title
            : field == "artist"_s ? info.artist
            : field == "genre"_s  ? info.genre
                                  : info.author;
    }
    static QString textIn(SongInfo &&info, const QString &field) { return textIn(info, field); }
    static QString shown(QString text)
    {
        for (QChar &letter : text)
            letter = letter.isPrint() ? letter : QChar(QChar::ReplacementCharacter);
        return text;
    }
    /** "FIELD TEXT" of each note, "FIELD! TEXT" where the save is refused. */
    static QString told(const QVector<FieldNote> &notes)
    {
        QStringList lines;
        for (const FieldNote &note : notes)
            lines.append(note.field + (note.grade == FieldNote::Grade::Refused ? "! "_s : " "_s)
                         + note.text);
        return lines.join(QLatin1Char('\n'));
    }

    /** What is to be said of each text, told from a song that was edited; a text that others can't
     * read is left out, as only that is said of it. */
    static QString expected(const QVector<FieldNote> &notes, SongInfo &typed, MetaSong &whole)
    {
        whole.setSongInfo(typed, edit);
        if (!whole.whyNotSavable())
            return "refused"_s;
        SongInfo stored = recordOf(whole);
        QStringList lines;
        for (const QString &field : words("title artist genre author")) {
            const QString &wanted = textIn(typed, field);
            const QString &kept = textIn(stored, field);
            if (kept == wanted || gradeOf(notes, field) == FieldNote::Grade::Misread)
                continue;
            lines += field + QLatin1Char(' ')
                + (wanted.startsWith(kept)
                       ? "ne resteranno %1 caratteri su %2"_s.arg(kept.size()).arg(wanted.size())
                       : QStringLiteral("il lettore mostrerà: ") + shown(kept));
        }
        return lines.join(QLatin1Char('\n'));
    }
    static FieldNote::Grade gradeOf(const QVector<FieldNote> &notes, const QString &field)
    {
        for (const FieldNote &note : notes) {
            if (note.field == field)
                return note.grade;
        }
        return FieldNote::Grade::NearLimit;
    }
    /** What expected() can tell of the notes. */
    static QString toldOfTexts(QVector<FieldNote> notes)
    {
        const auto isLeftOut = [](const FieldNote &note) {
            return note.grade == FieldNote::Grade::Misread
                || note.grade == FieldNote::Grade::NearLimit;
        };
        for (const FieldNote &note : notes) {
            if (note.grade == FieldNote::Grade::Refused)
                return "refused"_s;
        }
        notes.erase(std::remove_if(notes.begin(), notes.end(), isLeftOut), notes.end());
        return told(notes);
    }

    FixtureSong m_file;
};

QTEST_GUILESS_MAIN(tst_FieldCheck)
#include "tst_fieldcheck.moc"
