#include "library/songoutcome.h"

#include "library/companion.h"

namespace tarvel4 {

QString SongOutcome::sentence() const
{
    if (!Companion::isCompanion(cause.path) || Companion::isCompanion(path))
        return cause.sentence();
    return SongPath::fileName(cause.path) + QLatin1String(": ") + cause.sentence();
}

QString SongOutcome::problem() const
{
    return SongPath::fileName(path) + QLatin1String(": ") + sentence();
}

} // namespace tarvel4
