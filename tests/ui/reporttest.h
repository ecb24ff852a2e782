#pragma once

#include "tests/ui/undotest.h"
#include "ui/reportpanel.h"

namespace tarvel4 {

/** A test of the reports that the window gives of its jobs. */
class ReportTest : public UndoTest
{
protected:
    ReportPanel *panel() const { return find<ReportPanel>("reportPanel"); }
    QTableView *list() const { return find<QTableView>("reportTableView"); }
    void pressEnterOn(int row, Qt::Key key = Qt::Key_Return) const
    {
        QVERIFY(activate(*m_window));
        list()->setFocus();
        list()->setCurrentIndex(list()->model()->index(row, 0));
        QTest::keyClick(list(), key);
    }
    QString heading() const { return find<QLabel>("reportHeadingLabel")->text(); }
    QString hint() const { return find<QLabel>("reportHintLabel")->text(); }
    int rows() const { return list()->model()->rowCount(); }
    QString cell(int row, int column) const
    {
        return list()->model()->index(row, column).data().toString();
    }
};

} // namespace tarvel4
