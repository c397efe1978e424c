// Reading version-700 files and converting them to OBJ8.
#include "ObjTestSupport.h"
#include "objects/Obj7Reader.h"
#include "objects/Obj7ToObj8.h"
#include "objects/Obj8Validate.h"

using objtest::Read7;

namespace {

const std::string kHeader7 = "A\n700\nOBJ\n\ntex_name\t\t// the texture\n\n";

/// Reads OBJ7 text and converts it; the result must validate.
XObj8 Converted(const std::string& body) {
    XObj in;
    XObj8 out;
    EXPECT_TRUE(Read7(kHeader7 + body, in));
    Obj7ToObj8(in, out);
    std::string why;
    EXPECT_TRUE(XObj8Validate(out, &why)) << why;
    return out;
}

} // namespace

TEST(Obj7Reader, HeaderPrimitivesAttributesAndComments) {
    XObj obj;
    EXPECT_FALSE(Read7("A\n800\nOBJ\n", obj));
    EXPECT_FALSE(Read7("A\n700\nOBJX\n", obj));
    EXPECT_FALSE(XObjRead("/nonexistent/x.obj", obj));
    ASSERT_TRUE(
        Read7(kHeader7 + "// a whole-line comment\nATTR_LOD 0 1000\t// a range\nshade_smooth\n"
                         "ATTR_difuse_rgb 1 0.5 0\nquad_strip 6 // comment after the count\n"
                         " 0 0 0 0 0   1 0 0 1 0\n 0 1 0 0 1   1 1 0 1 1 // two vertices a line\n"
                         " 0 2 0 0 1   1 2 0 1 1\nlight\n1 2 3  10 1 1\nline\n0 0 0 5 5 5\n0 9 0 5 5 5\n"
                         "smoke_black 1 2 3 4\nbogus_word 1 2 3\nend\ntri\n1 1 1 0 0\n2 2 2 0 0\n3 3 3 0 0\n",
              obj));
    EXPECT_EQ(obj.texture, "tex_name");
    std::vector<int> ids;
    for (const XObjCmd& c : obj.cmds)
        ids.push_back(c.id);
    // Nothing after "end" is read.
    EXPECT_EQ(ids, (std::vector<int>{attr_LOD, attr_Shade_Smooth, attr_Diffuse_RGB, obj_Quad_Strip, obj_Light,
                                     obj_Line, obj_Smoke_Black}));
    EXPECT_EQ(obj.cmds[0].values, (std::vector<float>{0, 1000}));
    const XObjCmd& strip = obj.cmds[3];
    ASSERT_EQ(strip.texVerts.size(), 6u);
    EXPECT_FLOAT_EQ(strip.texVerts[3].v[0], 1.0f);
    EXPECT_FLOAT_EQ(strip.texVerts[5].st[1], 1.0f);
    ASSERT_EQ(obj.cmds[4].rgbVerts.size(), 1u);
    EXPECT_FLOAT_EQ(obj.cmds[4].rgbVerts[0].rgb[0], 10.0f);
    EXPECT_EQ(obj.cmds[5].rgbVerts.size(), 2u);
}

TEST(Obj7ToObj8, QuadsShareVerticesWithSmoothUnitNormalsStripsAndFansTriangulate) {
    XObj8 out = Converted("quad\n20 0 20 0 0\n-20 0 20 1 0\n-20 0 -20 1 1\n20 0 -20 0 1\n");
    EXPECT_EQ(out.texture, "tex_name");
    EXPECT_EQ(out.geoTris.count(), 4);
    EXPECT_EQ(out.indices, (std::vector<int32_t>{0, 1, 2, 0, 2, 3}));
    ASSERT_EQ(out.lods.size(), 1u);
    EXPECT_EQ(out.lods[0].cmds[0].idxCount, 6);
    for (int v = 0; v < 4; ++v) // this floor is wound clockwise seen from above: its normal points up
        EXPECT_NEAR(out.geoTris.get(v)[4], 1.0f, 1e-6) << v;
    EXPECT_EQ(out.geoTris.accumulate(out.geoTris.get(3)), 3) << "finished points are findable by value";

    out = Converted("tri_strip 5\n0 0 0 0 0\n0 1 0 0 1\n1 0 0 1 0\n1 1 0 1 1\n2 0 0 2 0\n"
                    "tri_fan 5\n0 0 5 0 0\n1 0 5 0 0\n1 1 5 0 0\n0 1 5 0 0\n-1 1 5 0 0\n"
                    "polygon 4\n0 0 9 0 0\n1 0 9 0 0\n1 1 9 0 0\n0 1 9 0 0\n"
                    "quad_strip 6\n0 0 7 0 0\n0 1 7 0 1\n1 0 7 1 0\n1 1 7 1 1\n2 0 7 2 0\n2 1 7 2 1\n");
    ASSERT_EQ(out.lods[0].cmds.size(), 1u); // consecutive triangles merge into one command
    const XObjCmd8& tris = out.lods[0].cmds[0];
    EXPECT_EQ(tris.idxCount, (3 + 3 + 2 + 4) * 3);
    // All triangles of the flat strip face the same way (z): the swapped odd ones included.
    float firstTurn = 0.0f;
    for (int t = 0; t < 3; ++t) {
        const float* p[3];
        for (int k = 0; k < 3; ++k)
            p[k] = out.geoTris.get(out.indices[tris.idxOffset + t * 3 + k]);
        const float turn =
            (p[2][0] - p[0][0]) * (p[1][1] - p[0][1]) - (p[2][1] - p[0][1]) * (p[1][0] - p[0][0]);
        if (t == 0) firstTurn = turn;
        EXPECT_GT(turn * firstTurn, 0.0f) << "strip triangle " << t;
    }
}
