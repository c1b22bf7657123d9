// The screenshot writer of the Windows tests, checked natively by reading its files back with libpng.
#include <gtest/gtest.h>
#include <png.h>

#include <cstdio>
#include <filesystem>

#include "PngWriter.h"

namespace {
std::vector<std::uint8_t> readBack(const std::string& path, int& width, int& height) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str())) return {};
    image.format = PNG_FORMAT_RGB;
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) return {};
    width = static_cast<int>(image.width);
    height = static_cast<int>(image.height);
    return pixels;
}
}  // namespace

TEST(PngWriter, WritesPixelsThatLibpngReadsBack) {
    const int w = 3, h = 2;
    const std::vector<std::uint8_t> rgb = {255, 0, 0, 0, 255, 0, 0, 0, 255, 1, 2, 3, 250, 251, 252, 128, 128, 128};
    const std::string path = (std::filesystem::temp_directory_path() / "kiv-png-test.png").string();
    ASSERT_TRUE(KivWritePng(path, w, h, rgb));
    int rw = 0, rh = 0;
    EXPECT_EQ(readBack(path, rw, rh), rgb);
    EXPECT_EQ(rw, w);
    EXPECT_EQ(rh, h);
    std::remove(path.c_str());
}

TEST(PngWriter, LargeImagesSpanSeveralStoredBlocks) {
    const int w = 300, h = 100;  // 90,100 bytes of rows: two stored blocks
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(w) * h * 3);
    for (std::size_t i = 0; i < rgb.size(); ++i) rgb[i] = static_cast<std::uint8_t>(i * 7);
    const std::string path = (std::filesystem::temp_directory_path() / "kiv-png-large.png").string();
    ASSERT_TRUE(KivWritePng(path, w, h, rgb));
    int rw = 0, rh = 0;
    EXPECT_EQ(readBack(path, rw, rh), rgb);
    std::remove(path.c_str());
}

TEST(PngWriter, RefusesInconsistentSizes) {
    EXPECT_FALSE(KivWritePng("/nonexistent/x.png", 2, 2, std::vector<std::uint8_t>(5)));
    EXPECT_FALSE(KivWritePng("/nonexistent/x.png", 0, 2, {}));
}
