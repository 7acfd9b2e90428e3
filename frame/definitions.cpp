#include "tessaline/frame/definitions.h"

#include "tessaline/frame/logger.h"
#include "tessaline/values/text.h"

namespace tessaline {

namespace {

struct AttributeField {
  const char* attribute;
  std::string DeviceDataItem::*field;
};

AttributeField fieldOf(DataItemAttribute which) {
  switch (which) {
    case DataItemAttribute::Name:
      return {"name", &DeviceDataItem::name};
    case DataItemAttribute::Type:
      return {"type", &DeviceDataItem::Type};
    case DataItemAttribute::FormatString:
      return {"formatString", &DeviceDataItem::FormatString};
    case DataItemAttribute::Access:
      return {"access", &DeviceDataItem::Access};
    case DataItemAttribute::DefaultValue:
      return {"defaultValue", &DeviceDataItem::DefaultValue};
    case DataItemAttribute::Label:
      return {"label", &DeviceDataItem::Label};
    case DataItemAttribute::Unit:
      return {"unit", &DeviceDataItem::Unit};
    case DataItemAttribute::Source:
      return {"source", &DeviceDataItem::Source};
    case DataItemAttribute::Description:
      return {"description", &DeviceDataItem::Description};
    case DataItemAttribute::Help:
      return {"help", &DeviceDataItem::Help};
    case DataItemAttribute::Validators:
      break;
  }
  return {"validators", nullptr};
}

}  // namespace

bool readDataItem(const Ref<Object>& definition, DeviceDataItem& item,
                  DataItemAttributes attributes) {
  const Ref<platform::XmlNode> node = platform::asXmlNode(definition);
  if (!node || node->nodeName() != "dataItem") return false;
  const Ref<platform::XmlNamedNodeMap> map = node->attributes();
  if (!map) return false;
  for (DataItemAttribute which : attributes) {
    const AttributeField field = fieldOf(which);
    const Ref<platform::XmlNode> attribute = map->getNamedItem(field.attribute);
    if (!attribute) continue;
    if (field.field) {
      item.*field.field = attribute->nodeValue().toText();
    } else {
      item.ValidatorNode = attribute;
    }
  }
  return true;
}

std::optional<VbArray<EnumData>> readEnumeration(const Ref<Object>& definition, IncludeIf rule,
                                                 const Ref<GenericDtm>& host) {
  const Ref<platform::XmlNode> node = platform::asXmlNode(definition);
  if (!node || node->nodeName() != "enumeration") return std::nullopt;
  const Ref<platform::XmlNodeList> children = node->childNodes();
  if (!children) return std::nullopt;

  const int32_t count = children->length();
  VbArray<EnumData> table;
  table.redim(count);
  int32_t next = 0;
  for (int32_t i = 0; i < count; ++i) {
    const Ref<platform::XmlNode> child = children->item(i);
    if (rule == IncludeIf::Honoured) {
      if (const auto condition = platform::attributeValue(child, "includeIf")) {
        const std::string expression(trimSpaces(*condition));
        const bool included = host->EvaluateCondition(expression);
        if (!expression.empty() && !included) continue;
      }
    }
    const auto name = platform::attributeValue(child, "name");
    const auto code = platform::attributeValue(child, "code");
    if (!name || !code) continue;
    EnumData& entry = table[next++];
    entry.name = *name;
    entry.code = *code;
    entry.Label = platform::attributeValue(child, "label").value_or(*name);
    entry.Local = LocalizeText(entry.Label);
  }
  if (rule == IncludeIf::Honoured) table.redimPreserve(next);
  return table;
}

bool hasEnumData(const VbArray<EnumData>& table) { return table.usedCount() > 0; }

}  // namespace tessaline
