// Validation refuses every command that would read outside the object's arrays.
#include "objects/Obj8Validate.h"

#include <gtest/gtest.h>

namespace {

/// Appends a command to a level.
void Add(XObj8& o, int id, int offset = 0, int count = 0, size_t lod = 0) {
    XObjCmd8 c{};
    c.id = id;
    c.idxOffset = offset;
    c.idxCount = count;
    o.lods[lod].cmds.push_back(c);
}

/// Three triangle points, two line points, one light and one animation, each drawn once.
XObj8 ValidObject() {
    XObj8 obj;
    obj.geoLines.clear(6);
    obj.geoLights.clear(6);
    obj.geoTris.resize(3);
    obj.geoLines.resize(2);
    obj.geoLights.resize(1);
    obj.indices = {0, 1, 2, 0, 1};
    obj.animations.resize(1);
    obj.lods.emplace_back();
    Add(obj, obj8_Tris, 0, 3);
    Add(obj, obj8_Lines, 3, 2);
    Add(obj, obj8_Lights, 0, 1);
    Add(obj, anim_Rotate, 0);
    return obj;
}

} // namespace

TEST(Obj8Validate, AcceptsAConsistentObjectAndRefusesEachWayOfReadingOutside) {
    std::string why = "stale";
    XObj8 valid = ValidObject();
    valid.indices.push_back(999);                               // covered by no range: not judged
    Add(valid, attr_Shade_Flat, -7);                            // an offset means nothing to an attribute
    for (int id : {anim_Begin, anim_Begin, anim_End, anim_End}) // nested and closed
        Add(valid, id);
    EXPECT_TRUE(XObj8Validate(valid, &why));
    EXPECT_TRUE(why.empty());
    EXPECT_TRUE(XObj8Validate(valid, nullptr));

    struct Case {
        const char* name;
        void (*damage)(XObj8&);
        const char* reason;
    } cases[] = {
        {"no level", [](XObj8& o) { o.lods.clear(); }, "level"},
        {"tris past index list", [](XObj8& o) { o.lods[0].cmds[0].idxCount = 6; }, "index list"},
        {"negative offset", [](XObj8& o) { o.lods[0].cmds[0].idxOffset = -1; }, "index list"},
        {"overflowing range", [](XObj8& o) { o.lods[0].cmds[0].idxCount = 0x7fffffff; }, "index list"},
        {"triangle index", [](XObj8& o) { o.indices[2] = 3; }, "triangle pool"},
        {"line index", [](XObj8& o) { o.indices[4] = 2; }, "line pool"},
        {"light range", [](XObj8& o) { o.lods[0].cmds[2].idxOffset = 1; }, "light pool"},
        {"animation", [](XObj8& o) { o.lods[0].cmds[3].idxOffset = 1; }, "animation"},
        {"line pool depth", [](XObj8& o) { o.geoLines.depth = 8; }, "6 floats"},
        {"unclosed block", [](XObj8& o) { Add(o, anim_Begin); }, "without ANIM_end"},
        {"stray end", [](XObj8& o) { Add(o, anim_End); }, "no ANIM_begin"},
        // Each level is drawn alone: a block opened in one cannot be closed in the next.
        {"block across levels",
         [](XObj8& o) {
             o.lods.emplace_back();
             Add(o, anim_Begin);
             Add(o, anim_End, 0, 0, 1);
         },
         "ANIM_"},
    };
    for (const Case& c : cases) {
        XObj8 o = ValidObject();
        c.damage(o);
        EXPECT_FALSE(XObj8Validate(o, &why)) << c.name;
        EXPECT_NE(why.find(c.reason), std::string::npos) << c.name << ": " << why;
    }
}
