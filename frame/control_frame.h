#pragma once

#include <memory>
#include <string>

#include "frame/host.h"
#include "frame/logger.h"
#include "platform/widgets.h"

namespace tessaline {

// What every composite control is made of: its own window, the references to its host and
// container, and its logger, which drops all lines until IDTMControl_Init gives it a host.
class ControlFrame {
 public:
  // The control's own window: for the platform, and for tests that act as the user.
  platform::UserControl& window() { return *window_; }

 protected:
  // A control on a form, or (with a parent) a control that stands on another one.
  ControlFrame(const std::string& className, platform::UserControl* parent);
  ~ControlFrame() = default;

  // The start of IDTMControl_Init in the controls that share their host: keep the host, make
  // it the thread's shared host, make the logger under the given name.
  void takeHost(const Ref<GenericDtm>& host, const std::string& loggerName);

  // Marks the saved state stale under the property's name.
  void PropertyChanged(const std::string& name) { window_->PropertyChanged(name); }

  std::unique_ptr<platform::UserControl> window_;
  Ref<GenericDtm> host_;
  Ref<DtmContainer> container_;
  Ref<Logger> logger_;
};

}  // namespace tessaline
