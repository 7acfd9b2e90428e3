#include "tessaline/host/reference_host.h"

namespace tessaline::host {

std::string HostCall::text() const {
  std::string out = operation + "(";
  for (size_t i = 0; i < arguments.size(); ++i) {
    if (i) out += ", ";
    out += arguments[i];
  }
  return out + ")";
}

Variant SimulatedDevice::read(const std::string& parameter) const {
  const auto found = values_.find(parameter);
  if (found == values_.end()) {
    throw VbError(err::TypeMismatch, "The device has no parameter " + parameter);
  }
  return found->second;
}

void SimulatedDevice::write(const std::string& parameter, const Variant& value) {
  values_[parameter] = value;
}

std::vector<HostCall> ReferenceHost::takeCalls() {
  std::vector<HostCall> taken;
  taken.swap(calls_);
  return taken;
}

std::vector<HostCall> ReferenceHost::callsOf(const std::string& operation) const {
  std::vector<HostCall> found;
  for (const HostCall& call : calls_) {
    if (call.operation == operation) found.push_back(call);
  }
  return found;
}

std::vector<std::string> ReferenceHost::errorLines() const {
  std::vector<std::string> lines;
  for (const HostCall& call : calls_) {
    if (call.operation == "LogError") lines.push_back(call.arguments.at(1));
  }
  return lines;
}

void ReferenceHost::record(std::string operation, std::vector<std::string> arguments) {
  calls_.push_back({std::move(operation), std::move(arguments)});
  if (onCall) onCall(calls_.back());
}

void ReferenceHost::LaunchFunctionPrimary(int32_t functionId) {
  record("LaunchFunctionPrimary", {std::to_string(functionId)});
}

void ReferenceHost::LaunchFunctionSecondary(int32_t functionId) {
  record("LaunchFunctionSecondary", {std::to_string(functionId)});
}

void ReferenceHost::CallModuleFunction(const std::string& moduleName,
                                       const std::string& functionName, const std::string& data) {
  record("CallModuleFunction", {moduleName, functionName, data});
}

void ReferenceHost::ValidateItemValue(const std::string& itemName, const Variant& value,
                                      std::string& errorText, bool& valid) {
  record("ValidateItemValue", {itemName, describe(value)});
  valid = validate(itemName, value, errorText);
}

std::string ReferenceHost::BaseFolder() {
  record("BaseFolder", {});
  return baseFolder;
}

std::string ReferenceHost::ShowMessage(const std::string& icon, const std::string& buttons,
                                       const std::string& defaultButton, const std::string& title,
                                       const std::string& text) {
  record("ShowMessage", {icon, buttons, defaultButton, title, text});
  return messageAnswer;
}

std::string ReferenceHost::GetLocalizedString(const std::string& key) {
  record("GetLocalizedString", {key});
  const auto found = translations.find(key);
  return found == translations.end() ? key : found->second;
}

void ReferenceHost::LogFatal(const std::string& loggerName, const std::string& text) {
  record("LogFatal", {loggerName, text});
}

void ReferenceHost::LogError(const std::string& loggerName, const std::string& text) {
  record("LogError", {loggerName, text});
}

void ReferenceHost::LogDebug(const std::string& loggerName, const std::string& text) {
  record("LogDebug", {loggerName, text});
}

void ReferenceHost::LogInfo(const std::string& loggerName, const std::string& text) {
  record("LogInfo", {loggerName, text});
}

bool ReferenceHost::EvaluateCondition(const std::string& expression) {
  record("EvaluateCondition", {expression});
  return evaluate(expression);
}

void ReferenceHost::ControlValueChanged(Ref<IDtmControl> control) {
  record("ControlValueChanged", {control ? control->IDtmControl_Name() : "Nothing"});
}

void ReferenceHost::LaunchFunctionInContainer(int32_t functionId) {
  record("LaunchFunctionInContainer", {std::to_string(functionId)});
}

}  // namespace tessaline::host
