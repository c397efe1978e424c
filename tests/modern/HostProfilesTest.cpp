// What simhost hands out depends on the X-Plane it emulates: the functions of
// each 4.x API level (XPLM 4.2's instance and weather functions, 4.1's own
// cockpit devices, ...) only from that level on, the deprecated ones only
// while they are exported.
#include "ModernFixture.h"

#define XPLM420 1
#include "XPLMInstance.h"
#include "XPLMScenery.h"
#include "XPLMUtilities.h"

namespace kalvora_test {
namespace {

using HostProfiles = ModernTest;

using SetPositionDouble_f = void (*)(XPLMInstanceRef, const XPLMDrawInfoDouble_t*, const float*);

TEST_F(HostProfiles, DoublePrecisionPlacementOnlyFromXplm420) {
    options.xplmVersion = 410;
    host = std::make_unique<simhost::Host>(options);
    EXPECT_EQ(XPLMFindSymbol("XPLMInstanceSetPositionDouble"), nullptr);
    EXPECT_EQ(XPLMFindSymbol("XPLMInstanceSetAutoShift"), nullptr);
    EXPECT_NE(XPLMFindSymbol("XPLMInstanceSetPosition"), nullptr);
    EXPECT_EQ(XPLMFindSymbol("XPLMSetWeatherAtAirport"), nullptr);
    EXPECT_NE(XPLMFindSymbol("XPLMCreateAvionicsEx"), nullptr); // 4.1 is there
    host.reset();
    options.xplmVersion = 400;
    host = std::make_unique<simhost::Host>(options);
    EXPECT_EQ(XPLMFindSymbol("XPLMCreateAvionicsEx"), nullptr);
    EXPECT_NE(XPLMFindSymbol("XPLMPlayPCMOnBus"), nullptr);
    host.reset();

    options.xplmVersion = 420;
    host = std::make_unique<simhost::Host>(options);
    simhost::InProcessPlugin p;
    p.name = p.signature = "test.placer";
    const int id = host->addPlugin(p);
    ASSERT_GE(id, 0);
    host->setDirectCaller(id);
    auto place = reinterpret_cast<SetPositionDouble_f>(XPLMFindSymbol("XPLMInstanceSetPositionDouble"));
    ASSERT_NE(place, nullptr);
    XPLMObjectRef obj = XPLMLoadObject(KALVORA_SOURCE_DIR "/assets/Kalvora/GroundServices/GPU.obj");
    ASSERT_NE(obj, nullptr);
    const char* names[] = {"test/value", nullptr};
    XPLMInstanceRef inst = XPLMCreateInstance(obj, names);
    ASSERT_NE(inst, nullptr);
    XPLMDrawInfoDouble_t at{};
    at.structSize = sizeof at;
    at.x = 123456.25; // needs double precision to keep the quarter metre
    at.y = 10;
    at.z = -7.5;
    at.heading = 90;
    const float value = 3.5f;
    place(inst, &at, &value);
    const std::vector<simhost::InstanceInfo> shown = host->instances();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_DOUBLE_EQ(shown[0].x, 123456.25);
    EXPECT_DOUBLE_EQ(shown[0].z, -7.5);
    EXPECT_FLOAT_EQ(shown[0].heading, 90.0f);
    ASSERT_EQ(shown[0].data.size(), 1u);
    EXPECT_FLOAT_EQ(shown[0].data[0], 3.5f);

    at.structSize = 28; // the single-precision size: refused, nothing moves
    at.x = 1;
    place(inst, &at, &value);
    EXPECT_DOUBLE_EQ(host->instances()[0].x, 123456.25);
    XPLMDestroyInstance(inst);
    XPLMUnloadObject(obj);
}

TEST_F(HostProfiles, DeprecatedFunctionsCanBeWithdrawn) {
    host = std::make_unique<simhost::Host>(options);
    EXPECT_NE(XPLMFindSymbol("XPLMCommandButtonPress"), nullptr);
    host.reset();
    options.exportDeprecated = false;
    host = std::make_unique<simhost::Host>(options);
    for (const char* gone : {"XPLMCommandButtonPress", "XPLMCommandButtonRelease", "XPLMDrawObjects"})
        EXPECT_EQ(XPLMFindSymbol(gone), nullptr) << gone;
    EXPECT_NE(XPLMFindSymbol("XPLMCommandOnce"), nullptr);
}

TEST_F(HostProfiles, AnotherTruckChoiceReloadsTheTugInstance) {
    Load();
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Push straight back"));
    host->runFor(2);
    ASSERT_EQ(Instances("KLVdefault.obj").size(), 1u);
    ASSERT_TRUE(host->pickMenu("Plugins/Kalvora/Trucks/KLVtowbarless"));
    host->runFrames(2);
    EXPECT_TRUE(Instances("KLVdefault.obj").empty());
    EXPECT_EQ(Instances("KLVtowbarless.obj").size(), 1u);
    for (const std::string& path : host->loadedObjects())
        EXPECT_NE(fs::path(path).filename(), "KLVdefault.obj") << "the old model is released";
}

} // namespace
} // namespace kalvora_test
