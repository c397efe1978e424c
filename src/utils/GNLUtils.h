// General utilities that call the simulator: the menu shared by the maker's plug-ins,
// window centring and the modifier keys; includes the host-free string helpers.
#pragma once

#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "XPLMMenus.h"
#include "utils/StringUtils.h"

namespace HV_GNLUtils {

/// Name of the shared menu created by the first of the maker's plug-ins.
constexpr const char* kHVMenuName = "HV__Team";
/// Integer dataref through which the shared menu's ID is published.
constexpr const char* kHVMenuDataRef = "HalvernTeam/Common/Menu";

/// The shared menu: found through its dataref, or created and published on first call.
XPLMMenuID GetHVMenuID();

/// Centres the window on a fixed 1024 x 768 screen.
void Window_Center(XPLMWindowID window);

/// The modifier keys of the last key event seen, as xplm_ShiftFlag | xplm_OptionAltFlag | xplm_ControlFlag.
int XPLMGetCurrentKeyModifiers();
/// Records the flags of a key event (call from key sniffers and key callbacks).
void NoteKeyModifiers(XPLMKeyFlags flags);
/// Registers a key sniffer that feeds NoteKeyModifiers without consuming keys.
void StartModifierSniffer();
/// Unregisters the sniffer of StartModifierSniffer (no-op when not registered).
void StopModifierSniffer();

/// Releases what the utilities registered with the host (the shared-menu dataref, the modifier
/// sniffer) and forgets cached handles, the shared menu and the clock anchor. Call at plug-in stop.
void ReleaseHostBindings();
/// Forgets the dataref handles the utilities cached (the heading datarefs) without calling the host,
/// so that the next use looks them up in the host running then.
void ForgetHostHandles();

} // namespace HV_GNLUtils
