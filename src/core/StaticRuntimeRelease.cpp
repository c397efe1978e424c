// Handing back what the C++ runtime linked into Kalvora.xpl keeps, when the host unloads it.
//
// The plug-in carries its own copy of the GNU C++ runtime (-static-libstdc++). When the plug-in is
// loaded, that runtime sets aside a reserve for throwing exceptions once memory runs out (about 71 kB)
// and never frees it: every load/unload cycle would leave one behind in the host's heap. It is freed
// here, as the library goes; nothing of the plug-in runs after that, so nothing can need it. Built
// into Kalvora.xpl only: the test programs share the system's runtime with everything else.
#include <cstddef>

#if defined(__GLIBCXX__) && defined(__linux__)
namespace __gnu_cxx {
void __freeres(); // the runtime's own release of the reserve (what memory checkers call at exit)
}

__attribute__((destructor)) static void KalvoraReleaseStaticRuntime() {
    __gnu_cxx::__freeres();
}
#endif
