// The five entry points X-Plane calls. Until the plug-in's lifecycle is in
// place they only identify the plug-in.
#include "XPLMDefs.h"

#include <cstdio>

namespace {
constexpr std::size_t kInfoBufferBytes = 256; // X-Plane passes 256-byte buffers
} // namespace

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    std::snprintf(outName, kInfoBufferBytes, "%s", "Kalvora");
    std::snprintf(outSig, kInfoBufferBytes, "%s", "Halvern.Kalvora");
    std::snprintf(outDesc, kInfoBufferBytes, "%s", "A plugIn enabling airplane push back.");
    return 1;
}

PLUGIN_API void XPluginStop(void) {}

PLUGIN_API int XPluginEnable(void) { return 1; }

PLUGIN_API void XPluginDisable(void) {}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID /*inFrom*/, int /*inMessage*/, void* /*inParam*/) {}
