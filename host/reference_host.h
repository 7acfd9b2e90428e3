#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tessaline/frame/host.h"
#include "tessaline/frame/interfaces.h"

// A host with the fourteen operations, for tests and the demo. It writes down every call
// with its arguments in order, and answers as it is told: validation, translations,
// conditions, the message box. A simulated device stands behind it.
namespace tessaline::host {

struct HostCall {
  std::string operation;
  std::vector<std::string> arguments;

  // "Operation(arg1, arg2)", for transcripts and test messages.
  std::string text() const;
  bool operator==(const HostCall&) const = default;
};

// The parameters of a device, as a host reads and writes them.
class SimulatedDevice {
 public:
  void define(const std::string& parameter, Variant value) {
    values_[parameter] = std::move(value);
  }
  // The parameter's value; 13 for a parameter the device doesn't have.
  Variant read(const std::string& parameter) const;
  void write(const std::string& parameter, const Variant& value);

 private:
  std::map<std::string, Variant> values_;
};

class ReferenceHost : public GenericDtm, public DtmContainer {
 public:
  // How the host answers. Each may be replaced, also by one that fails.
  std::function<bool(const std::string& item, const Variant& value, std::string& errorText)>
      validate = [](const std::string&, const Variant&, std::string&) { return true; };
  std::function<bool(const std::string& expression)> evaluate = [](const std::string&) {
    return true;
  };
  // GetLocalizedString gives the translation, or the key itself when there is none.
  std::map<std::string, std::string> translations;
  std::string baseFolder;
  std::string messageAnswer = "buttonOk";
  // Called with each call as it is made, after it is written down.
  std::function<void(const HostCall&)> onCall;

  SimulatedDevice device;

  // The calls so far; taking them clears the journal.
  const std::vector<HostCall>& calls() const { return calls_; }
  std::vector<HostCall> takeCalls();
  // The calls of one operation.
  std::vector<HostCall> callsOf(const std::string& operation) const;
  // The texts of the LogError lines.
  std::vector<std::string> errorLines() const;

  // GenericDtm
  void LaunchFunctionPrimary(int32_t functionId) override;
  void LaunchFunctionSecondary(int32_t functionId) override;
  void CallModuleFunction(const std::string& moduleName, const std::string& functionName,
                          const std::string& data) override;
  void ValidateItemValue(const std::string& itemName, const Variant& value, std::string& errorText,
                         bool& valid) override;
  std::string BaseFolder() override;
  std::string ShowMessage(const std::string& icon, const std::string& buttons,
                          const std::string& defaultButton, const std::string& title,
                          const std::string& text) override;
  std::string GetLocalizedString(const std::string& key) override;
  void LogFatal(const std::string& loggerName, const std::string& text) override;
  void LogError(const std::string& loggerName, const std::string& text) override;
  void LogDebug(const std::string& loggerName, const std::string& text) override;
  void LogInfo(const std::string& loggerName, const std::string& text) override;
  bool EvaluateCondition(const std::string& expression) override;

  // DtmContainer
  void ControlValueChanged(Ref<IDtmControl> control) override;
  void LaunchFunctionInContainer(int32_t functionId) override;

 private:
  void record(std::string operation, std::vector<std::string> arguments);

  std::vector<HostCall> calls_;
};

}  // namespace tessaline::host
