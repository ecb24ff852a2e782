#pragma once

#include <QElapsedTimer>
#include <QString>

namespace tarvel4 {

/** The progress of a job as one line of standard error that is redrawn in place. */
class ProgressLine
{
public:
    explicit ProgressLine(bool enabled)
        : m_enabled(enabled)
    {}
    ~ProgressLine() { end(); }
    Q_DISABLE_COPY(ProgressLine)

    /** A \a maximum of 0 is one that is not known yet. */
    void begin(const QString &label, int maximum);
    void setMaximum(int maximum);
    void setValue(int value);
    void end();

    /** Clears the line for other output; the next value draws it again. */
    void hide();

private:
    void draw();
    void show(const QString &text);
    QString text() const;

    bool m_enabled;
    bool m_isRunning = false;
    QString m_label;
    int m_maximum = 0;
    int m_value = 0;
    int m_shownLength = 0;
    QElapsedTimer m_sinceBegin;
    QElapsedTimer m_sinceDrawn;
};

} // namespace tarvel4
