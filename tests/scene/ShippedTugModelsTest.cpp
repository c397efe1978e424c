// The tug models shipped in assets/Kalvora as the plug-in loads them: they read
// and validate, all four wheels roll, the axle nearer the aircraft steers, and
// the first animation names the steering value (the plug-in's own drawer on older
// X-Plane versions drives every animation of a model by the first dataref it meets).
#include "TugParts.h"

#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace kalvora_scene_test;

namespace {

constexpr float kTolerance = 1e-4f; ///< metres, degrees: six printed decimals
constexpr int kWheels = 4;          ///< wheels of a tug
constexpr int kSteeredWheels = 2;   ///< the axle nearer the aircraft
constexpr float kFullTurnDeg = 360.0f;

bool IsAxis(const XObjAnim8& a, float x, float y, float z) {
    for (const XObjAnimKey8& k : a.key)
        if (k.xyz[0] != x || k.xyz[1] != y || k.xyz[2] != z) return false;
    return true;
}

/// Degrees the step turns per unit of its driving value.
float Slope(const XObjAnim8& a) {
    return (a.key[1].angle - a.key[0].angle) / (a.key[1].value - a.key[0].value);
}

class ShippedTugModel : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        const std::string path = kShippedAssets + GetParam() + ".obj";
        ASSERT_TRUE(XObj8Read(path.c_str(), obj_)) << path;
        std::string why;
        ASSERT_TRUE(XObj8Validate(obj_, &why)) << path << ": " << why;
        ASSERT_EQ(obj_.lods.size(), 1u);
        ASSERT_TRUE(SplitLevel(obj_.lods[0], static_, groups_)) << "ANIM_begin/ANIM_end pair up";
    }
    const XObjAnim8& Step(const XObjCmd8& c) const { return obj_.animations.at(c.idxOffset); }

    XObj8 obj_;
    std::vector<XObjCmd8> static_;
    std::vector<AnimatedGroup> groups_;
};

TEST_P(ShippedTugModel, TheFirstAnimationNamesTheSteeringValue) {
    const auto first =
        std::find_if(obj_.lods[0].cmds.begin(), obj_.lods[0].cmds.end(),
                     [](const XObjCmd8& c) { return c.id == anim_Rotate || c.id == anim_Translate; });
    ASSERT_NE(first, obj_.lods[0].cmds.end()) << "the model is animated";
    EXPECT_EQ(Step(*first).dataref, kSteeringRef);
    // And it is harmless when every value of the model reads as the steering value: it places a part.
    EXPECT_EQ(first->id, anim_Translate);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Step(*first).key[0].xyz[i], Step(*first).key[1].xyz[i]) << "a constant offset";
}

TEST_P(ShippedTugModel, FourWheelsRollAndTheAxleNearerTheAircraftSteers) {
    ASSERT_FALSE(static_.empty()) << "the body does not move";
    ASSERT_EQ(groups_.size(), static_cast<size_t>(kWheels));
    std::vector<float> steeredZ, fixedZ;
    for (const AnimatedGroup& g : groups_) {
        ASSERT_EQ(g.tris.size(), 1u);
        ASSERT_GE(g.steps.size(), 2u);
        // Placed at its pivot by a constant offset...
        const XObjAnim8& place = Step(g.steps.front());
        ASSERT_EQ(g.steps.front().id, anim_Translate);
        const float pz = place.key[0].xyz[2];
        // ...rolled about its axle (X) last, one turn of the wheel per turn of the value so the wrap from
        // 360 to 0 does not jump, forward rolling (a growing value) carrying the tyre's top to -Z...
        const XObjAnim8& roll = Step(g.steps.back());
        EXPECT_EQ(g.steps.back().id, anim_Rotate);
        EXPECT_EQ(roll.dataref, kRollingRef);
        EXPECT_TRUE(IsAxis(roll, 1, 0, 0));
        EXPECT_NEAR(Slope(roll) * kFullTurnDeg, -kFullTurnDeg, kTolerance);
        // ...and, on the steered axle, first turned about +Y, clockwise seen from above, degree for degree.
        const bool steers = g.steps.size() == 3;
        if (steers) {
            const XObjAnim8& steer = Step(g.steps[1]);
            EXPECT_EQ(g.steps[1].id, anim_Rotate);
            EXPECT_EQ(steer.dataref, kSteeringRef);
            EXPECT_TRUE(IsAxis(steer, 0, 1, 0));
            EXPECT_NEAR(Slope(steer), -1.0f, kTolerance);
            EXPECT_NEAR(steer.key[0].angle + Slope(steer) * (0 - steer.key[0].value), 0, kTolerance)
                << "straight ahead at rest";
        } else {
            EXPECT_EQ(g.steps.size(), 2u);
        }
        (steers ? steeredZ : fixedZ).push_back(pz);
    }
    ASSERT_EQ(steeredZ.size(), static_cast<size_t>(kSteeredWheels));
    EXPECT_EQ(steeredZ[0], steeredZ[1]) << "one axle";
    for (float z : fixedZ)
        EXPECT_GT(steeredZ[0], z) << "the steered axle is the one nearer the aircraft (+Z)";
}

INSTANTIATE_TEST_SUITE_P(Tugs, ShippedTugModel, ::testing::ValuesIn(kTugModels));

TEST(ShippedGroundPowerUnit, StaysStill) {
    const std::string path = kShippedAssets + "GroundServices/GPU.obj";
    XObj8 obj;
    ASSERT_TRUE(XObj8Read(path.c_str(), obj)) << path;
    EXPECT_TRUE(XObj8Validate(obj, nullptr));
    EXPECT_TRUE(obj.animations.empty());
}

} // namespace
