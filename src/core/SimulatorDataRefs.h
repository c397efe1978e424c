// The host's datarefs the plug-in reads and writes, looked up once by name.
//
// Every handle is a process-wide global; a handle that the host does not know
// stays null, and the host's typed get/set calls then read zero and ignore
// writes, so the features that do not need it keep working.
#pragma once

#include "XPLMDataAccess.h"

#include <stdexcept>
#include <string>

/// Host version as XPLMGetVersions reports it (740 for 7.40, 12100 for 12.1.0); picks names and gear indices.
extern int XPVersion;

// Aircraft position and attitude (metres in the host's local frame, degrees).
extern XPLMDataRef gPositionThe;     ///< pitch, float
extern XPLMDataRef gPositionLocalx;  ///< double, read/write
extern XPLMDataRef gPositionLocalz;  ///< double, read/write
extern XPLMDataRef gPositionLocaly;  ///< double, read
extern XPLMDataRef gPositionPsi;     ///< true heading, float
extern XPLMDataRef gPositionPhi;     ///< roll, float
extern XPLMDataRef gDataR;           ///< yaw rate, float (only checked)
extern XPLMDataRef gqDataRef;        ///< attitude quaternion, float[4], written by the placement
extern XPLMDataRef gDataGroundSpeed; ///< metres per second, float
extern XPLMDataRef gDataAGL;         ///< height above ground, metres, float
// Gear geometry (float arrays indexed by gear, metres in the aircraft's body frame).
extern XPLMDataRef gGearPosX;
extern XPLMDataRef gGearPosY;
extern XPLMDataRef gGearPosZ;
extern XPLMDataRef gGear_leglen;
extern XPLMDataRef gGear_tirrad;
// Joystick and nose-wheel steering.
extern XPLMDataRef gJoystickRatio;       ///< yoke heading ratio, -1..1, float
extern XPLMDataRef gJoyOverride;         ///< heading axis override, int
extern XPLMDataRef gIsJoystickPresent;   ///< int, 1 when a joystick is present
extern XPLMDataRef gGroundPos;           ///< only checked
extern XPLMDataRef gDataParkBrake;       ///< parking brake ratio 0..1, float
extern XPLMDataRef gDataIsGearRet;       ///< gear handle status, int
extern XPLMDataRef gIsCockpitLitON;      ///< int
extern XPLMDataRef gIsViewExtern;        ///< int
extern XPLMDataRef gViewType;            ///< int
extern XPLMDataRef gDataEngineN1;        ///< percent, float array
extern XPLMDataRef gBattLoad;            ///< battery volts per engine, float array
extern XPLMDataRef gAircraftTailNumber;  ///< bytes; the first 6 are the call sign
extern XPLMDataRef gAircraftShadowSizeX; ///< float
extern XPLMDataRef gAircraftShadowSizeZ; ///< aircraft length, float
extern XPLMDataRef gPrefShowATCmessage;  ///< host's text output of spoken messages, int
extern XPLMDataRef gIsSimPaused;         ///< int
extern XPLMDataRef gNumberEngine;        ///< int

/// Binds the plug-in to the host it runs in: forgets every handle cached from an earlier one
/// (ForgetHostHandles), then looks up every host dataref (names chosen by XPVersion); true when
/// every required one was found.
bool InitDataRef();

/// True for a number the plug-in may compute with and hand back to the host: finite and within single
/// precision (every position ends as a float in the host's drawing and instances).
bool IsUsableNumber(double value);

/// Thrown by the ReadHost* functions when the host (or another plug-in writing its dataref) holds a value
/// that is not a usable number, so that it reaches no computation and no write. Every callback's guard
/// (CallbackGuard.h) stops a push-back under way and logs the dataref by name.
class NonFiniteHostValue : public std::runtime_error {
public:
    NonFiniteHostValue(const std::string& dataref, double value);
    std::string dataref; ///< name, with "[i]" for an array element
    double value;        ///< what was read
};

/// A float dataref's value; throws NonFiniteHostValue when it is not a usable number.
float ReadHostFloat(XPLMDataRef ref);
/// A double dataref's value; throws NonFiniteHostValue when it is not a usable number.
double ReadHostDouble(XPLMDataRef ref);
/// Element index of a float array dataref (0 when the host has no such element); throws as above.
float ReadHostFloatAt(XPLMDataRef ref, int index);
