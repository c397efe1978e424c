// The real Kalvora.xpl in a fresh simhost per test, beside a second in-process
// plug-in ("ground ops") that plays the other side of the GPU messages: it
// sends requests, records what Kalvora broadcasts, and can hold the camera.
// The GPU model installed with the plug-in is a plain box, so a rendered frame
// shows exactly where it stands.
#pragma once

#include "XPLMCamera.h"
#include "XPLMDataAccess.h"
#include "support/InstalledPlugin.h"

#include <cmath>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

namespace kalvora_test {

constexpr const char* kGPUMenu = "Plugins/Kalvora/GPU";
constexpr const char* kGPUStatus = "halvern/kalvora/GPUstatus";
constexpr const char* kBatteryVolts = "sim/flightmodel/engine/ENGN_bat_volt";
constexpr const char* kEngineCount = "sim/aircraft/engine/acf_num_engines";

// Messages between plug-ins about the GPU.
constexpr unsigned kAskService = 0x88888880u;
constexpr unsigned kAvailable = 0x88888881u;
constexpr unsigned kIsOn = 0x88888882u;
constexpr unsigned kIsOff = 0x88888883u;
constexpr unsigned kConnect = 0x88888889u;
constexpr unsigned kDisconnect = 0x8888888Au;
constexpr unsigned kAskStatus = 0x8888888Bu;
constexpr unsigned kElecOff = 0x8888888Cu;

// What the crew says (the call sign is the first six characters of the tail number).
constexpr const char* kSaysHookedUp = "GPU is hooked up and warming up";
constexpr const char* kSaysRunning = "GPU is running";
constexpr const char* kSaysDisconnected = "GPU is OFF and disconnected";

constexpr double kWarmUpSeconds = 15.0;

/// Preferences with every crew message on, GPU handling and the towing gear as given.
inline std::string Preferences(bool handleGPU, bool frontWheel) {
    return std::string("VERSION=1\nSWITCH_VIEW=0\nAURAL_CREW_MESSAGE=1\nWRITTEN_CREW_MESSAGE=1\n"
                       "DRAW_TRUCK=1\nTRUCK_SPEED=10\nALLOW_ENGN_ON=0\nTruck=KLVdefault\n"
                       "TruckView_KEY=116\nTruckView_KF=8\nHANDLE_GPU=") +
           (handleGPU ? "1" : "0") + "\nFRONT_WHEEL=" + (frontWheel ? "1" : "0") + "\n";
}

class GPUTest : public InstalledPluginTest {
protected:
    GPUTest() : InstalledPluginTest("kalvora-gpu") {}

    void SetUp() override {
        InstalledPluginTest::SetUp();
        WriteBoxModel(DataFolder() / "GroundServices" / "GPU");
    }

    /// Writes the preferences file the plug-in reads at start.
    void WritePreferences(bool handleGPU, bool frontWheel = true) {
        WritePreferencesText(Preferences(handleGPU, frontWheel));
    }

    /// Starts the host, loads Kalvora.xpl and adds the ground-ops plug-in.
    void Load() {
        host = std::make_unique<simhost::Host>(options);
        std::string error;
        kalvora = host->loadPlugin(PluginFile().string(), &error);
        ASSERT_GE(kalvora, 0) << error;
        simhost::InProcessPlugin ops;
        ops.name = "Ground ops";
        ops.signature = "test.groundops";
        ops.receive = [this](int /*from*/, int message, void*) {
            heard.push_back(static_cast<unsigned>(message));
        };
        groundOps = host->addPlugin(ops);
        ASSERT_GE(groundOps, 0);
        host->runFrames(2); // the plug-in's flight loops begin after a second; nothing GPU-related waits
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

    /// How many crew messages contained needle.
    int Said(const std::string& needle) const { return SpokenCount(needle); }

    float Volts(int engine) { return static_cast<float>(host->getf(kBatteryVolts, engine)); }
    void SetVolts(int engines, double volts) {
        for (int i = 0; i < engines; ++i)
            host->set(kBatteryVolts, volts, i);
    }

    /// A box 1.2 m wide, 1.6 m long and 1.2 m high whose origin is 1 m above its bottom, as the GPU
    /// model's, with a plain orange texture.
    static void WriteBoxModel(const fs::path& base) {
        const float x0 = -0.6f, x1 = 0.6f, y0 = -1.0f, y1 = 0.2f, z0 = -0.8f, z1 = 0.8f;
        struct Face {
            float n[3];
            float p[4][3];
        };
        const Face faces[] = {
            {{0, 1, 0}, {{x0, y1, z0}, {x0, y1, z1}, {x1, y1, z1}, {x1, y1, z0}}},
            {{0, -1, 0}, {{x0, y0, z0}, {x1, y0, z0}, {x1, y0, z1}, {x0, y0, z1}}},
            {{1, 0, 0}, {{x1, y0, z0}, {x1, y1, z0}, {x1, y1, z1}, {x1, y0, z1}}},
            {{-1, 0, 0}, {{x0, y0, z0}, {x0, y0, z1}, {x0, y1, z1}, {x0, y1, z0}}},
            {{0, 0, 1}, {{x0, y0, z1}, {x1, y0, z1}, {x1, y1, z1}, {x0, y1, z1}}},
            {{0, 0, -1}, {{x0, y0, z0}, {x0, y1, z0}, {x1, y1, z0}, {x1, y0, z0}}},
        };
        std::ofstream obj(base.string() + ".obj");
        obj << "I\n800\nOBJ\n\nTEXTURE GPU.bmp\nPOINT_COUNTS 24 0 0 36\n";
        for (const Face& f : faces)
            for (const auto& p : f.p)
                obj << "VT " << p[0] << " " << p[1] << " " << p[2] << " " << f.n[0] << " " << f.n[1] << " "
                    << f.n[2] << " 0.5 0.5\n";
        for (int face = 0; face < 6; ++face)
            for (int corner : {0, 1, 2, 0, 2, 3})
                obj << "IDX " << face * 4 + corner << "\n";
        obj << "\nTRIS 0 36\n";
        WriteBmp(base.string() + ".bmp", 255, 140, 0);
    }

    /// A 4 x 4 picture of one colour, 24-bit BMP.
    static void WriteBmp(const std::string& path, int r, int g, int b) {
        constexpr int kSide = 4, kHeaderBytes = 54, kPixelBytes = kSide * kSide * 3;
        auto le = [](std::ofstream& out, uint32_t v, int bytes) {
            for (int i = 0; i < bytes; ++i)
                out.put(static_cast<char>((v >> (8 * i)) & 0xFF));
        };
        std::ofstream out(path, std::ios::binary);
        out << "BM";
        le(out, kHeaderBytes + kPixelBytes, 4);
        le(out, 0, 4);
        le(out, kHeaderBytes, 4);
        le(out, 40, 4); // info header size
        le(out, kSide, 4);
        le(out, kSide, 4);
        le(out, 1, 2);  // planes
        le(out, 24, 2); // bits per pixel
        le(out, 0, 4);  // no compression
        le(out, kPixelBytes, 4);
        for (int i = 0; i < 4; ++i)
            le(out, 0, 4); // resolution and palette: none
        for (int i = 0; i < kSide * kSide; ++i) {
            out.put(static_cast<char>(b));
            out.put(static_cast<char>(g));
            out.put(static_cast<char>(r));
        }
    }

    int kalvora = -1;
    int groundOps = -1;
    std::vector<unsigned> heard; ///< messages the ground-ops plug-in received, in order
};

} // namespace kalvora_test
