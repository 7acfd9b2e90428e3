#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "tessaline/frame/logger.h"
#include "tessaline/platform/xml.h"
#include "tessaline/values/variant.h"
#include "tessaline/values/vb_array.h"

// What the gauges learn from their host besides the value: the items they subscribe to, the
// limits of the scale and the coloured zones. Failures travel to the caller, which guards them.
namespace tessaline {

// A colour of the gauge node: hexadecimal digits without prefix, read through "&H" as a
// number and kept as decimal text.
std::string gaugeColor(const std::string& hexDigits);

// The items of a gauge whose limits come from two further items: the gauge node's names and
// colours, and the last value of each item.
class GaugeItems {
 public:
  // Item names; the three are the control's persisted properties.
  std::string Unit;
  std::string LowerRange;
  std::string UpperRange;
  // Decimal text after the node is read; "&H0" from IDTMControl_Init.
  std::string pointerColor = "&H0";
  std::string zoneType;
  // One slot more than zones; the spare slot stays empty.
  VbArray<std::string> zoneNames;
  VbArray<std::string> zoneColors;
  // The next free index while zones are read; only IDTMControl_Init clears it.
  int16_t zoneCount = 0;
  Variant lowerValue;
  Variant upperValue;
  Variant unitValue;
  VbArray<Variant> zoneValues;
  VbArray<Variant> zoneStarts;
  VbArray<Variant> zoneEnds;

  // Reads the gauge node (its element names aren't looked at). Every attribute is required: a
  // missing one, or a missing zone list, stops the reading there with 91, and what was read
  // stays. Zones past the list's size fail with 9.
  void ReadGaugeNode(const Ref<platform::XmlNode>& node);
  // The wanted items: unit, lower limit, upper limit, the value's item, one per zone, and an
  // empty spare slot. Makes the zone values anew: values received so far are forgotten. 9
  // before a gauge node was read.
  Variant SubscriptionItems(const std::string& valueItem);
  // Files one item's value. The gauge's own item goes to `ownValue` (which stores and draws);
  // then every zone of that item takes it too. A zone value before the item list was read
  // fails with 9 and is lost.
  void take(const std::string& name, const Variant& value, const std::string& valueItem,
            const std::function<void(const Variant&)>& ownValue);
  // The zones tile the scale from the lower limit upward, each ending at its own item's value.
  void BuildZoneLimits();
};

// The scale of a gauge without configured limits: each value proposes limits 15 percent of its
// magnitude away; the widest seen are kept, but a limit that lies too far from the value
// snaps back.
class DynamicRange {
 public:
  Variant currentLower;
  Variant currentUpper;
  Variant previousLower = Variant(int16_t{0});
  Variant previousUpper = Variant(int16_t{0});
  bool rangeInitialized = false;

  // What IDTMControl_Init does: the previous limits to 0, the range not yet started.
  void restart();
  // Works the limits out from a new value, logging its steps through DebugL. A value that is
  // no number fails to the caller with the limits as they were.
  void CalculateRange(const Variant& value, const std::string& name, Logger& logger);
};

}  // namespace tessaline
