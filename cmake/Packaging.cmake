# What is installed beside the targets, and the Debian packages: component "runtime" for users of the workbench,
# component "development" for authors of plugins.

include(CMakePackageConfigHelpers)

# The changelog's newest version is the one that is built; its date is the packages' date.
file(STRINGS ${CMAKE_SOURCE_DIR}/CHANGELOG.md releases REGEX "^## [0-9]")
list(GET releases 0 release)
if(NOT release MATCHES "^## ([0-9.]+) - ([0-9-]+)$" OR NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "CHANGELOG.md begins with \"${release}\", the project's version is ${PROJECT_VERSION}.")
endif()
set(release_date ${CMAKE_MATCH_2})
set_property(DIRECTORY ${CMAKE_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/CHANGELOG.md)
execute_process(COMMAND date --utc --date=${release_date} "+%a, %d %b %Y 08:00:00 +0000"
  OUTPUT_VARIABLE release_time OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE failed ERROR_QUIET)
if(failed) # not the date command of Debian, so no Debian package either
  set(release_time ${release_date})
endif()
set(maintainer "The maintainers of this project <maintainers@container-host.invalid>")
set(packaging ${CMAKE_SOURCE_DIR}/packaging)
set(packaged ${CMAKE_BINARY_DIR}/packaging)

# compressed(FILE): makes FILE.gz beside it while configuring, the same at every time.
function(compressed file)
  find_program(GZIP gzip REQUIRED)
  execute_process(COMMAND ${GZIP} -9nkf ${file} RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "${file} could not be compressed.")
  endif()
endfunction()

# The desktop's side of the application.
configure_file(${packaging}/${desktop_entry}.metainfo.xml.in ${packaged}/${desktop_entry}.metainfo.xml @ONLY)
install(FILES ${packaging}/${desktop_entry}.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT runtime)
install(FILES ${packaged}/${desktop_entry}.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT runtime)
install(FILES ${packaging}/${desktop_entry}.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT runtime)
# Set-ups are a type of files of their own, with an icon that is called as the type is.
install(FILES ${packaging}/${desktop_entry}.mime.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME ${desktop_entry}.xml COMPONENT runtime)
install(FILES ${packaging}/application-x-xyplot-setup.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/mimetypes COMPONENT runtime)

# Manual, changelog and licence.
configure_file(${packaging}/xy-plot-workbench.1.in ${packaged}/xy-plot-workbench.1 @ONLY)
configure_file(${packaging}/changelog.in ${packaged}/changelog @ONLY)
compressed(${packaged}/xy-plot-workbench.1)
compressed(${packaged}/changelog)
install(FILES ${packaged}/xy-plot-workbench.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT runtime)
configure_file(${packaging}/xy-plot-workbench.de.1.in ${packaged}/de/xy-plot-workbench.1 @ONLY)
compressed(${packaged}/de/xy-plot-workbench.1)
install(FILES ${packaged}/de/xy-plot-workbench.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/de/man1 COMPONENT runtime)
set(documents ${CMAKE_INSTALL_DATADIR}/doc)
install(FILES ${packaging}/copyright ${packaged}/changelog.gz ${CMAKE_SOURCE_DIR}/docs/setups.md
    ${CMAKE_SOURCE_DIR}/docs/setup.schema.json ${CMAKE_SOURCE_DIR}/docs/first-drive.md
    ${CMAKE_SOURCE_DIR}/docs/register-maps.md ${CMAKE_SOURCE_DIR}/docs/register-map.schema.json
  DESTINATION ${documents}/xy-plot-workbench COMPONENT runtime)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/examples/modbus
  DESTINATION ${documents}/xy-plot-workbench/examples COMPONENT runtime USE_SOURCE_PERMISSIONS)
install(FILES ${packaging}/copyright ${packaged}/changelog.gz
  DESTINATION ${documents}/xy-plot-workbench-dev COMPONENT development)

# What find_package(ContainerHost) finds, and a plugin to start from.
set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ContainerHost)
configure_package_config_file(${packaging}/ContainerHostConfig.cmake.in ${packaged}/ContainerHostConfig.cmake
  INSTALL_DESTINATION ${config_folder} PATH_VARS plugin_folder)
# A plugin holds the host's classes as they were when it was built.
write_basic_package_version_file(${packaged}/ContainerHostConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${packaged}/ContainerHostConfig.cmake ${packaged}/ContainerHostConfigVersion.cmake
    ${CMAKE_SOURCE_DIR}/cmake/ContainerPlugin.cmake
  DESTINATION ${config_folder} COMPONENT development)
install(EXPORT ContainerHostTargets NAMESPACE ContainerHost:: DESTINATION ${config_folder} COMPONENT development)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/examples/minimal-plugin
  DESTINATION ${documents}/xy-plot-workbench-dev/examples COMPONENT development)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME xy-plot-workbench)
set(CPACK_PACKAGE_VENDOR "The maintainers of this project")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${maintainer}")
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON) # on the very same version

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME xy-plot-workbench)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# Loaded when the style's drawing is needed, so nothing that reads the program finds it.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS libqt5svg5)
# Qt's own texts, in its dialogs.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS qttranslations5-l10n)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "plot one live value of a motor controller over another
Watches up to four pairs of live values at once while motors are commissioned
and tuned: position over velocity, encoder over motor position. Curves can be
zoomed, saved as a picture, exported as a table and recorded to CSV sample by
sample.

The workbench stands in for the host application: it loads container plugins
as the host does, offers simulated modules whose motors really move, reads
devices over Modbus, and plays recordings back.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME xy-plot-workbench-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qtbase5-dev (>= 5.12)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS cmake)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "headers for container plugins of the XY plot workbench
The host as a container plugin sees it: headers, a CMake package that finds
them, and a minimal plugin to start from. The workbench loads such plugins
beside the XY-Plotter.")

include(CPack)
cpack_add_component(runtime)
cpack_add_component(development DEPENDS runtime)
