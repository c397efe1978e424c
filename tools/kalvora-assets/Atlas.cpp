#include "Atlas.h"

namespace assets {

namespace {

constexpr float kNightPaint = 0.22f; ///< how bright unlit paint looks under apron floodlights

/// Pixel rectangles of the layout (x0, y0, x1, y1), y down.
struct PxRect {
    int x0, y0, x1, y1;
};
constexpr PxRect kBodySide{0, 0, 256, 128};
constexpr PxRect kBodyTop{256, 0, 384, 128};
constexpr PxRect kChassis{384, 0, 512, 128};
constexpr PxRect kGlass{0, 128, 128, 256};
constexpr PxRect kCabSide{128, 128, 256, 256};
constexpr PxRect kTread{256, 128, 320, 256};
constexpr PxRect kHub{320, 128, 448, 256};
constexpr PxRect kHazard{0, 256, 256, 320};
constexpr PxRect kHeadlamp{256, 256, 320, 320};
constexpr PxRect kBeacon{320, 256, 384, 320};
constexpr PxRect kMetal{384, 256, 512, 320};
constexpr PxRect kLettered{0, 320, 256, 384};
constexpr PxRect kPanel{256, 384, 384, 512};
constexpr PxRect kCable{384, 384, 448, 448};

UV Uv(PxRect r) {
    return AtlasRect(r.x0, r.y0, r.x1, r.y1, kAtlasSizePx);
}
BoxSkin Same(PxRect r) {
    return {Uv(r), Uv(r), Uv(r)};
}

constexpr Colour kBlack{20, 20, 22};
constexpr Colour kDarkGrey{55, 57, 60};
constexpr Colour kGrey{140, 142, 146};
constexpr Colour kGlassBlue{40, 62, 84};
constexpr Colour kHazardYellow{250, 200, 20};
constexpr Colour kWhiteLamp{250, 250, 235};
constexpr Colour kBeaconOrange{255, 140, 10};
constexpr Colour kWarmGlow{255, 214, 140};

void PaintDay(Canvas& c, const Livery& l) {
    // Body side: paint, a band, panel seams, a little grime along the bottom.
    c.fillRect(kBodySide.x0, kBodySide.y0, kBodySide.x1, kBodySide.y1, l.body);
    c.fillRect(kBodySide.x0, 70, kBodySide.x1, 88, l.stripe);
    for (int x = 60; x < 256; x += 64)
        c.fillRect(x, 0, x + 2, 128, {0, 0, 0, 60});
    c.grime(kBodySide.x0, 100, kBodySide.x1, kBodySide.y1, 0.35f, 7);
    c.fillRect(kBodyTop.x0, kBodyTop.y0, kBodyTop.x1, kBodyTop.y1, l.body);
    c.grime(kBodyTop.x0, kBodyTop.y0, kBodyTop.x1, kBodyTop.y1, 0.15f, 11);
    c.fillRect(kChassis.x0, kChassis.y0, kChassis.x1, kChassis.y1, kDarkGrey);
    c.grime(kChassis.x0, kChassis.y0, kChassis.x1, kChassis.y1, 0.3f, 13);

    // Glass with a frame and a reflection.
    c.fillRect(kGlass.x0, kGlass.y0, kGlass.x1, kGlass.y1, kGlassBlue);
    c.gradient(kGlass.x0 + 10, kGlass.y0 + 10, kGlass.x1 - 10, kGlass.y0 + 60, {150, 180, 210, 140},
               {150, 180, 210, 0});
    c.frame(kGlass.x0, kGlass.y0, kGlass.x1, kGlass.y1, kBlack, 8);

    // Cab side: body paint below, a window above, a door outline.
    c.fillRect(kCabSide.x0, kCabSide.y0, kCabSide.x1, kCabSide.y1, l.body);
    c.fillRect(kCabSide.x0 + 12, kCabSide.y0 + 10, kCabSide.x1 - 12, kCabSide.y0 + 70, kGlassBlue);
    c.frame(kCabSide.x0 + 12, kCabSide.y0 + 10, kCabSide.x1 - 12, kCabSide.y0 + 70, kBlack, 4);
    c.frame(kCabSide.x0 + 30, kCabSide.y0 + 6, kCabSide.x1 - 30, kCabSide.y1 - 4, {0, 0, 0, 110}, 2);
    c.fillRect(kCabSide.x1 - 48, kCabSide.y0 + 96, kCabSide.x1 - 36, kCabSide.y0 + 100, kBlack);

    // Tyre tread with grooves; wheel side with tyre ring, rim and hub.
    c.fillRect(kTread.x0, kTread.y0, kTread.x1, kTread.y1, kBlack);
    for (int y = kTread.y0; y < kTread.y1; y += 8)
        c.fillRect(kTread.x0 + 8, y, kTread.x1 - 8, y + 3, {45, 45, 48});
    c.fillRect(kHub.x0, kHub.y0, kHub.x1, kHub.y1, kBlack);
    const float hx = (kHub.x0 + kHub.x1) / 2.0f, hy = (kHub.y0 + kHub.y1) / 2.0f;
    c.fillEllipse(hx, hy, 64, 64, {30, 30, 32});
    c.fillEllipse(hx, hy, 40, 40, kGrey);
    c.fillEllipse(hx, hy, 14, 14, kDarkGrey);
    for (int i = 0; i < 5; ++i) // wheel nuts
        c.fillEllipse(hx + 26 * ((i % 2) ? 0.8f : -0.6f) * (i < 3 ? 1 : -1), hy + 8.0f * (i - 2), 3, 3,
                      kBlack);

    c.stripes(kHazard.x0, kHazard.y0, kHazard.x1, kHazard.y1, kHazardYellow, kBlack, 32);

    c.fillRect(kHeadlamp.x0, kHeadlamp.y0, kHeadlamp.x1, kHeadlamp.y1, kBlack);
    c.fillEllipse(288, 288, 26, 26, {210, 210, 200});
    c.fillEllipse(284, 284, 10, 10, kWhiteLamp);
    c.fillRect(kBeacon.x0, kBeacon.y0, kBeacon.x1, kBeacon.y1, {200, 100, 10});
    c.gradient(kBeacon.x0 + 8, kBeacon.y0 + 4, kBeacon.x1 - 8, kBeacon.y1 - 4, {255, 190, 80}, kBeaconOrange);

    c.fillRect(kMetal.x0, kMetal.y0, kMetal.x1, kMetal.y1, kGrey);
    c.grime(kMetal.x0, kMetal.y0, kMetal.x1, kMetal.y1, 0.25f, 17);

    // Lettered panel: the band and the name in the stripe colour on the body paint.
    c.fillRect(kLettered.x0, kLettered.y0, kLettered.x1, kLettered.y1, l.body);
    const float scale = 5.0f;
    const int w = Canvas::textWidth(l.letter, scale);
    c.text((kLettered.x0 + kLettered.x1 - w) / 2, kLettered.y0 + 12, l.letter, scale, l.stripe);
    c.fillRect(kLettered.x0, kLettered.y1 - 12, kLettered.x1, kLettered.y1, l.stripe);

    // Control panel: dark plate, two round gauges, a row of switches, a warning label.
    c.fillRect(kPanel.x0, kPanel.y0, kPanel.x1, kPanel.y1, {60, 64, 70});
    c.frame(kPanel.x0, kPanel.y0, kPanel.x1, kPanel.y1, kBlack, 4);
    for (int i = 0; i < 2; ++i) {
        c.fillEllipse(290.0f + 60 * i, 424, 20, 20, {235, 235, 225});
        c.fillRect(288 + 60 * i, 410, 291 + 60 * i, 424, kBlack);
    }
    for (int i = 0; i < 5; ++i)
        c.fillRect(272 + 20 * i, 458, 282 + 20 * i, 472, i == 0 ? Colour{40, 200, 60} : Colour{200, 40, 30});
    c.text(272, 486, "400 Hz 28 V", 1.5f, kHazardYellow);

    c.fillRect(kCable.x0, kCable.y0, kCable.x1, kCable.y1, kBlack);
}

/// Night: everything unlit, then the lamps at full strength and the windows and panel glowing.
void PaintNight(Canvas& c) {
    c.darken(kNightPaint);
    c.fillRect(kGlass.x0 + 8, kGlass.y0 + 8, kGlass.x1 - 8, kGlass.y1 - 8, {120, 100, 70});
    c.fillRect(kCabSide.x0 + 16, kCabSide.y0 + 14, kCabSide.x1 - 16, kCabSide.y0 + 66, {120, 100, 70});
    c.fillEllipse(288, 288, 26, 26, kWhiteLamp);
    c.fillEllipse(288, 288, 14, 14, {255, 255, 255});
    c.gradient(kBeacon.x0 + 4, kBeacon.y0 + 2, kBeacon.x1 - 4, kBeacon.y1 - 2, {255, 220, 120},
               kBeaconOrange);
    for (int i = 0; i < 2; ++i)
        c.fillEllipse(290.0f + 60 * i, 424, 18, 18, kWarmGlow);
    c.fillRect(272, 458, 282, 472, {60, 255, 90});
}

} // namespace

AtlasSkin Skin() {
    AtlasSkin s;
    s.body = {Uv(kBodySide), Uv(kBodyTop), Uv(kBodySide)};
    s.chassis = Same(kChassis);
    s.cab = {Uv(kCabSide), Uv(kBodyTop), Uv(kGlass)};
    s.glass = Same(kGlass);
    s.hazard = {Uv(kHazard), Uv(kHazard), Uv(kHazard)};
    s.metal = Same(kMetal);
    s.lettered = {Uv(kLettered), Uv(kBodyTop), Uv(kBodySide)};
    s.headlamp = Same(kHeadlamp);
    s.beacon = Same(kBeacon);
    s.panel = {Uv(kPanel), Uv(kBodyTop), Uv(kPanel)};
    s.tread = Uv(kTread);
    s.hub = Uv(kHub);
    s.cable = Uv(kCable);
    return s;
}

Canvas PaintAtlas(const Livery& livery, bool night) {
    Canvas c(kAtlasSizePx, kAtlasSizePx, {128, 128, 128});
    PaintDay(c, livery);
    if (night) PaintNight(c);
    return c;
}

} // namespace assets
