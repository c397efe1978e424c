// The services a headless host answers from state of its own: weather, folder
// listings and data files.
#include "SimhostFixture.h"

#include "XPLMUtilities.h"
#include "XPLMWeather.h"

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

using Services = SimhostTest;

namespace {
constexpr double kLat = 47.4647, kLon = 8.5492; // the apron, next to simhost's airport
}

TEST_F(Services, WeatherComesFromTheHostStateOrTheNearestPluginReport) {
    simhost::Weather w;
    w.temperatureC = 20;
    w.qnhPa = 99000;
    w.windDirDeg = 270;
    w.windSpeedMps = 5;
    host->setWeather(w);
    XPLMWeatherInfo_t info{};
    info.structSize = sizeof info;
    EXPECT_EQ(XPLMGetWeatherAtLocation(kLat, kLon, 1432, &info), 1);  // the airport's report is near
    EXPECT_NEAR(info.temperature_alt, 20 - 6.5, 0.01);                // 1000 m above the apron
    EXPECT_EQ(XPLMGetWeatherAtLocation(kLat + 5, kLon, 0, &info), 0); // far from any airport: still filled

    // A plug-in's report wins within its radius; a full update drops its earlier ones.
    XPLMWeatherInfo_t mine = info;
    mine.temperature_alt = -3;
    mine.radius_nm = 10;
    XPLMSetWeatherAtLocation(kLat + 1, kLon, 0, &mine);
    XPLMGetWeatherAtLocation(kLat + 1.05, kLon, 0, &info); // 3 nm away
    EXPECT_NEAR(info.temperature_alt, -3, 0.01);
    XPLMFixedString150_t metar{};
    XPLMGetMETARForAirport("XSIM", &metar);
    EXPECT_STREQ(metar.buffer, "XSIM 011200Z 27010KT 9999 SKC 20/05 Q0990");
    XPLMSetWeatherAtAirport("XSIM", &mine);
    XPLMGetMETARForAirport("XSIM", &metar);
    EXPECT_NE(std::string(metar.buffer).find(" M03/"), std::string::npos) << metar.buffer;
    XPLMBeginWeatherUpdate();
    XPLMEndWeatherUpdate(0, 1); // drops the reports at kLat + 1 and at the airport
    XPLMGetWeatherAtLocation(kLat + 1, kLon, 0, &info);
    EXPECT_NEAR(info.temperature_alt, 20, 0.01);
    XPLMGetMETARForAirport("ZZZZ", &metar);
    EXPECT_STREQ(metar.buffer, "");
}

TEST_F(Services, DirectoryContentsFillTheBufferAndIndexAsFarAsTheyFit) {
    const std::string dir = host->sandbox() + "listing";
    fs::create_directories(dir + "/sub");
    for (const char* f : {"b.txt", "a.txt", "c.txt"})
        std::ofstream(dir + "/" + f) << "x";
    char names[64];
    char* index[8];
    int total = 0, returned = 0;
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 0, names, sizeof names, index, 8, &total, &returned), 1);
    EXPECT_EQ(total, 4);
    EXPECT_EQ(returned, 4);
    EXPECT_STREQ(index[0], "a.txt");
    EXPECT_STREQ(index[3], "sub");
    EXPECT_EQ(index[4], nullptr);

    // From the third on, into a buffer with room for one name.
    char small[8];
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 2, small, sizeof small, index, 8, &total, &returned), 0);
    EXPECT_EQ(returned, 1);
    EXPECT_STREQ(index[0], "c.txt");
    EXPECT_EQ(index[1], nullptr);
    EXPECT_EQ(XPLMGetDirectoryContents(dir.c_str(), 0, names, sizeof names, index, 2, &total, &returned), 0);
    EXPECT_EQ(returned, 1); // the index holds one name and the NULL after it
    EXPECT_EQ(XPLMGetDirectoryContents((dir + "/none").c_str(), 0, names, sizeof names, nullptr, 0, &total,
                                       &returned),
              0);
    EXPECT_EQ(total, 0);
}

TEST_F(Services, DataFilesAreSavedInsideTheXPlaneFolderAndLoadedWhenTheyExist) {
    EXPECT_EQ(XPLMSaveDataFile(xplm_DataFile_Situation, "Output/situations/apron.sit"), 1);
    EXPECT_TRUE(fs::is_regular_file(host->sandbox() + "Output/situations/apron.sit"));
    EXPECT_EQ(XPLMLoadDataFile(xplm_DataFile_Situation, "Output/situations/apron.sit"), 1);
    EXPECT_EQ(XPLMLoadDataFile(xplm_DataFile_Situation, "Output/situations/none.sit"), 0);
    EXPECT_EQ(XPLMLoadDataFile(xplm_DataFile_ReplayMovie, nullptr), 1); // clears the replay
    EXPECT_EQ(XPLMLoadDataFile(xplm_DataFile_Situation, nullptr), 0);
    EXPECT_EQ(XPLMSaveDataFile(xplm_DataFile_Situation, "../outside.sit"), 0);
    EXPECT_EQ(host->transcriptTexts("datafile"),
              (std::vector<std::string>{"save situation Output/situations/apron.sit",
                                        "load situation Output/situations/apron.sit",
                                        "load situation Output/situations/none.sit (no such file)",
                                        "replay cleared", "save situation ../outside.sit (failed)"}));
}
