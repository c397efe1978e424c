#include "core/CallbackGuard.h"

#include "XPLMUtilities.h"

#include <string>

void LogCallbackFailure(const char* where, const char* what) {
    try {
        XPLMDebugString(("Kalvora: " + std::string(where) + " failed: " + std::string(what) + "\n").c_str());
    } catch (...) {
        XPLMDebugString("Kalvora: a callback failed\n"); // no memory left for the details
    }
}
