// The real Kalvora.xpl with its shipped data folder (tug and GPU models) in a
// fresh simhost per test, and what a user, a cockpit panel or another plug-in
// can see of it: instances, datarefs, commands, dialogs, messages.
#pragma once

#include "simhost/Widgets.h"
#include "support/InstalledPlugin.h"

#include <string>
#include <vector>

namespace kalvora_test {

constexpr const char* kParkBrake = "sim/flightmodel/controls/parkbrake";
constexpr const char* kStatus = "halvern/kalvora/PBstatus";
constexpr const char* kGPUStatus = "halvern/kalvora/GPUstatus";
constexpr const char* kTruckX = "halvern/kalvora/truck/position_ogl_x";
constexpr const char* kTruckY = "halvern/kalvora/truck/position_ogl_y";
constexpr const char* kTruckZ = "halvern/kalvora/truck/position_ogl_z";
constexpr const char* kTruckHdg = "halvern/kalvora/truck/position_hdg";
constexpr int kXPlane12 = 12100;
constexpr int kXPlane1141 = 11410;

class ModernTest : public InstalledPluginTest {
protected:
    ModernTest() : InstalledPluginTest("kalvora-modern") {}

    void SetUp() override {
        InstalledPluginTest::SetUp();
        options.xplaneVersion = kXPlane12;
        WritePreferences(true);
    }

    /// Preferences with the truck drawn, crew messages on and the view switched at the start.
    void WritePreferences(bool drawTruck) {
        WritePreferencesText(
            std::string("VERSION=1\nSWITCH_VIEW=1\nAURAL_CREW_MESSAGE=1\nWRITTEN_CREW_MESSAGE=1\n"
                        "DRAW_TRUCK=") +
            (drawTruck ? "1" : "0") +
            "\nTRUCK_SPEED=10\nALLOW_ENGN_ON=0\nTruck=KLVdefault\nTruckView_KEY=116\n"
            "TruckView_KF=8\nHANDLE_GPU=1\nFRONT_WHEEL=1\n");
    }

    /// Starts the host with `options`, adds the in-process plug-ins given, then loads Kalvora.xpl.
    void Load(std::vector<simhost::InProcessPlugin> before = {}) {
        host = std::make_unique<simhost::Host>(options);
        for (simhost::InProcessPlugin& p : before)
            ASSERT_GE(host->addPlugin(std::move(p)), 0);
        std::string error;
        kalvora = host->loadPlugin(PluginFile().string(), KALVORA_SOURCE_DIR "/assets/Kalvora", &error);
        ASSERT_GE(kalvora, 0) << error;
        host->runFrames(2);
    }

    /// The instances showing a model file named `file` ("KLVdefault.obj", "GPU.obj").
    std::vector<simhost::InstanceInfo> Instances(const std::string& file) const {
        std::vector<simhost::InstanceInfo> found;
        for (const simhost::InstanceInfo& i : host->instances())
            if (fs::path(i.objectPath).filename() == file) found.push_back(i);
        return found;
    }

    int kalvora = -1;
};

} // namespace kalvora_test
