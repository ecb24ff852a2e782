#pragma once

#include "library/jobreport.h"

#include <QAbstractTableModel>

#include <optional>

namespace tarvel4 {

/** The songs of a report as a table: outcome, name, cause. */
class ReportModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Result, Song, Cause, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void setReport(const JobReport &report);
    const JobReport &report() const { return m_report; }
    /** Lists the songs of one group, or all. */
    void setGroup(std::optional<JobReport::Group> group);
    /** Has its texts read again in the present language. */
    void retranslate();

    /** Empty where the row stands for no song. */
    QString pathOf(const QModelIndex &index) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    const JobReport::Entry &entryOf(const QModelIndex &index) const;

    JobReport m_report{JobReport::Job::Import};
    int m_first = 0; ///< of the entries on show, which stand together
    int m_count = 0;
};

} // namespace tarvel4
