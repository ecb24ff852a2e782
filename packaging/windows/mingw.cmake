# Cross-building for 64-bit Windows with Debian's mingw-w64 and the static Qt in $TARVEL4_WINDOWS_QT.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(NOT "$ENV{TARVEL4_WINDOWS_QT}" STREQUAL "")
  set(TARVEL4_WINDOWS_QT "$ENV{TARVEL4_WINDOWS_QT}" CACHE PATH "The static Qt for Windows")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TARVEL4_WINDOWS_QT)
list(APPEND CMAKE_PREFIX_PATH "${TARVEL4_WINDOWS_QT}")
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 "${TARVEL4_WINDOWS_QT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# Qt's tools are the host's own, of the same version.
set(QT_HOST_PATH /usr CACHE PATH "Qt 6 of the host")
if(NOT QT_HOST_PATH_CMAKE_DIR)
  file(GLOB tools "${QT_HOST_PATH}/lib/*/cmake/Qt6CoreTools" "${QT_HOST_PATH}/lib/cmake/Qt6CoreTools")
  list(GET tools 0 tools)
  get_filename_component(tools "${tools}" DIRECTORY)
  set(QT_HOST_PATH_CMAKE_DIR "${tools}" CACHE PATH "Where the host's Qt 6 has its CMake files")
endif()
set(Qt6LinguistTools_DIR "${QT_HOST_PATH_CMAKE_DIR}/Qt6LinguistTools" CACHE PATH "lrelease, which the static Qt lacks")

set(TARVEL4_RCC_OPTIONS --no-zstd) # the host's rcc knows Zstandard, the static Qt does not

# No DLLs of the compiler beside the program; Qt's own link lines switch back to -Bdynamic, so the end says it again.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_CXX_STANDARD_LIBRARIES
  "-lkernel32 -luser32 -lgdi32 -lwinspool -lshell32 -lole32 -loleaut32 -luuid -lcomdlg32 -ladvapi32 -Wl,-Bstatic -lstdc++ -lwinpthread" CACHE STRING "")

# ctest's programs run under wine, in a prefix of the build's own (tests/under_wine).
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../../tests/under_wine" CACHE FILEPATH "What runs the tests")
