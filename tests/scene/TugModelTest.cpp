// The shipped tugs' wheel animations as the model files state them: four wheels in
// mirrored pairs standing on the apron; every wheel rolls forward about its own axle,
// one turn per turn; the axle nearer the aircraft also steers about +Y, clockwise seen
// from above for a positive steering angle, and rolls about its turned axle. X-Plane
// versions before instancing drive every animation of a model with the first dataref
// they meet, so the steering value must come first.
#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

constexpr const char* kSteeringRef = "halvern/kalvora/truck/steering_deg";
constexpr const char* kRollingRef = "halvern/kalvora/truck/wheel_rotation_deg";
constexpr double kSameM = 1e-3; ///< positions closer than this are the same, metres

/// One ANIM_begin..ANIM_end group of the model: its steps (animation indices) and its lowest vertex.
struct Wheel {
    std::vector<int> steps;
    double lowestM = 1e9;
};

/// Degrees turned per unit of the driving value, about `axis`, or 0 when the step turns about another.
double DegPerUnit(const XObjAnim8& a, const float (&axis)[3]) {
    if (!std::equal(axis, axis + 3, a.key[0].xyz)) return 0;
    return (a.key[1].angle - a.key[0].angle) / (a.key[1].value - a.key[0].value);
}

TEST(TugModel, WheelsStandInPairsRollForwardAndTheNearAxleSteersClockwise) {
    for (const char* name : {"KLVdefault", "KLVtowbarless"}) {
        SCOPED_TRACE(name);
        const std::string path = std::string(KALVORA_SOURCE_DIR) + "/assets/Kalvora/" + name + ".obj";
        XObj8 obj;
        ASSERT_TRUE(XObj8Read(path.c_str(), obj));
        ASSERT_TRUE(XObj8Validate(obj, nullptr));
        std::vector<Wheel> wheels;
        int depth = 0;
        for (const XObjCmd8& c : obj.lods.at(0).cmds) {
            if (c.id == anim_Begin && depth++ == 0) wheels.emplace_back();
            if (c.id == anim_End) --depth;
            if (c.id == anim_Rotate || c.id == anim_Translate) wheels.back().steps.push_back(c.idxOffset);
            if (c.id == obj8_Tris && depth > 0)
                for (int i = c.idxOffset; i < c.idxOffset + c.idxCount; ++i)
                    wheels.back().lowestM =
                        std::min<double>(wheels.back().lowestM, obj.geoTris.get(obj.indices[i])[1]);
        }
        ASSERT_EQ(wheels.size(), 4u);
        EXPECT_EQ(obj.animations.at(wheels[0].steps.at(0)).dataref, kSteeringRef) << "the first dataref met";

        const float aboutX[3] = {1, 0, 0}, aboutY[3] = {0, 1, 0};
        double steeredZ = -1e9, fixedZ = 1e9;
        int steered = 0;
        for (const Wheel& w : wheels) {
            // The first step puts the wheel's centre in place, the same at every value.
            ASSERT_GE(w.steps.size(), 2u);
            const XObjAnim8& at = obj.animations[w.steps[0]];
            EXPECT_TRUE(std::equal(at.key[0].xyz, at.key[0].xyz + 3, at.key[1].xyz));
            EXPECT_NEAR(at.key[0].xyz[1] + w.lowestM, -1.0, kSameM) << "on the apron, 1 m below the origin";
            int twins = 0;
            for (const Wheel& o : wheels) {
                const XObjAnim8& other = obj.animations[o.steps[0]];
                twins += std::fabs(at.key[0].xyz[0] + other.key[0].xyz[0]) < kSameM &&
                         std::fabs(at.key[0].xyz[2] - other.key[0].xyz[2]) < kSameM;
            }
            EXPECT_EQ(twins, 1) << "a twin mirrored across the centre line";

            // Forward: the tyre's top moves towards -Z, a negative turn about +X; steering right is a
            // negative turn about +Y, applied outside the rolling so the wheel rolls about its turned axle.
            const XObjAnim8& roll = obj.animations[w.steps.back()];
            EXPECT_EQ(roll.dataref, kRollingRef);
            EXPECT_DOUBLE_EQ(DegPerUnit(roll, aboutX), -1.0);
            const bool steers = w.steps.size() == 3;
            steered += steers;
            if (steers) {
                const XObjAnim8& steer = obj.animations[w.steps[1]];
                EXPECT_EQ(steer.dataref, kSteeringRef);
                EXPECT_DOUBLE_EQ(DegPerUnit(steer, aboutY), -1.0);
            }
            double& nearest = steers ? steeredZ : fixedZ; // the steered wheels' rearmost, the others' front
            nearest = steers ? std::max(nearest, double(at.key[0].xyz[2]))
                             : std::min(nearest, double(at.key[0].xyz[2]));
        }
        EXPECT_GT(steeredZ, fixedZ) << "the steered wheels are the ones nearer the aircraft (+Z)";
        EXPECT_EQ(steered, 2);
    }
}

} // namespace
