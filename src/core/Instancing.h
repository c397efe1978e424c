// X-Plane's object-instancing functions, looked up at run time.
//
// From X-Plane 11.50 the 3-D drawing phases are never called, so the truck and
// the GPU are shown as object instances there. The functions came with
// X-Plane 11.10: linking them directly would stop the plug-in loading on older
// hosts, so they are found with XPLMFindSymbol, once per host, and used only
// when all of them are there.
#pragma once

#include "XPLMInstance.h"
#include "XPLMScenery.h"

/// First X-Plane version without the legacy 3-D drawing phases (11.50).
constexpr int kFirstVersionWithoutDrawPhases = 11500;

/// The instancing functions of this host (all null when it has none).
struct InstancingApi {
    XPLMObjectRef (*loadObject)(const char* path) = nullptr;
    void (*unloadObject)(XPLMObjectRef object) = nullptr;
    XPLMInstanceRef (*createInstance)(XPLMObjectRef object, const char** datarefs) = nullptr;
    void (*destroyInstance)(XPLMInstanceRef instance) = nullptr;
    void (*setPosition)(XPLMInstanceRef instance, const XPLMDrawInfo_t* where, const float* data) = nullptr;
};

/// The host's instancing functions when the host draws objects only as instances
/// (version 11.50 or later) and provides all of them; nullptr otherwise.
const InstancingApi* HostInstancing();
/// Forgets the functions found, so that the next HostInstancing looks in the host running then.
void ForgetHostInstancing();
