// One push-back from start to finish as the pilot sees and hears it: the
// crew's messages, the truck's approach, hook-up, push and departure, the
// status dataref and the restore of the host's text output.
#include "PushbackFixture.h"

namespace kalvora_test {
namespace {

constexpr const char* kReadyStraight = "Ok, D-AKLV we are ready to push back straight. Please remove breaks.";
constexpr const char* kConfirmBrake = "D-AKLV do you confirm brake is released?";
constexpr const char* kThanks = "D-AKLV thanks you, we are starting pushback";
constexpr const char* kStarting = "D-AKLV starting push back";
constexpr const char* kTerminated = "D-AKLV push back terminated, cleared to taxi. Good flight !";

class PushbackSequence : public PushbackTest {
protected:
    /// Times (sim seconds) at which a text was spoken.
    std::vector<double> SpokenAt(const std::string& text) {
        std::vector<double> at;
        for (const simhost::TranscriptEntry& e : host->transcript())
            if (e.kind == "speech" && e.text == text) at.push_back(e.simTime);
        return at;
    }
};

TEST_F(PushbackSequence, StartAnnouncesItselfAndPlacesTheTruckAheadOfTheNoseGear) {
    RebootAtHeading(37.0);
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);

    ASSERT_FALSE(Spoken().empty());
    EXPECT_EQ(Spoken().back(), kReadyStraight);
    EXPECT_EQ(host->geti(kTextOut), 0); // spoken messages are not printed as well
    ASSERT_NE(Shown(), nullptr);
    EXPECT_STREQ(Shown()->text, kReadyStraight);

    EXPECT_NEAR(TruckAheadOfGear(), 15.0, 1e-3);
    EXPECT_FLOAT_EQ(myTruckHeading, Psi()); // facing the way the aircraft does
    EXPECT_TRUE(gKLVtheTruck.IsVisible());
    EXPECT_EQ(Status(), 1);
    EXPECT_EQ(gKLVPbLength, 13); // 3/4 of the A320's size of 18 whole metres
    EXPECT_EQ(host->geti("sim/operation/override/override_joystick_heading"), 1);
    EXPECT_TRUE(host->camera().external);
}

TEST_F(PushbackSequence, TruckWaitsThreeSecondsStopsAtTheGearAndTheBrakeQuestionIsRepeatedUntilReleased) {
    resetAll(); // repeated stops must leave one truck loop, or the wait would be cut short
    resetAll();
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    const double placedX = gKLVTruckX, placedZ = gKLVTruckZ;
    host->runFor(1.0); // first call of the truck loop: it arms the 3 s wait
    host->runFor(2.8);
    EXPECT_DOUBLE_EQ(gKLVTruckX, placedX);
    EXPECT_DOUBLE_EQ(gKLVTruckZ, placedZ);
    host->runFor(0.5);
    EXPECT_LT(TruckToGear(), 15.0);
    ASSERT_TRUE(RunUntilTruckAtGear(20.0));
    const double stopX = gKLVTruckX;
    host->runFor(14.0);
    EXPECT_DOUBLE_EQ(gKLVTruckX, stopX);
    EXPECT_LT(std::fabs(TruckAheadOfGear()), 0.25); // level with the gear, within a step and the grid
    const std::vector<double> asked = SpokenAt(kConfirmBrake);
    ASSERT_GE(asked.size(), 3u);
    EXPECT_NEAR(asked[1] - asked[0], 6.0, 0.05);
    EXPECT_NEAR(asked[2] - asked[1], 6.0, 0.05);
    ASSERT_NE(Shown(), nullptr);
    EXPECT_STREQ(Shown()->text, kConfirmBrake);
    EXPECT_EQ(Shown()->type, 3);
    EXPECT_FALSE(gKLVisPlaneMoving);

    host->set(kParkBrake, 0.0);
    ASSERT_TRUE(RunUntilMoving(1.0));
    EXPECT_EQ(Spoken().back(), kThanks);
    EXPECT_TRUE(SpokenAt(kStarting).empty());

    // The question is remembered: a later push with the brake released early thanks the pilot too.
    ASSERT_TRUE(RunUntilPhase(kTruckIdle, 60.0));
    const std::size_t asks = SpokenAt(kConfirmBrake).size();
    host->set(kParkBrake, 0.0);
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    ASSERT_TRUE(RunUntilMoving(30.0));
    EXPECT_EQ(Spoken().back(), kThanks);
    EXPECT_EQ(SpokenAt(kConfirmBrake).size(), asks);
}

TEST_F(PushbackSequence, AfterThePushTheTruckTurnsAwayAndTheCrewClearsTheAircraft) {
    host->set(kParkBrake, 0.0);
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    ASSERT_TRUE(RunUntilMoving(30.0));
    EXPECT_EQ(Spoken().back(), kStarting) << "the brake was released before the question";
    EXPECT_TRUE(SpokenAt(kConfirmBrake).empty());
    const double startX = X(), startZ = Z();
    const int length = gKLVPbLength;
    ASSERT_TRUE(host->runUntil([] { return !gKLVisPlaneMoving; }, 30.0));
    EXPECT_NEAR(std::hypot(X() - startX, Z() - startZ), length, 0.3);
    host->runFrames(2);
    ASSERT_EQ(gKLVTruckMovementPhase, kTruckLeaving);
    const float hookedHeading = myTruckHeading;
    const double hookedX = gKLVTruckX, hookedZ = gKLVTruckZ;
    host->runFor(1.4);
    EXPECT_FLOAT_EQ(myTruckHeading, hookedHeading); // 1.5 s pause at the gear
    EXPECT_DOUBLE_EQ(gKLVTruckX, hookedX);
    host->runFor(0.3);
    const float turned = HeadingDiff(myTruckHeading, hookedHeading);
    EXPECT_LT(turned, 0.0f); // straight push: the truck turns by -0.4 degrees a step
    EXPECT_NEAR(std::remainder(turned, 0.4), 0.0, 1e-3);
    EXPECT_GT(std::hypot(gKLVTruckX - hookedX, gKLVTruckZ - hookedZ), 0.0);
    EXPECT_EQ(Status(), 1); // still set up until the truck has gone

    ASSERT_TRUE(RunUntilPhase(kTruckIdle, 30.0));
    EXPECT_EQ(Spoken().back(), kTerminated);
    EXPECT_STREQ(Shown()->text, kTerminated);
    EXPECT_EQ(Shown()->type, 2);
    EXPECT_DOUBLE_EQ(host->getf(kParkBrake), 0.0);
    EXPECT_EQ(host->geti("sim/operation/override/override_joystick_heading"), 0);
    EXPECT_EQ(Status(), 0);
    // Done within 5 degrees of the reverse of the aircraft's heading, having turned the short way.
    EXPECT_NEAR(HeadingDiff(myTruckHeading, Psi() + 180.0f), 5.0, 0.5);
    EXPECT_GT(TruckToGear(), 10.0); // driven away

    // The host's text output comes back 15 s after the first push-back only.
    host->runFor(14.5);
    EXPECT_EQ(host->geti(kTextOut), 0);
    host->runFor(1.0);
    EXPECT_EQ(host->geti(kTextOut), 1);
}

TEST_F(PushbackSequence, MainGearTowingPlacesTheTruckBehindTheMainGearFacingBack) {
    PrefFrontWheel = false;
    ASSERT_EQ(StartFromMenu(kMenuStraight), 0);
    EXPECT_EQ(gKLVGearIndex, 1); // where it parks for each gear and heading: the truck movement sweep
    EXPECT_FLOAT_EQ(myTruckHeading, Psi() - 180.0f);
    ASSERT_TRUE(RunUntilTruckAtGear(20.0));
    host->runFor(1.0);
    EXPECT_LT(std::fabs(TruckAheadOfGear()), 0.25);
}

} // namespace
} // namespace kalvora_test
