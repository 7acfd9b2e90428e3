#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace tessaline {

// A file of resources/ that the library carries in itself, by its path below resources/
// ("icons/status-101-16.png").
struct EmbeddedResource {
  std::string_view name;
  const unsigned char* data;
  size_t size;
};

std::span<const EmbeddedResource> embeddedResources();

}  // namespace tessaline
