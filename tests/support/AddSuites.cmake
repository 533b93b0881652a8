# Read by CTest before it runs: a test for each suite of a program of GoogleTest, "base.Copy" for the
# suite Copy of base_tests. Each sets the fixture up, where that is not empty.

function(vantero_add_suites program path fixture)
  string(REGEX REPLACE "_tests$" "" folder "${program}")
  if(NOT EXISTS "${path}")
    add_test("${folder}.notBuilt" "${path}")
    return()
  endif()
  execute_process(COMMAND "${path}" --gtest_list_tests OUTPUT_VARIABLE list RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${path} cannot list its tests: ${result}")
  endif()
  # Lines of suites begin at once and end with a point; those of cases are indented.
  string(REGEX MATCHALL "(^|\n)[A-Za-z][A-Za-z0-9_/]*\\." suites "${list}")
  foreach(suite IN LISTS suites)
    string(REGEX REPLACE "[\n.]" "" suite "${suite}")
    string(REPLACE "/" "." name "${suite}")
    add_test("${folder}.${name}" "${path}" "--gtest_filter=${suite}.*")
    set_tests_properties("${folder}.${name}" PROPERTIES TIMEOUT 600
      FIXTURES_SETUP "${fixture}")
  endforeach()
endfunction()
