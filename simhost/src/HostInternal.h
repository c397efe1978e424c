// simhost's internal state: one HostCore per live Host, shared by the files that
// implement the X-Plane API (one file per API header) and the control API.
//
// Handles given to plug-ins (datarefs, windows, menus, commands, flight loops,
// hot keys) are pointers to records that live as long as the host, so a stale
// handle never dangles; every API function checks a handle against its table
// before using it.
#pragma once

#include "PluginContext.h"
#include "simhost/Simhost.h"

#include <array>
#include <cstdio>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace simhost::detail {

// ------------------------------------------------------------------ plug-ins
/// One loaded plug-in: a .xpl file or an in-process one.
struct PluginRec {
    int id = -1;
    std::string name, signature, description;
    std::string path;   ///< the .xpl inside the sandbox ("" for in-process plug-ins)
    void* dl = nullptr; ///< dlopen handle
    bool enabled = false;
    bool alive = true; ///< false once unloaded (IDs are never reused)
    int (*xStart)(char*, char*, char*) = nullptr;
    void (*xStop)() = nullptr;
    int (*xEnable)() = nullptr;
    void (*xDisable)() = nullptr;
    void (*xReceive)(int, int, void*) = nullptr;
    InProcessPlugin inProcess;      ///< callbacks when dl is null
    std::set<std::string> features; ///< XPLMEnableFeature
    void* errorCallback = nullptr;  ///< XPLMError_f from XPLMSetErrorCallback
};

// ------------------------------------------------------------------ datarefs
/// Accessors a plug-in registered (XPLMRegisterDataAccessor), as untyped pointers.
struct Accessors {
    void *gi = nullptr, *si = nullptr, *gf = nullptr, *sf = nullptr, *gd = nullptr, *sd = nullptr;
    void *gvi = nullptr, *svi = nullptr, *gvf = nullptr, *svf = nullptr, *gb = nullptr, *sb = nullptr;
    void* readRefcon = nullptr;
    void* writeRefcon = nullptr;
};

/// One dataref. Owner 0 (X-Plane) keeps its value here; plug-ins' go through accessors.
struct DataRefRec {
    std::string name;
    int types = 0;              ///< XPLMDataTypeID bits
    bool writable = false;      ///< writable by plug-ins
    int owner = 0;              ///< 0 = X-Plane
    bool orphaned = false;      ///< owner unregistered or unloaded: reads 0, writes nothing
    bool removed = false;       ///< hidden from lookup (an incomplete host)
    std::vector<double> values; ///< X-Plane's own: one value per element (1 for scalars)
    std::string bytes;          ///< X-Plane's own byte blocks (xplmType_Data)
    Accessors acc;
    /// X-Plane takes writes to this one from a single plug-in for now (the TCAS override datarefs: the
    /// plug-in holding the AI aircraft), `writer`, or from none when that is -1.
    bool writerOnly = false;
    int writer = -1;
    /// Called after X-Plane's own value changed through a write.
    std::function<void(DataRefRec&)> onWrite;
    /// XPLMShareData: the storage grows as plug-ins write, and every sharer hears of each write.
    bool shared = false;
    struct Sharer {
        int plugin;
        void* notify; ///< XPLMDataChanged_f
        void* refcon;
    };
    std::vector<Sharer> sharers;
};

// ------------------------------------------------------------------ flight loops
/// One flight loop, legacy or created.
struct FlightLoopRec {
    int owner = 0;
    void* fn = nullptr; ///< XPLMFlightLoop_f
    void* refcon = nullptr;
    int phase = 0;      ///< 0 before the flight model, 1 after
    bool legacy = true; ///< registered with XPLMRegisterFlightLoopCallback
    bool alive = true;
    bool scheduled = false;     ///< false: registered but inactive (interval 0)
    bool byFrames = false;      ///< due at dueFrame rather than dueTime
    double dueTime = 0;         ///< wall seconds
    long long dueFrame = 0;     ///< cycle number
    double lastRunTime = 0;     ///< wall seconds of the last call (or of registration)
    long long lastRunFrame = 0; ///< cycle of the last call (or of registration)
};

// ------------------------------------------------------------------ menus
struct MenuRec;
/// One menu item (or separator).
struct MenuItemRec {
    std::string name;
    int owner = 0;
    void* itemRef = nullptr;
    int check = 0; ///< 0 none, 1 unchecked, 2 checked
    bool enabled = true;
    bool separator = false;
    MenuRec* submenu = nullptr;
    void* command = nullptr; ///< XPLMAppendMenuItemWithCommand
};
/// One menu: the menu bar's "Plugins" or "Aircraft", or one a plug-in created.
struct MenuRec {
    std::string name;
    int owner = 0;
    MenuRec* parent = nullptr;
    void* handler = nullptr; ///< XPLMMenuHandler_f
    void* menuRef = nullptr;
    bool alive = true;
    std::vector<MenuItemRec> items;
};

// ------------------------------------------------------------------ commands
struct CommandHandler {
    void* fn = nullptr; ///< XPLMCommandCallback_f
    bool before = true;
    void* refcon = nullptr;
    int owner = 0;
    bool alive = true;
};
/// One command; commands are never destroyed.
struct CommandRec {
    std::string name, description;
    std::vector<CommandHandler> handlers;
    std::function<void(int phase)> simAction; ///< what X-Plane itself does
    bool hidden = false; ///< withdrawn by Host::removeCommand: plug-ins cannot find it by name
};

// ------------------------------------------------------------------ display
struct DrawCallbackRec {
    void* fn = nullptr; ///< XPLMDrawCallback_f
    int phase = 0;
    bool before = false;
    void* refcon = nullptr;
    int owner = 0;
    bool alive = true;
};
struct WindowRec {
    int id = 0;
    int owner = 0;
    int left = 0, top = 0, right = 0, bottom = 0;
    bool visible = false;
    bool alive = true;
    void *draw = nullptr, *key = nullptr, *mouse = nullptr, *cursor = nullptr, *wheel = nullptr,
         *rightClick = nullptr;
    void* refcon = nullptr;
    int decoration = 0, layer = 0;
    std::string title;
    int minWidth = 0, minHeight = 0;             ///< XPLMSetWindowResizingLimits, boxels
    int maxWidth = 1 << 20, maxHeight = 1 << 20; ///< boxels
};
struct KeySnifferRec {
    void* fn = nullptr;
    bool beforeWindows = false;
    void* refcon = nullptr;
    int owner = 0;
    bool alive = true;
};
struct HotKeyRec {
    char vkey = 0;
    int flags = 0;
    std::string description;
    void* fn = nullptr;
    void* refcon = nullptr;
    int owner = 0;
    bool alive = true;
};

// ------------------------------------------------------------------ camera
struct CameraRec {
    bool controlled = false;
    int owner = -1;
    int howLong = 0;
    void* fn = nullptr;
    void* refcon = nullptr;
    float pos[7] = {0, 0, 0, 0, 0, 0, 1}; ///< x y z pitch heading roll zoom
    bool onSpot = false;                  ///< the still-spot view: X-Plane's camera stands at `spot`
    double spot[3] = {0, 0, 0};           ///< local metres, chosen when the view was picked
};

// ------------------------------------------------------------------ scenery
/// A loaded OBJ file; handles stay valid after the last unload (then dead).
struct ObjectRec {
    std::string path;                ///< absolute
    int refs = 0;                    ///< XPLMLoadObject references plus instances showing it
    std::map<int, int> refsByPlugin; ///< load references per plug-in, for unload clean-up
};
struct InstanceRec {
    int owner = 0;
    ObjectRec* object = nullptr;
    bool alive = true;
    bool autoShift = false; ///< XPLMInstanceSetAutoShift: the host keeps it in place when the origin moves
    InstanceInfo info;
};
/// An XPLMLoadObjectAsync request, answered at the start of the next frame.
struct PendingLoad {
    int owner = 0;
    std::string path;
    void* callback = nullptr; ///< XPLMObjectLoaded_f
    void* refcon = nullptr;
};

// ------------------------------------------------------------------ world
/// What the world remembers between frames.
struct WorldRec {
    double prevX = 0, prevZ = 0;     ///< position at the end of the previous frame, metres
    bool qWritten = false;           ///< q changed since the last frame
    double commandedSpeed = 0;       ///< m/s along psi, set through the control API (taxiing)
    double holdAgl = -1;             ///< metres; < 0: the aircraft sits on the apron
    double groundY = 0;              ///< local y of the apron, metres
    double magneticVariationDeg = 0; ///< east declination: magnetic heading = true - this
    /// The aircraft's live state (Aircraft) as last synchronised with the datarefs.
    struct Live {
        bool engineRunning[8] = {};
        double n1Percent[8] = {}; ///< per engine
        double batteryVolts = 0;
        bool parkingBrake = false;
    } shadow;
};

/// X-Plane's own datarefs that the world, the camera and the frame loop read and write every frame,
/// found once when the host is made (records never move), so that no frame looks one up by name.
struct SimRefs {
    DataRefRec *localX = nullptr, *localY = nullptr, *localZ = nullptr; ///< metres
    DataRefRec *psi = nullptr, *theta = nullptr, *the = nullptr, *phi = nullptr, *q = nullptr;
    DataRefRec *magpsi = nullptr, *magPsi = nullptr; ///< both spellings X-Plane has
    DataRefRec *groundspeed = nullptr, *yAgl = nullptr;
    DataRefRec *latitude = nullptr, *longitude = nullptr, *elevation = nullptr;
    DataRefRec *n1 = nullptr, *n1Old = nullptr; ///< ENGN_N1_, and ENGN_N1 of hosts without it
    DataRefRec *batteryVolts = nullptr, *batteryActual = nullptr, *parkBrake = nullptr;
    DataRefRec* runningTime = nullptr; ///< sim/time/total_running_time_sec
    /// The pitch this host publishes: theta, or "the" where theta is removed.
    DataRefRec* pitch() const { return theta->removed ? the : theta; }
    /// N1 per engine: ENGN_N1_, or ENGN_N1 where that is removed.
    DataRefRec* engineN1() const { return n1->removed ? n1Old : n1; }
};

// ------------------------------------------------------------------ navigation
/// One navaid of simhost's small database.
struct NavAidRec {
    int type = 0; ///< XPLMNavType
    std::string id, name;
    double latDeg = 0, lonDeg = 0;
    float heightM = 0;    ///< metres MSL
    int frequency = 0;    ///< NDB kHz; others MHz x 100; 0 none
    float headingDeg = 0; ///< localizer course, degrees true
};
/// One FMS entry; an unused one has type xplm_Nav_Unknown.
struct FmsEntryRec {
    int type = 0;
    std::string id;
    int ref = -1; ///< navaid index, -1 for lat/lon entries
    int altitudeFt = 0;
    float latDeg = 0, lonDeg = 0;
};
/// One flight plan of a navigation unit.
struct FlightPlanRec {
    std::vector<FmsEntryRec> entries; ///< kFmsEntries, contiguous from 0
    int displayed = 0, destination = 0;
};
struct NavState {
    std::vector<NavAidRec> aids;      ///< sorted by type; built on first use around the apron
    std::vector<FlightPlanRec> plans; ///< pilot/co-pilot primary, approach, temporary
};

// ------------------------------------------------------------------ sound
/// A PCM buffer playing on a bus (XPLMPlayPCMOnBus).
struct SoundChannelRec {
    int id = 0;
    int owner = 0;
    int bus = 0;
    double endsAt = 0; ///< wall seconds; ignored when looping
    bool loop = false;
    bool alive = true;
    void* callback = nullptr; ///< XPLMPCMComplete_f
    void* refcon = nullptr;
    int clip = -1; ///< its buffer's index in HostCore::audioClips; -1 when no audio folder keeps it
};

/// A sound kept as a WAV in the audio folder (HostOptions::speechWavDir), for Host::writeAudioMix.
struct AudioClip {
    std::string file;
    double startS = 0; ///< sim seconds when it began
    double stopS = -1; ///< sim seconds when it was stopped; -1: it played out (or loops to the end)
    bool loop = false;
    bool speech = false; ///< an utterance: it waits until the one before it has been said
    std::vector<std::pair<double, float>> gains; ///< XPLMSetAudioVolume: (sim seconds, gain) from then on
};

// ------------------------------------------------------------------ maps
struct MapLayerRec {
    int owner = 0;
    std::string map, name;
    int type = 0; ///< XPLMMapLayerType
    void *willBeDeleted = nullptr, *prepCache = nullptr, *draw = nullptr, *icon = nullptr, *label = nullptr;
    void* refcon = nullptr;
    bool alive = true;
    bool cachePrepared = false;
};
struct MapHookRec {
    int owner = 0;
    void* fn = nullptr; ///< XPLMMapCreatedCallback_f
    void* refcon = nullptr;
    bool alive = true;
};
struct MapState {
    std::set<std::string> shown;    ///< maps that exist now
    std::deque<MapLayerRec> layers; ///< handles stay valid
    std::unordered_set<const void*> layerHandles;
    std::vector<MapHookRec> hooks;
    std::vector<MapMark> marks;     ///< what the last map frame drew
    MapLayerRec* drawing = nullptr; ///< the layer whose icon/label callback runs
};

// ------------------------------------------------------------------ avionics
/// What a cockpit device's pop-up shows; one per built-in device (every handle on it shares it), one per
/// created device.
struct DevicePopup {
    bool visible = false, keyboardFocus = false;
    float brightnessRheo = 1;                     ///< ratio 0..1
    int left = 0, top = 0, right = 0, bottom = 0; ///< boxels
};
struct AvionicsRec {
    int owner = 0;
    int device = -1;        ///< built-in XPLMDeviceID, -1 for a created device
    std::string deviceId;   ///< created devices: the unique ID
    bool callbacks = false; ///< registered with XPLMRegisterAvionicsCallbacksEx (or created)
    void *drawBefore = nullptr, *drawAfter = nullptr, *screenDraw = nullptr, *bezelDraw = nullptr;
    void* refcon = nullptr;
    bool alive = true;
    bool needsDrawing = true, drawOnDemand = false;
    DevicePopup own; ///< a created device's pop-up
};

// ------------------------------------------------------------------ weather
/// A weather report a plug-in set (XPLMSetWeatherAtLocation / XPLMSetWeatherAtAirport).
struct WeatherReport {
    int owner = 0;
    std::string airport; ///< empty for a report at a place
    double latDeg = 0, lonDeg = 0;
    float radiusNm = 30; ///< horizontal reach, nautical miles
    Weather values;
    long serial = 0; ///< when it was set, in order
};

// ------------------------------------------------------------------ AI planes
/// Where one aircraft is, in X-Plane's datarefs: the user's, multiplayer plane N's, or (as float[64]
/// arrays) the TCAS targets'.
struct PlaneDataRefs {
    DataRefRec *x = nullptr, *y = nullptr, *z = nullptr;       ///< local metres
    DataRefRec *lat = nullptr, *lon = nullptr, *el = nullptr;  ///< degrees, metres MSL
    DataRefRec *psi = nullptr, *the = nullptr, *phi = nullptr; ///< degrees
    DataRefRec* gear = nullptr;                                ///< deployment ratio (float[10] per plane)
};
/// X-Plane's TCAS: its target arrays (index 0 the user, N plane N) and the plug-in override.
struct TcasDataRefs {
    PlaneDataRefs targets;
    std::vector<DataRefRec*> overrideOnly; ///< arrays only the overriding plug-in writes
    DataRefRec *modeS = nullptr, *count = nullptr, *override = nullptr, *mapOverride = nullptr;
    bool overridden = false; ///< override_TCAS set: the holder writes the targets, X-Plane stops
};

struct PlanesState {
    int aiCount = 0;                 ///< AI aircraft besides the user's (Host::setAiAircraftCount)
    int activeCount = 1;             ///< XPLMSetActiveAircraftCount, the user's included
    int holder = -1;                 ///< plug-in that acquired the planes, -1 none
    std::vector<std::string> models; ///< index 1.. : XPLMSetAircraftModel paths
    struct Waiter {
        int plugin;
        void* fn; ///< XPLMPlanesAvailable_f
        void* refcon;
    };
    std::vector<Waiter> waiting; ///< refused XPLMAcquirePlanes calls with a callback
    /// The traffic datarefs, linked the first time a plug-in looks one up or AI aircraft are set: [0] the
    /// user's aircraft, [N] multiplayer plane N. Empty before.
    std::vector<PlaneDataRefs> aircraft;
    TcasDataRefs tcas;
};

/// The whole host.
struct HostCore {
    HostOptions opt;
    std::string sandbox; ///< with trailing "/"; the process's working directory while the host lives
    std::string
        launchDir; ///< the working directory the host was created in (relative paths of the control API)
    bool tempSandbox = false;
    FILE* log = nullptr;
    std::vector<TranscriptEntry> transcript;
    std::vector<std::string> commandsRun;
    std::vector<std::string> lastLeftovers;

    // clock
    double simTime = 0, wallTime = 0; ///< seconds
    long long cycle = 0;
    int frames = 0;
    bool paused = false;
    double lastFlightLoopDispatch = 0; ///< wall seconds
    int flightLoopCounter = 0;
    double realStart = 0; ///< real-time mode: monotonic seconds at start

    // registries
    std::vector<std::unique_ptr<PluginRec>> plugins; ///< index = id - 1
    int directCaller = -1;
    std::deque<DataRefRec> datarefs;
    std::unordered_map<std::string, DataRefRec*> datarefByName;
    int xplaneDataRefsPending = 0; ///< rows of X-Plane's table (XPlaneTables.h) not made into records yet
    int datarefsRemoved = 0;       ///< records hidden from plug-ins (version profiles, removeDataRef)
    std::unordered_set<const void*> datarefHandles; ///< every record ever made: a handle never dies
    /// Handles found in datarefHandles lately, by a hash of the address: a plug-in reading the same
    /// few datarefs every frame skips the set (a handle, once valid, stays valid for the host's life).
    std::array<const void*, 64> recentDataRefHandles{};
    std::deque<FlightLoopRec> flightLoops; ///< every loop ever made (handles stay valid, dead or alive)
    std::unordered_set<const void*> flightLoopHandles;
    std::vector<FlightLoopRec*> loopOrder; ///< the loops to dispatch, in registration order; dead ones
                                           ///< are dropped before each dispatch
    std::deque<MenuRec> menus;
    std::unordered_set<const void*> menuHandles;
    MenuRec* pluginsMenu = nullptr;
    std::vector<MenuRec*> topMenus; ///< the menu bar, left to right
    MenuRec* aircraftMenu = nullptr;
    std::deque<CommandRec> commands;
    std::unordered_map<std::string, CommandRec*> commandByName;
    std::unordered_set<const void*> commandHandles;
    std::map<CommandRec*, int> commandsHeld; ///< begun and not yet ended
    std::vector<DrawCallbackRec> drawCallbacks;
    std::deque<WindowRec> windows;
    std::unordered_set<const void*> windowHandles;
    std::vector<WindowRec*> zOrder; ///< back to front
    WindowRec* focus = nullptr;
    WindowRec* mouseCapture = nullptr;
    WindowRec* titleDrag = nullptr; ///< a decorated window dragged by its title bar
    int mouseX = 0, mouseY = 0;
    int nextWindowId = 1;
    std::vector<KeySnifferRec> sniffers;
    std::deque<HotKeyRec> hotKeys;
    std::unordered_set<const void*> hotKeyHandles;
    CameraRec camera;
    std::deque<ObjectRec> objects;
    std::unordered_set<const void*> objectHandles;
    std::deque<InstanceRec> instances;
    std::unordered_set<const void*> instanceHandles;
    std::vector<PendingLoad> pendingLoads;
    std::set<const void*> probes; ///< live XPLMProbeRef values
    int nextProbe = 1;
    WorldRec world;
    /// The local frame's reference point (its origin at sea level), degrees, single precision as
    /// X-Plane publishes it in lat_ref/lon_ref. Kept as float: GCC 12 at -O2 may drop a pair of
    /// double-to-float-to-double round trips assigned side by side, so a double would keep the digits.
    float refLatDeg = 0, refLonDeg = 0;
    Aircraft aircraft;
    SimRefs sim;
    std::function<void(int pluginId, const char* what, bool entering)> callObserver; ///< see Host
    size_t datarefsAnnounced = 0; ///< dataref count last sent with XPLM_MSG_DATAREFS_ADDED
    NavState nav;
    std::deque<SoundChannelRec> sounds; ///< every channel ever played (handles stay valid)
    std::unordered_set<const void*> soundHandles;
    std::vector<SoundChannelRec*> soundsPlaying; ///< the live channels, so a frame looks at no finished one
    int soundsWritten = 0;                       ///< PCM buffers written as WAVs into speechWavDir
    std::vector<AudioClip> audioClips;           ///< every sound and utterance kept in speechWavDir
    MapState maps;
    std::deque<AvionicsRec> avionics;
    std::map<int, DevicePopup> builtInPopups; ///< by XPLMDeviceID
    std::unordered_set<const void*> avionicsHandles;
    Weather weather;
    std::vector<WeatherReport> weatherReports; ///< set by plug-ins (XPLM 4.2)
    long weatherSerial = 0;                    ///< serial of the last report set
    long weatherBatchStart = -1;               ///< serial when XPLMBeginWeatherUpdate ran; -1 outside a batch
    PlanesState planes;
};

/// The local frame's reference point as X-Plane publishes it (lat_ref/lon_ref are floats), degrees.
inline double refLat(const HostCore& c) {
    return c.refLatDeg;
}
inline double refLon(const HostCore& c) {
    return c.refLonDeg;
}

/// Every dataref a plug-in can find: those with a record (less the hidden ones) and X-Plane's that no one
/// has looked up yet.
inline size_t dataRefCount(const HostCore& c) {
    return c.datarefs.size() + static_cast<size_t>(c.xplaneDataRefsPending) -
           static_cast<size_t>(c.datarefsRemoved);
}

/// Hides a dataref from plug-ins (lookup, count and listing alike) or shows it again.
inline void setDataRefRemoved(HostCore& c, DataRefRec& r, bool removed) {
    if (r.removed != removed) c.datarefsRemoved += removed ? 1 : -1;
    r.removed = removed;
}

/// The live host's state, or nullptr when no Host exists.
HostCore* core();
/// Installs or clears the live host's state.
void setCore(HostCore* c);

/// The plug-in record for an ID, or nullptr (unloaded plug-ins included: check alive).
PluginRec* plugin(int id);
/// True when the plug-in may receive callbacks (loaded and enabled); X-Plane (0) always.
bool pluginActive(int id);
/// The plug-in API calls are attributed to right now.
int caller();

/// Appends to the transcript.
void record(const std::string& kind, const std::string& text);
/// Appends to Log.txt (verbatim) and to the transcript (kind "log").
void writeLog(const std::string& text);
/// Reports an API misuse: Log.txt, and the error callback of the offending plug-in.
void apiError(const std::string& text);

/// Runs a plug-in callback as plugin `id`: attribution, and nothing may escape.
template <class F> void callInto(int id, const char* what, F&& f) {
    CallingPlugin guard(id);
    HostCore* c = core();
    if (c && c->callObserver) c->callObserver(id, what, true);
    try {
        f();
    } catch (const std::exception& e) {
        writeLog(std::string("simhost: exception from plug-in in ") + what + ": " + e.what() + "\n");
    } catch (...) {
        writeLog(std::string("simhost: unknown exception from plug-in in ") + what + "\n");
    }
    if (c && c->callObserver) c->callObserver(id, what, false);
}

// ---- per-file entry points used by the Host (defined in the matching .cpp) ----
void installSimDataRefs(HostCore& c);                                        // SimDataRefs.cpp
DataRefRec* makeXPlaneDataRef(HostCore& c, const std::string& name);         // SimDataRefs.cpp
void makeAllXPlaneDataRefs(HostCore& c);                                     // SimDataRefs.cpp
DataRefRec* findDataRefRec(const std::string& name);                         // DataAccess.cpp
DataRefRec* validDataRef(void* handle);                                      // DataAccess.cpp
void defineSimCommands(HostCore& c);                                         // Commands.cpp
CommandRec* commandRec(const std::string& name);                             // Commands.cpp
void runCommandPhase(CommandRec* cmd, int phase);                            // Commands.cpp
void createRootMenus(HostCore& c);                                           // Menus.cpp
void runFlightLoops(HostCore& c, int phase);                                 // FlightLoops.cpp
void setViewType(int viewType, bool external);                               // Camera.cpp
void updateCamera(HostCore& c);                                              // Camera.cpp
void worldBindRefs(HostCore& c);                                             // World.cpp
void worldReset(HostCore& c);                                                // World.cpp
void worldStep(HostCore& c, double dtSeconds);                               // World.cpp
void worldSync(HostCore& c);                                                 // World.cpp
void worldPushEdits(HostCore& c);                                            // World.cpp
void worldPullState(HostCore& c);                                            // World.cpp
void worldSetAttitude(HostCore& c, double psi, double theta, double phi);    // World.cpp
void worldShiftOrigin(HostCore& c, double refLatDeg, double refLonDeg);      // World.cpp
void worldHoldHeight(HostCore& c, double aglM);                              // World.cpp
double worldParkedHeight(const HostCore& c);                                 // World.cpp
void drawFrame(HostCore& c);                                                 // Display.cpp
void routeKey(char ch, int flags, char vkey);                                // Display.cpp
void dropRegistrations(HostCore& c, int pluginId);                           // Cleanup.cpp
std::vector<std::string> listRegistrations(const HostCore& c, int pluginId); // Cleanup.cpp
void sendToPlugin(int to, int message, void* param, int from);               // Plugins.cpp
void announceNewDataRefs(HostCore& c);                                       // Plugins.cpp

} // namespace simhost::detail

namespace simhost::detail {
// Plug-in lifecycle (Plugins.cpp)
int loadPluginFile(HostCore& c, const std::string& path, const std::string& dataDir, PluginLayout layout,
                   std::string* error);
std::string installPlugin(HostCore& c, const std::string& path, const std::string& dataDir,
                          PluginLayout layout, std::string* error);
int installPluginsFolder(HostCore& c, const std::string& pluginsDir, std::string* error);
std::vector<int> startInstalledPlugins(HostCore& c, std::string* errors);
int addInProcessPlugin(HostCore& c, InProcessPlugin p);
bool enablePlugin(HostCore& c, int id);
void disablePlugin(HostCore& c, int id);
void unloadPluginNow(HostCore& c, int id);
} // namespace simhost::detail

namespace simhost::detail {
// Menus (Menus.cpp)
std::string menuTreeText();
std::vector<std::string> menuItemNames(const std::string& path);
bool pickMenuPath(const std::string& path);
int menuCheckAt(const std::string& path);
bool menuEnabledAt(const std::string& path);
void dropMenus(HostCore& c, int pluginId);
void listMenus(const HostCore& c, int pluginId, std::vector<std::string>& out);
} // namespace simhost::detail

namespace simhost::detail {
// Windows, mouse and display registrations (Display.cpp)
bool mouseDownAt(int x, int y);
void mouseDragAt(int x, int y);
void mouseUpAt(int x, int y);
void scrollAt(int x, int y, int clicks);
void dropDisplay(HostCore& c, int pluginId);
void listDisplay(const HostCore& c, int pluginId, std::vector<std::string>& out);
std::vector<WindowInfo> windowList();
bool resizeWindowTo(int windowId, int width, int height);
} // namespace simhost::detail

namespace simhost::detail {
void dropCamera(HostCore& c, int pluginId); // Camera.cpp
} // namespace simhost::detail

namespace simhost::detail {
// The services beyond the aircraft: each file's frame step, clean-up and registration list.
void stepSounds(HostCore& c);                                                      // Sound.cpp
void dropSounds(HostCore& c, int pluginId);                                        // Sound.cpp
void stepMaps(HostCore& c);                                                        // Map.cpp
void dropMaps(HostCore& c, int pluginId);                                          // Map.cpp
void listMaps(const HostCore& c, int pluginId, std::vector<std::string>& out);     // Map.cpp
void showMap(HostCore& c, const std::string& mapId);                               // Map.cpp
void hideMap(HostCore& c, const std::string& mapId);                               // Map.cpp
void drawAvionics(HostCore& c);                                                    // Avionics.cpp
void dropAvionics(HostCore& c, int pluginId);                                      // Avionics.cpp
void listAvionics(const HostCore& c, int pluginId, std::vector<std::string>& out); // Avionics.cpp
void dropPlanes(HostCore& c, int pluginId);                                        // Planes.cpp
bool isTrafficDataRef(const std::string& name);                                    // Planes.cpp
void linkTraffic(HostCore& c);                                                     // Planes.cpp
void aiCountChanged(HostCore& c, int previousCount);                               // Planes.cpp
void stepTraffic(HostCore& c);                                                     // Planes.cpp
void shiftTraffic(HostCore& c);                                                    // Planes.cpp
NavState& navDatabase(HostCore& c);                                                // Navigation.cpp
} // namespace simhost::detail

namespace simhost::detail {
// Objects, instances and probes (Scenery.cpp)
void deliverObjectLoads(HostCore& c);
void dropScenery(HostCore& c, int pluginId);
void listScenery(const HostCore& c, int pluginId, std::vector<std::string>& out);
} // namespace simhost::detail
