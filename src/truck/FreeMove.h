// Free move: the user drives the push-back by hand from the "Truck Movements
// Control Panel" or four keys. Every command only sets the motion requests
// that the push-back motion reads each frame.
#pragma once

#include "XPLMDefs.h"

class HV_CtrlButton;
class HV_CtrlSlider;
class HV_Panel;
class HV_Texture;
class HV_Window;

extern int gPref_FreeMove_fw;   ///< virtual key of "forward" (default 0xB3)
extern int gPref_FreeMove_l;    ///< virtual key of "turn left" (default 0xB5)
extern int gPref_FreeMove_r;    ///< virtual key of "turn right" (default 0xB6)
extern int gPref_FreeMove_stop; ///< virtual key of "release the truck" (default 0xB4)

/// Direction 1 (forward), straight.
void FreeMoveForward();
/// Direction 2 (reverse), straight.
void FreeMoveReverse();
/// Turn left; the direction is kept.
void FreeMoveLeft();
/// Turn right; the direction is kept.
void FreeMoveRight();
/// Direction 0; the aircraft stays hooked up.
void FreeMoveStop();
/// Direction 0 and the aircraft no longer moved: the push ends and the truck drives away.
void FreeMoveRelease();
/// Key sniffer: the four keys above (virtual key codes only); always passes the key on (1).
int FreeMoveKeySniffer(char key, XPLMKeyFlags flags, char virtualKey, void* refcon);

/// The "Truck Movements Control Panel" window.
class FreeMove {
public:
    HV_CtrlButton* leftButton = nullptr;    ///< " Left "
    HV_CtrlButton* rightButton = nullptr;   ///< "Right "
    HV_CtrlButton* forwardButton = nullptr; ///< "Forward"
    HV_CtrlButton* releaseButton = nullptr; ///< "Release Truck"
    HV_CtrlButton* stopButton = nullptr;    ///< "Stop"
    HV_CtrlButton* reverseButton = nullptr; ///< "Reverse"
    HV_CtrlSlider* speedSlider = nullptr;   ///< "Truck speed", 0..50
    HV_Texture* truckIcon = nullptr;        ///< the picture's texture (kept with the object)
    HV_Window* window = nullptr;            ///< null once closed

    /// Builds and shows the window.
    FreeMove();
    /// Does nothing: the window frees itself when closed.
    ~FreeMove();
    FreeMove(const FreeMove&) = delete;
    FreeMove& operator=(const FreeMove&) = delete;

    /// Lays out the window and centres it.
    void MakeDialog();
    /// Window handler: the buttons and the slider as their labels say; 2 closes the window.
    static int HV_WindowHandler(void* dialog, long message, HV_Panel* control, long param1, long param2);
};

/// Opens the panel (one at a time) and registers the key sniffer while it is open.
void OpenFreeMovePanel();
/// Plug-in enable: the keys work again while the panel is open (one sniffer at most).
void StartFreeMoveKeys();
/// Plug-in disable, and the panel closing: the keys no longer reach the panel.
void StopFreeMoveKeys();
/// The open panel, or null.
FreeMove* OpenedFreeMovePanel();
