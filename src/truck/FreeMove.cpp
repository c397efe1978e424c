#include "truck/FreeMove.h"

#include "XPLMDisplay.h"
#include "core/CallbackGuard.h"
#include "core/PluginBitmaps.h"
#include "core/PrefsDialog.h"
#include "core/Preferences.h"
#include "motion/PushbackKinematics.h"
#include "toolkit/Controls.h"
#include "toolkit/PanelStyle.h"
#include "toolkit/Window.h"

int gPref_FreeMove_fw = 0xB3;
int gPref_FreeMove_l = 0xB5;
int gPref_FreeMove_r = 0xB6;
int gPref_FreeMove_stop = 0xB4;

namespace {

constexpr int kWindowWidth = 330; // pixels
constexpr int kColumnWidth = 110; // pixels, three columns
constexpr int kIconWidth = 84;    // pixels
constexpr int kIconHeight = 64;   // pixels
constexpr int kSpeedMax = 50;     // slider top; a step of 0.5 m per frame
constexpr long kMsgClose = 1200;
constexpr long kMsgButtonPressed = 1300;
constexpr long kMsgSliderMoved = 1500;
constexpr int kBeforeWindows = 1;

FreeMove* gFreeMove = nullptr;
bool gKeysSniffed = false; ///< FreeMoveKeySniffer is registered (once at most)

void AddTexts(HV_Panel* panel, char column, int count) {
    for (int i = 0; i < count; ++i)
        panel->AddChild(new HV_CtrlText("", kAlignLeft, true), column);
}

HV_CtrlButton* AddButton(HV_Panel* panel, char column, const char* label) {
    auto* button = new HV_CtrlButton(label, kAlignStretch, true, true);
    panel->AddChild(button, column);
    return button;
}

/// The window is going away: the keys stop, the texture goes, the object goes.
void Closed(FreeMove* panel) {
    StopFreeMoveKeys();
    if (gFreeMove == panel) gFreeMove = nullptr;
    FreePluginBitmap(panel->truckIcon);
    delete panel;
}

int Handle(FreeMove* p, long message, HV_Panel* control) {
    switch (message) {
    case kMsgButtonPressed:
        if (control == p->leftButton) FreeMoveLeft();
        if (control == p->rightButton) FreeMoveRight();
        if (control == p->forwardButton) FreeMoveForward();
        if (control == p->stopButton) FreeMoveStop();
        if (control == p->reverseButton) FreeMoveReverse();
        if (control == p->releaseButton) {
            FreeMoveRelease();
            return kHV_CloseWindow;
        }
        return 0;
    case kMsgSliderMoved:
        if (control == p->speedSlider) SetTruckSpeedSetting(p->speedSlider->GetValue());
        return 0;
    case kMsgClose:
        return kHV_CloseWindow;
    default:
        return 0;
    }
}

} // namespace

void FreeMoveForward() {
    gKLVPlaneMoveDirection = kMoveForward;
    gKLVPlaneRotateDir = kRotateStraight;
}

void FreeMoveReverse() {
    gKLVPlaneMoveDirection = kMoveBackward;
    gKLVPlaneRotateDir = kRotateStraight;
}

void FreeMoveLeft() {
    gKLVPlaneRotateDir = kRotateTailLeft;
}

void FreeMoveRight() {
    gKLVPlaneRotateDir = kRotateTailRight;
}

void FreeMoveStop() {
    gKLVPlaneMoveDirection = kMoveNone;
}

void FreeMoveRelease() {
    gKLVPlaneMoveDirection = kMoveNone;
    gKLVisPlaneMoving = false;
}

int FreeMoveKeySniffer(char /*key*/, XPLMKeyFlags /*flags*/, char virtualKey, void* /*refcon*/) {
    GuardCallback("free-move keys", [virtualKey] {
        const int code = static_cast<unsigned char>(virtualKey);
        if (code == gPref_FreeMove_fw)
            FreeMoveForward();
        else if (code == gPref_FreeMove_l)
            FreeMoveLeft();
        else if (code == gPref_FreeMove_r)
            FreeMoveRight();
        else if (code == gPref_FreeMove_stop)
            FreeMoveRelease();
    });
    return 1; // the simulator sees the key too
}

FreeMove::FreeMove() {
    MakeDialog();
}

FreeMove::~FreeMove() = default;

void FreeMove::MakeDialog() {
    window = new HV_Window(this, HV_WindowHandler, kWindowWidth, "Truck Movements Control Panel", true, true);
    HV_Panel* pad = new HV_Panel(Style_Nothing(), false, 0, nullptr, true, true);
    pad->SetNumberOfColumn(3);
    for (char c = 0; c < 3; ++c)
        pad->SetColumnWidth(c, kColumnWidth);
    window->AddChild(pad);

    AddTexts(pad, 0, 2);
    leftButton = AddButton(pad, 0, " Left ");
    AddTexts(pad, 0, 4);

    forwardButton = AddButton(pad, 1, "Forward");
    truckIcon = LoadPluginBitmap("iconTruck.png");
    pad->AddChild(PictureOfBitmap(truckIcon, kIconWidth, kIconHeight), 1);
    reverseButton = AddButton(pad, 1, "Reverse");
    stopButton = AddButton(pad, 1, "Stop");
    releaseButton = AddButton(pad, 1, "Release Truck");

    AddTexts(pad, 2, 2);
    rightButton = AddButton(pad, 2, "Right ");
    AddTexts(pad, 2, 2);

    HV_Panel* speedPanel = new HV_Panel(Style_Nothing(), false, 0, nullptr, true, true);
    window->AddChild(speedPanel);
    speedSlider =
        new HV_CtrlSlider("Truck speed", 0, kSpeedMax, static_cast<int>(PrefTruckSpeed), 1, true, true, true);
    speedPanel->AddChild(speedSlider, 0);

    window->Pack();
    window->Center();
}

int FreeMove::HV_WindowHandler(void* dialog, long message, HV_Panel* control, long /*param1*/,
                               long /*param2*/) {
    return GuardCallback("free-move window", 0, [&] {
        auto* panel = static_cast<FreeMove*>(dialog);
        if (!panel) return 0;
        const int result = Handle(panel, message, control);
        if (result == kHV_CloseWindow) Closed(panel); // the toolkit deletes the window
        return result;
    });
}

void OpenFreeMovePanel() {
    GuardCallback("free-move panel", [] {
        if (gFreeMove) return;
        gFreeMove = new FreeMove();
        StartFreeMoveKeys();
    });
}

void StartFreeMoveKeys() {
    if (!gFreeMove || gKeysSniffed) return;
    gKeysSniffed = XPLMRegisterKeySniffer(FreeMoveKeySniffer, kBeforeWindows, nullptr) != 0;
}

void StopFreeMoveKeys() {
    if (gKeysSniffed) XPLMUnregisterKeySniffer(FreeMoveKeySniffer, kBeforeWindows, nullptr);
    gKeysSniffed = false;
}

FreeMove* OpenedFreeMovePanel() {
    return gFreeMove;
}
