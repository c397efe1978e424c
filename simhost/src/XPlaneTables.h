// X-Plane's own datarefs and commands, every one X-Plane 12.1 publishes, as a
// constant table generated at build time from X-Plane's DataRefs.txt and
// Commands.txt (simhost/tablegen). The rows are sorted by name; a host makes
// its record for a name the first time the name is looked up, so creating a
// host costs nothing for the thousands of names no plug-in asks for.
#pragma once

namespace simhost::detail {

/// One of X-Plane's datarefs.
struct XPlaneDataRefRow {
    const char* name;
    int types;     ///< XPLMDataTypeID bits ("double" ones are float and double)
    int size;      ///< elements for arrays (all dimensions flattened), bytes for data, 1 for scalars
    bool writable; ///< by plug-ins
};

/// One of X-Plane's commands.
struct XPlaneCommandRow {
    const char* name;
    const char* description;
};

extern const XPlaneDataRefRow kXPlaneDataRefs[]; ///< sorted by name (byte order)
extern const int kXPlaneDataRefCount;
extern const XPlaneCommandRow kXPlaneCommands[]; ///< sorted by name (byte order)
extern const int kXPlaneCommandCount;

/// X-Plane's dataref of that name, or nullptr.
const XPlaneDataRefRow* findXPlaneDataRef(const char* name);
/// X-Plane's command of that name, or nullptr.
const XPlaneCommandRow* findXPlaneCommand(const char* name);

} // namespace simhost::detail
