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
    // Forward: the tyre's top moves towards -Z, a negative turn about +X.
    constexpr double kRolledDeg = 30;
    const Drawn rolled = DrawTug(Drive{0, static_cast<float>(kRolledDeg)});
    EXPECT_LT(Moved(rolled.body, rest_.body), kSameM) << "the body stays put";
    for (size_t w = 0; w < rest_.wheels.size(); ++w)
        EXPECT_LT(Moved(rolled.wheels[w], Turned(rest_.wheels[w], true, -kRolledDeg)), kSameM)
            << "wheel " << w;
    // The wrap of the rolling value from a full turn to zero does not jump: one degree of a tyre well under
    // a metre in radius moves no corner by more than 2 cm.
    const Drawn late = DrawTug(Drive{0, 359.5f}), early = DrawTug(Drive{0, 0.5f});
    for (size_t w = 0; w < rest_.wheels.size(); ++w) {
        EXPECT_LT(Moved(late.wheels[w], early.wheels[w]), 0.02) << "wheel " << w;
        EXPECT_GT(Moved(late.wheels[w], early.wheels[w]), kSameM) << "wheel " << w << " did turn";
    }
}

TEST_P(TugWheelAnimation, SteeringTurnsTheNearAxleClockwiseSeenFromAboveBeforeItRolls) {
    // Clockwise seen from above: a negative turn about +Y, the wheel's front (-Z) swinging right (+X).
    constexpr double kSteerDeg = 10;
    const Drawn steered = DrawTug(Drive{static_cast<float>(kSteerDeg), 0});
    EXPECT_LT(Moved(steered.body, rest_.body), kSameM) << "the body stays put";
    double steeredZ = -1e9, fixedZ = 1e9;
    for (size_t w = 0; w < rest_.wheels.size(); ++w) {
        const Corners& before = rest_.wheels[w];
        EXPECT_LT(Moved(steered.wheels[w], steers_[w] ? Turned(before, false, -kSteerDeg) : before), kSameM)
            << "wheel " << w << (steers_[w] ? " steers" : " does not steer");
        double& nearest = steers_[w] ? steeredZ : fixedZ; // the steered wheels' rearmost, the others' front
        nearest = steers_[w] ? std::max(nearest, Centre(before).z) : std::min(nearest, Centre(before).z);
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
            expected.push_back(steers_[w] ? TurnAbout(p, Centre(rest_.wheels[w]), false, -kBothSteerDeg) : p);
        EXPECT_LT(Moved(both.wheels[w], expected), kSameM) << "wheel " << w;
    }
}

INSTANTIATE_TEST_SUITE_P(Tugs, TugWheelAnimation, ::testing::ValuesIn(kTugModels));

} // namespace
