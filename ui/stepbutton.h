#pragma once

#include <QLabel>
#include <QToolButton>

namespace tarvel4 {

class StepCaption;

/**
 * One of the window's steps: a large button, picture and words side by side, all of which can be
 * pressed. The words are its text, or a caption that lies on it.
 */
class StepButton : public QToolButton
{
    Q_OBJECT

public:
    explicit StepButton(QWidget *parent = nullptr);

    /** Lets the words of a label, which covers the button, be the button's. */
    void setCaption(StepCaption *caption);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /** The largest size, in points, in which the words have room now. */
    qreal largestTextSize() const;
    /** Shows the words in a size that is not the font's. */
    void setTextSize(qreal points);
    QFont wordsFont() const { return fontOf(m_textSize); }
    /** Where the words are, in points of the button. */
    QRect wordsRect() const;

    /** Draws the words where they belong: for the caption too, which covers the button. */
    void drawWords(QPainter &painter, const QPalette &colours, QPalette::ColorRole role) const;

Q_SIGNALS:
    /** The words may have room for another size. */
    void roomChanged();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString words() const;
    QFont fontOf(qreal points) const;
    QRect insideFrame() const;
    QRect pictureRect() const;
    bool hasRoom(qreal points, const QSize &room) const;
    QSize sizeFor(int pictureWidth, int wordsWidth, qreal points) const;
    QSize frameSize() const;

    StepCaption *m_caption = nullptr;
    qreal m_textSize = 0; ///< the font's where it is 0
};

/** The words on a step; a click on them goes to the step. */
class StepCaption : public QLabel
{
    Q_OBJECT

public:
    explicit StepCaption(QWidget *parent = nullptr);

    QSize sizeHint() const override { return {}; } // the step has its size
    QSize minimumSizeHint() const override { return {}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    friend class StepButton;

    StepButton *m_step = nullptr;
};

/** Gives the words of several steps one size: the largest for which all of them have room. */
void shareTextSize(const QList<StepButton *> &steps);

} // namespace tarvel4
