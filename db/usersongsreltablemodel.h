#pragma once

#include "songs/songinfo.h"

#include <QSqlRelationalTableModel>

/** The user's songs as the window's table shows them; rows are addressed by number, fetched or not.
 */
class UserSongsRelTableModel : public QSqlRelationalTableModel
{
    Q_OBJECT

public:
    /** What the "status" column of a row tells about the last operation on its song. */
    enum SongStatus { Listed = 0, Updated = 1, Edited = 2, Failed = 3 };

    UserSongsRelTableModel(QObject *parent, const QSqlDatabase &db);

    void setHeaders();
    bool appendSong(const SongInfo &song);
    void updateSong(int row, const SongInfo &song);
    void setStatus(int row, int status);
    int statusOf(int row);
    QString fileNameOf(int row);
    QString shortNameOf(int row);
    int totalRows();
    QModelIndex cellIndex(int row, int column);
    int fileNameColumn() const;
    int statusColumn() const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
};
