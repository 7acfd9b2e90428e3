#pragma once

#include <string>

#include "tessaline/frame/data_type_controller.h"
#include "tessaline/frame/property_table.h"
#include "tessaline/platform/xml.h"
#include "tessaline/values/variant.h"

// The three checks of a `validators` element. Each Validate reads the element afresh, walks
// its children in document order and lets every child of its own kind replace the answer, so
// the last such child decides; a value with no child of that kind passes, and so does a node
// that is Nothing, isn't named "validators" or has no children. A failed check doesn't stop
// the walk. The error text is that of the last child of the kind that carried "errorString";
// it means something only after a false answer. Nothing is caught: a failed conversion or a
// missing required attribute reaches the caller as the VbError it is.
//
// What each class does where a definition is incomplete or odd:
// - Range and discrete compare text, as MatchType without a type name gives it: "10" lies
//   below "9", so the range 9 to 10 lets nothing through, and 5 lies above "10". A range whose
//   lower limit lies above its upper one (as text) lets nothing through.
// - An empty "min" or "max" keeps the limit at -1, compared as the text "-1" by the range and
//   as the number by the length; an empty length "max" therefore fails every value.
// - A rangeValidation without "min" or "max", or a lengthValidation without "max", raises 91
//   when it is read, as reading the value of an absent attribute node does; the children
//   before it count for nothing then.
// - Length limits are numbers: a limit that is no number ("abc") raises 13 at the comparison.
//   Lengths count characters (code points) of the value's text.
// - A discreteValidation without any "MATCH..." attribute compares nothing and leaves the
//   answer as the children before it left it. Each MATCH attribute costs one comparison, so a
//   long list is walked once, in the order of the attribute map.
namespace tessaline {

class RangeValidator : public Dispatchable {
 public:
  static void describeMembers(MemberTableBuilder<RangeValidator>& table);
  const MemberTable& members() const override { return memberTableOf<RangeValidator>(); }

  bool Validate(const Ref<platform::XmlNode>& ValidatorNode, const std::string& DataType,
                const Variant& value);
  std::string ErrorString() { return errorString_; }

  // DataType is stored in it at each Validate and plays no part in the comparison.
  DataTypeController& dataTypeController() { return dataTypeController_; }

 private:
  std::string errorString_;
  DataTypeController dataTypeController_;
};

class LengthValidator : public Dispatchable {
 public:
  static void describeMembers(MemberTableBuilder<LengthValidator>& table);
  const MemberTable& members() const override { return memberTableOf<LengthValidator>(); }

  bool Validate(const Ref<platform::XmlNode>& ValidatorNode, const Variant& value);
  std::string ErrorString() { return errorString_; }

 private:
  std::string errorString_;
};

class DiscreteValidator : public Dispatchable {
 public:
  static void describeMembers(MemberTableBuilder<DiscreteValidator>& table);
  const MemberTable& members() const override { return memberTableOf<DiscreteValidator>(); }

  bool Validate(const Ref<platform::XmlNode>& ValidatorNode, const std::string& DataType,
                const Variant& value);
  std::string ErrorString() { return errorString_; }

  DataTypeController& dataTypeController() { return dataTypeController_; }

 private:
  std::string errorString_;
  DataTypeController dataTypeController_;
};

}  // namespace tessaline
