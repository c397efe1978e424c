// Folder listings filtered by the wildcard matcher, sorted by name.
#include "utils/FileUtils.h"

#include <algorithm>
#include <dirent.h>
#include <string>
#include <sys/stat.h>

namespace HV_FileUtils {

void globFiles(const char* folder, const char* pattern, std::vector<std::string>* names) {
    if (!folder || !*folder || !pattern || !names) return;
    DIR* dir = opendir(folder);
    if (!dir) return;
    std::string prefix = folder;
    if (prefix.back() != '/') prefix += '/';
    std::vector<std::string> found;
    while (const dirent* entry = readdir(dir)) {
        const std::string name = entry->d_name;
        if (name == "." || name == ".." || !glob_match(name.c_str(), pattern)) continue;
        // Folders are never listed, whatever their name; links count as what they point to.
        struct stat info {};
        if (stat((prefix + name).c_str(), &info) != 0 || S_ISDIR(info.st_mode)) continue;
        found.push_back(name);
    }
    closedir(dir);
    std::sort(found.begin(), found.end());
    names->insert(names->end(), found.begin(), found.end());
}

bool FolderExisting(const char* path) {
    if (!path || !*path) return false;
    DIR* dir = opendir(path);
    if (dir) closedir(dir);
    return dir != nullptr;
}

void ParsingFolder(const char* folder, const char* pattern, std::vector<std::string>* names) {
    globFiles(folder, pattern, names);
}

} // namespace HV_FileUtils
