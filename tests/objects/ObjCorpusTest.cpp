// The readers, writers, validation and conversions against real files of both
// generations found in the wild.
#include "ObjTestSupport.h"
#include "objects/Obj7Writer.h"
#include "objects/Obj8ToObj7.h"
#include "objects/Obj8Validate.h"
#include "objects/Obj8Writer.h"

using namespace objtest;
using kalvora_test::corpusPath;

namespace {

/// The colour points that LIGHTS or LINES commands draw (a pool may hold unused points).
std::vector<std::array<long, 6>> DrawnColourPoints(const XObj8& o, int id) {
    ObjPointPool drawn;
    drawn.clear(6);
    for (const XObjLOD8& lod : o.lods)
        for (const XObjCmd8& c : lod.cmds)
            for (int i = c.idxOffset; c.id == id && i < c.idxOffset + c.idxCount; ++i)
                drawn.append(id == obj8_Lights ? o.geoLights.get(i) : o.geoLines.get(o.indices[i]));
    return ColourPoints(drawn);
}

/// Line or light vertices of an OBJ7 object, rounded to 1e-3, sorted.
std::vector<std::array<long, 6>> Obj7ColourVertices(const XObj& o, int id) {
    std::vector<std::array<long, 6>> out;
    for (const XObjCmd& c : o.cmds)
        for (const vec_rgb& v : c.rgbVerts)
            if (c.id == id)
                out.push_back({std::lround(v.v[0] * 1e3), std::lround(v.v[1] * 1e3),
                               std::lround(v.v[2] * 1e3), std::lround(v.rgb[0] * 1e3),
                               std::lround(v.rgb[1] * 1e3), std::lround(v.rgb[2] * 1e3)});
    std::sort(out.begin(), out.end());
    return out;
}

size_t Smokes(const XObj& o) {
    return std::count_if(o.cmds.begin(), o.cmds.end(),
                         [](const XObjCmd& c) { return c.id == obj_Smoke_Black || c.id == obj_Smoke_White; });
}

} // namespace

TEST(ObjCorpus, EveryObj8FileReadsValidatesAndRoundTripsThroughBothGenerations) {
    KALVORA_REQUIRE_CORPUS();
    const std::vector<std::string> files = CorpusFiles("obj8");
    ASSERT_GE(files.size(), 20u);
    kalvora_test::TempFolder dir;
    const std::string copy = dir.file("copy.obj");
    int withoutAnimations = 0;
    for (const std::string& path : files) {
        SCOPED_TRACE(path);
        XObj8 original, back;
        ASSERT_TRUE(XObj8Read(path.c_str(), original));
        std::string why;
        EXPECT_TRUE(XObj8Validate(original, &why)) << why;
        ASSERT_TRUE(XObj8Write(copy.c_str(), original));
        ASSERT_TRUE(XObj8Read(copy.c_str(), back));
        ExpectSameObj8(original, back, "OBJ8 writer");

        // Through OBJ7 and back, the geometry stays; animations are reported lost.
        XObj old, reread;
        const std::vector<std::string> lost = Obj8ToObj7(original, old);
        if (!original.animations.empty()) {
            EXPECT_TRUE(std::any_of(lost.begin(), lost.end(), [](const std::string& l) {
                return l.find("animation") != std::string::npos;
            }));
            continue;
        }
        ++withoutAnimations;
        ASSERT_TRUE(XObjWrite(copy.c_str(), old));
        ASSERT_TRUE(XObjRead(copy.c_str(), reread));
        Obj7ToObj8(reread, back);
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
    EXPECT_GE(withoutAnimations, 10);
}

TEST(ObjCorpus, EveryObj7FileRoundTripsAndConvertsToValidObj8AndBack) {
    KALVORA_REQUIRE_CORPUS();
    const std::vector<std::string> files = CorpusFiles("obj7");
    ASSERT_GE(files.size(), 4u);
    kalvora_test::TempFolder dir;
    const std::string copy = dir.file("copy.obj");
    for (const std::string& path : files) {
        SCOPED_TRACE(path);
        XObj original, back;
        ASSERT_TRUE(XObjRead(path.c_str(), original));
        ASSERT_FALSE(original.cmds.empty());
        ASSERT_TRUE(XObjWrite(copy.c_str(), original));
        const std::string text = kalvora_test::ReadFile(copy);
        EXPECT_EQ(text.compare(0, 11, "A\r700\rOBJ\r\r"), 0);
        EXPECT_EQ(text.compare(text.size() - 4, 4, "end\r"), 0);
        // Read back and written again, the text is the same: nothing was lost or changed on the way.
        ASSERT_TRUE(XObjRead(copy.c_str(), back));
        ASSERT_TRUE(XObjWrite(copy.c_str(), back));
        EXPECT_EQ(kalvora_test::ReadFile(copy), text);

        size_t triangles = 0;
        for (const auto& level : Obj7TrianglesByRange(original))
            triangles += level.second.size();
        EXPECT_GT(triangles, 0u);
        XObj8 converted, reread;
        Obj7ToObj8(original, converted);
        std::string why;
        EXPECT_TRUE(XObj8Validate(converted, &why)) << why;
        EXPECT_EQ(converted.texture, original.texture);
        size_t convertedTriangles = 0;
        for (const auto& level : TrianglesByLevel(converted))
            convertedTriangles += level.size();
        EXPECT_EQ(convertedTriangles, triangles);
        EXPECT_EQ(static_cast<size_t>(converted.geoLights.count()),
                  Obj7ColourVertices(original, obj_Light).size());
        EXPECT_EQ(static_cast<size_t>(converted.geoLines.count()),
                  Obj7ColourVertices(original, obj_Line).size());
        ASSERT_TRUE(XObj8Write(copy.c_str(), converted));
        ASSERT_TRUE(XObj8Read(copy.c_str(), reread));
        ExpectSameObj8(converted, reread, "OBJ8 writer");

        Obj8ToObj7(converted, back);
        EXPECT_EQ(back.texture, original.texture);
        EXPECT_TRUE(Obj7TrianglesByRange(back) == Obj7TrianglesByRange(original)) << "triangles differ";
        EXPECT_EQ(Obj7ColourVertices(back, obj_Line), Obj7ColourVertices(original, obj_Line));
        EXPECT_EQ(Obj7ColourVertices(back, obj_Light), Obj7ColourVertices(original, obj_Light));
        EXPECT_EQ(Smokes(back), Smokes(original));
    }
}

TEST(ObjCorpus, ParticularFiles) {
    KALVORA_REQUIRE_CORPUS();
    XObj8 obj, reference;
    ASSERT_TRUE(XObj8Read(corpusPath("obj8/marginal_KSBD_example_orig_v8.obj").c_str(), reference));
    EXPECT_EQ(reference.texture, "KSBD_example.png");
    EXPECT_EQ(reference.textureLit, "KSBD_example_LIT.png");
    ASSERT_EQ(reference.lods.size(), 2u);

    // Its OBJ7 original converts to the same levels, triangles, lines and lights.
    XObj old;
    ASSERT_TRUE(XObjRead(corpusPath("obj7/marginal_KSBD_example_orig.obj").c_str(), old));
    EXPECT_EQ(old.texture, "KSBD_example");
    Obj7ToObj8(old, obj);
    ASSERT_EQ(obj.lods.size(), reference.lods.size());
    for (size_t l = 0; l < reference.lods.size(); ++l) {
        EXPECT_EQ(obj.lods[l].lodNear, reference.lods[l].lodNear);
        EXPECT_EQ(obj.lods[l].lodFar, reference.lods[l].lodFar);
    }
    EXPECT_TRUE(TrianglesByLevel(obj) == TrianglesByLevel(reference)) << "triangles differ";
    EXPECT_EQ(ColourPoints(obj.geoLines), ColourPoints(reference.geoLines));
    EXPECT_EQ(ColourPoints(obj.geoLights), ColourPoints(reference.geoLights));

    // CRLF line ends and no final line end; a garbage first line, which is not judged.
    for (const char* name : {"obj8/osm2xp_chimney-100.obj", "obj8/bluebell_A320_DTR_bad_header.obj"}) {
        ASSERT_TRUE(XObj8Read(corpusPath(name).c_str(), obj)) << name;
        EXPECT_GT(obj.geoTris.count(), 0) << name;
        EXPECT_FALSE(obj.lods[0].cmds.empty()) << name;
    }
    for (const char* name : {"obj8/marginal_hardtest.obj", "obj8/marginal_animkey.obj"}) {
        ASSERT_TRUE(XObj8Read(corpusPath(name).c_str(), obj));
        EXPECT_EQ(obj.texture, "") << name << ": \"TEXTURE\" with no name is not a texture line";
    }
    // Neither generation's reader takes the other's files.
    EXPECT_FALSE(XObjRead(corpusPath("obj8/marginal_lights.obj").c_str(), old));
    EXPECT_FALSE(XObj8Read(corpusPath("obj7/marginal_KSBD_example.obj").c_str(), obj));
}
