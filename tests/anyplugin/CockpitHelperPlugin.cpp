// A cockpit helper: a decorated, resizable floating window that its own command
// shows and hides.
// Published: cockpit/clicks (clicks the window took), cockpit/toggles (times the
// command ran).
#include "PluginSupport.h"

#include "XPLMDisplay.h"

#include <cstring>

using namespace plugin_support;

namespace {

XPLMWindowID gWindow = nullptr;
XPLMCommandRef gToggle = nullptr;
int gClicks = 0, gToggles = 0;

void draw(XPLMWindowID, void*) {}

int click(XPLMWindowID, int, int, XPLMMouseStatus status, void*) {
    if (status == xplm_MouseDown) ++gClicks;
    return 1;
}

XPLMWindowID makeWindow() {
    XPLMCreateWindow_t p{};
    p.structSize = sizeof p;
    p.left = 100;
    p.top = 600;
    p.right = 420;
    p.bottom = 400;
    p.visible = 1;
    p.drawWindowFunc = draw;
    p.handleMouseClickFunc = click;
    p.decorateAsFloatingWindow = xplm_WindowDecorationRoundRectangle;
    p.layer = xplm_WindowLayerFloatingWindows;
    XPLMWindowID w = XPLMCreateWindowEx(&p);
    XPLMSetWindowTitle(w, "Ground checklist");
    XPLMSetWindowResizingLimits(w, 200, 100, 600, 400); // boxels
    return w;
}

int toggle(XPLMCommandRef, XPLMCommandPhase phase, void*) {
    if (phase != xplm_CommandBegin) return 0;
    ++gToggles;
    if (!gWindow)
        gWindow = makeWindow();
    else
        XPLMSetWindowIsVisible(gWindow, !XPLMGetWindowIsVisible(gWindow));
    return 0;
}

} // namespace

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    std::strcpy(outName, "CockpitHelper");
    std::strcpy(outSig, "anyplugin.test.cockpit_helper");
    std::strcpy(outDesc, "a decorated window and its own command");
    gToggle = XPLMCreateCommand("cockpit_helper/toggle_window", "Shows or hides the helper window");
    XPLMRegisterCommandHandler(gToggle, toggle, 1, nullptr);
    publishInt("cockpit/clicks", &gClicks);
    publishInt("cockpit/toggles", &gToggles);
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    XPLMUnregisterCommandHandler(gToggle, toggle, 1, nullptr);
    if (gWindow) XPLMDestroyWindow(gWindow);
    unpublishAll();
}

PLUGIN_API int XPluginEnable(void) {
    return 1;
}
PLUGIN_API void XPluginDisable(void) {}
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID, int, void*) {}
