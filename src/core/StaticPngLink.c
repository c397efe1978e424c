/*
 * Linking libpng into Kalvora.xpl.
 *
 * Debian's libpng16.a is compiled as position-independent *executable* code: its
 * default error handler reaches the C library's `stderr` with a PC-relative
 * reference, which only works inside an executable. A shared object needs a
 * definition it can reach the same way, so Kalvora.xpl carries a hidden
 * `stderr` of its own, bound to the C library's stream when the plug-in loads.
 * The symbol is local to the plug-in: nothing outside it sees or uses it.
 */
#include <dlfcn.h>

__attribute__((visibility("hidden"))) void* stderr;

__attribute__((constructor)) static void KalvoraBindStderr(void) {
    void** hostStderr = (void**)dlsym(RTLD_DEFAULT, "stderr");
    if (hostStderr) stderr = *hostStderr;
}
