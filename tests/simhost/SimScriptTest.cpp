// kalvora-sim's timed actions, key names and dataref assignments.
#include "SimScript.h"

#include "XPLMDefs.h"

#include <gtest/gtest.h>

namespace {

using namespace simhost::cli;

TEST(SimScript, ActionsAreTakenOutInTimeOrderAndTheRestStays) {
    std::vector<std::string> args = {
        "--aircraft", "B738", "--at",      "12",     "--set",
        "sim/x=0",    "--at", "2",         "--menu", "Plugins/Kalvora/Push straight back",
        "--key",      "F8",   "--seconds", "30"};
    std::vector<TimedAction> actions;
    std::string error;
    ASSERT_TRUE(extractActions(args, actions, &error)) << error;
    EXPECT_EQ(args, (std::vector<std::string>{"--aircraft", "B738", "--seconds", "30"}));
    ASSERT_EQ(actions.size(), 3u);
    EXPECT_EQ(actions[0].kind, "menu");
    EXPECT_DOUBLE_EQ(actions[0].atSeconds, 2);
    EXPECT_EQ(actions[1].kind, "key"); // same --at as the menu, kept in order
    EXPECT_EQ(actions[2].arg, "sim/x=0");
}

TEST(SimScript, MalformedActionsAreRejected) {
    std::vector<TimedAction> actions;
    std::string error;
    std::vector<std::string> noTime = {"--menu", "Plugins/X"};
    EXPECT_FALSE(extractActions(noTime, actions, &error));
    EXPECT_NE(error.find("--at"), std::string::npos);
    std::vector<std::string> badTime = {"--at", "soon", "--menu", "x"};
    EXPECT_FALSE(extractActions(badTime, actions, &error));
    std::vector<std::string> missing = {"--at", "1", "--set"};
    EXPECT_FALSE(extractActions(missing, actions, &error));
}

TEST(SimScript, KeyNamesWithModifiers) {
    int vk = 0, flags = 0;
    ASSERT_TRUE(parseKey("F8", vk, flags));
    EXPECT_EQ(vk, XPLM_VK_F8);
    EXPECT_EQ(flags, 0);
    ASSERT_TRUE(parseKey("ctrl+shift+space", vk, flags));
    EXPECT_EQ(vk, XPLM_VK_SPACE);
    EXPECT_EQ(flags, xplm_ControlFlag | xplm_ShiftFlag);
    EXPECT_FALSE(parseKey("hyper+A", vk, flags));
    EXPECT_FALSE(parseKey("NOTAKEY", vk, flags));
}

TEST(SimScript, Assignments) {
    std::string name;
    int index = 0;
    double value = 0;
    ASSERT_TRUE(parseAssignment("sim/flightmodel/controls/parkbrake=0.5", name, index, value));
    EXPECT_EQ(name, "sim/flightmodel/controls/parkbrake");
    EXPECT_EQ(index, -1);
    EXPECT_DOUBLE_EQ(value, 0.5);
    ASSERT_TRUE(parseAssignment("sim/flightmodel/engine/ENGN_N1_[1]=20", name, index, value));
    EXPECT_EQ(index, 1);
    EXPECT_FALSE(parseAssignment("=3", name, index, value));
    EXPECT_FALSE(parseAssignment("a=b", name, index, value));
    EXPECT_FALSE(parseAssignment("a[x]=1", name, index, value));
}

} // namespace
