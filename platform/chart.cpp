#include "tessaline/platform/chart.h"

#include "tessaline/platform/chart_recorder.h"
#include "tessaline/values/vb_error.h"

namespace tessaline::platform::chart {

namespace {

std::function<Ref<ChartApi>()>& installed() {
  thread_local std::function<Ref<ChartApi>()> factory;
  return factory;
}

std::shared_ptr<ChartRecording>& recording() {
  thread_local std::shared_ptr<ChartRecording> current;
  return current;
}

std::string argumentText(const Variant& value) {
  switch (value.type()) {
    case VarType::Empty:
      return "Empty";
    case VarType::Null:
      return "Null";
    case VarType::String:
      return "\"" + value.toText() + "\"";
    case VarType::Boolean:
      return value.toBool() ? "True" : "False";
    case VarType::Object:
      return value.toObject() ? "<object>" : "Nothing";
    case VarType::Array: {
      const auto& array = value.toArray();
      return "<array " + std::to_string(array.lowerBound) + " to " +
             std::to_string(array.upperBound()) + ">";
    }
    default:
      return value.toText();
  }
}

// Each wrapper writes the call down, then passes it on; a call that fails is recorded too.
class Recorded {
 protected:
  Recorded(std::shared_ptr<ChartRecording> log, std::string name)
      : log_(std::move(log)), name_(std::move(name)) {}
  void note(const char* operation, std::vector<Variant> args = {}) const {
    log_->add(RecordedCall{name_, operation, std::move(args)});
  }
  std::shared_ptr<ChartRecording> log_;
  std::string name_;
};

class RecordedAxis : public Axis, Recorded {
 public:
  RecordedAxis(Ref<Axis> inner, std::shared_ptr<ChartRecording> log, std::string name)
      : Recorded(std::move(log), std::move(name)), inner_(std::move(inner)) {}
  Ref<Object> setTitle(const Variant& text, const Variant& font, const Variant& fontSize,
                       const Variant& fontColor) override {
    note("setTitle", {text, font, fontSize, fontColor});
    return inner_->setTitle(text, font, fontSize, fontColor);
  }
  void setLabelFormat(const Variant& format) override {
    note("setLabelFormat", {format});
    inner_->setLabelFormat(format);
  }
  Ref<Object> setLabelStyle(const Variant& font, const Variant& fontSize, const Variant& fontColor,
                            const Variant& fontAngle) override {
    note("setLabelStyle", {font, fontSize, fontColor, fontAngle});
    return inner_->setLabelStyle(font, fontSize, fontColor, fontAngle);
  }
  void setTickDensity(const Variant& majorSpacing, const Variant& minorSpacing) override {
    note("setTickDensity", {majorSpacing, minorSpacing});
    inner_->setTickDensity(majorSpacing, minorSpacing);
  }
  void setDateScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                    const Variant& minorTick) override {
    note("setDateScale", {lower, upper, majorTick, minorTick});
    inner_->setDateScale(lower, upper, majorTick, minorTick);
  }
  void setLinearScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                      const Variant& minorTick) override {
    note("setLinearScale", {lower, upper, majorTick, minorTick});
    inner_->setLinearScale(lower, upper, majorTick, minorTick);
  }
  void setRounding(const Variant& roundMin, const Variant& roundMax) override {
    note("setRounding", {roundMin, roundMax});
    inner_->setRounding(roundMin, roundMax);
  }
  void setWidth(const Variant& width) override {
    note("setWidth", {width});
    inner_->setWidth(width);
  }
  double getMinValue() override {
    note("getMinValue");
    return inner_->getMinValue();
  }
  double getMaxValue() override {
    note("getMaxValue");
    return inner_->getMaxValue();
  }

 private:
  Ref<Axis> inner_;
};

class RecordedBox : public Box, Recorded {
 public:
  RecordedBox(Ref<Box> inner, std::shared_ptr<ChartRecording> log, std::string name)
      : Recorded(std::move(log), std::move(name)), inner_(std::move(inner)) {}
  void setBackground(const Variant& color, const Variant& edgeColor,
                     const Variant& effect) override {
    note("setBackground", {color, edgeColor, effect});
    inner_->setBackground(color, edgeColor, effect);
  }
  void setWidth(const Variant& width) override {
    note("setWidth", {width});
    inner_->setWidth(width);
  }

 private:
  Ref<Box> inner_;
};

class RecordedLayer : public Layer, Recorded {
 public:
  RecordedLayer(Ref<Layer> inner, std::shared_ptr<ChartRecording> log)
      : Recorded(std::move(log), "layer"), inner_(std::move(inner)) {}
  void setXData(const Variant& xData) override {
    note("setXData", {xData});
    inner_->setXData(xData);
  }
  Ref<Object> addDataSet(const Variant& data, const Variant& color, const Variant& name) override {
    note("addDataSet", {data, color, name});
    return inner_->addDataSet(data, color, name);
  }
  void setLineWidth(const Variant& width) override {
    note("setLineWidth", {width});
    inner_->setLineWidth(width);
  }

 private:
  Ref<Layer> inner_;
};

class RecordedMeter : public Meter, Recorded {
 public:
  RecordedMeter(Ref<Meter> inner, std::shared_ptr<ChartRecording> log)
      : Recorded(std::move(log), "meter"), inner_(std::move(inner)) {}
  void setMeter(const Variant& cx, const Variant& cy, const Variant& radius,
                const Variant& startAngle, const Variant& endAngle) override {
    note("setMeter", {cx, cy, radius, startAngle, endAngle});
    inner_->setMeter(cx, cy, radius, startAngle, endAngle);
  }
  void setRoundedFrame(const Variant& extColor, const Variant& r1, const Variant& r2,
                       const Variant& r3, const Variant& r4) override {
    note("setRoundedFrame", {extColor, r1, r2, r3, r4});
    inner_->setRoundedFrame(extColor, r1, r2, r3, r4);
  }
  Ref<Object> setLabelStyle(const Variant& font, const Variant& fontSize, const Variant& fontColor,
                            const Variant& fontAngle) override {
    note("setLabelStyle", {font, fontSize, fontColor, fontAngle});
    return inner_->setLabelStyle(font, fontSize, fontColor, fontAngle);
  }
  void setScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                const Variant& minorTick, const Variant& microTick) override {
    note("setScale", {lower, upper, majorTick, minorTick, microTick});
    inner_->setScale(lower, upper, majorTick, minorTick, microTick);
  }
  void addZone(const Variant& startValue, const Variant& endValue, const Variant& startRadius,
               const Variant& endRadius, const Variant& fillColor,
               const Variant& edgeColor) override {
    note("addZone", {startValue, endValue, startRadius, endRadius, fillColor, edgeColor});
    inner_->addZone(startValue, endValue, startRadius, endRadius, fillColor, edgeColor);
  }
  void setLabelFormat(const Variant& format) override {
    note("setLabelFormat", {format});
    inner_->setLabelFormat(format);
  }
  Ref<Object> addPointer(const Variant& value, const Variant& fillColor,
                         const Variant& edgeColor) override {
    note("addPointer", {value, fillColor, edgeColor});
    return inner_->addPointer(value, fillColor, edgeColor);
  }
  Ref<Object> addText(const Variant& x, const Variant& y, const Variant& text, const Variant& font,
                      const Variant& fontSize, const Variant& fontColor, const Variant& alignment,
                      const Variant& angle, const Variant& vertical) override {
    note("addText", {x, y, text, font, fontSize, fontColor, alignment, angle, vertical});
    return inner_->addText(x, y, text, font, fontSize, fontColor, alignment, angle, vertical);
  }
  void setLabelPos(const Variant& labelInside, const Variant& labelOffset) override {
    note("setLabelPos", {labelInside, labelOffset});
    inner_->setLabelPos(labelInside, labelOffset);
  }
  Variant getTicks() override {
    note("getTicks");
    return inner_->getTicks();
  }
  void addLabel(const Variant& position, const Variant& label) override {
    note("addLabel", {position, label});
    inner_->addLabel(position, label);
  }
  Variant makeChart2(const Variant& format) override {
    note("makeChart2", {format});
    return inner_->makeChart2(format);
  }

 private:
  Ref<Meter> inner_;
};

class RecordedXYPlot : public XYPlot, Recorded {
 public:
  RecordedXYPlot(Ref<XYPlot> inner, std::shared_ptr<ChartRecording> log)
      : Recorded(std::move(log), "chart"), inner_(std::move(inner)) {}
  Ref<Object> setPlotArea(const Variant& x, const Variant& y, const Variant& width,
                          const Variant& height, const Variant& bgColor, const Variant& altBgColor,
                          const Variant& edgeColor, const Variant& hGridColor,
                          const Variant& vGridColor) override {
    note("setPlotArea",
         {x, y, width, height, bgColor, altBgColor, edgeColor, hGridColor, vGridColor});
    return inner_->setPlotArea(x, y, width, height, bgColor, altBgColor, edgeColor, hGridColor,
                               vGridColor);
  }
  void setClipping(const Variant& margin) override {
    note("setClipping", {margin});
    inner_->setClipping(margin);
  }
  Ref<Box> addTitle(const Variant& text, const Variant& font, const Variant& fontSize,
                    const Variant& fontColor, const Variant& bgColor,
                    const Variant& edgeColor) override {
    note("addTitle", {text, font, fontSize, fontColor, bgColor, edgeColor});
    return std::make_shared<RecordedBox>(
        inner_->addTitle(text, font, fontSize, fontColor, bgColor, edgeColor), log_, "title");
  }
  Ref<Box> addLegend2(const Variant& x, const Variant& y, const Variant& noOfCols,
                      const Variant& font, const Variant& fontSize) override {
    note("addLegend2", {x, y, noOfCols, font, fontSize});
    return std::make_shared<RecordedBox>(inner_->addLegend2(x, y, noOfCols, font, fontSize), log_,
                                         "legend");
  }
  // The axes are reached, not drawn: their operations are recorded under their names.
  Ref<Axis> xAxis() override {
    return std::make_shared<RecordedAxis>(inner_->xAxis(), log_, "xAxis");
  }
  Ref<Axis> yAxis() override {
    return std::make_shared<RecordedAxis>(inner_->yAxis(), log_, "yAxis");
  }
  Ref<Layer> addLineLayer(const Variant& data, const Variant& color, const Variant& name,
                          const Variant& depth) override {
    note("addLineLayer", {data, color, name, depth});
    return std::make_shared<RecordedLayer>(inner_->addLineLayer(data, color, name, depth), log_);
  }
  Ref<Layer> addLineLayer2(const Variant& dataCombineMethod, const Variant& depth) override {
    note("addLineLayer2", {dataCombineMethod, depth});
    return std::make_shared<RecordedLayer>(inner_->addLineLayer2(dataCombineMethod, depth), log_);
  }
  Variant formatValue(const Variant& value, const Variant& format) override {
    note("formatValue", {value, format});
    return inner_->formatValue(value, format);
  }
  void layout() override {
    note("layout");
    inner_->layout();
  }
  Variant makeChart2(const Variant& format) override {
    note("makeChart2", {format});
    return inner_->makeChart2(format);
  }

 private:
  Ref<XYPlot> inner_;
};

class RecordedApi : public ChartApi, Recorded {
 public:
  RecordedApi(Ref<ChartApi> inner, std::shared_ptr<ChartRecording> log)
      : Recorded(std::move(log), "api"), inner_(std::move(inner)) {}
  Variant meterBackgroundColor(const Variant& angle) override {
    note("meterBackgroundColor", {angle});
    return inner_->meterBackgroundColor(angle);
  }
  Ref<Meter> AngularMeter(const Variant& width, const Variant& height, const Variant& bgColor,
                          const Variant& edgeColor, const Variant& raisedEffect) override {
    note("AngularMeter", {width, height, bgColor, edgeColor, raisedEffect});
    return std::make_shared<RecordedMeter>(
        inner_->AngularMeter(width, height, bgColor, edgeColor, raisedEffect), log_);
  }
  Ref<XYPlot> XYChart(const Variant& width, const Variant& height, const Variant& bgColor,
                      const Variant& edgeColor, const Variant& raisedEffect) override {
    note("XYChart", {width, height, bgColor, edgeColor, raisedEffect});
    return std::make_shared<RecordedXYPlot>(
        inner_->XYChart(width, height, bgColor, edgeColor, raisedEffect), log_);
  }
  // The constants are read, not drawn: they are passed on unrecorded.
  Variant TextColor() override { return inner_->TextColor(); }
  Variant Center() override { return inner_->Center(); }
  Variant NoValue() override { return inner_->NoValue(); }
  Variant Transparent() override { return inner_->Transparent(); }
  Variant glassEffect(const Variant& glareSize, const Variant& glareDirection,
                      const Variant& raisedEffect) override {
    note("glassEffect", {glareSize, glareDirection, raisedEffect});
    return inner_->glassEffect(glareSize, glareDirection, raisedEffect);
  }
  Variant chartTime(const Variant& y, const Variant& m, const Variant& d, const Variant& h,
                    const Variant& n, const Variant& s) override {
    note("chartTime", {y, m, d, h, n, s});
    return inner_->chartTime(y, m, d, h, n, s);
  }

 private:
  Ref<ChartApi> inner_;
};

}  // namespace

std::string RecordedCall::line() const {
  std::string text = object + "." + operation + "(";
  for (size_t i = 0; i < args.size(); ++i) {
    if (i > 0) text += ", ";
    text += argumentText(args[i]);
  }
  return text + ")";
}

std::vector<std::string> ChartRecording::lines() const {
  std::vector<std::string> out;
  out.reserve(calls_.size());
  for (const auto& call : calls_) out.push_back(call.line());
  return out;
}

std::shared_ptr<ChartRecording> recordChartCalls() {
  recording() = std::make_shared<ChartRecording>();
  return recording();
}

void stopRecordingChartCalls() { recording().reset(); }

Ref<ChartApi> createChartApi() {
  const auto& factory = installed();
  if (!factory) throw VbError(err::Failed, "No chart engine is installed");
  Ref<ChartApi> api = factory();
  if (const auto& log = recording()) return std::make_shared<RecordedApi>(std::move(api), log);
  return api;
}

void setChartEngine(std::function<Ref<ChartApi>()> factory) { installed() = std::move(factory); }

}  // namespace tessaline::platform::chart
