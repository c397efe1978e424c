// Scene objects on simhost's renderer: placement and heading, day and night
// textures, distance culling, texture naming, loading (OBJ7 upgrade, refusal of
// corrupt models, the truck's log lines), and renders of Kalvora's own models.
#include "SceneFixture.h"
#include "TestModels.h"
#include "support/Corpus.h"

#include "images/Bitmap.h"
#include "images/ImageFiles.h"
#include "objects/HV_XObject.h"
#include "objects/Obj7Reader.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8Writer.h"
#include "objects/TruckModel.h"

#include "XPLMGraphics.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

using namespace kalvora_scene_test;
using kalvora_test::corpusPath;

namespace {

const std::string kAssets = std::string(KALVORA_SOURCE_DIR) + "/assets/Kalvora";
constexpr const char* kLights = "sim/graphics/scenery/percent_lights_on";
constexpr double kTanHalfFov = 0.41421356; ///< tan(22.5 deg): simhost's 45 deg vertical field of view

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// A solid-colour square PNG.
void WritePng(const std::string& path, uint8_t r, uint8_t g, uint8_t b, int side = 8) {
    simhost::gfx::Image img;
    img.width = img.height = side;
    for (int i = 0; i < side * side; ++i)
        img.rgba.insert(img.rgba.end(), {r, g, b, 255});
    ASSERT_TRUE(simhost::gfx::writePng(img, path));
}

/// A solid-colour square uncompressed 24-bit TGA (grey levels and pure green only: channel order free).
void WriteTga(const std::string& path, uint8_t r, uint8_t g, uint8_t b, int side = 8) {
    std::string bytes(18, '\0');
    bytes[2] = 2; // uncompressed true colour
    bytes[12] = static_cast<char>(side);
    bytes[14] = static_cast<char>(side);
    bytes[16] = 24;
    for (int i = 0; i < side * side; ++i)
        bytes += {static_cast<char>(b), static_cast<char>(g), static_cast<char>(r)};
    WriteFile(path, bytes);
}

class SceneObjectTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        if (IsSkipped()) return;
        char tmpl[] = "/tmp/kalvora-scene-XXXXXX";
        ASSERT_NE(mkdtemp(tmpl), nullptr);
        dir_ = tmpl;
    }
    void TearDown() override {
        if (!dir_.empty()) std::system(("rm -rf '" + dir_ + "'").c_str());
        SceneTest::TearDown();
    }

    /// A 2 x 2 m quad 10 m ahead of the model's origin, facing it, saved as dir/<name>.obj.
    std::string PanelModel(const std::string& name, float half = 1.0f, float depth = -10.0f) {
        XObj8 obj;
        const int q = AddQuad(obj, -half, -half, half, half, depth);
        XObjLOD8 l;
        l.cmds = {Cmd(attr_Reset), Tris(q)};
        obj.lods = {l};
        obj.texture = name + ".png";
        const std::string base = dir_ + "/" + name;
        EXPECT_TRUE(XObj8Write((base + ".obj").c_str(), obj));
        return base;
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

    std::string dir_;
};

TEST_F(SceneObjectTest, DayTextureUpToSixtyTwoPercentLightsThenTheNightTextureUnlit) {
    const std::string base = PanelModel("panel");
    WritePng(base + ".png", 0, 255, 0);
    WritePng(base + "LIT.png", 255, 40, 40);
    HV_XObject object;
    ASSERT_TRUE(object.LoadXObject(base.c_str()));
    EXPECT_NE(object.litTexture, -1);
    for (double lights : {0.0, 0.62}) {
        host().set(kLights, lights);
        const Blob day = Show(object);
        EXPECT_GT(day.count, 500) << lights;
        EXPECT_GT(day.g, day.r + 40) << "day texture at " << lights;
    }
    host().set(kLights, 0.63);
    const Blob night = Show(object);
    EXPECT_GT(night.r, 200) << "the night texture shines by itself";
    EXPECT_LT(night.g, 80);
}

TEST_F(SceneObjectTest, WithoutANightTextureTheDayTextureIsDrawnAtNight) {
    const std::string base = PanelModel("plain");
    WritePng(base + ".PNG", 0, 255, 0); // upper-case extension is found too
    HV_XObject object;
    ASSERT_TRUE(object.LoadXObject(base.c_str()));
    EXPECT_EQ(object.litTexture, -1);
    host().set(kLights, 1.0);
    const Blob b = Show(object);
    EXPECT_GT(b.count, 500);
    EXPECT_GT(b.g, b.r + 40);
}

TEST_F(SceneObjectTest, UpperCaseTgaTextureAndItsShortenedNightName) {
    const std::string base = PanelModel("truck");
    WriteTga(base + ".TGA", 0, 255, 0);
    // The night picture's name is the base name with its last three characters replaced: "trTGA".
    WriteTga(dir_ + "/trTGA", 255, 255, 255);
    HV_XObject object;
    ASSERT_TRUE(object.LoadXObject(base.c_str()));
    ASSERT_NE(object.litTexture, -1);
    host().set(kLights, 0.9);
    const Blob night = Show(object);
    EXPECT_GT(night.r, 200);
    EXPECT_GT(night.b, 200);
    host().set(kLights, 0.1);
    const Blob day = Show(object);
    EXPECT_GT(day.g, day.r + 40);
}

TEST_F(SceneObjectTest, BmpTextureAndItsShortenedNightName) {
    const std::string base = PanelModel("gpux");
    auto writeBmp = [](const std::string& path, char grey) {
        ImageInfo info{};
        ASSERT_EQ(CreateNewBitmap(8, 8, 3, &info), 0);
        FillBitmap(&info, grey);
        ASSERT_EQ(WriteBitmapToFile(&info, path.c_str()), 0);
        DestroyBitmap(&info);
    };
    writeBmp(base + ".bmp", 60);
    writeBmp(dir_ + "/gbmp", static_cast<char>(250)); // "gpux" loses "pux" and gains "bmp"
    HV_XObject object;
    ASSERT_TRUE(object.LoadXObject(base.c_str()));
    ASSERT_NE(object.litTexture, -1);
    host().set(kLights, 0.9);
    const Blob night = Show(object);
    host().set(kLights, 0.0);
    const Blob day = Show(object);
    EXPECT_GT(night.r, 200) << "the bright night picture, unlit";
    EXPECT_LT(day.r, 120) << "the dark day picture";
}

TEST_F(SceneObjectTest, LoadFailsWithoutModelOrWithoutDayTexture) {
    HV_XObject object;
    EXPECT_FALSE(object.LoadXObject((dir_ + "/missing").c_str()));
    const std::string base = PanelModel("bare"); // model, but no picture of any kind
    EXPECT_FALSE(object.LoadXObject(base.c_str()));
    WritePng(base + "LIT.png", 255, 255, 255); // a night picture alone is not enough
    EXPECT_FALSE(object.LoadXObject(base.c_str()));
}

TEST_F(SceneObjectTest, ObjectsFartherThanTheMaximumDistanceAreNotDrawn) {
    // A 1 km square at the object's origin, seen from 2900 or 3500 m away.
    const std::string base = PanelModel("board", 500.0f, 0.0f);
    WritePng(base + ".png", 0, 255, 0);
    HV_XObject object;
    ASSERT_TRUE(object.LoadXObject(base.c_str()));
    EXPECT_EQ(object.maxDistance, 3000);
    object.PositionLocal(0, 0, -2900);
    EXPECT_GT(Show(object).count, 1000);
    object.PositionLocal(0, 0, -3500);
    EXPECT_EQ(Show(object).count, 0);
    EXPECT_TRUE(object.IsVisible()) << "culling hides the object without changing its flag";
    object.maxDistance = 0; // never culled
    EXPECT_GT(Show(object).count, 1000);
}

TEST_F(SceneObjectTest, ScaleStretchesTheModel) {
    const std::string base = PanelModel("scaled");
    WritePng(base + ".png", 0, 255, 0);
    HV_XObject object;
    ASSERT_TRUE(object.LoadXObject(base.c_str()));
    const Blob normal = Show(object);
    object.scaleX = 2.0f;
    const Blob wide = Show(object);
    EXPECT_NEAR(static_cast<double>(wide.count) / normal.count, 2.0, 0.15);
    EXPECT_NEAR(wide.cx, normal.cx, 2) << "scaled about the object's origin, on the view axis";
}

TEST_F(SceneObjectTest, KillXObjectDeletesBothTextures) {
    const std::string base = PanelModel("killed");
    WritePng(base + ".png", 0, 255, 0);
    WritePng(base + "LIT.png", 255, 255, 255);
    HV_XObject object;
    ASSERT_TRUE(object.LoadXObject(base.c_str()));
    const GLuint day = static_cast<GLuint>(object.dayTexture), lit = static_cast<GLuint>(object.litTexture);
    GLboolean before[2] = {GL_FALSE, GL_FALSE}, after[2] = {GL_TRUE, GL_TRUE};
    Render([&] {
        before[0] = glIsTexture(day);
        before[1] = glIsTexture(lit);
        object.KillXObject();
        after[0] = glIsTexture(day);
        after[1] = glIsTexture(lit);
    });
    EXPECT_EQ(before[0], GL_TRUE);
    EXPECT_EQ(before[1], GL_TRUE);
    EXPECT_EQ(after[0], GL_FALSE);
    EXPECT_EQ(after[1], GL_FALSE);
}

TEST_F(SceneObjectTest, HiddenObjectsDrawNothing) {
    const std::string base = PanelModel("hidden");
    WritePng(base + ".png", 0, 255, 0);
    HV_XObject object;
    ASSERT_TRUE(object.LoadXObject(base.c_str()));
    const auto empty = Render([] {});
    const Blob b = Difference(Render([&] { object.ShowXObject(false); }), empty);
    EXPECT_EQ(b.count, 0);
    EXPECT_FALSE(object.IsVisible());
    EXPECT_TRUE(object.SetVisibility(true));
    EXPECT_TRUE(object.IsVisible());
}

/// Where a point of the apron-level plane y = `planeY` lands in a top-down view from height `eyeY`.
void ToPixels(double x, double z, double eyeY, double planeY, double& px, double& py) {
    const double pixelsPerMetre = (kFrameH / 2.0) / ((eyeY - planeY) * kTanHalfFov);
    px = kFrameW / 2.0 + x * pixelsPerMetre;
    py = kFrameH / 2.0 - z * pixelsPerMetre; // -Z (north) is up on the screen
}

TEST_F(SceneObjectTest, TheTruckLandsAtItsPositionWithItsBodyAheadAlongItsHeading) {
    HV_XObject truck;
    ASSERT_TRUE(truck.LoadXObject((kAssets + "/KLVdefault").c_str())) << "generate the assets first";
    const double eyeY = 36;
    LookFrom(0, static_cast<float>(eyeY), 0, -90, 0);
    struct Case {
        float x, z, heading;
    };
    for (const Case c : {Case{0, 0, 0}, Case{5, -3, 90}, Case{-4, 2, 180}, Case{0, 6, 270}}) {
        truck.Attitude(0, 0, c.heading);
        truck.PositionLocal(c.x, 1.0f, c.z); // the model's origin 1 m above the apron
        const Blob b = Show(truck);
        ASSERT_GT(b.count, 300) << "heading " << c.heading;
        // The coupling is at the position; the tug body 2.7..6.3 m ahead along the heading.
        const double h = c.heading * 3.14159265 / 180.0;
        const double ahead = 4.2; // metres to the middle of what is seen from above (bar and tug)
        double px = 0, py = 0;
        ToPixels(c.x + ahead * std::sin(h), c.z - ahead * std::cos(h), eyeY, 1.0, px, py);
        EXPECT_NEAR(b.cx, px, 12) << "heading " << c.heading;
        EXPECT_NEAR(b.cy, py, 12) << "heading " << c.heading;
    }
}

TEST_F(SceneObjectTest, AnOBJ7ModelIsUpgradedOnDiskWithItsOriginalKept) {
    KALVORA_REQUIRE_CORPUS();
    const std::string original = ReadFile(corpusPath("obj7/marginal_KSBD_example.obj"));
    ASSERT_FALSE(original.empty());
    const std::string path = dir_ + "/old.obj";
    WriteFile(path, original);

    HV_Mesh mesh;
    int list = 0;
    ASSERT_TRUE(mesh.LoadMesh(path.c_str(), list));
    EXPECT_NE(list, 0);
    EXPECT_FALSE(mesh.model.lods.empty());
    EXPECT_EQ(ReadFile(path + "7.bak"), original) << "the user's OBJ7 file is kept beside";
    XObj8 reread;
    EXPECT_TRUE(XObj8Read(path.c_str(), reread)) << "the file is OBJ8 now";
    XObj old;
    EXPECT_FALSE(XObjRead(path.c_str(), old));

    // The second load reads the OBJ8 file as it is and leaves both files alone.
    const std::string upgraded = ReadFile(path);
    HV_Mesh again;
    ASSERT_TRUE(again.LoadMesh(path.c_str(), list));
    EXPECT_EQ(again.model.indices, mesh.model.indices);
    EXPECT_EQ(ReadFile(path), upgraded);
    EXPECT_EQ(ReadFile(path + "7.bak"), original);
}

TEST_F(SceneObjectTest, AnExistingBackupIsNeverOverwritten) {
    KALVORA_REQUIRE_CORPUS();
    const std::string path = dir_ + "/old.obj";
    WriteFile(path, ReadFile(corpusPath("obj7/marginal_untitled_csl.obj")));
    WriteFile(path + "7.bak", "an older backup");
    HV_Mesh mesh;
    int list = 0;
    ASSERT_TRUE(mesh.LoadMesh(path.c_str(), list));
    EXPECT_EQ(ReadFile(path + "7.bak"), "an older backup");
    XObj8 reread;
    EXPECT_TRUE(XObj8Read(path.c_str(), reread));
}

TEST_F(SceneObjectTest, AFileThatIsNeitherFormatIsRefusedAndLeftAlone) {
    const std::string path = dir_ + "/junk.obj";
    WriteFile(path, "I\n900\nOBJ\nnot a model\n");
    HV_Mesh mesh;
    int list = 0;
    EXPECT_FALSE(mesh.LoadMesh(path.c_str(), list));
    EXPECT_EQ(ReadFile(path), "I\n900\nOBJ\nnot a model\n");
    EXPECT_EQ(ReadFile(path + "7.bak"), "") << "no backup of a file that was not upgraded";
}

TEST_F(SceneObjectTest, ACorruptModelIsRefusedAndSaysWhy) {
    // Indices past the end of the vertex pool: drawing it would read outside the arrays.
    const std::string path = dir_ + "/broken.obj";
    WriteFile(path, "A\n800\nOBJ\n\nTEXTURE none.png\nPOINT_COUNTS 3 0 0 3\n"
                    "VT 0 0 0 0 0 1 0 0\nVT 1 0 0 0 0 1 1 0\nVT 1 1 0 0 0 1 1 1\n"
                    "IDX 0\nIDX 1\nIDX 7\nTRIS 0 3\n");
    const std::string before = ReadFile(path);
    HV_Mesh mesh;
    int list = -5;
    EXPECT_FALSE(mesh.LoadMesh(path.c_str(), list));
    EXPECT_EQ(list, -5);
    EXPECT_TRUE(mesh.model.lods.empty()) << "nothing of it would be drawn";
    EXPECT_NE(host().logText().find("broken.obj"), std::string::npos);
    EXPECT_EQ(ReadFile(path), before);
}

namespace {
std::string gTruckLog; ///< what LoadMeshAndTextures reported
} // namespace

TEST_F(SceneObjectTest, LoadMeshAndTexturesLogsTheOutcome) {
    gTruckLog.clear();
    SetTruckModelLogSink([](const char* line) { gTruckLog += line; });
    LoadMeshAndTextures((kAssets + "/").c_str(), "KLVdefault", 0);
    LoadMeshAndTextures((dir_ + "/").c_str(), "nothere", 0);
    SetTruckModelLogSink(nullptr);
    LoadMeshAndTextures((dir_ + "/").c_str(), "unheard", 0);
    EXPECT_EQ(gTruckLog, "Meshes and textures for object " + kAssets + "/KLVdefault succesfuly loaded\n" +
                             "[WRNG] Failed to load object " + dir_ + "/nothere (path: " + dir_ + "/)\n");
    EXPECT_NE(gKLVtheTruck.dayTexture, 0);
    EXPECT_NE(gKLVtheTruck.litTexture, -1);
}

TEST_F(SceneObjectTest, PositionWorldPlacesTheObjectInTheLocalFrame) {
    HV_XObject object;
    double x = 0, y = 0, z = 0;
    XPLMWorldToLocal(47.4660, 8.5500, 440, &x, &y, &z);
    object.PositionWorld(47.4660, 8.5500, 440);
    EXPECT_NEAR(object.x, x, 0.01);
    EXPECT_NEAR(object.y, y, 0.01);
    EXPECT_NEAR(object.z, z, 0.01);
    EXPECT_GT(std::abs(object.x) + std::abs(object.z), 50) << "the point is not the reference point";
}

// ---------------------------------------------------------------------------------------------
// Renders of Kalvora's own models, written beside the build (scripts/make-assets.sh copies them
// into docs/img). Each must show the model and differ between day and night.

/// An apron square and a nose-gear leg with its wheel at the origin (aircraft heading north), at
/// `light` (0..1) of their daylight colours.
void DrawApronAndNoseGear(float light) {
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glColor3f(0.38f * light, 0.39f * light, 0.41f * light);
    glBegin(GL_QUADS);
    glVertex3f(-40, 0, -40);
    glVertex3f(-40, 0, 40);
    glVertex3f(40, 0, 40);
    glVertex3f(40, 0, -40);
    glEnd();
    glColor3f(0.95f * light, 0.8f * light, 0.1f * light); // the taxi line the aircraft stands on
    glBegin(GL_QUADS);
    glVertex3f(-0.1f, 0.01f, -40);
    glVertex3f(-0.1f, 0.01f, 40);
    glVertex3f(0.1f, 0.01f, 40);
    glVertex3f(0.1f, 0.01f, -40);
    glEnd();
    glColor3f(0.7f * light, 0.7f * light, 0.72f * light); // leg
    glBegin(GL_QUADS);
    glVertex3f(-0.08f, 0.4f, 0);
    glVertex3f(0.08f, 0.4f, 0);
    glVertex3f(0.08f, 3.0f, 0);
    glVertex3f(-0.08f, 3.0f, 0);
    glEnd();
    glColor3f(0.08f, 0.08f, 0.09f); // wheel seen from the side
    glBegin(GL_TRIANGLE_FAN);
    glVertex3f(0.2f, 0.4f, 0);
    for (int i = 0; i <= 24; ++i)
        glVertex3f(0.2f, 0.4f + 0.4f * std::cos(i * 0.2618f), 0.4f * std::sin(i * 0.2618f));
    glEnd();
    glPopAttrib();
}

constexpr int kObjectThreshold = 24; ///< a pixel differing by more than this on a channel shows an object
constexpr float kNightLight = 0.3f;  ///< the apron under floodlights, compared with daylight

class AssetRenderTest : public SceneObjectTest {
protected:
    FrameSize Size() const override { return {800, 500}; }

    /// One render of the scene and the same scene without the objects.
    struct Shot {
        simhost::gfx::Image image, empty;
        Blob changed; ///< where the objects are
    };
    /// Renders the scene day or night from the current camera and writes it beside the build.
    Shot RenderScene(HV_XObject* a, HV_XObject* b, bool night, const std::string& file) {
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
        Shot shot;
        shot.empty = draw(false);
        shot.image = draw(true);
        shot.changed = Difference(shot.image, shot.empty);
        const std::string outDir = std::string(KALVORA_BINARY_DIR) + "/scene-renders";
        mkdir(outDir.c_str(), 0755);
        EXPECT_TRUE(simhost::gfx::writePng(shot.image, outDir + "/" + file));
        return shot;
    }
    /// Share (0..1) of the pixels showing objects in `a` that look different in `b`.
    static double ChangedShare(const Shot& a, const Shot& b) {
        auto differs = [](uint32_t p, uint32_t q) {
            for (int shift = 8; shift <= 24; shift += 8)
                if (std::abs(int((p >> shift) & 0xFF) - int((q >> shift) & 0xFF)) > kObjectThreshold)
                    return true;
            return false;
        };
        int objectPixels = 0, changed = 0;
        for (int y = 0; y < a.image.height; ++y)
            for (int x = 0; x < a.image.width; ++x) {
                if (!differs(a.image.at(x, y), a.empty.at(x, y))) continue;
                ++objectPixels;
                changed += differs(a.image.at(x, y), b.image.at(x, y)) ? 1 : 0;
            }
        return objectPixels ? static_cast<double>(changed) / objectPixels : 0;
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
        LookAt(m.x + 7.5f, 4.5f, m.z + m.lookZ + 6.0f, m.x - 0.5f, 0.6f, m.z + m.lookZ);
        const Shot day = RenderScene(&object, nullptr, false, std::string(m.file) + "-day.png");
        const Shot night = RenderScene(&object, nullptr, true, std::string(m.file) + "-night.png");
        EXPECT_GT(day.changed.count, 10000) << m.base;
        EXPECT_GT(night.changed.count, 1000) << m.base;
        EXPECT_GT(ChangedShare(day, night), 0.15) << m.base << ": the night texture, unlit";
    }
}

TEST_F(AssetRenderTest, TruckAndGroundPowerBesideTheNoseGear) {
    HV_XObject truck, gpu;
    ASSERT_TRUE(truck.LoadXObject((kAssets + "/KLVdefault").c_str()));
    ASSERT_TRUE(gpu.LoadXObject((kAssets + "/GroundServices/GPU").c_str()));
    truck.PositionLocal(0, 1, 0);
    gpu.PositionLocal(3.5355f, 1, -3.5355f);
    LookAt(9, 6, 8, 1, 0.5f, -2.5f);
    EXPECT_GT(RenderScene(&truck, &gpu, false, "scene-day.png").changed.count, 15000);
    EXPECT_GT(RenderScene(&truck, &gpu, true, "scene-night.png").changed.count, 3000);
}

} // namespace
