// Every Kalvora command does exactly what its menu item does: the same status,
// the same dialogs and windows, the same crew messages, the same view changes.
#include "ModernFixture.h"

#include <algorithm>

namespace kalvora_test {
namespace {

using Commands = ModernTest;

/// A command and the menu item (under "Plugins/Kalvora/") it stands for.
struct Pair {
    const char* command;
    const char* menu;
};

const Pair kPairs[] = {
    {"halvern/kalvora/push_straight", "Push straight back"},
    {"halvern/kalvora/turn_tail_left", "Turn tail left"},
    {"halvern/kalvora/turn_tail_right", "Turn tail right"},
    {"halvern/kalvora/auto_tail_left", "Automated tail left"},
    {"halvern/kalvora/auto_tail_right", "Automated tail right"},
    {"halvern/kalvora/gpu_toggle", "GPU"},
    {"halvern/kalvora/preferences", "Preferences..."},
    {"halvern/kalvora/free_move_panel", "Tools/Free move panel"},
};

/// What a user sees after an action: statuses, the widget windows, crew speech, commands the plug-in ran.
struct Outcome {
    int status = 0, gpuStatus = 0;
    std::string widgets;
    std::vector<std::string> speech, commands;
    bool operator==(const Outcome& o) const {
        return status == o.status && gpuStatus == o.gpuStatus && widgets == o.widgets && speech == o.speech &&
               commands == o.commands;
    }
};

class CommandsVsMenus : public ModernTest {
protected:
    /// Loads a fresh host, lets `prepare` set the scene, runs `act` and reports what followed after 3 s.
    template <class Prepare, class Act> Outcome Run(Prepare prepare, Act act, const std::string& ownCommand) {
        Load();
        prepare();
        host->runFrames(2);
        const std::string widgetsBefore = simhost::widgetTree();
        act();
        host->runFor(3);
        Outcome o;
        o.status = host->geti(kStatus);
        o.gpuStatus = host->geti(kGPUStatus);
        // Only the windows the action opened: a dialog nobody closed may outlive its host.
        o.widgets = simhost::widgetTree();
        if (o.widgets.rfind(widgetsBefore, 0) == 0) o.widgets.erase(0, widgetsBefore.size());
        o.speech = host->transcriptTexts("speech");
        for (const std::string& c : host->commandsRun())
            if (c != ownCommand) o.commands.push_back(c);
        host.reset();
        return o;
    }

    template <class Prepare> void ExpectSame(const Pair& p, Prepare prepare) {
        SCOPED_TRACE(p.command);
        const std::string menu = std::string("Plugins/Kalvora/") + p.menu;
        const Outcome byMenu = Run(
            prepare, [&] { ASSERT_TRUE(host->pickMenu(menu)) << menu; }, "");
        const Outcome byCommand = Run(
            prepare, [&] { ASSERT_TRUE(host->runCommand(p.command)); }, p.command);
        EXPECT_TRUE(byMenu == byCommand) << "menu widgets:\n"
                                         << byMenu.widgets << "\ncommand widgets:\n"
                                         << byCommand.widgets;
    }
};

TEST_F(CommandsVsMenus, EachCommandDoesWhatItsMenuItemDoes) {
    for (const Pair& p : kPairs)
        ExpectSame(p, [] {});
}

TEST_F(CommandsVsMenus, RefusedStartsShowTheSameWarning) {
    for (const Pair& p : kPairs) {
        if (std::string(p.menu).find("tail") == std::string::npos &&
            std::string(p.menu) != "Push straight back")
            continue;
        ExpectSame(p, [this] { host->aircraft().engineRunning[0] = true; });
    }
    // The refusal itself is visible, not only equal.
    Load();
    host->aircraft().engineRunning[0] = true;
    host->runFrames(2);
    ASSERT_TRUE(host->runCommand("halvern/kalvora/push_straight"));
    EXPECT_NE(simhost::findWidget("Warning..."), nullptr);
    EXPECT_EQ(host->geti(kStatus), 0);
}

TEST_F(Commands, StopEndsAPushBackStartedByCommand) {
    Load();
    ASSERT_TRUE(host->runCommand("halvern/kalvora/push_straight"));
    host->runFor(2);
    ASSERT_NE(host->geti(kStatus), 0);
    ASSERT_TRUE(host->runCommand("halvern/kalvora/stop"));
    host->runFrames(2);
    EXPECT_EQ(host->geti(kStatus), 0);
}

TEST_F(Commands, HostWithoutDeprecatedFunctionsLoadsAndSwitchesViewsByCommand) {
    options.exportDeprecated = false;
    Load();
    ASSERT_TRUE(host->runCommand("halvern/kalvora/push_straight"));
    host->runFor(2);
    const std::vector<std::string> run = host->commandsRun();
    EXPECT_NE(std::find(run.begin(), run.end(), "sim/view/still_spot"), run.end())
        << "the outside view through the spot view command";
    EXPECT_TRUE(host->camera().external);
    ASSERT_TRUE(host->runCommand("halvern/kalvora/truck_view_toggle"));
    host->runFrames(2);
    EXPECT_TRUE(host->camera().controlled) << "the truck view holds the camera";
}

TEST_F(Commands, OnlyTheBeginningActs) {
    Load();
    ASSERT_TRUE(host->runCommand("halvern/kalvora/gpu_toggle"));
    host->runFrames(2);
    EXPECT_EQ(host->geti(kGPUStatus), 1) << "one toggle per press (begin and end), not two";
}

} // namespace
} // namespace kalvora_test
