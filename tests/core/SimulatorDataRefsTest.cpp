// Binding the host's datarefs: which names are looked up on which host
// version, and what stays usable when the host lacks one.
#include "AppFixture.h"

#include "XPLMDataAccess.h"
#include "core/Instancing.h"
#include "utils/MathUtils.h"

namespace kalvora_test {
namespace {

using SimulatorDataRefs = AppTest;

TEST_F(SimulatorDataRefs, ANewHostInTheSameProcessIsBoundAfresh) {
    ASSERT_NE(HostInstancing(), nullptr);
    FollowLocalOrigin(); // looks up and remembers the local frame of this host
    host->runFor(5.0);
    const double clock = GetTimePrecise();
    // A second host with another reference point, bound by InitDataRef alone, as a benchmark run does.
    simhost::HostOptions elsewhere;
    elsewhere.startLatDeg = 40.0;
    elsewhere.startLonDeg = -3.0;
    Restart(elsewhere);
    gKLVTruckX = 12.0;
    gKLVTruckZ = -34.0;
    for (int frame = 0; frame < 3; ++frame) {
        FollowLocalOrigin();
        host->runFrames(1);
    }
    EXPECT_DOUBLE_EQ(gKLVTruckX, 12.0) << "the frame of the first host was taken for a move";
    EXPECT_DOUBLE_EQ(gKLVTruckZ, -34.0);
    EXPECT_EQ(host->logText().find("local frame moved"), std::string::npos);
    EXPECT_GE(GetTimePrecise(), clock) << "the timers of the first host would never run out";
}

TEST_F(SimulatorDataRefs, EachHostVersionGetsItsNamesOfPitchAndN1) {
    struct Case {
        int version;
        const char* pitch;
        const char* n1;
    };
    const Case cases[] = {
        {720, "sim/flightmodel/position/the", "sim/flightmodel/engine/ENGN_N1"},
        {739, "sim/flightmodel/position/theta", "sim/flightmodel/engine/ENGN_N1"},
        {740, "sim/flightmodel/position/theta", "sim/flightmodel/engine/ENGN_N1_"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.version);
        simhost::HostOptions options;
        options.xplaneVersion = c.version;
        Restart(options);
        ASSERT_EQ(XPVersion, c.version);
        EXPECT_TRUE(initResult);
        ASSERT_NE(XPLMFindDataRef(c.pitch), nullptr);
        EXPECT_EQ(gPositionThe, XPLMFindDataRef(c.pitch));
        ASSERT_NE(XPLMFindDataRef(c.n1), nullptr);
        EXPECT_EQ(gDataEngineN1, XPLMFindDataRef(c.n1));
    }
}

TEST_F(SimulatorDataRefs, AMissingRequiredDataRefFailsAndIsLoggedButLeavesTheOthersUsable) {
    const std::pair<const char*, bool> names[] = {
        {"sim/time/paused", true},
        {"sim/flightmodel/position/q", true},
        {"sim/flightmodel/engine/ENGN_N1_", true},
        {"sim/flightmodel/position/local_y", false}, // only looked up
        {"sim/aircraft/view/acf_size_z", false},
    };
    for (const auto& [name, required] : names) {
        SCOPED_TRACE(name);
        Restart(simhost::HostOptions{});
        host->removeDataRef(name);
        EXPECT_EQ(InitDataRef(), !required);
        if (required) {
            EXPECT_NE(host->logText().find(name), std::string::npos) << "the missing name is logged";
        }
        // Handles found before and after the missing one in the test order still work.
        host->set("sim/flightmodel/position/local_x", 42.0);
        EXPECT_DOUBLE_EQ(XPLMGetDatad(gPositionLocalx), 42.0);
        EXPECT_NE(gNumberEngine, nullptr);
        EXPECT_NE(gDataParkBrake, nullptr);
    }
    // A null handle (the aircraft's length, removed last) reads the host's default of zero.
    int length = -1;
    float rate = -1.0f;
    SetPBlenght(&length, &rate);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(rate, 0.0f);
}

} // namespace
} // namespace kalvora_test
