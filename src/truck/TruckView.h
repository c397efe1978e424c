// The truck view: a hot key puts the camera in the truck driver's seat,
// looking at the aircraft, until the user changes the view.
#pragma once

#include "XPLMCamera.h"

/// Hot-key callback: switches to the outside spot view, then takes the camera until the view changes.
void TruckViewHKCallBack(void* refcon);
/// The driver's seat: 3.5 m ahead of the truck's reference point (x, z) along heading (degrees).
void DriverSeat(double x, double z, float heading, double* seatX, double* seatZ);
/// Camera controller: eye 1.75 m above the truck's seat, looking at the aircraft. Always returns 1.
int TruckViewControler(XPLMCameraPosition_t* camera, int isLosingControl, void* refcon);
