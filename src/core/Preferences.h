// The user's settings: process-wide Pref* globals read by the motion, truck,
// GPU and message code, loaded from and stored into the preferences container
// (a key=value file, "Halvern.Kalvora.prf").
//
// A value that cannot be read as what its key needs (missing, not a number) or
// that lies outside the key's sensible range takes the key's default (or the
// nearest end of the range) and is reported by key name: a damaged file never
// leaves the truck without speed or the truck view without a key, and the next
// store writes the repaired values back.
#pragma once

#include <ostream>

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
/// Slowest and fastest truck speed read from the file (the preferences slider's non-zero range).
constexpr float kPrefTruckSpeedMin = 1.0f;
constexpr float kPrefTruckSpeedMax = 50.0f;

/// Reads the preferences from the container (missing keys are inserted empty). Every value that had to be
/// replaced is reported on `log` (may be null), one "[WRNG] Preferences: ..." line naming its key.
void LoadPreferences(HV_Properties& prefs, std::ostream* log = nullptr);
/// Writes every stored preference into the container, VERSION first.
void StorePreferences(HV_Properties& prefs);
/// True when the file at path can be opened for reading.
bool PrefFileExist(const char* path);
