// The keyword table's lookups, which the readers and writers build on.
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
