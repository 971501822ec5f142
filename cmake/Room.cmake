# One room of the house: a static library with its own warnings, and the list of the rooms that
# its files may include. The list is checked by a test (tools/check-rooms).

add_library(seedmote-flags INTERFACE)
# Contracted multiply-adds would round single-precision arithmetic differently from machine to machine.
target_compile_options(seedmote-flags INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -ffp-contract=off)
target_include_directories(seedmote-flags INTERFACE ${CMAKE_SOURCE_DIR})
target_link_libraries(seedmote-flags INTERFACE Threads::Threads)
target_compile_definitions(seedmote-flags INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS)
if(SEEDMOTE_SANITIZE)
  target_compile_options(seedmote-flags INTERFACE -fsanitize=${SEEDMOTE_SANITIZE}
    -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(seedmote-flags INTERFACE -fsanitize=${SEEDMOTE_SANITIZE})
endif()
if(SEEDMOTE_SANITIZE MATCHES "address" AND NOT SEEDMOTE_FUZZ)
  # Not _GLIBCXX_DEBUG, which GoogleTest's library would have to be built with as well.
  target_compile_definitions(seedmote-flags INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(SEEDMOTE_FUZZ)
  # No test of GoogleTest's is built then.
  target_compile_options(seedmote-flags INTERFACE -fsanitize=fuzzer-no-link)
  target_compile_definitions(seedmote-flags INTERFACE _GLIBCXX_DEBUG)
endif()
if(SEEDMOTE_SANITIZE STREQUAL "thread")
  # Qt's atomics use fences, which the thread sanitizer does not follow.
  target_compile_options(seedmote-flags INTERFACE -Wno-tsan)
endif()

set_property(GLOBAL PROPERTY SEEDMOTE_ROOMS "")

# seedmote_room(NAME SOURCES file... [ROOMS room...] [LIBRARIES target...])
# ROOMS: the rooms that this one builds on; nothing else of ours may be included.
function(seedmote_room name)
  cmake_parse_arguments(room "" "" "SOURCES;ROOMS;LIBRARIES" ${ARGN})
  add_library(${name} STATIC ${room_SOURCES})
  target_link_libraries(${name} PUBLIC seedmote-flags ${room_ROOMS} ${room_LIBRARIES})
  seedmote_record_room(${name} "${room_ROOMS}" "${room_SOURCES}")
endfunction()

# For a target that another command made (a QML module): its flags and its entry in the list.
function(seedmote_record_room name rooms sources)
  set(line "${name}|${rooms}|")
  foreach(file IN LISTS sources)
    cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
    cmake_path(RELATIVE_PATH file BASE_DIRECTORY ${CMAKE_SOURCE_DIR})
    string(APPEND line " ${file}")
  endforeach()
  string(REPLACE ";" "," line "${line}")
  set_property(GLOBAL APPEND PROPERTY SEEDMOTE_ROOMS "${line}")
endfunction()

function(seedmote_write_room_list)
  get_property(rooms GLOBAL PROPERTY SEEDMOTE_ROOMS)
  list(JOIN rooms "\n" text)
  file(WRITE ${CMAKE_BINARY_DIR}/rooms.txt "${text}\n")
endfunction()

# The surroundings of every test that runs a program of ours: no screen, and what the sanitizers are to look for and
# to leave out. With them a program takes several times as long.
set(seedmote_sanitizer_options
  "ASAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/asan.supp:detect_stack_use_after_return=1:strict_string_checks=1:check_initialization_order=1:detect_leaks=1"
  "UBSAN_OPTIONS=print_stacktrace=1"
  "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
  "TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/tsan.supp:die_after_fork=0:detect_deadlocks=1:second_deadlock_stack=1")
set(seedmote_test_seconds 120)
set(seedmote_gui_test_seconds 300)
if(SEEDMOTE_SANITIZE)
  set(seedmote_test_seconds 600)
  set(seedmote_gui_test_seconds 900)
endif()
function(seedmote_test_surroundings name)
  set_tests_properties(${name} PROPERTIES TIMEOUT ${seedmote_test_seconds}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_QUICK_BACKEND=software;XDG_RUNTIME_DIR=${CMAKE_BINARY_DIR};${seedmote_sanitizer_options}")
endfunction()

# seedmote_test(NAME SOURCES file... [ROOMS room...] [LIBRARIES target...] [LABELS label...])
# One test program, one ctest entry: the program starts once, not once for each case.
function(seedmote_test name)
  if(NOT SEEDMOTE_TESTS)
    return()
  endif()
  cmake_parse_arguments(test "" "" "SOURCES;ROOMS;LIBRARIES;LABELS" ${ARGN})
  add_executable(${name} ${test_SOURCES})
  target_link_libraries(${name} PRIVATE seedmote-flags ${test_ROOMS} ${test_LIBRARIES} GTest::gtest GTest::gmock)
  add_test(NAME ${name} COMMAND ${name})
  seedmote_test_surroundings(${name})
  if(test_LABELS)
    set_tests_properties(${name} PROPERTIES LABELS "${test_LABELS}")
  endif()
endfunction()

# What the QML compiler writes shadows its own parameters.
function(seedmote_spare_generated_code name)
  get_target_property(sources ${name} SOURCES)
  foreach(source IN LISTS sources)
    if(source MATCHES "/qmlcache/")
      set_source_files_properties(${source} PROPERTIES COMPILE_OPTIONS "-Wno-shadow")
    endif()
  endforeach()
endfunction()

# seedmote_qml_room(NAME URI uri QML_FILES file... [SOURCES file...] [ROOMS room...] [LIBRARIES target...]
#                   [IMPORTS uri...])
# IMPORTS: our own modules whose types this one's C++ types name.
# A room that is also a QML module, compiled ahead of time. Programs link NAMEplugin beside NAME.
function(seedmote_qml_room name)
  cmake_parse_arguments(room "" "URI" "QML_FILES;SOURCES;ROOMS;LIBRARIES;IMPORTS" ${ARGN})
  string(REPLACE "." "/" path ${room_URI})
  set(CMAKE_AUTOMOC ON)
  qt_add_qml_module(${name} STATIC URI ${room_URI} VERSION 1.0
    RESOURCE_PREFIX /qt-project.org/imports OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${path}
    DEPENDENCIES QtQuick ${room_IMPORTS} QML_FILES ${room_QML_FILES} SOURCES ${room_SOURCES})
  seedmote_spare_generated_code(${name})
  # The type registration includes headers by their bare names.
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC seedmote-flags ${room_ROOMS} ${room_LIBRARIES} Qt6::Quick)
  target_link_libraries(${name}plugin PRIVATE seedmote-flags)
  seedmote_record_room(${name} "${room_ROOMS}" "${room_SOURCES}")
endfunction()
