#pragma once

#include "ui/colours.h"

#include <QObject>

namespace tarvel4 {

/**
 * Keeps the program's own colours while it lives: when a desktop that turns light or dark paints
 * the application in its colours, or says by its portal that it is dark, ours of that scheme take
 * their place.
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
    Colours::Scheme scheme() const;
    void follow();
    void show();

    Colours::Scheme m_painted; ///< as the desktop painted the application
    bool m_isToldDark = false; ///< by the portal
};

} // namespace tarvel4
