// mkdtemp under TMPDIR (or /tmp), and on Windows a random name under the user's temporary folder.
#include "TempFolder.h"

#include "utils/Utf8Path.h"

#include <cstdlib>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <vector>

namespace simhost::detail {

#ifdef _WIN32

std::string makeTempFolder(const std::string& prefix) {
    namespace fs = std::filesystem;
    constexpr int kAttempts = 100;    // names tried before giving up
    constexpr unsigned kSuffix = 1e6; // random suffixes 0..999999
    std::random_device random;
    const fs::path base = fs::temp_directory_path();
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const fs::path dir = base / (prefix + std::to_string(random() % kSuffix));
        std::error_code ec;
        if (fs::create_directory(dir, ec)) return HV_FileUtils::Utf8FromPath(dir);
    }
    throw std::runtime_error("simhost: cannot create a folder in " + HV_FileUtils::Utf8FromPath(base));
}

#else

std::string makeTempFolder(const std::string& prefix) {
    const char* tmp = std::getenv("TMPDIR");
    const std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/" + prefix + "XXXXXX";
    std::vector<char> buf(pattern.begin(), pattern.end());
    buf.push_back('\0');
    if (!mkdtemp(buf.data())) throw std::runtime_error("simhost: cannot create a folder in " + pattern);
    return buf.data();
}

#endif

} // namespace simhost::detail
