// A cockpit helper: a decorated floating window opened by its own command,
// titled and sized from an ini file that sits next to its .xpl (or next to
// its platform folder in the fat layout), and a "details" window that a click
// in the main window opens on top of it.
// Published: cockpit/clicks (clicks the main window took), cockpit/toggles
// (times the command ran), cockpit/details_in_front (1 while the details window
// is the front floating window).
#include "PluginSupport.h"

#include "XPLMDisplay.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"

#include <cstring>
#include <fstream>
#include <string>

using namespace plugin_support;

namespace {

struct Settings {
    std::string title = "Cockpit helper";
    int width = 300, height = 200; ///< boxels
};

Settings gSettings;
XPLMWindowID gMain = nullptr, gDetails = nullptr;
XPLMCommandRef gToggle = nullptr;
int gClicks = 0, gToggles = 0, gDetailsInFront = 0;
XPLMDataRef gPublished[3] = {};

/// The folder of the plug-in's ini: the .xpl's folder, or its parent when that is a platform folder.
std::string pluginFolder() {
    char path[512] = {};
    XPLMGetPluginInfo(XPLMGetMyID(), nullptr, path, nullptr, nullptr);
    std::string dir(path);
    dir.erase(dir.find_last_of('/') + 1);
    for (const char* platform : {"lin_x64/", "64/"}) {
        const std::string tail = std::string("/") + platform;
        if (dir.size() > tail.size() && dir.compare(dir.size() - tail.size(), tail.size(), tail) == 0)
            dir.erase(dir.size() - std::strlen(platform));
    }
    return dir;
}

/// Reads "key = value" lines; unknown keys and bad numbers keep the defaults.
Settings readSettings(const std::string& file) {
    Settings s;
    std::ifstream in(file);
    std::string line;
    while (std::getline(in, line)) {
        const size_t eq = line.find('=');
        if (eq == std::string::npos) continue;
        std::string key = line.substr(0, eq), value = line.substr(eq + 1);
        key.erase(key.find_last_not_of(" \t") + 1);
        value.erase(0, value.find_first_not_of(" \t"));
        try {
            if (key == "title")
                s.title = value;
            else if (key == "width")
                s.width = std::stoi(value);
            else if (key == "height")
                s.height = std::stoi(value);
        } catch (...) {
            logLine("CockpitHelper: bad %s in %s", key.c_str(), file.c_str());
        }
    }
    return s;
}

void draw(XPLMWindowID, void*) {}

int clickDetails(XPLMWindowID, int, int, XPLMMouseStatus, void*) {
    return 1;
}

XPLMWindowID makeWindow(const char* title, int left, int top, int width, int height,
                        XPLMHandleMouseClick_f click) {
    XPLMCreateWindow_t p{};
    p.structSize = sizeof p;
    p.left = left;
    p.top = top;
    p.right = left + width;
    p.bottom = top - height;
    p.visible = 1;
    p.drawWindowFunc = draw;
    p.handleMouseClickFunc = click;
    p.decorateAsFloatingWindow = xplm_WindowDecorationRoundRectangle;
    p.layer = xplm_WindowLayerFloatingWindows;
    XPLMWindowID w = XPLMCreateWindowEx(&p);
    XPLMSetWindowTitle(w, title);
    XPLMSetWindowResizingLimits(w, 200, 100, 600, 400);
    return w;
}

int clickMain(XPLMWindowID, int x, int y, XPLMMouseStatus status, void*) {
    if (status != xplm_MouseDown) return 1;
    ++gClicks;
    if (!gDetails) gDetails = makeWindow("Details", x, y, 150, 100, clickDetails);
    return 1;
}

int toggle(XPLMCommandRef, XPLMCommandPhase phase, void*) {
    if (phase != xplm_CommandBegin) return 0;
    ++gToggles;
    if (!gMain)
        gMain = makeWindow(gSettings.title.c_str(), 100, 600, gSettings.width, gSettings.height, clickMain);
    else
        XPLMSetWindowIsVisible(gMain, !XPLMGetWindowIsVisible(gMain));
    return 0;
}

float watch(float, float, int, void*) {
    gDetailsInFront = gDetails && XPLMIsWindowInFront(gDetails) ? 1 : 0;
    return -1;
}

} // namespace

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    std::strcpy(outName, "CockpitHelper");
    std::strcpy(outSig, "anyplugin.test.cockpit_helper");
    std::strcpy(outDesc, "a decorated window, its own command and an ini file");
    const std::string ini = pluginFolder() + "CockpitHelper.ini";
    gSettings = readSettings(ini);
    logLine("CockpitHelper: settings from %s: '%s' %dx%d", ini.c_str(), gSettings.title.c_str(),
            gSettings.width, gSettings.height);
    gToggle = XPLMCreateCommand("cockpit_helper/toggle_window", "Shows or hides the helper window");
    XPLMRegisterCommandHandler(gToggle, toggle, 1, nullptr);
    gPublished[0] = publishInt("cockpit/clicks", &gClicks);
    gPublished[1] = publishInt("cockpit/toggles", &gToggles);
    gPublished[2] = publishInt("cockpit/details_in_front", &gDetailsInFront);
    XPLMRegisterFlightLoopCallback(watch, -1, nullptr);
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    XPLMUnregisterFlightLoopCallback(watch, nullptr);
    XPLMUnregisterCommandHandler(gToggle, toggle, 1, nullptr);
    for (XPLMWindowID w : {gMain, gDetails})
        if (w) XPLMDestroyWindow(w);
    for (XPLMDataRef r : gPublished)
        XPLMUnregisterDataAccessor(r);
}

PLUGIN_API int XPluginEnable(void) {
    return 1;
}
PLUGIN_API void XPluginDisable(void) {}
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID, int, void*) {}
