// A new, empty folder of simhost's own under the system's temporary folder.
#pragma once

#include <string>

namespace simhost::detail {

/// Creates "<temporary folder>/<prefix>XXXXXX" with a unique suffix and returns its path;
/// throws std::runtime_error when it cannot.
std::string makeTempFolder(const std::string& prefix);

} // namespace simhost::detail
