// A small plug-in of the same family, loaded by the host tests as a second plug-in: it
// reports every kind of GetPath through the simulator's log.
#include "utils/FileUtils.h"
#include "utils/GNLUtils.h"

#include "XPLMUtilities.h"

#include <cstdio>
#include <cstring>

#define PROBE_EXPORT extern "C" __attribute__((visibility("default")))

PROBE_EXPORT int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    strcpy(outName, "UtilsProbe");
    strcpy(outSignature, "halvern.test.utilsprobe");
    strcpy(outDescription, "Second plug-in of the family, for the utilities' tests");
    for (int kind = 0; kind <= 10; ++kind) {
        char line[1200];
        snprintf(line, sizeof line, "probe path %d=%s\n", kind,
                 HV_FileUtils::GetPath(static_cast<char>(kind)));
        XPLMDebugString(line);
    }
    return 1;
}

PROBE_EXPORT int XPluginEnable(void) {
    return 1;
}

PROBE_EXPORT void XPluginDisable(void) {}

PROBE_EXPORT void XPluginStop(void) {
    HV_GNLUtils::ReleaseHostBindings();
}

PROBE_EXPORT void XPluginReceiveMessage(int, int, void*) {}
