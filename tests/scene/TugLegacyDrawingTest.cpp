// The shipped tugs through the default animation driver, which X-Plane versions
// before instancing use: it looks up one dataref, the first it meets, and drives
// every animation of a model with it. The models name the steering value first,
// so the steered wheels steer, and the wheels roll by no more than the steering
// angle, however far the rolling value has gone. (A program of its own: the
// driver's one cached dataref lives as long as the process.)
#include "TugDrawing.h"

#include "XPLMDataAccess.h"

using namespace kalvora_scene_test;

namespace {

constexpr float kSteeringDeg = 9.0f;  ///< published steering value
constexpr float kRollingDeg = 200.0f; ///< published rolling value, far from the steering value

float ReadSteering(void*) {
    return kSteeringDeg;
}
float ReadRolling(void*) {
    return kRollingDeg;
}

XPLMDataRef PublishFloat(const char* name, XPLMGetDataf_f read) {
    return XPLMRegisterDataAccessor(name, xplmType_Float, 0, nullptr, nullptr, read, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                    nullptr);
}

class TugLegacyDrawing : public TugDrawTest {};

TEST_F(TugLegacyDrawing, TheSteeringValueDrivesEveryWheelAnimation) {
    ASSERT_NE(PublishFloat(kRollingRef, ReadRolling), nullptr);
    ASSERT_NE(PublishFloat(kSteeringRef, ReadSteering), nullptr);
    bool primed = false;
    for (const char* name : kTugModels) {
        SCOPED_TRACE(name);
        LoadTug(name);
        if (HasFatalFailure()) return;
        if (!primed) DrawTug(nullptr, nullptr); // the driver's very first answer is 0
        primed = true;
        const Drawn legacy = DrawTug(nullptr, nullptr);
        // As if the wheels had rolled by the steering angle: steered right, barely rolled.
        const Drawn expected = DrawTug(Drive{kSteeringDeg, kSteeringDeg});
        const Drawn published = DrawTug(Drive{kSteeringDeg, kRollingDeg});
        ASSERT_EQ(legacy.wheels.size(), expected.wheels.size());
        EXPECT_LT(Moved(legacy.body, expected.body), kSameM);
        for (size_t w = 0; w < legacy.wheels.size(); ++w) {
            EXPECT_LT(Moved(legacy.wheels[w], expected.wheels[w]), kSameM) << "wheel " << w;
            EXPECT_GT(Moved(legacy.wheels[w], published.wheels[w]), 0.1)
                << "wheel " << w << " reads one value";
        }
    }
}

} // namespace
