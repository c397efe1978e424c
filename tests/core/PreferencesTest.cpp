// Preferences: defaults, loading with the file's parse rules, storing in the
// file's layout, and a full round trip through the properties file.
#include <gtest/gtest.h>

#include "core/Preferences.h"
#include "support/TempFolder.h"
#include "utils/HV_Properties.h"

#include <cmath>
#include <cstring>
#include <sstream>
#include <string>

namespace {

class Preferences : public ::testing::Test {
protected:
    void SetUp() override {
        SetDefaultPref();
        std::strcpy(PrefLastTruck, "KLVdefault");
    }

    /// Loads the preferences from a container holding only the given key.
    void LoadOne(const std::string& key, const std::string& value) {
        HV_Properties prefs(nullptr, nullptr);
        prefs[key] = value;
        LoadPreferences(prefs);
    }

    kalvora_test::TempFolder dir{"kalvora-prefs"};
    const std::string path = dir.file("Halvern.Kalvora.prf");
};

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
    const std::string stored = kalvora_test::ReadFile(path);
    EXPECT_EQ(stored, "ALLOW_ENGN_ON=1\n"
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
}

TEST_F(Preferences, AbsentKeysTakeTheirDefaultsAndTheNextStoreWritesThemBack) {
    dir.write("Halvern.Kalvora.prf", "SWITCH_VIEW=0\nTruckView_KEY=70\nTruckView_KF=8\n");
    PrefTruckSpeed = 0.0f; // what a value kept from before the file was read would be at start
    PrefDrawTruck = false;
    HV_Properties prefs(path.c_str(), nullptr);
    std::ostringstream log;
    LoadPreferences(prefs, &log);
    EXPECT_FALSE(PrefSwitchView);
    EXPECT_TRUE(PrefDrawTruck);
    EXPECT_FALSE(PrefAllowEngnON);
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 10.0f);
    EXPECT_STREQ(PrefLastTruck, "KLVdefault") << "no name read: the one chosen before stays";
    EXPECT_NE(log.str().find("[WRNG] Preferences: TRUCK_SPEED= is missing, 10.000000 used instead\n"),
              std::string::npos)
        << log.str();
    // Loading inserts every key it looked for, so the next store writes a complete file (the file as
    // stored: the round trip above and the garbled preferences of the start/stop test).
    EXPECT_EQ(prefs.entries.size(), 11u);
}

TEST_F(Preferences, ValuesThatCannotBeReadOrMakeNoSenseTakeTheDefaultAndAreLoggedByKey) {
    // Numbers read as "%d" and "%f" do: leading blanks and a sign, trailing text ignored.
    const struct {
        const char* key;
        const char* value;
        float speed;    // PrefTruckSpeed after loading
        int viewKey;    // PrefTruckViewKey (TruckView_KF is 8)
        bool drawTruck; // a boolean key: a number is on exactly when 1; no number: the default, on
        bool logged;
    } cases[] = {
        {"TRUCK_SPEED", "25", 25.0f, 123, true, false},
        {"TRUCK_SPEED", "fast", 10.0f, 123, true, true},
        {"TRUCK_SPEED", "0", 10.0f, 123, true, true},
        {"TRUCK_SPEED", "nan", 10.0f, 123, true, true},
        {"TRUCK_SPEED", "0.2", 1.0f, 123, true, true},
        {"TRUCK_SPEED", "500", 50.0f, 123, true, true},
        {"TruckView_KEY", "65", 10.0f, 65, true, false},
        {"TruckView_KEY", "F5", 10.0f, 123, true, true},
        {"TruckView_KEY", "99999999999", 10.0f, 123, true, true},
        {"TruckView_KEY", "189", 10.0f, 189, true, false},
        {"TruckView_KEY", "190", 10.0f, 123, true, true},
        {"DRAW_TRUCK", "1abc", 10.0f, 123, true, false},
        {"DRAW_TRUCK", "0", 10.0f, 123, false, false},
        {"DRAW_TRUCK", "2", 10.0f, 123, false, false},
        {"DRAW_TRUCK", "4294967297", 10.0f, 123, false, false},
        {"DRAW_TRUCK", "yes", 10.0f, 123, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.key) + "=" + c.value);
        HV_Properties prefs(nullptr, nullptr);
        prefs["TRUCK_SPEED"] = "10";
        prefs["TruckView_KEY"] = "123";
        prefs["TruckView_KF"] = "8";
        prefs["DRAW_TRUCK"] = "1";
        prefs[c.key] = c.value;
        PrefTruckSpeed = 0.0f;
        PrefTruckViewKey = 0;
        std::ostringstream log;
        LoadPreferences(prefs, &log);
        EXPECT_FLOAT_EQ(PrefTruckSpeed, c.speed);
        EXPECT_DOUBLE_EQ(PrefStepValue, c.speed / 100.0);
        EXPECT_EQ(PrefTruckViewKey, c.viewKey);
        EXPECT_EQ(PrefDrawTruck, c.drawTruck);
        const std::string named = "[WRNG] Preferences: " + std::string(c.key) + "=" + c.value + " ";
        EXPECT_EQ(log.str().find(named) != std::string::npos, c.logged) << log.str();
    }
}

TEST_F(Preferences, TruckNameIsTheFirstWordCutTo99Characters) {
    LoadOne("Truck", "  Pushback_Tug extra words");
    EXPECT_STREQ(PrefLastTruck, "Pushback_Tug");
    LoadOne("Truck", " \t ");
    EXPECT_STREQ(PrefLastTruck, "Pushback_Tug");
    const std::string longName(500, 'T');
    LoadOne("Truck", longName);
    EXPECT_EQ(std::string(PrefLastTruck), longName.substr(0, 99));
}

} // namespace
