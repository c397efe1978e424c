// XPLMUtilities.h: paths of the sandbox, Log.txt, speech, versions, key names,
// symbol lookup and error reporting.
#include "HostInternal.h"
#include "SharedLibrary.h"

#include "XPLMUtilities.h"

#include <cstring>
#ifndef _WIN32
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;
#endif

namespace simhost::detail {

namespace {

constexpr size_t kPathBufferBytes = 512; ///< XPLMGetSystemPath / XPLMGetPrefsPath buffers

/// Functions of the 4.x API levels: XPLMFindSymbol finds them only when the emulated XPLM is that new.
struct NewerFunction {
    const char* name;
    int firstXplm; ///< the XPLM version that brought it
};
constexpr NewerFunction kNewerFunctions[] = {
    // XPLM 4.0 (X-Plane 12.0): sound, weather at a place, customised cockpit devices
    {"XPLMPlayPCMOnBus", 400},
    {"XPLMStopAudio", 400},
    {"XPLMSetAudioPosition", 400},
    {"XPLMSetAudioFadeDistance", 400},
    {"XPLMSetAudioVolume", 400},
    {"XPLMSetAudioPitch", 400},
    {"XPLMSetAudioCone", 400},
    {"XPLMGetFMODStudio", 400},
    {"XPLMGetFMODChannelGroup", 400},
    {"XPLMGetMETARForAirport", 400},
    {"XPLMGetWeatherAtLocation", 400},
    {"XPLMRegisterAvionicsCallbacksEx", 400},
    {"XPLMGetAvionicsHandle", 400},
    {"XPLMUnregisterAvionicsCallbacks", 400},
    // XPLM 4.1 (X-Plane 12.1): the flight plans of both units, devices of a plug-in's own
    {"XPLMCountFMSFlightPlanEntries", 410},
    {"XPLMGetDisplayedFMSFlightPlanEntry", 410},
    {"XPLMGetDestinationFMSFlightPlanEntry", 410},
    {"XPLMSetDisplayedFMSFlightPlanEntry", 410},
    {"XPLMSetDestinationFMSFlightPlanEntry", 410},
    {"XPLMSetDirectToFMSFlightPlanEntry", 410},
    {"XPLMGetFMSFlightPlanEntryInfo", 410},
    {"XPLMSetFMSFlightPlanEntryInfo", 410},
    {"XPLMSetFMSFlightPlanEntryLatLon", 410},
    {"XPLMSetFMSFlightPlanEntryLatLonWithId", 410},
    {"XPLMClearFMSFlightPlanEntry", 410},
    {"XPLMLoadFMSFlightPlan", 410},
    {"XPLMSaveFMSFlightPlan", 410},
    {"XPLMCreateAvionicsEx", 410},
    {"XPLMDestroyAvionics", 410},
    {"XPLMIsAvionicsBound", 410},
    {"XPLMSetAvionicsBrightnessRheo", 410},
    {"XPLMGetAvionicsBrightnessRheo", 410},
    {"XPLMGetAvionicsBusVoltsRatio", 410},
    {"XPLMIsCursorOverAvionics", 410},
    {"XPLMAvionicsNeedsDrawing", 410},
    {"XPLMSetAvionicsPopupVisible", 410},
    {"XPLMIsAvionicsPopupVisible", 410},
    {"XPLMPopOutAvionics", 410},
    {"XPLMIsAvionicsPoppedOut", 410},
    {"XPLMTakeAvionicsKeyboardFocus", 410},
    {"XPLMHasAvionicsKeyboardFocus", 410},
    {"XPLMGetAvionicsGeometry", 410},
    {"XPLMSetAvionicsGeometry", 410},
    {"XPLMGetAvionicsGeometryOS", 410},
    {"XPLMSetAvionicsGeometryOS", 410},
    // XPLM 4.2 (X-Plane 12.3): double-precision instances, setting the weather
    {"XPLMInstanceSetPositionDouble", 420},
    {"XPLMInstanceSetAutoShift", 420},
    {"XPLMBeginWeatherUpdate", 420},
    {"XPLMEndWeatherUpdate", 420},
    {"XPLMSetWeatherAtLocation", 420},
    {"XPLMEraseWeatherAtLocation", 420},
    {"XPLMSetWeatherAtAirport", 420},
    {"XPLMEraseWeatherAtAirport", 420}};

/// Functions newer X-Planes declare deprecated; a host emulated without them does not hand them out.
constexpr const char* kDeprecatedFunctions[] = {
    "XPLMCommandButtonPress", "XPLMCommandButtonRelease", "XPLMCommandKeyStroke", "XPLMSimulateKeyPress",
    "XPLMDrawObjects",        "XPLMDrawAircraft",         "XPLMInitialized"};

void copyPath(char* out, const std::string& s) {
    if (!out) return;
    size_t n = std::min(s.size(), kPathBufferBytes - 1);
    std::memcpy(out, s.data(), n);
    out[n] = '\0';
}

/// Speaks a text into a WAV file with espeak-ng (no shell involved). False when it cannot.
bool speakToWav(const std::string& text, const std::string& wavPath) {
#ifdef _WIN32
    (void)text, (void)wavPath; // no espeak-ng on Windows
    return false;
#else
    std::string t = text;
    std::vector<char*> argv = {const_cast<char*>("espeak-ng"),
                               const_cast<char*>("-w"),
                               const_cast<char*>(wavPath.c_str()),
                               const_cast<char*>("--"),
                               &t[0],
                               nullptr};
    pid_t pid = 0;
    if (posix_spawnp(&pid, "espeak-ng", nullptr, nullptr, argv.data(), environ) != 0) return false;
    int status = 0;
    if (waitpid(pid, &status, 0) < 0) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
#endif
}

struct KeyName {
    unsigned char vk;
    const char* name;
};
/// Names of the virtual keys that are not a letter, a digit, a numpad digit or a function key.
const KeyName kKeyNames[] = {
    {0x08, "BACK"},      {0x09, "TAB"},      {0x0C, "CLEAR"},     {0x0D, "RETURN"},    {0x1B, "ESCAPE"},
    {0x20, "SPACE"},     {0x21, "PRIOR"},    {0x22, "NEXT"},      {0x23, "END"},       {0x24, "HOME"},
    {0x25, "LEFT"},      {0x26, "UP"},       {0x27, "RIGHT"},     {0x28, "DOWN"},      {0x29, "SELECT"},
    {0x2A, "PRINT"},     {0x2B, "EXECUTE"},  {0x2C, "SNAPSHOT"},  {0x2D, "INSERT"},    {0x2E, "DELETE"},
    {0x2F, "HELP"},      {0x6A, "MULTIPLY"}, {0x6B, "ADD"},       {0x6C, "SEPARATOR"}, {0x6D, "SUBTRACT"},
    {0x6E, "DECIMAL"},   {0x6F, "DIVIDE"},   {0xB0, "EQUAL"},     {0xB1, "MINUS"},     {0xB2, "RBRACE"},
    {0xB3, "LBRACE"},    {0xB4, "QUOTE"},    {0xB5, "SEMICOLON"}, {0xB6, "BACKSLASH"}, {0xB7, "COMMA"},
    {0xB8, "SLASH"},     {0xB9, "PERIOD"},   {0xBA, "BACKQUOTE"}, {0xBB, "ENTER"},     {0xBC, "NUMPAD_ENT"},
    {0xBD, "NUMPAD_EQ"},
};

} // namespace

void record(const std::string& kind, const std::string& text) {
    HostCore* c = core();
    if (!c) return;
    c->transcript.push_back(TranscriptEntry{c->simTime, kind, text});
}

void writeLog(const std::string& text) {
    HostCore* c = core();
    if (!c) return;
    if (c->log) {
        std::fwrite(text.data(), 1, text.size(), c->log);
        std::fflush(c->log);
    }
    if (c->opt.echoLog) std::fwrite(text.data(), 1, text.size(), stderr);
    std::string t = text;
    while (!t.empty() && (t.back() == '\n' || t.back() == '\r'))
        t.pop_back();
    record("log", t);
}

void apiError(const std::string& text) {
    HostCore* c = core();
    if (!c) return;
    writeLog("simhost: API error: " + text + "\n");
    const int who = caller();
    PluginRec* p = plugin(who);
    if (p && p->alive && p->errorCallback) {
        auto fn = reinterpret_cast<XPLMError_f>(p->errorCallback);
        callInto(who, "error callback", [&] { fn(text.c_str()); });
    }
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

void XPLMGetSystemPath(char* outSystemPath) {
    HostCore* c = core();
    copyPath(outSystemPath, c ? nativePath(c->sandbox) : "");
}

void XPLMGetPrefsPath(char* outPrefsPath) {
    HostCore* c = core();
    copyPath(outPrefsPath, c ? nativePath(c->sandbox + "Output/preferences/Set X-Plane.prf") : "");
}

const char* XPLMGetDirectorySeparator(void) {
    return nativeSeparator();
}

char* XPLMExtractFileAndPath(char* inFullPath) {
    if (!inFullPath) return nullptr;
    char* slash = std::strrchr(inFullPath, nativeSeparator()[0]);
    if (!slash) return inFullPath;
    *slash = '\0';
    return slash + 1;
}

void XPLMDebugString(const char* inString) {
    if (inString) writeLog(inString);
}

void XPLMSpeakString(const char* inString) {
    HostCore* c = core();
    if (!c || !inString) return;
    std::string text(inString);
    record("speech", text);
    if (!c->opt.speechWavDir.empty()) {
        int n = 0;
        for (const auto& e : c->transcript)
            n += e.kind == "speech" ? 1 : 0;
        char name[32];
        std::snprintf(name, sizeof name, "speech-%03d.wav", n);
        if (!speakToWav(text, c->opt.speechWavDir + "/" + name))
            writeLog("simhost: could not speak into " + c->opt.speechWavDir + " (is espeak-ng installed?)\n");
    }
}

void XPLMGetVersions(int* outXPlaneVersion, int* outXPLMVersion, XPLMHostApplicationID* outHostID) {
    HostCore* c = core();
    if (outXPlaneVersion) *outXPlaneVersion = c ? c->opt.xplaneVersion : 0;
    if (outXPLMVersion) *outXPLMVersion = c ? c->opt.xplmVersion : 0;
    if (outHostID) *outHostID = 1; // xplm_Host_XPlane
}

XPLMLanguageCode XPLMGetLanguage(void) {
    return 1; /* English */
}

const char* XPLMGetVirtualKeyDescription(char inVirtualKey) {
    static thread_local char buf[16];
    const unsigned char vk = static_cast<unsigned char>(inVirtualKey);
    if ((vk >= 0x30 && vk <= 0x39) || (vk >= 0x41 && vk <= 0x5A)) {
        buf[0] = static_cast<char>(vk);
        buf[1] = '\0';
        return buf;
    }
    if (vk >= 0x60 && vk <= 0x69) {
        std::snprintf(buf, sizeof buf, "NUMPAD%d", vk - 0x60);
        return buf;
    }
    if (vk >= 0x70 && vk <= 0x87) {
        std::snprintf(buf, sizeof buf, "F%d", vk - 0x70 + 1);
        return buf;
    }
    for (const KeyName& k : kKeyNames)
        if (k.vk == vk) return k.name;
    return "";
}

void XPLMReloadScenery(void) {
    if (HostCore* c = core()) {
        (void)c;
        sendToPlugin(XPLM_NO_PLUGIN_ID, 104, nullptr, 0);
    }
}

void* XPLMFindSymbol(const char* inString) {
    if (!inString) return nullptr;
    HostCore* c = core();
    if (c) {
        for (const NewerFunction& newer : kNewerFunctions)
            if (c->opt.xplmVersion < newer.firstXplm && std::strcmp(inString, newer.name) == 0)
                return nullptr;
    }
    if (c && !c->opt.exportDeprecated) {
        for (const char* gone : kDeprecatedFunctions)
            if (std::strcmp(inString, gone) == 0) return nullptr;
    }
    // Only the X-Plane API this library defines: look in the library itself, never in plug-ins.
    return std::strncmp(inString, "XP", 2) == 0 ? ownSymbol(inString) : nullptr;
}

void XPLMSetErrorCallback(XPLMError_f inCallback) {
    if (PluginRec* p = plugin(caller())) p->errorCallback = reinterpret_cast<void*>(inCallback);
}

void XPLMSimulateKeyPress(int inKeyType, int inKey) {
    // The raw key goes to X-Plane only, never to plug-ins.
    record("key", "simulated key type " + std::to_string(inKeyType) + " key " + std::to_string(inKey));
}

int XPLMInitialized(void) {
    return 1;
}

} // extern "C"
