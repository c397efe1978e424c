// Commands (handler order and propagation, X-Plane's view commands) and the still-spot camera.
#include "SimhostFixture.h"

#include "XPLMUtilities.h"

#include <cmath>

namespace {

using Commands = SimhostTest;
using Camera = SimhostTest;

std::vector<std::string> gOrder;

int handle(XPLMCommandRef, XPLMCommandPhase phase, void* refcon) {
    gOrder.push_back(std::string(static_cast<const char*>(refcon)) + ":" + std::to_string(phase));
    return 1;
}
int swallow(XPLMCommandRef, XPLMCommandPhase phase, void*) {
    gOrder.push_back("swallow:" + std::to_string(phase));
    return 0;
}

TEST_F(Commands, BeforeHandlersRunFirstAndCanStopTheCommand) {
    gOrder.clear();
    XPLMCommandRef chase = XPLMFindCommand("sim/view/chase");
    ASSERT_NE(chase, nullptr);
    XPLMRegisterCommandHandler(chase, handle, 0, const_cast<char*>("after"));
    XPLMRegisterCommandHandler(chase, handle, 1, const_cast<char*>("before"));
    XPLMCommandOnce(chase);
    EXPECT_EQ(gOrder, (std::vector<std::string>{"before:0", "after:0", "before:2", "after:2"}));
    EXPECT_EQ(host->geti("sim/graphics/view/view_type"), 1017);

    gOrder.clear();
    XPLMCommandRef still = XPLMFindCommand("sim/view/still_spot");
    XPLMRegisterCommandHandler(still, swallow, 1, nullptr);
    XPLMRegisterCommandHandler(still, handle, 0, const_cast<char*>("after"));
    XPLMCommandOnce(still);
    EXPECT_EQ(gOrder, (std::vector<std::string>{"swallow:0", "swallow:2"}));
    EXPECT_EQ(host->geti("sim/graphics/view/view_type"), 1017); // X-Plane did not change the view
    XPLMUnregisterCommandHandler(still, swallow, 1, nullptr);
    XPLMCommandOnce(still);
    EXPECT_EQ(host->geti("sim/graphics/view/view_type"), 1020);
    EXPECT_EQ(host->geti("sim/graphics/view/view_is_external"), 1);
    EXPECT_FALSE(host->runCommand("test/none"));
}

TEST_F(Commands, EveryCommandXPlane12ListsExistsAndIsRecordedWhenRun) {
    const auto rows = xplaneList("Commands.txt");
    ASSERT_GT(rows.size(), 3000u);
    std::vector<std::string> names;
    for (const auto& row : rows) {
        XPLMCommandRef c = XPLMFindCommand(row[0].c_str());
        ASSERT_NE(c, nullptr) << row[0];
        XPLMCommandOnce(c);
        names.push_back(row[0]);
    }
    EXPECT_EQ(host->commandsRun(), names);
}

TEST_F(Camera, StillSpotStandsStillAndWatchesTheAircraft) {
    host->runCommand("sim/view/still_spot");
    host->runFrames(1);
    const simhost::CameraState spot = host->camera();
    const double x0 = host->getf("sim/flightmodel/position/local_x");
    const double z0 = host->getf("sim/flightmodel/position/local_z");
    EXPECT_LT(spot.z, z0) << "ahead of the aircraft, which looks north (-z)";
    EXPECT_LT(spot.x, x0) << "to the left of its nose";
    EXPECT_NEAR(spot.y, host->options().startElevationM + 4, 1e-3) << "at eye height on the apron";
    EXPECT_LT(spot.pitch, 0) << "looking down at the nose";

    // The aircraft backs 30 m: the camera stays and turns to follow it.
    host->set("sim/flightmodel/position/local_z", z0 + 30);
    host->runFrames(1);
    const simhost::CameraState after = host->camera();
    EXPECT_FLOAT_EQ(after.x, spot.x);
    EXPECT_FLOAT_EQ(after.z, spot.z);
    const double toAircraft = std::atan2(x0 - after.x, -(z0 + 30 - after.z)) * 180 / M_PI;
    EXPECT_NEAR(std::remainder(after.heading - toAircraft, 360.0), 0, 15) << "still looking at it";
    EXPECT_GT(std::remainder(after.heading - spot.heading, 360.0), 0) << "turned right, after the aircraft";
}

} // namespace
