# Programs of a Windows build run under Wine. One private prefix serves all tests of a ctest run: the
# fixture "wine" makes it before the first of them and removes it after the last.

set(wineTool ${PROJECT_SOURCE_DIR}/tests/windows/wine.sh)
set(winePrefixNote ${PROJECT_BINARY_DIR}/wine-prefix)

# CMake puts this before the program of every add_test that names a target.
set(CMAKE_CROSSCOMPILING_EMULATOR ${wineTool};run;${winePrefixNote};${CMAKE_RUNTIME_OUTPUT_DIRECTORY})

function(quillpress_add_wine_fixture)
  add_test(NAME wine.setUp COMMAND ${wineTool} up ${winePrefixNote})
  add_test(NAME wine.tearDown COMMAND ${wineTool} down ${winePrefixNote})
  set_tests_properties(wine.setUp PROPERTIES FIXTURES_SETUP wine TIMEOUT 180)
  set_tests_properties(wine.tearDown PROPERTIES FIXTURES_CLEANUP wine TIMEOUT 60)
endfunction()
