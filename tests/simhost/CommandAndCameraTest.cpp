// Commands (handler order and propagation, X-Plane's view commands,
// the legacy button and key-stroke calls) and camera control.
#include "SimhostFixture.h"

#include "XPLMCamera.h"
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

    XPLMCommandRef mine = XPLMCreateCommand("test/push", "Push back");
    EXPECT_EQ(XPLMCreateCommand("test/push", "again"), mine); // created once, found again
    EXPECT_EQ(XPLMFindCommand("test/push"), mine);
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

TEST_F(Commands, LegacyButtonsAndKeyStrokesSelectViews) {
    XPLMCommandButtonPress(46); // spot view
    XPLMCommandButtonRelease(46);
    EXPECT_EQ(host->geti("sim/graphics/view/view_type"), 1020);
    EXPECT_EQ(host->geti("sim/graphics/view/view_is_external"), 1);
    XPLMCommandKeyStroke(73); // forward
    EXPECT_EQ(host->geti("sim/graphics/view/view_type"), 1000);
    EXPECT_EQ(host->geti("sim/graphics/view/view_is_external"), 0);
    EXPECT_EQ(host->commandsRun(),
              (std::vector<std::string>{"sim/view/still_spot", "sim/view/forward_with_2d_panel"}));
    EXPECT_TRUE(host->runCommand("sim/view/back"));
    EXPECT_EQ(host->geti("sim/graphics/view/view_type"), 1010);
    EXPECT_TRUE(host->runCommand("sim/view/quick_look_19_mem")); // known, changes nothing
    EXPECT_EQ(host->geti("sim/graphics/view/view_type"), 1010);
}

// ---- camera
struct CameraLog {
    int calls = 0;
    int losing = 0;
    bool sawNull = false;
    int giveUpAfter = -1; ///< return 0 on this call
};

int controlCamera(XPLMCameraPosition_t* pos, int losing, void* refcon) {
    auto* log = static_cast<CameraLog*>(refcon);
    if (losing) {
        ++log->losing;
        log->sawNull = pos == nullptr;
        return 0;
    }
    ++log->calls;
    pos->x = 1;
    pos->y = 2;
    pos->z = 3;
    pos->heading = 45;
    pos->pitch = 0;
    pos->roll = 0;
    pos->zoom = 1;
    return log->calls == log->giveUpAfter ? 0 : 1;
}

TEST_F(Camera, ControlFunctionRunsEveryFrameAndPositionsTheCamera) {
    CameraLog log;
    XPLMControlCamera(xplm_ControlCameraForever, controlCamera, &log);
    XPLMCameraControlDuration how = 0;
    EXPECT_TRUE(XPLMIsCameraBeingControlled(&how));
    EXPECT_EQ(how, xplm_ControlCameraForever);
    host->runFrames(5);
    EXPECT_EQ(log.calls, 5);
    XPLMCameraPosition_t p{};
    XPLMReadCameraPosition(&p);
    EXPECT_FLOAT_EQ(p.heading, 45);
    EXPECT_EQ(host->camera().controllerPluginId, me);
    host->runCommand("sim/view/chase"); // Forever survives a view change
    host->runFrames(1);
    EXPECT_TRUE(host->camera().controlled);
    XPLMDontControlCamera();
    host->runFrames(3);
    EXPECT_EQ(log.calls, 6);
    EXPECT_EQ(log.losing, 0); // no losing call for a voluntary release
    EXPECT_FALSE(host->camera().controlled);
}

TEST_F(Camera, ControlEndsAtAViewChangeWhenAskedAtZeroOrWhenAnotherPluginTakesIt) {
    CameraLog untilChange, givesUp, first, second;
    XPLMControlCamera(xplm_ControlCameraUntilViewChanges, controlCamera, &untilChange);
    host->runFrames(2);
    host->runCommand("sim/view/forward_with_nothing");
    EXPECT_EQ(untilChange.losing, 1);
    EXPECT_TRUE(untilChange.sawNull);
    EXPECT_FALSE(XPLMIsCameraBeingControlled(nullptr));

    givesUp.giveUpAfter = 3;
    XPLMControlCamera(xplm_ControlCameraForever, controlCamera, &givesUp);
    host->runFrames(6);
    EXPECT_EQ(untilChange.calls + givesUp.calls, 2 + 3);
    EXPECT_FALSE(host->camera().controlled);
    // X-Plane's own view: behind the aircraft, looking along its heading.
    EXPECT_GT(host->camera().z, host->getf("sim/flightmodel/position/local_z"));
    EXPECT_FLOAT_EQ(host->camera().heading, 0);

    XPLMControlCamera(xplm_ControlCameraForever, controlCamera, &first);
    host->setDirectCaller(addOther("test.other"));
    XPLMControlCamera(xplm_ControlCameraForever, controlCamera, &second);
    EXPECT_EQ(first.losing, 1);
    host->runFrames(2);
    EXPECT_EQ(first.calls * 10 + second.calls, 2);
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

    host->runCommand("sim/view/chase");
    host->runFrames(1);
    EXPECT_GT(host->camera().z, z0 + 30) << "the chase view is behind the aircraft again";
}

} // namespace
