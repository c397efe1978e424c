// The simulator's interface colours, read once from its datarefs, and the
// ambient interface colour with its fallback for simulators without them.
#include "toolkit/Colors.h"

#include "XPLMDataAccess.h"

#include <GL/gl.h>

const char* const kXPlaneColorNames[kXPlaneColorCount] = {
    "sim/graphics/colors/menu_dark_rgb",     "sim/graphics/colors/menu_bkgnd_rgb",
    "sim/graphics/colors/menu_hilite_rgb",   "sim/graphics/colors/menu_lite_rgb",
    "sim/graphics/colors/menu_text_rgb",     "sim/graphics/colors/menu_text_disabled_rgb",
    "sim/graphics/colors/subtitle_text_rgb", "sim/graphics/colors/tab_front_rgb",
    "sim/graphics/colors/tab_back_rgb",      "sim/graphics/colors/caption_text_rgb",
    "sim/graphics/colors/list_text_rgb",     "sim/graphics/colors/glass_text_rgb",
};

float gAlphaLevel = 1.0f;

namespace {

constexpr int kChannels = 3; // red, green, blue

/// Cached interface colours; entries whose dataref is missing stay black.
float mXPColor[kXPlaneColorCount][kChannels] = {};
bool mXPColorInitialised = false;
/// Handed out for indices outside the table, so callers never read past it.
float gOutOfRangeColor[kChannels] = {1.0f, 1.0f, 1.0f};

/// SetupAmbientColor reads the first six interface colours.
constexpr int kAmbientColorCount = 6;
XPLMDataRef gAmbientColorRefs[kAmbientColorCount] = {};
bool firstTime = true;

const char* const kCockpitLightLevelNames[kChannels] = {"sim/graphics/misc/cockpit_light_level_r",
                                                        "sim/graphics/misc/cockpit_light_level_g",
                                                        "sim/graphics/misc/cockpit_light_level_b"};
XPLMDataRef gCockpitLightLevels[kChannels] = {};
bool gCockpitLightLevelsFound = false;

/// Interface colours of simulators without the colour datarefs, before the light level.
constexpr float kBackupColors[kAmbientColorCount][kChannels] = {
    {33 / 256.0f, 41 / 256.0f, 44 / 256.0f},
    {53 / 256.0f, 64 / 256.0f, 68 / 256.0f},
    {65 / 256.0f, 83 / 256.0f, 89 / 256.0f},
    {65 / 256.0f, 83 / 256.0f, 89 / 256.0f},
    {0.8f, 0.8f, 0.8f},
    {0.4f, 0.4f, 0.4f},
};

} // namespace

void HV_OGLUtils::LoadXPColors() {
    if (mXPColorInitialised) return;
    for (int i = 0; i < kXPlaneColorCount; ++i) {
        XPLMDataRef ref = XPLMFindDataRef(kXPlaneColorNames[i]);
        if (ref) XPLMGetDatavf(ref, mXPColor[i], 0, kChannels);
    }
    mXPColorInitialised = true;
}

void HV_OGLUtils::ForgetXPColors() {
    mXPColorInitialised = false;
    firstTime = true;
    gCockpitLightLevelsFound = false;
}

float* HV_OGLUtils::ColorXPlane(int index) {
    LoadXPColors();
    if (index < 0 || index >= kXPlaneColorCount) return gOutOfRangeColor;
    return mXPColor[index];
}

void SetupAmbientColor(int index, float* out) {
    if (firstTime) {
        for (int i = 0; i < kAmbientColorCount; ++i)
            gAmbientColorRefs[i] = XPLMFindDataRef(kXPlaneColorNames[i]);
        firstTime = false;
    }
    float local[kChannels] = {0.0f, 0.0f, 0.0f};
    float* target = out ? out : local;
    if (index < 0 || index >= kAmbientColorCount) {
        for (int c = 0; c < kChannels; ++c)
            target[c] = 1.0f;
    } else if (gAmbientColorRefs[index]) {
        XPLMGetDatavf(gAmbientColorRefs[index], target, 0, kChannels);
    } else {
        // An older simulator: the fixed colour, dimmed like the cockpit lighting.
        if (!gCockpitLightLevelsFound) {
            for (int c = 0; c < kChannels; ++c)
                gCockpitLightLevels[c] = XPLMFindDataRef(kCockpitLightLevelNames[c]);
            gCockpitLightLevelsFound = true;
        }
        for (int c = 0; c < kChannels; ++c)
            target[c] = kBackupColors[index][c] * XPLMGetDataf(gCockpitLightLevels[c]);
    }
    if (!out) glColor4f(local[0], local[1], local[2], gAlphaLevel);
}

void SetAlphaLevels(float alpha) {
    gAlphaLevel = alpha;
}
