#include <gif_lib.h>
#include <gtest/gtest.h>
#include <png.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <random>
#include <string>

#include "support.h"
#include "tessaline/platform/chart/codecs.h"
#include "tessaline/platform/picture.h"

// The largest single allocation while a test watches, to see what a decoder allocates before its
// data runs out.
namespace {
thread_local size_t largestAllocation = 0;
}  // namespace

// Allocation and release pair up through malloc and free; the compiler can't see that.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void* operator new(size_t size) {
  largestAllocation = std::max(largestAllocation, size);
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, size_t) noexcept { std::free(p); }

namespace tessaline::chart {
namespace {

using platform::PixelImage;
using Bytes = std::vector<uint8_t>;
using Pixels = std::vector<uint32_t>;

PixelImage image(int32_t w, int32_t h, Pixels pixels) {
  return PixelImage{w, h, std::move(pixels)};
}

// Opaque, with colour changing along both axes, like a chart's shaded plot area.
PixelImage chartLike(int32_t w, int32_t h) {
  Pixels pixels;
  for (int32_t y = 0; y < h; ++y) {
    for (int32_t x = 0; x < w; ++x) {
      pixels.push_back(0xFF000000u | static_cast<uint32_t>(x * 255 / w) << 16 |
                       static_cast<uint32_t>(y * 255 / h) << 8 | 0x80);
    }
  }
  return image(w, h, std::move(pixels));
}

bool decode(const Bytes& bytes, PixelImage& out) {
  return decodePicture(bytes.data(), bytes.size(), out);
}

// The file, named for a failure, decodes to the image.
void expectPicture(const char* name, const Bytes& file, const PixelImage& expected) {
  PixelImage out;
  ASSERT_TRUE(decode(file, out)) << name;
  EXPECT_EQ(out.width, expected.width) << name;
  EXPECT_EQ(out.height, expected.height) << name;
  EXPECT_EQ(out.pixels, expected.pixels) << name;
}

bool readable(const Bytes& file) {
  PixelImage out;
  return decode(file, out);
}

// A file, named for a failure.
struct Named {
  const char* name;
  Bytes file;
};

void le16(Bytes& b, uint32_t v) { b.insert(b.end(), {uint8_t(v), uint8_t(v >> 8)}); }
void le32(Bytes& b, uint32_t v) {
  le16(b, v & 0xFFFF);
  le16(b, v >> 16);
}
void append(Bytes& b, const Bytes& more) { b.insert(b.end(), more.begin(), more.end()); }

// A device-independent bitmap: a 40-byte header (or a larger one, zero-filled past the masks),
// the masks of a 40-byte BI_BITFIELDS header, the palette, then the pixels as given.
Bytes dib(int32_t w, int32_t h, uint16_t bpp, uint32_t compression, const Pixels& palette,
          const Bytes& pixels, uint32_t headerSize = 40, const Pixels& masks = {}) {
  Bytes b;
  for (uint32_t v : {headerSize, uint32_t(w), uint32_t(h), 1u | bpp << 16, compression,
                     uint32_t(pixels.size()), 2835u, 2835u, uint32_t(palette.size()), 0u}) {
    le32(b, v);
  }
  for (uint32_t m : masks) le32(b, m);
  if (headerSize > 40) b.resize(headerSize, 0);
  for (uint32_t c : palette) le32(b, c);
  append(b, pixels);
  return b;
}

Bytes bmp(const Bytes& info, size_t pixelsFromEnd) {
  Bytes b = {'B', 'M'};
  const auto size = static_cast<uint32_t>(14 + info.size());
  for (uint32_t v : {size, 0u, size - static_cast<uint32_t>(pixelsFromEnd)}) le32(b, v);
  append(b, info);
  return b;
}

Bytes bmp(int32_t w, int32_t h, uint16_t bpp, uint32_t compression, const Pixels& palette,
          const Bytes& pixels) {
  return bmp(dib(w, h, bpp, compression, palette, pixels), pixels.size());
}

// An icon file; each entry names its directory size and bit count and holds its data.
struct IconEntry {
  uint8_t w, h;
  uint16_t bits;
  Bytes data;
};
Bytes ico(const std::vector<IconEntry>& entries) {
  Bytes b = {0, 0, 1, 0};
  le16(b, static_cast<uint32_t>(entries.size()));
  uint32_t offset = 6 + 16 * static_cast<uint32_t>(entries.size());
  for (const auto& e : entries) {
    b.insert(b.end(), {e.w, e.h, 0, 0, 1, 0});
    le16(b, e.bits);
    le32(b, static_cast<uint32_t>(e.data.size()));
    le32(b, offset);
    offset += static_cast<uint32_t>(e.data.size());
  }
  for (const auto& e : entries) append(b, e.data);
  return b;
}

// A PNG of raw rows in the given colour type and depth, written by libpng itself.
Bytes png(uint32_t w, uint32_t h, int colorType, int depth, const Bytes& raw,
          int interlace = PNG_INTERLACE_NONE, const std::vector<png_color>& palette = {},
          const Bytes& transparency = {}) {
  Bytes out;
  png_structp p = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(p);
  png_set_write_fn(
      p, &out,
      [](png_structp p, png_bytep d, size_t n) {
        auto* sink = static_cast<Bytes*>(png_get_io_ptr(p));
        sink->insert(sink->end(), d, d + n);
      },
      [](png_structp) {});
  png_set_IHDR(p, info, w, h, depth, colorType, interlace, 0, 0);
  if (!palette.empty()) png_set_PLTE(p, info, palette.data(), static_cast<int>(palette.size()));
  if (!transparency.empty()) {
    png_set_tRNS(p, info, transparency.data(), static_cast<int>(transparency.size()), nullptr);
  }
  png_write_info(p, info);
  std::vector<png_bytep> rows(h);
  const size_t stride = raw.size() / h;
  for (uint32_t y = 0; y < h; ++y) rows[y] = const_cast<png_bytep>(raw.data() + y * stride);
  png_write_image(p, rows.data());
  png_write_end(p, info);
  png_destroy_write_struct(&p, &info);
  return out;
}

// A GIF written by giflib: one or more frames of palette indices, row by row as shown.
struct GifFrame {
  int left, top, w, h;
  Bytes indices;
  int transparent = NO_TRANSPARENT_COLOR;
  bool interlace = false;
};
Bytes gif(int w, int h, const std::vector<GifFrame>& frames) {
  Bytes out;
  int error = 0;
  GifFileType* g = EGifOpen(
      &out,
      [](GifFileType* g, const GifByteType* d, int n) {
        auto* sink = static_cast<Bytes*>(g->UserData);
        sink->insert(sink->end(), d, d + n);
        return n;
      },
      &error);
  const GifColorType colours[4] = {{0, 0, 0}, {255, 0, 0}, {0, 255, 0}, {0, 0, 255}};
  ColorMapObject* map = GifMakeMapObject(4, colours);
  EGifSetGifVersion(g, true);
  EGifPutScreenDesc(g, w, h, 8, 0, map);
  for (const auto& f : frames) {
    GraphicsControlBlock control{DISPOSAL_UNSPECIFIED, false, 0, f.transparent};
    GifByteType extension[4];
    EGifGCBToExtension(&control, extension);
    EGifPutExtension(g, GRAPHICS_EXT_FUNC_CODE, 4, extension);
    EGifPutImageDesc(g, f.left, f.top, f.w, f.h, f.interlace, nullptr);
    // An interlaced frame is written in the order of its four passes.
    const int starts[] = {0, 4, 2, 1}, steps[] = {8, 8, 4, 2};
    for (int pass = 0; pass < (f.interlace ? 4 : 1); ++pass) {
      for (int y = f.interlace ? starts[pass] : 0; y < f.h; y += f.interlace ? steps[pass] : 1) {
        EGifPutLine(g, const_cast<GifPixelType*>(f.indices.data() + y * f.w), f.w);
      }
    }
  }
  EGifCloseFile(g, &error);
  GifFreeMapObject(map);
  return out;
}

// The JPEG with the height (and the width) in its frame header replaced.
Bytes withJpegHeight(Bytes file, uint16_t height, uint16_t width = 0) {
  for (size_t i = 0; i + 8 < file.size(); ++i) {
    if (file[i] == 0xFF && file[i + 1] == 0xC0) {
      file[i + 5] = static_cast<uint8_t>(height >> 8);
      file[i + 6] = static_cast<uint8_t>(height);
      if (width) {
        file[i + 7] = static_cast<uint8_t>(width >> 8);
        file[i + 8] = static_cast<uint8_t>(width);
      }
      return file;
    }
  }
  ADD_FAILURE() << "no frame header";
  return file;
}

constexpr uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;
constexpr uint32_t kWhite = 0xFFFFFFFF, kBlack = 0xFF000000;

TEST(PictureRoundTrips, PngKeepsEveryPremultipliedPixel) {
  // Every alpha, with colour at none, a third, and all of it: straight alpha in the file must
  // come back to the same premultiplied values.
  Pixels pixels;
  for (uint32_t a = 0; a < 256; ++a) pixels.push_back(a << 24 | a << 16 | (a / 3) << 8);
  for (uint32_t a = 0; a < 256; ++a) pixels.push_back(a << 24 | (a / 3) << 16 | a);
  const PixelImage glass = image(256, 2, pixels);
  const PixelImage solid = chartLike(37, 5);
  expectPicture("every alpha", encodePng(glass), glass);
  expectPicture("opaque", encodePng(solid), solid);
}

TEST(PictureRoundTrips, BmpIsExactAndLaysTransparencyOnWhite) {
  const PixelImage source = chartLike(37, 5);  // odd width: rows padded to four bytes
  expectPicture("opaque", encodeBmp(source), source);
  expectPicture("transparent", encodeBmp(image(3, 1, {0, 0x80400000, kBlue})),
                image(3, 1, {kWhite, 0xFFBF7F7F, kBlue}));
}

TEST(PictureRoundTrips, JpegStaysCloseShrinksWithQualityAndIsOpaque) {
  const PixelImage source = chartLike(64, 48);
  const Bytes fine = encodeJpeg(source, 95), coarse = encodeJpeg(source, 30);
  EXPECT_LT(fine.size(), source.pixels.size());  // under a quarter of the raw pixels
  EXPECT_LT(coarse.size(), fine.size());
  PixelImage back;
  ASSERT_TRUE(decode(fine, back));
  ASSERT_EQ(back.width, 64);
  ASSERT_EQ(back.height, 48);
  // Colour is kept at half resolution, so edges may be off by a little more than the grey.
  for (size_t i = 0; i < back.pixels.size(); ++i) {
    ASSERT_EQ(back.pixels[i] >> 24, 0xFFu);
    for (int shift : {0, 8, 16}) {
      ASSERT_NEAR(int(source.pixels[i] >> shift & 0xFF), int(back.pixels[i] >> shift & 0xFF), 12)
          << "pixel " << i;
    }
  }
  // A transparent picture is laid on white.
  ASSERT_TRUE(decode(encodeJpeg(image(16, 16, Pixels(256, 0))), back));
  for (uint32_t p : back.pixels) ASSERT_GE(p & 0xFF, 0xFAu);
}

TEST(PictureRoundTrips, EncodersRefuseImagesWithoutPixels) {
  for (const PixelImage& bad :
       {PixelImage{}, image(2, 2, {kRed}), image(0, 5, {}), image(16385, 1, Pixels(16385, kRed))}) {
    EXPECT_TRUE(encodePng(bad).empty());
    EXPECT_TRUE(encodeJpeg(bad).empty());
    EXPECT_TRUE(encodeBmp(bad).empty());
  }
}

TEST(PictureDecoding, ReadsPngOfEveryColourType) {
  const std::vector<png_color> palette = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}};
  expectPicture(
      "2-bit palette with transparency",
      png(4, 1, PNG_COLOR_TYPE_PALETTE, 2, {0x1B}, PNG_INTERLACE_NONE, palette, {255, 128, 0}),
      image(4, 1, {kRed, 0x80008000, 0, kWhite}));
  expectPicture("16-bit grey, interlaced",
                png(2, 2, PNG_COLOR_TYPE_GRAY, 16, {0, 0, 0xFF, 0xFF, 0x80, 0x80, 0x12, 0x12},
                    PNG_INTERLACE_ADAM7),
                image(2, 2, {kBlack, kWhite, 0xFF808080, 0xFF121212}));
  expectPicture("grey with alpha", png(1, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 8, {200, 100}),
                image(1, 1, {0x644E4E4E}));
  expectPicture("1-bit grey", png(3, 1, PNG_COLOR_TYPE_GRAY, 1, {0xA0}),
                image(3, 1, {kWhite, kBlack, kWhite}));
}

TEST(PictureDecoding, ReadsTheBitmapVariants) {
  // Bottom-up: the first row in the file is the bottom row.
  expectPicture("8-bit palette", bmp(2, 2, 8, 0, {0xFF, 0xFF00}, {0, 1, 0, 0, 1, 0, 0, 0}),
                image(2, 2, {kGreen, kBlue, kBlue, kGreen}));
  expectPicture("4-bit palette", bmp(3, 1, 4, 0, {0xFF, 0xFF00}, {0x01, 0x10, 0, 0}),
                image(3, 1, {kBlue, kGreen, kGreen}));
  expectPicture(
      "1-bit palette", bmp(9, 1, 1, 0, {0, 0xFFFFFF}, {0x80, 0x80, 0, 0}),
      image(9, 1, {kWhite, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kWhite}));
  expectPicture("24-bit bottom-up, padded rows",
                bmp(1, 2, 24, 0, {}, {0x30, 0x20, 0x10, 0, 0x00, 0x00, 0xFF, 0}),
                image(1, 2, {kRed, 0xFF102030}));
  expectPicture("32-bit top-down with alpha",
                bmp(dib(1, -2, 32, 0, {}, {0, 0, 0xFF, 0xFF, 0, 0, 0x80, 0x80}), 8),
                image(1, 2, {kRed, 0x80400000}));
  expectPicture("32-bit alpha all zero is opaque", bmp(1, 1, 32, 0, {}, {1, 2, 3, 0}),
                image(1, 1, {0xFF030201}));
  expectPicture(
      "16-bit 5-6-5 bitfields",
      bmp(dib(2, 1, 16, 3, {}, {0x00, 0xF8, 0xE0, 0x07}, 40, {0xF800, 0x07E0, 0x001F}), 4),
      image(2, 1, {kRed, kGreen}));
  expectPicture("V5 header, alpha mask inside it",
                bmp(dib(1, 1, 32, 3, {}, {0x80, 0x40, 0x20, 0x10}, 124,
                        {0x0000FF00, 0x00FF0000, 0xFF000000, 0x000000FF}),
                    4),
                image(1, 1, {0x80201008}));
  // Runs: three of colour 1, end of line; a move one right; three literal pixels; end.
  expectPicture("RLE8",
                bmp(4, 2, 8, 1, {0, 0xFF}, {3, 1, 0, 0, 0, 2, 1, 0, 0, 3, 1, 0, 1, 0, 0, 1}),
                image(4, 2, {0, kBlue, kBlack, kBlue, kBlue, kBlue, kBlue, 0}));
  expectPicture("RLE4", bmp(3, 1, 4, 2, {0, 0xFF, 0xFF00}, {3, 0x12, 0, 1}),
                image(3, 1, {kBlue, kGreen, kBlue}));
}

TEST(PictureDecoding, ReadsTheFirstGifFrameOnAClearScreen) {
  // A 2x2 frame at (1,1) of a 3x3 screen; index 3 is the transparent one.
  expectPicture("frame inside the screen", gif(3, 3, {{1, 1, 2, 2, {1, 2, 3, 0}, 3}}),
                image(3, 3, {0, 0, 0, 0, kRed, kGreen, 0, 0, 0xFF000000}));
  PixelImage out;
  // Interlaced rows land in place; the second frame is not shown.
  Bytes rows;
  for (int y = 0; y < 10; ++y) rows.push_back(static_cast<uint8_t>(y % 4));
  ASSERT_TRUE(decode(
      gif(1, 10, {{0, 0, 1, 10, rows, NO_TRANSPARENT_COLOR, true}, {0, 0, 1, 10, Bytes(10, 1)}}),
      out));
  for (int y = 0; y < 10; ++y) {
    EXPECT_EQ(out.pixels[y], (Pixels{0xFF000000, kRed, kGreen, kBlue}[y % 4])) << y;
  }
}

TEST(PictureDecoding, ReadsTheLargestIconImage) {
  const PixelImage big = image(2, 2, {kRed, 0, 0x80400000, kGreen});
  expectPicture("two PNG images",
                ico({{1, 1, 32, encodePng(image(1, 1, {kRed}))}, {2, 2, 32, encodePng(big)}}), big);
  // A 32-bit bitmap with alpha of its own: the AND mask, all set, is not applied.
  Bytes bits = {0, 0, 0xFF, 0xFF, 0, 0xFF, 0, 0x80, 0xFF, 0, 0, 0xFF, 0, 0, 0, 0};
  append(bits, {0xC0, 0, 0, 0, 0xC0, 0, 0, 0});
  expectPicture("32-bit bitmap", ico({{2, 2, 32, dib(2, 4, 32, 0, {}, bits)}}),
                image(2, 2, {0xFF0000FF, 0, kRed, 0x80008000}));
  // A 24-bit bitmap has only the mask for transparency: a set bit clears the pixel.
  bits = {0, 0, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0xFF, 0, 0xFF, 0, 0, 0, 0};
  append(bits, {0x80, 0, 0, 0, 0x40, 0, 0, 0});
  expectPicture("24-bit bitmap", ico({{2, 2, 24, dib(2, 4, 24, 0, {}, bits)}}),
                image(2, 2, {kGreen, 0, 0, kBlue}));
}

// One valid file of each kind the decoder reads.
std::vector<std::pair<std::string, Bytes>> samples() {
  const PixelImage source = chartLike(9, 7);
  Bytes iconBits(8 * 7 * 4 + 4 * 7, 0x40);
  return {{"png", encodePng(source)},
          {"jpeg", encodeJpeg(source)},
          {"bmp", encodeBmp(source)},
          {"rle8", bmp(4, 1, 8, 1, {0, 0xFF}, {3, 1, 0, 1})},
          {"gif", gif(2, 2, {{0, 0, 2, 2, {1, 2, 3, 0}, 3}})},
          {"ico png", ico({{9, 7, 32, encodePng(source)}})},
          {"ico bmp", ico({{8, 7, 32, dib(8, 14, 32, 0, {}, iconBits)}})}};
}

TEST(PictureRejects, EveryTruncatedFile) {
  for (const auto& [name, file] : samples()) {
    ASSERT_TRUE(readable(file)) << name;
    for (size_t length = 0; length < file.size(); ++length) {
      const Bytes cut(file.begin(), file.begin() + static_cast<ptrdiff_t>(length));
      EXPECT_FALSE(readable(cut)) << name << " cut to " << length;
    }
  }
}

TEST(PictureRejects, NoiseAndDamagedFilesWithoutCrashing) {
  PixelImage out;
  EXPECT_FALSE(decodePicture(nullptr, 0, out));
  EXPECT_FALSE(decode({}, out));
  std::mt19937 random(7);
  for (const auto& [name, file] : samples()) {
    for (int round = 0; round < 150; ++round) {
      // Noise behind a real signature, and a real file with bytes changed at random.
      Bytes noisy = file;
      const size_t keep = round % 2 ? 8 : file.size();
      for (size_t i = keep; i < noisy.size(); ++i) noisy[i] = static_cast<uint8_t>(random());
      for (int flips = 0; flips < 4; ++flips) {
        noisy[random() % noisy.size()] = static_cast<uint8_t>(random());
      }
      if (decode(noisy, out)) {
        ASSERT_EQ(out.pixels.size(), size_t(out.width) * size_t(out.height)) << name;
      }
    }
  }
  Bytes noise(300);
  for (auto& byte : noise) byte = static_cast<uint8_t>(random());
  EXPECT_FALSE(decode(noise, out));
}

TEST(PictureRejects, SidesAboveTheLimitAndEmptyImages) {
  const Bytes row24(16385 * 3 + 3, 0xFF);
  using R = std::tuple<const char*, Bytes, Bytes>;  // the largest picture, and one pixel wider
  for (const auto& [name, largest, wider] :
       {R{"png", png(16384, 1, PNG_COLOR_TYPE_GRAY, 1, Bytes(2048, 0)),
          png(16385, 1, PNG_COLOR_TYPE_GRAY, 1, Bytes(2049, 0))},
        R{"bmp", bmp(16384, 1, 24, 0, {}, row24), bmp(16385, 1, 24, 0, {}, row24)},
        R{"gif", gif(16384, 1, {{0, 0, 1, 1, {1}}}), gif(16385, 1, {{0, 0, 1, 1, {1}}})}}) {
    PixelImage out;
    EXPECT_TRUE(decode(largest, out)) << name;
    EXPECT_EQ(out.width, 16384) << name;
    EXPECT_FALSE(readable(wider)) << name;
  }
  const Bytes jpeg = encodeJpeg(chartLike(8, 8)), pixel = {0, 0, 0, 0};
  for (const Named& c :
       {Named{"bmp of no width", bmp(0, 1, 24, 0, {}, pixel)},
        Named{"bmp of no height", bmp(1, 0, 24, 0, {}, pixel)},
        Named{"bmp of the largest sides", bmp(0x7FFFFFFF, 0x7FFFFFFF, 24, 0, {}, pixel)},
        Named{"bmp of the lowest height", bmp(1, INT32_MIN, 24, 0, {}, pixel)},
        // The pixels missing: refused before reading.
        Named{"bmp of the largest sides allowed", bmp(16384, 16384, 24, 0, {}, pixel)},
        Named{"gif of no size", gif(0, 0, {{0, 0, 1, 1, {1}}})},
        Named{"jpeg too high", withJpegHeight(jpeg, 16385)},
        Named{"jpeg of no height", withJpegHeight(jpeg, 0)}}) {
    EXPECT_FALSE(readable(c.file)) << c.name;
  }
}

// A tiny file that claims 16384 x 16384 pixels would cost a gigabyte before its data runs out:
// a claimed size that the data can't fill is refused before anything is allocated. Uncompressed
// rows that are all there still count against the budget: a one-bit bitmap packs eight pixels
// into a byte, and each of them costs four once decoded. Small pictures of the same codes decode.
TEST(PictureRejects, SizesBeyondTheirDataOrThePixelBudgetBeforeAllocating) {
  const Bytes blankRle = {0, 1};  // nothing but the end of the bitmap
  // Every row written from one blank row, and cut short.
  Bytes cutPng = png(16384, 16384, PNG_COLOR_TYPE_GRAY, 1, Bytes(16384 / 8, 0));
  cutPng.resize(200);
  const Bytes rows(size_t{8192} / 8 * 8200, 0x55);
  for (const Named& c :
       {Named{"rle", bmp(16384, 16384, 8, 1, {0xFF0000}, blankRle)},
        Named{"gif", gif(16384, 16384, {{0, 0, 1, 1, {1}}})}, Named{"png", cutPng},
        Named{"jpeg", withJpegHeight(encodeJpeg(chartLike(8, 8)), 16384, 16384)},
        Named{"bmp of 1 bit", bmp(dib(8192, 8200, 1, 0, {0, 0xFFFFFF}, rows), rows.size())},
        Named{"ico of 1 bit", ico({{0, 0, 1, dib(8192, 2 * 8200, 1, 0, {0, 0xFFFFFF}, rows)}})}}) {
    largestAllocation = 0;
    EXPECT_FALSE(readable(c.file)) << c.name;
    EXPECT_LT(largestAllocation, size_t{16} << 20) << c.name;
  }
  EXPECT_TRUE(readable(bmp(64, 64, 8, 1, {0xFF0000}, blankRle)));
  EXPECT_TRUE(readable(gif(256, 256, {{0, 0, 1, 1, {1}}})));
  EXPECT_TRUE(readable(bmp(8192, 8, 1, 0, {0, 0xFFFFFF}, Bytes(8192, 0x55))));
}

TEST(PictureRejects, DamagedBitmapAndIconStructures) {
  const Bytes icon = ico({{1, 1, 32, encodePng(image(1, 1, {kRed}))}});
  const auto patched = [](Bytes file, size_t at, uint32_t value) {
    for (int i = 0; i < 4; ++i) file[at + i] = static_cast<uint8_t>(value >> (8 * i));
    return file;
  };
  const Bytes pixel = {0, 0, 0, 0};
  for (const Named& c :
       {Named{"icon entry past the end", patched(icon, 18, 0x10000)},
        Named{"icon entry longer than the file", patched(icon, 14, 0xFFFFFFFF)},
        Named{"icon with more entries than its directory", patched(icon, 4, 40)},
        Named{"icon entry of noise", patched(icon, 22, 0x12345678)},
        Named{"bitmap pixels past the end", patched(bmp(1, 1, 24, 0, {}, pixel), 10, 0xFFFFFF00)},
        Named{"bitmap with four billion palette entries",
              patched(bmp(1, 1, 8, 0, {0xFF}, pixel), 46, 0xFFFFFFFF)},
        Named{"bitmap of 64 bits", patched(bmp(1, 1, 24, 0, {}, Bytes(8, 0)), 28, 64)},
        Named{"bitmap with an unknown header", patched(bmp(1, 1, 24, 0, {}, pixel), 14, 20)},
        Named{"RLE without its end", bmp(2, 1, 8, 1, {0, 0xFF}, {2, 1, 0, 0})}}) {
    EXPECT_FALSE(readable(c.file)) << c.name;
  }
  // Damage that stays inside the picture is drawn, clipped.
  EXPECT_TRUE(
      readable(bmp(2, 1, 8, 1, {0, 0xFF}, {250, 1, 0, 2, 200, 200, 0, 3, 1, 1, 1, 0, 0, 1})))
      << "RLE moving and running outside the picture";
  EXPECT_TRUE(readable(bmp(dib(1, 1, 32, 3, {}, {1, 2, 3, 4}, 40, {~0u, 0x0F0F, 0x00FF}), 4)))
      << "masks of 32 bits and with holes";
}

class PictureServiceOverCodecs : public ::testing::Test {
 protected:
  void SetUp() override {
    platform::setPictureDecoder(decodePicture);
    dir =
        std::filesystem::temp_directory_path() / ("tessaline-codecs-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
  }
  void TearDown() override {
    platform::setPictureDecoder(nullptr);
    std::filesystem::remove_all(dir);
  }
  std::filesystem::path write(const std::string& name, const Bytes& bytes) {
    std::ofstream(dir / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return dir / name;
  }
  std::filesystem::path dir;
};

TEST_F(PictureServiceOverCodecs, PictureFromBytesTakesAByteArrayOrAnArrayOfBytes) {
  const Bytes file = encodePng(chartLike(4, 3));
  const auto held =
      platform::PictureFromBytes(Variant(std::make_shared<platform::ByteArray>(file)));
  ASSERT_TRUE(held);
  EXPECT_EQ(held->Width(), 4);
  EXPECT_EQ(held->image().pixels, chartLike(4, 3).pixels);
  VariantArray array;
  for (uint8_t byte : file) array.items.emplace_back(byte);
  const auto listed = platform::PictureFromBytes(Variant(std::move(array)));
  ASSERT_TRUE(listed);
  EXPECT_EQ(listed->Height(), 3);

  VariantArray outOfRange, text;
  outOfRange.items = {Variant(0x89), Variant(1000)};
  text.items = {Variant("P"), Variant("N")};
  for (const Variant& bad :
       {Variant(), Variant::null(), Variant("bytes"), Variant(int32_t{42}), Variant::nothing(),
        Variant(std::make_shared<platform::ByteArray>(Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9})),
        Variant(std::make_shared<platform::Picture>(PixelImage{})), Variant(std::move(outOfRange)),
        Variant(std::move(text))}) {
    Ref<platform::Picture> picture;
    EXPECT_NO_THROW(picture = platform::PictureFromBytes(bad));
    EXPECT_FALSE(picture);
  }
}

TEST_F(PictureServiceOverCodecs, LoadPictureNamesMissingFilesAndNonPictures) {
  using testing::errorOf;
  EXPECT_EQ(platform::LoadPicture(write("chart.png", encodePng(chartLike(5, 2))).string())->Width(),
            5);
  EXPECT_EQ(errorOf([&] { platform::LoadPicture((dir / "missing.png").string()); }), 53);
  EXPECT_EQ(errorOf([&] { platform::LoadPicture(dir.string()); }), 53);
  EXPECT_EQ(errorOf([&] { platform::LoadPicture(write("text.png", {'h', 'i'}).string()); }), 481);
  EXPECT_EQ(errorOf([&] { platform::LoadPicture(write("empty.bmp", {}).string()); }), 481);
}

}  // namespace
}  // namespace tessaline::chart
