#include "Pictures.h"

namespace assets {

namespace {

constexpr Colour kTugYellow{250, 196, 30};
constexpr Colour kTugDark{40, 40, 44};
constexpr Colour kGlass{70, 110, 150};

/// A tug in side view, facing right, `w` pixels long with its wheels on `groundY`.
void SideTug(Canvas& c, int x, int groundY, int w) {
    const float u = w / 36.0f; // one unit = 1/36 of the tug's length
    auto X = [&](float v) { return x + static_cast<int>(v * u); };
    auto Y = [&](float v) { return groundY - static_cast<int>(v * u); };
    c.fillRect(X(0), Y(9), X(36), Y(3), kTugYellow);          // body
    c.fillRect(X(0), Y(4), X(36), Y(2.5f), kTugDark);         // chassis
    c.fillRect(X(2), Y(14), X(14), Y(9), kTugYellow);         // engine cover
    c.fillRect(X(14), Y(22), X(26), Y(9), kTugYellow);        // cab
    c.fillRect(X(15.5f), Y(20.5f), X(24.5f), Y(13), kGlass);  // window
    c.fillRect(X(13), Y(23), X(27), Y(22), kTugDark);         // roof
    c.fillRect(X(19), Y(25), X(21), Y(23), {255, 140, 10});   // beacon
    c.fillRect(X(34), Y(8), X(36), Y(6.5f), {255, 250, 220}); // headlamp
    for (float cx : {7.0f, 29.0f}) {
        c.fillEllipse(static_cast<float>(X(cx)), static_cast<float>(Y(4.5f)), 4.5f * u, 4.5f * u, kTugDark);
        c.fillEllipse(static_cast<float>(X(cx)), static_cast<float>(Y(4.5f)), 2.0f * u, 2.0f * u,
                      {150, 150, 155});
    }
}

} // namespace

Canvas Logo() {
    Canvas c(kLogoWidthPx, kLogoHeightPx, {0, 0, 0});
    c.gradient(0, 0, kLogoWidthPx, 170, {16, 32, 72}, {210, 120, 70});           // dusk sky
    c.gradient(0, 170, kLogoWidthPx, kLogoHeightPx, {70, 72, 78}, {40, 42, 46}); // apron
    for (int x = 0; x < kLogoWidthPx; x += 40)                                   // taxi-line dashes
        c.fillRect(x, 205, x + 24, 209, {240, 200, 40});

    // The aircraft's nose coming in from the right, nose gear on the apron.
    c.fillEllipse(380, 120, 170, 48, {235, 238, 242});
    c.fillRect(230, 112, 361, 118, {30, 80, 160});  // cheat line
    c.fillEllipse(228, 104, 14, 9, {40, 60, 80});   // cockpit window
    c.fillRect(250, 150, 256, 186, {90, 90, 96});   // nose-gear leg
    c.fillEllipse(253, 186, 11, 11, {25, 25, 28});  // nose wheel
    c.fillRect(176, 178, 253, 182, {240, 200, 40}); // tow bar
    SideTug(c, 70, 196, 110);

    const char* name = "KALVORA";
    const float big = 6.0f;
    c.text(14 + 2, 18 + 2, name, big, {0, 0, 0, 150});
    c.text(14, 18, name, big, {255, 255, 255});
    c.text(16, 76, "push-back tug & ground power", 2.0f, {255, 220, 150});
    return c;
}

Canvas TruckIcon() {
    Canvas c(kIconWidthPx, kIconHeightPx, {0, 0, 0, 0});
    SideTug(c, 4, 58, 76);
    return c;
}

} // namespace assets
