// The ground power unit (GPU): a cart the ground crew brings to the aircraft's
// nose on request. Connecting it takes a 15 s warm-up; once running, and while
// the electrical simulation is on, it charges the aircraft's batteries every
// frame. It is driven from the "GPU" menu item, from "halvern/kalvora/GPUstatus"
// and from other plug-ins' messages, and it tells the crew (spoken and shown
// messages) and every plug-in (broadcasts) what it does.
//
//   absent --request--> present, visible, warming up (15 s, crew message 0)
//          --warm-up over--> running (broadcast "on", crew message 1, charging)
//          --request--> absent (crew message 2, broadcast "off", charging stopped)
//
// The cart stays drawn after a disconnection until resetGPU (new aircraft,
// airport or scenery). A disconnection during the warm-up does not cancel it:
// the GPU still announces that it is running when the 15 s are over.
#pragma once

#include "XPLMDisplay.h"

class HV_XObject;

/// Messages between plug-ins about the GPU (unsigned 32-bit numbers, carried in an int).
constexpr unsigned kGPUMsgQueryService = 0x88888880u; ///< received: is a GPU service there?
constexpr unsigned kGPUMsgAvailable = 0x88888881u;    ///< sent: available, not connected
constexpr unsigned kGPUMsgIsOn = 0x88888882u;         ///< sent: running
constexpr unsigned kGPUMsgIsOff = 0x88888883u;        ///< sent: off
constexpr unsigned kGPUMsgConnect = 0x88888889u;      ///< received: bring and connect it
constexpr unsigned kGPUMsgDisconnect = 0x8888888Au;   ///< received: disconnect and take it away
constexpr unsigned kGPUMsgQueryStatus = 0x8888888Bu;  ///< received: answer with the status
constexpr unsigned kGPUMsgElecOff = 0x8888888Cu;      ///< received: stop charging the batteries

/// Crew messages of GroundMessageInterpretor (kind kGPUCrewKind).
enum { kGPUCrewHookedUp = 0, kGPUCrewRunning = 1, kGPUCrewDisconnected = 2 };
/// The kind of crew message GroundMessageInterpretor speaks; other kinds say nothing.
constexpr int kGPUCrewKind = 1;

/// Bytes of GPUGroundMessage, terminating zero included.
constexpr int kGPUGroundMessageBytes = 262;
/// Entries of BatteryLoad: the battery array is held for at most this many engines.
constexpr int kGPUMaxBatteries = 8;
/// Battery volts the charging never goes beyond.
constexpr float kGPUChargeCapVolts = 24.0f;
/// Seconds from the request until the GPU runs.
constexpr double kGPUWarmUpSeconds = 15.0;

/// True while the GPU is connected (from the request until it is taken away); a push-back is refused then.
extern bool gKLVisGPUpresent;
/// Read by the status answers; nothing ever sets it, so "running" is never reported as 2.
extern bool GPUisON;
/// End of the warm-up, GetTimePrecise seconds.
extern double timer;
/// GetTimePrecise seconds when charging began.
extern double BatConnTime;
/// Working copy of the battery dataref, volts per engine.
extern float BatteryLoad[kGPUMaxBatteries];
/// The electrical simulation (battery charging) is on.
extern bool KLVsimulElecSystem;
/// GPU heading, degrees true (its position gpuX/Y/Z is declared with the published datarefs).
extern double gpuHdg;
/// The last GPU crew message.
extern char GPUGroundMessage[kGPUGroundMessageBytes];
/// The drawn GPU cart.
extern HV_XObject myGPUObject;

/// Broadcasts kGPUMsgAvailable to every plug-in.
void sendGPUAvailable();
/// Broadcasts kGPUMsgIsOn to every plug-in.
void sendGPUisON();
/// Broadcasts kGPUMsgIsOff to every plug-in.
void sendGPUisOFF();
/// Flips gKLVisGPUpresent.
void ToggleisGPUpresent();
/// Marks the GPU present (the next GPUeventHandler disconnects it).
void ForceGPUON();
/// Marks the GPU absent (the next GPUeventHandler connects it).
void ForceGPUOFF();
/// Broadcasts the status: off when absent, else on when GPUisON, else available.
void determineStatusAndAnswer();
/// The toggle: disconnects a present GPU, brings and warms up an absent one.
void GPUeventHandler();
/// Crew message `code` (kGPUCrew*) about the GPU when kind is kGPUCrewKind and GPUs are handled:
/// fills GPUGroundMessage, speaks and shows it.
void GroundMessageInterpretor(int kind, int code);
/// Turns the electrical simulation (battery charging) on or off.
void KLVsimulElec(bool on);
/// Hides the GPU and marks it absent (new aircraft, airport or scenery).
void resetGPU();

/// Flight loop run every frame during the warm-up; at its end announces the GPU and starts charging.
float GPUwarmUpCallBack(float elapsedSinceLastCall, float elapsedSinceLastLoop, int counter, void* refcon);
/// Flight loop run every frame while connected: raises the batteries towards kGPUChargeCapVolts.
float GPUBatteryLoadingCallBack(float elapsedSinceLastCall, float elapsedSinceLastLoop, int counter,
                                void* refcon);
/// Reads `count` entries (at most kGPUMaxBatteries) of the battery dataref into BatteryLoad.
void GetBatteryLoad(int count);
/// Sets the first n entries of BatteryLoad to `volts` (n = engines, at most kGPUMaxBatteries) and writes
/// them.
void SetBatteryLoad(float volts);

/// Where the GPU stands: 5 m from the nose gear, 45 degrees right of the aircraft's heading, on the
/// apron (metres, local frame), turned to the aircraft's heading (degrees).
void CalcGPUPos(double* x, double* y, double* z, double* hdg);
/// Places the GPU with CalcGPUPos and marks it visible.
void MakeGPUvisible();
/// Draw callback (aircraft phase, after the host): draws the GPU when GPUs are handled and it is visible.
int DrawGPUCallBack(XPLMDrawingPhase phase, int isBefore, void* refcon);
/// From X-Plane 11.50 on (no 3-D drawing phases): starts placing the GPU as an object instance every frame
/// while it is visible and GPUs are handled; the instance goes when it is hidden.
void StartGPUInstance();
/// Flight loop of StartGPUInstance: places the instance, or releases it and stops.
float GPUInstanceCallBack(float elapsedSinceLastCall, float elapsedSinceLastLoop, int counter, void* refcon);
/// Destroys the GPU's instance and unloads its model, if any (call when the plug-in is disabled).
void ReleaseGPUInstance();

/// Read accessor of "halvern/kalvora/GPUstatus": 0 absent, 2 running (never: GPUisON), else 1.
int DataRefGetGPUStatus(void* refcon);
/// Write accessor of "halvern/kalvora/GPUstatus": 1 connect, 2 disconnect, 3 electrical simulation off.
void DataRefSetGPUStatus(void* refcon, int value);
