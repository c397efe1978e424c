// Objects and instances: reference counts, checks at load and a moved local
// origin.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMInstance.h"
#include "XPLMScenery.h"
#include "XPLMUtilities.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

class Scenery : public SimhostTest {
protected:
    /// Writes a minimal OBJ8 file into the sandbox and returns its path relative to it.
    std::string writeObj(const std::string& name, const std::string& header = "I\n800\nOBJ\n") {
        std::ofstream(host->sandbox() + name) << header << "POINT_COUNTS 0 0 0 0\n";
        return name;
    }
};

TEST_F(Scenery, ObjectsAreReferenceCountedAndCheckedAtLoad) {
    const std::string tug = writeObj("tug.obj");
    XPLMObjectRef a = XPLMLoadObject(tug.c_str());
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(XPLMLoadObject((host->sandbox() + tug).c_str()), a); // same file, same handle
    EXPECT_EQ(host->loadedObjects().size(), 2u);
    XPLMUnloadObject(a);
    EXPECT_EQ(host->loadedObjects().size(), 1u);
    XPLMUnloadObject(a);
    EXPECT_TRUE(host->loadedObjects().empty());

    EXPECT_EQ(XPLMLoadObject("missing.obj"), nullptr);
    EXPECT_EQ(XPLMLoadObject(writeObj("text.obj", "hello\nworld\nagain\n").c_str()), nullptr);
    EXPECT_EQ(XPLMLoadObject(nullptr), nullptr);
    EXPECT_NE(XPLMLoadObject(writeObj("crlf.obj", "A\r\n800\r\nOBJ\r\n").c_str()), nullptr);
}

TEST_F(Scenery, AMovedOriginKeepsTheWorldInPlaceButNotUnshiftedInstances) {
    simhost::HostOptions options;
    options.xplmVersion = 420; // XPLMInstanceSetAutoShift
    start(options);
    XPLMObjectRef obj = XPLMLoadObject(writeObj("cone.obj").c_str());
    const char* none[] = {nullptr};
    XPLMInstanceRef plain = XPLMCreateInstance(obj, none);
    XPLMInstanceRef shifted = XPLMCreateInstance(obj, none);
    ASSERT_TRUE(plain && shifted);
    using AutoShift = void (*)(XPLMInstanceRef);
    auto autoShift = reinterpret_cast<AutoShift>(XPLMFindSymbol("XPLMInstanceSetAutoShift"));
    ASSERT_NE(autoShift, nullptr);
    autoShift(shifted);
    const XPLMDrawInfo_t where{sizeof(XPLMDrawInfo_t), 120, 432, -80, 0, 0, 0};
    XPLMInstanceSetPosition(plain, &where, nullptr);
    XPLMInstanceSetPosition(shifted, &where, nullptr);
    host->set("sim/flightmodel/position/local_x", 30.0);
    host->runFrames(1);

    double spotLat = 0, spotLon = 0, spotAlt = 0; // where both instances stand
    XPLMLocalToWorld(120, 432, -80, &spotLat, &spotLon, &spotAlt);
    const double planeLat = host->getf("sim/flightmodel/position/latitude");
    const double planeLon = host->getf("sim/flightmodel/position/longitude");
    const double refLat = host->getf("sim/flightmodel/position/lat_ref");
    const double refLon = host->getf("sim/flightmodel/position/lon_ref");

    host->shiftLocalOrigin(refLat + 0.05, refLon - 0.08);
    host->runFrames(1);
    // The aircraft has new local coordinates for the same spot, and did not "move" at ground speed.
    EXPECT_NEAR(host->getf("sim/flightmodel/position/latitude"), planeLat, 1e-9);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/longitude"), planeLon, 1e-9);
    EXPECT_NEAR(host->getf("sim/flightmodel/position/local_z"), 5559.75, 1.0)
        << "0.05 degrees (5.56 km) south of the new origin";
    EXPECT_NEAR(host->getf("sim/flightmodel/position/groundspeed"), 0.0, 1e-6);

    double x = 0, y = 0, z = 0;
    XPLMWorldToLocal(spotLat, spotLon, spotAlt, &x, &y, &z);
    const std::vector<simhost::InstanceInfo> shown = host->instances(); // a copy: hold it while reading
    ASSERT_EQ(shown.size(), 2u);
    const simhost::InstanceInfo& p = shown[0];
    const simhost::InstanceInfo& s = shown[1];
    EXPECT_DOUBLE_EQ(p.x, 120) << "kept its old coordinates: it now stands kilometres away";
    EXPECT_DOUBLE_EQ(p.z, -80);
    EXPECT_NEAR(s.x, x, 1e-6) << "auto-shifted: still on its spot";
    EXPECT_NEAR(s.z, z, 1e-6);
    EXPECT_GT(std::hypot(x - 120, z + 80), 5000.0);
}

} // namespace
