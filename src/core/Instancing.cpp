#include "core/Instancing.h"

#include "XPLMUtilities.h"
#include "core/SimulatorDataRefs.h"

#include <algorithm>
#include <iterator>

namespace {

template <typename F> bool Find(F& fn, const char* name) {
    fn = reinterpret_cast<F>(XPLMFindSymbol(name));
    return fn != nullptr;
}

} // namespace

const InstancingApi* HostInstancing() {
    if (XPVersion < kFirstVersionWithoutDrawPhases) return nullptr;
    // Looked up once: the plug-in is unloaded with its host's API, so the addresses never go stale.
    static InstancingApi api;
    // Every one looked up, none skipped after a missing one.
    static const bool found[] = {
        Find(api.loadObject, "XPLMLoadObject"), Find(api.unloadObject, "XPLMUnloadObject"),
        Find(api.createInstance, "XPLMCreateInstance"), Find(api.destroyInstance, "XPLMDestroyInstance"),
        Find(api.setPosition, "XPLMInstanceSetPosition")};
    static const bool all = std::all_of(std::begin(found), std::end(found), [](bool f) { return f; });
    return all ? &api : nullptr;
}
