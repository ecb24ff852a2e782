#include "db/usersongsreltablemodel.h"

#include "db/sortorder.h"

#include <QSqlIndex>

#include <algorithm>
#include <utility>

namespace tarvel4 {

namespace {

constexpr int idColumn = 0;
constexpr int shownAtOnce = 32; // rows; reading the table again at each append is quick so far

/** "mm:ss", the minutes with as many digits as they need; empty for an unknown length. */
QString lengthText(int seconds)
{
    if (seconds < 0)
        return {};
    return QStringLiteral("%1:%2")
        .arg(seconds / 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

UserSongsRelTableModel::UserSongsRelTableModel(QObject *parent, const QSqlDatabase &db)
    : QSqlRelationalTableModel(parent, db)
    , m_insert(db)
    , m_update(db)
    , m_updateStatus(db)
    , m_read(db)
{
    setTable(QStringLiteral("usersongs"));
    setEditStrategy(QSqlTableModel::OnFieldChange);
    m_type = fieldIndex(QStringLiteral("type"));
    m_title = fieldIndex(QStringLiteral("title"));
    m_artist = fieldIndex(QStringLiteral("artist"));
    m_genre = fieldIndex(QStringLiteral("genre"));
    m_author = fieldIndex(QStringLiteral("author"));
    m_length = fieldIndex(QStringLiteral("length"));
    m_userBpm = fieldIndex(QStringLiteral("userbpm"));
    m_key = fieldIndex(QStringLiteral("key"));
    m_fileName = fieldIndex(QStringLiteral("filename"));
    m_shortName = fieldIndex(QStringLiteral("shortname"));
    m_status = fieldIndex(QStringLiteral("status"));

    connect(this, &QSqlTableModel::beforeUpdate, this, [this] { m_isEditedByBase = true; });

    m_insert.prepare(QStringLiteral(
        "insert into usersongs (type, title, artist, genre, author, length, userbpm, key, "
        "filename, shortname, status) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    m_update.prepare(QStringLiteral(
        "update usersongs set title = ?, artist = ?, genre = ?, author = ?, length = ?, "
        "userbpm = ?, key = ? where id = ?"));
    m_updateStatus.prepare(QStringLiteral("update usersongs set status = ? where id = ?"));
    m_read.prepare(QStringLiteral("select * from usersongs where id = ?"));
}

void UserSongsRelTableModel::setHeaders()
{
    const auto label = [this](int column, const QString &text) {
        setHeaderData(column, Qt::Horizontal, text, Qt::EditRole);
    };
    label(idColumn, tr("Num"));
    label(m_type, tr("Formato"));
    label(m_title, tr("Titolo"));
    label(m_artist, tr("Artista"));
    label(m_genre, tr("Genere"));
    label(m_author, tr("Autore"));
    label(m_length, tr("Durata"));
    label(m_userBpm, tr("Bpm"));
    label(m_key, tr("Tonalita'")); // required: an apostrophe for the accent
    label(m_fileName, QString());
    label(m_shortName, tr("Nome file"));
    label(m_status, QString());
}

bool UserSongsRelTableModel::appendSong(const SongInfo &song)
{
    // required: an unknown tempo stays negative here, while updateSong() makes it 0
    const QVariant values[] = {song.format,
                               song.title,
                               song.artist,
                               song.genre,
                               song.author,
                               lengthText(song.length),
                               song.bpm,
                               song.key,
                               song.filename,
                               song.shortname,
                               static_cast<int>(Listed)};
    int position = 0;
    QStringList shown;
    for (const QVariant &value : values) {
        m_insert.bindValue(position++, value);
        shown.append(value.toString());
    }
    if (!m_insert.exec())
        return false;
    const int id = m_insert.lastInsertId().toInt();
    m_insert.finish();
    setMarkOf(id, {Unmarked, {}}); // ids begin anew in a cleared table
    shown.removeLast(); // the status
    m_texts.insert(id, shown);
    ++m_appended;
    if (rowCount() < shownAtOnce || m_appended > m_shown)
        readAppended();
    return true;
}

void UserSongsRelTableModel::readAppended()
{
    m_shown = rowCount() == 0 ? m_appended : m_shown + m_appended;
    m_appended = 0;
    select();
}

QModelIndex UserSongsRelTableModel::indexInQuery(const QModelIndex &item) const
{
    const int row = m_places.value(item.row(), item.row());
    return QSqlRelationalTableModel::indexInQuery(
        createIndex(row, item.column(), item.internalPointer()));
}

QVariant UserSongsRelTableModel::data(const QModelIndex &index, int role) const
{
    const bool isMarkRole =
        role == Qt::ToolTipRole || role == Qt::AccessibleTextRole || role == MarkRole;
    if (isMarkRole && index.column() == m_type && !m_marks.isEmpty())
        return markData(index, role);
    if (!m_changed.isEmpty() && (role == Qt::DisplayRole || role == Qt::EditRole)) {
        const auto changed = m_changed.constFind(idOf(index.row()));
        if (changed != m_changed.constEnd())
            return changed->value(index.column());
    }
    return QSqlRelationalTableModel::data(index, role);
}

QVariant UserSongsRelTableModel::markData(const QModelIndex &index, int role) const
{
    const auto found = m_marks.constFind(idOf(index.row()));
    if (found == m_marks.constEnd())
        return {};
    if (role == MarkRole)
        return static_cast<int>(found->mark);
    const QString cause = found->cause ? found->cause() : QString();
    if (role == Qt::ToolTipRole)
        return cause;
    return QStringLiteral("%1, %2").arg(index.data().toString(),
                                        cause.isEmpty() ? markText(found->mark) : cause);
}

QString UserSongsRelTableModel::markText(Mark mark)
{
    switch (mark) {
    case MarkedUpdated:
    case MarkedComplete:
        return tr("Aggiornata dal database K-Varo");
    case MarkedEdited:
        return tr("Modificata a mano");
    case MarkedLeftAlone:
        return tr("Non aggiornata");
    case MarkedFailed:
        return tr("Non riuscita");
    default:
        return {};
    }
}

void UserSongsRelTableModel::fetchAll()
{
    if (m_appended > 0)
        readAppended();
    while (canFetchMore())
        fetchMore();
}

QModelIndex UserSongsRelTableModel::cellIndex(int row, int column)
{
    fetchAll();
    return index(row, column);
}

/** Asked for each row of the table at once; nothing changes an id, so the rows as read have it. */
int UserSongsRelTableModel::idOf(int row) const
{
    return QSqlQueryModel::data(createIndex(row, idColumn), Qt::EditRole).toInt();
}

UserSongsRelTableModel::Mark UserSongsRelTableModel::markOf(int row) const
{
    return m_marks.value(idOf(row), {Unmarked, {}}).mark;
}

int UserSongsRelTableModel::songs() const
{
    QSqlQuery count(QStringLiteral("select count(*) from usersongs"), database());
    return count.next() ? count.value(0).toInt() : 0;
}

bool UserSongsRelTableModel::matches(int row, const QStringList &words) const
{
    readTexts(row);
    return m_texts.matches(idOf(row), words);
}

/** All but the id and the status. */
void UserSongsRelTableModel::readTexts(int row) const
{
    if (m_texts.contains(idOf(row)))
        return;
    QStringList texts;
    for (int column = m_type; column <= m_shortName; ++column)
        texts.append(index(row, column).data(Qt::EditRole).toString());
    m_texts.insert(idOf(row), texts);
}

bool UserSongsRelTableModel::select()
{
    beginResetModel(); // who hears of it still sees the rows in their places
    m_places.clear();
    m_changed.clear();
    const bool isDone = QSqlRelationalTableModel::select();
    endResetModel();
    m_isEditedByBase = false;
    if (rowCount() == 0) { // ids begin anew
        m_marks.clear();
        std::fill(std::begin(m_marked), std::end(m_marked), 0);
        m_texts.clear();
    }
    return isDone;
}

bool UserSongsRelTableModel::removeRows(int row, int count, const QModelIndex &parent)
{
    QVector<int> ids;
    for (int i = row; i < row + count; ++i)
        ids.append(idOf(i));
    if (!QSqlRelationalTableModel::removeRows(row, count, parent))
        return false;
    for (const int id : std::as_const(ids)) {
        setMarkOf(id, {Unmarked, {}});
        m_texts.remove(id);
    }
    return true;
}

void UserSongsRelTableModel::setSort(int column, Qt::SortOrder order)
{
    m_sortColumn = column;
    m_sortOrder = order;
    QSqlRelationalTableModel::setSort(column, order);
}

void UserSongsRelTableModel::sort(int column, Qt::SortOrder order)
{
    setSort(column, order);
    if (!reorder())
        select();
}

/** Rows that are all here take their new places, which is quicker than reading them again. */
bool UserSongsRelTableModel::reorder()
{
    // the base class keeps a row that it edited by its number
    if (m_isEditedByBase || canFetchMore())
        return false;
    QHash<int, int> placeOf;
    for (int row = 0; row < rowCount(); ++row)
        placeOf.insert(idOf(row), m_places.value(row, row));
    QVector<int> places;
    for (const int id : SortOrder::idsBy(orderByClause(), database()))
        places.append(placeOf.take(id));
    if (!placeOf.isEmpty() || places.size() != rowCount())
        return false;
    beginResetModel();
    m_places = places;
    endResetModel();
    return true;
}

QString UserSongsRelTableModel::orderByClause() const
{
    const QString name = record().fieldName(m_sortColumn);
    if (name.isEmpty())
        return {};
    const QString column = QStringLiteral("usersongs.\"%1\"").arg(name);
    QString by = column;
    if (m_sortColumn == m_length)
        by = SortOrder::ofTimes(column);
    else if (m_sortColumn != idColumn && m_sortColumn != m_userBpm && m_sortColumn != m_status)
        by = SortOrder::ofTexts(column, database());
    const QString direction =
        m_sortOrder == Qt::AscendingOrder ? QStringLiteral("ASC") : QStringLiteral("DESC");
    return QStringLiteral("ORDER BY %1 %2, usersongs.id").arg(by, direction);
}

/** Executes a prepared statement whose last value is the row's id, and reads the row again. */
void UserSongsRelTableModel::writeRow(int row, QSqlQuery &statement)
{
    const QModelIndex id = cellIndex(row, idColumn);
    if (!id.isValid())
        return;
    statement.bindValue(static_cast<int>(statement.boundValues().size()) - 1,
                        id.data(Qt::EditRole));
    if (statement.exec()) {
        statement.finish();
        selectRow(row);
    }
}

/** The base class would keep the row by its number, and a sort would read all of them again. */
bool UserSongsRelTableModel::selectRow(int row)
{
    const int id = idOf(row);
    m_read.bindValue(0, id);
    if (!m_read.exec() || !m_read.next()) {
        m_changed.remove(id);
        return QSqlRelationalTableModel::selectRow(row);
    }
    QVector<QVariant> values;
    for (int column = 0; column < columnCount(); ++column)
        values.append(m_read.value(column));
    m_changed.insert(id, values);
    m_read.finish();
    Q_EMIT headerDataChanged(Qt::Vertical, row, row);
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
    return true;
}

void UserSongsRelTableModel::updateSong(int row, const SongInfo &song)
{
    m_texts.remove(idOf(cellIndex(row, idColumn).row()));
    m_update.bindValue(0, song.title);
    m_update.bindValue(1, song.artist);
    m_update.bindValue(2, song.genre);
    m_update.bindValue(3, song.author);
    m_update.bindValue(4, lengthText(song.length));
    m_update.bindValue(5, qMax(song.bpm, 0)); // required: unlike appendSong()
    m_update.bindValue(6, song.key);
    m_update.bindValue(7, QVariant());
    writeRow(row, m_update);
    readTexts(row); // a search finds its texts ready
}

void UserSongsRelTableModel::setStatus(int row, int status)
{
    m_updateStatus.bindValue(0, status);
    m_updateStatus.bindValue(1, QVariant());
    writeRow(row, m_updateStatus);
}

void UserSongsRelTableModel::setMarkOf(int id, const RowMark &mark)
{
    const auto old = m_marks.find(id);
    if (old != m_marks.end()) {
        --m_marked[old->mark];
        m_marks.erase(old);
    }
    if (mark.mark != Unmarked) {
        ++m_marked[mark.mark];
        m_marks.insert(id, mark);
    }
}

void UserSongsRelTableModel::setMark(int row, Mark mark, const std::function<QString()> &cause)
{
    const QModelIndex cell = cellIndex(row, m_type);
    if (!cell.isValid())
        return;
    setMarkOf(idOf(row), {mark, cause});
    Q_EMIT dataChanged(cell, cell, {Qt::ToolTipRole, Qt::AccessibleTextRole, MarkRole});
}

int UserSongsRelTableModel::statusOf(int row) // required, although nothing calls it
{
    return cellIndex(row, m_status).data(Qt::EditRole).toInt();
}

QString UserSongsRelTableModel::fileNameOf(int row)
{
    return cellIndex(row, m_fileName).data(Qt::EditRole).toString();
}

QString UserSongsRelTableModel::shortNameOf(int row)
{
    return cellIndex(row, m_shortName).data(Qt::EditRole).toString();
}

int UserSongsRelTableModel::totalRows()
{
    fetchAll();
    return rowCount();
}

} // namespace tarvel4
