# kalvora_strip_keeping_symbols(<target>)
#   After linking, the target's debug symbols go to a file beside it and the target itself is
#   stripped: <file>.debug (ELF, PE: linked back with a debug link) or <file>.dSYM (Mach-O).
#   The release ships the stripped file; the symbols stay with the build for crash reports.
function(kalvora_strip_keeping_symbols target)
    set(file "$<TARGET_FILE:${target}>")
    if(APPLE)
        find_program(KALVORA_DSYMUTIL NAMES dsymutil dsymutil-14 PATHS /usr/lib/llvm-14/bin REQUIRED)
        add_custom_command(TARGET ${target} POST_BUILD
            COMMAND "${KALVORA_DSYMUTIL}" "${file}" -o "${file}.dSYM"
            COMMAND "${CMAKE_STRIP}" -x "${file}"
            VERBATIM)
    else()
        add_custom_command(TARGET ${target} POST_BUILD
            COMMAND "${CMAKE_OBJCOPY}" --only-keep-debug "${file}" "${file}.debug"
            COMMAND "${CMAKE_STRIP}" --strip-unneeded "${file}"
            COMMAND "${CMAKE_OBJCOPY}" "--add-gnu-debuglink=${file}.debug" "${file}"
            VERBATIM)
    endif()
endfunction()
