// Interface colours read from the simulator, and the fallback of simulators
// without them. The colours are cached for the life of the process, so this
// file is its own test program and each test sets the host up before the first read.
#include "GlFixture.h"
#include "toolkit/Colors.h"

using kalvora_test::GlTest;

namespace {
using InterfaceColors = GlTest;
}

TEST_F(InterfaceColors, ReadOnceFromTheSimulatorAndAmbientFallsBackOnTheLightLevel) {
    // The simulator's colours as the first read sees them.
    for (int c = 0; c < 3; ++c) {
        host().set("sim/graphics/colors/menu_dark_rgb", 0.1 + 0.1 * c, c);
        host().set("sim/graphics/colors/glass_text_rgb", 0.7 + 0.1 * c, c);
    }
    // An older simulator: no highlight colour; cockpit lights at 0.5, 0.25, 1.
    host().removeDataRef("sim/graphics/colors/menu_hilite_rgb");
    host().set("sim/graphics/misc/cockpit_light_level_r", 0.5);
    host().set("sim/graphics/misc/cockpit_light_level_g", 0.25);
    host().set("sim/graphics/misc/cockpit_light_level_b", 1.0);

    float* dark = HV_OGLUtils::ColorXPlane(0);
    EXPECT_NEAR(dark[0], 0.1f, 1e-6);
    EXPECT_NEAR(dark[2], 0.3f, 1e-6);
    EXPECT_NEAR(HV_OGLUtils::ColorXPlane(11)[1], 0.8f, 1e-6);
    EXPECT_EQ(HV_OGLUtils::ColorXPlane(12)[0], 1.0f); // out of range: white, no overrun
    EXPECT_EQ(HV_OGLUtils::ColorXPlane(-1)[0], 1.0f);

    // Never re-read: a later change of the simulator's colour is not seen.
    host().set("sim/graphics/colors/menu_dark_rgb", 0.9, 0);
    HV_OGLUtils::LoadXPColors();
    EXPECT_NEAR(HV_OGLUtils::ColorXPlane(0)[0], 0.1f, 1e-6);

    // Present colour: read live into the caller's array.
    float out[3] = {};
    SetupAmbientColor(0, out);
    EXPECT_NEAR(out[0], 0.9f, 1e-6);
    EXPECT_NEAR(out[1], 0.2f, 1e-6);

    // Missing colour: the fixed colour times the light levels; with no output it becomes the OpenGL
    // colour, at alpha gAlphaLevel.
    const float expected[4] = {65 / 256.0f * 0.5f, 83 / 256.0f * 0.25f, 89 / 256.0f, 0.6f};
    SetupAmbientColor(2, out);
    SetAlphaLevels(0.6f);
    SetupAmbientColor(2, nullptr);
    float current[4] = {};
    glGetFloatv(GL_CURRENT_COLOR, current);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(out[c], expected[c], 1e-6) << c;
    for (int c = 0; c < 4; ++c)
        EXPECT_NEAR(current[c], expected[c], 1e-3) << c;
    SetAlphaLevels(1.0f);
}
