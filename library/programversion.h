#pragma once

namespace tarvel4 {

/** The version of both programs, as CMakeLists.txt says it: the one place. */
const char *programVersion();

} // namespace tarvel4
