#pragma once

#include <QLabel>

namespace tarvel4 {

/**
 * Shows one line of plain text, shortened where it does not fit, in its middle by default, so that
 * no file name stretches a dialog off the screen; the tool tip then holds it whole.
 */
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    /** Where a text is shortened: a sentence at its end. */
    void setElideMode(Qt::TextElideMode mode) { m_elideMode = mode; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString elided() const;

    Qt::TextElideMode m_elideMode = Qt::ElideMiddle;
};

} // namespace tarvel4
