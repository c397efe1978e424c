# cmake -DBUILD=<build folder> -DPREFIX=<scratch prefix> -P KalvoraSimInstall.cmake
# Installs kalvora-sim's component into a fresh prefix; the installed program must run Kalvora
# installed beside it (its help names that file) and a scenario with the profiles installed with it.
file(REMOVE_RECURSE "${PREFIX}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --component simhost --prefix "${PREFIX}"
    OUTPUT_QUIET RESULT_VARIABLE failed)
if(failed)
    message(FATAL_ERROR "cmake --install --component simhost failed")
endif()
execute_process(COMMAND "${PREFIX}/bin/kalvora-sim" --help OUTPUT_VARIABLE help)
string(FIND "${help}" "${PREFIX}/share/kalvora-sim/plugins/Kalvora.xpl" at)
if(at LESS 0)
    message(FATAL_ERROR "the installed kalvora-sim does not default to the Kalvora installed with it:\n${help}")
endif()
execute_process(COMMAND "${PREFIX}/bin/kalvora-sim" --scenario straight --aircraft B738 --seconds 1 --quiet
    OUTPUT_VARIABLE summary ERROR_VARIABLE errors RESULT_VARIABLE failed)
if(failed OR NOT summary MATCHES "aircraft B738")
    message(FATAL_ERROR "the installed kalvora-sim did not run a scenario:\n${summary}${errors}")
endif()
file(REMOVE_RECURSE "${PREFIX}")
