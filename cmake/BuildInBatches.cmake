# Most of what a source takes to compile is the headers of the standard library. Sources of one folder that are compiled
# together take a quarter of the time, and forty still a third less than twelve; local names are therefore unique in a
# folder. Working on one source is quicker without: -DQUILLPRESS_BATCHES=OFF.

option(QUILLPRESS_BATCHES "Compile the sources of a folder together" OFF)

# quillpress_build_in_batches(target [SIZE n]): folder by folder, so many sources at a time.
function(quillpress_build_in_batches target)
  cmake_parse_arguments(batch "" SIZE "" ${ARGN})
  if(NOT QUILLPRESS_BATCHES)
    return()
  endif()
  if(NOT batch_SIZE)
    set(batch_SIZE 40)
  endif()
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    cmake_path(GET source PARENT_PATH folder)
    # An archive keeps the names of its objects; where the project was built is nobody's business.
    cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
    string(MAKE_C_IDENTIFIER "${folder}" folder)
    math(EXPR count_${folder} "0${count_${folder}} + 1")
    math(EXPR number "(${count_${folder}} - 1) / ${batch_SIZE}")
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder}_${number})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
