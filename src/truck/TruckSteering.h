// The aircraft geometry the truck needs: which gear tows, where that gear is
// in the host's local frame, and how the truck's heading follows the aircraft
// while it is pushed.
//
// Body frame of the gear datarefs: x right, y up, z aft (metres). PlaneToOGL
// turns a body vector by roll (phi), then pitch (theta), then heading (psi).
#pragma once

extern int k_KLV_Front_Gear; ///< nose-gear index in the gear arrays (0 from version 800, else 67)
extern int k_KLV_Rear_Gear;  ///< main-gear index (1 from version 800, else 68)
extern int gKLVGearIndex;    ///< the towing gear now

/// Gear indices from XPVersion, towing gear from PrefFrontWheel; returns the towing gear.
int SetGearIndex();
/// Tows by the nose gear from now on; returns its index.
int ForceFrontGearUsage();
/// Gear position in the body frame, metres (zero for an index the host does not have).
void GetGearPos(int gear, double* x, double* y, double* z);
/// Leg length and tyre radius of a gear, metres.
void GetGearGeom(int gear, double* legLen, double* tyreRadius);
/// Rotates a body-frame vector into the local frame (angles in degrees).
void PlaneToOGL(double x, double y, double z, double phi, double theta, double psi, double* outX,
                double* outY, double* outZ);
/// Gear position in the local frame, metres: aircraft position plus the rotated body position.
void GearPostionOGL(int gear, double* x, double* y, double* z);
/// Truck heading := aircraft heading (nose gear) or heading - 180 (main gear), not normalised.
void ApplyTruckCurrentHeading();
/// One steering step: 0 straight, 1 / -2 and 2 / -1 the two turn senses; other values do nothing.
void CalcTruckSteering(int turn);
