// Reading version-700 files and converting them to OBJ8.
#include "ObjTestSupport.h"
#include "objects/Obj7Reader.h"
#include "objects/Obj7ToObj8.h"
#include "objects/Obj8Validate.h"

#include <cmath>

using objtest::TempFile;

namespace {

bool Read7(const std::string& text, XObj& obj) {
    TempFile f(text);
    return XObjRead(f.path(), obj);
}

const char* const kHeader7 = "A\n700\nOBJ\n\ntex_name\t\t// the texture\n\n";

/// The three positions of triangle t of a TRIS command.
void TrianglePositions(const XObj8& o, const XObjCmd8& c, int t, float out[3][3]) {
    for (int k = 0; k < 3; ++k)
        for (int d = 0; d < 3; ++d)
            out[k][d] = o.geoTris.get(o.indices[c.idxOffset + t * 3 + k])[d];
}

} // namespace

TEST(Obj7Reader, HeaderAndTexture) {
    XObj obj;
    EXPECT_FALSE(Read7("A\n800\nOBJ\n", obj));
    EXPECT_FALSE(Read7("A\n700\nOBJX\n", obj));
    EXPECT_FALSE(XObjRead("/nonexistent/x.obj", obj));
    ASSERT_TRUE(Read7(kHeader7, obj));
    EXPECT_EQ(obj.texture, "tex_name");
    EXPECT_TRUE(obj.cmds.empty());
}

TEST(Obj7Reader, PrimitivesAttributesAndComments) {
    XObj obj;
    ASSERT_TRUE(Read7(std::string(kHeader7) + "// a whole-line comment\n"
                                              "ATTR_LOD 0 1000\t// a range\n"
                                              "shade_smooth\n"
                                              "ATTR_difuse_rgb 1 0.5 0\n"
                                              "quad_strip 6 // comment after the count\n"
                                              " 0 0 0 0 0   1 0 0 1 0\n"
                                              " 0 1 0 0 1   1 1 0 1 1 // two vertices a line\n"
                                              " 0 2 0 0 1   1 2 0 1 1\n"
                                              "light\n1 2 3  10 1 1\n"
                                              "line\n0 0 0 5 5 5\n0 9 0 5 5 5\n"
                                              "smoke_black 1 2 3 4\n"
                                              "bogus_word 1 2 3\n"
                                              "end\n"
                                              "tri\n1 1 1 0 0\n2 2 2 0 0\n3 3 3 0 0\n",
                      obj));
    ASSERT_EQ(obj.cmds.size(), 7u);
    EXPECT_EQ(obj.cmds[0].id, attr_LOD);
    EXPECT_EQ(obj.cmds[0].values, (std::vector<float>{0, 1000}));
    EXPECT_EQ(obj.cmds[1].id, attr_Shade_Smooth);
    EXPECT_EQ(obj.cmds[2].id, attr_Diffuse_RGB);
    EXPECT_EQ(obj.cmds[2].kind, obj_Attr);
    const XObjCmd& strip = obj.cmds[3];
    EXPECT_EQ(strip.id, obj_Quad_Strip);
    ASSERT_EQ(strip.texVerts.size(), 6u);
    EXPECT_FLOAT_EQ(strip.texVerts[3].v[0], 1.0f);
    EXPECT_FLOAT_EQ(strip.texVerts[3].v[1], 1.0f);
    EXPECT_FLOAT_EQ(strip.texVerts[5].st[1], 1.0f);
    EXPECT_EQ(obj.cmds[4].id, obj_Light);
    ASSERT_EQ(obj.cmds[4].rgbVerts.size(), 1u);
    EXPECT_FLOAT_EQ(obj.cmds[4].rgbVerts[0].rgb[0], 10.0f);
    EXPECT_EQ(obj.cmds[5].rgbVerts.size(), 2u);
    EXPECT_EQ(obj.cmds[6].id, obj_Smoke_Black);
    EXPECT_EQ(obj.cmds[6].values.size(), 4u); // nothing after "end" is read
}

TEST(Obj7Reader, VerticesMayShareTheKeywordLine) {
    XObj obj;
    ASSERT_TRUE(Read7(std::string(kHeader7) + "tri 1 1 1 0 0  2 2 2 1 0  3 3 3 1 1 // all on one line\n"
                                              "light 4 5 6 10 10 10\n"
                                              "tri_fan 3 7 7 7 0 0\n8 8 8 0 0\n9 9 9 0 0\nend\n",
                      obj));
    ASSERT_EQ(obj.cmds.size(), 3u);
    ASSERT_EQ(obj.cmds[0].texVerts.size(), 3u);
    EXPECT_FLOAT_EQ(obj.cmds[0].texVerts[2].v[0], 3.0f);
    EXPECT_FLOAT_EQ(obj.cmds[0].texVerts[2].st[1], 1.0f);
    EXPECT_FLOAT_EQ(obj.cmds[1].rgbVerts[0].v[2], 6.0f);
    ASSERT_EQ(obj.cmds[2].texVerts.size(), 3u);
    EXPECT_FLOAT_EQ(obj.cmds[2].texVerts[0].v[0], 7.0f);
    EXPECT_FLOAT_EQ(obj.cmds[2].texVerts[2].v[0], 9.0f);
}

TEST(Obj7Reader, TruncatedPrimitiveEndsWithTheText) {
    XObj obj;
    ASSERT_TRUE(Read7(std::string(kHeader7) + "polygon 2000000000\n1 2 3 4 5\n6 7 8", obj));
    ASSERT_EQ(obj.cmds.size(), 1u);
    EXPECT_LE(obj.cmds[0].texVerts.size(), 2u);
}

TEST(Obj7ToObj8, QuadsBecomeTwoTrianglesSharingVertices) {
    XObj in;
    ASSERT_TRUE(
        Read7(std::string(kHeader7) + "quad\n20 0 20 0 0\n-20 0 20 1 0\n-20 0 -20 1 1\n20 0 -20 0 1\n", in));
    XObj8 out;
    Obj7ToObj8(in, out);
    EXPECT_EQ(out.texture, "tex_name");
    EXPECT_EQ(out.geoTris.count(), 4);
    EXPECT_EQ(out.indices, (std::vector<int32_t>{0, 1, 2, 0, 2, 3}));
    ASSERT_EQ(out.lods.size(), 1u);
    ASSERT_EQ(out.lods[0].cmds.size(), 1u);
    EXPECT_EQ(out.lods[0].cmds[0].id, obj8_Tris);
    EXPECT_EQ(out.lods[0].cmds[0].idxCount, 6);
    // This floor is wound clockwise seen from above: its normal points up.
    for (int v = 0; v < 4; ++v) {
        EXPECT_NEAR(out.geoTris.get(v)[4], 1.0f, 1e-6) << v;
        EXPECT_NEAR(out.geoTris.get(v)[3], 0.0f, 1e-6) << v;
    }
    std::string why;
    EXPECT_TRUE(XObj8Validate(out, &why)) << why;
}

TEST(Obj7ToObj8, StripsAndFansTriangulate) {
    XObj in;
    ASSERT_TRUE(Read7(std::string(kHeader7) +
                          "tri_strip 5\n0 0 0 0 0\n0 1 0 0 1\n1 0 0 1 0\n1 1 0 1 1\n2 0 0 2 0\n"
                          "tri_fan 5\n0 0 5 0 0\n1 0 5 0 0\n1 1 5 0 0\n0 1 5 0 0\n-1 1 5 0 0\n"
                          "polygon 4\n0 0 9 0 0\n1 0 9 0 0\n1 1 9 0 0\n0 1 9 0 0\n"
                          "quad_strip 6\n0 0 7 0 0\n0 1 7 0 1\n1 0 7 1 0\n1 1 7 1 1\n2 0 7 2 0\n2 1 7 2 1\n",
                      in));
    XObj8 out;
    Obj7ToObj8(in, out);
    ASSERT_EQ(out.lods[0].cmds.size(), 1u); // consecutive triangles merge into one command
    const XObjCmd8& tris = out.lods[0].cmds[0];
    EXPECT_EQ(tris.idxCount, (3 + 3 + 2 + 4) * 3);
    // All triangles of the flat strip face the same way (z): the swapped odd ones included.
    float firstTurn = 0.0f;
    for (int t = 0; t < 3; ++t) {
        float p[3][3];
        TrianglePositions(out, tris, t, p);
        const float ux = p[2][0] - p[0][0], uy = p[2][1] - p[0][1];
        const float wx = p[1][0] - p[0][0], wy = p[1][1] - p[0][1];
        const float turn = ux * wy - uy * wx;
        if (t == 0) firstTurn = turn;
        EXPECT_GT(turn * firstTurn, 0.0f) << "strip triangle " << t;
    }
    EXPECT_TRUE(XObj8Validate(out, nullptr));
}

TEST(Obj7ToObj8, HardQuadsAreWrappedLinesAndLightsPooled) {
    XObj in;
    ASSERT_TRUE(Read7(std::string(kHeader7) + "ATTR_LOD 0 500\n"
                                              "quad_hard\n0 0 0 0 0\n1 0 0 1 0\n1 0 1 1 1\n0 0 1 0 1\n"
                                              "quad_hard\n0 1 0 0 0\n1 1 0 1 0\n1 1 1 1 1\n0 1 1 0 1\n"
                                              "quad_cockpit\n0 2 0 0 0\n1 2 0 1 0\n1 2 1 1 1\n0 2 1 0 1\n"
                                              "line\n0 0 0 5 5 5\n0 9 0 5 5 5\n"
                                              "line\n1 0 0 10 0 0\n1 9 0 10 0 0\n"
                                              "light\n1 2 3 10 1 1\nlight\n4 5 6 10 1 1\n"
                                              "smoke_white 0 35 0 2\n"
                                              "ATTR_LOD 500 2000\n"
                                              "tri\n0 0 0 0 0\n1 0 0 0 0\n0 1 0 0 0\n",
                      in));
    XObj8 out;
    Obj7ToObj8(in, out);
    ASSERT_EQ(out.lods.size(), 2u);
    EXPECT_EQ(out.lods[0].lodFar, 500.0f);
    EXPECT_EQ(out.lods[1].lodNear, 500.0f);
    std::vector<int> ids;
    for (const XObjCmd8& c : out.lods[0].cmds)
        ids.push_back(c.id);
    EXPECT_EQ(ids, (std::vector<int>{attr_Hard, obj8_Tris, attr_No_Hard, attr_Cockpit, obj8_Tris,
                                     attr_No_Cockpit, obj8_Lines, obj8_Lights, obj_Smoke_White}));
    EXPECT_EQ(out.lods[0].cmds[1].idxCount, 12);
    EXPECT_EQ(out.lods[0].cmds[6].idxCount, 4);
    EXPECT_EQ(out.lods[0].cmds[7].idxOffset, 0);
    EXPECT_EQ(out.lods[0].cmds[7].idxCount, 2);
    EXPECT_FLOAT_EQ(out.lods[0].cmds[8].params[3], 2.0f);
    EXPECT_EQ(out.geoLines.count(), 4);
    EXPECT_FLOAT_EQ(out.geoLines.get(2)[3], 1.0f); // colours from 0..10 to 0..1
    EXPECT_FLOAT_EQ(out.geoLights.get(1)[2], 6.0f);
    EXPECT_FLOAT_EQ(out.geoLights.get(1)[4], 0.1f);
    ASSERT_EQ(out.lods[1].cmds.size(), 1u);
    EXPECT_EQ(out.lods[1].cmds[0].id, obj8_Tris);
    std::string why;
    EXPECT_TRUE(XObj8Validate(out, &why)) << why;
}

TEST(Obj7ToObj8, SmoothNormalsAreUnitLength) {
    XObj in;
    // Two faces of a roof ridge sharing the ridge vertices.
    ASSERT_TRUE(Read7(std::string(kHeader7) + "quad\n0 1 0 0 0\n1 0 0 0 0\n1 0 1 0 0\n0 1 1 0 0\n"
                                              "quad\n-1 0 0 0 0\n0 1 0 0 0\n0 1 1 0 0\n-1 0 1 0 0\n",
                      in));
    XObj8 out;
    Obj7ToObj8(in, out);
    EXPECT_EQ(out.geoTris.count(), 6); // the ridge's two points are shared
    for (int v = 0; v < out.geoTris.count(); ++v) {
        const float* n = out.geoTris.get(v);
        EXPECT_NEAR(std::sqrt(n[3] * n[3] + n[4] * n[4] + n[5] * n[5]), 1.0, 1e-5) << v;
        if (n[0] == 0.0f) { // ridge: the average of both slopes points straight up
            EXPECT_NEAR(n[4], 1.0f, 1e-5);
        } else {
            EXPECT_NEAR(std::fabs(n[3]), std::sqrt(0.5f), 1e-5);
        }
    }
    // The finished points are findable again by their full value.
    EXPECT_EQ(out.geoTris.accumulate(out.geoTris.get(3)), 3);
}
