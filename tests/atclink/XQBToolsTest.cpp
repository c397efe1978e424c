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
#include <string>
#include <vector>

namespace {

/// Bytes each byte dataref of the stand-in holds.
constexpr int kBlockBytes = 256;

/// One message the stand-in received.
struct Received {
    int from;
    int message;
    void* param;
};

/// An int or byte dataref of the stand-in, with what was last written to it.
struct FakeDataRef {
    std::string name;
    bool isBytes = false;
    int value = 0;                    // int datarefs
    std::vector<unsigned char> bytes; // byte datarefs: kBlockBytes, zero-filled
    int lastWriteLength = -1;         // byte datarefs: length of the last write, -1 = never
    int writes = 0;
    std::vector<std::string>* journal = nullptr; // shared log of writes and messages, in order
};

/// The stand-in XSquawkBox: every xsquawkbox/... dataref the link uses, and the
/// messages it received. A copy with another signature plays an unrelated
/// plug-in that happens to publish the same names.
class FakeXSquawkBox {
public:
    explicit FakeXSquawkBox(simhost::Host& host, const char* signature = kXQBSignature) {
        for (const char* name :
             {"xsquawkbox/login/status", "xsquawkbox/mic/open", "xsquawkbox/fp/flight_type",
              "xsquawkbox/fp/speed", "xsquawkbox/fp/departure_time", "xsquawkbox/fp/departure_time_actual",
              "xsquawkbox/fp/enroute_hrs", "xsquawkbox/fp/enroute_mins", "xsquawkbox/fp/fuel_hrs",
              "xsquawkbox/fp/fuel_mins"})
            mRefs[name] = FakeDataRef{name, false, 0, {}, -1, 0};
        for (const char* name :
             {"xsquawkbox/login/server", "xsquawkbox/fp/departure_airport", "xsquawkbox/fp/arrival_airport",
              "xsquawkbox/fp/alternate_airport", "xsquawkbox/fp/cruise_altitude", "xsquawkbox/fp/route"})
            mRefs[name] = FakeDataRef{name, true, 0, std::vector<unsigned char>(kBlockBytes, 0), -1, 0};
        for (auto& entry : mRefs)
            entry.second.journal = &mJournal;

        simhost::InProcessPlugin plugin;
        plugin.name = "XSquawkBox";
        plugin.signature = signature;
        plugin.description = "on-line ATC client";
        plugin.start = [this] {
            for (auto& [name, ref] : mRefs) {
                if (ref.isBytes)
                    XPLMRegisterDataAccessor(name.c_str(), xplmType_Data, 1, nullptr, nullptr, nullptr,
                                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                             ReadBytes, WriteBytes, &ref, &ref);
                else
                    XPLMRegisterDataAccessor(name.c_str(), xplmType_Int, 1, ReadInt, WriteInt, nullptr,
                                             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                             nullptr, nullptr, &ref, &ref);
            }
            return 1;
        };
        plugin.receive = [this](int from, int message, void* param) {
            mReceived.push_back({from, message, param});
            if (from != XPLM_PLUGIN_XPLANE) mJournal.push_back("message " + std::to_string(message));
        };
        mID = host.addPlugin(std::move(plugin));
    }

    int id() const { return mID; }
    /// Sets a value as XSquawkBox itself would (not counted as a write).
    void setInt(const std::string& name, int value) { mRefs.at(name).value = value; }
    int intValue(const std::string& name) const { return mRefs.at(name).value; }
    /// A byte dataref's contents up to its first zero.
    std::string text(const std::string& name) const {
        const auto& bytes = mRefs.at(name).bytes;
        return std::string(reinterpret_cast<const char*>(bytes.data()),
                           strnlen(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    }
    const FakeDataRef& ref(const std::string& name) const { return mRefs.at(name); }
    int totalWrites() const {
        int total = 0;
        for (const auto& entry : mRefs)
            total += entry.second.writes;
        return total;
    }
    std::vector<int> messages() const {
        std::vector<int> out;
        for (const auto& r : mReceived)
            if (r.from != XPLM_PLUGIN_XPLANE) out.push_back(r.message);
        return out;
    }
    const std::vector<Received>& received() const { return mReceived; }
    /// Names written and messages received ("message <n>"), in order.
    const std::vector<std::string>& journal() const { return mJournal; }

private:
    static int ReadInt(void* refcon) { return static_cast<FakeDataRef*>(refcon)->value; }
    static void WriteInt(void* refcon, int value) {
        auto* ref = static_cast<FakeDataRef*>(refcon);
        ref->value = value;
        ++ref->writes;
        ref->journal->push_back(ref->name);
    }
    static int ReadBytes(void* refcon, void* out, int offset, int max) {
        auto* ref = static_cast<FakeDataRef*>(refcon);
        if (out == nullptr) return kBlockBytes;
        if (offset < 0 || offset >= kBlockBytes || max <= 0) return 0;
        const int count = std::min(max, kBlockBytes - offset);
        std::memcpy(out, ref->bytes.data() + offset, static_cast<std::size_t>(count));
        return count;
    }
    static void WriteBytes(void* refcon, void* in, int offset, int length) {
        auto* ref = static_cast<FakeDataRef*>(refcon);
        ++ref->writes;
        ref->journal->push_back(ref->name);
        ref->lastWriteLength = length;
        if (in == nullptr || offset < 0 || offset >= kBlockBytes || length <= 0) return;
        // A write replaces the block, as XSquawkBox's string fields do.
        std::fill(ref->bytes.begin(), ref->bytes.end(), 0);
        const int count = std::min(length, kBlockBytes - offset);
        std::memcpy(ref->bytes.data() + offset, in, static_cast<std::size_t>(count));
    }

    std::map<std::string, FakeDataRef> mRefs;
    std::vector<Received> mReceived;
    std::vector<std::string> mJournal;
    int mID = -1;
};

constexpr const char* kStatus = "xsquawkbox/login/status";
constexpr const char* kMic = "xsquawkbox/mic/open";
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
        mXSquawkBox->setInt(kStatus, loginStatus);
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
    impostor.setInt(kStatus, kConnected);
    impostor.setInt(kMic, 1);
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
    EXPECT_TRUE(impostor.messages().empty()) << "a message to no plug-in must not become a broadcast";
    EXPECT_EQ(tools.CruiseAltitude(), 37000u) << "nothing was sent, so the altitude is untouched";
}

TEST_F(XQBToolsTest, QueriesFollowLoginStatusAndMicrophone) {
    FakeXSquawkBox& xsb = startXSquawkBox(kOffline);
    XQBTools tools;
    ASSERT_TRUE(tools.XQBIsHere());
    EXPECT_EQ(tools.PluginID(), xsb.id());

    EXPECT_FALSE(tools.XQBIsConnected());
    xsb.setInt(kStatus, 1); // connecting
    EXPECT_FALSE(tools.XQBIsConnected());
    xsb.setInt(kStatus, kConnected);
    EXPECT_TRUE(tools.XQBIsConnected());

    EXPECT_FALSE(tools.XQBIsMicroOpen());
    xsb.setInt(kMic, 1);
    EXPECT_TRUE(tools.XQBIsMicroOpen());
    EXPECT_TRUE(tools.XQBIsATCReception());
    xsb.setInt(kMic, 0);
    EXPECT_FALSE(tools.XQBIsATCReception());

    xsb.setInt(kStatus, kOffline); // not connected: nothing is filed
    setPlan(tools);
    EXPECT_EQ(tools.XQBSendFlightPlan(), kXQBNotConnected);
    EXPECT_EQ(xsb.totalWrites(), 0);
    EXPECT_TRUE(xsb.messages().empty());
    EXPECT_EQ(UT_XQBTools(), 0); // the self-check asks to connect instead
    EXPECT_EQ(xsb.messages(), (std::vector<int>{kXQBMsgConnect}));
    EXPECT_EQ(xsb.totalWrites(), 0);
}

TEST_F(XQBToolsTest, ConnectDisconnectAndTheServerAddressReachXSquawkBox) {
    FakeXSquawkBox& xsb = startXSquawkBox(kOffline);
    XQBTools tools;
    tools.XQBConnect(true);
    tools.XQBConnect(false);
    ASSERT_EQ(xsb.messages(), (std::vector<int>{kXQBMsgConnect, kXQBMsgDisconnect}));
    for (const auto& r : xsb.received()) {
        if (r.from == XPLM_PLUGIN_XPLANE) continue;
        EXPECT_EQ(r.from, kalvoraID);
        EXPECT_EQ(r.param, nullptr);
    }
    tools.SetXQBServerIP("192.0.2.17");
    EXPECT_EQ(xsb.text("xsquawkbox/login/server"), "192.0.2.17");
    EXPECT_EQ(xsb.ref("xsquawkbox/login/server").lastWriteLength, 11); // with its terminating zero
}

TEST_F(XQBToolsTest, ConnectedSendingFilesEveryFieldThenAsksToFile) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    setPlan(tools);
    ASSERT_EQ(tools.XQBSendFlightPlan(), kXQBSent);

    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/flight_type"), 'I');
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/speed"), 450);
    EXPECT_EQ(xsb.text("xsquawkbox/fp/departure_airport"), "LSZH");
    EXPECT_EQ(xsb.text("xsquawkbox/fp/arrival_airport"), "EGLL");
    EXPECT_EQ(xsb.text("xsquawkbox/fp/alternate_airport"), "EGKK");
    for (const char* airport : {"xsquawkbox/fp/departure_airport", "xsquawkbox/fp/arrival_airport",
                                "xsquawkbox/fp/alternate_airport"})
        EXPECT_EQ(xsb.ref(airport).lastWriteLength, 6) << airport;
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/departure_time"), 915);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/departure_time_actual"), 915);
    EXPECT_EQ(xsb.text("xsquawkbox/fp/cruise_altitude"), "FL370");
    EXPECT_EQ(xsb.ref("xsquawkbox/fp/cruise_altitude").lastWriteLength, 6);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/enroute_hrs"), 1);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/enroute_mins"), 40);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/fuel_hrs"), 2) << "one hour of reserve fuel";
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/fuel_mins"), 40);
    EXPECT_EQ(xsb.text("xsquawkbox/fp/route"), "GERSA UN850 RESIA");
    EXPECT_EQ(xsb.ref("xsquawkbox/fp/route").lastWriteLength, 18) << "the route goes with its zero";
    // Every field is written once, in its order, before the message that files the plan.
    const std::vector<std::string> journal = xsb.journal();
    ASSERT_EQ(journal.size(), 14u);
    EXPECT_EQ(journal[0], "xsquawkbox/fp/flight_type");
    EXPECT_EQ(journal[7], "xsquawkbox/fp/cruise_altitude");
    EXPECT_EQ(journal[12], "xsquawkbox/fp/route");
    EXPECT_EQ(journal[13], "message " + std::to_string(kXQBMsgSendFlightPlan));
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
        EXPECT_EQ(xsb.intValue("xsquawkbox/fp/flight_type"), send.second)
            << (send.first ? send.first : "null");
    }
}

TEST_F(XQBToolsTest, DefaultPlanSendsZeroTimesAndNoRoute) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    ASSERT_EQ(tools.XQBSendFlightPlan(), kXQBSent);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/departure_time"), 0);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/enroute_hrs"), 0);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/fuel_hrs"), 1);
    EXPECT_EQ(xsb.text("xsquawkbox/fp/cruise_altitude"), "0");
    EXPECT_EQ(xsb.text("xsquawkbox/fp/departure_airport"), "");
    EXPECT_EQ(xsb.ref("xsquawkbox/fp/route").writes, 0);
}

TEST_F(XQBToolsTest, HighAltitudeBecomesAFlightLevelThatASecondSendDividesNoMore) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    tools.SetCruiseAltitude(45000);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.text("xsquawkbox/fp/cruise_altitude"), "FL450");
    EXPECT_EQ(tools.CruiseAltitude(), 450u);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.text("xsquawkbox/fp/cruise_altitude"), "450");

    tools.SetCruiseAltitude(9999);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.text("xsquawkbox/fp/cruise_altitude"), "9999");
    tools.SetCruiseAltitude(10000);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.text("xsquawkbox/fp/cruise_altitude"), "FL100");
    // Only 6 bytes go: a long flight level is cut.
    tools.SetCruiseAltitude(4000000000u);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.text("xsquawkbox/fp/cruise_altitude"), "FL4000") << "FL40000000 cut to 6 bytes";
    EXPECT_EQ(xsb.ref("xsquawkbox/fp/cruise_altitude").lastWriteLength, 6);
}

TEST_F(XQBToolsTest, TimesAreCutAtTheirThirdCharacterWithOrWithoutAColon) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    tools.SetHourDeparture("1350");
    tools.SetHourFlight("2:30");
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/departure_time"), 1300) << "\"13\" and \"0\"";
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/enroute_hrs"), 2) << "\"2:\" reads as 2";
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/enroute_mins"), 0) << "\"0\" after the cut '3'";

    // The cut stays in the stored time: a second send reads the same numbers.
    tools.SetHourDeparture("07:45");
    tools.XQBSendFlightPlan();
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/departure_time"), 745);
}

TEST_F(XQBToolsTest, OverLongCodesAndTimesStayWithinTheirFields) {
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

    EXPECT_EQ(xsb.text("xsquawkbox/fp/departure_airport"), "ABCD");
    EXPECT_EQ(xsb.text("xsquawkbox/fp/arrival_airport"), "LONG");
    EXPECT_EQ(xsb.text("xsquawkbox/fp/alternate_airport"), "LONG");
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/speed"), 180);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/departure_time"), 12 * 100 + 45)
        << "\"12345\" cut to \"12\" and \"45\"";
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/enroute_hrs"), 4);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/enroute_mins"), 5);
    EXPECT_NE(host.logText().find("longer than 4 characters"), std::string::npos);
}

TEST_F(XQBToolsTest, RouteIsAnOwnedCopyThatCanBeReplacedOrCleared) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    XQBTools tools;
    char route[] = "DCT.ABC.DEF";
    tools.SetFlightPlan(route);
    std::strcpy(route, "XXXXXXXXXX");
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.text("xsquawkbox/fp/route"), "DCT.ABC.DEF");

    tools.SetFlightPlan("N0450F350 DCT");
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.text("xsquawkbox/fp/route"), "N0450F350 DCT");

    const int writesBefore = xsb.ref("xsquawkbox/fp/route").writes;
    tools.SetFlightPlan(nullptr);
    tools.XQBSendFlightPlan();
    EXPECT_EQ(xsb.ref("xsquawkbox/fp/route").writes, writesBefore) << "no route, no write";
}

TEST_F(XQBToolsTest, SelfCheckFilesItsSamplePlanWhenConnected) {
    FakeXSquawkBox& xsb = startXSquawkBox(kConnected);
    EXPECT_EQ(UT_XQBTools(), 0);
    EXPECT_EQ(xsb.messages(), (std::vector<int>{kXQBMsgSendFlightPlan}));
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/flight_type"), 'S');
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/speed"), 210);
    EXPECT_EQ(xsb.text("xsquawkbox/fp/departure_airport"), "ADEP");
    EXPECT_EQ(xsb.text("xsquawkbox/fp/arrival_airport"), "AARR");
    EXPECT_EQ(xsb.text("xsquawkbox/fp/alternate_airport"), "AALT");
    EXPECT_EQ(xsb.text("xsquawkbox/fp/cruise_altitude"), "FL450");
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/departure_time"), 1350);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/enroute_hrs"), 4);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/enroute_mins"), 5);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/fuel_hrs"), 5);
    EXPECT_EQ(xsb.intValue("xsquawkbox/fp/fuel_mins"), 5);
    EXPECT_EQ(xsb.text("xsquawkbox/fp/route"), "point1.pt2.thep3.svt4.dffr5");
}

} // namespace
