// Tests of drawing into images: what a shape covers and what it leaves alone.

#include "tools/plot/png_painter.h"

#include <gtest/gtest.h>

#include "common/load_string.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

constexpr int SIZE = 100;

class PngPainterTest : public testing::Test {
  protected:
    void SetUp() override { painter.fill({0, 0, SIZE, SIZE}, 0xFFFFFF); }

    // True when any pixel of the area is not white.
    bool is_marked(int left, int top, int width, int height) {
        if (image == nullptr) {
            const TempDirectory directory;
            const std::string path = directory.path("image.png");
            EXPECT_EQ(save_file_to_string(path, painter.finish()), 0);
            image.reset(cairo_image_surface_create_from_png(path.c_str()), cairo_surface_destroy);
        }
        const unsigned char* data = cairo_image_surface_get_data(image.get());
        const int stride = cairo_image_surface_get_stride(image.get());
        for (int y = top; y < top + height; y++) {
            for (int x = left; x < left + width; x++) {
                for (int channel = 0; channel < 3; channel++) {
                    if (data[y * stride + 4 * x + channel] != 0xFF)
                        return true;
                }
            }
        }
        return false;
    }

    PngPainter painter{SIZE, SIZE};
    std::shared_ptr<cairo_surface_t> image;
};

TEST_F(PngPainterTest, ALineBeginsAtItsFirstPoint) {
    painter.text("x", 10, 10, {.size = 8});
    painter.line({{20, 90}, {90, 90}}, 0, 2);
    EXPECT_TRUE(is_marked(0, 0, 20, 20));
    EXPECT_TRUE(is_marked(20, 88, 70, 4));
    EXPECT_FALSE(is_marked(0, 20, SIZE, 60));
}

TEST_F(PngPainterTest, AClipEndsWhereItIsTold) {
    painter.begin_clip({0, 0, 50, SIZE});
    painter.line({{0, 20}, {SIZE, 20}}, 0, 2);
    painter.end_clip();
    painter.line({{0, 80}, {SIZE, 80}}, 0, 2);
    EXPECT_TRUE(is_marked(0, 15, 50, 10));
    EXPECT_FALSE(is_marked(51, 15, 49, 10));
    EXPECT_TRUE(is_marked(51, 75, 49, 10));
}

TEST_F(PngPainterTest, TextLiesWhereItIsAligned) {
    painter.text("mmmm", 50, 20, {.size = 8, .align = TextAlign::END});
    painter.text("mmmm", 50, 90, {.size = 8, .is_upright = true});
    EXPECT_TRUE(is_marked(20, 10, 30, 12));
    EXPECT_FALSE(is_marked(52, 0, 48, 40));
    EXPECT_TRUE(is_marked(40, 50, 12, 40));
    EXPECT_FALSE(is_marked(55, 50, 45, 50));
}

} // namespace

} // namespace tarquil
