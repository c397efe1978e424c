// The built Kalvora.xpl in a fresh simhost per test, used as a user or another
// plug-in would: from the menu, the keys, datarefs and messages, reading what
// it says, shows, logs and writes.
//
// Each test gets a folder of its own (removed at the end) holding a copy of the
// plug-in beside its data folder (root/dist/Kalvora.xpl, root/dist/Kalvora/,
// empty unless the test puts trucks or models there) and the X-Plane folder of
// the host (root/xplane). Set `options`, `shippedData` and the preferences file
// first, then Load().
#pragma once

#include "simhost/Simhost.h"
#include "simhost/Widgets.h"
#include "support/DataRefNames.h"
#include "support/Files.h"
#include "support/SmallModels.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kalvora_test {

namespace fs = std::filesystem;

/// A preferences file with every key the plug-in writes, in its order: truck drawn, crew messages spoken
/// and shown, the view switched, GPU handled, towed by the front wheel; `changes` replace values by key.
inline std::string PreferencesText(const std::vector<std::pair<std::string, std::string>>& changes = {}) {
    std::vector<std::pair<std::string, std::string>> keys = {{"VERSION", "1"},
                                                             {"SWITCH_VIEW", "1"},
                                                             {"AURAL_CREW_MESSAGE", "1"},
                                                             {"WRITTEN_CREW_MESSAGE", "1"},
                                                             {"DRAW_TRUCK", "1"},
                                                             {"TRUCK_SPEED", "10"},
                                                             {"ALLOW_ENGN_ON", "0"},
                                                             {"Truck", "KLVdefault"},
                                                             {"TruckView_KEY", "116"},
                                                             {"TruckView_KF", "8"},
                                                             {"HANDLE_GPU", "1"},
                                                             {"FRONT_WHEEL", "1"}};
    std::string text;
    for (auto& [key, value] : keys) {
        for (const auto& [changed, newValue] : changes)
            if (changed == key) value = newValue;
        text += key + "=" + value + "\n";
    }
    return text;
}

class InstalledPluginTest : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(DataFolder() / "GroundServices");
        fs::copy_file(KALVORA_BINARY_DIR "/plugin/Kalvora.xpl", PluginFile());
        options.sandboxDir = (root / "xplane").string();
        options.startHeadingDeg = 40;
        fs::create_directories(options.sandboxDir);
    }

    void TearDown() override { host.reset(); }

    // ---- before Load ----

    /// The plug-in file to load.
    fs::path PluginFile() const { return root / "dist" / "Kalvora.xpl"; }
    /// Its data folder, installed with it unless `shippedData`.
    fs::path DataFolder() const { return root / "dist" / "Kalvora"; }
    /// Where the host installs the data folder, and where the plug-in writes Kalvora.log.
    fs::path PluginFolder() const {
        return fs::path(options.sandboxDir) / "Resources" / "plugins" / "Kalvora";
    }
    fs::path PrefsPath() const {
        return fs::path(options.sandboxDir) / "Output" / "preferences" / "Halvern.Kalvora.prf";
    }

    /// Writes the preferences file the plug-in reads at start (PreferencesText() for a whole one).
    void WritePreferences(const std::string& text) const {
        fs::create_directories(PrefsPath().parent_path());
        WriteFile(PrefsPath(), text);
    }
    /// Puts an empty truck model named name + ".obj" into the data folder.
    void AddTruck(const std::string& name) const { WriteFile(DataFolder() / (name + ".obj"), kEmptyObj8); }

    /// Starts the host with `options` unless one runs, adds the in-process plug-ins `before`, loads
    /// Kalvora.xpl, calls Loaded() and runs `framesAfterLoad` frames; fails the test when it does not load.
    void Load(std::vector<simhost::InProcessPlugin> before = {}) {
        if (!host) host = std::make_unique<simhost::Host>(options);
        for (simhost::InProcessPlugin& p : before)
            ASSERT_GE(host->addPlugin(std::move(p)), 0);
        std::string error;
        kalvora = host->loadPlugin(PluginFile().string(),
                                   shippedData ? KALVORA_SOURCE_DIR "/assets/Kalvora" : "", layout, &error);
        ASSERT_GE(kalvora, 0) << error;
        Loaded();
        host->runFrames(framesAfterLoad);
    }
    /// What a fixture adds once Kalvora is loaded (another plug-in on the other side of its messages).
    virtual void Loaded() {}

    /// Disable, Stop and unload, as X-Plane does when it quits. The installed file goes too, so that the
    /// next Load installs and starts it afresh under its own name.
    void Unload() {
        host->unloadPlugin(kalvora);
        fs::remove(PluginFolder().parent_path() / "Kalvora.xpl");
    }

    // ---- what a user does ----

    /// Picks an item of the Kalvora menu by its path below it ("Push straight back", "Trucks/KLVtowbarless").
    bool Pick(const std::string& item) { return host->pickMenu(std::string(kMenu) + "/" + item); }
    /// Picks a manoeuvre, lets the truck come and hook up, releases the brake when the crew asks, and runs
    /// until the aircraft moves.
    void StartPush(const std::string& item) {
        MarkPosition();
        ASSERT_TRUE(Pick(item));
        ASSERT_TRUE(host->runUntil([&] { return Said("confirm brake") > 0; }, 60))
            << "the crew never asked for the brake";
        ReleaseBrake();
        ASSERT_TRUE(host->runUntil([&] { return Moved() > 0.5; }, 30)) << "the aircraft was never pushed";
    }
    void ReleaseBrake() { host->set(kParkBrake, 0); }

    /// Remembers where the aircraft stands now.
    void MarkPosition() {
        startX = host->getf(kLocalX);
        startZ = host->getf(kLocalZ);
    }
    /// Metres the aircraft has moved since MarkPosition().
    double Moved() const { return std::hypot(host->getf(kLocalX) - startX, host->getf(kLocalZ) - startZ); }

    // ---- what a user sees ----

    /// How many crew messages spoken so far contained needle.
    int Said(const std::string& needle) const {
        int n = 0;
        for (const std::string& s : host->transcriptTexts("speech"))
            n += s.find(needle) != std::string::npos;
        return n;
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
    /// How many of the plug-in's registrations ("key sniffer", "hot key ...") start with prefix.
    int Registered(const std::string& prefix) const {
        int n = 0;
        for (const std::string& line : host->registrations(kalvora))
            n += line.rfind(prefix, 0) == 0;
        return n;
    }
    /// The object instances showing a model file named `file` ("KLVdefault.obj", "GPU.obj").
    std::vector<simhost::InstanceInfo> Instances(const std::string& file) const {
        std::vector<simhost::InstanceInfo> found;
        for (const simhost::InstanceInfo& i : host->instances())
            if (fs::path(i.objectPath).filename() == file) found.push_back(i);
        return found;
    }

    const TempFolder root;
    simhost::HostOptions
        options; ///< the host Load() starts: X-Plane 12.1, an A320 at a heading of 40 degrees
    /// true: load with the repository's data folder (tug and GPU models, pictures) instead of DataFolder()
    bool shippedData = false;
    /// How Load() installs the plug-in in Resources/plugins (Fat: Kalvora/lin_x64/Kalvora.xpl)
    simhost::PluginLayout layout = simhost::PluginLayout::Flat;
    /// Frames Load() runs once the plug-in is in (its flight loops begin after a second: only what it
    /// schedules for the next frame runs in them)
    int framesAfterLoad = 2;
    std::unique_ptr<simhost::Host> host;
    int kalvora = -1;              ///< the plug-in's ID once loaded
    double startX = 0, startZ = 0; ///< where MarkPosition() saw the aircraft, metres
};

} // namespace kalvora_test
