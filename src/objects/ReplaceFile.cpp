// Write-then-rename: a rename within one folder replaces the target in one step.
#include "objects/ReplaceFile.h"

#include "utils/FileReplace.h"
#include "utils/Utf8Path.h"

#include <cstdio>
#include <string>

bool ReplaceFile(const char* path, const std::function<bool(const char* tempPath)>& write) {
    if (path == nullptr) return false;
    const std::string temp = HV_FileUtils::MakeTemporaryBeside(path);
    if (temp.empty()) return false;
    if (!write(temp.c_str()) || !HV_FileUtils::RenameOver(temp, path)) {
        HV_FileUtils::RemoveFile(temp.c_str());
        return false;
    }
    return true;
}
