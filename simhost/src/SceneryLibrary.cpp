#include "SceneryLibrary.h"
#include "utils/Utf8Path.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace simhost::detail {

namespace {

namespace fs = std::filesystem;

/// Scenery package folders, highest priority first.
std::vector<fs::path> packages(const std::string& root) {
    std::vector<fs::path> found;
    for (const char* area : {"Custom Scenery", "Resources/default scenery"}) {
        std::vector<fs::path> here;
        std::error_code ec;
        for (const fs::directory_entry& e :
             fs::directory_iterator(HV_FileUtils::PathFromUtf8(root) / area, ec))
            if (e.is_directory(ec)) here.push_back(e.path());
        std::sort(here.begin(), here.end());
        found.insert(found.end(), here.begin(), here.end());
    }
    return found;
}

std::string trimmed(const std::string& s) {
    const size_t first = s.find_first_not_of(" \t\r");
    if (first == std::string::npos) return std::string();
    return s.substr(first, s.find_last_not_of(" \t\r") - first + 1);
}

/// Library files may use ':' or '\' between folders.
std::string slashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    std::replace(path.begin(), path.end(), ':', '/');
    return path;
}

} // namespace

std::vector<std::string> lookupLibrary(const std::string& root, const std::string& virtualPath) {
    std::vector<std::string> exported, extended, backup;
    const std::string wanted = slashes(virtualPath);
    for (const fs::path& package : packages(root)) {
        std::ifstream in(package / "library.txt");
        if (!in) continue;
        const std::string prefix =
            slashes(HV_FileUtils::Utf8FromPath(fs::relative(package, HV_FileUtils::PathFromUtf8(root)))) +
            "/";
        std::vector<std::string> packageExports;
        std::string line;
        while (std::getline(in, line)) {
            std::istringstream words(line);
            std::string verb, name;
            if (!(words >> verb >> name) || slashes(name) != wanted) continue;
            std::string rest;
            std::getline(words, rest);
            const std::string real = trimmed(rest); // the file's name may hold spaces
            if (real.empty()) continue;
            const std::string path = prefix + slashes(real);
            if (verb == "EXPORT" || verb == "EXPORT_EXCLUDE")
                packageExports.push_back(path);
            else if (verb == "EXPORT_EXTEND")
                extended.push_back(path);
            else if (verb == "EXPORT_BACKUP")
                backup.push_back(path);
        }
        if (exported.empty()) exported = packageExports; // a package of lower priority cannot override
    }
    exported.insert(exported.end(), extended.begin(), extended.end());
    return exported.empty() ? backup : exported;
}

} // namespace simhost::detail
