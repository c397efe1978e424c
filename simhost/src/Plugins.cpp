// XPLMPlugin.h and the plug-in lifecycle: installing plug-ins into the sandbox's
// Resources/plugins in X-Plane's layouts, dlopen, X-Plane's start-up order,
// XPluginStart/Enable/Disable/Stop, messages between plug-ins.
#include "HostInternal.h"
#include "SharedLibrary.h"
#include "utils/Utf8Path.h"

#include "XPLMPlugin.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;
using HV_FileUtils::PathFromUtf8; // paths in simhost's strings are UTF-8, as X-Plane hands them out
using HV_FileUtils::Utf8FromPath;

namespace simhost::detail {

namespace {

constexpr size_t kInfoBufferBytes = 256; ///< XPluginStart's and XPLMGetPluginInfo's buffers

/// Copies s into a 256-byte buffer owned by a plug-in, always terminated.
void copyOut(char* out, const std::string& s) {
    if (!out) return;
    size_t n = std::min(s.size(), kInfoBufferBytes - 1);
    std::memcpy(out, s.data(), n);
    out[n] = '\0';
}

/// A bounded C string from a buffer a plug-in filled (it may have forgotten the terminator).
std::string bounded(const char* buf) {
    return std::string(buf, strnlen(buf, kInfoBufferBytes - 1));
}

PluginRec& newRecord(HostCore& c) {
    c.plugins.push_back(std::make_unique<PluginRec>());
    PluginRec& p = *c.plugins.back();
    p.id = static_cast<int>(c.plugins.size()); // X-Plane is 0, plug-ins count from 1
    if (c.directCaller < 0) c.directCaller = p.id;
    return p;
}

/// XPluginStart; false when the plug-in refuses to start.
bool start(HostCore& c, PluginRec& p) {
    char name[kInfoBufferBytes] = {}, sig[kInfoBufferBytes] = {}, desc[kInfoBufferBytes] = {};
    int ok = 0;
    callInto(p.id, "XPluginStart", [&] {
        if (p.dl)
            ok = p.xStart(name, sig, desc);
        else if (p.inProcess.start)
            ok = p.inProcess.start();
        else
            ok = 1;
    });
    if (p.dl) {
        p.name = bounded(name);
        p.signature = bounded(sig);
        p.description = bounded(desc);
    }
    record("plugin", "start " + p.name + (ok ? "" : " (refused)"));
    (void)c;
    return ok != 0;
}

} // namespace

PluginRec* plugin(int id) {
    HostCore* c = core();
    if (!c || id < 1 || id > static_cast<int>(c->plugins.size())) return nullptr;
    return c->plugins[static_cast<size_t>(id - 1)].get();
}

bool pluginActive(int id) {
    if (id == 0) return true;
    PluginRec* p = plugin(id);
    return p && p->alive && p->enabled;
}

int caller() {
    int running = currentPluginId();
    if (running >= 0) return running;
    HostCore* c = core();
    return c && c->directCaller >= 0 ? c->directCaller : 0;
}

namespace {

// Fat plug-ins: X-Plane 11.10 and later look in <Name>/<platform>_x64/<Name>.xpl; the layout before it
// (still loaded) is <Name>/64/<platform>.xpl.
#if defined(_WIN32)
constexpr const char* kPlatformFolder = "win_x64";
constexpr const char* kFat64File = "win.xpl";
#elif defined(__APPLE__)
constexpr const char* kPlatformFolder = "mac_x64";
constexpr const char* kFat64File = "mac.xpl";
#else
constexpr const char* kPlatformFolder = "lin_x64";
constexpr const char* kFat64File = "lin.xpl";
#endif
constexpr const char* kFat64Folder = "64";

fs::path pluginsFolder(const HostCore& c) {
    return PathFromUtf8(c.sandbox) / "Resources" / "plugins";
}

/// The .xpl X-Plane loads from an entry of a plug-ins folder: the entry itself when it is a .xpl file;
/// for a folder <Name>, <Name>/<platform>_x64/<Name>.xpl (else the first .xpl there), else
/// <Name>/64/<platform>.xpl. Empty when X-Plane loads nothing from it (a flat plug-in's data folder).
fs::path pluginFileIn(const fs::path& entry) {
    std::error_code ec;
    if (fs::is_regular_file(entry, ec)) return entry.extension() == ".xpl" ? entry : fs::path();
    const fs::path platform = entry / kPlatformFolder;
    fs::path named = platform / entry.filename();
    named += ".xpl";
    if (fs::is_regular_file(named, ec)) return named;
    std::vector<fs::path> others;
    for (const auto& f : fs::directory_iterator(platform, ec))
        if (f.path().extension() == ".xpl" && f.is_regular_file(ec)) others.push_back(f.path());
    if (!others.empty()) return *std::min_element(others.begin(), others.end());
    const fs::path fat64 = entry / kFat64Folder / kFat64File;
    return fs::is_regular_file(fat64, ec) ? fat64 : fs::path();
}

/// A name in Resources/plugins no file or folder has yet: the plug-in's own, else with "-2", "-3"...
/// (the same plug-in installed twice: dlopen loads the second copy afresh).
fs::path freeName(const fs::path& dir, const std::string& stem, const std::string& extension) {
    std::error_code ec;
    fs::path at = dir / PathFromUtf8(stem + extension);
    for (int n = 2; fs::exists(at, ec); ++n)
        at = dir / PathFromUtf8(stem + "-" + std::to_string(n) + extension);
    return at;
}

/// Copies a plug-in into Resources/plugins; returns the installed .xpl, or empty with *why.
fs::path installFiles(HostCore& c, const fs::path& src, const fs::path& dataDir, PluginLayout layout,
                      std::string& why) {
    std::error_code ec;
    const fs::path dir = pluginsFolder(c);
    if (fs::is_directory(src, ec)) {
        // A plug-in folder goes in whole, in whatever fat layout it has.
        const fs::path xpl = pluginFileIn(src);
        if (xpl.empty()) {
            why = std::string("no ") + kPlatformFolder + "/" + Utf8FromPath(src.filename()) + ".xpl or " +
                  kFat64Folder + "/" + kFat64File + " in the plug-in folder";
            return {};
        }
        const fs::path dst = freeName(dir, Utf8FromPath(src.filename()), "");
        fs::copy(src, dst, fs::copy_options::recursive, ec);
        if (ec) why = "cannot copy into the sandbox: " + ec.message();
        return ec ? fs::path() : dst / xpl.lexically_relative(src);
    }
    if (!fs::is_regular_file(src, ec)) {
        why = "no such plug-in file";
        return {};
    }
    if (!dataDir.empty() && !fs::is_directory(dataDir, ec)) {
        why = "no data folder " + Utf8FromPath(dataDir);
        return {};
    }
    // The data folder: the one named, else the one beside the file, if any.
    const fs::path data = dataDir.empty() ? src.parent_path() / src.stem() : dataDir;
    const std::string stem = Utf8FromPath(src.stem());
    fs::path xpl, dataDst;
    if (layout == PluginLayout::Flat) {
        xpl = freeName(dir, stem, ".xpl");
        dataDst = dir / stem; // shared by a second copy of the same plug-in
    } else {
        dataDst = freeName(dir, stem, "");
        xpl = layout == PluginLayout::Fat ? dataDst / kPlatformFolder / (stem + ".xpl")
                                          : dataDst / kFat64Folder / kFat64File;
    }
    if (fs::is_directory(data, ec) && !fs::exists(dataDst, ec)) {
        fs::copy(data, dataDst, fs::copy_options::recursive, ec);
        if (ec) {
            why = "cannot copy the data folder: " + ec.message();
            return {};
        }
    }
    fs::create_directories(xpl.parent_path(), ec);
    placeLibrary(src, xpl, ec);
    if (ec) why = "cannot copy into the sandbox: " + ec.message();
    return ec ? fs::path() : xpl;
}

/// Loads an installed .xpl and finds its entry points (not started yet); nullptr with *why.
PluginRec* openPlugin(HostCore& c, const fs::path& xpl, std::string& why) {
    void* dl = openLibrary(Utf8FromPath(xpl), &why);
    if (!dl) return nullptr;
    PluginRec& p = newRecord(c);
    p.dl = dl;
    p.path = nativePath(Utf8FromPath(xpl));
    p.xStart = reinterpret_cast<int (*)(char*, char*, char*)>(librarySymbol(dl, "XPluginStart"));
    p.xStop = reinterpret_cast<void (*)()>(librarySymbol(dl, "XPluginStop"));
    p.xEnable = reinterpret_cast<int (*)()>(librarySymbol(dl, "XPluginEnable"));
    p.xDisable = reinterpret_cast<void (*)()>(librarySymbol(dl, "XPluginDisable"));
    p.xReceive = reinterpret_cast<void (*)(int, int, void*)>(librarySymbol(dl, "XPluginReceiveMessage"));
    if (!p.xStart || !p.xStop || !p.xEnable || !p.xDisable || !p.xReceive) {
        p.alive = false;
        closeLibrary(dl);
        p.dl = nullptr;
        why = "missing one of the five entry points XPluginStart/Stop/Enable/Disable/ReceiveMessage";
        return nullptr;
    }
    return &p;
}

/// XPluginStart of an opened plug-in; a refusal unloads it again (*why says so).
bool startOpened(HostCore& c, PluginRec& p, std::string& why) {
    if (start(c, p)) return true;
    dropRegistrations(c, p.id);
    p.alive = false;
    closeLibrary(p.dl);
    p.dl = nullptr;
    why = "XPluginStart returned 0";
    return false;
}

int failLoad(const std::string& path, const std::string& why, std::string* error) {
    writeLog("dlerror:" + path + ": " + why + "\n");
    if (error) *error = why;
    return -1;
}

} // namespace

int loadPluginFile(HostCore& c, const std::string& path, const std::string& dataDir, PluginLayout layout,
                   std::string* error) {
    std::string why;
    const fs::path xpl = installFiles(c, PathFromUtf8(path), PathFromUtf8(dataDir), layout, why);
    if (xpl.empty()) return failLoad(path, why, error);
    PluginRec* p = openPlugin(c, xpl, why);
    if (!p || !startOpened(c, *p, why)) return failLoad(path, why, error);
    enablePlugin(c, p->id);
    return p->id;
}

std::string installPlugin(HostCore& c, const std::string& path, const std::string& dataDir,
                          PluginLayout layout, std::string* error) {
    std::string why;
    const fs::path xpl = installFiles(c, PathFromUtf8(path), PathFromUtf8(dataDir), layout, why);
    if (xpl.empty() && error) *error = why;
    return Utf8FromPath(xpl);
}

int installPluginsFolder(HostCore& c, const std::string& pluginsDir, std::string* error) {
    std::error_code ec;
    if (!fs::is_directory(PathFromUtf8(pluginsDir), ec)) {
        if (error) *error = "no plug-ins folder " + pluginsDir;
        return -1;
    }
    int installed = 0;
    for (const auto& entry : fs::directory_iterator(PathFromUtf8(pluginsDir), ec)) {
        const fs::path& e = entry.path();
        if (pluginFileIn(e).empty()) continue; // a flat plug-in's data folder goes in with its .xpl
        std::string why;
        if (installFiles(c, e, {}, PluginLayout::Flat, why).empty()) {
            writeLog("simhost: cannot install " + Utf8FromPath(e) + ": " + why + "\n");
            if (error) *error += Utf8FromPath(e) + ": " + why + "\n";
            continue;
        }
        ++installed;
    }
    return installed;
}

std::vector<int> startInstalledPlugins(HostCore& c, std::string* errors) {
    std::error_code ec;
    std::vector<fs::path> entries;
    for (const auto& entry : fs::directory_iterator(pluginsFolder(c), ec))
        entries.push_back(entry.path());
    // X-Plane takes them in the folder's order; simhost sorts by name, so that runs repeat.
    std::sort(entries.begin(), entries.end());
    std::vector<PluginRec*> started;
    for (const fs::path& e : entries) {
        const fs::path xpl = pluginFileIn(e);
        const bool loaded = std::any_of(c.plugins.begin(), c.plugins.end(), [&](const auto& p) {
            return p->alive && p->path == nativePath(Utf8FromPath(xpl));
        });
        if (xpl.empty() || loaded) continue;
        std::string why;
        PluginRec* p = openPlugin(c, xpl, why);
        if (p && startOpened(c, *p, why)) {
            started.push_back(p);
            continue;
        }
        failLoad(Utf8FromPath(xpl), why, nullptr);
        if (errors) *errors += Utf8FromPath(xpl) + ": " + why + "\n";
    }
    // Every plug-in is started before the first is enabled: one may publish datarefs in XPluginStart that
    // another finds in XPluginEnable.
    std::vector<int> ids;
    for (PluginRec* p : started) {
        enablePlugin(c, p->id);
        ids.push_back(p->id);
    }
    return ids;
}

int addInProcessPlugin(HostCore& c, InProcessPlugin in) {
    PluginRec& p = newRecord(c);
    p.name = in.name;
    p.signature = in.signature;
    p.description = in.description;
    p.inProcess = std::move(in);
    if (!start(c, p)) {
        dropRegistrations(c, p.id);
        p.alive = false;
        return -1;
    }
    enablePlugin(c, p.id);
    return p.id;
}

bool enablePlugin(HostCore& c, int id) {
    PluginRec* p = plugin(id);
    if (!p || !p->alive) return false;
    if (p->enabled) return true;
    int ok = 0;
    callInto(id, "XPluginEnable", [&] {
        if (p->dl)
            ok = p->xEnable();
        else
            ok = p->inProcess.enable ? p->inProcess.enable() : 1;
    });
    p->enabled = ok != 0;
    record("plugin", "enable " + p->name + (p->enabled ? "" : " (refused)"));
    (void)c;
    return p->enabled;
}

void disablePlugin(HostCore& c, int id) {
    PluginRec* p = plugin(id);
    if (!p || !p->alive || !p->enabled) return;
    callInto(id, "XPluginDisable", [&] {
        if (p->dl)
            p->xDisable();
        else if (p->inProcess.disable)
            p->inProcess.disable();
    });
    p->enabled = false;
    // A plug-in that is disabled loses the camera.
    if (c.camera.controlled && c.camera.owner == id) c.camera.controlled = false;
    record("plugin", "disable " + p->name);
}

void unloadPluginNow(HostCore& c, int id) {
    PluginRec* p = plugin(id);
    if (!p || !p->alive) return;
    disablePlugin(c, id);
    callInto(id, "XPluginStop", [&] {
        if (p->dl)
            p->xStop();
        else if (p->inProcess.stop)
            p->inProcess.stop();
    });
    c.lastLeftovers = listRegistrations(c, id);
    for (const std::string& l : c.lastLeftovers)
        writeLog("simhost: " + p->name + " left registered at unload: " + l + "\n");
    dropRegistrations(c, id);
    p->alive = false;
    p->enabled = false;
    if (p->dl) {
        closeLibrary(p->dl);
        p->dl = nullptr;
    }
    p->inProcess = InProcessPlugin{};
    if (c.directCaller == id) c.directCaller = -1;
    record("plugin", "unload " + p->name);
}

void sendToPlugin(int to, int message, void* param, int from) {
    HostCore* c = core();
    if (!c) return;
    auto deliver = [&](PluginRec& p) {
        if (!p.alive || !p.enabled) return;
        callInto(p.id, "XPluginReceiveMessage", [&] {
            if (p.dl)
                p.xReceive(from, message, param);
            else if (p.inProcess.receive)
                p.inProcess.receive(from, message, param);
        });
    };
    record("message", std::to_string(from) + " -> " +
                          (to == XPLM_NO_PLUGIN_ID ? std::string("all") : std::to_string(to)) + ": " +
                          std::to_string(message));
    if (to == XPLM_NO_PLUGIN_ID) {
        // Every enabled plug-in, the sender included, in load order.
        const size_t n = c->plugins.size();
        for (size_t i = 0; i < n; ++i)
            deliver(*c->plugins[i]);
    } else if (PluginRec* p = plugin(to)) {
        deliver(*p);
    }
}

void announceNewDataRefs(HostCore& c) {
    // At most once per frame, to the plug-ins that asked for it, with the new total count.
    const size_t total = dataRefCount(c);
    if (total <= c.datarefsAnnounced) {
        c.datarefsAnnounced = total; // a hidden dataref lowers the count the next new one is told against
        return;
    }
    c.datarefsAnnounced = total;
    int count = static_cast<int>(total);
    constexpr int kMsgDataRefsAdded = 114;
    const size_t n = c.plugins.size();
    for (size_t i = 0; i < n; ++i) {
        PluginRec& p = *c.plugins[i];
        if (p.alive && p.enabled && p.features.count("XPLM_WANTS_DATAREF_NOTIFICATIONS"))
            sendToPlugin(p.id, kMsgDataRefsAdded, &count, 0);
    }
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

XPLMPluginID XPLMGetMyID(void) {
    return caller();
}

int XPLMCountPlugins(void) {
    HostCore* c = core();
    if (!c) return 0;
    int n = 0;
    for (auto& p : c->plugins)
        n += p->alive ? 1 : 0;
    return n;
}

XPLMPluginID XPLMGetNthPlugin(int inIndex) {
    HostCore* c = core();
    if (!c || inIndex < 0) return XPLM_NO_PLUGIN_ID;
    for (auto& p : c->plugins) {
        if (!p->alive) continue;
        if (inIndex-- == 0) return p->id;
    }
    return XPLM_NO_PLUGIN_ID;
}

XPLMPluginID XPLMFindPluginByPath(const char* inPath) {
    HostCore* c = core();
    if (!c || !inPath) return XPLM_NO_PLUGIN_ID;
    for (auto& p : c->plugins)
        if (p->alive && !p->path.empty() && p->path == inPath) return p->id;
    return XPLM_NO_PLUGIN_ID;
}

XPLMPluginID XPLMFindPluginBySignature(const char* inSignature) {
    HostCore* c = core();
    if (!c || !inSignature) return XPLM_NO_PLUGIN_ID;
    for (auto& p : c->plugins)
        if (p->alive && p->signature == inSignature) return p->id;
    return XPLM_NO_PLUGIN_ID;
}

void XPLMGetPluginInfo(XPLMPluginID inPlugin, char* outName, char* outFilePath, char* outSignature,
                       char* outDescription) {
    if (inPlugin == XPLM_PLUGIN_XPLANE) {
        HostCore* c = core();
        copyOut(outName, "X-Plane");
        copyOut(outFilePath, c ? nativePath(c->sandbox) : "");
        copyOut(outSignature, "xplane");
        copyOut(outDescription, "simhost");
        return;
    }
    PluginRec* p = plugin(inPlugin);
    if (!p || !p->alive) {
        copyOut(outName, "");
        copyOut(outFilePath, "");
        copyOut(outSignature, "");
        copyOut(outDescription, "");
        return;
    }
    copyOut(outName, p->name);
    copyOut(outFilePath, p->path);
    copyOut(outSignature, p->signature);
    copyOut(outDescription, p->description);
}

int XPLMIsPluginEnabled(XPLMPluginID inPluginID) {
    return pluginActive(inPluginID) && inPluginID > 0 ? 1 : 0;
}

int XPLMEnablePlugin(XPLMPluginID inPluginID) {
    HostCore* c = core();
    return c && enablePlugin(*c, inPluginID) ? 1 : 0;
}

void XPLMDisablePlugin(XPLMPluginID inPluginID) {
    if (HostCore* c = core()) disablePlugin(*c, inPluginID);
}

void XPLMReloadPlugins(void) {
    writeLog("simhost: XPLMReloadPlugins is not supported; plug-ins stay loaded\n");
}

void XPLMSendMessageToPlugin(XPLMPluginID inPlugin, int inMessage, void* inParam) {
    sendToPlugin(inPlugin, inMessage, inParam, caller());
}

int XPLMHasFeature(const char* inFeature) {
    if (!inFeature) return 0;
    for (const char* f : {"XPLM_WANTS_REFLECTIONS", "XPLM_USE_NATIVE_PATHS", "XPLM_USE_NATIVE_WIDGET_WINDOWS",
                          "XPLM_WANTS_DATAREF_NOTIFICATIONS"})
        if (std::strcmp(f, inFeature) == 0) return 1;
    return 0;
}

int XPLMIsFeatureEnabled(const char* inFeature) {
    PluginRec* p = plugin(caller());
    return p && inFeature && p->features.count(inFeature) ? 1 : 0;
}

void XPLMEnableFeature(const char* inFeature, int inEnable) {
    PluginRec* p = plugin(caller());
    if (!p || !inFeature || !XPLMHasFeature(inFeature)) return;
    if (inEnable)
        p->features.insert(inFeature);
    else
        p->features.erase(inFeature);
}

void XPLMEnumerateFeatures(XPLMFeatureEnumerator_f inEnumerator, void* inRef) {
    if (!inEnumerator) return;
    for (const char* f : {"XPLM_WANTS_REFLECTIONS", "XPLM_USE_NATIVE_PATHS", "XPLM_USE_NATIVE_WIDGET_WINDOWS",
                          "XPLM_WANTS_DATAREF_NOTIFICATIONS"})
        inEnumerator(f, inRef);
}

} // extern "C"
