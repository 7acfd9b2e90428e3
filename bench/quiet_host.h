#pragma once

#include <string>

#include "tessaline/frame/host.h"
#include "tessaline/frame/interfaces.h"

namespace tessaline {

// A host that answers and keeps nothing, so the journal of a recording host doesn't weigh in.
class QuietHost : public GenericDtm, public DtmContainer {
 public:
  void LaunchFunctionPrimary(int32_t) override {}
  void LaunchFunctionSecondary(int32_t) override {}
  void CallModuleFunction(const std::string&, const std::string&, const std::string&) override {}
  void ValidateItemValue(const std::string&, const Variant&, std::string&, bool& valid) override {
    valid = true;
  }
  std::string BaseFolder() override { return {}; }
  std::string ShowMessage(const std::string&, const std::string&, const std::string&,
                          const std::string&, const std::string&) override {
    return {};
  }
  std::string GetLocalizedString(const std::string& key) override { return key; }
  void LogFatal(const std::string&, const std::string&) override {}
  void LogError(const std::string&, const std::string&) override {}
  void LogDebug(const std::string&, const std::string&) override {}
  void LogInfo(const std::string&, const std::string&) override {}
  bool EvaluateCondition(const std::string&) override { return true; }
  void ControlValueChanged(Ref<IDtmControl>) override {}
  void LaunchFunctionInContainer(int32_t) override {}
};

}  // namespace tessaline
