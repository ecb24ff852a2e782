#include "ui/readerpace.h"

#include <QAccessible>

namespace tarvel4 {

bool ReaderPace::isDue()
{
    constexpr int interval = 250; // milliseconds
    if (QAccessible::isActive() && m_sinceLast.isValid() && !m_sinceLast.hasExpired(interval))
        return false;
    m_sinceLast.start();
    return true;
}

} // namespace tarvel4
