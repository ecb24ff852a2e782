#pragma once

#include <QObject>

namespace tarvel4 {

/**
 * Keeps the program's own colours while it lives: when a desktop that turns light or dark paints
 * the application in its colours, ours of that scheme take their place.
 */
class SchemeFollower : public QObject
{
    Q_OBJECT

public:
    /** Colours the application as the desktop is now. */
    explicit SchemeFollower(QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();
};

} // namespace tarvel4
