// The world: aircraft profiles, the gear arrays of old and new hosts and the
// aircraft's state behind its datarefs.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMGraphics.h"
#include "XPLMScenery.h"

#include <cmath>

namespace {

using World = SimhostTest;

/// A host of today and one of X-Plane 7.20, which names the engines' N1 differently.
struct HostNames {
    int xplaneVersion;
    const char* n1;
};
constexpr HostNames kHostNames[] = {
    {12100, "sim/flightmodel/engine/ENGN_N1_"},
    {720, "sim/flightmodel/engine/ENGN_N1"},
};

TEST_F(World, AProfileFillsTheGeometryDataRefsAnUnknownOneIsRefused) {
    simhost::HostOptions o;
    o.aircraft = "B744";
    o.startHeadingDeg = 270;
    start(o);
    EXPECT_EQ(host->geti("sim/aircraft/engine/acf_num_engines"), 4);
    EXPECT_NEAR(host->getf("sim/aircraft/parts/acf_gear_znodef", 0), -23.5, 1e-4);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/psi"), 270, 1e-3);
    EXPECT_EQ(host->getString("sim/aircraft/view/acf_ICAO"), "B744");
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
