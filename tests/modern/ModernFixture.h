// The real Kalvora.xpl with its shipped data folder (tug and GPU models) in a
// fresh simhost per test, and what a user, a cockpit panel or another plug-in
// can see of it: instances, datarefs, commands, dialogs, messages.
#pragma once

#include "simhost/Simhost.h"
#include "simhost/Widgets.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace kalvora_test {

namespace fs = std::filesystem;

constexpr const char* kParkBrake = "sim/flightmodel/controls/parkbrake";
constexpr const char* kStatus = "halvern/kalvora/PBstatus";
constexpr const char* kGPUStatus = "halvern/kalvora/GPUstatus";
constexpr const char* kTruckX = "halvern/kalvora/truck/position_ogl_x";
constexpr const char* kTruckY = "halvern/kalvora/truck/position_ogl_y";
constexpr const char* kTruckZ = "halvern/kalvora/truck/position_ogl_z";
constexpr const char* kTruckHdg = "halvern/kalvora/truck/position_hdg";
constexpr int kXPlane12 = 12100;
constexpr int kXPlane1141 = 11410;

class ModernTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        root = fs::temp_directory_path() / ("kalvora-modern-" + std::string(info->test_suite_name()) + "-" +
                                            info->name() + "-" + std::to_string(::getpid()));
        fs::remove_all(root);
        fs::create_directories(root);
        fs::copy_file(KALVORA_BINARY_DIR "/plugin/Kalvora.xpl", root / "Kalvora.xpl");
        options.sandboxDir = (root / "xplane").string();
        options.startHeadingDeg = 40;
        options.xplaneVersion = kXPlane12;
        fs::create_directories(options.sandboxDir);
        WritePreferences(true);
    }

    void TearDown() override {
        host.reset();
        fs::remove_all(root);
    }

    /// Preferences with the truck drawn, crew messages on and the view switched at the start.
    void WritePreferences(bool drawTruck) {
        const fs::path path = fs::path(options.sandboxDir) / "Output" / "preferences" / "Halvern.Kalvora.prf";
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "VERSION=1\nSWITCH_VIEW=1\nAURAL_CREW_MESSAGE=1\nWRITTEN_CREW_MESSAGE=1\n"
                               "DRAW_TRUCK="
                            << (drawTruck ? 1 : 0)
                            << "\nTRUCK_SPEED=10\nALLOW_ENGN_ON=0\nTruck=KLVdefault\nTruckView_KEY=116\n"
                               "TruckView_KF=8\nHANDLE_GPU=1\nFRONT_WHEEL=1\n";
    }

    /// Starts the host with `options`, adds the in-process plug-ins given, then loads Kalvora.xpl.
    void Load(std::vector<simhost::InProcessPlugin> before = {}) {
        host = std::make_unique<simhost::Host>(options);
        for (simhost::InProcessPlugin& p : before)
            ASSERT_GE(host->addPlugin(std::move(p)), 0);
        std::string error;
        kalvora =
            host->loadPlugin((root / "Kalvora.xpl").string(), KALVORA_SOURCE_DIR "/assets/Kalvora", &error);
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

    fs::path root;
    simhost::HostOptions options;
    std::unique_ptr<simhost::Host> host;
    int kalvora = -1;
};

} // namespace kalvora_test
