#include "core/Instancing.h"

#include "XPLMUtilities.h"
#include "core/SimulatorDataRefs.h"

#include <algorithm>
#include <iterator>

namespace {

InstancingApi gApi;
bool gLookedUp = false; ///< gApi holds what this host gave
bool gAll = false;      ///< the host gave every function

template <typename F> bool Find(F& fn, const char* name) {
    fn = reinterpret_cast<F>(XPLMFindSymbol(name));
    return fn != nullptr;
}

} // namespace

const InstancingApi* HostInstancing() {
    if (XPVersion < kFirstVersionWithoutDrawPhases) return nullptr;
    if (!gLookedUp) {
        // Every one looked up, none skipped after a missing one.
        const bool found[] = {Find(gApi.loadObject, "XPLMLoadObject"),
                              Find(gApi.unloadObject, "XPLMUnloadObject"),
                              Find(gApi.createInstance, "XPLMCreateInstance"),
                              Find(gApi.destroyInstance, "XPLMDestroyInstance"),
                              Find(gApi.setPosition, "XPLMInstanceSetPosition")};
        gAll = std::all_of(std::begin(found), std::end(found), [](bool f) { return f; });
        gLookedUp = true;
    }
    return gAll ? &gApi : nullptr;
}

void ForgetHostInstancing() {
    gApi = InstancingApi{};
    gLookedUp = gAll = false;
}
