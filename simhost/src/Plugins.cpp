// XPLMPlugin.h and the plug-in lifecycle: installing a .xpl into the sandbox,
// dlopen, XPluginStart/Enable/Disable/Stop, messages between plug-ins.
#include "HostInternal.h"
#include "SharedLibrary.h"

#include "XPLMPlugin.h"

#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

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

int loadPluginFile(HostCore& c, const std::string& xplPath, const std::string& dataDir, std::string* error) {
    auto fail = [&](const std::string& why) {
        writeLog("dlerror:" + xplPath + ": " + why + "\n");
        if (error) *error = why;
        return -1;
    };
    std::error_code ec;
    fs::path src = fs::absolute(xplPath, ec);
    if (ec || !fs::is_regular_file(src, ec)) return fail("no such plug-in file");
    if (!dataDir.empty() && !fs::is_directory(dataDir, ec)) return fail("no data folder " + dataDir);
    // Installed copy: Resources/plugins/<name>.xpl beside its data folder <name>/.
    fs::path dir = fs::path(c.sandbox) / "Resources" / "plugins";
    fs::path dst = dir / src.filename();
    if (fs::exists(dst, ec)) {
        // The same file twice: a second copy under its own name, so dlopen loads it afresh.
        dst = dir /
              (src.stem().string() + "-" + std::to_string(c.plugins.size() + 1) + src.extension().string());
    }
    fs::copy_file(src, dst, fs::copy_options::overwrite_existing, ec);
    if (ec) return fail("cannot copy into the sandbox: " + ec.message());
    // The data folder: the one named, else the one beside the file, if any.
    fs::path dataSrc = dataDir.empty() ? src.parent_path() / src.stem() : fs::path(dataDir);
    fs::path dataDst = dir / src.stem();
    if (fs::is_directory(dataSrc, ec) && !fs::exists(dataDst, ec)) {
        fs::copy(dataSrc, dataDst, fs::copy_options::recursive, ec);
        if (ec) return fail("cannot copy the data folder: " + ec.message());
    }

    std::string why;
    void* dl = openLibrary(dst.string(), &why);
    if (!dl) return fail(why);
    PluginRec& p = newRecord(c);
    p.dl = dl;
    p.path = nativePath(dst.string());
    p.xStart = reinterpret_cast<int (*)(char*, char*, char*)>(librarySymbol(dl, "XPluginStart"));
    p.xStop = reinterpret_cast<void (*)()>(librarySymbol(dl, "XPluginStop"));
    p.xEnable = reinterpret_cast<int (*)()>(librarySymbol(dl, "XPluginEnable"));
    p.xDisable = reinterpret_cast<void (*)()>(librarySymbol(dl, "XPluginDisable"));
    p.xReceive = reinterpret_cast<void (*)(int, int, void*)>(librarySymbol(dl, "XPluginReceiveMessage"));
    if (!p.xStart || !p.xStop || !p.xEnable || !p.xDisable || !p.xReceive) {
        p.alive = false;
        closeLibrary(dl);
        p.dl = nullptr;
        return fail("missing one of the five entry points XPluginStart/Stop/Enable/Disable/ReceiveMessage");
    }
    if (!start(c, p)) {
        dropRegistrations(c, p.id);
        p.alive = false;
        closeLibrary(dl);
        p.dl = nullptr;
        return fail("XPluginStart returned 0");
    }
    enablePlugin(c, p.id);
    return p.id;
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
    if (c.datarefs.size() <= c.datarefsAnnounced) return;
    c.datarefsAnnounced = c.datarefs.size();
    int count = static_cast<int>(c.datarefs.size());
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
