// The published datarefs as another plug-in sees them: names, types,
// writability, values that follow the plug-in's state, and their removal.
#include "AppFixture.h"

#include "XPLMDataAccess.h"
#include "core/GpuPosition.h"

#include <algorithm>

namespace kalvora_test {
namespace {

class PublishedDataRefs : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        RegisterPublishedDataRefs();
        simhost::InProcessPlugin panel;
        panel.name = "Panel";
        panel.signature = "test.panel";
        panelId = host->addPlugin(panel);
        host->setDirectCaller(panelId); // from here on the test speaks as the other plug-in
    }

    int panelId = -1;
};

TEST_F(PublishedDataRefs, AreRegisteredWritableWithTheirTypes) {
    const struct {
        const char* name;
        XPLMDataTypeID type;
    } expected[] = {
        {"halvern/kalvora/PBstatus", xplmType_Int},
        {"halvern/kalvora/GPUstatus", xplmType_Int},
        {"halvern/kalvora/truck/position_ogl_x", xplmType_Double},
        {"halvern/kalvora/truck/position_ogl_y", xplmType_Double},
        {"halvern/kalvora/truck/position_ogl_z", xplmType_Double},
        {"halvern/kalvora/truck/position_hdg", xplmType_Float},
        {"halvern/kalvora/GPU/position_ogl_x", xplmType_Float},
        {"halvern/kalvora/GPU/position_ogl_y", xplmType_Float},
        {"halvern/kalvora/GPU/position_ogl_z", xplmType_Float},
    };
    for (const auto& e : expected) {
        SCOPED_TRACE(e.name);
        XPLMDataRef ref = XPLMFindDataRef(e.name);
        ASSERT_NE(ref, nullptr);
        EXPECT_EQ(XPLMGetDataRefTypes(ref), e.type);
        EXPECT_EQ(XPLMCanWriteDataRef(ref), 1);
    }
}

TEST_F(PublishedDataRefs, TruckPositionAndHeadingAreReadAndWrittenByAnotherPlugin) {
    gKLVTruckX = 12.5;
    gKLVTruckY = -0.75;
    gKLVTruckZ = 1.0e6 + 0.125; // needs double precision
    myTruckHeading = 271.25f;
    EXPECT_DOUBLE_EQ(XPLMGetDatad(XPLMFindDataRef("halvern/kalvora/truck/position_ogl_x")), 12.5);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(XPLMFindDataRef("halvern/kalvora/truck/position_ogl_y")), -0.75);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(XPLMFindDataRef("halvern/kalvora/truck/position_ogl_z")), 1.0e6 + 0.125);
    EXPECT_FLOAT_EQ(XPLMGetDataf(XPLMFindDataRef("halvern/kalvora/truck/position_hdg")), 271.25f);

    XPLMSetDatad(XPLMFindDataRef("halvern/kalvora/truck/position_ogl_x"), -3.25);
    XPLMSetDatad(XPLMFindDataRef("halvern/kalvora/truck/position_ogl_z"), 7.5);
    XPLMSetDataf(XPLMFindDataRef("halvern/kalvora/truck/position_hdg"), 45.5f);
    EXPECT_DOUBLE_EQ(gKLVTruckX, -3.25);
    EXPECT_DOUBLE_EQ(gKLVTruckZ, 7.5);
    EXPECT_FLOAT_EQ(myTruckHeading, 45.5f);
    // Wrong-typed access reads nothing.
    EXPECT_EQ(XPLMGetDatai(XPLMFindDataRef("halvern/kalvora/truck/position_ogl_x")), 0);
}

TEST_F(PublishedDataRefs, GpuPositionIsPublishedAsFloat) {
    gpuX = 100.25;
    gpuY = 2.5;
    gpuZ = -40.125;
    EXPECT_FLOAT_EQ(XPLMGetDataf(XPLMFindDataRef("halvern/kalvora/GPU/position_ogl_x")), 100.25f);
    EXPECT_FLOAT_EQ(XPLMGetDataf(XPLMFindDataRef("halvern/kalvora/GPU/position_ogl_y")), 2.5f);
    EXPECT_FLOAT_EQ(XPLMGetDataf(XPLMFindDataRef("halvern/kalvora/GPU/position_ogl_z")), -40.125f);
    XPLMSetDataf(XPLMFindDataRef("halvern/kalvora/GPU/position_ogl_y"), 9.5f);
    EXPECT_DOUBLE_EQ(gpuY, 9.5);
}

TEST_F(PublishedDataRefs, PushbackStatusFollowsTheManoeuvre) {
    XPLMDataRef status = XPLMFindDataRef("halvern/kalvora/PBstatus");
    EXPECT_EQ(XPLMGetDatai(status), 0);
    gKLVPlaneMoveDirection = kMoveBackward;
    gKLVPlaneRotateDir = kRotateStraight;
    EXPECT_EQ(XPLMGetDatai(status), 1);
    gKLVPlaneRotateDir = kRotateTailRight;
    EXPECT_EQ(XPLMGetDatai(status), 2);
    gKLVPlaneRotateDir = kRotateTailLeft;
    gKLVautoPbPhase = kPhaseStraightLeg; // an automated turn reads like a plain one
    EXPECT_EQ(XPLMGetDatai(status), 3);
    gKLVPlaneRotateDir = 7;
    EXPECT_EQ(XPLMGetDatai(status), 0);
    ResetPlaneMovementParam();
    EXPECT_EQ(XPLMGetDatai(status), 0);
}

TEST_F(PublishedDataRefs, UnregisteringRemovesEveryOne) {
    host->setDirectCaller(pluginId);
    UnregisterPublishedDataRefs();
    EXPECT_EQ(gKLVStatus, nullptr);
    EXPECT_EQ(gGPUPositionZ, nullptr);
    for (const std::string& what : host->registrations(pluginId))
        EXPECT_EQ(what.find("halvern/kalvora"), std::string::npos) << what;
    // Registering again after a stop works (the host reloads plug-ins this way).
    RegisterPublishedDataRefs();
    host->setDirectCaller(panelId);
    gKLVTruckX = 5.0;
    EXPECT_DOUBLE_EQ(XPLMGetDatad(XPLMFindDataRef("halvern/kalvora/truck/position_ogl_x")), 5.0);
}

} // namespace
} // namespace kalvora_test
