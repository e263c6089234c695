# One static library a room: tessaly_room(scan SOURCES A.cpp A.h LINKS tessaly_look)
function(tessaly_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(tessaly_${name} STATIC ${ROOM_SOURCES})
  target_include_directories(tessaly_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(tessaly_${name} PUBLIC ${ROOM_LINKS} PRIVATE tessaly_compiler ${ROOM_PRIVATE_LINKS})
  tessaly_precompiled(tessaly_${name})
endfunction()

# The programs for tests/together: one line per program, with its name, the tests that need a
# process of their own, and the tests that are left out, both as filters of GoogleTest.
set(TESSALY_TEST_PROGRAMS ${CMAKE_BINARY_DIR}/test-programs.txt)
file(WRITE ${TESSALY_TEST_PROGRAMS} "")

# The tests of a room, each fact a test of its own in ctest:
# tessaly_tests(scan SOURCES A_test.cpp LINKS tessaly_scan ALONE "Suite.fact")
#
# ALONE are tests, as a filter of GoogleTest, that need a process of their own in tests/together.
function(tessaly_tests name)
  if(NOT TESSALY_TESTS)
    return()
  endif()
  cmake_parse_arguments(TESTS "OWN_MAIN" "" "SOURCES;LINKS;ALONE" ${ARGN})
  add_executable(tessaly_${name}_test ${TESTS_SOURCES})
  target_include_directories(tessaly_${name}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(tessaly_${name}_test PRIVATE ${TESTS_LINKS} tessaly_tested GTest::gtest GTest::gmock)
  if(NOT TESTS_OWN_MAIN)
    target_link_libraries(tessaly_${name}_test PRIVATE GTest::gtest_main)
  endif()
  tessaly_precompiled(tessaly_${name}_test TEST)
  list(JOIN TESTS_ALONE ":" alone)
  file(APPEND ${TESSALY_TEST_PROGRAMS}
    "${name}\t${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/tessaly_${name}_test\t${alone}\t\n")
  gtest_discover_tests(tessaly_${name}_test
    TEST_PREFIX ${name}: DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 600)
endfunction()
