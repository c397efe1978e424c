// The seam between simhost's frame loop and its renderer.
//
// The frame loop (world, camera, draw-callback dispatch) calls these hooks;
// the renderer (EGL context, projection, screenshots) implements them. With
// rendering off, available() is false and the frame loop calls no draw
// callback at all.
#pragma once

#include <string>

namespace simhost::gfx {

/// Where the 3-D camera is, in the local OpenGL frame (metres, degrees).
struct View {
    double x = 0, y = 0, z = 0;               ///< eye position, metres
    float pitch = 0, heading = 0, roll = 0;   ///< degrees; heading clockwise from -Z (north)
    float zoom = 1;                           ///< 1 = normal field of view
    float fovVerticalDeg = 45;                ///< vertical field of view at zoom 1, degrees
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

} // namespace simhost::gfx
