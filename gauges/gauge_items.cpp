#include "tessaline/gauges/gauge_items.h"

#include <cmath>

#include "tessaline/values/arithmetic.h"

namespace tessaline {

namespace {

// A required attribute, read the way the gauge node is read: through the attribute map, so a
// missing one fails like a member called through Nothing.
std::string required(const Ref<platform::XmlNode>& node, const std::string& name) {
  return node->attributes()->getNamedItem(name)->nodeValue().toText();
}

}  // namespace

std::string gaugeColor(const std::string& hexDigits) {
  return Variant(Variant("&H" + hexDigits).toInt32()).toText();
}

void GaugeItems::ReadGaugeNode(const Ref<platform::XmlNode>& node) {
  if (!node) return;
  LowerRange = required(node, "lowerRange");
  UpperRange = required(node, "upperRange");
  pointerColor = gaugeColor(required(node, "pointerColor"));
  const Ref<platform::XmlNode> zoneList = node->childNodes()->item(0);
  const int32_t zones = zoneList->childNodes()->length();
  zoneNames.redim(zones);
  zoneColors.redim(zones);
  zoneType = required(zoneList, "type");
  const Ref<platform::XmlNodeList> children = zoneList->childNodes();
  for (int32_t i = 0; i < zones; ++i) {
    const Ref<platform::XmlNode> zone = children->item(i);
    zoneNames[zoneCount] = required(zone, "name");
    zoneColors[zoneCount] = gaugeColor(required(zone, "color"));
    ++zoneCount;
  }
}

Variant GaugeItems::SubscriptionItems(const std::string& valueItem) {
  const int32_t zones = zoneNames.upperBound();
  zoneValues.redim(zones);
  zoneStarts.redim(zones);
  zoneEnds.redim(zones);
  VariantArray items;
  items.items = {Variant(Unit), Variant(LowerRange), Variant(UpperRange), Variant(valueItem)};
  for (int32_t i = 0; i < zones; ++i) items.items.emplace_back(zoneNames[i]);
  items.items.emplace_back("");
  return Variant(std::move(items));
}

void GaugeItems::take(const std::string& name, const Variant& value, const std::string& valueItem,
                      const std::function<void(const Variant&)>& ownValue) {
  if (name == LowerRange) {
    lowerValue = value;
  } else if (name == UpperRange) {
    upperValue = value;
  } else if (name == Unit) {
    unitValue = value;
  } else if (name == valueItem) {
    ownValue(value);
  }
  // An item may be a limit and a zone boundary at once, and several zones may share it.
  for (int32_t i = 0; i < zoneNames.upperBound(); ++i) {
    if (zoneNames[i] == name) zoneValues[i] = value;
  }
}

void GaugeItems::BuildZoneLimits() {
  for (int32_t i = 0; i < zoneValues.upperBound(); ++i) {
    zoneStarts[i] = i == 0 ? lowerValue : zoneEnds[i - 1];
    zoneEnds[i] = zoneValues[i];
  }
}

void DynamicRange::restart() {
  previousLower = Variant(int16_t{0});
  previousUpper = Variant(int16_t{0});
  rangeInitialized = false;
}

void DynamicRange::CalculateRange(const Variant& value, const std::string& name, Logger& logger) {
  const double v = value.toDouble();
  // Arithmetic that leaves the doubles fails with 6, as the platform's does, before anything
  // is kept.
  const double lower = v == 0 ? -2.0 : checkedSub(v, std::fabs(v) * 0.15);
  const double upper = v == 0 ? 2.0 : checkedAdd(v, std::fabs(v) * 0.15);
  const Variant candidateLower(lower);
  const Variant candidateUpper(upper);

  if (!rangeInitialized) {
    logger.DebugL(" GAUGE Prev Value Initialized for " + name);
    previousLower = currentLower = candidateLower;
    previousUpper = currentUpper = candidateUpper;
    rangeInitialized = true;
    return;
  }

  const std::string lowerValues =
      " Prev Value= " + previousLower.toText() + " Currnet Value= " + candidateLower.toText();
  if (previousLower.toDouble() < lower) {
    logger.DebugL(" GAUGE Prev Lower value taken for " + name + lowerValues);
    currentLower = previousLower;
  } else {
    logger.DebugL(" GAUGE Current Lower value taken for " + name + lowerValues);
    currentLower = candidateLower;
    previousLower = currentLower;
  }

  const std::string upperValues =
      "Prev Value = " + previousUpper.toText() + " Currnet Value= " + candidateUpper.toText();
  if (previousUpper.toDouble() > upper) {
    logger.DebugL(" GAUGE Prev Upper value taken for " + name + upperValues);
    currentUpper = previousUpper;
  } else {
    logger.DebugL(" GAUGE Current Upper value taken for " + name + upperValues);
    currentUpper = candidateUpper;
    previousUpper = currentUpper;
  }

  // Upper first: a limit that lies five magnitudes of the value away snaps back.
  const double fiveTimes = std::fabs(checkedMul(v, 5));
  if (std::fabs(checkedSub(currentUpper.toDouble(), v)) >= fiveTimes) {
    currentUpper = previousUpper = candidateUpper;
  }
  if (std::fabs(checkedSub(currentLower.toDouble(), v)) >= fiveTimes) {
    currentLower = previousLower = candidateLower;
  }
}

}  // namespace tessaline
