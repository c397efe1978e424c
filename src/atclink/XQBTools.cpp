#include "atclink/XQBTools.h"

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "XPLMUtilities.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

/// Bytes written for each airport code and for the cruise altitude text.
constexpr int kXQBFieldWriteBytes = 6;
/// Cruise altitudes above this many feet are sent as a flight level.
constexpr uint32_t kFlightLevelAboveFt = 9999;
/// Feet per flight level.
constexpr uint32_t kFeetPerFlightLevel = 100;
/// Hours of reserve fuel added to the time en route.
constexpr int kReserveFuelHours = 1;
/// The character cut off a time text, between hours and minutes.
constexpr int kTimeCutIndex = 2;
/// XSquawkBox's login status when connected.
constexpr int kXQBStatusConnected = 2;

/// Copies at most size - 1 characters and zero-fills the rest; says so in the log when cut.
void CopyField(char* field, int size, const char* text, const char* what) {
    std::memset(field, 0, static_cast<std::size_t>(size));
    if (text == nullptr) return;
    const std::size_t keep = strnlen(text, static_cast<std::size_t>(size - 1));
    std::memcpy(field, text, keep);
    if (text[keep] != '\0') {
        const std::string line = std::string("Kalvora: XSquawkBox ") + what + " \"" + text +
                                 "\" is longer than " + std::to_string(size - 1) + " characters, cut to \"" +
                                 field + "\"\n";
        XPLMDebugString(line.c_str());
    }
}

/// Writes an int dataref of XSquawkBox, looked up now.
void WriteInt(const char* name, int value) {
    XPLMSetDatai(XPLMFindDataRef(name), value);
}

/// Writes bytes into a byte dataref of XSquawkBox, looked up now.
void WriteBytes(const char* name, const void* bytes, int count) {
    // The API takes a non-const pointer; it only reads from it.
    XPLMSetDatab(XPLMFindDataRef(name), const_cast<void*>(bytes), 0, count);
}

/// Overwrites the third character of a time text with a zero and reads hours and minutes
/// from both halves ("13:50" gives 13 and 50; "1350" gives 13 and 0).
void CutTime(char* time, int& hours, int& minutes) {
    time[kTimeCutIndex] = '\0';
    hours = std::atoi(time);
    minutes = std::atoi(time + kTimeCutIndex + 1);
}

} // namespace

XQBTools::XQBTools() {
    mXQBPluginID = XPLMFindPluginBySignature(kXQBSignature);
}

XQBTools::~XQBTools() {
    std::free(mRoute);
}

void XQBTools::SetFlightType(const char* type) {
    if (type == nullptr) return;
    if (std::strcmp(type, "IFR") == 0)
        mPlan.flightType = kXQB_IFR;
    else if (std::strcmp(type, "VFR") == 0)
        mPlan.flightType = kXQB_VFR;
    else if (std::strcmp(type, "SVFR") == 0)
        mPlan.flightType = kXQB_SVFR;
}

void XQBTools::SetAPTDeparture(const char* code) {
    CopyField(mPlan.departure, kXQBAirportBytes, code, "departure airport");
}

void XQBTools::SetAPTArrival(const char* code) {
    CopyField(mPlan.arrival, kXQBAirportBytes, code, "arrival airport");
}

void XQBTools::SetAPTAlternat(const char* code) {
    CopyField(mPlan.alternate, kXQBAirportBytes, code, "alternate airport");
}

void XQBTools::SetHourDeparture(const char* time) {
    CopyField(mPlan.departureTime, kXQBTimeBytes, time, "departure time");
}

void XQBTools::SetHourFlight(const char* time) {
    CopyField(mPlan.flightTime, kXQBTimeBytes, time, "flight time");
}

void XQBTools::SetTrueAirSpeed(int knots) {
    mPlan.trueAirSpeed = static_cast<uint32_t>(knots);
}

void XQBTools::SetCruiseAltitude(unsigned feet) {
    mPlan.cruiseAltitude = feet;
}

void XQBTools::SetFlightPlan(const char* route) {
    std::free(mRoute);
    mRoute = nullptr;
    if (route != nullptr) mRoute = strdup(route);
}

void XQBTools::SetXQBServerIP(const char* address) {
    if (address == nullptr) return;
    WriteBytes("xsquawkbox/login/server", address, static_cast<int>(std::strlen(address)) + 1);
}

bool XQBTools::XQBIsHere() const {
    return mXQBPluginID != XPLM_NO_PLUGIN_ID;
}

bool XQBTools::XQBIsConnected() const {
    if (!XQBIsHere()) return false;
    return XPLMGetDatai(XPLMFindDataRef("xsquawkbox/login/status")) == kXQBStatusConnected;
}

bool XQBTools::XQBIsMicroOpen() const {
    if (!XQBIsHere()) return false;
    return XPLMGetDatai(XPLMFindDataRef("xsquawkbox/mic/open")) != 0;
}

bool XQBTools::XQBIsATCReception() const {
    return XQBIsMicroOpen();
}

void XQBTools::XQBConnect(bool connect) {
    if (!XQBIsHere()) return;
    XPLMSendMessageToPlugin(mXQBPluginID, connect ? kXQBMsgConnect : kXQBMsgDisconnect, nullptr);
}

int XQBTools::XQBSendFlightPlan() {
    if (!XQBIsHere()) return kXQBAbsent;
    if (!XQBIsConnected()) return kXQBNotConnected;

    // XSquawkBox wants the type as a letter.
    int typeLetter = 'V';
    if (mPlan.flightType == kXQB_SVFR)
        typeLetter = 'S';
    else if (mPlan.flightType == kXQB_IFR)
        typeLetter = 'I';
    WriteInt("xsquawkbox/fp/flight_type", typeLetter);
    WriteInt("xsquawkbox/fp/speed", static_cast<int>(mPlan.trueAirSpeed));

    // Each airport goes as 6 bytes from the start of its 5-byte field, read through the
    // plan's bytes so that the sixth is the byte that follows the field.
    const unsigned char* planBytes = reinterpret_cast<const unsigned char*>(&mPlan);
    unsigned char airport[kXQBFieldWriteBytes];
    std::memcpy(airport, planBytes + offsetof(Plan, departure), sizeof airport);
    WriteBytes("xsquawkbox/fp/departure_airport", airport, kXQBFieldWriteBytes);
    std::memcpy(airport, planBytes + offsetof(Plan, arrival), sizeof airport);
    WriteBytes("xsquawkbox/fp/arrival_airport", airport, kXQBFieldWriteBytes);
    std::memcpy(airport, planBytes + offsetof(Plan, alternate), sizeof airport);
    WriteBytes("xsquawkbox/fp/alternate_airport", airport, kXQBFieldWriteBytes);

    int hours = 0;
    int minutes = 0;
    CutTime(mPlan.departureTime, hours, minutes);
    WriteInt("xsquawkbox/fp/departure_time", hours * 100 + minutes);
    WriteInt("xsquawkbox/fp/departure_time_actual", hours * 100 + minutes);

    // The stored altitude itself becomes the flight level: a second send of 45000 ft
    // gives "FL450" and then "450".
    char altitude[16] = {};
    if (mPlan.cruiseAltitude > kFlightLevelAboveFt) {
        mPlan.cruiseAltitude /= kFeetPerFlightLevel;
        std::snprintf(altitude, sizeof altitude, "FL%u", static_cast<unsigned>(mPlan.cruiseAltitude));
    } else {
        std::snprintf(altitude, sizeof altitude, "%u", static_cast<unsigned>(mPlan.cruiseAltitude));
    }
    WriteBytes("xsquawkbox/fp/cruise_altitude", altitude, kXQBFieldWriteBytes);

    CutTime(mPlan.flightTime, hours, minutes);
    WriteInt("xsquawkbox/fp/enroute_hrs", hours);
    WriteInt("xsquawkbox/fp/enroute_mins", minutes);
    WriteInt("xsquawkbox/fp/fuel_hrs", hours + kReserveFuelHours);
    WriteInt("xsquawkbox/fp/fuel_mins", minutes);

    if (mRoute != nullptr)
        WriteBytes("xsquawkbox/fp/route", mRoute, static_cast<int>(std::strlen(mRoute)) + 1);

    XPLMSendMessageToPlugin(mXQBPluginID, kXQBMsgSendFlightPlan, nullptr);
    return kXQBSent;
}

int UT_XQBTools() {
    XQBTools tools;
    tools.SetFlightType("SVFR");
    tools.SetAPTDeparture("ADEP");
    tools.SetAPTArrival("AARR");
    tools.SetAPTAlternat("AALT");
    tools.SetTrueAirSpeed(210);
    tools.SetCruiseAltitude(45000);
    tools.SetHourDeparture("13:50");
    tools.SetHourFlight("04:05");
    tools.SetFlightPlan("point1.pt2.thep3.svt4.dffr5");
    if (tools.XQBSendFlightPlan() == kXQBNotConnected) tools.XQBConnect(true);
    return 0;
}
