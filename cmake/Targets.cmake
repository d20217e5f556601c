# One function for each kind of target, and where the targets are installed.

include(GNUInstallDirs)
include(ContainerPlugin)

# The host library is the application's own and not for the system's library path; plugins lie below it.
set(private_library_folder ${CMAKE_INSTALL_LIBDIR}/xy-plot-workbench)
set(plugin_folder ${private_library_folder}/plugins)
# The name under which desktops know the application.
set(desktop_entry org.container_host.XYPlotWorkbench)

# room_library(NAME SHARED|STATIC|OBJECT SOURCES file... [USES target...])
# A library of one room. Its own folder is the include path of those who use it.
function(room_library name kind)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "SOURCES;USES")
  add_library(${name} ${kind} ${arg_SOURCES})
  set_target_properties(${name} PROPERTIES
    AUTOMOC ON AUTOUIC ON AUTORCC ON POSITION_INDEPENDENT_CODE ON)
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
  target_link_libraries(${name} PUBLIC Qt5::Widgets ${arg_USES} PRIVATE project_options)
endfunction()

# room_application(NAME SOURCES file... [USES target...])
function(room_application name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
  add_executable(${name} ${arg_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_link_libraries(${name} PRIVATE Qt5::Widgets ${arg_USES} project_options)
endfunction()

# room_tests(NAME SOURCES file... [USES target...] [DEPENDS target...])
# One program of the test classes in the SOURCES named <class>Test.cpp. CTest runs each class in a process of its own,
# offscreen. DEPENDS names targets that are loaded or started at run time. The sources are compiled some at a time in all
# builds, because what they include takes most of the time.
function(room_tests name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES;DEPENDS")
  add_executable(${name} ${arg_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON UNITY_BUILD ON)
  target_link_libraries(${name} PRIVATE Qt5::Test test_support ${arg_USES} project_options joined_sources)
  if(arg_DEPENDS)
    add_dependencies(${name} ${arg_DEPENDS})
  endif()
  foreach(source IN LISTS arg_SOURCES)
    get_filename_component(class ${source} NAME_WE)
    if(NOT source MATCHES "Test\\.cpp$")
      continue()
    endif()
    add_test(NAME ${class} COMMAND ${name} ${class})
    set_tests_properties(${class} PROPERTIES
      TIMEOUT 120
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_SCALE_FACTOR=1;LC_ALL=C.UTF-8;UBSAN_OPTIONS=print_stacktrace=1;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/cmake/leaks.supp:print_suppressions=0")
  endforeach()
endfunction()
