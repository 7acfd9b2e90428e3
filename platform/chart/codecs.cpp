#include "tessaline/platform/chart/codecs.h"

// clang-format off
#include <cstdio>  // jpeglib.h needs FILE declared first
#include <jpeglib.h>
#include <jerror.h>
// clang-format on
#include <gif_lib.h>
#include <png.h>

#include <algorithm>
#include <bit>
#include <csetjmp>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>

namespace tessaline::chart {

namespace {

using platform::PixelImage;

// libpng and libjpeg see each pixel as the bytes B, G, R, A: true of 0xAARRGGBB in memory only
// on a little-endian machine.
static_assert(std::endian::native == std::endian::little);

constexpr int64_t kLargestSide = 16384;

bool plausibleSize(int64_t width, int64_t height) {
  return width > 0 && height > 0 && width <= kLargestSide && height <= kLargestSide;
}

// A picture that a definition names is outside input, and its header may claim a size that its
// data can't fill. Before a decoder allocates, the claimed pixels must stay within a total
// budget (256 MB of pixels) and within what the file's bytes can describe at the densest
// coding of its format, so that no decoder allocates more than a small multiple of that.
constexpr int64_t kPixelBudget = int64_t{64} << 20;
// Deflate packs at most 1032 bytes into one, and a byte of one-bit rows holds 8 pixels.
constexpr int64_t kPngPixelsPerByte = 1032 * 8;
// Every 8 x 8 block costs at least one bit of its DC code.
constexpr int64_t kJpegPixelsPerByte = 64 * 8;
// A 12-bit LZW code stands for at most 4096 pixels.
constexpr int64_t kGifPixelsPerByte = 4096 * 8 / 12 + 1;
// A run of two bytes paints at most 255 pixels; the rest of a picture skipped by delta and
// end codes stays blank, and a blank that large is no picture anyone draws.
constexpr int64_t kRlePixelsPerByte = 128;

bool withinBudget(int64_t width, int64_t height) {
  return plausibleSize(width, height) && width * height <= kPixelBudget;
}

bool fillable(int64_t width, int64_t height, size_t bytes, int64_t pixelsPerByte) {
  if (!withinBudget(width, height)) return false;
  // A little slack for the smallest files, whose headers are most of their bytes.
  return width * height <= (static_cast<int64_t>(bytes) + 64) * pixelsPerByte;
}

bool validImage(const PixelImage& image) {
  return plausibleSize(image.width, image.height) &&
         image.pixels.size() ==
             static_cast<size_t>(image.width) * static_cast<size_t>(image.height);
}

uint32_t premultiply(uint32_t r, uint32_t g, uint32_t b, uint32_t a) {
  if (a == 255) return 0xFF000000u | r << 16 | g << 8 | b;
  if (a == 0) return 0;
  const auto scale = [a](uint32_t c) { return (c * a + 127) / 255; };
  return a << 24 | scale(r) << 16 | scale(g) << 8 | scale(b);
}

// The straight-alpha bytes B, G, R, A of a premultiplied pixel.
void unpremultiply(uint32_t pixel, uint8_t* bgra) {
  const uint32_t a = pixel >> 24;
  uint32_t r = (pixel >> 16) & 0xFF, g = (pixel >> 8) & 0xFF, b = pixel & 0xFF;
  if (a != 255 && a != 0) {
    // Colour above alpha is no valid premultiplied pixel; it saturates rather than wraps.
    r = std::min<uint32_t>(255, (r * 255 + a / 2) / a);
    g = std::min<uint32_t>(255, (g * 255 + a / 2) / a);
    b = std::min<uint32_t>(255, (b * 255 + a / 2) / a);
  }
  bgra[0] = static_cast<uint8_t>(b);
  bgra[1] = static_cast<uint8_t>(g);
  bgra[2] = static_cast<uint8_t>(r);
  bgra[3] = static_cast<uint8_t>(a);
}

// The pixel laid over white, opaque.
uint32_t onWhite(uint32_t pixel) {
  const uint32_t clear = 255 - (pixel >> 24);
  if (clear == 0) return pixel;
  const auto lift = [clear](uint32_t c) { return std::min<uint32_t>(255, (c & 0xFF) + clear); };
  return 0xFF000000u | lift(pixel >> 16) << 16 | lift(pixel >> 8) << 8 | lift(pixel);
}

// Every alpha byte 0xFF; written as one AND over all pixels so that it vectorizes.
bool opaque(const PixelImage& image) {
  uint32_t all = 0xFFFFFFFFu;
  for (uint32_t p : image.pixels) all &= p;
  return all >= 0xFF000000u;
}

uint32_t readLe16(const uint8_t* p) { return static_cast<uint32_t>(p[0] | p[1] << 8); }
uint32_t readLe32(const uint8_t* p) {
  return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
         static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
}
uint8_t* writeLe16(uint8_t* p, uint32_t v) {
  p[0] = static_cast<uint8_t>(v);
  p[1] = static_cast<uint8_t>(v >> 8);
  return p + 2;
}
uint8_t* writeLe32(uint8_t* p, uint32_t v) { return writeLe16(writeLe16(p, v & 0xFFFF), v >> 16); }

// ---- PNG -------------------------------------------------------------------------------
//
// libpng reports errors by longjmp. Each function that calls into it sets its own jump
// target and holds no object with a destructor; the C++ objects live in the callers.

struct PngSource {
  const uint8_t* data;
  size_t size;
  size_t at;
};

[[noreturn]] void pngFail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void pngQuiet(png_structp, png_const_charp) {}

void pngRead(png_structp png, png_bytep into, size_t length) {
  auto* source = static_cast<PngSource*>(png_get_io_ptr(png));
  if (length > source->size - source->at) png_error(png, "truncated");
  std::memcpy(into, source->data + source->at, length);
  source->at += length;
}

void pngWrite(png_structp png, png_bytep data, size_t length) {
  auto* sink = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
  bool stored = true;
  try {
    sink->insert(sink->end(), data, data + length);
  } catch (const std::exception&) {
    stored = false;
  }
  if (!stored) png_error(png, "out of memory");
}

void pngFlush(png_structp) {}

// Reads the header and sets the transforms that turn any colour type and depth into B, G, R,
// A bytes: four bytes a pixel, straight alpha.
bool readPngHeader(png_structp png, png_infop info, png_uint_32* width, png_uint_32* height) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_set_user_limits(png, kLargestSide, kLargestSide);
  png_read_info(png, info);
  const int colorType = png_get_color_type(png, info);
  png_set_expand(png);
  png_set_scale_16(png);
  if (colorType == PNG_COLOR_TYPE_GRAY || colorType == PNG_COLOR_TYPE_GRAY_ALPHA) {
    png_set_gray_to_rgb(png);
  }
  png_set_bgr(png);
  png_set_add_alpha(png, 0xFF, PNG_FILLER_AFTER);
  png_set_interlace_handling(png);
  png_read_update_info(png, info);
  *width = png_get_image_width(png, info);
  *height = png_get_image_height(png, info);
  return png_get_rowbytes(png, info) == static_cast<size_t>(*width) * 4;
}

bool readPngRows(png_structp png, png_infop info, png_bytepp rows) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_read_image(png, rows);
  // To the end chunk: a file cut after its pixels is still a cut file.
  png_read_end(png, info);
  return true;
}

bool decodePng(const uint8_t* data, size_t size, PixelImage& out) {
  struct Reader {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, pngFail, pngQuiet);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
  } reader;
  if (!reader.png || !reader.info) return false;
  PngSource source{data, size, 0};
  png_set_read_fn(reader.png, &source, pngRead);
  png_uint_32 width = 0, height = 0;
  if (!readPngHeader(reader.png, reader.info, &width, &height) ||
      !fillable(width, height, size, kPngPixelsPerByte)) {
    return false;
  }
  out.width = static_cast<int32_t>(width);
  out.height = static_cast<int32_t>(height);
  out.pixels.resize(static_cast<size_t>(width) * height);
  std::vector<png_bytep> rows(height);
  for (size_t y = 0; y < height; ++y) {
    rows[y] = reinterpret_cast<png_bytep>(out.pixels.data() + y * width);
  }
  if (!readPngRows(reader.png, reader.info, rows.data())) return false;
  for (uint32_t& p : out.pixels) {
    if (p < 0xFF000000u) p = premultiply((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF, p >> 24);
  }
  return true;
}

// Charts are flat areas and thin lines that deflate matches as they stand: unfiltered rows
// at level 3 came out smallest for the time, where filters and higher levels made larger files
// or took half again as long.
constexpr int kPngLevel = 3;
constexpr int kPngFilter = PNG_FILTER_NONE;

bool writePngRows(png_structp png, png_infop info, const PixelImage& image, bool solid,
                  uint8_t* row) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_set_IHDR(png, info, static_cast<png_uint_32>(image.width),
               static_cast<png_uint_32>(image.height), 8,
               solid ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(png, kPngLevel);
  png_set_filter(png, PNG_FILTER_TYPE_BASE, kPngFilter);
  png_write_info(png, info);
  png_set_bgr(png);
  // An opaque picture goes out as RGB straight from its pixels, the fourth byte dropped.
  if (solid) png_set_filler(png, 0, PNG_FILLER_AFTER);
  const size_t width = static_cast<size_t>(image.width);
  for (size_t y = 0; y < static_cast<size_t>(image.height); ++y) {
    const uint32_t* pixels = image.pixels.data() + y * width;
    if (solid) {
      png_write_row(png, reinterpret_cast<png_const_bytep>(pixels));
      continue;
    }
    for (size_t x = 0; x < width; ++x) unpremultiply(pixels[x], row + x * 4);
    png_write_row(png, row);
  }
  png_write_end(png, info);
  return true;
}

// ---- JPEG ------------------------------------------------------------------------------
//
// The same discipline as PNG: the error manager jumps back instead of ending the process.

struct JpegError {
  jpeg_error_mgr manager;
  std::jmp_buf jump;
};

[[noreturn]] void jpegFail(j_common_ptr info) {
  std::longjmp(reinterpret_cast<JpegError*>(info->err)->jump, 1);
}

void jpegMessage(j_common_ptr info, int level) {
  // libjpeg fills a damaged or cut scan with grey and only warns; we refuse the picture.
  if (level >= 0) return;
  switch (info->err->msg_code) {
    case JWRN_JPEG_EOF:
    case JWRN_HIT_MARKER:
    case JWRN_MUST_RESYNC:
    case JWRN_HUFF_BAD_CODE:
    case JWRN_ARITH_BAD_CODE:
      jpegFail(info);
    default:
      break;
  }
}

jpeg_error_mgr* jumpingErrors(JpegError& error) {
  jpeg_std_error(&error.manager);
  error.manager.error_exit = jpegFail;
  error.manager.emit_message = jpegMessage;
  return &error.manager;
}

// The fast transform: a chart redraws with every value. Plain upsampling of subsampled colour
// is the quicker path and as clean on chart edges.
constexpr J_DCT_METHOD kJpegReadDct = JDCT_IFAST;

bool readJpegHeader(jpeg_decompress_struct* info, JpegError* error, const uint8_t* data,
                    size_t size) {
  if (setjmp(error->jump)) return false;
  jpeg_create_decompress(info);
  jpeg_mem_src(info, data, static_cast<unsigned long>(size));
  jpeg_read_header(info, TRUE);
  if (!plausibleSize(info->image_width, info->image_height)) return false;
  // Alpha 0xFF in the fourth byte: opaque pixels, already in the native layout.
  info->out_color_space = JCS_EXT_BGRA;
  info->dct_method = kJpegReadDct;
  info->do_fancy_upsampling = FALSE;
  jpeg_calc_output_dimensions(info);
  return true;
}

bool readJpegRows(jpeg_decompress_struct* info, JpegError* error, uint32_t* pixels) {
  if (setjmp(error->jump)) return false;
  jpeg_start_decompress(info);
  const size_t width = info->output_width;
  JSAMPROW rows[16];
  while (info->output_scanline < info->output_height) {
    const JDIMENSION count = std::min<JDIMENSION>(16, info->output_height - info->output_scanline);
    for (JDIMENSION i = 0; i < count; ++i) {
      rows[i] = reinterpret_cast<JSAMPROW>(pixels + (info->output_scanline + i) * width);
    }
    jpeg_read_scanlines(info, rows, count);
  }
  jpeg_finish_decompress(info);
  return true;
}

bool decodeJpeg(const uint8_t* data, size_t size, PixelImage& out) {
  // Created inside the jump target; destroying a struct never created is a no-op.
  struct Reader {
    jpeg_decompress_struct info{};
    JpegError error;
    Reader() { info.err = jumpingErrors(error); }
    ~Reader() { jpeg_destroy_decompress(&info); }
  } reader;
  if (!readJpegHeader(&reader.info, &reader.error, data, size)) return false;
  const int64_t width = reader.info.output_width, height = reader.info.output_height;
  if (!fillable(width, height, size, kJpegPixelsPerByte) || reader.info.output_components != 4) {
    return false;
  }
  out.width = static_cast<int32_t>(width);
  out.height = static_cast<int32_t>(height);
  out.pixels.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
  return readJpegRows(&reader.info, &reader.error, out.pixels.data());
}

// The fast transform, as in decoding.
constexpr J_DCT_METHOD kJpegWriteDct = JDCT_IFAST;

bool writeJpeg(jpeg_compress_struct* info, JpegError* error, const uint8_t* rows, int32_t width,
               int32_t height, int quality, unsigned char** buffer, unsigned long* length) {
  if (setjmp(error->jump)) return false;
  jpeg_create_compress(info);
  jpeg_mem_dest(info, buffer, length);
  info->image_width = static_cast<JDIMENSION>(width);
  info->image_height = static_cast<JDIMENSION>(height);
  info->input_components = 4;
  info->in_color_space = JCS_EXT_BGRX;
  jpeg_set_defaults(info);
  jpeg_set_quality(info, std::clamp(quality, 1, 100), TRUE);
  info->dct_method = kJpegWriteDct;
  // The library's halved colour (4:2:0): full-resolution colour draws thin coloured lines more
  // crisply, but costs a trend redraw about a millisecond, and every value redraws.
  jpeg_start_compress(info, TRUE);
  const size_t stride = static_cast<size_t>(width) * 4;
  JSAMPROW batch[16];
  while (info->next_scanline < info->image_height) {
    const JDIMENSION count = std::min<JDIMENSION>(16, info->image_height - info->next_scanline);
    for (JDIMENSION i = 0; i < count; ++i) {
      batch[i] = const_cast<JSAMPROW>(rows + (info->next_scanline + i) * stride);
    }
    jpeg_write_scanlines(info, batch, count);
  }
  jpeg_finish_compress(info);
  return true;
}

// ---- BMP and the bitmaps inside icons -----------------------------------------------------

enum : uint32_t { kRgb = 0, kRle8 = 1, kRle4 = 2, kBitfields = 3, kAlphaBitfields = 6 };

// One channel of a BI_BITFIELDS pixel, scaled to 0..255.
struct Bitfield {
  uint32_t mask = 0;
  int shift = 0;
  uint64_t top = 0;
  explicit Bitfield(uint32_t m) : mask(m) {
    if (!m) return;
    shift = std::countr_zero(m);
    top = (uint64_t{1} << std::countr_one(m >> shift)) - 1;
  }
  uint32_t take(uint32_t v) const {
    if (!top) return 0;
    // A mask with holes gives values above its top: clamped rather than bled into alpha.
    const uint64_t raw = std::min<uint64_t>((v & mask) >> shift, top);
    if (top == 255) return static_cast<uint32_t>(raw);
    return static_cast<uint32_t>((raw * 255 + top / 2) / top);
  }
};

struct Dib {
  int64_t width = 0, height = 0;
  bool topDown = false;
  uint32_t bpp = 0, compression = kRgb;
  uint32_t masks[4] = {0, 0, 0, 0};
  std::vector<uint32_t> palette;
  size_t pixelsAt = 0;  // offset of the pixels in the data
};

// Reads the header, masks and palette of a device-independent bitmap at `dib`. An icon's
// bitmap has its height doubled and its pixels straight after the palette.
bool readDibHeader(const uint8_t* data, size_t size, size_t dib, bool icon, Dib& d) {
  if (dib + 12 > size) return false;
  const uint32_t headerSize = readLe32(data + dib);
  const bool core = headerSize == 12;
  if ((!core && headerSize < 40) || headerSize > size - dib) return false;
  uint32_t colorsUsed = 0;
  if (core) {
    d.width = readLe16(data + dib + 4);
    d.height = readLe16(data + dib + 6);
    d.bpp = readLe16(data + dib + 10);
  } else {
    d.width = static_cast<int32_t>(readLe32(data + dib + 4));
    d.height = static_cast<int32_t>(readLe32(data + dib + 8));
    d.bpp = readLe16(data + dib + 14);
    d.compression = readLe32(data + dib + 16);
    colorsUsed = readLe32(data + dib + 32);
  }
  d.topDown = d.height < 0;
  if (d.topDown) d.height = -d.height;
  if (icon) d.height /= 2;
  if (!plausibleSize(d.width, d.height)) return false;

  const bool paletted = d.bpp == 1 || d.bpp == 4 || d.bpp == 8;
  if (!paletted && d.bpp != 16 && d.bpp != 24 && d.bpp != 32) return false;
  switch (d.compression) {
    case kRgb:
      break;
    case kRle8:
    case kRle4:
      // Runs have no meaning top-down, and an icon's mask can't be found after them.
      if (d.bpp != (d.compression == kRle8 ? 8u : 4u) || d.topDown || icon) return false;
      break;
    case kBitfields:
    case kAlphaBitfields:
      if (d.bpp != 16 && d.bpp != 32) return false;
      break;
    default:
      return false;
  }

  size_t tableAt = dib + headerSize;
  if (d.compression == kBitfields || d.compression == kAlphaBitfields) {
    // The masks sit inside a larger header, or follow the plain 40-byte one.
    const size_t fields = d.compression == kAlphaBitfields || headerSize >= 56 ? 4 : 3;
    if (dib + 40 + fields * 4 > size) return false;
    for (size_t i = 0; i < fields; ++i) d.masks[i] = readLe32(data + dib + 40 + i * 4);
    if (headerSize == 40) tableAt += (d.compression == kAlphaBitfields ? 4 : 3) * 4;
  } else if (d.bpp == 16) {
    d.masks[0] = 0x7C00, d.masks[1] = 0x03E0, d.masks[2] = 0x001F;
  } else if (d.bpp == 32) {
    d.masks[0] = 0x00FF0000, d.masks[1] = 0x0000FF00, d.masks[2] = 0x000000FF;
    d.masks[3] = 0xFF000000;
  }

  if (paletted) {
    const size_t entry = core ? 3 : 4;
    const uint64_t full = uint64_t{1} << d.bpp;
    const uint64_t stored = core || colorsUsed == 0 ? full : colorsUsed;
    if (stored > (size - tableAt) / entry) return false;
    d.palette.resize(std::min(stored, full));
    for (size_t i = 0; i < d.palette.size(); ++i) {
      const uint8_t* p = data + tableAt + i * entry;
      d.palette[i] = premultiply(p[2], p[1], p[0], 255);
    }
    tableAt += stored * entry;
  }
  if (icon) d.pixelsAt = tableAt;
  return d.pixelsAt <= size;
}

// Decodes run-length pixels; they must end with the end-of-bitmap code. Pixels the runs skip
// stay transparent.
bool readRle(const uint8_t* data, size_t size, const Dib& d, PixelImage& out) {
  const size_t w = static_cast<size_t>(d.width), h = static_cast<size_t>(d.height);
  const bool four = d.compression == kRle4;
  const auto put = [&](size_t x, size_t row, uint32_t index) {
    if (x < w && row < h) {
      out.pixels[(h - 1 - row) * w + x] = index < d.palette.size() ? d.palette[index] : 0xFF000000u;
    }
  };
  size_t at = d.pixelsAt, x = 0, row = 0;
  while (size - at >= 2) {
    const uint32_t count = data[at], value = data[at + 1];
    at += 2;
    if (count > 0) {
      for (uint32_t i = 0; i < count; ++i) {
        put(x++, row, !four ? value : (i % 2 == 0 ? value >> 4 : value & 0x0F));
      }
    } else if (value == 0) {
      x = 0, ++row;
    } else if (value == 1) {
      return true;
    } else if (value == 2) {
      if (size - at < 2) return false;
      x += data[at], row += data[at + 1];
      at += 2;
    } else {
      const size_t bytes = four ? (value + 1) / 2 : value;
      const size_t padded = (bytes + 1) & ~size_t{1};
      if (size - at < padded) return false;
      for (uint32_t i = 0; i < value; ++i) {
        const uint8_t byte = data[at + (four ? i / 2 : i)];
        put(x++, row, !four ? byte : (i % 2 == 0 ? byte >> 4 : byte & 0x0F));
      }
      at += padded;
    }
  }
  return false;
}

bool decodeDib(const uint8_t* data, size_t size, size_t dib, size_t pixelsAt, bool icon,
               PixelImage& out) {
  Dib d;
  d.pixelsAt = pixelsAt;
  if (!readDibHeader(data, size, dib, icon, d)) return false;
  const size_t w = static_cast<size_t>(d.width), h = static_cast<size_t>(d.height);
  const size_t stride = (w * d.bpp + 31) / 32 * 4;
  const bool rle = d.compression == kRle8 || d.compression == kRle4;
  // Uncompressed rows must all be there, and even then a one-bit file of 32 MB holds a gigabyte
  // of our pixels: the budget holds for them too.
  if (!rle && (stride * h > size - d.pixelsAt || !withinBudget(d.width, d.height))) return false;
  if (rle && !fillable(d.width, d.height, size - d.pixelsAt, kRlePixelsPerByte)) return false;

  out.width = static_cast<int32_t>(w);
  out.height = static_cast<int32_t>(h);
  out.pixels.assign(w * h, 0);
  if (rle) return readRle(data, size, d, out);

  const auto rowAt = [&](size_t fileRow) { return d.topDown ? fileRow : h - 1 - fileRow; };
  const Bitfield r(d.masks[0]), g(d.masks[1]), b(d.masks[2]), a(d.masks[3]);
  bool anyAlpha = false;
  for (size_t fileRow = 0; fileRow < h; ++fileRow) {
    const uint8_t* line = data + d.pixelsAt + fileRow * stride;
    uint32_t* target = out.pixels.data() + rowAt(fileRow) * w;
    for (size_t x = 0; x < w; ++x) {
      if (d.bpp <= 8) {
        const size_t bit = x * d.bpp;
        const uint32_t index = (line[bit / 8] >> (8 - d.bpp - bit % 8)) & ((1u << d.bpp) - 1);
        target[x] = index < d.palette.size() ? d.palette[index] : 0xFF000000u;
      } else if (d.bpp == 24) {
        target[x] = premultiply(line[x * 3 + 2], line[x * 3 + 1], line[x * 3], 255);
      } else {
        const uint32_t v = d.bpp == 16 ? readLe16(line + x * 2) : readLe32(line + x * 4);
        // Straight colour with alpha kept aside until we know whether the alpha means anything.
        const uint32_t alpha = a.take(v);
        anyAlpha |= alpha != 0;
        target[x] = alpha << 24 | r.take(v) << 16 | g.take(v) << 8 | b.take(v);
      }
    }
  }
  if (d.bpp == 16 || d.bpp == 32) {
    // Many writers leave the fourth byte zero: alpha that is zero everywhere means opaque.
    for (uint32_t& p : out.pixels) {
      p = anyAlpha ? premultiply((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF, p >> 24)
                   : p | 0xFF000000u;
    }
  }

  if (icon && !anyAlpha) {
    // The AND mask after the colours: a set bit is a transparent pixel. Some writers leave it
    // out; the picture then stays opaque.
    const size_t maskStride = (w + 31) / 32 * 4;
    const size_t maskAt = d.pixelsAt + stride * h;
    if (maskAt <= size && maskStride * h <= size - maskAt) {
      for (size_t fileRow = 0; fileRow < h; ++fileRow) {
        const uint8_t* line = data + maskAt + fileRow * maskStride;
        uint32_t* target = out.pixels.data() + rowAt(fileRow) * w;
        for (size_t x = 0; x < w; ++x) {
          if ((line[x / 8] >> (7 - x % 8)) & 1) target[x] = 0;
        }
      }
    }
  }
  return true;
}

bool decodeBmp(const uint8_t* data, size_t size, PixelImage& out) {
  if (size < 14 + 12) return false;
  return decodeDib(data, size, 14, readLe32(data + 10), false, out);
}

// ---- GIF -------------------------------------------------------------------------------

struct GifSource {
  const uint8_t* data;
  size_t size;
  size_t at;
};

int readGif(GifFileType* gif, GifByteType* into, int length) {
  auto* source = static_cast<GifSource*>(gif->UserData);
  const size_t n = std::min(static_cast<size_t>(std::max(length, 0)), source->size - source->at);
  std::memcpy(into, source->data + source->at, n);
  source->at += n;
  return static_cast<int>(n);
}

bool skipGifBlocks(GifFileType* gif, GifByteType* block, bool code) {
  while (block) {
    if ((code ? DGifGetCodeNext(gif, &block) : DGifGetExtensionNext(gif, &block)) == GIF_ERROR) {
      return false;
    }
  }
  return true;
}

// Reads the first frame onto a transparent canvas of the logical screen, line by line, so that
// a frame's declared size costs nothing before its data arrives. Later frames are walked over
// undecoded to the trailer, so that a cut file is refused.
bool readGifFirstFrame(GifFileType* gif, size_t bytes, PixelImage& out) {
  if (!fillable(gif->SWidth, gif->SHeight, bytes, kGifPixelsPerByte)) return false;
  const size_t w = static_cast<size_t>(gif->SWidth), h = static_cast<size_t>(gif->SHeight);
  int transparent = NO_TRANSPARENT_COLOR;
  bool framed = false;
  std::vector<GifPixelType> line;
  GifRecordType type = UNDEFINED_RECORD_TYPE;
  do {
    if (DGifGetRecordType(gif, &type) == GIF_ERROR) return false;
    if (type == EXTENSION_RECORD_TYPE) {
      int function = 0;
      GifByteType* block = nullptr;
      if (DGifGetExtension(gif, &function, &block) == GIF_ERROR) return false;
      GraphicsControlBlock control;
      if (!framed && function == GRAPHICS_EXT_FUNC_CODE && block &&
          DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
        transparent = control.TransparentColor;
      }
      if (!skipGifBlocks(gif, block, false)) return false;
    } else if (type == IMAGE_DESC_RECORD_TYPE) {
      if (DGifGetImageDesc(gif) == GIF_ERROR) return false;
      const GifImageDesc& frame = gif->Image;
      if (framed) {
        int codeSize = 0;
        GifByteType* block = nullptr;
        if (DGifGetCode(gif, &codeSize, &block) == GIF_ERROR || !skipGifBlocks(gif, block, true)) {
          return false;
        }
        continue;
      }
      const ColorMapObject* map = frame.ColorMap ? frame.ColorMap : gif->SColorMap;
      if (!map || !plausibleSize(frame.Width, frame.Height) || frame.Left < 0 || frame.Top < 0) {
        return false;
      }
      out.width = gif->SWidth;
      out.height = gif->SHeight;
      out.pixels.assign(w * h, 0);
      line.resize(static_cast<size_t>(frame.Width));
      // Interlaced rows come in four passes: every 8th from 0, every 8th from 4, every 4th
      // from 2, every 2nd from 1.
      static constexpr int kStart[] = {0, 4, 2, 1}, kStep[] = {8, 8, 4, 2};
      const int passes = frame.Interlace ? 4 : 1;
      for (int pass = 0; pass < passes; ++pass) {
        const int start = frame.Interlace ? kStart[pass] : 0,
                  step = frame.Interlace ? kStep[pass] : 1;
        for (int y = start; y < frame.Height; y += step) {
          if (DGifGetLine(gif, line.data(), frame.Width) == GIF_ERROR) return false;
          const size_t cy = static_cast<size_t>(frame.Top) + static_cast<size_t>(y);
          if (cy >= h) continue;
          uint32_t* target = out.pixels.data() + cy * w;
          for (size_t x = 0; x < line.size(); ++x) {
            const size_t cx = static_cast<size_t>(frame.Left) + x;
            const int index = line[x];
            if (cx >= w || index == transparent || index >= map->ColorCount) continue;
            const GifColorType c = map->Colors[index];
            target[cx] = premultiply(c.Red, c.Green, c.Blue, 255);
          }
        }
      }
      framed = true;
    }
  } while (type != TERMINATE_RECORD_TYPE);
  return framed;
}

bool decodeGif(const uint8_t* data, size_t size, PixelImage& out) {
  struct Close {
    void operator()(GifFileType* gif) const {
      int error = 0;
      DGifCloseFile(gif, &error);
    }
  };
  GifSource source{data, size, 0};
  int error = 0;
  const std::unique_ptr<GifFileType, Close> gif(DGifOpen(&source, readGif, &error));
  return gif && readGifFirstFrame(gif.get(), size, out);
}

// ---- ICO -------------------------------------------------------------------------------

bool decodeIco(const uint8_t* data, size_t size, PixelImage& out) {
  const size_t count = readLe16(data + 4);
  if (count == 0 || size < 6 + count * 16) return false;
  // The largest image, and of equal sizes the deepest; a 0 in the directory means 256.
  const uint8_t* best = nullptr;
  int64_t bestArea = -1;
  uint32_t bestBits = 0;
  for (size_t i = 0; i < count; ++i) {
    const uint8_t* entry = data + 6 + i * 16;
    const int64_t area = int64_t{entry[0] ? entry[0] : 256} * (entry[1] ? entry[1] : 256);
    const uint32_t bits = readLe16(entry + 6);
    if (area > bestArea || (area == bestArea && bits > bestBits)) {
      best = entry, bestArea = area, bestBits = bits;
    }
  }
  const size_t length = readLe32(best + 8), offset = readLe32(best + 12);
  if (offset >= size || length > size - offset || length < 12) return false;
  const uint8_t* image = data + offset;
  if (std::memcmp(image, "\x89PNG\r\n\x1a\n", 8) == 0) {
    return decodePng(image, length, out);
  }
  return decodeDib(image, length, 0, 0, true, out);
}

bool decodeAny(const uint8_t* data, size_t size, PixelImage& out) {
  if (std::memcmp(data, "\x89PNG\r\n\x1a\n", 8) == 0) return decodePng(data, size, out);
  if (data[0] == 0xFF && data[1] == 0xD8 && data[2] == 0xFF) return decodeJpeg(data, size, out);
  if (data[0] == 'B' && data[1] == 'M') return decodeBmp(data, size, out);
  if (std::memcmp(data, "GIF87a", 6) == 0 || std::memcmp(data, "GIF89a", 6) == 0) {
    return decodeGif(data, size, out);
  }
  if (data[0] == 0 && data[1] == 0 && (data[2] == 1 || data[2] == 2) && data[3] == 0) {
    return decodeIco(data, size, out);
  }
  return false;
}

}  // namespace

std::vector<uint8_t> encodePng(const PixelImage& image) {
  if (!validImage(image)) return {};
  struct Writer {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, pngFail, pngQuiet);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    ~Writer() { png_destroy_write_struct(&png, &info); }
  } writer;
  if (!writer.png || !writer.info) return {};
  const bool solid = opaque(image);
  std::vector<uint8_t> row(solid ? 0 : static_cast<size_t>(image.width) * 4);
  std::vector<uint8_t> out;
  out.reserve(image.pixels.size() / 4 + 1024);
  png_set_write_fn(writer.png, &out, pngWrite, pngFlush);
  if (!writePngRows(writer.png, writer.info, image, solid, row.data())) return {};
  return out;
}

PixelImage layOnWhite(PixelImage image) {
  if (!opaque(image))
    std::transform(image.pixels.begin(), image.pixels.end(), image.pixels.begin(), onWhite);
  return image;
}

std::vector<uint8_t> encodeJpeg(const PixelImage& image, int quality) {
  if (!validImage(image)) return {};
  // JPEG has no alpha: a picture with transparent pixels is laid on white first. An opaque
  // one (every chart) is read as it stands.
  std::vector<uint32_t> flattened;
  if (!opaque(image)) {
    flattened.resize(image.pixels.size());
    std::transform(image.pixels.begin(), image.pixels.end(), flattened.begin(), onWhite);
  }
  const uint32_t* rows = flattened.empty() ? image.pixels.data() : flattened.data();
  struct Writer {
    jpeg_compress_struct info{};
    JpegError error;
    unsigned char* buffer = nullptr;
    unsigned long length = 0;
    Writer() { info.err = jumpingErrors(error); }
    ~Writer() {
      jpeg_destroy_compress(&info);
      std::free(buffer);
    }
  } writer;
  if (!writeJpeg(&writer.info, &writer.error, reinterpret_cast<const uint8_t*>(rows), image.width,
                 image.height, quality, &writer.buffer, &writer.length) ||
      !writer.buffer) {
    return {};
  }
  return std::vector<uint8_t>(writer.buffer, writer.buffer + writer.length);
}

std::vector<uint8_t> encodeBmp(const PixelImage& image) {
  if (!validImage(image)) return {};
  const size_t width = static_cast<size_t>(image.width);
  const size_t stride = (width * 3 + 3) / 4 * 4;
  const size_t pixelBytes = stride * static_cast<size_t>(image.height);
  std::vector<uint8_t> out(54 + pixelBytes, 0);
  uint8_t* p = out.data();
  *p++ = 'B';
  *p++ = 'M';
  p = writeLe32(p, static_cast<uint32_t>(out.size()));
  p = writeLe32(p, 0);
  p = writeLe32(p, 54);
  p = writeLe32(p, 40);
  p = writeLe32(p, static_cast<uint32_t>(image.width));
  p = writeLe32(p, static_cast<uint32_t>(image.height));
  p = writeLe16(p, 1);
  p = writeLe16(p, 24);
  p = writeLe32(p, kRgb);
  p = writeLe32(p, static_cast<uint32_t>(pixelBytes));
  p = writeLe32(p, 2835);  // 72 dots per inch
  p = writeLe32(p, 2835);
  const size_t height = static_cast<size_t>(image.height);
  for (size_t fileRow = 0; fileRow < height; ++fileRow) {
    uint8_t* line = out.data() + 54 + fileRow * stride;
    const uint32_t* pixels = image.pixels.data() + (height - 1 - fileRow) * width;
    for (size_t x = 0; x < width; ++x) {
      const uint32_t pixel = onWhite(pixels[x]);
      line[x * 3] = static_cast<uint8_t>(pixel);
      line[x * 3 + 1] = static_cast<uint8_t>(pixel >> 8);
      line[x * 3 + 2] = static_cast<uint8_t>(pixel >> 16);
    }
  }
  return out;
}

bool decodePicture(const uint8_t* data, size_t size, PixelImage& out) {
  if (!data || size < 8) return false;
  PixelImage image;
  try {
    if (!decodeAny(data, size, image) || !validImage(image)) return false;
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const std::length_error&) {
    return false;
  }
  out = std::move(image);
  return true;
}

}  // namespace tessaline::chart
