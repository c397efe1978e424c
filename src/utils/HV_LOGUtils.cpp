// The toolkit's leveled logger: a level filter, a name tag and a file or the debug output.
#include "utils/HV_LOGUtils.h"

#include "utils/FileUtils.h"

#include "XPLMUtilities.h"
#include "utils/Utf8Path.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace HV_LOGUtils {

signed char gLogLevel = kHV_LOG_INFO;
char gPlugInName[kPlugInNameBytes] = "";
char* gFileNamePtr = nullptr;

namespace {

const char* Tag(signed char level) {
    switch (level) {
    case kHV_LOG_TRACE:
        return "[TRACE]";
    case kHV_LOG_WARNING:
        return "[WARNG]";
    case kHV_LOG_ALERT:
        return "[ALERT]";
    case kHV_LOG_FATAL:
        return "[FATAL]";
    default:
        return "[INFO ]";
    }
}

/// Prints the line on standard output with "%%" shown as "%"; nothing is read as a conversion.
void PrintToStandardOutput(const char* line) {
    for (const char* c = line; *c; ++c) {
        if (c[0] == '%' && c[1] == '%') ++c;
        fputc(*c, stdout);
    }
    fflush(stdout);
}

} // namespace

void SetLogLevel(char level) {
    gLogLevel = static_cast<signed char>(level);
}

void SetPlugInName(const char* name) {
    snprintf(gPlugInName, sizeof gPlugInName, "%s", name ? name : "");
}

int SetLogFilePath(const char* path, char level, bool eraseOld) {
    SetLogLevel(level);
    free(gFileNamePtr);
    gFileNamePtr = path ? strdup(path) : nullptr;
    if (!eraseOld || !gFileNamePtr) return 0;
    return HV_FileUtils::RemoveFile(gFileNamePtr);
}

void Add2Log(const char* message, char level) {
    const signed char signedLevel = static_cast<signed char>(level);
    if (signedLevel < gLogLevel) return;
    char line[kLogLineBytes];
    const int wanted =
        snprintf(line, sizeof line, "[%s]-%s %s\n", gPlugInName, Tag(signedLevel), message ? message : "");
    if (wanted >= static_cast<int>(sizeof line)) line[sizeof line - 2] = '\n'; // a cut line still ends
    if (gFileNamePtr) {
        HV_FileUtils::AddString2File(gFileNamePtr, line);
    } else {
        XPLMDebugString(line);
    }
    PrintToStandardOutput(line);
}

} // namespace HV_LOGUtils
