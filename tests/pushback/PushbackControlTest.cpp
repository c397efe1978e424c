// Whether a push-back may start and why not, the status dataref's write side,
// the crew's message texts and the preferences that silence them, and the
// switch to an outside view.
#include "PushbackFixture.h"

#include <algorithm>

namespace kalvora_test {
namespace {

class PushbackControl : public PushbackTest {
protected:
    /// Rolls at that speed for one frame, so that the host derives the ground speed.
    void SetGroundSpeed(double mps) {
        host->set("sim/flightmodel/position/groundspeed", mps);
        host->runFrames(1);
    }
    void SetN1(int engine, double percent) { host->set("sim/flightmodel/engine/ENGN_N1_", percent, engine); }
};

TEST_F(PushbackControl, RefusalsComeInOrderAndSayWhy) {
    const struct {
        double heightM, speedMps;
        int gearDown;
        double n1Percent;
        bool moving, gpu, enginesAllowed;
        int expected;
    } rows[] = {
        {25.0, 6.0, 0, 0.0, false, false, false, -6}, // airborne: above 20 m and faster than 5 m/s
        {19.0, 6.0, 0, 0.0, false, false, false, 0},  // low and fast, gear up: neither airborne nor taxiing
        {0.0, 2.5, 1, 0.0, false, false, false, -4},  // taxiing: faster than 2 m/s with the gear handle down
        {15.0, 6.0, 1, 0.0, false, false, false, -4}, // below 20 m and faster than 5: taxiing
        {0.0, 0.0, 1, 22.0, false, false, false, -5}, // the last engine running
        {0.0, 0.0, 1, 22.0, false, false, true, 0},   // unless the preferences allow it
        {0.0, 0.0, 1, 5.0, false, false, false, 0},   // idle spool-down at exactly 5 percent does not count
        {0.0, 0.0, 1, 80.0, true, true, false, -3},   // already moving wins over every other reason,
        {0.0, 0.0, 1, 80.0, false, true, false, -2},  // then the GPU, then the engines
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.heightM << " m, " << row.speedMps << " m/s, N1 " << row.n1Percent);
        host->set("sim/flightmodel/position/y_agl", row.heightM);
        host->set("sim/cockpit/switches/gear_handle_status", row.gearDown);
        SetN1(1, row.n1Percent);
        SetGroundSpeed(row.speedMps);
        gKLVisPlaneMoving = row.moving;
        gKLVisGPUpresent = row.gpu;
        PrefAllowEngnON = row.enginesAllowed;
        EXPECT_EQ(validatePushBackenvironment(), row.expected);
    }
    const std::pair<int, const char*> texts[] = {
        {-6, "You can't start a PushBack while airborne!"},
        {-5, "You can't Pushback a plane while the engines are; running. (you can allow this in the "
             "preferences panel."},
    };
    for (const auto& [code, text] : texts) {
        ErrorMessageInterpretor(code);
        EXPECT_STREQ(ErrorMessage, text);
    }
}

TEST_F(PushbackControl, OnlyTheAircraftsOwnEnginesAreLookedAt) {
    host->set("sim/aircraft/engine/acf_num_engines", 1);
    SetN1(1, 60.0);
    EXPECT_FALSE(AreEnginesRunning());
    SetN1(0, 60.0);
    EXPECT_TRUE(AreEnginesRunning());
    host->set("sim/aircraft/engine/acf_num_engines", 500); // nonsense engine counts are bounded
    EXPECT_TRUE(AreEnginesRunning());
    host->set("sim/aircraft/engine/acf_num_engines", -3);
    EXPECT_FALSE(AreEnginesRunning());
}

// A start from the menu names the turn (the menu test); one from the dataref always says "straight".
TEST_F(PushbackControl, StatusWritesSetTheManoeuvreAndValuesOutsideOneToFiveStopEverything) {
    RebootAtHeading(200.0);
    // stop: a value outside 1..5 written next, which stops everything.
    const struct {
        int value, rotate, phase, finalPsi, status, stop;
    } rows[] = {
        {1, kRotateStraight, kPhaseStraightLeg, 200, 1, 0},
        {2, kRotateTailRight, kPhaseTurn, 110, 2, -1},
        {3, kRotateTailLeft, kPhaseTurn, 290, 3, 6},
        {4, kRotateTailRight, kPhaseStraightLeg, 110, 2, 99},
        {5, kRotateTailLeft, kPhaseStraightLeg, 290, 3, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        WriteStatus(row.value);
        EXPECT_EQ(gKLVPlaneMoveDirection, kMoveBackward);
        EXPECT_EQ(gKLVPlaneRotateDir, row.rotate);
        EXPECT_EQ(gKLVautoPbPhase, row.phase);
        EXPECT_EQ(gKLVfinalPsi, row.finalPsi);
        EXPECT_EQ(Status(), row.status);
        EXPECT_EQ(Spoken().back(), "Ok, D-AKLV we are ready to push back straight. Please remove breaks.");
        // The end point lies the push length behind the aircraft, also for plain turns.
        EXPECT_NEAR(std::hypot(gKLVfinalx - X(), gKLVfinalz - Z()), gKLVPbLength, 1e-3);
        EXPECT_EQ(gKLVTruckMovementPhase, kTruckPlaced);

        WriteStatus(row.stop);
        EXPECT_EQ(Status(), 0);
        EXPECT_EQ(gKLVTruckMovementPhase, kTruckIdle);
        EXPECT_FALSE(gKLVtheTruck.IsVisible());
        EXPECT_EQ(host->geti("sim/operation/override/override_joystick_heading"), 0);
    }
}

TEST_F(PushbackControl, EachMessagePreferenceSilencesItsOwnChannelAndTheViewStaysWhenNotWanted) {
    PrefWrittenCrewMessage = false; // spoken only
    PrefSwitchView = false;         // the switch to an outside view: the push-back sequence test
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    EXPECT_EQ(Spoken().size(), 1u);
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_TRUE(host->commandsRun().empty());
    EXPECT_FALSE(host->camera().external);

    PrefWrittenCrewMessage = true; // written only, and the host's text output left as it is
    PrefAuralCrewMessage = false;
    host->set(kTextOut, 1);
    ShowTempoDialog("shown", 4, 3);
    SpeakGroundMessage("not spoken");
    EXPECT_EQ(Spoken().size(), 1u);
    ASSERT_NE(Shown(), nullptr);
    EXPECT_STREQ(Shown()->text, "shown");
    EXPECT_EQ(host->geti(kTextOut), 1);
}

TEST_F(PushbackControl, CallSignIsCutToSixAndMessageFivePrintsThePreviousMessageAndSpeaksItAgain) {
    host->setString("sim/aircraft/view/acf_tailnum", "HB-JVXLONGER");
    TruckGroundMessageInterpretor(1);
    EXPECT_STREQ(GroundMessage, "HB-JVX starting push back");
    // A tail number full of conversions is printed, not interpreted.
    host->setString("sim/aircraft/view/acf_tailnum", "%n%x%s");
    TruckGroundMessageInterpretor(1);
    testing::internal::CaptureStdout();
    TruckGroundMessageInterpretor(5);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "%n%xCould you release the break starting push back");

    const std::string before = GroundMessage;
    for (int n : {-1, 6, 100})
        TruckGroundMessageInterpretor(n);
    EXPECT_EQ(GroundMessage, before);
    const auto spoken = Spoken();
    ASSERT_EQ(spoken.size(), 3u);
    EXPECT_EQ(spoken[2], spoken[1]);
}

} // namespace
} // namespace kalvora_test
