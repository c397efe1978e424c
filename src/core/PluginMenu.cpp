#include "core/PluginMenu.h"

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"
#include "core/CallbackGuard.h"
#include "core/CrewMessages.h"
#include "core/PluginServices.h"
#include "core/PluginState.h"
#include "core/Preferences.h"
#include "core/PushbackControl.h"
#include "core/ToolsMenu.h"
#include "core/SimulatorDataRefs.h"
#include "core/TruncateToInt.h"
#include "gpu/GPUService.h"
#include "motion/PushbackKinematics.h"
#include "toolkit/Dialog.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

/// A menu item reference is an int carried in the pointer the host hands back.
void* RefOf(int reference) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(reference));
}

void AppendItem(const char* text, int reference) {
    XPLMAppendMenuItem(KLVsubMenu, text, RefOf(reference), 0);
}

/// Starts a manoeuvre from the menu: the direction fields are set before PBInitialisation so
/// that the crew's first message names the manoeuvre.
void StartManoeuvre(int item) {
    resetAll();
    switch (item) {
    case kMenuStraight:
        gKLVPlaneMoveDirection = kMoveBackward;
        gKLVPlaneRotateDir = kRotateStraight;
        gKLVautoPbPhase = kPhaseStraightLeg;
        PBInitialisation();
        gKLVfinalPsi = TruncateToInt(ReadHostFloat(gPositionPsi));
        CalcFinalxz(gKLVPbLength, &gKLVfinalx, &gKLVfinalz);
        break;
    case kMenuTurnTailRight:
    case kMenuTurnTailLeft: {
        const int rotate = item == kMenuTurnTailRight ? kRotateTailRight : kRotateTailLeft;
        gKLVPlaneRotateDir = rotate;
        gKLVPlaneMoveDirection = kMoveBackward;
        gKLVautoPbPhase = kPhaseTurn;
        PBInitialisation();
        CalcFinalPsi(rotate, &gKLVfinalPsi);
        break;
    }
    case kMenuAutoTailRight:
    case kMenuAutoTailLeft: {
        const int rotate = item == kMenuAutoTailRight ? kRotateTailRight : kRotateTailLeft;
        gKLVPlaneMoveDirection = kMoveBackward;
        gKLVPlaneRotateDir = rotate;
        gKLVautoPbPhase = kPhaseStraightLeg;
        PBInitialisation();
        CalcFinalPsi(rotate, &gKLVfinalPsi);
        CalcFinalxz(gKLVPbLength, &gKLVfinalx, &gKLVfinalz);
        break;
    }
    default:
        break;
    }
}

void HandleGPUItem() {
    if (!PrefHandleGPU) {
        // The separator before "GPU" is what gets enabled here, not the item itself.
        XPLMEnableMenuItem(KLVsubMenu, kMenuPosGPUSeparator, 1);
        return;
    }
    ToggleGPU();
    XPLMCheckMenuItem(KLVsubMenu, kMenuPosGPU, gKLVisGPUpresent ? xplm_Menu_Checked : xplm_Menu_Unchecked);
}

void HandleItem(int item) {
    const int verdict = validatePushBackenvironment();
    if (item < 0) return;
    switch (item) {
    case kMenuAbout:
        OpenAboutDialog();
        return;
    case kMenuPreferences:
        OpenPreferencesDialog();
        return;
    case kMenuGPU:
        HandleGPUItem();
        return;
    case kMenuStraight:
    case kMenuTurnTailRight:
    case kMenuTurnTailLeft:
    case kMenuAutoTailRight:
    case kMenuAutoTailLeft:
        if (verdict < 0) {
            ErrorMessageInterpretor(verdict);
            HV_Dialog::Show("Warning...", ErrorMessage, "OK", nullptr, nullptr);
            return;
        }
        StartManoeuvre(item);
        return;
    case kMenuStop:
        resetAll();
        return;
    default:
        if (truckNumber == 0) return;
        SelectTruck(item - kMenuFirstTruck);
        return;
    }
}

} // namespace

void BuildKLVMenus() {
    theKLVSubMenuAnchor = XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Kalvora", nullptr, 0);
    KLVsubMenu = XPLMCreateMenu("Kalvora", XPLMFindPluginsMenu(), theKLVSubMenuAnchor, KLVMenuHandlerCallback,
                                nullptr);
    AppendItem("About...", kMenuAbout);
    AppendItem("Preferences...", kMenuPreferences);
    XPLMAppendMenuSeparator(KLVsubMenu);
    AppendItem("GPU", kMenuGPU);
    XPLMCheckMenuItem(KLVsubMenu, kMenuPosGPU, xplm_Menu_Unchecked);
    XPLMAppendMenuSeparator(KLVsubMenu);
    AppendItem("Push straight back", kMenuStraight);
    AppendItem("Turn tail right", kMenuTurnTailRight);
    AppendItem("Turn tail left", kMenuTurnTailLeft);
    XPLMAppendMenuSeparator(KLVsubMenu);
    AppendItem("Automated tail right", kMenuAutoTailRight);
    AppendItem("Automated tail left", kMenuAutoTailLeft);
    XPLMAppendMenuSeparator(KLVsubMenu);
    AppendItem("Stop PushBack!", kMenuStop);
    XPLMAppendMenuSeparator(KLVsubMenu);
    theTruckListSubMenuAnchor = XPLMAppendMenuItem(KLVsubMenu, "Trucks", RefOf(kMenuFirstTruck), 0);
    TruckSubMenu =
        XPLMCreateMenu("Trucks", KLVsubMenu, theTruckListSubMenuAnchor, KLVMenuHandlerCallback, nullptr);
    for (int i = 0; i < truckNumber; ++i)
        XPLMAppendMenuItem(TruckSubMenu, TruckList[i].c_str(), RefOf(kMenuFirstTruck + i), 0);
    BuildToolsMenu();
}

void SelectTruck(int index) {
    if (index < 0 || index >= truckNumber) return;
    std::snprintf(PrefLastTruck, sizeof PrefLastTruck, "%s", TruckList[index].c_str());
    LoadTruckModel(truckFilesPath.c_str(), PrefLastTruck, index);
    for (int i = 0; i < truckNumber; ++i)
        XPLMCheckMenuItem(TruckSubMenu, i, xplm_Menu_NoCheck);
    XPLMCheckMenuItem(TruckSubMenu, index, xplm_Menu_Checked);
}

void KLVMenuHandlerCallback(void* /*menuRef*/, void* itemRef) {
    GuardCallback("menu action",
                  [itemRef] { HandleItem(static_cast<int>(reinterpret_cast<intptr_t>(itemRef))); });
}
