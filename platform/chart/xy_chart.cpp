#include <algorithm>
#include <cmath>
#include <limits>

#include "tessaline/platform/chart/engine.h"
#include "tessaline/values/vb_error.h"

namespace tessaline::chart {

namespace {
constexpr uint32_t kAxisInk = 0x000000;
// Cairo keeps coordinates in 24.8 fixed point: points far off the chart are pulled in first.
constexpr double kFarthest = 1e6;

double finiteOr(const Variant& value, double fallback) {
  const double v = argNumber(value);
  return std::isfinite(v) && std::abs(v) < 1e7 ? v : fallback;
}

Ref<Object> handle() { return std::make_shared<Object>(); }

// The colour of a line: a text that is no number, such as the empty colour of a line that its
// definition left out, draws in the palette's line colour instead of failing the chart.
uint32_t lineColor(const Variant& color) {
  if (color.isString()) {
    try {
      return argColor(color);
    } catch (const VbError&) {
      return kPaletteBase + 1;
    }
  }
  return argColor(color);
}

// Maps a value of a settled scale to a pixel along [from, to].
struct Mapping {
  double lower, upper, from, to;
  double operator()(double v) const {
    const double span = upper - lower;
    const double p = span != 0 ? from + (v - lower) / span * (to - from) : (from + to) / 2;
    return std::clamp(p, -kFarthest, kFarthest);
  }
};

std::string defaultFormat(const AxisState& axis) {
  if (!axis.labelFormat.empty()) return axis.labelFormat;
  if (axis.kind == AxisState::Kind::Date) {
    return std::abs(axis.settled.upper - axis.settled.lower) < 2 * 86400 ? "{value|hh:nn:ss}"
                                                                         : "{value|mmm dd}";
  }
  // Numbers as fine as the ticks go, so that a scale with an odd step (a tenth of a device
  // value) reads "5.8", "6.4" and not fifteen digits.
  const double step = std::abs(axis.settled.major);
  if (step > 0 && std::isfinite(step)) {
    const double decimals = std::clamp(std::ceil(-std::log10(step) - 1e-9), 0.0, 10.0);
    return "{value|" + std::to_string(static_cast<int>(decimals)) + "}";
  }
  return "{value}";
}

void settle(AxisState& axis, double dataMin, double dataMax, double pixels, bool horizontal) {
  AutoScaleRequest request;
  request.dataMin = dataMin;
  request.dataMax = dataMax;
  request.pixels = std::max(1.0, pixels);
  request.majorSpacing = axis.majorSpacing > 0 ? axis.majorSpacing : (horizontal ? 50 : 30);
  request.minorSpacing = axis.minorSpacing > 0 ? axis.minorSpacing : 10;
  request.roundMin = axis.roundMin;
  request.roundMax = axis.roundMax;
  const bool fixed = axis.kind != AxisState::Kind::Auto && isPlottable(axis.lower) &&
                     isPlottable(axis.upper) && axis.lower != axis.upper;
  if (!fixed) {
    axis.settled = autoScale(request);
    return;
  }
  const double span = std::abs(axis.upper - axis.lower);
  const double major = std::abs(axis.major);
  if (major > 0 && std::isfinite(major) && span / major <= 1000) {
    const double minor = std::abs(axis.minor);
    axis.settled = Scale{axis.lower, axis.upper, major,
                         minor > 0 && std::isfinite(minor) && span / minor <= 5000 ? minor : 0,
                         std::min(axis.lower, axis.upper)};
    return;
  }
  if (axis.kind == AxisState::Kind::Date) {
    const double intervals = std::max(1.0, std::floor(request.pixels / request.majorSpacing));
    axis.settled = Scale{axis.lower, axis.upper, niceTimeStep(span / intervals), 0, 0};
    return;
  }
  request.fixedEnds = true;
  request.fixedLower = axis.lower;
  request.fixedUpper = axis.upper;
  axis.settled = autoScale(request);
}

// The points of one line in pixels, with a gap wherever x or y is no value. Consecutive points
// that fall into the same pixel column are reduced to the first, the lowest, the highest and the
// last of them, in the order they came: the same pixels are inked, and a line of many thousand
// points costs no more than its width in columns.
class ColumnReducer {
 public:
  explicit ColumnReducer(std::vector<LinePoint>& out) : out_(out) { out_.clear(); }
  ~ColumnReducer() { flush(); }

  void add(const LinePoint& point) {
    const double column = std::floor(point.x);
    if (count_ == 0 || column != column_) {
      flush();
      column_ = column;
      first_ = lo_ = hi_ = last_ = Indexed{point, 0};
      count_ = 1;
      return;
    }
    const Indexed here{point, count_++};
    if (point.y < lo_.point.y) lo_ = here;
    if (point.y > hi_.point.y) hi_ = here;
    last_ = here;
  }
  void gap() {
    flush();
    if (!out_.empty() && !out_.back().gap) out_.push_back(LinePoint{0, 0, true});
  }

 private:
  struct Indexed {
    LinePoint point;
    size_t index;
  };
  void flush() {
    if (count_ == 0) return;
    const Indexed* middle[] = {&lo_, &hi_};
    if (hi_.index < lo_.index) std::swap(middle[0], middle[1]);
    out_.push_back(first_.point);
    size_t at = first_.index;
    for (const Indexed* m : middle) {
      if (m->index > at && m->index < last_.index) {
        out_.push_back(m->point);
        at = m->index;
      }
    }
    if (last_.index > first_.index) out_.push_back(last_.point);
    count_ = 0;
  }

  std::vector<LinePoint>& out_;
  double column_ = 0;
  size_t count_ = 0;
  Indexed first_{}, lo_{}, hi_{}, last_{};
};

template <class XOf>
void linePoints(size_t n, XOf xOf, const std::vector<double>& ys, const Mapping& mx,
                const Mapping& my, std::vector<LinePoint>& out) {
  ColumnReducer reducer(out);
  for (size_t i = 0; i < n; ++i) {
    const double x = xOf(i), y = ys[i];
    if (isPlottable(x) && isPlottable(y)) {
      reducer.add(LinePoint{mx(x), my(y), false});
    } else {
      reducer.gap();
    }
  }
}

void glass(cairo_t* cr, const Rect& box) {
  cairo_pattern_t* shine = cairo_pattern_create_linear(0, box.y, 0, box.y + box.h);
  cairo_pattern_add_color_stop_rgba(shine, 0, 1, 1, 1, 0.75);
  cairo_pattern_add_color_stop_rgba(shine, 0.5, 1, 1, 1, 0.15);
  cairo_pattern_add_color_stop_rgba(shine, 0.5, 0, 0, 0, 0.0);
  cairo_pattern_add_color_stop_rgba(shine, 1, 0, 0, 0, 0.12);
  cairo_rectangle(cr, box.x, box.y, box.w, box.h);
  cairo_set_source(cr, shine);
  cairo_fill(cr);
  cairo_pattern_destroy(shine);
}

void drawBox(Canvas& canvas, const Rect& box, const BoxState& state) {
  cairo_rectangle(canvas.cr(), box.x, box.y, box.w, box.h);
  canvas.fillPath(resolvePaint(state.background), box);
  if (state.effect != 0 && resolvePaint(state.background).visible()) glass(canvas.cr(), box);
  cairo_rectangle(canvas.cr(), box.x + 0.5, box.y + 0.5, box.w - 1, box.h - 1);
  canvas.strokePath(resolvePaint(state.edge), 1);
}
}  // namespace

Rect XYScene::plotRect() const {
  Rect r = hasPlotArea ? plot : Rect{50, 30, width - 80.0, height - 70.0};
  if (!std::isfinite(r.x) || std::abs(r.x) > 1e6) r.x = 0;
  if (!std::isfinite(r.y) || std::abs(r.y) > 1e6) r.y = 0;
  if (!(r.w >= 1) || r.w > 1e6) r.w = 1;
  if (!(r.h >= 1) || r.h > 1e6) r.h = 1;
  return r;
}

void XYScene::layout() {
  double xMin = 1, xMax = -1, yMin = 1, yMax = -1;
  const auto widen = [](double v, double& lo, double& hi) {
    if (!isPlottable(v)) return;
    if (lo > hi) {
      lo = hi = v;
    } else {
      lo = std::min(lo, v);
      hi = std::max(hi, v);
    }
  };
  for (const auto& layer : layers) {
    for (const auto& set : layer->sets) {
      const size_t n =
          layer->hasX ? std::min(set.values.size(), layer->xs.size()) : set.values.size();
      for (size_t i = 0; i < n; ++i) {
        const double x = layer->hasX ? layer->xs[i] : static_cast<double>(i);
        if (!isPlottable(x) || !isPlottable(set.values[i])) continue;
        widen(x, xMin, xMax);
        widen(set.values[i], yMin, yMax);
      }
    }
  }
  const Rect p = plotRect();
  settle(xAxis, xMin, xMax, p.w, true);
  settle(yAxis, yMin, yMax, p.h, false);
}

platform::PixelImage XYScene::render() {
  layout();
  Canvas canvas(width, height);
  cairo_t* cr = canvas.cr();
  const Rect whole{0, 0, static_cast<double>(canvas.width()), static_cast<double>(canvas.height())};
  cairo_rectangle(cr, 0, 0, whole.w, whole.h);
  canvas.fillPath(resolvePaint(background), whole);
  cairo_rectangle(cr, 0.5, 0.5, whole.w - 1, whole.h - 1);
  canvas.strokePath(resolvePaint(edge), 1);
  canvas.bevel(Rect{0, 0, whole.w, whole.h}, raised);

  if (title) {
    const Rect text = canvas.measureText(title->text, title->style);
    const Rect box{1, 1, whole.w - 2, text.h + 6};
    drawBox(canvas, box, *title);
    canvas.drawText(whole.w / 2, box.y + box.h / 2, kAlignCenter, title->text, title->style);
  }

  const Rect p = plotRect();
  const Mapping mx{xAxis.settled.lower, xAxis.settled.upper, p.x, p.x + p.w};
  const Mapping my{yAxis.settled.lower, yAxis.settled.upper, p.y + p.h, p.y};
  const auto xMajors = tickPositions(xAxis.settled, xAxis.settled.major, 1000);
  const auto yMajors = tickPositions(yAxis.settled, yAxis.settled.major, 1000);
  const auto xMinors = tickPositions(xAxis.settled, xAxis.settled.minor, 5000);
  const auto yMinors = tickPositions(yAxis.settled, yAxis.settled.minor, 5000);

  // The plot area: background, alternate bands between major ticks, grid, edge.
  cairo_rectangle(cr, p.x, p.y, p.w, p.h);
  canvas.fillPath(resolvePaint(plotBackground), p);
  const Paint alt = resolvePaint(plotAltBackground);
  if (alt.visible()) {
    for (size_t i = 1; i < yMajors.size(); i += 2) {
      const double top = my(std::max(yMajors[i], yMajors[i - 1]));
      const double bottom = my(std::min(yMajors[i], yMajors[i - 1]));
      cairo_rectangle(cr, p.x, top, p.w, bottom - top);
    }
    canvas.fillPath(alt, p);
  }
  const Paint hGridPaint = resolvePaint(hGrid), vGridPaint = resolvePaint(vGrid);
  for (double v : yMajors) {
    const double y = std::round(my(v)) + 0.5;
    cairo_move_to(cr, p.x, y);
    cairo_line_to(cr, p.x + p.w, y);
  }
  canvas.strokePath(hGridPaint, 1);
  for (double v : xMajors) {
    const double x = std::round(mx(v)) + 0.5;
    cairo_move_to(cr, x, p.y);
    cairo_line_to(cr, x, p.y + p.h);
  }
  canvas.strokePath(vGridPaint, 1);
  cairo_rectangle(cr, p.x + 0.5, p.y + 0.5, p.w - 1, p.h - 1);
  canvas.strokePath(resolvePaint(plotEdge), 1);

  // The lines, cut at the plot area; a point that is no value leaves a gap.
  cairo_save(cr);
  // A clip on whole pixels keeps cairo on its fast path.
  const double clipLeft = std::floor(p.x), clipTop = std::floor(p.y);
  cairo_rectangle(cr, clipLeft, clipTop, std::ceil(p.x + p.w) - clipLeft,
                  std::ceil(p.y + p.h) - clipTop);
  cairo_clip(cr);
  cairo_set_line_join(cr, CAIRO_LINE_JOIN_BEVEL);
  cairo_set_antialias(cr, CAIRO_ANTIALIAS_FAST);
  const Rect clip{clipLeft, clipTop, std::ceil(p.x + p.w) - clipLeft,
                  std::ceil(p.y + p.h) - clipTop};
  std::vector<LinePoint> points;
  for (const auto& layer : layers) {
    const double width = std::clamp(layer->lineWidth, 0.0, 50.0);
    for (const auto& set : layer->sets) {
      const size_t n =
          layer->hasX ? std::min(set.values.size(), layer->xs.size()) : set.values.size();
      linePoints(
          n, [&](size_t i) { return layer->hasX ? layer->xs[i] : static_cast<double>(i); },
          set.values, mx, my, points);
      const Paint paint = resolvePaint(set.color);
      if (width == 1 && paint.kind == Paint::Kind::Solid) {
        canvas.drawThinLines(points, clip, paint);
        continue;
      }
      bool open = false;
      for (const LinePoint& point : points) {
        if (point.gap) {
          open = false;
        } else if (open) {
          cairo_line_to(cr, point.x, point.y);
        } else {
          cairo_move_to(cr, point.x, point.y);
          open = true;
        }
      }
      canvas.strokePath(paint, width);
    }
  }
  cairo_restore(cr);

  // Axes, ticks and labels; a label that would overlap the one before is left out.
  const Paint axisPaint = resolvePaint(kAxisInk);
  const double bottom = p.y + p.h, left = p.x;
  if (xAxis.width > 0) {
    cairo_move_to(cr, p.x, bottom);
    cairo_line_to(cr, p.x + p.w, bottom);
    canvas.strokePath(axisPaint, xAxis.width);
  }
  if (yAxis.width > 0) {
    cairo_move_to(cr, left, p.y);
    cairo_line_to(cr, left, bottom);
    canvas.strokePath(axisPaint, yAxis.width);
  }
  for (double v : xMinors) {
    const double x = std::round(mx(v)) + 0.5;
    cairo_move_to(cr, x, bottom);
    cairo_line_to(cr, x, bottom + 2);
  }
  for (double v : xMajors) {
    const double x = std::round(mx(v)) + 0.5;
    cairo_move_to(cr, x, bottom);
    cairo_line_to(cr, x, bottom + 4);
  }
  for (double v : yMinors) {
    const double y = std::round(my(v)) + 0.5;
    cairo_move_to(cr, left, y);
    cairo_line_to(cr, left - 2, y);
  }
  for (double v : yMajors) {
    const double y = std::round(my(v)) + 0.5;
    cairo_move_to(cr, left, y);
    cairo_line_to(cr, left - 4, y);
  }
  canvas.strokePath(axisPaint, 1);

  const std::string xFormat = defaultFormat(xAxis), yFormat = defaultFormat(yAxis);
  const bool slanted = std::abs(xAxis.labelStyle.angle) > 0.5;
  double labelsBottom = bottom + 6;
  Rect last{-1e9, -1e9, 0, 0};
  for (double v : xMajors) {
    const std::string text = formatLabel(xFormat, v);
    const int32_t align = slanted ? (xAxis.labelStyle.angle > 0 ? 9 : 7) : 8;
    const Rect where = canvas.drawText(mx(v), bottom + 6, align, text, xAxis.labelStyle, false);
    if (where.intersects(last, 2)) continue;
    canvas.drawText(mx(v), bottom + 6, align, text, xAxis.labelStyle);
    last = where;
    labelsBottom = std::max(labelsBottom, where.y + where.h);
  }
  double labelsLeft = left - 6;
  last = Rect{-1e9, -1e9, 0, 0};
  for (auto it = yMajors.rbegin(); it != yMajors.rend(); ++it) {
    const std::string text = formatLabel(yFormat, *it);
    const Rect where = canvas.drawText(left - 6, my(*it), 6, text, yAxis.labelStyle, false);
    if (where.intersects(last, 1)) continue;
    canvas.drawText(left - 6, my(*it), 6, text, yAxis.labelStyle);
    last = where;
    labelsLeft = std::min(labelsLeft, where.x);
  }
  if (!xAxis.title.empty()) {
    canvas.drawText(p.x + p.w / 2, labelsBottom + 2, 8, xAxis.title, xAxis.titleStyle);
  }
  if (!yAxis.title.empty()) {
    TextStyle style = yAxis.titleStyle;
    style.angle = 90;
    const Rect box = canvas.measureText(yAxis.title, style);
    canvas.drawText(std::max(box.h / 2 + 1, labelsLeft - 4 - box.h / 2), p.y + p.h / 2,
                    kAlignCenter, yAxis.title, style);
  }

  if (legend) {
    struct Entry {
      const DataSet* set;
      double lineWidth;
    };
    std::vector<Entry> entries;
    for (const auto& layer : layers) {
      for (const auto& set : layer->sets) {
        if (!set.name.empty()) entries.push_back(Entry{&set, layer->lineWidth});
      }
    }
    const int32_t columns = std::max(1, legendColumns);
    constexpr double kKey = 16, kGap = 4, kPad = 4;
    double widest = 0, rowHeight = 0;
    for (const auto& entry : entries) {
      const Rect text = canvas.measureText(entry.set->name, legend->style);
      widest = std::max(widest, kKey + kGap + text.w + 2 * kGap);
      rowHeight = std::max(rowHeight, text.h);
    }
    const size_t rows =
        (entries.size() + static_cast<size_t>(columns) - 1) / static_cast<size_t>(columns);
    const double columnWidth = legend->width > 0 ? (legend->width - 2 * kPad) / columns : widest;
    const Rect box{legendX, legendY,
                   legend->width > 0 ? legend->width : columnWidth * columns + 2 * kPad,
                   rowHeight * static_cast<double>(rows) + 2 * kPad};
    if (!entries.empty()) drawBox(canvas, box, *legend);
    for (size_t i = 0; i < entries.size(); ++i) {
      const double x = box.x + kPad + columnWidth * static_cast<double>(i % columns);
      const double y = box.y + kPad + rowHeight * static_cast<double>(i / columns) + rowHeight / 2;
      cairo_move_to(cr, x, y);
      cairo_line_to(cr, x + kKey, y);
      canvas.strokePath(resolvePaint(entries[i].set->color),
                        std::clamp(entries[i].lineWidth, 1.0, 5.0));
      canvas.drawText(x + kKey + kGap, y, 4, entries[i].set->name, legend->style);
    }
  }
  return canvas.takeImage();
}

// ---- Axis, box and layer objects -------------------------------------------------------

Ref<Object> AxisImpl::setTitle(const Variant& text, const Variant& font, const Variant& fontSize,
                               const Variant& fontColor) {
  state_.title = argText(text);
  state_.titleStyle = TextStyle{argText(font), finiteOr(fontSize, 10), argColor(fontColor), 0};
  return handle();
}

void AxisImpl::setLabelFormat(const Variant& format) { state_.labelFormat = argText(format); }

Ref<Object> AxisImpl::setLabelStyle(const Variant& font, const Variant& fontSize,
                                    const Variant& fontColor, const Variant& fontAngle) {
  state_.labelStyle =
      TextStyle{argText(font), finiteOr(fontSize, 8), argColor(fontColor), finiteOr(fontAngle, 0)};
  return handle();
}

void AxisImpl::setTickDensity(const Variant& majorSpacing, const Variant& minorSpacing) {
  state_.majorSpacing = std::max(0.0, finiteOr(majorSpacing, 0));
  state_.minorSpacing = std::max(0.0, finiteOr(minorSpacing, 0));
}

void AxisImpl::setScale(AxisState::Kind kind, const Variant& lower, const Variant& upper,
                        const Variant& majorTick, const Variant& minorTick) {
  state_.kind = kind;
  state_.lower = argNumber(lower);
  state_.upper = argNumber(upper);
  state_.major = argNumber(majorTick);
  state_.minor = argNumber(minorTick);
}

void AxisImpl::setDateScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                            const Variant& minorTick) {
  setScale(AxisState::Kind::Date, lower, upper, majorTick, minorTick);
}

void AxisImpl::setLinearScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                              const Variant& minorTick) {
  setScale(AxisState::Kind::Linear, lower, upper, majorTick, minorTick);
}

void AxisImpl::setRounding(const Variant& roundMin, const Variant& roundMax) {
  state_.roundMin = argFlag(roundMin);
  state_.roundMax = argFlag(roundMax);
}

void AxisImpl::setWidth(const Variant& width) {
  state_.width = std::clamp(finiteOr(width, 1), 0.0, 20.0);
}

double AxisImpl::getMinValue() {
  scene_->layout();
  return state_.settled.lower;
}

double AxisImpl::getMaxValue() {
  scene_->layout();
  return state_.settled.upper;
}

void BoxImpl::setBackground(const Variant& color, const Variant& edgeColor, const Variant& effect) {
  state_->background = argColor(color);
  state_->edge = argColor(edgeColor);
  const double e = argNumber(effect);
  state_->effect = std::isfinite(e) && e != 0 ? 1 : 0;
}

void BoxImpl::setWidth(const Variant& width) {
  state_->width = std::clamp(finiteOr(width, 0), 0.0, 8192.0);
}

void LayerImpl::setXData(const Variant& xData) {
  state_->xs = argSeries(xData);
  state_->hasX = true;
}

Ref<Object> LayerImpl::addDataSet(const Variant& data, const Variant& color, const Variant& name) {
  state_->sets.push_back(DataSet{argSeries(data), lineColor(color), argText(name)});
  return handle();
}

void LayerImpl::setLineWidth(const Variant& width) {
  state_->lineWidth = std::clamp(finiteOr(width, 1), 0.0, 50.0);
}

// ---- The chart ---------------------------------------------------------------------------

XYChartImpl::XYChartImpl(int32_t width, int32_t height, uint32_t background, uint32_t edge,
                         int32_t raised)
    : scene_(std::make_shared<XYScene>()) {
  scene_->width = width;
  scene_->height = height;
  scene_->background = background;
  scene_->edge = edge;
  scene_->raised = raised;
  xAxis_ = std::make_shared<AxisImpl>(scene_, scene_->xAxis);
  yAxis_ = std::make_shared<AxisImpl>(scene_, scene_->yAxis);
}

Ref<Object> XYChartImpl::setPlotArea(const Variant& x, const Variant& y, const Variant& width,
                                     const Variant& height, const Variant& bgColor,
                                     const Variant& altBgColor, const Variant& edgeColor,
                                     const Variant& hGridColor, const Variant& vGridColor) {
  scene_->hasPlotArea = true;
  scene_->plot = Rect{argNumber(x), argNumber(y), argNumber(width), argNumber(height)};
  scene_->plotBackground = argColor(bgColor);
  scene_->plotAltBackground = argColor(altBgColor);
  scene_->plotEdge = argColor(edgeColor);
  scene_->hGrid = argColor(hGridColor);
  scene_->vGrid = argColor(vGridColor);
  return handle();
}

// Lines are always cut at the plot area; the margin is read and checked only.
void XYChartImpl::setClipping(const Variant& margin) { argNumber(margin); }

Ref<platform::chart::Box> XYChartImpl::addTitle(const Variant& text, const Variant& font,
                                                const Variant& fontSize, const Variant& fontColor,
                                                const Variant& bgColor, const Variant& edgeColor) {
  auto box = std::make_shared<BoxState>();
  box->text = argText(text);
  box->style = TextStyle{argText(font), finiteOr(fontSize, 12), argColor(fontColor), 0};
  box->background = argColor(bgColor);
  box->edge = argColor(edgeColor);
  scene_->title = box;
  return std::make_shared<BoxImpl>(box);
}

Ref<platform::chart::Box> XYChartImpl::addLegend2(const Variant& x, const Variant& y,
                                                  const Variant& noOfCols, const Variant& font,
                                                  const Variant& fontSize) {
  auto box = std::make_shared<BoxState>();
  box->style = TextStyle{argText(font), finiteOr(fontSize, 8), kTextColor, 0};
  scene_->legend = box;
  scene_->legendX = finiteOr(x, 0);
  scene_->legendY = finiteOr(y, 0);
  scene_->legendColumns = static_cast<int32_t>(std::clamp(finiteOr(noOfCols, 1), 1.0, 100.0));
  return std::make_shared<BoxImpl>(box);
}

Ref<platform::chart::Axis> XYChartImpl::xAxis() { return xAxis_; }
Ref<platform::chart::Axis> XYChartImpl::yAxis() { return yAxis_; }

Ref<platform::chart::Layer> XYChartImpl::addLineLayer(const Variant& data, const Variant& color,
                                                      const Variant& name, const Variant& depth) {
  argNumber(depth);
  auto layer = std::make_shared<LayerState>();
  layer->sets.push_back(DataSet{argSeries(data), lineColor(color), argText(name)});
  scene_->layers.push_back(layer);
  return std::make_shared<LayerImpl>(layer);
}

Ref<platform::chart::Layer> XYChartImpl::addLineLayer2(const Variant& dataCombineMethod,
                                                       const Variant& depth) {
  argNumber(dataCombineMethod);
  argNumber(depth);
  auto layer = std::make_shared<LayerState>();
  scene_->layers.push_back(layer);
  return std::make_shared<LayerImpl>(layer);
}

Variant XYChartImpl::formatValue(const Variant& value, const Variant& format) {
  return Variant(formatLabel(argText(format), argNumber(value)));
}

void XYChartImpl::layout() { scene_->layout(); }

Variant XYChartImpl::makeChart2(const Variant& format) {
  // The whole picture is first filled with the background: a solid one leaves no pixel clear.
  const Paint background = resolvePaint(scene_->background);
  return encodeChart(scene_->render(), format,
                     background.kind == Paint::Kind::Solid && background.a >= 1);
}

}  // namespace tessaline::chart
