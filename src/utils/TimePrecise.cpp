// GetTimePrecise: the plug-in's clock, anchored at its first reading, never running backwards.
#include "utils/MathUtils.h"

#include "utils/HostRelease.h"

#include "XPLMProcessing.h"

#include <cmath>
#include <cstdint>

namespace {

constexpr double kMicrosecondsPerSecond = 1000000.0;

bool gFirstTime = true;
int64_t gAnchor = 0;   ///< host clock at the clock's zero, microseconds
int64_t gLastRead = 0; ///< the last value handed out, microseconds since the zero

/// The host's elapsed time in whole microseconds (0 for a reading that is not a number).
int64_t HostMicroseconds() {
    const double seconds = static_cast<double>(XPLMGetElapsedTime());
    if (!std::isfinite(seconds)) return 0;
    return static_cast<int64_t>(std::llround(seconds * kMicrosecondsPerSecond));
}

} // namespace

namespace HV_GNLUtils::detail {
void ReleaseClock() {
    gFirstTime = true;
    gAnchor = 0;
    gLastRead = 0;
}
} // namespace HV_GNLUtils::detail

double GetTimePrecise() {
    const int64_t now = HostMicroseconds();
    if (gFirstTime) {
        gFirstTime = false;
        gAnchor = now;
    }
    // A host clock that starts again (another host in the same process) would send every timer back:
    // the clock goes on from where it stood instead.
    if (now - gAnchor < gLastRead) gAnchor = now - gLastRead;
    gLastRead = now - gAnchor;
    return static_cast<double>(gLastRead) / kMicrosecondsPerSecond;
}
