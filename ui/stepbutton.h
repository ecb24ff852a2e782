#pragma once

#include <QToolButton>

namespace tarvel4 {

/** A large tool button, picture and text side by side, whose text breaks into lines. */
class StepButton : public QToolButton
{
    Q_OBJECT

public:
    explicit StepButton(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QFont fontFor(const QSize &room) const;
    QSize sizeFor(int pictureWidth, int textWidth) const;
    QSize frameSize() const;
};

} // namespace tarvel4
