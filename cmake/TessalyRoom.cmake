# One static library a room: tessaly_room(scan SOURCES A.cpp A.h LINKS tessaly_look)
function(tessaly_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(tessaly_${name} STATIC ${ROOM_SOURCES})
  target_include_directories(tessaly_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(tessaly_${name} PUBLIC ${ROOM_LINKS} PRIVATE tessaly_compiler ${ROOM_PRIVATE_LINKS})
endfunction()

# The tests of a room, each fact a test of its own in ctest:
# tessaly_tests(scan SOURCES A_test.cpp LINKS tessaly_scan)
function(tessaly_tests name)
  if(NOT TESSALY_TESTS)
    return()
  endif()
  cmake_parse_arguments(TESTS "OWN_MAIN" "" "SOURCES;LINKS;PROPERTIES" ${ARGN})
  add_executable(tessaly_${name}_test ${TESTS_SOURCES})
  target_include_directories(tessaly_${name}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(tessaly_${name}_test PRIVATE ${TESTS_LINKS} tessaly_compiler GTest::gtest GTest::gmock)
  # What is tested is what is worth optimising. Under the sanitizers, optimising assertions takes more
  # time than it saves.
  if(TESSALY_SANITIZE)
    target_compile_options(tessaly_${name}_test PRIVATE -O0)
  endif()
  if(NOT TESTS_OWN_MAIN)
    target_link_libraries(tessaly_${name}_test PRIVATE GTest::gtest_main)
  endif()
  gtest_discover_tests(tessaly_${name}_test
    TEST_PREFIX ${name}: DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 600 ${TESTS_PROPERTIES})
endfunction()
