#pragma once

#include <QTableView>

namespace tarvel4 {

/** A song table that tells which of its rows the mouse is over. */
class SongTableView : public QTableView
{
    Q_OBJECT

public:
    explicit SongTableView(QWidget *parent = nullptr);

    /** -1 for none. */
    int hoveredRow() const { return m_hoveredRow; }

protected:
    bool viewportEvent(QEvent *event) override;

private:
    void setHoveredRow(int row);
    void updateRow(int row);

    int m_hoveredRow = -1;
};

} // namespace tarvel4
