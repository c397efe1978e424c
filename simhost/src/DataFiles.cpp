// XPLMUtilities.h's file services: folder listings and the sim's data files
// (situations and replays). simhost has no flight to save or restore: a save
// writes a small text file at the path named (so a plug-in that looks for its
// file finds one), a load reads nothing into the sim; both are recorded in
// the transcript (kind "datafile") and answer as X-Plane does.
#include "HostInternal.h"

#include "XPLMUtilities.h"
#include "utils/Utf8Path.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace simhost::detail {
namespace {

const char* kindName(int type) {
    return type == xplm_DataFile_Situation ? "situation" : "replay";
}

/// The file a relative data-file path names, inside the X-Plane folder; empty when it would leave it.
std::string dataFilePath(const HostCore& c, const char* relative) {
    const fs::path p = HV_FileUtils::PathFromUtf8(relative).lexically_normal();
    if (p.empty() || p.is_absolute() || *p.begin() == "..") return "";
    return c.sandbox + HV_FileUtils::Utf8FromPath(p);
}

} // namespace
} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

int XPLMGetDirectoryContents(const char* inDirectoryPath, int inFirstReturn, char* outFileNames,
                             int inFileNameBufSize, char** outIndices, int inIndexCount, int* outTotalFiles,
                             int* outReturnedFiles) {
    if (outTotalFiles) *outTotalFiles = 0;
    if (outReturnedFiles) *outReturnedFiles = 0;
    if (outFileNames && inFileNameBufSize > 0) outFileNames[0] = '\0';
    if (outIndices && inIndexCount > 0) outIndices[0] = nullptr;
    if (!inDirectoryPath || !outFileNames || inFileNameBufSize <= 0) return 0;
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(HV_FileUtils::PathFromUtf8(inDirectoryPath), ec), end; !ec && it != end;
         it.increment(ec))
        names.push_back(HV_FileUtils::Utf8FromPath(it->path().filename()));
    if (ec) return 0;
    std::sort(names.begin(), names.end()); // the file system's order is arbitrary; a sorted one is stable
    if (outTotalFiles) *outTotalFiles = static_cast<int>(names.size());
    // Names from inFirstReturn on, each NUL-terminated, then an empty name; the index gets a NULL after the
    // last. Room is needed for the empty name and the NULL too.
    size_t used = 0;
    int returned = 0;
    bool all = true;
    for (size_t i = static_cast<size_t>(std::max(0, inFirstReturn)); i < names.size(); ++i) {
        const size_t need = names[i].size() + 1;
        if (used + need + 1 > static_cast<size_t>(inFileNameBufSize) ||
            (outIndices && returned + 1 >= inIndexCount)) {
            all = false;
            break;
        }
        std::memcpy(outFileNames + used, names[i].c_str(), need);
        if (outIndices) outIndices[returned] = outFileNames + used;
        used += need;
        ++returned;
    }
    outFileNames[used] = '\0';
    if (outIndices && returned < inIndexCount) outIndices[returned] = nullptr;
    if (outReturnedFiles) *outReturnedFiles = returned;
    return all ? 1 : 0;
}

int XPLMLoadDataFile(XPLMDataFileType inFileType, const char* inFilePath) {
    HostCore* c = core();
    if (!c || (inFileType != xplm_DataFile_Situation && inFileType != xplm_DataFile_ReplayMovie)) return 0;
    if (!inFilePath) {
        // Only a replay can be cleared.
        if (inFileType != xplm_DataFile_ReplayMovie) return 0;
        record("datafile", "replay cleared");
        return 1;
    }
    const std::string path = dataFilePath(*c, inFilePath);
    std::error_code ec;
    const bool ok = !path.empty() && fs::is_regular_file(HV_FileUtils::PathFromUtf8(path), ec);
    record("datafile",
           std::string("load ") + kindName(inFileType) + " " + inFilePath + (ok ? "" : " (no such file)"));
    return ok ? 1 : 0;
}

int XPLMSaveDataFile(XPLMDataFileType inFileType, const char* inFilePath) {
    HostCore* c = core();
    if (!c || !inFilePath ||
        (inFileType != xplm_DataFile_Situation && inFileType != xplm_DataFile_ReplayMovie))
        return 0;
    const std::string path = dataFilePath(*c, inFilePath);
    std::error_code ec;
    bool ok = !path.empty();
    if (ok) {
        fs::create_directories(HV_FileUtils::PathFromUtf8(path).parent_path(), ec);
        std::ofstream f(HV_FileUtils::PathFromUtf8(path), std::ios::trunc);
        f << "simhost " << kindName(inFileType) << ": aircraft " << c->aircraft.type << ", sim time "
          << c->simTime << " s\n";
        ok = static_cast<bool>(f);
    }
    record("datafile",
           std::string("save ") + kindName(inFileType) + " " + inFilePath + (ok ? "" : " (failed)"));
    return ok ? 1 : 0;
}

} // extern "C"
