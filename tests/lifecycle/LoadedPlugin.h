// A fresh simhost per test with Kalvora.xpl installed from a plug-in folder the
// test lays out (truck models, preferences), and what a user can see of it:
// its menus, its log, its preferences file, the host's log and the dialogs.
#pragma once

#include "simhost/Simhost.h"
#include "simhost/Widgets.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace kalvora_test {

namespace fs = std::filesystem;

constexpr const char* kMenu = "Plugins/Kalvora";
constexpr const char* kParkBrake = "sim/flightmodel/controls/parkbrake";
constexpr const char* kStatus = "halvern/kalvora/PBstatus";
constexpr const char* kLocalX = "sim/flightmodel/position/local_x";
constexpr const char* kLocalZ = "sim/flightmodel/position/local_z";

/// The smallest OBJ8 file: a header and no geometry.
constexpr const char* kEmptyObj8 = "I\n800\nOBJ\n\nPOINT_COUNTS 0 0 0 0\n";

class LoadedPluginTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        root = fs::temp_directory_path() / ("kalvora-life-" + std::string(info->test_suite_name()) + "-" +
                                            info->name() + "-" + std::to_string(::getpid()));
        fs::remove_all(root);
        fs::create_directories(root / "dist" / "Kalvora" / "GroundServices");
        fs::copy_file(KALVORA_BINARY_DIR "/plugin/Kalvora.xpl", root / "dist" / "Kalvora.xpl");
        options.sandboxDir = (root / "xplane").string();
        options.startHeadingDeg = 40;
        fs::create_directories(options.sandboxDir);
    }

    void TearDown() override {
        host.reset();
        fs::remove_all(root);
    }

    /// Puts a truck model named name + ".obj" into the plug-in folder.
    void AddTruck(const std::string& name) {
        std::ofstream(root / "dist" / "Kalvora" / (name + ".obj")) << kEmptyObj8;
    }

    /// Writes the preferences file the plug-in will find at start.
    void WritePreferences(const std::string& text) {
        fs::create_directories(PrefsPath().parent_path());
        std::ofstream(PrefsPath()) << text;
    }

    /// Starts the host (once) and loads the plug-in; fails the test when it does not load.
    void Load() {
        if (!host) host = std::make_unique<simhost::Host>(options);
        std::string error;
        id = host->loadPlugin((root / "dist" / "Kalvora.xpl").string(), &error);
        ASSERT_GE(id, 0) << error;
    }

    /// Disable, Stop and unload, as X-Plane does when it quits.
    /// The installed file goes too, so that the next Load installs and starts it afresh under
    /// its own name (the host would otherwise install a second copy beside it).
    void Unload() {
        host->unloadPlugin(id);
        fs::remove(PluginFolder().parent_path() / "Kalvora.xpl");
    }

    fs::path PrefsPath() const {
        return fs::path(options.sandboxDir) / "Output" / "preferences" / "Halvern.Kalvora.prf";
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
    size_t Count(const std::string& needle) const {
        size_t n = 0;
        for (const std::string& s : host->transcriptTexts("speech"))
            n += s.find(needle) != std::string::npos;
        return n;
    }

    bool Said(const std::string& needle) const {
        for (const std::string& s : host->transcriptTexts("speech"))
            if (s.find(needle) != std::string::npos) return true;
        return false;
    }

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

    fs::path root;
    simhost::HostOptions options;
    std::unique_ptr<simhost::Host> host;
    int id = -1;
    double startX = 0, startZ = 0;
};

} // namespace kalvora_test
