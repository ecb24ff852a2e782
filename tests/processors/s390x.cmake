# Builds for s390x, whose words begin with the most significant byte, in the root that tests/processors/run makes. What is built runs
# here, in qemu, and so this is no cross build to CMake.
set(CMAKE_C_COMPILER s390x-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER s390x-linux-gnu-g++)
get_filename_component(CMAKE_SYSROOT "${CMAKE_CURRENT_LIST_DIR}/../../build/s390x/root" ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-s390x-static -L "${CMAKE_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
