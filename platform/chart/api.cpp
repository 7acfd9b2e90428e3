#include <algorithm>
#include <cmath>

#include "tessaline/platform/chart/codecs.h"
#include "tessaline/platform/chart/engine.h"
#include "tessaline/values/vb_error.h"

namespace tessaline::chart {

namespace {

int32_t effectValue(const Variant& value) {
  const double v = argNumber(value);
  if (!std::isfinite(v)) return 0;
  return static_cast<int32_t>(std::clamp(std::round(v), -20.0, 20.0));
}

Variant colorValue(uint32_t color) { return Variant(static_cast<int32_t>(color)); }

class ChartApiImpl : public platform::chart::ChartApi {
 public:
  Variant meterBackgroundColor(const Variant& angle) override {
    double a = argNumber(angle);
    a = std::isfinite(a) ? std::fmod(std::fmod(std::round(a), 360.0) + 360.0, 360.0) : 90;
    return colorValue(kMetalBase + static_cast<uint32_t>(a));
  }
  Ref<platform::chart::Meter> AngularMeter(const Variant& width, const Variant& height,
                                           const Variant& bgColor, const Variant& edgeColor,
                                           const Variant& raisedEffect) override {
    return std::make_shared<MeterChart>(pixelSize(argNumber(width)), pixelSize(argNumber(height)),
                                        argColor(bgColor), argColor(edgeColor),
                                        effectValue(raisedEffect));
  }
  Ref<platform::chart::XYPlot> XYChart(const Variant& width, const Variant& height,
                                       const Variant& bgColor, const Variant& edgeColor,
                                       const Variant& raisedEffect) override {
    return std::make_shared<XYChartImpl>(pixelSize(argNumber(width)), pixelSize(argNumber(height)),
                                         argColor(bgColor), argColor(edgeColor),
                                         effectValue(raisedEffect));
  }
  Variant TextColor() override { return colorValue(kTextColor); }
  Variant Center() override { return Variant(kAlignCenter); }
  Variant NoValue() override { return Variant(kNoValue); }
  Variant Transparent() override { return colorValue(kTransparent); }
  Variant glassEffect(const Variant& glareSize, const Variant& glareDirection,
                      const Variant& raisedEffect) override {
    const auto byte = [](const Variant& v) {
      const double d = argNumber(v);
      return std::isfinite(d) ? static_cast<int32_t>(std::clamp(std::round(d), 0.0, 255.0)) : 0;
    };
    return Variant(static_cast<int32_t>(0x01000000 | byte(glareSize) << 16 |
                                        byte(glareDirection) << 8 | byte(raisedEffect)));
  }
  Variant chartTime(const Variant& y, const Variant& m, const Variant& d, const Variant& h,
                    const Variant& n, const Variant& s) override {
    const auto whole = [](const Variant& v) {
      const double x = argNumber(v);
      if (!std::isfinite(x) || std::abs(x) > 1e9) throw VbError(err::InvalidCall);
      return static_cast<int64_t>(std::floor(x));
    };
    const double second = argNumber(s);
    if (!std::isfinite(second)) throw VbError(err::InvalidCall);
    return Variant(
        tessaline::chart::chartTime(whole(y), whole(m), whole(d), whole(h), whole(n), second));
  }
};

}  // namespace

double argNumber(const Variant& value) { return value.toDouble(); }

uint32_t argColor(const Variant& value) {
  const double d = std::round(value.toDouble());
  if (!std::isfinite(d) || d < -2147483648.0 || d > 4294967295.0) return kNoColor;
  return static_cast<uint32_t>(static_cast<int64_t>(d));
}

std::string argText(const Variant& value) { return value.toText(); }

bool argFlag(const Variant& value) { return value.toBool(); }

std::vector<double> argSeries(const Variant& value) {
  const auto& items = value.toArray().items;
  std::vector<double> out;
  out.reserve(items.size());
  for (const auto& item : items) {
    if (const double* number = item.ifDouble()) {
      out.push_back(*number);
    } else if (item.isNumeric()) {
      out.push_back(item.toDouble());
    } else {
      try {
        out.push_back(item.isString() ? item.toDouble() : kNoValue);
      } catch (const VbError&) {
        out.push_back(kNoValue);
      }
    }
  }
  return out;
}

Variant encodeChart(platform::PixelImage image, const Variant& format, bool opaque) {
  const auto flattened = [&] { return opaque ? std::move(image) : layOnWhite(std::move(image)); };
  const double number = argNumber(format);
  // The bytes are written when someone asks for them; until then the pixels stand for them, as
  // the format would give them back.
  if (number == static_cast<double>(ImageFormat::Png)) {
    return Variant(std::make_shared<platform::ByteArray>(std::move(image), encodePng));
  }
  if (number == static_cast<double>(ImageFormat::Jpeg)) {
    return Variant(std::make_shared<platform::ByteArray>(
        flattened(), [](const platform::PixelImage& pixels) { return encodeJpeg(pixels); }));
  }
  if (number == static_cast<double>(ImageFormat::Bmp)) {
    return Variant(std::make_shared<platform::ByteArray>(flattened(), encodeBmp));
  }
  throw VbError(err::InvalidCall);
}

Ref<platform::chart::ChartApi> createEngineApi() { return std::make_shared<ChartApiImpl>(); }

void install() {
  platform::chart::setChartEngine(createEngineApi);
  platform::setPictureDecoder(decodePicture);
}

}  // namespace tessaline::chart
