// Kalvora's own pictures: the About window's logo and the free-move panel's icon.
#pragma once

#include "Canvas.h"

namespace assets {

constexpr int kLogoWidthPx = 361, kLogoHeightPx = 246; ///< the About window's picture control
constexpr int kIconWidthPx = 84, kIconHeightPx = 64;   ///< the free-move panel's icon

/// The logo: an apron at dusk, an aircraft nose pushed back by a tug, and the name.
Canvas Logo();
/// The icon: a tug seen from the side, on a transparent background.
Canvas TruckIcon();

} // namespace assets
