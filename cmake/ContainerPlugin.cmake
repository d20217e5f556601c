# For plugins in this project, and for those of others: it is installed with the host's headers.

# container_plugin(NAME [SOURCES file...] USES target...)
# A plugin file NAME.so in the build's folder plugins/. USES has to lead to the host: it is ContainerHost::host for all
# who come by find_package(ContainerHost).
function(container_plugin name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
  add_library(${name} MODULE ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_USES})
  set_target_properties(${name} PROPERTIES
    AUTOMOC ON AUTOUIC ON AUTORCC ON
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/plugins)
endfunction()
