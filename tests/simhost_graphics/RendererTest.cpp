// The off-screen frame, its projection and its PNG output.
#include "RenderFixture.h"

#include "support/TempFolder.h"

#include <png.h>

#include <cstdio>
#include <filesystem>
#include <memory>

namespace simhost::testing {
namespace {

/// A square of side 2*half metres, centred at (x, y, z), facing along X.
void quadFacingX(double x, double y, double z, double half) {
    glBegin(GL_QUADS);
    glVertex3d(x, y - half, z - half);
    glVertex3d(x, y - half, z + half);
    glVertex3d(x, y + half, z + half);
    glVertex3d(x, y + half, z - half);
    glEnd();
}

using Renderer2D = RenderTest;
using Renderer3D = RenderTest;

TEST_F(Renderer3D, HeadingTurnsClockwiseFromNorth) {
    gfx::View east;
    east.heading = 90; // looking east (+X)
    gfx::setup3D(east);
    glColor3f(0, 0, 1);
    quadFacingX(10, 0, 0, 1);
    glColor3f(1, 0, 0);
    quadFacingX(-10, 0, 0, 1); // west: behind, not drawn
    gfx::Image img = frame();
    EXPECT_EQ(img.at(kFrameW / 2, kFrameH / 2), rgba(0, 0, 255));
    int redPixels = 0;
    for (int y = 0; y < kFrameH; ++y)
        for (int x = 0; x < kFrameW; ++x)
            redPixels += img.at(x, y) == rgba(255, 0, 0) ? 1 : 0;
    EXPECT_EQ(redPixels, 0);
}

TEST_F(Renderer2D, PngHasTheTopRowFirst) {
    fillRect(0, 0, kFrameW, 10, 1, 0, 0);                 // bottom band red
    fillRect(0, kFrameH - 10, kFrameW, kFrameH, 0, 0, 1); // top band blue
    gfx::endFrame();
    const kalvora_test::TempFolder folder("simhost-renderer");
    const std::string path = folder.file("frame.png");
    std::string why;
    ASSERT_TRUE(gfx::writePng(path, &why)) << why;

    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    ASSERT_TRUE(file);
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    ASSERT_EQ(setjmp(png_jmpbuf(png)), 0);
    png_init_io(png, file.get());
    png_read_info(png, info);
    ASSERT_EQ(png_get_image_height(png, info), unsigned(kFrameH));
    std::vector<png_byte> row(png_get_rowbytes(png, info));
    png_read_row(png, row.data(), nullptr);
    EXPECT_EQ(row[0], 0); // first row in the file: the top, blue
    EXPECT_EQ(row[2], 255);
    png_destroy_read_struct(&png, &info, nullptr);
}

TEST(RendererSetup, BadFrameSizesAndPathsAreRefused) {
    gfx::setEnabled(true);
    if (!gfx::available()) GTEST_SKIP() << "no OpenGL: " << gfx::unavailableReason();
    EXPECT_FALSE(gfx::beginFrame(0, 100));
    EXPECT_FALSE(gfx::beginFrame(100000, 100));
    ASSERT_TRUE(gfx::beginFrame(16, 16));
    gfx::endFrame();
    std::string why;
    EXPECT_FALSE(gfx::writePng("/nonexistent-folder/x.png", &why));
    EXPECT_FALSE(why.empty());
}

} // namespace
} // namespace simhost::testing
