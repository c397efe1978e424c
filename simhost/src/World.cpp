// The world: one user aircraft on a flat apron, kept in X-Plane's own datarefs.
//
// Local frame: +x east, +y up, +z south (metres), origin at sea level below the
// reference point. The apron is the plane y = elevation. The attitude follows
// the quaternion q (X-Plane's master orientation): psi/theta/phi written alone
// are re-derived from q at the next frame, as when X-Plane's flight model runs.
#include "HostInternal.h"
#include "WorldMath.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace simhost::detail {

namespace {

constexpr double kIdleN1Percent = 20.0;   ///< N1 of an engine started through the control API
constexpr double kRunningN1Percent = 5.0; ///< above this N1 an engine counts as running
constexpr int kOldGearBase = 67;          ///< hosts before 8.00 keep the nose gear at 67
constexpr double kTouchSlackM =
    0.01; ///< held this little above its parked height, the aircraft still rests on its wheels

DataRefRec& ref(HostCore& c, const char* name) {
    return *c.datarefByName.at(name);
}
double& val(HostCore& c, const char* name, size_t i = 0) {
    return ref(c, name).values.at(i);
}
/// The value of a scalar dataref (the first element of an array one).
double& first(DataRefRec* r) {
    return r->values.at(0);
}

/// Height of the reference point above the apron when parked, metres: the main gear's tyres touch the
/// apron at the profile's ground pitch (body frame y up, z aft: a nose-up pitch lifts what is ahead).
double parkedHeight(const Aircraft& a) {
    if (a.gear.size() < 2) return 0;
    const Aircraft::Gear& g = a.gear[1];
    const double pitch = a.groundPitchDeg * kDegToRad;
    const double contactY = g.y - g.legLength - g.tyreRadius; // the tyre's lowest point, body frame
    return -(contactY * std::cos(pitch) - g.z * std::sin(pitch));
}

void writeAttitude(HostCore& c, double psi, double theta, double phi) {
    first(c.sim.psi) = wrap360(psi);
    first(c.sim.phi) = phi;
    first(c.sim.pitch()) = theta;
    float q[4];
    eulerToQuaternion(psi, theta, phi, q);
    auto& qv = c.sim.q->values;
    for (int i = 0; i < 4; ++i)
        qv.at(static_cast<size_t>(i)) = q[i];
}

void updateGeodetic(HostCore& c) {
    const SimRefs& r = c.sim;
    double lat = 0, lon = 0, alt = 0;
    localToWorld(refLat(c), refLon(c), first(r.localX), first(r.localY), first(r.localZ), lat, lon, alt);
    first(r.latitude) = lat;
    first(r.longitude) = lon;
    first(r.elevation) = alt;
}

/// Remembers the aircraft's live state as now in the datarefs.
void rememberLive(HostCore& c) {
    const Aircraft& a = c.aircraft;
    WorldRec::Live& s = c.world.shadow;
    std::copy(std::begin(a.engineRunning), std::end(a.engineRunning), s.engineRunning);
    std::copy(std::begin(a.n1Percent), std::end(a.n1Percent), s.n1Percent);
    s.batteryVolts = a.batteryVolts;
    s.parkingBrake = a.parkingBrake;
}

/// True when the caller changed the aircraft's live state since it was last synchronised.
bool liveEdited(const HostCore& c) {
    const Aircraft& a = c.aircraft;
    const WorldRec::Live& s = c.world.shadow;
    return !std::equal(std::begin(a.n1Percent), std::end(a.n1Percent), s.n1Percent) ||
           !std::equal(std::begin(a.engineRunning), std::end(a.engineRunning), s.engineRunning) ||
           a.batteryVolts != s.batteryVolts || a.parkingBrake != s.parkingBrake;
}

/// One of X-Plane's own datarefs from its table (made on first use), or nullptr when this host hides it.
DataRefRec* xplaneRef(const char* name) {
    DataRefRec* r = findDataRefRec(name);
    return r && !r->removed ? r : nullptr;
}

void setText(const char* name, const std::string& text) {
    DataRefRec* r = xplaneRef(name);
    if (!r) return;
    if (r->values.empty() && r->bytes.empty()) {
        r->bytes = text; // a string of varying length (byte[])
        return;
    }
    std::fill(r->bytes.begin(), r->bytes.end(), '\0');
    if (!r->bytes.empty())
        std::copy_n(text.begin(), std::min(text.size(), r->bytes.size() - 1), r->bytes.begin());
}

void setOnGround(HostCore& c, bool onGround) {
    DataRefRec* r = xplaneRef("sim/flightmodel2/gear/on_ground"); // one flag per gear
    if (!r) return;
    for (size_t i = 0; i < r->values.size(); ++i)
        r->values[i] = onGround && i < c.aircraft.gear.size() ? 1 : 0;
}

/// What X-Plane tells of the user aircraft beyond its geometry: its type and its file.
void describeAircraft(HostCore& c) {
    const std::string& type = c.aircraft.type;
    setText("sim/aircraft/view/acf_ICAO", type);
    setText("sim/aircraft/view/acf_relative_path", "Aircraft/" + type + "/" + type + ".acf");
}

} // namespace

void worldBindRefs(HostCore& c) {
    auto bind = [](const char* name) {
        DataRefRec* r = findDataRefRec(name);
        if (!r || r->values.empty()) throw std::logic_error(std::string("simhost: no dataref ") + name);
        return r;
    };
    SimRefs& r = c.sim;
    r.localX = bind("sim/flightmodel/position/local_x");
    r.localY = bind("sim/flightmodel/position/local_y");
    r.localZ = bind("sim/flightmodel/position/local_z");
    r.psi = bind("sim/flightmodel/position/psi");
    r.theta = bind("sim/flightmodel/position/theta");
    r.the = bind("sim/flightmodel/position/the");
    r.phi = bind("sim/flightmodel/position/phi");
    r.q = bind("sim/flightmodel/position/q");
    r.magpsi = bind("sim/flightmodel/position/magpsi");
    r.magPsi = bind("sim/flightmodel/position/mag_psi");
    r.groundspeed = bind("sim/flightmodel/position/groundspeed");
    r.yAgl = bind("sim/flightmodel/position/y_agl");
    r.latitude = bind("sim/flightmodel/position/latitude");
    r.longitude = bind("sim/flightmodel/position/longitude");
    r.elevation = bind("sim/flightmodel/position/elevation");
    r.n1 = bind("sim/flightmodel/engine/ENGN_N1_");
    r.n1Old = bind("sim/flightmodel/engine/ENGN_N1");
    r.batteryVolts = bind("sim/flightmodel/engine/ENGN_bat_volt");
    r.batteryActual = bind("sim/cockpit2/electrical/battery_voltage_actual_volts");
    r.parkBrake = bind("sim/flightmodel/controls/parkbrake");
    r.runningTime = bind("sim/time/total_running_time_sec");
}

void worldReset(HostCore& c) {
    const Aircraft& a = c.aircraft;
    const bool oldGear = c.opt.xplaneVersion < 800;
    const char* gearNames[5] = {"sim/aircraft/parts/acf_gear_xnodef", "sim/aircraft/parts/acf_gear_ynodef",
                                "sim/aircraft/parts/acf_gear_znodef", "sim/aircraft/parts/acf_gear_leglen",
                                "sim/aircraft/parts/acf_gear_tirrad"};
    for (const char* n : gearNames)
        std::fill(ref(c, n).values.begin(), ref(c, n).values.end(), 0.0);
    for (size_t i = 0; i < a.gear.size(); ++i) {
        size_t slot = oldGear ? kOldGearBase + i : i;
        const Aircraft::Gear& g = a.gear[i];
        const double fields[5] = {g.x, g.y, g.z, g.legLength, g.tyreRadius};
        for (int f = 0; f < 5; ++f) {
            auto& v = ref(c, gearNames[f]).values;
            if (slot < v.size()) v[slot] = fields[f];
        }
    }
    val(c, "sim/aircraft/view/acf_size_x") = a.sizeX;
    val(c, "sim/aircraft/view/acf_size_z") = a.sizeZ;
    val(c, "sim/aircraft/engine/acf_num_engines") = a.engineCount;
    std::string& tail = ref(c, "sim/aircraft/view/acf_tailnum").bytes;
    std::fill(tail.begin(), tail.end(), '\0');
    std::copy_n(a.tailNumber.begin(), std::min(a.tailNumber.size(), tail.size() - 1), tail.begin());
    describeAircraft(c);
    setOnGround(c, true);

    // The aircraft starts on the apron at the origin of an unmoved local frame.
    c.refLatDeg = static_cast<float>(c.opt.startLatDeg);
    c.refLonDeg = static_cast<float>(c.opt.startLonDeg);
    c.world.groundY = c.opt.startElevationM;
    c.world.holdAgl = -1;
    c.world.commandedSpeed = 0;
    val(c, "sim/flightmodel/position/local_x") = 0;
    val(c, "sim/flightmodel/position/local_z") = 0;
    val(c, "sim/flightmodel/position/local_y") = c.world.groundY + parkedHeight(a);
    val(c, "sim/flightmodel/position/lat_ref") = refLat(c);
    val(c, "sim/flightmodel/position/lon_ref") = refLon(c);
    val(c, "sim/flightmodel/position/y_agl") = parkedHeight(a);
    val(c, "sim/flightmodel/position/groundspeed") = 0;
    writeAttitude(c, c.opt.startHeadingDeg, a.groundPitchDeg, 0);
    c.world.magneticVariationDeg = 0;
    val(c, "sim/flightmodel/position/magpsi") = val(c, "sim/flightmodel/position/psi");
    val(c, "sim/flightmodel/position/mag_psi") = val(c, "sim/flightmodel/position/psi");
    c.world.prevX = 0;
    c.world.prevZ = 0;
    c.world.qWritten = false;
    ref(c, "sim/flightmodel/position/q").onWrite = [&c](DataRefRec&) { c.world.qWritten = true; };
    updateGeodetic(c);

    // Engines off, battery at its rest voltage, brake set: a parked aircraft.
    std::fill(c.sim.engineN1()->values.begin(), c.sim.engineN1()->values.end(), 0.0);
    auto& volts = ref(c, "sim/flightmodel/engine/ENGN_bat_volt").values;
    std::fill(volts.begin(), volts.end(), 0.0);
    for (int i = 0; i < a.engineCount && i < static_cast<int>(volts.size()); ++i)
        volts[static_cast<size_t>(i)] = a.batteryVolts;
    if (!ref(c, "sim/cockpit2/electrical/battery_voltage_actual_volts").removed)
        val(c, "sim/cockpit2/electrical/battery_voltage_actual_volts") = a.batteryVolts;
    val(c, "sim/flightmodel/controls/parkbrake") = a.parkingBrake ? 1 : 0;
    for (int i = 0; i < 8; ++i) {
        c.aircraft.engineRunning[i] = false;
        c.aircraft.n1Percent[i] = 0;
    }
    rememberLive(c);
}

void worldSetAttitude(HostCore& c, double psi, double theta, double phi) {
    writeAttitude(c, psi, theta, phi);
}

void worldShiftOrigin(HostCore& c, double refLatDeg, double refLonDeg) {
    const double oldLat = refLat(c), oldLon = refLon(c);
    const float newLat = static_cast<float>(refLatDeg), newLon = static_cast<float>(refLonDeg);
    // Same spot of the world, coordinates of the new frame.
    auto move = [&](double& x, double& y, double& z) {
        double lat = 0, lon = 0, alt = 0;
        localToWorld(oldLat, oldLon, x, y, z, lat, lon, alt);
        worldToLocal(newLat, newLon, lat, lon, alt, x, y, z);
    };
    move(val(c, "sim/flightmodel/position/local_x"), val(c, "sim/flightmodel/position/local_y"),
         val(c, "sim/flightmodel/position/local_z"));
    double y = 0;
    move(c.world.prevX, y, c.world.prevZ); // the ground speed sees no jump
    // Instances stay at their old coordinates, now another spot, unless they asked to be shifted.
    for (InstanceRec& i : c.instances)
        if (i.alive && i.autoShift) move(i.info.x, i.info.y, i.info.z);
    c.refLatDeg = newLat;
    c.refLonDeg = newLon;
    val(c, "sim/flightmodel/position/lat_ref") = newLat;
    val(c, "sim/flightmodel/position/lon_ref") = newLon;
    updateGeodetic(c);
}

void worldHoldHeight(HostCore& c, double aglM) {
    c.world.holdAgl = aglM;
    val(c, "sim/flightmodel/position/local_y") = c.world.groundY + aglM;
    val(c, "sim/flightmodel/position/y_agl") = aglM;
    setOnGround(c, aglM <= parkedHeight(c.aircraft) + kTouchSlackM);
}

double worldParkedHeight(const HostCore& c) {
    return parkedHeight(c.aircraft);
}

// Aircraft (the live state a Host caller edits) and the datarefs: worldSync writes the caller's edits
// into the datarefs and reads them all back; worldPushEdits does so only when there are edits (cheap
// otherwise, for every read); worldPullState only reads back.
void worldSync(HostCore& c) {
    const Aircraft& a = c.aircraft;
    const WorldRec::Live& s = c.world.shadow;
    auto& n1 = c.sim.engineN1()->values;
    for (int i = 0; i < 8 && i < static_cast<int>(n1.size()); ++i) {
        if (a.n1Percent[i] != s.n1Percent[i]) {
            n1[static_cast<size_t>(i)] = a.n1Percent[i];
        } else if (a.engineRunning[i] != s.engineRunning[i]) {
            n1[static_cast<size_t>(i)] = a.engineRunning[i] ? kIdleN1Percent : 0.0;
        }
    }
    if (a.batteryVolts != s.batteryVolts) {
        auto& volts = c.sim.batteryVolts->values;
        for (int i = 0; i < a.engineCount && i < static_cast<int>(volts.size()); ++i)
            volts[static_cast<size_t>(i)] = a.batteryVolts;
        if (!c.sim.batteryActual->removed) first(c.sim.batteryActual) = a.batteryVolts;
    }
    if (a.parkingBrake != s.parkingBrake) first(c.sim.parkBrake) = a.parkingBrake ? 1 : 0;
    worldPullState(c);
}

void worldPushEdits(HostCore& c) {
    if (liveEdited(c)) worldSync(c);
}

void worldPullState(HostCore& c) {
    Aircraft& a = c.aircraft;
    const auto& n1 = c.sim.engineN1()->values;
    for (int i = 0; i < 8; ++i) {
        double v = i < static_cast<int>(n1.size()) ? n1[static_cast<size_t>(i)] : 0.0;
        a.n1Percent[i] = v;
        a.engineRunning[i] = v > kRunningN1Percent;
    }
    a.batteryVolts = first(c.sim.batteryVolts);
    a.parkingBrake = first(c.sim.parkBrake) > 0.5;
    rememberLive(c);
}

void worldStep(HostCore& c, double dt) {
    const SimRefs& r = c.sim;
    double& x = first(r.localX);
    double& z = first(r.localZ);
    // q is the master orientation: the Euler angles follow it every frame.
    const auto& qv = r.q->values;
    float q[4] = {static_cast<float>(qv.at(0)), static_cast<float>(qv.at(1)), static_cast<float>(qv.at(2)),
                  static_cast<float>(qv.at(3))};
    double psi = 0, theta = 0, phi = 0;
    if (quaternionToEuler(q, psi, theta, phi)) {
        first(r.psi) = psi;
        first(r.pitch()) = theta;
        first(r.phi) = phi;
    }
    c.world.qWritten = false;
    psi = first(r.psi);
    if (c.world.commandedSpeed != 0) {
        // Taxiing under the control API: along the heading, psi 0 = -z.
        x += std::sin(psi * kDegToRad) * c.world.commandedSpeed * dt;
        z -= std::cos(psi * kDegToRad) * c.world.commandedSpeed * dt;
    }
    const double parked = parkedHeight(c.aircraft);
    const double agl = c.world.holdAgl >= 0 ? c.world.holdAgl : parked;
    first(r.localY) = c.world.groundY + agl;
    first(r.yAgl) = agl;
    if (dt > 0) first(r.groundspeed) = std::hypot(x - c.world.prevX, z - c.world.prevZ) / dt;
    c.world.prevX = x;
    c.world.prevZ = z;
    first(r.magpsi) = wrap360(psi - c.world.magneticVariationDeg);
    first(r.magPsi) = wrap360(psi - c.world.magneticVariationDeg);
    updateGeodetic(c);
}

} // namespace simhost::detail
