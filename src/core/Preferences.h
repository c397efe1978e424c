// The user's settings: process-wide Pref* globals read by the motion, truck,
// GPU and message code, loaded from and stored into the preferences container
// (a key=value file, "Halvern.Kalvora.prf").
#pragma once

class HV_Properties;

/// Bytes of PrefLastTruck including the terminating zero (names are cut to 99 characters).
constexpr int kPrefLastTruckBytes = 100;

extern bool PrefSwitchView;         ///< switch to an outside view when a push-back starts
extern bool PrefAuralCrewMessage;   ///< crew messages are spoken
extern bool PrefWrittenCrewMessage; ///< crew messages are shown in a timed window
extern bool PrefDrawTruck;          ///< draw the push-back truck
extern bool PrefFrontWheel;         ///< the truck tows by the nose gear (else the main gear)
extern int PrefTruckViewKey;        ///< virtual key of the truck-view hot key
extern bool PrefHandleGPU;          ///< the plug-in manages a ground power unit
extern float PrefTruckSpeed;        ///< push speed setting; the step per frame is derived from it
extern double PrefStepValue;        ///< metres moved per frame = PrefTruckSpeed / 100; never stored
extern bool PrefAllowEngnON;        ///< allow a push-back with an engine running
extern bool PrefRefuelUnitisKg;     ///< refuel quantities in kilograms; reset at every start
extern char PrefLastTruck[kPrefLastTruckBytes]; ///< selected truck object, without ".obj"

/// Sets every preference except PrefLastTruck to its default.
void SetDefaultPref();
/// Reads the preferences from the container (missing keys are inserted empty and read as such).
void LoadPreferences(HV_Properties& prefs);
/// Writes every stored preference into the container, VERSION first.
void StorePreferences(HV_Properties& prefs);
/// True when the file at path can be opened for reading.
bool PrefFileExist(const char* path);
