// A small plug-in for simhost's loader tests: publishes what it sees (its own
// ID, frames run, the last message) and leaves one flight loop registered at
// stop, so that the unload report has something to find.
//
// Copies of it can run side by side (one per layout in Resources/plugins): the
// first publishes the values above; each publishes its own life as text in
// simhost_test/<entry>/events (entry: its file's name, or its plug-in folder's),
// e.g. "start cwd=1 started=1|enable started=3|msg102:0|msg103:0|msg104:0",
// where started counts the copies running (shared data of X-Plane).
#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr const char* kStarted = "simhost_test/started";
constexpr int kFirstLoadMessage = 102, kLastLoadMessage = 104; // plane, airport, scenery loaded

int gFrames = 0;      ///< flight loop calls
int gLastMessage = 0; ///< last message received
int gLastFrom = -1;   ///< its sender
XPLMDataRef gRefs[3] = {};
std::string gEvents;
XPLMDataRef gEventsRef = nullptr;

int readMyId(void*) {
    return XPLMGetMyID();
}
int readFrames(void*) {
    return gFrames;
}
int readMessage(void* refcon) {
    return refcon ? gLastFrom : gLastMessage;
}
int readEvents(void*, void* out, int offset, int max) {
    const int size = static_cast<int>(gEvents.size());
    if (!out) return size;
    const int n = offset < 0 || offset >= size ? 0 : std::min(max, size - offset);
    if (n > 0) std::memcpy(out, gEvents.data() + offset, static_cast<size_t>(n));
    return n;
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

/// The name of this copy's entry in Resources/plugins: Name.xpl, Name/lin_x64/Name.xpl, Name/64/lin.xpl.
std::string entryName() {
    char path[512] = {};
    XPLMGetPluginInfo(XPLMGetMyID(), nullptr, path, nullptr, nullptr);
    const fs::path file(path);
    const std::string folder = file.parent_path().filename().string();
    return folder == "lin_x64" || folder == "64" ? file.parent_path().parent_path().filename().string()
                                                 : file.stem().string();
}

int started() {
    return XPLMGetDatai(XPLMFindDataRef(kStarted));
}
void addStarted(int n) {
    XPLMSetDatai(XPLMFindDataRef(kStarted), started() + n);
}

} // namespace

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    std::strcpy(outName, "Probe");
    std::strcpy(outSig, "simhost.test.probe");
    std::strcpy(outDesc, "reports what the host shows it");
    XPLMShareData(kStarted, xplmType_Int, nullptr, nullptr);
    if (started() == 0) {
        gRefs[0] = publish("simhost_test/my_id", readMyId, nullptr);
        gRefs[1] = publish("simhost_test/frames", readFrames, nullptr);
        gRefs[2] = publish("simhost_test/last_message", readMessage, nullptr);
        publish("simhost_test/last_from", readMessage, &gLastFrom);
    }
    addStarted(1);
    XPLMRegisterFlightLoopCallback(countFrames, -1, nullptr);

    char xplane[512] = {};
    XPLMGetSystemPath(xplane);
    std::error_code ec;
    gEvents = "start cwd=" + std::to_string(fs::equivalent(fs::current_path(ec), xplane, ec)) +
              " started=" + std::to_string(started());
    gEventsRef = XPLMRegisterDataAccessor(("simhost_test/" + entryName() + "/events").c_str(), xplmType_Data,
                                          0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                          nullptr, nullptr, nullptr, readEvents, nullptr, nullptr, nullptr);
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    for (XPLMDataRef r : gRefs)
        XPLMUnregisterDataAccessor(r); // last_from and the loop are left behind
    XPLMUnregisterDataAccessor(gEventsRef);
    addStarted(-1);
    XPLMUnshareData(kStarted, xplmType_Int, nullptr, nullptr);
}

PLUGIN_API int XPluginEnable(void) {
    gEvents += "|enable started=" + std::to_string(started());
    return 1;
}
PLUGIN_API void XPluginDisable(void) {}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    gLastFrom = inFrom;
    gLastMessage = inMessage;
    if (inMessage >= kFirstLoadMessage && inMessage <= kLastLoadMessage)
        gEvents +=
            "|msg" + std::to_string(inMessage) + ":" + std::to_string(reinterpret_cast<intptr_t>(inParam));
}
