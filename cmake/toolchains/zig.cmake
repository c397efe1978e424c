# Zig's clang as a cross compiler: macOS (x86_64, arm64) and Linux against an older glibc.
#   KALVORA_ZIG          the zig executable (scripts/toolchains.sh fetches it)
#   KALVORA_ZIG_TARGET   x86_64-macos, aarch64-macos, x86_64-linux-gnu.2.17, ...
# Zig links its own libc++ statically and, for Linux, against stubs of the named glibc
# version, so the result loads on every system with that glibc or a newer one. Zig
# builds libc++ once per target into its cache (KALVORA_ZIG_CACHE).
set(KALVORA_ZIG "" CACHE FILEPATH "zig executable")
set(KALVORA_ZIG_TARGET "" CACHE STRING "zig target triple")
set(KALVORA_ZIG_CACHE "${CMAKE_BINARY_DIR}/zig-cache" CACHE PATH "zig's cache (libc++ per target)")
if(NOT KALVORA_ZIG OR NOT KALVORA_ZIG_TARGET)
    message(FATAL_ERROR "zig toolchain: set KALVORA_ZIG and KALVORA_ZIG_TARGET")
endif()
# Passed on to try_compile projects.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KALVORA_ZIG KALVORA_ZIG_TARGET KALVORA_ZIG_CACHE)

if(KALVORA_ZIG_TARGET MATCHES "macos")
    set(CMAKE_SYSTEM_NAME Darwin)
else()
    set(CMAKE_SYSTEM_NAME Linux)
endif()
string(REGEX MATCH "^[^-]+" CMAKE_SYSTEM_PROCESSOR "${KALVORA_ZIG_TARGET}")

# One wrapper per tool, named like clang so that ccache knows how to cache its compiles; the
# target goes on the command line (and so into ccache's key).
set(wrappers "${CMAKE_BINARY_DIR}/zig-wrappers")
foreach(tool IN ITEMS "clang:cc" "clang++:c++" "ar:ar" "ranlib:ranlib")
    string(REPLACE ":" ";" pair "${tool}")
    list(GET pair 0 name)
    list(GET pair 1 command)
    file(CONFIGURE OUTPUT "${wrappers}/${name}" CONTENT
"#!/bin/sh\nZIG_GLOBAL_CACHE_DIR='${KALVORA_ZIG_CACHE}' ZIG_LOCAL_CACHE_DIR='${KALVORA_ZIG_CACHE}' exec '${KALVORA_ZIG}' ${command} \"$@\"\n"
        @ONLY)
    file(CHMOD "${wrappers}/${name}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
        WORLD_READ WORLD_EXECUTE)
endforeach()
set(CMAKE_C_COMPILER "${wrappers}/clang")
set(CMAKE_CXX_COMPILER "${wrappers}/clang++")
set(CMAKE_AR "${wrappers}/ar" CACHE FILEPATH "" FORCE)
set(CMAKE_RANLIB "${wrappers}/ranlib" CACHE FILEPATH "" FORCE)
set(CMAKE_C_FLAGS_INIT "-target ${KALVORA_ZIG_TARGET}")
set(CMAKE_CXX_FLAGS_INIT "-target ${KALVORA_ZIG_TARGET}")
if(CMAKE_SYSTEM_NAME STREQUAL "Darwin")
    # Zig's Mach-O linker exports hidden symbols too; a link with an exported-symbols list is done
    # again by LLVM's (zig-macos-link.sh).
    find_program(KALVORA_LD64_LLD NAMES ld64.lld ld64.lld-14 PATHS /usr/lib/llvm-14/bin REQUIRED)
    set(CMAKE_CXX_LINKER_LAUNCHER "${CMAKE_CURRENT_LIST_DIR}/zig-macos-link.sh;${KALVORA_LD64_LLD};${KALVORA_ZIG}")
endif()
find_program(CMAKE_OBJCOPY NAMES llvm-objcopy llvm-objcopy-14 PATHS /usr/lib/llvm-14/bin)
find_program(CMAKE_STRIP NAMES llvm-strip llvm-strip-14 PATHS /usr/lib/llvm-14/bin)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_FIND_ROOT_PATH "${CMAKE_BINARY_DIR}/no-sysroot")
