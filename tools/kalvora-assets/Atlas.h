// The texture atlas shared by Kalvora's models: one 512 x 512 picture per model,
// painted by code in a fixed layout, in a day version and a night version (unlit
// paint with the lamps and windows glowing).
#pragma once

#include "Canvas.h"
#include "MeshBuilder.h"

namespace assets {

constexpr int kAtlasSizePx = 512; ///< a power of two, so the texture is uploaded unpadded

/// The colours and lettering of one model.
struct Livery {
    Colour body;        ///< main paint
    Colour stripe;      ///< band along the sides
    const char* letter; ///< lettering on the side panel
};

/// Where each surface lies in the atlas.
struct AtlasSkin {
    BoxSkin body;     ///< painted body with its side band
    BoxSkin chassis;  ///< dark frame and bumpers
    BoxSkin cab;      ///< cab: door on the sides, glass at the ends
    BoxSkin glass;    ///< glass all round
    BoxSkin hazard;   ///< yellow and black stripes
    BoxSkin metal;    ///< bare grey metal
    BoxSkin lettered; ///< a side panel with the lettering
    BoxSkin headlamp; ///< white lamp lenses
    BoxSkin beacon;   ///< orange beacon
    BoxSkin panel;    ///< control panel with gauges (the GPU)
    UV tread;         ///< tyre tread
    UV hub;           ///< wheel side: tyre ring and hub
    UV cable;         ///< black rubber
};

/// The atlas rectangles (the same for every model).
AtlasSkin Skin();
/// Paints the atlas of a livery; `night` paints the unlit version with glowing lamps.
Canvas PaintAtlas(const Livery& livery, bool night);

} // namespace assets
