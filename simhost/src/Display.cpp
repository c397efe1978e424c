// XPLMDisplay.h: draw callbacks by phase, windows (geometry, visibility,
// focus, z-order, mouse routing), key sniffers, hot keys and the key path.
//
// Key path for one key event: sniffers registered before windows (in
// registration order), the window holding the keyboard focus, sniffers
// registered after windows, then hot keys. A sniffer returning 0 consumes the
// key; a focused window always consumes it.
#include "HostInternal.h"
#include "graphics/GraphicsHooks.h"
#include "graphics/InstanceDrawing.h"
#include "graphics/WindowFrame.h"
#include "graphics/WorldDrawing.h"

#include "XPLMDisplay.h"

#include <algorithm>
#include <cstring>

namespace simhost::detail {

namespace {

constexpr int kPhasesLegacy3D[] = {0, 5, 10, 15, 20, 25, 30}; ///< never called from 11.50 (Vulkan) on
constexpr int kPhaseModern3D = 31;
constexpr int kPhases2D[] = {35, 40, 45, 50, 55};
constexpr int kPhaseWindow = 50;
constexpr int kVulkanVersion = 11500; ///< first X-Plane without the legacy 3-D phases
constexpr size_t kHotKeyDescriptionBytes = 512;
constexpr int kModifierMask = xplm_ShiftFlag | xplm_OptionAltFlag | xplm_ControlFlag;
constexpr int kPressMask = xplm_DownFlag | xplm_UpFlag;

bool phaseExists(const HostCore& c, int phase) {
    for (int p : kPhasesLegacy3D)
        if (p == phase) return true;
    for (int p : kPhases2D)
        if (p == phase) return true;
    if (phase == kPhaseModern3D) return c.opt.xplaneVersion >= kVulkanVersion;
    // The map phases went away with XPLM 3.00.
    if (phase >= 100 && phase <= 102) return c.opt.xplmVersion < 300;
    return false;
}

/// True when this host calls the legacy 3-D phases (0..30).
bool legacy3D(const HostCore& c) {
    switch (c.opt.graphicsEra) {
    case simhost::GraphicsEra::LegacyOpenGL:
        return true;
    case simhost::GraphicsEra::Modern:
        return false;
    case simhost::GraphicsEra::FollowVersion:
        break;
    }
    return c.opt.xplaneVersion < kVulkanVersion;
}

WindowRec* validWindow(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->windowHandles.count(handle)) return nullptr;
    auto* w = static_cast<WindowRec*>(handle);
    return w->alive ? w : nullptr;
}

HotKeyRec* validHotKey(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->hotKeyHandles.count(handle)) return nullptr;
    auto* h = static_cast<HotKeyRec*>(handle);
    return h->alive ? h : nullptr;
}

/// Calls the draw callbacks of one phase, before or after; returns false when one suppresses X-Plane's
/// drawing.
bool drawPhase(HostCore& c, int phase, bool before) {
    bool drawSim = true;
    const size_t n = c.drawCallbacks.size();
    for (size_t i = 0; i < n; ++i) {
        DrawCallbackRec cb = c.drawCallbacks[i];
        if (!cb.alive || cb.phase != phase || cb.before != before || !pluginActive(cb.owner)) continue;
        int r = 1;
        auto fn = reinterpret_cast<XPLMDrawCallback_f>(cb.fn);
        callInto(cb.owner, "draw callback", [&] { r = fn(phase, before ? 1 : 0, cb.refcon); });
        if (before && r == 0) drawSim = false;
    }
    return drawSim;
}

/// True when the host draws the window's frame and title bar (and the user can drag and resize it).
bool hostDecorated(const WindowRec& w) {
    return w.decoration == xplm_WindowDecorationRoundRectangle;
}

bool frontOfLayer(const HostCore& c, const WindowRec* w) {
    for (size_t i = c.zOrder.size(); i-- > 0;)
        if (c.zOrder[i]->visible && c.zOrder[i]->layer == w->layer) return c.zOrder[i] == w;
    return false;
}

void drawWindows(HostCore& c) {
    std::vector<WindowRec*> order = c.zOrder; // callbacks may create or destroy windows
    for (WindowRec* w : order) {
        if (!w->alive || !w->visible || !pluginActive(w->owner)) continue;
        if (hostDecorated(*w))
            gfx::drawWindowFrame(w->left, w->top, w->right, w->bottom, w->title, frontOfLayer(c, w));
        if (!w->draw) continue;
        auto fn = reinterpret_cast<XPLMDrawWindow_f>(w->draw);
        callInto(w->owner, "window draw", [&] { fn(w, w->refcon); });
    }
}

bool inside(const WindowRec& w, int x, int y) {
    return x >= w.left && x <= w.right && y >= w.bottom && y <= w.top;
}

/// The window with its frame: a decorated window's title bar and edges belong to it too.
bool insideFrame(const WindowRec& w, int x, int y) {
    if (!hostDecorated(w)) return inside(w, x, y);
    return x >= w.left - gfx::kFramePx && x <= w.right + gfx::kFramePx && y >= w.bottom - gfx::kFramePx &&
           y <= w.top + gfx::kTitleBarPx;
}

bool onTitleBar(const WindowRec& w, int x, int y) {
    return hostDecorated(w) && y > w.top && insideFrame(w, x, y);
}

size_t zIndex(const HostCore& c, const WindowRec* w) {
    for (size_t i = 0; i < c.zOrder.size(); ++i)
        if (c.zOrder[i] == w) return i;
    return c.zOrder.size();
}

/// Puts a window at z-order position `at` (clamped into its layer's run of windows).
void placeAt(HostCore& c, WindowRec* w, size_t at) {
    const size_t i = zIndex(c, w);
    if (i < c.zOrder.size()) c.zOrder.erase(c.zOrder.begin() + static_cast<long>(i));
    size_t first = 0, end = 0; // [first, end): the windows of w's layer
    while (first < c.zOrder.size() && c.zOrder[first]->layer < w->layer)
        ++first;
    end = first;
    while (end < c.zOrder.size() && c.zOrder[end]->layer == w->layer)
        ++end;
    c.zOrder.insert(c.zOrder.begin() + static_cast<long>(std::min(std::max(at, first), end)), w);
}

/// Brings a window to the front of its layer: windows of higher layers stay above it.
void raise(HostCore& c, WindowRec* w) {
    placeAt(c, w, c.zOrder.size());
}

/// True when a visible modal window blocks the mouse from the layers below it.
bool modalShown(const HostCore& c) {
    for (const WindowRec* w : c.zOrder)
        if (w->alive && w->visible && w->layer == xplm_WindowLayerModal) return true;
    return false;
}

void sendKeyToWindow(WindowRec* w, char ch, int flags, char vkey, bool losing, WindowRec* taker) {
    if (!w->key || !pluginActive(w->owner)) return;
    auto fn = reinterpret_cast<XPLMHandleKey_f>(w->key);
    void* id = losing ? static_cast<void*>(taker) : static_cast<void*>(w);
    callInto(w->owner, "window key", [&] { fn(id, ch, flags, vkey, w->refcon, losing ? 1 : 0); });
}

void setFocus(HostCore& c, WindowRec* w) {
    if (c.focus == w) return;
    WindowRec* old = c.focus;
    c.focus = w;
    if (old && old->alive) sendKeyToWindow(old, 0, 0, 0, true, w);
}

void removeWindow(HostCore& c, WindowRec* w) {
    if (c.focus == w) setFocus(c, nullptr);
    if (c.mouseCapture == w) c.mouseCapture = nullptr;
    if (c.titleDrag == w) c.titleDrag = nullptr;
    w->alive = false;
    for (size_t i = 0; i < c.zOrder.size(); ++i)
        if (c.zOrder[i] == w) {
            c.zOrder.erase(c.zOrder.begin() + static_cast<long>(i));
            break;
        }
}

/// Stores a window's rectangle with its top above its bottom and its right beyond its left, as X-Plane
/// keeps it: a plug-in that gives the corners the other way round reads them back upright and draws
/// from its bottom edge up.
void setRect(WindowRec& w, int left, int top, int right, int bottom) {
    w.left = std::min(left, right);
    w.right = std::max(left, right);
    w.bottom = std::min(top, bottom);
    w.top = std::max(top, bottom);
}

WindowRec& newWindow(HostCore& c) {
    c.windows.emplace_back();
    WindowRec& w = c.windows.back();
    w.id = c.nextWindowId++;
    w.owner = caller();
    c.windowHandles.insert(&w);
    raise(c, &w); // a new window comes to the front of its layer
    return w;
}

int mouseTo(WindowRec* w, int x, int y, int status) {
    if (!w->mouse || !pluginActive(w->owner)) return 0;
    int r = 0;
    auto fn = reinterpret_cast<XPLMHandleMouseClick_f>(w->mouse);
    callInto(w->owner, "window mouse", [&] { r = fn(w, x, y, status, w->refcon); });
    return r;
}

/// True when the hot key's combination matches a key event; a hot key without Down/Up fires on Down.
bool hotKeyMatches(const HotKeyRec& h, char vkey, int flags) {
    if (static_cast<unsigned char>(h.vkey) != static_cast<unsigned char>(vkey)) return false;
    if ((h.flags & kModifierMask) != (flags & kModifierMask)) return false;
    int want = h.flags & kPressMask;
    if (want == 0) want = xplm_DownFlag;
    return (flags & want) != 0;
}

} // namespace

void drawFrame(HostCore& c) {
    if (!gfx::available() || !gfx::beginFrame(c.opt.screenWidth, c.opt.screenHeight)) return;
    gfx::View view;
    view.x = c.camera.pos[0];
    view.y = c.camera.pos[1];
    view.z = c.camera.pos[2];
    view.pitch = c.camera.pos[3];
    view.heading = c.camera.pos[4];
    view.roll = c.camera.pos[5];
    view.zoom = c.camera.pos[6];
    gfx::setup3D(view);
    if (c.opt.drawWorld) drawWorld(c); // the apron and the aircraft, under whatever plug-ins draw
    if (legacy3D(c)) {
        for (int p : kPhasesLegacy3D) {
            drawPhase(c, p, true);
            drawPhase(c, p, false);
        }
    } else {
        drawPhase(c, kPhaseModern3D, true);
        drawPhase(c, kPhaseModern3D, false);
    }
    drawInstances(c); // X-Plane draws instances in its own scene, whatever the era
    gfx::setup2D();
    for (int p : kPhases2D) {
        drawPhase(c, p, true);
        if (p == kPhaseWindow) {
            drawWindows(c);
            drawAvionics(c);
        }
        drawPhase(c, p, false);
    }
    gfx::endFrame();
}

void routeKey(char ch, int flags, char vkey) {
    HostCore* c = core();
    if (!c) return;
    auto sniff = [&](bool before) {
        const size_t n = c->sniffers.size();
        for (size_t i = 0; i < n; ++i) {
            KeySnifferRec s = c->sniffers[i];
            if (!s.alive || s.beforeWindows != before || !pluginActive(s.owner)) continue;
            int pass = 1;
            auto fn = reinterpret_cast<XPLMKeySniffer_f>(s.fn);
            callInto(s.owner, "key sniffer", [&] { pass = fn(ch, flags, vkey, s.refcon); });
            if (pass == 0) return true;
        }
        return false;
    };
    if (sniff(true)) return;
    if (c->focus && c->focus->alive) {
        sendKeyToWindow(c->focus, ch, flags, vkey, false, nullptr);
        return;
    }
    if (sniff(false)) return;
    const size_t n = c->hotKeys.size();
    for (size_t i = 0; i < n; ++i) {
        HotKeyRec& h = c->hotKeys[i];
        if (!h.alive || !pluginActive(h.owner) || !hotKeyMatches(h, vkey, flags)) continue;
        record("key", "hot key " + h.description);
        auto fn = reinterpret_cast<XPLMHotKey_f>(h.fn);
        void* refcon = h.refcon;
        callInto(h.owner, "hot key", [&] { fn(refcon); });
        return;
    }
}

bool mouseDownAt(int x, int y) {
    HostCore* c = core();
    if (!c) return false;
    c->mouseX = x;
    c->mouseY = y;
    c->mouseCapture = nullptr;
    c->titleDrag = nullptr;
    const bool modal = modalShown(*c);
    std::vector<WindowRec*> order = c->zOrder;
    for (size_t i = order.size(); i-- > 0;) {
        WindowRec* w = order[i];
        if (!w->alive || !w->visible || !insideFrame(*w, x, y)) continue;
        if (modal && w->layer < xplm_WindowLayerModal) return false; // a modal window takes every click
        if (hostDecorated(*w) && !inside(*w, x, y)) {
            // The host's frame: the title bar drags the window; the edges only take the click.
            raise(*c, w);
            if (onTitleBar(*w, x, y)) c->titleDrag = w;
            return true;
        }
        // The clicked window comes to the front before its handler runs, so a window the handler opens
        // lands above it. A window that lets the click through goes back to where it was.
        const size_t before = zIndex(*c, w);
        raise(*c, w);
        if (mouseTo(w, x, y, xplm_MouseDown)) {
            if (w->alive) c->mouseCapture = w;
            return true;
        }
        if (w->alive && frontOfLayer(*c, w)) placeAt(*c, w, before);
    }
    return false;
}

void mouseDragAt(int x, int y) {
    HostCore* c = core();
    if (!c) return;
    if (WindowRec* w = c->titleDrag; w && w->alive) {
        const int dx = x - c->mouseX, dy = y - c->mouseY;
        w->left += dx;
        w->right += dx;
        w->top += dy;
        w->bottom += dy;
    }
    c->mouseX = x;
    c->mouseY = y;
    if (c->mouseCapture && c->mouseCapture->alive) mouseTo(c->mouseCapture, x, y, xplm_MouseDrag);
}

void mouseUpAt(int x, int y) {
    HostCore* c = core();
    if (!c) return;
    if (c->titleDrag) mouseDragAt(x, y);
    c->titleDrag = nullptr;
    c->mouseX = x;
    c->mouseY = y;
    WindowRec* w = c->mouseCapture;
    c->mouseCapture = nullptr;
    if (w && w->alive) mouseTo(w, x, y, xplm_MouseUp);
}

void scrollAt(int x, int y, int clicks) {
    HostCore* c = core();
    if (!c) return;
    std::vector<WindowRec*> order = c->zOrder;
    for (size_t i = order.size(); i-- > 0;) {
        WindowRec* w = order[i];
        if (!w->alive || !w->visible || !w->wheel || !inside(*w, x, y) || !pluginActive(w->owner)) continue;
        int r = 0;
        auto fn = reinterpret_cast<XPLMHandleMouseWheel_f>(w->wheel);
        callInto(w->owner, "window wheel", [&] { r = fn(w, x, y, 0, clicks, w->refcon); });
        if (r) return;
    }
}

void dropDisplay(HostCore& c, int pluginId) {
    for (DrawCallbackRec& d : c.drawCallbacks)
        if (d.owner == pluginId) d.alive = false;
    for (WindowRec& w : c.windows)
        if (w.alive && w.owner == pluginId) removeWindow(c, &w);
    for (KeySnifferRec& s : c.sniffers)
        if (s.owner == pluginId) s.alive = false;
    for (HotKeyRec& h : c.hotKeys)
        if (h.owner == pluginId) h.alive = false;
}

void listDisplay(const HostCore& c, int pluginId, std::vector<std::string>& out) {
    for (const DrawCallbackRec& d : c.drawCallbacks)
        if (d.alive && d.owner == pluginId)
            out.push_back("draw callback phase " + std::to_string(d.phase) +
                          (d.before ? " before" : " after"));
    for (const WindowRec& w : c.windows)
        if (w.alive && w.owner == pluginId) out.push_back("window " + std::to_string(w.id));
    for (const KeySnifferRec& s : c.sniffers)
        if (s.alive && s.owner == pluginId)
            out.push_back(std::string("key sniffer ") + (s.beforeWindows ? "before" : "after") + " windows");
    for (const HotKeyRec& h : c.hotKeys)
        if (h.alive && h.owner == pluginId) out.push_back("hot key " + h.description);
}

std::vector<WindowInfo> windowList() {
    std::vector<WindowInfo> out;
    HostCore* c = core();
    if (!c) return out;
    for (WindowRec* w : c->zOrder)
        out.push_back(WindowInfo{w->id, w->owner, w->left, w->top, w->right, w->bottom, w->visible,
                                 c->focus == w, w->title, w->decoration, w->layer});
    return out;
}

bool resizeWindowTo(int windowId, int width, int height) {
    HostCore* c = core();
    if (!c) return false;
    for (WindowRec* w : c->zOrder) {
        if (w->id != windowId) continue;
        if (!hostDecorated(*w) && w->decoration != xplm_WindowDecorationSelfDecoratedResizable) return false;
        // The top-left corner stays where it is, as when the user drags the bottom-right corner.
        w->right = w->left + std::max(w->minWidth, std::min(width, w->maxWidth));
        w->bottom = w->top - std::max(w->minHeight, std::min(height, w->maxHeight));
        return true;
    }
    return false;
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

int XPLMRegisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase, int inWantsBefore,
                             void* inRefcon) {
    HostCore* c = core();
    if (!c || !inCallback || !phaseExists(*c, inPhase)) return 0;
    c->drawCallbacks.push_back(DrawCallbackRec{reinterpret_cast<void*>(inCallback), inPhase,
                                               inWantsBefore != 0, inRefcon, caller(), true});
    return 1;
}

int XPLMUnregisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase, int inWantsBefore,
                               void* inRefcon) {
    HostCore* c = core();
    if (!c) return 0;
    const int me = caller();
    for (DrawCallbackRec& d : c->drawCallbacks) {
        if (d.alive && d.fn == reinterpret_cast<void*>(inCallback) && d.phase == inPhase &&
            d.before == (inWantsBefore != 0) && d.refcon == inRefcon && d.owner == me) {
            d.alive = false;
            return 1;
        }
    }
    return 0;
}

XPLMWindowID XPLMCreateWindow(int inLeft, int inTop, int inRight, int inBottom, int inIsVisible,
                              XPLMDrawWindow_f inDrawCallback, XPLMHandleKey_f inKeyCallback,
                              XPLMHandleMouseClick_f inMouseCallback, void* inRefcon) {
    HostCore* c = core();
    if (!c) return nullptr;
    WindowRec& w = newWindow(*c);
    setRect(w, inLeft, inTop, inRight, inBottom);
    w.visible = inIsVisible != 0;
    w.draw = reinterpret_cast<void*>(inDrawCallback);
    w.key = reinterpret_cast<void*>(inKeyCallback);
    w.mouse = reinterpret_cast<void*>(inMouseCallback);
    w.refcon = inRefcon;
    return &w;
}

XPLMWindowID XPLMCreateWindowEx(XPLMCreateWindow_t* inParams) {
    HostCore* c = core();
    constexpr int kMinStructBytes = 72; // the XPLM200 layout
    if (!c || !inParams || inParams->structSize < kMinStructBytes) {
        apiError("XPLMCreateWindowEx: structSize below 72");
        return nullptr;
    }
    WindowRec& w = newWindow(*c);
    setRect(w, inParams->left, inParams->top, inParams->right, inParams->bottom);
    w.visible = inParams->visible != 0;
    w.draw = reinterpret_cast<void*>(inParams->drawWindowFunc);
    w.mouse = reinterpret_cast<void*>(inParams->handleMouseClickFunc);
    w.key = reinterpret_cast<void*>(inParams->handleKeyFunc);
    w.cursor = reinterpret_cast<void*>(inParams->handleCursorFunc);
    w.wheel = reinterpret_cast<void*>(inParams->handleMouseWheelFunc);
    w.refcon = inParams->refcon;
    // Read only the fields the caller's structSize covers.
    if (inParams->structSize >= static_cast<int>(offsetof(XPLMCreateWindow_t, layer) + sizeof(int))) {
        w.decoration = inParams->decorateAsFloatingWindow;
        // An unknown layer is taken as the floating one, where the SDK advises windows go.
        w.layer = inParams->layer >= xplm_WindowLayerFlightOverlay &&
                          inParams->layer <= xplm_WindowLayerGrowlNotifications
                      ? inParams->layer
                      : xplm_WindowLayerFloatingWindows;
        raise(*c, &w); // into its own layer
    }
    if (inParams->structSize >=
        static_cast<int>(offsetof(XPLMCreateWindow_t, handleRightClickFunc) + sizeof(void*)))
        w.rightClick = reinterpret_cast<void*>(inParams->handleRightClickFunc);
    return &w;
}

void XPLMDestroyWindow(XPLMWindowID inWindowID) {
    HostCore* c = core();
    if (WindowRec* w = validWindow(inWindowID)) removeWindow(*c, w);
}

void XPLMGetScreenSize(int* outWidth, int* outHeight) {
    HostCore* c = core();
    if (outWidth) *outWidth = c ? c->opt.screenWidth : 0;
    if (outHeight) *outHeight = c ? c->opt.screenHeight : 0;
}

void XPLMGetWindowGeometry(XPLMWindowID inWindowID, int* outLeft, int* outTop, int* outRight,
                           int* outBottom) {
    WindowRec* w = validWindow(inWindowID);
    if (!w) return;
    if (outLeft) *outLeft = w->left;
    if (outTop) *outTop = w->top;
    if (outRight) *outRight = w->right;
    if (outBottom) *outBottom = w->bottom;
}

void XPLMSetWindowGeometry(XPLMWindowID inWindowID, int inLeft, int inTop, int inRight, int inBottom) {
    if (WindowRec* w = validWindow(inWindowID)) setRect(*w, inLeft, inTop, inRight, inBottom);
}

int XPLMGetWindowIsVisible(XPLMWindowID inWindowID) {
    WindowRec* w = validWindow(inWindowID);
    return w && w->visible ? 1 : 0;
}

void XPLMSetWindowIsVisible(XPLMWindowID inWindowID, int inIsVisible) {
    if (WindowRec* w = validWindow(inWindowID)) w->visible = inIsVisible != 0;
}

void* XPLMGetWindowRefCon(XPLMWindowID inWindowID) {
    WindowRec* w = validWindow(inWindowID);
    return w ? w->refcon : nullptr;
}

void XPLMSetWindowRefCon(XPLMWindowID inWindowID, void* inRefcon) {
    if (WindowRec* w = validWindow(inWindowID)) w->refcon = inRefcon;
}

void XPLMTakeKeyboardFocus(XPLMWindowID inWindow) {
    HostCore* c = core();
    if (!c) return;
    if (!inWindow) {
        setFocus(*c, nullptr);
        return;
    }
    if (WindowRec* w = validWindow(inWindow)) setFocus(*c, w);
}

int XPLMHasKeyboardFocus(XPLMWindowID inWindow) {
    HostCore* c = core();
    if (!c) return 0;
    if (!inWindow) return c->focus == nullptr ? 1 : 0;
    return validWindow(inWindow) && c->focus == inWindow ? 1 : 0;
}

void XPLMBringWindowToFront(XPLMWindowID inWindow) {
    HostCore* c = core();
    if (WindowRec* w = validWindow(inWindow)) raise(*c, w);
}

int XPLMIsWindowInFront(XPLMWindowID inWindow) {
    HostCore* c = core();
    WindowRec* w = validWindow(inWindow);
    return w && frontOfLayer(*c, w) ? 1 : 0;
}

void XPLMGetMouseLocation(int* outX, int* outY) {
    HostCore* c = core();
    if (outX) *outX = c ? c->mouseX : 0;
    if (outY) *outY = c ? c->mouseY : 0;
}

void XPLMGetScreenBoundsGlobal(int* outLeft, int* outTop, int* outRight, int* outBottom) {
    // One monitor whose global boxels are the legacy pixels.
    HostCore* c = core();
    if (outLeft) *outLeft = 0;
    if (outBottom) *outBottom = 0;
    if (outRight) *outRight = c ? c->opt.screenWidth : 0;
    if (outTop) *outTop = c ? c->opt.screenHeight : 0;
}

void XPLMGetMouseLocationGlobal(int* outX, int* outY) {
    XPLMGetMouseLocation(outX, outY);
}

void XPLMGetWindowGeometryOS(XPLMWindowID inWindowID, int* outLeft, int* outTop, int* outRight,
                             int* outBottom) {
    XPLMGetWindowGeometry(inWindowID, outLeft, outTop, outRight, outBottom);
}

void XPLMSetWindowGeometryOS(XPLMWindowID inWindowID, int, int, int, int) {
    // Only a popped-out window has OS geometry; on simhost's one screen nothing pops out, and a floating
    // window keeps its place and size.
    if (validWindow(inWindowID)) apiError("XPLMSetWindowGeometryOS: the window is not popped out");
}

void XPLMGetAllMonitorBoundsGlobal(XPLMReceiveMonitorBoundsGlobal_f inMonitorBoundsCallback, void* inRefcon) {
    // One monitor, full screen, whose boxels are the screen's pixels.
    HostCore* c = core();
    if (!c || !inMonitorBoundsCallback) return;
    inMonitorBoundsCallback(0, 0, c->opt.screenHeight, c->opt.screenWidth, 0, inRefcon);
}

void XPLMGetAllMonitorBoundsOS(XPLMReceiveMonitorBoundsOS_f inMonitorBoundsCallback, void* inRefcon) {
    HostCore* c = core();
    if (!c || !inMonitorBoundsCallback) return;
    inMonitorBoundsCallback(0, 0, c->opt.screenHeight, c->opt.screenWidth, 0, inRefcon);
}

int XPLMWindowIsPoppedOut(XPLMWindowID) {
    return 0;
}

void XPLMSetWindowGravity(XPLMWindowID, float, float, float, float) {}

void XPLMSetWindowResizingLimits(XPLMWindowID inWindowID, int inMinWidthBoxels, int inMinHeightBoxels,
                                 int inMaxWidthBoxels, int inMaxHeightBoxels) {
    WindowRec* w = validWindow(inWindowID);
    if (!w) return;
    w->minWidth = std::max(0, inMinWidthBoxels);
    w->minHeight = std::max(0, inMinHeightBoxels);
    w->maxWidth = std::max(w->minWidth, inMaxWidthBoxels);
    w->maxHeight = std::max(w->minHeight, inMaxHeightBoxels);
}

void XPLMSetWindowPositioningMode(XPLMWindowID inWindowID, XPLMWindowPositioningMode inPositioningMode, int) {
    HostCore* c = core();
    WindowRec* w = validWindow(inWindowID);
    if (!w) return;
    const int width = w->right - w->left, height = w->top - w->bottom;
    if (inPositioningMode == xplm_WindowCenterOnMonitor) {
        w->left = (c->opt.screenWidth - width) / 2;
        w->bottom = (c->opt.screenHeight - height) / 2;
        w->right = w->left + width;
        w->top = w->bottom + height;
    } else if (inPositioningMode == xplm_WindowFullScreenOnMonitor ||
               inPositioningMode == xplm_WindowFullScreenOnAllMonitors) {
        w->left = 0;
        w->bottom = 0;
        w->right = c->opt.screenWidth;
        w->top = c->opt.screenHeight;
    }
}

void XPLMSetWindowTitle(XPLMWindowID inWindowID, const char* inWindowTitle) {
    if (WindowRec* w = validWindow(inWindowID)) w->title = inWindowTitle ? inWindowTitle : "";
}

void XPLMGetWindowGeometryVR(XPLMWindowID inWindowID, int* outWidthBoxels, int* outHeightBoxels) {
    WindowRec* w = validWindow(inWindowID);
    if (outWidthBoxels) *outWidthBoxels = w ? w->right - w->left : 0;
    if (outHeightBoxels) *outHeightBoxels = w ? w->top - w->bottom : 0;
}

void XPLMSetWindowGeometryVR(XPLMWindowID, int, int) {}

int XPLMWindowIsInVR(XPLMWindowID) {
    return 0;
}

int XPLMRegisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void* inRefcon) {
    HostCore* c = core();
    if (!c || !inCallback) return 0;
    c->sniffers.push_back(
        KeySnifferRec{reinterpret_cast<void*>(inCallback), inBeforeWindows != 0, inRefcon, caller(), true});
    return 1;
}

int XPLMUnregisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void* inRefcon) {
    HostCore* c = core();
    if (!c) return 0;
    const int me = caller();
    for (KeySnifferRec& s : c->sniffers) {
        if (s.alive && s.fn == reinterpret_cast<void*>(inCallback) &&
            s.beforeWindows == (inBeforeWindows != 0) && s.refcon == inRefcon && s.owner == me) {
            s.alive = false;
            return 1;
        }
    }
    return 0;
}

XPLMHotKeyID XPLMRegisterHotKey(char inVirtualKey, XPLMKeyFlags inFlags, const char* inDescription,
                                XPLMHotKey_f inCallback, void* inRefcon) {
    HostCore* c = core();
    if (!c || !inCallback) return nullptr;
    c->hotKeys.emplace_back();
    HotKeyRec& h = c->hotKeys.back();
    h.vkey = inVirtualKey;
    h.flags = inFlags;
    h.description =
        inDescription ? std::string(inDescription, strnlen(inDescription, kHotKeyDescriptionBytes - 1)) : "";
    h.fn = reinterpret_cast<void*>(inCallback);
    h.refcon = inRefcon;
    h.owner = caller();
    c->hotKeyHandles.insert(&h);
    return &h;
}

void XPLMUnregisterHotKey(XPLMHotKeyID inHotKey) {
    HotKeyRec* h = validHotKey(inHotKey);
    if (!h) return;
    if (h->owner != caller()) {
        apiError("XPLMUnregisterHotKey: hot key '" + h->description + "' belongs to another plug-in");
        return;
    }
    h->alive = false;
}

int XPLMCountHotKeys(void) {
    HostCore* c = core();
    if (!c) return 0;
    int n = 0;
    for (const HotKeyRec& h : c->hotKeys)
        n += h.alive ? 1 : 0;
    return n;
}

XPLMHotKeyID XPLMGetNthHotKey(int inIndex) {
    HostCore* c = core();
    if (!c || inIndex < 0) return nullptr;
    for (HotKeyRec& h : c->hotKeys) {
        if (!h.alive) continue;
        if (inIndex-- == 0) return &h;
    }
    return nullptr;
}

void XPLMGetHotKeyInfo(XPLMHotKeyID inHotKey, char* outVirtualKey, XPLMKeyFlags* outFlags,
                       char* outDescription, XPLMPluginID* outPlugin) {
    HotKeyRec* h = validHotKey(inHotKey);
    if (!h) return;
    if (outVirtualKey) *outVirtualKey = h->vkey;
    if (outFlags) *outFlags = h->flags;
    if (outDescription) {
        size_t n = std::min(h->description.size(), kHotKeyDescriptionBytes - 1);
        std::memcpy(outDescription, h->description.data(), n);
        outDescription[n] = '\0';
    }
    if (outPlugin) *outPlugin = h->owner;
}

void XPLMSetHotKeyCombination(XPLMHotKeyID inHotKey, char inVirtualKey, XPLMKeyFlags inFlags) {
    if (HotKeyRec* h = validHotKey(inHotKey)) {
        h->vkey = inVirtualKey;
        h->flags = inFlags;
    }
}

} // extern "C"
