// Releasing, at plug-in stop, everything the utilities registered with or cached from the host.
#include "utils/GNLUtils.h"

#include "utils/HostRelease.h"

namespace HV_GNLUtils {

void ReleaseHostBindings() {
    StopModifierSniffer();
    detail::ReleaseClock();
    detail::ReleaseHeadingDataRefs();
    detail::ReleaseSharedMenu();
}

} // namespace HV_GNLUtils
