// HV_Properties: loading and saving "key=value" files.
#include "utils/HV_Properties.h"
#include "utils/FileReplace.h"
#include "utils/Utf8Path.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

const char* const kLoadFailure = "Error: can't open HV_Properties file '";
const char* const kLoadFailureTail = "Will create a new one from defaults'\n";
const char* const kSaveFailure = "Error: can't open HV_Properties file for writing'";
const char* const kLongLine = "Warning: HV_Properties line too long, kept as it is, in '";

/// A temporary of a save is the file's name, this, and the characters mkstemp picks from [A-Za-z0-9].
const char* const kTemporaryInfix = ".saving-";
constexpr std::size_t kTemporaryRandomChars = HV_FileUtils::kTemporaryRandomChars;

using KeptLines = std::vector<std::pair<std::string, std::string>>;

void ReportSaveFailure(std::ostream* errors, const std::string& fileName) {
    if (errors) *errors << kSaveFailure << fileName << "'\n";
}

/// Stores one gathered line, split at the last "="; false (nothing stored) without "=" or with an empty key.
bool StoreLine(std::map<std::string, std::string>& entries, const std::string& line, std::string* key) {
    const std::string::size_type split = line.rfind('=');
    if (split == std::string::npos || split == 0) return false;
    *key = line.substr(0, split);
    entries[*key] = line.substr(split + 1);
    return true;
}

bool WriteLine(FILE* out, const std::string& text) {
    return fwrite(text.data(), 1, text.size(), out) == text.size() && fputc('\n', out) != EOF;
}

/// Writes every pair, each kept line after the property it followed (so before the first property that
/// sorts after that one); false on any write error.
bool WritePairs(FILE* out, const std::map<std::string, std::string>& entries, KeptLines kept) {
    std::stable_sort(kept.begin(), kept.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::size_t next = 0;
    for (const auto& pair : entries) {
        for (; next < kept.size() && kept[next].first < pair.first; ++next)
            if (!WriteLine(out, kept[next].second)) return false;
        if (!WriteLine(out, pair.first + "=" + pair.second)) return false;
    }
    for (; next < kept.size(); ++next) // after the last property
        if (!WriteLine(out, kept[next].second)) return false;
    return true;
}

/// Removes what saves of fileName that were killed half-way left beside it: regular files named like
/// its temporaries, and nothing else.
void RemoveStaleTemporaries(const std::string& fileName) {
    namespace fs = std::filesystem;
    const fs::path target = HV_FileUtils::PathFromUtf8(fileName);
    const std::string prefix = HV_FileUtils::Utf8FromPath(target.filename()) + kTemporaryInfix;
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    std::error_code error;
    std::vector<fs::path> stale;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        const std::string name = HV_FileUtils::Utf8FromPath(it->path().filename());
        if (name.size() != prefix.size() + kTemporaryRandomChars ||
            name.compare(0, prefix.size(), prefix) != 0)
            continue;
        const bool random = std::all_of(name.begin() + prefix.size(), name.end(), [](char c) {
            return std::isalnum(static_cast<unsigned char>(c)) != 0;
        });
        std::error_code statusError;
        if (random && fs::is_regular_file(it->symlink_status(statusError))) stale.push_back(it->path());
    }
    for (const fs::path& path : stale)
        fs::remove(path, error);
}

} // namespace

HV_Properties::HV_Properties(const char* name, std::ostream* errors) {
    if (name) fileName = name;
    if (!fileName.empty()) load(errors);
}

void HV_Properties::load(std::ostream* errors) {
    if (!fileName.empty()) RemoveStaleTemporaries(fileName);
    FILE* in = fileName.empty() ? nullptr : HV_FileUtils::OpenFile(fileName.c_str(), "rb");
    if (!in) {
        if (errors) *errors << kLoadFailure << fileName << "'\n" << kLoadFailureTail;
        return;
    }
    keptLines.clear();
    std::string line, key, lastKey;
    for (;;) {
        const int c = getc(in);
        if (c == EOF || c == '\n' || c == '\r') {
            if (static_cast<int>(line.size()) >= kPropertiesLineBytes) { // longer than the map holds
                if (errors) *errors << kLongLine << fileName << "'\n";
                keptLines.emplace_back(lastKey, line);
            } else if (StoreLine(entries, line, &key)) {
                lastKey = key;
            } else if (!line.empty()) {
                keptLines.emplace_back(lastKey, line);
            }
            line.clear();
            if (c == EOF) break;
            continue;
        }
        line.push_back(static_cast<char>(c));
    }
    fclose(in);
}

void HV_Properties::save(std::ostream* errors) {
    if (fileName.empty()) {
        ReportSaveFailure(errors, fileName);
        return;
    }
    // Write beside the target and rename over it, so that the file on disk is always
    // either the old or the new complete content.
    const std::string temporary = HV_FileUtils::MakeTemporaryBeside(fileName, kTemporaryInfix);
    FILE* out = temporary.empty() ? nullptr : HV_FileUtils::OpenFile(temporary.c_str(), "wb");
    if (!out) {
        if (!temporary.empty()) HV_FileUtils::RemoveFile(temporary.c_str());
        ReportSaveFailure(errors, fileName);
        return;
    }
    bool written = WritePairs(out, entries, keptLines);
    written = HV_FileUtils::FlushToDisk(out) && written;
    written = (fclose(out) == 0) && written;
    if (!written || !HV_FileUtils::RenameOver(temporary, fileName)) {
        HV_FileUtils::RemoveFile(temporary.c_str());
        ReportSaveFailure(errors, fileName);
    }
}

std::ostream& operator<<(std::ostream& out, HV_Properties& properties) {
    out << "Properties: " << properties.fileName;
    for (const auto& pair : properties.entries)
        out << "\n\t" << pair.first << "=" << pair.second;
    return out;
}
