// Keys and windows: the key path (sniffers, focus, hot keys), consumption,
// focus changes, and mouse routing to windows.
#include "SimhostFixture.h"

#include "XPLMDisplay.h"
#include "XPLMUtilities.h"

#include <string>

namespace {

using Windows = SimhostTest;

/// Every key callback appends "<who>:<vk>:<down|up>" here.
std::vector<std::string> gSeen;

std::string event(const char* who, char vk, int flags) {
    return std::string(who) + ":" + std::to_string(static_cast<unsigned char>(vk)) + ":" +
           ((flags & xplm_DownFlag) ? "down"
            : (flags & xplm_UpFlag) ? "up"
                                    : "repeat");
}

int sniffPass(char, XPLMKeyFlags flags, char vk, void* refcon) {
    gSeen.push_back(event(static_cast<const char*>(refcon), vk, flags));
    return 1;
}
int sniffEat(char, XPLMKeyFlags flags, char vk, void* refcon) {
    gSeen.push_back(event(static_cast<const char*>(refcon), vk, flags));
    return 0;
}
void windowKey(XPLMWindowID, char, XPLMKeyFlags flags, char vk, void*, int losing) {
    gSeen.push_back(losing ? std::string("window:lost") : event("window", vk, flags));
}
void hotKey(void* refcon) {
    gSeen.push_back(std::string("hot:") + static_cast<const char*>(refcon));
}

class KeyPath : public SimhostTest {
protected:
    void SetUp() override {
        SimhostTest::SetUp();
        gSeen.clear();
    }
};

TEST_F(KeyPath, SniffersThenHotKeysAndUpDownFlags) {
    XPLMRegisterKeySniffer(sniffPass, 0, const_cast<char*>("after"));
    XPLMRegisterKeySniffer(sniffPass, 1, const_cast<char*>("before"));
    XPLMRegisterHotKey(XPLM_VK_F8, xplm_DownFlag, "truck view", hotKey, const_cast<char*>("F8"));
    host->pressKey(XPLM_VK_F8);
    EXPECT_EQ(gSeen, (std::vector<std::string>{"before:119:down", "after:119:down", "hot:F8", "before:119:up",
                                               "after:119:up"}));
}

TEST_F(KeyPath, ASnifferReturningZeroConsumesTheKey) {
    XPLMRegisterKeySniffer(sniffEat, 1, const_cast<char*>("eater"));
    XPLMRegisterKeySniffer(sniffPass, 1, const_cast<char*>("late"));
    XPLMRegisterHotKey(XPLM_VK_F8, xplm_DownFlag, "truck view", hotKey, const_cast<char*>("F8"));
    host->pressKey(XPLM_VK_F8);
    EXPECT_EQ(gSeen, (std::vector<std::string>{"eater:119:down", "eater:119:up"}));
    XPLMUnregisterKeySniffer(sniffEat, 1, const_cast<char*>("eater"));
    gSeen.clear();
    host->pressKey(XPLM_VK_F8);
    EXPECT_EQ(gSeen.size(), 3u);
}

TEST_F(KeyPath, FocusedWindowTakesKeysBeforeAfterSniffersAndHotKeys) {
    XPLMRegisterKeySniffer(sniffPass, 1, const_cast<char*>("before"));
    XPLMRegisterKeySniffer(sniffPass, 0, const_cast<char*>("after"));
    XPLMRegisterHotKey('A', xplm_DownFlag, "a", hotKey, const_cast<char*>("A"));
    XPLMWindowID w = XPLMCreateWindow(0, 100, 100, 0, 1, nullptr, windowKey, nullptr, nullptr);
    XPLMTakeKeyboardFocus(w);
    EXPECT_TRUE(XPLMHasKeyboardFocus(w));
    EXPECT_FALSE(XPLMHasKeyboardFocus(nullptr));
    host->keyEvent('a', xplm_DownFlag, 'A');
    EXPECT_EQ(gSeen, (std::vector<std::string>{"before:65:down", "window:65:down"}));
    gSeen.clear();
    XPLMTakeKeyboardFocus(nullptr);
    EXPECT_EQ(gSeen, (std::vector<std::string>{"window:lost"}));
    EXPECT_TRUE(XPLMHasKeyboardFocus(nullptr));
}

TEST_F(KeyPath, HotKeysMatchModifiersAndCanBeRemapped) {
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
    EXPECT_EQ(XPLMGetNthHotKey(0), h);

    // Only the owner may unregister it.
    host->setDirectCaller(addOther("test.other"));
    XPLMUnregisterHotKey(h);
    EXPECT_EQ(XPLMCountHotKeys(), 1);
    host->setDirectCaller(me);
    XPLMUnregisterHotKey(h);
    EXPECT_EQ(XPLMCountHotKeys(), 0);
}

TEST(VirtualKeys, EveryKeyHasAName) {
    EXPECT_STREQ(XPLMGetVirtualKeyDescription(XPLM_VK_F12), "F12");
    EXPECT_STREQ(XPLMGetVirtualKeyDescription('Q'), "Q");
    EXPECT_STREQ(XPLMGetVirtualKeyDescription('7'), "7");
    EXPECT_STREQ(XPLMGetVirtualKeyDescription(static_cast<char>(0x63)), "NUMPAD3");
    EXPECT_STREQ(XPLMGetVirtualKeyDescription(static_cast<char>(0xB3)), "LBRACE");
    EXPECT_STREQ(XPLMGetVirtualKeyDescription(XPLM_VK_SPACE), "SPACE");
    EXPECT_STREQ(XPLMGetVirtualKeyDescription(static_cast<char>(0xF0)), "");
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

TEST_F(Windows, DragAndUpGoToTheWindowThatTookTheDown) {
    Clicks c;
    XPLMCreateWindow(0, 100, 100, 0, 1, nullptr, nullptr, mouse, &c);
    host->mouseDown(10, 10);
    host->mouseDrag(300, 300); // outside: still this window
    host->mouseUp(310, 310);
    EXPECT_EQ(c.events, (std::vector<std::string>{"10,10:1", "300,300:2", "310,310:3"}));
    int x = 0, y = 0;
    XPLMGetMouseLocation(&x, &y);
    EXPECT_EQ(x, 310);
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
    XPLMWindowID growl = modernWindow(xplm_WindowLayerGrowlNotifications, &growlClicks, 400);
    XPLMWindowID floating = modernWindow(xplm_WindowLayerFloatingWindows, &floatClicks);
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

    // OS and VR geometry belong to popped-out and VR windows: a floating window keeps its size.
    XPLMSetWindowGeometryOS(floating, 0, 50, 50, 0);
    XPLMSetWindowGeometryVR(floating, 50, 50);
    int l = 0, t = 0, r = 0, b = 0;
    XPLMGetWindowGeometry(floating, &l, &t, &r, &b);
    EXPECT_EQ(std::vector<int>({l, t, r, b}), std::vector<int>({0, 300, 300, 0}));
    EXPECT_EQ(XPLMWindowIsPoppedOut(floating), 0);
    (void)growl;
}

TEST_F(Windows, GeometryRefconAndDestroy) {
    int tag = 0;
    XPLMCreateWindow_t p{};
    p.structSize = sizeof p;
    p.left = 10;
    p.top = 90;
    p.right = 60;
    p.bottom = 20;
    p.visible = 1;
    p.refcon = &tag;
    XPLMWindowID w = XPLMCreateWindowEx(&p);
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(XPLMGetWindowRefCon(w), &tag);
    XPLMSetWindowGeometry(w, 1, 2, 3, 0);
    int l = 0, t = 0, r = 0, b = 0;
    XPLMGetWindowGeometry(w, &l, &t, &r, nullptr);
    EXPECT_EQ(l + t + r, 6);
    XPLMSetWindowTitle(w, "Preferences");
    ASSERT_EQ(host->windows().size(), 1u);
    EXPECT_EQ(host->windows()[0].title, "Preferences");
    EXPECT_EQ(host->windows()[0].pluginId, me);
    XPLMTakeKeyboardFocus(w);
    XPLMDestroyWindow(w);
    EXPECT_TRUE(host->windows().empty());
    EXPECT_TRUE(XPLMHasKeyboardFocus(nullptr));
    XPLMSetWindowIsVisible(w, 1); // a stale handle is harmless
    EXPECT_EQ(XPLMGetWindowIsVisible(w), 0);
    p.structSize = 40; // too small for any version
    EXPECT_EQ(XPLMCreateWindowEx(&p), nullptr);
    int sw = 0, sh = 0;
    XPLMGetScreenSize(&sw, &sh);
    EXPECT_EQ(sw * 1000 + sh, 1024 * 1000 + 768);
    (void)b;
}

} // namespace
