#include "db/foldedtext.h"
#include "tests/db/usersongsfixture.h"
#include "tests/storage/table.h"

#include <QtTest>

#include <QSqlQuery>

using namespace tarvel4;

class tst_UserSongsRelTableModel : public QObject, private UserSongsFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { openTable(); }
    void cleanup() { closeTable(); }

    void labelsTheColumns()
    {
        QStringList labels;
        for (int column = 0; column < m_model->columnCount(); ++column)
            labels.append(m_model->headerData(column, Qt::Horizontal).toString());
        QCOMPARE(
            labels,
            (QStringList{"Num"_s, "Formato"_s, "Titolo"_s, "Artista"_s, "Genere"_s, "Autore"_s,
                         "Durata"_s, "Bpm"_s, "Tonalita'"_s, QString(), "Nome file"_s, QString()}));
        QCOMPARE(m_model->fileNameColumn(), 9);
        QCOMPARE(m_model->statusColumn(), 11);
    }

    void appendsARowAtTheEnd()
    {
        append("a b");
        QCOMPARE(m_model->totalRows(), 2);
        QCOMPARE(textOf(1), "2|MIDI|b|artist|genre|author|03:05|120|A-|/songs/b|b|0"_s);
        QCOMPARE(m_model->fileNameOf(0), "/songs/a"_s);
        QCOMPARE(m_model->shortNameOf(0), "a"_s);
    }

    void lengthText_data()
    {
        const Table<int, QString> row;
        row("an unknown length shows an empty cell", -1, {});
        row("0 seconds", 0, "00:00");
        row("59 seconds show 00:59", 59, "00:59");
        row("185 seconds give 03:05", 185, "03:05");
        row("6000 seconds give 100:00", 6000, "100:00");
    }
    void lengthText()
    {
        const auto [seconds, text] = cells<int, QString>();
        m_model->appendSong(song("a"_s, seconds));
        QCOMPARE(cell(0, "length"), text);
        m_model->updateSong(0, song("a"_s, 1));
        m_model->updateSong(0, song("a"_s, seconds));
        QCOMPARE(cell(0, "length"), text);
    }

    void anUnknownTempoIsNegativeUntilTheRowIsUpdated()
    {
        m_model->appendSong(song("a"_s, 1, -1));
        QCOMPARE(cell(0, "userbpm"), "-1"_s);
        m_model->updateSong(0, song("a"_s, 1, -1));
        QCOMPARE(cell(0, "userbpm"), "0"_s);
        m_model->updateSong(0, song("a"_s, 1, 90));
        QCOMPARE(cell(0, "userbpm"), "90"_s);
    }

    void updateLeavesTypeFileNameShortNameAndStatus()
    {
        append("a");
        QCOMPARE(m_model->statusOf(0), static_cast<int>(UserSongsRelTableModel::Listed));
        m_model->setStatus(0, UserSongsRelTableModel::Failed);
        SongInfo other = song("other"_s, 60, 99);
        other.format = other.artist = "A"_s;
        other.genre = "G"_s;
        other.author = "U"_s;
        other.key = "C"_s;
        m_model->updateSong(0, other);
        QCOMPARE(textOf(0), "1|MIDI|other|A|G|U|01:00|99|C|/songs/a|a|3"_s);
        QCOMPARE(m_model->statusOf(0), 3);
    }

    void rowsBeyondTheFirstBatchAreValid()
    {
        for (int i = 0; i < 700; ++i)
            m_model->appendSong(song(QString::number(i)));
        m_model->select(); // as after a change of the table: only a first batch is loaded
        QVERIFY(m_model->canFetchMore());
        QCOMPARE(m_model->fileNameOf(699), "/songs/699"_s);
        m_model->select();
        m_model->setStatus(650, 1);
        QCOMPARE(m_model->statusOf(650), 1);
        m_model->select();
        QCOMPARE(m_model->statusOf(650), 1);
        m_model->select();
        m_model->updateSong(600, song("changed"_s));
        QCOMPARE(cell(600, "title"), "changed"_s);
        m_model->select();
        QVERIFY(m_model->cellIndex(699, 2).isValid());
        m_model->select();
        QCOMPARE(m_model->totalRows(), 700);
        m_model->select();
        QCOMPARE(m_model->shortNameOf(500), "500"_s);
    }

    void numbersBeginAtOneAgainAfterClearing()
    {
        append("a b");
        QCOMPARE(m_model->totalRows(), 2);
        m_model->updateSong(0, song("z"_s));
        QVERIFY(m_database->clearUserSongs());
        m_model->select();
        QCOMPARE(m_model->totalRows(), 0);
        append("c");
        QCOMPARE(textOf(0), "1|MIDI|c|artist|genre|author|03:05|120|A-|/songs/c|c|0"_s);
    }

    void viewsSeeRowsBeforeTheImportEnds()
    {
        for (int i = 0; i < 20; ++i) {
            m_model->appendSong(song(QString::number(i)));
            QCOMPARE(m_model->rowCount(), i + 1);
            QCOMPARE(m_model->index(i, 2).data().toString(), QString::number(i));
        }
        for (int i = 20; i < 1000; ++i)
            m_model->appendSong(song(QString::number(i)));
        QVERIFY(m_model->rowCount() > 250);

        QVERIFY(m_database->clearUserSongs()); // the next import is seen from its first row, too
        m_model->select();
        append("a");
        QCOMPARE(m_model->rowCount(), 1);
    }

    void marksStayWithTheirSongs()
    {
        append("b c a");
        m_model->setMark(0, UserSongsRelTableModel::MarkedFailed, [] { return "why b"_s; });
        m_model->setMark(1, UserSongsRelTableModel::MarkedUpdated);
        m_model->setMark(1, UserSongsRelTableModel::MarkedLeftAlone, [] { return "why c"_s; });
        m_model->sort(2, Qt::AscendingOrder);
        QCOMPARE(m_model->cellIndex(0, 1).data(Qt::AccessibleTextRole).toString(), QString());
        QCOMPARE(m_model->cellIndex(1, 1).data(Qt::AccessibleTextRole).toString(), "MIDI, why b"_s);
        QCOMPARE(m_model->cellIndex(2, 1).data(Qt::AccessibleTextRole).toString(), "MIDI, why c"_s);
        QCOMPARE(m_model->markOf(2), UserSongsRelTableModel::MarkedLeftAlone);
        QCOMPARE(markCounts(), "0 0 0 1 1"_s);
        QVERIFY(m_model->removeRow(1));
        m_model->select();
        QCOMPARE(markCounts(), "0 0 0 1 0"_s);
        QCOMPARE(m_model->songs(), 2);
        QVERIFY(m_database->clearUserSongs());
        m_model->select();
        QCOMPARE(markCounts(), "0 0 0 0 0"_s);
        append("d");
        QCOMPARE(m_model->markOf(0), UserSongsRelTableModel::Unmarked);
    }

    void finds_data()
    {
        const Table<QString, bool> row;
        row("nothing is in every song", "", true);
        row("a part of the title", "erch", true);
        row("in any case of letters", "PERCHÉ", true);
        row("without accents", "perche", true);
        row("accents that the song does not have", "càrta", true);
        row("another kind of apostrophe", "l’amore", true);
        row("all words, in any order and column", "artist perche MIDI 03:05 120 a-", true);
        row("a folder of the path", "songs/perche", true);
        row("not where one word is missing", "perche zoo", false);
        row("not across two columns", "midiperche", false);
        row("not the status", "failed", false);
    }
    void finds()
    {
        const auto [typed, isFound] = cells<QString, bool>();
        m_model->appendSong(song(QStringLiteral("Perché l'amore carta")));
        const QStringList folded = FoldedText::wordsOf(typed);
        QCOMPARE(m_model->matches(0, folded), isFound);
        SongInfo other = song("zoo failed"_s);
        other.artist = other.genre = other.author = QString();
        m_model->updateSong(0, other);
        QVERIFY2(m_model->matches(0, words("zoo")), "the new title");
        QCOMPARE(m_model->matches(0, words("artist")), false);
        QVERIFY2(m_model->matches(0, words("songs/perche")), "the path is the old one");
    }

    void oneSearchFollowsTheTexts()
    {
        const QStringList wanted = words("zoo");
        const auto isFound = [&] { return m_model->matches(0, wanted); };
        m_model->appendSong(song("a"_s));
        QVERIFY(!isFound());
        m_model->updateSong(0, song("zoo"_s));
        QVERIFY(isFound());
        m_model->updateSong(0, song("b"_s));
        QVERIFY(!isFound());
        m_model->removeRow(0);
        m_model->select();
        m_model->appendSong(song("zoo"_s)); // with the same id
        QVERIFY(isFound());
    }

    void rowsThatDoNotExistTakeNothing()
    {
        append("a");
        for (const int row : {-1, 1}) {
            m_model->updateSong(row, song("x"_s));
            m_model->setStatus(row, 3);
            QCOMPARE(m_model->fileNameOf(row) + m_model->shortNameOf(row), QString());
            QCOMPARE(m_model->statusOf(row), 0);
        }
        QCOMPARE(m_model->totalRows(), 1);
        QCOMPARE(cell(0, "title") + cell(0, "status"), "a0"_s);
    }

    void writesAreInTheTableAtOnce()
    {
        QSqlQuery query(m_database->userSongsDatabase());
        const auto table = [&query] {
            return query.exec("select title || status from usersongs"_s) && query.next()
                ? query.value(0).toString()
                : QString();
        };
        append("a");
        QCOMPARE(table(), "a0"_s);
        m_model->updateSong(0, song("b"_s));
        QCOMPARE(table(), "b0"_s);
        m_model->setStatus(0, 2);
        QCOMPARE(table(), "b2"_s);
        QVERIFY(m_model->setData(m_model->cellIndex(0, m_model->fieldIndex("title"_s)), "typed"_s));
        QCOMPARE(table(), "typed2"_s);
        QCOMPARE(cell(0, "title"), "typed"_s);
    }

    void appendFailsWithoutTheTable()
    {
        QVERIFY(QSqlQuery(m_database->userSongsDatabase()).exec("drop table usersongs"_s));
        QVERIFY(!m_model->appendSong(song("a"_s)));
    }

private:
    QString markCounts() const
    {
        QStringList counts;
        for (int mark = UserSongsRelTableModel::MarkedUpdated;
             mark <= UserSongsRelTableModel::MarkedFailed; ++mark)
            counts.append(
                QString::number(m_model->marked(static_cast<UserSongsRelTableModel::Mark>(mark))));
        return counts.join(QLatin1Char(' '));
    }
};

QTEST_GUILESS_MAIN(tst_UserSongsRelTableModel)
#include "tst_usersongsreltablemodel.moc"
