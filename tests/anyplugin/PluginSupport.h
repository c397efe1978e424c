// What the test plug-ins share: publishing a value as an int or float dataref
// for the test to read (all withdrawn together at stop), and logging a line to
// Log.txt.
#pragma once

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <vector>

namespace plugin_support {

/// The datarefs the plug-in published.
inline std::vector<XPLMDataRef>& published() {
    static std::vector<XPLMDataRef> refs;
    return refs;
}

/// Publishes *value as a read-only int dataref.
inline void publishInt(const char* name, int* value) {
    published().push_back(XPLMRegisterDataAccessor(
        name, xplmType_Int, 0, [](void* v) { return *static_cast<int*>(v); }, nullptr, nullptr, nullptr,
        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, value, nullptr));
}

/// Publishes *value as a read-only float dataref.
inline void publishFloat(const char* name, float* value) {
    published().push_back(XPLMRegisterDataAccessor(
        name, xplmType_Float, 0, nullptr, nullptr, [](void* v) { return *static_cast<float*>(v); }, nullptr,
        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, value, nullptr));
}

/// Withdraws every dataref the plug-in published.
inline void unpublishAll() {
    for (XPLMDataRef r : published())
        XPLMUnregisterDataAccessor(r);
    published().clear();
}

/// printf into Log.txt, one line.
inline void logLine(const char* format, ...) {
    char line[512];
    va_list args;
    va_start(args, format);
    const int n = std::vsnprintf(line, sizeof line - 1, format, args);
    va_end(args);
    const size_t end = n < 0 ? 0 : std::min<size_t>(static_cast<size_t>(n), sizeof line - 2);
    line[end] = '\n';
    line[end + 1] = '\0';
    XPLMDebugString(line);
}

} // namespace plugin_support
