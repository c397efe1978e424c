// XPLMWeather.h: the weather at a place from a settable state (Host::setWeather)
// and the reports plug-ins set. A place inside a plug-in's report (within its
// radius) gets that report's values, the nearest report winning; elsewhere it
// gets the host's state. The METAR of simhost's airport is the state's text,
// or one composed from the state's values.
#include "HostInternal.h"
#include "WorldMath.h"

#include "XPLMNavigation.h"
#include "XPLMWeather.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace simhost::detail {
namespace {

constexpr double kMetresPerNm = 1852;
constexpr double kLapseKPerM = 0.0065; ///< standard atmosphere temperature lapse, K per metre
constexpr double kCelsiusToKelvin = 273.15;
constexpr double kBarometricExponent = 5.25588; ///< g·M / (R·L) of the standard atmosphere
constexpr double kMetarReachNm = 30;            ///< an airport's report describes this far around it
constexpr float kDefaultRadiusNm = 30;          ///< XPLM_DEFAULT_WXR_RADIUS_NM
constexpr float kMetresPerSecondPerKnot = 0.514444f;
constexpr double kDayS = 86400, kNoonS = 43200;
constexpr int kVersion1Bytes = static_cast<int>(offsetof(XPLMWeatherInfo_t, temp_layers));

double distanceM(double lat1, double lon1, double lat2, double lon2) {
    const double p1 = lat1 * kDegToRad, p2 = lat2 * kDegToRad;
    const double a = std::pow(std::sin((p2 - p1) / 2), 2) +
                     std::cos(p1) * std::cos(p2) * std::pow(std::sin((lon2 - lon1) * kDegToRad / 2), 2);
    return 2 * kEarthRadiusM * std::asin(std::min(1.0, std::sqrt(a)));
}

/// Position of an airport of the navigation database; false when unknown.
bool airportAt(HostCore& c, const char* icao, double& lat, double& lon) {
    if (!icao) return false;
    for (const NavAidRec& a : navDatabase(c).aids)
        if (a.type == xplm_Nav_Airport && a.id == icao) {
            lat = a.latDeg;
            lon = a.lonDeg;
            return true;
        }
    return false;
}

/// The weather values that hold at a place.
const Weather& weatherAt(const HostCore& c, double lat, double lon) {
    const WeatherReport* best = nullptr;
    double bestM = 0;
    for (const WeatherReport& r : c.weatherReports) {
        const double d = distanceM(lat, lon, r.latDeg, r.lonDeg);
        if (d <= r.radiusNm * kMetresPerNm && (!best || d < bestM)) {
            best = &r;
            bestM = d;
        }
    }
    return best ? best->values : c.weather;
}

/// A report's values from what a plug-in passed; fields marked read-only are ignored.
Weather fromInfo(const XPLMWeatherInfo_t& in, const Weather& before) {
    Weather w = before;
    w.metar.clear();
    w.temperatureC = in.temperature_alt;
    w.dewpointC = in.dewpoint_alt;
    if (in.pressure_alt > 0)
        w.qnhPa = in.pressure_alt;
    else if (in.pressure_sl > 0)
        w.qnhPa = in.pressure_sl;
    w.visibilityM = in.visibility;
    w.precipRatio = in.precip_rate;
    const XPLMWeatherInfoWinds_t& wind = in.wind_layers[0];
    if (wind.speed >= 0) {
        w.windDirDeg = wind.direction;
        w.windSpeedMps = wind.speed;
        w.gustMps = wind.gust_speed > wind.speed ? wind.gust_speed : 0;
    }
    const XPLMWeatherInfoClouds_t& cloud = in.cloud_layers[0];
    w.cloudCoverage = cloud.coverage;
    w.cloudBaseM = cloud.alt_base;
    w.cloudTopM = cloud.alt_top;
    return w;
}

void setReport(HostCore& c, const std::string& airport, double lat, double lon, const XPLMWeatherInfo_t* in) {
    if (!in || in->structSize < kVersion1Bytes) {
        apiError("XPLMSetWeatherAt" + std::string(airport.empty() ? "Location" : "Airport") +
                 ": missing info or a structSize below the first version");
        return;
    }
    WeatherReport r;
    r.owner = caller();
    r.airport = airport;
    r.latDeg = lat;
    r.lonDeg = lon;
    if (in->structSize >= static_cast<int>(sizeof(XPLMWeatherInfo_t)) && in->radius_nm > 0)
        r.radiusNm = in->radius_nm;
    else
        r.radiusNm = kDefaultRadiusNm;
    r.values = fromInfo(*in, weatherAt(c, lat, lon));
    r.serial = ++c.weatherSerial;
    // One report per place and owner: a new one replaces it.
    for (WeatherReport& old : c.weatherReports)
        if (old.owner == r.owner && old.airport == airport && old.latDeg == lat && old.lonDeg == lon) {
            old = r;
            return;
        }
    c.weatherReports.push_back(r);
    record("world", "weather set by plug-in " + std::to_string(r.owner) +
                        (airport.empty() ? " at a place" : " at " + airport));
}

void erase(HostCore& c, const std::string& airport, double lat, double lon) {
    const int me = caller();
    for (size_t i = c.weatherReports.size(); i-- > 0;) {
        const WeatherReport& r = c.weatherReports[i];
        if (r.owner == me && r.airport == airport &&
            (!airport.empty() || (r.latDeg == lat && r.lonDeg == lon)))
            c.weatherReports.erase(c.weatherReports.begin() + static_cast<long>(i));
    }
}

std::string composeMetar(const std::string& icao, const Weather& w, double simTimeS) {
    // The sim's day starts at noon UTC on the 1st.
    const double t = simTimeS + kNoonS;
    const int day = 1 + static_cast<int>(t / kDayS) % 28;
    const int minuteOfDay = static_cast<int>(std::fmod(t, kDayS) / 60);
    const int hhmm = minuteOfDay / 60 * 100 + minuteOfDay % 60;
    char wind[32];
    const int dir = static_cast<int>(std::lround(w.windDirDeg / 10) * 10) % 360;
    const int kt = static_cast<int>(std::lround(w.windSpeedMps / kMetresPerSecondPerKnot));
    const int gust = static_cast<int>(std::lround(w.gustMps / kMetresPerSecondPerKnot));
    if (gust > kt)
        std::snprintf(wind, sizeof wind, "%03d%02dG%02dKT", dir, kt, gust);
    else
        std::snprintf(wind, sizeof wind, "%03d%02dKT", dir, kt);
    const int vis = w.visibilityM >= 9999 ? 9999 : static_cast<int>(w.visibilityM);
    std::string sky = "SKC";
    if (w.cloudCoverage > 0) {
        const char* cover = w.cloudCoverage < 0.25    ? "FEW"
                            : w.cloudCoverage < 0.5   ? "SCT"
                            : w.cloudCoverage < 0.875 ? "BKN"
                                                      : "OVC";
        char b[16];
        std::snprintf(b, sizeof b, "%s%03d", cover, static_cast<int>(w.cloudBaseM / 0.3048 / 100));
        sky = b;
    }
    auto temp = [](float t) {
        char b[8];
        std::snprintf(b, sizeof b, t < 0 ? "M%02d" : "%02d", static_cast<int>(std::lround(std::fabs(t))));
        return std::string(b);
    };
    char out[160];
    std::snprintf(out, sizeof out, "%s %02d%04dZ %s %04d %s %s/%s Q%04d", icao.c_str(), day, hhmm, wind, vis,
                  sky.c_str(), temp(w.temperatureC).c_str(), temp(w.dewpointC).c_str(),
                  static_cast<int>(std::lround(w.qnhPa / 100)));
    return out;
}

} // namespace
} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

void XPLMGetMETARForAirport(const char* airport_id, XPLMFixedString150_t* outMETAR) {
    HostCore* c = core();
    if (!outMETAR) return;
    outMETAR->buffer[0] = '\0';
    double lat = 0, lon = 0;
    if (!c || !airportAt(*c, airport_id, lat, lon)) return; // no report for an airport simhost does not have
    const simhost::Weather& w = weatherAt(*c, lat, lon);
    const std::string text = w.metar.empty() ? composeMetar(airport_id, w, c->simTime) : w.metar;
    const size_t n = std::min(text.size(), sizeof outMETAR->buffer - 1);
    std::memcpy(outMETAR->buffer, text.data(), n);
    outMETAR->buffer[n] = '\0';
}

int XPLMGetWeatherAtLocation(double latitude, double longitude, double altitude_m,
                             XPLMWeatherInfo_t* out_info) {
    HostCore* c = core();
    if (!c || !out_info || out_info->structSize < kVersion1Bytes) {
        apiError("XPLMGetWeatherAtLocation: missing info or a structSize below the first version");
        return 0;
    }
    const int size = std::min(out_info->structSize, static_cast<int>(sizeof(XPLMWeatherInfo_t)));
    XPLMWeatherInfo_t info{};
    const simhost::Weather& w = weatherAt(*c, latitude, longitude);
    const double above = std::max(0.0, altitude_m - c->opt.startElevationM);
    const double tK = w.temperatureC + kCelsiusToKelvin;
    info.structSize = out_info->structSize;
    info.temperature_alt = static_cast<float>(w.temperatureC - kLapseKPerM * above);
    info.dewpoint_alt = static_cast<float>(std::min<double>(w.dewpointC, info.temperature_alt));
    info.pressure_alt = static_cast<float>(
        w.qnhPa * std::pow(1 - kLapseKPerM * std::max(0.0, altitude_m) / tK, kBarometricExponent));
    info.precip_rate_alt = w.precipRatio;
    info.wind_dir_alt = w.windDirDeg;
    info.wind_spd_alt = w.windSpeedMps;
    info.visibility = w.visibilityM;
    info.precip_rate = w.precipRatio;
    info.pressure_sl = w.qnhPa;
    for (XPLMWeatherInfoWinds_t& l : info.wind_layers)
        l.speed = -1; // undefined
    info.wind_layers[0] = XPLMWeatherInfoWinds_t{static_cast<float>(c->opt.startElevationM),
                                                 w.windSpeedMps,
                                                 w.windDirDeg,
                                                 std::max(w.gustMps, w.windSpeedMps),
                                                 0,
                                                 0};
    if (w.cloudCoverage > 0)
        info.cloud_layers[0] = XPLMWeatherInfoClouds_t{0, w.cloudCoverage, w.cloudTopM, w.cloudBaseM};
    for (int i = 0; i < XPLM_NUM_TEMPERATURE_LAYERS; ++i) {
        info.temp_layers[i] = info.temperature_alt;
        info.dewp_layers[i] = info.dewpoint_alt;
    }
    info.radius_nm = kDefaultRadiusNm;
    info.max_altitude_msl_ft = XPLM_DEFAULT_WXR_RADIUS_MSL_FT;
    std::memcpy(out_info, &info, static_cast<size_t>(size)); // only what the caller's version holds
    double lat = 0, lon = 0;
    return airportAt(*c, "XSIM", lat, lon) &&
                   distanceM(latitude, longitude, lat, lon) <= kMetarReachNm * kMetresPerNm
               ? 1
               : 0;
}

void XPLMBeginWeatherUpdate(void) {
    if (HostCore* c = core()) c->weatherBatchStart = c->weatherSerial;
}

void XPLMEndWeatherUpdate(int isIncremental, int) {
    // Reports apply at once (there is no weather engine to delay them); a full update drops what the
    // plug-in had set before the batch began.
    HostCore* c = core();
    if (!c || c->weatherBatchStart < 0) return;
    const int me = caller();
    if (!isIncremental)
        for (size_t i = c->weatherReports.size(); i-- > 0;)
            if (c->weatherReports[i].owner == me && c->weatherReports[i].serial <= c->weatherBatchStart)
                c->weatherReports.erase(c->weatherReports.begin() + static_cast<long>(i));
    c->weatherBatchStart = -1;
}

void XPLMSetWeatherAtLocation(double latitude, double longitude, double, XPLMWeatherInfo_t* in_info) {
    if (HostCore* c = core()) setReport(*c, "", latitude, longitude, in_info);
}

void XPLMEraseWeatherAtLocation(double latitude, double longitude) {
    if (HostCore* c = core()) erase(*c, "", latitude, longitude);
}

void XPLMSetWeatherAtAirport(const char* airport_id, XPLMWeatherInfo_t* in_info) {
    HostCore* c = core();
    double lat = 0, lon = 0;
    if (!c) return;
    if (!airportAt(*c, airport_id, lat, lon)) {
        apiError(std::string("XPLMSetWeatherAtAirport: no airport ") + (airport_id ? airport_id : "(null)"));
        return;
    }
    setReport(*c, airport_id, lat, lon, in_info);
}

void XPLMEraseWeatherAtAirport(const char* airport_id) {
    if (HostCore* c = core(); c && airport_id) erase(*c, airport_id, 0, 0);
}

} // extern "C"
