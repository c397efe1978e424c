// Reading aircraft profiles.
#include "AircraftProfile.h"
#include "utils/Utf8Path.h"

#include <cmath>
#include <fstream>
#include <sstream>

#ifndef SIMHOST_AIRCRAFT_DIR
#define SIMHOST_AIRCRAFT_DIR "aircraft"
#endif

namespace simhost::detail {

namespace {

constexpr size_t kMaxGear = 10;    ///< X-Plane's gear arrays hold ten gear
constexpr int kMaxEngines = 8;     ///< Aircraft keeps per-engine state for eight
constexpr size_t kMaxTextLen = 39; ///< acf_tailnum is 40 bytes with its terminator

std::string trim(const std::string& s) {
    size_t b = s.find_first_not_of(" \t\r");
    if (b == std::string::npos) return "";
    size_t e = s.find_last_not_of(" \t\r");
    return s.substr(b, e - b + 1);
}

bool number(const std::string& s, double& out) {
    std::istringstream in(s);
    in >> out;
    return in && std::isfinite(out) && (in >> std::ws).eof();
}

} // namespace

bool parseAircraftProfile(const std::string& text, Aircraft& out, std::string* error) {
    Aircraft a;
    std::istringstream in(text);
    std::string line;
    int lineNo = 0;
    auto fail = [&](const std::string& why) {
        if (error) *error = "line " + std::to_string(lineNo) + ": " + why;
        return false;
    };
    while (std::getline(in, line)) {
        ++lineNo;
        size_t hash = line.find('#');
        if (hash != std::string::npos) line.erase(hash);
        line = trim(line);
        if (line.empty()) continue;
        size_t eq = line.find('=');
        if (eq == std::string::npos) return fail("expected 'key = value'");
        std::string key = trim(line.substr(0, eq));
        std::string value = trim(line.substr(eq + 1));
        double v = 0;
        if (key == "type" || key == "name" || key == "tail") {
            if (value.size() > kMaxTextLen && key != "name")
                return fail(key + " is longer than 39 characters");
            (key == "type" ? a.type : key == "name" ? a.name : a.tailNumber) = value;
        } else if (key == "gear") {
            std::istringstream g(value);
            Aircraft::Gear gear;
            if (!(g >> gear.x >> gear.y >> gear.z >> gear.legLength >> gear.tyreRadius))
                return fail("gear needs five numbers: x y z leg_length tyre_radius");
            if (a.gear.size() >= kMaxGear) return fail("more than ten gear");
            a.gear.push_back(gear);
        } else if (!number(value, v)) {
            return fail("'" + value + "' is not a number");
        } else if (key == "size_x") {
            a.sizeX = v;
        } else if (key == "size_z") {
            a.sizeZ = v;
        } else if (key == "engines") {
            if (v < 1 || v > kMaxEngines || v != std::floor(v)) return fail("engines must be 1 to 8");
            a.engineCount = static_cast<int>(v);
        } else if (key == "tail_dragger") {
            a.tailDragger = v != 0;
        } else if (key == "ground_pitch") {
            a.groundPitchDeg = v;
        } else if (key == "empty_weight") {
            a.emptyWeightKg = v;
        } else if (key == "mtow") {
            a.mtowKg = v;
        } else if (key == "battery_volts") {
            a.batteryVolts = v;
        } else {
            return fail("unknown key '" + key + "'");
        }
    }
    lineNo = 0;
    if (a.type.empty()) return fail("no type");
    if (a.gear.size() < 2) return fail("at least two gear (nose or tail, then main) are needed");
    if (a.tailNumber.empty()) a.tailNumber = "N" + a.type;
    out = a;
    return true;
}

bool loadAircraftProfile(const std::string& nameOrPath, const std::string& dir, Aircraft& out,
                         std::string* error) {
    std::string path = nameOrPath;
    if (path.find('/') == std::string::npos)
        path = (dir.empty() ? std::string(SIMHOST_AIRCRAFT_DIR) : dir) + "/" + path + ".acp";
    std::ifstream f(HV_FileUtils::PathFromUtf8(path));
    if (!f) {
        if (error) *error = "cannot read aircraft profile " + path;
        return false;
    }
    std::stringstream buf;
    buf << f.rdbuf();
    std::string why;
    if (!parseAircraftProfile(buf.str(), out, &why)) {
        if (error) *error = path + ": " + why;
        return false;
    }
    return true;
}

} // namespace simhost::detail
