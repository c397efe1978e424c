# Helpers shared by every folder's CMakeLists.txt.

# kalvora_subsystem(<name> [HOST] [SOURCES f...] [DEPENDS sub...] [LIBS lib...])
#   One folder of src/ = one subsystem, compiled once into the OBJECT library
#   kalvora_<name>_objs (SOURCES, default every *.cpp of the folder) and archived
#   as the STATIC library kalvora_<name>, so a test links just what it exercises.
#   HOST gives the subsystem the X-Plane API headers; without it the code cannot
#   include them (file formats, images, math and parsers stay host-free).
#   A folder that mixes both kinds defines two subsystems: <folder> (host-free)
#   and <folder>_host (HOST).
#   DEPENDS names other subsystems (without the kalvora_ prefix) whose headers
#   and archives this one uses; LIBS are outside libraries (e.g. PNG::PNG) for
#   test programs; the plug-in binary links its own static copies instead.
#   Every subsystem's objects also go into kalvora_core and Kalvora.xpl (src/).
function(kalvora_subsystem name)
    cmake_parse_arguments(ARG "HOST" "" "SOURCES;DEPENDS;LIBS" ${ARGN})
    if(NOT ARG_SOURCES)
        file(GLOB ARG_SOURCES CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    endif()
    add_library(kalvora_${name}_usage INTERFACE)
    target_include_directories(kalvora_${name}_usage INTERFACE "${PROJECT_SOURCE_DIR}/src")
    target_compile_definitions(kalvora_${name}_usage INTERFACE
        KALVORA_VERSION_STRING="${KALVORA_VERSION_STRING}")
    if(ARG_HOST)
        target_link_libraries(kalvora_${name}_usage INTERFACE xplm_sdk)
    endif()
    foreach(dep IN LISTS ARG_DEPENDS)
        # Subsystems not written yet are skipped, so folders can land in any order.
        target_link_libraries(kalvora_${name}_usage INTERFACE $<TARGET_NAME_IF_EXISTS:kalvora_${dep}_usage>)
    endforeach()
    if(NOT ARG_SOURCES)
        # Nothing written yet: an empty archive keeps the dependants linking.
        add_library(kalvora_${name} INTERFACE)
        target_link_libraries(kalvora_${name} INTERFACE kalvora_${name}_usage)
        return()
    endif()
    add_library(kalvora_${name}_objs OBJECT ${ARG_SOURCES})
    target_link_libraries(kalvora_${name}_objs PUBLIC kalvora_${name}_usage)
    target_include_directories(kalvora_${name}_objs PRIVATE ${PNG_INCLUDE_DIRS} ${ZLIB_INCLUDE_DIRS})
    set_target_properties(kalvora_${name}_objs PROPERTIES
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON POSITION_INDEPENDENT_CODE ON)
    # No STB_GNU_UNIQUE symbols, so that dlclose() really unloads Kalvora.xpl.
    target_compile_options(kalvora_${name}_objs PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    add_library(kalvora_${name} STATIC $<TARGET_OBJECTS:kalvora_${name}_objs>)
    target_link_libraries(kalvora_${name} PUBLIC kalvora_${name}_usage ${ARG_LIBS})
    foreach(dep IN LISTS ARG_DEPENDS)
        target_link_libraries(kalvora_${name} PUBLIC $<TARGET_NAME_IF_EXISTS:kalvora_${dep}>)
    endforeach()
    set_property(GLOBAL APPEND PROPERTY KALVORA_SUBSYSTEMS ${name})
    set_property(GLOBAL APPEND PROPERTY KALVORA_SUBSYSTEM_LIBS ${ARG_LIBS})
endfunction()

# kalvora_test_flags(<target>)
#   What every test program is compiled with: the test folder on the include path, the
#   folders the tests find their files in, and no optimisation (the code under test keeps
#   the build type; the tests' own code compiles a third faster at -O0).
function(kalvora_test_flags target)
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_compile_options(${target} PRIVATE -O0)
    target_compile_definitions(${target} PRIVATE
        KALVORA_CORPUS_DIR="${KALVORA_CORPUS_DIR}"
        KALVORA_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
        KALVORA_BINARY_DIR="${PROJECT_BINARY_DIR}")
endfunction()

# kalvora_add_test(<name> SOURCES f... [LIBS lib...] [LABELS l...] [NO_PCH])
#   A GoogleTest executable registered with CTest test by test, compiled with the tests'
#   shared precompiled header (kalvora_test_pch) unless NO_PCH: a program compiled with
#   other warning or language flags cannot use it.
#   KALVORA_CORPUS_DIR and KALVORA_SOURCE_DIR are defined for it; include
#   "support/Corpus.h" for the corpus helpers.
function(kalvora_add_test name)
    cmake_parse_arguments(ARG "NO_PCH" "" "SOURCES;LIBS;LABELS" ${ARGN})
    if(name IN_LIST KALVORA_SANITIZED_TESTS)
        # Also run under the sanitizers of the clang build. One label word: the discovered tests take
        # no list, and `ctest -L` matches a regular expression ("images" still finds "images-sanitized").
        if(ARG_LABELS)
            set(ARG_LABELS "${ARG_LABELS}-sanitized")
        else()
            set(ARG_LABELS sanitized)
        endif()
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gmock GTest::gtest_main Threads::Threads)
    kalvora_test_flags(${name})
    if(TARGET kalvora_test_pch AND NOT ARG_NO_PCH)
        target_precompile_headers(${name} REUSE_FROM kalvora_test_pch)
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS "${ARG_LABELS}")
endfunction()

# kalvora_add_bench(<name> SOURCES f... [LIBS lib...])
function(kalvora_add_bench name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} kalvora_bench_support benchmark::benchmark Threads::Threads)
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_compile_definitions(${name} PRIVATE
        KALVORA_CORPUS_DIR="${KALVORA_CORPUS_DIR}"
        KALVORA_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
        KALVORA_BINARY_DIR="${PROJECT_BINARY_DIR}")
endfunction()

# kalvora_add_fuzzer(<name> SOURCES f... [LIBS lib...] [SECONDS n])
#   A libFuzzer target. With clang (-DKALVORA_FUZZ=ON) CTest runs it for a
#   bounded time (SECONDS, default 10) on top of its seed folder fuzz/seeds/<name>
#   when that exists.
function(kalvora_add_fuzzer name)
    cmake_parse_arguments(ARG "" "SECONDS" "SOURCES;LIBS" ${ARGN})
    if(KALVORA_FUZZ_SECONDS)
        set(ARG_SECONDS ${KALVORA_FUZZ_SECONDS}) # make fuzz FUZZ_SECONDS=n overrides every target
    elseif(NOT ARG_SECONDS)
        set(ARG_SECONDS 10)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
    target_link_libraries(${name} PRIVATE ${ARG_LIBS})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests" "${PROJECT_SOURCE_DIR}/fuzz")
    set(work "${CMAKE_CURRENT_BINARY_DIR}/${name}-corpus")
    set(seeds "${PROJECT_SOURCE_DIR}/fuzz/seeds/${name}")
    file(MAKE_DIRECTORY "${work}")
    set(dirs "${work}")
    if(EXISTS "${seeds}")
        list(APPEND dirs "${seeds}")
    endif()
    add_test(NAME fuzz.${name}
             COMMAND ${name} -max_total_time=${ARG_SECONDS} -rss_limit_mb=2048 -timeout=10 ${dirs})
    set_tests_properties(fuzz.${name} PROPERTIES LABELS fuzz)
    set_property(GLOBAL APPEND PROPERTY KALVORA_FUZZERS ${name})
endfunction()

# kalvora_add_subfolders()
#   add_subdirectory() for every direct sub-folder that has a CMakeLists.txt, so a
#   new folder of tests, tools, benches or fuzzers needs no edit of its parent.
function(kalvora_add_subfolders)
    file(GLOB children LIST_DIRECTORIES true RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}/*")
    list(SORT children)
    foreach(child IN LISTS children)
        if(IS_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/${child}" AND EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${child}/CMakeLists.txt")
            add_subdirectory(${child})
        endif()
    endforeach()
endfunction()
