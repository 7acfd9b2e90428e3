#include "tessaline/support/image_files.h"

#include "tessaline/values/vb_error.h"

namespace tessaline {

std::string imagesFolderPath(const std::string& baseFolder, const std::string& fileName) {
  // The literal's backslashes stand doubled, as the controls have always written them.
  return baseFolder + "\\\\images\\\\" + fileName;
}

bool staysInImagesFolder(const std::string& fileName) {
  if (fileName.find('\0') != std::string::npos) return false;
  size_t start = 0;
  while (start <= fileName.size()) {
    const size_t end = fileName.find_first_of("\\/", start);
    const size_t stop = end == std::string::npos ? fileName.size() : end;
    if (fileName.compare(start, stop - start, "..") == 0 && stop - start == 2) return false;
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return true;
}

std::string platformPath(const std::string& path) {
  std::string mapped;
  mapped.reserve(path.size());
  for (size_t i = 0; i < path.size(); ++i) {
    if (path[i] != '\\') {
      mapped += path[i];
    } else if (i == 0 || path[i - 1] != '\\') {
      mapped += '/';
    }
  }
  return mapped;
}

Ref<platform::Picture> LoadImagesPicture(const std::string& baseFolder,
                                         const std::string& fileName) {
  if (!staysInImagesFolder(fileName)) throw VbError(err::FileNotFound);
  return platform::LoadPicture(platformPath(imagesFolderPath(baseFolder, fileName)));
}

}  // namespace tessaline
