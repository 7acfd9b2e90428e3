#include "tessaline/frame/control_frame.h"

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

void ControlFrame::ReadProperties(platform::PropertyBag& PropBag) {
  for (const PersistedProperty& property : members().persisted()) {
    if (property.readAs.empty()) continue;
    property.restore(*this, PropBag.ReadProperty(property.readAs, property.defaultValue(*this)));
  }
}

void ControlFrame::WriteProperties(platform::PropertyBag& PropBag) {
  for (const PersistedProperty& property : members().persisted()) {
    if (property.writtenAs.empty()) continue;
    PropBag.WriteProperty(property.writtenAs, property.save(*this), property.writtenDefault(*this));
  }
}

}  // namespace tessaline
