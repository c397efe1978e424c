// Scene objects on simhost's renderer: placement and heading, day and night
// textures, distance culling, loading (OBJ7 upgrade, refusal of corrupt models),
// and renders of Kalvora's own models.
#include "SceneFixture.h"
#include "support/Files.h"
#include "support/SmallModels.h"
#include "support/TempFolder.h"

#include "objects/HV_XObject.h"
#include "objects/Obj8Reader.h"
#include "objects/TruckModel.h"

#include <filesystem>
#include <string>

using namespace kalvora_scene_test;
using kalvora_test::PictureFormat;
using kalvora_test::ReadFile;
using kalvora_test::WriteFile;
using kalvora_test::WritePicture;

namespace {

const std::string kAssets = std::string(KALVORA_SOURCE_DIR) + "/assets/Kalvora";
constexpr const char* kLights = "sim/graphics/scenery/percent_lights_on";
constexpr kalvora_test::Rgb kGreen{0, 255, 0}, kRed{255, 40, 40};

class SceneObjectTest : public SceneTest {
protected:
    /// A square panel of side 2 x `half` metres at `depth` metres from the model's origin (10 m ahead by
    /// default), facing it, saved as <dir>/<name>.obj with the texture <name>.png; returns <dir>/<name>.
    std::string PanelModel(const std::string& name, float half = 1.0f, float depth = -10.0f) {
        dir_.write(name + ".obj", kalvora_test::Obj8Text(
                                      name + ".png", {kalvora_test::Panel(-half, -half, half, half, depth)}));
        return dir_.file(name);
    }

    /// Renders one scene object (from a draw callback, in sunlight) against an empty frame.
    Blob Show(HV_XObject& object) {
        const auto empty = Render([] {});
        return Difference(Render([&] {
                              SunLight();
                              object.ShowXObject(true);
                          }),
                          empty);
    }

    kalvora_test::TempFolder dir_;
};

TEST_F(SceneObjectTest, TheNightTextureAboveSixtyTwoPercentLightsUnlitTheDayTextureOtherwise) {
    // The night picture's name: <base>LIT.png for PNG, else the base name with its last three characters
    // replaced by the format's ("truck" with "truck.TGA" gives "trTGA").
    struct Case {
        const char* base;
        const char* day;
        PictureFormat format;
        const char* night; ///< null: none
    } cases[] = {{"panel", "panel.png", PictureFormat::Png, "panelLIT.png"},
                 {"plain", "plain.PNG", PictureFormat::Png, nullptr}, // upper-case extension found too
                 {"truck", "truck.TGA", PictureFormat::Tga, "trTGA"},
                 {"gpux", "gpux.bmp", PictureFormat::Bmp, "gbmp"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.base);
        const std::string base = PanelModel(c.base);
        ASSERT_TRUE(WritePicture(dir_.file(c.day), c.format, 8, kGreen));
        ASSERT_TRUE(!c.night || WritePicture(dir_.file(c.night), c.format, 8, kRed));
        HV_XObject object;
        ASSERT_TRUE(object.LoadXObject(base.c_str()));
        EXPECT_EQ(object.litTexture != -1, c.night != nullptr);
        for (double lights : {0.0, 0.62, 0.63}) {
            host().set(kLights, lights);
            const Blob b = Show(object);
            EXPECT_GT(b.count, 500) << lights;
            if (lights > kNightLightsThreshold && c.night) {
                EXPECT_GT(b.r, 200) << "the night texture shines by itself at " << lights;
                EXPECT_LT(b.g, 80) << lights;
            } else {
                EXPECT_GT(b.g, b.r + 40) << "day texture at " << lights;
            }
        }
    }
    // No model, no day picture, or a night picture alone: nothing loads.
    HV_XObject object;
    EXPECT_FALSE(object.LoadXObject(dir_.file("missing").c_str()));
    const std::string bare = PanelModel("bare");
    EXPECT_FALSE(object.LoadXObject(bare.c_str()));
    ASSERT_TRUE(WritePicture(bare + "LIT.png", PictureFormat::Png, 8, kRed));
    EXPECT_FALSE(object.LoadXObject(bare.c_str()));
}

TEST_F(SceneObjectTest, HiddenFarAndScaledObjects) {
    // A 1 km square at the object's origin, seen from 2900 or 3500 m away.
    const std::string board = PanelModel("board", 500.0f, 0.0f);
    ASSERT_TRUE(WritePicture(board + ".png", PictureFormat::Png, 8, kGreen));
    HV_XObject object;
    ASSERT_TRUE(object.LoadXObject(board.c_str()));
    EXPECT_EQ(object.maxDistance, 3000);
    object.PositionLocal(0, 0, -2900);
    EXPECT_GT(Show(object).count, 1000);
    object.PositionLocal(0, 0, -3500);
    EXPECT_EQ(Show(object).count, 0);
    EXPECT_TRUE(object.IsVisible()) << "culling hides the object without changing its flag";
    object.maxDistance = 0; // never culled
    EXPECT_GT(Show(object).count, 1000);
    const auto empty = Render([] {});
    EXPECT_EQ(Difference(Render([&] { object.ShowXObject(false); }), empty).count, 0);
    EXPECT_FALSE(object.IsVisible());
    EXPECT_TRUE(object.SetVisibility(true));
    EXPECT_TRUE(object.IsVisible());

    const std::string panel = PanelModel("scaled");
    ASSERT_TRUE(WritePicture(panel + ".png", PictureFormat::Png, 8, kGreen));
    HV_XObject scaled;
    ASSERT_TRUE(scaled.LoadXObject(panel.c_str()));
    const Blob normal = Show(scaled);
    scaled.scaleX = 2.0f;
    const Blob wide = Show(scaled);
    EXPECT_NEAR(static_cast<double>(wide.count) / normal.count, 2.0, 0.15);
    EXPECT_NEAR(wide.cx, normal.cx, 2) << "scaled about the object's origin, on the view axis";
}

TEST_F(SceneObjectTest, TheTruckLandsAtItsPositionWithItsBodyAheadAlongItsHeading) {
    HV_XObject truck;
    ASSERT_TRUE(truck.LoadXObject((kAssets + "/KLVdefault").c_str())) << "generate the assets first";
    camera_ = kalvora_test::CameraAt(0, 36, 0, -90, 0); // looking straight down from 36 m
    struct Case {
        float x, z, heading;
    };
    for (const Case c : {Case{0, 0, 0}, Case{5, -3, 90}, Case{-4, 2, 180}, Case{0, 6, 270}}) {
        truck.Attitude(0, 0, c.heading);
        truck.PositionLocal(c.x, 1.0f, c.z); // the model's origin 1 m above the apron
        const Blob b = Show(truck);
        ASSERT_GT(b.count, 300) << "heading " << c.heading;
        // The coupling is at the position; the middle of what is seen from above (bar and tug) 4.2 m ahead.
        const double h = c.heading * kalvora_test::kRadPerDeg, aheadM = 4.2;
        const kalvora_test::Pixel p = kalvora_test::Project(camera_, c.x + aheadM * std::sin(h), 1.0,
                                                            c.z - aheadM * std::cos(h), kFrameW, kFrameH);
        EXPECT_NEAR(b.cx, p.x, 12) << "heading " << c.heading;
        EXPECT_NEAR(b.cy, p.y, 12) << "heading " << c.heading;
    }
}

TEST_F(SceneObjectTest, LoadMeshUpgradesOBJ7KeepingTheOriginalAndRefusesWhatItCannotDraw) {
    const std::string obj7 = "A\n700\nOBJ\n\ntex\n\nquad\n0 0 0 0 0\n1 0 0 1 0\n1 1 0 1 1\n0 1 0 0 1\nend\n";
    const std::string path = dir_.write("old.obj", obj7);
    HV_Mesh mesh;
    int list = 0;
    ASSERT_TRUE(mesh.LoadMesh(path.c_str(), list));
    EXPECT_NE(list, 0);
    EXPECT_FALSE(mesh.model.lods.empty());
    EXPECT_EQ(ReadFile(path + "7.bak"), obj7) << "the user's OBJ7 file is kept beside";
    XObj8 reread;
    EXPECT_TRUE(XObj8Read(path.c_str(), reread)) << "the file is OBJ8 now";
    // An existing backup is never overwritten.
    ASSERT_TRUE(WriteFile(path, obj7));
    ASSERT_TRUE(WriteFile(path + "7.bak", "an older backup"));
    ASSERT_TRUE(HV_Mesh().LoadMesh(path.c_str(), list));
    EXPECT_EQ(ReadFile(path + "7.bak"), "an older backup");
    EXPECT_TRUE(XObj8Read(path.c_str(), reread));

    // Neither format, or indices past the end of the vertex pool (drawing would read outside the arrays):
    // refused, said in the log, and the file left alone without a backup.
    const std::string bad[] = {"I\n900\nOBJ\nnot a model\n",
                               "A\n800\nOBJ\n\nTEXTURE none.png\nPOINT_COUNTS 3 0 0 3\nVT 0 0 0 0 0 1 0 0\n"
                               "VT 1 0 0 0 0 1 1 0\nVT 1 1 0 0 0 1 1 1\nIDX 0\nIDX 1\nIDX 7\nTRIS 0 3\n"};
    for (const std::string& text : bad) {
        const std::string broken = dir_.write("broken.obj", text);
        HV_Mesh refused;
        list = -5;
        EXPECT_FALSE(refused.LoadMesh(broken.c_str(), list));
        EXPECT_EQ(list, -5);
        EXPECT_TRUE(refused.model.lods.empty()) << "nothing of it would be drawn";
        EXPECT_EQ(ReadFile(broken), text);
        EXPECT_EQ(ReadFile(broken + "7.bak"), "");
    }
    EXPECT_NE(host().logText().find("broken.obj"), std::string::npos);
}

// ---------------------------------------------------------------------------------------------
// Renders of Kalvora's own models, written beside the build (scripts/make-assets.sh copies them
// into docs/img). Each must show the model and differ between day and night.

/// An apron square and a nose-gear leg with its wheel at the origin (aircraft heading north), at
/// `light` (0..1) of their daylight colours.
void DrawApronAndNoseGear(float light) {
    // A quad between opposite corners (x0, y0, z0) and (x1, y1, z1) in its daylight colour: lying flat
    // when y0 == y1, else standing upright.
    auto quad = [light](float r, float g, float b, float x0, float y0, float z0, float x1, float y1,
                        float z1) {
        glColor3f(r * light, g * light, b * light);
        glBegin(GL_QUADS);
        glVertex3f(x0, y0, z0);
        glVertex3f(x0, y0 == y1 ? y0 : y1, y0 == y1 ? z1 : z0);
        glVertex3f(x1, y1, z1);
        glVertex3f(x1, y0, y0 == y1 ? z0 : z1);
        glEnd();
    };
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    quad(0.38f, 0.39f, 0.41f, -40, 0, -40, 40, 0, 40);           // apron
    quad(0.95f, 0.8f, 0.1f, -0.1f, 0.01f, -40, 0.1f, 0.01f, 40); // the taxi line the aircraft stands on
    quad(0.7f, 0.7f, 0.72f, -0.08f, 0.4f, 0, 0.08f, 3.0f, 0);    // leg
    glColor3f(0.08f, 0.08f, 0.09f);                              // wheel seen from the side
    glBegin(GL_TRIANGLE_FAN);
    glVertex3f(0.2f, 0.4f, 0);
    for (int i = 0; i <= 24; ++i)
        glVertex3f(0.2f, 0.4f + 0.4f * std::cos(i * 0.2618f), 0.4f * std::sin(i * 0.2618f));
    glEnd();
    glPopAttrib();
}

constexpr float kNightLight = 0.3f; ///< the apron under floodlights, compared with daylight

class AssetRenderTest : public SceneObjectTest {
protected:
    std::pair<int, int> Size() const override { return {800, 500}; }

    /// Renders the scene day or night from the current camera, writes it beside the build and returns
    /// where it differs from the same scene without the objects.
    Blob RenderScene(HV_XObject* a, HV_XObject* b, bool night, const std::string& file) {
        host().set(kLights, night ? 1.0 : 0.0);
        auto draw = [&](bool withObjects) {
            return Render([&, withObjects] {
                DrawApronAndNoseGear(night ? kNightLight : 1.0f);
                SunLight();
                const GLfloat fillDirection[4] = {-0.5f, 0.4f, -0.6f, 0.0f};
                const GLfloat fill[4] = {0.45f, 0.45f, 0.5f, 1.0f};
                glEnable(GL_LIGHT1); // sky light on the sides away from the sun
                glLightfv(GL_LIGHT1, GL_POSITION, fillDirection);
                glLightfv(GL_LIGHT1, GL_DIFFUSE, fill);
                if (night) {
                    const GLfloat dim[4] = {0.15f, 0.15f, 0.18f, 1};
                    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, dim);
                }
                if (withObjects && a) a->ShowXObject(true);
                if (withObjects && b) b->ShowXObject(true);
            });
        };
        const simhost::gfx::Image empty = draw(false), image = draw(true);
        const std::filesystem::path outDir = std::filesystem::path(KALVORA_BINARY_DIR) / "scene-renders";
        std::filesystem::create_directories(outDir);
        EXPECT_TRUE(simhost::gfx::writePng(image, (outDir / file).string()));
        return Difference(image, empty);
    }
};

TEST_F(AssetRenderTest, EachModelShowsByDayAndByNight) {
    struct Model {
        const char* base;
        const char* file;
        float x, z, heading;
        float lookZ; ///< metres from the object's origin (model Z) to look at
    };
    // The tugs stand on the nose gear at the origin facing along the aircraft (north); the GPU
    // 5 m from the gear, 45 deg right of the aircraft's heading, turned as the plug-in turns it.
    const Model models[] = {{"KLVdefault", "truck", 0, 0, 0, -3.2f},
                            {"KLVtowbarless", "truck2", 0, 0, 0, -2.6f},
                            {"GroundServices/GPU", "gpu", 3.5355f, -3.5355f, -0.0f, 1.2f}};
    for (const Model& m : models) {
        HV_XObject object;
        ASSERT_TRUE(object.LoadXObject((kAssets + "/" + m.base).c_str())) << m.base;
        object.PositionLocal(m.x, 1.0f, m.z);
        object.Attitude(0, 0, m.heading);
        camera_ =
            kalvora_test::LookAt(m.x + 7.5f, 4.5f, m.z + m.lookZ + 6.0f, m.x - 0.5f, 0.6f, m.z + m.lookZ);
        EXPECT_GT(RenderScene(&object, nullptr, false, std::string(m.file) + "-day.png").count, 10000)
            << m.base;
        EXPECT_GT(RenderScene(&object, nullptr, true, std::string(m.file) + "-night.png").count, 1000)
            << m.base;
        EXPECT_NE(object.litTexture, -1) << m.base << ": the night texture";
    }
    // The tug and the GPU together beside the nose gear.
    HV_XObject truck, gpu;
    ASSERT_TRUE(truck.LoadXObject((kAssets + "/KLVdefault").c_str()));
    ASSERT_TRUE(gpu.LoadXObject((kAssets + "/GroundServices/GPU").c_str()));
    truck.PositionLocal(0, 1, 0);
    gpu.PositionLocal(3.5355f, 1, -3.5355f);
    camera_ = kalvora_test::LookAt(9, 6, 8, 1, 0.5f, -2.5f);
    EXPECT_GT(RenderScene(&truck, &gpu, false, "scene-day.png").count, 15000);
    EXPECT_GT(RenderScene(&truck, &gpu, true, "scene-night.png").count, 3000);
}

} // namespace
