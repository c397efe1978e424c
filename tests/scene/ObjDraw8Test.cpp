// ObjDraw8 on simhost's renderer: level of detail, animation, the set-up and
// array binding of runs of geometry, polygon offset, and real models.
#include "SceneFixture.h"
#include "TestModels.h"
#include "support/Corpus.h"

#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"
#include "objects/ObjDraw8.h"

#include <dirent.h>

#include <string>
#include <vector>

using namespace kalvora_scene_test;
using kalvora_test::corpusPath;

namespace {

constexpr float kQuadDepthM = -10.0f; ///< test quads stand 10 m in front of the camera

/// What the drawing callbacks were asked to do, in order, and the value that drives animations.
struct Recorder {
    std::string calls;
    float animValue = 0;
};

void Note(void* ref, const char* what) {
    auto* r = static_cast<Recorder*>(ref);
    if (!r->calls.empty()) r->calls += ",";
    r->calls += what;
}

ObjDrawFuncs_t RecordingFuncs() {
    ObjDrawFuncs_t f{};
    // Untextured, so the quads show their diffuse colour.
    f.SetupPoly = [](void* ref) {
        glDisable(GL_TEXTURE_2D);
        Note(ref, "poly");
    };
    f.SetupLine = [](void* ref) { Note(ref, "line"); };
    f.SetupLight = [](void* ref) { Note(ref, "light"); };
    f.SetupMovie = [](void* ref) { Note(ref, "movie"); };
    f.SetupPanel = [](void* ref) {
        glDisable(GL_TEXTURE_2D);
        Note(ref, "panel");
    };
    f.TexCoord = [](const float*, void* ref) { Note(ref, "texcoord"); };
    f.TexCoordPointer = [](int size, unsigned long type, long stride, const void* p, void* ref) {
        Default_TexCoordPointer(size, type, stride, p, nullptr);
        Note(ref, "arrays");
    };
    f.GetAnimParam = [](const char*, float, float, void* ref) {
        return static_cast<Recorder*>(ref)->animValue;
    };
    return f;
}

/// A red quad left of centre and a green one right of it, each in its own level.
XObj8 TwoLevelObject() {
    XObj8 obj;
    const int left = AddQuad(obj, -3, -1, -1, 1, kQuadDepthM);
    const int right = AddQuad(obj, 1, -1, 3, 1, kQuadDepthM);
    XObjLOD8 nearLevel = Lod(0, 1000);
    nearLevel.cmds = {Cmd(attr_Diffuse_RGB, 1, 0, 0), Tris(left)};
    XObjLOD8 farLevel = Lod(1000, 5000);
    farLevel.cmds = {Cmd(attr_Diffuse_RGB, 0, 1, 0), Tris(right)};
    obj.lods = {nearLevel, farLevel};
    return obj;
}

class ObjDraw8Test : public SceneTest {
protected:
    /// Renders `obj` at level-of-detail distance `dist` with the recording callbacks.
    simhost::gfx::Image Draw(const XObj8& obj, float dist) {
        return Render([&] {
            glDisable(GL_LIGHTING);
            glDisable(GL_CULL_FACE);
            ObjDrawFuncs_t f = RecordingFuncs();
            ObjDraw8(obj, dist, &f, &recorder_);
        });
    }
    /// Pixels left and right of the centre that differ from an empty frame.
    std::pair<Blob, Blob> Sides(const simhost::gfx::Image& image) {
        simhost::gfx::Image left = image, right = image;
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x) {
                uint8_t* p = &(x < image.width / 2 ? right : left)
                                  .rgba[(size_t(image.height - 1 - y) * image.width + x) * 4];
                const uint8_t* e = &empty_.rgba[(size_t(image.height - 1 - y) * image.width + x) * 4];
                std::copy(e, e + 4, p);
            }
        return {Difference(left, empty_), Difference(right, empty_)};
    }
    void SetUp() override {
        SceneTest::SetUp();
        if (IsSkipped()) return;
        empty_ = Render([] {});
    }
    Recorder recorder_;
    simhost::gfx::Image empty_;
};

TEST_F(ObjDraw8Test, LevelOfDetailLastMatchingLevelWinsAndLastLevelIsTheFallback) {
    const XObj8 obj = TwoLevelObject();
    struct Case {
        float dist;
        bool nearDrawn, farDrawn;
    };
    // 1000 lies in both ranges (the last wins); 6000 in none (the last level is drawn).
    for (const Case c : {Case{500, true, false}, Case{1000, false, true}, Case{6000, false, true},
                         Case{0, true, false}, Case{5000, false, true}}) {
        const auto [left, right] = Sides(Draw(obj, c.dist));
        EXPECT_EQ(left.count > 100, c.nearDrawn) << "distance " << c.dist;
        EXPECT_EQ(right.count > 100, c.farDrawn) << "distance " << c.dist;
        if (c.nearDrawn) {
            EXPECT_GT(left.r, 200) << "near level is red";
        }
        if (c.farDrawn) {
            EXPECT_GT(right.g, 200) << "far level is green";
        }
    }
}

TEST_F(ObjDraw8Test, AnUnrangedLevelIsDrawnAtEveryDistance) {
    XObj8 obj;
    const int q = AddQuad(obj, 1, -1, 3, 1, kQuadDepthM);
    XObjLOD8 l = Lod(0, 0);
    l.cmds = {Tris(q)};
    obj.lods = {l};
    for (float dist : {0.0f, 500.0f, 1e6f})
        EXPECT_GT(Sides(Draw(obj, dist)).second.count, 100) << "distance " << dist;
}

TEST_F(ObjDraw8Test, AnObjectWithoutLevelsDrawsNothing) {
    XObj8 obj;
    AddQuad(obj, 1, -1, 3, 1, kQuadDepthM);
    EXPECT_EQ(Difference(Draw(obj, 0), empty_).count, 0);
    EXPECT_EQ(recorder_.calls, "");
}

/// A quad right of centre inside ANIM_begin/ANIM_end with one animation step.
XObj8 AnimatedQuad(int animId, const XObjAnim8& record) {
    XObj8 obj;
    const int q = AddQuad(obj, 1, -0.5f, 3, 0.5f, kQuadDepthM);
    obj.animations = {record};
    XObjLOD8 l;
    l.cmds = {Cmd(anim_Begin), Anim(animId, 0), Tris(q), Cmd(anim_End)};
    obj.lods = {l};
    return obj;
}

TEST_F(ObjDraw8Test, RotationInterpolatesWithoutClamping) {
    const float axisZ[3] = {0, 0, 1};
    // Keys (0 deg at 0) and (90 deg at 1): a driving value of 2 turns by 180 deg, to the left side.
    const XObj8 obj = AnimatedQuad(anim_Rotate, AnimRecord("sim/test/anim", axisZ, axisZ, 0, 90, 0, 1));
    recorder_.animValue = 0;
    auto [l0, r0] = Sides(Draw(obj, 0));
    EXPECT_GT(r0.count, 100);
    EXPECT_EQ(l0.count, 0);
    recorder_.animValue = 2;
    auto [l2, r2] = Sides(Draw(obj, 0));
    EXPECT_GT(l2.count, 100);
    EXPECT_EQ(r2.count, 0);
    EXPECT_NEAR(l2.cy, kFrameH / 2.0, 3) << "half a turn keeps the quad on the horizon";
    // A quarter turn (value 1) lifts it above the centre.
    recorder_.animValue = 1;
    const Blob up = Difference(Draw(obj, 0), empty_);
    EXPECT_GT(up.cy, kFrameH / 2.0 + 20);
    EXPECT_NEAR(up.cx, kFrameW / 2.0, 3);
}

TEST_F(ObjDraw8Test, RotationWithEqualKeyValuesUsesTheFirstAngle) {
    const float axisZ[3] = {0, 0, 1};
    const XObj8 obj = AnimatedQuad(anim_Rotate, AnimRecord("sim/test/anim", axisZ, axisZ, 180, 90, 1, 1));
    for (float v : {-7.0f, 1.0f, 42.0f}) {
        recorder_.animValue = v;
        auto [left, right] = Sides(Draw(obj, 0));
        EXPECT_GT(left.count, 100) << "value " << v;
        EXPECT_EQ(right.count, 0) << "value " << v;
    }
}

TEST_F(ObjDraw8Test, TranslationExtrapolatesBeyondItsKeys) {
    const float from[3] = {0, 0, 0}, to[3] = {1, 0, 0};
    const XObj8 obj = AnimatedQuad(anim_Translate, AnimRecord("sim/test/anim", from, to, 0, 0, 0, 1));
    recorder_.animValue = -4; // 4 m to the left: from [1, 3] to [-3, -1]
    auto [left, right] = Sides(Draw(obj, 0));
    EXPECT_GT(left.count, 100);
    EXPECT_EQ(right.count, 0);
}

TEST_F(ObjDraw8Test, SetUpAndArraysAreIssuedOnlyWhenTheKindOrCockpitModeChanges) {
    XObj8 obj;
    const int a = AddQuad(obj, -3, -1, -1, 1, kQuadDepthM);
    const int b = AddQuad(obj, 1, -1, 3, 1, kQuadDepthM);
    obj.geoLines.clear(6);
    const float l0[6] = {-1, 2, kQuadDepthM, 1, 1, 1}, l1[6] = {1, 2, kQuadDepthM, 1, 1, 1};
    const int lineFirst = static_cast<int>(obj.indices.size());
    obj.indices.push_back(obj.geoLines.append(l0));
    obj.indices.push_back(obj.geoLines.append(l1));
    XObjCmd8 lines = Cmd(obj8_Lines);
    lines.idxOffset = lineFirst;
    lines.idxCount = 2;

    struct Case {
        std::vector<XObjCmd8> cmds;
        const char* calls;
    };
    const Case cases[] = {
        {{Tris(a), Tris(b)}, "poly,arrays"},
        {{Tris(a), Cmd(attr_Cockpit), Tris(b)}, "poly,arrays,panel"},
        {{Tris(a), Cmd(attr_Cockpit), Tris(b), Cmd(attr_No_Cockpit), Tris(a)}, "poly,arrays,panel,poly"},
        {{Tris(a), lines, Tris(b)}, "poly,arrays,line,poly,arrays"},
        {{Cmd(attr_Cockpit), lines, Tris(a)}, "line,panel,arrays"},
    };
    for (const Case& c : cases) {
        XObjLOD8 l;
        l.cmds = c.cmds;
        obj.lods = {l};
        recorder_.calls.clear();
        const auto [left, right] = Sides(Draw(obj, 0));
        EXPECT_EQ(recorder_.calls, c.calls);
        EXPECT_GT(left.count + right.count, 100) << c.calls;
    }
}

TEST_F(ObjDraw8Test, PolygonOffsetTurnsDepthWritesOffAndBackOn) {
    XObj8 obj;
    AddQuad(obj, 1, -1, 3, 1, kQuadDepthM);
    XObjLOD8 l;
    l.cmds = {Cmd(attr_Offset, 2)};
    obj.lods = {l};
    GLfloat factor = 0, units = 0;
    GLboolean depthMask = GL_TRUE, offsetOn = GL_FALSE;
    auto probe = [&] {
        glGetFloatv(GL_POLYGON_OFFSET_FACTOR, &factor);
        glGetFloatv(GL_POLYGON_OFFSET_UNITS, &units);
        glGetBooleanv(GL_DEPTH_WRITEMASK, &depthMask);
        offsetOn = glIsEnabled(GL_POLYGON_OFFSET_FILL);
    };
    Render([&] {
        ObjDraw8(obj, 0, nullptr, nullptr);
        probe();
        glDepthMask(GL_TRUE);
    });
    EXPECT_FLOAT_EQ(factor, -10.0f);
    EXPECT_FLOAT_EQ(units, -1.0f);
    EXPECT_EQ(depthMask, GL_FALSE);
    EXPECT_EQ(offsetOn, GL_TRUE);

    obj.lods[0].cmds = {Cmd(attr_Offset, 2), Cmd(attr_Offset, 0)};
    Render([&] {
        ObjDraw8(obj, 0, nullptr, nullptr);
        probe();
    });
    EXPECT_FLOAT_EQ(factor, 0.0f);
    EXPECT_EQ(depthMask, GL_TRUE);
    EXPECT_EQ(offsetOn, GL_FALSE);
}

TEST_F(ObjDraw8Test, ResetAndDiffuseSetTheColourOfTheFollowingTriangles) {
    XObj8 obj;
    const int q = AddQuad(obj, -1, -1, 1, 1, kQuadDepthM);
    XObjLOD8 l;
    l.cmds = {Cmd(attr_Diffuse_RGB, 0, 0, 1), Tris(q)};
    obj.lods = {l};
    const Blob blue = Difference(Draw(obj, 0), empty_);
    EXPECT_GT(blue.b, 200);
    EXPECT_LT(blue.r, 40);
    obj.lods[0].cmds = {Cmd(attr_Diffuse_RGB, 0, 0, 1), Cmd(attr_Reset), Tris(q)};
    const Blob white = Difference(Draw(obj, 0), empty_);
    EXPECT_GT(white.r, 200);
    EXPECT_GT(white.g, 200);
}

TEST_F(ObjDraw8Test, LinesAndLightsTakeTheirColoursFromTheirPools) {
    XObj8 obj;
    obj.geoLines.clear(6);
    obj.geoLights.clear(6);
    // A green horizontal line above the centre, through the index list.
    const float a[6] = {-3, 1, kQuadDepthM, 0, 1, 0}, b[6] = {3, 1, kQuadDepthM, 0, 1, 0};
    obj.indices = {obj.geoLines.append(a), obj.geoLines.append(b)};
    XObjCmd8 lines = Cmd(obj8_Lines);
    lines.idxOffset = 0;
    lines.idxCount = 2;
    // Lights straight from their pool: the second of two, red, on the centre below the line.
    const float off[6] = {3, -3, kQuadDepthM, 0, 0, 1}, red[6] = {0, -1, kQuadDepthM, 1, 0, 0};
    obj.geoLights.append(off);
    obj.geoLights.append(red);
    XObjCmd8 lights = Cmd(obj8_Lights);
    lights.idxOffset = 1;
    lights.idxCount = 1;
    XObjLOD8 l;
    l.cmds = {lines, lights};
    obj.lods = {l};
    const auto image = Render([&] {
        glDisable(GL_LIGHTING);
        glPointSize(5);
        ObjDraw8(obj, 0, nullptr, nullptr);
        glPointSize(1);
    });
    const Blob drawn = Difference(image, empty_);
    EXPECT_GT(drawn.count, 100);
    int greenAbove = 0, redBelow = 0, blueAnywhere = 0;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            const uint32_t p = image.at(x, y);
            const int r = p >> 24, g = (p >> 16) & 0xFF, bl = (p >> 8) & 0xFF;
            greenAbove += (g > 200 && r < 60 && bl < 60 && y > kFrameH / 2) ? 1 : 0;
            redBelow +=
                (r > 200 && g < 60 && bl < 60 && y < kFrameH / 2 && std::abs(x - kFrameW / 2) < 6) ? 1 : 0;
            blueAnywhere += (bl > 200 && r < 60 && g < 60) ? 1 : 0;
        }
    EXPECT_GT(greenAbove, 100) << "the line, in its pool's colour";
    EXPECT_GT(redBelow, 4) << "the second light";
    EXPECT_EQ(blueAnywhere, 0) << "the first light is not drawn";
}

TEST_F(ObjDraw8Test, EveryValidCorpusModelDrawsWithoutAnOpenGLError) {
    KALVORA_REQUIRE_CORPUS();
    const std::string dir = corpusPath("obj8");
    DIR* d = opendir(dir.c_str());
    ASSERT_NE(d, nullptr);
    std::vector<std::string> names;
    while (dirent* e = readdir(d))
        if (std::string(e->d_name).size() > 4 &&
            std::string(e->d_name).substr(std::string(e->d_name).size() - 4) == ".obj")
            names.push_back(e->d_name);
    closedir(d);
    int drawn = 0;
    for (const std::string& name : names) {
        XObj8 obj;
        std::string why;
        if (!XObj8Read((dir + "/" + name).c_str(), obj) || !XObj8Validate(obj, &why)) continue;
        GLenum error = GL_NO_ERROR;
        testing::internal::CaptureStdout();
        Render([&] {
            while (glGetError() != GL_NO_ERROR) {
            }
            glPushMatrix();
            glTranslatef(0, 0, -200); // in front of the camera
            for (float dist : {0.0f, 500.0f, 5000.0f})
                ObjDraw8(obj, dist, nullptr, nullptr);
            glPopMatrix();
            error = glGetError();
            glDepthMask(GL_TRUE);
        });
        const std::string out = testing::internal::GetCapturedStdout();
        EXPECT_EQ(error, GLenum(GL_NO_ERROR)) << name;
        EXPECT_EQ(out.find("GL ERROR"), std::string::npos) << name << ": " << out;
        ++drawn;
    }
    EXPECT_GE(drawn, 10) << "most corpus models validate";
}

} // namespace
