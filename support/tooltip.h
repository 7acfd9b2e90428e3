#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tessaline/frame/logger.h"
#include "tessaline/frame/property_table.h"
#include "tessaline/platform/widgets.h"
#include "tessaline/values/object.h"

namespace tessaline {

// The balloon tooltip window of a control. It catches and reports nothing: a failed creation
// leaves handle 0, and every later message to it goes nowhere.
class cTooltip : public Dispatchable {
 public:
  // Balloon, shown also while the application isn't active.
  static constexpr int32_t kStyle = 0x41;

  // A host that creates the class reaches it by name; the sizes' clamped numbers are kept.
  static void describeMembers(MemberTableBuilder<cTooltip>& table);
  const MemberTable& members() const override { return memberTableOf<cTooltip>(); }

  int32_t MaxWidth() { return maxWidth_; }
  // Kept across Destroy and Create, and sent to a window that exists.
  void MaxWidth(int32_t& lngMaxWidth);
  void MaxWidth(int32_t&& lngMaxWidth) { MaxWidth(lngMaxWidth); }
  // Milliseconds that the tip stays; 0 without a window.
  int32_t VisibleTime();
  // Clamped to 0 to 32767; the clamped number goes back into the caller's variable.
  void VisibleTime(int32_t& lngTime);
  void VisibleTime(int32_t&& lngTime) { VisibleTime(lngTime); }
  // Milliseconds before the tip appears; 0 without a window.
  int32_t DelayTime();
  void DelayTime(int32_t& lngTime);
  void DelayTime(int32_t&& lngTime) { DelayTime(lngTime); }

  // Makes the tooltip window for the parent. A window it still holds is destroyed first: a
  // caller that rebuilds without Destroy would otherwise leave it behind for good.
  void Create(platform::WindowHandle lngHwndParent);
  void Destroy();
  // A tool over the whole client area of a window, with its text.
  void AddControl(platform::WindowHandle ohWnd, const std::string& strCaption,
                  std::optional<bool> blnCenterTip = std::nullopt);

  platform::WindowHandle hWnd() const { return window_; }

 private:
  platform::WindowHandle window_ = 0;
  int32_t maxWidth_ = 300;
};

// The tooltip of a control, as every control builds it: the object made on first use, Create
// on the control's own window, MaxWidth 400, the control's visible time, DelayTime 500, one
// tool for each of its windows with the text, not centred. A failure in the building is
// caught and written as the control's literal, the number, ":" and the description. The
// window is destroyed with the control.
class ControlTooltip {
 public:
  ControlTooltip(std::string failureLiteral, int32_t visibleTime)
      : failureLiteral_(std::move(failureLiteral)), visibleTime_(visibleTime) {}
  ~ControlTooltip();
  ControlTooltip(const ControlTooltip&) = delete;
  ControlTooltip& operator=(const ControlTooltip&) = delete;

  // The first half of every rebuild: the object made if there is none, its window destroyed.
  void destroy();
  // CreateTooltip of the controls.
  void create(Logger& logger, platform::WindowHandle ownWindow,
              std::span<const platform::WindowHandle> windows, const std::string& text);

  const Ref<cTooltip>& object() const { return tooltip_; }

 private:
  Ref<cTooltip> tooltip_;
  std::string failureLiteral_;
  int32_t visibleTime_;
};

}  // namespace tessaline
