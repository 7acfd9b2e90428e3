#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "tessaline/frame/host.h"
#include "tessaline/platform/xml.h"
#include "tessaline/values/object.h"
#include "tessaline/values/vb_array.h"

// What a control learns from the definition nodes that its host hands it: a dataItem and an
// enumeration. Reading never changes a node and never reports a missing attribute.
namespace tessaline {

enum class AccessType : int32_t { ReadOnly = 0, WriteOnly = 1, ReadWrite = 2 };
// The character class of a text box's input.
enum class TextDataType : int32_t {
  Numbers = 0,
  AlphaNumeric = 1,
  Alphabets = 2,
  Latin1 = 3,
  PackedAscii = 4
};
// Published for the host; the library itself doesn't use it.
enum class Mode : int32_t { ValueChanged = 0, DeviceFailure = 1 };
enum class AppearanceValues : int32_t { Flat = 0, ThreeD = 1 };
enum class AlignmentPropertyValues : int32_t { LeftJustify = 0, RightJustify = 1, Center = 2 };
enum class BorderStylePropertyValues : int32_t { None = 0, FixedSingle = 1 };

// Values of IDTMStatusControl_Mode.
namespace StatusMode {
inline constexpr int32_t None = 0;
// Nothing to show either, with the text kept: what persisted status icons start with.
inline constexpr int32_t Quiet = 100;
inline constexpr int32_t ReadError = 101;
inline constexpr int32_t ValueChanged = 102;
inline constexpr int32_t WriteError = 103;
inline constexpr int32_t InvalidValue = 104;
inline constexpr int32_t DataNotLoaded = 105;
inline constexpr int32_t DynamicValue = 106;
}  // namespace StatusMode

// The record of one dataItem: its attributes as text, and the "validators" attribute node.
struct DeviceDataItem {
  std::string name;
  std::string Type;
  std::string FormatString;
  std::string Access;
  std::string DefaultValue;
  std::string Label;
  std::string Unit;
  std::string Source;
  std::string Description;
  std::string Help;
  Ref<platform::XmlNode> ValidatorNode;
};

// The attributes of a dataItem, in the order in which they are read.
enum class DataItemAttribute {
  Name,
  Type,
  FormatString,
  Access,
  DefaultValue,
  Label,
  Unit,
  Source,
  Description,
  Validators,
  Help,
};
using DataItemAttributes = std::span<const DataItemAttribute>;

// What each family of controls reads.
inline constexpr DataItemAttribute kAllElevenAttributes[] = {
    DataItemAttribute::Name,       DataItemAttribute::Type,         DataItemAttribute::FormatString,
    DataItemAttribute::Access,     DataItemAttribute::DefaultValue, DataItemAttribute::Label,
    DataItemAttribute::Unit,       DataItemAttribute::Source,       DataItemAttribute::Description,
    DataItemAttribute::Validators, DataItemAttribute::Help,
};
inline constexpr DataItemAttributes kFirstTenAttributes =
    DataItemAttributes(kAllElevenAttributes).first(10);
inline constexpr DataItemAttribute kHelpAndFormatString[] = {DataItemAttribute::Help,
                                                             DataItemAttribute::FormatString};

// Reads a dataItem into the record, attribute by attribute in the order given. An absent
// attribute leaves its field as it was, so a second dataItem keeps what the first set and
// the second lacks. A node of another name (with case), or Nothing, reads nothing and
// answers false; an object that is no XML node raises 13.
bool readDataItem(const Ref<Object>& definition, DeviceDataItem& item,
                  DataItemAttributes attributes);

// One entry of an enumeration.
struct EnumData {
  std::string name;
  std::string code;
  std::string Label;
  std::string Local;
  std::string FunctionId;
  std::string Image;
};

// How a control reads an enumeration.
enum class IncludeIf {
  // The list controls without conditions: the table is sized to the number of children, and
  // a child without "name" or "code" leaves an empty slot at the end.
  Ignored,
  // The combo boxes: the host evaluates each child's trimmed "includeIf" (also an empty one,
  // whose answer doesn't count), and the kept entries are compacted into a table of exactly
  // entries plus one slots.
  Honoured,
};

// Reads an enumeration: one entry per child that has "name" and "code", its Label the
// "label" attribute or the name, its Local the localized Label. The table has one empty slot
// beyond the entries. Nothing, a node of another name or one without children answers no
// table: the control keeps the one it had. The host is asked only for includeIf.
std::optional<VbArray<EnumData>> readEnumeration(const Ref<Object>& definition, IncludeIf rule,
                                                 const Ref<GenericDtm>& host);

// True when the table has bounds and its upper bound is above 0.
bool hasEnumData(const VbArray<EnumData>& table);

}  // namespace tessaline
