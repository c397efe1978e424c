// Internal to the utilities: each host-side file forgets what it holds from the host.
#pragma once

namespace HV_GNLUtils::detail {

/// Unregisters the shared-menu dataref, destroys the menu when this plug-in created it.
void ReleaseSharedMenu();
/// Forgets the heading dataref handles.
void ReleaseHeadingDataRefs();
/// Makes the next GetTimePrecise call anchor the clock again.
void ReleaseClock();

} // namespace HV_GNLUtils::detail
