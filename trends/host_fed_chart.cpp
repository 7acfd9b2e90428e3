#include "tessaline/trends/host_fed_chart.h"

#include "tessaline/gauges/gauge_items.h"
#include "tessaline/values/vb_error.h"

namespace tessaline {

HostFedChart::HostFedChart(const std::string& className, const std::string& viewerName,
                           int32_t width, int32_t height)
    : DtmControlBase(className, nullptr) {
  frame_ = std::make_unique<ChartFrame>(*window_, kMultiTrendLayout, viewerName);
  window_->Width(width);
  window_->Height(height);
  applyBackground();
}

HostFedChart::~HostFedChart() = default;

void HostFedChart::takeChartHost(const Ref<GenericDtm>& host, const std::string& loggerName) {
  takeHost(host, loggerName);
  applyBackground();
}

void HostFedChart::applyBackground() { BackColor(window_->AmbientBackColor()); }

void HostFedChart::BackColor(int32_t value) {
  backColor_ = value;
  PropertyChanged("BackColor");
}

void HostFedChart::IDtmControl_Name(const std::string& value) {
  name_ = value;
  PropertyChanged("IDtmControl_Name");
}

void HostFedChart::IDtmControl_Enable(bool value) {
  enable_ = value;
  PropertyChanged("IDtmControl_Enable");
}

void HostFedChart::IDtmControl_Visible(bool value) {
  visible_ = value;
  frame_->showChildren(value);
  PropertyChanged("IDtmControl_Visible");
}

Ref<platform::XmlNode> HostFedChart::asNode(const Ref<Object>& node) {
  if (!node) return nullptr;
  auto cast = refCast<platform::XmlNode>(node);
  if (!cast) throw VbError(err::TypeMismatch);
  return cast;
}

std::string HostFedChart::required(const Ref<platform::XmlNode>& node, const std::string& name) {
  return node->attributes()->getNamedItem(name)->nodeValue().toText();
}

std::string HostFedChart::colourText(const std::string& hexDigits) { return gaugeColor(hexDigits); }

platform::chart::ChartApi& HostFedChart::api() {
  if (!api_) api_ = platform::chart::createChartApi();
  return *api_;
}

}  // namespace tessaline
