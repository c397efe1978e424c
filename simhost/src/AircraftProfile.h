// Aircraft profiles: a small "key = value" text format, one file per type in
// simhost/aircraft/ (documented in docs/simhost.md).
#pragma once

#include "simhost/Simhost.h"

#include <string>

namespace simhost::detail {

/// Reads a profile from text; false (and the failing line in *error) on bad input.
bool parseAircraftProfile(const std::string& text, Aircraft& out, std::string* error);
/// Finds a profile by type name (<dir>/<name>.acp; dir empty: simhost/aircraft) or path and reads it.
bool loadAircraftProfile(const std::string& nameOrPath, const std::string& dir, Aircraft& out,
                         std::string* error);

} // namespace simhost::detail
