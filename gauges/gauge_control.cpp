#include "tessaline/gauges/gauge_control.h"

#include "tessaline/frame/data_type_controller.h"
#include "tessaline/frame/logger.h"
#include "tessaline/platform/picture.h"

namespace tessaline {

namespace {
// The layout that every resize restores, in twips. The children were laid out in pixels; at 15
// twips a pixel they keep their geometry on every screen.
constexpr int32_t kTwipsPerPixel = 15;
constexpr int32_t kControlHeight = 2458;
constexpr int32_t kControlWidth = 3113;
constexpr int32_t kCaptionWidth = 208 * kTwipsPerPixel;
constexpr int32_t kCaptionHeight = 18 * kTwipsPerPixel;
constexpr int32_t kViewerWidth = 200 * kTwipsPerPixel;  // narrower than the 208-pixel picture
}  // namespace

GaugeControl::GaugeControl(const std::string& className, int32_t viewerHeight,
                           std::string valueLiteral)
    : DataMembers(className, nullptr),
      viewerHeight_(viewerHeight),
      valueLiteral_(std::move(valueLiteral)) {
  active_ = true;
  canSubscribe_ = true;
  Label1_ = window_->createLabel("Label1");
  ChartViewer1_ = window_->createChartViewer("ChartViewer1");
  window_->events.Resize = [this] { Resize(); };
  Resize();
  applyBackground();
}

// The tooltip destroys its window itself.
GaugeControl::~GaugeControl() { ChartViewer1_->Picture(nullptr); }

void GaugeControl::Resize() {
  if (window_->Height() != kControlHeight) window_->Height(kControlHeight);
  if (window_->Width() != kControlWidth) window_->Width(kControlWidth);
  Label1_->Top(0);
  Label1_->Width(kCaptionWidth);
  Label1_->Height(kCaptionHeight);
  Label1_->property("Alignment", Variant(int32_t{2}));
  ChartViewer1_->Top(Label1_->Height() + kTwipsPerPixel);
  ChartViewer1_->Width(kViewerWidth);
  ChartViewer1_->Height(viewerHeight_ * kTwipsPerPixel);
}

void GaugeControl::applyBackground() {
  Label1_->BackColor(window_->AmbientBackColor());
  PropertyChanged("BackColor");
}

void GaugeControl::restoreName(GaugeControl& gauge, const Variant& name) {
  gauge.IDTMDataControl_Name(name.toText());
}

void GaugeControl::initFrame(const Ref<GenericDtm>& host, const std::string& loggerName) {
  takeHost(host, loggerName);
  applyBackground();
  Label1_->Caption(LocalizeText(caption_));
}

void GaugeControl::IDtmControl_Enable(bool value) {
  enable_ = value;
  PropertyChanged("IDtmControl_Enable");
}

void GaugeControl::IDtmControl_Visible(bool value) {
  visible_ = value;
  PropertyChanged("IDtmControl_Visible");
}

void GaugeControl::IDTMDataControl_DataItemDef(Ref<Object> node) {
  dataItemNode_ = node;
  readDataItem(node, item_, kAllElevenAttributes);
  UpdateGuageControl();
  PropertyChanged("IDTMDataControl_DataItemDef");
}

void GaugeControl::IDTMDataControl_DeviceDataDef(Ref<Object> node) {
  deviceDataNode_ = node;
  PropertyChanged("IDTMDataControl_DeviceDataDef");
}

Variant GaugeControl::IDTMDataControl_Value() {
  return DataTypeController().MatchType(value_, std::string());
}

void GaugeControl::IDTMDataControl_Value(const Variant& value) {
  guarded(*logger_, valueLiteral_, [&] {
    value_ = value;
    PropertyChanged("IDTMDataControl_Value");
  });
}

void GaugeControl::IDTMDataControl_SetUserValue(const Variant& value) {
  IDTMDataControl_Value(value);
}

void GaugeControl::IDTMDataControl_Caption(const std::string& value) {
  caption_ = value;
  Label1_->Caption(LocalizeText(value));
  PropertyChanged("IDTMDataControl_Caption");
}

void GaugeControl::IDTMEnumeration_EnumDataDef(Ref<Object> node) {
  enumNode_ = node;
  if (auto table = readEnumeration(node, IncludeIf::Ignored, host_)) units_ = std::move(*table);
}

void GaugeControl::DTMDataGaugeControl_Unit(const std::string& value) {
  unitItem() = value;
  PropertyChanged("DTMDataGaugeControl_Unit");
}

void GaugeControl::ToolTipText(const std::string& value) {
  tooltipText_ = value;
  PropertyChanged("ToolTipText");
}

void GaugeControl::UpdateGuageControl() {
  guarded(*logger_, "Error on UpdateGuageControl", [&] {
    ToolTipText(LocalizeText(item_.Description));
    const platform::WindowHandle viewer[] = {ChartViewer1_->hWnd()};
    tooltip_.create(*logger_, window_->hWnd(), viewer, tooltipText_);
  });
}

std::string GaugeControl::UnitText(const Variant& unitValue, bool unknownUnits) {
  std::string result = unitValue.toText();
  bool found = false;
  if (!unitValue.isNull()) {
    for (const EnumData& unit : units_.usedSlots()) {
      if (unitValue.toText() == unit.code) {
        result = unit.Local;
        found = true;
      }
    }
  }
  const std::string code = unitValue.toText();
  if (unknownUnits && !found && !code.empty() && code.find('*') == std::string::npos) {
    result = "Unknown Units";
  }
  return result;
}

void GaugeControl::setSixtiethsScale(platform::chart::Meter& meter, double lower, double upper) {
  meter.setScale(lower, upper, (upper - lower) / 6, (upper - lower) / 12, (upper - lower) / 60);
}

void GaugeControl::showMeter(platform::chart::Meter& meter) {
  ChartViewer1_->Picture(nullptr);
  ChartViewer1_->Picture(platform::PictureFromBytes(meter.makeChart2(2)));
}

}  // namespace tessaline
