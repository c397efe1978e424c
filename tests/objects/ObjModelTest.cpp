// The command table lookups and the point pool's indexing rules.
#include "objects/ObjModel.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(ObjCmdTable, LookupHonoursGeneration) {
    EXPECT_EQ(gCmdCount, 45);
    EXPECT_EQ(FindObjCmd("TRIS", false), 45);
    EXPECT_EQ(FindObjCmd("TRIS", true), 31);
    EXPECT_EQ(FindObjCmd("end", true), 45);
    EXPECT_EQ(FindObjCmd("end", false), 0);
    EXPECT_EQ(FindObjCmd("tri", true), 45);
    EXPECT_EQ(FindObjCmd("shade_smooth", true), 45);
    EXPECT_EQ(gCmds[FindObjCmd("shade_smooth", false)].id, 13);
    EXPECT_EQ(FindObjCmd("smoke_white", true), 8);
    EXPECT_EQ(FindObjCmd("smoke_white", false), 8);
}

TEST(ObjCmdTable, LookupIsExactAndCaseSensitive) {
    EXPECT_EQ(FindObjCmd("attr_lod", true), 45);
    EXPECT_EQ(FindObjCmd("ATTR_LO", true), 45);
    EXPECT_EQ(FindObjCmd("ATTR_LOD ", true), 45);
    EXPECT_EQ(FindObjCmd("", true), 45);
    EXPECT_EQ(FindObjCmd(nullptr, true), 45);
}

TEST(ObjCmdTable, MisspeltDiffuseSharesItsIdentifierWithTheFirstSpelling) {
    const int row = FindObjCmd("ATTR_difuse_rgb", false);
    EXPECT_EQ(row, 20);
    EXPECT_EQ(gCmds[row].id, 15);
    EXPECT_EQ(FindIndexForCmd(15), 19);
    EXPECT_STREQ(gCmds[FindIndexForCmd(12)].keyword, "ATTR_shade_flat");
    EXPECT_STREQ(gCmds[FindIndexForCmd(13)].keyword, "ATTR_shade_smooth");
}

TEST(ObjCmdTable, IdentifiersOutsideTheTableAreNotFound) {
    EXPECT_EQ(FindIndexForCmd(41), 45);
    EXPECT_EQ(FindIndexForCmd(-1), 45);
    EXPECT_EQ(FindIndexForCmd(1000), 45);
}

TEST(ObjCmdTable, EveryIdentifierBelowTheClosingOneHasARow) {
    // Each id's first spelling must be valid in the generation that writes it.
    for (int id = 0; id < attr_Max; ++id) {
        const int row = FindIndexForCmd(id);
        ASSERT_LT(row, gCmdCount) << id;
        EXPECT_TRUE(gCmds[row].inObj7 || gCmds[row].inObj8) << id;
    }
    EXPECT_EQ(gCmds[gCmdCount - 1].keyword, nullptr);
    EXPECT_EQ(gCmds[gCmdCount - 1].id, attr_Max);
    // The reversed pairs keep their identifiers.
    EXPECT_EQ(gCmds[FindObjCmd("quad_hard", false)].id, 5);
    EXPECT_EQ(gCmds[FindObjCmd("quad_cockpit", false)].id, 6);
    EXPECT_EQ(gCmds[FindObjCmd("ATTR_hard", true)].id, 35);
    EXPECT_EQ(gCmds[FindObjCmd("ATTR_no_hard", true)].id, 36);
}

TEST(ObjPointPool, AppendNeverSharesAccumulateDoes) {
    ObjPointPool pool;
    EXPECT_EQ(pool.depth, 8);
    pool.clear(6);
    const float p[6] = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(pool.append(p), 0);
    EXPECT_EQ(pool.append(p), 1);
    EXPECT_EQ(pool.count(), 2);
    EXPECT_EQ(pool.accumulate(p), 0);
    EXPECT_EQ(pool.count(), 2);

    float q[6] = {1, 2, 3, 4, 5, 6.0001f}; // any float differing makes a new point
    EXPECT_EQ(pool.accumulate(q), 2);
    EXPECT_EQ(pool.accumulate(q), 2);
    EXPECT_EQ(pool.count(), 3);
    EXPECT_FLOAT_EQ(pool.get(2)[5], 6.0001f);
}

TEST(ObjPointPool, SetKeepsTheOlderIndexEntryAndResizeForgetsIt) {
    ObjPointPool pool;
    pool.clear(6);
    pool.resize(3);
    EXPECT_EQ(pool.count(), 3);
    const float p[6] = {7, 7, 7, 1, 1, 1};
    pool.set(2, p);
    pool.set(0, p);
    EXPECT_EQ(pool.accumulate(p), 2); // the first set wins
    EXPECT_FLOAT_EQ(pool.get(0)[0], 7.0f);

    pool.resize(4);
    EXPECT_FLOAT_EQ(pool.get(3)[0], 0.0f);
    EXPECT_FLOAT_EQ(pool.get(2)[0], 7.0f); // data kept, but no longer findable
    EXPECT_EQ(pool.accumulate(p), 4);
    EXPECT_EQ(pool.count(), 5);
}

TEST(ObjPointPool, ClearSetsTheDepth) {
    ObjPointPool pool;
    const float p[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    pool.append(p);
    pool.clear(6);
    EXPECT_EQ(pool.count(), 0);
    EXPECT_TRUE(pool.index.empty());
    EXPECT_EQ(pool.depth, 6);
}

TEST(ObjPointPool, AppendRgbAndStLayOutTheRecords) {
    ObjPointPool tris;
    const vec_tex t{{1, 2, 3}, {0.25f, 0.75f}};
    EXPECT_EQ(append_st(&tris, t), 0);
    EXPECT_EQ(append_st(&tris, t), 1); // no sharing
    const float expectTri[8] = {1, 2, 3, 0, 0, 0, 0.25f, 0.75f};
    EXPECT_EQ(std::memcmp(tris.get(1), expectTri, sizeof(expectTri)), 0);

    ObjPointPool lines;
    lines.clear(6);
    const vec_rgb l{{4, 5, 6}, {0.1f, 0.2f, 0.3f}};
    EXPECT_EQ(append_rgb(&lines, l), 0);
    const float expectLine[6] = {4, 5, 6, 0.1f, 0.2f, 0.3f};
    EXPECT_EQ(std::memcmp(lines.get(0), expectLine, sizeof(expectLine)), 0);

    // A colour record on a pool of the wrong depth is padded, not read past its end.
    ObjPointPool wide; // depth 8
    append_rgb(&wide, l);
    EXPECT_EQ(wide.count(), 1);
    EXPECT_FLOAT_EQ(wide.get(0)[6], 0.0f);
}
