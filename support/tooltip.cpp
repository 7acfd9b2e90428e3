#include "tessaline/support/tooltip.h"

#include <algorithm>

namespace tessaline {

namespace {
platform::TooltipService& service() { return platform::backend().tooltips(); }

int32_t clampTime(int32_t& time) {
  time = std::clamp(time, 0, 32767);
  return time;
}
}  // namespace

void cTooltip::MaxWidth(int32_t& lngMaxWidth) {
  maxWidth_ = lngMaxWidth;
  service().setMaxTipWidth(window_, maxWidth_);
}

int32_t cTooltip::VisibleTime() {
  return service().getDelayTime(window_, platform::TooltipService::kAutoPop);
}

void cTooltip::VisibleTime(int32_t& lngTime) {
  service().setDelayTime(window_, platform::TooltipService::kAutoPop, clampTime(lngTime));
}

int32_t cTooltip::DelayTime() {
  return service().getDelayTime(window_, platform::TooltipService::kInitial);
}

void cTooltip::DelayTime(int32_t& lngTime) {
  service().setDelayTime(window_, platform::TooltipService::kInitial, clampTime(lngTime));
}

void cTooltip::Create(platform::WindowHandle lngHwndParent) {
  Destroy();
  window_ = service().createTooltipWindow(lngHwndParent, kStyle);
  service().setMaxTipWidth(window_, maxWidth_);
}

void cTooltip::Destroy() {
  if (window_ > 0) {
    // Without a backend (a control outliving its toolkit) the window is gone already.
    if (platform::hasBackend()) service().destroyWindow(window_);
    window_ = 0;
  }
}

void cTooltip::AddControl(platform::WindowHandle ohWnd, const std::string& strCaption,
                          std::optional<bool> blnCenterTip) {
  int32_t flags = platform::TooltipService::kIdIsHwnd | platform::TooltipService::kSubclass;
  if (blnCenterTip.value_or(false)) flags |= platform::TooltipService::kCenterTip;
  service().addTool(window_, ohWnd, strCaption, flags);
}

void cTooltip::describeMembers(MemberTableBuilder<cTooltip>& table) {
  const auto sized = [](std::string name, int32_t (cTooltip::*get)(),
                        void (cTooltip::*set)(int32_t&)) {
    return Member{std::move(name),
                  [get](Dispatchable& d) { return Variant((dynamic_cast<cTooltip&>(d).*get)()); },
                  [set](Dispatchable& d, const Variant& v) {
                    int32_t number = v.toInt32();
                    (dynamic_cast<cTooltip&>(d).*set)(number);
                  },
                  {},
                  {}};
  };
  table.row(sized("MaxWidth", &cTooltip::MaxWidth, &cTooltip::MaxWidth))
      .row(sized("VisibleTime", &cTooltip::VisibleTime, &cTooltip::VisibleTime))
      .row(sized("DelayTime", &cTooltip::DelayTime, &cTooltip::DelayTime))
      .method("Create",
              [](cTooltip& t, DispatchArgs& a) {
                t.Create(argument(a, 0).toInt32());
                return Variant();
              })
      .method("Destroy",
              [](cTooltip& t, DispatchArgs&) {
                t.Destroy();
                return Variant();
              })
      .method("AddControl", [](cTooltip& t, DispatchArgs& a) {
        std::optional<bool> centred;
        if (a.size() > 2 && !a[2].isEmpty()) centred = a[2].toBool();
        t.AddControl(argument(a, 0).toInt32(), argument(a, 1).toText(), centred);
        return Variant();
      });
}

ControlTooltip::~ControlTooltip() {
  if (tooltip_) tooltip_->Destroy();
}

void ControlTooltip::destroy() {
  if (!tooltip_) tooltip_ = std::make_shared<cTooltip>();
  tooltip_->Destroy();
}

void ControlTooltip::create(Logger& logger, platform::WindowHandle ownWindow,
                            std::span<const platform::WindowHandle> windows,
                            const std::string& text) {
  guarded(
      logger, failureLiteral_,
      [&] {
        if (!tooltip_) tooltip_ = std::make_shared<cTooltip>();
        tooltip_->Create(ownWindow);
        tooltip_->MaxWidth(400);
        tooltip_->VisibleTime(visibleTime_);
        tooltip_->DelayTime(500);
        for (platform::WindowHandle window : windows) tooltip_->AddControl(window, text, false);
      },
      ErrorLineStyle::Tooltip);
}

}  // namespace tessaline
