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
        std::string text;         // byte datarefs: the last write up to its first zero
        int lastWriteLength = -1; // byte datarefs: -1 = never written
        int writes = 0;
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
                                             ReadBytes, WriteBytes, &ref, &ref);
                else
                    XPLMRegisterDataAccessor(full.c_str(), xplmType_Int, 1, ReadInt, WriteInt, nullptr,
                                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                             nullptr, nullptr, &ref, &ref);
            }
            return 1;
        };
        plugin.receive = [this](int from, int message, void* param) {
            if (from == XPLM_PLUGIN_XPLANE) return;
            messages.push_back(message);
            senders.insert(from);
            if (param != nullptr) ++messagesWithAParameter;
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
    int totalWrites() const {
        int total = 0;
        for (const auto& entry : refs)
            total += entry.second.writes;
        return total;
    }

    std::map<std::string, Ref> refs; // set a value directly as XSquawkBox itself would
    std::vector<int> messages;
    std::set<int> senders;
    int messagesWithAParameter = 0;
    std::vector<std::string> journal; // names written and messages received ("message <n>"), in order
    int id = -1;

private:
    static int ReadInt(void* refcon) { return static_cast<Ref*>(refcon)->value; }
    static void WriteInt(void* refcon, int value) {
        auto* ref = static_cast<Ref*>(refcon);
        ref->value = value;
        ++ref->writes;
        ref->owner->journal.push_back(ref->name);
    }
    static int ReadBytes(void* refcon, void* out, int offset, int max) {
        const std::string& text = static_cast<Ref*>(refcon)->text;
        if (out == nullptr) return kBlockBytes;
        if (offset != 0 || max <= 0) return 0;
        const int count = std::min(max, static_cast<int>(text.size()) + 1);
        std::memcpy(out, text.c_str(), static_cast<std::size_t>(count));
        return count;
    }
    static void WriteBytes(void* refcon, void* in, int offset, int length) {
        auto* ref = static_cast<Ref*>(refcon);
        ++ref->writes;
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

    EXPECT_EQ(impostor.totalWrites(), 0);
    EXPECT_TRUE(impostor.messages.empty()) << "a message to no plug-in must not become a broadcast";
    EXPECT_EQ(tools.CruiseAltitude(), 37000u) << "nothing was sent, so the altitude is untouched";
}

TEST_F(XQBToolsTest, QueriesConnectionAndServerAddress) {
    FakeXSquawkBox& xsb = startXSquawkBox(kOffline);
    XQBTools tools;
    ASSERT_TRUE(tools.XQBIsHere());
    EXPECT_EQ(tools.PluginID(), xsb.id);

    EXPECT_FALSE(tools.XQBIsConnected());
    xsb.refs[kStatus].value = 1; // connecting
    EXPECT_FALSE(tools.XQBIsConnected());
    xsb.refs[kStatus].value = kConnected;
    EXPECT_TRUE(tools.XQBIsConnected());

    EXPECT_FALSE(tools.XQBIsMicroOpen());
    xsb.refs[kMic].value = 1;
    EXPECT_TRUE(tools.XQBIsMicroOpen());
    EXPECT_TRUE(tools.XQBIsATCReception());
    xsb.refs[kMic].value = 0;
    EXPECT_FALSE(tools.XQBIsATCReception());

    xsb.refs[kStatus].value = kOffline; // not connected: nothing is filed
    setPlan(tools);
    EXPECT_EQ(tools.XQBSendFlightPlan(), kXQBNotConnected);
    EXPECT_EQ(xsb.totalWrites(), 0);
    EXPECT_TRUE(xsb.messages.empty());
    EXPECT_EQ(UT_XQBTools(), 0); // the self-check asks to connect instead
    EXPECT_EQ(xsb.totalWrites(), 0);

    tools.XQBConnect(true);
    tools.XQBConnect(false);
    EXPECT_EQ(xsb.messages, (std::vector<int>{kXQBMsgConnect, kXQBMsgConnect, kXQBMsgDisconnect}));
    EXPECT_EQ(xsb.senders, std::set<int>{kalvoraID});
    EXPECT_EQ(xsb.messagesWithAParameter, 0);
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
    // Codes and the flight level go with their terminating zero.
    for (const char* field :
         {"fp/departure_airport", "fp/arrival_airport", "fp/alternate_airport", "fp/cruise_altitude"})
        EXPECT_EQ(xsb.refs[field].lastWriteLength, 6) << field;
    EXPECT_EQ(xsb.refs["fp/route"].lastWriteLength, 18);
    // Every field is written once, in its order, before the message that files the plan.
    ASSERT_EQ(xsb.journal.size(), 14u);
    EXPECT_EQ(xsb.journal[0], "fp/flight_type");
    EXPECT_EQ(xsb.journal[7], "fp/cruise_altitude");
    EXPECT_EQ(xsb.journal[12], "fp/route");
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

TEST_F(XQBToolsTest, DefaultAndSamplePlans) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    ASSERT_EQ(tools.XQBSendFlightPlan(), kXQBSent);
    std::map<std::string, std::string> filed = {
        {"login/status", "2"},       {"mic/open", "0"},
        {"login/server", ""},        {"fp/flight_type", std::to_string('V')},
        {"fp/speed", "0"},           {"fp/departure_airport", ""},
        {"fp/arrival_airport", ""},  {"fp/alternate_airport", ""},
        {"fp/departure_time", "0"},  {"fp/departure_time_actual", "0"},
        {"fp/cruise_altitude", "0"}, {"fp/enroute_hrs", "0"},
        {"fp/enroute_mins", "0"},    {"fp/fuel_hrs", "1"},
        {"fp/fuel_mins", "0"},       {"fp/route", ""}};
    EXPECT_EQ(xsb.values(), filed);
    EXPECT_EQ(xsb.refs["fp/route"].writes, 0) << "no route, no write";

    // The self-check files its own sample plan.
    xsb.messages.clear();
    EXPECT_EQ(UT_XQBTools(), 0);
    EXPECT_EQ(xsb.messages, (std::vector<int>{kXQBMsgSendFlightPlan}));
    filed = {{"login/status", "2"},
             {"mic/open", "0"},
             {"login/server", ""},
             {"fp/flight_type", std::to_string('S')},
             {"fp/speed", "210"},
             {"fp/departure_airport", "ADEP"},
             {"fp/arrival_airport", "AARR"},
             {"fp/alternate_airport", "AALT"},
             {"fp/departure_time", "1350"},
             {"fp/departure_time_actual", "1350"},
             {"fp/cruise_altitude", "FL450"},
             {"fp/enroute_hrs", "4"},
             {"fp/enroute_mins", "5"},
             {"fp/fuel_hrs", "5"},
             {"fp/fuel_mins", "5"},
             {"fp/route", "point1.pt2.thep3.svt4.dffr5"}};
    EXPECT_EQ(xsb.values(), filed);
}

TEST_F(XQBToolsTest, HighAltitudeBecomesAFlightLevelThatASecondSendDividesNoMore) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    tools.SetCruiseAltitude(45000);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].text, "FL450");
    EXPECT_EQ(tools.CruiseAltitude(), 450u);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].text, "450");

    tools.SetCruiseAltitude(9999);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].text, "9999");
    tools.SetCruiseAltitude(10000);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].text, "FL100");
    // Only 6 bytes go: a long flight level is cut.
    tools.SetCruiseAltitude(4000000000u);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].text, "FL4000") << "FL40000000 cut to 6 bytes";
    EXPECT_EQ(xsb.refs["fp/cruise_altitude"].lastWriteLength, 6);
}

TEST_F(XQBToolsTest, CodesAndTimesAreCutToTheirFields) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    // Neighbours first, so that an overrun of the next setters would show in them.
    tools.SetAPTArrival("AARR");
    tools.SetAPTAlternat("AALT");
    tools.SetTrueAirSpeed(180);
    tools.SetHourFlight("04:05");
    tools.SetAPTDeparture("ABCDEFGHIJKLMNOP");
    tools.SetAPTArrival("LONGARRIVAL");
    tools.SetAPTAlternat("LONGALTERNATE");
    tools.SetHourDeparture("12345678901234567890");
    ASSERT_EQ(tools.XQBSendFlightPlan(), kXQBSent);

    EXPECT_EQ(xsb.refs["fp/departure_airport"].text, "ABCD");
    EXPECT_EQ(xsb.refs["fp/arrival_airport"].text, "LONG");
    EXPECT_EQ(xsb.refs["fp/alternate_airport"].text, "LONG");
    EXPECT_EQ(xsb.refs["fp/speed"].value, 180);
    EXPECT_EQ(xsb.refs["fp/departure_time"].value, 12 * 100 + 45) << "\"12345\" cut to \"12\" and \"45\"";
    EXPECT_EQ(xsb.refs["fp/enroute_hrs"].value, 4);
    EXPECT_EQ(xsb.refs["fp/enroute_mins"].value, 5);
    EXPECT_NE(host.logText().find("longer than 4 characters"), std::string::npos);

    // A time is cut at its third character, with or without a colon.
    tools.SetHourDeparture("1350");
    tools.SetHourFlight("2:30");
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/departure_time"].value, 1300) << "\"13\" and \"0\"";
    EXPECT_EQ(xsb.refs["fp/enroute_hrs"].value, 2) << "\"2:\" reads as 2";
    EXPECT_EQ(xsb.refs["fp/enroute_mins"].value, 0) << "\"0\" after the cut '3'";
    // The cut stays in the stored time: a second send reads the same numbers.
    tools.SetHourDeparture("07:45");
    tools.XQBSendFlightPlan();
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/departure_time"].value, 745);
}

TEST_F(XQBToolsTest, RouteIsAnOwnedCopyThatCanBeReplacedOrCleared) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    char route[] = "DCT.ABC.DEF";
    tools.SetFlightPlan(route);
    std::strcpy(route, "XXXXXXXXXX");
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/route"].text, "DCT.ABC.DEF");

    tools.SetFlightPlan("N0450F350 DCT");
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/route"].text, "N0450F350 DCT");

    const int writesBefore = xsb.refs["fp/route"].writes;
    tools.SetFlightPlan(nullptr);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.refs["fp/route"].writes, writesBefore) << "no route, no write";
}

} // namespace
