// UTF-8 paths on the wide-character Windows calls (MultiByteToWideChar, _wfopen, _wremove).
#include "utils/Utf8Path.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace HV_FileUtils {

#ifdef _WIN32

std::wstring WideFromUtf8(const std::string& utf8) {
    if (utf8.empty()) return std::wstring();
    const int length =
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    if (length <= 0) return std::wstring();
    std::wstring wide(static_cast<size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), &wide[0], length);
    return wide;
}

std::string Utf8FromWide(const std::wstring& wide) {
    if (wide.empty()) return std::string();
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), nullptr, 0,
                                           nullptr, nullptr);
    if (length <= 0) return std::string();
    std::string utf8(static_cast<size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), &utf8[0], length, nullptr,
                        nullptr);
    return utf8;
}

std::filesystem::path PathFromUtf8(const std::string& utf8) {
    return std::filesystem::path(WideFromUtf8(utf8));
}

std::string Utf8FromPath(const std::filesystem::path& path) {
    return Utf8FromWide(path.native());
}

std::FILE* OpenFile(const char* path, const char* mode) {
    if (!path || !mode) return nullptr;
    return _wfopen(WideFromUtf8(path).c_str(), WideFromUtf8(mode).c_str());
}

int RemoveFile(const char* path) {
    return path ? _wremove(WideFromUtf8(path).c_str()) : -1;
}

#else

std::filesystem::path PathFromUtf8(const std::string& utf8) {
    return std::filesystem::path(utf8);
}

std::string Utf8FromPath(const std::filesystem::path& path) {
    return path.string();
}

std::FILE* OpenFile(const char* path, const char* mode) {
    return path && mode ? std::fopen(path, mode) : nullptr;
}

int RemoveFile(const char* path) {
    return path ? std::remove(path) : -1;
}

#endif

} // namespace HV_FileUtils
