# Fails when a test stands in the tree but is not one of ctest's: a *_test.cpp whose TESTs no
# executable of ctest's lists, or a scenario folder without its test.
#
#   cmake -D TESTS=<the tests folder> -D BUILD=<the build folder> -P every_test_runs.cmake
execute_process(COMMAND "${CMAKE_CTEST_COMMAND}" --show-only=json-v1
  WORKING_DIRECTORY "${BUILD}" OUTPUT_VARIABLE listed RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "ctest does not list its tests: ${status}")
endif()

# The TESTs of every executable that ctest runs as a whole.
string(REGEX MATCHALL "\"[^\"]*\",[ \n]*\"--gtest_brief=1\"" commands "${listed}")
list(TRANSFORM commands REPLACE "^\"([^\"]*)\".*" "\\1")
list(REMOVE_DUPLICATES commands)
set(tests_run "")
foreach(command IN LISTS commands)
  execute_process(COMMAND "${command}" --gtest_list_tests
    OUTPUT_VARIABLE names RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${command} does not list its tests: ${status}")
  endif()
  string(REGEX REPLACE " *#[^\n]*" "" names "${names}")
  string(REPLACE "\n" ";" names "${names}")
  set(suite "")
  foreach(name IN LISTS names)
    if(name MATCHES "^  (.+)")
      string(APPEND tests_run "/${suite}${CMAKE_MATCH_1}/\n")
    else()
      set(suite "${name}")
    endif()
  endforeach()
endforeach()

set(forgotten "")
file(GLOB_RECURSE sources "${TESTS}/*_test.cpp")
foreach(source IN LISTS sources)
  file(READ "${source}" text)
  string(REGEX MATCHALL "\nTEST(_F|_P)?\\([ \n]*[A-Za-z0-9_]+,[ \n]*[A-Za-z0-9_]+" tests "${text}")
  string(REGEX MATCHALL "\nTYPED_TEST(_P)?\\([ \n]*[A-Za-z0-9_]+," typed_tests "${text}")
  if(NOT tests AND NOT typed_tests)
    list(APPEND forgotten "${source}: holds no test")
  endif()
  foreach(test IN LISTS tests)
    string(REGEX REPLACE "\nTEST[_FP]*\\([ \n]*([A-Za-z0-9_]+),[ \n]*([A-Za-z0-9_]+)" "\\1.\\2" name "${test}")
    # A parameterised test is listed as Instance/Suite.Name/Parameter.
    if(NOT tests_run MATCHES "/${name}/")
      list(APPEND forgotten "${source}: ${name}")
    endif()
  endforeach()
endforeach()

file(GLOB data_folders "${TESTS}/scenarios/*/data")
foreach(folder IN LISTS data_folders)
  cmake_path(GET folder PARENT_PATH scenario)
  cmake_path(GET scenario FILENAME name)
  if(NOT listed MATCHES "\"scenario/${name}\"")
    list(APPEND forgotten "${scenario}: scenario/${name}")
  endif()
endforeach()

if(forgotten)
  list(JOIN forgotten "\n  " lines)
  message(FATAL_ERROR "Tests that ctest does not run:\n  ${lines}")
endif()
