// The world: attitude from the quaternion, groundspeed from displacement, the
// apron, aircraft profiles and the gear arrays of old and new hosts.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMGraphics.h"
#include "XPLMScenery.h"

#include <cmath>

namespace {

using World = SimhostTest;

constexpr double kDeg = 3.14159265358979323846 / 180;

/// X-Plane's quaternion for heading, pitch, roll (degrees).
void quaternion(double psi, double theta, double phi, float q[4]) {
    const double a = psi * kDeg / 2, b = theta * kDeg / 2, c = phi * kDeg / 2;
    q[0] =
        static_cast<float>(std::cos(a) * std::cos(b) * std::cos(c) + std::sin(a) * std::sin(b) * std::sin(c));
    q[1] =
        static_cast<float>(std::cos(a) * std::cos(b) * std::sin(c) - std::sin(a) * std::sin(b) * std::cos(c));
    q[2] =
        static_cast<float>(std::cos(a) * std::sin(b) * std::cos(c) + std::sin(a) * std::cos(b) * std::sin(c));
    q[3] = static_cast<float>(-std::cos(a) * std::sin(b) * std::sin(c) +
                              std::sin(a) * std::cos(b) * std::cos(c));
}

/// A host of today and one of X-Plane 7.20, which names the pitch and the engines' N1 differently.
struct HostNames {
    int xplaneVersion;
    const char* pitch;
    const char* n1;
};
constexpr HostNames kHostNames[] = {
    {12100, "sim/flightmodel/position/theta", "sim/flightmodel/engine/ENGN_N1_"},
    {720, "sim/flightmodel/position/the", "sim/flightmodel/engine/ENGN_N1"},
};

TEST_F(World, WritingQTurnsTheAircraft) {
    for (const HostNames& h : kHostNames) {
        simhost::HostOptions o;
        o.xplaneVersion = h.xplaneVersion;
        start(o);
        XPLMDataRef q = XPLMFindDataRef("sim/flightmodel/position/q");
        for (double psi : {0.0, 37.5, 90.0, 181.0, 359.0}) {
            float v[4];
            quaternion(psi, 2.5, -1.5, v);
            XPLMSetDatavf(q, v, 0, 4);
            host->runFrames(1);
            EXPECT_NEAR(host->getf("sim/flightmodel/position/psi"), psi, 1e-3) << psi;
            EXPECT_NEAR(host->getf(h.pitch), 2.5, 1e-3) << h.xplaneVersion;
            EXPECT_NEAR(host->getf("sim/flightmodel/position/phi"), -1.5, 1e-3);
        }
    }
    // psi written alone by a plug-in does not stick: q is the master. The sim itself turns the aircraft.
    XPLMSetDataf(XPLMFindDataRef("sim/flightmodel/position/psi"), 120);
    host->runFrames(1);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/psi"), 359, 1e-3);
    host->set("sim/flightmodel/position/psi", 120);
    host->runFrames(1);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/psi"), 120, 1e-3);
}

TEST_F(World, GroundspeedComesFromTheDisplacementPerFrame) {
    XPLMDataRef x = XPLMFindDataRef("sim/flightmodel/position/local_x");
    XPLMDataRef z = XPLMFindDataRef("sim/flightmodel/position/local_z");
    for (int i = 1; i <= 10; ++i) {
        // 0.03 m east and 0.04 m south each frame: 0.05 m per 1/60 s = 3 m/s.
        XPLMSetDatad(x, 0.03 * i);
        XPLMSetDatad(z, 0.04 * i);
        host->runFrames(1);
    }
    EXPECT_NEAR(host->getf("sim/flightmodel/position/groundspeed"), 3.0, 1e-3);
    host->runFrames(1);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/groundspeed"), 0.0, 1e-9);
    // Moving south-east lowers the latitude and raises the longitude.
    EXPECT_LT(host->getf("sim/flightmodel/position/latitude"), host->options().startLatDeg);
    EXPECT_GT(host->getf("sim/flightmodel/position/longitude"), host->options().startLonDeg);
}

TEST_F(World, GeodeticPositionAgreesWithTheLocalFrameConversions) {
    host->set("sim/flightmodel/position/local_x", 250.0);
    host->set("sim/flightmodel/position/local_z", -1200.0);
    host->runFrames(1);
    double x = 0, y = 0, z = 0;
    XPLMWorldToLocal(host->getf("sim/flightmodel/position/latitude"),
                     host->getf("sim/flightmodel/position/longitude"),
                     host->getf("sim/flightmodel/position/elevation"), &x, &y, &z);
    EXPECT_NEAR(x, 250.0, 0.01);
    EXPECT_NEAR(z, -1200.0, 0.01);
    EXPECT_NEAR(y, host->getf("sim/flightmodel/position/local_y"), 0.01);
}

TEST_F(World, AircraftStaysOnTheApronUnlessFlown) {
    const double parked = host->getf("sim/flightmodel/position/local_y");
    const auto& main = host->aircraft().gear[1];
    EXPECT_NEAR(parked, host->options().startElevationM - main.y + main.legLength + main.tyreRadius, 1e-6);
    XPLMSetDatad(XPLMFindDataRef("sim/flightmodel/position/local_y"), parked + 50);
    host->runFrames(1);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/local_y"), parked, 1e-6);
    host->set("sim/flightmodel/position/y_agl", 300);
    host->set("sim/flightmodel/position/groundspeed", 80);
    host->runFrames(2);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/y_agl"), 300, 1e-3);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/groundspeed"), 80, 1e-3);
    EXPECT_EQ(host->geti("sim/flightmodel2/gear/on_ground", 1), 0);
    host->set("sim/flightmodel/position/y_agl",
              parked - host->options().startElevationM); // back on its wheels
    EXPECT_EQ(host->geti("sim/flightmodel2/gear/on_ground", 1), 1);
}

TEST_F(World, AProfileFillsTheGeometryDataRefsAnUnknownOneIsRefused) {
    simhost::HostOptions o;
    o.aircraft = "B744";
    o.startHeadingDeg = 270;
    start(o);
    EXPECT_EQ(host->geti("sim/aircraft/engine/acf_num_engines"), 4);
    EXPECT_NEAR(host->getf("sim/aircraft/parts/acf_gear_znodef", 0), -23.5, 1e-4);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/psi"), 270, 1e-3);
    EXPECT_EQ(host->getString("sim/aircraft/view/acf_ICAO"), "B744");
    EXPECT_EQ(host->getString("sim/aircraft/view/acf_relative_path"), "Aircraft/B744/B744.acf");
    EXPECT_EQ(host->geti("sim/flightmodel2/gear/on_ground", 4), 1); // five gear, all on the apron
    EXPECT_EQ(host->geti("sim/flightmodel2/gear/on_ground", 5), 0);
    o.aircraft = "NOPE";
    EXPECT_THROW(start(o), std::runtime_error);
    EXPECT_EQ(simhost::Host::current(), nullptr);
}

TEST_F(World, OldHostsKeepTheGearAt67And68) {
    simhost::HostOptions o;
    o.aircraft = "C172";
    o.xplaneVersion = 799;
    start(o);
    EXPECT_NEAR(host->getf("sim/aircraft/parts/acf_gear_znodef", 67), -1.40, 1e-4);
    EXPECT_NEAR(host->getf("sim/aircraft/parts/acf_gear_leglen", 68), 0.50, 1e-4);
    EXPECT_FLOAT_EQ(host->getf("sim/aircraft/parts/acf_gear_znodef", 0), 0);
    o.xplaneVersion = 800;
    start(o);
    EXPECT_NEAR(host->getf("sim/aircraft/parts/acf_gear_znodef", 0), -1.40, 1e-4);
}

TEST_F(World, TailDraggerSitsNoseUp) {
    simhost::HostOptions o;
    o.aircraft = "DC3";
    start(o);
    EXPECT_TRUE(host->aircraft().tailDragger);
    EXPECT_GT(host->getf("sim/aircraft/parts/acf_gear_znodef", 0), 0); // tail wheel aft
    host->runFrames(1);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/theta"), 11.5, 1e-3);
    // Tail wheel and mains all stand on the apron (body frame y up, z aft; nose-up lifts what is ahead).
    const double pitch = 11.5 * M_PI / 180.0;
    const double refY = host->getf("sim/flightmodel/position/local_y");
    for (const simhost::Aircraft::Gear& g : host->aircraft().gear) {
        const double contactY = g.y - g.legLength - g.tyreRadius;
        EXPECT_NEAR(refY + contactY * std::cos(pitch) - g.z * std::sin(pitch), o.startElevationM, 0.02)
            << "gear at z " << g.z;
    }
}

TEST_F(World, AircraftStateEditsReachTheDataRefsAndBack) {
    for (const HostNames& h : kHostNames) {
        simhost::HostOptions o;
        o.xplaneVersion = h.xplaneVersion;
        start(o);
        simhost::Aircraft& a = host->aircraft();
        EXPECT_TRUE(a.parkingBrake);
        a.parkingBrake = false;
        a.engineRunning[1] = true;
        EXPECT_FLOAT_EQ(host->getf("sim/flightmodel/controls/parkbrake"), 0);
        EXPECT_GT(host->getf(h.n1, 1), 5) << h.xplaneVersion;
        EXPECT_FLOAT_EQ(host->getf(h.n1, 0), 0);
        // A plug-in writing the brake is seen by the control side after the frame.
        XPLMSetDataf(XPLMFindDataRef("sim/flightmodel/controls/parkbrake"), 1);
        host->runFrames(1);
        EXPECT_TRUE(a.parkingBrake);
    }
}

} // namespace
