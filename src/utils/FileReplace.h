// Replacing a file on disk in one step, on every platform: write a temporary file
// beside it, flush it to disk, rename it over the target. The file is always
// either its old or its new complete content, never half-written.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

namespace HV_FileUtils {

/// Permissions of a new file when there is no old one to take them from (rw-r--r--).
constexpr int kNewFilePermissions = 0644;

/// Characters of a temporary's name that mkstemp picks, from [A-Za-z0-9].
constexpr std::size_t kTemporaryRandomChars = 6;

/// Creates a new empty file with a unique name beside path (path, infix, kTemporaryRandomChars
/// characters), carrying the permissions of the file at path (kNewFilePermissions when there is
/// none); its path, or "" when it cannot.
std::string MakeTemporaryBeside(const std::string& path, const std::string& infix = ".");

/// Flushes a written stream to the disk itself; false on an error.
bool FlushToDisk(std::FILE* file);

/// Renames from over to in one step, replacing to when it exists (Windows refuses a plain
/// rename over an existing file); false, with both left as they were, when it cannot.
bool RenameOver(const std::string& from, const std::string& to);

} // namespace HV_FileUtils
