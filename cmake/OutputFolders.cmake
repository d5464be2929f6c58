# Where the built files lie below the build folder: what is delivered in bin and lib, tests apart.

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
# The command line finds its library beside itself, wherever the build folder is moved to.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
