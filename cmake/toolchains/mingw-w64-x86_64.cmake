set(Machine x86_64)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
