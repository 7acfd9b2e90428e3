#include "platform/chart/codecs.h"

#include <gif_lib.h>
#include <jpeglib.h>
#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstring>

namespace tessaline::chart {

namespace {

constexpr int32_t kLargestSide = 16384;

bool plausibleSize(int64_t width, int64_t height) {
  return width > 0 && height > 0 && width <= kLargestSide && height <= kLargestSide;
}

uint32_t premultiply(uint32_t r, uint32_t g, uint32_t b, uint32_t a) {
  if (a == 255) return 0xFF000000u | r << 16 | g << 8 | b;
  const auto scale = [a](uint32_t c) { return (c * a + 127) / 255; };
  return a << 24 | scale(r) << 16 | scale(g) << 8 | scale(b);
}

// Straight (not premultiplied) colour of a pixel; with `onWhite`, laid over white first.
void straight(uint32_t pixel, uint8_t* bgra, bool onWhite) {
  const uint32_t a = pixel >> 24;
  uint32_t r = (pixel >> 16) & 0xFF, g = (pixel >> 8) & 0xFF, b = pixel & 0xFF;
  if (onWhite) {
    r += 255 - a, g += 255 - a, b += 255 - a;
    bgra[0] = static_cast<uint8_t>(std::min<uint32_t>(b, 255));
    bgra[1] = static_cast<uint8_t>(std::min<uint32_t>(g, 255));
    bgra[2] = static_cast<uint8_t>(std::min<uint32_t>(r, 255));
    bgra[3] = 255;
    return;
  }
  if (a != 0 && a != 255) {
    r = std::min<uint32_t>(255, (r * 255 + a / 2) / a);
    g = std::min<uint32_t>(255, (g * 255 + a / 2) / a);
    b = std::min<uint32_t>(255, (b * 255 + a / 2) / a);
  }
  bgra[0] = static_cast<uint8_t>(b);
  bgra[1] = static_cast<uint8_t>(g);
  bgra[2] = static_cast<uint8_t>(r);
  bgra[3] = static_cast<uint8_t>(a);
}

bool validImage(const platform::PixelImage& image) {
  return plausibleSize(image.width, image.height) &&
         image.pixels.size() ==
             static_cast<size_t>(image.width) * static_cast<size_t>(image.height);
}

uint32_t readLe16(const uint8_t* p) { return static_cast<uint32_t>(p[0] | p[1] << 8); }
uint32_t readLe32(const uint8_t* p) {
  return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
         static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
}
void writeLe16(std::vector<uint8_t>& out, uint32_t v) {
  out.push_back(static_cast<uint8_t>(v));
  out.push_back(static_cast<uint8_t>(v >> 8));
}
void writeLe32(std::vector<uint8_t>& out, uint32_t v) {
  writeLe16(out, v & 0xFFFF);
  writeLe16(out, v >> 16);
}

// ---- PNG -------------------------------------------------------------------------------

bool decodePng(const uint8_t* data, size_t size, platform::PixelImage& out) {
  png_image png;
  std::memset(&png, 0, sizeof png);
  png.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&png, data, size)) return false;
  if (!plausibleSize(png.width, png.height)) {
    png_image_free(&png);
    return false;
  }
  png.format = PNG_FORMAT_BGRA;
  std::vector<uint8_t> bgra(PNG_IMAGE_SIZE(png));
  if (!png_image_finish_read(&png, nullptr, bgra.data(), 0, nullptr)) {
    png_image_free(&png);
    return false;
  }
  out.width = static_cast<int32_t>(png.width);
  out.height = static_cast<int32_t>(png.height);
  out.pixels.resize(static_cast<size_t>(out.width) * static_cast<size_t>(out.height));
  for (size_t i = 0; i < out.pixels.size(); ++i) {
    const uint8_t* p = &bgra[i * 4];
    out.pixels[i] = premultiply(p[2], p[1], p[0], p[3]);
  }
  return true;
}

// ---- JPEG ------------------------------------------------------------------------------

struct JpegError {
  jpeg_error_mgr manager;
  std::jmp_buf jump;
};

void jpegFail(j_common_ptr info) { std::longjmp(reinterpret_cast<JpegError*>(info->err)->jump, 1); }
void jpegQuiet(j_common_ptr, int) {}

// An error manager that jumps back instead of ending the process, and prints nothing.
jpeg_error_mgr* jumpingErrors(JpegError& error) {
  jpeg_std_error(&error.manager);
  error.manager.error_exit = jpegFail;
  error.manager.emit_message = jpegQuiet;
  return &error.manager;
}

// The C state lives in this function alone, and the pixels in the caller's frame, so that a
// jump back leaves nothing of ours in an undefined state.
bool decodeJpegInto(const uint8_t* data, size_t size, platform::PixelImage& out) {
  jpeg_decompress_struct info;
  JpegError error;
  info.err = jumpingErrors(error);
  jpeg_create_decompress(&info);
  if (setjmp(error.jump)) {
    jpeg_destroy_decompress(&info);
    return false;
  }
  jpeg_mem_src(&info, data, static_cast<unsigned long>(size));
  jpeg_read_header(&info, TRUE);
  if (!plausibleSize(info.image_width, info.image_height)) {
    jpeg_destroy_decompress(&info);
    return false;
  }
  info.out_color_space = JCS_EXT_BGRA;
  // The fast transform and plain upsampling: a chart redraws with every value.
  info.dct_method = JDCT_IFAST;
  info.do_fancy_upsampling = FALSE;
  jpeg_start_decompress(&info);
  out.width = static_cast<int32_t>(info.output_width);
  out.height = static_cast<int32_t>(info.output_height);
  out.pixels.resize(static_cast<size_t>(out.width) * static_cast<size_t>(out.height));
  // JCS_EXT_BGRA writes alpha 0xFF: opaque pixels, already in the native layout.
  while (info.output_scanline < info.output_height) {
    JSAMPROW row = reinterpret_cast<JSAMPROW>(
        out.pixels.data() + static_cast<size_t>(info.output_scanline) * out.width);
    jpeg_read_scanlines(&info, &row, 1);
  }
  jpeg_finish_decompress(&info);
  jpeg_destroy_decompress(&info);
  return true;
}

bool encodeJpegInto(const platform::PixelImage& image, int quality, uint8_t* rows,
                    unsigned char** buffer, unsigned long* length) {
  jpeg_compress_struct info;
  JpegError error;
  info.err = jumpingErrors(error);
  jpeg_create_compress(&info);
  if (setjmp(error.jump)) {
    jpeg_destroy_compress(&info);
    return false;
  }
  jpeg_mem_dest(&info, buffer, length);
  info.image_width = static_cast<JDIMENSION>(image.width);
  info.image_height = static_cast<JDIMENSION>(image.height);
  info.input_components = 4;
  info.in_color_space = JCS_EXT_BGRX;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, std::clamp(quality, 1, 100), TRUE);
  info.dct_method = JDCT_IFAST;
  jpeg_start_compress(&info, TRUE);
  while (info.next_scanline < info.image_height) {
    JSAMPROW row = rows + static_cast<size_t>(info.next_scanline) * image.width * 4;
    jpeg_write_scanlines(&info, &row, 1);
  }
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  return true;
}

// ---- BMP and the DIB inside icons --------------------------------------------------------

struct Bitfield {
  uint32_t mask = 0;
  int shift = 0;
  int bits = 0;
  explicit Bitfield(uint32_t m = 0) : mask(m) {
    if (!m) return;
    while (!((m >> shift) & 1)) ++shift;
    while (shift + bits < 32 && ((m >> (shift + bits)) & 1)) ++bits;
  }
  uint32_t take(uint32_t v) const {
    if (!bits) return 0;
    const uint32_t raw = (v & mask) >> shift;
    const uint32_t top = (1u << bits) - 1;
    return (raw * 255 + top / 2) / top;
  }
};

// Reads a device-independent bitmap: its header at `dib`, its pixels at `pixelsAt` (both
// offsets into data). An icon's bitmap has its height doubled and a 1-bit mask after the
// colours.
bool decodeDib(const uint8_t* data, size_t size, size_t dib, size_t pixelsAt, bool icon,
               platform::PixelImage& out) {
  if (dib + 12 > size) return false;
  const uint32_t headerSize = readLe32(data + dib);
  if (headerSize < 12 || dib + headerSize > size) return false;
  int64_t width = 0, height = 0;
  uint32_t bpp = 0, compression = 0, colorsUsed = 0;
  bool core = headerSize == 12;
  if (core) {
    width = readLe16(data + dib + 4);
    height = static_cast<int16_t>(readLe16(data + dib + 6));
    bpp = readLe16(data + dib + 10);
  } else {
    if (headerSize < 40) return false;
    width = static_cast<int32_t>(readLe32(data + dib + 4));
    height = static_cast<int32_t>(readLe32(data + dib + 8));
    bpp = readLe16(data + dib + 14);
    compression = readLe32(data + dib + 16);
    colorsUsed = readLe32(data + dib + 32);
  }
  const bool topDown = height < 0;
  if (topDown) height = -height;
  if (icon) height /= 2;
  if (!plausibleSize(width, height)) return false;

  uint32_t masks[4] = {0x00FF0000, 0x0000FF00, 0x000000FF, 0};
  if (bpp == 16) masks[0] = 0x7C00, masks[1] = 0x03E0, masks[2] = 0x001F;
  size_t paletteAt = dib + headerSize;
  if (compression == 3 || compression == 6) {
    if (bpp != 16 && bpp != 32) return false;
    const size_t fields = compression == 6 ? 4 : 3;
    // The masks follow a 40-byte header, or sit inside a larger one.
    const size_t at = dib + 40;
    if (at + fields * 4 > size) return false;
    for (size_t i = 0; i < fields; ++i) masks[i] = readLe32(data + at + i * 4);
    if (headerSize == 40) paletteAt += fields * 4;
  }
  const bool paletted = bpp == 1 || bpp == 4 || bpp == 8;
  const bool rle = (compression == 1 && bpp == 8) || (compression == 2 && bpp == 4);
  if (!paletted && bpp != 16 && bpp != 24 && bpp != 32) return false;
  if (compression != 0 && compression != 3 && compression != 6 && !rle) return false;
  if (rle && topDown) return false;

  std::vector<uint32_t> palette;
  if (paletted) {
    const uint32_t count = colorsUsed ? std::min<uint32_t>(colorsUsed, 1u << bpp) : 1u << bpp;
    const size_t entry = core ? 3 : 4;
    if (paletteAt + count * entry > size) return false;
    for (uint32_t i = 0; i < count; ++i) {
      const uint8_t* p = data + paletteAt + i * entry;
      palette.push_back(0xFF000000u | static_cast<uint32_t>(p[2]) << 16 |
                        static_cast<uint32_t>(p[1]) << 8 | p[0]);
    }
    if (icon) pixelsAt = paletteAt + count * entry;
  } else if (icon) {
    pixelsAt = paletteAt;
  }
  if (pixelsAt > size) return false;

  const size_t w = static_cast<size_t>(width), h = static_cast<size_t>(height);
  out.width = static_cast<int32_t>(width);
  out.height = static_cast<int32_t>(height);
  out.pixels.assign(w * h, 0);
  const auto put = [&](size_t x, size_t fileRow, uint32_t pixel) {
    if (x >= w || fileRow >= h) return;
    const size_t y = topDown ? fileRow : h - 1 - fileRow;
    out.pixels[y * w + x] = pixel;
  };
  const auto fromPalette = [&](uint32_t index) {
    return index < palette.size() ? palette[index] : 0xFF000000u;
  };

  const size_t stride = ((w * bpp + 31) / 32) * 4;
  bool anyAlpha = false;
  if (rle) {
    size_t at = pixelsAt, x = 0, row = 0;
    while (at + 1 < size && row < h) {
      const uint32_t count = data[at], value = data[at + 1];
      at += 2;
      if (count > 0) {
        for (uint32_t i = 0; i < count; ++i) {
          const uint32_t index = bpp == 8 ? value : (i % 2 == 0 ? value >> 4 : value & 0x0F);
          put(x++, row, fromPalette(index));
        }
      } else if (value == 0) {
        x = 0, ++row;
      } else if (value == 1) {
        break;
      } else if (value == 2) {
        if (at + 1 >= size) return false;
        x += data[at], row += data[at + 1];
        at += 2;
      } else {
        const size_t bytes = bpp == 8 ? value : (value + 1) / 2;
        if (at + bytes > size) return false;
        for (uint32_t i = 0; i < value; ++i) {
          const uint32_t index =
              bpp == 8 ? data[at + i]
                       : (i % 2 == 0 ? data[at + i / 2] >> 4 : data[at + i / 2] & 0x0F);
          put(x++, row, fromPalette(index));
        }
        at += (bytes + 1) & ~size_t{1};
      }
    }
  } else {
    if (stride == 0 || pixelsAt + stride * h > size) return false;
    const Bitfield r(masks[0]), g(masks[1]), b(masks[2]), a(masks[3]);
    for (size_t row = 0; row < h; ++row) {
      const uint8_t* line = data + pixelsAt + row * stride;
      for (size_t x = 0; x < w; ++x) {
        uint32_t pixel = 0;
        if (paletted) {
          const size_t bit = x * bpp;
          const uint32_t index = (line[bit / 8] >> (8 - bpp - bit % 8)) & ((1u << bpp) - 1);
          pixel = fromPalette(index);
        } else if (bpp == 24) {
          pixel = 0xFF000000u | static_cast<uint32_t>(line[x * 3 + 2]) << 16 |
                  static_cast<uint32_t>(line[x * 3 + 1]) << 8 | line[x * 3];
        } else {
          const uint32_t v = bpp == 16 ? readLe16(line + x * 2) : readLe32(line + x * 4);
          if (bpp == 32 && compression == 0) {
            // The alpha byte counts only if some pixel has one: kept straight until known.
            anyAlpha |= (v >> 24) != 0;
            pixel = v;
          } else {
            pixel = premultiply(r.take(v), g.take(v), b.take(v), a.bits ? a.take(v) : 255);
          }
        }
        put(x, row, pixel);
      }
    }
    if (bpp == 32 && compression == 0) {
      // A 32-bit bitmap whose alpha bytes are all zero is opaque.
      for (auto& p : out.pixels) {
        p = anyAlpha ? premultiply((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF, p >> 24)
                     : (p | 0xFF000000u);
      }
    }
  }

  if (icon && !anyAlpha) {
    // The AND mask: a set bit is a transparent pixel.
    const size_t maskStride = ((w + 31) / 32) * 4;
    const size_t maskAt = pixelsAt + stride * h;
    if (maskAt + maskStride * h <= size) {
      for (size_t row = 0; row < h; ++row) {
        const uint8_t* line = data + maskAt + row * maskStride;
        for (size_t x = 0; x < w; ++x) {
          if ((line[x / 8] >> (7 - x % 8)) & 1) out.pixels[(h - 1 - row) * w + x] = 0;
        }
      }
    }
  }
  return true;
}

bool decodeBmp(const uint8_t* data, size_t size, platform::PixelImage& out) {
  if (size < 26) return false;
  return decodeDib(data, size, 14, readLe32(data + 10), false, out);
}

// ---- GIF -------------------------------------------------------------------------------

struct MemoryReader {
  const uint8_t* data;
  size_t size;
  size_t at;
};

int readGif(GifFileType* gif, GifByteType* into, int length) {
  auto* reader = static_cast<MemoryReader*>(gif->UserData);
  const size_t n = std::min(static_cast<size_t>(std::max(length, 0)), reader->size - reader->at);
  std::memcpy(into, reader->data + reader->at, n);
  reader->at += n;
  return static_cast<int>(n);
}

bool decodeGif(const uint8_t* data, size_t size, platform::PixelImage& out) {
  MemoryReader reader{data, size, 0};
  int error = 0;
  GifFileType* gif = DGifOpen(&reader, readGif, &error);
  if (!gif) return false;
  bool ok = false;
  if (plausibleSize(gif->SWidth, gif->SHeight) && DGifSlurp(gif) == GIF_OK && gif->ImageCount > 0) {
    const SavedImage& image = gif->SavedImages[0];
    const ColorMapObject* map =
        image.ImageDesc.ColorMap ? image.ImageDesc.ColorMap : gif->SColorMap;
    GraphicsControlBlock control;
    control.TransparentColor = NO_TRANSPARENT_COLOR;
    DGifSavedExtensionToGCB(gif, 0, &control);
    const int64_t left = image.ImageDesc.Left, top = image.ImageDesc.Top;
    const int64_t w = image.ImageDesc.Width, h = image.ImageDesc.Height;
    if (map && image.RasterBits && w >= 0 && h >= 0) {
      out.width = gif->SWidth;
      out.height = gif->SHeight;
      out.pixels.assign(static_cast<size_t>(out.width) * static_cast<size_t>(out.height), 0);
      for (int64_t y = 0; y < h; ++y) {
        for (int64_t x = 0; x < w; ++x) {
          const int index = image.RasterBits[y * w + x];
          const int64_t cx = left + x, cy = top + y;
          if (index == control.TransparentColor || index >= map->ColorCount || cx >= out.width ||
              cy >= out.height) {
            continue;
          }
          const GifColorType c = map->Colors[index];
          out.pixels[static_cast<size_t>(cy * out.width + cx)] =
              0xFF000000u | static_cast<uint32_t>(c.Red) << 16 |
              static_cast<uint32_t>(c.Green) << 8 | c.Blue;
        }
      }
      ok = true;
    }
  }
  DGifCloseFile(gif, &error);
  return ok;
}

// ---- ICO -------------------------------------------------------------------------------

bool decodeIco(const uint8_t* data, size_t size, platform::PixelImage& out) {
  const uint32_t count = readLe16(data + 4);
  if (count == 0 || 6 + static_cast<size_t>(count) * 16 > size) return false;
  size_t best = 0;
  int64_t bestArea = -1;
  uint32_t bestBits = 0;
  for (uint32_t i = 0; i < count; ++i) {
    const uint8_t* entry = data + 6 + i * 16;
    const int64_t w = entry[0] ? entry[0] : 256, h = entry[1] ? entry[1] : 256;
    const uint32_t bits = readLe16(entry + 6);
    if (w * h > bestArea || (w * h == bestArea && bits > bestBits)) {
      best = i, bestArea = w * h, bestBits = bits;
    }
  }
  const uint8_t* entry = data + 6 + best * 16;
  const size_t length = readLe32(entry + 8), offset = readLe32(entry + 12);
  if (offset >= size || length > size - offset || length < 8) return false;
  const uint8_t* image = data + offset;
  if (std::memcmp(image, "\x89PNG", 4) == 0) return decodePng(image, length, out);
  return decodeDib(image, length, 0, 0, true, out);
}

}  // namespace

std::vector<uint8_t> encodePng(const platform::PixelImage& image) {
  if (!validImage(image)) return {};
  std::vector<uint8_t> bgra(image.pixels.size() * 4);
  for (size_t i = 0; i < image.pixels.size(); ++i) straight(image.pixels[i], &bgra[i * 4], false);
  png_image png;
  std::memset(&png, 0, sizeof png);
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(image.width);
  png.height = static_cast<png_uint_32>(image.height);
  png.format = PNG_FORMAT_BGRA;
  png_alloc_size_t length = 0;
  if (!png_image_write_to_memory(&png, nullptr, &length, 0, bgra.data(), 0, nullptr)) return {};
  std::vector<uint8_t> out(length);
  if (!png_image_write_to_memory(&png, out.data(), &length, 0, bgra.data(), 0, nullptr)) return {};
  out.resize(length);
  return out;
}

std::vector<uint8_t> encodeJpeg(const platform::PixelImage& image, int quality) {
  if (!validImage(image)) return {};
  // JPEG has no alpha: a picture with transparent pixels is laid on white first. An opaque
  // one (every chart) is read as it stands.
  const bool opaque = std::all_of(image.pixels.begin(), image.pixels.end(),
                                  [](uint32_t p) { return (p >> 24) == 0xFF; });
  std::vector<uint8_t> rows;
  if (!opaque) {
    rows.resize(image.pixels.size() * 4);
    for (size_t i = 0; i < image.pixels.size(); ++i) straight(image.pixels[i], &rows[i * 4], true);
  }
  const auto* source = opaque ? reinterpret_cast<const uint8_t*>(image.pixels.data()) : rows.data();
  unsigned char* buffer = nullptr;
  unsigned long length = 0;
  const bool ok = encodeJpegInto(image, quality, const_cast<uint8_t*>(source), &buffer, &length);
  std::vector<uint8_t> out;
  if (ok && buffer) out.assign(buffer, buffer + length);
  std::free(buffer);
  return out;
}

std::vector<uint8_t> encodeBmp(const platform::PixelImage& image) {
  if (!validImage(image)) return {};
  const size_t stride = ((static_cast<size_t>(image.width) * 3 + 3) / 4) * 4;
  const size_t pixelBytes = stride * static_cast<size_t>(image.height);
  std::vector<uint8_t> out;
  out.reserve(54 + pixelBytes);
  out.push_back('B');
  out.push_back('M');
  writeLe32(out, static_cast<uint32_t>(54 + pixelBytes));
  writeLe32(out, 0);
  writeLe32(out, 54);
  writeLe32(out, 40);
  writeLe32(out, static_cast<uint32_t>(image.width));
  writeLe32(out, static_cast<uint32_t>(image.height));
  writeLe16(out, 1);
  writeLe16(out, 24);
  writeLe32(out, 0);
  writeLe32(out, static_cast<uint32_t>(pixelBytes));
  writeLe32(out, 2835);
  writeLe32(out, 2835);
  writeLe32(out, 0);
  writeLe32(out, 0);
  for (int32_t row = image.height - 1; row >= 0; --row) {
    const size_t start = out.size();
    for (int32_t x = 0; x < image.width; ++x) {
      uint8_t bgra[4];
      straight(image.pixels[static_cast<size_t>(row) * image.width + x], bgra, true);
      out.insert(out.end(), bgra, bgra + 3);
    }
    out.resize(start + stride, 0);
  }
  return out;
}

bool decodePicture(const uint8_t* data, size_t size, platform::PixelImage& out) {
  if (!data || size < 8) return false;
  platform::PixelImage image;
  bool ok = false;
  if (std::memcmp(data, "\x89PNG\r\n\x1a\n", 8) == 0) {
    ok = decodePng(data, size, image);
  } else if (data[0] == 0xFF && data[1] == 0xD8) {
    ok = decodeJpegInto(data, size, image);
  } else if (data[0] == 'B' && data[1] == 'M') {
    ok = decodeBmp(data, size, image);
  } else if (std::memcmp(data, "GIF87a", 6) == 0 || std::memcmp(data, "GIF89a", 6) == 0) {
    ok = decodeGif(data, size, image);
  } else if (data[0] == 0 && data[1] == 0 && (data[2] == 1 || data[2] == 2) && data[3] == 0) {
    ok = decodeIco(data, size, image);
  }
  if (!ok || !validImage(image)) return false;
  out = std::move(image);
  return true;
}

}  // namespace tessaline::chart
