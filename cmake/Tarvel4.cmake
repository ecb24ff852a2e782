# What every target of this tree has in common, and the two shapes that targets come in: modules and tests.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# Interface target with the language level, warnings and sanitizers of our own code.
add_library(tarvel4_options INTERFACE)
target_include_directories(tarvel4_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_definitions(tarvel4_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_URL_CAST_FROM_STRING
  QT_NO_FOREACH QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00)
if(CMAKE_SIZEOF_VOID_P EQUAL 4) # files of 2 GB and more, their numbers, and dates after 2038
  target_compile_definitions(tarvel4_options INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
endif()
# clang's -Wconversion takes in what g++ keeps apart as -Wsign-conversion, and its -Wpedantic the macros of Qt's log.
target_compile_options(tarvel4_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
  $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-sign-conversion$<SEMICOLON>-Wno-gnu-zero-variadic-macro-arguments>
  $<$<BOOL:${TARVEL4_WERROR}>:-Werror>)

# Adds the sanitizers to everything declared after the call.
macro(tarvel4_use_sanitizers)
  # GCC sees overflows that are none in code that the sanitizers have instrumented.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer
    -Wno-stringop-overflow)
  add_link_options(-fsanitize=address,undefined)
endmacro()

# tarvel4_add_module(<module> SOURCES <file>... LINKS <target>... [PCH_OF <module> | PCH <header>...])
# A static library tarvel4_<module>. LINKS are public: a user of the module gets what the module's headers need.
# The precompiled header is that of the module PCH_OF (storage, where nothing is said), or its own of PCH.
function(tarvel4_add_module module)
  cmake_parse_arguments(ARG "" "PCH_OF" "SOURCES;LINKS;PCH" ${ARGN})
  add_library(tarvel4_${module} STATIC ${ARG_SOURCES})
  target_link_libraries(tarvel4_${module} PUBLIC ${ARG_LINKS} PRIVATE tarvel4_options)
  target_include_directories(tarvel4_${module} PUBLIC "${PROJECT_SOURCE_DIR}")
  set_target_properties(tarvel4_${module} PROPERTIES AUTOMOC ON AUTOUIC ON)
  if(ARG_PCH)
    target_precompile_headers(tarvel4_${module} PRIVATE <QtCore> ${ARG_PCH})
  elseif(ARG_PCH_OF)
    target_precompile_headers(tarvel4_${module} REUSE_FROM tarvel4_${ARG_PCH_OF})
  else()
    target_precompile_headers(tarvel4_${module} REUSE_FROM tarvel4_storage)
  endif()
endfunction()

# tarvel4_add_test(<name> SOURCES <file>... LINKS <target>... [LABELS <label>...] [PCH <header>])
# One QTest program, run by ctest on the offscreen platform with settings and home of its own.
# Its first source includes its own .moc file: moc is called for that file alone, which costs a third of what AUTOMOC does. The first
# test with that PCH owns the precompiled header.
function(tarvel4_add_test name)
  cmake_parse_arguments(ARG "" "PCH" "SOURCES;LINKS;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} Qt${TARVEL4_QT}::Test tarvel4_options)
  set(drive "")
  if(WIN32) # under wine, where a test may change to another one
    set(drive "Z:")
  endif()
  target_compile_definitions(${name} PRIVATE
    TARVEL4_TEST_DATA="${drive}${PROJECT_SOURCE_DIR}/tests/data"
    TARVEL4_SAMPLES="${drive}${PROJECT_SOURCE_DIR}/samples")
  # What is tested is optimised; the tests themselves are built faster than that would pay.
  target_compile_options(${name} PRIVATE $<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU,Clang>>:-O0>)
  list(GET ARG_SOURCES 0 test_class)
  get_filename_component(moc "${test_class}" NAME_WE)
  set(moc "${CMAKE_CURRENT_BINARY_DIR}/${name}_moc/${moc}.moc")
  qt_generate_moc("${test_class}" "${moc}")
  target_sources(${name} PRIVATE "${moc}")
  target_include_directories(${name} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${name}_moc")
  get_property(owner GLOBAL PROPERTY TARVEL4_PCH_OWNER_${ARG_PCH})
  if(owner)
    target_precompile_headers(${name} REUSE_FROM ${owner})
  else()
    target_precompile_headers(${name} PRIVATE <QtCore> <QtTest> ${ARG_PCH})
    set_property(GLOBAL PROPERTY TARVEL4_PCH_OWNER_${ARG_PCH} ${name})
  endif()
  set(output -silent) # what failed alone, not the program's thousands of lines
  if(WIN32)
    set(output -o -,tap) # plain text would go to the debugger
  endif()
  add_test(NAME ${name} COMMAND ${name} ${output})
  tarvel4_test_environment(${name})
  if(WIN32)
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT TARVEL4_OUTPUT=file)
  endif()
  if(ARG_LABELS)
    set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS}")
  endif()
endfunction()

# What tests run in: a time zone and, where localedef can make it, a locale in which a forgotten conversion shows.
function(tarvel4_make_test_locale)
  set(locale it_IT.ISO-8859-1)
  set(folder "${CMAKE_BINARY_DIR}/locale")
  if(NOT EXISTS "${folder}/${locale}/LC_CTYPE")
    file(MAKE_DIRECTORY "${folder}")
    find_program(LOCALEDEF localedef)
    set(order --little-endian)
    if(CMAKE_CXX_BYTE_ORDER STREQUAL "BIG_ENDIAN")
      set(order --big-endian)
    endif()
    execute_process(COMMAND "${LOCALEDEF}" ${order} -i it_IT -f ISO-8859-1 "${folder}/${locale}" OUTPUT_QUIET ERROR_QUIET)
  endif()
  if(NOT EXISTS "${folder}/${locale}/LC_CTYPE")
    message(WARNING "${locale} can't be made (Debian: locales): the tests run in C.UTF-8 only")
    set(locale C.UTF-8)
  endif()
  set(TARVEL4_TEST_LOCALE "${locale}" PARENT_SCOPE)
endfunction()
if(TARVEL4_BUILD_TESTS)
  tarvel4_make_test_locale()
endif()

# The folder for the tests' temporary files: one in memory where there is room for them and programs may be started, else the
# system's own (empty). Flushes are what most tests would wait for.
function(tarvel4_choose_test_folder)
  set(folder /dev/shm)
  set(needed 2000000) # kilobytes
  execute_process(COMMAND df --output=avail "${folder}" OUTPUT_VARIABLE free ERROR_QUIET)
  string(REGEX MATCH "[0-9]+" free "${free}")
  set(refusing "")
  if(EXISTS /proc/mounts)
    file(STRINGS /proc/mounts refusing REGEX " ${folder} .*noexec")
  endif()
  if(NOT free GREATER needed OR refusing)
    set(folder "")
  endif()
  set(TARVEL4_TEST_FOLDER "${folder}" CACHE STRING "The folder for the tests' temporary files")
endfunction()
if(TARVEL4_BUILD_TESTS)
  tarvel4_choose_test_folder()
endif()

set(TARVEL4_TEST_ZONE Asia/Kolkata)
if(WIN32)
  set(TARVEL4_TEST_ZONE IST-5:30) # the same, as the C library of Windows reads it too
endif()

# Gives a ctest test a home, a settings store and a platform of its own, so that it touches nothing of the user's.
function(tarvel4_test_environment name)
  set(home "${CMAKE_CURRENT_BINARY_DIR}/home/${name}")
  file(MAKE_DIRECTORY "${home}/runtime")
  file(CHMOD "${home}/runtime" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE) # else Qt warns
  set(timeout 300)
  if(CMAKE_CROSSCOMPILING_EMULATOR AND NOT WIN32)
    set(timeout 1500)
  endif()
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${timeout}
    WORKING_DIRECTORY "${home}"
    SKIP_RETURN_CODE 77
    ENVIRONMENT "HOME=${home};XDG_CONFIG_HOME=${home}/config;XDG_RUNTIME_DIR=${home}/runtime;QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=;TZ=${TARVEL4_TEST_ZONE};LOCPATH=${CMAKE_BINARY_DIR}/locale;LC_ALL=${TARVEL4_TEST_LOCALE}")
  if(TARVEL4_TEST_FOLDER)
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "TMPDIR=${TARVEL4_TEST_FOLDER}")
  endif()
  if(WIN32)
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED wine)
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
      "WINEPREFIX=${TARVEL4_WINE_PREFIX}" "QT_STYLE_OVERRIDE=fusion") # the program's own choice there
  endif()
endfunction()

# Windows for the tests: a prefix in the build folder, made by the test <name>_prefix before the others run. Those in English have one
# of their own, since programs that run in one prefix share its language.
set(TARVEL4_WINE_PREFIX "${PROJECT_BINARY_DIR}/wine")
function(tarvel4_add_wine_prefix name)
  foreach(step prefix end)
    add_test(NAME ${name}_${step} COMMAND "${PROJECT_SOURCE_DIR}/tests/under_wine" --${step})
    tarvel4_test_environment(${name}_${step})
    set_property(TEST ${name}_${step} PROPERTY FIXTURES_REQUIRED)
    set_property(TEST ${name}_${step} APPEND PROPERTY ENVIRONMENT "WINEPREFIX=${PROJECT_BINARY_DIR}/${name}")
  endforeach()
  set_tests_properties(${name}_prefix PROPERTIES FIXTURES_SETUP ${name})
  set_tests_properties(${name}_end PROPERTIES FIXTURES_CLEANUP ${name})
endfunction()

# For a ctest test that reads the command line's texts: those are English, and the shell's tools sort by bytes.
function(tarvel4_test_in_english name)
  set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
    LC_ALL= LANG=${TARVEL4_TEST_LOCALE} LC_MESSAGES=C LC_COLLATE=C PYTHONUTF8=1)
  if(WIN32)
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED wine_english)
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "WINEPREFIX=${TARVEL4_WINE_PREFIX}_english")
  endif()
endfunction()
