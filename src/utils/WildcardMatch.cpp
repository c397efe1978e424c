// The toolkit's wildcard matcher: "*" matches any run, "?" any one character.
#include "utils/FileUtils.h"

#include <cstring>

namespace {

/// Outcome of matching a pattern tail: kAbort means the text ran out, so no later start
/// of an enclosing "*" can succeed either (this keeps backtracking polynomial).
enum MatchResult { kNoMatch, kMatch, kAbort };

MatchResult MatchFrom(const char* text, const char* pattern) {
    for (; *pattern; ++text, ++pattern) {
        if (*text == '\0' && *pattern != '*') return kAbort;
        if (*pattern == '*') {
            while (*++pattern == '*') {
            }
            if (*pattern == '\0') return kMatch;
            if (*pattern != '?') {
                text = strchr(text, *pattern);
                if (!text) return kAbort;
            }
            for (; *text; ++text) {
                const MatchResult result = MatchFrom(text, pattern);
                if (result != kNoMatch) return result;
            }
            return kAbort;
        }
        if (*pattern != '?' && *pattern != *text) return kNoMatch;
    }
    return *text == '\0' ? kMatch : kNoMatch;
}

} // namespace

namespace HV_FileUtils {

bool glob_match(const char* text, const char* pattern) {
    if (!text || !pattern) return false;
    return MatchFrom(text, pattern) == kMatch;
}

bool Parsing_match(const char* text, const char* pattern) {
    return glob_match(text, pattern);
}

} // namespace HV_FileUtils
