// The names tests read and write the simulator and Kalvora through: datarefs,
// menu paths and the messages other plug-ins exchange with Kalvora about the GPU.
#pragma once

namespace kalvora_test {

// Kalvora's own datarefs.
constexpr const char* kStatus = "halvern/kalvora/PBstatus"; ///< push-back status (0 idle, 1..5 manoeuvres)
constexpr const char* kGPUStatus = "halvern/kalvora/GPUstatus";         ///< GPU status (0 off, 1 on)
constexpr const char* kTruckX = "halvern/kalvora/truck/position_ogl_x"; ///< metres, local frame
constexpr const char* kTruckY = "halvern/kalvora/truck/position_ogl_y";
constexpr const char* kTruckZ = "halvern/kalvora/truck/position_ogl_z";
constexpr const char* kTruckHdg = "halvern/kalvora/truck/position_hdg"; ///< degrees true

// The simulator's.
constexpr const char* kParkBrake = "sim/flightmodel/controls/parkbrake"; ///< 0 released .. 1 set
constexpr const char* kLocalX = "sim/flightmodel/position/local_x";      ///< metres
constexpr const char* kLocalZ = "sim/flightmodel/position/local_z";
constexpr const char* kPsi = "sim/flightmodel/position/psi";                  ///< true heading, degrees
constexpr const char* kBatteryVolts = "sim/flightmodel/engine/ENGN_bat_volt"; ///< per engine, volts
constexpr const char* kEngineCount = "sim/aircraft/engine/acf_num_engines";
constexpr const char* kTextOut = "sim/operation/prefs/text_out"; ///< 1: crew messages are shown as text

// Kalvora's menu under the host's Plugins menu.
constexpr const char* kMenu = "Plugins/Kalvora";
constexpr const char* kGPUMenu = "Plugins/Kalvora/GPU";

// Messages between plug-ins about the GPU.
constexpr unsigned kAskService = 0x88888880u;
constexpr unsigned kAvailable = 0x88888881u;
constexpr unsigned kIsOn = 0x88888882u;
constexpr unsigned kIsOff = 0x88888883u;
constexpr unsigned kConnect = 0x88888889u;
constexpr unsigned kDisconnect = 0x8888888Au;
constexpr unsigned kAskStatus = 0x8888888Bu;
constexpr unsigned kElecOff = 0x8888888Cu;

} // namespace kalvora_test
