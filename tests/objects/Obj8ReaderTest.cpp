// Reading version-800 files: header rules, levels, early stop and bounds.
#include "ObjTestSupport.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"

using objtest::TempFile;

namespace {

const char* const kHeader = "A\n800\nOBJ\n\n";

bool Read(const std::string& text, XObj8& obj) {
    TempFile f(text);
    return XObj8Read(f.path(), obj);
}

} // namespace

TEST(Obj8Reader, HeaderNeedsVersion800AndObjOnTheThirdLine) {
    XObj8 obj;
    EXPECT_FALSE(Read("A\n700\nOBJ\n", obj));
    EXPECT_FALSE(Read("A\n800 OBJ\nTEXTURE x\n", obj));
    EXPECT_FALSE(Read("A\n800\nOBJECT\n", obj));
    EXPECT_FALSE(Read("", obj));
    EXPECT_TRUE(Read("anything at all\n800  // version\nOBJ\n", obj)); // the first line is not looked at
    EXPECT_TRUE(Read("A\n800\nOBJ", obj));                             // "OBJ" at the very end of the text
}

TEST(Obj8Reader, MissingFileFailsWithTheObjectEmptied) {
    XObj8 obj;
    ASSERT_TRUE(
        Read(std::string(kHeader) + "TEXTURE a.png\nPOINT_COUNTS 1 0 0 0\nVT 1 2 3 0 1 0 0 0\n", obj));
    ASSERT_EQ(obj.geoTris.count(), 1);
    EXPECT_FALSE(XObj8Read("/nonexistent/folder/x.obj", obj));
    EXPECT_TRUE(obj.texture.empty());
    EXPECT_EQ(obj.geoTris.count(), 0);
    EXPECT_TRUE(obj.lods.empty());
    EXPECT_FALSE(XObj8Read("/tmp", obj)); // a folder is not a file
}

TEST(Obj8Reader, BareHeaderGivesOneEmptyLevel) {
    XObj8 obj;
    ASSERT_TRUE(Read("A\n800\nOBJ\n", obj));
    ASSERT_EQ(obj.lods.size(), 1u);
    EXPECT_EQ(obj.lods[0].lodNear, 0.0f);
    EXPECT_EQ(obj.lods[0].lodFar, 0.0f);
    EXPECT_TRUE(obj.lods[0].cmds.empty());
    EXPECT_EQ(obj.geoTris.count(), 0);
    EXPECT_EQ(obj.geoTris.depth, 8);
    EXPECT_EQ(obj.geoLines.depth, 6);
    EXPECT_EQ(obj.geoLights.depth, 6);
}

TEST(Obj8Reader, TexturesAndPoints) {
    XObj8 obj;
    ASSERT_TRUE(Read(std::string(kHeader) + "TEXTURE_LIT truck_LIT.png\n"
                                            "POINT_COUNTS 1 1 1 0\n"
                                            "VT 1 2 3 0 1 0 .5 -.25\n"
                                            "VLINE 1 2 3 0.5 0.5 0.5\n"
                                            "VLIGHT -1 -2 -3 1 0.1 0.1\n",
                     obj));
    EXPECT_EQ(obj.textureLit, "truck_LIT.png");
    EXPECT_EQ(obj.texture, "");
    const float vt[8] = {1, 2, 3, 0, 1, 0, 0.5f, -0.25f};
    for (int i = 0; i < 8; ++i)
        EXPECT_FLOAT_EQ(obj.geoTris.get(0)[i], vt[i]) << i;
    EXPECT_FLOAT_EQ(obj.geoLines.get(0)[3], 0.5f);
    EXPECT_FLOAT_EQ(obj.geoLights.get(0)[2], -3.0f);
    EXPECT_FLOAT_EQ(obj.geoLights.get(0)[4], 0.1f);

    ASSERT_TRUE(Read(std::string(kHeader) + "TEXTURE truck.png\n", obj));
    EXPECT_EQ(obj.texture, "truck.png");
    EXPECT_EQ(obj.textureLit, "");
    ASSERT_TRUE(Read(std::string(kHeader) + "TEXTURE\n", obj)); // no name: not a texture line
    EXPECT_EQ(obj.texture, "");
}

TEST(Obj8Reader, CrOnlyLineEndsAndTabsReadLikeLf) {
    const std::string lf = "A\n800\nOBJ\n\nTEXTURE t.png\nPOINT_COUNTS 3 0 0 3\nVT 1 2 3 0 1 0 0 0\n"
                           "VT 4 5 6 0 1 0 1 0\nVT 7 8 9 0 1 0 1 1\nIDX 0\nIDX 1\nIDX 2\nATTR_LOD 0 50\n"
                           "ATTR_shiny_rat 0.5\nTRIS 0 3\n";
    std::string cr = lf;
    for (char& c : cr)
        if (c == '\n') c = '\r';
    std::string tabs;
    for (char c : cr)
        tabs += c == ' ' ? std::string("\t \t") : std::string(1, c);
    XObj8 a, b;
    ASSERT_TRUE(Read(lf, a));
    ASSERT_TRUE(Read(tabs, b));
    objtest::ExpectSameObj8(a, b, "CR and tabs");
    ASSERT_EQ(b.lods.size(), 1u);
    ASSERT_EQ(b.lods[0].cmds.size(), 2u);
    EXPECT_EQ(b.lods[0].cmds[1].idxCount, 3);
    EXPECT_EQ(b.indices, (std::vector<int32_t>{0, 1, 2}));
}

TEST(Obj8Reader, LevelsOpenAtEachRangeAndAZeroRangeMerges) {
    XObj8 obj;
    ASSERT_TRUE(Read(std::string(kHeader) + "ATTR_LOD 0 100\nTRIS 0 3\nATTR_LOD 100 1000\nTRIS 3 3\n", obj));
    ASSERT_EQ(obj.lods.size(), 2u);
    EXPECT_EQ(obj.lods[0].lodFar, 100.0f);
    EXPECT_EQ(obj.lods[1].lodNear, 100.0f);
    EXPECT_EQ(obj.lods[1].lodFar, 1000.0f);
    ASSERT_EQ(obj.lods[0].cmds.size(), 1u);
    ASSERT_EQ(obj.lods[1].cmds.size(), 1u);
    EXPECT_EQ(obj.lods[1].cmds[0].idxOffset, 3);

    // Commands before the first range belong to the first level, whose range it then sets.
    ASSERT_TRUE(
        Read(std::string(kHeader) + "TRIS 0 3\nATTR_LOD 0 0\nTRIS 3 3\nATTR_LOD 10 20\nTRIS 6 3\n", obj));
    ASSERT_EQ(obj.lods.size(), 1u);
    EXPECT_EQ(obj.lods[0].lodNear, 10.0f);
    EXPECT_EQ(obj.lods[0].lodFar, 20.0f);
    EXPECT_EQ(obj.lods[0].cmds.size(), 3u);
}

TEST(Obj8Reader, SurplusGeometryStopsReadingWithSuccess) {
    XObj8 obj;
    ASSERT_TRUE(Read(std::string(kHeader) + "POINT_COUNTS 1 0 0 2\nVT 1 1 1 0 1 0 0 0\nIDX 0\nTRIS 0 1\n"
                                            "VT 2 2 2 0 1 0 0 0\nTRIS 5 5\nTEXTURE late.png\n",
                     obj));
    EXPECT_EQ(obj.geoTris.count(), 1);
    EXPECT_FLOAT_EQ(obj.geoTris.get(0)[0], 1.0f);
    ASSERT_EQ(obj.lods[0].cmds.size(), 1u); // the command after the surplus line is lost
    EXPECT_EQ(obj.texture, "");
    EXPECT_EQ(obj.indices, (std::vector<int32_t>{0, 0})); // the undeclared-but-missing index stays 0

    // Geometry before POINT_COUNTS is surplus too.
    ASSERT_TRUE(Read(std::string(kHeader) + "IDX 3\nTEXTURE x.png\n", obj));
    EXPECT_EQ(obj.texture, "");
    EXPECT_TRUE(obj.indices.empty());
}

TEST(Obj8Reader, Idx10NeverWritesPastTheDeclaredCount) {
    XObj8 obj;
    ASSERT_TRUE(Read(std::string(kHeader) + "POINT_COUNTS 0 0 0 12\nIDX10 0 1 2 3 4 5 6 7 8 9\n"
                                            "IDX10 10 11 12 13 14 15 16 17 18 19\nTEXTURE seen.png\nIDX 5\n"
                                            "TEXTURE unseen.png\n",
                     obj));
    ASSERT_EQ(obj.indices.size(), 12u);
    EXPECT_EQ(obj.indices[9], 9);
    EXPECT_EQ(obj.indices[11], 11);
    EXPECT_EQ(obj.texture, "seen.png");
}

TEST(Obj8Reader, AttributesAndAnimations) {
    XObj8 obj;
    ASSERT_TRUE(Read(std::string(kHeader) +
                         "ATTR_shade_smooth\nshade_smooth\nATTR_difuse_rgb 0.1 0.2 0.3\nGLOBAL_unknown 1 2\n"
                         "ANIM_begin\nANIM_rotate 0 1 0 -10 20 0 1 sim/flightmodel/x\n"
                         "ANIM_trans 1 2 3 4 5 6 0.25 0.75 sim/y\nANIM_end\nsmoke_black 1 2 3 4\n",
                     obj));
    const std::vector<XObjCmd8>& c = obj.lods[0].cmds;
    ASSERT_EQ(c.size(), 7u);
    EXPECT_EQ(c[0].id, attr_Shade_Smooth);
    EXPECT_EQ(c[1].id, attr_Diffuse_RGB);
    EXPECT_FLOAT_EQ(c[1].params[2], 0.3f);
    EXPECT_EQ(c[2].id, anim_Begin);
    EXPECT_EQ(c[3].id, anim_Rotate);
    EXPECT_EQ(c[3].idxOffset, 0);
    EXPECT_EQ(c[4].id, anim_Translate);
    EXPECT_EQ(c[4].idxOffset, 1);
    EXPECT_EQ(c[5].id, anim_End);
    EXPECT_EQ(c[6].id, obj_Smoke_Black);
    EXPECT_FLOAT_EQ(c[6].params[3], 4.0f);

    ASSERT_EQ(obj.animations.size(), 2u);
    const XObjAnim8& r = obj.animations[0];
    EXPECT_EQ(r.dataref, "sim/flightmodel/x");
    EXPECT_FLOAT_EQ(r.key[1].xyz[1], 1.0f); // the axis in both keys
    EXPECT_FLOAT_EQ(r.key[0].angle, -10.0f);
    EXPECT_FLOAT_EQ(r.key[1].angle, 20.0f);
    EXPECT_FLOAT_EQ(r.key[1].value, 1.0f);
    const XObjAnim8& t = obj.animations[1];
    EXPECT_FLOAT_EQ(t.key[0].xyz[2], 3.0f);
    EXPECT_FLOAT_EQ(t.key[1].xyz[0], 4.0f);
    EXPECT_FLOAT_EQ(t.key[0].value, 0.25f);
    EXPECT_EQ(t.dataref, "sim/y");
}

TEST(Obj8Reader, AbsurdCountsAreBoundedByTheFileSize) {
    XObj8 obj;
    ASSERT_TRUE(Read(std::string(kHeader) + "POINT_COUNTS 2000000000 -5 1e9 99999999999\nIDX 1\n", obj));
    EXPECT_LE(obj.geoTris.count(), 100);
    EXPECT_EQ(obj.geoLines.count(), 0);
    EXPECT_LE(obj.indices.size(), 100u);
    EXPECT_EQ(obj.indices[0], 1);
}

TEST(Obj8Reader, MemoryReadMatchesFileRead) {
    const std::string text =
        std::string(kHeader) + "POINT_COUNTS 1 0 0 1\nVT 1 2 3 4 5 6 7 8\nIDX 0\nTRIS 0 1";
    XObj8 a, b;
    ASSERT_TRUE(Read(text, a));
    ASSERT_TRUE(XObj8ReadMemory(text.data(), text.size(), b));
    objtest::ExpectSameObj8(a, b, "memory");
    EXPECT_EQ(b.lods[0].cmds.size(), 1u);
}

TEST(Obj8Reader, AnimationKeywordWithoutNumbersIsCaughtByValidation) {
    // Directly followed by its line end, "ANIM_rotate" is not the animation line but the plain table
    // command: it gets no record of its own, and validation refuses the dangling reference.
    XObj8 obj;
    ASSERT_TRUE(Read(std::string(kHeader) + "ANIM_rotate\nANIM_trans\n", obj));
    ASSERT_EQ(obj.lods[0].cmds.size(), 2u);
    EXPECT_EQ(obj.lods[0].cmds[0].id, anim_Rotate);
    EXPECT_TRUE(obj.animations.empty());
    std::string why;
    EXPECT_FALSE(XObj8Validate(obj, &why));
    EXPECT_NE(why.find("ANIM_rotate"), std::string::npos) << why;
}
