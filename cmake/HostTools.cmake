# For a build for another system: what of the same tree runs on this one. That makes the catalogue, and it is the tests that
# run the command line from a shell (tests/program), which then is the other system's under its emulator, and the command line
# that it is compared with.
include(ExternalProject)

set(TARVEL4_HOST_BUILD "${PROJECT_BINARY_DIR}/host")
set(host_targets make_catalogue)
if(TARVEL4_BUILD_TESTS)
  list(APPEND host_targets program_tests tarvel4soft-cli)
endif()
ExternalProject_Add(host_tools
  SOURCE_DIR "${PROJECT_SOURCE_DIR}"
  BINARY_DIR "${TARVEL4_HOST_BUILD}"
  PREFIX "${TARVEL4_HOST_BUILD}/steps"
  CMAKE_ARGS -DCMAKE_BUILD_TYPE=Release -DTARVEL4_QT=${TARVEL4_QT} -DTARVEL4_WERROR=${TARVEL4_WERROR}
    -DTARVEL4_BUILD_TESTS=${TARVEL4_BUILD_TESTS} "-DTARVEL4_WINDOWS_CLI=${PROJECT_BINARY_DIR}/cli/tarvel4soft-cli.exe"
    "-DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}" "-DCMAKE_CXX_FLAGS=${CMAKE_CXX_FLAGS}"
  BUILD_COMMAND "${CMAKE_COMMAND}" --build . --target ${host_targets}
  BUILD_ALWAYS ON
  INSTALL_COMMAND "")
