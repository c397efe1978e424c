// The readers, writers, validation and conversions against real files of both
// generations found in the wild.
#include "ObjTestSupport.h"
#include "objects/Obj7Writer.h"
#include "objects/Obj8ToObj7.h"
#include "objects/Obj8Validate.h"
#include "objects/Obj8Writer.h"

using namespace objtest;

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
        for (int id : {obj8_Lines, obj8_Lights})
            EXPECT_EQ(DrawnColourPoints(back, id), DrawnColourPoints(original, id)) << "colour points differ";
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
        // Read back and written again, the text is the same: nothing was lost or changed on the way.
        ASSERT_TRUE(XObjRead(copy.c_str(), back));
        ASSERT_TRUE(XObjWrite(copy.c_str(), back));
        EXPECT_EQ(kalvora_test::ReadFile(copy), text);

        XObj8 converted, reread;
        Obj7ToObj8(original, converted);
        std::string why;
        EXPECT_TRUE(XObj8Validate(converted, &why)) << why;
        EXPECT_EQ(converted.texture, original.texture);
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
