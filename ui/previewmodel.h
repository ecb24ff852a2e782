#pragma once

#include "library/jobreport.h"

#include <QAbstractTableModel>

#include <optional>

namespace tarvel4 {

/** What a preview says as a table: a row for each field that would change, and one for each song
 * that stays as it is. */
class PreviewModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Song, Result, Field, Before, After, ColumnCount };

    explicit PreviewModel(const JobReport &plan, QObject *parent = nullptr);

    /** Lists the songs of one group, or all. */
    void setGroup(std::optional<JobReport::Group> group);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    struct Row
    {
        int entry;
        int change; ///< 0 also for a song without changes
    };

    void list(std::optional<JobReport::Group> group);
    QString tipOf(const Row &row, int column) const;
    QString textOf(const Row &row, int column) const;

    const JobReport m_plan;
    QVector<Row> m_rows;
};

} // namespace tarvel4
