#include "tessaline/validation/validators.h"

#include <optional>
#include <string_view>

#include "tessaline/values/text.h"

namespace tessaline {

namespace {

using platform::XmlNamedNodeMap;
using platform::XmlNode;
using platform::XmlNodeList;

// The walk that the three share: `check` gets each child of the kind with the answer so far
// and gives the new one.
template <class Check>
bool walkRules(const Ref<XmlNode>& validators, std::string_view kind, Check check) {
  bool result = true;
  if (!validators || validators->nodeName() != "validators") return result;
  const Ref<XmlNodeList> children = validators->childNodes();
  if (!children) return result;
  const int32_t count = children->length();
  for (int32_t i = 0; i < count; ++i) {
    const Ref<XmlNode> child = children->item(i);
    if (child && child->nodeName() == kind) result = check(child, result);
  }
  return result;
}

// Read through the attribute node itself, so that an absent one raises 91.
std::string requiredAttribute(const Ref<XmlNode>& rule, const std::string& name) {
  return rule->attributes()->getNamedItem(name)->nodeValue().toText();
}

void takeErrorString(const Ref<XmlNode>& rule, std::string& errorString) {
  if (std::optional<std::string> text = platform::attributeValue(rule, "errorString")) {
    errorString = std::move(*text);
  }
}

bool isMatchAttribute(std::string_view name) {
  return name.size() >= 5 && equalsIgnoreCaseAscii(name.substr(0, 5), "MATCH");
}

}  // namespace

bool RangeValidator::Validate(const Ref<XmlNode>& ValidatorNode, const std::string& DataType,
                              const Variant& value) {
  dataTypeController_.DataType(Variant(DataType));
  return walkRules(ValidatorNode, "rangeValidation", [&](const Ref<XmlNode>& rule, bool) {
    Variant lower(int32_t{-1});
    Variant upper(int32_t{-1});
    const std::string min = requiredAttribute(rule, "min");
    const std::string max = requiredAttribute(rule, "max");
    if (!min.empty()) lower = Variant(min);
    if (!max.empty()) upper = Variant(max);
    takeErrorString(rule, errorString_);
    const std::string text = dataTypeController_.MatchType(value).toText();
    const std::string lowest = dataTypeController_.MatchType(lower).toText();
    const std::string highest = dataTypeController_.MatchType(upper).toText();
    return text >= lowest && text <= highest;
  });
}

void RangeValidator::describeMembers(MemberTableBuilder<RangeValidator>& table) {
  using Self = RangeValidator;
  table.function("Validate", &Self::Validate).TESSALINE_READONLY(std::string, ErrorString);
}

bool LengthValidator::Validate(const Ref<XmlNode>& ValidatorNode, const Variant& value) {
  return walkRules(ValidatorNode, "lengthValidation", [&](const Ref<XmlNode>& rule, bool) {
    Variant lower(int32_t{-1});
    Variant upper(int32_t{-1});
    const std::optional<std::string> min = platform::attributeValue(rule, "min");
    if (min && !min->empty()) lower = Variant(*min);
    const std::string max = requiredAttribute(rule, "max");
    if (!max.empty()) upper = Variant(max);
    takeErrorString(rule, errorString_);
    const auto length = static_cast<double>(characterCount(value.toText()));
    const double lowest = lower.toDouble();
    const double highest = upper.toDouble();
    return length >= lowest && length <= highest;
  });
}

void LengthValidator::describeMembers(MemberTableBuilder<LengthValidator>& table) {
  using Self = LengthValidator;
  table.function("Validate", &Self::Validate).TESSALINE_READONLY(std::string, ErrorString);
}

bool DiscreteValidator::Validate(const Ref<XmlNode>& ValidatorNode, const std::string& DataType,
                                 const Variant& value) {
  dataTypeController_.DataType(Variant(DataType));
  // Converted at the first comparison only: an element without MATCH attributes converts
  // nothing, and a long list doesn't convert the same value again and again.
  std::optional<std::string> text;
  return walkRules(ValidatorNode, "discreteValidation", [&](const Ref<XmlNode>& rule, bool result) {
    takeErrorString(rule, errorString_);
    const Ref<XmlNamedNodeMap> attributes = rule->attributes();
    const int32_t count = attributes->length();
    for (int32_t i = 0; i < count; ++i) {
      const Ref<XmlNode> attribute = attributes->item(i);
      if (!isMatchAttribute(attribute->nodeName())) continue;
      if (!text) text = dataTypeController_.MatchType(value).toText();
      result = *text == dataTypeController_.MatchType(attribute->nodeValue()).toText();
    }
    return result;
  });
}

void DiscreteValidator::describeMembers(MemberTableBuilder<DiscreteValidator>& table) {
  using Self = DiscreteValidator;
  table.function("Validate", &Self::Validate).TESSALINE_READONLY(std::string, ErrorString);
}

}  // namespace tessaline
