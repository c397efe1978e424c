// The link to XSquawkBox, the on-line ATC client plug-in: fills in a flight
// plan, writes it into the datarefs XSquawkBox publishes (xsquawkbox/...) and
// asks it by plug-in message to file the plan or to connect.
//
// Nothing else in Kalvora calls the link; UT_XQBTools files a sample plan.
#pragma once

#include <cstdint>

/// Signature XSquawkBox registers with the sim.
constexpr const char* kXQBSignature = "vatsim.protodev.clients.xsquawkbox";

/// Messages XSquawkBox understands (the parameter is always null).
constexpr int kXQBMsgConnect = 0x1000004;
constexpr int kXQBMsgDisconnect = 0x1000005;
constexpr int kXQBMsgSendFlightPlan = 0x1000007;

/// What XQBSendFlightPlan returns.
constexpr int kXQBSent = 0;
constexpr int kXQBAbsent = 1;
constexpr int kXQBNotConnected = 2;

/// Flight types as stored.
constexpr unsigned char kXQB_VFR = 0;
constexpr unsigned char kXQB_SVFR = 1;
constexpr unsigned char kXQB_IFR = 2;

/// Bytes of an airport field: a 4-letter code and its terminating zero.
constexpr int kXQBAirportBytes = 5;
/// Bytes of a time field: "HH:MM" and its terminating zero.
constexpr int kXQBTimeBytes = 6;

/// A flight plan for XSquawkBox and the calls that hand it over.
class XQBTools {
public:
    /// Looks XSquawkBox up by its signature.
    XQBTools();
    ~XQBTools();
    XQBTools(const XQBTools&) = delete;
    XQBTools& operator=(const XQBTools&) = delete;

    /// "IFR", "VFR" or "SVFR"; anything else leaves the type unchanged.
    void SetFlightType(const char* type);
    /// Departure airport code (at most 4 characters are kept).
    void SetAPTDeparture(const char* code);
    /// Arrival airport code (at most 4 characters are kept).
    void SetAPTArrival(const char* code);
    /// Alternate airport code (at most 4 characters are kept).
    void SetAPTAlternat(const char* code);
    /// Departure time "HH:MM" (at most 5 characters are kept).
    void SetHourDeparture(const char* time);
    /// Flight time "HH:MM" (at most 5 characters are kept).
    void SetHourFlight(const char* time);
    /// True air speed, knots.
    void SetTrueAirSpeed(int knots);
    /// Cruise altitude, feet.
    void SetCruiseAltitude(unsigned feet);
    /// Route, copied; null clears it.
    void SetFlightPlan(const char* route);

    /// Writes the server address (with its terminating zero) into XSquawkBox's login.
    void SetXQBServerIP(const char* address);
    /// Whether XSquawkBox was found.
    bool XQBIsHere() const;
    /// Whether XSquawkBox is connected to the network (login status 2).
    bool XQBIsConnected() const;
    /// Whether the microphone is open.
    bool XQBIsMicroOpen() const;
    /// Whether ATC is being received (the microphone state, as XSquawkBox reports it).
    bool XQBIsATCReception() const;
    /// Asks XSquawkBox to connect (true) or disconnect (false).
    void XQBConnect(bool connect);
    /// Writes the plan and asks XSquawkBox to file it: kXQBSent, kXQBAbsent or kXQBNotConnected.
    int XQBSendFlightPlan();

    /// Plug-in ID of XSquawkBox, -1 when absent.
    int PluginID() const { return mXQBPluginID; }
    /// Cruise altitude as stored (divided by 100 by a send above 9999 ft).
    uint32_t CruiseAltitude() const { return mPlan.cruiseAltitude; }

private:
    /// The plan's fields, in the order (and so with the layout) XSquawkBox's 6-byte
    /// airport copies rely on: each airport copy carries the first byte after its field.
    struct Plan {
        unsigned char flightType = kXQB_VFR;
        char departure[kXQBAirportBytes] = {};
        char arrival[kXQBAirportBytes] = {};
        char alternate[kXQBAirportBytes] = {};
        uint32_t trueAirSpeed = 0;   // knots
        uint32_t cruiseAltitude = 0; // feet
        char departureTime[kXQBTimeBytes] = "00:00";
        char flightTime[kXQBTimeBytes] = "00:00";
        char reserved[4] = {};
    };

    Plan mPlan;
    char* mRoute = nullptr; // owned heap copy, or null
    int mXQBPluginID = -1;
};

/// Self-check: files a sample plan and asks XSquawkBox to connect when it is not. Returns 0.
int UT_XQBTools();
