// XPLMScenery.h and XPLMInstance.h without drawing: OBJ files loaded and
// reference-counted, instances placed with their per-instance data, probes
// that hit the flat apron, and no magnetic variation.
// The XPLM 4.2 instance functions are defined here too; XPLMFindSymbol hands them out only to hosts
// emulating XPLM 420 or later.
#ifndef XPLM420
#define XPLM420 1
#endif
#include "HostInternal.h"
#include "SceneryLibrary.h"
#include "WorldMath.h"

#include "XPLMInstance.h"
#include "XPLMScenery.h"
#include "utils/Utf8Path.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <vector>

namespace fs = std::filesystem;

namespace simhost::detail {

namespace {

constexpr size_t kMaxInstanceDatarefs = 256; ///< names accepted in one instance's list

/// Absolute path of an OBJ named relative to the X-Plane folder (or absolute).
std::string resolve(const HostCore& c, const std::string& path) {
    if (!path.empty() && (path[0] == '/' || HV_FileUtils::PathFromUtf8(path).is_absolute()))
        return path; // also "C:\\..."
    std::string p = path;
    if (p.rfind("./", 0) == 0) p.erase(0, 2);
    return c.sandbox + p;
}

/// True for a file that starts like an OBJ: "I" or "A", then "800" (or "700"), then "OBJ". Lines may end
/// in LF, CR LF or a lone CR (files written with "A" order often use CR only).
bool looksLikeObj(const std::string& path) {
    constexpr size_t kHeaderBytes = 64; // the three header lines fit in far fewer
    std::ifstream f(HV_FileUtils::PathFromUtf8(path), std::ios::binary);
    std::string head(kHeaderBytes, '\0');
    f.read(&head[0], static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<size_t>(f.gcount()));
    // The header's lines are never empty, so empty pieces (the LF of CR LF) are dropped.
    std::vector<std::string> words(1);
    for (char ch : head) {
        if (ch == '\r' || ch == '\n') {
            if (!words.back().empty()) words.emplace_back();
        } else if (ch != ' ' && ch != '\t') {
            words.back() += ch;
        }
    }
    if (words.size() < 3) return false;
    const bool order = words[0] == "I" || words[0] == "A";
    const bool version = words[1].rfind("800", 0) == 0 || words[1].rfind("700", 0) == 0;
    return order && version && words[2] == "OBJ";
}

ObjectRec* validObject(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->objectHandles.count(handle)) return nullptr;
    auto* o = static_cast<ObjectRec*>(handle);
    return o->refs > 0 ? o : nullptr;
}

InstanceRec* validInstance(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->instanceHandles.count(handle)) return nullptr;
    auto* i = static_cast<InstanceRec*>(handle);
    return i->alive ? i : nullptr;
}

/// Loads (or references again) an OBJ for a plug-in; nullptr when missing or malformed.
ObjectRec* load(HostCore& c, const std::string& inPath, int owner) {
    const std::string path = resolve(c, inPath);
    std::error_code ec;
    if (!fs::is_regular_file(HV_FileUtils::PathFromUtf8(path), ec) || !looksLikeObj(path)) {
        writeLog("simhost: cannot load object " + path + "\n");
        return nullptr;
    }
    ObjectRec* o = nullptr;
    for (ObjectRec& existing : c.objects)
        if (existing.path == path && existing.refs > 0) o = &existing;
    if (!o) {
        c.objects.emplace_back();
        o = &c.objects.back();
        o->path = path;
        c.objectHandles.insert(o);
    }
    ++o->refs;
    ++o->refsByPlugin[owner];
    return o;
}

void release(ObjectRec* o, int owner) {
    if (!o || o->refs <= 0) return;
    --o->refs;
    auto it = o->refsByPlugin.find(owner);
    if (it != o->refsByPlugin.end() && --it->second == 0) o->refsByPlugin.erase(it);
}

void destroyInstance(InstanceRec* i) {
    if (!i || !i->alive) return;
    i->alive = false;
    if (i->object && i->object->refs > 0) --i->object->refs; // the instance's own reference
}

} // namespace

void deliverObjectLoads(HostCore& c) {
    std::vector<PendingLoad> pending;
    pending.swap(c.pendingLoads);
    for (const PendingLoad& p : pending) {
        if (!pluginActive(p.owner)) {
            c.pendingLoads.push_back(p); // delivered when the plug-in is enabled again
            continue;
        }
        ObjectRec* o = nullptr;
        {
            CallingPlugin guard(p.owner);
            o = load(c, p.path, p.owner);
        }
        auto fn = reinterpret_cast<XPLMObjectLoaded_f>(p.callback);
        callInto(p.owner, "object loaded callback", [&] { fn(o, p.refcon); });
    }
}

void dropScenery(HostCore& c, int pluginId) {
    for (InstanceRec& i : c.instances)
        if (i.alive && i.owner == pluginId) destroyInstance(&i);
    for (ObjectRec& o : c.objects) {
        auto it = o.refsByPlugin.find(pluginId);
        if (it == o.refsByPlugin.end()) continue;
        o.refs -= it->second;
        o.refsByPlugin.erase(it);
    }
    for (size_t i = c.pendingLoads.size(); i-- > 0;)
        if (c.pendingLoads[i].owner == pluginId)
            c.pendingLoads.erase(c.pendingLoads.begin() + static_cast<long>(i));
}

void listScenery(const HostCore& c, int pluginId, std::vector<std::string>& out) {
    for (const ObjectRec& o : c.objects) {
        auto it = o.refsByPlugin.find(pluginId);
        if (it != o.refsByPlugin.end()) out.push_back("object " + o.path + " x" + std::to_string(it->second));
    }
    for (const InstanceRec& i : c.instances)
        if (i.alive && i.owner == pluginId) out.push_back("instance of " + i.info.objectPath);
}

} // namespace simhost::detail

namespace simhost {
std::vector<InstanceInfo> Host::instances() const {
    std::vector<InstanceInfo> out;
    if (detail::HostCore* c = detail::core())
        for (const detail::InstanceRec& i : c->instances)
            if (i.alive) out.push_back(i.info);
    return out;
}

std::vector<std::string> Host::loadedObjects() const {
    std::vector<std::string> out;
    if (detail::HostCore* c = detail::core())
        for (const detail::ObjectRec& o : c->objects)
            for (const auto& byPlugin : o.refsByPlugin)
                for (int k = 0; k < byPlugin.second; ++k)
                    out.push_back(o.path);
    return out;
}
} // namespace simhost

using namespace simhost::detail;

extern "C" {

XPLMObjectRef XPLMLoadObject(const char* inPath) {
    HostCore* c = core();
    if (!c || !inPath) return nullptr;
    return load(*c, inPath, caller());
}

void XPLMLoadObjectAsync(const char* inPath, XPLMObjectLoaded_f inCallback, void* inRefcon) {
    HostCore* c = core();
    if (!c || !inPath || !inCallback) return;
    c->pendingLoads.push_back(PendingLoad{caller(), inPath, reinterpret_cast<void*>(inCallback), inRefcon});
}

void XPLMUnloadObject(XPLMObjectRef inObject) {
    if (ObjectRec* o = validObject(inObject)) release(o, caller());
}

int XPLMLookupObjects(const char* inPath, float /*inLatitude*/, float /*inLongitude*/,
                      XPLMLibraryEnumerator_f enumerator, void* ref) {
    HostCore* c = core();
    if (!c || !inPath) return 0;
    const std::vector<std::string> found = lookupLibrary(c->sandbox, inPath);
    if (enumerator)
        for (const std::string& path : found)
            callInto(caller(), "library enumerator", [&] { enumerator(path.c_str(), ref); });
    return static_cast<int>(found.size());
}

void XPLMDrawObjects(XPLMObjectRef, int, XPLMDrawInfo_t*, int, int) {
    // Legacy object drawing does nothing on the emulated (Vulkan-era) renderer.
}

XPLMProbeRef XPLMCreateProbe(XPLMProbeType inProbeType) {
    HostCore* c = core();
    if (!c || inProbeType != xplm_ProbeY) return nullptr;
    // A probe has no state: its handle is a small distinct number.
    void* handle = reinterpret_cast<void*>(static_cast<intptr_t>(c->nextProbe++));
    c->probes.insert(handle);
    return handle;
}

void XPLMDestroyProbe(XPLMProbeRef inProbe) {
    if (HostCore* c = core()) c->probes.erase(inProbe);
}

XPLMProbeResult XPLMProbeTerrainXYZ(XPLMProbeRef inProbe, float inX, float, float inZ,
                                    XPLMProbeInfo_t* outInfo) {
    HostCore* c = core();
    if (!c || !c->probes.count(inProbe) || !outInfo ||
        outInfo->structSize != static_cast<int>(sizeof(XPLMProbeInfo_t)))
        return xplm_ProbeError;
    // The world is one flat, dry apron.
    outInfo->locationX = inX;
    outInfo->locationY = static_cast<float>(c->world.groundY);
    outInfo->locationZ = inZ;
    outInfo->normalX = 0;
    outInfo->normalY = 1;
    outInfo->normalZ = 0;
    outInfo->velocityX = outInfo->velocityY = outInfo->velocityZ = 0;
    outInfo->is_wet = 0;
    return xplm_ProbeHitTerrain;
}

// One magnetic variation everywhere: the one the sim set through magpsi (0 by default).
float XPLMGetMagneticVariation(double, double) {
    HostCore* c = core();
    return c ? static_cast<float>(c->world.magneticVariationDeg) : 0.0f;
}

float XPLMDegTrueToDegMagnetic(float headingDegreesTrue) {
    return static_cast<float>(wrap360(headingDegreesTrue - XPLMGetMagneticVariation(0, 0)));
}

float XPLMDegMagneticToDegTrue(float headingDegreesMagnetic) {
    return static_cast<float>(wrap360(headingDegreesMagnetic + XPLMGetMagneticVariation(0, 0)));
}

XPLMInstanceRef XPLMCreateInstance(XPLMObjectRef obj, const char** datarefs) {
    HostCore* c = core();
    ObjectRec* o = validObject(obj);
    if (!c || !o || !datarefs) {
        apiError("XPLMCreateInstance: needs a loaded object and a NULL-terminated dataref list");
        return nullptr;
    }
    c->instances.emplace_back();
    InstanceRec& i = c->instances.back();
    i.owner = caller();
    i.object = o;
    ++o->refs; // the instance keeps the object alive
    i.info.pluginId = i.owner;
    i.info.objectPath = o->path;
    for (size_t n = 0; datarefs[n] && n < kMaxInstanceDatarefs; ++n)
        i.info.datarefs.emplace_back(datarefs[n]);
    i.info.data.assign(i.info.datarefs.size(), 0.0f);
    c->instanceHandles.insert(&i);
    return &i;
}

void XPLMDestroyInstance(XPLMInstanceRef instance) {
    destroyInstance(validInstance(instance));
}

void XPLMInstanceSetPosition(XPLMInstanceRef instance, const XPLMDrawInfo_t* new_position,
                             const float* data) {
    InstanceRec* i = validInstance(instance);
    if (!i || !new_position) return;
    if (new_position->structSize != static_cast<int>(sizeof(XPLMDrawInfo_t))) {
        apiError("XPLMInstanceSetPosition: wrong structSize");
        return;
    }
    simhost::InstanceInfo& info = i->info;
    info.x = new_position->x;
    info.y = new_position->y;
    info.z = new_position->z;
    info.pitch = new_position->pitch;
    info.heading = new_position->heading;
    info.roll = new_position->roll;
    info.positioned = true;
    if (data)
        for (size_t n = 0; n < info.data.size(); ++n)
            info.data[n] = data[n];
}

void XPLMInstanceSetPositionDouble(XPLMInstanceRef instance, const XPLMDrawInfoDouble_t* new_position,
                                   const float* data) {
    InstanceRec* i = validInstance(instance);
    if (!i || !new_position) return;
    if (new_position->structSize != static_cast<int>(sizeof(XPLMDrawInfoDouble_t))) {
        apiError("XPLMInstanceSetPositionDouble: wrong structSize");
        return;
    }
    simhost::InstanceInfo& info = i->info;
    info.x = new_position->x;
    info.y = new_position->y;
    info.z = new_position->z;
    info.pitch = static_cast<float>(new_position->pitch);
    info.heading = static_cast<float>(new_position->heading);
    info.roll = static_cast<float>(new_position->roll);
    info.positioned = true;
    if (data)
        for (size_t n = 0; n < info.data.size(); ++n)
            info.data[n] = data[n];
}

void XPLMInstanceSetAutoShift(XPLMInstanceRef instance) {
    InstanceRec* i = validInstance(instance);
    if (!i) {
        apiError("XPLMInstanceSetAutoShift: not an instance");
        return;
    }
    i->autoShift = true;
}

} // extern "C"
