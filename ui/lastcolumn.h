#pragma once

#include <QObject>

QT_BEGIN_NAMESPACE
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

/**
 * Gives the last column of a table what the others leave, but never less than it was given: a
 * header's own stretching would squeeze it as soon as the others take all.
 */
class LastColumn : public QObject
{
    Q_OBJECT

public:
    explicit LastColumn(QTableView &table);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int lastShown() const;
    void fit();

    QTableView &m_table;
    int m_least = 0;
    bool m_isFitting = false;
};

} // namespace tarvel4
