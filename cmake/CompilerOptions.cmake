# Options that every target of the project is built with. Dependencies come in as SYSTEM, so that the
# warnings hold for our own sources only.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# An exception names its source file; where the project was built is nobody's business.
set(hiddenFolders
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
  -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)

add_library(quillpress_options INTERFACE)
# One include root: paths are written from the top folder.
target_include_directories(quillpress_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(quillpress_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  $<$<BOOL:${QUILLPRESS_WARNINGS_AS_ERRORS}>:-Werror>
  # Unlike GCC, clang has this one in -Wconversion.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual>
  # Numbers in the page text must not depend on whether a machine can fuse a product and a sum.
  -ffp-contract=off
  ${hiddenFolders})
# Optimisation at link time compiles once more, and notes its own folder.
target_link_options(quillpress_options INTERFACE ${hiddenFolders})

if(QUILLPRESS_SANITIZE)
  # GCC's "undefined" leaves numbers out that are too large for the integer that they become.
  target_compile_options(quillpress_options INTERFACE
    -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_definitions(quillpress_options INTERFACE _GLIBCXX_ASSERTIONS)
  # What the sanitizers note of each check holds addresses, more than a million in one program. They are set when it is
  # linked, or are at least packed, because setting them at each start took as long as most tests run.
  target_link_options(quillpress_options INTERFACE
    -fsanitize=address,undefined
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-no-pie>
    -Wl,-z,pack-relative-relocs)
endif()

if(QUILLPRESS_FUZZ)
  # The calls at each edge let a fuzzer end a program that would run for ever; see tests/fuzz/support/Steps.h.
  target_compile_options(quillpress_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
    -fsanitize-coverage=trace-pc)
  target_link_options(quillpress_options INTERFACE -fsanitize=address,undefined)
endif()

if(WIN32)
  # Windows 2000 is the oldest system that the library loads on; a newer declaration must not even compile. A target
  # that needs a newer system says so by this property.
  define_property(TARGET PROPERTY QUILLPRESS_WINDOWS_VERSION)
  set(asked $<TARGET_PROPERTY:QUILLPRESS_WINDOWS_VERSION>)
  set(version $<IF:$<BOOL:${asked}>,${asked},0x0500>)
  target_compile_definitions(quillpress_options INTERFACE
    _WIN32_WINNT=${version} WINVER=${version} NOMINMAX WIN32_LEAN_AND_MEAN)
endif()
