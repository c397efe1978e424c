// The seam between simhost's frame loop and its renderer.
//
// The frame loop (world, camera, draw-callback dispatch) calls these hooks;
// the renderer (EGL context, projection, screenshots) implements them. With
// rendering off, available() is false and the frame loop calls no draw
// callback at all.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace simhost::gfx {

/// Where the 3-D camera is, in the local OpenGL frame (metres, degrees).
struct View {
    double x = 0, y = 0, z = 0;             ///< eye position, metres
    float pitch = 0, heading = 0, roll = 0; ///< degrees; heading clockwise from -Z (north)
    float zoom = 1;                         ///< 1 = normal field of view
    float fovVerticalDeg = 45;              ///< vertical field of view at zoom 1, degrees
};

/// Turns rendering on or off; creating the GL context happens on the first begin().
void setEnabled(bool on);
/// True when rendering is on and a GL context could be made current.
bool available();
/// Why rendering is not available (empty when it is).
std::string unavailableReason();

/// Starts a frame of width x height pixels: makes the context current, binds
/// the off-screen framebuffer, clears it. False when rendering is unavailable.
bool beginFrame(int widthPx, int heightPx);
/// Sets the projection and model-view for the 3-D phases from a camera.
void setup3D(const View& view);
/// Sets pixel coordinates (origin bottom-left) for the 2-D phases and windows.
void setup2D();
/// Finishes the frame (glFinish); the pixels stay readable until the next beginFrame().
void endFrame();
/// Writes the last finished frame to a PNG file. False (and a reason) on failure.
bool writePng(const std::string& path, std::string* why = nullptr);

/// An RGBA picture, rows stored top row first (as in a PNG file).
struct Image {
    int width = 0, height = 0; ///< pixels
    std::vector<uint8_t> rgba; ///< width * height * 4 bytes
    /// The pixel at (x, y) with y counted from the BOTTOM (GL/screen convention); 0 outside.
    uint32_t at(int x, int y) const;
};
/// Reads the framebuffer region left..right-1 x bottom..top-1 (screen pixels,
/// origin bottom-left, clamped to the frame). False when nothing was rendered.
bool readPixels(int left, int top, int right, int bottom, Image& out);
/// Reads the whole last frame.
bool readFrame(Image& out);
/// Writes a picture to a PNG file. False (and a reason) on failure.
bool writePng(const Image& image, const std::string& path, std::string* why = nullptr);
/// Makes the GL context current outside a frame (texture uploads at plug-in
/// start). False when rendering is off or unavailable.
bool makeCurrent();
/// Size of the last frame begun, pixels (the default screen when none was).
void frameSize(int& widthPx, int& heightPx);

/// The local frame's reference point (degrees), origin of XPLMWorldToLocal.
/// The world sets it when it places the aircraft; default 0/0.
void setReferencePoint(double latitudeDeg, double longitudeDeg);
/// The reference point, degrees.
void referencePoint(double& latitudeDeg, double& longitudeDeg);

} // namespace simhost::gfx
