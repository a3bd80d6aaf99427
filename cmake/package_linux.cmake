# What is installed beside the programs, and the Debian package, made by cpack in the build folder.

set(documents ${CMAKE_INSTALL_DATADIR}/doc/rivelt)
# With neither name nor time inside, so that the same file always gives the same archive.
function(install_compressed name destination)
  set(archive ${PROJECT_BINARY_DIR}/${name}.gz)
  add_custom_command(OUTPUT ${archive} DEPENDS docs/${name}
    COMMAND gzip -9nc docs/${name} > ${archive} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  add_custom_target(compressed_${name} ALL DEPENDS ${archive})
  install(FILES ${archive} DESTINATION ${destination})
endfunction()

install_compressed(changelog ${documents})
install_compressed(rivelt-cli.1 ${CMAKE_INSTALL_MANDIR}/man1)
if(TARGET rivelt)
  install_compressed(rivelt.1 ${CMAKE_INSTALL_MANDIR}/man1)
endif()
# In the folders of the sources, so that the links between them lead somewhere.
install(FILES README.md DESTINATION ${documents})
install(FILES docs/messages.md docs/backups.md docs/window.md DESTINATION ${documents}/docs)
install(DIRECTORY docs/screenshots DESTINATION ${documents}/docs)

# The owner has not stated a copyright or a licence yet. That text belongs into the folder above as
# `copyright`; lintian reports that it is missing. The address of the maintainers is to be replaced, too.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME rivelt)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_CONTACT "The Rivelt maintainers <maintainers@rivelt.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"A route of Microsoft Train Simulator refers to track by numbers, which come
from the installed catalogue (Global/tsection.dat). Rivelt converts a route
that was built with a different catalogue: its dynamic track, its other track,
and its track databases. It shows what would change before anything does, keeps
every file that it replaces, and goes back on request. There is a program with
a window, and one for the console.")
include(CPack)
