// XPLMDisplay.h's cockpit devices: built-in devices customised with
// callbacks, handles on them (all handles on one built-in device share its
// pop-up), and devices plug-ins create. simhost's aircraft
// has no panel, so no device is bound to it (XPLMIsAvionicsBound is 0, the bus
// volts ratio -1) and nothing clicks on a screen or bezel. What a pop-up does
// is kept: visibility, popping out (a pop-up stays on the one monitor),
// geometry, keyboard focus, brightness. While a device's pop-up is visible and
// rendering is on, its draw callbacks run once per frame in the window phase
// (an on-demand screen only after XPLMAvionicsNeedsDrawing).
#include "HostInternal.h"

#include "XPLMDisplay.h"

#include <cstring>

namespace simhost::detail {
namespace {

constexpr int kLastBuiltInDevice = xplm_device_MCDU_2;
constexpr size_t kMaxDeviceIdBytes = 64;
constexpr int kPopupLeft = 100, kPopupBottom = 100; ///< where a new pop-up opens, boxels
constexpr int kBuiltInPopupSize = 400;              ///< boxels
constexpr float kNoBus = -1;                        ///< bus volts ratio of an unbound device

AvionicsRec* valid(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->avionicsHandles.count(handle)) return nullptr;
    auto* a = static_cast<AvionicsRec*>(handle);
    return a->alive ? a : nullptr;
}

/// The pop-up a record shows: a built-in device's is shared by every handle on it.
DevicePopup& popup(AvionicsRec& a) {
    return a.device >= 0 ? core()->builtInPopups[a.device] : a.own;
}

void placePopup(DevicePopup& p, int width, int height) {
    p.left = kPopupLeft;
    p.bottom = kPopupBottom;
    p.right = p.left + width;
    p.top = p.bottom + height;
}

AvionicsRec& add(HostCore& c, int device, int width, int height) {
    c.avionics.emplace_back();
    AvionicsRec& a = c.avionics.back();
    a.owner = caller();
    a.device = device;
    if (device < 0)
        placePopup(a.own, width, height);
    else if (!c.builtInPopups.count(device))
        placePopup(c.builtInPopups[device], width, height);
    c.avionicsHandles.insert(&a);
    return a;
}

void drawOne(AvionicsRec& a) {
    if (!pluginActive(a.owner)) return;
    if (a.device >= 0) {
        int drawSim = 1;
        if (a.drawBefore) {
            auto fn = reinterpret_cast<XPLMAvionicsCallback_f>(a.drawBefore);
            callInto(a.owner, "avionics draw", [&] { drawSim = fn(a.device, 1, a.refcon); });
        }
        (void)drawSim; // the sim's own device picture is not drawn here either way
        if (a.drawAfter) {
            auto fn = reinterpret_cast<XPLMAvionicsCallback_f>(a.drawAfter);
            callInto(a.owner, "avionics draw", [&] { fn(a.device, 0, a.refcon); });
        }
        return;
    }
    constexpr float kAmbient = 1; // daylight tint for the bezel
    if (a.bezelDraw) {
        auto fn = reinterpret_cast<XPLMAvionicsBezelCallback_f>(a.bezelDraw);
        callInto(a.owner, "avionics bezel", [&] { fn(kAmbient, kAmbient, kAmbient, a.refcon); });
    }
    if (a.screenDraw && (!a.drawOnDemand || a.needsDrawing)) {
        a.needsDrawing = false;
        auto fn = reinterpret_cast<XPLMAvionicsScreenCallback_f>(a.screenDraw);
        callInto(a.owner, "avionics screen", [&] { fn(a.refcon); });
    }
}

} // namespace

void drawAvionics(HostCore& c) {
    const size_t n = c.avionics.size();
    for (size_t i = 0; i < n; ++i)
        if (c.avionics[i].alive && popup(c.avionics[i]).visible) drawOne(c.avionics[i]);
}

void dropAvionics(HostCore& c, int pluginId) {
    for (AvionicsRec& a : c.avionics)
        if (a.owner == pluginId) a.alive = false;
}

void listAvionics(const HostCore& c, int pluginId, std::vector<std::string>& out) {
    for (const AvionicsRec& a : c.avionics)
        if (a.alive && a.owner == pluginId && a.callbacks)
            out.push_back(a.device >= 0 ? "avionics callbacks device " + std::to_string(a.device)
                                        : "avionics device " + a.deviceId);
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

XPLMAvionicsID XPLMRegisterAvionicsCallbacksEx(XPLMCustomizeAvionics_t* inParams) {
    HostCore* c = core();
    constexpr int kXplm400Bytes = static_cast<int>(offsetof(XPLMCustomizeAvionics_t, bezelClickCallback));
    if (!c || !inParams ||
        (inParams->structSize != kXplm400Bytes + static_cast<int>(sizeof(void*)) &&
         inParams->structSize != static_cast<int>(sizeof(XPLMCustomizeAvionics_t)))) {
        apiError("XPLMRegisterAvionicsCallbacksEx: structSize matches no SDK version");
        return nullptr;
    }
    if (inParams->deviceId < 0 || inParams->deviceId > kLastBuiltInDevice) {
        apiError("XPLMRegisterAvionicsCallbacksEx: " + std::to_string(inParams->deviceId) +
                 " is no built-in device");
        return nullptr;
    }
    AvionicsRec& a = add(*c, inParams->deviceId, kBuiltInPopupSize, kBuiltInPopupSize);
    a.callbacks = true;
    a.drawBefore = reinterpret_cast<void*>(inParams->drawCallbackBefore);
    a.drawAfter = reinterpret_cast<void*>(inParams->drawCallbackAfter);
    // The refcon is the struct's last field in either version.
    std::memcpy(&a.refcon, reinterpret_cast<const char*>(inParams) + inParams->structSize - sizeof(void*),
                sizeof(void*));
    return &a;
}

XPLMAvionicsID XPLMGetAvionicsHandle(XPLMDeviceID inDeviceID) {
    HostCore* c = core();
    if (!c || inDeviceID < 0 || inDeviceID > kLastBuiltInDevice) return nullptr;
    for (AvionicsRec& a : c->avionics)
        if (a.alive && a.device == inDeviceID && !a.callbacks && a.owner == caller()) return &a;
    return &add(*c, inDeviceID, kBuiltInPopupSize, kBuiltInPopupSize);
}

void XPLMUnregisterAvionicsCallbacks(XPLMAvionicsID inAvionicsId) {
    AvionicsRec* a = valid(inAvionicsId);
    if (a && a->device >= 0 && a->callbacks) a->alive = false;
}

XPLMAvionicsID XPLMCreateAvionicsEx(XPLMCreateAvionics_t* inParams) {
    HostCore* c = core();
    if (!c || !inParams || inParams->structSize != static_cast<int>(sizeof(XPLMCreateAvionics_t)) ||
        !inParams->deviceID || !*inParams->deviceID || std::strchr(inParams->deviceID, ' ') ||
        strnlen(inParams->deviceID, kMaxDeviceIdBytes + 1) > kMaxDeviceIdBytes ||
        inParams->screenWidth <= 0 || inParams->screenHeight <= 0) {
        apiError(
            "XPLMCreateAvionicsEx: needs sizeof(XPLMCreateAvionics_t), a screen size and an ID of 1 to 64 "
            "characters without spaces");
        return nullptr;
    }
    for (const AvionicsRec& a : c->avionics)
        if (a.alive && a.deviceId == inParams->deviceID) {
            apiError(std::string("XPLMCreateAvionicsEx: device ID ") + inParams->deviceID + " is taken");
            return nullptr;
        }
    AvionicsRec& a = add(*c, -1, std::max(inParams->bezelWidth, inParams->screenWidth),
                         std::max(inParams->bezelHeight, inParams->screenHeight));
    a.deviceId = inParams->deviceID;
    a.callbacks = true;
    a.screenDraw = reinterpret_cast<void*>(inParams->drawCallback);
    a.bezelDraw = reinterpret_cast<void*>(inParams->bezelDrawCallback);
    a.drawOnDemand = inParams->drawOnDemand != 0;
    a.refcon = inParams->refcon;
    return &a;
}

void XPLMDestroyAvionics(XPLMAvionicsID inHandle) {
    AvionicsRec* a = valid(inHandle);
    if (a && a->device < 0) a->alive = false;
}

int XPLMIsAvionicsBound(XPLMAvionicsID) {
    return 0; // simhost's aircraft has no panel to show a device on
}

void XPLMSetAvionicsBrightnessRheo(XPLMAvionicsID inHandle, float brightness) {
    if (AvionicsRec* a = valid(inHandle))
        popup(*a).brightnessRheo = std::min(1.0f, std::max(0.0f, brightness));
}

float XPLMGetAvionicsBrightnessRheo(XPLMAvionicsID inHandle) {
    AvionicsRec* a = valid(inHandle);
    return a ? popup(*a).brightnessRheo : 0;
}

float XPLMGetAvionicsBusVoltsRatio(XPLMAvionicsID) {
    return kNoBus;
}

int XPLMIsCursorOverAvionics(XPLMAvionicsID, int*, int*) {
    return 0; // the device is on no panel, and the pop-up gets no mouse
}

void XPLMAvionicsNeedsDrawing(XPLMAvionicsID inHandle) {
    if (AvionicsRec* a = valid(inHandle)) a->needsDrawing = true;
}

void XPLMSetAvionicsPopupVisible(XPLMAvionicsID inHandle, int inVisible) {
    if (AvionicsRec* a = valid(inHandle)) popup(*a).visible = inVisible != 0;
}

int XPLMIsAvionicsPopupVisible(XPLMAvionicsID inHandle) {
    AvionicsRec* a = valid(inHandle);
    return a && popup(*a).visible ? 1 : 0;
}

void XPLMPopOutAvionics(XPLMAvionicsID inHandle) {
    // One monitor and no OS windows: the pop-up shows, inside the sim's screen.
    if (AvionicsRec* a = valid(inHandle)) popup(*a).visible = true;
}

int XPLMIsAvionicsPoppedOut(XPLMAvionicsID) {
    return 0;
}

void XPLMTakeAvionicsKeyboardFocus(XPLMAvionicsID inHandle) {
    HostCore* c = core();
    AvionicsRec* a = valid(inHandle);
    if (!a) return;
    for (AvionicsRec& other : c->avionics)
        popup(other).keyboardFocus = false;
    popup(*a).keyboardFocus = true;
}

int XPLMHasAvionicsKeyboardFocus(XPLMAvionicsID inHandle) {
    AvionicsRec* a = valid(inHandle);
    return a && popup(*a).keyboardFocus ? 1 : 0;
}

void XPLMGetAvionicsGeometry(XPLMAvionicsID inHandle, int* outLeft, int* outTop, int* outRight,
                             int* outBottom) {
    AvionicsRec* a = valid(inHandle);
    if (!a) return;
    const DevicePopup& p = popup(*a);
    if (outLeft) *outLeft = p.left;
    if (outTop) *outTop = p.top;
    if (outRight) *outRight = p.right;
    if (outBottom) *outBottom = p.bottom;
}

void XPLMSetAvionicsGeometry(XPLMAvionicsID inHandle, int inLeft, int inTop, int inRight, int inBottom) {
    AvionicsRec* a = valid(inHandle);
    if (!a || inRight <= inLeft || inTop <= inBottom) return;
    DevicePopup& p = popup(*a);
    p.left = inLeft;
    p.top = inTop;
    p.right = inRight;
    p.bottom = inBottom;
}

void XPLMGetAvionicsGeometryOS(XPLMAvionicsID inHandle, int* outLeft, int* outTop, int* outRight,
                               int* outBottom) {
    // One monitor whose OS pixels are the sim's boxels.
    XPLMGetAvionicsGeometry(inHandle, outLeft, outTop, outRight, outBottom);
}

void XPLMSetAvionicsGeometryOS(XPLMAvionicsID inHandle, int, int, int, int) {
    // Only a popped-out device has OS geometry, and nothing pops out here.
    if (valid(inHandle)) apiError("XPLMSetAvionicsGeometryOS: the device's pop-up is not popped out");
}

} // extern "C"
