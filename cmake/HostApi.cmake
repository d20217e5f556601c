# The seam to the host: what uses the target 'host' includes its headers as "host/Name.h".
# The target is the substitute in host/, or the libraries of another host's SDK; see docs/real-host.md.

set(HOST_SDK "" CACHE PATH "folder of the SDK of a host to build for; empty: the substitute in host/")
set(HOST_SDK_FORWARDING "" CACHE PATH
  "folder of the forwarding headers and sdk.cmake for that SDK; empty: <HOST_SDK>/forwarding")
# What hosts may name in their own way, with defaults.
set(host_access ${CMAKE_SOURCE_DIR}/host/access)

# host_headers_in_use(VARIABLE)
# The names of the host's headers that the plugin, the plot widget and the check of declarations include.
function(host_headers_in_use variable)
  file(GLOB sources CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/plotter/*.cpp ${CMAKE_SOURCE_DIR}/plotter/*.h
    ${CMAKE_SOURCE_DIR}/plugin/*.cpp ${CMAKE_SOURCE_DIR}/plugin/*.h ${CMAKE_SOURCE_DIR}/plugin/forms/*.ui
    ${host_access}/HostDeclarations.cpp ${host_access}/host/*.h)
  set(headers)
  foreach(source IN LISTS sources)
    file(STRINGS ${source} lines REGEX "(#include \"|<header>)host/[A-Za-z]+\\.h")
    string(REGEX MATCHALL "host/[A-Za-z]+\\.h" included "${lines}")
    list(APPEND headers ${included})
  endforeach()
  list(REMOVE_DUPLICATES headers)
  list(REMOVE_ITEM headers host/HostAccess.h)
  set(${variable} ${headers} PARENT_SCOPE)
endfunction()

# find_host_libraries(VARIABLE)
# The files of HOST_SDK_LIBRARIES. Files with their full path and targets are taken as they are.
function(find_host_libraries variable)
  set(libraries)
  set(folders ${HOST_SDK_LIBRARY_FOLDERS})
  list(TRANSFORM folders PREPEND ${HOST_SDK}/)
  foreach(name IN LISTS HOST_SDK_LIBRARIES)
    if(TARGET ${name} OR IS_ABSOLUTE ${name})
      list(APPEND libraries ${name})
      continue()
    endif()
    # Looked up anew each time, or the cache would keep the library of another SDK.
    unset(host_library CACHE)
    find_library(host_library NAMES ${name} PATHS ${folders} NO_DEFAULT_PATH)
    if(NOT host_library)
      message(FATAL_ERROR "HOST_SDK has no library \"${name}\" in ${folders}.")
    endif()
    list(APPEND libraries ${host_library})
    unset(host_library CACHE)
  endforeach()
  if(NOT libraries)
    message(FATAL_ERROR "${forwarding}/sdk.cmake has to set HOST_SDK_LIBRARIES.")
  endif()
  set(${variable} ${libraries} PARENT_SCOPE)
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
  set(HOST_SDK_LIBRARY_FOLDERS lib lib64 bin)
  set(HOST_SDK_QT_MODULES)
  set(HOST_SDK_DEFINITIONS)
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
  set(modules Qt5::Widgets)
  foreach(module IN LISTS HOST_SDK_QT_MODULES)
    find_package(Qt5${module} 5.12 REQUIRED)
    list(APPEND modules Qt5::${module})
  endforeach()
  find_host_libraries(libraries)

  # Imported, so that the compiler takes the SDK's headers for those of the system and passes over their warnings.
  add_library(host INTERFACE IMPORTED GLOBAL)
  set_target_properties(host PROPERTIES
    INTERFACE_LINK_LIBRARIES "${libraries};${modules}"
    INTERFACE_COMPILE_DEFINITIONS "${HOST_SDK_DEFINITIONS}"
    INTERFACE_INCLUDE_DIRECTORIES "${forwarding};${host_access};${include_folders}")
  message(STATUS "Host: ${libraries}, forwarded by ${forwarding}")
endfunction()

if(HOST_SDK)
  import_host()
else()
  add_subdirectory(${CMAKE_SOURCE_DIR}/host)
  target_include_directories(host INTERFACE $<BUILD_INTERFACE:${host_access}>)
endif()

# Compiled and never run: it says what a host has to declare.
add_library(host_declarations OBJECT ${host_access}/HostDeclarations.cpp)
target_link_libraries(host_declarations PRIVATE host project_options)

# check_declarations_first(TARGET...)
# For another host: what its headers lack is said once, by the check, and not by every source that needs it.
function(check_declarations_first)
  if(HOST_SDK)
    foreach(target IN LISTS ARGN)
      if(TARGET ${target})
        add_dependencies(${target} host_declarations)
      endif()
    endforeach()
  endif()
endfunction()
