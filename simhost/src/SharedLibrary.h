// Loading plug-in files and finding symbols: dlopen on Linux and macOS, LoadLibrary
// on Windows, behind one small interface.
#pragma once

#include <string>

namespace simhost::detail {

/// Loads a shared library (a plug-in), its symbols kept to itself; null and a reason on failure.
void* openLibrary(const std::string& path, std::string* why);
/// The address of a symbol the library exports, or null.
void* librarySymbol(void* library, const char* name);
/// Unloads a library opened by openLibrary.
void closeLibrary(void* library);
/// The address of a symbol simhost's own library exports (the X-Plane API), or null.
void* ownSymbol(const char* name);

/// A path as the platform's X-Plane hands it out: "\" between folders on Windows, as it is
/// elsewhere.
std::string nativePath(std::string path);
/// The platform's directory separator, as XPLMGetDirectorySeparator returns it.
const char* nativeSeparator();

} // namespace simhost::detail
