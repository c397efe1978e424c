// File helpers that need no host: colon paths, existence, appending, file-type tables.
#include "utils/FileUtils.h"
#include "utils/Utf8Path.h"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>

namespace HV_FileUtils {

const char* const kHV_FILETYPES_MAC_TXT = "TEXT";
const char* const kHV_FILETYPES_MAC_ALL = "????";
const char* const kHV_FILETYPES_WIN_TXT = "Text Files";
const char* const kHV_FILETYPES_WIN_ALL = "All Files";

namespace {
/// Prefix given to colon paths that name a volume.
const char* const kVolumesPrefix = "/Volumes/";
/// File-type kind that selects the text-file entry.
constexpr char kTextFileKind = 1;

char gConvertedPath[kPathBufferBytes];

/// A drive path ("C:\..." or "C:/...") or a network path ("\\server\..."): what Windows hosts
/// report, never a colon-separated volume path.
bool IsWindowsPath(const char* path) {
    const bool drive = std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':' &&
                       (path[2] == '\\' || path[2] == '/');
    return drive || (path[0] == '\\' && path[1] == '\\');
}
} // namespace

const char* TranslateXCodePath(const char* path) {
    if (path == gConvertedPath) return gConvertedPath;
    if (!path) path = "";
    // A path inside the buffer (a tail of an earlier result) is copied out before it is overwritten.
    std::string inside;
    const std::less<const char*> before;
    if (before(gConvertedPath, path) && before(path, gConvertedPath + sizeof gConvertedPath)) {
        inside = path;
        path = inside.c_str();
    }
    // snprintf cuts an over-long path.
    if (IsWindowsPath(path)) {
        snprintf(gConvertedPath, sizeof gConvertedPath, "%s", path);
        return gConvertedPath;
    }
    snprintf(gConvertedPath, sizeof gConvertedPath, "%s%s", path[0] == '/' ? "" : kVolumesPrefix, path);
    for (char* c = gConvertedPath; *c; ++c) {
        if (*c == ':') *c = '/';
    }
    return gConvertedPath;
}

bool FileExisting(const char* path) {
    if (!path) return false;
    FILE* file = OpenFile(path, "r");
    if (!file) return false;
    fclose(file);
    return true;
}

bool Add2File(const char* path, const char* bytes, long count) {
    if (!path || !*path) return false;
    FILE* file = OpenFile(path, "ab");
    if (!file) return false;
    if (bytes && count > 0) fwrite(bytes, 1, static_cast<size_t>(count), file);
    fclose(file);
    return true;
}

bool AddString2File(const char* path, const char* text) {
    return Add2File(path, text, text ? static_cast<long>(strlen(text)) : 0);
}

const char* GetMacFileType(char kind) {
    return kind == kTextFileKind ? kHV_FILETYPES_MAC_TXT : kHV_FILETYPES_MAC_ALL;
}

const char* GetWindowsFileType(char kind) {
    return kind == kTextFileKind ? kHV_FILETYPES_WIN_TXT : kHV_FILETYPES_WIN_ALL;
}

} // namespace HV_FileUtils
