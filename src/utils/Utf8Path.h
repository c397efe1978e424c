// Paths as X-Plane hands them to plug-ins, UTF-8 text, given to the file system. On Windows the
// narrow C and C++ calls read a path in the ANSI code page, so a folder with accents ("Prüfstand")
// is not found: these go through the wide-character (UTF-16) calls there. Elsewhere they are the
// plain calls. None of them throws; text that is not UTF-8 names no file.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace HV_FileUtils {

/// A std::filesystem path from UTF-8 text (for std::filesystem calls and std::fstream).
std::filesystem::path PathFromUtf8(const std::string& utf8);

/// A path's text in UTF-8.
std::string Utf8FromPath(const std::filesystem::path& path);

/// std::fopen of a UTF-8 path.
std::FILE* OpenFile(const char* path, const char* mode);

/// std::remove of a UTF-8 path: 0 when it was removed.
int RemoveFile(const char* path);

#ifdef _WIN32
/// UTF-16 from UTF-8 (invalid sequences become U+FFFD).
std::wstring WideFromUtf8(const std::string& utf8);

/// UTF-8 from UTF-16.
std::string Utf8FromWide(const std::wstring& wide);
#endif

} // namespace HV_FileUtils
