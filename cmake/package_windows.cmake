# The archive for release: cpack --config CPackConfig.cmake in the build folder.
set(Bits 64)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(Bits 32)
endif()
configure_file(${PROJECT_SOURCE_DIR}/docs/readme_windows.txt.in ${PROJECT_BINARY_DIR}/Readme.txt
  @ONLY NEWLINE_STYLE DOS)
install(FILES ${PROJECT_BINARY_DIR}/Readme.txt ${PROJECT_SOURCE_DIR}/docs/messages.md DESTINATION .)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME rivelt-${PROJECT_VERSION}-windows-${Bits})
include(CPack)
