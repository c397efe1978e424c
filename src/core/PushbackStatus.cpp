#include "core/PushbackStatus.h"

#include "motion/PushbackKinematics.h"

namespace {
constexpr int kStatusIdle = 0;
constexpr int kStatusStraight = 1;
constexpr int kStatusTailRight = 2;
constexpr int kStatusTailLeft = 3;
} // namespace

// Reads two integers only: cannot throw across the host boundary.
int GetPBStatus(void* /*refcon*/) {
    if (gKLVPlaneMoveDirection == kMoveNone) return kStatusIdle;
    switch (gKLVPlaneRotateDir) {
    case kRotateStraight:
        return kStatusStraight;
    case kRotateTailLeft:
        return kStatusTailLeft;
    case kRotateTailRight:
        return kStatusTailRight;
    default:
        return kStatusIdle;
    }
}
