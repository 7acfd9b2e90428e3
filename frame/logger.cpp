#include "tessaline/frame/logger.h"

namespace tessaline {

Variant Logger::DebugL(const std::string& LogData) {
  if (host_) host_->LogDebug(name_, LogData);
  return {};
}

Variant Logger::Info(const std::string& LogData) {
  if (host_) host_->LogInfo(name_, LogData);
  return {};
}

Variant Logger::Error(const std::string& LogData) {
  if (host_) host_->LogError(name_, LogData);
  return {};
}

Variant Logger::Fatel(const std::string& LogData) {
  if (host_) host_->LogFatal(name_, LogData);
  return {};
}

Variant Logger::Init(const Ref<GenericDtm>& DTMLog, const std::string& LoggerName) {
  host_ = DTMLog;
  name_ = LoggerName;
  return {};
}

Ref<Logger> MakeLogger(const Ref<GenericDtm>& host, const std::string& name) {
  auto logger = std::make_shared<Logger>();
  logger->Init(host, name);
  return logger;
}

namespace {
Ref<GenericDtm>& sharedHostSlot() {
  thread_local Ref<GenericDtm> host;
  return host;
}
}  // namespace

void SetSharedHost(const Ref<GenericDtm>& host) { sharedHostSlot() = host; }

const Ref<GenericDtm>& SharedHost() { return sharedHostSlot(); }

std::string LocalizeText(const std::string& key) {
  if (key.empty()) return key;
  const Ref<GenericDtm>& host = sharedHostSlot();
  if (!host) return key;
  return host->GetLocalizedString(key);
}

std::string errorLine(std::string_view literal, const VbError& error, ErrorLineStyle style) {
  std::string line(literal);
  line += std::to_string(error.number());
  line += style == ErrorLineStyle::Member ? " ,Description = " : ":";
  line += error.description();
  return line;
}

}  // namespace tessaline
