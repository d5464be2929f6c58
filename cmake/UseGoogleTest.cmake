# GoogleTest as the targets GTest::gtest and GTest::gtest_main: Debian's libraries natively, built from
# Debian's sources for Windows.

if(NOT CMAKE_CROSSCOMPILING)
  find_package(GTest REQUIRED)
  include(GoogleTest)
  return()
endif()

set(googletestFolder /usr/src/googletest/googletest)
if(NOT EXISTS ${googletestFolder}/src/gtest-all.cc)
  message(FATAL_ERROR "GoogleTest's sources are missing: install the Debian package googletest")
endif()

add_library(googletest STATIC ${googletestFolder}/src/gtest-all.cc
  ${PROJECT_SOURCE_DIR}/tests/windows/googletest/Notification.cpp)
target_include_directories(googletest SYSTEM
  PUBLIC ${PROJECT_SOURCE_DIR}/tests/windows/googletest ${googletestFolder}/include
  PRIVATE ${googletestFolder} ${PROJECT_SOURCE_DIR})
add_library(GTest::gtest ALIAS googletest)

add_library(googletest_main STATIC ${googletestFolder}/src/gtest_main.cc)
target_link_libraries(googletest_main PUBLIC googletest)
add_library(GTest::gtest_main ALIAS googletest_main)
