// The way back: the OBJ7 writer and the conversion from OBJ8 to OBJ7.
#include "ObjTestSupport.h"
#include "objects/Obj7Writer.h"
#include "objects/Obj8ToObj7.h"
#include "objects/TextScanners.h"

using namespace objtest;

namespace {

bool Mentions(const std::vector<std::string>& report, const std::string& word) {
    return std::any_of(report.begin(), report.end(),
                       [&](const std::string& line) { return line.find(word) != std::string::npos; });
}

} // namespace

TEST(Obj7Writer, NumbersAreShortestAndExact) {
    const std::pair<float, const char*> shortest[] = {
        {0.5f, "0.5"}, {3.0f, "3"}, {-0.25f, "-0.25"}, {0.1f, "0.1"}, {0.7406f, "0.7406"}};
    for (const auto& s : shortest)
        EXPECT_EQ(FormatObjNumber(s.first), s.second);
    // The last two are only reached from decimals other than their correctly rounded ones.
    for (float f : {1234.5677f, -0.0001f, 16777215.0f, 3.14159274f, 1e-7f, 0.00670052646f, 62.9355354f}) {
        const std::string s = FormatObjNumber(f);
        EXPECT_EQ(s.find('e'), std::string::npos) << s;
        std::vector<unsigned char> text(s.begin(), s.end());
        unsigned char* p = text.data();
        EXPECT_EQ(TXT_MAP_flt_scan(p, p + text.size(), false), f) << s;
    }
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
    for (int id :
         {anim_Begin, anim_Rotate, attr_Hard, obj8_Tris, attr_No_Hard, anim_End, attr_Blend, obj8_Tris}) {
        XObjCmd8 c{};
        c.id = id;
        obj.lods[0].cmds.push_back(c);
    }
    obj.lods[0].cmds[3].idxCount = 3;
    obj.lods[0].cmds[7].idxOffset = 1;
    obj.lods[0].cmds[7].idxCount = 3;
    XObj out;
    const std::vector<std::string> lost = Obj8ToObj7(obj, out);
    for (const char* word :
         {"3 animation", "a_LIT.png", "1 hard triangles", "ATTR_blend", "outside the triangle pool"})
        EXPECT_TRUE(Mentions(lost, word)) << word;
    EXPECT_FALSE(Mentions(lost, "normals")); // all zero: nothing of value lost
    ASSERT_EQ(out.cmds.size(), 1u);
    EXPECT_EQ(out.cmds[0].id, obj_Tri);
}
