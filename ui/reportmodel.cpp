#include "ui/reportmodel.h"

#include "ui/plaintext.h"

#include <QDir>

#include <algorithm>

namespace tarvel4 {

void ReportModel::setReport(const JobReport &report)
{
    beginResetModel();
    m_report = report;
    m_first = 0;
    m_count = static_cast<int>(report.entries().size());
    endResetModel();
}

void ReportModel::setGroup(std::optional<JobReport::Group> group)
{
    const QVector<JobReport::Entry> &entries = m_report.entries();
    beginResetModel();
    m_first = 0;
    m_count = static_cast<int>(entries.size());
    if (group) {
        const auto first =
            std::find_if(entries.cbegin(), entries.cend(),
                         [group](const JobReport::Entry &entry) { return entry.group == *group; });
        m_first = static_cast<int>(first - entries.cbegin());
        m_count = m_report.count(*group);
    }
    endResetModel();
}

void ReportModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    if (m_count > 0)
        Q_EMIT dataChanged(index(0, 0), index(m_count - 1, ColumnCount - 1));
}

QString ReportModel::pathOf(const QModelIndex &index) const
{
    return index.isValid() ? entryOf(index).path : QString();
}

int ReportModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

int ReportModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

QVariant ReportModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const JobReport::Entry &entry = entryOf(index);
    if (role == Qt::ToolTipRole)
        return PlainText::toolTip(index.column() == Song ? QDir::toNativeSeparators(entry.path)
                                                         : data(index).toString());
    switch (index.column()) {
    case Result:
        return m_report.word(entry.group, true);
    case Song:
        return SongPath::fileName(entry.path);
    case Cause:
        return entry.sentence();
    default:
        return {};
    }
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Result:
        return tr("Esito");
    case Song:
        return tr("Nome file");
    case Cause:
        return tr("Dettagli");
    default:
        return {};
    }
}

const JobReport::Entry &ReportModel::entryOf(const QModelIndex &index) const
{
    return m_report.entries().at(m_first + index.row());
}

} // namespace tarvel4
