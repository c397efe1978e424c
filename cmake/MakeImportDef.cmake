# cmake -DLIBRARY=<dll name> -DMARKER=<XPLM_API|WIDGET_API> -DOUTPUT=<.def> [-DFORWARD_TO=<dll stem>]
#       -DHEADERS=<h|h|...> -P MakeImportDef.cmake
# Writes the module-definition file of one X-Plane DLL: every function our API headers
# declare with MARKER. With FORWARD_TO each export forwards to that DLL's function of the
# same name (a DLL that hands its functions on to another).
set(names)
string(REPLACE "|" ";" HEADERS "${HEADERS}")
foreach(header IN LISTS HEADERS)
    file(READ "${header}" text)
    string(REGEX MATCHALL "${MARKER}[^;(]*\\(" declarations "${text}")
    foreach(declaration IN LISTS declarations)
        string(REGEX MATCH "([A-Za-z_][A-Za-z0-9_]*)[ \t\r\n]*\\($" _ "${declaration}")
        list(APPEND names "${CMAKE_MATCH_1}")
    endforeach()
endforeach()
list(REMOVE_DUPLICATES names)
list(SORT names)
set(def "LIBRARY ${LIBRARY}\nEXPORTS\n")
foreach(name IN LISTS names)
    if(FORWARD_TO)
        string(APPEND def "    ${name} = ${FORWARD_TO}.${name}\n")
    else()
        string(APPEND def "    ${name}\n")
    endif()
endforeach()
file(WRITE "${OUTPUT}.new" "${def}")
file(COPY_FILE "${OUTPUT}.new" "${OUTPUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUTPUT}.new")
