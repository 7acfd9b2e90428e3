#include "support/resources.h"

#include <filesystem>
#include <map>

#include "values/vb_error.h"

namespace tessaline {

namespace {
VbError notFound(int32_t id) {
  return VbError(err::ResourceNotFound,
                 "Resource with identifier '" + std::to_string(id) + "' not found");
}
}  // namespace

std::string resourceDirectory() { return TESSALINE_RESOURCE_DIR; }

std::string toolboxBitmapFile(int32_t id) {
  return resourceDirectory() + "/toolbox/toolbox-" + std::to_string(id) + ".bmp";
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
  const std::string base = resourceDirectory() + "/icons/status-" + std::to_string(id);
  const std::string small = base + "-16.png";
  const std::string large = base + "-32.png";
  if (!std::filesystem::exists(small) || !std::filesystem::exists(large)) throw notFound(id);
  platform::PixelImage pixels;
  if (platform::hasPictureDecoder()) pixels = platform::LoadPicture(small)->image();
  Ref<Object> icon(std::make_shared<IconResource>(id, small, large, std::move(pixels)));
  loaded.emplace(id, icon);
  return icon;
}

}  // namespace tessaline
