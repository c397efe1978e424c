// The scenery library: virtual object paths ("lib/airport/vehicles/tug.obj")
// exported by scenery packages in their library.txt, resolved to real files.
#pragma once

#include <string>
#include <vector>

namespace simhost::detail {

/// Real files (relative to the X-Plane folder `root`, with a trailing "/") that the scenery
/// packages export under `virtualPath`, in package priority order: the packages of
/// "Custom Scenery" by name, then those of "Resources/default scenery".
///
/// Per virtual path: the EXPORT (and EXPORT_EXCLUDE) lines of the first package that has any make
/// the set, later packages' EXPORT lines being overridden; EXPORT_EXTEND lines of every package add
/// to it; EXPORT_BACKUP lines count only when nothing else exports the path. Regions are not
/// modelled: every entry applies everywhere.
std::vector<std::string> lookupLibrary(const std::string& root, const std::string& virtualPath);

} // namespace simhost::detail
