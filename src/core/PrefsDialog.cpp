#include "core/PrefsDialog.h"

#include "XPLMDisplay.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "core/CallbackGuard.h"
#include "core/PluginState.h"
#include "core/Preferences.h"
#include "toolkit/Controls.h"
#include "toolkit/PanelStyle.h"
#include "toolkit/Window.h"
#include "truck/TruckView.h"

#include <cstdio>

int gPREF_ActiveKey = 0;
bool mWaitingKey = false;
bool gIsEnable = false;
float theLastTimer = 0.0f;
PrefsDialog* myPrefsDialog = nullptr;

namespace {

constexpr int kWindowWidth = 320;       // pixels
constexpr int kKeyColumnWidth = 150;    // pixels, two columns
constexpr int kButtonColumnWidth = 100; // pixels, three columns
constexpr int kSpeedMax = 50;           // slider top; a step of 0.5 m per frame
constexpr float kBlinkSeconds = 0.5f;   // "Assign new" flips twice a second
constexpr double kSpeedToStep = 100.0;  // PrefStepValue (m per frame) = PrefTruckSpeed / 100
constexpr long kMsgClose = 1200;
constexpr long kMsgButtonPressed = 1300;
constexpr long kMsgCheckChanged = 1301;
constexpr long kMsgSliderMoved = 1500;
constexpr int kBeforeWindows = 1;
constexpr int kTextBytes = 160;

/// The host's name of a virtual key, never null.
const char* KeyName(int virtualKey) {
    const char* name = XPLMGetVirtualKeyDescription(static_cast<char>(virtualKey));
    return name ? name : "";
}

void SetKeyText(HV_CtrlText* text, const char* format) {
    char line[kTextBytes];
    std::snprintf(line, sizeof line, format, KeyName(PrefTruckViewKey));
    text->SetText(line);
}

/// The dialog whose key sniffer is registered, or null: one sniffer at most, whatever is pressed.
PrefsDialog* gSniffingDialog = nullptr;

/// "Assign new": the sniffer is registered for this dialog unless it already is (a second press after
/// a key was caught must not add another one, which nothing would remove).
void StartSniffing(PrefsDialog* dialog) {
    if (gSniffingDialog == dialog) return;
    if (gSniffingDialog)
        XPLMUnregisterKeySniffer(PrefsDialog::myKeyCallback, kBeforeWindows, gSniffingDialog);
    XPLMRegisterKeySniffer(PrefsDialog::myKeyCallback, kBeforeWindows, dialog);
    gSniffingDialog = dialog;
}

/// The dialog goes: its sniffer, if it has the one, goes with it.
void StopSniffing(PrefsDialog* dialog) {
    if (gSniffingDialog != dialog) return;
    XPLMUnregisterKeySniffer(PrefsDialog::myKeyCallback, kBeforeWindows, dialog);
    gSniffingDialog = nullptr;
    mWaitingKey = false;
}

void BlinkAssignButton(PrefsDialog* dialog) {
    const float now = XPLMGetElapsedTime();
    if (now <= theLastTimer) return;
    gIsEnable = !gIsEnable;
    dialog->assignButton->SetEnable(gIsEnable);
    theLastTimer = now + kBlinkSeconds;
}

void FillFromGlobals(PrefsDialog* d) {
    d->switchViewBox->SetCheck(PrefSwitchView);
    d->auralBox->SetCheck(PrefAuralCrewMessage);
    d->writtenBox->SetCheck(PrefWrittenCrewMessage);
    d->drawTruckBox->SetCheck(PrefDrawTruck);
    d->frontGearBox->SetCheck(PrefFrontWheel);
    d->rearGearBox->SetCheck(!PrefFrontWheel);
    d->handleGPUBox->SetCheck(PrefHandleGPU);
    d->allowEnginesBox->SetCheck(PrefAllowEngnON);
    d->speedSlider->SetValue(static_cast<int>(PrefTruckSpeed));
}

int OnOK(PrefsDialog* d) {
    PrefSwitchView = d->switchViewBox->isChecked();
    PrefAuralCrewMessage = d->auralBox->isChecked();
    PrefWrittenCrewMessage = d->writtenBox->isChecked();
    PrefDrawTruck = d->drawTruckBox->isChecked();
    PrefFrontWheel = d->frontGearBox->isChecked();
    PrefHandleGPU = d->handleGPUBox->isChecked();
    PrefAllowEngnON = d->allowEnginesBox->isChecked();
    PrefTruckViewKey = gPREF_ActiveKey;
    // The hot key registered before stays registered: each OK adds one.
    TruckViewHK = XPLMRegisterHotKey(static_cast<char>(PrefTruckViewKey), xplm_DownFlag, "Toggle truckview",
                                     TruckViewHKCallBack, nullptr);
    StopSniffing(d);
    return kHV_CloseWindow;
}

int OnButton(PrefsDialog* d, HV_Panel* control) {
    if (control == d->okButton) return OnOK(d);
    if (control == d->cancelButton) {
        StopSniffing(d);
        return kHV_CloseWindow;
    }
    if (control == d->defaultsButton) {
        SetDefaultPref();
        FillFromGlobals(d);
        SetKeyText(d->keyText, "Truck view key (current: %s)");
        return 0;
    }
    if (control == d->assignButton && !mWaitingKey) {
        StartSniffing(d);
        mWaitingKey = true;
    }
    return 0;
}

int Handle(PrefsDialog* d, long message, HV_Panel* control) {
    if (mWaitingKey) BlinkAssignButton(d);
    switch (message) {
    case kMsgButtonPressed:
        return OnButton(d, control);
    case kMsgCheckChanged:
        // The box has its new state already; the other one takes the opposite.
        if (control == d->frontGearBox) d->rearGearBox->SetCheck(!d->frontGearBox->isChecked());
        if (control == d->rearGearBox) d->frontGearBox->SetCheck(!d->rearGearBox->isChecked());
        return 0;
    case kMsgSliderMoved:
        if (control == d->speedSlider) SetTruckSpeedSetting(d->speedSlider->GetValue());
        return 0;
    case kMsgClose:
        StopSniffing(d);
        return kHV_CloseWindow;
    default:
        return 0;
    }
}

} // namespace

PrefsDialog::PrefsDialog() {
    MakeDialog();
}

void PrefsDialog::MakeDialog() {
    window = new HV_Window(this, HV_WindowHandler, kWindowWidth, "Kalvora Preferences", true, true);
    HV_Panel* main = new HV_Panel(Style_Up(1.0f), false, 0, nullptr, true, true);
    window->AddChild(main);

    HV_CtrlCheckBox** boxes[] = {&switchViewBox, &auralBox,    &writtenBox,   &drawTruckBox,
                                 &frontGearBox,  &rearGearBox, &handleGPUBox, &allowEnginesBox};
    const char* labels[] = {"Auto switch to external view",
                            "Aural ground crew warning",
                            "Written ground crew warning",
                            "Draw truck",
                            "PushBack on front gear",
                            "PushBack on rear gear",
                            "Handle GPU",
                            "Allow PushBack with Engines ON"};
    const bool states[] = {PrefSwitchView, PrefAuralCrewMessage, PrefWrittenCrewMessage, PrefDrawTruck,
                           PrefFrontWheel, !PrefFrontWheel,      PrefHandleGPU,          PrefAllowEngnON};
    for (int i = 0; i < 8; ++i) {
        *boxes[i] = new HV_CtrlCheckBox(labels[i], states[i], true, true);
        main->AddChild(*boxes[i], 0);
    }

    speedSlider =
        new HV_CtrlSlider("Truck speed", 0, kSpeedMax, static_cast<int>(PrefTruckSpeed), 1, true, true, true);
    main->AddChild(speedSlider, 0);

    HV_Panel* keyPanel = new HV_Panel(Style_Nothing(), false, 0, nullptr, true, true);
    keyPanel->SetNumberOfColumn(2);
    keyPanel->SetColumnWidth(0, kKeyColumnWidth);
    keyPanel->SetColumnWidth(1, kKeyColumnWidth);
    main->AddChild(keyPanel, 0);
    keyText = new HV_CtrlText("", kAlignLeft, true);
    keyPanel->AddChild(keyText, 0);
    SetKeyText(keyText, "Truck view (current: %s)");
    assignButton = new HV_CtrlButton("Assign new", kAlignStretch, true, true);
    keyPanel->AddChild(assignButton, 1);

    HV_Panel* buttonPanel = new HV_Panel(Style_Nothing(), false, 0, nullptr, true, true);
    buttonPanel->SetNumberOfColumn(3);
    for (char c = 0; c < 3; ++c)
        buttonPanel->SetColumnWidth(c, kButtonColumnWidth);
    main->AddChild(buttonPanel, 0);
    okButton = new HV_CtrlButton("  OK  ", kAlignStretch, true, true);
    buttonPanel->AddChild(okButton, 0);
    defaultsButton = new HV_CtrlButton("Defaults", kAlignStretch, true, true);
    buttonPanel->AddChild(defaultsButton, 1);
    cancelButton = new HV_CtrlButton("Cancel", kAlignStretch, true, true);
    buttonPanel->AddChild(cancelButton, 2);

    main->Pack();
    window->Pack();
    window->Center();
}

int PrefsDialog::HV_WindowHandler(void* dialog, long message, HV_Panel* control, long /*param1*/,
                                  long /*param2*/) {
    return GuardCallback("preferences window", 0, [&] {
        auto* d = static_cast<PrefsDialog*>(dialog);
        if (!d || !d->window) return 0;
        const int result = Handle(d, message, control);
        if (result == kHV_CloseWindow) {
            // The toolkit deletes the window on this answer; nothing of the dialog is used after it.
            if (myPrefsDialog == d) myPrefsDialog = nullptr;
            delete d;
        }
        return result;
    });
}

int PrefsDialog::myKeyCallback(char /*key*/, XPLMKeyFlags /*flags*/, char virtualKey, void* refcon) {
    GuardCallback("preferences key", [&] {
        auto* d = static_cast<PrefsDialog*>(refcon);
        gPREF_ActiveKey = static_cast<unsigned char>(virtualKey);
        mWaitingKey = false;
        if (!d || !d->window) return;
        d->assignButton->SetEnable(true);
        char line[kTextBytes];
        std::snprintf(line, sizeof line, "Key is: %s", KeyName(gPREF_ActiveKey));
        d->assignButton->SetText(line);
    });
    return 0; // swallowed
}

void SetTruckSpeedSetting(int speed) {
    PrefTruckSpeed = static_cast<float>(speed);
    PrefStepValue = speed / kSpeedToStep;
}

void OpenPrefsDialog() {
    myPrefsDialog = new PrefsDialog(); // an earlier one stays open and frees itself when it closes
}

void StopPrefsKeySniffer() {
    PrefsDialog* d = gSniffingDialog;
    if (!d) return;
    StopSniffing(d);
    if (d->assignButton) d->assignButton->SetEnable(true); // no longer blinking
}
