// Finding a name in X-Plane's generated tables (XPlaneTableData.cpp in the build folder).
#include "XPlaneTables.h"

#include <algorithm>
#include <cstring>

namespace simhost::detail {

namespace {

template <class Row> const Row* findRow(const Row* rows, int count, const char* name) {
    if (!name) return nullptr;
    const Row* end = rows + count;
    const Row* at = std::lower_bound(rows, end, name,
                                     [](const Row& r, const char* n) { return std::strcmp(r.name, n) < 0; });
    return at != end && std::strcmp(at->name, name) == 0 ? at : nullptr;
}

} // namespace

const XPlaneDataRefRow* findXPlaneDataRef(const char* name) {
    return findRow(kXPlaneDataRefs, kXPlaneDataRefCount, name);
}

const XPlaneCommandRow* findXPlaneCommand(const char* name) {
    return findRow(kXPlaneCommands, kXPlaneCommandCount, name);
}

} // namespace simhost::detail
