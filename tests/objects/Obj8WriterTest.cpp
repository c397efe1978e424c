// Writing version-800 files: layout of the text and reading it back.
#include "ObjTestSupport.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8Writer.h"

#include <algorithm>

using objtest::TempFile;

namespace {

size_t CountLines(const std::string& text, const std::string& prefix) {
    size_t n = 0, pos = 0;
    while (pos < text.size()) {
        size_t eol = text.find('\r', pos);
        if (eol == std::string::npos) eol = text.size();
        if (text.compare(pos, prefix.size(), prefix) == 0) ++n;
        pos = eol + 1;
    }
    return n;
}

XObj8 SmallObject(int indexCount) {
    XObj8 obj;
    obj.texture = "truck.png";
    obj.geoLines.clear(6);
    obj.geoLights.clear(6);
    for (int i = 0; i < 3; ++i) {
        const float p[8] = {float(i), 1.5f, -2.25f, 0, 1, 0, 0.125f * i, 1.0f - 0.125f * i};
        obj.geoTris.append(p);
    }
    for (int i = 0; i < indexCount; ++i)
        obj.indices.push_back(i % 3);
    obj.lods.emplace_back();
    return obj;
}

} // namespace

TEST(Obj8Writer, IndicesGoTenToALineThenOneEach) {
    XObj8 obj = SmallObject(23);
    XObjCmd8 tris{};
    tris.id = obj8_Tris;
    tris.idxOffset = 0;
    tris.idxCount = 21;
    obj.lods[0].cmds.push_back(tris);
    TempFile f;
    ASSERT_TRUE(XObj8Write(f.path(), obj));
    const std::string text = f.read();
    EXPECT_EQ(CountLines(text, "IDX10 "), 2u);
    EXPECT_EQ(CountLines(text, "IDX "), 3u);
    EXPECT_EQ(text.find('\n'), std::string::npos); // CR line ends only
    EXPECT_EQ(text.compare(0, 12, "A\r800\rOBJ\r\rT"), 0);
    EXPECT_NE(text.find("POINT_COUNTS 3 0 0 23\r"), std::string::npos);
    EXPECT_EQ(CountLines(text, "ATTR_LOD"), 0u); // a level without a range writes no line
    EXPECT_EQ(CountLines(text, "TEXTURE_LIT"), 0u);

    XObj8 back;
    ASSERT_TRUE(XObj8Read(f.path(), back));
    objtest::ExpectSameObj8(obj, back, "23 indices");
}

TEST(Obj8Writer, NoIndicesNoIndexLines) {
    XObj8 obj = SmallObject(0);
    obj.texture.clear();
    TempFile f;
    ASSERT_TRUE(XObj8Write(f.path(), obj));
    const std::string text = f.read();
    EXPECT_EQ(CountLines(text, "IDX"), 0u);
    EXPECT_NE(text.find("POINT_COUNTS 3 0 0 0\r"), std::string::npos);
    EXPECT_NE(text.find("TEXTURE \r"), std::string::npos); // written even when empty
}

TEST(Obj8Writer, CommandsUseTheirFirstSpelling) {
    XObj8 obj = SmallObject(3);
    XObjCmd8 c{};
    c.id = attr_Diffuse_RGB;
    c.params[0] = 0.25f;
    c.params[1] = 0.5f;
    c.params[2] = 1.0f;
    obj.lods[0].cmds.push_back(c);
    c.id = attr_Shade_Flat;
    obj.lods[0].cmds.push_back(c);
    c.id = attr_Max; // not a command: nothing written
    obj.lods[0].cmds.push_back(c);
    c.id = anim_Begin;
    obj.lods[0].cmds.push_back(c);
    TempFile f;
    ASSERT_TRUE(XObj8Write(f.path(), obj));
    const std::string text = f.read();
    EXPECT_NE(text.find("\rATTR_diffuse_rgb 0.250000 0.500000 1.000000\rATTR_shade_flat\rANIM_begin\r"),
              std::string::npos);
}

TEST(Obj8Writer, EverythingReadsBack) {
    XObj8 obj = SmallObject(6);
    obj.textureLit = "truck_LIT.png";
    const float line[6] = {1, 2, 3, 0.5f, 0.25f, 1};
    obj.geoLines.append(line);
    obj.geoLines.append(line);
    obj.geoLights.append(line);
    obj.lods[0].lodNear = 0;
    obj.lods[0].lodFar = 500;
    XObjCmd8 c{};
    c.id = obj8_Tris;
    c.idxOffset = 0;
    c.idxCount = 3;
    obj.lods[0].cmds.push_back(c);
    c.id = anim_Rotate;
    c.idxOffset = 0;
    obj.lods[0].cmds.push_back(c);
    c.id = anim_Translate;
    c.idxOffset = 1;
    obj.lods[0].cmds.push_back(c);
    obj.lods.emplace_back();
    obj.lods[1].lodNear = 500;
    obj.lods[1].lodFar = 3000.5f;
    c.id = obj8_Lights;
    c.idxOffset = 0;
    c.idxCount = 1;
    obj.lods[1].cmds.push_back(c);
    c.id = attr_Offset;
    c.params[0] = 2;
    obj.lods[1].cmds.push_back(c);
    XObjAnim8 rot{"sim/a", {{{0, 1, 0}, -45.5f, 0}, {{0, 1, 0}, 90, 1}}};
    XObjAnim8 tr{"sim/b", {{{1, 2, 3}, 0, -1}, {{4, 5, 6.125f}, 0, 1}}};
    obj.animations = {rot, tr};

    TempFile f;
    ASSERT_TRUE(XObj8Write(f.path(), obj));
    XObj8 back;
    ASSERT_TRUE(XObj8Read(f.path(), back));
    objtest::ExpectSameObj8(obj, back, "full object");
    EXPECT_FLOAT_EQ(back.animations[0].key[0].angle, -45.5f);
    EXPECT_FLOAT_EQ(back.animations[0].key[1].angle, 90.0f);
}

TEST(Obj8Writer, UnwritablePathFails) {
    XObj8 obj = SmallObject(0);
    EXPECT_FALSE(XObj8Write("/nonexistent/folder/x.obj", obj));
    EXPECT_FALSE(XObj8Write(nullptr, obj));
}

TEST(Obj8Writer, ReplacingWriteSwapsTheWholeFileOrNothing) {
    TempFile target("old model");
    XObj8 obj = SmallObject(3);
    ASSERT_TRUE(XObj8WriteReplacing(target.path(), obj));
    XObj8 back;
    ASSERT_TRUE(XObj8Read(target.path(), back));
    objtest::ExpectSameObj8(obj, back, "replaced");
    EXPECT_FALSE(XObj8WriteReplacing("/nonexistent/folder/x.obj", obj));
}
