// Push-back motion in simhost: PlaneMoveCallBack runs every frame and the
// aircraft moves through the datarefs it writes. Positions are read back from
// the host, as any observer would.
#include "../core/AppFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMProcessing.h"
#include "motion/AircraftPlacement.h"

#include <cmath>
#include <vector>

namespace kalvora_test {
namespace {

constexpr double kStep = 0.1;                                 // metres per frame at the default speed
constexpr double kTurnRadius = kStep / (0.15 * M_PI / 180.0); // about 38.2 m
constexpr double kFramesPerQuarterTurn = 90.0 / 0.15;         // 600

struct Sample {
    double x, z;
    float psi;
};

class PushbackKinematics : public AppTest {
protected:
    void StartAt(double headingDeg, const char* aircraft = "A320") {
        simhost::HostOptions options;
        options.startHeadingDeg = headingDeg;
        options.aircraft = aircraft;
        Restart(options);
        ASSERT_TRUE(initResult);
        XPLMRegisterFlightLoopCallback(PlaneMoveCallBack, -1.0f, nullptr);
        host->set("sim/flightmodel/controls/parkbrake", 0.0);
    }

    /// Sets the manoeuvre up as a start would, then lets the truck "hook up".
    void Begin(int rotateDir, int phase) {
        gKLVPlaneMoveDirection = kMoveBackward;
        gKLVPlaneRotateDir = rotateDir;
        gKLVautoPbPhase = phase;
        SetPBlenght(&gKLVPbLength, &gKLVRotationRate);
        CalcFinalPsi(rotateDir, &gKLVfinalPsi);
        CalcFinalxz(gKLVPbLength, &gKLVfinalx, &gKLVfinalz);
        SetGearIndex();
        ApplyTruckCurrentHeading();
        gKLVisPlaneMoving = true;
    }

    Sample Now() { return {X(), Z(), Psi()}; }

    /// On the running host: the aircraft back at the origin on `heading`, one frame for the host to derive
    /// psi from q (as it has done long before anyone starts a push), a manoeuvre set up as a start does it,
    /// then run. The frames it took to end, or -1 when it had not ended after maxFrames.
    int PushFrames(double heading, int rotateDir, int phase, int maxFrames) {
        ResetPlaneMovementParam();
        host->set("sim/flightmodel/controls/parkbrake", 0.0); // the last push ended by setting it
        host->set("sim/flightmodel/position/local_x", 0.0);
        host->set("sim/flightmodel/position/local_z", 0.0);
        host->set("sim/flightmodel/position/psi", heading);
        host->runFrames(1);
        Begin(rotateDir, phase);
        int frames = 0;
        for (; frames < maxFrames && gKLVisPlaneMoving; ++frames)
            host->runFrames(1);
        return gKLVisPlaneMoving ? -1 : frames;
    }

    /// Runs frames until the motion flag drops (or maxFrames), recording the aircraft each frame.
    std::vector<Sample> RunPush(int maxFrames) {
        std::vector<Sample> track{Now()};
        for (int frame = 0; frame < maxFrames && gKLVisPlaneMoving; ++frame) {
            host->runFrames(1);
            track.push_back(Now());
        }
        return track;
    }
};

TEST_F(PushbackKinematics, EveryStraightPushEndsWhateverTheNoiseOfTheHeadingReadBack) {
    // psi comes back from the single-precision quaternion a hair off the heading written (10 reads
    // as 9.99999619): the push must end all the same. Motion is per frame, so the frame rate changes
    // nothing but the host's clock: each profile runs at one of the three rates.
    const struct {
        const char* aircraft;
        double fps;
    } profiles[] = {{"A320", 30}, {"B738", 60}, {"B744", 120}, {"C172", 60}, {"DC3", 30}};
    // Fractions close below a whole degree may read back above it.
    const double fractions[] = {0.001, 0.5, 0.999, 0.99999, 0.999999};
    for (const auto& p : profiles) {
        simhost::HostOptions options;
        options.aircraft = p.aircraft;
        options.fps = p.fps;
        Restart(options);
        XPLMRegisterFlightLoopCallback(PlaneMoveCallBack, -1.0f, nullptr);
        std::vector<double> headings;
        for (int degree = 0; degree < 360; ++degree) {
            headings.push_back(degree);
            if (degree % 2 == 0) headings.push_back(degree + fractions[degree / 2 % 5]);
        }
        int endless = 0;
        for (double heading : headings) {
            const int frames = PushFrames(heading, kRotateStraight, kPhaseStraightLeg, 2000);
            // It ends its length straight behind where it started (the origin), still on its heading,
            // with the brake set.
            const double h = heading * M_PI / 180.0;
            const double missed =
                std::hypot(X() + gKLVPbLength * std::sin(h), Z() - gKLVPbLength * std::cos(h));
            if (frames < 0 || missed > kStep + 1e-3 || std::fabs(HeadingDiff(Psi(), heading)) > 1e-3 ||
                host->getf("sim/flightmodel/controls/parkbrake") != 1.0 || gKLVautoPbPhase != kPhaseNone)
                ADD_FAILURE() << p.aircraft << " from " << heading << ": " << missed << " m off, heading "
                              << Psi() << " after " << frames << " frames for " << gKLVPbLength << " m";
            endless += frames < 0;
        }
        EXPECT_EQ(endless, 0) << p.aircraft;
        EXPECT_GT(gKLVPbLength, 0) << p.aircraft;
        const Sample end = Now(); // nothing moves after the end
        host->runFrames(10);
        EXPECT_EQ(X(), end.x);
        EXPECT_EQ(Z(), end.z);
    }
}

TEST_F(PushbackKinematics, TurnsFollowAnArcToTheEndHeading) {
    const struct {
        double start;
        int dir;
        double end;
    } cases[] = {{100.0, kRotateTailRight, 10.0},
                 {200.5, kRotateTailRight, 110.0},
                 {10.7, kRotateTailLeft, 100.0},
                 {359.9, kRotateTailLeft, 89.0}}; // past 360: wrapped
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.start << " dir " << c.dir);
        StartAt(c.start);
        const Sample start = Now();
        Begin(c.dir, kPhaseTurn);
        const std::vector<Sample> track = RunPush(3000);
        ASSERT_FALSE(gKLVisPlaneMoving) << "the turn never ended";
        const Sample end = track.back();
        EXPECT_EQ(std::floor(end.psi), c.end);
        EXPECT_EQ(host->getf("sim/flightmodel/controls/parkbrake"), 1.0);
        const double h = start.psi * M_PI / 180.0; // backwards: the end lies behind the start
        EXPECT_LT((end.x - start.x) * std::sin(h) - (end.z - start.z) * std::cos(h), 0.0);
        // The chord of an arc of radius R over the angle turned is 2 R sin(angle / 2).
        const double turned = std::fabs(HeadingDiff(end.psi, start.psi)) * M_PI / 180.0;
        const double chord = std::hypot(end.x - start.x, end.z - start.z);
        EXPECT_NEAR(chord / (2.0 * std::sin(turned / 2.0)), kTurnRadius, 0.01 * kTurnRadius);
        EXPECT_NEAR(static_cast<double>(track.size() - 1), kFramesPerQuarterTurn, 12.0);
        // Every frame turns by the fixed step in the commanded sense.
        const double sense = c.dir == kRotateTailLeft ? 1.0 : -1.0;
        EXPECT_NEAR(HeadingDiff(track[2].psi, track[1].psi), sense * 0.15, 1e-3);
    }
}

TEST_F(PushbackKinematics, TheTruckSteersAgainstTheTurnAndTheNoseWheelWithIt) {
    for (int dir : {kRotateTailLeft, kRotateTailRight}) {
        SCOPED_TRACE(dir);
        StartAt(150.0);
        host->set("sim/joystick/has_joystick", 1);
        Begin(dir, kPhaseTurn);
        host->runFrames(300);
        ASSERT_TRUE(gKLVisPlaneMoving);
        // Tail left turns the heading up; the truck at the nose stands 11 degrees the other way.
        const double sense = dir == kRotateTailLeft ? 1.0 : -1.0;
        EXPECT_NEAR(HeadingDiff(myTruckHeading, Psi()), -sense * 11.0, 0.2);
        EXPECT_NEAR(host->getf("sim/joystick/yolk_heading_ratio"), -sense * 0.3, 0.021);
    }
}

TEST_F(PushbackKinematics, TurnsWhoseEndHeadingCannotBeReachedNeverEndButPauseAndTheBrakeHaltThem) {
    // Tail right below 90: the end heading is doubled into a negative number.
    StartAt(45.0);
    Begin(kRotateTailRight, kPhaseTurn);
    EXPECT_EQ(gKLVfinalPsi, -90);
    RunPush(2600); // more than a full circle
    EXPECT_TRUE(gKLVisPlaneMoving);
    // Tail left from 270..270.99: the end heading is 360, which floor(psi) never shows.
    StartAt(270.5);
    Begin(kRotateTailLeft, kPhaseTurn);
    EXPECT_EQ(gKLVfinalPsi, 360);
    RunPush(2600);
    EXPECT_TRUE(gKLVisPlaneMoving);
    EXPECT_EQ(host->getf("sim/flightmodel/controls/parkbrake"), 0.0);

    const Sample moving = Now();
    host->setPaused(true);
    host->runFrames(50);
    EXPECT_EQ(X(), moving.x);
    EXPECT_EQ(Psi(), moving.psi);
    EXPECT_TRUE(gKLVisPlaneMoving);
    host->setPaused(false);
    host->set("sim/flightmodel/controls/parkbrake", 0.5); // any ratio but exactly 0 halts
    host->runFrames(1);
    const Sample halted = Now();
    host->runFrames(50);
    EXPECT_EQ(X(), halted.x);
    EXPECT_EQ(Psi(), halted.psi);
    EXPECT_TRUE(gKLVisPlaneMoving) << "a brake halts the push without ending it";

    host->set("sim/flightmodel/position/psi", 123.9);
    CalcFinalPsi(9, &gKLVfinalPsi); // no turn direction known: the heading, cut to whole degrees
    EXPECT_EQ(gKLVfinalPsi, 123);
}

TEST_F(PushbackKinematics, PushLengthAndRateFollowTheAircraftLength) {
    host->set("sim/aircraft/view/acf_size_z", 40.0);
    int length = 0;
    float rate = 0.0f;
    SetPBlenght(&length, &rate);
    EXPECT_EQ(length, 30);
    EXPECT_FLOAT_EQ(rate, static_cast<float>(40 * 0.15 / 35.0));
    host->set("sim/aircraft/view/acf_size_z", 1e30); // absurd sizes stay defined
    SetPBlenght(&length, &rate);
    EXPECT_GT(length, 0);
    StartAt(45.0); // a tiny aircraft ends its straight leg at once, where it started
    host->set("sim/aircraft/view/acf_size_z", 1.9);
    const Sample start = Now();
    Begin(kRotateStraight, kPhaseStraightLeg);
    EXPECT_EQ(gKLVPbLength, 0);
    RunPush(10);
    EXPECT_FALSE(gKLVisPlaneMoving);
    EXPECT_LE(std::hypot(X() - start.x, Z() - start.z), kStep + 1e-6);
}

} // namespace
} // namespace kalvora_test
