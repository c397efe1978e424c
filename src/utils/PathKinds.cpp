// Folder kinds from the host's paths, for both plug-in layouts and both separators.
#include "utils/PathKinds.h"

#include <cstring>

namespace HV_FileUtils {

namespace {

/// Separators counted back from the end of the flat plug-in path to reach the simulator root.
constexpr int kRootSeparatorCount = 3;
/// Length of the plug-in file's extension (".xpl") cut off for its data folder.
constexpr size_t kExtensionLength = 4;
/// Folders a fat plug-in keeps one platform's file in.
constexpr const char* kPlatformFolders[] = {"lin_x64", "win_x64", "mac_x64", "64"};

/// Position just after the last separator, or 0 when there is none.
size_t AfterLastSeparator(const std::string& path, char separator) {
    for (size_t i = path.size(); i-- > 0;)
        if (IsPathSeparator(path[i], separator)) return i + 1;
    return 0;
}

/// The path cut just after its last separator ("" when it has none).
std::string FolderOf(const std::string& path, char separator) {
    return path.substr(0, AfterLastSeparator(path, separator));
}

/// The path cut, back from its end, just after each separator up to the third.
std::string RootOf(const std::string& flatPlugin, char separator) {
    std::string root = flatPlugin;
    int found = 0;
    for (size_t i = root.size(); i-- > 0;) {
        if (!IsPathSeparator(root[i], separator)) continue;
        root.resize(i + 1);
        if (++found == kRootSeparatorCount) break;
    }
    return root;
}

} // namespace

bool IsPathSeparator(char c, char separator) {
    return c == separator || c == '/';
}

std::string FlatPluginPath(const std::string& pluginFile, char separator) {
    const size_t nameStart = AfterLastSeparator(pluginFile, separator);
    if (nameStart == 0) return pluginFile;
    // "<plug-in folder><sep><platform folder><sep><name>"
    const std::string folder = pluginFile.substr(0, nameStart - 1);
    const size_t platformStart = AfterLastSeparator(folder, separator);
    if (platformStart == 0) return pluginFile; // no folder above the platform folder
    const std::string platform = folder.substr(platformStart);
    for (const char* known : kPlatformFolders) {
        if (platform != known) continue;
        const std::string name = pluginFile.substr(nameStart);
        const std::string extension =
            name.size() > kExtensionLength ? name.substr(name.size() - kExtensionLength) : "";
        return folder.substr(0, platformStart - 1) + extension;
    }
    return pluginFile;
}

bool PathOfKind(char kind, const HostPaths& host, std::string* folder) {
    const char sep = host.separator ? host.separator : '/';
    const std::string sepText(1, sep);
    const std::string flat = FlatPluginPath(host.pluginFile, sep);
    switch (kind) {
    case 0:
        *folder = host.system;
        return true;
    case 1:
        *folder = FolderOf(host.pluginFile, sep);
        return true;
    case 2:
        *folder = RootOf(flat, sep);
        return true;
    case 3:
        *folder = FolderOf(host.prefsFile, sep);
        return true;
    case 4:
        *folder = RootOf(flat, sep) + "Resources" + sepText + "Earth nav data" + sepText;
        return true;
    case 5:
        *folder = RootOf(flat, sep) + "Custom Scenery" + sepText;
        return true;
    case 6:
        *folder = FolderOf(host.aircraft, sep);
        return true;
    case 7:
        *folder =
            flat.substr(0, flat.size() > kExtensionLength ? flat.size() - kExtensionLength : 0) + sepText;
        return true;
    case 8:
        *folder = RootOf(flat, sep) + "HVFlight Plans" + sepText;
        return true;
    case 9:
        *folder = RootOf(flat, sep) + "HV FMS Flight Plans" + sepText;
        return true;
    default:
        return false;
    }
}

} // namespace HV_FileUtils
