// Navigation headings and distances, magnetic variation, and the precise clock.
//
// Angles are degrees, latitudes and longitudes degrees north/east positive, distances
// in nautical miles (great circle) or the caller's unit (flat and 3-D). The magnetic
// conversions and GetTimePrecise read the simulator and live in kalvora_utils_host;
// the rest is host-free.
#pragma once

namespace HV_MathUtils {

/// Initial great-circle course from point 1 to point 2, degrees rounded to an integer.
int Math_GetHeading(float lat1, float lon1, float lat2, float lon2);
/// Great-circle distance in nautical miles (minutes of arc).
float Math_GetDistance(float lat1, float lon1, float lat2, float lon2);
/// Euclidean distance between two points.
float Math_Get3DDistance(float x1, float y1, float z1, float x2, float y2, float z2);
/// Heading from point 1 to point 2 in the simulator's local x/z plane, in (-360, 0], not wrapped.
float Math_GetFlatHeading(double x1, double z1, double x2, double z2);

/// Wraps once: -360 if h >= 360, then +360 if below 0 (725 gives 365).
float UTIL_Heading0_2_360(float h);

/// True heading minus the given derivation, wrapped once.
float UTIL_MagneticFromTrueWith(float trueHeading, float derivation);
/// Magnetic heading minus the derivation, a negative derivation first replaced by the absolute
/// value of its integer part (-2.7 counts as 2), wrapped once. Not the inverse of the above.
float UTIL_TrueFromMagneticWith(float magneticHeading, float derivation);

/// Magnetic minus true heading of the user's aircraft, degrees (host datarefs; 0 when missing).
float UTIL_HeadingGetMagneticDerivation();
/// UTIL_MagneticFromTrueWith with the user's aircraft's derivation.
float UTIL_HeadingGetMagneticFromTrue(float trueHeading);
/// UTIL_TrueFromMagneticWith with the user's aircraft's derivation.
float UTIL_HeadingGetTrueFromMagnetic(float magneticHeading);

} // namespace HV_MathUtils

/// Seconds since the first call (which returns 0), from the simulator's elapsed-time clock. Never runs
/// backwards: when the host's clock starts again (a new host in the same process), it goes on from
/// where it stood, so timers set on the earlier host still run out.
double GetTimePrecise();
