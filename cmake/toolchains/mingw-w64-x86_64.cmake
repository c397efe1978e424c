# Windows x64 with Debian's mingw-w64 (the POSIX-threads flavour, whose libwinpthread is
# linked in statically).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_OBJCOPY ${triple}-objcopy)
set(CMAKE_STRIP ${triple}-strip)
set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Programs built here that the build itself runs (simhost's table generator) run under Wine,
# in the prefix the Windows tests use (KALVORA_WINEPREFIX, made on first use).
find_program(KALVORA_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(KALVORA_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_COMMAND} -E env "WINEPREFIX=${KALVORA_WINEPREFIX}" WINEDEBUG=-all
        "${KALVORA_WINE}")
endif()
