#include "core/PluginServices.h"

#include "core/PluginState.h"
#include "gpu/GPUService.h"
#include "objects/HV_XObject.h"
#include "objects/TruckModel.h"

#include <string>

// TODO(About dialog, preferences dialog, truck view): forward to
// each feature as it is built in; until then each action writes one log line and does nothing.

namespace {

void NotAvailable(const std::string& what) {
    KLVLogWrite(("-" + what + " is not available in this build\n").c_str());
}

} // namespace

void OpenAboutDialog() {
    NotAvailable("About dialog");
}

void OpenPreferencesDialog() {
    NotAvailable("Preferences dialog");
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

void TruckViewHotKeyCallBack(void* /*refcon*/) {
    NotAvailable("Truck view");
}
