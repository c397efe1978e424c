// Menus: per-plug-in indices, check and enabled states, separators, sub-menus
// and picking by path.
#include "SimhostFixture.h"

#include "XPLMMenus.h"
#include "XPLMPlugin.h"

namespace {

using Menus = SimhostTest;

struct Picks {
    std::vector<std::pair<void*, void*>> refs; ///< (menu ref, item ref) per pick
    int pickedBy = -1;                         ///< XPLMGetMyID inside the handler
};

void onPick(void* menuRef, void* itemRef) {
    auto* p = static_cast<Picks*>(menuRef);
    p->refs.emplace_back(menuRef, itemRef);
    p->pickedBy = XPLMGetMyID();
}

void* ref(intptr_t n) {
    return reinterpret_cast<void*>(n);
}

/// Builds "Plugins/Demo" with a few items, as a plug-in does in its start.
XPLMMenuID buildDemo(Picks& picks) {
    int anchor = XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Demo", nullptr, 0);
    XPLMMenuID m = XPLMCreateMenu("Demo", XPLMFindPluginsMenu(), anchor, onPick, &picks);
    XPLMAppendMenuItem(m, "About...", ref(0), 0);            // 0
    XPLMAppendMenuSeparator(m);                              // 1
    XPLMAppendMenuItem(m, "GPU", ref(2), 0);                 // 2
    XPLMAppendMenuItem(m, "Push straight back", ref(3), 0);  // 3
    int trucks = XPLMAppendMenuItem(m, "Trucks", ref(9), 0); // 4
    XPLMMenuID sub = XPLMCreateMenu("Trucks", m, trucks, onPick, &picks);
    XPLMAppendMenuItem(sub, "Tug A", ref(9), 0);
    XPLMAppendMenuItem(sub, "Tug B", ref(10), 0);
    return m;
}

TEST_F(Menus, IndicesCountSeparatorsAndPickingCallsTheHandlerWithBothRefs) {
    Picks picks;
    XPLMMenuID m = buildDemo(picks);
    EXPECT_EQ(XPLMAppendMenuItem(m, "Stop", ref(8), 0), 5);
    EXPECT_EQ(host->menuItems("Plugins/Demo"),
              (std::vector<std::string>{"About...", "-", "GPU", "Push straight back", "Trucks", "Stop"}));
    EXPECT_TRUE(host->pickMenu("Plugins/Demo/Push straight back"));
    EXPECT_TRUE(host->pickMenu("Plugins/Demo/Trucks/Tug B"));
    ASSERT_EQ(picks.refs.size(), 2u);
    EXPECT_EQ(picks.refs[0].second, ref(3));
    EXPECT_EQ(picks.refs[1].second, ref(10));
    EXPECT_EQ(picks.pickedBy, me);
    EXPECT_FALSE(host->pickMenu("Plugins/Demo/Nope"));
    EXPECT_FALSE(host->pickMenu("Plugins/Demo/Trucks")); // opens a sub-menu, picks nothing
    EXPECT_EQ(host->transcriptTexts("menu"),
              (std::vector<std::string>{"Plugins/Demo/Push straight back", "Plugins/Demo/Trucks/Tug B"}));
}

TEST_F(Menus, CheckAndEnabledStates) {
    Picks picks;
    XPLMMenuID m = buildDemo(picks);
    EXPECT_EQ(host->menuCheck("Plugins/Demo/GPU"), 0);
    XPLMCheckMenuItem(m, 2, xplm_Menu_Checked);
    EXPECT_EQ(host->menuCheck("Plugins/Demo/GPU"), 2);
    XPLMCheckMenuItem(m, 2, xplm_Menu_Unchecked);
    XPLMMenuCheck state = -1;
    XPLMCheckMenuItemState(m, 2, &state);
    EXPECT_EQ(state, xplm_Menu_Unchecked);
    EXPECT_EQ(host->menuCheck("Plugins/Demo/Missing"), -1);

    XPLMEnableMenuItem(m, 3, 0);
    EXPECT_FALSE(host->menuEnabled("Plugins/Demo/Push straight back"));
    EXPECT_FALSE(host->pickMenu("Plugins/Demo/Push straight back"));
    EXPECT_TRUE(picks.refs.empty());
    XPLMEnableMenuItem(m, 4, 0); // a disabled parent hides its children
    EXPECT_FALSE(host->pickMenu("Plugins/Demo/Trucks/Tug A"));
}

TEST_F(Menus, IndicesArePerPluginInASharedMenu) {
    XPLMMenuID plugins = XPLMFindPluginsMenu();
    EXPECT_EQ(XPLMAppendMenuItem(plugins, "Mine 0", nullptr, 0), 0);
    const int other = addOther("test.other");
    host->setDirectCaller(other);
    EXPECT_EQ(XPLMAppendMenuItem(plugins, "Theirs 0", nullptr, 0), 0);
    EXPECT_EQ(XPLMAppendMenuItem(plugins, "Theirs 1", nullptr, 0), 1);
    XPLMCheckMenuItem(plugins, 1, xplm_Menu_Checked); // their item 1
    host->setDirectCaller(me);
    EXPECT_EQ(XPLMAppendMenuItem(plugins, "Mine 1", nullptr, 0), 1);
    XPLMCheckMenuItem(plugins, 1, xplm_Menu_Unchecked); // my item 1
    EXPECT_EQ(host->menuCheck("Plugins/Theirs 1"), 2);
    EXPECT_EQ(host->menuCheck("Plugins/Mine 1"), 1);
    EXPECT_EQ(host->menuCheck("Plugins/Theirs 0"), 0);
}

} // namespace
