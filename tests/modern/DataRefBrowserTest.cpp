// Dataref browsers learn every dataref Kalvora publishes, once, after
// start-up, whether they were loaded before or after it; no other plug-in
// hears of them (the registration is never a broadcast).
#include "ModernFixture.h"

#include <map>

namespace kalvora_test {
namespace {

using DataRefBrowsers = ModernTest;

constexpr int kRegisterDataRef = 0x01000000;

/// A plug-in with `signature` that records the names it is asked to register (name -> times).
simhost::InProcessPlugin Browser(const std::string& signature, std::map<std::string, int>* names) {
    simhost::InProcessPlugin p;
    p.name = p.signature = signature;
    p.receive = [names](int, int message, void* param) {
        if (message == kRegisterDataRef) ++(*names)[param ? static_cast<const char*>(param) : "<null>"];
    };
    return p;
}

TEST_F(DataRefBrowsers, EachBrowserHearsEveryPublishedNameOnceAndNobodyElseDoes) {
    std::map<std::string, int> eachOnce;
    for (const char* name :
         {kStatus, kGPUStatus, kTruckX, kTruckY, kTruckZ, kTruckHdg, "halvern/kalvora/GPU/position_ogl_x",
          "halvern/kalvora/GPU/position_ogl_y", "halvern/kalvora/GPU/position_ogl_z",
          "halvern/kalvora/truck/wheel_rotation_deg", "halvern/kalvora/truck/steering_deg"})
        eachOnce[name] = 1;
    std::map<std::string, int> tool, editor, bystander;
    framesAfterLoad = 0; // the editor, loaded after Kalvora, comes before the frame the names are sent in
    Load({Browser("com.leecbaker.datareftool", &tool), Browser("test.bystander", &bystander)});
    ASSERT_GE(host->addPlugin(Browser("xplanesdk.examples.DataRefEditor", &editor)), 0);
    host->runFor(3);
    EXPECT_EQ(tool, eachOnce);
    EXPECT_EQ(editor, eachOnce);
    for (const auto& [name, times] : tool)
        EXPECT_TRUE(host->exists(name)) << name << " is a real dataref";
    EXPECT_TRUE(bystander.empty());
}

} // namespace
} // namespace kalvora_test
