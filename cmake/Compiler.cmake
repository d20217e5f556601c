# Warnings and sanitizers of every target of this project.

set(SANITIZERS "" CACHE STRING "sanitizers to build with, for example address,undefined")

add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Woverloaded-virtual -Werror
  # The toolkit's logging macros are written for it.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
# What is deprecated in any series of the toolkit is an error. Where the replacement is newer than 5.12, the call that it
# replaces may be used between QT_WARNING_PUSH, QT_WARNING_DISABLE_DEPRECATED and QT_WARNING_POP.
target_compile_definitions(project_options INTERFACE
  QT_DEPRECATED_WARNINGS
  QT_DEPRECATED_WARNINGS_SINCE=0x050F00
  QT_DISABLE_DEPRECATED_BEFORE=0x050C00
  QT_NO_CAST_TO_ASCII
  QT_NO_FOREACH)

if(SANITIZERS)
  target_compile_options(project_options INTERFACE
    -fsanitize=${SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(project_options INTERFACE -fsanitize=${SANITIZERS})
endif()
