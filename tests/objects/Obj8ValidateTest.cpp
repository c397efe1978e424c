// Validation refuses every command that would read outside the object's arrays.
#include "objects/Obj8Validate.h"

#include <gtest/gtest.h>

namespace {

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
    auto add = [&](int id, int offset, int count) {
        XObjCmd8 c{};
        c.id = id;
        c.idxOffset = offset;
        c.idxCount = count;
        obj.lods[0].cmds.push_back(c);
    };
    add(obj8_Tris, 0, 3);
    add(obj8_Lines, 3, 2);
    add(obj8_Lights, 0, 1);
    add(anim_Rotate, 0, 0);
    return obj;
}

} // namespace

TEST(Obj8Validate, AcceptsAConsistentObject) {
    std::string why = "stale";
    EXPECT_TRUE(XObj8Validate(ValidObject(), &why));
    EXPECT_TRUE(why.empty());
    EXPECT_TRUE(XObj8Validate(ValidObject(), nullptr));
}

TEST(Obj8Validate, RefusesEachWayOfReadingOutside) {
    std::string why;
    XObj8 obj;
    EXPECT_FALSE(XObj8Validate(obj, &why)); // no level
    EXPECT_NE(why.find("level"), std::string::npos);

    struct Case {
        const char* name;
        void (*damage)(XObj8&);
        const char* reason;
    } cases[] = {
        {"tris past index list", [](XObj8& o) { o.lods[0].cmds[0].idxCount = 6; }, "index list"},
        {"negative offset", [](XObj8& o) { o.lods[0].cmds[0].idxOffset = -1; }, "index list"},
        {"negative count", [](XObj8& o) { o.lods[0].cmds[1].idxCount = -2; }, "index list"},
        {"overflowing range", [](XObj8& o) { o.lods[0].cmds[0].idxCount = 0x7fffffff; }, "index list"},
        {"triangle index", [](XObj8& o) { o.indices[2] = 3; }, "triangle pool"},
        {"negative index", [](XObj8& o) { o.indices[0] = -1; }, "triangle pool"},
        {"line index", [](XObj8& o) { o.indices[4] = 2; }, "line pool"},
        {"light range", [](XObj8& o) { o.lods[0].cmds[2].idxOffset = 1; }, "light pool"},
        {"animation", [](XObj8& o) { o.lods[0].cmds[3].idxOffset = 1; }, "animation"},
        {"line pool depth", [](XObj8& o) { o.geoLines.depth = 8; }, "6 floats"},
    };
    for (const Case& c : cases) {
        XObj8 o = ValidObject();
        c.damage(o);
        EXPECT_FALSE(XObj8Validate(o, &why)) << c.name;
        EXPECT_NE(why.find(c.reason), std::string::npos) << c.name << ": " << why;
    }
}

/// Appends a command with only its id set.
void Add(XObj8& o, int id, size_t lod = 0) {
    XObjCmd8 c{};
    c.id = id;
    o.lods[lod].cmds.push_back(c);
}

TEST(Obj8Validate, AnimationBlocksPairUpWithinEachLevel) {
    XObj8 o = ValidObject();
    Add(o, anim_Begin);
    Add(o, anim_Begin);
    Add(o, anim_End);
    Add(o, anim_End);
    EXPECT_TRUE(XObj8Validate(o, nullptr)) << "nested and closed";

    std::string why;
    XObj8 unclosed = o;
    Add(unclosed, anim_Begin);
    EXPECT_FALSE(XObj8Validate(unclosed, &why));
    EXPECT_NE(why.find("without ANIM_end"), std::string::npos) << why;

    XObj8 stray = o;
    Add(stray, anim_End);
    EXPECT_FALSE(XObj8Validate(stray, &why));
    EXPECT_NE(why.find("no ANIM_begin"), std::string::npos) << why;

    // A block opened in one level cannot be closed in the next: each level is drawn alone.
    XObj8 split = ValidObject();
    split.lods.emplace_back();
    Add(split, anim_Begin, 0);
    Add(split, anim_End, 1);
    EXPECT_FALSE(XObj8Validate(split, &why));

    XObj8 deep = ValidObject();
    for (int i = 0; i < 17; ++i)
        Add(deep, anim_Begin);
    for (int i = 0; i < 17; ++i)
        Add(deep, anim_End);
    EXPECT_FALSE(XObj8Validate(deep, &why));
    EXPECT_NE(why.find("deeper"), std::string::npos) << why;
}

TEST(Obj8Validate, UnusedIndicesAndOtherCommandsAreNotJudged) {
    XObj8 o = ValidObject();
    o.indices.push_back(999); // covered by no range
    XObjCmd8 c{};
    c.id = attr_Shade_Flat;
    c.idxOffset = -7; // meaningless for an attribute
    o.lods[0].cmds.push_back(c);
    EXPECT_TRUE(XObj8Validate(o, nullptr));
}
