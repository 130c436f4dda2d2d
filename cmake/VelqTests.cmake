# velq_test(NAME [QT_FREE] SOURCES ... [LIBRARIES ...])
# A GoogleTest program; each of its cases is one ctest entry, "NAME.Suite.Case".
function(velq_test name)
  cmake_parse_arguments(arg "QT_FREE" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  if(arg_QT_FREE)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock GTest::gtest_main velq_flags)
  else()
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} velq_test_main GTest::gmock velq_flags)
    target_precompile_headers(${name} REUSE_FROM velq_test_main)
  endif()
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 120)
endfunction()

# velq_bats(FILE [LABELS ...] [TIMEOUT seconds] [RESOURCE name])
# A bats file with the built programs' folder in VELQ_BUILD; exit status 77 and "skipped" count as ctest's.
# The time is a guard against what hangs, several times what a busy machine takes.
function(velq_bats file)
  cmake_parse_arguments(arg "" "TIMEOUT;RESOURCE" "LABELS" ${ARGN})
  cmake_path(GET file STEM name)
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME folder)
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 400)
  endif()
  add_test(NAME ${folder}.${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/run-bats ${CMAKE_CURRENT_SOURCE_DIR}/${file})
  set_tests_properties(${folder}.${name} PROPERTIES
    LABELS "${arg_LABELS}" TIMEOUT ${arg_TIMEOUT} COST ${arg_TIMEOUT} SKIP_RETURN_CODE 77
    ENVIRONMENT "VELQ_BUILD=${PROJECT_BINARY_DIR};VELQ_SOURCE=${PROJECT_SOURCE_DIR}")
  if(arg_RESOURCE)
    set_tests_properties(${folder}.${name} PROPERTIES RESOURCE_LOCK ${arg_RESOURCE})
  endif()
endfunction()
