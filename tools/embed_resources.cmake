# Writes the library's resource files into a C++ source as byte arrays, so that the library
# carries them wherever it is installed or moved:
#   cmake -DROOT=<resources dir> -DOUTPUT=<file.cpp> -P embed_resources.cmake
file(GLOB_RECURSE files RELATIVE "${ROOT}" "${ROOT}/icons/*.png" "${ROOT}/buttons/*.png"
     "${ROOT}/toolbox/*.bmp")
list(SORT files)
set(body "// Generated from resources/ by tools/embed_resources.cmake; do not edit.\n")
string(APPEND body "#include \"tessaline/support/embedded_resources.h\"\n\nnamespace tessaline {\nnamespace {\n")
set(index 0)
set(table "")
foreach(name IN LISTS files)
  file(READ "${ROOT}/${name}" hex HEX)
  string(LENGTH "${hex}" length)
  math(EXPR size "${length} / 2")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
  string(APPEND body "const unsigned char r${index}[] = {${bytes}};\n")
  string(APPEND table "    {\"${name}\", r${index}, ${size}},\n")
  math(EXPR index "${index} + 1")
endforeach()
string(APPEND body "const EmbeddedResource kResources[] = {\n${table}};\n}  // namespace\n\n")
string(APPEND body "std::span<const EmbeddedResource> embeddedResources() { return kResources; }\n\n")
string(APPEND body "}  // namespace tessaline\n")
file(WRITE "${OUTPUT}.tmp" "${body}")
file(COPY_FILE "${OUTPUT}.tmp" "${OUTPUT}" ONLY_IF_DIFFERENT)
