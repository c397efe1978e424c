// The real Kalvora.xpl beside a second in-process plug-in ("ground ops") that
// plays the other side of the GPU messages: it sends requests and records what
// Kalvora broadcasts. The GPU model installed with the plug-in is a plain
// orange box, so a rendered frame shows exactly where it stands.
#pragma once

#include "XPLMDataAccess.h"
#include "support/InstalledPlugin.h"
#include "support/Pictures.h"

#include <string>
#include <vector>

namespace kalvora_test {

// What the crew says (the call sign is the first six characters of the tail number).
constexpr const char* kSaysHookedUp = "GPU is hooked up and warming up";
constexpr const char* kSaysRunning = "GPU is running";
constexpr const char* kSaysDisconnected = "GPU is OFF and disconnected";

constexpr double kWarmUpSeconds = 15.0;

class GPUTest : public InstalledPluginTest {
protected:
    void SetUp() override {
        InstalledPluginTest::SetUp();
        // 1.2 m wide, 1.6 m long and 1.2 m high, its origin 1 m above its bottom, as the GPU model's.
        const std::string gpu = (DataFolder() / "GroundServices" / "GPU").string();
        WriteFile(gpu + ".obj", Obj8Text("GPU.bmp", Box(-0.6f, -1.0f, -0.8f, 0.6f, 0.2f, 0.8f)));
        WritePicture(gpu + ".bmp", PictureFormat::Bmp, 4, {255, 140, 0});
    }

    /// Preferences with every crew message on, the view left alone, GPU handling and the towing gear as
    /// given.
    void WritePreferences(bool handleGPU, bool frontWheel = true) {
        InstalledPluginTest::WritePreferences(PreferencesText({{"SWITCH_VIEW", "0"},
                                                               {"HANDLE_GPU", handleGPU ? "1" : "0"},
                                                               {"FRONT_WHEEL", frontWheel ? "1" : "0"}}));
    }

    /// The ground-ops plug-in comes after Kalvora.
    void Loaded() override {
        simhost::InProcessPlugin ops;
        ops.name = "Ground ops";
        ops.signature = "test.groundops";
        ops.receive = [this](int /*from*/, int message, void*) {
            heard.push_back(static_cast<unsigned>(message));
        };
        groundOps = host->addPlugin(ops);
        ASSERT_GE(groundOps, 0);
    }

    /// The ground-ops plug-in sends a message to Kalvora.
    void Send(unsigned message) { host->sendMessage(kalvora, static_cast<int>(message), nullptr, groundOps); }

    /// The ground-ops plug-in writes the GPU status dataref.
    void WriteStatus(int value) {
        host->setDirectCaller(groundOps);
        XPLMSetDatai(XPLMFindDataRef(kGPUStatus), value);
    }
    int Status() { return host->geti(kGPUStatus); }

    /// How many of Kalvora's broadcasts were `message`.
    int Heard(unsigned message) const {
        int n = 0;
        for (unsigned m : heard)
            n += m == message;
        return n;
    }

    float Volts(int engine) { return static_cast<float>(host->getf(kBatteryVolts, engine)); }
    void SetVolts(int engines, double volts) {
        for (int i = 0; i < engines; ++i)
            host->set(kBatteryVolts, volts, i);
    }

    int groundOps = -1;
    std::vector<unsigned> heard; ///< messages the ground-ops plug-in received, in order
};

} // namespace kalvora_test
