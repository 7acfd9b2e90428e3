#include "tessaline/support/resources.h"

#include <map>

#include "tessaline/support/embedded_resources.h"
#include "tessaline/values/vb_error.h"

namespace tessaline {

namespace {
VbError notFound(int32_t id) {
  return VbError(err::ResourceNotFound,
                 "Resource with identifier '" + std::to_string(id) + "' not found");
}
}  // namespace

std::span<const unsigned char> resourceBytes(std::string_view name) {
  for (const EmbeddedResource& resource : embeddedResources()) {
    if (resource.name == name) return {resource.data, resource.size};
  }
  return {};
}

std::string toolboxBitmapName(int32_t id) {
  return "toolbox/toolbox-" + std::to_string(id) + ".bmp";
}

std::string LoadResString(int32_t id) {
  switch (id) {
    case 101:
      return "Read Error";
    case 102:
      return "Value Changed";
    case 103:
      return "Write Error";
    case 104:
      return "InValide Value";
    case 105:
      return "DataNot Loaded";
    case 106:
      return "Dynamic Value";
    default:
      throw notFound(id);
  }
}

namespace {
// The pixels of a picture resource, through the platform's picture service (empty where no
// decoder is installed).
platform::PixelImage decoded(std::span<const unsigned char> bytes) {
  if (!platform::hasPictureDecoder()) return {};
  const Variant encoded(Ref<Object>(
      std::make_shared<platform::ByteArray>(std::vector<uint8_t>(bytes.begin(), bytes.end()))));
  const auto picture = platform::PictureFromBytes(encoded);
  return picture ? picture->image() : platform::PixelImage{};
}
}  // namespace

Ref<Object> LoadResPicture(int32_t id, ResourceType type) {
  thread_local std::map<std::pair<ResourceType, int32_t>, Ref<Object>> loaded;
  const auto key = std::pair{type, id};
  if (auto found = loaded.find(key); found != loaded.end()) return found->second;
  Ref<Object> picture;
  if (type == ResourceType::Bitmap) {
    const auto bytes = resourceBytes("buttons/button-" + std::to_string(id) + ".png");
    if (bytes.empty()) throw notFound(id);
    picture = Ref<Object>(std::make_shared<platform::Picture>(decoded(bytes)));
  } else {
    const std::string base = "icons/status-" + std::to_string(id);
    const std::string small = base + "-16.png";
    const std::string large = base + "-32.png";
    const auto bytes = resourceBytes(small);
    if (bytes.empty() || resourceBytes(large).empty()) throw notFound(id);
    picture = Ref<Object>(std::make_shared<IconResource>(id, small, large, decoded(bytes)));
  }
  loaded.emplace(key, picture);
  return picture;
}

}  // namespace tessaline
