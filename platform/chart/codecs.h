#pragma once

#include <cstdint>
#include <vector>

#include "tessaline/platform/picture.h"

// Encoders and decoders of the picture formats that charts and picture buttons use.
namespace tessaline::chart {

// The image formats of makeChart2, numbered as the charts pass them.
enum class ImageFormat : int32_t { Png = 0, Gif = 1, Jpeg = 2, Bmp = 4 };

// Encoded bytes of an image; empty when it can't be encoded. Transparent pixels of JPEG and
// BMP, which carry no alpha, are laid on white.
std::vector<uint8_t> encodePng(const platform::PixelImage& image);
std::vector<uint8_t> encodeJpeg(const platform::PixelImage& image, int quality = 90);
std::vector<uint8_t> encodeBmp(const platform::PixelImage& image);

// Reads PNG, JPEG, BMP (1, 4, 8, 24, 32 bits, uncompressed or RLE), GIF (first frame) and
// ICO (the largest image, BMP or PNG inside). False for anything else, truncated or
// malformed data, or an image above 16384 pixels on a side.
bool decodePicture(const uint8_t* data, size_t size, platform::PixelImage& out);

// The picture laid on white, as the formats without alpha (JPEG, BMP) carry it; an opaque one
// as it stands.
platform::PixelImage layOnWhite(platform::PixelImage image);

}  // namespace tessaline::chart
