// Write-then-rename: a rename within one folder replaces the target in one step.
#include "objects/ReplaceFile.h"

#include <cstdio>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

bool ReplaceFile(const char* path, const std::function<bool(const char* tempPath)>& write) {
    if (path == nullptr) return false;
    std::string temp = std::string(path) + ".XXXXXX";
    const int fd = mkstemp(&temp[0]);
    if (fd < 0) return false;
    fchmod(fd, 0644); // a model is a normal readable file, not a private temporary
    close(fd);
    if (!write(temp.c_str()) || std::rename(temp.c_str(), path) != 0) {
        std::remove(temp.c_str());
        return false;
    }
    return true;
}
