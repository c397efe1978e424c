// The built Kalvora.xpl, copied into a folder of its own per test beside an
// empty data folder (root/dist/Kalvora.xpl and root/dist/Kalvora/), and an
// X-Plane folder for simhost (root/xplane). Everything goes at the end of the
// test. What the fixtures built on it share: the preferences file, and what
// the crew said.
#pragma once

#include "simhost/Simhost.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <unistd.h>

namespace kalvora_test {

namespace fs = std::filesystem;

class InstalledPluginTest : public ::testing::Test {
protected:
    /// `folderPrefix` starts the name of the test's temporary folder ("kalvora-gpu").
    explicit InstalledPluginTest(std::string folderPrefix) : prefix_(std::move(folderPrefix)) {}

    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        root = fs::temp_directory_path() / (prefix_ + "-" + info->test_suite_name() + "-" + info->name() +
                                            "-" + std::to_string(::getpid()));
        fs::remove_all(root);
        fs::create_directories(root / "dist" / "Kalvora" / "GroundServices");
        fs::copy_file(KALVORA_BINARY_DIR "/plugin/Kalvora.xpl", PluginFile());
        options.sandboxDir = (root / "xplane").string();
        options.startHeadingDeg = 40;
        fs::create_directories(options.sandboxDir);
    }

    void TearDown() override {
        host.reset();
        fs::remove_all(root);
    }

    /// The plug-in file to load.
    fs::path PluginFile() const { return root / "dist" / "Kalvora.xpl"; }
    /// Its data folder (installed beside it when it is loaded without another one).
    fs::path DataFolder() const { return root / "dist" / "Kalvora"; }

    fs::path PrefsPath() const {
        return fs::path(options.sandboxDir) / "Output" / "preferences" / "Halvern.Kalvora.prf";
    }
    /// Writes the preferences file the plug-in reads at start.
    void WritePreferencesText(const std::string& text) const {
        fs::create_directories(PrefsPath().parent_path());
        std::ofstream(PrefsPath()) << text;
    }

    /// How many crew messages spoken so far contained needle.
    int SpokenCount(const std::string& needle) const {
        int n = 0;
        for (const std::string& s : host->transcriptTexts("speech"))
            n += s.find(needle) != std::string::npos;
        return n;
    }

    fs::path root;
    simhost::HostOptions options;
    std::unique_ptr<simhost::Host> host;

private:
    std::string prefix_;
};

} // namespace kalvora_test
