#include "library/programversion.h"

namespace tarvel4 {

const char *programVersion()
{
    return TARVEL4_VERSION;
}

} // namespace tarvel4
