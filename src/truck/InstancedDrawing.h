// The push-back truck on X-Plane 11.50 and later, where the 3-D drawing phases
// are never called: the truck's own model file becomes an X-Plane object
// instance, placed every frame from a flight loop from the very state the
// drawing callback uses (position, heading, the model's origin 1 m above the
// apron, visibility and the "draw truck" preference). On older hosts nothing
// here runs and the drawing callback draws the truck.
//
// Two published datarefs drive the truck model's animation and are handed to
// the instance: the wheels' rotation (from the distance the truck has moved)
// and the steering angle (the truck's steering offset).
#pragma once

#include "core/Instancing.h"

/// Number of the truck's animation datarefs.
constexpr int kTruckAnimationDataRefCount = 2;
/// Name of animation dataref `index`, or nullptr.
const char* TruckAnimationDataRefName(int index);

/// Publishes the animation datarefs (before any model that uses them is loaded).
void RegisterTruckAnimationDataRefs();
/// Withdraws the animation datarefs.
void UnregisterTruckAnimationDataRefs();
/// True when the host draws objects only as instances and provides the instancing functions.
bool UseTruckInstancing();
/// On such a host, starts the per-frame flight loop that keeps the truck's instance in place.
void StartTruckInstancing();
/// Stops the flight loop and releases the instance and its model.
void StopTruckInstancing();

/// Flight loop of StartTruckInstancing.
float TruckInstanceCallBack(float elapsedSinceLastCall, float elapsedSinceLastLoop, int counter,
                            void* refcon);
