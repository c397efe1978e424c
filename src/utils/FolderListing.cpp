// Folder listings filtered by the wildcard matcher, sorted by name.
#include "utils/FileUtils.h"
#include "utils/Utf8Path.h"

#include <algorithm>
#include <filesystem>
#include <string>

namespace HV_FileUtils {

namespace fs = std::filesystem;

void globFiles(const char* folder, const char* pattern, std::vector<std::string>* names) {
    if (!folder || !*folder || !pattern || !names) return;
    std::vector<std::string> found;
    std::error_code error;
    for (fs::directory_iterator it(PathFromUtf8(folder), error), end; !error && it != end;
         it.increment(error)) {
        const std::string name = Utf8FromPath(it->path().filename());
        if (!glob_match(name.c_str(), pattern)) continue;
        // Folders are never listed, whatever their name; links count as what they point to.
        std::error_code statusError;
        const fs::file_status status = fs::status(it->path(), statusError);
        if (statusError || fs::is_directory(status)) continue;
        found.push_back(name);
    }
    std::sort(found.begin(), found.end());
    names->insert(names->end(), found.begin(), found.end());
}

bool FolderExisting(const char* path) {
    if (!path || !*path) return false;
    std::error_code error;
    fs::directory_iterator listing(PathFromUtf8(path), error); // a folder that can be listed
    return !error;
}

void ParsingFolder(const char* folder, const char* pattern, std::vector<std::string>* names) {
    globFiles(folder, pattern, names);
}

} // namespace HV_FileUtils
