// The frame and title bar simhost draws around a decorated window
// (xplm_WindowDecorationRoundRectangle), as X-Plane does.
#pragma once

#include <string>

namespace simhost::gfx {

/// Height of the title bar above a decorated window's top edge, boxels.
constexpr int kTitleBarPx = 20;
/// Width of the frame around a decorated window's other edges, boxels.
constexpr int kFramePx = 3;

/// Draws the frame around the window bounds (screen pixels) and the title bar with its title, under the
/// 2-D setup. The frontmost window's title bar is lighter.
void drawWindowFrame(int left, int top, int right, int bottom, const std::string& title, bool front);

} // namespace simhost::gfx
