#pragma once

#include "db/searchtexts.h"
#include "songs/songinfo.h"

#include <QHash>
#include <QSqlQuery>
#include <QSqlRelationalTableModel>

#include <functional>

namespace tarvel4 {

/**
 * The user's songs as the window's table shows them. Rows are addressed by their number in the
 * table's present order, fetched or not. Rows are written by statements of our own: the base class
 * would keep each in an edit cache that it walks at every insert and every change.
 */
class UserSongsRelTableModel : public QSqlRelationalTableModel
{
    Q_OBJECT

public:
    /** What the "status" column of a row tells about the last operation on its song. */
    enum SongStatus { Listed = 0, Updated = 1, Edited = 2, Failed = 3 };

    /** How a row is marked: unlike its status it tells a failure from an answer. A complete one
     * is a song that an update had nothing for: it looks like an updated one, and counts apart. */
    enum Mark {
        Unmarked,
        MarkedUpdated,
        MarkedComplete,
        MarkedEdited,
        MarkedLeftAlone,
        MarkedFailed
    };

    /** The mark of a row, in the column of its type; not valid for an unmarked one. */
    static constexpr int MarkRole = Qt::UserRole + 1;

    /** \a db is the connection that holds the table "usersongs". */
    UserSongsRelTableModel(QObject *parent, const QSqlDatabase &db);

    /** Labels the columns in the present language. */
    void setHeaders();

    /**
     * Appends a row with status 0. Views see the first rows at once, later ones in growing
     * portions, and all at the latest when a row is next addressed by number.
     */
    bool appendSong(const SongInfo &song);

    /** Rewrites title, artist, genre, author, length, tempo and key of a row. */
    void updateSong(int row, const SongInfo &song);

    void setStatus(int row, int status);
    int statusOf(int row);

    /**
     * Marks a row with how the last operation on its song ended. \a cause gives a text in the
     * present language: the row's tooltip, and what a screen reader says of it in place of the text
     * of the mark. Lives as long as the row, in memory only.
     */
    void setMark(int row, Mark mark, const std::function<QString()> &cause = {});
    /** What a mark means, in the present language. */
    static QString markText(Mark mark);

    QString fileNameOf(int row);
    QString shortNameOf(int row);
    int totalRows();
    QModelIndex cellIndex(int row, int column);
    int fileNameColumn() const { return m_fileName; }
    int statusColumn() const { return m_status; }
    /** Those that a reader compares digit by digit. */
    QVector<int> numberColumns() const { return {m_length, m_userBpm}; }

    /** Songs in the table, whether views see them already or not. */
    int songs() const;
    /** How many of them have a mark. */
    int marked(Mark mark) const { return m_marked[mark]; }

    // What the table shows of its rows is asked for by their numbers, and fetches none.
    int idOf(int row) const;
    Mark markOf(int row) const;
    /** True where the row's shown texts and its path have all of the words, which are folded. */
    bool matches(int row, const QStringList &words) const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    bool select() override;
    bool selectRow(int row) override;
    bool removeRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    void setSort(int column, Qt::SortOrder order) override;
    void sort(int column, Qt::SortOrder order) override;

protected:
    /** Numbers as numbers, times as times, texts without regard to case; equal ones as appended. */
    QString orderByClause() const override;
    QModelIndex indexInQuery(const QModelIndex &item) const override;

private:
    struct RowMark
    {
        Mark mark;
        std::function<QString()> cause;
    };

    QVariant markData(const QModelIndex &index, int role) const;
    bool reorder();
    void readAppended();
    void fetchAll();
    void readTexts(int row) const;
    void setMarkOf(int id, const RowMark &mark);
    void writeRow(int row, QSqlQuery &statement);

    int m_type;
    int m_title;
    int m_artist;
    int m_genre;
    int m_author;
    int m_length;
    int m_userBpm;
    int m_key;
    int m_fileName;
    int m_shortName;
    int m_status;

    QSqlQuery m_insert;
    QSqlQuery m_update;
    QSqlQuery m_updateStatus;
    QSqlQuery m_read;
    int m_appended = 0; ///< rows appended since views last saw them
    int m_shown = 0; ///< rows that views saw then
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    bool m_isEditedByBase = false; ///< since the rows were read
    QHash<int, QVector<QVariant>> m_changed; ///< rows that were read again since then, by their ids
    QVector<int> m_places; ///< of the rows in the query; as they are there where it is empty
    QHash<int, RowMark> m_marks; ///< by the id of the row
    int m_marked[MarkedFailed + 1] = {}; ///< rows that have each mark
    mutable SearchTexts m_texts; ///< what is missing is read
};

} // namespace tarvel4
