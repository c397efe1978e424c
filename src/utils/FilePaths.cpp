// GetPath: the simulator's and the plug-in's well-known folders, from what the host reports.
#include "utils/FileUtils.h"
#include "utils/PathKinds.h"

#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMUtilities.h"

#include <cstdio>

namespace HV_FileUtils {

namespace {

/// The host writes at most 512 bytes into a path and 256 into a file name.
constexpr int kHostPathBytes = 512;
constexpr int kHostNameBytes = 256;

char gPath[kPathBufferBytes];

/// Calls fill with a zeroed host-sized buffer and returns what it wrote, always terminated.
template <class Fill> std::string HostText(Fill fill) {
    char path[kHostPathBytes] = {};
    fill(path);
    path[kHostPathBytes - 1] = '\0';
    return path;
}

/// Only what a kind needs is asked from the host.
HostPaths AskHost(char kind) {
    HostPaths host;
    const char* separator = XPLMGetDirectorySeparator();
    host.separator = separator && *separator ? separator[0] : '/';
    if (kind == 0) host.system = HostText([](char* out) { XPLMGetSystemPath(out); });
    if (kind == 3) host.prefsFile = HostText([](char* out) { XPLMGetPrefsPath(out); });
    if (kind == 6) {
        host.aircraft = HostText([](char* out) {
            char name[kHostNameBytes] = {};
            XPLMGetNthAircraftModel(0, name, out);
        });
    }
    if (kind == 1 || kind == 2 || (kind >= 4 && kind <= 9 && kind != 6)) {
        host.pluginFile =
            HostText([](char* out) { XPLMGetPluginInfo(XPLMGetMyID(), nullptr, out, nullptr, nullptr); });
    }
    return host;
}

} // namespace

char* GetPath(char kind) {
    std::string folder;
    if (PathOfKind(kind, AskHost(kind), &folder))
        snprintf(gPath, sizeof gPath, "%s", folder.c_str()); // cut to the buffer
    return gPath;
}

} // namespace HV_FileUtils
