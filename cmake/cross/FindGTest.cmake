# GoogleTest, compiled from the distribution's sources for the system that is built for.
set(GTEST_SOURCES /usr/src/googletest CACHE PATH "GoogleTest's source tree")
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GTest REQUIRED_VARS GTEST_SOURCES)

if(NOT TARGET GTest::gtest_main)
  add_library(cross_gtest STATIC
    ${GTEST_SOURCES}/googletest/src/gtest-all.cc
    ${GTEST_SOURCES}/googletest/src/gtest_main.cc
  )
  target_include_directories(cross_gtest SYSTEM
    PUBLIC ${GTEST_SOURCES}/googletest/include
    PRIVATE ${GTEST_SOURCES}/googletest
  )
  target_compile_options(cross_gtest PRIVATE -w)
  add_library(GTest::gtest ALIAS cross_gtest)
  add_library(GTest::gtest_main ALIAS cross_gtest)
endif()
