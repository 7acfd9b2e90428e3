#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tessaline/values/object.h"
#include "tessaline/values/variant.h"

namespace tessaline::platform {

// Pixels as the chart engine and the toolkits share them: 32 bits per pixel, native-endian
// 0xAARRGGBB with the colour premultiplied by alpha, rows of `width` pixels without padding.
struct PixelImage {
  int32_t width = 0;
  int32_t height = 0;
  std::vector<uint32_t> pixels;
};

class ByteArray;

// A picture object: what an image control or a chart viewer shows. Immutable once made.
class Picture : public Object {
 public:
  explicit Picture(PixelImage image, std::vector<uint8_t> encoded = {})
      : image_(std::make_shared<const PixelImage>(std::move(image))),
        encoded_(std::move(encoded)) {}
  // The pixels of an encoded image that never left the process, shared with the bytes that
  // stand for them.
  Picture(std::shared_ptr<const PixelImage> image, Ref<ByteArray> source)
      : image_(std::move(image)), source_(std::move(source)) {}
  int32_t Width() const { return image_->width; }
  int32_t Height() const { return image_->height; }
  const PixelImage& image() const { return *image_; }
  // The bytes the picture was read from, so that a form can save it as it came; empty for a
  // picture drawn in memory.
  const std::vector<uint8_t>& encoded() const;

 private:
  std::shared_ptr<const PixelImage> image_;
  std::vector<uint8_t> encoded_;
  Ref<ByteArray> source_;
};

// An encoded image held as one object, so that a chart's bytes travel in a value without
// one element per byte. A chart's bytes may be held as the pixels they stand for and written
// only when someone asks for them: a picture that stays in the process is never encoded, and
// never decoded either.
class ByteArray : public Object {
 public:
  using Encoder = std::function<std::vector<uint8_t>(const PixelImage&)>;

  explicit ByteArray(std::vector<uint8_t> bytes) : bytes_(std::move(bytes)), written_(true) {}
  // `pixels` as the bytes will decode (an opaque picture for a format without alpha).
  ByteArray(PixelImage pixels, Encoder encode)
      : pixels_(std::make_shared<const PixelImage>(std::move(pixels))),
        encode_(std::move(encode)) {}
  // Written on the first call; empty when the writing fails.
  const std::vector<uint8_t>& bytes() const;
  // The pixels, where they are at hand without decoding; null otherwise.
  const std::shared_ptr<const PixelImage>& pixels() const { return pixels_; }

 private:
  mutable std::vector<uint8_t> bytes_;
  mutable bool written_ = false;
  std::shared_ptr<const PixelImage> pixels_;
  Encoder encode_;
};

// Reads the encoded bytes of an image (PNG, JPEG, BMP, GIF, ICO); false for bytes that are
// no picture it can read.
using PictureDecoder = std::function<bool(const uint8_t* data, size_t size, PixelImage& out)>;
void setPictureDecoder(PictureDecoder decoder);
bool hasPictureDecoder();

// The picture held in encoded bytes: a ByteArray object or an array of byte values. Any
// failure gives Nothing, with no log line and no error.
Ref<Picture> PictureFromBytes(const Variant& bytes);

// The picture of a file. 53 for a file that isn't there or can't be read, 481 for a file
// that is no picture.
Ref<Picture> LoadPicture(const std::string& path);

}  // namespace tessaline::platform
