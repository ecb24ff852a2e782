#include "ui/previewmodel.h"

#include "library/fieldtexts.h"
#include "ui/plaintext.h"

#include <QDir>
#include <QFont>

namespace tarvel4 {

PreviewModel::PreviewModel(const JobReport &plan, QObject *parent)
    : QAbstractTableModel(parent)
    , m_plan(plan)
{
    list(std::nullopt);
}

void PreviewModel::setGroup(std::optional<JobReport::Group> group)
{
    beginResetModel();
    list(group);
    endResetModel();
}

void PreviewModel::list(std::optional<JobReport::Group> group)
{
    m_rows.clear();
    const QVector<JobReport::Entry> &entries = m_plan.entries();
    for (int entry = 0; entry < entries.size(); ++entry) {
        if (group && entries.at(entry).group != *group)
            continue;
        const int rows = qMax(1, static_cast<int>(entries.at(entry).changes.size()));
        for (int change = 0; change < rows; ++change)
            m_rows.append({entry, change});
    }
}

int PreviewModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int PreviewModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

QVariant PreviewModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows.at(index.row());
    const bool isOfTheSong = index.column() == Song || index.column() == Result;
    switch (role) {
    case Qt::DisplayRole: // the eye finds the song above; a screen reader reads it in each row
        return isOfTheSong && row.change > 0 ? QString() : textOf(row, index.column());
    case Qt::AccessibleTextRole:
        return textOf(row, index.column());
    case Qt::ToolTipRole:
        return PlainText::toolTip(tipOf(row, index.column()));
    case Qt::AccessibleDescriptionRole:
        if (index.column() == Result)
            return m_plan.entries().at(row.entry).sentence();
        return {};
    case Qt::FontRole:
        if (index.column() == Song) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    default:
        return {};
    }
}

QString PreviewModel::tipOf(const Row &row, int column) const
{
    const JobReport::Entry &entry = m_plan.entries().at(row.entry);
    if (column == Song)
        return QDir::toNativeSeparators(entry.path);
    return column == Result ? entry.sentence() : textOf(row, column);
}

QString PreviewModel::textOf(const Row &row, int column) const
{
    const JobReport::Entry &entry = m_plan.entries().at(row.entry);
    if (column == Song)
        return SongPath::fileName(entry.path);
    if (column == Result)
        return m_plan.word(entry.group, true);
    if (entry.changes.isEmpty())
        return column == After ? entry.sentence() : QString();
    const FieldChange &change = entry.changes.at(row.change);
    if (column == Field)
        return FieldTexts::nameOf(change.field);
    return FieldTexts::valueOf(change.field, column == Before ? change.before : change.after);
}

QVariant PreviewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Song:
        return tr("Nome file");
    case Result:
        return tr("Esito");
    case Field:
        return tr("Campo");
    case Before:
        return tr("Adesso");
    case After:
        return tr("Dopo");
    default:
        return {};
    }
}

} // namespace tarvel4
