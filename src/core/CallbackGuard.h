// The host boundary: nothing may throw into the simulator. Every callback the
// host calls runs its body through GuardCallback, which logs a failure and lets
// the callback return a safe value instead.
#pragma once

#include "core/SimulatorDataRefs.h"

#include <exception>
#include <utility>

/// Writes "Kalvora: <where> failed: <what>" to the host's log.
void LogCallbackFailure(const char* where, const char* what);
/// A host value that is not a usable number was read in `where`: stops a push-back under way, as
/// "Stop PushBack!" does, and says so in Kalvora.log and the host's log.
void StopForUnusableHostValue(const char* where, const NonFiniteHostValue& bad);

/// Runs body(); on an exception logs it and returns `fallback`. A host value that is not a usable
/// number stops the push-back instead (StopForUnusableHostValue) and returns `onUnusableValue`.
template <typename Result, typename Body>
Result GuardCallback(const char* where, Result fallback, Body&& body, Result onUnusableValue) noexcept {
    try {
        return body();
    } catch (const NonFiniteHostValue& bad) {
        StopForUnusableHostValue(where, bad);
        return onUnusableValue;
    } catch (const std::exception& e) {
        LogCallbackFailure(where, e.what());
    } catch (...) {
        LogCallbackFailure(where, "unknown error");
    }
    return fallback;
}

/// The same, returning `fallback` in both cases.
template <typename Result, typename Body>
Result GuardCallback(const char* where, Result fallback, Body&& body) noexcept {
    return GuardCallback(where, fallback, std::forward<Body>(body), fallback);
}

/// Runs body(), which returns nothing; on an exception logs it.
template <typename Body> void GuardCallback(const char* where, Body&& body) noexcept {
    GuardCallback(where, 0, [&body] {
        body();
        return 0;
    });
}
