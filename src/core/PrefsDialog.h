// The "Kalvora Preferences" window: the eight switches, the truck speed and the
// truck-view key. Check boxes and the key wait for OK; the speed slider and
// "Defaults" change the Pref* globals at once.
#pragma once

#include "XPLMDefs.h"

class HV_Window;
class HV_Panel;
class HV_CtrlButton;
class HV_CtrlCheckBox;
class HV_CtrlSlider;
class HV_CtrlText;

extern int gPREF_ActiveKey; ///< virtual key last caught while "Assign new" waited; 0 until then
extern bool mWaitingKey;    ///< "Assign new" waits for a key
extern bool gIsEnable;      ///< blink state of "Assign new" while a key is awaited
extern float theLastTimer;  ///< host elapsed seconds of the next blink

/// One opening of the preferences window; it frees itself with its window when OK, Cancel or the close
/// box closes it.
class PrefsDialog {
public:
    HV_CtrlCheckBox* switchViewBox = nullptr;   ///< "Auto switch to external view"
    HV_CtrlCheckBox* auralBox = nullptr;        ///< "Aural ground crew warning"
    HV_CtrlCheckBox* writtenBox = nullptr;      ///< "Written ground crew warning"
    HV_CtrlCheckBox* drawTruckBox = nullptr;    ///< "Draw truck"
    HV_CtrlCheckBox* frontGearBox = nullptr;    ///< "PushBack on front gear"
    HV_CtrlCheckBox* rearGearBox = nullptr;     ///< "PushBack on rear gear", always opposite the front box
    HV_CtrlCheckBox* handleGPUBox = nullptr;    ///< "Handle GPU"
    HV_CtrlCheckBox* allowEnginesBox = nullptr; ///< "Allow PushBack with Engines ON"
    HV_CtrlButton* assignButton = nullptr;      ///< "Assign new"
    HV_CtrlText* keyText = nullptr;             ///< the current truck-view key
    HV_CtrlButton* okButton = nullptr;          ///< "  OK  "
    HV_CtrlButton* defaultsButton = nullptr;    ///< "Defaults"
    HV_CtrlButton* cancelButton = nullptr;      ///< "Cancel"
    HV_CtrlSlider* speedSlider = nullptr;       ///< "Truck speed", 0..50
    HV_Window* window = nullptr;                ///< null once closed

    /// Builds and shows the window.
    PrefsDialog();
    PrefsDialog(const PrefsDialog&) = delete;
    PrefsDialog& operator=(const PrefsDialog&) = delete;

    /// Lays out the window from the current Pref* globals and centres it.
    void MakeDialog();
    /// Window handler; returns 2 to close the window, 0 otherwise.
    static int HV_WindowHandler(void* dialog, long message, HV_Panel* control, long param1, long param2);
    /// Key sniffer while the window is open after "Assign new": takes every key and swallows it (0).
    /// Registered for one dialog at a time, once.
    static int myKeyCallback(char key, XPLMKeyFlags flags, char virtualKey, void* refcon);
};

/// The last preferences dialog opened from the menu while it is open, else null.
extern PrefsDialog* myPrefsDialog;

/// A truck speed from a slider (0..50), applied at once: PrefTruckSpeed and PrefStepValue = speed / 100 m.
void SetTruckSpeedSetting(int speed);
/// "Preferences...": a new dialog, kept in myPrefsDialog.
void OpenPrefsDialog();
/// Plug-in disable: the key sniffer of "Assign new", if any, is removed and no key is awaited.
void StopPrefsKeySniffer();
