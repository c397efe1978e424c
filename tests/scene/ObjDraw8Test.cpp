// ObjDraw8 on simhost's renderer: level of detail, animation, the colours of
// lines and lights, and real models.
#include "SceneFixture.h"
#include "TestModels.h"
#include "support/Corpus.h"

#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"
#include "objects/ObjDraw8.h"

#include <filesystem>
#include <string>
#include <vector>

using namespace kalvora_scene_test;
using kalvora_test::ColorOf;

namespace {

constexpr float kQuadDepthM = -10.0f; ///< test quads stand 10 m in front of the camera
constexpr int kSeen = 100;            ///< pixels that show a quad

class ObjDraw8Test : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        if (IsSkipped()) return;
        empty_ = Render([] {});
    }
    /// Renders `obj` at level-of-detail distance `dist`, unlit and untextured so the quads show their
    /// diffuse colour, with every animation driven by `animValue_`.
    simhost::gfx::Image Draw(const XObj8& obj, float dist) {
        return Render([&] {
            glDisable(GL_LIGHTING);
            glDisable(GL_CULL_FACE);
            ObjDrawFuncs_t f{Default_SetupLine,
                             Default_SetupLine,
                             Default_SetupLight,
                             Default_SetupMovie,
                             Default_SetupLine,
                             Default_TexCoord,
                             Default_TexCoordPointer,
                             [](const char*, float, float, void* ref) {
                                 return *static_cast<float*>(ref); }};
            ObjDraw8(obj, dist, &f, &animValue_);
        });
    }
    /// What was drawn left and right of the centre.
    std::pair<Blob, Blob> Sides(const simhost::gfx::Image& image) const {
        auto drawn = [&](bool left) {
            return kalvora_test::PixelsWhere(image, [&](int x, int y) {
                return (x < image.width / 2) == left &&
                       kalvora_test::Differ(ColorOf(image.at(x, y)), ColorOf(empty_.at(x, y)), 24);
            });
        };
        return {drawn(true), drawn(false)};
    }
    float animValue_ = 0;
    simhost::gfx::Image empty_;
};

TEST_F(ObjDraw8Test, TheLastMatchingLevelIsDrawnTheLastLevelOtherwise) {
    // A red quad left of centre in [0, 1000] m, a green one right of it in [1000, 5000] m.
    XObj8 obj;
    const int left = AddQuad(obj, -3, -1, -1, 1, kQuadDepthM), right = AddQuad(obj, 1, -1, 3, 1, kQuadDepthM);
    obj.lods.resize(2);
    obj.lods[0].lodFar = obj.lods[1].lodNear = 1000;
    obj.lods[1].lodFar = 5000;
    obj.lods[0].cmds = {Cmd(attr_Diffuse_RGB, 1, 0, 0), Tris(left)};
    obj.lods[1].cmds = {Cmd(attr_Diffuse_RGB, 0, 1, 0), Tris(right)};
    struct Case {
        float dist;
        bool nearDrawn, farDrawn;
    };
    // 1000 lies in both ranges (the last wins); 6000 in none (the last level is drawn).
    for (const Case c : {Case{500, true, false}, Case{1000, false, true}, Case{6000, false, true},
                         Case{0, true, false}, Case{5000, false, true}}) {
        const auto [l, r] = Sides(Draw(obj, c.dist));
        EXPECT_EQ(l.count > kSeen, c.nearDrawn) << "distance " << c.dist;
        EXPECT_EQ(r.count > kSeen, c.farDrawn) << "distance " << c.dist;
        EXPECT_TRUE(!c.nearDrawn || l.r > 200) << "near level is red";
        EXPECT_TRUE(!c.farDrawn || r.g > 200) << "far level is green";
    }
    // An object without levels draws nothing.
    obj.lods.clear();
    EXPECT_EQ(Difference(Draw(obj, 0), empty_).count, 0);
}

TEST_F(ObjDraw8Test, AnimationsInterpolateAndExtrapolateWithoutClamping) {
    // Keys (0 deg at 0) and (90 deg at 1) about the view axis: the quad right of centre swings up, then left.
    const XObj8 turned = AnimatedQuad(anim_Rotate, {"sim/a", {{{0, 0, 1}, 0, 0}, {{0, 0, 1}, 90, 1}}});
    // Equal key values: always the first angle (half a turn).
    const XObj8 stuck = AnimatedQuad(anim_Rotate, {"sim/a", {{{0, 0, 1}, 180, 1}, {{0, 0, 1}, 90, 1}}});
    // 1 m to the right per unit: at -4 the quad moves from [1, 3] m to [-3, -1] m.
    const XObj8 moved = AnimatedQuad(anim_Translate, {"sim/a", {{{0, 0, 0}, 0, 0}, {{1, 0, 0}, 0, 1}}});
    struct Case {
        const XObj8* obj;
        float value;
        int sideX, sideY; ///< where the quad's centre lands: -1 left/below, 0 centre, 1 right/above
    } cases[] = {{&turned, 0, 1, 0},  {&turned, 1, 0, 1},  {&turned, 2, -1, 0},
                 {&stuck, -7, -1, 0}, {&stuck, 42, -1, 0}, {&moved, -4, -1, 0}};
    for (const Case& c : cases) {
        animValue_ = c.value;
        const Blob b = Difference(Draw(*c.obj, 0), empty_);
        const double dx = b.cx - kFrameW / 2.0, dy = b.cy - kFrameH / 2.0;
        SCOPED_TRACE("value " + std::to_string(c.value) + " case " + std::to_string(&c - cases));
        EXPECT_GT(b.count, kSeen);
        EXPECT_TRUE(c.sideX ? dx * c.sideX > 20 : std::abs(dx) < 3) << dx;
        EXPECT_TRUE(c.sideY ? dy * c.sideY > 20 : std::abs(dy) < 3) << dy;
    }
}

TEST_F(ObjDraw8Test, LinesAndLightsTakeTheirPoolsColours) {
    XObj8 obj;
    // A green line above the centre through the index list; lights straight from their pool: the
    // second of two, red, on the centre below the line.
    obj.geoLines.clear(6);
    obj.geoLights.clear(6);
    const float a[6] = {-3, 1, kQuadDepthM, 0, 1, 0}, b[6] = {3, 1, kQuadDepthM, 0, 1, 0};
    obj.indices = {obj.geoLines.append(a), obj.geoLines.append(b)};
    const float off[6] = {3, -3, kQuadDepthM, 0, 0, 1}, red[6] = {0, -1, kQuadDepthM, 1, 0, 0};
    obj.geoLights.append(off);
    obj.geoLights.append(red);
    obj.lods.resize(1);
    obj.lods[0].cmds = {Range(obj8_Lines, 0, 2), Range(obj8_Lights, 1, 1)};
    const auto image = Render([&] {
        glDisable(GL_LIGHTING);
        glPointSize(5);
        ObjDraw8(obj, 0, nullptr, nullptr);
        glPointSize(1);
    });
    auto count = [&](auto picked) {
        return kalvora_test::PixelsWhere(image,
                                         [&](int x, int y) { return picked(ColorOf(image.at(x, y)), x, y); })
            .count;
    };
    EXPECT_GT(count([](kalvora_test::Rgb c, int, int y) {
                  return c.g > 200 && c.r < 60 && c.b < 60 && y > kFrameH / 2;
              }),
              kSeen)
        << "the line, in its pool's colour";
    EXPECT_GT(count([](kalvora_test::Rgb c, int x, int y) {
                  return c.r > 200 && c.g < 60 && c.b < 60 && y < kFrameH / 2 &&
                         std::abs(x - kFrameW / 2) < 6;
              }),
              4)
        << "the second light";
    EXPECT_EQ(count([](kalvora_test::Rgb c, int, int) { return c.b > 200 && c.r < 60 && c.g < 60; }), 0)
        << "the first light is not drawn";
}

TEST_F(ObjDraw8Test, EveryValidCorpusModelDrawsWithoutAnOpenGLError) {
    KALVORA_REQUIRE_CORPUS();
    int drawn = 0;
    for (const auto& e : std::filesystem::directory_iterator(kalvora_test::corpusPath("obj8"))) {
        XObj8 obj;
        const std::string name = e.path().filename().string();
        if (e.path().extension() != ".obj" || !XObj8Read(e.path().c_str(), obj) ||
            !XObj8Validate(obj, nullptr))
            continue;
        GLenum error = GL_NO_ERROR;
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
        EXPECT_EQ(error, GLenum(GL_NO_ERROR)) << name;
        ++drawn;
    }
    EXPECT_GE(drawn, 10) << "most corpus models validate";
}

} // namespace
