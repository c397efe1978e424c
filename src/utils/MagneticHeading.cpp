// Magnetic variation of the user's aircraft, from the simulator's heading datarefs.
#include "utils/MathUtils.h"

#include "utils/HostRelease.h"

#include "XPLMDataAccess.h"

namespace {

const char* const kTrueHeadingDataRef = "sim/flightmodel/position/psi";
const char* const kMagneticHeadingDataRef = "sim/flightmodel/position/magpsi";

XPLMDataRef gTrueHeading = nullptr;
XPLMDataRef gMagneticHeading = nullptr;

void FindHeadingDataRefs() {
    if (!gTrueHeading) gTrueHeading = XPLMFindDataRef(kTrueHeadingDataRef);
    if (!gMagneticHeading) gMagneticHeading = XPLMFindDataRef(kMagneticHeadingDataRef);
}

} // namespace

namespace HV_GNLUtils::detail {
void ReleaseHeadingDataRefs() {
    gTrueHeading = nullptr;
    gMagneticHeading = nullptr;
}
} // namespace HV_GNLUtils::detail

namespace HV_MathUtils {

float UTIL_HeadingGetMagneticDerivation() {
    FindHeadingDataRefs();
    if (!gTrueHeading || !gMagneticHeading) return 0;
    return XPLMGetDataf(gMagneticHeading) - XPLMGetDataf(gTrueHeading);
}

float UTIL_HeadingGetMagneticFromTrue(float trueHeading) {
    return UTIL_MagneticFromTrueWith(trueHeading, UTIL_HeadingGetMagneticDerivation());
}

float UTIL_HeadingGetTrueFromMagnetic(float magneticHeading) {
    return UTIL_TrueFromMagneticWith(magneticHeading, UTIL_HeadingGetMagneticDerivation());
}

} // namespace HV_MathUtils
