// Kalvora's own models, at real-world sizes in metres. The origin is the point
// that the plug-in places 1 m above the apron (so the ground is at y = -1).
// A tug's coupling (tow-bar head or cradle) is at the origin and its front
// faces +Z: the plug-in turns the model by the aircraft's heading, so its -Z
// points where the aircraft points and its +Z towards the nose gear.
#pragma once

#include "objects/ObjModel.h"

namespace assets {

constexpr float kGroundY = -1.0f; ///< the apron, metres below the model's origin

/// The tug's steering against the aircraft, degrees within +-11, positive clockwise seen from above;
/// the plug-in publishes it and lists it for its tug instance.
constexpr const char* kSteeringDataref = "halvern/kalvora/truck/steering_deg";
/// How far the tug's wheels have rolled, degrees [0, 360), growing while the tug drives to -Z.
constexpr const char* kWheelRotationDataref = "halvern/kalvora/truck/wheel_rotation_deg";
/// Tyre radius of both tugs, metres: the plug-in reckons the rolling value for this radius, so the
/// tyres neither slip nor skid on the apron.
constexpr float kTugTyreRadiusM = 0.4f;

/// A compact tow-bar tug: tow bar from the origin forward (-Z) to a 3.6 m tug; all four wheels roll,
/// the pair nearer the aircraft steers.
XObj8 TowBarTug();
/// A larger towbarless tug whose cradle (around the origin) takes the nose wheel; wheels as above.
XObj8 TowbarlessTug();
/// The ground power unit: a cart on four wheels with its cable to the aircraft's nose.
XObj8 GroundPowerUnit();

} // namespace assets
