# simhost on Windows is X-Plane's own pair of DLLs, so a Windows plug-in built against
# X-Plane's import libraries loads into it unchanged:
#   XPLM_64.dll       simhost itself: the X-Plane API (and simhost's C++ API for kalvora-sim)
#   XPWidgets_64.dll  no code: its .def file forwards every widget function to XPLM_64.dll
# The runtimes are linked in statically, so nothing but kalvora-sim.exe and the two DLLs is needed.
# All three in one folder (kalvora-sim.exe finds its DLLs beside it).
include(XPlaneImportLibraries)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/simhost-win")
set_target_properties(simhost PROPERTIES OUTPUT_NAME XPLM_64 PREFIX "" RUNTIME_OUTPUT_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
target_link_options(simhost PRIVATE -Wl,--export-all-symbols -Wl,--exclude-libs,ALL)
# Header-only libraries (CLI11, stb) from the build machine.
set(host_headers "${PROJECT_BINARY_DIR}/host-headers")
foreach(dir IN ITEMS CLI stb)
    if(NOT EXISTS "${host_headers}/${dir}" AND EXISTS "/usr/include/${dir}")
        file(MAKE_DIRECTORY "${host_headers}")
        file(CREATE_LINK "/usr/include/${dir}" "${host_headers}/${dir}" SYMBOLIC)
    endif()
endforeach()
target_include_directories(simhost SYSTEM PUBLIC "${host_headers}")

add_library(XPWidgets_64 SHARED "${CMAKE_CURRENT_SOURCE_DIR}/src/WidgetsForwarder.c")
target_link_options(XPWidgets_64 PRIVATE "${XPLANE_WIDGETS_FORWARD_DEF}") # made in another folder: named here
add_dependencies(XPWidgets_64 xplane_import_files)
set_property(TARGET XPWidgets_64 APPEND PROPERTY LINK_DEPENDS "${XPLANE_WIDGETS_FORWARD_DEF}")
set_target_properties(XPWidgets_64 PROPERTIES PREFIX "")
add_dependencies(simhost XPWidgets_64)
