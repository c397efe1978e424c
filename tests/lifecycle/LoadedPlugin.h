// A fresh simhost per test with Kalvora.xpl installed from a plug-in folder the
// test lays out (truck models, preferences), and what a user can see of it:
// its menus, its log, its preferences file, the host's log and the dialogs.
#pragma once

#include "simhost/Widgets.h"
#include "support/InstalledPlugin.h"

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace kalvora_test {

constexpr const char* kMenu = "Plugins/Kalvora";
constexpr const char* kParkBrake = "sim/flightmodel/controls/parkbrake";
constexpr const char* kStatus = "halvern/kalvora/PBstatus";
constexpr const char* kLocalX = "sim/flightmodel/position/local_x";
constexpr const char* kLocalZ = "sim/flightmodel/position/local_z";

/// The smallest OBJ8 file: a header and no geometry.
constexpr const char* kEmptyObj8 = "I\n800\nOBJ\n\nPOINT_COUNTS 0 0 0 0\n";

class LoadedPluginTest : public InstalledPluginTest {
protected:
    LoadedPluginTest() : InstalledPluginTest("kalvora-life") {}

    /// Puts a truck model named name + ".obj" into the plug-in folder.
    void AddTruck(const std::string& name) { std::ofstream(DataFolder() / (name + ".obj")) << kEmptyObj8; }

    /// Writes the preferences file the plug-in will find at start.
    void WritePreferences(const std::string& text) { WritePreferencesText(text); }

    /// Starts the host (once) and loads the plug-in; fails the test when it does not load.
    void Load() {
        if (!host) host = std::make_unique<simhost::Host>(options);
        std::string error;
        id = host->loadPlugin(PluginFile().string(), "", layout, &error);
        ASSERT_GE(id, 0) << error;
    }

    /// How Load installs the plug-in in Resources/plugins.
    simhost::PluginLayout layout = simhost::PluginLayout::Flat;

    /// Disable, Stop and unload, as X-Plane does when it quits.
    /// The installed file goes too, so that the next Load installs and starts it afresh under
    /// its own name (the host would otherwise install a second copy beside it).
    void Unload() {
        host->unloadPlugin(id);
        fs::remove(PluginFolder().parent_path() / "Kalvora.xpl");
    }

    fs::path PluginFolder() const {
        return fs::path(options.sandboxDir) / "Resources" / "plugins" / "Kalvora";
    }

    static std::string ReadFile(const fs::path& path) {
        std::ifstream in(path);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    static std::vector<std::string> Lines(const std::string& text) {
        std::vector<std::string> lines;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);)
            lines.push_back(line);
        return lines;
    }

    std::string PluginLog() const { return ReadFile(PluginFolder() / "Kalvora.log"); }

    /// The value of key in the preferences file, or "<absent>".
    std::string PrefValue(const std::string& key) const {
        for (const std::string& line : Lines(ReadFile(PrefsPath())))
            if (line.rfind(key + "=", 0) == 0) return line.substr(key.size() + 1);
        return "<absent>";
    }

    /// Texts of every widget under the first window titled title, or empty when there is none.
    std::vector<std::string> DialogTexts(const std::string& title) const {
        std::vector<std::string> texts;
        simhost::WidgetHandle window = simhost::findWidget(title);
        if (!window) return texts;
        for (simhost::WidgetHandle w :
             simhost::findWidgets([](const simhost::WidgetInfo&) { return true; }, window))
            texts.push_back(simhost::widgetDescriptor(w));
        return texts;
    }

    /// How many crew messages contained needle.
    size_t Count(const std::string& needle) const { return static_cast<size_t>(SpokenCount(needle)); }
    bool Said(const std::string& needle) const { return SpokenCount(needle) > 0; }

    /// Picks a manoeuvre and lets the truck come and hook up, the brake released on the crew's question.
    void StartPush(const std::string& item) {
        MarkPosition();
        ASSERT_TRUE(host->pickMenu(std::string(kMenu) + "/" + item));
        ASSERT_TRUE(host->runUntil([&] { return Said("confirm brake"); }, 60))
            << "the crew never asked for the brake";
        host->set(kParkBrake, 0);
        ASSERT_TRUE(host->runUntil([&] { return Moved() > 0.5; }, 30)) << "the aircraft was never pushed";
    }

    /// Metres the aircraft has moved from where the test began watching.
    double Moved() const { return std::hypot(host->getf(kLocalX) - startX, host->getf(kLocalZ) - startZ); }

    /// Remembers where the aircraft stands now.
    void MarkPosition() {
        startX = host->getf(kLocalX);
        startZ = host->getf(kLocalZ);
    }

    int id = -1;
    double startX = 0, startZ = 0;
};

} // namespace kalvora_test
