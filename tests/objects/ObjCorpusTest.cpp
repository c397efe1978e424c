// The readers, writer, validation and conversion against real files of both
// generations found in the wild.
#include "ObjTestSupport.h"
#include "objects/Obj7Reader.h"
#include "objects/Obj7ToObj8.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"
#include "objects/Obj8Writer.h"
#include "support/Corpus.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <dirent.h>

using objtest::TempFile;

using namespace objtest;

TEST(ObjCorpus, EveryObj8FileReadsValidatesAndRoundTrips) {
    KALVORA_REQUIRE_CORPUS();
    const std::vector<std::string> files = CorpusFiles("obj8");
    ASSERT_GE(files.size(), 20u);
    for (const std::string& path : files) {
        SCOPED_TRACE(path);
        XObj8 obj;
        ASSERT_TRUE(XObj8Read(path.c_str(), obj));
        std::string why;
        EXPECT_TRUE(XObj8Validate(obj, &why)) << why;
        TempFile copy;
        ASSERT_TRUE(XObj8Write(copy.path(), obj));
        XObj8 back;
        ASSERT_TRUE(XObj8Read(copy.path(), back));
        objtest::ExpectSameObj8(obj, back, path);
    }
}

TEST(ObjCorpus, Obj8FilesHoldWhatTheyDeclare) {
    KALVORA_REQUIRE_CORPUS();
    XObj8 obj;
    ASSERT_TRUE(XObj8Read(kalvora_test::corpusPath("obj8/marginal_KSBD_example_orig_v8.obj").c_str(), obj));
    EXPECT_EQ(obj.texture, "KSBD_example.png");
    EXPECT_EQ(obj.textureLit, "KSBD_example_LIT.png");
    EXPECT_EQ(obj.geoTris.count(), 120);
    EXPECT_EQ(obj.geoLines.count(), 8);
    EXPECT_EQ(obj.geoLights.count(), 4);
    EXPECT_EQ(obj.indices.size(), 260u);
    ASSERT_EQ(obj.lods.size(), 2u);
    EXPECT_EQ(obj.lods[1].lodNear, 1000.0f);
    EXPECT_EQ(obj.lods[1].lodFar, 5000.0f);

    // CRLF line ends and a file without its final line end.
    ASSERT_TRUE(XObj8Read(kalvora_test::corpusPath("obj8/osm2xp_chimney-100.obj").c_str(), obj));
    EXPECT_GT(obj.geoTris.count(), 0);
    EXPECT_FALSE(obj.lods[0].cmds.empty());
    for (const char* name : {"obj8/marginal_hardtest.obj", "obj8/marginal_animkey.obj"}) {
        ASSERT_TRUE(XObj8Read(kalvora_test::corpusPath(name).c_str(), obj));
        EXPECT_EQ(obj.texture, "") << name; // "TEXTURE" with no name is not a texture line
    }
}

TEST(ObjCorpus, TheFirstLineIsNotJudged) {
    KALVORA_REQUIRE_CORPUS();
    // This file's first line is garbage; the version and "OBJ" lines are right, so it reads.
    XObj8 obj;
    EXPECT_TRUE(XObj8Read(kalvora_test::corpusPath("obj8/bluebell_A320_DTR_bad_header.obj").c_str(), obj));
    EXPECT_GT(obj.geoTris.count(), 0);
    // The OBJ8 files are not OBJ7 files, and the other way round.
    XObj obj7;
    EXPECT_FALSE(XObjRead(kalvora_test::corpusPath("obj8/marginal_lights.obj").c_str(), obj7));
    EXPECT_FALSE(XObj8Read(kalvora_test::corpusPath("obj7/marginal_KSBD_example.obj").c_str(), obj));
}

TEST(ObjCorpus, Obj7FilesConvertToValidObj8) {
    KALVORA_REQUIRE_CORPUS();
    const std::vector<std::string> files = CorpusFiles("obj7");
    ASSERT_GE(files.size(), 4u);
    for (const std::string& path : files) {
        SCOPED_TRACE(path);
        XObj in;
        ASSERT_TRUE(XObjRead(path.c_str(), in));
        ASSERT_FALSE(in.cmds.empty());
        size_t triangles = 0, lights = 0, lines = 0;
        for (const XObjCmd& c : in.cmds) {
            if (c.kind == obj_Poly) triangles += Obj7Triangles(c).size() / 3;
            if (c.id == obj_Light) ++lights;
            if (c.id == obj_Line) ++lines;
        }
        EXPECT_GT(triangles, 0u);
        XObj8 out;
        Obj7ToObj8(in, out);
        std::string why;
        EXPECT_TRUE(XObj8Validate(out, &why)) << why;
        EXPECT_EQ(out.texture, in.texture);
        size_t outTriangles = 0;
        for (const auto& level : TrianglesByLevel(out))
            outTriangles += level.size();
        EXPECT_EQ(outTriangles, triangles);
        EXPECT_EQ(static_cast<size_t>(out.geoLights.count()), lights);
        EXPECT_EQ(static_cast<size_t>(out.geoLines.count()), lines * 2);

        // The converted object survives the OBJ8 writer.
        TempFile copy;
        ASSERT_TRUE(XObj8Write(copy.path(), out));
        XObj8 back;
        ASSERT_TRUE(XObj8Read(copy.path(), back));
        objtest::ExpectSameObj8(out, back, path);
    }
}

TEST(ObjCorpus, TheKsbdPairAgreesOnItsGeometry) {
    KALVORA_REQUIRE_CORPUS();
    XObj in;
    ASSERT_TRUE(XObjRead(kalvora_test::corpusPath("obj7/marginal_KSBD_example_orig.obj").c_str(), in));
    EXPECT_EQ(in.texture, "KSBD_example");
    XObj8 converted, reference;
    Obj7ToObj8(in, converted);
    ASSERT_TRUE(
        XObj8Read(kalvora_test::corpusPath("obj8/marginal_KSBD_example_orig_v8.obj").c_str(), reference));

    ASSERT_EQ(converted.lods.size(), reference.lods.size());
    for (size_t l = 0; l < reference.lods.size(); ++l) {
        EXPECT_EQ(converted.lods[l].lodNear, reference.lods[l].lodNear);
        EXPECT_EQ(converted.lods[l].lodFar, reference.lods[l].lodFar);
    }
    const auto mine = TrianglesByLevel(converted);
    const auto theirs = TrianglesByLevel(reference);
    ASSERT_EQ(mine.size(), theirs.size());
    for (size_t l = 0; l < mine.size(); ++l) {
        EXPECT_EQ(mine[l].size(), theirs[l].size()) << "level " << l;
        EXPECT_TRUE(mine[l] == theirs[l]) << "level " << l << ": triangles differ";
    }
    EXPECT_EQ(ColourPoints(converted.geoLines), ColourPoints(reference.geoLines));
    EXPECT_EQ(ColourPoints(converted.geoLights), ColourPoints(reference.geoLights));
}
