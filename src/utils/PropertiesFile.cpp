// HV_Properties: loading and saving "key=value" files.
#include "utils/HV_Properties.h"
#include "utils/FileReplace.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

const char* const kLoadFailure = "Error: can't open HV_Properties file '";
const char* const kLoadFailureTail = "Will create a new one from defaults'\n";
const char* const kSaveFailure = "Error: can't open HV_Properties file for writing'";
const char* const kLongLine = "Warning: HV_Properties line too long, skipped, in '";

void ReportSaveFailure(std::ostream* errors, const std::string& fileName) {
    if (errors) *errors << kSaveFailure << fileName << "'\n";
}

/// Stores one gathered line: split at the last "=", skipped without "=" or with an empty key.
void StoreLine(std::map<std::string, std::string>& entries, const std::string& line) {
    const std::string::size_type split = line.rfind('=');
    if (split == std::string::npos || split == 0) return;
    entries[line.substr(0, split)] = line.substr(split + 1);
}

/// Writes every pair to the open stream; false on any write error.
bool WritePairs(FILE* out, const std::map<std::string, std::string>& entries) {
    for (const auto& pair : entries) {
        if (fwrite(pair.first.data(), 1, pair.first.size(), out) != pair.first.size()) return false;
        if (fputc('=', out) == EOF) return false;
        if (fwrite(pair.second.data(), 1, pair.second.size(), out) != pair.second.size()) return false;
        if (fputc('\n', out) == EOF) return false;
    }
    return true;
}

} // namespace

HV_Properties::HV_Properties(const char* name, std::ostream* errors) {
    if (name) fileName = name;
    if (!fileName.empty()) load(errors);
}

void HV_Properties::load(std::ostream* errors) {
    FILE* in = fileName.empty() ? nullptr : fopen(fileName.c_str(), "rb");
    if (!in) {
        if (errors) *errors << kLoadFailure << fileName << "'\n" << kLoadFailureTail;
        return;
    }
    std::string line;
    bool tooLong = false;
    for (;;) {
        const int c = getc(in);
        if (c == EOF || c == '\n' || c == '\r') {
            if (tooLong) {
                if (errors) *errors << kLongLine << fileName << "'\n";
            } else {
                StoreLine(entries, line);
            }
            line.clear();
            tooLong = false;
            if (c == EOF) break;
            continue;
        }
        if (static_cast<int>(line.size()) >= kPropertiesLineBytes - 1) {
            tooLong = true;
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
    const std::string temporary = HV_FileUtils::MakeTemporaryBeside(fileName);
    FILE* out = temporary.empty() ? nullptr : fopen(temporary.c_str(), "wb");
    if (!out) {
        if (!temporary.empty()) remove(temporary.c_str());
        ReportSaveFailure(errors, fileName);
        return;
    }
    bool written = WritePairs(out, entries);
    written = HV_FileUtils::FlushToDisk(out) && written;
    written = (fclose(out) == 0) && written;
    if (!written || !HV_FileUtils::RenameOver(temporary, fileName)) {
        remove(temporary.c_str());
        ReportSaveFailure(errors, fileName);
    }
}

std::ostream& operator<<(std::ostream& out, HV_Properties& properties) {
    out << "Properties: " << properties.fileName;
    for (const auto& pair : properties.entries)
        out << "\n\t" << pair.first << "=" << pair.second;
    return out;
}
