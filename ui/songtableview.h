#pragma once

#include <QTableView>

namespace tarvel4 {

/** A song table that, while it is empty, says how songs get into it. */
class SongTableView : public QTableView
{
    Q_OBJECT

public:
    explicit SongTableView(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
};

} // namespace tarvel4
