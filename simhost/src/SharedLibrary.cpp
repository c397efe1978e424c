// dlopen/dlsym and LoadLibraryW/GetProcAddress.
#include "SharedLibrary.h"

#include "utils/Utf8Path.h"

#include <algorithm>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace simhost::detail {

#ifdef _WIN32

namespace {

/// Any address inside this library, to find its module handle.
void anchor() {}

} // namespace

void* openLibrary(const std::string& path, std::string* why) {
    // The plug-in's own folder is searched for the DLLs it needs, as X-Plane does.
    HMODULE module = LoadLibraryExW(HV_FileUtils::WideFromUtf8(nativePath(path)).c_str(), nullptr,
                                    LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
    if (!module && why) *why = "LoadLibrary failed with error " + std::to_string(GetLastError());
    return reinterpret_cast<void*>(module);
}

void* librarySymbol(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void closeLibrary(void* library) {
    FreeLibrary(static_cast<HMODULE>(library));
}

void* ownSymbol(const char* name) {
    HMODULE self = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&anchor), &self))
        return nullptr;
    return librarySymbol(self, name);
}

std::string nativePath(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

const char* nativeSeparator() {
    return "\\";
}

#else

void* openLibrary(const std::string& path, std::string* why) {
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library && why) {
        const char* error = dlerror();
        *why = error ? error : "dlopen failed";
    }
    return library;
}

void* librarySymbol(void* library, const char* name) {
    return dlsym(library, name);
}

void closeLibrary(void* library) {
    dlclose(library);
}

void* ownSymbol(const char* name) {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&ownSymbol), &info) || !info.dli_fname) return nullptr;
    void* self = dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD);
    if (!self) return nullptr;
    void* symbol = dlsym(self, name);
    dlclose(self);
    return symbol;
}

std::string nativePath(std::string path) {
    return path;
}

const char* nativeSeparator() {
    return "/";
}

#endif

} // namespace simhost::detail
