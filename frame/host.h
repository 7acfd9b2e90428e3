#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tessaline/values/object.h"
#include "tessaline/values/variant.h"

namespace tessaline {

class IDtmControl;

// The device type manager that hosts the controls. These twelve operations, with the two of
// DtmContainer, are the whole use that the library makes of its host; what happens behind
// them (how a value reaches the device, how a condition is evaluated) is the host's affair.
class GenericDtm : public virtual Object {
 public:
  static constexpr std::string_view kIid = "24808c8a-7c12-4b34-bd35-49e51166386a";

  virtual void LaunchFunctionPrimary(int32_t functionId) = 0;
  virtual void LaunchFunctionSecondary(int32_t functionId) = 0;
  virtual void CallModuleFunction(const std::string& moduleName, const std::string& functionName,
                                  const std::string& data) = 0;
  // errorText comes in empty; valid is an out-argument.
  virtual void ValidateItemValue(const std::string& itemName, const Variant& value,
                                 std::string& errorText, bool& valid) = 0;
  virtual std::string BaseFolder() = 0;
  virtual std::string ShowMessage(const std::string& icon, const std::string& buttons,
                                  const std::string& defaultButton, const std::string& title,
                                  const std::string& text) = 0;
  virtual std::string GetLocalizedString(const std::string& key) = 0;
  virtual void LogFatal(const std::string& loggerName, const std::string& text) = 0;
  virtual void LogError(const std::string& loggerName, const std::string& text) = 0;
  virtual void LogDebug(const std::string& loggerName, const std::string& text) = 0;
  virtual void LogInfo(const std::string& loggerName, const std::string& text) = 0;
  virtual bool EvaluateCondition(const std::string& expression) = 0;
};

// The dialog that holds the controls: told of a user's change, and able to launch a
// function inside itself.
class DtmContainer : public virtual Object {
 public:
  static constexpr std::string_view kIid = "08d9202c-2433-469d-95a9-329f02f9c621";

  virtual void ControlValueChanged(Ref<IDtmControl> control) = 0;
  virtual void LaunchFunctionInContainer(int32_t functionId) = 0;
};

}  // namespace tessaline
