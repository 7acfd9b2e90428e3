#include "support/resources.h"

#include <map>

#include "support/embedded_resources.h"
#include "values/vb_error.h"

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

Ref<Object> LoadResPicture(int32_t id) {
  thread_local std::map<int32_t, Ref<Object>> loaded;
  if (auto found = loaded.find(id); found != loaded.end()) return found->second;
  const std::string base = "icons/status-" + std::to_string(id);
  const std::string small = base + "-16.png";
  const std::string large = base + "-32.png";
  const auto bytes = resourceBytes(small);
  if (bytes.empty() || resourceBytes(large).empty()) throw notFound(id);
  platform::PixelImage pixels;
  if (platform::hasPictureDecoder()) {
    const Variant encoded(Ref<Object>(
        std::make_shared<platform::ByteArray>(std::vector<uint8_t>(bytes.begin(), bytes.end()))));
    if (auto picture = platform::PictureFromBytes(encoded)) pixels = picture->image();
  }
  Ref<Object> icon(std::make_shared<IconResource>(id, small, large, std::move(pixels)));
  loaded.emplace(id, icon);
  return icon;
}

}  // namespace tessaline
