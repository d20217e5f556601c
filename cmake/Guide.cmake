# The pages of docs/ as HTML, for the Help menu and the package: ${CMAKE_BINARY_DIR}/guide/<language>/<page>.html
#
# cmark-gfm is small, a package of Debian, and supports the tables of the pages; Qt reads Markdown only from 5.14 on.
# Without it the program is built without a guide, and the Help menu reports that.

find_program(CMARK cmark-gfm)
if(NOT CMARK)
  message(STATUS "cmark-gfm was not found: the guide is not built")
  return()
endif()

set(guide_folder ${CMAKE_BINARY_DIR}/guide)
file(GLOB english CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/*.md)
file(GLOB german CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/de/*.md)
file(GLOB pictures CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/*.png ${CMAKE_SOURCE_DIR}/docs/*.json
  ${CMAKE_SOURCE_DIR}/docs/pictures/*.png
  ${CMAKE_SOURCE_DIR}/docs/pictures/*.svg ${CMAKE_SOURCE_DIR}/docs/de/pictures/*.png)
set(pages)
foreach(source IN LISTS english german)
  get_filename_component(name ${source} NAME_WE)
  set(language en)
  if(source IN_LIST german)
    set(language de)
  endif()
  set(page ${guide_folder}/${language}/${name}.html)
  add_custom_command(OUTPUT ${page}
    COMMAND ${CMAKE_COMMAND} -DCMARK=${CMARK} -DSOURCE=${source} -DPAGE=${page} -DLANGUAGE=${language}
      -P ${CMAKE_SOURCE_DIR}/cmake/MakePage.cmake
    DEPENDS ${source} ${CMAKE_SOURCE_DIR}/cmake/MakePage.cmake VERBATIM)
  list(APPEND pages ${page})
endforeach()
# Where the pages name them: beside the English pages as beside their sources.
foreach(picture IN LISTS pictures)
  file(RELATIVE_PATH name ${CMAKE_SOURCE_DIR}/docs ${picture})
  if(NOT name MATCHES "^de/")
    set(name en/${name})
  endif()
  add_custom_command(OUTPUT ${guide_folder}/${name}
    COMMAND ${CMAKE_COMMAND} -E copy ${picture} ${guide_folder}/${name} DEPENDS ${picture} VERBATIM)
  list(APPEND pages ${guide_folder}/${name})
endforeach()
add_custom_target(guide ALL DEPENDS ${pages})
install(DIRECTORY ${guide_folder}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/xy-plot-workbench/guide COMPONENT runtime)
