#pragma once

#include <QTableView>

namespace tarvel4 {

/** A song table of which rows may be hidden, and that tells which one the mouse is over. */
class SongTableView : public QTableView
{
    Q_OBJECT

public:
    explicit SongTableView(QWidget *parent = nullptr);

    /** -1 for none. */
    int hoveredRow() const { return m_hoveredRow; }

    /** Goes to what is typed; never to a hidden row. */
    void keyboardSearch(const QString &typed) override;

protected:
    bool viewportEvent(QEvent *event) override;

private:
    void setHoveredRow(int row);
    void updateRow(int row);

    int m_hoveredRow = -1;
};

} // namespace tarvel4
