#include "core/PluginServices.h"

#include "core/About.h"
#include "core/PluginState.h"
#include "core/PrefsDialog.h"
#include "gpu/GPUService.h"
#include "objects/HV_XObject.h"
#include "objects/TruckModel.h"
#include "truck/TruckView.h"

#include <string>

void OpenAboutDialog() {
    About::OpenAbout();
}

void OpenPreferencesDialog() {
    OpenPrefsDialog();
}

void ToggleGPU() {
    GPUeventHandler();
}

void ResetGroundPower() {
    resetGPU();
}

void HandleGPUMessage(int message) {
    switch (static_cast<unsigned>(message)) {
    case kGPUMsgQueryService:
        sendGPUAvailable();
        break;
    case kGPUMsgConnect:
        ForceGPUOFF(); // marked absent, so the toggle connects it
        GPUeventHandler();
        break;
    case kGPUMsgDisconnect:
        ForceGPUON(); // marked present, so the toggle disconnects it
        GPUeventHandler();
        break;
    case kGPUMsgQueryStatus:
        determineStatusAndAnswer();
        break;
    case kGPUMsgElecOff:
        KLVsimulElec(false);
        break;
    default:
        break;
    }
}

void LoadTruckModel(const char* folder, const char* name, int index) {
    LoadMeshAndTextures(folder, name, index);
}

bool LoadGPUModel(const char* path) {
    return myGPUObject.LoadXObject(path);
}

int DrawGPUModelCallBack(int phase, int isBefore, void* refcon) {
    return DrawGPUCallBack(phase, isBefore, refcon);
}

void TruckViewHotKeyCallBack(void* refcon) {
    TruckViewHKCallBack(refcon);
}
