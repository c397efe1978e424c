// What the plug-in builds at start and keeps while it is loaded: its log
// stream, the four paths it works with, the truck and ground-service lists
// found on disk, the preferences container and the menu and hot-key handles.
#pragma once

#include "XPLMDisplay.h"
#include "XPLMMenus.h"

#include <ostream>
#include <string>
#include <vector>

class HV_Properties;

/// The plug-in's log ("Kalvora.log", truncated at every start); never null, never closed.
extern std::ostream* KLVlog;
extern std::string logFilePath;    ///< plug-in folder + "Kalvora.log"
extern std::string configFilePath; ///< preferences folder (or plug-in folder) + "Halvern.Kalvora.prf"
extern std::string truckFilesPath; ///< plug-in folder, ends with a separator; every "*.obj" is a truck
extern std::string GpuFilesPath;   ///< plug-in folder + "GroundServices/"; "GPU" is appended at every enable
/// The preferences container, created at start from configFilePath, destroyed at stop.
extern HV_Properties* KLVPrefs;
extern std::vector<std::string> TruckList;          ///< truck names without ".obj", sorted
extern std::vector<std::string> GroundServicesList; ///< ground-service names without ".obj"
extern int truckNumber;                             ///< TruckList.size()
extern int GroundServicesNumber;                    ///< GroundServicesList.size()
extern int theKLVSubMenuAnchor;                     ///< index of "Kalvora" in the host's Plugins menu
extern XPLMMenuID KLVsubMenu;                       ///< the "Kalvora" menu
extern int theTruckListSubMenuAnchor;               ///< index of "Trucks" in KLVsubMenu
extern XPLMMenuID TruckSubMenu;                     ///< the "Trucks" menu, one item per truck
extern XPLMHotKeyID TruckViewHK;                    ///< truck-view hot key while enabled, else null

/// Writes text to the plug-in's log and flushes it (so a crash keeps what was written).
void KLVLogWrite(const char* text);
