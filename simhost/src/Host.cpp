// The control API: the emulated X-Plane's lifecycle, its clock and frame loop,
// and the user's / the sim's / another plug-in's view of its state.
#include "HostInternal.h"
#include "AircraftProfile.h"
#include "TempFolder.h"
#include "graphics/GraphicsHooks.h"
#include "utils/Utf8Path.h"

#include "XPLMCamera.h"
#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "XPLMUtilities.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace fs = std::filesystem;
using HV_FileUtils::PathFromUtf8; // simhost keeps paths as X-Plane hands them out: UTF-8
using HV_FileUtils::Utf8FromPath;

namespace simhost {

namespace detail {
namespace {
HostCore* gCore = nullptr;
Host* gHost = nullptr;

constexpr double kMinFps = 1, kMaxFps = 1000; ///< frames per second simhost accepts
constexpr int kMsgPlaneLoaded = 102, kMsgAirportLoaded = 103, kMsgSceneryLoaded = 104;

double monotonicSeconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

std::string makeSandbox(const HostOptions& opt, bool& temp) {
    std::string dir = opt.sandboxDir;
    temp = dir.empty();
    if (temp) dir = makeTempFolder("simhost-");
    dir = Utf8FromPath(fs::absolute(PathFromUtf8(dir)));
    if (dir.back() != '/') dir += '/';
    return dir;
}

/// A path given to the control API: relative ones are taken from where the host was created.
std::string fromLaunchDir(const HostCore& c, const std::string& path) {
    if (path.empty() || PathFromUtf8(path).is_absolute()) return path;
    return Utf8FromPath((PathFromUtf8(c.launchDir) / PathFromUtf8(path)).lexically_normal());
}

void layOutSandbox(HostCore& c) {
    fs::create_directories(PathFromUtf8(c.sandbox + "Resources/plugins"));
    fs::create_directories(PathFromUtf8(c.sandbox + "Output/preferences"));
    const std::string acf = c.sandbox + "Aircraft/" + c.aircraft.type;
    fs::create_directories(PathFromUtf8(acf));
    std::ofstream(PathFromUtf8(acf + "/" + c.aircraft.type + ".acf"))
        << "A\n1000 Version\nACF placeholder for " << c.aircraft.name << "\n";
}

} // namespace

HostCore* core() {
    return gCore;
}
void setCore(HostCore* c) {
    gCore = c;
}

} // namespace detail

using namespace detail;

struct Host::Impl {
    HostCore core;
};

Host::Host(HostOptions options) : impl_(new Impl) {
    if (gHost) throw std::logic_error("simhost: only one Host may be alive at a time");
    HostCore& c = impl_->core;
    if (!(options.fps >= kMinFps && options.fps <= kMaxFps)) options.fps = 60;
    std::error_code here;
    c.launchDir = Utf8FromPath(fs::current_path(here));
    if (here) c.launchDir = Utf8FromPath(fs::temp_directory_path(here)); // the working directory was removed
    for (std::string* dir : {&options.speechWavDir, &options.aircraftDir})
        if (!dir->empty()) *dir = Utf8FromPath(fs::absolute(PathFromUtf8(*dir)));
    c.opt = options;
    std::string why;
    if (!loadAircraftProfile(options.aircraft, options.aircraftDir, c.aircraft, &why))
        throw std::runtime_error("simhost: " + why);
    c.sandbox = makeSandbox(options, c.tempSandbox);
    layOutSandbox(c);
    c.log = HV_FileUtils::OpenFile((c.sandbox + "Log.txt").c_str(), "w");
    gHost = this;
    setCore(&c);
    writeLog("Log.txt for X-Plane " + std::to_string(options.xplaneVersion) + " (simhost, XPLM " +
             std::to_string(options.xplmVersion) + ")\n");
    // Plug-ins open files relative to the X-Plane folder, X-Plane's working directory.
    std::error_code cwd;
    fs::current_path(PathFromUtf8(c.sandbox), cwd);
    if (cwd)
        writeLog("simhost: cannot make " + c.sandbox + " the working directory: " + cwd.message() + "\n");
    installSimDataRefs(c);
    defineSimCommands(c);
    createRootMenus(c);
    c.datarefsAnnounced = dataRefCount(c);
    worldReset(c);
    gfx::setEnabled(options.render);
    updateCamera(c);
    c.realStart = monotonicSeconds();
}

Host::~Host() {
    HostCore& c = impl_->core;
    for (size_t i = c.plugins.size(); i-- > 0;) {
        try {
            unloadPluginNow(c, c.plugins[i]->id);
        } catch (...) {
        }
    }
    gfx::setEnabled(false);
    if (c.log) std::fclose(c.log);
    c.log = nullptr;
    setCore(nullptr);
    gHost = nullptr;
    std::error_code cwd;
    fs::current_path(PathFromUtf8(c.launchDir), cwd);
    if (c.tempSandbox) {
        std::error_code ec;
        fs::remove_all(PathFromUtf8(c.sandbox), ec);
    }
}

Host* Host::current() {
    return gHost;
}
const HostOptions& Host::options() const {
    return impl_->core.opt;
}

// ---------------------------------------------------------------- plug-ins
int Host::loadPlugin(const std::string& xplPath, std::string* error) {
    return loadPlugin(xplPath, "", PluginLayout::Flat, error);
}
int Host::loadPlugin(const std::string& xplPath, const std::string& dataDir, std::string* error) {
    return loadPlugin(xplPath, dataDir, PluginLayout::Flat, error);
}
int Host::loadPlugin(const std::string& xplPath, const std::string& dataDir, PluginLayout layout,
                     std::string* error) {
    HostCore& c = impl_->core;
    return loadPluginFile(c, fromLaunchDir(c, xplPath), fromLaunchDir(c, dataDir), layout, error);
}
std::string Host::installPlugin(const std::string& path, const std::string& dataDir, PluginLayout layout,
                                std::string* error) {
    HostCore& c = impl_->core;
    return detail::installPlugin(c, fromLaunchDir(c, path), fromLaunchDir(c, dataDir), layout, error);
}
int Host::installPluginsFolder(const std::string& pluginsDir, std::string* error) {
    HostCore& c = impl_->core;
    return detail::installPluginsFolder(c, fromLaunchDir(c, pluginsDir), error);
}
std::vector<int> Host::startInstalledPlugins(std::string* errors) {
    HostCore& c = impl_->core;
    std::vector<int> ids = detail::startInstalledPlugins(c, errors);
    // Then X-Plane loads the user's aircraft, puts it at its airport and loads the scenery around it.
    record("world", "aircraft " + c.aircraft.type);
    sendToPlugin(XPLM_NO_PLUGIN_ID, kMsgPlaneLoaded, nullptr, 0); // param 0: the user's aircraft
    loadAirport();
    loadScenery();
    return ids;
}
void Host::unloadPlugin(int id) {
    unloadPluginNow(impl_->core, id);
}
int Host::addPlugin(InProcessPlugin plugin) {
    return addInProcessPlugin(impl_->core, std::move(plugin));
}
void Host::setDirectCaller(int pluginId) {
    impl_->core.directCaller = pluginId;
}

std::vector<int> Host::plugins() const {
    std::vector<int> ids;
    for (auto& p : impl_->core.plugins)
        if (p->alive) ids.push_back(p->id);
    return ids;
}

bool Host::pluginEnabled(int id) const {
    return pluginActive(id) && id > 0;
}
bool Host::enablePlugin(int id) {
    return detail::enablePlugin(impl_->core, id);
}
void Host::disablePlugin(int id) {
    detail::disablePlugin(impl_->core, id);
}
std::vector<std::string> Host::registrations(int pluginId) const {
    return listRegistrations(impl_->core, pluginId);
}
const std::vector<std::string>& Host::leftoversAtLastUnload() const {
    return impl_->core.lastLeftovers;
}

void Host::sendMessage(int to, int message, void* param, int from) {
    sendToPlugin(to, message, param, from);
}

// ---------------------------------------------------------------- clock and frames
void Host::runFrames(int n) {
    HostCore& c = impl_->core;
    const double dt = 1.0 / c.opt.fps;
    for (int i = 0; i < n; ++i) {
        worldPushEdits(c);
        c.wallTime += dt;
        if (!c.paused) c.simTime += dt;
        ++c.cycle;
        ++c.frames;
        c.datarefByName.at("sim/time/total_running_time_sec")->values[0] = c.simTime;
        // Held commands get their "continue" phase once per frame.
        std::vector<CommandRec*> held;
        for (auto& h : c.commandsHeld)
            held.push_back(h.first);
        for (CommandRec* cmd : held)
            if (c.commandsHeld.count(cmd)) runCommandPhase(cmd, 1);
        announceNewDataRefs(c);
        deliverObjectLoads(c);
        ++c.flightLoopCounter;
        runFlightLoops(c, 0);
        if (!c.paused) worldStep(c, dt);
        runFlightLoops(c, 1);
        c.lastFlightLoopDispatch = c.wallTime;
        stepSounds(c);
        stepMaps(c);
        updateCamera(c);
        drawFrame(c);
        worldPullState(c);
        if (c.opt.realTime) {
            const double ahead = c.wallTime - (monotonicSeconds() - c.realStart);
            if (ahead > 0) std::this_thread::sleep_for(std::chrono::duration<double>(ahead));
        }
    }
}

void Host::runFor(double seconds) {
    if (!(seconds > 0)) return;
    runFrames(static_cast<int>(std::ceil(seconds * impl_->core.opt.fps - 1e-9)));
}

bool Host::runUntil(const std::function<bool()>& pred, double timeoutSeconds) {
    HostCore& c = impl_->core;
    const double end = c.wallTime + timeoutSeconds;
    while (true) {
        if (pred && pred()) return true;
        if (c.wallTime >= end - 1e-9) return false;
        runFrames(1);
    }
}

double Host::simTime() const {
    return impl_->core.simTime;
}
double Host::wallTime() const {
    return impl_->core.wallTime;
}
int Host::frameCount() const {
    return impl_->core.frames;
}

void Host::setPaused(bool paused) {
    HostCore& c = impl_->core;
    if (c.paused != paused) runCommand(paused ? "sim/operation/pause_on" : "sim/operation/pause_off");
}
bool Host::paused() const {
    return impl_->core.paused;
}

void Host::setFps(double fps) {
    if (fps >= kMinFps && fps <= kMaxFps) impl_->core.opt.fps = fps;
}

// ---------------------------------------------------------------- datarefs
namespace {

/// Runs an API call as another plug-in would (X-Plane itself when no plug-in is involved).
template <class F> auto asHost(F&& f) {
    CallingPlugin guard(0);
    return f();
}

bool isAttitude(const std::string& n) {
    return n == "sim/flightmodel/position/psi" || n == "sim/flightmodel/position/theta" ||
           n == "sim/flightmodel/position/the" || n == "sim/flightmodel/position/phi";
}

} // namespace

double Host::getf(const std::string& name, int index) {
    worldPushEdits(impl_->core);
    return asHost([&]() -> double {
        XPLMDataRef r = XPLMFindDataRef(name.c_str());
        if (!r) return 0;
        int t = XPLMGetDataRefTypes(r);
        if (t & xplmType_Double) return XPLMGetDatad(r);
        if (t & xplmType_Float) return XPLMGetDataf(r);
        if (t & xplmType_Int) return XPLMGetDatai(r);
        if (t & xplmType_FloatArray) {
            float v = 0;
            return XPLMGetDatavf(r, &v, index, 1) == 1 ? v : 0.0;
        }
        if (t & xplmType_IntArray) {
            int v = 0;
            return XPLMGetDatavi(r, &v, index, 1) == 1 ? v : 0.0;
        }
        if (t & xplmType_Data) {
            unsigned char b = 0;
            return XPLMGetDatab(r, &b, index, 1) == 1 ? b : 0.0;
        }
        return 0;
    });
}

int Host::geti(const std::string& name, int index) {
    double v = getf(name, index);
    return std::isfinite(v) ? static_cast<int>(v) : 0;
}

void Host::set(const std::string& name, double value, int index) {
    HostCore& c = impl_->core;
    worldPushEdits(c);
    DataRefRec* rec = findDataRefRec(name);
    if (!rec || rec->removed) return;
    if (rec->owner == 0) {
        // The sim sets its own state, read-only datarefs included.
        if (name == "sim/flightmodel/position/groundspeed") {
            c.world.commandedSpeed = value; // taxi at that speed
            return;
        }
        if (name == "sim/flightmodel/position/y_agl") {
            worldHoldHeight(c, value); // fly at that height
            return;
        }
        if (name == "sim/flightmodel/position/magpsi" || name == "sim/flightmodel/position/mag_psi") {
            // The sim's magnetic heading: a magnetic variation at this place.
            const double psi = c.datarefByName.at("sim/flightmodel/position/psi")->values[0];
            c.world.magneticVariationDeg = psi - value;
            c.datarefByName.at("sim/flightmodel/position/magpsi")->values[0] = value;
            c.datarefByName.at("sim/flightmodel/position/mag_psi")->values[0] = value;
            return;
        }
        if (rec->types & xplmType_Data) {
            if (index >= 0 && index < static_cast<int>(rec->bytes.size()))
                rec->bytes[static_cast<size_t>(index)] = static_cast<char>(value);
        } else if (index < 0) {
            if (!rec->values.empty()) rec->values[0] = value;
        } else if (index < static_cast<int>(rec->values.size())) {
            rec->values[static_cast<size_t>(index)] = value;
        }
        if (rec->onWrite) rec->onWrite(*rec);
        if (isAttitude(name)) {
            auto v = [&](const char* n) { return c.datarefByName.at(n)->values[0]; };
            const char* pitch = c.datarefByName.at("sim/flightmodel/position/theta")->removed
                                    ? "sim/flightmodel/position/the"
                                    : "sim/flightmodel/position/theta";
            worldSetAttitude(c, v("sim/flightmodel/position/psi"), v(pitch),
                             v("sim/flightmodel/position/phi"));
        }
        if (name == "sim/flightmodel/position/local_x" || name == "sim/flightmodel/position/local_z") {
            // A jump by the sim, not a movement: no groundspeed from it.
            c.world.prevX = c.datarefByName.at("sim/flightmodel/position/local_x")->values[0];
            c.world.prevZ = c.datarefByName.at("sim/flightmodel/position/local_z")->values[0];
        }
        worldPullState(c);
        return;
    }
    asHost([&] {
        XPLMDataRef r = rec;
        int t = XPLMGetDataRefTypes(r);
        if (index < 0 && (t & xplmType_Double))
            XPLMSetDatad(r, value);
        else if (index < 0 && (t & xplmType_Float))
            XPLMSetDataf(r, static_cast<float>(value));
        else if (index < 0 && (t & xplmType_Int))
            XPLMSetDatai(r, static_cast<int>(value));
        else if (t & xplmType_FloatArray) {
            float v = static_cast<float>(value);
            XPLMSetDatavf(r, &v, index < 0 ? 0 : index, 1);
        } else if (t & xplmType_IntArray) {
            int v = static_cast<int>(value);
            XPLMSetDatavi(r, &v, index < 0 ? 0 : index, 1);
        }
        return 0;
    });
}

std::string Host::getString(const std::string& name) {
    return asHost([&]() -> std::string {
        XPLMDataRef r = XPLMFindDataRef(name.c_str());
        if (!r || !(XPLMGetDataRefTypes(r) & xplmType_Data)) return "";
        int size = XPLMGetDatab(r, nullptr, 0, 0);
        if (size <= 0) return "";
        std::string buf(static_cast<size_t>(size), '\0');
        int n = XPLMGetDatab(r, &buf[0], 0, size);
        buf.resize(static_cast<size_t>(std::max(n, 0)));
        size_t nul = buf.find('\0');
        if (nul != std::string::npos) buf.resize(nul);
        return buf;
    });
}

void Host::setString(const std::string& name, const std::string& value) {
    DataRefRec* rec = findDataRefRec(name);
    if (!rec || rec->removed || !(rec->types & xplmType_Data)) return;
    if (rec->owner == 0) {
        std::fill(rec->bytes.begin(), rec->bytes.end(), '\0');
        std::copy_n(value.begin(), std::min(value.size(), rec->bytes.empty() ? 0 : rec->bytes.size() - 1),
                    rec->bytes.begin());
        if (rec->onWrite) rec->onWrite(*rec);
        return;
    }
    asHost([&] {
        std::string buf = value;
        buf.push_back('\0');
        XPLMSetDatab(rec, &buf[0], 0, static_cast<int>(buf.size()));
        return 0;
    });
}

bool Host::exists(const std::string& name) {
    return XPLMFindDataRef(name.c_str()) != nullptr;
}

void Host::removeDataRef(const std::string& name) {
    if (DataRefRec* r = findDataRefRec(name)) r->removed = true;
}

void Host::removeCommand(const std::string& name) {
    if (CommandRec* r = commandRec(name)) r->hidden = true;
}

// ---------------------------------------------------------------- world
Aircraft& Host::aircraft() {
    return impl_->core.aircraft;
}

void Host::loadAircraft(const std::string& profile) {
    HostCore& c = impl_->core;
    Aircraft a;
    std::string why;
    const std::string path = profile.find('/') == std::string::npos ? profile : fromLaunchDir(c, profile);
    if (!loadAircraftProfile(path, c.opt.aircraftDir, a, &why)) throw std::runtime_error("simhost: " + why);
    c.aircraft = a;
    c.opt.aircraft = path;
    layOutSandbox(c);
    worldReset(c);
    record("world", "aircraft " + a.type);
    sendToPlugin(XPLM_NO_PLUGIN_ID, kMsgPlaneLoaded, nullptr, 0); // param 0: the user's aircraft
}

void Host::loadAirport() {
    record("world", "airport loaded");
    sendToPlugin(XPLM_NO_PLUGIN_ID, kMsgAirportLoaded, nullptr, 0);
}

void Host::loadScenery() {
    record("world", "scenery loaded");
    sendToPlugin(XPLM_NO_PLUGIN_ID, kMsgSceneryLoaded, nullptr, 0);
}

void Host::shiftLocalOrigin(double refLatDeg, double refLonDeg) {
    HostCore& c = impl_->core;
    worldShiftOrigin(c, refLatDeg, refLonDeg);
    record("world", "local origin moved to " + std::to_string(refLat(c)) + ", " + std::to_string(refLon(c)));
}

// ---------------------------------------------------------------- menus
std::string Host::menuTree() const {
    return menuTreeText();
}
bool Host::pickMenu(const std::string& path) {
    return pickMenuPath(path);
}
int Host::menuCheck(const std::string& path) const {
    return menuCheckAt(path);
}
bool Host::menuEnabled(const std::string& path) const {
    return menuEnabledAt(path);
}
std::vector<std::string> Host::menuItems(const std::string& path) const {
    return menuItemNames(path);
}

// ---------------------------------------------------------------- keys and mouse
void Host::pressKey(int vk, int flags, char ch) {
    const int mods = flags & ~(xplm_DownFlag | xplm_UpFlag);
    record("key", std::string("press ") + XPLMGetVirtualKeyDescription(static_cast<char>(vk)));
    routeKey(ch, mods | xplm_DownFlag, static_cast<char>(vk));
    routeKey(ch, mods | xplm_UpFlag, static_cast<char>(vk));
}

void Host::keyEvent(char ch, int flags, int vk) {
    routeKey(ch, flags, static_cast<char>(vk));
}

bool Host::click(int x, int y) {
    bool taken = mouseDownAt(x, y);
    mouseUpAt(x, y);
    return taken;
}
void Host::mouseDown(int x, int y) {
    mouseDownAt(x, y);
}
void Host::mouseDrag(int x, int y) {
    mouseDragAt(x, y);
}
void Host::mouseUp(int x, int y) {
    mouseUpAt(x, y);
}
void Host::scroll(int x, int y, int clicks) {
    scrollAt(x, y, clicks);
}

// ---------------------------------------------------------------- commands
bool Host::runCommand(const std::string& name) {
    CommandRec* cmd = commandRec(name);
    if (!cmd) return false;
    asHost([&] {
        XPLMCommandOnce(cmd);
        return 0;
    });
    return true;
}
std::vector<std::string> Host::commandsRun() const {
    return impl_->core.commandsRun;
}

// ---------------------------------------------------------------- camera, windows, graphics
CameraState Host::camera() const {
    const HostCore& c = impl_->core;
    CameraState s;
    s.x = c.camera.pos[0];
    s.y = c.camera.pos[1];
    s.z = c.camera.pos[2];
    s.pitch = c.camera.pos[3];
    s.heading = c.camera.pos[4];
    s.roll = c.camera.pos[5];
    s.zoom = c.camera.pos[6];
    s.controlled = c.camera.controlled;
    s.controllerPluginId = c.camera.controlled ? c.camera.owner : -1;
    s.howLong = c.camera.controlled ? c.camera.howLong : 0;
    s.viewType = static_cast<int>(c.datarefByName.at("sim/graphics/view/view_type")->values[0]);
    s.external = c.datarefByName.at("sim/graphics/view/view_is_external")->values[0] != 0;
    return s;
}

std::vector<WindowInfo> Host::windows() const {
    return windowList();
}
bool Host::renderingAvailable() const {
    return gfx::available();
}

bool Host::screenshot(const std::string& pngPath) {
    std::string why;
    if (gfx::writePng(fromLaunchDir(impl_->core, pngPath), &why)) return true;
    writeLog("simhost: no screenshot " + pngPath + ": " + why + "\n");
    return false;
}

// ---------------------------------------------------------------- transcript and sandbox
const std::vector<TranscriptEntry>& Host::transcript() const {
    return impl_->core.transcript;
}

std::vector<std::string> Host::transcriptTexts(const std::string& kind) const {
    std::vector<std::string> out;
    for (const auto& e : impl_->core.transcript)
        if (e.kind == kind) out.push_back(e.text);
    return out;
}

std::string Host::logText() const {
    std::ifstream f(PathFromUtf8(impl_->core.sandbox + "Log.txt"));
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
}

std::string Host::sandbox() const {
    return impl_->core.sandbox;
}

} // namespace simhost
