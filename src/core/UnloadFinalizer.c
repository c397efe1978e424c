/*
 * Static destructors at unload.
 *
 * Every C++ object with static storage registers its destructor with the C library
 * (__cxa_atexit), tagged with this file's __dso_handle. When the host unloads the
 * plug-in (dlclose), those destructors must run then, while the code is still mapped:
 * left for the host's exit, they would jump into memory that is gone. GCC's start files
 * run them at unload; zig's (the release build for older Linux systems) do not, so the
 * plug-in does it itself. A second call finds nothing left to run.
 */
extern char __dso_handle;
extern int __cxa_finalize(void* dso);

__attribute__((destructor)) static void KalvoraRunStaticDestructors(void) {
    __cxa_finalize(&__dso_handle);
}
