// Releasing, at plug-in stop, everything the utilities registered with or cached from the host; and
// forgetting the cached handles when the plug-in binds to a host.
#include "utils/GNLUtils.h"

#include "utils/HostRelease.h"

namespace HV_GNLUtils {

void ReleaseHostBindings() {
    StopModifierSniffer();
    detail::ReleaseClock();
    detail::ReleaseHeadingDataRefs();
    detail::ReleaseSharedMenu();
}

void ForgetHostHandles() {
    detail::ReleaseHeadingDataRefs();
}

} // namespace HV_GNLUtils
