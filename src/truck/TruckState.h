// Where the push-back truck is: its reference point in the host's local frame
// and its heading, shared by the truck sequence, its steering and the
// published truck datarefs (which read and write these very values).
#pragma once

extern double gKLVTruckX;    ///< metres, local frame
extern double gKLVTruckY;    ///< metres, local frame (apron elevation, refreshed at every draw)
extern double gKLVTruckZ;    ///< metres, local frame
extern float myTruckHeading; ///< degrees true, same convention as the aircraft's psi; not normalised
extern float theOffset;      ///< steering offset against the aircraft, degrees, kept within [-11, 11]

/// Accessors of "halvern/kalvora/truck/position_ogl_x/y/z" (metres) and ".../position_hdg" (degrees).
double GetTruckPosX(void* refcon);
double GetTruckPosY(void* refcon);
double GetTruckPosZ(void* refcon);
float GetTruckHdg(void* refcon);
void SetTruckPosX(void* refcon, double value);
void SetTruckPosY(void* refcon, double value);
void SetTruckPosZ(void* refcon, double value);
void SetTruckHdg(void* refcon, float value);
