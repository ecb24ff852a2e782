#pragma once

#include <QActionGroup>

QT_BEGIN_NAMESPACE
class QHeaderView;
class QMenu;
QT_END_NAMESPACE

namespace tarvel4 {

/** Sorts a table by an entry for each of its columns, as a click on their headers does: for keys
 * and for screen readers, which do not get there. */
class SortMenu : public QObject
{
    Q_OBJECT

public:
    /** Adds itself to the end of \a tools; both must outlive it. */
    SortMenu(QHeaderView &header, QMenu &tools);

    /** Says everything in the present language, which the headers have already. */
    void retranslate();

private:
    void addEntry(QActionGroup &group, int value);
    void tick();

    QHeaderView &m_header;
    QMenu *m_menu;
    QActionGroup m_columns;
    QActionGroup m_orders;
};

} // namespace tarvel4
