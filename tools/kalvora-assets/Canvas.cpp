#include "Canvas.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBIW_WINDOWS_UTF8 // file names are UTF-8 (on Windows opened with _wfopen)
#include <stb/stb_image_write.h>
#include <stb/stb_easy_font.h>

#include <algorithm>
#include <cmath>

namespace assets {

namespace {
constexpr int kEasyFontBufferBytes = 64 * 1024; ///< room for ~270 characters of quads
constexpr int kEasyFontVertexBytes = 16;        ///< x, y, z floats and 4 colour bytes
} // namespace

Canvas::Canvas(int width, int height, Colour fill) : width_(width), height_(height) {
    px_.resize(static_cast<size_t>(width) * height * 4);
    for (size_t i = 0; i < px_.size(); i += 4) {
        px_[i] = fill.r;
        px_[i + 1] = fill.g;
        px_[i + 2] = fill.b;
        px_[i + 3] = fill.a;
    }
}

Colour Canvas::get(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return {0, 0, 0, 0};
    const uint8_t* p = &px_[(static_cast<size_t>(y) * width_ + x) * 4];
    return {p[0], p[1], p[2], p[3]};
}

void Canvas::blend(int x, int y, Colour c) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
    uint8_t* p = &px_[(static_cast<size_t>(y) * width_ + x) * 4];
    const float a = c.a / 255.0f;
    p[0] = static_cast<uint8_t>(std::lround(c.r * a + p[0] * (1 - a)));
    p[1] = static_cast<uint8_t>(std::lround(c.g * a + p[1] * (1 - a)));
    p[2] = static_cast<uint8_t>(std::lround(c.b * a + p[2] * (1 - a)));
    p[3] = static_cast<uint8_t>(std::lround(255 * a + p[3] * (1 - a)));
}

void Canvas::fillRect(int x0, int y0, int x1, int y1, Colour c) {
    for (int y = std::max(0, y0); y < std::min(height_, y1); ++y)
        for (int x = std::max(0, x0); x < std::min(width_, x1); ++x)
            blend(x, y, c);
}

void Canvas::gradient(int x0, int y0, int x1, int y1, Colour top, Colour bottom) {
    const int h = std::max(1, y1 - y0 - 1);
    for (int y = y0; y < y1; ++y) {
        const float f = static_cast<float>(y - y0) / h;
        auto mix = [f](uint8_t a, uint8_t b) { return static_cast<uint8_t>(std::lround(a + (b - a) * f)); };
        fillRect(x0, y, x1, y + 1,
                 {mix(top.r, bottom.r), mix(top.g, bottom.g), mix(top.b, bottom.b), mix(top.a, bottom.a)});
    }
}

void Canvas::fillEllipse(float cx, float cy, float rx, float ry, Colour c) {
    for (int y = static_cast<int>(cy - ry - 1); y <= static_cast<int>(cy + ry + 1); ++y)
        for (int x = static_cast<int>(cx - rx - 1); x <= static_cast<int>(cx + rx + 1); ++x) {
            const float dx = (x + 0.5f - cx) / rx, dy = (y + 0.5f - cy) / ry;
            // Distance outside the rim in pixels, roughly; a one-pixel soft edge.
            const float edge = (1.0f - std::sqrt(dx * dx + dy * dy)) * std::min(rx, ry);
            if (edge <= 0) continue;
            Colour e = c;
            e.a = static_cast<uint8_t>(c.a * std::min(1.0f, edge));
            blend(x, y, e);
        }
}

void Canvas::stripes(int x0, int y0, int x1, int y1, Colour a, Colour b, int period) {
    for (int y = std::max(0, y0); y < std::min(height_, y1); ++y)
        for (int x = std::max(0, x0); x < std::min(width_, x1); ++x)
            blend(x, y, ((x + y) % period) < period / 2 ? a : b);
}

void Canvas::frame(int x0, int y0, int x1, int y1, Colour c, int t) {
    fillRect(x0, y0, x1, y0 + t, c);
    fillRect(x0, y1 - t, x1, y1, c);
    fillRect(x0, y0, x0 + t, y1, c);
    fillRect(x1 - t, y0, x1, y1, c);
}

void Canvas::grime(int x0, int y0, int x1, int y1, float amount, uint32_t seed) {
    uint32_t s = seed;
    for (int y = std::max(0, y0); y < std::min(height_, y1); ++y)
        for (int x = std::max(0, x0); x < std::min(width_, x1); ++x) {
            s = s * 1664525u + 1013904223u; // the classic linear congruential step
            const float k = 1.0f - amount * ((s >> 24) / 255.0f);
            uint8_t* p = &px_[(static_cast<size_t>(y) * width_ + x) * 4];
            for (int i = 0; i < 3; ++i)
                p[i] = static_cast<uint8_t>(p[i] * k);
        }
}

void Canvas::text(int x, int y, const char* s, float scale, Colour c) {
    static char buffer[kEasyFontBufferBytes];
    const int quads = stb_easy_font_print(0, 0, const_cast<char*>(s), nullptr, buffer, sizeof buffer);
    for (int q = 0; q < quads; ++q) {
        float minX = 1e9f, minY = 1e9f, maxX = -1e9f, maxY = -1e9f;
        for (int v = 0; v < 4; ++v) {
            const float* p = reinterpret_cast<const float*>(buffer + (q * 4 + v) * kEasyFontVertexBytes);
            minX = std::min(minX, p[0]);
            maxX = std::max(maxX, p[0]);
            minY = std::min(minY, p[1]);
            maxY = std::max(maxY, p[1]);
        }
        fillRect(x + static_cast<int>(std::lround(minX * scale)),
                 y + static_cast<int>(std::lround(minY * scale)),
                 x + static_cast<int>(std::lround(maxX * scale)),
                 y + static_cast<int>(std::lround(maxY * scale)), c);
    }
}

int Canvas::textWidth(const char* s, float scale) {
    return static_cast<int>(std::lround(stb_easy_font_width(const_cast<char*>(s)) * scale));
}

void Canvas::darken(float factor) {
    for (size_t i = 0; i < px_.size(); i += 4)
        for (int k = 0; k < 3; ++k)
            px_[i + k] = static_cast<uint8_t>(px_[i + k] * factor);
}

bool Canvas::writePng(const std::string& path) const {
    return stbi_write_png(path.c_str(), width_, height_, 4, px_.data(), width_ * 4) != 0;
}

} // namespace assets
