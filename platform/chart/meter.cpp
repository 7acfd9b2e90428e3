#include <algorithm>
#include <cmath>

#include "tessaline/platform/chart/engine.h"
#include "tessaline/values/vb_error.h"

namespace tessaline::chart {

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr uint32_t kScaleInk = 0x202020;
constexpr double kMajorTick = 10, kMinorTick = 6, kMicroTick = 3;

// The cairo angle (radians from three o'clock, clockwise) of a meter angle (degrees from
// twelve o'clock, clockwise).
double cairoAngle(double meterDegrees) { return (meterDegrees - 90) * kPi / 180; }

double finiteOr(const Variant& value, double fallback) {
  const double v = argNumber(value);
  return std::isfinite(v) && std::abs(v) < 1e7 ? v : fallback;
}

bool near(double a, double b, double span) { return std::abs(a - b) <= std::abs(span) * 1e-9; }

Ref<Object> handle() { return std::make_shared<Object>(); }
}  // namespace

double MeterScene::angleOf(double value) const {
  const double span = upper - lower;
  double t = span != 0 ? (value - lower) / span : (value > lower ? 1 : 0);
  if (!std::isfinite(t)) t = value > lower ? 1 : 0;
  t = std::clamp(t, -0.05, 1.05);
  return startAngle + t * (endAngle - startAngle);
}

std::vector<double> MeterScene::finestTicks() const {
  if (!hasScale || !isPlottable(lower) || !isPlottable(upper)) return {};
  const Scale scale{lower, upper, major, minor, lower};
  for (double spacing : {micro, minor, major}) {
    auto ticks = tickPositions(scale, spacing, 20000);
    if (!ticks.empty()) return ticks;
  }
  return lower == upper ? std::vector<double>{lower} : std::vector<double>{lower, upper};
}

platform::PixelImage MeterScene::render() const {
  Canvas canvas(width, height);
  cairo_t* cr = canvas.cr();
  // Cairo's fast antialiasing draws a dial's arcs and ticks at half the cost, and as smooth at
  // this size.
  cairo_set_antialias(cr, CAIRO_ANTIALIAS_FAST);
  const Rect whole{0, 0, static_cast<double>(canvas.width()), static_cast<double>(canvas.height())};

  cairo_rectangle(cr, 0, 0, whole.w, whole.h);
  canvas.fillPath(resolvePaint(background), whole);
  if (roundedFrame) {
    // The corners outside the rounded frame take the frame's colour.
    const double limit = std::min(whole.w, whole.h) / 2;
    const double r[4] = {std::clamp(corners[0], 0.0, limit), std::clamp(corners[1], 0.0, limit),
                         std::clamp(corners[2], 0.0, limit), std::clamp(corners[3], 0.0, limit)};
    const auto roundedPath = [&] {
      cairo_new_sub_path(cr);
      cairo_arc(cr, whole.w - r[1], r[1], r[1], -kPi / 2, 0);
      cairo_arc(cr, whole.w - r[2], whole.h - r[2], r[2], 0, kPi / 2);
      cairo_arc(cr, r[3], whole.h - r[3], r[3], kPi / 2, kPi);
      cairo_arc(cr, r[0], r[0], r[0], kPi, 3 * kPi / 2);
      cairo_close_path(cr);
    };
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_rectangle(cr, 0, 0, whole.w, whole.h);
    roundedPath();
    canvas.fillPath(resolvePaint(frameColor), whole);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_WINDING);
    cairo_save(cr);
    cairo_translate(cr, 0.5, 0.5);
    cairo_scale(cr, (whole.w - 1) / whole.w, (whole.h - 1) / whole.h);
    roundedPath();
    cairo_restore(cr);
    canvas.strokePath(resolvePaint(edge), 1);
  } else {
    cairo_rectangle(cr, 0.5, 0.5, whole.w - 1, whole.h - 1);
    canvas.strokePath(resolvePaint(edge), 1);
  }
  canvas.bevel(Rect{1, 1, whole.w - 2, whole.h - 2}, raised);

  const bool scaleShown = hasScale && isPlottable(lower) && isPlottable(upper);
  const double sweepLow = std::min(startAngle, endAngle),
               sweepHigh = std::max(startAngle, endAngle);
  const auto zoneAngle = [&](double v) { return std::clamp(angleOf(v), sweepLow, sweepHigh); };

  for (const auto& zone : zones) {
    if (!scaleShown || !isPlottable(zone.start) || !isPlottable(zone.end)) continue;
    double a0 = zoneAngle(zone.start), a1 = zoneAngle(zone.end);
    if (a0 > a1) std::swap(a0, a1);
    const double rOut = std::clamp(std::max(zone.startRadius, zone.endRadius), 0.0, 1e4);
    const double rIn = std::clamp(std::min(zone.startRadius, zone.endRadius), 0.0, 1e4);
    if (a1 <= a0 || rOut <= rIn) continue;
    cairo_new_path(cr);
    cairo_arc(cr, cx, cy, rOut, cairoAngle(a0), cairoAngle(a1));
    cairo_arc_negative(cr, cx, cy, rIn, cairoAngle(a1), cairoAngle(a0));
    cairo_close_path(cr);
    canvas.fillAndOutline(resolvePaint(zone.fill), whole, resolvePaint(zone.edge));
  }

  const Paint ink = resolvePaint(kScaleInk);
  if (scaleShown && radius > 0) {
    cairo_new_path(cr);
    cairo_arc(cr, cx, cy, radius, cairoAngle(sweepLow), cairoAngle(sweepHigh));
    canvas.strokePath(ink, 1);

    const Scale scale{lower, upper, major, minor, lower};
    const auto majors = tickPositions(scale, major);
    const auto minors = tickPositions(scale, minor);
    const auto micros = tickPositions(scale, micro, 2000);
    const double span = upper - lower;
    const auto isOneOf = [&](double v, const std::vector<double>& set) {
      return std::any_of(set.begin(), set.end(), [&](double m) { return near(v, m, span); });
    };
    // The ticks of one kind are one path, stroked once: a stroke costs more to start than to
    // draw a tick.
    const auto tick = [&](double v, double length) {
      const double a = cairoAngle(angleOf(v));
      cairo_move_to(cr, cx + radius * std::cos(a), cy + radius * std::sin(a));
      cairo_line_to(cr, cx + (radius - length) * std::cos(a), cy + (radius - length) * std::sin(a));
    };
    for (double v : micros) {
      if (!isOneOf(v, minors) && !isOneOf(v, majors)) tick(v, kMicroTick);
    }
    for (double v : minors) {
      if (!isOneOf(v, majors)) tick(v, kMinorTick);
    }
    canvas.strokePath(ink, 1);
    for (double v : majors) tick(v, kMajorTick);
    canvas.strokePath(ink, 1.5);

    // Labels at the major ticks, with the ones that addLabel set in their place; the two ends
    // first, so that a label that would overlap another gives way to them.
    std::vector<std::pair<double, std::string>> labels;
    for (double v : majors) {
      std::string text = formatLabel(labelFormat, v);
      labels.emplace_back(v, std::move(text));
    }
    for (const auto& extra : extraLabels) {
      auto found = std::find_if(labels.begin(), labels.end(),
                                [&](const auto& l) { return near(l.first, extra.first, span); });
      if (found != labels.end()) {
        found->second = extra.second;
      } else if (isPlottable(extra.first)) {
        labels.push_back(extra);
      }
    }
    if (labels.size() > 2) std::swap(labels[1], labels.back());
    std::vector<Rect> drawn;
    for (const auto& [position, text] : labels) {
      if (text.find_first_not_of(' ') == std::string::npos) continue;
      const Rect box = canvas.measureText(text, labelStyle);
      const double a = cairoAngle(angleOf(position));
      const double half = std::abs(std::cos(a)) * box.w / 2 + std::abs(std::sin(a)) * box.h / 2;
      // Inside the scale a label keeps clear of the major ticks whatever its offset.
      const double distance = labelInside ? radius - std::max(labelOffset, kMajorTick + 2) - half
                                          : radius + labelOffset + half;
      double x = cx + distance * std::cos(a), y = cy + distance * std::sin(a);
      constexpr double kMargin = 4;
      const double leftmost = box.w / 2 + kMargin;
      const double rightmost = std::max(leftmost, whole.w - box.w / 2 - kMargin);
      const bool crowded = !labelInside && (x < leftmost || x > rightmost);
      const bool nearlyLevel = std::abs(std::sin(a)) < 0.3;
      if (crowded && nearlyLevel) {
        // No room beside an end of the scale: the label goes under it, flush with its end.
        const double end = cx + radius * std::cos(a);
        x = std::cos(a) >= 0 ? end + 2 - box.w / 2 : end - 2 + box.w / 2;
        y = cy + radius * std::sin(a) + box.h / 2 + 2;
      }
      x = std::clamp(x, leftmost, rightmost);
      const double top = box.h / 2 + 1;
      y = std::clamp(y, top, std::max(top, whole.h - box.h / 2 - 1));
      if (crowded && !nearlyLevel) {
        // Pushed in from the edge, the label rises until it clears the scale again.
        const auto clearance = [&] {
          const double nx = std::clamp(cx, x - box.w / 2, x + box.w / 2);
          const double ny = std::clamp(cy, y - box.h / 2, y + box.h / 2);
          return std::hypot(nx - cx, ny - cy);
        };
        while (clearance() < radius + labelOffset && y > top) y -= 1;
      }
      const Rect where = canvas.drawText(x, y, kAlignCenter, text, labelStyle, false);
      if (std::any_of(drawn.begin(), drawn.end(),
                      [&](const Rect& r) { return r.intersects(where, 1); })) {
        continue;
      }
      canvas.drawText(x, y, kAlignCenter, text, labelStyle);
      drawn.push_back(where);
    }
  }

  for (const auto& pointer : pointers) {
    if (!isPlottable(pointer.value) || radius <= 0) continue;
    const double a = cairoAngle(angleOf(pointer.value));
    const double c = std::cos(a), s = std::sin(a);
    const double tip = radius - 2, tail = std::min(12.0, radius / 4), half = 3.5;
    cairo_new_path(cr);
    cairo_move_to(cr, cx + tip * c, cy + tip * s);
    cairo_line_to(cr, cx - half * s, cy + half * c);
    cairo_line_to(cr, cx - tail * c, cy - tail * s);
    cairo_line_to(cr, cx + half * s, cy - half * c);
    cairo_close_path(cr);
    canvas.fillAndOutline(resolvePaint(pointer.fill), whole, resolvePaint(pointer.edge));
    // The pivot cap over the needle's root.
    cairo_new_path(cr);
    cairo_arc(cr, cx, cy, 5, 0, 2 * kPi);
    canvas.fillAndOutline(resolvePaint(kMetalBase + 45), Rect{cx - 5, cy - 5, 10, 10},
                          resolvePaint(0x404040));
  }

  for (const auto& text : texts) {
    canvas.drawText(text.x, text.y, text.alignment, text.text, text.style);
  }
  return canvas.takeImage();
}

MeterChart::MeterChart(int32_t width, int32_t height, uint32_t background, uint32_t edge,
                       int32_t raised) {
  scene_.width = width;
  scene_.height = height;
  scene_.background = background;
  scene_.edge = edge;
  scene_.raised = raised;
  scene_.cx = width / 2.0;
  scene_.cy = height / 2.0;
  scene_.radius = std::max(0.0, std::min(width, height) / 2.0 - 10);
}

void MeterChart::setMeter(const Variant& cx, const Variant& cy, const Variant& radius,
                          const Variant& startAngle, const Variant& endAngle) {
  scene_.cx = finiteOr(cx, scene_.cx);
  scene_.cy = finiteOr(cy, scene_.cy);
  scene_.radius = std::max(0.0, finiteOr(radius, scene_.radius));
  scene_.startAngle = finiteOr(startAngle, scene_.startAngle);
  scene_.endAngle = finiteOr(endAngle, scene_.endAngle);
}

void MeterChart::setRoundedFrame(const Variant& extColor, const Variant& r1, const Variant& r2,
                                 const Variant& r3, const Variant& r4) {
  scene_.roundedFrame = true;
  scene_.frameColor = argColor(extColor);
  // A corner of -1 takes the first corner's radius.
  const double first = std::max(0.0, finiteOr(r1, 0));
  const Variant* rest[3] = {&r2, &r3, &r4};
  scene_.corners[0] = first;
  for (int i = 0; i < 3; ++i) {
    const double r = finiteOr(*rest[i], -1);
    scene_.corners[i + 1] = r < 0 ? first : r;
  }
}

Ref<Object> MeterChart::setLabelStyle(const Variant& font, const Variant& fontSize,
                                      const Variant& fontColor, const Variant& fontAngle) {
  scene_.labelStyle =
      TextStyle{argText(font), finiteOr(fontSize, 8), argColor(fontColor), finiteOr(fontAngle, 0)};
  return handle();
}

void MeterChart::setScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                          const Variant& minorTick, const Variant& microTick) {
  scene_.hasScale = true;
  scene_.lower = argNumber(lower);
  scene_.upper = argNumber(upper);
  scene_.major = argNumber(majorTick);
  scene_.minor = argNumber(minorTick);
  scene_.micro = argNumber(microTick);
}

void MeterChart::addZone(const Variant& startValue, const Variant& endValue,
                         const Variant& startRadius, const Variant& endRadius,
                         const Variant& fillColor, const Variant& edgeColor) {
  scene_.zones.push_back(MeterScene::Zone{argNumber(startValue), argNumber(endValue),
                                          finiteOr(startRadius, 0), finiteOr(endRadius, 0),
                                          argColor(fillColor), argColor(edgeColor)});
}

void MeterChart::setLabelFormat(const Variant& format) { scene_.labelFormat = argText(format); }

Ref<Object> MeterChart::addPointer(const Variant& value, const Variant& fillColor,
                                   const Variant& edgeColor) {
  scene_.pointers.push_back(
      MeterScene::Pointer{argNumber(value), argColor(fillColor), argColor(edgeColor)});
  return handle();
}

Ref<Object> MeterChart::addText(const Variant& x, const Variant& y, const Variant& text,
                                const Variant& font, const Variant& fontSize,
                                const Variant& fontColor, const Variant& alignment,
                                const Variant& angle, const Variant& vertical) {
  TextStyle style{argText(font), finiteOr(fontSize, 8), argColor(fontColor),
                  argFlag(vertical) ? 90 : finiteOr(angle, 0)};
  scene_.texts.push_back(MeterScene::Text{finiteOr(x, 0), finiteOr(y, 0), argText(text),
                                          std::move(style),
                                          static_cast<int32_t>(finiteOr(alignment, 7))});
  return handle();
}

void MeterChart::setLabelPos(const Variant& labelInside, const Variant& labelOffset) {
  scene_.labelInside = argFlag(labelInside);
  scene_.labelOffset = finiteOr(labelOffset, 0);
}

Variant MeterChart::getTicks() {
  VariantArray array;
  for (double tick : scene_.finestTicks()) array.items.emplace_back(tick);
  return Variant(std::move(array));
}

void MeterChart::addLabel(const Variant& position, const Variant& label) {
  scene_.extraLabels.emplace_back(argNumber(position), argText(label));
}

Variant MeterChart::makeChart2(const Variant& format) {
  return encodeChart(scene_.render(), format, false);
}

}  // namespace tessaline::chart
