// The way back: OBJ8 to OBJ7, the OBJ7 writer, and round trips in both directions.
#include "ObjTestSupport.h"
#include "objects/Obj7Reader.h"
#include "objects/Obj7ToObj8.h"
#include "objects/Obj7Writer.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8ToObj7.h"
#include "objects/TextScanners.h"

#include <cstring>
#include <map>

using namespace objtest;

namespace {

bool Read7(const std::string& text, XObj& obj) {
    TempFile f(text);
    return XObjRead(f.path(), obj);
}

bool Mentions(const std::vector<std::string>& report, const std::string& word) {
    for (const std::string& line : report)
        if (line.find(word) != std::string::npos) return true;
    return false;
}

void ExpectIdentical(const XObj& a, const XObj& b) {
    EXPECT_EQ(a.texture, b.texture);
    ASSERT_EQ(a.cmds.size(), b.cmds.size());
    for (size_t i = 0; i < a.cmds.size(); ++i) {
        SCOPED_TRACE("command " + std::to_string(i));
        EXPECT_EQ(a.cmds[i].kind, b.cmds[i].kind);
        EXPECT_EQ(a.cmds[i].id, b.cmds[i].id);
        EXPECT_EQ(a.cmds[i].values, b.cmds[i].values);
        ASSERT_EQ(a.cmds[i].texVerts.size(), b.cmds[i].texVerts.size());
        for (size_t v = 0; v < a.cmds[i].texVerts.size(); ++v)
            EXPECT_EQ(std::memcmp(&a.cmds[i].texVerts[v], &b.cmds[i].texVerts[v], sizeof(vec_tex)), 0) << v;
        ASSERT_EQ(a.cmds[i].rgbVerts.size(), b.cmds[i].rgbVerts.size());
        for (size_t v = 0; v < a.cmds[i].rgbVerts.size(); ++v)
            EXPECT_EQ(std::memcmp(&a.cmds[i].rgbVerts[v], &b.cmds[i].rgbVerts[v], sizeof(vec_rgb)), 0) << v;
    }
}

/// OBJ7 triangles grouped by the ATTR_LOD range in force, independently of the converters.
std::map<std::pair<float, float>, std::vector<Triangle>> Obj7TrianglesByRange(const XObj& o) {
    std::map<std::pair<float, float>, std::vector<Triangle>> out;
    std::pair<float, float> range(0.0f, 0.0f);
    for (const XObjCmd& c : o.cmds) {
        if (c.id == attr_LOD && c.values.size() == 2) range = {c.values[0], c.values[1]};
        if (c.kind != obj_Poly) continue;
        const std::vector<vec_tex> tris = Obj7Triangles(c);
        for (size_t t = 0; t + 2 < tris.size(); t += 3) {
            // vec_tex is x y z s t: the texture coordinates follow the position.
            const float* v[3] = {tris[t].v, tris[t + 1].v, tris[t + 2].v};
            out[range].push_back(MakeTriangle(v, 3));
        }
    }
    for (auto& level : out)
        std::sort(level.second.begin(), level.second.end());
    return out;
}

std::vector<std::array<long, 6>> Obj7ColourVertices(const XObj& o, int id) {
    std::vector<std::array<long, 6>> out;
    for (const XObjCmd& c : o.cmds)
        if (c.id == id)
            for (const vec_rgb& v : c.rgbVerts)
                out.push_back({std::lround(v.v[0] * 1e3), std::lround(v.v[1] * 1e3),
                               std::lround(v.v[2] * 1e3), std::lround(v.rgb[0] * 1e3),
                               std::lround(v.rgb[1] * 1e3), std::lround(v.rgb[2] * 1e3)});
    std::sort(out.begin(), out.end());
    return out;
}

/// The light or line points that LIGHTS or LINES commands draw (a pool may hold unused points).
std::vector<std::array<long, 6>> DrawnColourPoints(const XObj8& o, int id) {
    ObjPointPool drawn;
    drawn.clear(6);
    for (const XObjLOD8& lod : o.lods)
        for (const XObjCmd8& c : lod.cmds) {
            if (c.id != id) continue;
            for (int i = c.idxOffset; i < c.idxOffset + c.idxCount; ++i)
                drawn.append(id == obj8_Lights ? o.geoLights.get(i) : o.geoLines.get(o.indices[i]));
        }
    return ColourPoints(drawn);
}

} // namespace

static_assert(sizeof(vec_tex) == 5 * sizeof(float), "vec_tex is five packed floats");

TEST(Obj7Writer, NumbersAreShortestAndExact) {
    EXPECT_EQ(FormatObjNumber(0.5f), "0.5");
    EXPECT_EQ(FormatObjNumber(3.0f), "3");
    EXPECT_EQ(FormatObjNumber(-0.25f), "-0.25");
    EXPECT_EQ(FormatObjNumber(0.1f), "0.1");
    EXPECT_EQ(FormatObjNumber(0.7406f), "0.7406");
    // The last two are only reached from decimals other than their correctly rounded ones.
    for (float f : {1234.5677f, -0.0001f, 16777215.0f, 3.14159274f, 1e-7f, 0.00670052646f, 62.9355354f}) {
        const std::string s = FormatObjNumber(f);
        EXPECT_EQ(s.find('e'), std::string::npos) << s;
        std::vector<unsigned char> text(s.begin(), s.end());
        unsigned char* p = text.data();
        EXPECT_EQ(TXT_MAP_flt_scan(p, p + text.size(), false), f) << s;
    }
}

TEST(Obj7Writer, WrittenFilesReadBackIdentically) {
    KALVORA_REQUIRE_CORPUS();
    for (const std::string& path : CorpusFiles("obj7")) {
        SCOPED_TRACE(path);
        XObj original;
        ASSERT_TRUE(XObjRead(path.c_str(), original));
        TempFile copy;
        ASSERT_TRUE(XObjWrite(copy.path(), original));
        const std::string text = copy.read();
        EXPECT_EQ(text.compare(0, 11, "A\r700\rOBJ\r\r"), 0);
        EXPECT_EQ(text.compare(text.size() - 4, 4, "end\r"), 0);
        XObj back;
        ASSERT_TRUE(XObjRead(copy.path(), back));
        ExpectIdentical(original, back);
    }
}

TEST(Obj7Writer, ReplacesTheTargetOrLeavesItAlone) {
    TempFile target("old contents");
    XObj obj;
    obj.texture = "t";
    ASSERT_TRUE(XObjWrite(target.path(), obj));
    EXPECT_EQ(target.read(), "A\r700\rOBJ\r\rt\r\rend\r");
    obj.texture.clear();
    ASSERT_TRUE(XObjWrite(target.path(), obj));
    XObj back;
    ASSERT_TRUE(XObjRead(target.path(), back));
    EXPECT_EQ(back.texture, "none");
    EXPECT_TRUE(back.cmds.empty());
    EXPECT_FALSE(XObjWrite("/nonexistent/folder/x.obj", obj));
    EXPECT_FALSE(XObjWrite(nullptr, obj));
}

TEST(Obj8ToObj7, PairsFlatQuadsAndKeepsTheRest) {
    XObj in;
    ASSERT_TRUE(Read7("A\n700\nOBJ\ntex\n"
                      "ATTR_LOD 0 300\n"
                      "quad\n0 0 0 0 0\n1 0 0 1 0\n1 0 1 1 1\n0 0 1 0 1\n"
                      "tri\n0 0 0 0 0\n1 0 0 1 0\n1 1 1 1 1\n"
                      "quad_hard\n0 5 0 0 0\n1 5 0 1 0\n1 5 1 1 1\n0 5 1 0 1\n"
                      "ATTR_shiny_rat 0.5\n"
                      "line\n0 0 0 5 5 5\n0 9 0 5 5 5\n"
                      "light\n1 2 3 10 1 1\n"
                      "ATTR_LOD 300 900\n"
                      "tri_strip 4\n0 0 0 0 0\n0 1 0 0 1\n1 0 0.5 1 0\n1 1 0 1 1\n",
                      in));
    XObj8 mid;
    Obj7ToObj8(in, mid);
    XObj out;
    const std::vector<std::string> lost = Obj8ToObj7(mid, out);
    EXPECT_EQ(out.texture, "tex");
    std::vector<int> ids;
    for (const XObjCmd& c : out.cmds)
        ids.push_back(c.id);
    // The bent strip (its fourth vertex is off the plane) stays two triangles.
    EXPECT_EQ(ids, (std::vector<int>{attr_LOD, obj_Quad, obj_Tri, obj_Quad_Hard, attr_Shiny_Rat, obj_Line,
                                     obj_Light, attr_LOD, obj_Tri, obj_Tri}));
    EXPECT_FLOAT_EQ(out.cmds[5].rgbVerts[1].rgb[0], 5.0f);
    EXPECT_FLOAT_EQ(out.cmds[6].rgbVerts[0].rgb[0], 10.0f);
    EXPECT_FLOAT_EQ(out.cmds[7].values[1], 900.0f);
    EXPECT_TRUE(Mentions(lost, "normals"));
    EXPECT_FALSE(Mentions(lost, "animation"));
    EXPECT_EQ(Obj7TrianglesByRange(in), Obj7TrianglesByRange(out));
}

TEST(Obj8ToObj7, ReportsWhatOldObjectsCannotHold) {
    XObj8 obj;
    obj.texture = "a.png";
    obj.textureLit = "a_LIT.png";
    obj.geoLines.clear(6);
    obj.geoLights.clear(6);
    const float pts[3][8] = {{0, 0, 0, 0, 0, 0, 0, 0}, {1, 0, 0, 0, 0, 0, 1, 0}, {0, 0, 1, 0, 0, 0, 0, 1}};
    for (const auto& p : pts)
        obj.geoTris.append(p);
    obj.indices = {0, 1, 2, 7}; // the last index points nowhere
    obj.lods.emplace_back();
    obj.animations.resize(1);
    auto add = [&](int id, int offset = 0, int count = 0) {
        XObjCmd8 c{};
        c.id = id;
        c.idxOffset = offset;
        c.idxCount = count;
        obj.lods[0].cmds.push_back(c);
    };
    add(anim_Begin);
    add(anim_Rotate);
    add(attr_Hard);
    add(obj8_Tris, 0, 3);
    add(attr_No_Hard);
    add(anim_End);
    add(attr_Blend);
    add(obj8_Tris, 1, 3);
    XObj out;
    const std::vector<std::string> lost = Obj8ToObj7(obj, out);
    EXPECT_TRUE(Mentions(lost, "3 animation"));
    EXPECT_TRUE(Mentions(lost, "a_LIT.png"));
    EXPECT_TRUE(Mentions(lost, "1 hard triangles"));
    EXPECT_TRUE(Mentions(lost, "ATTR_blend"));
    EXPECT_TRUE(Mentions(lost, "outside the triangle pool"));
    EXPECT_FALSE(Mentions(lost, "normals")); // all zero: nothing of value lost
    ASSERT_EQ(out.cmds.size(), 1u);
    EXPECT_EQ(out.cmds[0].id, obj_Tri);
}

TEST(Obj8ToObj7, CorpusObj8ToObj7ToObj8KeepsGeometry) {
    KALVORA_REQUIRE_CORPUS();
    int checked = 0;
    for (const std::string& path : CorpusFiles("obj8")) {
        SCOPED_TRACE(path);
        XObj8 original;
        ASSERT_TRUE(XObj8Read(path.c_str(), original));
        XObj old;
        const std::vector<std::string> lost = Obj8ToObj7(original, old);
        if (!original.animations.empty()) {
            EXPECT_TRUE(Mentions(lost, "animation"));
            continue;
        }
        TempFile copy;
        ASSERT_TRUE(XObjWrite(copy.path(), old));
        XObj reread;
        ASSERT_TRUE(XObjRead(copy.path(), reread));
        XObj8 back;
        Obj7ToObj8(reread, back);
        ++checked;

        ASSERT_EQ(back.lods.size(), original.lods.size());
        for (size_t l = 0; l < original.lods.size(); ++l) {
            EXPECT_EQ(back.lods[l].lodNear, original.lods[l].lodNear);
            EXPECT_EQ(back.lods[l].lodFar, original.lods[l].lodFar);
        }
        EXPECT_TRUE(TrianglesByLevel(back) == TrianglesByLevel(original)) << "triangles differ";
        for (int id : {obj8_Lines, obj8_Lights}) {
            const auto a = DrawnColourPoints(back, id), b = DrawnColourPoints(original, id);
            ASSERT_EQ(a.size(), b.size());
            for (size_t i = 0; i < a.size(); ++i)
                for (int d = 0; d < 6; ++d)
                    EXPECT_NEAR(a[i][d], b[i][d], 1);
        }
    }
    EXPECT_GE(checked, 10);
}

TEST(Obj8ToObj7, CorpusObj7ToObj8ToObj7KeepsEveryPrimitive) {
    KALVORA_REQUIRE_CORPUS();
    for (const std::string& path : CorpusFiles("obj7")) {
        SCOPED_TRACE(path);
        XObj original;
        ASSERT_TRUE(XObjRead(path.c_str(), original));
        XObj8 mid;
        Obj7ToObj8(original, mid);
        XObj back;
        Obj8ToObj7(mid, back);
        EXPECT_EQ(back.texture, original.texture);
        EXPECT_TRUE(Obj7TrianglesByRange(back) == Obj7TrianglesByRange(original)) << "triangles differ";
        EXPECT_EQ(Obj7ColourVertices(back, obj_Line), Obj7ColourVertices(original, obj_Line));
        EXPECT_EQ(Obj7ColourVertices(back, obj_Light), Obj7ColourVertices(original, obj_Light));
        size_t smokes = 0, smokesBack = 0;
        for (const XObjCmd& c : original.cmds)
            smokes += c.id == obj_Smoke_Black || c.id == obj_Smoke_White;
        for (const XObjCmd& c : back.cmds)
            smokesBack += c.id == obj_Smoke_Black || c.id == obj_Smoke_White;
        EXPECT_EQ(smokesBack, smokes);
    }
}
