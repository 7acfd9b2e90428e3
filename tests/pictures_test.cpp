#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

#include "platform/chart/codecs.h"
#include "platform/picture.h"
#include "support.h"

namespace tessaline::chart {
namespace {

using testing::errorOf;

using platform::PixelImage;

PixelImage image(int32_t w, int32_t h, std::initializer_list<uint32_t> pixels) {
  PixelImage out;
  out.width = w;
  out.height = h;
  out.pixels = pixels;
  return out;
}

PixelImage gradient(int32_t w, int32_t h) {
  PixelImage out;
  out.width = w;
  out.height = h;
  for (int32_t y = 0; y < h; ++y) {
    for (int32_t x = 0; x < w; ++x) {
      out.pixels.push_back(0xFF000000u | static_cast<uint32_t>(x * 255 / w) << 16 |
                           static_cast<uint32_t>(y * 255 / h) << 8 | 0x80);
    }
  }
  return out;
}

bool decode(const std::vector<uint8_t>& bytes, PixelImage& out) {
  return decodePicture(bytes.data(), bytes.size(), out);
}

void le16(std::vector<uint8_t>& b, uint32_t v) {
  b.push_back(static_cast<uint8_t>(v));
  b.push_back(static_cast<uint8_t>(v >> 8));
}
void le32(std::vector<uint8_t>& b, uint32_t v) {
  le16(b, v & 0xFFFF);
  le16(b, v >> 16);
}

// A bitmap file: header, 40-byte info header, palette, then the rows as given.
std::vector<uint8_t> bmp(int32_t w, int32_t h, uint16_t bpp, uint32_t compression,
                         const std::vector<uint32_t>& palette, const std::vector<uint8_t>& rows) {
  std::vector<uint8_t> b = {'B', 'M'};
  const uint32_t offset = 54 + static_cast<uint32_t>(palette.size()) * 4;
  le32(b, offset + static_cast<uint32_t>(rows.size()));
  le32(b, 0);
  le32(b, offset);
  le32(b, 40);
  le32(b, static_cast<uint32_t>(w));
  le32(b, static_cast<uint32_t>(h));
  le16(b, 1);
  le16(b, bpp);
  le32(b, compression);
  le32(b, static_cast<uint32_t>(rows.size()));
  le32(b, 2835);
  le32(b, 2835);
  le32(b, static_cast<uint32_t>(palette.size()));
  le32(b, 0);
  for (uint32_t c : palette) le32(b, c);
  b.insert(b.end(), rows.begin(), rows.end());
  return b;
}

// An icon file with one image.
std::vector<uint8_t> ico(uint8_t w, uint8_t h, uint16_t bits, const std::vector<uint8_t>& data) {
  std::vector<uint8_t> b = {0, 0, 1, 0, 1, 0, w, h, 0, 0, 1, 0};
  le16(b, bits);
  le32(b, static_cast<uint32_t>(data.size()));
  le32(b, 22);
  b.insert(b.end(), data.begin(), data.end());
  return b;
}

// The smallest GIF: one pixel of palette entry 0 (white), transparent when asked.
std::vector<uint8_t> gif(bool transparent) {
  return {'G',
          'I',
          'F',
          '8',
          '9',
          'a',
          1,
          0,
          1,
          0,
          0x80,
          0,
          0,
          0xFF,
          0xFF,
          0xFF,
          0,
          0,
          0,
          0x21,
          0xF9,
          4,
          static_cast<uint8_t>(transparent ? 1 : 0),
          0,
          0,
          0,
          0,
          0x2C,
          0,
          0,
          0,
          0,
          1,
          0,
          1,
          0,
          0,
          2,
          2,
          0x44,
          1,
          0,
          0x3B};
}

TEST(PictureCodecs, PngAndBmpRoundTripExactly) {
  const PixelImage opaque = image(2, 2, {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF123456});
  PixelImage back;
  ASSERT_TRUE(decode(encodePng(opaque), back));
  EXPECT_EQ(back.pixels, opaque.pixels);
  ASSERT_TRUE(decode(encodeBmp(opaque), back));
  EXPECT_EQ(back.pixels, opaque.pixels);

  // Premultiplied half-transparent red survives the PNG's straight alpha.
  const PixelImage glass = image(2, 1, {0x80400000, 0x00000000});
  ASSERT_TRUE(decode(encodePng(glass), back));
  EXPECT_EQ(back.pixels, glass.pixels);
  // Formats without alpha lay it on white.
  ASSERT_TRUE(decode(encodeBmp(glass), back));
  EXPECT_EQ(back.pixels[1], 0xFFFFFFFFu);
}

TEST(PictureCodecs, JpegKeepsTheImageCloseAndIsCompact) {
  const PixelImage source = gradient(64, 48);
  const auto bytes = encodeJpeg(source, 90);
  EXPECT_LT(bytes.size(), source.pixels.size() * 4 / 4);
  PixelImage back;
  ASSERT_TRUE(decode(bytes, back));
  ASSERT_EQ(back.width, 64);
  ASSERT_EQ(back.height, 48);
  for (size_t i = 0; i < back.pixels.size(); ++i) {
    for (int shift : {0, 8, 16}) {
      const int a = static_cast<int>((source.pixels[i] >> shift) & 0xFF);
      const int b = static_cast<int>((back.pixels[i] >> shift) & 0xFF);
      ASSERT_NEAR(a, b, 12) << i;
    }
    ASSERT_EQ(back.pixels[i] >> 24, 0xFFu);
  }
}

TEST(PictureCodecs, ReadsTheBitmapVariants) {
  PixelImage out;
  // 8-bit palette, bottom-up: the first row in the file is the bottom row.
  ASSERT_TRUE(decode(bmp(2, 2, 8, 0, {0x000000FF, 0x0000FF00}, {0, 1, 0, 0, 1, 0, 0, 0}), out));
  EXPECT_EQ(out.pixels, (std::vector<uint32_t>{0xFF00FF00, 0xFF0000FF, 0xFF0000FF, 0xFF00FF00}));
  // 24-bit: blue, green, red bytes, rows padded to four bytes.
  ASSERT_TRUE(decode(bmp(1, 1, 24, 0, {}, {0x30, 0x20, 0x10, 0}), out));
  EXPECT_EQ(out.pixels[0], 0xFF102030u);
  // 32-bit top-down with alpha.
  auto top = bmp(1, 2, 32, 0, {}, {0, 0, 0xFF, 0xFF, 0, 0, 0x80, 0x80});
  top[22] = 0xFE, top[23] = top[24] = top[25] = 0xFF;  // height -2
  ASSERT_TRUE(decode(top, out));
  EXPECT_EQ(out.pixels, (std::vector<uint32_t>{0xFFFF0000, 0x80400000}));
  // 32-bit with all alpha bytes zero is opaque.
  ASSERT_TRUE(decode(bmp(1, 1, 32, 0, {}, {1, 2, 3, 0}), out));
  EXPECT_EQ(out.pixels[0], 0xFF030201u);
  // RLE8: a run of three of colour 1, end of bitmap.
  ASSERT_TRUE(decode(bmp(3, 1, 8, 1, {0, 0x00FFFFFF}, {3, 1, 0, 1}), out));
  EXPECT_EQ(out.pixels, (std::vector<uint32_t>(3, 0xFFFFFFFF)));
}

TEST(PictureCodecs, ReadsGifAndIcons) {
  PixelImage out;
  ASSERT_TRUE(decode(gif(false), out));
  EXPECT_EQ(out.pixels, std::vector<uint32_t>{0xFFFFFFFF});
  ASSERT_TRUE(decode(gif(true), out));
  EXPECT_EQ(out.pixels, std::vector<uint32_t>{0});

  const PixelImage icon = image(2, 2, {0xFFFF0000, 0x00000000, 0x80400000, 0xFF00FF00});
  ASSERT_TRUE(decode(ico(2, 2, 32, encodePng(icon)), out));
  EXPECT_EQ(out.pixels, icon.pixels);

  // A 24-bit bitmap icon: doubled height, colour rows, then the mask (left pixel clear).
  std::vector<uint8_t> dib;
  le32(dib, 40);
  le32(dib, 2);
  le32(dib, 4);
  le16(dib, 1);
  le16(dib, 24);
  for (int i = 0; i < 6; ++i) le32(dib, 0);
  for (int row = 0; row < 2; ++row) dib.insert(dib.end(), {0, 0, 0xFF, 0xFF, 0, 0, 0, 0});
  for (int row = 0; row < 2; ++row) dib.insert(dib.end(), {0x80, 0, 0, 0});
  ASSERT_TRUE(decode(ico(2, 2, 24, dib), out));
  EXPECT_EQ(out.pixels, (std::vector<uint32_t>{0, 0xFF0000FF, 0, 0xFF0000FF}));
}

TEST(PictureCodecs, RefusesEveryTruncationAndNoise) {
  const PixelImage source = gradient(9, 7);
  const std::vector<std::vector<uint8_t>> files = {encodePng(source),
                                                   encodeJpeg(source),
                                                   encodeBmp(source),
                                                   gif(true),
                                                   ico(9, 7, 32, encodePng(source)),
                                                   bmp(3, 1, 8, 1, {0, 0x00FFFFFF}, {3, 1, 0, 1})};
  for (const auto& file : files) {
    PixelImage out;
    ASSERT_TRUE(decode(file, out));
    for (size_t length = 0; length + 1 < file.size(); ++length) {
      std::vector<uint8_t> cut(file.begin(), file.begin() + static_cast<ptrdiff_t>(length));
      if (decode(cut, out)) {
        // What reads from a cut file is whole: a size and its pixels.
        EXPECT_EQ(out.pixels.size(), static_cast<size_t>(out.width) * out.height);
      }
    }
  }
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    std::vector<uint8_t> noise(static_cast<size_t>(random() % 300));
    for (auto& byte : noise) byte = static_cast<uint8_t>(random());
    if (round % 4 == 0 && noise.size() > 2) noise[0] = 'B', noise[1] = 'M';
    PixelImage out;
    decode(noise, out);
  }
  PixelImage out;
  EXPECT_FALSE(decodePicture(nullptr, 0, out));
  EXPECT_FALSE(decode(bmp(100000, 100000, 24, 0, {}, {0, 0, 0, 0}), out));  // too large
  auto outside = ico(2, 2, 32, encodePng(image(1, 1, {0xFF000000})));
  outside[18] = 0xF0;  // the entry points past the file
  EXPECT_FALSE(decode(outside, out));
  EXPECT_TRUE(encodePng(PixelImage{}).empty());
  EXPECT_TRUE(encodeJpeg(image(2, 2, {0})).empty());  // pixels missing for the size
}

class PictureService : public ::testing::Test {
 protected:
  void SetUp() override { platform::setPictureDecoder(decodePicture); }
  void TearDown() override { platform::setPictureDecoder(nullptr); }
};

TEST_F(PictureService, PicturesComeFromBytesOrFiles) {
  const auto png = encodePng(gradient(4, 3));
  const auto fromObject =
      platform::PictureFromBytes(Variant(std::make_shared<platform::ByteArray>(png)));
  ASSERT_TRUE(fromObject);
  EXPECT_EQ(fromObject->Width(), 4);
  VariantArray array;
  for (uint8_t byte : png) array.items.emplace_back(byte);
  EXPECT_TRUE(platform::PictureFromBytes(Variant(std::move(array))));
  // Anything else is no picture, quietly.
  EXPECT_FALSE(platform::PictureFromBytes(Variant("not bytes")));
  EXPECT_FALSE(platform::PictureFromBytes(Variant()));
  EXPECT_FALSE(platform::PictureFromBytes(
      Variant(std::make_shared<platform::ByteArray>(std::vector<uint8_t>{1, 2, 3}))));
  VariantArray wrong;
  wrong.items = {Variant(1000), Variant("x")};
  EXPECT_FALSE(platform::PictureFromBytes(Variant(std::move(wrong))));

  const auto dir = std::filesystem::temp_directory_path() / "tessaline-pictures";
  std::filesystem::create_directories(dir);
  std::ofstream(dir / "good.png", std::ios::binary)
      .write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
  std::ofstream(dir / "bad.png") << "no picture";
  EXPECT_EQ(platform::LoadPicture((dir / "good.png").string())->Height(), 3);
  EXPECT_EQ(errorOf([&] { platform::LoadPicture((dir / "bad.png").string()); }), 481);
  EXPECT_EQ(errorOf([&] { platform::LoadPicture((dir / "missing.png").string()); }), 53);
  EXPECT_EQ(errorOf([&] { platform::LoadPicture(dir.string()); }), 53);
  EXPECT_EQ(errorOf([&] { platform::LoadPicture(""); }), 53);
  std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace tessaline::chart
