// The widget tree: parents and children, visibility, dispatch and destruction.
#include "WidgetFixture.h"

#include <stdexcept>

namespace simhost::testing {
namespace {

constexpr XPWidgetMessage kProbe = xpMsg_UserStart + 1; // a message no class understands

using WidgetTree = WidgetTest;
using WidgetDispatch = WidgetTest;
using WidgetDestruction = WidgetTest;

TEST_F(WidgetTree, ChildrenParentsAndRoots) {
    XPWidgetID root = mainWindow(100, 400, 300, 200);
    XPWidgetID a = child(root, xpWidgetClass_Caption, 110, 380, 200, 360, "a");
    XPWidgetID b = child(root, xpWidgetClass_Caption, 110, 350, 200, 330, "b");
    XPWidgetID loose = XPCreateWidget(0, 10, 10, 0, 1, "loose", 0, nullptr, xpWidgetClass_Caption);
    EXPECT_EQ(XPCountChildWidgets(root), 2);
    EXPECT_EQ(XPGetNthChildWidget(root, 1), b);
    EXPECT_EQ(XPGetNthChildWidget(root, -1), nullptr);
    EXPECT_EQ(XPGetParentWidget(a), root);
    EXPECT_EQ(XPGetParentWidget(root), nullptr);
    EXPECT_EQ(XPFindRootWidget(a), root);
    EXPECT_EQ(XPFindRootWidget(loose), nullptr);
    // Placing moves the widget to the end of its new parent's children and keeps its coordinates.
    XPPlaceWidgetWithin(loose, a);
    EXPECT_EQ(XPGetParentWidget(loose), a);
    EXPECT_EQ(XPFindRootWidget(loose), root);
    XPPlaceWidgetWithin(a, loose); // a cycle is refused
    EXPECT_EQ(XPGetParentWidget(a), root);
    EXPECT_EQ(XPCreateWidget(0, 1, 1, 0, 1, "bad", 0, nullptr, 99), nullptr); // no such class
}

TEST_F(WidgetTree, VisibilityFollowsParentsAndReachesTheWindow) {
    XPWidgetID root = mainWindow(100, 400, 300, 200);
    XPWidgetID box = child(root, xpWidgetClass_SubWindow, 110, 380, 290, 210);
    XPWidgetID button = child(box, xpWidgetClass_Button, 120, 300, 200, 280, "Go");
    XPAddWidgetCallback(root, recordA);
    seen().clear();
    EXPECT_TRUE(XPIsWidgetVisible(button));
    XPHideWidget(box);
    EXPECT_FALSE(XPIsWidgetVisible(button));
    EXPECT_FALSE(clickWidget(*host, button));
    auto hidden = seenOf(xpMsg_Hidden); // reported up the chain with the hidden widget
    ASSERT_EQ(hidden.size(), 1u);
    EXPECT_EQ(hidden[0].p1, reinterpret_cast<intptr_t>(box));
    XPShowWidget(box);
    EXPECT_TRUE(XPIsWidgetVisible(button));
    EXPECT_EQ(seenOf(xpMsg_Shown).size(), 1u);
    XPHideWidget(root); // a hidden root hides its XPLM window
    EXPECT_FALSE(host->windows().at(0).visible);
}

TEST_F(WidgetDispatch, CallbacksAreTriedNewestFirstUntilOneHandles) {
    XPWidgetID w = XPCreateCustomWidget(0, 10, 10, 0, 1, "", 0, nullptr, recordA);
    XPAddWidgetCallback(w, recordAndHandle);
    XPAddWidgetCallback(w, recordB);
    ASSERT_EQ(seenOf(xpMsg_Create).size(), 3u); // creation, then each subclass
    seen().clear();
    EXPECT_EQ(XPSendMessageToWidget(w, kProbe, xpMode_Direct, 5, 6), 1);
    ASSERT_EQ(seen().size(), 2u);
    EXPECT_EQ(seen()[0].by, "B");
    EXPECT_EQ(seen()[1].by, "H");
    EXPECT_EQ(seen()[1].p1, 5);
    EXPECT_EQ(seen()[1].p2, 6);

    seen().clear();
    EXPECT_EQ(XPSendMessageToWidget(w, kProbe, xpMode_DirectAllCallbacks, 0, 0), 1);
    ASSERT_EQ(seen().size(), 3u);
    EXPECT_EQ(seen()[2].by, "A");

    EXPECT_EQ(XPSendMessageToWidget(nullptr, kProbe, xpMode_Direct, 0, 0), 0);
}

TEST_F(WidgetDispatch, UpChainClimbsAndRecursiveDescends) {
    XPWidgetID top = XPCreateCustomWidget(0, 100, 100, 0, 1, "top", 0, nullptr, recordA);
    XPWidgetID mid = XPCreateCustomWidget(0, 90, 90, 0, 1, "mid", 0, top, recordA);
    XPWidgetID leaf = XPCreateCustomWidget(0, 80, 80, 0, 1, "leaf", 0, mid, recordA);
    XPWidgetID sibling = XPCreateCustomWidget(0, 80, 80, 0, 1, "sibling", 0, top, recordA);
    auto order = [] {
        std::vector<std::string> names;
        for (const Seen& s : seen())
            names.push_back(widgetDescriptor(s.widget));
        return names;
    };
    seen().clear();
    EXPECT_EQ(XPSendMessageToWidget(leaf, kProbe, xpMode_UpChain, 0, 0), 0);
    EXPECT_EQ(order(), (std::vector<std::string>{"leaf", "mid", "top"}));
    seen().clear();
    XPSendMessageToWidget(top, kProbe, xpMode_Recursive, 0, 0);
    EXPECT_EQ(order(), (std::vector<std::string>{"top", "mid", "leaf", "sibling"}));
    seen().clear();
    XPSendMessageToWidget(mid, kProbe, xpMode_Direct, 0, 0);
    EXPECT_EQ(order(), (std::vector<std::string>{"mid"}));
    // A handler part-way up stops the climb.
    XPAddWidgetCallback(mid, recordAndHandle);
    seen().clear();
    EXPECT_EQ(XPSendMessageToWidget(leaf, kProbe, xpMode_UpChain, 0, 0), 1);
    EXPECT_EQ(order(), (std::vector<std::string>{"leaf", "mid"}));
    (void)sibling;
}

TEST_F(WidgetDestruction, DestroyingATreeTellsEveryWidgetAndLeavesNoHandle) {
    XPWidgetID root = mainWindow(100, 400, 300, 200);
    XPWidgetID box = child(root, xpWidgetClass_SubWindow, 110, 380, 290, 210);
    XPWidgetID button = child(box, xpWidgetClass_Button, 120, 300, 200, 280, "Go");
    XPAddWidgetCallback(root, recordA);
    XPAddWidgetCallback(button, recordB);
    XPSetKeyboardFocus(child(box, xpWidgetClass_TextField, 120, 270, 200, 250, ""));
    seen().clear();
    XPDestroyWidget(root, 1);
    auto destroys = seenOf(xpMsg_Destroy);
    ASSERT_EQ(destroys.size(), 2u); // the two recorders: the button first, with its parent
    EXPECT_EQ(destroys[0].widget, button);
    EXPECT_EQ(destroys[0].p1, 1);
    EXPECT_EQ(destroys[1].widget, root);
    EXPECT_EQ(destroys[1].p1, 0);
    EXPECT_EQ(widgetDescriptor(button), "");
    EXPECT_EQ(XPGetWidgetWithFocus(), nullptr);
    EXPECT_TRUE(host->windows().empty());
    EXPECT_TRUE(topLevelWidgets().empty());
    XPDestroyWidget(root, 1); // a stale handle is harmless
}

/// A widget function with a bug: it throws on the probe message.
int throwsOnProbe(XPWidgetMessage msg, XPWidgetID, intptr_t, intptr_t) {
    if (msg == xpMsg_UserStart + 1) throw std::runtime_error("widget bug");
    return 0;
}

TEST_F(WidgetDispatch, AThrowingWidgetFunctionCountsAsNotHandledAndIsLogged) {
    XPWidgetID w = XPCreateCustomWidget(0, 10, 10, 0, 1, "", 0, nullptr, recordAndHandle);
    XPAddWidgetCallback(w, throwsOnProbe);
    seen().clear();
    EXPECT_EQ(XPSendMessageToWidget(w, xpMsg_UserStart + 1, xpMode_Direct, 0, 0),
              1); // the older one handles it
    EXPECT_EQ(seen().size(), 1u);
    EXPECT_NE(host->logText().find("widget bug"), std::string::npos);
}

} // namespace
} // namespace simhost::testing
