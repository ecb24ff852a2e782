#include "ui/lastcolumn.h"

#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>

namespace tarvel4 {

LastColumn::LastColumn(QTableView &table)
    : QObject(&table)
    , m_table(table)
{
    table.viewport()->installEventFilter(this);
    connect(table.horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int, int width) {
                if (m_isFitting)
                    return;
                if (column == lastShown())
                    m_least = width;
                fit();
            });
}

bool LastColumn::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        fit();
    return QObject::eventFilter(watched, event);
}

int LastColumn::lastShown() const
{
    const QHeaderView &header = *m_table.horizontalHeader();
    for (int place = header.count() - 1; place >= 0; --place) {
        if (!header.isSectionHidden(header.logicalIndex(place)))
            return header.logicalIndex(place);
    }
    return -1;
}

void LastColumn::fit()
{
    const int last = lastShown();
    if (last < 0)
        return;
    QHeaderView &header = *m_table.horizontalHeader();
    const int others = header.length() - header.sectionSize(last);
    const QScopedValueRollback<bool> fitting(m_isFitting, true);
    header.resizeSection(last, qMax(m_least, m_table.viewport()->width() - others));
}

} // namespace tarvel4
