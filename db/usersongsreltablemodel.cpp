#include "db/usersongsreltablemodel.h"

#include "db/foldedtext.h"
#include "db/sortorder.h"

#include <QScopedValueRollback>
#include <QSqlIndex>

#include <algorithm>

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

    const auto edited = [this] { m_isEditedByBase = true; };
    connect(this, &QSqlTableModel::primeInsert, this, edited);
    connect(this, &QSqlTableModel::beforeUpdate, this, edited);
    connect(this, &QSqlTableModel::beforeDelete, this, edited);

    m_insert.prepare(QStringLiteral(
        "insert into usersongs (type, title, artist, genre, author, length, userbpm, key, "
        "filename, shortname, status) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    m_update.prepare(QStringLiteral(
        "update usersongs set title = ?, artist = ?, genre = ?, author = ?, length = ?, "
        "userbpm = ?, key = ? where id = ?"));
    m_updateStatus.prepare(QStringLiteral("update usersongs set status = ? where id = ?"));
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
    for (const QVariant &value : values)
        m_insert.bindValue(position++, value);
    if (!m_insert.exec())
        return false;
    const int id = m_insert.lastInsertId().toInt();
    m_insert.finish();
    setMarkOf(id, {Unmarked, {}}); // ids begin anew in a cleared table
    QStringList shown;
    for (const QVariant &value : values)
        shown.append(value.toString());
    shown.removeLast(); // the status
    forgetTexts(id);
    m_searchTexts.insert(id, FoldedText::of(shown.join(QLatin1Char('\n'))));
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

int UserSongsRelTableModel::rowCount(const QModelIndex &parent) const
{
    return QSqlQueryModel::rowCount(parent);
}

QModelIndex UserSongsRelTableModel::indexInQuery(const QModelIndex &item) const
{
    return QSqlQueryModel::indexInQuery(item);
}

/** The base class walks its cache of edits, in which each row is that was read again. */
Qt::ItemFlags UserSongsRelTableModel::flags(const QModelIndex &index) const
{
    if (!index.isValid() || m_isEditedByBase)
        return QSqlRelationalTableModel::flags(index);
    return QSqlQueryModel::flags(index) | Qt::ItemIsEditable;
}

QVariant UserSongsRelTableModel::data(const QModelIndex &index, int role) const
{
    const bool isMarkRole =
        role == Qt::ToolTipRole || role == Qt::AccessibleTextRole || role == MarkRole;
    if (isMarkRole && index.column() == m_type && !m_marks.isEmpty())
        return markData(index, role);
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

QString UserSongsRelTableModel::textAt(int row, int column)
{
    return cellIndex(row, column).data(Qt::EditRole).toString();
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
    if (m_words != words) {
        m_words = words;
        m_found.clear();
    }
    const int id = idOf(row);
    const auto known = m_found.constFind(id);
    if (known != m_found.constEnd())
        return *known;
    QString &text = m_searchTexts[id];
    if (text.isEmpty())
        text = searchText(row);
    const bool isFound = std::all_of(words.begin(), words.end(),
                                     [&text](const QString &word) { return text.contains(word); });
    m_found.insert(id, isFound);
    return isFound;
}

/** All but the id and the status; a line break keeps a word from reaching over two of them. */
QString UserSongsRelTableModel::searchText(int row) const
{
    QStringList texts;
    for (int column = m_type; column <= m_shortName; ++column)
        texts.append(index(row, column).data(Qt::EditRole).toString());
    return FoldedText::of(texts.join(QLatin1Char('\n')));
}

bool UserSongsRelTableModel::select()
{
    const bool isDone = QSqlRelationalTableModel::select();
    m_isEditedByBase = false;
    if (rowCount() == 0) { // ids begin anew
        m_marks.clear();
        std::fill(std::begin(m_marked), std::end(m_marked), 0);
        m_searchTexts.clear();
        m_found.clear();
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
    for (const int id : qAsConst(ids)) {
        setMarkOf(id, {Unmarked, {}});
        forgetTexts(id);
    }
    return true;
}

void UserSongsRelTableModel::setSort(int column, Qt::SortOrder order)
{
    m_sortColumn = column;
    m_sortOrder = order;
    QSqlRelationalTableModel::setSort(column, order);
}

QString UserSongsRelTableModel::orderByClause() const
{
    const QString name = record().fieldName(m_sortColumn);
    if (name.isEmpty() || m_readsOneRow)
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
        const QScopedValueRollback<bool> oneRow(m_readsOneRow, true);
        selectRow(row);
    }
}

void UserSongsRelTableModel::updateSong(int row, const SongInfo &song)
{
    forgetTexts(idOf(cellIndex(row, idColumn).row()));
    m_update.bindValue(0, song.title);
    m_update.bindValue(1, song.artist);
    m_update.bindValue(2, song.genre);
    m_update.bindValue(3, song.author);
    m_update.bindValue(4, lengthText(song.length));
    m_update.bindValue(5, qMax(song.bpm, 0)); // required: unlike appendSong()
    m_update.bindValue(6, song.key);
    m_update.bindValue(7, QVariant());
    writeRow(row, m_update);
    if (QString &text = m_searchTexts[idOf(row)]; text.isEmpty())
        text = searchText(row); // a search finds its texts ready
}

/** The texts of a row that a search looks at are others from now on. */
void UserSongsRelTableModel::forgetTexts(int id)
{
    m_searchTexts.remove(id);
    m_found.remove(id);
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

int UserSongsRelTableModel::statusOf(int row)
{
    return cellIndex(row, m_status).data(Qt::EditRole).toInt();
}

QString UserSongsRelTableModel::fileNameOf(int row)
{
    return textAt(row, m_fileName);
}

QString UserSongsRelTableModel::shortNameOf(int row)
{
    return textAt(row, m_shortName);
}

int UserSongsRelTableModel::totalRows()
{
    fetchAll();
    return rowCount();
}

} // namespace tarvel4
