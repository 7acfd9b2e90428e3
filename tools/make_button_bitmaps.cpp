// Draws the pictures of the chart controls' pointer-mode buttons, 20 by 20 pixels, into a
// directory:
//   make-button-bitmaps resources/buttons
// 104 zoom in and 105 zoom out (a magnifier with a plus or a minus), 107 home (a house: the whole
// chart again), 108 a hand (dragging scrolls).
#include <cairo.h>

#include <cmath>
#include <cstdio>
#include <string>

namespace {

void ink(cairo_t* cr) { cairo_set_source_rgb(cr, 0.16, 0.20, 0.28); }

void magnifier(cairo_t* cr, bool plus) {
  cairo_arc(cr, 8, 8, 5.5, 0, 2 * M_PI);
  cairo_set_source_rgb(cr, 0.86, 0.93, 1.0);
  cairo_fill_preserve(cr);
  ink(cr);
  cairo_set_line_width(cr, 1.8);
  cairo_stroke(cr);
  cairo_set_line_width(cr, 3.2);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
  cairo_move_to(cr, 12.2, 12.2);
  cairo_line_to(cr, 17, 17);
  cairo_stroke(cr);
  cairo_set_line_width(cr, 1.8);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
  cairo_move_to(cr, 5, 8);
  cairo_line_to(cr, 11, 8);
  if (plus) {
    cairo_move_to(cr, 8, 5);
    cairo_line_to(cr, 8, 11);
  }
  cairo_stroke(cr);
}

void home(cairo_t* cr) {
  cairo_move_to(cr, 10, 2.5);
  cairo_line_to(cr, 18, 10);
  cairo_line_to(cr, 15.5, 10);
  cairo_line_to(cr, 15.5, 17.5);
  cairo_line_to(cr, 4.5, 17.5);
  cairo_line_to(cr, 4.5, 10);
  cairo_line_to(cr, 2, 10);
  cairo_close_path(cr);
  cairo_set_source_rgb(cr, 0.98, 0.86, 0.55);
  cairo_fill_preserve(cr);
  ink(cr);
  cairo_set_line_width(cr, 1.4);
  cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
  cairo_stroke(cr);
  cairo_rectangle(cr, 8.5, 12, 3, 5.5);
  cairo_set_source_rgb(cr, 0.55, 0.33, 0.16);
  cairo_fill(cr);
}

// An open hand: four fingers and a thumb over the palm, each outlined.
void rounded(cairo_t* cr, double x, double y, double w, double h) {
  const double r = w / 2;
  cairo_new_sub_path(cr);
  cairo_arc(cr, x + r, y + r, r, M_PI, 2 * M_PI);
  cairo_line_to(cr, x + w, y + h);
  cairo_line_to(cr, x, y + h);
  cairo_close_path(cr);
}

void hand(cairo_t* cr) {
  const double fingers[4][2] = {{4.2, 6}, {7.2, 3.5}, {10.2, 3}, {13.2, 5}};
  for (const auto& f : fingers) rounded(cr, f[0], f[1], 2.8, 10 - f[1]);
  cairo_move_to(cr, 16.2, 9);
  cairo_line_to(cr, 18.2, 7.5);
  cairo_line_to(cr, 18.6, 9.2);
  cairo_line_to(cr, 16.2, 13);
  cairo_close_path(cr);
  cairo_rectangle(cr, 4.2, 9.5, 12, 6.5);
  cairo_set_source_rgb(cr, 0.98, 0.84, 0.70);
  cairo_fill_preserve(cr);
  ink(cr);
  cairo_set_line_width(cr, 0.9);
  cairo_stroke(cr);
  cairo_set_source_rgb(cr, 0.98, 0.84, 0.70);
  cairo_rectangle(cr, 4.7, 9.2, 11, 1.4);
  cairo_fill(cr);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string directory = argc > 1 ? argv[1] : ".";
  for (int id : {104, 105, 107, 108}) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 20, 20);
    cairo_t* cr = cairo_create(surface);
    if (id == 104 || id == 105) magnifier(cr, id == 104);
    if (id == 107) home(cr);
    if (id == 108) hand(cr);
    cairo_destroy(cr);
    const std::string file = directory + "/button-" + std::to_string(id) + ".png";
    if (cairo_surface_write_to_png(surface, file.c_str()) != CAIRO_STATUS_SUCCESS) {
      std::fprintf(stderr, "cannot write %s\n", file.c_str());
      return 1;
    }
    cairo_surface_destroy(surface);
  }
  return 0;
}
