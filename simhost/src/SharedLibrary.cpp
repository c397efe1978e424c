// dlopen/dlsym and LoadLibraryW/GetProcAddress.
#include "SharedLibrary.h"

#include "utils/Utf8Path.h"

#include <algorithm>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <cstdio>
#include <fstream>
#include <sstream>
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

void placeLibrary(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& ec) {
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, ec);
}

#else

namespace {

/// Whether any file mapped into this process (a library loaded, or one whose path is gone but which
/// is still mapped) is the file `st` describes.
bool mappedAlready(const struct stat& st) {
    std::ifstream maps("/proc/self/maps");
    if (!maps) return true; // cannot tell: assume it is, and copy
    std::string line;
    while (std::getline(maps, line)) {
        // address perms offset major:minor inode path
        std::istringstream fields(line);
        std::string address, perms, offset, device;
        unsigned long long inode = 0;
        if (!(fields >> address >> perms >> offset >> device >> inode) || inode != st.st_ino) continue;
        unsigned major = 0, minor = 0;
        if (std::sscanf(device.c_str(), "%x:%x", &major, &minor) == 2 && makedev(major, minor) == st.st_dev)
            return true;
    }
    return false;
}

} // namespace

void placeLibrary(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& ec) {
    struct stat st {};
    if (stat(from.c_str(), &st) == 0 && !mappedAlready(st)) {
        std::filesystem::remove(to, ec);
        std::filesystem::create_hard_link(from, to, ec);
        if (!ec) return;
    }
    ec.clear();
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, ec);
}

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
