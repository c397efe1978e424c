// Datarefs: X-Plane's type and array rules, version profiles, the listing and
// orphaned accessors.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"

#include <algorithm>
#include <map>

namespace {

using DataRefs = SimhostTest;

XPLMDataRef find(const char* name) {
    return XPLMFindDataRef(name);
}

TEST_F(DataRefs, EachXPlaneVersionHasItsOwnNames) {
    const char* names[] = {"sim/flightmodel/position/theta",          "sim/flightmodel/position/the",
                           "sim/flightmodel/engine/ENGN_N1_",         "sim/flightmodel/engine/ENGN_N1",
                           "sim/graphics/settings/transparent_panel", "sim/graphics/colors/menu_bkgnd_rgb"};
    // Per version, whether each name is found ("1"), absent ("0") or not checked ("-").
    const std::pair<int, std::string> versions[] = {{12100, "101000"}, {720, "010111"}, {740, "1-10--"}};
    for (const auto& [version, found] : versions) {
        simhost::HostOptions o;
        o.xplaneVersion = version;
        start(o);
        for (size_t i = 0; i < found.size(); ++i) {
            if (found[i] != '-') {
                EXPECT_EQ(find(names[i]) != nullptr, found[i] == '1') << version << " " << names[i];
            }
        }
    }
    EXPECT_EQ(find("sim/no/such/dataref"), nullptr);
    EXPECT_EQ(find(nullptr), nullptr);
}

/// The type bits and size X-Plane's list gives a type text ("double", "float[56][2][2][721]", "byte[]").
int listedTypes(const std::string& type, int* size) {
    const std::string base = type.substr(0, type.find('['));
    *size = 1;
    for (size_t at = type.find('['); at != std::string::npos; at = type.find('[', at + 1))
        *size *= type[at + 1] == ']' ? 0 : std::stoi(type.substr(at + 1));
    if (type.find('[') == std::string::npos)
        return base == "int"     ? xplmType_Int
               : base == "float" ? xplmType_Float
                                 : xplmType_Float | xplmType_Double;
    return base == "int" ? xplmType_IntArray : base == "float" ? xplmType_FloatArray : xplmType_Data;
}

/// Writes a value as a plug-in (the last element of an array) and says whether it reads back. Each call
/// writes another number, so that a read-only dataref derived from one written before does not read back
/// as if it took the write.
bool writeSticks(XPLMDataRef r, int types, int size) {
    static int calls = 0;
    const int n = 7 + ++calls;
    if (types & xplmType_Double) {
        const double v = n + 0.25;
        XPLMSetDatad(r, v);
        return XPLMGetDataf(r) == static_cast<float>(v) && XPLMGetDatad(r) == v; // doubles read as floats too
    }
    if (types & xplmType_Float) {
        XPLMSetDataf(r, n + 0.5f);
        return XPLMGetDataf(r) == n + 0.5f;
    }
    if (types & xplmType_Int) {
        XPLMSetDatai(r, n);
        return XPLMGetDatai(r) == n;
    }
    if (size == 0) return false;
    if (types & xplmType_FloatArray) {
        float v = n + 0.5f, out = 0;
        XPLMSetDatavf(r, &v, size - 1, 1);
        return XPLMGetDatavf(r, &out, size - 1, 1) == 1 && out == v;
    }
    if (types & xplmType_IntArray) {
        int v = n, out = 0;
        XPLMSetDatavi(r, &v, size - 1, 1);
        return XPLMGetDatavi(r, &out, size - 1, 1) == 1 && out == v;
    }
    char v = 'x', out = 0;
    XPLMSetDatab(r, &v, size - 1, 1);
    return XPLMGetDatab(r, &out, size - 1, 1) == 1 && out == v;
}

int listedSize(XPLMDataRef r, int types) {
    if (types & xplmType_FloatArray) return XPLMGetDatavf(r, nullptr, 0, 0);
    if (types & xplmType_IntArray) return XPLMGetDatavi(r, nullptr, 0, 0);
    if (types & xplmType_Data) return XPLMGetDatab(r, nullptr, 0, 0);
    return 1;
}

TEST_F(DataRefs, EveryDataRefXPlane12ListsHasItsTypeSizeAndWritability) {
    // The host's clock counts the running time; a plug-in cannot set it back.
    const std::string kClock = "sim/time/total_running_time_sec";
    const auto rows = xplaneList("DataRefs.txt");
    ASSERT_GT(rows.size(), 5000u);
    // The TCAS override and the targets under it take writes from the plug-in holding the AI aircraft only.
    ASSERT_EQ(XPLMAcquirePlanes(nullptr, nullptr, nullptr), 1);
    XPLMSetDatai(find("sim/operation/override/override_TCAS"), 1);
    // Listed by index before anyone looked them up, and found by name as the same handles.
    const int count = XPLMCountDataRefs();
    std::vector<XPLMDataRef> all(static_cast<size_t>(count));
    XPLMGetDataRefsByIndex(0, count + 10, all.data()); // the count is clipped
    std::map<std::string, XPLMDataRef> listed;
    XPLMDataRefInfo_t info{};
    info.structSize = sizeof info;
    for (XPLMDataRef r : all) {
        XPLMGetDataRefInfo(r, &info);
        listed[info.name] = r;
    }
    for (const auto& row : rows) {
        const std::string& name = row[0];
        XPLMDataRef r = find(name.c_str());
        ASSERT_NE(r, nullptr) << name;
        EXPECT_EQ(listed[name], r) << name;
        int size = 0;
        const int types = listedTypes(row[1], &size);
        const bool writable = row[2] == "y" && name != kClock;
        XPLMGetDataRefInfo(r, &info);
        EXPECT_EQ(info.owner, 0) << name;
        EXPECT_EQ(info.type, types) << name;
        EXPECT_EQ(info.writable, writable ? 1 : 0) << name;
        EXPECT_EQ(XPLMGetDataRefTypes(r), types) << name;
        if (row[1] != "byte[]") { // a string of varying length
            EXPECT_EQ(listedSize(r, types), size) << name;
        }
        EXPECT_EQ(XPLMCanWriteDataRef(r), writable ? 1 : 0) << name;
        EXPECT_EQ(writeSticks(r, types, size), writable && size > 0) << name;
    }
    EXPECT_EQ(XPLMCountDataRefs(), count);
    EXPECT_FALSE(XPLMIsDataRefGood(nullptr));
    int notADataRef = 0; // an address simhost never handed out: refused however often it is asked
    for (int ask = 0; ask < 2; ++ask) {
        EXPECT_FALSE(XPLMIsDataRefGood(&notADataRef));
        EXPECT_EQ(XPLMGetDataRefTypes(&notADataRef), 0);
    }
}

/// The names XPLMGetDataRefsByIndex lists, in index order, with XPLMCountDataRefs items asked for.
std::vector<std::string> listedNames() {
    std::vector<XPLMDataRef> all(static_cast<size_t>(XPLMCountDataRefs()), nullptr);
    XPLMGetDataRefsByIndex(0, static_cast<int>(all.size()), all.data());
    std::vector<std::string> names;
    XPLMDataRefInfo_t info{};
    info.structSize = sizeof info;
    for (XPLMDataRef r : all) {
        if (!r) return {}; // fewer listed than counted
        XPLMGetDataRefInfo(r, &info);
        names.push_back(info.name);
    }
    return names;
}

TEST_F(DataRefs, RemovedDataRefsAreGoneFromLookupCountAndListingAlike) {
    auto has = [](const std::vector<std::string>& v, const char* n) {
        return std::find(v.begin(), v.end(), n) != v.end();
    };
    std::vector<std::string> names = listedNames();
    ASSERT_EQ(names.size(), static_cast<size_t>(XPLMCountDataRefs()));
    EXPECT_TRUE(has(names, "sim/flightmodel/position/theta"));
    EXPECT_FALSE(has(names, "sim/flightmodel/position/the")); // X-Plane 12 has no such name
    EXPECT_FALSE(has(names, "sim/graphics/colors/menu_bkgnd_rgb"));

    ASSERT_NE(find("sim/joystick/has_joystick"), nullptr);
    host->removeDataRef("sim/joystick/has_joystick");
    EXPECT_EQ(find("sim/joystick/has_joystick"), nullptr);
    EXPECT_FALSE(host->exists("sim/joystick/has_joystick"));
    const std::vector<std::string> after = listedNames();
    EXPECT_EQ(after.size(), names.size() - 1);
    EXPECT_FALSE(has(after, "sim/joystick/has_joystick"));
    // The ones after it move up one place; the last is still listed.
    EXPECT_EQ(after.back(), names.back());
}

TEST_F(DataRefs, WritesOfTheWrongTypeAreIgnoredAndTheSimWritesReadOnlyOnes) {
    XPLMDataRef brake = find("sim/flightmodel/controls/parkbrake"); // float
    XPLMSetDataf(brake, 0.25f);
    XPLMSetDatai(brake, 1);
    XPLMSetDatad(brake, 1.0);
    EXPECT_FLOAT_EQ(XPLMGetDataf(brake), 0.25f);
    EXPECT_EQ(XPLMGetDatai(brake) + XPLMGetDatad(brake), 0);
    XPLMDataRef localX = find("sim/flightmodel/position/local_x"); // double: float and double both work
    XPLMSetDataf(localX, 12.5f);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(localX), 12.5);
    // The sim sets a dataref read-only to plug-ins.
    host->set("sim/joystick/has_joystick", 0);
    EXPECT_EQ(XPLMGetDatai(find("sim/joystick/has_joystick")), 0);
}

TEST_F(DataRefs, ArrayAndByteReadsReturnSizeForNullAndClipOffsetAndCount) {
    XPLMDataRef n1 = find("sim/flightmodel/engine/ENGN_N1_");
    EXPECT_EQ(XPLMGetDatavf(n1, nullptr, 5, 2), 16);
    float in[3] = {10, 20, 30};
    XPLMSetDatavf(n1, in, 14, 3); // only two fit
    float out[4] = {-1, -1, -1, -1};
    EXPECT_EQ(XPLMGetDatavf(n1, out, 13, 4), 3);
    EXPECT_EQ(std::vector<float>(out, out + 4), (std::vector<float>{0, 10, 20, -1})); // the last untouched
    EXPECT_EQ(XPLMGetDatavf(n1, out, 16, 4) + XPLMGetDatavf(n1, out, -1, 4), 0);
    EXPECT_EQ(XPLMGetDatavi(n1, nullptr, 0, 0), 0); // not an int array
    XPLMDataRef tail = find("sim/aircraft/view/acf_tailnum");
    char part[3] = {};
    EXPECT_EQ(XPLMGetDatab(tail, nullptr, 0, 0), 40);
    EXPECT_EQ(XPLMGetDatab(tail, part, 2, 2), 2);
    EXPECT_EQ(std::string(part, 2), "AK");
    EXPECT_EQ(host->getString("sim/aircraft/view/acf_tailnum"), "D-AKLV");

    simhost::HostOptions o;
    o.xplaneVersion = 900; // X-Plane 9: eight engines
    start(o);
    EXPECT_EQ(XPLMGetDatavf(find("sim/flightmodel/engine/ENGN_N1_"), nullptr, 0, 0), 8);
}

/// A published int whose accessors read and write `value` through the refcon.
struct Published {
    int value = 7;
};

int readInt(void* refcon) {
    return static_cast<Published*>(refcon)->value;
}
void writeInt(void* refcon, int v) {
    static_cast<Published*>(refcon)->value = v;
}

XPLMDataRef publish(Published& p, const char* name) {
    return XPLMRegisterDataAccessor(name, xplmType_Int, 1, readInt, writeInt, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &p, &p);
}

TEST_F(DataRefs, UnloadedOwnersDataRefsAreOrphansUntilReRegistered) {
    const int owner = addOther("test.owner");
    Published p;
    host->setDirectCaller(owner);
    XPLMDataRef r = publish(p, "test/orphan");
    host->setDirectCaller(me);
    EXPECT_EQ(XPLMGetDatai(r), 7);
    Published thief;
    EXPECT_EQ(publish(thief, "test/orphan"), nullptr); // a live name cannot be taken over

    host->disablePlugin(owner);
    EXPECT_EQ(XPLMGetDatai(r), 0); // owner disabled
    host->enablePlugin(owner);
    EXPECT_EQ(XPLMGetDatai(r), 7);

    host->unloadPlugin(owner);
    EXPECT_EQ(XPLMFindDataRef("test/orphan"), r); // the handle stays valid
    EXPECT_FALSE(XPLMIsDataRefGood(r));
    EXPECT_EQ(XPLMGetDatai(r), 0);
    XPLMSetDatai(r, 5);
    EXPECT_EQ(p.value, 7);

    Published again;
    again.value = 9;
    EXPECT_EQ(publish(again, "test/orphan"), r); // adopted by the new owner
    EXPECT_EQ(XPLMGetDatai(r), 9);

    XPLMUnregisterDataAccessor(r);
    EXPECT_EQ(XPLMGetDatai(r), 0);
}

} // namespace
