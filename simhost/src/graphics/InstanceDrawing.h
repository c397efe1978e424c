// Object instances in the rendered 3-D scene.
#pragma once

namespace simhost::detail {

struct HostCore;

/// Draws every live, positioned instance with its model, in the current 3-D transform.
void drawInstances(HostCore& c);

} // namespace simhost::detail
