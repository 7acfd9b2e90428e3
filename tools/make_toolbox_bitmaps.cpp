// Draws the toolbox bitmaps of the 23 controls, 16 by 15 pixels in the 16 colours of the
// classic palette, as 4-bit BMP files into a directory:
//   make-toolbox-bitmaps resources/toolbox
// A designer's toolbox shows them beside the class names; the silver of the lower left corner
// is the colour that a toolbox treats as transparent. Each picture is built from a few
// primitives (the sunken field of an entry control, the raised face of a button, a meter's
// arc, a plot area) so that the family resemblance of the controls shows.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr int kWidth = 16;
constexpr int kHeight = 15;

// The 16 colours of the classic palette, in their usual order.
enum Colour : uint8_t {
  Black,
  Maroon,
  Green,
  Olive,
  Navy,
  Purple,
  Teal,
  Silver,
  Grey,
  Red,
  Lime,
  Yellow,
  Blue,
  Fuchsia,
  Aqua,
  White
};

constexpr uint32_t kPalette[16] = {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080,
                                   0x008080, 0xC0C0C0, 0x808080, 0xFF0000, 0x00FF00, 0xFFFF00,
                                   0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};

class Canvas {
 public:
  Canvas() : pixels_(kWidth * kHeight, Silver) {}

  void dot(int x, int y, Colour c) {
    if (x >= 0 && x < kWidth && y >= 0 && y < kHeight) pixels_[y * kWidth + x] = c;
  }
  void fill(int x0, int y0, int x1, int y1, Colour c) {
    for (int y = y0; y <= y1; ++y)
      for (int x = x0; x <= x1; ++x) dot(x, y, c);
  }
  void line(int x0, int y0, int x1, int y1, Colour c) {
    const int dx = std::abs(x1 - x0), dy = -std::abs(y1 - y0);
    const int sx = x0 < x1 ? 1 : -1, sy = y0 < y1 ? 1 : -1;
    int error = dx + dy;
    for (;;) {
      dot(x0, y0, c);
      if (x0 == x1 && y0 == y1) return;
      const int e2 = 2 * error;
      if (e2 >= dy) error += dy, x0 += sx;
      if (e2 <= dx) error += dx, y0 += sy;
    }
  }
  // The field of an entry control: a two-pixel sunken edge around a white inside.
  void sunken(int x0, int y0, int x1, int y1) {
    fill(x0, y0, x1, y1, White);
    line(x0, y0, x1 - 1, y0, Grey);
    line(x0, y0, x0, y1 - 1, Grey);
    line(x0 + 1, y0 + 1, x1 - 2, y0 + 1, Black);
    line(x0 + 1, y0 + 1, x0 + 1, y1 - 2, Black);
    line(x0 + 1, y1 - 1, x1 - 1, y1 - 1, Silver);
    line(x1 - 1, y0 + 1, x1 - 1, y1 - 1, Silver);
  }
  // The face of a button: light above and left, shadow below and right.
  void raised(int x0, int y0, int x1, int y1) {
    fill(x0, y0, x1, y1, Silver);
    line(x0, y0, x1 - 1, y0, White);
    line(x0, y0, x0, y1 - 1, White);
    line(x0, y1, x1, y1, Black);
    line(x1, y0, x1, y1, Black);
    line(x0 + 1, y1 - 1, x1 - 1, y1 - 1, Grey);
    line(x1 - 1, y0 + 1, x1 - 1, y1 - 1, Grey);
  }
  // A small triangle pointing down, centred on x.
  void downArrow(int x, int y, Colour c) {
    line(x - 2, y, x + 2, y, c);
    line(x - 1, y + 1, x + 1, y + 1, c);
    dot(x, y + 2, c);
  }
  // The text of 3-by-5 glyphs from the left top corner, one blank column between glyphs.
  void text(int x, int y, const std::string& s, Colour c) {
    for (char ch : s) {
      const char* rows = glyph(ch);
      for (int r = 0; r < 5; ++r)
        for (int col = 0; col < 3; ++col)
          if (rows[r * 3 + col] == '#') dot(x + col, y + r, c);
      x += 4;
    }
  }
  // Half a circle over its centre, from the left to the right end.
  void arc(double cx, double cy, double radius, Colour c, double from = 0, double to = M_PI) {
    for (double a = from; a <= to + 1e-9; a += 0.02) {
      dot(static_cast<int>(std::lround(cx - radius * std::cos(a))),
          static_cast<int>(std::lround(cy - radius * std::sin(a))), c);
    }
  }
  void needle(double cx, double cy, double radius, double angle, Colour c) {
    line(static_cast<int>(cx), static_cast<int>(cy),
         static_cast<int>(std::lround(cx - radius * std::cos(angle))),
         static_cast<int>(std::lround(cy - radius * std::sin(angle))), c);
  }
  // The white plot area of a chart with its two axes.
  void plot() {
    fill(1, 1, 14, 13, White);
    line(2, 2, 2, 12, Black);
    line(2, 12, 14, 12, Black);
    for (int y = 4; y < 12; y += 3) dot(1, y, Black);
  }
  // A curve through the columns of the plot area, y given per column.
  void curve(int x0, int x1, const std::function<double(int)>& y, Colour c) {
    int lastY = static_cast<int>(std::lround(y(x0)));
    for (int x = x0 + 1; x <= x1; ++x) {
      const int nextY = static_cast<int>(std::lround(y(x)));
      line(x - 1, lastY, x, nextY, c);
      lastY = nextY;
    }
  }

  const std::vector<uint8_t>& pixels() const { return pixels_; }

 private:
  // Five rows of three columns; '#' is ink.
  static const char* glyph(char ch) {
    switch (ch) {
      case 'A':
        return ".#."
               "#.#"
               "###"
               "#.#"
               "#.#";
      case 'a':
        return "..."
               "##."
               "..#"
               "###"
               "###";
      case 'b':
        return "#.."
               "#.."
               "##."
               "#.#"
               "##.";
      case 'f':
        return ".##"
               "#.."
               "###"
               "#.."
               "#..";
      case 'x':
        return "..."
               "#.#"
               ".#."
               "#.#"
               "#.#";
      case '1':
        return ".#."
               "##."
               ".#."
               ".#."
               "###";
      case '2':
        return "##."
               "..#"
               ".#."
               "#.."
               "###";
      case '5':
        return "###"
               "#.."
               "##."
               "..#"
               "##.";
      case '.':
        return "..."
               "..."
               "..."
               "..."
               ".#.";
      default:
        return "..."
               "..."
               "..."
               "..."
               "...";
    }
  }

  std::vector<uint8_t> pixels_;
};

Canvas launchLabel() {
  Canvas c;
  c.text(1, 3, "Ab", Blue);
  c.line(1, 9, 8, 9, Blue);
  c.line(10, 4, 14, 8, Green);
  c.line(10, 12, 14, 8, Green);
  c.line(10, 5, 13, 8, Green);
  c.line(10, 11, 13, 8, Green);
  return c;
}

Canvas comboBox(int top) {
  Canvas c;
  c.sunken(0, top, 15, top + 8);
  c.fill(2, top + 2, 8, top + 6, Navy);
  c.line(3, top + 4, 7, top + 4, White);
  c.raised(9, top + 2, 13, top + 6);
  c.downArrow(11, top + 3, Black);
  return c;
}

Canvas comboBox2() {
  Canvas c = comboBox(6);
  c.text(0, 0, "A", Black);
  c.line(4, 4, 9, 4, Grey);
  return c;
}

Canvas multiLineTextBox() {
  Canvas c;
  c.sunken(0, 0, 15, 14);
  for (int y : {3, 6, 9}) c.line(3, y, y == 9 ? 7 : 10, y, Black);
  c.fill(12, 2, 13, 12, Silver);
  c.fill(12, 4, 13, 6, Grey);
  return c;
}

// A picture of a hill under the sun, as a picture button shows its image.
void picture(Canvas& c, int x0, int y0) {
  c.fill(x0, y0, x0 + 7, y0 + 6, Aqua);
  c.fill(x0 + 5, y0 + 1, x0 + 6, y0 + 2, Yellow);
  c.line(x0, y0 + 5, x0 + 3, y0 + 2, Green);
  c.line(x0 + 3, y0 + 2, x0 + 7, y0 + 6, Green);
  c.fill(x0, y0 + 6, x0 + 7, y0 + 6, Green);
  c.fill(x0 + 1, y0 + 5, x0 + 5, y0 + 5, Green);
  c.fill(x0 + 2, y0 + 4, x0 + 4, y0 + 4, Green);
}

Canvas pictureButton() {
  Canvas c;
  c.raised(0, 0, 15, 14);
  picture(c, 4, 3);
  return c;
}

Canvas pictureFnButton() {
  Canvas c;
  c.raised(0, 0, 15, 14);
  picture(c, 2, 3);
  c.text(11, 5, "f", Navy);
  return c;
}

Canvas waveForm() {
  Canvas c;
  c.plot();
  c.curve(
      3, 14, [](int x) { return 7 - 4 * std::sin((x - 3) * M_PI / 5.5); }, Blue);
  return c;
}

Canvas meter(bool zones) {
  Canvas c;
  c.fill(0, 1, 15, 12, White);
  if (zones) {
    c.arc(7.5, 10, 6.5, Green, 0, 1.6);
    c.arc(7.5, 10, 6.5, Yellow, 1.6, 2.4);
    c.arc(7.5, 10, 6.5, Red, 2.4, M_PI);
    c.arc(7.5, 10, 5.5, Green, 0, 1.6);
    c.arc(7.5, 10, 5.5, Yellow, 1.6, 2.4);
    c.arc(7.5, 10, 5.5, Red, 2.4, M_PI);
  } else {
    c.arc(7.5, 10, 6.5, Black);
    for (double a = 0; a <= M_PI + 1e-9; a += M_PI / 4) c.needle(7.5, 10, 6.5, a, Black);
    c.fill(2, 5, 13, 10, White);
    c.arc(7.5, 10, 6.5, Black);
  }
  c.needle(7.5, 10, 5, 2.1, Red);
  c.fill(7, 10, 8, 11, Black);
  return c;
}

Canvas dynamicGauge() {
  Canvas c = meter(false);
  c.fill(0, 12, 15, 14, Silver);
  c.line(1, 13, 3, 11, Navy);
  c.line(1, 13, 3, 15, Navy);
  c.line(14, 13, 12, 11, Navy);
  c.line(14, 13, 12, 15, Navy);
  return c;
}

Canvas dataTrend() {
  Canvas c;
  c.plot();
  const int ys[] = {9, 9, 8, 6, 7, 7, 5, 4, 5, 6, 4, 3};
  c.curve(
      3, 14, [&](int x) { return ys[x - 3]; }, Blue);
  return c;
}

Canvas dynamicTrend() {
  Canvas c;
  c.plot();
  const int ys[] = {10, 6, 9, 4, 8, 5, 10, 3, 7, 5, 9, 4};
  c.curve(
      3, 14, [&](int x) { return ys[x - 3]; }, Red);
  return c;
}

Canvas multiTrend() {
  Canvas c;
  c.plot();
  c.line(3, 3, 14, 3, Red);
  c.line(3, 10, 14, 10, Red);
  c.curve(
      3, 14, [](int x) { return 6.5 - 2.5 * std::sin((x - 3) * M_PI / 6); }, Blue);
  c.curve(
      3, 14, [](int x) { return 8.0 - 0.3 * (x - 3); }, Green);
  return c;
}

Canvas navigation() {
  Canvas c;
  c.fill(0, 0, 15, 14, White);
  c.fill(0, 0, 15, 2, Navy);
  c.line(2, 4, 2, 12, Grey);
  for (int y : {5, 8, 11}) {
    c.line(3, y, 5, y, Grey);
    c.fill(6, y - 1, 9, y + 1, Yellow);
    c.line(6, y - 1, 7, y - 1, Olive);
    c.line(10, y, 14, y, Black);
  }
  return c;
}

Canvas staticLabel() {
  Canvas c;
  c.text(2, 4, "A", Black);
  c.text(6, 4, "a", Black);
  c.line(11, 8, 14, 8, Black);
  return c;
}

Canvas dateTime() {
  Canvas c;
  c.sunken(0, 0, 15, 14);
  c.fill(2, 2, 10, 4, Red);
  for (int y = 6; y <= 12; y += 2)
    for (int x = 3; x <= 9; x += 2) c.dot(x, y, Black);
  c.dot(7, 10, Red);
  c.raised(11, 2, 13, 12);
  c.dot(12, 7, Black);
  c.line(11, 6, 13, 6, Black);
  return c;
}

Canvas functionButton() {
  Canvas c;
  c.raised(0, 2, 15, 12);
  c.text(4, 5, "fx", Navy);
  return c;
}

Canvas launchButton() {
  Canvas c;
  c.raised(0, 2, 15, 12);
  for (int i = 0; i < 4; ++i) c.line(6 + i, 4 + i, 6 + i, 10 - i, Green);
  c.line(3, 7, 6, 7, Green);
  return c;
}

Canvas listControl() {
  Canvas c;
  c.sunken(0, 0, 15, 14);
  c.line(3, 4, 9, 4, Black);
  c.fill(2, 6, 11, 8, Navy);
  c.line(3, 7, 9, 7, White);
  c.line(3, 10, 8, 10, Black);
  c.fill(12, 2, 13, 12, Silver);
  return c;
}

Canvas statusIcon() {
  Canvas c;
  for (int row = 0; row < 12; ++row) {
    const int half = row / 2;
    c.line(7 - half, 1 + row, 8 + half, 1 + row, Yellow);
  }
  c.line(1, 13, 14, 13, Black);
  c.line(1, 13, 7, 1, Black);
  c.line(14, 13, 8, 1, Black);
  c.line(7, 5, 7, 9, Black);
  c.line(8, 5, 8, 9, Black);
  c.fill(7, 11, 8, 11, Black);
  return c;
}

Canvas checkBox() {
  Canvas c;
  c.sunken(0, 3, 8, 11);
  c.line(2, 7, 3, 8, Black);
  c.line(3, 8, 6, 5, Black);
  c.line(2, 6, 3, 7, Black);
  c.line(3, 7, 6, 4, Black);
  c.line(10, 7, 15, 7, Black);
  return c;
}

Canvas textBox() {
  Canvas c;
  c.sunken(0, 2, 15, 12);
  c.text(3, 5, "ab", Black);
  c.line(12, 4, 12, 10, Black);
  return c;
}

Canvas dataLabel() {
  Canvas c;
  c.text(0, 5, "12.5", Navy);
  c.line(0, 11, 15, 11, Grey);
  return c;
}

struct Bitmap {
  int id;
  const char* control;
  Canvas (*draw)();
};

const Bitmap kBitmaps[] = {
    {30000, "DTMDataLaunchLabel", launchLabel},
    {30001, "DTMDataComboBox2", comboBox2},
    {30002, "DTMDataMultiLnTextBox", multiLineTextBox},
    {30003, "DTMDataPictureFnButton", pictureFnButton},
    {30004, "DTMWaveFormControl", waveForm},
    {30005, "DTMDynamicGuageControl", dynamicGauge},
    {30006, "DTMMultiTrendControl", multiTrend},
    {30007, "DTMDataAngularGuage", [] { return meter(true); }},
    {30008, "DtmNavigation", navigation},
    {30009, "DtmStaticLabel", staticLabel},
    {30010, "DTMDateTimeControl", dateTime},
    {30011, "DTMDynamicTrendControl", dynamicTrend},
    {30012, "DTMFunctionButton", functionButton},
    {30013, "DTMLaunchButton", launchButton},
    {30014, "DTMListControl", listControl},
    {30015, "DTMDataPictureButton", pictureButton},
    {30016, "DTMDataTrendControl", dataTrend},
    {30017, "DTMDataGuageControl", [] { return meter(false); }},
    {30018, "DTMStatusControl", statusIcon},
    {30019, "DTMDataCheckBox", checkBox},
    {30020, "DTMDataTextBox", textBox},
    {30021, "DTMDataLabel", dataLabel},
    {30022, "DTMDataComboBox", [] { return comboBox(3); }},
};

void put16(std::string& out, uint32_t v) {
  out += static_cast<char>(v & 0xFF);
  out += static_cast<char>((v >> 8) & 0xFF);
}
void put32(std::string& out, uint32_t v) {
  put16(out, v & 0xFFFF);
  put16(out, v >> 16);
}

// A 4-bit BMP: file header, info header, the 16 colours, rows from the bottom, each padded to
// four bytes.
std::string bmp(const Canvas& canvas) {
  constexpr uint32_t rowBytes = ((kWidth * 4 + 31) / 32) * 4;
  constexpr uint32_t offset = 14 + 40 + 16 * 4;
  std::string out;
  out += "BM";
  put32(out, offset + rowBytes * kHeight);
  put32(out, 0);
  put32(out, offset);
  put32(out, 40);
  put32(out, kWidth);
  put32(out, kHeight);
  put16(out, 1);
  put16(out, 4);
  put32(out, 0);
  put32(out, rowBytes * kHeight);
  put32(out, 3780);
  put32(out, 3780);
  put32(out, 16);
  put32(out, 0);
  for (uint32_t rgb : kPalette) {
    out += static_cast<char>(rgb & 0xFF);
    out += static_cast<char>((rgb >> 8) & 0xFF);
    out += static_cast<char>((rgb >> 16) & 0xFF);
    out += '\0';
  }
  for (int y = kHeight - 1; y >= 0; --y) {
    std::string row(rowBytes, '\0');
    for (int x = 0; x < kWidth; ++x) {
      const uint8_t index = canvas.pixels()[y * kWidth + x];
      row[x / 2] = static_cast<char>(row[x / 2] | (x % 2 ? index : index << 4));
    }
    out += row;
  }
  return out;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string directory = argc > 1 ? argv[1] : ".";
  for (const Bitmap& bitmap : kBitmaps) {
    const std::string file = directory + "/toolbox-" + std::to_string(bitmap.id) + ".bmp";
    std::ofstream out(file, std::ios::binary);
    out << bmp(bitmap.draw());
    if (!out.flush()) {
      std::fprintf(stderr, "cannot write %s\n", file.c_str());
      return 1;
    }
  }
  return 0;
}
