#pragma once

#include <string>

#include "tessaline/platform/picture.h"
#include "tessaline/values/object.h"

// The pictures that a definition names: files in the images folder below the host's base folder.
// A control builds the path as it always has: the base folder, the literal "\\images\\" with
// its backslashes doubled, and the file name. On this platform the path that is opened has one
// '/' in place of each run of backslashes.
namespace tessaline {

// The path as the controls build it, before the platform's mapping.
std::string imagesFolderPath(const std::string& baseFolder, const std::string& fileName);

// True when the file name stays inside the images folder: no part of it, split at '\' and '/',
// is "..". An absolute-looking name stays inside too, since it is only appended to the folder.
bool staysInImagesFolder(const std::string& fileName);

// The path that is opened for a path built as above: each run of backslashes becomes one '/'.
std::string platformPath(const std::string& path);

// The picture of a file in the images folder, loaded through the picture service. A file name
// that would leave the folder is never opened and fails as a missing file does (53); a file
// that isn't there fails with 53, one that is no picture with 481.
Ref<platform::Picture> LoadImagesPicture(const std::string& baseFolder,
                                         const std::string& fileName);

}  // namespace tessaline
