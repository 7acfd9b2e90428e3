#include "frame/control_frame.h"

namespace tessaline {

ControlFrame::ControlFrame(const std::string& className, platform::UserControl* parent)
    : window_(parent ? parent->createChildControl(className)
                     : platform::backend().createUserControl(className)),
      logger_(std::make_shared<Logger>()) {}

void ControlFrame::takeHost(const Ref<GenericDtm>& host, const std::string& loggerName) {
  host_ = host;
  SetSharedHost(host);
  logger_ = MakeLogger(host, loggerName);
}

}  // namespace tessaline
