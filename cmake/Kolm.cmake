# Helpers shared by every folder's CMakeLists.txt.

# Which implementation stands behind the seam to the operating system.
if(WIN32)
  set(KOLM_PLATFORM win)
else()
  set(KOLM_PLATFORM sim)
endif()

# What stands before a path of this machine in a program that is built here:
# Wine shows the whole machine as one drive.
set(KOLM_DRIVE "")
if(WIN32 AND CMAKE_CROSSCOMPILING)
  set(KOLM_DRIVE "Z:")
endif()

# Compile settings of every target of ours.
function(kolm_compile_settings target)
  target_compile_definitions(${target} PRIVATE
    QT_DEPRECATED_WARNINGS
    QT_NO_FOREACH
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_URL_CAST_FROM_STRING)
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}")
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX /utf-8 /permissive-)
  else()
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
      -Wcast-align -Wimplicit-fallthrough -Werror)
    # It alone reads which lock guards what (base/mutex.h).
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
      target_compile_options(${target} PRIVATE -Wthread-safety -Werror=thread-safety)
    endif()
  endif()
  if(KOLM_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${KOLM_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=${KOLM_SANITIZE})
  endif()
  if(KOLM_BUILD_FUZZERS)
    target_compile_options(${target} PRIVATE
      -fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
endfunction()

# What Qt never gives back is not counted against a program with a screen, where
# it is built.
function(kolm_leave_out_leaks_of_qt target)
  if(TARGET ${target} AND KOLM_SANITIZE MATCHES "address")
    target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/leaks_of_qt.cpp")
  endif()
endfunction()

# kolm_library(name SOURCES a.cpp ... [PLATFORM power ...] [LINK Qt5::Core kolm_base ...])
# One static library a folder, called kolm_<name>. Each PLATFORM word adds
# <word>_win.cpp or <word>_sim.cpp.
function(kolm_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;PLATFORM;LINK" ${ARGN})
  set(sources ${arg_SOURCES})
  foreach(facility IN LISTS arg_PLATFORM)
    list(APPEND sources ${facility}_${KOLM_PLATFORM}.cpp)
  endforeach()
  add_library(kolm_${name} STATIC ${sources})
  target_include_directories(kolm_${name} PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(kolm_${name} PUBLIC ${arg_LINK})
  kolm_compile_settings(kolm_${name})
endfunction()

# The environment of every test: the system's Qt is not instrumented.
set(KOLM_SANITIZER_OPTIONS
  "TSAN_OPTIONS=ignore_noninstrumented_modules=1 suppressions=${PROJECT_SOURCE_DIR}/tests/tsan.supp")

# kolm_test(name SOURCES tst_x.cpp ... [LINK ...] [LABELS unit] [TIMEOUT 60]
#   [NEEDS simpc|posix] [DEFINITIONS X="y" ...] [DEPENDS target ...] [LOCK name ...]
#   [WITH command ...] [QPA offscreen])
# One QtTest program. Built for Windows all of them have the label win as well,
# and run on Wine when they were built elsewhere (tests/CMakeLists.txt); those that
# NEED the simulated PC, which they are linked with, or what only POSIX has are not
# built there. DEPENDS are programs that it starts, a LOCK is held by one test at a
# time, WITH stands in front of the program, QPA is Qt's platform.
function(kolm_test name)
  cmake_parse_arguments(arg "" "TIMEOUT;QPA"
    "SOURCES;LINK;LABELS;NEEDS;DEFINITIONS;DEPENDS;LOCK;WITH" ${ARGN})
  foreach(need IN LISTS arg_NEEDS)
    if(need STREQUAL "simpc" AND TARGET kolm_simpc)
      list(APPEND arg_LINK kolm_simpc)
    elseif(need STREQUAL "simpc" OR (need STREQUAL "posix" AND WIN32))
      return()
    elseif(NOT need STREQUAL "posix")
      message(FATAL_ERROR "${name} NEEDS ${need}, which kolm_test does not know")
    endif()
  endforeach()
  if(NOT arg_LABELS)
    set(arg_LABELS unit)
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  if(NOT arg_QPA)
    set(arg_QPA offscreen)
  endif()
  if(WIN32 AND NOT "win" IN_LIST arg_LABELS)
    list(APPEND arg_LABELS win)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK} kolm_test_support Qt5::Test)
  kolm_compile_settings(${name})
  if(MINGW)
    # Half the time of a Windows build would go into optimising tests.
    target_compile_options(${name} PRIVATE -O0)
  endif()
  target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
  if(arg_DEPENDS)
    add_dependencies(${name} ${arg_DEPENDS})
  endif()
  if(arg_WITH)
    add_test(NAME ${name} COMMAND ${arg_WITH} $<TARGET_FILE:${name}>)
  else()
    add_test(NAME ${name} COMMAND ${name})
  endif()
  set_tests_properties(${name} PROPERTIES
    LABELS "${arg_LABELS}" TIMEOUT ${arg_TIMEOUT} RESOURCE_LOCK "${arg_LOCK}"
    ENVIRONMENT "QT_QPA_PLATFORM=${arg_QPA};LC_ALL=C.UTF-8;${KOLM_SANITIZER_OPTIONS}")
  if(KOLM_ON_WINE)
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED wine)
  endif()
endfunction()

# kolm_win_test(name SOURCES ...): as kolm_test, of a _win.cpp file, with the path
# of tests/win/helper_win.cpp's program in KOLM_TEST_HELPER. Does nothing elsewhere.
function(kolm_win_test name)
  if(NOT WIN32)
    return()
  endif()
  kolm_test(${name} ${ARGN} LABELS win)
  target_compile_definitions(${name} PRIVATE
    KOLM_TEST_HELPER="${KOLM_DRIVE}$<TARGET_FILE:kolm_test_helper>")
  add_dependencies(${name} kolm_test_helper)
endfunction()

# kolm_fuzzer(name SOURCES x.cpp [LINK ...] [DICT words.dict]): a libFuzzer
# program, only in a fuzzing build. ctest runs it for a short while, starting
# from tests/fuzz/corpus/<name>; kolm_fuzzers builds all of them.
function(kolm_fuzzer name)
  cmake_parse_arguments(arg "" "DICT" "SOURCES;LINK" ${ARGN})
  if(NOT KOLM_BUILD_FUZZERS)
    return()
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK})
  kolm_compile_settings(${name})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
  if(NOT TARGET kolm_fuzzers)
    add_custom_target(kolm_fuzzers)
  endif()
  add_dependencies(kolm_fuzzers ${name})

  # What it finds on the way goes into the first folder, not to the seeds.
  set(folders "${CMAKE_CURRENT_BINARY_DIR}/${name}_found")
  file(MAKE_DIRECTORY "${folders}")
  if(EXISTS "${PROJECT_SOURCE_DIR}/tests/fuzz/corpus/${name}")
    list(APPEND folders "${PROJECT_SOURCE_DIR}/tests/fuzz/corpus/${name}")
  endif()
  set(options -runs=50000 -seed=1 -max_total_time=30 -timeout=10 -artifact_prefix=${name}_)
  if(arg_DICT)
    list(APPEND options "-dict=${CMAKE_CURRENT_SOURCE_DIR}/${arg_DICT}")
  endif()
  add_test(NAME ${name} COMMAND ${name} ${options} ${folders})
  set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT 120)
endfunction()
