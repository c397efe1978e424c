// Loading plug-in files and finding symbols: dlopen on Linux and macOS, LoadLibrary
// on Windows, behind one small interface.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace simhost::detail {

/// Loads a shared library (a plug-in), its symbols kept to itself; null and a reason on failure.
void* openLibrary(const std::string& path, std::string* why);
/// The address of a symbol the library exports, or null.
void* librarySymbol(void* library, const char* name);
/// Unloads a library opened by openLibrary.
void closeLibrary(void* library);
/// The address of a symbol simhost's own library exports (the X-Plane API), or null.
void* ownSymbol(const char* name);

/// Puts the plug-in file `from` at `to` (replacing what is there) for openLibrary: a hard link where
/// the loader cannot take it for a library it already holds (Linux's loader knows libraries by file
/// identity, so a second link to a loaded file would hand back the loaded one, statics and all), a
/// copy everywhere else. The link spares copying a multi-megabyte file at every load.
void placeLibrary(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& ec);

/// A path as the platform's X-Plane hands it out: "\" between folders on Windows, as it is
/// elsewhere.
std::string nativePath(std::string path);
/// The platform's directory separator, as XPLMGetDirectorySeparator returns it.
const char* nativeSeparator();

} // namespace simhost::detail
