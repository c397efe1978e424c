// The datarefs Kalvora publishes under "halvern/kalvora/" for other plug-ins
// and cockpit panels: one table of name, type and accessors, registered in the
// table's order and unregistered in the same order.
#pragma once

#include "XPLMDataAccess.h"

extern XPLMDataRef gKLVStatus;        ///< "halvern/kalvora/PBstatus", int
extern XPLMDataRef gKLVGPUStatus;     ///< "halvern/kalvora/GPUstatus", int
extern XPLMDataRef gTruckPositionX;   ///< truck x, metres, double
extern XPLMDataRef gTruckPositionY;   ///< truck y, metres, double
extern XPLMDataRef gTruckPositionZ;   ///< truck z, metres, double
extern XPLMDataRef gTruckPositionHdg; ///< truck heading, degrees, float
extern XPLMDataRef gGPUPositionX;     ///< GPU x, metres, float
extern XPLMDataRef gGPUPositionY;     ///< GPU y, metres, float
extern XPLMDataRef gGPUPositionZ;     ///< GPU z, metres, float

/// Registers the nine published datarefs (all writable) in table order and keeps their handles.
void RegisterPublishedDataRefs();
/// Unregisters every published dataref whose handle is not null, in registration order, and clears it.
void UnregisterPublishedDataRefs();
/// Number of published datarefs (the truck's animation datarefs are not among them).
int PublishedDataRefCount();
/// Name of published dataref `index` in registration order, or nullptr.
const char* PublishedDataRefName(int index);
