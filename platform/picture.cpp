#include "tessaline/platform/picture.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tessaline/values/vb_error.h"

namespace tessaline::platform {

namespace {
PictureDecoder& installed() {
  thread_local PictureDecoder decoder;
  return decoder;
}

Ref<Picture> decode(const uint8_t* data, size_t size) {
  const auto& decoder = installed();
  PixelImage image;
  if (!decoder || size == 0 || !decoder(data, size, image)) return nullptr;
  if (image.width <= 0 || image.height <= 0 ||
      image.pixels.size() != static_cast<size_t>(image.width) * static_cast<size_t>(image.height)) {
    return nullptr;
  }
  return std::make_shared<Picture>(std::move(image), std::vector<uint8_t>(data, data + size));
}
}  // namespace

const std::vector<uint8_t>& Picture::encoded() const {
  return source_ ? source_->bytes() : encoded_;
}

const std::vector<uint8_t>& ByteArray::bytes() const {
  if (!written_) {
    written_ = true;
    bytes_ = encode_(*pixels_);
  }
  return bytes_;
}

void setPictureDecoder(PictureDecoder decoder) { installed() = std::move(decoder); }

bool hasPictureDecoder() { return static_cast<bool>(installed()); }

Ref<Picture> PictureFromBytes(const Variant& bytes) {
  try {
    if (bytes.isObject()) {
      auto held = std::dynamic_pointer_cast<ByteArray>(bytes.toObject());
      if (!held) return nullptr;
      if (held->pixels()) return std::make_shared<Picture>(held->pixels(), Ref<ByteArray>(held));
      return decode(held->bytes().data(), held->bytes().size());
    }
    if (!bytes.isArray()) return nullptr;
    const auto& items = bytes.toArray().items;
    std::vector<uint8_t> copy;
    copy.reserve(items.size());
    for (const auto& item : items) copy.push_back(item.toByte());
    return decode(copy.data(), copy.size());
  } catch (const VbError&) {
    return nullptr;
  }
}

Ref<Picture> LoadPicture(const std::string& path) {
  std::error_code failure;
  if (!std::filesystem::is_regular_file(path, failure)) throw VbError(err::FileNotFound);
  std::ifstream file(path, std::ios::binary);
  if (!file) throw VbError(err::FileNotFound);
  std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(file)),
                             std::istreambuf_iterator<char>());
  if (file.bad()) throw VbError(err::FileNotFound);
  auto picture = decode(bytes.data(), bytes.size());
  if (!picture) throw VbError(err::InvalidPicture);
  return picture;
}

}  // namespace tessaline::platform
