// Objects and instances: reference counts, per-instance data, library paths,
// a moved local origin, and clean-up when the owner unloads. Also which draw
// phases exist.
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
    EXPECT_EQ(XPLMLoadObject(("./" + tug).c_str()), a); // same file, same handle
    EXPECT_EQ(XPLMLoadObject((host->sandbox() + tug).c_str()), a);
    EXPECT_EQ(host->loadedObjects().size(), 3u);
    XPLMUnloadObject(a);
    XPLMUnloadObject(a);
    EXPECT_EQ(host->loadedObjects().size(), 1u);
    XPLMUnloadObject(a);
    EXPECT_TRUE(host->loadedObjects().empty());

    EXPECT_EQ(XPLMLoadObject("missing.obj"), nullptr);
    EXPECT_EQ(XPLMLoadObject(writeObj("text.obj", "hello\nworld\nagain\n").c_str()), nullptr);
    EXPECT_EQ(XPLMLoadObject(nullptr), nullptr);
    EXPECT_NE(XPLMLoadObject(writeObj("crlf.obj", "A\r\n800\r\nOBJ\r\n").c_str()), nullptr);

    // Another plug-in's objects and instances go when it unloads.
    const int other = addOther("test.scenery");
    host->setDirectCaller(other);
    const char* none[] = {nullptr};
    XPLMCreateInstance(XPLMLoadObject(tug.c_str()), none);
    EXPECT_EQ(host->registrations(other).size(), 2u);
    host->unloadPlugin(other);
    EXPECT_TRUE(host->instances().empty());
    EXPECT_EQ(host->loadedObjects().size(), 1u); // the CRLF one, still mine
}

TEST_F(Scenery, InstancesKeepTheirObjectPositionAndData) {
    XPLMObjectRef obj = XPLMLoadObject(writeObj("gpu.obj").c_str());
    const char* names[] = {"halvern/kalvora/wheel_deg",
                           "sim/graphics/animation/ground_traffic/tire_steer_deg", nullptr};
    XPLMInstanceRef inst = XPLMCreateInstance(obj, names);
    ASSERT_NE(inst, nullptr);
    XPLMUnloadObject(obj); // the instance holds its own reference
    XPLMDrawInfo_t where{sizeof(XPLMDrawInfo_t), 10, 432, -20, 0, 135, 0};
    const float data[2] = {12.5f, -3};
    XPLMInstanceSetPosition(inst, &where, data);
    ASSERT_EQ(host->instances().size(), 1u);
    const simhost::InstanceInfo info = host->instances()[0];
    EXPECT_EQ(info.pluginId, me);
    EXPECT_TRUE(info.positioned);
    EXPECT_DOUBLE_EQ(info.z, -20);
    EXPECT_FLOAT_EQ(info.heading, 135);
    EXPECT_EQ(info.datarefs.size(), 2u);
    EXPECT_EQ(info.data, (std::vector<float>{12.5f, -3}));
    where.structSize = 12; // a wrong size is refused, the position stays
    where.x = 99;
    XPLMInstanceSetPosition(inst, &where, data);
    EXPECT_DOUBLE_EQ(host->instances()[0].x, 10);
    XPLMDestroyInstance(inst);
    EXPECT_TRUE(host->instances().empty());
    EXPECT_EQ(XPLMCreateInstance(obj, names), nullptr); // the object is gone now
}

void collect(const char* path, void* ref) {
    static_cast<std::vector<std::string>*>(ref)->push_back(path);
}

TEST_F(Scenery, LibraryPathsResolveThroughThePackagesLibraryFiles) {
    const std::string root = host->sandbox();
    auto package = [&](const std::string& dir, const std::string& library) {
        std::filesystem::create_directories(root + dir);
        std::ofstream(root + dir + "/library.txt") << "A\n800\nLIBRARY\n\n" << library;
    };
    package("Custom Scenery/B Airport", "EXPORT lib/tug.obj objects/tug.obj\n"
                                        "EXPORT_EXTEND lib/tug.obj objects\\tug blue.obj\n");
    package("Custom Scenery/A Vehicles", "EXPORT lib/tug.obj tugs/red.obj\r\n"
                                         "EXPORT lib/tug.obj tugs/white.obj\r\n"
                                         "EXPORT_BACKUP lib/cone.obj cones/cone.obj\r\n");
    package("Resources/default scenery/lib", "EXPORT lib/tug.obj default/tug.obj\n"
                                             "EXPORT_BACKUP lib/cart.obj default/cart.obj\n"
                                             "EXPORT lib/cone.obj default/cone.obj\n");

    std::vector<std::string> found;
    // The first package by name sets the tug; the other's EXPORT is overridden, its EXTEND adds.
    EXPECT_EQ(XPLMLookupObjects("lib/tug.obj", 47.5f, 8.5f, collect, &found), 3);
    EXPECT_EQ(found, (std::vector<std::string>{"Custom Scenery/A Vehicles/tugs/red.obj",
                                               "Custom Scenery/A Vehicles/tugs/white.obj",
                                               "Custom Scenery/B Airport/objects/tug blue.obj"}));
    found.clear();
    EXPECT_EQ(XPLMLookupObjects("lib/cone.obj", 0, 0, collect, &found), 1) << "a backup only when alone";
    EXPECT_EQ(found, (std::vector<std::string>{"Resources/default scenery/lib/default/cone.obj"}));
    EXPECT_EQ(XPLMLookupObjects("lib/cart.obj", 0, 0, nullptr, nullptr), 1);
    EXPECT_EQ(XPLMLookupObjects("lib/none.obj", 0, 0, collect, &found), 0);
    EXPECT_EQ(XPLMLookupObjects(nullptr, 0, 0, collect, &found), 0);
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
    EXPECT_FLOAT_EQ(host->getf("sim/flightmodel/position/lat_ref"), static_cast<float>(refLat + 0.05));
    EXPECT_FLOAT_EQ(host->getf("sim/flightmodel/position/lon_ref"), static_cast<float>(refLon - 0.08));
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

int countDraws(XPLMDrawingPhase, int, void* refcon) {
    ++*static_cast<int*>(refcon);
    return 1;
}

TEST_F(Scenery, DrawPhasesThatExistAndNoDrawingWithoutRendering) {
    int draws = 0;
    EXPECT_EQ(XPLMRegisterDrawCallback(countDraws, xplm_Phase_Airplanes, 0, &draws), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(countDraws, xplm_Phase_Window, 1, &draws), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(countDraws, 7, 1, &draws), 0);
    EXPECT_EQ(XPLMRegisterDrawCallback(countDraws, 100, 1, &draws), 0); // map phases: gone in XPLM 3
    host->runFrames(3);
    EXPECT_FALSE(host->renderingAvailable()); // rendering is off by default
    EXPECT_EQ(draws, 0);
    EXPECT_EQ(XPLMUnregisterDrawCallback(countDraws, xplm_Phase_Airplanes, 0, &draws), 1);
    EXPECT_EQ(XPLMUnregisterDrawCallback(countDraws, xplm_Phase_Airplanes, 0, &draws), 0);
}

} // namespace
