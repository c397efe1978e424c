// The published datarefs as another plug-in sees them: names, types,
// writability and values that follow the plug-in's state (their removal at stop: the lifecycle tests).
#include "AppFixture.h"

#include "XPLMDataAccess.h"
#include "core/GpuPosition.h"

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

TEST_F(PublishedDataRefs, AreWritableWithTheirTypesAndCarryThePluginsValuesBothWays) {
    for (const char* name : {"halvern/kalvora/PBstatus", "halvern/kalvora/GPUstatus"}) {
        XPLMDataRef ref = XPLMFindDataRef(name);
        ASSERT_NE(ref, nullptr) << name;
        EXPECT_EQ(XPLMGetDataRefTypes(ref), xplmType_Int) << name;
        EXPECT_EQ(XPLMCanWriteDataRef(ref), 1) << name;
    }
    // The truck's position needs double precision; the cart's goes out as float.
    const struct {
        const char* name;
        XPLMDataTypeID type;
        double* global;
    } positions[] = {
        {"halvern/kalvora/truck/position_ogl_x", xplmType_Double, &gKLVTruckX},
        {"halvern/kalvora/truck/position_ogl_z", xplmType_Double, &gKLVTruckZ},
        {"halvern/kalvora/GPU/position_ogl_z", xplmType_Float, &gpuZ},
    };
    for (const auto& p : positions) {
        SCOPED_TRACE(p.name);
        XPLMDataRef ref = XPLMFindDataRef(p.name);
        ASSERT_NE(ref, nullptr);
        EXPECT_EQ(XPLMGetDataRefTypes(ref), p.type);
        EXPECT_EQ(XPLMCanWriteDataRef(ref), 1);
        const bool isDouble = p.type == xplmType_Double;
        *p.global = isDouble ? 1.0e6 + 0.125 : -40.125;
        EXPECT_EQ(isDouble ? XPLMGetDatad(ref) : XPLMGetDataf(ref), *p.global);
        if (isDouble)
            XPLMSetDatad(ref, -3.25);
        else
            XPLMSetDataf(ref, -3.25f);
        EXPECT_EQ(*p.global, -3.25);
        EXPECT_EQ(XPLMGetDatai(ref), 0) << "wrong-typed access reads nothing";
    }
}

} // namespace
} // namespace kalvora_test
