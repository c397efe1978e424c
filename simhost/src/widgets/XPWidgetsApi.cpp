// The XPWidgets.h functions: the widget tree, properties, message dispatch,
// keyboard focus, and the XPLM windows behind root widgets.
#include "XPWidgets.h"

#include "HostInternal.h"
#include "graphics/ApiFirewall.h"
#include "graphics/GraphicsHooks.h"
#include "widgets/WidgetTree.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <unordered_set>

namespace simhost::widgets {
namespace {

/// Everything the widget library keeps; it belongs to the live host.
struct State {
    detail::HostCore* host = nullptr;         ///< the host these widgets belong to
    std::string hostSandbox;                  ///< and its sandbox: a new host may reuse the address
    std::vector<std::unique_ptr<Widget>> all; ///< live widgets, creation order
    std::unordered_set<const Widget*> live;
    std::vector<std::unique_ptr<Widget>> graveyard; ///< destroyed, freed when no dispatch runs
    int depth = 0;                                  ///< nesting of dispatches and window callbacks
    Widget* focus = nullptr;                        ///< widget with keyboard focus
    Widget* mouseTarget = nullptr;                  ///< widget that accepted the last mouse-down
    bool changingFocus = false;                     ///< our own XPLMTakeKeyboardFocus is running
    size_t unloadedPlugins = 0;                     ///< unloaded plug-ins seen so far
};

State& S() {
    static State s;
    return s;
}

void buryOwnedBy(int pluginId);

/// Unloaded plug-ins: the number of them.
size_t countUnloaded(const detail::HostCore& c) {
    size_t n = 0;
    for (const auto& p : c.plugins)
        if (p && !p->alive) ++n;
    return n;
}

/// Drops the widgets of plug-ins unloaded since the last look: their widget
/// functions may live in a library that is gone.
void sweepUnloaded(detail::HostCore& c) {
    State& s = S();
    size_t unloaded = countUnloaded(c);
    if (unloaded == s.unloadedPlugins) return;
    s.unloadedPlugins = unloaded;
    for (const auto& p : c.plugins)
        if (p && !p->alive) buryOwnedBy(p->id);
}

/// Forgets the widgets of a host that is gone (their windows went with it).
void syncWithHost() {
    State& s = S();
    detail::HostCore* now = detail::core();
    if (s.host == now && (!now || now->sandbox == s.hostSandbox)) {
        if (now) sweepUnloaded(*now);
        return;
    }
    if (s.depth == 0) {
        s.all.clear();
        s.graveyard.clear();
    } else {
        for (auto& w : s.all)
            s.graveyard.push_back(std::move(w));
        s.all.clear();
    }
    s.live.clear();
    s.focus = nullptr;
    s.mouseTarget = nullptr;
    s.host = now;
    s.hostSandbox = now ? now->sandbox : std::string();
    s.unloadedPlugins = now ? countUnloaded(*now) : 0;
}

/// Marks a dispatch as running; the outermost one frees destroyed widgets.
struct DispatchScope {
    DispatchScope() { ++S().depth; }
    ~DispatchScope() {
        if (--S().depth == 0) S().graveyard.clear();
    }
    DispatchScope(const DispatchScope&) = delete;
    DispatchScope& operator=(const DispatchScope&) = delete;
};

/// Calls one widget function as the widget's owner; exceptions count as "not handled".
int callOne(Widget* w, XPWidgetFunc_t fn, XPWidgetMessage msg, intptr_t p1, intptr_t p2) {
    int result = 0;
    if (!fn) return 0;
    detail::callInto(w->owner, "a widget function", [&] { result = fn(msg, idOf(w), p1, p2); });
    return result;
}

enum class Callbacks { UntilHandled, All, NewestOnly };

/// Offers a message to a widget's functions, newest first.
int callWidget(Widget* w, XPWidgetMessage msg, intptr_t p1, intptr_t p2,
               Callbacks which = Callbacks::UntilHandled) {
    std::vector<XPWidgetFunc_t> functions = w->callbacks; // a function may add or remove others
    int handled = 0;
    for (auto it = functions.rbegin(); it != functions.rend() && w->alive; ++it) {
        if (callOne(w, *it, msg, p1, p2)) {
            handled = 1;
            if (which == Callbacks::UntilHandled) break;
        }
        if (which == Callbacks::NewestOnly) break;
    }
    return handled;
}

int recursiveDispatch(Widget* w, XPWidgetMessage msg, intptr_t p1, intptr_t p2) {
    int handled = callWidget(w, msg, p1, p2);
    std::vector<Widget*> kids = w->children;
    for (Widget* k : kids)
        if (S().live.count(k)) handled |= recursiveDispatch(k, msg, p1, p2);
    return handled;
}

bool contains(const Widget* w, int x, int y) {
    return x >= w->left && x <= w->right && y >= w->bottom && y <= w->top;
}

/// The deepest widget under a point, searching the top-most children first.
Widget* deepestAt(Widget* w, int x, int y, bool visibleOnly) {
    if (!contains(w, x, y)) return nullptr;
    for (auto it = w->children.rbegin(); it != w->children.rend(); ++it) {
        if (visibleOnly && !(*it)->visible) continue;
        if (Widget* hit = deepestAt(*it, x, y, visibleOnly)) return hit;
    }
    return w;
}

bool isInside(const Widget* w, const Widget* ancestor) {
    for (const Widget* x = w; x; x = x->parent)
        if (x == ancestor) return true;
    return false;
}

/// Gives the keyboard back to X-Plane when one of our windows holds it.
void releaseWindowFocus(Widget* root) {
    if (root && root->window && XPLMHasKeyboardFocus(root->window)) {
        S().changingFocus = true;
        XPLMTakeKeyboardFocus(nullptr);
        S().changingFocus = false;
    }
}

/// Takes focus away from the focused widget (it is told, p1 = byOther).
void dropFocus(int byOther) {
    State& s = S();
    Widget* old = s.focus;
    if (!old) return;
    s.focus = nullptr;
    if (old->alive) callWidget(old, xpMsg_KeyLoseFocus, byOther, 0);
}

/// Limits drawing to a widget's exposed rectangle while it and its children
/// paint (xpProperty_Clip), inside any clip already in force.
class ClipScope {
public:
    explicit ClipScope(const Widget* w) {
        auto it = w->properties.find(xpProperty_Clip);
        if (it == w->properties.end() || !it->second || !gfx::available()) return;
        active_ = true;
        wasOn_ = glIsEnabled(GL_SCISSOR_TEST);
        glGetIntegerv(GL_SCISSOR_BOX, previous_);
        int l = 0, t = 0, r = 0, b = 0;
        XPGetWidgetExposedGeometry(idOf(w), &l, &t, &r, &b);
        if (wasOn_) {
            l = std::max(l, previous_[0]);
            b = std::max(b, previous_[1]);
            r = std::min(r, previous_[0] + previous_[2]);
            t = std::min(t, previous_[1] + previous_[3]);
        }
        glEnable(GL_SCISSOR_TEST);
        glScissor(l, b, std::max(0, r - l), std::max(0, t - b));
    }
    ~ClipScope() {
        if (!active_) return;
        glScissor(previous_[0], previous_[1], previous_[2], previous_[3]);
        if (!wasOn_) glDisable(GL_SCISSOR_TEST);
    }
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;

private:
    bool active_ = false;
    GLboolean wasOn_ = GL_FALSE;
    GLint previous_[4] = {0, 0, 0, 0};
};

void paint(Widget* w) {
    if (!w->visible) return;
    if (callWidget(w, xpMsg_Paint, 0, 0)) return;
    ClipScope clip(w);
    callWidget(w, xpMsg_Draw, 0, 0);
    std::vector<Widget*> kids = w->children;
    for (Widget* k : kids)
        if (S().live.count(k)) paint(k);
}

// ---- the callbacks of the XPLM window behind a root widget ----

void rootDrawCallBack(XPLMWindowID, void* refcon) {
    Widget* root = find(refcon);
    if (!root) return;
    DispatchScope scope;
    paint(root);
}

int rootMouseCallBack(XPLMWindowID, int x, int y, XPLMMouseStatus status, void* refcon) {
    Widget* root = find(refcon);
    if (!root) return 0;
    DispatchScope scope;
    State& s = S();
    XPMouseState_t mouse{};
    mouse.x = x;
    mouse.y = y;
    intptr_t p1 = reinterpret_cast<intptr_t>(&mouse);
    if (status == xplm_MouseDown) {
        s.mouseTarget = nullptr;
        // Offered from the widget under the mouse up to the root until one accepts.
        for (Widget* w = deepestAt(root, x, y, true); w && w->alive; w = w->parent) {
            if (callWidget(w, xpMsg_MouseDown, p1, 0)) {
                if (w->alive) s.mouseTarget = w;
                break;
            }
        }
        return 1;
    }
    Widget* target = s.mouseTarget;
    if (!target || !target->alive) return 1;
    if (status == xplm_MouseDrag) {
        callWidget(target, xpMsg_MouseDrag, p1, 0);
    } else if (status == xplm_MouseUp) {
        s.mouseTarget = nullptr;
        callWidget(target, xpMsg_MouseUp, p1, 0);
    }
    return 1;
}

void rootKeyCallBack(XPLMWindowID, char key, XPLMKeyFlags flags, char vkey, void* refcon, int losingFocus) {
    Widget* root = find(refcon);
    if (!root) return;
    DispatchScope scope;
    State& s = S();
    if (losingFocus) {
        if (!s.changingFocus && s.focus && rootOf(s.focus) == root) dropFocus(0);
        return;
    }
    if (!s.focus || !s.focus->alive) return;
    XPKeyState_t state{};
    state.key = key;
    state.flags = flags;
    state.vkey = vkey;
    dispatch(s.focus, xpMsg_KeyPress, xpMode_UpChain, reinterpret_cast<intptr_t>(&state), 0);
}

XPLMCursorStatus rootCursorCallBack(XPLMWindowID, int x, int y, void* refcon) {
    Widget* root = find(refcon);
    if (!root) return xplm_CursorDefault;
    DispatchScope scope;
    XPMouseState_t mouse{};
    mouse.x = x;
    mouse.y = y;
    XPLMCursorStatus cursor = xplm_CursorDefault;
    if (Widget* w = deepestAt(root, x, y, true))
        dispatch(w, xpMsg_CursorAdjust, xpMode_UpChain, reinterpret_cast<intptr_t>(&mouse),
                 reinterpret_cast<intptr_t>(&cursor));
    return cursor;
}

int rootWheelCallBack(XPLMWindowID, int x, int y, int wheel, int clicks, void* refcon) {
    Widget* root = find(refcon);
    if (!root) return 0;
    DispatchScope scope;
    XPMouseState_t mouse{};
    mouse.x = x;
    mouse.y = y;
    mouse.button = wheel;
    mouse.delta = clicks;
    if (Widget* w = deepestAt(root, x, y, true))
        dispatch(w, xpMsg_MouseWheel, xpMode_UpChain, reinterpret_cast<intptr_t>(&mouse), 0);
    return 1;
}

int rootRightClickCallBack(XPLMWindowID, int, int, XPLMMouseStatus, void*) {
    return 1;
}

XPLMWindowID createRootWindow(Widget* w) {
    XPLMCreateWindow_t params{};
    params.structSize = sizeof params;
    params.left = w->left;
    params.top = w->top;
    params.right = w->right;
    params.bottom = w->bottom;
    params.visible = w->visible ? 1 : 0;
    params.drawWindowFunc = rootDrawCallBack;
    params.handleMouseClickFunc = rootMouseCallBack;
    params.handleKeyFunc = rootKeyCallBack;
    params.handleCursorFunc = rootCursorCallBack;
    params.handleMouseWheelFunc = rootWheelCallBack;
    params.refcon = w;
    params.decorateAsFloatingWindow = xplm_WindowDecorationNone;
    params.layer = xplm_WindowLayerFloatingWindows;
    params.handleRightClickFunc = rootRightClickCallBack;
    return XPLMCreateWindowEx(&params);
}

/// Unlinks a widget from its parent (the parent is told).
void unlinkFromParent(Widget* w, bool notify) {
    Widget* parent = w->parent;
    if (!parent) return;
    auto& kids = parent->children;
    kids.erase(std::remove(kids.begin(), kids.end(), w), kids.end());
    w->parent = nullptr;
    if (notify) {
        if (parent->alive) callWidget(parent, xpMsg_LoseChild, reinterpret_cast<intptr_t>(w), 0);
        if (w->alive) callWidget(w, xpMsg_AcceptParent, 0, 0);
    }
}

/// Removes a widget's record: focus, capture and window go with it.
void bury(Widget* w) {
    State& s = S();
    Widget* oldRoot = rootOf(w);
    unlinkFromParent(w, false);
    w->alive = false;
    s.live.erase(w);
    if (s.mouseTarget == w) s.mouseTarget = nullptr;
    if (s.focus && (s.focus == w || !rootOf(s.focus))) {
        s.focus = nullptr;
        releaseWindowFocus(oldRoot);
    }
    if (w->window) {
        XPLMWindowID window = w->window;
        w->window = nullptr;
        detail::CallingPlugin as(w->owner);
        XPLMDestroyWindow(window);
    }
    for (auto it = s.all.begin(); it != s.all.end(); ++it)
        if (it->get() == w) {
            s.graveyard.push_back(std::move(*it));
            s.all.erase(it);
            break;
        }
}

void destroyTree(Widget* w, bool withChildren, int byParent) {
    State& s = S();
    std::vector<Widget*> kids = w->children;
    for (Widget* k : kids) {
        if (!s.live.count(k)) continue;
        if (withChildren) {
            destroyTree(k, true, 1);
        } else {
            unlinkFromParent(k, false);
            callWidget(k, xpMsg_AcceptParent, 0, 0);
        }
    }
    if (!w->alive) return;
    callWidget(w, xpMsg_Destroy, byParent, 0, Callbacks::All);
    if (w->alive) bury(w);
}

void buryOwnedBy(int pluginId) {
    State& s = S();
    DispatchScope scope;
    std::vector<Widget*> owned;
    for (auto& w : s.all)
        if (w->owner == pluginId) owned.push_back(w.get());
    for (Widget* w : owned) {
        for (Widget* k : std::vector<Widget*>(w->children))
            if (k->owner != pluginId) unlinkFromParent(k, false);
        if (w->alive) bury(w);
    }
}

XPWidgetID create(int left, int top, int right, int bottom, int visible, const char* descriptor, int isRoot,
                  XPWidgetID container, XPWidgetClass widgetClass, XPWidgetFunc_t function) {
    syncWithHost();
    if (!function) return nullptr;
    State& s = S();
    DispatchScope scope;
    auto record = std::make_unique<Widget>();
    Widget* w = record.get();
    w->left = left;
    w->top = top;
    w->right = right;
    w->bottom = bottom;
    w->visible = visible != 0;
    w->isRoot = isRoot != 0;
    w->descriptor = descriptor ? descriptor : "";
    w->widgetClass = widgetClass;
    w->callbacks.push_back(function);
    w->owner = detail::caller();
    s.all.push_back(std::move(record));
    s.live.insert(w);
    if (w->isRoot) {
        w->window = createRootWindow(w);
    } else if (Widget* parent = find(container)) {
        w->parent = parent;
        parent->children.push_back(w);
    }
    callWidget(w, xpMsg_Create, 0, 0);
    if (w->alive && w->parent) {
        callWidget(w->parent, xpMsg_AcceptChild, reinterpret_cast<intptr_t>(w), 0);
        if (w->alive) callWidget(w, xpMsg_AcceptParent, reinterpret_cast<intptr_t>(w->parent), 0);
    }
    return w->alive ? idOf(w) : nullptr;
}

} // namespace

Widget* find(XPWidgetID id) {
    syncWithHost();
    if (!id) return nullptr;
    auto* w = static_cast<Widget*>(id);
    return S().live.count(w) ? w : nullptr;
}

std::vector<Widget*> topLevel() {
    syncWithHost();
    std::vector<Widget*> out;
    for (auto& w : S().all)
        if (!w->parent) out.push_back(w.get());
    return out;
}

int dispatch(Widget* w, XPWidgetMessage msg, XPDispatchMode mode, intptr_t p1, intptr_t p2) {
    if (!w || !w->alive) return 0;
    DispatchScope scope;
    switch (mode) {
    case xpMode_Direct:
        return callWidget(w, msg, p1, p2);
    case xpMode_UpChain:
        for (Widget* x = w; x && x->alive;) {
            Widget* parent = x->parent;
            if (callWidget(x, msg, p1, p2)) return 1;
            x = x->alive ? x->parent : (S().live.count(parent) ? parent : nullptr);
        }
        return 0;
    case xpMode_Recursive:
        return recursiveDispatch(w, msg, p1, p2);
    case xpMode_DirectAllCallbacks:
        return callWidget(w, msg, p1, p2, Callbacks::All);
    case xpMode_Once:
        return callWidget(w, msg, p1, p2, Callbacks::NewestOnly);
    default:
        return 0;
    }
}

bool visibleThroughParents(const Widget* w) {
    for (const Widget* x = w; x; x = x->parent)
        if (!x->visible) return false;
    return w != nullptr;
}

Widget* rootOf(Widget* w) {
    Widget* top = w;
    while (top && top->parent)
        top = top->parent;
    return (top && top->isRoot) ? top : nullptr;
}

Widget* focused() {
    syncWithHost();
    return S().focus;
}

void moveTree(Widget* w, int dx, int dy) {
    if (!w || !w->alive) return;
    XPSetWidgetGeometry(idOf(w), w->left + dx, w->top + dy, w->right + dx, w->bottom + dy);
    for (Widget* k : std::vector<Widget*>(w->children))
        if (S().live.count(k)) moveTree(k, dx, dy);
}

void dropWidgets(int pluginId) {
    syncWithHost();
    buryOwnedBy(pluginId);
}

void listWidgets(int pluginId, std::vector<std::string>& out) {
    syncWithHost();
    for (const auto& w : S().all)
        if (w->alive && w->owner == pluginId) out.push_back("widget " + w->descriptor);
}

} // namespace simhost::widgets

using namespace simhost::widgets;
namespace detail = simhost::detail;

extern "C" {

XPWidgetID XPCreateWidget(int inLeft, int inTop, int inRight, int inBottom, int inVisible,
                          const char* inDescriptor, int inIsRoot, XPWidgetID inContainer,
                          XPWidgetClass inClass) {
    return detail::firewall("XPCreateWidget", XPWidgetID{}, [&]() -> XPWidgetID {
        return create(inLeft, inTop, inRight, inBottom, inVisible, inDescriptor, inIsRoot, inContainer,
                      inClass, classFunction(inClass));
    });
}

XPWidgetID XPCreateCustomWidget(int inLeft, int inTop, int inRight, int inBottom, int inVisible,
                                const char* inDescriptor, int inIsRoot, XPWidgetID inContainer,
                                XPWidgetFunc_t inCallback) {
    return detail::firewall("XPCreateCustomWidget", XPWidgetID{}, [&]() -> XPWidgetID {
        return create(inLeft, inTop, inRight, inBottom, inVisible, inDescriptor, inIsRoot, inContainer,
                      xpWidgetClass_None, inCallback);
    });
}

void XPDestroyWidget(XPWidgetID inWidget, int inDestroyChildren) {
    detail::firewall("XPDestroyWidget", [&] {
        Widget* w = find(inWidget);
        if (!w) return;
        DispatchScope scope;
        destroyTree(w, inDestroyChildren != 0, 0);
    });
}

int XPSendMessageToWidget(XPWidgetID inWidget, XPWidgetMessage inMessage, XPDispatchMode inMode,
                          intptr_t inParam1, intptr_t inParam2) {
    return detail::firewall("XPSendMessageToWidget", 0, [&]() -> int {
        return dispatch(find(inWidget), inMessage, inMode, inParam1, inParam2);
    });
}

void XPPlaceWidgetWithin(XPWidgetID inSubWidget, XPWidgetID inContainer) {
    detail::firewall("XPPlaceWidgetWithin", [&] {
        Widget* w = find(inSubWidget);
        if (!w || w->isRoot) return;
        Widget* container = find(inContainer);
        if (inContainer && !container) return;
        if (container && isInside(container, w)) return; // would make a cycle
        DispatchScope scope;
        unlinkFromParent(w, true);
        if (!container || !w->alive) return;
        w->parent = container;
        container->children.push_back(w);
        callWidget(container, xpMsg_AcceptChild, reinterpret_cast<intptr_t>(w), 0);
        if (w->alive) callWidget(w, xpMsg_AcceptParent, reinterpret_cast<intptr_t>(container), 0);
    });
}

int XPCountChildWidgets(XPWidgetID inWidget) {
    Widget* w = find(inWidget);
    return w ? static_cast<int>(w->children.size()) : 0;
}

XPWidgetID XPGetNthChildWidget(XPWidgetID inWidget, int inIndex) {
    Widget* w = find(inWidget);
    if (!w || inIndex < 0 || inIndex >= static_cast<int>(w->children.size())) return nullptr;
    return idOf(w->children[inIndex]);
}

XPWidgetID XPGetParentWidget(XPWidgetID inWidget) {
    Widget* w = find(inWidget);
    return (w && w->parent) ? idOf(w->parent) : nullptr;
}

void XPShowWidget(XPWidgetID inWidget) {
    detail::firewall("XPShowWidget", [&] {
        Widget* w = find(inWidget);
        if (!w || w->visible) return;
        DispatchScope scope;
        w->visible = true;
        if (w->window) XPLMSetWindowIsVisible(w->window, 1);
        dispatch(w, xpMsg_Shown, xpMode_UpChain, reinterpret_cast<intptr_t>(w), 0);
    });
}

void XPHideWidget(XPWidgetID inWidget) {
    detail::firewall("XPHideWidget", [&] {
        Widget* w = find(inWidget);
        if (!w || !w->visible) return;
        DispatchScope scope;
        State& s = S();
        w->visible = false;
        if (w->window) XPLMSetWindowIsVisible(w->window, 0);
        if (s.focus && isInside(s.focus, w)) {
            Widget* root = rootOf(s.focus);
            dropFocus(0);
            releaseWindowFocus(root);
        }
        if (w->alive) dispatch(w, xpMsg_Hidden, xpMode_UpChain, reinterpret_cast<intptr_t>(w), 0);
    });
}

int XPIsWidgetVisible(XPWidgetID inWidget) {
    return visibleThroughParents(find(inWidget)) ? 1 : 0;
}

XPWidgetID XPFindRootWidget(XPWidgetID inWidget) {
    Widget* root = rootOf(find(inWidget));
    return root ? idOf(root) : nullptr;
}

void XPBringRootWidgetToFront(XPWidgetID inWidget) {
    Widget* root = rootOf(find(inWidget));
    if (root && root->window) XPLMBringWindowToFront(root->window);
}

int XPIsWidgetInFront(XPWidgetID inWidget) {
    Widget* root = rootOf(find(inWidget));
    return (root && root->window) ? XPLMIsWindowInFront(root->window) : 0;
}

void XPGetWidgetGeometry(XPWidgetID inWidget, int* outLeft, int* outTop, int* outRight, int* outBottom) {
    Widget* w = find(inWidget);
    if (outLeft) *outLeft = w ? w->left : 0;
    if (outTop) *outTop = w ? w->top : 0;
    if (outRight) *outRight = w ? w->right : 0;
    if (outBottom) *outBottom = w ? w->bottom : 0;
}

void XPSetWidgetGeometry(XPWidgetID inWidget, int inLeft, int inTop, int inRight, int inBottom) {
    detail::firewall("XPSetWidgetGeometry", [&] {
        Widget* w = find(inWidget);
        if (!w) return;
        if (w->left == inLeft && w->top == inTop && w->right == inRight && w->bottom == inBottom) return;
        DispatchScope scope;
        // dx/dy follow the top-left corner, so top-anchored layouts stay in place on a resize.
        XPWidgetGeometryChange_t change{};
        change.dx = inLeft - w->left;
        change.dy = inTop - w->top;
        change.dwidth = (inRight - inLeft) - (w->right - w->left);
        change.dheight = (inTop - inBottom) - (w->top - w->bottom);
        w->left = inLeft;
        w->top = inTop;
        w->right = inRight;
        w->bottom = inBottom;
        if (w->window) XPLMSetWindowGeometry(w->window, inLeft, inTop, inRight, inBottom);
        dispatch(w, xpMsg_Reshape, xpMode_UpChain, reinterpret_cast<intptr_t>(w),
                 reinterpret_cast<intptr_t>(&change));
    });
}

XPWidgetID XPGetWidgetForLocation(XPWidgetID inContainer, int inXOffset, int inYOffset, int inRecursive,
                                  int inVisibleOnly) {
    Widget* w = find(inContainer);
    if (!w || !contains(w, inXOffset, inYOffset)) return nullptr;
    for (auto it = w->children.rbegin(); it != w->children.rend(); ++it) {
        Widget* k = *it;
        if (inVisibleOnly && !k->visible) continue;
        if (!contains(k, inXOffset, inYOffset)) continue;
        return inRecursive ? XPGetWidgetForLocation(idOf(k), inXOffset, inYOffset, 1, inVisibleOnly)
                           : idOf(k);
    }
    return idOf(w);
}

void XPGetWidgetExposedGeometry(XPWidgetID inWidgetID, int* outLeft, int* outTop, int* outRight,
                                int* outBottom) {
    Widget* w = find(inWidgetID);
    int l = 0, t = 0, r = 0, b = 0;
    if (w) {
        l = w->left, t = w->top, r = w->right, b = w->bottom;
        for (Widget* p = w->parent; p; p = p->parent) {
            l = std::max(l, p->left);
            r = std::min(r, p->right);
            b = std::max(b, p->bottom);
            t = std::min(t, p->top);
        }
        if (r < l) r = l;
        if (t < b) t = b;
    }
    if (outLeft) *outLeft = l;
    if (outTop) *outTop = t;
    if (outRight) *outRight = r;
    if (outBottom) *outBottom = b;
}

void XPSetWidgetDescriptor(XPWidgetID inWidget, const char* inDescriptor) {
    detail::firewall("XPSetWidgetDescriptor", [&] {
        Widget* w = find(inWidget);
        if (!w) return;
        w->descriptor = inDescriptor ? inDescriptor : "";
        dispatch(w, xpMsg_DescriptorChanged, xpMode_Direct, 0, 0);
    });
}

int XPGetWidgetDescriptor(XPWidgetID inWidget, char* outDescriptor, int inMaxDescLength) {
    Widget* w = find(inWidget);
    if (!w) {
        if (outDescriptor && inMaxDescLength > 0) outDescriptor[0] = 0;
        return 0;
    }
    int length = static_cast<int>(w->descriptor.size());
    // strncpy semantics: no terminating NUL when the buffer is too short.
    if (outDescriptor && inMaxDescLength > 0)
        std::strncpy(outDescriptor, w->descriptor.c_str(), inMaxDescLength);
    return length;
}

XPLMWindowID XPGetWidgetUnderlyingWindow(XPWidgetID inWidget) {
    Widget* root = rootOf(find(inWidget));
    return root ? root->window : nullptr;
}

void XPSetWidgetProperty(XPWidgetID inWidget, XPWidgetPropertyID inProperty, intptr_t inValue) {
    detail::firewall("XPSetWidgetProperty", [&] {
        Widget* w = find(inWidget);
        if (!w) return;
        w->properties[inProperty] = inValue;
        dispatch(w, xpMsg_PropertyChanged, xpMode_Direct, inProperty, inValue);
    });
}

intptr_t XPGetWidgetProperty(XPWidgetID inWidget, XPWidgetPropertyID inProperty, int* inExists) {
    Widget* w = find(inWidget);
    auto it = w ? w->properties.find(inProperty) : decltype(w->properties.end()){};
    bool exists = w && it != w->properties.end();
    if (inExists) *inExists = exists ? 1 : 0;
    return exists ? it->second : 0;
}

XPWidgetID XPSetKeyboardFocus(XPWidgetID inWidget) {
    return detail::firewall("XPSetKeyboardFocus", XPWidgetID{}, [&]() -> XPWidgetID {
        syncWithHost();
        State& s = S();
        DispatchScope scope;
        if (!inWidget) {
            Widget* root = s.focus ? rootOf(s.focus) : nullptr;
            dropFocus(0);
            releaseWindowFocus(root);
            if (!root) {
                s.changingFocus = true;
                XPLMTakeKeyboardFocus(nullptr);
                s.changingFocus = false;
            }
            return nullptr;
        }
        Widget* w = find(inWidget);
        if (!w) return s.focus ? idOf(s.focus) : nullptr;
        if (s.focus == w) return idOf(w);
        if (!callWidget(w, xpMsg_KeyTakeFocus, 0, 0) || !w->alive) return s.focus ? idOf(s.focus) : nullptr;
        if (s.focus && s.focus != w) dropFocus(1);
        s.focus = w;
        if (Widget* root = rootOf(w); root && root->window) {
            s.changingFocus = true;
            XPLMTakeKeyboardFocus(root->window);
            s.changingFocus = false;
        }
        return idOf(w);
    });
}

void XPLoseKeyboardFocus(XPWidgetID inWidget) {
    detail::firewall("XPLoseKeyboardFocus", [&] {
        syncWithHost();
        State& s = S();
        Widget* w = find(inWidget);
        if (!w || s.focus != w) return;
        DispatchScope scope;
        Widget* root = rootOf(w);
        dropFocus(0);
        // Focus climbs to the nearest ancestor that accepts it.
        for (Widget* p = w->alive ? w->parent : nullptr; p && p->alive; p = p->parent) {
            if (callWidget(p, xpMsg_KeyTakeFocus, 1, 0)) {
                if (p->alive) s.focus = p;
                return;
            }
        }
        releaseWindowFocus(root);
    });
}

XPWidgetID XPGetWidgetWithFocus(void) {
    syncWithHost();
    return S().focus ? idOf(S().focus) : nullptr;
}

void XPAddWidgetCallback(XPWidgetID inWidget, XPWidgetFunc_t inNewCallback) {
    detail::firewall("XPAddWidgetCallback", [&] {
        Widget* w = find(inWidget);
        if (!w || !inNewCallback) return;
        DispatchScope scope;
        w->callbacks.push_back(inNewCallback);
        callOne(w, inNewCallback, xpMsg_Create, 1, 0);
    });
}

XPWidgetFunc_t XPGetWidgetClassFunc(XPWidgetClass inWidgetClass) {
    return classFunction(inWidgetClass);
}

} // extern "C"
