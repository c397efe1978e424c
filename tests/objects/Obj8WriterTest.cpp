// Writing version-800 files: layout of the text and reading it back.
#include "ObjTestSupport.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8Writer.h"
#include "support/Files.h"

namespace {

XObjCmd8 Cmd(int id, int offset = 0, int count = 0, float p0 = 0) {
    XObjCmd8 c{};
    c.id = id;
    c.idxOffset = offset;
    c.idxCount = count;
    c.params[0] = p0;
    return c;
}

} // namespace

TEST(Obj8Writer, EverythingReadsBackWhetherReplacingOrNot) {
    XObj8 obj; // three textured points, two triangles over them, lines, a light and two levels
    obj.texture = "truck.png";
    obj.textureLit = "truck_LIT.png";
    obj.geoLines.clear(6);
    obj.geoLights.clear(6);
    for (int i = 0; i < 3; ++i) {
        const float p[8] = {float(i), 1.5f, -2.25f, 0, 1, 0, 0.125f * i, 1.0f - 0.125f * i};
        obj.geoTris.append(p);
    }
    obj.indices = {0, 1, 2, 0, 1, 2};
    const float line[6] = {1, 2, 3, 0.5f, 0.25f, 1};
    obj.geoLines.append(line);
    obj.geoLines.append(line);
    obj.geoLights.append(line);
    obj.lods.resize(2);
    obj.lods[0].lodFar = 500;
    obj.lods[0].cmds = {Cmd(obj8_Tris, 0, 3), Cmd(anim_Rotate, 0), Cmd(anim_Translate, 1)};
    obj.lods[1].lodNear = 500;
    obj.lods[1].lodFar = 3000.5f;
    obj.lods[1].cmds = {Cmd(obj8_Lights, 0, 1), Cmd(attr_Offset, 0, 0, 2)};
    obj.animations = {{"sim/a", {{{0, 1, 0}, -45.5f, 0}, {{0, 1, 0}, 90, 1}}},
                      {"sim/b", {{{1, 2, 3}, 0, -1}, {{4, 5, 6.125f}, 0, 1}}}};

    kalvora_test::TempFolder dir;
    for (const bool replacing : {false, true}) {
        const std::string path = dir.write("x.obj", "old model");
        ASSERT_TRUE(replacing ? XObj8WriteReplacing(path.c_str(), obj) : XObj8Write(path.c_str(), obj));
        XObj8 back;
        ASSERT_TRUE(XObj8Read(path.c_str(), back));
        objtest::ExpectSameObj8(obj, back, replacing ? "replacing" : "plain");
        EXPECT_FLOAT_EQ(back.animations[0].key[0].angle, -45.5f); // angles belong to rotations only
        EXPECT_FLOAT_EQ(back.animations[0].key[1].angle, 90.0f);
    }
    EXPECT_FALSE(XObj8Write("/nonexistent/folder/x.obj", obj));
    EXPECT_FALSE(XObj8Write(nullptr, obj));
    EXPECT_FALSE(XObj8WriteReplacing("/nonexistent/folder/x.obj", obj));
}
