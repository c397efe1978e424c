// The keyword table's lookups and the point pool's sharing rules, which the readers and converters build on.
#include "objects/ObjModel.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(ObjCmdTable, EveryCommandHasAFirstSpellingValidInSomeGeneration) {
    // The writers write each identifier in its first spelling; the misspelt diffuse colour shares one.
    for (int id = 0; id < attr_Max; ++id) {
        const int row = FindIndexForCmd(id);
        ASSERT_LT(row, gCmdCount) << id;
        EXPECT_TRUE(gCmds[row].inObj7 || gCmds[row].inObj8) << id;
    }
    EXPECT_EQ(gCmds[FindObjCmd("ATTR_difuse_rgb", false)].id, attr_Diffuse_RGB);
    EXPECT_STREQ(gCmds[FindIndexForCmd(attr_Diffuse_RGB)].keyword, "ATTR_diffuse_rgb");
    for (int outside : {int(attr_Max), -1, 1000})
        EXPECT_EQ(FindIndexForCmd(outside), gCmdCount) << outside;
    EXPECT_EQ(FindObjCmd("TRIS", false), gCmdCount) << "an OBJ8 word in OBJ7";
    EXPECT_EQ(FindObjCmd("ATTR_LOD ", true), gCmdCount) << "lookups are exact";
}

TEST(ObjPointPool, AppendNeverSharesAccumulateSharesOnlyIndexedPoints) {
    ObjPointPool pool;
    pool.clear(6);
    const float p[6] = {1, 2, 3, 4, 5, 6}, q[6] = {1, 2, 3, 4, 5, 6.0001f};
    EXPECT_EQ(pool.append(p), 0);
    EXPECT_EQ(pool.append(p), 1);
    EXPECT_EQ(pool.accumulate(p), 0);
    EXPECT_EQ(pool.accumulate(q), 2); // any float differing makes a new point
    EXPECT_EQ(pool.accumulate(q), 2);
    EXPECT_EQ(pool.count(), 3);

    // set() keeps the older index entry; resize() forgets the index but keeps the data.
    const float r[6] = {7, 7, 7, 1, 1, 1};
    pool.set(2, r);
    pool.set(0, r);
    EXPECT_EQ(pool.accumulate(r), 2);
    pool.resize(4);
    EXPECT_FLOAT_EQ(pool.get(3)[0], 0.0f);
    EXPECT_FLOAT_EQ(pool.get(2)[0], 7.0f);
    EXPECT_EQ(pool.accumulate(r), 4);
    pool.clear(8);
    EXPECT_EQ(pool.count(), 0);
    EXPECT_TRUE(pool.index.empty());
}

TEST(ObjPointPool, RecordsAreLaidOutByDepthAndNeverReadPastTheirEnd) {
    ObjPointPool tris;
    const vec_tex t{{1, 2, 3}, {0.25f, 0.75f}};
    EXPECT_EQ(append_st(&tris, t), 0);
    EXPECT_EQ(append_st(&tris, t), 1);
    const float expectTri[8] = {1, 2, 3, 0, 0, 0, 0.25f, 0.75f};
    EXPECT_EQ(std::memcmp(tris.get(1), expectTri, sizeof(expectTri)), 0);

    ObjPointPool lines;
    lines.clear(6);
    const vec_rgb l{{4, 5, 6}, {0.1f, 0.2f, 0.3f}};
    EXPECT_EQ(append_rgb(&lines, l), 0);
    const float expectLine[6] = {4, 5, 6, 0.1f, 0.2f, 0.3f};
    EXPECT_EQ(std::memcmp(lines.get(0), expectLine, sizeof(expectLine)), 0);
    ObjPointPool wide; // depth 8: the colour record is padded
    append_rgb(&wide, l);
    EXPECT_EQ(wide.count(), 1);
    EXPECT_FLOAT_EQ(wide.get(0)[6], 0.0f);
}
