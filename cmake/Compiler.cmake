# Warnings and sanitizers of every target of this project, for the compilers that are known; others get none.

# The headers of another host may bring warnings that nobody here has seen.
set(warnings_as_errors ON)
if(HOST_SDK)
  set(warnings_as_errors OFF)
endif()
option(WARNINGS_AS_ERRORS "stop at compiler warnings" ${warnings_as_errors})
set(SANITIZERS "" CACHE STRING "sanitizers to build with, for example address,undefined")

add_library(project_options INTERFACE)
if(MSVC) # the compiler of that name, and others with its options
  target_compile_options(project_options INTERFACE /W4 /permissive- /utf-8 /Zc:__cplusplus)
  set(stop_at_warnings /WX)
elseif(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(project_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Woverloaded-virtual
    # Qt's logging macros are written for it.
    $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-gnu-zero-variadic-macro-arguments>)
  set(stop_at_warnings -Werror)
endif()
if(WARNINGS_AS_ERRORS)
  target_compile_options(project_options INTERFACE ${stop_at_warnings})
endif()

# For sources that are compiled together: a name of one is no outer name of the next, and no unnamed namespace is that of
# a header.
add_library(joined_sources INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(joined_sources INTERFACE -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()
if(CMAKE_UNITY_BUILD)
  target_link_libraries(project_options INTERFACE joined_sources)
endif()

# What is deprecated in any series of Qt is an error. Where the replacement is newer than 5.12, the call that it
# replaces may be used between QT_WARNING_PUSH, QT_WARNING_DISABLE_DEPRECATED and QT_WARNING_POP.
# The headers of another host may use what these definitions take away.
if(NOT HOST_SDK)
  target_compile_definitions(project_options INTERFACE
    QT_DEPRECATED_WARNINGS
    QT_DEPRECATED_WARNINGS_SINCE=0x050F00
    QT_DISABLE_DEPRECATED_BEFORE=0x050C00
    QT_NO_CAST_TO_ASCII
    QT_NO_FOREACH)
endif()

if(SANITIZERS)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    message(FATAL_ERROR "SANITIZERS takes GCC or Clang.")
  endif()
  target_compile_options(project_options INTERFACE
    -fsanitize=${SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(project_options INTERFACE -fsanitize=${SANITIZERS})
endif()
