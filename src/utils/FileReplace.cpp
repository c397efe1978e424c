// The platform calls behind replacing a file: POSIX (mkstemp, fchmod, fsync, rename) and
// Windows (_commit, MoveFileExW, whose paths are UTF-16: X-Plane's paths are UTF-8).
#include "utils/FileReplace.h"

#include <cstdlib>
#include <sys/stat.h>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace HV_FileUtils {

namespace {

/// The permission bits of a mode (no file type).
constexpr int kPermissionBits = 07777;

#ifdef _WIN32
std::wstring Wide(const std::string& utf8) {
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.c_str(), -1, nullptr, 0);
    if (length <= 0) return std::wstring();
    std::wstring wide(static_cast<size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.c_str(), -1, &wide[0], length);
    wide.pop_back(); // the terminator MultiByteToWideChar counted
    return wide;
}
#endif

} // namespace

std::string MakeTemporaryBeside(const std::string& path, const std::string& infix) {
    if (path.empty()) return "";
    std::string temporary = path + infix + std::string(kTemporaryRandomChars, 'X'); // mkstemp's pattern
    const int fd = mkstemp(&temporary[0]);
    if (fd < 0) return "";
    struct stat old {};
    const int permissions =
        stat(path.c_str(), &old) == 0 ? (old.st_mode & kPermissionBits) : kNewFilePermissions;
#ifdef _WIN32
    _close(fd);
    _chmod(temporary.c_str(), permissions); // only the read-only bit means anything here
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
    return MoveFileExW(Wide(from).c_str(), Wide(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
#else
    return std::rename(from.c_str(), to.c_str()) == 0;
#endif
}

} // namespace HV_FileUtils
