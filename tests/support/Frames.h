// Frames rendered by simhost in tests: a camera held where the test puts it, a
// frame grabbed (and kept as a PNG to look at), its pixels compared, counted
// and told apart from the sky, where a point of the world lands in it, and the pictures of widgets
// written for the documentation.
#pragma once

#include "XPLMCamera.h"
#include "graphics/GraphicsHooks.h"
#include "simhost/Simhost.h"
#include "simhost/Widgets.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace kalvora_test {

constexpr double kHalfFovDeg = 22.5; ///< half of simhost's vertical field of view at zoom 1, degrees
constexpr double kRadPerDeg = M_PI / 180.0;
constexpr int kSkyTolerance = 40; ///< colour difference (0..255 a channel) that tells an object from the sky

/// A pixel of a frame (packed 0xRRGGBBAA) as its colour.
inline Rgb ColorOf(uint32_t pixel) {
    return {int(pixel >> 24), int((pixel >> 16) & 0xFF), int((pixel >> 8) & 0xFF)};
}

/// Whether two colours differ by more than tolerance on some channel.
inline bool Differ(Rgb a, Rgb b, int tolerance) {
    return std::abs(a.r - b.r) > tolerance || std::abs(a.g - b.g) > tolerance ||
           std::abs(a.b - b.b) > tolerance;
}

/// A camera at (x, y, z) metres looking along `headingDeg` (clockwise from -z) tilted up by `pitchDeg`.
inline XPLMCameraPosition_t CameraAt(double x, double y, double z, double pitchDeg, double headingDeg) {
    XPLMCameraPosition_t c{};
    c.x = static_cast<float>(x);
    c.y = static_cast<float>(y);
    c.z = static_cast<float>(z);
    c.pitch = static_cast<float>(pitchDeg);
    c.heading = static_cast<float>(headingDeg);
    c.zoom = 1;
    return c;
}

/// A camera at the eye point looking at the target point (metres).
inline XPLMCameraPosition_t LookAt(double ex, double ey, double ez, double tx, double ty, double tz) {
    const double dx = tx - ex, dy = ty - ey, dz = tz - ez;
    const double heading = std::atan2(dx, -dz) / kRadPerDeg; // clockwise from -z
    const double pitch = std::atan2(dy, std::sqrt(dx * dx + dz * dz)) / kRadPerDeg;
    return CameraAt(ex, ey, ez, pitch, heading < 0 ? heading + 360 : heading);
}

/// An in-process plug-in ("test.camera") that holds the camera at *camera from now on: the test may move
/// it between frames. Makes it the caller of direct API calls; returns its ID.
inline int HoldCamera(simhost::Host& host, XPLMCameraPosition_t* camera) {
    simhost::InProcessPlugin holder;
    holder.name = holder.signature = "test.camera";
    const int id = host.addPlugin(holder);
    host.setDirectCaller(id);
    XPLMControlCamera(
        xplm_ControlCameraForever,
        [](XPLMCameraPosition_t* out, int losingControl, void* refcon) {
            if (losingControl || !out) return 0;
            *out = *static_cast<XPLMCameraPosition_t*>(refcon);
            return 1;
        },
        camera);
    return id;
}

/// Runs one frame and returns its pixels. With `keepAs` the picture is also written there (a path under
/// the build folder, "gpu-renders/connected.png") to look at.
inline simhost::gfx::Image GrabFrame(simhost::Host& host, const std::string& keepAs = "") {
    host.runFrames(1);
    simhost::gfx::Image image;
    EXPECT_TRUE(simhost::gfx::readFrame(image));
    if (!keepAs.empty()) {
        const std::filesystem::path file = std::filesystem::path(KALVORA_BINARY_DIR) / keepAs;
        std::filesystem::create_directories(file.parent_path());
        simhost::gfx::writePng(image, file.string());
    }
    return image;
}

/// Writes the picture of a widget's rectangle for the documentation, when the host draws, to
/// $KALVORA_SCREENSHOT_DIR or else to `folder` in the build folder.
inline void DocumentationPicture(simhost::Host& host, void* widget, const std::string& folder,
                                 const std::string& name) {
    if (!host.renderingAvailable()) return;
    const char* env = std::getenv("KALVORA_SCREENSHOT_DIR");
    const std::filesystem::path out =
        env && *env ? std::filesystem::path(env) : std::filesystem::path(KALVORA_BINARY_DIR) / folder;
    std::filesystem::create_directories(out);
    std::string why;
    EXPECT_TRUE(simhost::screenshotWidget(host, widget, (out / name).string(), &why)) << name << ": " << why;
}

/// Pixels of a frame picked out by a test: how many, their centre and their mean colour.
struct Blob {
    int count = 0;              ///< pixels
    double cx = 0, cy = 0;      ///< their centre, pixels (y from the bottom)
    double r = 0, g = 0, b = 0; ///< their mean colour, 0..255
};

/// The pixels of `image` for which picked(x, y) holds.
template <typename Picked> Blob PixelsWhere(const simhost::gfx::Image& image, Picked picked) {
    Blob b;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            if (!picked(x, y)) continue;
            const Rgb c = ColorOf(image.at(x, y));
            ++b.count;
            b.cx += x;
            b.cy += y;
            b.r += c.r;
            b.g += c.g;
            b.b += c.b;
        }
    if (b.count) {
        b.cx /= b.count;
        b.cy /= b.count;
        b.r /= b.count;
        b.g /= b.count;
        b.b /= b.count;
    }
    return b;
}

/// Where `image` differs from `reference` (same size) by more than `tolerance` on some channel.
inline Blob Difference(const simhost::gfx::Image& image, const simhost::gfx::Image& reference,
                       int tolerance = 24) {
    return PixelsWhere(image, [&](int x, int y) {
        return Differ(ColorOf(image.at(x, y)), ColorOf(reference.at(x, y)), tolerance);
    });
}

/// Whether the pixel at (x, y) is not the sky: the colour of the frame's corner pixel (1, 1), where
/// nothing is drawn in these tests.
inline bool NotSkyAt(const simhost::gfx::Image& image, int x, int y) {
    return Differ(ColorOf(image.at(x, y)), ColorOf(image.at(1, 1)), kSkyTolerance);
}

/// Every pixel that is not the sky.
inline Blob NotSky(const simhost::gfx::Image& image) {
    return PixelsWhere(image, [&](int x, int y) { return NotSkyAt(image, x, y); });
}

/// A position in a frame, pixels, y from the bottom.
struct Pixel {
    int x = -1, y = -1;
};

/// Where a point of the local frame (metres) lands in a width x height frame seen from `camera` (roll 0),
/// as simhost's renderer projects it; (-1, -1) when it is behind the camera.
inline Pixel Project(const XPLMCameraPosition_t& camera, double x, double y, double z, int width,
                     int height) {
    const double dx = x - camera.x, dy = y - camera.y, dz = z - camera.z;
    const double h = camera.heading * kRadPerDeg, p = camera.pitch * kRadPerDeg;
    const double x1 = std::cos(h) * dx + std::sin(h) * dz, z1 = -std::sin(h) * dx + std::cos(h) * dz;
    const double y2 = std::cos(p) * dy + std::sin(p) * z1, z2 = -std::sin(p) * dy + std::cos(p) * z1;
    if (z2 >= 0) return {};
    const double t = std::tan(kHalfFovDeg / (camera.zoom > 0 ? camera.zoom : 1) * kRadPerDeg);
    const double nx = x1 / -z2 / (t * width / height), ny = y2 / -z2 / t;
    return {static_cast<int>((nx + 1) / 2 * width), static_cast<int>((ny + 1) / 2 * height)};
}

} // namespace kalvora_test
