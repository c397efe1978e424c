// Datarefs: X-Plane's list with its types, sizes and writability, array rules
// and orphaned accessors.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"

#include <map>

namespace {

using DataRefs = SimhostTest;

XPLMDataRef find(const char* name) {
    return XPLMFindDataRef(name);
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
    EXPECT_EQ(find("sim/no/such/dataref"), nullptr);
    EXPECT_EQ(find(nullptr), nullptr);
    EXPECT_FALSE(XPLMIsDataRefGood(nullptr));
    int notADataRef = 0; // an address simhost never handed out: refused however often it is asked
    for (int ask = 0; ask < 2; ++ask) {
        EXPECT_FALSE(XPLMIsDataRefGood(&notADataRef));
        EXPECT_EQ(XPLMGetDataRefTypes(&notADataRef), 0);
    }
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
