// From X-Plane 11.50 on the 3-D drawing phases are gone and the GPU cart is an
// object instance, there exactly while the cart would be drawn.
#include "GPUFixture.h"

namespace kalvora_test {
namespace {

using GPUInstance = GPUTest;

TEST_F(GPUInstance, StandsWhereTheCartIsDrawnUntilANewAirport) {
    Load();
    EXPECT_TRUE(host->instances().empty());
    Send(kConnect);
    host->runFrames(2);
    std::vector<simhost::InstanceInfo> shown = host->instances();
    ASSERT_EQ(shown.size(), 1u);
    const simhost::InstanceInfo& cart = shown[0];
    EXPECT_EQ(fs::path(cart.objectPath).filename(), "GPU.obj");
    EXPECT_TRUE(cart.positioned);
    EXPECT_NEAR(cart.x, host->getf("halvern/kalvora/GPU/position_ogl_x"), 1e-3);
    EXPECT_NEAR(cart.y, host->getf("halvern/kalvora/GPU/position_ogl_y") + 1.0, 1e-3) << "origin 1 m up";
    EXPECT_NEAR(cart.z, host->getf("halvern/kalvora/GPU/position_ogl_z"), 1e-3);
    EXPECT_NEAR(cart.heading, -options.startHeadingDeg, 1e-3) << "turned as the drawn cart: negated";

    Send(kDisconnect);
    host->runFrames(2);
    EXPECT_EQ(host->instances().size(), 1u) << "it stays after the disconnection";

    host->loadAirport();
    host->runFrames(2);
    EXPECT_TRUE(host->instances().empty());
    EXPECT_TRUE(host->loadedObjects().empty()) << "its model is released with it";

    Send(kConnect);
    host->runFrames(2);
    EXPECT_EQ(host->instances().size(), 1u) << "and comes back with the next request";
}

TEST_F(GPUInstance, GoesWithThePluginAndComesBackWhenItIsEnabledAgain) {
    Load();
    Send(kConnect);
    host->runFrames(2);
    ASSERT_EQ(host->instances().size(), 1u);
    host->disablePlugin(kalvora);
    EXPECT_TRUE(host->instances().empty());
    EXPECT_TRUE(host->loadedObjects().empty());
    ASSERT_TRUE(host->enablePlugin(kalvora));
    host->runFrames(2);
    EXPECT_EQ(host->instances().size(), 1u);

    host->unloadPlugin(kalvora);
    for (const std::string& left : host->leftoversAtLastUnload())
        EXPECT_EQ(left.find("GPU"), std::string::npos) << left;
}

TEST_F(GPUInstance, NoneWithoutGPUHandlingOrWhereTheCartIsDrawn) {
    WritePreferences(false);
    Load();
    Send(kConnect);
    host->runFrames(2);
    EXPECT_TRUE(host->instances().empty()) << "GPUs not handled";
    host.reset();

    WritePreferences(true);
    options.xplaneVersion = 11000;
    Load();
    Send(kConnect);
    host->runFrames(2);
    EXPECT_TRUE(host->instances().empty()) << "drawn by the drawing callback instead";
}

} // namespace
} // namespace kalvora_test
