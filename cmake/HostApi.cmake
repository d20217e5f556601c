# The seam to the host: whoever uses the target 'host' includes its headers as "host/Name.h".
# The target is the substitute in host/, or the libraries of another host's SDK; see docs/real-host.md.

set(HOST_SDK "" CACHE PATH "folder of the SDK of a host to build for; empty: the substitute in host/")
set(HOST_SDK_FORWARDING "" CACHE PATH
  "folder of the forwarding headers and sdk.cmake for that SDK; empty: <HOST_SDK>/forwarding")

# host_headers_in_use(VARIABLE)
# The names of the host's headers that the plugin, the plot widget and the check of declarations include.
function(host_headers_in_use variable)
  file(GLOB sources CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/plotter/*.cpp ${CMAKE_SOURCE_DIR}/plotter/*.h
    ${CMAKE_SOURCE_DIR}/plugin/*.cpp ${CMAKE_SOURCE_DIR}/plugin/*.h ${CMAKE_SOURCE_DIR}/plugin/forms/*.ui
    ${CMAKE_SOURCE_DIR}/tests/plugin/HostDeclarations.cpp)
  set(headers)
  foreach(source IN LISTS sources)
    file(STRINGS ${source} lines REGEX "(#include \"|<header>)host/[A-Za-z]+\\.h")
    string(REGEX MATCHALL "host/[A-Za-z]+\\.h" included "${lines}")
    list(APPEND headers ${included})
  endforeach()
  list(REMOVE_DUPLICATES headers)
  set(${variable} ${headers} PARENT_SCOPE)
endfunction()

# import_host()
# Makes the target 'host' from HOST_SDK, or says what is missing there.
function(import_host)
  foreach(room IN ITEMS workbench bench)
    string(TOUPPER ${room} switch)
    if(room IN_LIST ROOMS OR ${switch})
      message(FATAL_ERROR "The ${room} runs on the substitute host only: with HOST_SDK, "
        "build the plugin alone by -DROOMS=\"host;plotter;plugin\" and without -DBENCH=ON.")
    endif()
  endforeach()
  set(forwarding ${HOST_SDK_FORWARDING})
  if(NOT forwarding)
    set(forwarding ${HOST_SDK}/forwarding)
  endif()
  if(NOT EXISTS ${forwarding}/sdk.cmake)
    message(FATAL_ERROR "There is no ${forwarding}/sdk.cmake: HOST_SDK_FORWARDING has to name the folder of the "
      "forwarding headers for this SDK, see docs/real-host.md.")
  endif()
  set(HOST_SDK_HEADERS include)
  set(HOST_SDK_LIBRARIES)
  include(${forwarding}/sdk.cmake)

  foreach(folder IN LISTS HOST_SDK_HEADERS)
    if(NOT IS_DIRECTORY ${HOST_SDK}/${folder})
      message(FATAL_ERROR "HOST_SDK has no headers: there is no folder ${HOST_SDK}/${folder}.")
    endif()
    list(APPEND include_folders ${HOST_SDK}/${folder})
  endforeach()
  host_headers_in_use(headers)
  foreach(header IN LISTS headers)
    if(NOT EXISTS ${forwarding}/${header})
      list(APPEND missing_headers ${header})
    endif()
  endforeach()
  if(missing_headers)
    message(FATAL_ERROR "These forwarding headers are missing in ${forwarding}: ${missing_headers}.")
  endif()

  foreach(library IN LISTS HOST_SDK_LIBRARIES)
    # Looked up anew each time, or the cache would keep the library of another SDK.
    unset(host_library CACHE)
    find_library(host_library NAMES ${library} PATHS ${HOST_SDK}/lib ${HOST_SDK}/bin NO_DEFAULT_PATH)
    if(NOT host_library)
      message(FATAL_ERROR "HOST_SDK has no library \"${library}\" in ${HOST_SDK}/lib.")
    endif()
    list(APPEND libraries ${host_library})
    unset(host_library CACHE)
  endforeach()
  if(NOT libraries)
    message(FATAL_ERROR "${forwarding}/sdk.cmake has to set HOST_SDK_LIBRARIES.")
  endif()

  list(POP_FRONT libraries library)
  add_library(host UNKNOWN IMPORTED GLOBAL)
  set_target_properties(host PROPERTIES
    IMPORTED_LOCATION ${library}
    INTERFACE_LINK_LIBRARIES "${libraries};Qt5::Widgets"
    INTERFACE_INCLUDE_DIRECTORIES "${forwarding};${include_folders}")
  message(STATUS "Host: ${library}, forwarded by ${forwarding}")
endfunction()

if(HOST_SDK)
  import_host()
else()
  add_subdirectory(${CMAKE_SOURCE_DIR}/host)
endif()
