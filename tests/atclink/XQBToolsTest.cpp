// XQBTools against a stand-in XSquawkBox: an in-process plug-in that publishes
// the xsquawkbox/... datarefs the link writes, and records every write and
// every message it receives.
#include "atclink/XQBTools.h"

#include "XPLMDataAccess.h"
#include "XPLMDefs.h"

#include <simhost/Simhost.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

/// Bytes each byte dataref of the stand-in holds.
constexpr int kBlockBytes = 256;

/// The stand-in XSquawkBox. Names drop their "xsquawkbox/" prefix. With another
/// signature it plays an unrelated plug-in that happens to publish the same names.
class FakeXSquawkBox {
public:
    struct Ref {
        FakeXSquawkBox* owner = nullptr;
        std::string name;
        bool isBytes = false;
        int value = 0;
        std::string text{};       // byte datarefs: the last write up to its first zero
        int lastWriteLength = -1; // byte datarefs: -1 = never written
    };

    explicit FakeXSquawkBox(simhost::Host& host, const char* signature = kXQBSignature) {
        for (const char* name :
             {"login/status", "mic/open", "fp/flight_type", "fp/speed", "fp/departure_time",
              "fp/departure_time_actual", "fp/enroute_hrs", "fp/enroute_mins", "fp/fuel_hrs", "fp/fuel_mins"})
            refs[name] = Ref{this, name};
        for (const char* name : {"login/server", "fp/departure_airport", "fp/arrival_airport",
                                 "fp/alternate_airport", "fp/cruise_altitude", "fp/route"})
            refs[name] = Ref{this, name, true};

        simhost::InProcessPlugin plugin;
        plugin.name = "XSquawkBox";
        plugin.signature = signature;
        plugin.start = [this] {
            for (auto& [name, ref] : refs) {
                const std::string full = "xsquawkbox/" + name;
                if (ref.isBytes)
                    XPLMRegisterDataAccessor(full.c_str(), xplmType_Data, 1, nullptr, nullptr, nullptr,
                                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                             nullptr, WriteBytes, &ref, &ref);
                else
                    XPLMRegisterDataAccessor(full.c_str(), xplmType_Int, 1, ReadInt, WriteInt, nullptr,
                                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                             nullptr, nullptr, &ref, &ref);
            }
            return 1;
        };
        plugin.receive = [this](int from, int message, void*) {
            if (from == XPLM_PLUGIN_XPLANE) return;
            messages.push_back(message);
            senders.insert(from);
            journal.push_back("message " + std::to_string(message));
        };
        id = host.addPlugin(std::move(plugin));
    }

    /// Every dataref's value (byte datarefs: their text), by name.
    std::map<std::string, std::string> values() const {
        std::map<std::string, std::string> out;
        for (const auto& [name, ref] : refs)
            out[name] = ref.isBytes ? ref.text : std::to_string(ref.value);
        return out;
    }

    std::map<std::string, Ref> refs; // set a value directly as XSquawkBox itself would
    std::vector<int> messages;
    std::set<int> senders;
    std::vector<std::string> journal; // names written and messages received ("message <n>"), in order
    int id = -1;

private:
    static int ReadInt(void* refcon) { return static_cast<Ref*>(refcon)->value; }
    static void WriteInt(void* refcon, int value) {
        auto* ref = static_cast<Ref*>(refcon);
        ref->value = value;
        ref->owner->journal.push_back(ref->name);
    }
    static void WriteBytes(void* refcon, void* in, int offset, int length) {
        auto* ref = static_cast<Ref*>(refcon);
        ref->owner->journal.push_back(ref->name);
        ref->lastWriteLength = length;
        if (in == nullptr || offset != 0 || length <= 0) return;
        // A write replaces the whole field, as XSquawkBox's string fields do.
        const char* chars = static_cast<const char*>(in);
        ref->text.assign(chars, strnlen(chars, static_cast<std::size_t>(std::min(length, kBlockBytes))));
    }
};

constexpr const char* kStatus = "login/status";
constexpr const char* kMic = "mic/open";
constexpr int kConnected = 2; // login status
constexpr int kOffline = 0;

/// A host with Kalvora as an in-process plug-in making the calls.
class XQBToolsTest : public ::testing::Test {
protected:
    void makeKalvoraTheCaller() {
        simhost::InProcessPlugin kalvora;
        kalvora.name = "Kalvora";
        kalvora.signature = "halvern.kalvora";
        kalvoraID = host.addPlugin(std::move(kalvora));
        ASSERT_GE(kalvoraID, 0);
        host.setDirectCaller(kalvoraID);
    }

    /// Adds the stand-in XSquawkBox with a login status, then Kalvora as the caller.
    FakeXSquawkBox& startXSquawkBox(int loginStatus) {
        mXSquawkBox = std::make_unique<FakeXSquawkBox>(host);
        mXSquawkBox->refs[kStatus].value = loginStatus;
        makeKalvoraTheCaller();
        return *mXSquawkBox;
    }

    /// An IFR plan from Zurich to Heathrow, set on tools.
    static void setPlan(XQBTools& tools) {
        tools.SetFlightType("IFR");
        tools.SetAPTDeparture("LSZH");
        tools.SetAPTArrival("EGLL");
        tools.SetAPTAlternat("EGKK");
        tools.SetTrueAirSpeed(450);
        tools.SetCruiseAltitude(37000);
        tools.SetHourDeparture("09:15");
        tools.SetHourFlight("01:40");
        tools.SetFlightPlan("GERSA UN850 RESIA");
    }

    simhost::Host host;
    std::unique_ptr<FakeXSquawkBox> mXSquawkBox; // destroyed before the host
    int kalvoraID = -1;
};

TEST_F(XQBToolsTest, AbsentXSquawkBoxAnswersFalseAndIsNeverWrittenToOrMessaged) {
    // Another plug-in publishes the same names, connected and with an open mic:
    // only the signature decides whether XSquawkBox is here.
    FakeXSquawkBox impostor(host, "someone.else.atc");
    impostor.refs[kStatus].value = kConnected;
    impostor.refs[kMic].value = 1;
    makeKalvoraTheCaller();

    XQBTools tools;
    setPlan(tools);
    EXPECT_FALSE(tools.XQBIsHere());
    EXPECT_EQ(tools.PluginID(), XPLM_NO_PLUGIN_ID);
    EXPECT_FALSE(tools.XQBIsConnected());
    EXPECT_FALSE(tools.XQBIsMicroOpen());
    EXPECT_FALSE(tools.XQBIsATCReception());
    EXPECT_EQ(tools.XQBSendFlightPlan(), kXQBAbsent);
    tools.XQBConnect(true);
    tools.XQBConnect(false);
    EXPECT_EQ(UT_XQBTools(), 0);

    EXPECT_TRUE(impostor.journal.empty()) << "a message to no plug-in must not become a broadcast";
}

TEST_F(XQBToolsTest, QueriesConnectionAndServerAddress) {
    FakeXSquawkBox& xsb = startXSquawkBox(kOffline);
    XQBTools tools;
    ASSERT_TRUE(tools.XQBIsHere());
    EXPECT_EQ(tools.PluginID(), xsb.id);

    xsb.refs[kStatus].value = 1; // connecting
    EXPECT_FALSE(tools.XQBIsConnected());
    xsb.refs[kMic].value = 1;
    EXPECT_TRUE(tools.XQBIsMicroOpen());

    setPlan(tools); // not connected: nothing is filed
    EXPECT_EQ(tools.XQBSendFlightPlan(), kXQBNotConnected);
    EXPECT_TRUE(xsb.journal.empty());

    tools.XQBConnect(false);
    EXPECT_EQ(xsb.messages, (std::vector<int>{kXQBMsgDisconnect}));
    EXPECT_EQ(xsb.senders, std::set<int>{kalvoraID});
    tools.SetXQBServerIP("192.0.2.17");
    EXPECT_EQ(xsb.refs["login/server"].text, "192.0.2.17");
    EXPECT_EQ(xsb.refs["login/server"].lastWriteLength, 11); // with its terminating zero
}

TEST_F(XQBToolsTest, ConnectedSendingFilesEveryFieldThenAsksToFile) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    setPlan(tools);
    ASSERT_EQ(tools.XQBSendFlightPlan(), kXQBSent);

    const std::map<std::string, std::string> filed = {{"login/status", "2"},
                                                      {"mic/open", "0"},
                                                      {"login/server", ""},
                                                      {"fp/flight_type", std::to_string('I')},
                                                      {"fp/speed", "450"},
                                                      {"fp/departure_airport", "LSZH"},
                                                      {"fp/arrival_airport", "EGLL"},
                                                      {"fp/alternate_airport", "EGKK"},
                                                      {"fp/departure_time", "915"},
                                                      {"fp/departure_time_actual", "915"},
                                                      {"fp/cruise_altitude", "FL370"},
                                                      {"fp/enroute_hrs", "1"},
                                                      {"fp/enroute_mins", "40"},
                                                      {"fp/fuel_hrs", "2"}, // one hour of reserve fuel
                                                      {"fp/fuel_mins", "40"},
                                                      {"fp/route", "GERSA UN850 RESIA"}};
    EXPECT_EQ(xsb.values(), filed);
    EXPECT_EQ(xsb.refs["fp/departure_airport"].lastWriteLength, 6) << "a code goes with its terminating zero";
    // Every field is written once before the message that files the plan.
    ASSERT_EQ(xsb.journal.size(), 14u);
    EXPECT_EQ(xsb.journal[13], "message " + std::to_string(kXQBMsgSendFlightPlan));
}
TEST_F(XQBToolsTest, FlightTypesBecomeLettersAndUnknownTypesChangeNothing) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    const std::pair<const char*, int> sends[] = {{"", 'V'},     {"IFR", 'I'}, {"ifr", 'I'}, {nullptr, 'I'},
                                                 {"SVFR", 'S'}, {"VFR", 'V'}}; // "": VFR by default
    for (const auto& send : sends) {
        if (send.first && *send.first) tools.SetFlightType(send.first);
        if (!send.first) tools.SetFlightType(nullptr);
        tools.XQBSendFlightPlan();
        EXPECT_EQ(xsb.refs["fp/flight_type"].value, send.second) << (send.first ? send.first : "null");
    }
}

TEST_F(XQBToolsTest, HighAltitudeBecomesAFlightLevelThatASecondSendDividesNoMoreAndLongValuesAreCut) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    tools.SetCruiseAltitude(45000);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].text, "FL450");
    EXPECT_EQ(tools.CruiseAltitude(), 450u);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].text, "450");

    // Only 6 bytes go: a long flight level is cut.
    tools.SetCruiseAltitude(4000000000u);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].text, "FL4000") << "FL40000000 cut to 6 bytes";
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].lastWriteLength, 6);

    // Neighbours first, so that an overrun of the next setters would show in them.
    tools.SetAPTArrival("AARR");
    tools.SetAPTAlternat("AALT");
    tools.SetTrueAirSpeed(180);
    tools.SetHourFlight("04:05");
    tools.SetAPTDeparture("ABCDEFGHIJKLMNOP");
    tools.SetHourDeparture("12345678901234567890");
    ASSERT_EQ(tools.XQBSendFlightPlan(), kXQBSent);
    EXPECT_EQ(xsb.refs["fp/departure_airport"].text, "ABCD");
    EXPECT_EQ(xsb.refs["fp/arrival_airport"].text, "AARR");
    EXPECT_EQ(xsb.refs["fp/speed"].value, 180);
    EXPECT_EQ(xsb.refs["fp/departure_time"].value, 12 * 100 + 45) << "\"12345\" cut to \"12\" and \"45\"";
    EXPECT_EQ(xsb.refs["fp/enroute_mins"].value, 5);
    EXPECT_NE(host.logText().find("longer than 4 characters"), std::string::npos);

    // The route is an owned copy, and no route means no write.
    char route[] = "DCT.ABC.DEF";
    tools.SetFlightPlan(route);
    std::strcpy(route, "XXXXXXXXXX");
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/route"].text, "DCT.ABC.DEF");

    tools.SetFlightPlan(nullptr);
    xsb.journal.clear();
    tools.XQBSendFlightPlan();
    EXPECT_EQ(std::count(xsb.journal.begin(), xsb.journal.end(), "fp/route"), 0) << "no route, no write";
}

} // namespace
