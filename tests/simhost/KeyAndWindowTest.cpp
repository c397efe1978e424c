// Keys and windows: hot keys and their modifiers, mouse routing to windows and
// window layers.
#include "SimhostFixture.h"

#include "XPLMDisplay.h"
#include "XPLMUtilities.h"

#include <string>

namespace {

using Windows = SimhostTest;
using KeyPath = SimhostTest;

/// Every hot key appends "hot:<its refcon>" here.
std::vector<std::string> gSeen;

void hotKey(void* refcon) {
    gSeen.push_back(std::string("hot:") + static_cast<const char*>(refcon));
}

TEST_F(KeyPath, HotKeysMatchModifiersAndCanBeRemapped) {
    gSeen.clear();
    XPLMHotKeyID h =
        XPLMRegisterHotKey('T', xplm_DownFlag | xplm_ControlFlag, "ctrl-T", hotKey, const_cast<char*>("T"));
    host->pressKey('T');
    EXPECT_TRUE(gSeen.empty());
    host->pressKey('T', xplm_ControlFlag);
    EXPECT_EQ(gSeen, (std::vector<std::string>{"hot:T"}));

    XPLMSetHotKeyCombination(h, XPLM_VK_F9, xplm_DownFlag);
    char vk = 0;
    XPLMKeyFlags flags = 0;
    char desc[512];
    XPLMPluginID owner = -1;
    XPLMGetHotKeyInfo(h, &vk, &flags, desc, &owner);
    EXPECT_EQ(static_cast<unsigned char>(vk), XPLM_VK_F9);
    EXPECT_STREQ(desc, "ctrl-T");
    EXPECT_EQ(owner, me);
    EXPECT_EQ(XPLMCountHotKeys(), 1);

    // Only the owner may unregister it.
    host->setDirectCaller(addOther("test.other"));
    XPLMUnregisterHotKey(h);
    EXPECT_EQ(XPLMCountHotKeys(), 1);
    host->setDirectCaller(me);
    XPLMUnregisterHotKey(h);
    EXPECT_EQ(XPLMCountHotKeys(), 0);
}

// ---- windows and the mouse
struct Clicks {
    std::vector<std::string> events; ///< "<x>,<y>:<status>"
    int consume = 1;
};
int mouse(XPLMWindowID, int x, int y, XPLMMouseStatus status, void* refcon) {
    auto* c = static_cast<Clicks*>(refcon);
    c->events.push_back(std::to_string(x) + "," + std::to_string(y) + ":" + std::to_string(status));
    return c->consume;
}

TEST_F(Windows, ClickGoesToTheTopmostWindowThatTakesIt) {
    Clicks back, front;
    XPLMWindowID wb = XPLMCreateWindow(0, 200, 200, 0, 1, nullptr, nullptr, mouse, &back);
    XPLMWindowID wf = XPLMCreateWindow(50, 150, 150, 50, 1, nullptr, nullptr, mouse, &front);
    EXPECT_TRUE(host->click(100, 100));
    EXPECT_EQ(front.events, (std::vector<std::string>{"100,100:1", "100,100:3"}));
    EXPECT_TRUE(back.events.empty());

    front.consume = 0; // passes through to the window below
    front.events.clear();
    EXPECT_TRUE(host->click(100, 100));
    EXPECT_EQ(front.events, (std::vector<std::string>{"100,100:1"}));
    EXPECT_EQ(back.events, (std::vector<std::string>{"100,100:1", "100,100:3"}));
    EXPECT_TRUE(XPLMIsWindowInFront(wb)); // a taken click brings the window to the front

    EXPECT_FALSE(host->click(500, 500));
    XPLMSetWindowIsVisible(wb, 0);
    back.events.clear();
    host->click(10, 10);
    EXPECT_TRUE(back.events.empty());
    (void)wf;
}

XPLMWindowID modernWindow(int layer, Clicks* clicks, int left = 0) {
    XPLMCreateWindow_t p{};
    p.structSize = sizeof p;
    p.left = left;
    p.top = 300;
    p.right = left + 300;
    p.bottom = 0;
    p.visible = 1;
    p.handleMouseClickFunc = mouse;
    p.refcon = clicks;
    p.decorateAsFloatingWindow = xplm_WindowDecorationSelfDecorated;
    p.layer = layer;
    return XPLMCreateWindowEx(&p);
}

TEST_F(Windows, LayersKeepTheirOrderAndAModalWindowTakesEveryClick) {
    Clicks growlClicks, floatClicks, overlayClicks, modalClicks;
    modernWindow(xplm_WindowLayerGrowlNotifications, &growlClicks, 400);
    modernWindow(xplm_WindowLayerFloatingWindows, &floatClicks);
    // A legacy window lives in the flight overlay: created last, it is still below the others.
    XPLMWindowID overlay = XPLMCreateWindow(0, 300, 300, 0, 1, nullptr, nullptr, mouse, &overlayClicks);
    std::vector<int> layers;
    for (const simhost::WindowInfo& w : host->windows())
        layers.push_back(w.layer);
    EXPECT_EQ(layers, (std::vector<int>{0, 1, 3}));
    XPLMBringWindowToFront(overlay);
    EXPECT_EQ(host->windows().front().layer, 0); // the front of its own layer only
    EXPECT_TRUE(XPLMIsWindowInFront(overlay));
    host->click(10, 10);
    EXPECT_EQ(floatClicks.events.size(), 2u);
    EXPECT_TRUE(overlayClicks.events.empty());

    // A modal window takes the clicks meant for the layers below it; growl notifications stay above.
    XPLMWindowID modal = modernWindow(xplm_WindowLayerModal, &modalClicks, 600);
    EXPECT_FALSE(host->click(10, 10));
    EXPECT_EQ(floatClicks.events.size(), 2u);
    EXPECT_TRUE(host->click(450, 10));
    EXPECT_EQ(growlClicks.events.size(), 2u);
    XPLMDestroyWindow(modal);
}

} // namespace
