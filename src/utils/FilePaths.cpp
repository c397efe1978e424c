// GetPath: the simulator's and the plug-in's well-known folders.
#include "utils/FileUtils.h"

#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMUtilities.h"

#include <cstdio>
#include <cstring>

namespace HV_FileUtils {

namespace {

/// The host writes at most 512 bytes into a path and 256 into a file name.
constexpr int kHostPathBytes = 512;
constexpr int kHostNameBytes = 256;
/// Separators counted back from the end of the plug-in path to reach the simulator root.
constexpr int kRootSeparatorCount = 3;
/// Length of the plug-in file's extension (".xpl") cut off for its data folder.
constexpr size_t kExtensionLength = 4;

char gPath[kPathBufferBytes];

char Separator() {
    const char* separator = XPLMGetDirectorySeparator();
    return separator && *separator ? separator[0] : '/';
}

/// Copies text into gPath, cut to the buffer.
void SetPath(const char* text) {
    snprintf(gPath, sizeof gPath, "%s", text);
}

/// Appends the texts to gPath, cut to the buffer.
void AppendPath(const char* text) {
    const size_t used = strlen(gPath);
    snprintf(gPath + used, sizeof gPath - used, "%s", text);
}

/// Cuts gPath just after its last separator ("" when it has none).
void CutAfterLastSeparator(char separator) {
    char* last = strrchr(gPath, separator);
    if (last) {
        last[1] = '\0';
    } else {
        gPath[0] = '\0';
    }
}

void LoadPluginPath() {
    char path[kHostPathBytes] = {};
    XPLMGetPluginInfo(XPLMGetMyID(), nullptr, path, nullptr, nullptr);
    path[kHostPathBytes - 1] = '\0';
    SetPath(path);
}

/// The plug-in path cut, back from its end, just after each separator up to the third.
void LoadRootPath(char separator) {
    LoadPluginPath();
    int found = 0;
    for (size_t i = strlen(gPath); i-- > 0;) {
        if (gPath[i] != separator) continue;
        gPath[i + 1] = '\0';
        if (++found == kRootSeparatorCount) break;
    }
}

} // namespace

char* GetPath(char kind) {
    const char separator = Separator();
    const char separatorText[2] = {separator, '\0'};
    switch (kind) {
    case 0: {
        char path[kHostPathBytes] = {};
        XPLMGetSystemPath(path);
        path[kHostPathBytes - 1] = '\0';
        SetPath(path);
        break;
    }
    case 1:
        LoadPluginPath();
        CutAfterLastSeparator(separator);
        break;
    case 2:
        LoadRootPath(separator);
        break;
    case 3: {
        char path[kHostPathBytes] = {};
        XPLMGetPrefsPath(path);
        path[kHostPathBytes - 1] = '\0';
        SetPath(path);
        CutAfterLastSeparator(separator);
        break;
    }
    case 4:
        LoadRootPath(separator);
        AppendPath("Resources");
        AppendPath(separatorText);
        AppendPath("Earth nav data");
        AppendPath(separatorText);
        break;
    case 5:
        LoadRootPath(separator);
        AppendPath("Custom Scenery");
        AppendPath(separatorText);
        break;
    case 6: {
        char name[kHostNameBytes] = {};
        char path[kHostPathBytes] = {};
        XPLMGetNthAircraftModel(0, name, path);
        path[kHostPathBytes - 1] = '\0';
        SetPath(path);
        CutAfterLastSeparator(separator);
        break;
    }
    case 7: {
        LoadPluginPath();
        const size_t length = strlen(gPath);
        gPath[length > kExtensionLength ? length - kExtensionLength : 0] = '\0';
        AppendPath(separatorText);
        break;
    }
    case 8:
        LoadRootPath(separator);
        AppendPath("HVFlight Plans");
        AppendPath(separatorText);
        break;
    case 9:
        LoadRootPath(separator);
        AppendPath("HV FMS Flight Plans");
        AppendPath(separatorText);
        break;
    default:
        break;
    }
    return gPath;
}

} // namespace HV_FileUtils
