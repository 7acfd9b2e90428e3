#pragma once

#include <memory>
#include <string>

#include "tessaline/frame/control_frame.h"
#include "tessaline/platform/xml.h"
#include "tessaline/trends/chart_frame.h"

// What the multi-trend and the waveform share: charts that the host feeds through their own
// interface, with no data item. Both keep IDtmControl alone (host and container ignored, Enable
// only stored), the larger frame, the background of the window around them, and the same five
// saved properties. Each says what it reads from its definition and how it draws.
namespace tessaline {

class HostFedChart : public DtmControlBase {
 public:
  ~HostFedChart() override;

  Ref<GenericDtm> IDtmControl_GenericDtm() override { return nullptr; }
  void IDtmControl_GenericDtm(Ref<GenericDtm>) override {}
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return nullptr; }
  void IDtmControl_DtmContainer(Ref<DtmContainer>) override {}
  std::string IDtmControl_Name() override { return name_; }
  void IDtmControl_Name(const std::string& value) override;
  bool IDtmControl_Enable() override { return enable_; }
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  // The viewer and the four buttons follow; the scroll bars are left alone.
  void IDtmControl_Visible(bool value) override;

  // The control's own background: the colour of the window around it, which is what the
  // platform paints behind the children anyway.
  int32_t BackColor() { return backColor_; }
  void BackColor(int32_t value);

  ChartFrame& frame() { return *frame_; }

 protected:
  HostFedChart(const std::string& className, const std::string& viewerName, int32_t width,
               int32_t height);

  // IDTMControl_Init of both: the host, the logger under its name, the background again.
  void takeChartHost(const Ref<GenericDtm>& host, const std::string& loggerName);
  // The colour of the window around the control, at creation and at IDTMControl_Init.
  void applyBackground();
  // The pixel size of the chart: the control's size in twips over 15.
  double chartWidth() const { return window_->Width() / 15.0; }
  double chartHeight() const { return window_->Height() / 15.0; }
  // The definition as an XML node: Nothing stays Nothing, another object fails with 13.
  static Ref<platform::XmlNode> asNode(const Ref<Object>& node);
  // A required attribute: a missing one fails as a member called through Nothing.
  static std::string required(const Ref<platform::XmlNode>& node, const std::string& name);
  // A colour attribute: hexadecimal digits read through "&H", kept as decimal text.
  static std::string colourText(const std::string& hexDigits);
  platform::chart::ChartApi& api();

  template <class Self>
  static void addChartMembers(MemberTableBuilder<Self>& table) {
    addDtmControlMembers(table);
    table.TESSALINE_PROPERTY(int32_t, BackColor)
        .persist({"IDtmControl_Enable", "IDtmControl_Visible", "IDtmControl_Name",
                  "IDtmControl_DataMode", Persisted("BackColor").withDefault(int32_t{0})});
  }

  std::unique_ptr<ChartFrame> frame_;
  std::string name_;
  bool enable_ = true;
  bool visible_ = true;

 private:
  int32_t backColor_ = 0;
  Ref<platform::chart::ChartApi> api_;
};

}  // namespace tessaline
