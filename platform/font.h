#pragma once

#include <cstdint>
#include <string>

#include "tessaline/values/object.h"

namespace tessaline::platform {

// What a text measure needs of a font.
struct FontFace {
  std::string name = "MS Sans Serif";
  double size = 8.25;
  bool bold = false;
};

// The font object of a child control. Controls hand it over by reference: two children given
// the same object share it, and a change made through one of them reaches the other the next
// time it is set.
class StdFont : public Object {
 public:
  std::string Name = "MS Sans Serif";
  double Size = 8.25;
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  bool Strikethrough = false;
  int16_t Charset = 0;

  // 700 for a bold font, 400 otherwise.
  int16_t Weight() const { return Bold ? 700 : 400; }
  FontFace face() const { return {Name, Size, Bold}; }
  Ref<StdFont> clone() const { return Ref<StdFont>(std::make_shared<StdFont>(*this)); }
  bool sameAs(const StdFont& other) const {
    return Name == other.Name && Size == other.Size && Bold == other.Bold &&
           Italic == other.Italic && Underline == other.Underline &&
           Strikethrough == other.Strikethrough && Charset == other.Charset;
  }
};

}  // namespace tessaline::platform
