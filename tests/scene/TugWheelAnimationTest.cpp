// The shipped tugs' wheels as ObjDraw8 draws them, read back vertex by vertex
// through OpenGL feedback: four wheels in pairs on the apron; steering turns the
// axle nearer the aircraft about +Y clockwise seen from above; rolling turns every
// wheel forward about its own axle, one turn per turn; the body never moves.
#include "TugDrawing.h"

using namespace kalvora_scene_test;

namespace {

class TugWheelAnimation : public TugDrawTest, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        TugDrawTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        LoadTug(GetParam());
        if (HasFatalFailure()) return;
        rest_ = DrawTug(Drive{});
        ASSERT_EQ(rest_.wheels.size(), 4u);
    }
    Drawn rest_;
};

TEST_P(TugWheelAnimation, AtRestTheWheelsStandOnTheApronInPairs) {
    for (const Corners& w : rest_.wheels) {
        double lowest = 1e9;
        for (const P3& p : w)
            lowest = std::min(lowest, p.y);
        EXPECT_NEAR(lowest, -1.0, kSameM) << "on the apron, 1 m below the origin";
    }
    // Each wheel has a twin mirrored across the tug's centre line.
    for (const Corners& w : rest_.wheels) {
        const P3 c = Centre(w);
        int twins = 0;
        for (const Corners& o : rest_.wheels) {
            const P3 d = Centre(o);
            twins += std::fabs(c.x + d.x) < kSameM && std::fabs(c.z - d.z) < kSameM && std::fabs(c.x) > 0.5;
        }
        EXPECT_EQ(twins, 1);
    }
    EXPECT_EQ(std::count(steers_.begin(), steers_.end(), true), 2);
}

TEST_P(TugWheelAnimation, RollingTurnsEveryWheelForwardAboutItsOwnAxleOneTurnPerTurn) {
    constexpr double kRolledDeg = 30;
    const Drawn rolled = DrawTug(Drive{0, static_cast<float>(kRolledDeg)});
    EXPECT_LT(Moved(rolled.body, rest_.body), kSameM) << "the body stays put";
    for (size_t w = 0; w < rest_.wheels.size(); ++w) {
        const Corners& before = rest_.wheels[w];
        const Corners& after = rolled.wheels[w];
        ASSERT_EQ(before.size(), after.size());
        const P3 c = Centre(before);
        EXPECT_LT(Distance(Centre(after), c), kSameM) << "wheel " << w << " turns about its centre";
        size_t top = 0;
        for (size_t i = 0; i < before.size(); ++i) {
            EXPECT_NEAR(after[i].x, before[i].x, kSameM) << "about the X axis";
            if (before[i].y > before[top].y) top = i;
            const double arm = std::hypot(before[i].y - c.y, before[i].z - c.z);
            if (arm < kMinArmM) continue;
            EXPECT_NEAR(TurnDeg(before[i].y - c.y, before[i].z - c.z, after[i].y - c.y, after[i].z - c.z),
                        -kRolledDeg, kAngleTolDeg)
                << "wheel " << w << ", corner " << i;
        }
        EXPECT_LT(after[top].z, before[top].z - 0.1)
            << "wheel " << w << ": the tyre's top moves forward (-Z)";
    }
    // The wrap of the rolling value from a full turn to zero does not jump: one degree of a tyre well under
    // a metre in radius moves no corner by more than 2 cm.
    const Drawn late = DrawTug(Drive{0, 359.5f}), early = DrawTug(Drive{0, 0.5f});
    for (size_t w = 0; w < rest_.wheels.size(); ++w) {
        EXPECT_LT(Moved(late.wheels[w], early.wheels[w]), 0.02) << "wheel " << w;
        EXPECT_GT(Moved(late.wheels[w], early.wheels[w]), kSameM) << "wheel " << w << " did turn";
    }
}

TEST_P(TugWheelAnimation, SteeringTurnsTheNearAxleClockwiseSeenFromAboveBeforeItRolls) {
    constexpr double kSteerDeg = 10;
    const Drawn steered = DrawTug(Drive{static_cast<float>(kSteerDeg), 0});
    EXPECT_LT(Moved(steered.body, rest_.body), kSameM) << "the body stays put";
    double steeredZ = -1e9, fixedZ = 1e9;
    for (size_t w = 0; w < rest_.wheels.size(); ++w) {
        const Corners& before = rest_.wheels[w];
        const Corners& after = steered.wheels[w];
        ASSERT_EQ(before.size(), after.size());
        const P3 c = Centre(before);
        if (!steers_[w]) {
            EXPECT_LT(Moved(after, before), kSameM) << "wheel " << w << " does not steer";
            fixedZ = std::min(fixedZ, c.z);
            continue;
        }
        steeredZ = std::max(steeredZ, c.z);
        EXPECT_LT(Distance(Centre(after), c), kSameM);
        size_t front = 0;
        for (size_t i = 0; i < before.size(); ++i) {
            EXPECT_NEAR(after[i].y, before[i].y, kSameM) << "about the vertical";
            if (before[i].z < before[front].z) front = i;
            if (std::hypot(before[i].x - c.x, before[i].z - c.z) < kMinArmM) continue;
            // Right-hand rule about +Y in the (z, x) plane.
            EXPECT_NEAR(TurnDeg(before[i].z - c.z, before[i].x - c.x, after[i].z - c.z, after[i].x - c.x),
                        -kSteerDeg, kAngleTolDeg)
                << "wheel " << w << ", corner " << i;
        }
        EXPECT_GT(after[front].x, before[front].x + 0.02) << "wheel " << w << ": its front swings right (+X)";
    }
    EXPECT_GT(steeredZ, fixedZ) << "the steered wheels are the ones nearer the aircraft (+Z)";

    // Steered and rolled: the rolled wheel, then turned about the vertical through its centre.
    constexpr float kBothSteerDeg = -8, kBothRolledDeg = 50;
    const Drawn rolled = DrawTug(Drive{0, kBothRolledDeg}),
                both = DrawTug(Drive{kBothSteerDeg, kBothRolledDeg});
    EXPECT_LT(Moved(both.body, rest_.body), kSameM);
    for (size_t w = 0; w < rest_.wheels.size(); ++w) {
        Corners expected;
        for (const P3& p : rolled.wheels[w])
            expected.push_back(steers_[w] ? TurnAboutY(p, Centre(rest_.wheels[w]), -kBothSteerDeg) : p);
        EXPECT_LT(Moved(both.wheels[w], expected), kSameM) << "wheel " << w;
    }
}

INSTANTIATE_TEST_SUITE_P(Tugs, TugWheelAnimation, ::testing::ValuesIn(kTugModels));

} // namespace
