#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "tessaline/platform/picture.h"
#include "tessaline/values/object.h"

// The library's own resources: the icons and texts of the status modes 101 to 106, and the
// toolbox bitmaps of the controls. The library carries them in itself, so that it finds them
// wherever it is installed or moved.
namespace tessaline {

// The text resource of that number, a localization key; 326 for a number without one.
std::string LoadResString(int32_t id);

// The kinds of picture resources; a number names one picture of each kind.
enum class ResourceType { Icon, Bitmap };

// The picture resource of that number and kind: the status icons (16 and 32 pixels) and the
// chart buttons' bitmaps (104 zoom in, 105 zoom out, 107 home, 108 hand); 326 for a number
// without one. The same number gives the same picture object for the life of the thread.
Ref<Object> LoadResPicture(int32_t id, ResourceType type = ResourceType::Icon);

// The bytes of a resource by its path below resources/ ("icons/status-101-16.png"); empty for
// a name the library doesn't carry.
std::span<const unsigned char> resourceBytes(std::string_view name);

// The toolbox bitmap of a control (16 by 15 pixels, 16 colours, a BMP), by its resource number.
std::string toolboxBitmapName(int32_t id);

// An icon resource: its number, the names of its 16- and 32-pixel pictures, and the 16-pixel
// picture read through the platform's picture service (empty where no decoder is installed).
class IconResource : public platform::Picture {
 public:
  IconResource(int32_t id, std::string small, std::string large, platform::PixelImage image)
      : Picture(std::move(image)), id_(id), small_(std::move(small)), large_(std::move(large)) {}
  int32_t id() const { return id_; }
  const std::string& smallName() const { return small_; }
  const std::string& largeName() const { return large_; }

 private:
  int32_t id_;
  std::string small_;
  std::string large_;
};

}  // namespace tessaline
