#include "library/editcheck.h"

#include "tests/library/texts.h"
#include "tests/songs/songfixture.h"

#include <QtTest>

using namespace tarvel4;
using namespace SongFixture;

/** What is said of texts that are to go into many songs. */
class tst_EditCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void notes_data()
    {
        const Table<QStringList, QString, QString, QString> row;
        const QString e = QStringLiteral("\u00E9");
        const QString letter = text("questo formato non può contenere la lettera \"%1\"").arg(e);
        const QString shown = QStringLiteral("il lettore mostrerà: \u00C3\u00A9");
        row("one song is told as in its own editor", "mf3", "author", e,
            text("author 0 ") + letter);
        row("plain texts", "mid mf3 mp3", "author artist genre", "x", "");
        row("those that can't hold a letter are counted", "mid mf3 mf3 mp3", "author", e,
            text("author 0 in 2 song su 4 (MF3): ") + letter
                + text("; in 2 song su 4 (MIDI, MP3): ") + shown);
        row("of several formats", "mf3 mid mf5", "artist", e,
            text("artist 0 in 2 song su 3 (MF3, MF5): ") + letter
                + text("; in 1 song su 3 (MIDI): ") + shown);
        row("what a player shows otherwise", "mid mid mp3", "genre", e,
            text("genre 2 in 3 song su 3 (MIDI, MP3): ") + shown);
        row("the gravest first", "mid mp3 mf4 mid", "genre", e,
            text("genre 0 in 1 song su 4 (MF4): ") + letter + text("; in 3 song su 4 (MIDI, MP3): ")
                + shown);
        row("few characters left, in songs of another format", "mid mf3", "genre",
            QString(120, QLatin1Char('x')),
            "genre 3 in 1 song su 2 (MF3): ne resteranno 32 caratteri su 120");
        row("different ends of one text", "mid mf3 mid", "author", QString(130, QLatin1Char('x')),
            "author 3 in 2 song su 3 (MIDI): ne resteranno 125 caratteri su 130; "
            "in 1 song su 3 (MF3): ne resteranno 32 caratteri su 130");
        row("each field by itself", "mf3 mid", "artist genre", e,
            QStringLiteral("artist 0 in 1 song su 2 (MF3): %1; in 1 song su 2 (MIDI): %2\n"
                           "genre 0 in 1 song su 2 (MF3): %1; in 1 song su 2 (MIDI): %2")
                .arg(letter, shown));
        row("a field that is not written", "mf3", "", e, "");
        row("no song", "", "author", e, "");
        row("a song that is gone counts with its format", "gone.mf3 mf3", "author", e,
            text("author 0 in 2 song su 2 (MF3): ") + letter);
        row("a format that can't be read", "gone.mf3 mid", "author", e,
            text("author 2 in 1 song su 2 (MIDI): ") + shown);
    }
    void notes()
    {
        const auto [songs, fields, typed, expected] =
            cells<QStringList, QString, QString, QString>();
        EditCheck check;
        for (const char *time : {"first", "again"}) {
            QStringList told;
            for (const FieldNote &note :
                 check.notes(filesOf(songs), fieldsOf(fields), recordWith(typed)))
                told.append(
                    QStringLiteral("%1 %2 %3")
                        .arg(note.field, QString::number(static_cast<int>(note.grade)), note.text));
            QVERIFY2(told.join(QLatin1Char('\n')) == expected,
                     qPrintable(text(time) + told.join(QLatin1Char('\n'))));
        }
    }

    void theSongsAreReadOnce()
    {
        EditCheck check;
        const auto songs = filesOf(strings({"mf3", "mid"}));
        const ApplyToAll fields = fieldsOf(text("author"));
        const QString typed = QStringLiteral("\u00E9");
        QCOMPARE(check.notes(songs, fields, recordWith(typed)).size(), 1);
        for (const auto &song : songs)
            QVERIFY(QFile::remove(song.path));
        QCOMPARE(check.notes(songs, fields, recordWith(typed)).size(), 1);
    }

private:
    /** A song of each suffix, or only its path: "gone.mf3". */
    QVector<EditCheck::Song> filesOf(const QStringList &suffixes)
    {
        QVector<EditCheck::Song> songs;
        for (const QString &named : suffixes) {
            const QString suffix = named.section(QLatin1Char('.'), -1);
            const QString path =
                m_folder.filePath(QStringLiteral("%1.%2").arg(songs.size()).arg(suffix));
            QFile::remove(path);
            if (named == suffix) {
                QFile file(path);
                if (!file.open(QIODevice::WriteOnly) || file.write(songOf(suffix)) <= 0)
                    qFatal("no song");
            }
            songs.append({suffix == text("mid") ? text("MIDI") : suffix.toUpper(), path});
        }
        return songs;
    }
    static ApplyToAll fieldsOf(const QString &names)
    {
        ApplyToAll fields;
        fields.author = names.contains(text("author"));
        fields.artist = names.contains(text("artist"));
        fields.genre = names.contains(text("genre"));
        return fields;
    }
    static SongInfo recordWith(const QString &typed)
    {
        SongInfo edited;
        edited.title = QStringLiteral("\u00E9 is not written");
        edited.artist = edited.genre = edited.author = typed;
        return edited;
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_EditCheck)
#include "tst_editcheck.moc"
