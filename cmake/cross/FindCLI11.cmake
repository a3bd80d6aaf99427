# CLI11 is headers alone. They are reached through a folder of their own, so that no other header of
# the system that compiles is found beside them.
find_path(CLI11_SOURCE_DIR CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(CLI11 REQUIRED_VARS CLI11_SOURCE_DIR)

if(NOT TARGET CLI11::CLI11)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/cli11)
  file(CREATE_LINK ${CLI11_SOURCE_DIR}/CLI ${CMAKE_BINARY_DIR}/cli11/CLI SYMBOLIC)
  add_library(CLI11::CLI11 INTERFACE IMPORTED)
  target_include_directories(CLI11::CLI11 SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/cli11)
endif()
