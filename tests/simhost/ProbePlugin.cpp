// A small plug-in for simhost's loader tests: publishes what it sees (its own
// ID, frames run, the last message) and leaves one flight loop registered at
// stop, so that the unload report has something to find.
#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"

#include <cstring>

namespace {

int gFrames = 0;      ///< flight loop calls
int gLastMessage = 0; ///< last message received
int gLastFrom = -1;   ///< its sender
XPLMDataRef gRefs[3] = {};

int readMyId(void*) {
    return XPLMGetMyID();
}
int readFrames(void*) {
    return gFrames;
}
int readMessage(void* refcon) {
    return refcon ? gLastFrom : gLastMessage;
}

float countFrames(float, float, int, void*) {
    ++gFrames;
    return -1;
}

XPLMDataRef publish(const char* name, XPLMGetDatai_f getter, void* refcon) {
    return XPLMRegisterDataAccessor(name, xplmType_Int, 0, getter, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, refcon,
                                    nullptr);
}

} // namespace

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    std::strcpy(outName, "Probe");
    std::strcpy(outSig, "simhost.test.probe");
    std::strcpy(outDesc, "reports what the host shows it");
    gRefs[0] = publish("simhost_test/my_id", readMyId, nullptr);
    gRefs[1] = publish("simhost_test/frames", readFrames, nullptr);
    gRefs[2] = publish("simhost_test/last_message", readMessage, nullptr);
    publish("simhost_test/last_from", readMessage, &gLastFrom);
    XPLMRegisterFlightLoopCallback(countFrames, -1, nullptr);
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    for (XPLMDataRef r : gRefs)
        XPLMUnregisterDataAccessor(r); // last_from and the loop are left behind
}

PLUGIN_API int XPluginEnable(void) {
    return 1;
}
PLUGIN_API void XPluginDisable(void) {}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void*) {
    gLastFrom = inFrom;
    gLastMessage = inMessage;
}
