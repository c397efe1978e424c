// The API functions simhost gives plug-ins are called from C code: nothing may
// leave them as an exception. A failure inside (out of memory, a bug) is logged
// to Log.txt and the call returns its fallback.
#pragma once

#include "HostInternal.h"

#include <exception>
#include <string>

namespace simhost::detail {

/// Logs a failure that stopped an API function.
inline void logApiFailure(const char* function, const char* why) noexcept {
    try {
        writeLog(std::string("simhost: ") + function + " failed: " + why + "\n");
    } catch (...) {
        // Logging itself failed (no memory): nothing more can be done.
    }
}

/// Runs the body of an API function that returns nothing.
template <class F> void firewall(const char* function, F&& body) noexcept {
    try {
        body();
    } catch (const std::exception& e) {
        logApiFailure(function, e.what());
    } catch (...) {
        logApiFailure(function, "unknown exception");
    }
}

/// Runs the body of an API function; the fallback is returned when it fails.
template <class R, class F> R firewall(const char* function, R fallback, F&& body) noexcept {
    try {
        return body();
    } catch (const std::exception& e) {
        logApiFailure(function, e.what());
    } catch (...) {
        logApiFailure(function, "unknown exception");
    }
    return fallback;
}

} // namespace simhost::detail
