// The modifier keys, as seen on the last key event that reached the plug-in.
#include "utils/GNLUtils.h"

namespace {

/// The modifier flags kept from a key event.
constexpr int kModifierFlags = xplm_ShiftFlag | xplm_OptionAltFlag | xplm_ControlFlag;

int gModifiers = 0;
bool gSnifferRegistered = false;

/// Sees every key before the windows do and lets it pass on.
int ModifierSnifferCallBack(char, XPLMKeyFlags flags, char, void*) {
    HV_GNLUtils::NoteKeyModifiers(flags);
    return 1;
}

} // namespace

namespace HV_GNLUtils {

int XPLMGetCurrentKeyModifiers() {
    return gModifiers;
}

void NoteKeyModifiers(XPLMKeyFlags flags) {
    gModifiers = flags & kModifierFlags;
}

void StartModifierSniffer() {
    if (gSnifferRegistered) return;
    gSnifferRegistered = XPLMRegisterKeySniffer(ModifierSnifferCallBack, 1, nullptr) == 1;
}

void StopModifierSniffer() {
    if (!gSnifferRegistered) return;
    XPLMUnregisterKeySniffer(ModifierSnifferCallBack, 1, nullptr);
    gSnifferRegistered = false;
    gModifiers = 0;
}

} // namespace HV_GNLUtils
