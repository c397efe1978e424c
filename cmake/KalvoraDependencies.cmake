# The outside libraries, found or built, as the same targets in every build:
#   PNG::PNG, ZLIB::ZLIB   libpng and zlib. With KALVORA_PNG_SOURCE_DIR / KALVORA_ZLIB_SOURCE_DIR
#                          (unpacked sources, e.g. Debian's source packages fetched by
#                          scripts/toolchains.sh) they are compiled here, static, for the target;
#                          otherwise the system's (find_package).
#   KALVORA_PLUGIN_PNG_LIBS what Kalvora.xpl links: the compiled ones, or the system's static
#                          archives (the plug-in carries its own copy).
#   OpenGL::OpenGL         the GL headers, and the library for programs that draw on their own
#                          (simhost, tests). A plug-in takes GL from the host process, so a
#                          plug-in-only build needs just the headers (KALVORA_GL_INCLUDE_DIR).
#   Threads::Threads       for simhost and the tests.

set(KALVORA_PNG_SOURCE_DIR "" CACHE PATH "libpng sources to compile in (empty: the system's libpng)")
set(KALVORA_ZLIB_SOURCE_DIR "" CACHE PATH "zlib sources to compile in (empty: the system's zlib)")
set(KALVORA_GL_INCLUDE_DIR "" CACHE PATH "Folder holding GL/gl.h (empty: the toolchain's or the system's)")

if(KALVORA_ZLIB_SOURCE_DIR)
    set(zlib_files adler32.c compress.c crc32.c deflate.c gzclose.c gzlib.c gzread.c gzwrite.c
        infback.c inffast.c inflate.c inftrees.c trees.c uncompr.c zutil.c)
    list(TRANSFORM zlib_files PREPEND "${KALVORA_ZLIB_SOURCE_DIR}/")
    add_library(kalvora_zlib STATIC ${zlib_files})
    target_include_directories(kalvora_zlib SYSTEM PUBLIC "${KALVORA_ZLIB_SOURCE_DIR}")
    # Outside code: compiled as it is, without our warnings; Z_HAVE_UNISTD_H for lseek & co.
    target_compile_options(kalvora_zlib PRIVATE -w)
    if(NOT WIN32)
        target_compile_definitions(kalvora_zlib PRIVATE Z_HAVE_UNISTD_H)
    endif()
    set_target_properties(kalvora_zlib PROPERTIES C_VISIBILITY_PRESET hidden POSITION_INDEPENDENT_CODE ON)
    add_library(ZLIB::ZLIB ALIAS kalvora_zlib)
    set(ZLIB_INCLUDE_DIRS "${KALVORA_ZLIB_SOURCE_DIR}")
else()
    find_package(ZLIB REQUIRED)
endif()

if(KALVORA_PNG_SOURCE_DIR)
    set(png_files png.c pngerror.c pngget.c pngmem.c pngpread.c pngread.c pngrio.c pngrtran.c
        pngrutil.c pngset.c pngtrans.c pngwio.c pngwrite.c pngwtran.c pngwutil.c)
    list(TRANSFORM png_files PREPEND "${KALVORA_PNG_SOURCE_DIR}/")
    # libpng's default configuration header, as its own build makes it.
    configure_file("${KALVORA_PNG_SOURCE_DIR}/scripts/pnglibconf.h.prebuilt"
        "${CMAKE_CURRENT_BINARY_DIR}/bundled-png/pnglibconf.h" COPYONLY)
    add_library(kalvora_png STATIC ${png_files})
    target_include_directories(kalvora_png SYSTEM PUBLIC "${KALVORA_PNG_SOURCE_DIR}"
        "${CMAKE_CURRENT_BINARY_DIR}/bundled-png")
    target_link_libraries(kalvora_png PUBLIC ZLIB::ZLIB)
    # The plain C code paths on every processor (no NEON/SSE/MSA files to add per target).
    target_compile_definitions(kalvora_png PRIVATE PNG_ARM_NEON_OPT=0 PNG_INTEL_SSE_OPT=0
        PNG_MIPS_MSA_OPT=0 PNG_POWERPC_VSX_OPT=0)
    target_compile_options(kalvora_png PRIVATE -w)
    set_target_properties(kalvora_png PROPERTIES C_VISIBILITY_PRESET hidden POSITION_INDEPENDENT_CODE ON)
    add_library(PNG::PNG ALIAS kalvora_png)
    set(PNG_INCLUDE_DIRS "${KALVORA_PNG_SOURCE_DIR}" "${CMAKE_CURRENT_BINARY_DIR}/bundled-png")
    set(KALVORA_PLUGIN_PNG_LIBS kalvora_png ZLIB::ZLIB)
else()
    find_package(PNG REQUIRED)
    # The plug-in carries its own libpng and zlib: the system's static archives.
    find_library(KALVORA_STATIC_PNG NAMES libpng16.a libpng.a)
    find_library(KALVORA_STATIC_Z NAMES libz.a)
    if(NOT KALVORA_STATIC_PNG OR NOT KALVORA_STATIC_Z)
        message(FATAL_ERROR "No static libpng/zlib for the plug-in: install them (Debian: libpng-dev "
            "zlib1g-dev) or set KALVORA_PNG_SOURCE_DIR and KALVORA_ZLIB_SOURCE_DIR to their sources")
    endif()
    set(KALVORA_PLUGIN_PNG_LIBS ${KALVORA_STATIC_PNG} ${KALVORA_STATIC_Z})
    # Debian's libpng16.a is compiled for executables; see src/core/StaticPngLink.c.
    set(KALVORA_PNG_FOR_EXECUTABLES ON)
endif()

if(KALVORA_SIMHOST AND NOT WIN32)
    set(OpenGL_GL_PREFERENCE GLVND)
    find_package(OpenGL REQUIRED COMPONENTS OpenGL EGL)
elseif(NOT TARGET OpenGL::OpenGL)
    add_library(OpenGL::OpenGL INTERFACE IMPORTED)
    if(WIN32)
        set_target_properties(OpenGL::OpenGL PROPERTIES INTERFACE_LINK_LIBRARIES opengl32)
    endif()
endif()
if(KALVORA_GL_INCLUDE_DIR)
    include_directories(SYSTEM "${KALVORA_GL_INCLUDE_DIR}")
elseif(NOT WIN32)
    # Said at configure time rather than by the first drawing file that fails to compile.
    find_path(KALVORA_GL_HEADERS GL/gl.h)
    if(NOT KALVORA_GL_HEADERS)
        message(FATAL_ERROR "No OpenGL headers (GL/gl.h): install them (Debian: libgl-dev) or set "
            "KALVORA_GL_INCLUDE_DIR to the folder holding GL/gl.h")
    endif()
endif()

if(KALVORA_SIMHOST OR KALVORA_TESTS OR KALVORA_BENCH)
    find_package(Threads REQUIRED)
endif()
