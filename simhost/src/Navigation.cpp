// XPLMNavigation.h: a small navigation database around the apron (simhost's
// airport, an NDB, a VOR with its DME, an ILS with its glide slope and outer
// marker, a localizer for the opposite runway, three fixes), the FMS's flight
// plans and the GPS destination.
//
// The database moves with the apron: it is laid out, on first use, at fixed
// offsets from the reference point HostOptions names. Navaids are sorted by
// kind, so each kind is one contiguous run of XPLMNavRef numbers.
#include "HostInternal.h"
#include "WorldMath.h"

#include "XPLMNavigation.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

namespace simhost::detail {
namespace {

constexpr int kFmsEntries = 100;   ///< X-Plane's FMS holds 100 waypoints
constexpr int kFlightPlans = 6;    ///< xplm_Fpl_Pilot_Primary .. xplm_Fpl_CoPilot_Temporary
constexpr size_t kIdBytes = 32;    ///< outID buffers: the header asks callers for at least 32
constexpr size_t kNameBytes = 256; ///< outName buffers: at least 256
constexpr double kMetresPerDegLat = kEarthRadiusM * kDegToRad;
/// .fms waypoint kinds (the sim's flight-plan file format).
constexpr int kFmsAirport = 1, kFmsNdb = 2, kFmsVor = 3, kFmsFix = 11, kFmsLatLon = 28;

struct AidLayout {
    int type;
    const char* id;
    const char* name;
    double northM, eastM; ///< from the apron's reference point
    float heightAboveApronM;
    int frequency;
    float headingDeg;
};
/// simhost's airport XSIM: runway 34/16 through the apron, its radio aids and three fixes.
const AidLayout kLayout[] = {
    {xplm_Nav_Airport, "XSIM", "Simhost Field", 0, 0, 0, 0, 0},
    {xplm_Nav_NDB, "SH", "Simhost NDB", 0, -8000, 0, 385, 0},
    {xplm_Nav_VOR, "SIM", "Simhost VOR", 5000, 0, 0, 11485, 0},
    {xplm_Nav_ILS, "ISH", "XSIM 34 ILS-cat-I", -1500, 300, 0, 11030, 340},
    {xplm_Nav_Localizer, "LSH", "XSIM 16 LOC", 1500, -300, 0, 10950, 160},
    {xplm_Nav_GlideSlope, "ISH", "XSIM 34 GS", -1200, 250, 0, 11030, 340},
    {xplm_Nav_OuterMarker, "", "XSIM 34 OM", -9000, 2000, 0, 0, 340},
    {xplm_Nav_Fix, "ALPHA", "ALPHA", 0, 20000, 0, 0, 0},
    {xplm_Nav_Fix, "BRAVO", "BRAVO", 18000, 18000, 0, 0, 0},
    {xplm_Nav_Fix, "CHRLY", "CHRLY", -20000, 0, 0, 0, 0},
    {xplm_Nav_DME, "SIM", "Simhost DME", 5000, 0, 0, 11485, 0},
};

void copyText(char* out, const std::string& s, size_t cap) {
    if (!out) return;
    const size_t n = std::min(s.size(), cap - 1);
    std::memcpy(out, s.data(), n);
    out[n] = '\0';
}

/// Great-circle distance, metres.
double distanceM(double lat1, double lon1, double lat2, double lon2) {
    const double p1 = lat1 * kDegToRad, p2 = lat2 * kDegToRad;
    const double dp = p2 - p1, dl = (lon2 - lon1) * kDegToRad;
    const double a = std::sin(dp / 2) * std::sin(dp / 2) +
                     std::cos(p1) * std::cos(p2) * std::sin(dl / 2) * std::sin(dl / 2);
    return 2 * kEarthRadiusM * std::asin(std::min(1.0, std::sqrt(a)));
}

bool isBeacon(int type) {
    return type != xplm_Nav_Airport && type != xplm_Nav_Fix && type != xplm_Nav_LatLon;
}

const NavAidRec* aid(HostCore& c, int ref) {
    NavState& n = navDatabase(c);
    return ref >= 0 && ref < static_cast<int>(n.aids.size()) ? &n.aids[static_cast<size_t>(ref)] : nullptr;
}

/// The flight plan a call names, or nullptr (an unknown plan has no effect and returns nothing).
FlightPlanRec* plan(int which) {
    HostCore* c = core();
    if (!c || which < 0 || which >= kFlightPlans) return nullptr;
    return &navDatabase(*c).plans[static_cast<size_t>(which)];
}

FmsEntryRec* entry(int which, int index) {
    FlightPlanRec* p = plan(which);
    if (!p || index < 0 || index >= kFmsEntries) return nullptr;
    return &p->entries[static_cast<size_t>(index)];
}

int countEntries(const FlightPlanRec& p) {
    for (int i = kFmsEntries; i-- > 0;)
        if (p.entries[static_cast<size_t>(i)].type != xplm_Nav_Unknown) return i + 1;
    return 0;
}

void getEntry(int which, int index, XPLMNavType* outType, char* outID, XPLMNavRef* outRef, int* outAltitude,
              float* outLat, float* outLon) {
    const FmsEntryRec* e = entry(which, index);
    const FmsEntryRec none;
    if (!e) e = &none;
    if (outType) *outType = e->type;
    copyText(outID, e->id, kIdBytes);
    if (outRef) *outRef = e->ref;
    if (outAltitude) *outAltitude = e->altitudeFt;
    if (outLat) *outLat = e->latDeg;
    if (outLon) *outLon = e->lonDeg;
}

void setEntryNavAid(int which, int index, XPLMNavRef ref, int altitudeFt) {
    HostCore* c = core();
    FmsEntryRec* e = entry(which, index);
    const NavAidRec* a = c ? aid(*c, ref) : nullptr;
    if (!e) return;
    // The FMS flies to airports, fixes, VORs and NDBs only.
    if (!a || !(a->type & (xplm_Nav_Airport | xplm_Nav_Fix | xplm_Nav_VOR | xplm_Nav_NDB))) {
        apiError("XPLMSetFMSEntryInfo: navaid " + std::to_string(ref) +
                 " is not an airport, fix, VOR or NDB");
        return;
    }
    *e = FmsEntryRec{
        a->type, a->id, ref, altitudeFt, static_cast<float>(a->latDeg), static_cast<float>(a->lonDeg)};
}

void setEntryLatLon(int which, int index, float lat, float lon, int altitudeFt, const std::string& id) {
    if (FmsEntryRec* e = entry(which, index))
        *e = FmsEntryRec{xplm_Nav_LatLon, id, XPLM_NAV_NOT_FOUND, altitudeFt, lat, lon};
}

void clearEntry(int which, int index) {
    if (FmsEntryRec* e = entry(which, index)) *e = FmsEntryRec{};
}

void setIndex(int which, int index, bool destination) {
    FlightPlanRec* p = plan(which);
    if (!p || index < 0 || index >= kFmsEntries) return;
    (destination ? p->destination : p->displayed) = index;
}

int fmsKind(int navType) {
    switch (navType) {
    case xplm_Nav_Airport:
        return kFmsAirport;
    case xplm_Nav_NDB:
        return kFmsNdb;
    case xplm_Nav_VOR:
        return kFmsVor;
    case xplm_Nav_Fix:
        return kFmsFix;
    default:
        return kFmsLatLon;
    }
}

/// The flight plan as the sim's .fms text (version 1100).
std::string fmsText(const FlightPlanRec& p) {
    const int n = countEntries(p);
    std::ostringstream s;
    s.setf(std::ios::fixed);
    s.precision(6);
    s << "I\n1100 Version\nCYCLE 2401\n";
    if (n > 0 && p.entries[0].type == xplm_Nav_Airport) s << "ADEP " << p.entries[0].id << "\n";
    if (n > 0 && p.entries[static_cast<size_t>(n - 1)].type == xplm_Nav_Airport)
        s << "ADES " << p.entries[static_cast<size_t>(n - 1)].id << "\n";
    s << "NUMENR " << n << "\n";
    for (int i = 0; i < n; ++i) {
        const FmsEntryRec& e = p.entries[static_cast<size_t>(i)];
        const std::string id = e.id.empty() ? "WPT" + std::to_string(i) : e.id;
        s << fmsKind(e.type) << " " << id << " DRCT " << e.altitudeFt << ".000000 " << e.latDeg << " "
          << e.lonDeg << "\n";
    }
    return s.str();
}

/// Reads .fms text into a flight plan: each waypoint line "kind id via altitude lat lon" becomes an
/// entry (a navaid of the database when its ID and kind match, a lat/lon entry otherwise); other lines
/// are headers or damage and are skipped.
void loadFmsText(HostCore& c, FlightPlanRec& p, const std::string& text) {
    std::vector<FmsEntryRec> entries;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line) && static_cast<int>(entries.size()) < kFmsEntries) {
        std::istringstream f(line);
        int kind = 0;
        std::string id, via;
        double alt = 0, lat = 0, lon = 0;
        if (!(f >> kind >> id >> via >> alt >> lat >> lon)) continue;
        if (!std::isfinite(alt) || !std::isfinite(lat) || !std::isfinite(lon) || std::fabs(lat) > 90 ||
            std::fabs(lon) > 180)
            continue;
        FmsEntryRec e{xplm_Nav_LatLon,         id,
                      XPLM_NAV_NOT_FOUND,      static_cast<int>(alt),
                      static_cast<float>(lat), static_cast<float>(lon)};
        const NavState& n = navDatabase(c);
        for (size_t i = 0; i < n.aids.size(); ++i)
            if (n.aids[i].id == id && fmsKind(n.aids[i].type) == kind) {
                e.type = n.aids[i].type;
                e.ref = static_cast<int>(i);
            }
        entries.push_back(e);
    }
    p = FlightPlanRec{};
    p.entries.assign(kFmsEntries, FmsEntryRec{});
    std::copy(entries.begin(), entries.end(), p.entries.begin());
    p.destination = entries.size() > 1 ? 1 : 0;
}

} // namespace

NavState& navDatabase(HostCore& c) {
    NavState& n = c.nav;
    if (!n.aids.empty()) return n;
    const double lat0 = c.opt.startLatDeg, lon0 = c.opt.startLonDeg;
    const double metresPerDegLon = kMetresPerDegLat * std::max(1e-6, std::cos(lat0 * kDegToRad));
    for (const AidLayout& l : kLayout)
        n.aids.push_back(NavAidRec{
            l.type, l.id, l.name, lat0 + l.northM / kMetresPerDegLat, lon0 + l.eastM / metresPerDegLon,
            static_cast<float>(c.opt.startElevationM) + l.heightAboveApronM, l.frequency, l.headingDeg});
    std::stable_sort(n.aids.begin(), n.aids.end(),
                     [](const NavAidRec& a, const NavAidRec& b) { return a.type < b.type; });
    n.plans.assign(kFlightPlans, FlightPlanRec{});
    for (FlightPlanRec& p : n.plans)
        p.entries.assign(kFmsEntries, FmsEntryRec{});
    return n;
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

XPLMNavRef XPLMGetFirstNavAid(void) {
    HostCore* c = core();
    return c && !navDatabase(*c).aids.empty() ? 0 : XPLM_NAV_NOT_FOUND;
}

XPLMNavRef XPLMGetNextNavAid(XPLMNavRef inNavAidRef) {
    HostCore* c = core();
    return c && aid(*c, inNavAidRef) && aid(*c, inNavAidRef + 1) ? inNavAidRef + 1 : XPLM_NAV_NOT_FOUND;
}

XPLMNavRef XPLMFindFirstNavAidOfType(XPLMNavType inType) {
    HostCore* c = core();
    if (!c) return XPLM_NAV_NOT_FOUND;
    const auto& aids = navDatabase(*c).aids;
    for (size_t i = 0; i < aids.size(); ++i)
        if (aids[i].type == inType) return static_cast<int>(i);
    return XPLM_NAV_NOT_FOUND;
}

XPLMNavRef XPLMFindLastNavAidOfType(XPLMNavType inType) {
    HostCore* c = core();
    if (!c) return XPLM_NAV_NOT_FOUND;
    const auto& aids = navDatabase(*c).aids;
    for (size_t i = aids.size(); i-- > 0;)
        if (aids[i].type == inType) return static_cast<int>(i);
    return XPLM_NAV_NOT_FOUND;
}

XPLMNavRef XPLMFindNavAid(const char* inNameFragment, const char* inIDFragment, float* inLat, float* inLon,
                          int* inFrequency, XPLMNavType inType) {
    HostCore* c = core();
    if (!c) return XPLM_NAV_NOT_FOUND;
    const auto& aids = navDatabase(*c).aids;
    const bool near = inLat && inLon;
    XPLMNavRef found = XPLM_NAV_NOT_FOUND;
    double best = 0;
    for (size_t i = 0; i < aids.size(); ++i) {
        const NavAidRec& a = aids[i];
        if (!(a.type & inType)) continue;
        // A frequency screens radio beacons only: fixes and airports have none and stay in.
        if (inFrequency && isBeacon(a.type) && a.frequency != *inFrequency) continue;
        if (inNameFragment && a.name.find(inNameFragment) == std::string::npos) continue;
        if (inIDFragment && a.id.find(inIDFragment) == std::string::npos) continue;
        const double d = near ? distanceM(*inLat, *inLon, a.latDeg, a.lonDeg) : 0;
        if (found == XPLM_NAV_NOT_FOUND || !near || d < best) {
            found = static_cast<int>(i);
            best = d;
        }
    }
    return found;
}

void XPLMGetNavAidInfo(XPLMNavRef inRef, XPLMNavType* outType, float* outLatitude, float* outLongitude,
                       float* outHeight, int* outFrequency, float* outHeading, char* outID, char* outName,
                       char* outReg) {
    HostCore* c = core();
    const NavAidRec* a = c ? aid(*c, inRef) : nullptr;
    if (!a) {
        if (outType) *outType = xplm_Nav_Unknown;
        return;
    }
    if (outType) *outType = a->type;
    if (outLatitude) *outLatitude = static_cast<float>(a->latDeg);
    if (outLongitude) *outLongitude = static_cast<float>(a->lonDeg);
    if (outHeight) *outHeight = a->heightM;
    if (outFrequency) *outFrequency = a->frequency;
    if (outHeading) *outHeading = a->headingDeg;
    copyText(outID, a->id, kIdBytes);
    copyText(outName, a->name, kNameBytes);
    if (outReg) *outReg = 1; // everything here is in the loaded region
}

int XPLMCountFMSEntries(void) {
    return XPLMCountFMSFlightPlanEntries(xplm_Fpl_Pilot_Primary);
}
int XPLMGetDisplayedFMSEntry(void) {
    return XPLMGetDisplayedFMSFlightPlanEntry(xplm_Fpl_Pilot_Primary);
}
int XPLMGetDestinationFMSEntry(void) {
    return XPLMGetDestinationFMSFlightPlanEntry(xplm_Fpl_Pilot_Primary);
}
void XPLMSetDisplayedFMSEntry(int inIndex) {
    setIndex(xplm_Fpl_Pilot_Primary, inIndex, false);
}
void XPLMSetDestinationFMSEntry(int inIndex) {
    setIndex(xplm_Fpl_Pilot_Primary, inIndex, true);
}
void XPLMGetFMSEntryInfo(int inIndex, XPLMNavType* outType, char* outID, XPLMNavRef* outRef, int* outAltitude,
                         float* outLat, float* outLon) {
    getEntry(xplm_Fpl_Pilot_Primary, inIndex, outType, outID, outRef, outAltitude, outLat, outLon);
}
void XPLMSetFMSEntryInfo(int inIndex, XPLMNavRef inRef, int inAltitude) {
    setEntryNavAid(xplm_Fpl_Pilot_Primary, inIndex, inRef, inAltitude);
}
void XPLMSetFMSEntryLatLon(int inIndex, float inLat, float inLon, int inAltitude) {
    setEntryLatLon(xplm_Fpl_Pilot_Primary, inIndex, inLat, inLon, inAltitude, "");
}
void XPLMClearFMSEntry(int inIndex) {
    clearEntry(xplm_Fpl_Pilot_Primary, inIndex);
}

int XPLMCountFMSFlightPlanEntries(XPLMNavFlightPlan inFlightPlan) {
    const FlightPlanRec* p = plan(inFlightPlan);
    return p ? countEntries(*p) : 0;
}
int XPLMGetDisplayedFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan) {
    const FlightPlanRec* p = plan(inFlightPlan);
    return p ? p->displayed : 0;
}
int XPLMGetDestinationFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan) {
    const FlightPlanRec* p = plan(inFlightPlan);
    return p ? p->destination : 0;
}
void XPLMSetDisplayedFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan, int inIndex) {
    setIndex(inFlightPlan, inIndex, false);
}
void XPLMSetDestinationFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan, int inIndex) {
    setIndex(inFlightPlan, inIndex, true);
}
void XPLMSetDirectToFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan, int inIndex) {
    // Direct to: the entry becomes the destination (the leg starts where the aircraft is).
    setIndex(inFlightPlan, inIndex, true);
}
void XPLMGetFMSFlightPlanEntryInfo(XPLMNavFlightPlan inFlightPlan, int inIndex, XPLMNavType* outType,
                                   char* outID, XPLMNavRef* outRef, int* outAltitude, float* outLat,
                                   float* outLon) {
    getEntry(inFlightPlan, inIndex, outType, outID, outRef, outAltitude, outLat, outLon);
}
void XPLMSetFMSFlightPlanEntryInfo(XPLMNavFlightPlan inFlightPlan, int inIndex, XPLMNavRef inRef,
                                   int inAltitude) {
    setEntryNavAid(inFlightPlan, inIndex, inRef, inAltitude);
}
void XPLMSetFMSFlightPlanEntryLatLon(XPLMNavFlightPlan inFlightPlan, int inIndex, float inLat, float inLon,
                                     int inAltitude) {
    setEntryLatLon(inFlightPlan, inIndex, inLat, inLon, inAltitude, "");
}
void XPLMSetFMSFlightPlanEntryLatLonWithId(XPLMNavFlightPlan inFlightPlan, int inIndex, float inLat,
                                           float inLon, int inAltitude, const char* inId,
                                           unsigned int inIdLength) {
    const std::string id =
        inId ? std::string(inId, strnlen(inId, std::min<size_t>(inIdLength, kIdBytes - 1))) : "";
    setEntryLatLon(inFlightPlan, inIndex, inLat, inLon, inAltitude, id);
}
void XPLMClearFMSFlightPlanEntry(XPLMNavFlightPlan inFlightPlan, int inIndex) {
    clearEntry(inFlightPlan, inIndex);
}

void XPLMLoadFMSFlightPlan(int inDevice, const char* inBuffer, unsigned int inBufferLen) {
    HostCore* c = core();
    FlightPlanRec* p = plan(inDevice); // device 0 and 1 are the pilot's and co-pilot's primary plans
    if (!c || !p || !inBuffer || (inDevice != 0 && inDevice != 1)) return;
    loadFmsText(*c, *p, std::string(inBuffer, strnlen(inBuffer, inBufferLen)));
}

unsigned int XPLMSaveFMSFlightPlan(int inDevice, char* inBuffer, unsigned int inBufferLen) {
    const FlightPlanRec* p = plan(inDevice);
    if (!p || (inDevice != 0 && inDevice != 1)) return 0;
    const std::string text = fmsText(*p);
    const unsigned int needed = static_cast<unsigned int>(text.size() + 1);
    if (inBuffer && inBufferLen > 0) std::memcpy(inBuffer, text.c_str(), std::min(needed, inBufferLen));
    return needed;
}

XPLMNavType XPLMGetGPSDestinationType(void) {
    XPLMNavType type = xplm_Nav_Unknown;
    XPLMGetFMSEntryInfo(XPLMGetDestinationFMSEntry(), &type, nullptr, nullptr, nullptr, nullptr, nullptr);
    return type;
}

XPLMNavRef XPLMGetGPSDestination(void) {
    XPLMNavRef ref = XPLM_NAV_NOT_FOUND;
    XPLMGetFMSEntryInfo(XPLMGetDestinationFMSEntry(), nullptr, nullptr, &ref, nullptr, nullptr, nullptr);
    return ref;
}

} // extern "C"
