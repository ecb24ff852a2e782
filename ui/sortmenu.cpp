#include "ui/sortmenu.h"

#include <QHeaderView>
#include <QMenu>

namespace tarvel4 {

namespace {

/** Ticks the entry of a value, and no other of its group. */
void tickEntry(const QActionGroup &group, int value)
{
    for (QAction *entry : group.actions()) {
        if (entry->data() == value)
            entry->setChecked(true);
    }
}

/** Underlines in each text its first letter that no other one has underlined: the headers, in every
 * language, have no keys of their own. */
void giveKeys(const QList<QAction *> &entries)
{
    QString taken;
    for (QAction *entry : entries) {
        QString text = entry->text();
        int letter = 0;
        while (letter < text.size() && taken.contains(text.at(letter), Qt::CaseInsensitive))
            ++letter;
        taken += text.mid(letter, 1);
        entry->setText(text.insert(letter, QLatin1Char('&')));
    }
}

} // namespace

SortMenu::SortMenu(QHeaderView &header, QMenu &tools)
    : QObject(&header)
    , m_header(header)
    , m_columns(this)
    , m_orders(this)
{
    tools.addSeparator();
    m_menu = tools.addMenu(QString());
    m_menu->setObjectName(QStringLiteral("menuSort"));
    for (int column = 0; column < header.count(); ++column) {
        if (!header.isSectionHidden(column))
            addEntry(m_columns, column);
    }
    m_menu->addSeparator();
    addEntry(m_orders, Qt::AscendingOrder);
    addEntry(m_orders, Qt::DescendingOrder);

    connect(&m_columns, &QActionGroup::triggered, this, [this](const QAction *entry) {
        const int column = entry->data().toInt();
        if (column != m_header.sortIndicatorSection())
            m_header.setSortIndicator(column, Qt::AscendingOrder);
    });
    connect(&m_orders, &QActionGroup::triggered, this, [this](const QAction *entry) {
        m_header.setSortIndicator(m_header.sortIndicatorSection(),
                                  static_cast<Qt::SortOrder>(entry->data().toInt()));
    });
    connect(&header, &QHeaderView::sortIndicatorChanged, this, &SortMenu::tick);
    retranslate();
    tick();
}

void SortMenu::retranslate()
{
    m_menu->setTitle(tr("Ordina per"));
    for (QAction *entry : m_columns.actions())
        entry->setText(
            m_header.model()->headerData(entry->data().toInt(), Qt::Horizontal).toString());
    m_orders.actions().constFirst()->setText(tr("Crescente"));
    m_orders.actions().constLast()->setText(tr("Decrescente"));
    giveKeys(m_columns.actions() + m_orders.actions());
}

void SortMenu::addEntry(QActionGroup &group, int value)
{
    QAction *entry = m_menu->addAction(QString());
    entry->setCheckable(true);
    entry->setData(value);
    group.addAction(entry);
}

/** As the arrow on the headers says; the songs are as they were imported until somebody sorts. */
void SortMenu::tick()
{
    tickEntry(m_columns, m_header.sortIndicatorSection());
    const bool isSorted = m_columns.checkedAction();
    if (isSorted)
        tickEntry(m_orders, m_header.sortIndicatorOrder());
    m_orders.setEnabled(isSorted);
}

} // namespace tarvel4
