#pragma once

#include <QString>
#include <QVector>

QT_BEGIN_NAMESPACE
class QSqlDatabase;
QT_END_NAMESPACE

namespace tarvel4 {

/** What SQLite is to sort songs by, where the stored values are not in a reader's order. */
namespace SortOrder {

/** The texts of a column without regard to case and accents, as they are now in "usersongs". */
QString ofTexts(const QString &column, const QSqlDatabase &db);

/** The ids of "usersongs" by an ORDER BY clause, which may be empty. */
QVector<int> idsBy(const QString &orderBy, const QSqlDatabase &db);

/** "mm:ss" whose minutes have two digits or more. */
QString ofTimes(const QString &column);

} // namespace SortOrder

} // namespace tarvel4
