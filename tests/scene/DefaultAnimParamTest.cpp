// The default animation driver's single cached dataref, seen from a fresh process:
// the first animated draw sees 0, every later one reads the first dataref looked up.
#include "SceneFixture.h"
#include "TestModels.h"

#include "objects/ObjDraw8.h"

using namespace kalvora_scene_test;

namespace {

constexpr const char* kLights = "sim/graphics/scenery/percent_lights_on";

class DefaultAnimParamTest : public SceneTest {
protected:
    /// Where a quad right of centre lands when turned about the view axis by `dataref` (90 deg per unit).
    Blob Draw(const char* dataref) {
        const XObj8 obj = AnimatedQuad(anim_Rotate, {dataref, {{{0, 0, 1}, 0, 0}, {{0, 0, 1}, 90, 1}}});
        const auto empty = Render([] {});
        return Difference(Render([&] {
                              glDisable(GL_LIGHTING);
                              glDisable(GL_CULL_FACE);
                              glDisable(GL_TEXTURE_2D);
                              // The default callbacks, but untextured triangles so the quad shows plainly.
                              ObjDrawFuncs_t f{Default_SetupLine,       Default_SetupLine,
                                               Default_SetupLight,      Default_SetupMovie,
                                               Default_SetupLine,       Default_TexCoord,
                                               Default_TexCoordPointer, Default_GetAnimParam};
                              ObjDraw8(obj, 0, &f, nullptr);
                          }),
                          empty);
    }
};

TEST_F(DefaultAnimParamTest, FirstDrawSeesZeroThenEveryNameReadsTheFirstDataref) {
    host().set(kLights, 1.0); // a quarter turn once it is read
    const Blob first = Draw(kLights);
    EXPECT_GT(first.cx, kFrameW / 2.0 + 20) << "first frame: not turned";
    EXPECT_NEAR(first.cy, kFrameH / 2.0, 3);

    const Blob second = Draw(kLights);
    EXPECT_NEAR(second.cx, kFrameW / 2.0, 3) << "second frame: a quarter turn";
    EXPECT_GT(second.cy, kFrameH / 2.0 + 20);

    host().set(kLights, 2.0);
    // Another name, even one that does not exist, still reads the first dataref: half a turn.
    const Blob other = Draw("sim/no/such/value");
    EXPECT_LT(other.cx, kFrameW / 2.0 - 20);
    EXPECT_NEAR(other.cy, kFrameH / 2.0, 3);
}

} // namespace
