// The world simhost draws of its own in the rendered 3-D scene: the apron and
// the user aircraft.
#pragma once

namespace simhost::detail {

struct HostCore;

/// Draws the apron around the aircraft's stand and a low-poly stand-in of the user aircraft at its
/// position and attitude, depth-tested and lit by the sun, in the current 3-D transform. GL state
/// is left as it was found.
void drawWorld(const HostCore& c);

} // namespace simhost::detail
