# The seam to the host: whoever uses the target 'host' includes its headers as "host/Name.h".
add_subdirectory(${CMAKE_SOURCE_DIR}/host)
