# What the two MinGW-w64 toolchains share. Machine is set by the file that includes this one.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${Machine}-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER ${Machine}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${Machine}-w64-mingw32-windres)
# The tests are asked for their names when they run, and not while they are built: only then is there
# a Wine prefix for them.
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)

set(CMAKE_FIND_ROOT_PATH /usr/${Machine}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The packages that are taken as sources instead of from the system that compiles.
list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/../cross)
