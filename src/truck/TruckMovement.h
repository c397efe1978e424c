// The push-back truck's sequence, run by one flight loop and a phase counter:
//
//   -2 idle --TruckInitialisation--> 0 placed 15 m from the towing gear
//    0 --3 s--> 1 approach in steps, then wait for the parking brake to be released
//    1 --brake 0 at the gear--> 2 glued to the gear while the aircraft is pushed
//    2 --push over--> 3 after 1.5 s turn away 0.4 degrees a step and drive off --> -2
//
//          15 m                       nose gear: the truck stands ahead of the nose,
//   [truck] <---- o [aircraft  ]      facing the aircraft's heading; main gear: behind
//                 ^ towing gear       the main gear, facing the opposite way.
//
// Times are GetTimePrecise seconds in single precision; a timer has run out when now
// is greater than it. Distances are metres in the host's local frame, headings degrees.
#pragma once

/// Phases of the truck sequence (gKLVTruckMovementPhase).
enum {
    kTruckIdle = -2,
    kTruckReserved = -1, ///< never set; nothing is drawn in it
    kTruckPlaced = 0,
    kTruckApproach = 1,
    kTruckPushing = 2,
    kTruckLeaving = 3
};

extern int gKLVTruckMovementPhase; ///< kTruck*
extern float theCurrentSpeed;      ///< seconds between two truck steps
extern float theLastTime;          ///< no step before this time
extern float theTruckGearInTimer;  ///< hook-up checks start after this time
extern float theTruckGearOutTimer; ///< the truck drives away after this time
extern float theBreakMessTempo;    ///< the brake question is not repeated before this time
extern int wasBreakSet;            ///< 1 once the crew had to ask for the brake; no reset clears it, so later
                                   ///< push-backs thank the pilot (message 4) even when they did not ask
extern float TruckFinalHdg;        ///< heading the truck turns to when it drives away, degrees
extern float TruckInitialHdg;      ///< heading computed with the park position, degrees
extern int theSwitch;              ///< cleared with the truck; no other use

/// Places the truck 15 m from the towing gear, shows it and starts the sequence (phase 0).
void TruckInitialisation();
/// Hides the truck, clears its steering, goes idle and registers the truck flight loop again (1 s).
void ResetTruckParam();
/// Flight loop of the sequence: at most one truck step per call; 3.0 after placing, 0.0 at the end.
float TruckMovementCallBack(float elapsedSinceLastCall, float elapsedSinceLastLoop, int counter,
                            void* refcon);
/// Draw callback (aircraft phase, after the host): draws the visible truck on the apron. Returns 1.
int DrawTruckCallBack(int phase, int isBefore, void* refcon);

/// Park position 15 m from the towing gear along the aircraft's axis, and the truck's heading there.
void CalcTruckParkPos(double* x, double* z, float* hdg);
/// One step of `step` metres along the aircraft's axis (positive towards the nose gear from ahead).
void TruckApproach(double x, double z, double step, double* outX, double* outZ);
/// Turns the truck 0.4 degrees (rotateDir 1: right, else left), then steps forward; 0 once aligned.
int TruckAway(double x, double z, double step, int rotateDir, double* outX, double* outZ);
/// True when the truck has come level with or passed the gear on a 0.1 m grid.
bool TruckEndReached(double truckX, double truckZ, double gearX, double gearZ);
/// Heading in [0, 360) the truck drives away on: the reverse of the aircraft's (nose gear) or the same.
float CalcTruckFinalHdg();
/// Flat distance between two points, metres.
float CalcDist(double x1, double z1, double x2, double z2);
