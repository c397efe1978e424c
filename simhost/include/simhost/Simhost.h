// simhost's control API: the side of the host a test, a script or kalvora-sim
// holds. The plug-in side is the X-Plane API (the sdk/ headers), which
// libsimhost defines; nothing here looks like an X-Plane function.
//
// Exactly one Host is alive per process (the X-Plane API is a set of free
// functions, so it needs one current host). Everything runs on the thread that
// calls the Host; frames advance only when the Host is told to run them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace simhost {

/// Which 3-D drawing phases the emulated X-Plane calls.
enum class GraphicsEra {
    FollowVersion, ///< legacy before X-Plane 11.50, modern from it on
    LegacyOpenGL,  ///< the 3-D phases 0..30 are called (X-Plane before 11.50)
    Modern         ///< the 3-D phases 0..30 are never called (Vulkan/Metal, all of X-Plane 12)
};

/// How the emulated X-Plane is set up.
struct HostOptions {
    int xplaneVersion = 12100;     ///< what XPLMGetVersions reports as the X-Plane version
    int xplmVersion = 410;         ///< the XPLM API version reported
    std::string aircraft = "A320"; ///< profile name (looked up in aircraftDir) or a profile file path
    double fps = 60;               ///< frames per simulated second
    bool render = false;           ///< make an OpenGL context and call draw callbacks
    bool realTime = false;         ///< sleep so that sim time follows wall time
    std::string sandboxDir;        ///< X-Plane folder to use; empty: a fresh temp dir, removed at exit
    double startHeadingDeg = 0;    ///< true heading of the user aircraft at start, degrees
    double startLatDeg = 47.4647;  ///< reference latitude of the apron, degrees
    double startLonDeg = 8.5492;   ///< reference longitude of the apron, degrees
    double startElevationM = 432;  ///< apron elevation above MSL, metres
    int screenWidth = 1024;        ///< XPLMGetScreenSize, pixels
    int screenHeight = 768;        ///< pixels
    bool echoLog = false;          ///< also print XPLMDebugString output to stderr
    std::string speechWavDir; ///< non-empty: speak each XPLMSpeakString into a WAV here (espeak-ng) and keep
                              ///< each PCM buffer a plug-in plays as sound-NNN.wav (see writeAudioMix)
    GraphicsEra graphicsEra = GraphicsEra::FollowVersion; ///< which 3-D drawing phases are called
    /// false: XPLMFindSymbol finds none of the deprecated functions (XPLMCommandButtonPress, XPLMDrawObjects,
    /// ...), as on a host that no longer exports them
    bool exportDeprecated = true;
    /// true: rendered frames show the apron and a stand-in of the user aircraft under the plug-ins'
    /// drawing; false: only what plug-ins draw, on the plain sky colour
    bool drawWorld = true;
    /// Where profile names are looked up (<name>.acp); empty: simhost's own profiles (simhost/aircraft)
    std::string aircraftDir;
};

/// Where a plug-in's files sit in Resources/plugins; X-Plane loads all three.
enum class PluginLayout {
    Flat,  ///< <Name>.xpl, its data folder <Name>/ beside it (X-Plane's oldest layout)
    Fat,   ///< <Name>/lin_x64/<Name>.xpl (win_x64, mac_x64 on those systems), data in <Name>/
    Fat64, ///< <Name>/64/lin.xpl (win.xpl, mac.xpl), data in <Name>/ (the layout before X-Plane 11.10)
};

/// A plug-in living in the test process: callbacks instead of a .xpl file.
struct InProcessPlugin {
    std::string name, signature, description;
    std::function<int()> start;  ///< XPluginStart; empty = returns 1
    std::function<int()> enable; ///< XPluginEnable; empty = returns 1
    std::function<void()> disable;
    std::function<void()> stop;
    std::function<void(int from, int msg, void* param)> receive; ///< XPluginReceiveMessage
};

/// One line of what happened, in order.
struct TranscriptEntry {
    double simTime; ///< seconds of sim time when it happened
    /// "speech","log","message","command","menu","key","view","camera","plugin","world", "dataref" (a
    /// plug-in wrote a NaN or an infinity into one of X-Plane's own datarefs)
    std::string kind;
    std::string text;
};

/// The user aircraft: profile values (read from the profile) and live state.
struct Aircraft {
    // --- profile (metres, relative to the aircraft's reference point; x right, y up, z aft) ---
    std::string type;       ///< ICAO type, e.g. "A320"
    std::string name;       ///< descriptive name
    std::string tailNumber; ///< registration
    double sizeX = 0;       ///< half span-ish extent used by acf_size_x, metres
    double sizeZ = 0;       ///< half length-ish extent used by acf_size_z, metres
    int engineCount = 2;
    bool tailDragger = false; ///< true: gear index 0 is the tail wheel
    struct Gear {
        double x = 0, y = 0, z = 0; ///< gear attach point, metres
        double legLength = 0;       ///< metres
        double tyreRadius = 0;      ///< metres
    };
    std::vector<Gear> gear; ///< [0] nose (or tail) gear, then the mains
    double emptyWeightKg = 0;
    double mtowKg = 0;
    double groundPitchDeg = 0; ///< attitude when parked (tail-draggers sit nose-up), degrees
    // --- live state ---
    bool engineRunning[8] = {}; ///< per engine
    double n1Percent[8] = {};   ///< per engine
    double batteryVolts = 28;
    bool parkingBrake = true;
};

/// Who has the camera and where it is.
struct CameraState {
    double x = 0, y = 0, z = 0;             ///< local OpenGL metres
    float pitch = 0, heading = 0, roll = 0; ///< degrees
    float zoom = 1;
    bool controlled = false;     ///< a plug-in controls it
    int controllerPluginId = -1; ///< which one, or -1
    int howLong = 0;             ///< xplm_ControlCameraUntilViewChanges (1) or Forever (2)
    int viewType = 0;            ///< sim/graphics/view/view_type
    bool external = false;       ///< sim/graphics/view/view_is_external
};

/// A window as the host sees it.
struct WindowInfo {
    int id;                       ///< simhost's number for it (stable while it exists)
    int pluginId;                 ///< owner
    int left, top, right, bottom; ///< screen pixels, origin bottom-left
    bool visible;
    bool hasKeyboardFocus;
    std::string title;  ///< XPLMSetWindowTitle, if any
    int decoration = 0; ///< XPLMWindowDecoration (1: the host draws a frame and title bar)
    int layer = 0;      ///< XPLMWindowLayer
};

/// An object instance a plug-in placed in the world (XPLMCreateInstance).
struct InstanceInfo {
    int pluginId;                           ///< owner
    std::string objectPath;                 ///< the OBJ file it shows
    double x = 0, y = 0, z = 0;             ///< local OpenGL metres
    float pitch = 0, heading = 0, roll = 0; ///< degrees
    bool positioned = false;                ///< XPLMInstanceSetPosition was called
    std::vector<std::string> datarefs;      ///< names given at creation
    std::vector<float> data;                ///< last values, one per name
};

/// AI aircraft X-Plane can run besides the user's (its classic multiplayer set plane1..plane19).
constexpr int kMaxAiAircraft = 19;

/// The weather simhost reports where no plug-in set its own (XPLMGetWeatherAtLocation,
/// XPLMGetMETARForAirport). Values at the apron; aloft, temperature falls 6.5 K per km and pressure as
/// in the standard atmosphere.
struct Weather {
    float temperatureC = 15;
    float dewpointC = 5;
    float qnhPa = 101325; ///< sea-level pressure, Pascals
    float windDirDeg = 0; ///< where the wind comes from, degrees true
    float windSpeedMps = 0;
    float gustMps = 0; ///< total speed in gusts, 0: none
    float visibilityM = 10000;
    float precipRatio = 0;               ///< 0..1
    float cloudCoverage = 0;             ///< 0..1 of the one cloud layer; 0: clear sky
    float cloudBaseM = 0, cloudTopM = 0; ///< metres MSL
    std::string metar;                   ///< the airport's METAR; empty: composed from the values above
};

/// An icon or label a plug-in's map layer drew in the last frame of a shown map.
struct MapMark {
    std::string map, layer; ///< map identifier, layer name
    std::string kind;       ///< "icon" or "label"
    std::string text;       ///< the label's text, or the icon sheet's path
    float x = 0, y = 0;     ///< map units
    float rotationDeg = 0;
};

/// The emulated X-Plane.
class Host {
public:
    explicit Host(HostOptions options = {});
    ~Host(); ///< unloads every plug-in, removes a temp sandbox
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// The live host, or nullptr.
    static Host* current();
    const HostOptions& options() const;

    // ---- plug-ins ----
    // Relative paths are taken from the working directory the Host was created in: while a Host
    // lives, the process's working directory is its X-Plane folder, as X-Plane's is.

    /// Installs a .xpl (flat, with its data folder beside it, if any) or a plug-in folder (fat
    /// layout, copied whole) into the sandbox's Resources/plugins, loads, starts and enables it.
    /// Returns its plug-in ID or -1 (with the reason in *error and the log).
    int loadPlugin(const std::string& xplPath, std::string* error = nullptr);
    /// Same, with the plug-in's data folder taken from dataDir (installed as Resources/plugins/<name>/).
    int loadPlugin(const std::string& xplPath, const std::string& dataDir, std::string* error);
    /// Same, installing the .xpl in the given layout with its data folder (dataDir, or the folder named
    /// like the file beside it).
    int loadPlugin(const std::string& xplPath, const std::string& dataDir, PluginLayout layout,
                   std::string* error = nullptr);
    /// Copies a plug-in into Resources/plugins as loadPlugin does, without loading it. Returns the
    /// installed .xpl's path, or "" (with the reason in *error).
    std::string installPlugin(const std::string& path, const std::string& dataDir = "",
                              PluginLayout layout = PluginLayout::Flat, std::string* error = nullptr);
    /// Copies every plug-in of a plug-ins folder (another X-Plane's Resources/plugins): its .xpl files
    /// with their data folders and its plug-in folders. Returns how many, or -1 when it is no folder.
    int installPluginsFolder(const std::string& pluginsDir, std::string* error = nullptr);
    /// X-Plane's start-up: every plug-in in Resources/plugins that is not loaded yet is loaded in name
    /// order and started (XPluginStart), then each is enabled (XPluginEnable); then every plug-in gets
    /// XPLM_MSG_PLANE_LOADED (user aircraft), XPLM_MSG_AIRPORT_LOADED and XPLM_MSG_SCENERY_LOADED.
    /// Returns the IDs of the plug-ins it started; a plug-in that fails is logged (and in *errors).
    std::vector<int> startInstalledPlugins(std::string* errors = nullptr);
    /// Disables, stops and unloads a plug-in; whatever it registered disappears.
    void unloadPlugin(int id);
    /// Adds a plug-in made of C++ callbacks; returns its ID or -1 when start() returns 0.
    int addPlugin(InProcessPlugin plugin);
    /// Plug-in that API calls made outside any host callback are attributed to.
    void setDirectCaller(int pluginId);
    /// IDs of the loaded plug-ins, in load order.
    std::vector<int> plugins() const;
    bool pluginEnabled(int id) const;
    /// XPluginEnable again after disablePlugin(); false when the plug-in refuses.
    bool enablePlugin(int id);
    /// XPluginDisable: the plug-in stays loaded but gets no callbacks.
    void disablePlugin(int id);
    /// What a plug-in still has registered ("dataref sim/x", "flightloop", "hotkey F1", ...).
    std::vector<std::string> registrations(int pluginId) const;
    /// What the last unloaded plug-in still had registered after its XPluginStop (a leak when not empty).
    const std::vector<std::string>& leftoversAtLastUnload() const;
    /// Sends a message as X-Plane (from 0) or as another plug-in; to == -1 broadcasts.
    void sendMessage(int to, int message, void* param = nullptr, int from = 0);
    /// Called just before (entering true) and just after (false) every call the host makes into a
    /// plug-in: entry points, flight loops, draw, menu, key, window, widget and accessor callbacks;
    /// `what` names the kind ("XPluginEnable", "flight loop", ...). For profilers and benchmarks, as
    /// X-Plane's own per-plug-in timings; none by default (an empty function removes it).
    void setCallObserver(std::function<void(int pluginId, const char* what, bool entering)> observer);

    // ---- clock and frames ----
    void runFrames(int n);
    void runFor(double seconds);
    /// Runs frames until pred() holds (checked before each frame) or timeoutSeconds pass on the host's
    /// wall clock (which runs while paused, so a paused sim cannot hang the caller).
    bool runUntil(const std::function<bool()>& pred, double timeoutSeconds);
    double simTime() const;  ///< seconds of sim time since start
    double wallTime() const; ///< XPLMGetElapsedTime: advances even while paused
    int frameCount() const;
    void setPaused(bool paused);
    bool paused() const;
    void setFps(double fps);

    // ---- datarefs, as the user, the sim or another plug-in ----
    double getf(const std::string& name, int index = 0);
    /// A dataref found once by name, for a caller that reads it every frame: getf(DataRefId) looks
    /// nothing up. Null (false) when the host has no such dataref now.
    struct DataRefId {
        void* handle = nullptr; ///< the XPLMDataRef
        explicit operator bool() const { return handle != nullptr; }
    };
    DataRefId findDataRef(const std::string& name);
    /// getf(name) without the look-up by name.
    double getf(DataRefId ref, int index = 0);
    int geti(const std::string& name, int index = 0);
    /// index -1: the scalar value; otherwise one element of an array dataref.
    void set(const std::string& name, double value, int index = -1);
    std::string getString(const std::string& name);
    void setString(const std::string& name, const std::string& value);
    bool exists(const std::string& name);
    /// Makes a dataref disappear as if this X-Plane never had it.
    void removeDataRef(const std::string& name);
    /// Emulates a host without this command: XPLMFindCommand returns NULL for it from now on.
    /// X-Plane's own uses of it (legacy buttons and key strokes) still work.
    void removeCommand(const std::string& name);

    // ---- world ----
    Aircraft& aircraft();
    /// Replaces the user aircraft with a profile and sends XPLM_MSG_PLANE_LOADED (102).
    void loadAircraft(const std::string& profile);
    void loadAirport(); ///< sends XPLM_MSG_AIRPORT_LOADED (103)
    void loadScenery(); ///< sends XPLM_MSG_SCENERY_LOADED (104)
    /// Moves the local frame's origin to a new reference point (degrees), as X-Plane does when the
    /// aircraft gets far from it: lat_ref/lon_ref change, the aircraft keeps its place in the world
    /// under new local coordinates, and object instances keep their old coordinates (so stand
    /// somewhere else) unless XPLMInstanceSetAutoShift was called for them. No message is sent.
    void shiftLocalOrigin(double refLatDeg, double refLonDeg);

    /// Number of AI aircraft besides the user's (0..kMaxAiAircraft), as in X-Plane's settings.
    void setAiAircraftCount(int count);
    /// The weather every place has unless a plug-in set its own.
    void setWeather(const Weather& weather);
    const Weather& weather() const;

    // ---- maps ----
    /// Opens a map (XPLM_MAP_USER_INTERFACE, XPLM_MAP_IOS): the creation hooks are told, layers may be
    /// created in it, and from the next frame on its layers draw each frame.
    void showMap(const std::string& mapId);
    /// Closes a map: its layers hear they will be deleted and are gone.
    void hideMap(const std::string& mapId);
    /// Icons and labels the layers of shown maps drew in the last frame.
    const std::vector<MapMark>& mapMarks() const;

    // ---- menus ----
    std::string menuTree() const;
    /// Picks an item by its path of names, "Plugins/Kalvora/Push straight back". False if absent or disabled.
    bool pickMenu(const std::string& path);
    int menuCheck(const std::string& path) const; ///< 0 none, 1 unchecked, 2 checked; -1 absent
    bool menuEnabled(const std::string& path) const;
    std::vector<std::string> menuItems(const std::string& path) const;

    // ---- keys and mouse ----
    /// Key down then key up, routed like X-Plane: sniffers, hot keys, focused window.
    void pressKey(int vk, int flags = 0, char ch = 0);
    /// One key event (flags say down/up/shift...).
    void keyEvent(char ch, int flags, int vk);
    /// Mouse down and up at a screen point; true when a window took the click.
    bool click(int x, int y);
    void mouseDown(int x, int y);
    void mouseDrag(int x, int y);
    void mouseUp(int x, int y);
    void scroll(int x, int y, int clicks);
    /// Resizes a window as a user dragging its frame's corner would (top-left corner stays), within its
    /// resizing limits; false for an unknown window or one the user cannot resize.
    bool resizeWindow(int windowId, int width, int height);

    // ---- commands ----
    /// Runs a command once (begin then end). False when no such command exists.
    bool runCommand(const std::string& name);
    /// Commands that were run (once or begin), in order.
    std::vector<std::string> commandsRun() const;

    // ---- camera, windows, graphics ----
    CameraState camera() const;
    std::vector<WindowInfo> windows() const;
    /// Object instances alive now, in creation order.
    std::vector<InstanceInfo> instances() const;
    /// OBJ files loaded through XPLMLoadObject and not yet unloaded (one entry per reference).
    std::vector<std::string> loadedObjects() const;
    bool renderingAvailable() const;
    bool screenshot(const std::string& pngPath);

    // ---- transcript and sandbox ----
    const std::vector<TranscriptEntry>& transcript() const;
    /// Transcript lines of one kind, texts only.
    std::vector<std::string> transcriptTexts(const std::string& kind) const;
    /// Writes the run's audio as one 16-bit WAV: every utterance spoken into speechWavDir at its sim time
    /// (an utterance waits for the one before it) and every sound a plug-in played mixed in at its sim
    /// time, with its volume changes, looping until stopped or the end of the run, cut where stopped;
    /// at the highest rate among them, stereo when any is. False when nothing was kept or the file cannot
    /// be written.
    bool writeAudioMix(const std::string& wavPath) const;
    std::string logText() const; ///< the sandbox Log.txt
    std::string sandbox() const; ///< X-Plane folder path, with a trailing "/"

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace simhost
