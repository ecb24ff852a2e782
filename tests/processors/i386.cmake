# Builds for 32-bit x86, in the root that tests/processors/run makes. What is built runs here, with the loader and the libraries of
# that root, and so this is no cross build to CMake.
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
get_filename_component(CMAKE_SYSROOT "${CMAKE_CURRENT_LIST_DIR}/../../build/i386/root" ABSOLUTE)
string(CONCAT CMAKE_EXE_LINKER_FLAGS_INIT
  "-Wl,--dynamic-linker=${CMAKE_SYSROOT}/lib/ld-linux.so.2 "
  "-Wl,--disable-new-dtags,-rpath=${CMAKE_SYSROOT}/lib/i386-linux-gnu:${CMAKE_SYSROOT}/usr/lib/i386-linux-gnu")
set(CMAKE_CROSSCOMPILING_EMULATOR env "QT_PLUGIN_PATH=${CMAKE_SYSROOT}/usr/lib/i386-linux-gnu/qt5/plugins")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
