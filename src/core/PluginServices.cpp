#include "core/PluginServices.h"

#include "core/PluginState.h"

#include <string>

// TODO(About dialog, preferences dialog, GPU service, truck view, scene objects): forward to
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
    NotAvailable("GPU service");
}

void ResetGroundPower() {
    NotAvailable("GPU reset");
}

void HandleGPUMessage(int message) {
    constexpr unsigned kFirstGPUMessage = 0x88888880u;
    constexpr unsigned kLastGPUMessage = 0x8888888Cu;
    const unsigned number = static_cast<unsigned>(message);
    if (number < kFirstGPUMessage || number > kLastGPUMessage) return;
    NotAvailable("GPU message " + std::to_string(number - kFirstGPUMessage));
}

void LoadTruckModel(const char* folder, const char* name, int index) {
    NotAvailable(std::string("Truck model loading (") + folder + name + ".obj, item " +
                 std::to_string(index) + ")");
}

bool LoadGPUModel(const char* /*path*/) {
    NotAvailable("GPU model loading");
    return false;
}

int DrawGPUModelCallBack(int /*phase*/, int /*isBefore*/, void* /*refcon*/) {
    return 1;
}

void TruckViewHotKeyCallBack(void* /*refcon*/) {
    NotAvailable("Truck view");
}
