// A scratch folder per test, removed with everything in it at the end of the test.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace kalvora_test {

class TempFolder {
public:
    TempFolder() {
        char pattern[] = "/tmp/kalvora-utils-XXXXXX";
        const char* made = mkdtemp(pattern);
        if (made) path_ = made;
    }
    ~TempFolder() {
        if (!path_.empty()) std::system(("rm -rf '" + path_ + "'").c_str());
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// The folder, without a trailing slash.
    const std::string& path() const { return path_; }
    /// Path of a file inside the folder.
    std::string file(const std::string& name) const { return path_ + "/" + name; }

    /// Writes bytes to a file inside the folder and returns its path.
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream out(file(name), std::ios::binary);
        out << bytes;
        return file(name);
    }

    /// Whole content of a file ("" when missing).
    static std::string read(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream all;
        all << in.rdbuf();
        return all.str();
    }

private:
    std::string path_;
};

} // namespace kalvora_test
