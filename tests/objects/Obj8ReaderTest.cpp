// Reading version-800 files: header rules, levels, early stop and bounds.
#include "ObjTestSupport.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"

using objtest::Read8;

namespace {
const std::string kHeader = "A\n800\nOBJ\n\n";
} // namespace

TEST(Obj8Reader, RefusesWhatIsNotAVersion800ObjectAndLeavesNothingBehind) {
    const std::string texts[] = {"A\n700\nOBJ\n", "A\n800 OBJ\nTEXTURE x\n", "A\n800\nOBJECT\n", ""};
    const std::string paths[] = {"/nonexistent/folder/x.obj", "/tmp"}; // a folder is not a file
    for (int i = 0; i < 6; ++i) {
        XObj8 obj;
        ASSERT_TRUE(Read8(kHeader + "TEXTURE a.png\nPOINT_COUNTS 1 0 0 0\nVT 1 2 3 0 1 0 0 0\n", obj));
        EXPECT_FALSE(i < 4 ? Read8(texts[i], obj) : XObj8Read(paths[i - 4].c_str(), obj)) << i;
        EXPECT_TRUE(obj.texture.empty()) << i;
        EXPECT_EQ(obj.geoTris.count(), 0) << i;
        EXPECT_TRUE(obj.lods.empty()) << i;
    }
}

TEST(Obj8Reader, HeaderTexturesAndPoints) {
    XObj8 obj;
    EXPECT_TRUE(Read8("anything at all\n800  // version\nOBJ\n", obj)); // the first line is not looked at
    ASSERT_TRUE(Read8("A\n800\nOBJ", obj));                             // "OBJ" at the very end
    ASSERT_EQ(obj.lods.size(), 1u); // a bare header gives one empty, unranged level
    EXPECT_EQ(obj.lods[0].lodFar, 0.0f);
    EXPECT_TRUE(obj.lods[0].cmds.empty());

    ASSERT_TRUE(Read8(kHeader + "TEXTURE_LIT truck_LIT.png\nPOINT_COUNTS 1 1 1 0\nVT 1 2 3 0 1 0 .5 -.25\n"
                                "VLINE 1 2 3 0.5 0.5 0.5\nVLIGHT -1 -2 -3 1 0.1 0.1\n",
                      obj));
    EXPECT_EQ(obj.textureLit, "truck_LIT.png");
    EXPECT_EQ(obj.texture, "");
    EXPECT_FLOAT_EQ(obj.geoTris.get(0)[7], -0.25f);
    EXPECT_FLOAT_EQ(obj.geoLines.get(0)[3], 0.5f);
    EXPECT_FLOAT_EQ(obj.geoLights.get(0)[4], 0.1f);
    ASSERT_TRUE(Read8(kHeader + "TEXTURE\n", obj)); // no name: not a texture line
    EXPECT_EQ(obj.texture, "");
}

TEST(Obj8Reader, LevelsOpenAtEachRangeAndAZeroRangeMerges) {
    XObj8 obj;
    ASSERT_TRUE(Read8(kHeader + "ATTR_LOD 0 100\nTRIS 0 3\nATTR_LOD 100 1000\nTRIS 3 3\n", obj));
    ASSERT_EQ(obj.lods.size(), 2u);
    EXPECT_EQ(obj.lods[0].lodFar, 100.0f);
    EXPECT_EQ(obj.lods[1].lodNear, 100.0f);
    EXPECT_EQ(obj.lods[1].lodFar, 1000.0f);
    ASSERT_EQ(obj.lods[0].cmds.size(), 1u);
    ASSERT_EQ(obj.lods[1].cmds.size(), 1u);
    EXPECT_EQ(obj.lods[1].cmds[0].idxOffset, 3);

    // Commands before the first range belong to the first level, whose range it then sets.
    ASSERT_TRUE(Read8(kHeader + "TRIS 0 3\nATTR_LOD 0 0\nTRIS 3 3\nATTR_LOD 10 20\nTRIS 6 3\n", obj));
    ASSERT_EQ(obj.lods.size(), 1u);
    EXPECT_EQ(obj.lods[0].lodNear, 10.0f);
    EXPECT_EQ(obj.lods[0].lodFar, 20.0f);
    EXPECT_EQ(obj.lods[0].cmds.size(), 3u);
}

TEST(Obj8Reader, DeclaredCountsBoundWhatIsReadAndSurplusEndsTheFile) {
    XObj8 obj;
    ASSERT_TRUE(Read8(kHeader + "POINT_COUNTS 1 0 0 2\nVT 1 1 1 0 1 0 0 0\nIDX 0\nTRIS 0 1\n"
                                "VT 2 2 2 0 1 0 0 0\nTRIS 5 5\nTEXTURE late.png\n",
                      obj));
    EXPECT_EQ(obj.geoTris.count(), 1);
    EXPECT_FLOAT_EQ(obj.geoTris.get(0)[0], 1.0f);
    ASSERT_EQ(obj.lods[0].cmds.size(), 1u); // the command after the surplus line is lost
    EXPECT_EQ(obj.texture, "");
    EXPECT_EQ(obj.indices, (std::vector<int32_t>{0, 0})); // the declared-but-missing index stays 0

    ASSERT_TRUE(Read8(kHeader + "IDX 3\nTEXTURE x.png\n", obj)); // geometry before POINT_COUNTS
    EXPECT_EQ(obj.texture, "");
    EXPECT_TRUE(obj.indices.empty());

    ASSERT_TRUE(Read8(kHeader + "POINT_COUNTS 2000000000 -5 1e9 99999999999\nIDX 1\n", obj));
    EXPECT_LE(obj.geoTris.count(), 100) << "absurd counts are bounded by the text's size";
    EXPECT_LE(obj.indices.size(), 100u);
    EXPECT_EQ(obj.indices[0], 1);
}

TEST(Obj8Reader, AttributesAndAnimations) {
    XObj8 obj;
    ASSERT_TRUE(Read8(kHeader +
                          "ATTR_shade_smooth\nshade_smooth\nATTR_difuse_rgb 0.1 0.2 0.3\nGLOBAL_unknown 1 2\n"
                          "ANIM_begin\nANIM_rotate 0 1 0 -10 20 0 1 sim/flightmodel/x\n"
                          "ANIM_trans 1 2 3 4 5 6 0.25 0.75 sim/y\nANIM_end\nsmoke_black 1 2 3 4\n",
                      obj));
    std::vector<int> ids;
    for (const XObjCmd8& c : obj.lods[0].cmds)
        ids.push_back(c.id);
    EXPECT_EQ(ids, (std::vector<int>{attr_Shade_Smooth, attr_Diffuse_RGB, anim_Begin, anim_Rotate,
                                     anim_Translate, anim_End, obj_Smoke_Black}));
    const std::vector<XObjCmd8>& c = obj.lods[0].cmds;
    EXPECT_FLOAT_EQ(c[1].params[2], 0.3f);
    EXPECT_EQ(c[3].idxOffset, 0);
    EXPECT_EQ(c[4].idxOffset, 1);
    EXPECT_FLOAT_EQ(c[6].params[3], 4.0f);

    ASSERT_EQ(obj.animations.size(), 2u);
    const XObjAnim8 &r = obj.animations[0], &t = obj.animations[1];
    EXPECT_EQ(r.dataref, "sim/flightmodel/x");
    EXPECT_FLOAT_EQ(r.key[1].xyz[1], 1.0f); // the axis in both keys
    EXPECT_FLOAT_EQ(r.key[1].angle, 20.0f);
    EXPECT_FLOAT_EQ(r.key[1].value, 1.0f);
    EXPECT_FLOAT_EQ(t.key[1].xyz[0], 4.0f);
    EXPECT_FLOAT_EQ(t.key[0].value, 0.25f);

    // Directly followed by its line end, "ANIM_rotate" is the plain table command without a record of its
    // own; validation refuses the dangling reference.
    ASSERT_TRUE(Read8(kHeader + "ANIM_rotate\nANIM_trans\n", obj));
    EXPECT_TRUE(obj.animations.empty());
    std::string why;
    EXPECT_FALSE(XObj8Validate(obj, &why));
    EXPECT_NE(why.find("ANIM_rotate"), std::string::npos) << why;
}
