#include "tessaline/frame/data_type_controller.h"

#include "tessaline/values/locale.h"
#include "tessaline/values/text.h"

namespace tessaline {

Variant DataTypeController::DataType() {
  if (dataType_.isNumeric() && dataType_.toDouble() == 1) return Variant("String");
  if (dataType_.isString()) {
    const ParsedNumber parsed = parseNumber(dataType_.toText(), locale());
    if (parsed.outcome == ParseOutcome::Number && parsed.value == 1) return Variant("String");
  }
  return dataType_;
}

void DataTypeController::DataType(const Variant& vData) { dataType_ = vData; }

Variant DataTypeController::MatchType(const Variant& newValue,
                                      const std::optional<std::string>& strType) {
  const std::string type = toLowerAscii(strType.value_or(""));
  if (type == "int16") return newValue.toInt16();
  if (type == "int32") return newValue.toInt32();
  if (type == "float") return newValue.toDouble();
  if (type == "bool" || type == "boolean") return newValue.toBool();
  if (type == "byte") return newValue.toByte();
  return newValue.toText();
}

AccessType DataTypeController::GetAccessType(const std::string& strAccessType) {
  if (strAccessType == "Read") return AccessType::ReadOnly;
  if (strAccessType == "Write") return AccessType::WriteOnly;
  if (strAccessType == "ReadWrite") return AccessType::ReadWrite;
  return AccessType::ReadOnly;
}

}  // namespace tessaline
