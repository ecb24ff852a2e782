#pragma once

#include <QElapsedTimer>

namespace tarvel4 {

/** Holds back most steps of a progress while a screen reader listens, which would otherwise be told
 * of each one of thousands. */
class ReaderPace
{
public:
    /** Whether the next step is to be shown; always where nobody listens. */
    bool isDue();

private:
    QElapsedTimer m_sinceLast;
};

} // namespace tarvel4
