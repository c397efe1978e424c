// Replacing a file so that it is never left half-written.
#pragma once

#include <functional>

/// Calls `write` with a new temporary path beside `path` (the permissions of the file it replaces,
/// 0644 for a new one), then renames it over `path`;
/// false, with the temporary removed and `path` untouched, when either step fails.
bool ReplaceFile(const char* path, const std::function<bool(const char* tempPath)>& write);
