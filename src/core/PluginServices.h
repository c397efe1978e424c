// The features the menu, the messages and the hot key hand work to: dialogs,
// the ground power unit, the truck view and the scene objects. Each one
// forwards to its feature where that is built in, and otherwise writes one
// log line saying the feature is not available in this build.
#pragma once

/// "About...": the About dialog.
void OpenAboutDialog();
/// "Preferences...": a new preferences dialog.
void OpenPreferencesDialog();
/// "GPU": brings or removes the ground power unit (gKLVisGPUpresent tells the outcome).
void ToggleGPU();
/// Message 102/103/104: puts the ground power unit back to its idle state.
void ResetGroundPower();
/// One of the other plug-ins' GPU messages (0x88888880..0x8888888C); others are ignored.
void HandleGPUMessage(int message);
/// Loads truck model `name` (without ".obj") from folder; index is its place in TruckList.
void LoadTruckModel(const char* folder, const char* name, int index);
/// Loads the ground power unit's object from path (without ".obj"); true when it loaded.
bool LoadGPUModel(const char* path);
/// Draw callback of the ground power unit (aircraft phase, after the host). Returns 1.
int DrawGPUModelCallBack(int phase, int isBefore, void* refcon);
/// Hot-key callback of the truck view.
void TruckViewHotKeyCallBack(void* refcon);
