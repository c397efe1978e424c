// The five entry points X-Plane calls, and the state they build and tear down.
// Every entry point is an exception firewall: nothing throws into the host.
#include "XPLMDataAccess.h"
#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "core/Commands.h"
#include "core/CrewMessages.h"
#include "core/DataRefToolRegistration.h"
#include "core/HostHandles.h"
#include "core/LocalOrigin.h"
#include "core/PluginMenu.h"
#include "core/PluginServices.h"
#include "core/PluginState.h"
#include "core/PrefsDialog.h"
#include "core/Preferences.h"
#include "core/PublishedDataRefs.h"
#include "core/PushbackControl.h"
#include "core/SimulatorDataRefs.h"
#include "gpu/GPUService.h"
#include "motion/PushbackKinematics.h"
#include "objects/TruckModel.h"
#include "toolkit/Dialog.h"
#include "toolkit/Window.h"
#include "truck/FreeMove.h"
#include "truck/InstancedDrawing.h"
#include "truck/TruckMovement.h"
#include "utils/FileUtils.h"
#include "utils/HV_Properties.h"
#include "utils/Utf8Path.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <sstream>

std::ostream* KLVlog = nullptr;
std::string logFilePath;
std::string configFilePath;
std::string truckFilesPath;
std::string GpuFilesPath;
HV_Properties* KLVPrefs = nullptr;
std::vector<std::string> TruckList;
std::vector<std::string> GroundServicesList;
int truckNumber = 0;
int GroundServicesNumber = 0;
int theKLVSubMenuAnchor = -1;
XPLMMenuID KLVsubMenu = nullptr;
int theTruckListSubMenuAnchor = -1;
XPLMMenuID TruckSubMenu = nullptr;
XPLMHotKeyID TruckViewHK = nullptr;

namespace {

constexpr std::size_t kInfoBufferBytes = 256; // X-Plane passes 256-byte buffers
constexpr int kFirstVersionWithPrefsFolder = 700;
constexpr float kFirstFlightLoopDelaySeconds = 1.0f;
constexpr char kPluginFolderKind = 7; // plug-in file path minus ".xpl", plus a separator
constexpr char kPrefsFolderKind = 3;  // the host's preferences folder
constexpr const char* kDefaultTruck = "KLVdefault";

// Host messages (XPLMPlugin.h) and the first message other plug-ins send about the GPU.
constexpr int kMsgPlaneLoaded = XPLM_MSG_PLANE_LOADED;
constexpr int kMsgAirportLoaded = 103;
constexpr int kMsgSceneryLoaded = 104;

/// Used until the log file is open, and when it cannot be opened: lines go nowhere.
std::ofstream gNoLog;
std::ofstream gLogFile;

std::string PathOfKind(char kind) {
    const char* path = HV_FileUtils::GetPath(kind);
    return path ? path : "";
}

/// The stream a path names, after the host's path conversion.
std::string OpenablePath(const std::string& path) {
    return HV_FileUtils::TranslateXCodePath(path.c_str());
}

/// Lists "*.obj" in folder into names (without ".obj") and logs each as "<name>.obj".
int ListObjects(const std::string& folder, std::vector<std::string>* names) {
    std::vector<std::string> files;
    HV_FileUtils::globFiles(OpenablePath(folder).c_str(), "*.obj", &files);
    names->clear();
    for (const std::string& file : files) {
        names->push_back(file.substr(0, file.size() - 4));
        KLVLogWrite((names->back() + ".obj\n").c_str());
    }
    return static_cast<int>(names->size());
}

void DebugLine(const std::string& text) {
    XPLMDebugString(("Kalvora: " + text + "\n").c_str());
}

void LogFailure(const char* where, const char* what) {
    DebugLine(std::string(where) + " failed: " + what);
}

/// Runs body; an exception is logged and stops there instead of reaching the host.
template <class Body> void Firewall(const char* where, Body body) {
    try {
        body();
    } catch (const std::exception& e) {
        LogFailure(where, e.what());
    } catch (...) {
        LogFailure(where, "unknown error");
    }
}

/// Paths in the platform's own form: POSIX paths on macOS instead of colon-separated HFS ones
/// (Linux and Windows paths are the same in both modes). Asked for before any path is built.
void AskForNativePaths() {
    constexpr const char* kNativePaths = "XPLM_USE_NATIVE_PATHS";
    if (XPLMHasFeature(kNativePaths)) XPLMEnableFeature(kNativePaths, 1);
}

void OpenLog() {
    logFilePath = PathOfKind(kPluginFolderKind) + "Kalvora.log";
    if (gLogFile.is_open()) gLogFile.close(); // a host that keeps the library between loads
    gLogFile.open(HV_FileUtils::PathFromUtf8(OpenablePath(logFilePath)), std::ios::out | std::ios::trunc);
    KLVlog = gLogFile.is_open() ? static_cast<std::ostream*>(&gLogFile) : &gNoLog;
    if (!gLogFile.is_open()) DebugLine("cannot write its log " + logFilePath);
}

void LoadPreferencesContainer() {
    configFilePath =
        PathOfKind(XPVersion < kFirstVersionWithPrefsFolder ? kPluginFolderKind : kPrefsFolderKind) +
        "Halvern.Kalvora.prf";
    const std::string path = OpenablePath(configFilePath);
    if (!HV_FileUtils::FileExisting(path.c_str())) SetDefaultPref();
    delete KLVPrefs;
    KLVPrefs = new HV_Properties(path.c_str(), KLVlog);
    std::ostringstream dump;
    dump << "-Plugin configuration:\n" << *KLVPrefs;
    std::string text = dump.str();
    if (text.back() != '\n') text += '\n'; // the next section starts on its own line
    KLVLogWrite(text.c_str());
}

void Start(char* outName, char* outSig, char* outDesc) {
    std::snprintf(outName, kInfoBufferBytes, "%s", "Kalvora");
    std::snprintf(outSig, kInfoBufferBytes, "%s", "Halvern.Kalvora");
    std::snprintf(outDesc, kInfoBufferBytes, "%s",
                  "A plugIn enabling airplane push back. By Halvern, with its ground crew.");

    int xplmVersion = 0;
    XPLMHostApplicationID hostId = 0;
    XPLMGetVersions(&XPVersion, &xplmVersion, &hostId);

    AskForNativePaths();
    OpenLog();
    SetTruckModelLogSink(KLVLogWrite); // the truck loader reports into this log
    KLVLogWrite("--- Starting Kalvora ---\n");
    KLVLogWrite(("-Running on XPlane v" + std::to_string(XPVersion) + "\n").c_str());

    LoadPreferencesContainer();

    truckFilesPath = PathOfKind(kPluginFolderKind);
    if (!HV_FileUtils::FolderExisting(OpenablePath(truckFilesPath).c_str()))
        DebugLine(
            "its data folder " + truckFilesPath +
            " is missing: no log file, no trucks, no GPU, no pictures; install the whole Kalvora folder");
    KLVLogWrite("-Available trucks:\n");
    truckNumber = ListObjects(truckFilesPath, &TruckList);

    GpuFilesPath = PathOfKind(kPluginFolderKind) + "GroundServices" + XPLMGetDirectorySeparator();
    KLVLogWrite("-Available Ground services:\n");
    GroundServicesNumber = ListObjects(GpuFilesPath, &GroundServicesList);

    BuildKLVMenus();

    XPLMRegisterFlightLoopCallback(TruckMovementCallBack, kFirstFlightLoopDelaySeconds, nullptr);
    XPLMRegisterFlightLoopCallback(ResetATCCallBack, kFirstFlightLoopDelaySeconds, nullptr);
    XPLMRegisterFlightLoopCallback(PlaneMoveCallBack, kFirstFlightLoopDelaySeconds, nullptr);

    XPLMRegisterDrawCallback(DrawTruckCallBack, xplm_Phase_Airplanes, 0, nullptr);
    XPLMRegisterDrawCallback(DrawGPUModelCallBack, xplm_Phase_Airplanes, 0, nullptr);

    RegisterPublishedDataRefs();
    RegisterTruckAnimationDataRefs();
    ScheduleDataRefToolRegistration();
    CreateKLVCommands();

    if (!InitDataRef()) {
        ErrorMessageInterpretor(kPBIncompatibleHost);
        HV_Dialog::Show("Kalvora", ErrorMessage, "OK", nullptr, nullptr);
        KLVLogWrite("Data refs initialisation problems\n");
    }
    DebugLine("started on X-Plane " + std::to_string(XPVersion) + ", " + std::to_string(truckNumber) +
              " truck(s), log " + logFilePath);
}

/// Loads PrefLastTruck when it is on disk, else "KLVdefault", and checks its "Trucks" item.
void SelectLastTruck() {
    int index = 0;
    while (index < truckNumber && TruckList[index] != PrefLastTruck)
        ++index;
    if (index < truckNumber) {
        LoadTruckModel(truckFilesPath.c_str(), PrefLastTruck, index);
    } else {
        LoadTruckModel(truckFilesPath.c_str(), kDefaultTruck, truckNumber);
        std::snprintf(PrefLastTruck, sizeof PrefLastTruck, "%s", kDefaultTruck);
    }
    // A missing truck checks the item one past the last one; the host ignores that index.
    if (truckNumber != 0) XPLMCheckMenuItem(TruckSubMenu, index, xplm_Menu_Checked);
}

void Enable() {
    KLVLogWrite("--- Enabling Kalvora plugin ---\n");
    if (KLVPrefs && HV_FileUtils::FileExisting(OpenablePath(configFilePath).c_str()))
        LoadPreferences(*KLVPrefs, KLVlog);
    else
        SetDefaultPref();

    SelectLastTruck();

    // Appended at every enable: a second enable looks for ".../GroundServices/GPUGPU".
    GpuFilesPath += "GPU";
    if (LoadGPUModel(GpuFilesPath.c_str()))
        KLVLogWrite("Meshes and textures for GPU succesfuly loaded\n");
    else
        KLVLogWrite(("[WRNG] Failed to load GPU object or textures " + GpuFilesPath + "\n").c_str());

    ForgetHostHandles(); // the same host, or one that started the plug-in again without unloading it
    StartTruckInstancing();

    TruckViewHK = XPLMRegisterHotKey(static_cast<char>(static_cast<signed char>(PrefTruckViewKey)),
                                     xplm_DownFlag, "Toggle truckview", TruckViewHotKeyCallBack, nullptr);
    StartFreeMoveKeys(); // a free-move panel left open over a disable takes its keys again
    DebugLine("enabled");
}

void Disable() {
    KLVLogWrite("--- Disabling Kalvora plugin ---\n");
    if (KLVPrefs) StorePreferences(*KLVPrefs);
    if (TruckViewHK) XPLMUnregisterHotKey(TruckViewHK);
    TruckViewHK = nullptr;
    // No key sniffer outlives the enable: a disabled plug-in must not keep keys from the others.
    StopPrefsKeySniffer();
    StopFreeMoveKeys();
    StopTruckInstancing();
    ForgetLocalOrigin();
    ReleaseGPUInstance(); // made again by its flight loop once enabled, if the GPU is still shown
    DebugLine("disabled");
}

void Stop() {
    // Windows first (the dialogs, the tools, the crew message): their handlers still use what follows.
    HV_Window::CloseAll();
    HV_Message::Close();
    XPLMUnregisterDrawCallback(DrawTruckCallBack, xplm_Phase_Airplanes, 0, nullptr);
    XPLMUnregisterDrawCallback(DrawGPUModelCallBack, xplm_Phase_Airplanes, 0, nullptr);
    RemoveKLVCommandHandlers();
    CancelDataRefToolRegistration();
    UnregisterTruckAnimationDataRefs();
    UnregisterPublishedDataRefs();
    if (KLVPrefs) KLVPrefs->save(KLVlog);
    delete KLVPrefs;
    KLVPrefs = nullptr;
    KLVLogWrite("--- Stopping Kalvora plugin ---\n");
    DebugLine("stopped");
}

void ReceiveMessage(int message) {
    switch (message) {
    case kMsgPlaneLoaded:
        SetPBlenght(&gKLVPbLength, &gKLVRotationRate);
        resetAll();
        ResetGroundPower();
        break;
    case kMsgAirportLoaded:
    case kMsgSceneryLoaded:
        resetAll();
        ResetGroundPower();
        break;
    default:
        HandleGPUMessage(message);
        break;
    }
}

} // namespace

void KLVLogWrite(const char* text) {
    if (!KLVlog) return;
    *KLVlog << text;
    KLVlog->flush();
}

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    Firewall("start", [&] { Start(outName, outSig, outDesc); });
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    Firewall("stop", Stop);
}

PLUGIN_API int XPluginEnable(void) {
    Firewall("enable", Enable);
    return 1;
}

PLUGIN_API void XPluginDisable(void) {
    Firewall("disable", Disable);
}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID /*inFrom*/, int inMessage, void* /*inParam*/) {
    Firewall("message", [&] { ReceiveMessage(inMessage); });
}
