// A scratch folder for one test, removed with everything in it when it goes.
#pragma once

#include "support/Files.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace kalvora_test {

class TempFolder {
public:
    /// A new empty folder in the system's temporary folder, named `prefix`-XXXXXX.
    explicit TempFolder(const std::string& prefix = "kalvora") {
        std::string pattern = (std::filesystem::temp_directory_path() / (prefix + "-XXXXXX")).string();
        if (mkdtemp(pattern.data())) path_ = pattern;
    }
    ~TempFolder() {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// The folder, without a trailing slash ("" when it could not be made).
    const std::string& path() const { return path_; }
    /// Path of a file or folder inside it.
    std::string file(const std::string& name) const { return path_ + "/" + name; }
    std::filesystem::path operator/(const std::string& name) const {
        return std::filesystem::path(path_) / name;
    }

    /// Writes bytes to a file inside the folder and returns its path.
    std::string write(const std::string& name, const std::string& bytes) const {
        WriteFile(file(name), bytes);
        return file(name);
    }

private:
    std::string path_;
};

} // namespace kalvora_test
