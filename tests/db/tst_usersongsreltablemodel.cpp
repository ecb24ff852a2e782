#include "db/database.h"
#include "db/usersongsreltablemodel.h"

#include <QtTest>

#include <QSqlQuery>

using namespace tarvel4;

namespace {

SongInfo song(const QString &name, int length = 185, int bpm = 120)
{
    SongInfo info;
    info.format = QStringLiteral("MIDI");
    info.title = name;
    info.artist = QStringLiteral("artist");
    info.genre = QStringLiteral("genre");
    info.author = QStringLiteral("author");
    info.length = length;
    info.bpm = bpm;
    info.key = QStringLiteral("A-");
    info.filename = QStringLiteral("/songs/") + name;
    info.shortname = name;
    return info;
}

} // namespace

class tst_UserSongsRelTableModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void labelsTheColumns();
    void appendsARowAtTheEnd();
    void lengthText_data();
    void lengthText();
    void anUnknownTempoIsNegativeUntilTheRowIsUpdated();
    void updateLeavesTypeFileNameShortNameAndStatus();
    void statusOfARow();
    void rowsBeyondTheFirstBatchAreValid();
    void numbersBeginAtOneAgainAfterClearing();
    void viewsSeeRowsBeforeTheImportEnds();
    void rowsFollowTheSortOrder();
    void aRemovedRowIsGoneAfterSelect();
    void rowsThatDoNotExist_data();
    void rowsThatDoNotExist();
    void writesAreInTheTableAtOnce();
    void aChangedCellIsInTheTableAtOnce();
    void answersAsTheBaseClass();
    void appendFailsWithoutTheTable();

private:
    QString cell(int row, const char *field)
    {
        return m_model->cellIndex(row, m_model->fieldIndex(QLatin1String(field))).data().toString();
    }

    std::unique_ptr<Database> m_database;
    std::unique_ptr<UserSongsRelTableModel> m_model;
};

void tst_UserSongsRelTableModel::init()
{
    m_database = std::make_unique<Database>();
    m_database->init(QStringLiteral("/nowhere")); // the catalogue is not needed here
    QVERIFY(m_database->userSongsDatabase().isOpen());
    m_model = std::make_unique<UserSongsRelTableModel>(nullptr, m_database->userSongsDatabase());
    m_model->setHeaders();
}

void tst_UserSongsRelTableModel::cleanup()
{
    m_model.reset();
    m_database.reset();
    for (const char *name : {"con_songsdb", "con_mem"})
        QSqlDatabase::removeDatabase(QLatin1String(name));
}

void tst_UserSongsRelTableModel::labelsTheColumns()
{
    QStringList labels;
    for (int column = 0; column < m_model->columnCount(); ++column)
        labels.append(m_model->headerData(column, Qt::Horizontal).toString());
    QCOMPARE(
        labels,
        (QStringList{QStringLiteral("Num"), QStringLiteral("Formato"), QStringLiteral("Titolo"),
                     QStringLiteral("Artista"), QStringLiteral("Genere"), QStringLiteral("Autore"),
                     QStringLiteral("Durata"), QStringLiteral("Bpm"), QStringLiteral("Tonalita'"),
                     QString(), QStringLiteral("Nome file"), QString()}));
    QCOMPARE(m_model->fileNameColumn(), 9);
    QCOMPARE(m_model->statusColumn(), 11);
}

void tst_UserSongsRelTableModel::appendsARowAtTheEnd()
{
    QVERIFY(m_model->appendSong(song(QStringLiteral("a.mid"))));
    QVERIFY(m_model->appendSong(song(QStringLiteral("b.mid"))));
    QCOMPARE(m_model->totalRows(), 2);
    QStringList row;
    for (int column = 0; column < m_model->columnCount(); ++column)
        row.append(m_model->cellIndex(1, column).data().toString());
    QCOMPARE(row.join(u'|'),
             QStringLiteral("2|MIDI|b.mid|artist|genre|author|03:05|120|A-|/songs/b.mid|b.mid|0"));
    QCOMPARE(m_model->fileNameOf(0), QStringLiteral("/songs/a.mid"));
    QCOMPARE(m_model->shortNameOf(0), QStringLiteral("a.mid"));
}

void tst_UserSongsRelTableModel::lengthText_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("an unknown length shows an empty cell") << -1 << QString();
    QTest::newRow("0 seconds") << 0 << QStringLiteral("00:00");
    QTest::newRow("59 seconds show 00:59") << 59 << QStringLiteral("00:59");
    QTest::newRow("185 seconds give 03:05") << 185 << QStringLiteral("03:05");
    QTest::newRow("6000 seconds give 100:00") << 6000 << QStringLiteral("100:00");
}

void tst_UserSongsRelTableModel::lengthText()
{
    QFETCH(int, seconds);
    m_model->appendSong(song(QStringLiteral("a"), seconds));
    QTEST(cell(0, "length"), "text");
    m_model->updateSong(0, song(QStringLiteral("a"), 1));
    m_model->updateSong(0, song(QStringLiteral("a"), seconds));
    QTEST(cell(0, "length"), "text");
}

void tst_UserSongsRelTableModel::anUnknownTempoIsNegativeUntilTheRowIsUpdated()
{
    m_model->appendSong(song(QStringLiteral("a"), 1, -1));
    QCOMPARE(cell(0, "userbpm"), QStringLiteral("-1"));
    m_model->updateSong(0, song(QStringLiteral("a"), 1, -1));
    QCOMPARE(cell(0, "userbpm"), QStringLiteral("0"));
    m_model->updateSong(0, song(QStringLiteral("a"), 1, 90));
    QCOMPARE(cell(0, "userbpm"), QStringLiteral("90"));
}

void tst_UserSongsRelTableModel::updateLeavesTypeFileNameShortNameAndStatus()
{
    m_model->appendSong(song(QStringLiteral("a.mid")));
    m_model->setStatus(0, UserSongsRelTableModel::Failed);
    SongInfo other = song(QStringLiteral("other"), 60, 99);
    other.format = QStringLiteral("MP3");
    other.artist = QStringLiteral("A");
    other.genre = QStringLiteral("G");
    other.author = QStringLiteral("U");
    other.key = QStringLiteral("C");
    m_model->updateSong(0, other);
    QStringList row;
    for (int column = 0; column < m_model->columnCount(); ++column)
        row.append(m_model->cellIndex(0, column).data().toString());
    QCOMPARE(row.join(u'|'), QStringLiteral("1|MIDI|other|A|G|U|01:00|99|C|/songs/a.mid|a.mid|3"));
}

void tst_UserSongsRelTableModel::statusOfARow()
{
    m_model->appendSong(song(QStringLiteral("a")));
    QCOMPARE(m_model->statusOf(0), int(UserSongsRelTableModel::Listed));
    m_model->setStatus(0, UserSongsRelTableModel::Edited);
    QCOMPARE(m_model->statusOf(0), 2);
}

void tst_UserSongsRelTableModel::rowsBeyondTheFirstBatchAreValid()
{
    for (int i = 0; i < 700; ++i)
        m_model->appendSong(song(QString::number(i)));
    m_model->select(); // as after a change of the table: only a first batch is loaded
    QVERIFY(m_model->canFetchMore());
    QCOMPARE(m_model->fileNameOf(699), QStringLiteral("/songs/699"));
    m_model->select();
    m_model->setStatus(650, 1);
    QCOMPARE(m_model->statusOf(650), 1);
    m_model->select();
    QCOMPARE(m_model->statusOf(650), 1);
    m_model->select();
    m_model->updateSong(600, song(QStringLiteral("changed")));
    QCOMPARE(cell(600, "title"), QStringLiteral("changed"));
    m_model->select();
    QVERIFY(m_model->cellIndex(699, 2).isValid());
    m_model->select();
    QCOMPARE(m_model->totalRows(), 700);
    m_model->select();
    QCOMPARE(m_model->shortNameOf(500), QStringLiteral("500"));
}

void tst_UserSongsRelTableModel::numbersBeginAtOneAgainAfterClearing()
{
    m_model->appendSong(song(QStringLiteral("a")));
    m_model->appendSong(song(QStringLiteral("b")));
    QCOMPARE(m_model->totalRows(), 2);
    QVERIFY(m_database->clearUserSongs());
    m_model->select();
    QCOMPARE(m_model->totalRows(), 0);
    m_model->appendSong(song(QStringLiteral("c")));
    QCOMPARE(cell(0, "id"), QStringLiteral("1"));
}

void tst_UserSongsRelTableModel::viewsSeeRowsBeforeTheImportEnds()
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
    m_model->appendSong(song(QStringLiteral("a")));
    QCOMPARE(m_model->rowCount(), 1);
}

void tst_UserSongsRelTableModel::rowsFollowTheSortOrder()
{
    for (const char *name : {"b", "c", "a"})
        m_model->appendSong(song(QLatin1String(name)));
    m_model->sort(m_model->fieldIndex(QStringLiteral("title")), Qt::AscendingOrder);
    QCOMPARE(m_model->shortNameOf(0), QStringLiteral("a"));
    m_model->setStatus(0, 1);
    SongInfo renamed = song(QStringLiteral("z"));
    m_model->updateSong(0, renamed);
    QCOMPARE(cell(0, "title"),
             QStringLiteral("z")); // a row keeps its place until the table is read again
    QCOMPARE(m_model->fileNameOf(0), QStringLiteral("/songs/a"));
    m_model->select();
    QCOMPARE(cell(2, "title"), QStringLiteral("z"));
    QCOMPARE(m_model->statusOf(2), 1);
}

void tst_UserSongsRelTableModel::aRemovedRowIsGoneAfterSelect()
{
    for (const char *name : {"a", "b", "c"})
        m_model->appendSong(song(QLatin1String(name)));
    QCOMPARE(m_model->totalRows(), 3);
    QVERIFY(m_model->removeRow(1));
    m_model->select();
    QCOMPARE(m_model->totalRows(), 2);
    QCOMPARE(m_model->shortNameOf(1), QStringLiteral("c"));
}

void tst_UserSongsRelTableModel::rowsThatDoNotExist_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("a negative row") << -1;
    QTest::newRow("a row behind the last") << 1;
}

void tst_UserSongsRelTableModel::rowsThatDoNotExist()
{
    QFETCH(int, row);
    m_model->appendSong(song(QStringLiteral("a")));
    m_model->updateSong(row, song(QStringLiteral("x")));
    m_model->setStatus(row, 3);
    QCOMPARE(m_model->fileNameOf(row), QString());
    QCOMPARE(m_model->shortNameOf(row), QString());
    QCOMPARE(m_model->statusOf(row), 0);
    QCOMPARE(m_model->totalRows(), 1);
    QCOMPARE(cell(0, "title"), QStringLiteral("a"));
    QCOMPARE(m_model->statusOf(0), 0);
}

void tst_UserSongsRelTableModel::writesAreInTheTableAtOnce()
{
    QSqlQuery query(m_database->userSongsDatabase());
    const auto table = [&query] {
        return query.exec(QStringLiteral("select title || status from usersongs")) && query.next()
            ? query.value(0).toString()
            : QString();
    };
    m_model->appendSong(song(QStringLiteral("a")));
    QCOMPARE(table(), QStringLiteral("a0"));
    m_model->updateSong(0, song(QStringLiteral("b")));
    QCOMPARE(table(), QStringLiteral("b0"));
    m_model->setStatus(0, 2);
    QCOMPARE(table(), QStringLiteral("b2"));
}

void tst_UserSongsRelTableModel::aChangedCellIsInTheTableAtOnce()
{
    QCOMPARE(m_model->editStrategy(), QSqlTableModel::OnFieldChange);
    m_model->appendSong(song(QStringLiteral("a")));
    QVERIFY(m_model->setData(m_model->cellIndex(0, m_model->fieldIndex(QStringLiteral("title"))),
                             QStringLiteral("typed")));
    QSqlQuery query(QStringLiteral("select title from usersongs"), m_database->userSongsDatabase());
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toString(), QStringLiteral("typed"));
    QCOMPARE(cell(0, "title"), QStringLiteral("typed"));
}

/** Where the model goes round its base class, the answers are those of the base class. */
void tst_UserSongsRelTableModel::answersAsTheBaseClass()
{
    for (int i = 0; i < 300; ++i)
        m_model->appendSong(song(QString::number(i), i, i));
    m_model->totalRows();
    for (const int row : {0, 7, 270}) {
        m_model->updateSong(row, song(QStringLiteral("updated"), -1, -1));
        m_model->setStatus(row, UserSongsRelTableModel::Updated);
    }
    QVERIFY(m_model->removeRow(8));
    const QSqlRelationalTableModel &model = *m_model;
    QCOMPARE(m_model->rowCount(), model.QSqlRelationalTableModel::rowCount());
    QCOMPARE(m_model->rowCount(m_model->index(0, 0)), 0);
    for (const int row : {0, 1, 7, 8, 9, 270, 299}) {
        for (int column = 0; column < m_model->columnCount(); ++column) {
            const QModelIndex index = m_model->index(row, column);
            for (int role = Qt::DisplayRole; role <= Qt::UserRole; ++role)
                QCOMPARE(m_model->data(index, role),
                         model.QSqlRelationalTableModel::data(index, role));
            QCOMPARE(m_model->flags(index), model.QSqlRelationalTableModel::flags(index));
        }
    }
    QCOMPARE(m_model->index(7, 2).data().toString(), QStringLiteral("updated"));
    QCOMPARE(m_model->index(9, 2).data().toString(), QStringLiteral("9"));
}

void tst_UserSongsRelTableModel::appendFailsWithoutTheTable()
{
    QVERIFY(
        QSqlQuery(m_database->userSongsDatabase()).exec(QStringLiteral("drop table usersongs")));
    QVERIFY(!m_model->appendSong(song(QStringLiteral("a"))));
}

QTEST_GUILESS_MAIN(tst_UserSongsRelTableModel)
#include "tst_usersongsreltablemodel.moc"
