// The toolkit's folder kinds computed from the paths the host reports: pure text
// work, no host involved, so every layout and separator can be checked alone.
//
// Plug-in layouts X-Plane loads, and the plug-in folder (kind 7) of each:
//
//   flat      <root>/Resources/plugins/Kalvora.xpl                 -> .../plugins/Kalvora/
//   fat       <root>/Resources/plugins/Kalvora/lin_x64/Kalvora.xpl -> .../plugins/Kalvora/
//             (also win_x64/, mac_x64/, and the older 64/lin.xpl)
//
// A file in a platform folder stands for "<its plug-in folder>.xpl" in the flat
// layout; every kind then follows from that flat path, so the simulator's root
// (kind 2) is still three separators above it.
#pragma once

#include <string>

namespace HV_FileUtils {

/// What the host reports, as it reports it (any may be empty).
struct HostPaths {
    std::string system;     ///< X-Plane folder, with a trailing separator
    std::string pluginFile; ///< this plug-in's .xpl
    std::string prefsFile;  ///< a file inside the preferences folder
    std::string aircraft;   ///< the user's aircraft file
    char separator = '/';   ///< the host's directory separator
};

/// True for a character that separates folders: the host's separator, and "/", which every
/// platform accepts (Windows paths may mix both).
bool IsPathSeparator(char c, char separator);

/// The plug-in file's path as if it sat in the flat layout (unchanged when it does).
std::string FlatPluginPath(const std::string& pluginFile, char separator);

/// The folder of the given kind (0..9, see GetPath), ending with the host's separator;
/// false for a kind out of range.
bool PathOfKind(char kind, const HostPaths& host, std::string* folder);

} // namespace HV_FileUtils
