// Draws the icons of the status modes 101 to 106 at 16 and 32 pixels into a directory:
//   make-status-icons resources/icons
// Colour tells the state at a glance (red failed, amber changed, orange invalid, grey waiting,
// blue live); the symbol tells what happened (a cross, a pencil, an exclamation mark, dots,
// a wave).
#include <cairo.h>

#include <cmath>
#include <cstdio>
#include <string>

namespace {

struct Rgb {
  double r, g, b;
};

constexpr Rgb kRed{0.83, 0.18, 0.18};
constexpr Rgb kAmber{0.98, 0.75, 0.10};
constexpr Rgb kOrange{0.94, 0.42, 0.0};
constexpr Rgb kGrey{0.46, 0.46, 0.46};
constexpr Rgb kBlue{0.10, 0.46, 0.82};
constexpr Rgb kWhite{1, 1, 1};
constexpr Rgb kInk{0.20, 0.16, 0.12};

void set(cairo_t* cr, Rgb c) { cairo_set_source_rgb(cr, c.r, c.g, c.b); }

Rgb darker(Rgb c) { return {c.r * 0.7, c.g * 0.7, c.b * 0.7}; }

// A filled disc with a darker rim, in a 16-unit square.
void disc(cairo_t* cr, Rgb fill) {
  cairo_arc(cr, 8, 8, 7.2, 0, 2 * M_PI);
  set(cr, fill);
  cairo_fill_preserve(cr);
  set(cr, darker(fill));
  cairo_set_line_width(cr, 1.0);
  cairo_stroke(cr);
}

void cross(cairo_t* cr, Rgb color) {
  set(cr, color);
  cairo_set_line_width(cr, 2.2);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
  cairo_move_to(cr, 5.2, 5.2);
  cairo_line_to(cr, 10.8, 10.8);
  cairo_move_to(cr, 10.8, 5.2);
  cairo_line_to(cr, 5.2, 10.8);
  cairo_stroke(cr);
}

// A pencil from the upper right to a point at the lower left.
void pencil(cairo_t* cr, Rgb color) {
  set(cr, color);
  cairo_set_line_width(cr, 2.6);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
  cairo_move_to(cr, 11.6, 4.4);
  cairo_line_to(cr, 6.2, 9.8);
  cairo_stroke(cr);
  cairo_move_to(cr, 5.1, 8.7);
  cairo_line_to(cr, 7.3, 10.9);
  cairo_line_to(cr, 4.0, 12.0);
  cairo_close_path(cr);
  cairo_fill(cr);
}

void warning(cairo_t* cr) {
  cairo_move_to(cr, 8, 0.9);
  cairo_line_to(cr, 15.3, 14.6);
  cairo_line_to(cr, 0.7, 14.6);
  cairo_close_path(cr);
  set(cr, kOrange);
  cairo_fill_preserve(cr);
  set(cr, darker(kOrange));
  cairo_set_line_width(cr, 1.0);
  cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
  cairo_stroke(cr);
  set(cr, kWhite);
  cairo_set_line_width(cr, 2.0);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
  cairo_move_to(cr, 8, 5.6);
  cairo_line_to(cr, 8, 9.6);
  cairo_stroke(cr);
  cairo_arc(cr, 8, 12.2, 1.05, 0, 2 * M_PI);
  cairo_fill(cr);
}

void dots(cairo_t* cr) {
  set(cr, kWhite);
  for (double x : {4.6, 8.0, 11.4}) {
    cairo_arc(cr, x, 8, 1.25, 0, 2 * M_PI);
    cairo_fill(cr);
  }
}

void wave(cairo_t* cr) {
  set(cr, kWhite);
  cairo_set_line_width(cr, 1.8);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
  cairo_move_to(cr, 3.4, 8);
  for (double x = 3.4; x <= 12.6; x += 0.2) {
    cairo_line_to(cr, x, 8 - 2.8 * std::sin((x - 3.4) / 9.2 * 2 * M_PI));
  }
  cairo_stroke(cr);
}

void draw(cairo_t* cr, int mode) {
  switch (mode) {
    case 101:
      disc(cr, kRed), cross(cr, kWhite);
      break;
    case 102:
      disc(cr, kAmber), pencil(cr, kInk);
      break;
    case 103:
      disc(cr, kRed), pencil(cr, kWhite);
      break;
    case 104:
      warning(cr);
      break;
    case 105:
      disc(cr, kGrey), dots(cr);
      break;
    case 106:
      disc(cr, kBlue), wave(cr);
      break;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::string directory = argc > 1 ? argv[1] : ".";
  for (int mode = 101; mode <= 106; ++mode) {
    for (int size : {16, 32}) {
      cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size);
      cairo_t* cr = cairo_create(surface);
      cairo_scale(cr, size / 16.0, size / 16.0);
      draw(cr, mode);
      cairo_destroy(cr);
      const std::string file =
          directory + "/status-" + std::to_string(mode) + "-" + std::to_string(size) + ".png";
      if (cairo_surface_write_to_png(surface, file.c_str()) != CAIRO_STATUS_SUCCESS) {
        std::fprintf(stderr, "cannot write %s\n", file.c_str());
        return 1;
      }
      cairo_surface_destroy(surface);
    }
  }
  return 0;
}
