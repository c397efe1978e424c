// Preferences: defaults, loading with the file's parse rules, storing in the
// file's layout, and a full round trip through the properties file.
#include <gtest/gtest.h>

#include "core/Preferences.h"
#include "utils/HV_Properties.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

class Preferences : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/kalvora-prefs-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir = pattern;
        path = dir + "/Halvern.Kalvora.prf";
        SetDefaultPref();
        std::strcpy(PrefLastTruck, "KLVdefault");
    }
    void TearDown() override {
        std::remove(path.c_str());
        rmdir(dir.c_str());
    }

    void WriteFile(const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
    std::string ReadFile() {
        std::ifstream in(path, std::ios::binary);
        std::stringstream all;
        all << in.rdbuf();
        return all.str();
    }
    /// Loads the preferences from a container holding only the given key.
    void LoadOne(const std::string& key, const std::string& value) {
        HV_Properties prefs(nullptr, nullptr);
        prefs[key] = value;
        LoadPreferences(prefs);
    }

    std::string dir, path;
};

TEST_F(Preferences, DefaultsAreTheDocumentedOnes) {
    std::memset(PrefLastTruck, 0, sizeof PrefLastTruck);
    PrefAllowEngnON = true;
    PrefRefuelUnitisKg = false;
    SetDefaultPref();
    EXPECT_TRUE(PrefSwitchView);
    EXPECT_TRUE(PrefAuralCrewMessage);
    EXPECT_TRUE(PrefWrittenCrewMessage);
    EXPECT_TRUE(PrefDrawTruck);
    EXPECT_TRUE(PrefFrontWheel);
    EXPECT_EQ(PrefTruckViewKey, 123);
    EXPECT_TRUE(PrefHandleGPU);
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 10.0f);
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.1);
    EXPECT_FALSE(PrefAllowEngnON);
    EXPECT_TRUE(PrefRefuelUnitisKg);
    EXPECT_STREQ(PrefLastTruck, "") << "the truck name is not a default";
}

TEST_F(Preferences, RoundTripThroughTheFile) {
    PrefSwitchView = false;
    PrefAuralCrewMessage = true;
    PrefWrittenCrewMessage = false;
    PrefDrawTruck = true;
    PrefFrontWheel = false;
    PrefHandleGPU = false;
    PrefAllowEngnON = true;
    PrefTruckSpeed = 25.0f;
    PrefTruckViewKey = 65;
    std::strcpy(PrefLastTruck, "Tug_Big");
    {
        HV_Properties prefs(path.c_str(), nullptr);
        prefs["VERSION"] = "1.1.0"; // an older release's file
        StorePreferences(prefs);
        prefs.save(nullptr);
    }
    EXPECT_EQ(ReadFile(), "ALLOW_ENGN_ON=1\n"
                          "AURAL_CREW_MESSAGE=1\n"
                          "DRAW_TRUCK=1\n"
                          "FRONT_WHEEL=0\n"
                          "HANDLE_GPU=0\n"
                          "SWITCH_VIEW=0\n"
                          "TRUCK_SPEED=25.000000\n"
                          "Truck=Tug_Big\n"
                          "TruckView_KEY=65\n"
                          "TruckView_KF=8\n"
                          "VERSION=1.2.2b3\n"
                          "WRITTEN_CREW_MESSAGE=0\n");

    SetDefaultPref();
    std::strcpy(PrefLastTruck, "other");
    HV_Properties reloaded(path.c_str(), nullptr);
    LoadPreferences(reloaded);
    EXPECT_FALSE(PrefSwitchView);
    EXPECT_TRUE(PrefAuralCrewMessage);
    EXPECT_FALSE(PrefWrittenCrewMessage);
    EXPECT_TRUE(PrefDrawTruck);
    EXPECT_FALSE(PrefFrontWheel);
    EXPECT_FALSE(PrefHandleGPU);
    EXPECT_TRUE(PrefAllowEngnON);
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 25.0f);
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.25);
    EXPECT_EQ(PrefTruckViewKey, 65);
    EXPECT_STREQ(PrefLastTruck, "Tug_Big");
}

TEST_F(Preferences, AbsentKeysKeepSpeedTruckAndKeyButReadBooleansAsOff) {
    WriteFile("SWITCH_VIEW=1\nTruckView_KEY=70\n");
    HV_Properties prefs(path.c_str(), nullptr);
    LoadPreferences(prefs);
    EXPECT_TRUE(PrefSwitchView);
    EXPECT_FALSE(PrefDrawTruck);
    EXPECT_FALSE(PrefFrontWheel);
    EXPECT_FALSE(PrefHandleGPU);
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 10.0f);
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.1);
    EXPECT_STREQ(PrefLastTruck, "KLVdefault");
    EXPECT_EQ(PrefTruckViewKey, 123) << "a missing TruckView_KF reads as 0 and forces F12";
    // Loading inserts every key it looked for, so the next store writes a complete file.
    EXPECT_EQ(prefs.entries.size(), 11u);
    StorePreferences(prefs);
    prefs.save(nullptr);
    std::string text = ReadFile();
    EXPECT_NE(text.find("TRUCK_SPEED=10.000000\n"), std::string::npos);
    EXPECT_NE(text.find("TruckView_KEY=123\n"), std::string::npos);
    EXPECT_NE(text.find("VERSION=1.2.2b3\n"), std::string::npos);
}

TEST_F(Preferences, BooleanKeysAreOnOnlyForTheNumberOne) {
    const struct {
        const char* value;
        bool on;
    } cases[] = {{"1", true},           {" 1", true},
                 {"1abc", true},        {"+1", true},
                 {"0", false},          {"2", false},
                 {"-1", false},         {"", false},
                 {"yes", false},        {"true", false},
                 {"01", true},          {" ", false},
                 {"4294967297", false}, {"99999999999999999999999", false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string("value '") + c.value + "'");
        PrefDrawTruck = !c.on;
        LoadOne("DRAW_TRUCK", c.value);
        EXPECT_EQ(PrefDrawTruck, c.on);
    }
}

TEST_F(Preferences, TruckSpeedSetsTheStepOrKeepsThePreviousValue) {
    LoadOne("TRUCK_SPEED", "25");
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 25.0f);
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.25);
    LoadOne("TRUCK_SPEED", " 12.5xyz");
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 12.5f);
    for (const char* bad : {"", "abc", "  ", "-", "."}) {
        SCOPED_TRACE(bad);
        LoadOne("TRUCK_SPEED", bad);
        EXPECT_FLOAT_EQ(PrefTruckSpeed, 12.5f);
        EXPECT_DOUBLE_EQ(PrefStepValue, 0.125);
    }
    LoadOne("TRUCK_SPEED", "-3"); // no range check
    EXPECT_FLOAT_EQ(PrefTruckSpeed, -3.0f);
    LoadOne("TRUCK_SPEED", "1e60"); // beyond float: infinite, and stored back as such
    EXPECT_TRUE(std::isinf(PrefTruckSpeed));
    HV_Properties prefs(nullptr, nullptr);
    StorePreferences(prefs);
    EXPECT_EQ(prefs["TRUCK_SPEED"], "inf");
}

TEST_F(Preferences, TheHotKeyIsF12UnlessTheKeyFlagsAreNonZero) {
    const struct {
        const char* key;
        const char* flags;
        int expected;
    } cases[] = {{"65", "8", 65},
                 {"65", "0", 123},
                 {"65", "", 123},
                 {"65", "x", 123},
                 {"abc", "8", 123},
                 {"-5", "8", -5},
                 {"99999999999", "8", 2147483647},
                 {"65", "99999999999", 65}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.key) + " / " + c.flags);
        PrefTruckViewKey = 123;
        HV_Properties prefs(nullptr, nullptr);
        prefs["TruckView_KEY"] = c.key;
        prefs["TruckView_KF"] = c.flags;
        LoadPreferences(prefs);
        EXPECT_EQ(PrefTruckViewKey, c.expected);
    }
}

TEST_F(Preferences, TruckNameIsTheFirstWordCutTo99Characters) {
    LoadOne("Truck", "  Pushback_Tug extra words");
    EXPECT_STREQ(PrefLastTruck, "Pushback_Tug");
    LoadOne("Truck", "");
    EXPECT_STREQ(PrefLastTruck, "Pushback_Tug") << "nothing to read keeps the name";
    LoadOne("Truck", " \t ");
    EXPECT_STREQ(PrefLastTruck, "Pushback_Tug");
    const std::string longName(500, 'T');
    LoadOne("Truck", longName);
    EXPECT_EQ(std::strlen(PrefLastTruck), 99u);
    EXPECT_EQ(std::string(PrefLastTruck), longName.substr(0, 99));
    HV_Properties prefs(nullptr, nullptr);
    StorePreferences(prefs);
    EXPECT_EQ(prefs["Truck"], longName.substr(0, 99));
}

TEST_F(Preferences, FileExistenceIsReadability) {
    EXPECT_FALSE(PrefFileExist(path.c_str()));
    EXPECT_FALSE(PrefFileExist(nullptr));
    WriteFile("");
    EXPECT_TRUE(PrefFileExist(path.c_str()));
    EXPECT_FALSE(PrefFileExist((dir + "/missing/Halvern.Kalvora.prf").c_str()));
}

} // namespace
