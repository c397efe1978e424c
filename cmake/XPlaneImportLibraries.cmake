# X-Plane's Windows import libraries, made at build time from our own API declarations
# (sdk/): a module-definition file per DLL, turned into an import library by dlltool.
#   xplane_import_libraries   links libXPLM_64.a and libXPWidgets_64.a
#   XPLANE_XPLM_DEF, XPLANE_WIDGETS_DEF   the .def files
#   XPLANE_WIDGETS_FORWARD_DEF  XPWidgets_64.dll's exports forwarded to XPLM_64.dll (simhost)
set(out "${PROJECT_BINARY_DIR}/xplane-import")
set(XPLANE_XPLM_DEF "${out}/XPLM_64.def")
set(XPLANE_WIDGETS_DEF "${out}/XPWidgets_64.def")
set(XPLANE_WIDGETS_FORWARD_DEF "${out}/XPWidgets_64-forward.def")
if(TARGET xplane_import_libraries)
    return()
endif()
find_program(KALVORA_DLLTOOL NAMES ${CMAKE_CXX_COMPILER_TARGET}-dlltool x86_64-w64-mingw32-dlltool dlltool REQUIRED)
file(GLOB xplm_headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/sdk/XPLM*.h")
list(REMOVE_ITEM xplm_headers "${PROJECT_SOURCE_DIR}/sdk/XPLMDefs.h") # macros only
file(GLOB widget_headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/sdk/XP[A-KM-Z]*.h")
set(script "${PROJECT_SOURCE_DIR}/cmake/MakeImportDef.cmake")
# The header lists travel through the shell joined by "|".
string(REPLACE ";" "|" xplm_headers_arg "${xplm_headers}")
string(REPLACE ";" "|" widget_headers_arg "${widget_headers}")
add_custom_command(OUTPUT "${XPLANE_XPLM_DEF}" "${XPLANE_WIDGETS_DEF}" "${XPLANE_WIDGETS_FORWARD_DEF}"
    COMMAND ${CMAKE_COMMAND} -DLIBRARY=XPLM_64.dll -DMARKER=XPLM_API "-DHEADERS=${xplm_headers_arg}"
            "-DOUTPUT=${XPLANE_XPLM_DEF}" -P "${script}"
    COMMAND ${CMAKE_COMMAND} -DLIBRARY=XPWidgets_64.dll -DMARKER=WIDGET_API "-DHEADERS=${widget_headers_arg}"
            "-DOUTPUT=${XPLANE_WIDGETS_DEF}" -P "${script}"
    COMMAND ${CMAKE_COMMAND} -DLIBRARY=XPWidgets_64.dll -DMARKER=WIDGET_API "-DHEADERS=${widget_headers_arg}"
            -DFORWARD_TO=XPLM_64 "-DOUTPUT=${XPLANE_WIDGETS_FORWARD_DEF}" -P "${script}"
    DEPENDS ${xplm_headers} ${widget_headers} "${script}"
    COMMENT "X-Plane module-definition files from sdk/" VERBATIM)
add_custom_command(OUTPUT "${out}/libXPLM_64.a" "${out}/libXPWidgets_64.a"
    COMMAND ${KALVORA_DLLTOOL} -d "${XPLANE_XPLM_DEF}" -D XPLM_64.dll -l "${out}/libXPLM_64.a"
    COMMAND ${KALVORA_DLLTOOL} -d "${XPLANE_WIDGETS_DEF}" -D XPWidgets_64.dll -l "${out}/libXPWidgets_64.a"
    DEPENDS "${XPLANE_XPLM_DEF}" "${XPLANE_WIDGETS_DEF}"
    COMMENT "X-Plane import libraries" VERBATIM)
add_custom_target(xplane_import_files DEPENDS "${out}/libXPLM_64.a" "${out}/libXPWidgets_64.a")
add_library(xplane_import_libraries INTERFACE)
add_dependencies(xplane_import_libraries xplane_import_files)
target_link_libraries(xplane_import_libraries INTERFACE "${out}/libXPLM_64.a" "${out}/libXPWidgets_64.a")
