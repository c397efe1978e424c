#include "core/Instancing.h"

#include "XPLMUtilities.h"
#include "core/SimulatorDataRefs.h"

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
    static const bool all =
        Find(api.loadObject, "XPLMLoadObject") & Find(api.unloadObject, "XPLMUnloadObject") &
        Find(api.createInstance, "XPLMCreateInstance") & Find(api.destroyInstance, "XPLMDestroyInstance") &
        Find(api.setPosition, "XPLMInstanceSetPosition");
    return all ? &api : nullptr;
}
