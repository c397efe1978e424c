// The host boundary: nothing may throw into the simulator. Every callback the
// host calls runs its body through GuardCallback, which logs a failure and lets
// the callback return a safe value instead.
#pragma once

#include <exception>

/// Writes "Kalvora: <where> failed: <what>" to the host's log.
void LogCallbackFailure(const char* where, const char* what);

/// Runs body(); on an exception logs it and returns `fallback`.
template <typename Result, typename Body>
Result GuardCallback(const char* where, Result fallback, Body&& body) noexcept {
    try {
        return body();
    } catch (const std::exception& e) {
        LogCallbackFailure(where, e.what());
    } catch (...) {
        LogCallbackFailure(where, "unknown error");
    }
    return fallback;
}

/// Runs body(), which returns nothing; on an exception logs it.
template <typename Body> void GuardCallback(const char* where, Body&& body) noexcept {
    GuardCallback(where, 0, [&body] {
        body();
        return 0;
    });
}
