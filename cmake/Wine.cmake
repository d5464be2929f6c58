# Programs of a Windows build run under Wine. A private prefix serves all tests of a ctest run: the fixture "wine" makes
# it before the first of them and removes it after the last. A second one is a second machine, for tests that would
# otherwise wait for each other.

set(wineTool ${PROJECT_SOURCE_DIR}/tests/windows/wine.sh)
set(winePrefixNote ${PROJECT_BINARY_DIR}/wine-prefix)

# CMake puts this before the program of every add_test that names a target.
set(CMAKE_CROSSCOMPILING_EMULATOR ${wineTool};run;${winePrefixNote};${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
set(secondWine ${wineTool};run;${winePrefixNote}2;${CMAKE_RUNTIME_OUTPUT_DIRECTORY})

function(quillpress_add_wine_fixture)
  foreach(machine IN ITEMS "" 2)
    add_test(NAME wine${machine}.setUp COMMAND ${wineTool} up ${winePrefixNote}${machine})
    add_test(NAME wine${machine}.tearDown COMMAND ${wineTool} down ${winePrefixNote}${machine})
    set_tests_properties(wine${machine}.setUp PROPERTIES FIXTURES_SETUP wine${machine} TIMEOUT 180)
    set_tests_properties(wine${machine}.tearDown PROPERTIES FIXTURES_CLEANUP wine${machine} TIMEOUT 60)
  endforeach()
endfunction()

# quillpress_take_machine(NAME target [SECOND]): the test has one of the machines to itself: printers, the driver's folder
# and the driver's mutex belong to all of it.
function(quillpress_take_machine name target)
  set(machine "")
  if("SECOND" IN_LIST ARGN)
    set(machine 2)
    set_target_properties(${target} PROPERTIES CROSSCOMPILING_EMULATOR "${secondWine}")
  endif()
  set_tests_properties(${name} PROPERTIES RESOURCE_LOCK printDriver${machine} FIXTURES_REQUIRED wine${machine})
endfunction()
