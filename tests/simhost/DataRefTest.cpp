// Datarefs: X-Plane's type and array rules, version profiles, accessor routing
// and orphaning.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"

#include <cstring>
#include <map>

namespace {

using DataRefs = SimhostTest;

XPLMDataRef find(const char* name) {
    return XPLMFindDataRef(name);
}

TEST_F(DataRefs, UnknownAndVersionGatedNamesAreNullOnXPlane12) {
    EXPECT_EQ(find("sim/no/such/dataref"), nullptr);
    EXPECT_EQ(find("sim/flightmodel/position/the"), nullptr);
    EXPECT_EQ(find("sim/flightmodel/engine/ENGN_N1"), nullptr);
    EXPECT_EQ(find("sim/graphics/settings/transparent_panel"), nullptr);
    EXPECT_EQ(find("sim/graphics/colors/menu_bkgnd_rgb"), nullptr);
    EXPECT_NE(find("sim/flightmodel/position/theta"), nullptr);
    EXPECT_NE(find("sim/flightmodel/engine/ENGN_N1_"), nullptr);
    EXPECT_EQ(find(nullptr), nullptr);
}

TEST_F(DataRefs, OldHostsHaveTheOldNamesAndNotTheNewOnes) {
    simhost::HostOptions o;
    o.xplaneVersion = 720;
    start(o);
    EXPECT_NE(find("sim/flightmodel/position/the"), nullptr);
    EXPECT_EQ(find("sim/flightmodel/position/theta"), nullptr);
    EXPECT_NE(find("sim/flightmodel/engine/ENGN_N1"), nullptr);
    EXPECT_EQ(find("sim/flightmodel/engine/ENGN_N1_"), nullptr);
    EXPECT_NE(find("sim/graphics/settings/transparent_panel"), nullptr);
    EXPECT_NE(find("sim/graphics/colors/menu_bkgnd_rgb"), nullptr);

    o.xplaneVersion = 740; // 7.40: N1_ renamed, pitch already theta
    start(o);
    EXPECT_NE(find("sim/flightmodel/engine/ENGN_N1_"), nullptr);
    EXPECT_EQ(find("sim/flightmodel/engine/ENGN_N1"), nullptr);
    EXPECT_NE(find("sim/flightmodel/position/theta"), nullptr);
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

/// Writes a value as a plug-in (the last element of an array) and says whether it reads back.
bool writeSticks(XPLMDataRef r, int types, int size) {
    if (types & xplmType_Double) {
        XPLMSetDatad(r, 7.25);
        return XPLMGetDataf(r) == 7.25f && XPLMGetDatad(r) == 7.25; // X-Plane's doubles read as floats too
    }
    if (types & xplmType_Float) {
        XPLMSetDataf(r, 7.5f);
        return XPLMGetDataf(r) == 7.5f;
    }
    if (types & xplmType_Int) {
        XPLMSetDatai(r, 7);
        return XPLMGetDatai(r) == 7;
    }
    if (size == 0) return false;
    if (types & xplmType_FloatArray) {
        float v = 7.5f, out = 0;
        XPLMSetDatavf(r, &v, size - 1, 1);
        return XPLMGetDatavf(r, &out, size - 1, 1) == 1 && out == v;
    }
    if (types & xplmType_IntArray) {
        int v = 7, out = 0;
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
    // Listed by index before anyone looked them up, and found by name as the same handles.
    const int count = XPLMCountDataRefs();
    std::vector<XPLMDataRef> all(static_cast<size_t>(count));
    XPLMGetDataRefsByIndex(0, count, all.data());
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
        EXPECT_EQ(XPLMGetDataRefTypes(r), types) << name;
        if (row[1] != "byte[]") { // a string of varying length
            EXPECT_EQ(listedSize(r, types), size) << name;
        }
        EXPECT_EQ(XPLMCanWriteDataRef(r), writable ? 1 : 0) << name;
        EXPECT_EQ(writeSticks(r, types, size), writable && size > 0) << name;
    }
    EXPECT_EQ(XPLMCountDataRefs(), count);
}

TEST_F(DataRefs, RemovedDataRefDisappearsFromLookup) {
    ASSERT_NE(find("sim/joystick/has_joystick"), nullptr);
    host->removeDataRef("sim/joystick/has_joystick");
    EXPECT_EQ(find("sim/joystick/has_joystick"), nullptr);
    EXPECT_FALSE(host->exists("sim/joystick/has_joystick"));
}

TEST_F(DataRefs, TypesAndWritabilityFollowXPlane12) {
    XPLMDataRef localX = find("sim/flightmodel/position/local_x");
    EXPECT_EQ(XPLMGetDataRefTypes(localX), xplmType_Float | xplmType_Double);
    EXPECT_EQ(XPLMGetDataRefTypes(find("sim/flightmodel/position/q")), xplmType_FloatArray);
    EXPECT_EQ(XPLMGetDataRefTypes(find("sim/aircraft/view/acf_tailnum")), xplmType_Data);
    EXPECT_TRUE(XPLMCanWriteDataRef(localX));
    EXPECT_FALSE(XPLMCanWriteDataRef(find("sim/time/paused")));
    EXPECT_FALSE(XPLMCanWriteDataRef(find("sim/cockpit/electrical/cockpit_lights_on")));
    EXPECT_FALSE(XPLMCanWriteDataRef(find("sim/graphics/view/view_type")));
    EXPECT_TRUE(XPLMIsDataRefGood(localX));
    EXPECT_FALSE(XPLMIsDataRefGood(nullptr));
    int notADataRef = 0; // an address simhost never handed out: refused however often it is asked
    for (int ask = 0; ask < 2; ++ask) {
        EXPECT_FALSE(XPLMIsDataRefGood(&notADataRef));
        EXPECT_EQ(XPLMGetDataRefTypes(&notADataRef), 0);
    }
}

TEST_F(DataRefs, WrongTypeReadsZeroAndWritesNothing) {
    XPLMDataRef brake = find("sim/flightmodel/controls/parkbrake"); // float
    XPLMSetDataf(brake, 0.25f);
    EXPECT_FLOAT_EQ(XPLMGetDataf(brake), 0.25f);
    EXPECT_EQ(XPLMGetDatai(brake), 0);
    EXPECT_EQ(XPLMGetDatad(brake), 0.0);
    XPLMSetDatai(brake, 1);
    XPLMSetDatad(brake, 1.0);
    EXPECT_FLOAT_EQ(XPLMGetDataf(brake), 0.25f);

    XPLMDataRef localX = find("sim/flightmodel/position/local_x"); // double: float and double both work
    XPLMSetDataf(localX, 12.5f);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(localX), 12.5);
    XPLMSetDatad(localX, -3.25);
    EXPECT_FLOAT_EQ(XPLMGetDataf(localX), -3.25f);
}

TEST_F(DataRefs, ReadOnlyDataRefIgnoresPluginWritesButTheSimCanSetIt) {
    XPLMDataRef joy = find("sim/joystick/has_joystick");
    XPLMSetDatai(joy, 0);
    EXPECT_EQ(XPLMGetDatai(joy), 1);
    host->set("sim/joystick/has_joystick", 0);
    EXPECT_EQ(XPLMGetDatai(joy), 0);
}

TEST_F(DataRefs, ArrayReadsReturnSizeForNullAndClipOffsetAndCount) {
    XPLMDataRef n1 = find("sim/flightmodel/engine/ENGN_N1_");
    EXPECT_EQ(XPLMGetDatavf(n1, nullptr, 5, 2), 16);
    float in[3] = {10, 20, 30};
    XPLMSetDatavf(n1, in, 14, 3); // only two fit
    float out[4] = {-1, -1, -1, -1};
    EXPECT_EQ(XPLMGetDatavf(n1, out, 13, 4), 3);
    EXPECT_FLOAT_EQ(out[0], 0);
    EXPECT_FLOAT_EQ(out[1], 10);
    EXPECT_FLOAT_EQ(out[2], 20);
    EXPECT_FLOAT_EQ(out[3], -1); // untouched
    EXPECT_EQ(XPLMGetDatavf(n1, out, 16, 4), 0);
    EXPECT_EQ(XPLMGetDatavf(n1, out, -1, 4), 0);
    EXPECT_EQ(XPLMGetDatavi(n1, nullptr, 0, 0), 0); // not an int array

    simhost::HostOptions o;
    o.xplaneVersion = 900; // X-Plane 9: eight engines
    start(o);
    EXPECT_EQ(XPLMGetDatavf(find("sim/flightmodel/engine/ENGN_N1_"), nullptr, 0, 0), 8);
}

TEST_F(DataRefs, ByteDataReadsTheTailNumber) {
    XPLMDataRef tail = find("sim/aircraft/view/acf_tailnum");
    EXPECT_EQ(XPLMGetDatab(tail, nullptr, 0, 0), 40);
    char buf[41] = {};
    EXPECT_EQ(XPLMGetDatab(tail, buf, 0, 40), 40);
    EXPECT_STREQ(buf, "D-AKLV");
    EXPECT_EQ(host->getString("sim/aircraft/view/acf_tailnum"), "D-AKLV");
    char part[3] = {};
    EXPECT_EQ(XPLMGetDatab(tail, part, 2, 2), 2);
    EXPECT_EQ(std::string(part, 2), "AK");
}

// A published int and float array with separate read and write refcons.
struct Published {
    int value = 7;
    float arr[3] = {1, 2, 3};
    int readerId = -2, writerId = -2;
};

int readInt(void* refcon) {
    auto* p = static_cast<Published*>(refcon);
    p->readerId = XPLMGetMyID();
    return p->value;
}
void writeInt(void* refcon, int v) {
    auto* p = static_cast<Published*>(refcon);
    p->writerId = XPLMGetMyID();
    p->value = v;
}
int readArr(void* refcon, float* out, int offset, int max) {
    auto* p = static_cast<Published*>(refcon);
    if (!out) return 3;
    int n = 0;
    for (int i = offset; i < 3 && n < max; ++i)
        out[n++] = p->arr[i];
    return n;
}

XPLMDataRef publish(Published& p, const char* name) {
    return XPLMRegisterDataAccessor(name, xplmType_Int | xplmType_FloatArray, 1, readInt, writeInt, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr, readArr, nullptr, nullptr,
                                    nullptr, &p, &p);
}

TEST_F(DataRefs, AccessorsAreCalledAsTheirOwnerWithTheirRefcons) {
    Published p;
    XPLMDataRef r = publish(p, "test/value");
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(XPLMFindDataRef("test/value"), r);

    const int other = addOther("test.other");
    host->setDirectCaller(other); // another plug-in reads and writes it
    EXPECT_EQ(XPLMGetDatai(r), 7);
    XPLMSetDatai(r, 42);
    EXPECT_EQ(p.value, 42);
    EXPECT_EQ(p.readerId, me);
    EXPECT_EQ(p.writerId, me);
    EXPECT_EQ(XPLMGetDataf(r), 0.0f); // no float accessor
    float out[3] = {};
    EXPECT_EQ(XPLMGetDatavf(r, nullptr, 0, 0), 3);
    EXPECT_EQ(XPLMGetDatavf(r, out, 1, 5), 2);
    EXPECT_FLOAT_EQ(out[1], 3);
    EXPECT_EQ(host->geti("test/value"), 42);

    // A second plug-in cannot take over a live name.
    Published q;
    EXPECT_EQ(publish(q, "test/value"), nullptr);
}

TEST_F(DataRefs, UnloadedOwnersDataRefsAreOrphansUntilReRegistered) {
    const int owner = addOther("test.owner");
    Published p;
    host->setDirectCaller(owner);
    XPLMDataRef r = publish(p, "test/orphan");
    host->setDirectCaller(me);
    EXPECT_EQ(XPLMGetDatai(r), 7);

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

void countChange(void* refcon) {
    ++*static_cast<int*>(refcon);
}

TEST_F(DataRefs, SharedDataIsOneValueEverySharerHearsAbout) {
    int mine = 0, theirs = 0;
    ASSERT_EQ(XPLMShareData("test/shared/flag", xplmType_Int, countChange, &mine), 1);
    const int other = addOther("test.other");
    host->setDirectCaller(other);
    EXPECT_EQ(XPLMShareData("test/shared/flag", xplmType_Float, countChange, &theirs), 0); // other type
    ASSERT_EQ(XPLMShareData("test/shared/flag", xplmType_Int, countChange, &theirs), 1);
    XPLMDataRef r = XPLMFindDataRef("test/shared/flag");
    XPLMSetDatai(r, 3);
    EXPECT_EQ(mine, 1);
    EXPECT_EQ(theirs, 1);
    host->unloadPlugin(other);
    host->setDirectCaller(me);
    XPLMSetDatai(r, 4); // the data outlives the plug-in that shared it
    EXPECT_EQ(XPLMGetDatai(r), 4);
    EXPECT_EQ(mine, 2);
    EXPECT_EQ(theirs, 1);
    EXPECT_EQ(XPLMShareData("sim/time/paused", xplmType_Int, nullptr, nullptr), 0);

    ASSERT_EQ(XPLMShareData("test/shared/blob", xplmType_Data, nullptr, nullptr), 1);
    XPLMDataRef blob = XPLMFindDataRef("test/shared/blob");
    EXPECT_EQ(XPLMGetDatab(blob, nullptr, 0, 0), 0);
    char text[] = "KLM123";
    XPLMSetDatab(blob, text, 0, 7); // grows to hold what is written
    EXPECT_EQ(host->getString("test/shared/blob"), "KLM123");
    EXPECT_EQ(XPLMUnshareData("test/shared/flag", xplmType_Int, countChange, &mine), 1);
    EXPECT_EQ(XPLMUnshareData("test/shared/flag", xplmType_Int, countChange, &mine), 0);
}

TEST_F(DataRefs, IntrospectionListsEveryDataRef) {
    const int count = XPLMCountDataRefs();
    ASSERT_GT(count, 50);
    std::vector<XPLMDataRef> all(static_cast<size_t>(count));
    XPLMGetDataRefsByIndex(0, count + 10, all.data()); // count clipped
    XPLMDataRefInfo_t info{};
    info.structSize = sizeof info;
    bool sawQ = false;
    for (XPLMDataRef r : all) {
        XPLMGetDataRefInfo(r, &info);
        if (std::strcmp(info.name, "sim/flightmodel/position/q") == 0) {
            sawQ = true;
            EXPECT_EQ(info.type, xplmType_FloatArray);
            EXPECT_EQ(info.writable, 1);
            EXPECT_EQ(info.owner, 0);
        }
    }
    EXPECT_TRUE(sawQ);
}

} // namespace
