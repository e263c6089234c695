# One static library a room: tessaly_room(scan SOURCES A.cpp A.h LINKS tessaly_look)
function(tessaly_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(tessaly_${name} STATIC ${ROOM_SOURCES})
  target_include_directories(tessaly_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(tessaly_${name} PUBLIC ${ROOM_LINKS} PRIVATE tessaly_compiler ${ROOM_PRIVATE_LINKS})
  tessaly_precompiled(tessaly_${name})
endfunction()

# tessaly_batches(TARGET): compiles the sources of a target about eight at a time, since most of the
# time goes into headers and what they instantiate. After a change of one source its whole batch is
# compiled; without this option, only the source is. clang-tidy reads each source alone, and finds
# what a source uses without an include of its own. The batches name their sources relative to the
# build folder, where the compiler runs, so that a compiler cache recognises them in another one.
option(TESSALY_UNITY_TESTS "Compile the sources of tests in batches" ON)
function(tessaly_batches target)
  if(NOT TESSALY_UNITY_TESTS)
    return()
  endif()
  get_target_property(all ${target} SOURCES)
  set(tests "")
  set(helpers "")
  foreach(source IN LISTS all)
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
    get_source_file_property(alone ${source} SKIP_UNITY_BUILD_INCLUSION)
    if(alone OR NOT source MATCHES "\\.cpp$")
      continue()
    endif()
    # The generated code of an included .moc does not know the namespaces of a batch.
    file(STRINGS ${source} moc REGEX "^#include \".*\\.moc\"")
    if(moc)
      continue()
    endif()
    # What other sources use keeps its names, and comes last: what follows could see them.
    string(REGEX REPLACE "\\.cpp$" ".h" header ${source})
    if(source MATCHES "_test\\.cpp$" AND NOT EXISTS ${header})
      list(APPEND tests ${source})
    else()
      list(APPEND helpers ${source})
    endif()
  endforeach()
  set(sources ${tests} ${helpers})
  list(LENGTH sources count)
  if(count LESS 2)
    return()
  endif()
  set_source_files_properties(${sources} PROPERTIES HEADER_FILE_ONLY ON)
  math(EXPR batches "(${count} + 7) / 8")
  foreach(batch RANGE 1 ${batches})
    math(EXPR first "(${batch} - 1) * ${count} / ${batches}")
    math(EXPR length "${batch} * ${count} / ${batches} - ${first}")
    list(SUBLIST sources ${first} ${length} members)
    set(names "")
    foreach(member IN LISTS members)
      if(member IN_LIST helpers AND NOT "--" IN_LIST names)
        list(APPEND names --)
      endif()
      cmake_path(RELATIVE_PATH member BASE_DIRECTORY ${CMAKE_BINARY_DIR})
      list(APPEND names ${member})
    endforeach()
    set(file ${CMAKE_CURRENT_BINARY_DIR}/${target}_batch${batch}.cpp)
    add_custom_command(OUTPUT ${file}
      COMMAND ${CMAKE_SOURCE_DIR}/tests/batch ${file} ${names}
      WORKING_DIRECTORY ${CMAKE_BINARY_DIR}
      DEPENDS ${CMAKE_SOURCE_DIR}/tests/batch ${members}
      VERBATIM)
    set_source_files_properties(${file} PROPERTIES SKIP_AUTOGEN ON)
    target_sources(${target} PRIVATE ${file})
  endforeach()
endfunction()

# The programs for tests/together: one line per program, with its name, the tests that need a
# process of their own, and the tests that are left out, both as filters of GoogleTest.
set(TESSALY_TEST_PROGRAMS ${CMAKE_BINARY_DIR}/test-programs.txt)
file(WRITE ${TESSALY_TEST_PROGRAMS} "")

# The tests of a room, each fact a test of its own in ctest:
# tessaly_tests(scan SOURCES A_test.cpp THREADS B_test.cpp LINKS tessaly_scan ALONE "Suite.fact")
#
# THREADS are the sources in whose tests, or in the programs that these start, code of the project
# runs on several threads; ONE_THREAD are tests in them, as a filter of GoogleTest, that start none.
# The thread sanitizer has nothing to find in other sources and tests, so that they are not built or
# run for it. A program without THREADS is ended where it starts a thread (support/OneThread.cpp),
# unless it says WALKS: then the only threads are a fixture's and the helpers of a walk, which has tests
# of its own. ALONE are tests, as a filter, that need a process of their own in tests/together.
function(tessaly_tests name)
  cmake_parse_arguments(TESTS "OWN_MAIN;WALKS" ""
    "SOURCES;THREADS;ONE_THREAD;LINKS;ALONE" ${ARGN})
  if(NOT TESSALY_TESTS OR (TESSALY_SANITIZE MATCHES thread AND NOT TESTS_THREADS))
    return()
  endif()
  if(TESSALY_SANITIZE MATCHES thread)
    list(FILTER TESTS_SOURCES EXCLUDE REGEX "_test\\.cpp$")
  endif()
  if(NOT TESSALY_ENGINE_TESTS AND TESSALY_PRECOMPILED STREQUAL plain)
    return()
  endif()
  add_executable(tessaly_${name}_test ${TESTS_SOURCES} ${TESTS_THREADS})
  target_include_directories(tessaly_${name}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(tessaly_${name}_test PRIVATE ${TESTS_LINKS} tessaly_tested GTest::gtest GTest::gmock)
  if(NOT TESTS_OWN_MAIN)
    target_link_libraries(tessaly_${name}_test PRIVATE GTest::gtest_main)
  endif()
  tessaly_precompiled(tessaly_${name}_test TEST)
  tessaly_batches(tessaly_${name}_test)
  # Sanitizers have a pthread_create() of their own.
  if(NOT TESTS_THREADS AND NOT TESTS_WALKS AND NOT TESSALY_SANITIZE)
    target_link_libraries(tessaly_${name}_test PRIVATE tessaly_one_thread)
  endif()
  list(JOIN TESTS_ALONE ":" alone)
  set(left "")
  if(TESSALY_SANITIZE MATCHES thread)
    list(JOIN TESTS_ONE_THREAD ":" left)
  endif()
  file(APPEND ${TESSALY_TEST_PROGRAMS}
    "${name}\t${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/tessaly_${name}_test\t${alone}\t${left}\n")
  gtest_discover_tests(tessaly_${name}_test
    TEST_PREFIX ${name}: DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 600 LABELS GoogleTest)
endfunction()
