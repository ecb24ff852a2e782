#include "tests/db/usersongsfixture.h"
#include "tests/storage/table.h"

#include <QtTest>

#include <algorithm>

using namespace tarvel4;

/** The order of the window's table, and that sorting it changes nothing else. */
class tst_SongOrder : public QObject, private UserSongsFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { openTable(); }
    void cleanup() { closeTable(); }

    void rowsFollowTheSortOrder()
    {
        append("b c a");
        m_model->sort(m_model->fieldIndex("title"_s), Qt::AscendingOrder);
        QCOMPARE(m_model->shortNameOf(0), "a"_s);
        m_model->setStatus(0, 1);
        SongInfo renamed = song("z"_s);
        m_model->updateSong(0, renamed);
        QCOMPARE(cell(0, "title"),
                 "z"_s); // a row keeps its place until the table is read again
        QCOMPARE(m_model->fileNameOf(0), "/songs/a"_s);
        m_model->select();
        QCOMPARE(cell(2, "title"), "z"_s);
        QCOMPARE(m_model->statusOf(2), 1);
    }

    void sortsAsAReaderExpects_data()
    {
        const Table<QString, QString, QString> row;
        row("titles without regard to case and accents", "title", "zoo Élan abc ÀBC élite È eco",
            "abc ÀBC È eco Élan élite zoo");
        row("accents beyond western Europe, too", "title", "zoo ŽAL Čaj car", "Čaj car ŽAL zoo");
        row("tempos as numbers", "userbpm", "100 20 -1 9", "-1 9 20 100");
        row("lengths as times, unknown ones first", "length", "6000 3 5999 -1 600",
            "-1 3 600 5999 6000");
        row("song numbers as numbers", "id", "k j i h g f e d c b a", "k j i h g f e d c b a");
    }
    void sortsAsAReaderExpects()
    {
        const auto [column, names, ascending] = cells<QString, QString, QString>();
        for (const QString &name : names.split(QLatin1Char(' ')))
            m_model->appendSong(song(name, name.toInt(), name.toInt()));
        const auto sorted = [this, column = column](Qt::SortOrder order) {
            m_model->sort(m_model->fieldIndex(column), order);
            QStringList found;
            for (int row = 0; row < m_model->totalRows(); ++row)
                found.append(m_model->shortNameOf(row));
            return found;
        };
        QStringList expected = ascending.split(QLatin1Char(' '));
        QCOMPARE(sorted(Qt::AscendingOrder), expected);
        std::reverse(expected.begin(), expected.end());
        if (column == "title"_s && names.contains("abc"_s)) // equal ones stay as appended
            std::iter_swap(expected.end() - 1, expected.end() - 2);
        QCOMPARE(sorted(Qt::DescendingOrder), expected);
    }

    void aSortShowsWhatReadingAgainShows_data()
    {
        const Table<QString> row;
        row("rows as they were imported", "");
        row("rows that were sorted before", "sort");
        row("some updated and marked", "update");
        row("some updated again in their new places", "update sort update");
        row("one removed", "remove");
        row("one removed after an update", "update remove");
        row("one typed into", "type");
        row("one appended that views don't see", "append");
        row("only the first ones fetched", "select");
    }
    void aSortShowsWhatReadingAgainShows()
    {
        const auto [before] = cells<QString>();
        const int title = m_model->fieldIndex("title"_s);
        for (int i = 0; i < 300; ++i)
            m_model->appendSong(song(QString::number(i * 7 % 300), i, i));
        m_model->totalRows();
        for (const QString &step : before.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            if (step == "append"_s)
                append("10a");
            else if (step == "select"_s)
                m_model->select();
            else if (step == "sort"_s)
                m_model->sort(m_model->fieldIndex("length"_s), Qt::DescendingOrder);
            else if (step == "remove"_s)
                QVERIFY(m_model->removeRow(7));
            else if (step == "type"_s)
                QVERIFY(m_model->setData(m_model->index(7, title), "5a"_s));
            else
                update({0, 7, 270});
        }
        m_model->sort(title, Qt::AscendingOrder);
        const QStringList rows = allRows();
        m_model->select();
        QCOMPARE(rows, allRows());
        QCOMPARE(rows.size(), m_model->songs());
    }

    void whoHearsThatRowsAreReadAgainStillFindsThem()
    {
        append("b a");
        m_model->sort(2, Qt::AscendingOrder);
        int id = 0;
        connect(m_model.get(), &QAbstractItemModel::modelAboutToBeReset, this,
                [&] { id = m_model->idOf(0); });
        m_model->select();
        QCOMPARE(id, 2);
    }

    void anUpdatedRowIsShownAsItIsNow()
    {
        append("b a");
        m_model->sort(2, Qt::AscendingOrder);
        QSignalSpy changed(m_model.get(), &QAbstractItemModel::dataChanged);
        m_model->updateSong(0, song("c"_s, 60, 99));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex(), m_model->index(0, 0));
        QCOMPARE(changed.first().at(1).toModelIndex(), m_model->index(0, 11));
        QCOMPARE(m_model->index(0, 2).data(Qt::EditRole).toString(), "c"_s);
        QCOMPARE(textOf(0), "2|MIDI|c|artist|genre|author|01:00|99|A-|/songs/a|a|0"_s);
        QVERIFY(m_model->index(0, 2).flags().testFlag(Qt::ItemIsEditable));
        QVERIFY(m_model->removeRow(0));
        QCOMPARE(textOf(0), "|||||||||||"_s);
    }

private:
    void update(const QVector<int> &rows)
    {
        for (const int row : rows) {
            m_model->updateSong(row, song(QStringLiteral("12%1").arg(row), -1, -1));
            m_model->setStatus(row, UserSongsRelTableModel::Updated);
            m_model->setMark(row, UserSongsRelTableModel::MarkedUpdated);
        }
    }
    /** With their marks. */
    QStringList allRows()
    {
        QStringList rows;
        for (int row = 0; row < m_model->totalRows(); ++row)
            rows.append(textOf(row) + QString::number(m_model->markOf(row)));
        return rows;
    }
};

QTEST_GUILESS_MAIN(tst_SongOrder)
#include "tst_songorder.moc"
