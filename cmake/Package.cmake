# The Debian package: configure with the preset "package", then run cpack (scripts/package.sh does).

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME scopeview)
set(CPACK_PACKAGE_VERSION 6.65)
set(CPACK_PACKAGE_CONTACT "scopeview maintainers <maintainers@scopeview.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "weather radar display for the command line and X11")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Finds radar files by naming conventions or takes them by name,\n\
decodes them, and draws them on a map with labels, colour bar and storm\n\
tracks: in a window with animation, or as PNG, GIF, PostScript, HPGL and\n\
text for scripts. It reads NEXRAD Level III and Level II, MDR and RCM\n\
bulletins, radar mosaics and images. Pictures from scripts need no\n\
display.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded when they are first needed, so that no tool finds them in the program.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libxml2")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libx11-6")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/conffiles)
file(WRITE ${PROJECT_BINARY_DIR}/conffiles "/etc/zqv/zqv.cfg\n")
set(CPACK_STRIP_FILES ON)
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)

# What Debian asks of every package.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  find_program(ZQV_GZIP gzip REQUIRED)
  set(changelog ${PROJECT_BINARY_DIR}/changelog.gz)
  execute_process(COMMAND ${ZQV_GZIP} -9nc ${PROJECT_SOURCE_DIR}/cmake/debian/changelog
    OUTPUT_FILE ${changelog} COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${changelog} ${PROJECT_SOURCE_DIR}/cmake/debian/copyright
    DESTINATION ${ZQV_INSTALL_DOC})
endif()
