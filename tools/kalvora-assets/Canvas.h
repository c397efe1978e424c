// A picture painted by code: RGBA pixels, row 0 at the top (as stored in a PNG).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace assets {

/// One colour, 0..255 per channel.
struct Colour {
    uint8_t r, g, b, a = 255;
};

/// An RGBA picture with simple painting operations; coordinates are pixels, y down.
class Canvas {
public:
    Canvas(int width, int height, Colour fill);
    int width() const { return width_; }
    int height() const { return height_; }
    Colour get(int x, int y) const;
    /// Writes one pixel, blended by the colour's alpha; outside pixels are ignored.
    void blend(int x, int y, Colour c);
    /// Fills [x0, x1) x [y0, y1).
    void fillRect(int x0, int y0, int x1, int y1, Colour c);
    /// Vertical gradient from `top` to `bottom` over [x0, x1) x [y0, y1).
    void gradient(int x0, int y0, int x1, int y1, Colour top, Colour bottom);
    /// Filled ellipse centred at (cx, cy) with radii rx, ry (pixels), edges antialiased.
    void fillEllipse(float cx, float cy, float rx, float ry, Colour c);
    /// Diagonal stripes of two colours, `period` pixels wide each pair.
    void stripes(int x0, int y0, int x1, int y1, Colour a, Colour b, int period);
    /// A one-pixel frame just inside the rectangle, `thickness` pixels.
    void frame(int x0, int y0, int x1, int y1, Colour c, int thickness);
    /// Deterministic grime: darkens pixels by up to `amount` (0..1) with a fixed pseudo-random pattern.
    void grime(int x0, int y0, int x1, int y1, float amount, uint32_t seed);
    /// Text in the built-in stroke font, `scale` pixels per font unit, top-left at (x, y).
    void text(int x, int y, const char* s, float scale, Colour c);
    /// Width of `s` in pixels at `scale`.
    static int textWidth(const char* s, float scale);
    /// Every pixel multiplied by `factor` (colour only), as the picture looks unlit at night.
    void darken(float factor);
    /// Writes the picture as an RGBA PNG; false when the file cannot be written.
    bool writePng(const std::string& path) const;

private:
    int width_, height_;
    std::vector<uint8_t> px_; ///< width * height * 4 bytes, top row first
};

} // namespace assets
