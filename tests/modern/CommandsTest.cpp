// Every Kalvora command does exactly what its menu item does: the same status,
// the same dialogs and windows, the same crew messages, the same view changes;
// and the commands work on a host without the deprecated functions.
#include "ModernFixture.h"

#include "XPLMUtilities.h"

#include <algorithm>
#include <tuple>

namespace kalvora_test {
namespace {

/// Each command and the menu item (under "Plugins/Kalvora/") it stands for.
const std::pair<const char*, const char*> kPairs[] = {
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
        return std::tie(status, gpuStatus, widgets, speech, commands) ==
               std::tie(o.status, o.gpuStatus, o.widgets, o.speech, o.commands);
    }
};

class CommandsVsMenus : public ModernTest {
protected:
    /// Loads a fresh host, lets `prepare` set the scene, runs `act` and reports what followed after 3 s.
    template <class Act> Outcome Run(bool enginesRunning, Act act, const std::string& ownCommand) {
        Load();
        host->aircraft().engineRunning[0] = enginesRunning;
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
};

TEST_F(CommandsVsMenus, EachCommandDoesWhatItsMenuItemDoesAndIsRefusedAsIt) {
    for (const bool enginesRunning : {false, true})
        for (const auto& [command, menu] : kPairs) {
            const std::string item = menu;
            if (enginesRunning && item.find("tail") == std::string::npos && item != "Push straight back")
                continue;
            SCOPED_TRACE(std::string(command) + (enginesRunning ? " with the engines running" : ""));
            const Outcome byMenu = Run(
                enginesRunning, [&] { ASSERT_TRUE(Pick(item)); }, "");
            const Outcome byCommand = Run(
                enginesRunning, [&] { ASSERT_TRUE(host->runCommand(command)); }, command);
            EXPECT_TRUE(byMenu == byCommand) << "menu widgets:\n"
                                             << byMenu.widgets << "\ncommand widgets:\n"
                                             << byCommand.widgets;
            // The refusal itself is visible, not only equal.
            if (enginesRunning) {
                EXPECT_NE(byCommand.widgets.find("Warning..."), std::string::npos);
                EXPECT_EQ(byCommand.status, 0);
            }
        }
}

TEST_F(CommandsVsMenus, OnAHostWithoutTheDeprecatedFunctionsTheCommandsStartStopAndSwitchViews) {
    options.exportDeprecated = false;
    Load();
    for (const char* gone : {"XPLMCommandButtonPress", "XPLMCommandButtonRelease", "XPLMDrawObjects"})
        EXPECT_EQ(XPLMFindSymbol(gone), nullptr) << gone << ": withdrawn from this host";
    ASSERT_TRUE(host->runCommand("halvern/kalvora/push_straight"));
    host->runFor(2);
    ASSERT_NE(host->geti(kStatus), 0);
    const std::vector<std::string> run = host->commandsRun();
    EXPECT_NE(std::find(run.begin(), run.end(), "sim/view/still_spot"), run.end())
        << "the outside view through the spot view command";
    EXPECT_TRUE(host->camera().external);
    ASSERT_TRUE(host->runCommand("halvern/kalvora/truck_view_toggle"));
    host->runFrames(2);
    EXPECT_TRUE(host->camera().controlled) << "the truck view holds the camera";
    ASSERT_TRUE(host->runCommand("halvern/kalvora/stop"));
    host->runFrames(2);
    EXPECT_EQ(host->geti(kStatus), 0);

    ASSERT_TRUE(host->runCommand("halvern/kalvora/gpu_toggle"));
    host->runFrames(2);
    EXPECT_EQ(host->geti(kGPUStatus), 1) << "one toggle per press (begin and end), not two";
}

} // namespace
} // namespace kalvora_test
