# For plugins in this project, and for those of others: it is installed with the host's headers.

include(CheckLinkerFlag)

# refuse_missing_symbols(TARGET)
# Makes the linker stop at a symbol that no library has. Where libraries are ELF files it would otherwise show only in
# the host, when the plugin first uses it; other linkers do so by themselves.
function(refuse_missing_symbols target)
  if(NOT UNIX OR APPLE)
    return()
  endif()
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang" AND "${SANITIZERS} ${CMAKE_CXX_FLAGS}" MATCHES "address|undefined|-fsanitize")
    return() # the sanitizers' own symbols are in the program that loads the plugin
  endif()
  check_linker_flag(CXX -Wl,-z,defs CAN_REFUSE_MISSING_SYMBOLS)
  if(CAN_REFUSE_MISSING_SYMBOLS)
    target_link_options(${target} PRIVATE -Wl,-z,defs)
  endif()
endfunction()

# container_plugin(NAME [SOURCES file...] USES target... [TRANSLATIONS file.ts...])
# A plugin file NAME.so in the build's folder plugins/. USES has to lead to the host: it is ContainerHost::host for all
# who come by find_package(ContainerHost). TRANSLATIONS are files of the form NAME_<language>.ts; compiled they are in
# plugins/translations/, which the workbench looks into when it loads NAME.so. They take Qt's package LinguistTools; a
# build without it has no translations.
function(container_plugin name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES;TRANSLATIONS")
  add_library(${name} MODULE ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_USES})
  refuse_missing_symbols(${name})
  set_target_properties(${name} PROPERTIES
    AUTOMOC ON AUTOUIC ON AUTORCC ON
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/plugins)
  if(arg_TRANSLATIONS)
    find_package(Qt5LinguistTools 5.12 QUIET)
    if(Qt5LinguistTools_FOUND)
      set_source_files_properties(${arg_TRANSLATIONS} PROPERTIES OUTPUT_LOCATION ${CMAKE_BINARY_DIR}/plugins/translations)
      qt5_add_translation(compiled ${arg_TRANSLATIONS})
      target_sources(${name} PRIVATE ${compiled})
    else()
      message(STATUS "${name}: no translations, because there is no Qt5LinguistTools")
    endif()
  endif()
endfunction()
