// The platform calls behind replacing a file: POSIX (mkstemp, fchmod, fsync, rename) and
// Windows (_wopen, _wchmod, _commit, MoveFileExW: the wide-character calls, for UTF-8 paths).
#include "utils/FileReplace.h"

#include "utils/Utf8Path.h"

#include <cstdlib>
#include <sys/stat.h>

#ifdef _WIN32
#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <random>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace HV_FileUtils {

namespace {

/// The permission bits of a mode (no file type).
constexpr int kPermissionBits = 07777;

#ifdef _WIN32
/// Names tried before a temporary is given up (each clash is another file of the same name).
constexpr int kCreateAttempts = 100;

/// mkstemp for a UTF-8 pattern (mingw's reads the ANSI code page): the last kTemporaryRandomChars
/// characters are replaced until a new file can be created; its descriptor, or -1.
int CreateUniqueFile(std::string& pattern) {
    static const char kNameChars[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device random;
    const size_t first = pattern.size() - kTemporaryRandomChars;
    for (int attempt = 0; attempt < kCreateAttempts; ++attempt) {
        for (size_t i = first; i < pattern.size(); ++i)
            pattern[i] = kNameChars[random() % (sizeof kNameChars - 1)];
        const int fd = _wopen(WideFromUtf8(pattern).c_str(), _O_CREAT | _O_EXCL | _O_RDWR | _O_BINARY,
                              _S_IREAD | _S_IWRITE);
        if (fd >= 0 || errno != EEXIST) return fd;
    }
    return -1;
}

/// The permission bits of the file at path, or kNewFilePermissions when there is none.
int PermissionsOf(const std::string& path) {
    struct _stat64 old {};
    return _wstat64(WideFromUtf8(path).c_str(), &old) == 0 ? (old.st_mode & kPermissionBits)
                                                           : kNewFilePermissions;
}
#else
int PermissionsOf(const std::string& path) {
    struct stat old {};
    return stat(path.c_str(), &old) == 0 ? (old.st_mode & kPermissionBits) : kNewFilePermissions;
}
#endif

} // namespace

std::string MakeTemporaryBeside(const std::string& path, const std::string& infix) {
    if (path.empty()) return "";
    std::string temporary = path + infix + std::string(kTemporaryRandomChars, 'X'); // mkstemp's pattern
#ifdef _WIN32
    const int fd = CreateUniqueFile(temporary);
#else
    const int fd = mkstemp(&temporary[0]);
#endif
    if (fd < 0) return "";
    const int permissions = PermissionsOf(path);
#ifdef _WIN32
    _close(fd);
    _wchmod(WideFromUtf8(temporary).c_str(), permissions); // only the read-only bit means anything here
#else
    fchmod(fd, static_cast<mode_t>(permissions));
    close(fd);
#endif
    return temporary;
}

bool FlushToDisk(std::FILE* file) {
    if (!file || std::fflush(file) != 0) return false;
#ifdef _WIN32
    return _commit(_fileno(file)) == 0;
#else
    return fsync(fileno(file)) == 0;
#endif
}

bool RenameOver(const std::string& from, const std::string& to) {
#ifdef _WIN32
    return MoveFileExW(WideFromUtf8(from).c_str(), WideFromUtf8(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
#else
    return std::rename(from.c_str(), to.c_str()) == 0;
#endif
}

} // namespace HV_FileUtils
