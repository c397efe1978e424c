// Moving the parked aircraft backwards along its heading, and turning it, a
// fixed step per frame (speeds are per frame, not per second, by design),
// until the end point of the straight leg or the end heading of the turn.
//
//            heading psi
//                ^            a push of d metres moves the aircraft to
//                |            (x - d*cos(a), z + d*sin(a)), a = (90 - psi) in radians,
//           [aircraft]        i.e. d metres towards its tail; a turn adds +/-0.15 degrees
//                |            to psi every frame, so the path is an arc of radius
//                v  push      step / (0.15 degrees in radians), 38 m at 0.1 m per frame
#pragma once

/// Move directions (gKLVPlaneMoveDirection).
enum { kMoveNone = 0, kMoveForward = 1, kMoveBackward = 2 };
/// Rotate directions (gKLVPlaneRotateDir): tail left turns the heading up, tail right down.
enum { kRotateStraight = 0, kRotateTailLeft = 1, kRotateTailRight = 2 };
/// Phases of a manoeuvre (gKLVautoPbPhase).
enum { kPhaseNone = 0, kPhaseStraightLeg = 1, kPhaseTurn = 2 };

extern bool gKLVisPlaneMoving;     ///< the aircraft is being moved (set by the truck once hooked up)
extern int gKLVPlaneMoveDirection; ///< kMove*
extern int gKLVPlaneRotateDir;     ///< kRotate*
extern int gKLVautoPbPhase;        ///< kPhase*
extern double gKLVfinalx;          ///< end point of the straight leg, metres, local frame
extern double gKLVfinalz;          ///< metres, local frame
extern int gKLVfinalPsi;           ///< end heading, whole degrees
extern int gKLVPbLength;           ///< length of the straight leg, metres
extern float gKLVRotationRate;     ///< computed with the push length; not used by the turn
extern double startx;              ///< cleared by the reset only
extern double startz;              ///< cleared by the reset only

/// Flight-loop callback run every frame: one push step while the aircraft is moving. Returns -1.
float PlaneMoveCallBack(float elapsedSinceLastCall, float elapsedSinceLastLoop, int counter, void* refcon);

/// The point d metres behind the aircraft (towards its tail) along its current heading.
void CalcPBxz(double d, double* x, double* z);
/// The same with an integer length in metres (fills the end point of the straight leg).
void CalcFinalxz(int length, double* fx, double* fz);
/// End heading of a turn from the current heading: 1 tail left (+90), 2 tail right (-90), else unchanged.
void CalcFinalPsi(int rotateDir, int* finalPsi);
/// Quadrant 1..4 of a heading, from the signs of cos and sin of (psi - 90).
int DetermineQuadrant(float psi);
/// True when x has passed gKLVfinalx in the direction the quadrant of psi implies.
bool EndReached(double x, float psi);
/// Push length (metres, 3/4 of the aircraft length) and rotation rate from the aircraft size.
void SetPBlenght(int* length, float* rate);
/// Aircraft size datarefs truncated to whole metres.
void RetrievePlaneBoundingBox(int* sizeX, int* sizeZ);
/// Apron elevation under the towing gear, metres: gear y minus leg length and tyre radius.
void GetApronElev(double* elevation);
/// Stops the motion and clears every manoeuvre field.
void ResetPlaneMovementParam();
/// Rotation rate adjusted to the angle between two headings (not used by the push).
float AdjustRotationRate(float headingA, float headingB, float rate);
