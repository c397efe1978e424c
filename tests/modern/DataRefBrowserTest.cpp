// Dataref browsers (DataRefTool, DataRefEditor) learn every dataref Kalvora
// publishes, once, after start-up; a host without them receives nothing, and
// no other plug-in does either (the registration is never a broadcast).
#include "ModernFixture.h"

#include <map>
#include <set>

namespace kalvora_test {
namespace {

using DataRefBrowsers = ModernTest;

constexpr int kRegisterDataRef = 0x01000000;

const std::set<std::string> kPublished = {
    kStatus,
    kGPUStatus,
    kTruckX,
    kTruckY,
    kTruckZ,
    kTruckHdg,
    "halvern/kalvora/GPU/position_ogl_x",
    "halvern/kalvora/GPU/position_ogl_y",
    "halvern/kalvora/GPU/position_ogl_z",
    "halvern/kalvora/truck/wheel_rotation_deg",
    "halvern/kalvora/truck/steering_deg",
};

/// A plug-in with `signature` that records the names it is asked to register (name -> times).
simhost::InProcessPlugin Browser(const std::string& signature, std::map<std::string, int>* names) {
    simhost::InProcessPlugin p;
    p.name = signature;
    p.signature = signature;
    p.receive = [names](int, int message, void* param) {
        if (message == kRegisterDataRef) ++(*names)[param ? static_cast<const char*>(param) : "<null>"];
    };
    return p;
}

TEST_F(DataRefBrowsers, EachBrowserPresentHearsEveryPublishedNameOnce) {
    std::map<std::string, int> tool, editor, bystander;
    Load({Browser("com.leecbaker.datareftool", &tool), Browser("xplanesdk.examples.DataRefEditor", &editor),
          Browser("test.bystander", &bystander)});
    host->runFor(3);
    for (const auto* heard : {&tool, &editor}) {
        std::set<std::string> names;
        for (const auto& [name, times] : *heard) {
            names.insert(name);
            EXPECT_EQ(times, 1) << name;
            EXPECT_TRUE(host->exists(name)) << name << " is a real dataref";
        }
        EXPECT_EQ(names, kPublished);
    }
    EXPECT_TRUE(bystander.empty());
}

TEST_F(DataRefBrowsers, ABrowserLoadedAfterKalvoraStillHearsThem) {
    std::map<std::string, int> tool;
    framesAfterLoad = 0; // the browser comes before the frame the names are sent in
    Load();
    ASSERT_GE(host->addPlugin(Browser("com.leecbaker.datareftool", &tool)), 0);
    host->runFor(2);
    EXPECT_EQ(tool.size(), kPublished.size());
}

TEST_F(DataRefBrowsers, NothingIsSentWithoutABrowser) {
    std::map<std::string, int> bystander;
    Load({Browser("test.bystander", &bystander)});
    host->runFor(3);
    EXPECT_TRUE(bystander.empty());
}

} // namespace
} // namespace kalvora_test
