#pragma once

#include <QLabel>

namespace tarvel4 {

/**
 * Shows plain text that wraps, but neither at a hyphen within a word nor between a number and what
 * it counts. The label's own text, which a screen reader gets, stays as it is.
 */
class UnbrokenLabel : public QLabel
{
    Q_OBJECT

public:
    explicit UnbrokenLabel(QWidget *parent = nullptr);

    /** A text as it is shown: for others that wrap. */
    static QString unbroken(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QSize sizeFor(int width) const;
};

} // namespace tarvel4
