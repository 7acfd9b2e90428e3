#include "fuzz/targets.h"

#include <gif_lib.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>

#include "tessaline/entry/data_multi_line_text_box.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/frame/data_type_controller.h"
#include "tessaline/host/form.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/navigation/navigation.h"
#include "tessaline/platform/chart.h"
#include "tessaline/platform/chart/codecs.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/picture.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/platform/xml/form_file.h"
#include "tessaline/platform/xml/pugi_dom.h"
#include "tessaline/server/class_catalogue.h"
#include "tessaline/validation/validators.h"
#include "tessaline/values/dates.h"
#include "tessaline/values/locale.h"

namespace tessaline::fuzz {

namespace {

using namespace std::string_literals;

// A broken promise of the library (text it writes that it can't read back, say): the fuzzer
// reports it as a crash with this line.
[[noreturn]] void finding(const std::string& what) {
  std::fprintf(stderr, "finding: %s\n", what.c_str());
  std::abort();
}

// The services a host installs once on its thread; tests that run the targets have them
// already.
void ensureEnvironment() {
  if (!platform::hasBackend()) headless::install(".");
  if (!platform::hasPictureDecoder()) chart::install();
  regexp::install();
}

std::string_view text(const uint8_t* data, size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// ---- Definitions ----------------------------------------------------------------------------

std::vector<std::string> controlProgIds() {
  std::vector<std::string> ids;
  for (const CatalogueEntry& entry : catalogue()) {
    if (entry.identity->isControl() && entry.create) ids.push_back(entry.identity->progId());
  }
  return ids;
}

// Bytes taken from the front of the input, zero where it has run out.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : rest_(bytes) {}
  bool empty() const { return rest_.empty(); }
  uint8_t byte() {
    if (rest_.empty()) return 0;
    const auto b = static_cast<uint8_t>(rest_[0]);
    rest_.remove_prefix(1);
    return b;
  }
  template <class T>
  T raw() {
    T value{};
    const size_t n = std::min(sizeof value, rest_.size());
    std::memcpy(&value, rest_.data(), n);
    rest_.remove_prefix(n);
    return value;
  }
  std::string_view take(size_t n) {
    const std::string_view piece = rest_.substr(0, n);
    rest_.remove_prefix(piece.size());
    return piece;
  }
  // Up to the next 0 byte, which is dropped.
  std::string_view section() {
    const size_t stop = rest_.find('\0');
    const std::string_view piece = rest_.substr(0, stop);
    rest_.remove_prefix(stop == std::string_view::npos ? rest_.size() : stop + 1);
    return piece;
  }

 private:
  std::string_view rest_;
};

// A value as a device or a host hands it over: a kind byte, then the bytes of that kind. Raw
// doubles bring every not-a-number and both infinities; dates may lie far outside the calendar.
Variant deviceValue(Bytes& in, int depth = 0) {
  static const double kSpecial[] = {std::nan(""),
                                    -std::nan(""),
                                    std::numeric_limits<double>::infinity(),
                                    -std::numeric_limits<double>::infinity(),
                                    1.7e308,
                                    -1.7e308,
                                    4.9e-324,
                                    -0.0,
                                    1e300,
                                    65535.0};
  switch (in.byte() % 13) {
    case 0:
      return Variant(in.raw<double>());
    case 1:
      return Variant(kSpecial[in.byte() % std::size(kSpecial)]);
    case 2:
      return Variant(std::string(in.take(in.byte())));
    case 3:
      return Variant::null();
    case 4:
      return Variant();
    case 5:
      return Variant(in.raw<int16_t>());
    case 6:
      return Variant(in.raw<int32_t>());
    case 7:
      return Variant(in.raw<float>());
    case 8:
      return Variant(DateSerial{in.raw<double>()});
    case 9:
      return Variant((in.byte() & 1) != 0);
    case 10:
      return Variant(in.byte());
    case 11: {
      VariantArray array;
      array.lowerBound = static_cast<int8_t>(in.byte());
      const size_t count = depth < 2 ? in.byte() % 9 : 0;
      for (size_t i = 0; i < count; ++i) array.items.push_back(deviceValue(in, depth + 1));
      return Variant(std::move(array));
    }
    default:
      return Variant::nothing();
  }
}

// Byte 0 picks the control class, byte 1 how often its definitions come (bit 0: a second time,
// in the reverse order). Then four XML texts, each ended by a 0 byte: the data item, the
// enumeration, the gauge node and the trend (or wave form) definition; a text that is no XML is
// left out. The rest drives the control, an action byte at a time: device values, subscription
// values for its items, the values and arrays of the host-fed charts, Visible, the clock.
void definitions(const uint8_t* data, size_t size) {
  if (size < 2) return;
  ensureEnvironment();
  static const std::vector<std::string> classes = controlProgIds();
  Bytes in(text(data, size));
  const std::string& progId = classes[in.byte() % classes.size()];
  const bool twice = in.byte() & 1;
  Ref<platform::XmlNode> nodes[4];
  for (Ref<platform::XmlNode>& node : nodes) {
    try {
      node = xml::parseElement(in.section());
    } catch (const VbError&) {
    }
  }
  auto host = std::make_shared<host::ReferenceHost>();
  host->evaluate = [](const std::string& expression) { return expression.size() % 2 == 0; };
  const Ref<Object> control = CreateObject(progId);
  // The navigation has its own start and its own target (menus).
  const Ref<IDtmControl> frame = queryInterface<IDtmControl>(control);
  if (!frame) return;
  const auto attempt = [](auto action) {
    try {
      action();
    } catch (const VbError&) {
    }
  };
  frame->IDTMControl_Init(host);
  frame->IDtmControl_DtmContainer(host);
  auto& byName = dynamic_cast<Dispatchable&>(*control);
  auto dataControl = queryInterface<IDTMDataControl>(control);
  auto enumeration = queryInterface<IDTMEnumeration>(control);
  auto range = queryInterface<IDtmDataSubscriptionControlRange>(control);
  auto subscription = queryInterface<IDtmDataSubscriptionControl>(control);
  auto trend = queryInterface<IDtmTrendControl>(control);
  auto wave = queryInterface<IDtmWaveFormControl>(control);
  const std::function<void(const Ref<platform::XmlNode>&)> give[] = {
      [&](const auto& node) {
        if (byName.hasMember("IDTMDataControl_DataItemDef")) {
          byName.let("IDTMDataControl_DataItemDef", Variant(Ref<Object>(node)));
        }
      },
      [&](const auto& node) {
        if (enumeration) enumeration->IDTMEnumeration_EnumDataDef(node);
      },
      [&](const auto& node) {
        if (range) range->IDtmDataSubscriptionControlRange_GaugeDataDef(node);
      },
      [&](const auto& node) {
        if (trend) trend->IDtmTrendControl_TrendDataDef(node);
        if (wave) wave->IDtmWaveFormControl_TrendDataDef(node);
      },
  };
  for (size_t k = 0; k < 4; ++k) {
    if (nodes[k]) attempt([&] { give[k](nodes[k]); });
  }
  if (twice) {
    for (size_t k = 4; k-- > 0;) {
      if (nodes[k]) attempt([&] { give[k](nodes[k]); });
    }
  }
  std::vector<std::string> items;
  attempt([&] {
    if (!subscription) return;
    const Variant names = subscription->IDtmDataSubscriptionControl_SubscriptionItems();
    for (const Variant& item : names.toArray().items) items.push_back(item.toText());
  });
  // Each action draws, so a long run costs time without finding more.
  for (int step = 0; step < 48 && !in.empty(); ++step) {
    const uint8_t action = in.byte();
    attempt([&] {
      switch (action % 8) {
        case 0:
          if (dataControl) dataControl->IDTMDataControl_SetDeviceValue(deviceValue(in));
          break;
        case 1: {
          const uint8_t which = in.byte();
          const std::string item =
              items.empty() ? std::string(in.section()) : items[which % items.size()];
          const Variant value = deviceValue(in);
          if (subscription) {
            subscription->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, value);
          }
          break;
        }
        case 2: {
          const uint8_t which = in.byte();
          const Variant value = deviceValue(in);
          if (!trend) break;
          switch (which % 7) {
            case 0:
              trend->IDtmTrendControl_ItemValue(value);
              break;
            case 1:
              trend->IDtmTrendControl_RangeHighValue(value);
              break;
            case 2:
              trend->IDtmTrendControl_RangeLowValue(value);
              break;
            case 3:
              trend->IDtmTrendControl_AlertHighValue(value);
              break;
            case 4:
              trend->IDtmTrendControl_AlertLowValue(value);
              break;
            case 5:
              trend->IDtmTrendControl_LimitHighValue(value);
              break;
            default:
              trend->IDtmTrendControl_LimitLowValue(value);
              break;
          }
          break;
        }
        case 3: {
          const uint8_t which = in.byte();
          const Variant value = deviceValue(in);
          if (!wave) break;
          switch (which % 5) {
            case 0:
              wave->IDtmWaveFormControl_SetXAxisValues(value);
              break;
            case 1:
              wave->IDtmWaveFormControl_SetYAxisValues(value);
              break;
            case 2:
              wave->IDtmWaveFormControl_SetXUpperValue(value);
              break;
            case 3:
              wave->IDtmWaveFormControl_SetXLowerValue(value);
              break;
            default:
              wave->IDtmWaveFormControl_DrawChart();
              break;
          }
          break;
        }
        case 4:
          if (byName.hasMember("IDTMDataControl_Value")) {
            byName.let("IDTMDataControl_Value", deviceValue(in));
            byName.get("IDTMDataControl_Value");
          }
          break;
        case 5:
          frame->IDtmControl_Visible((in.byte() & 1) != 0);
          break;
        case 6:
          // The trends sample on their timers.
          headless::current().clock().advance((in.byte() % 16) * 0.25);
          break;
        default:
          if (byName.hasMember("IDTMDataControl_SetMode")) {
            byName.call("IDTMDataControl_SetMode",
                        {Variant(int32_t{100 + in.byte() % 8}), deviceValue(in)});
          }
          break;
      }
    });
  }
  // A timer's failure stays with the backend, as an event's would.
  headless::current().takeUnhandledErrors();
  SetSharedHost(nullptr);
}

// Values in the input's coding (see deviceValue).
std::string rawDouble(double value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}
std::string doubleValue(double value) { return '\0' + rawDouble(value); }
std::string textValue(std::string_view text) {
  return std::string{'\x02', static_cast<char>(text.size())} + std::string(text);
}
std::string specialValue(uint8_t which) { return std::string{'\x01', static_cast<char>(which)}; }

std::vector<std::string> definitionSeeds() {
  const std::string dataItem =
      R"(<dataItem name="Flow" type="float" formatString="5.2f" access="ReadWrite" )"
      R"(defaultValue="0" label="Flow_label" unit="1137" source="device" )"
      R"(description="Flow_description" help="Flow_help" validators="v"/>)";
  const std::string enumeration =
      R"(<enumeration><e name="Off" code="0" label="L_Off"/><e name="On" code="1" )"
      R"(includeIf=" Mode == 1 "/><e name="x"/><e code="2"/><unit name="bar" code="1137" )"
      R"(label="unit_bar"/></enumeration>)";
  const std::string gauge =
      R"(<gauge lowerRange="Low" upperRange="High" pointerColor="FF0000">)"
      R"(<zones type="low_limit"><zone name="Z1" color="00FF00"/><zone name="Z2" )"
      R"(color="FFFF00"/></zones></gauge>)";
  const std::string charts[] = {
      R"(<trend lowerRange="L" upperRange="U" isLegend="true"><trendSource color="FF0000" )"
      R"(label="F" itemName="F"/><rangeSource itemHiincludeIf="ab" color="00FF00" label="R" )"
      R"(itemNameHi="RH" itemNameLow="RL"/><alertSource color="0000FF" label="A" )"
      R"(itemNameLow="AL"/><limitSource color="E08A00" label="Limits" itemNameHi="Hi" )"
      R"(itemNameLow="Lo"/></trend>)",
      R"(<wave lowerRange="0" upperRange="1" lineColor="1F4E9A" isLegend="true"/>)",
  };
  // Values for the device, for each subscription item in turn, for the trend's values, and two
  // arrays for the wave form, with the clock moving between them.
  std::string values;
  values += '\x00' + textValue("12.5");
  values += '\x00' + specialValue(0);
  for (uint8_t item = 0; item < 6; ++item) {
    values += std::string{'\x01', static_cast<char>(item)} +
              (item % 2 ? doubleValue(item * 10.0) : textValue(std::to_string(item)));
  }
  values += std::string{'\x01', '\x00'} + specialValue(2);
  values += std::string{'\x06', '\x04'};
  for (uint8_t which = 0; which < 7; ++which) {
    values += std::string{'\x02', static_cast<char>(which)} + doubleValue(which - 3.0);
  }
  values += std::string{'\x02', '\x00'} + specialValue(1);
  values += std::string{'\x06', '\x08'};
  values += std::string{'\x03', '\x00', '\x0B', '\x00', '\x03'} + doubleValue(0) + doubleValue(1) +
            doubleValue(2);
  values += std::string{'\x03', '\x01', '\x0B', '\x00', '\x03'} + doubleValue(5) + specialValue(0) +
            textValue("7");
  values += std::string{'\x03', '\x04', '\x04'};
  values += std::string{'\x04', '\x08'} + rawDouble(25569.5);
  values += std::string{'\x07', '\x04'} + textValue("Out of range");
  values += std::string{'\x05', '\x00', '\x05', '\x01'};
  std::vector<std::string> seeds;
  const size_t classes = controlProgIds().size();
  for (size_t c = 0; c < classes; ++c) {
    for (const std::string& chart : charts) {
      std::string seed{static_cast<char>(c), static_cast<char>(c % 2)};
      for (const std::string& node : {dataItem, enumeration, gauge, chart}) seed += node + '\0';
      seeds.push_back(seed + values);
    }
  }
  return seeds;
}

// ---- Typing into a text box -------------------------------------------------------------------

// Byte 0: bit 0 the multi-line box, bits 1 to 3 the text type. Then the edit format up to a
// line end, then the user's actions: 1 paste the text up to the next 0, 2 backspace, 3 select
// (two bytes: start, length), 4 a device value up to the next 0, 5 6 7 Ctrl+C, Ctrl+X, Ctrl+V,
// 8 the focus comes, 9 it goes, 10 hot false; any other run of bytes is typed.
void typing(const uint8_t* data, size_t size) {
  if (size < 1) return;
  ensureEnvironment();
  auto host = std::make_shared<host::ReferenceHost>();
  host->validate = [](const std::string&, const Variant& value, std::string& errorText) {
    const bool valid = value.toText().size() % 3 != 0;
    if (!valid) errorText = "refused";
    return valid;
  };
  const bool multiLine = data[0] & 1;
  std::shared_ptr<TextEntry> box;
  if (multiLine) {
    box = DTMDataMultiLnTextBox::create();
  } else {
    box = DTMDataTextBox::create();
  }
  box->IDTMControl_Init(host);
  box->IDtmControl_DtmContainer(host);
  box->IDtmControl_Name("Item");
  box->TextType(static_cast<TextDataType>((data[0] >> 1) % 5));
  std::string_view rest = text(data + 1, size - 1);
  const size_t end = rest.find('\n');
  try {
    box->IDTMControlFormatter_EditFormat(std::string(rest.substr(0, end)));
  } catch (const VbError&) {
    SetSharedHost(nullptr);
    return;
  }
  rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  headless::TextBox& user = headless::user(box->Text1());
  const auto until0 = [&rest] {
    const size_t stop = rest.find('\0');
    std::string piece(rest.substr(0, stop));
    rest = stop == std::string_view::npos ? std::string_view() : rest.substr(stop + 1);
    return piece;
  };
  try {
    while (!rest.empty()) {
      const auto action = static_cast<uint8_t>(rest[0]);
      rest.remove_prefix(1);
      switch (action) {
        case 1:
          headless::current().clipboard().SetText(until0());
          user.paste();
          break;
        case 2:
          user.backspace();
          break;
        case 3:
          if (rest.size() >= 2) {
            user.select(static_cast<uint8_t>(rest[0]), static_cast<uint8_t>(rest[1]));
            rest.remove_prefix(2);
          }
          break;
        case 4:
          box->IDTMDataControl_SetDeviceValue(Variant(until0()));
          break;
        case 5:
        case 6:
        case 7:
          user.pressCtrl("CXV"[action - 5]);
          break;
        case 8:
          user.focus();
          break;
        case 9:
          user.blur();
          break;
        case 10:
          box->IDTMDataControl_Hot(false);
          break;
        default: {
          size_t run = 0;
          while (run < rest.size() && static_cast<uint8_t>(rest[run]) > 10) ++run;
          user.type(std::string(1, static_cast<char>(action)) + std::string(rest.substr(0, run)));
          rest.remove_prefix(run);
        }
      }
    }
    box->IDTMDataControl_Value();
  } catch (const VbError&) {
  }
  // A user's action that fails leaves its error with the backend, as an event would.
  headless::current().takeUnhandledErrors();
  SetSharedHost(nullptr);
}

std::vector<std::string> typingSeeds() {
  return {
      "\x00"
      "5.2f\n12.34\x02"
      "5"s,
      "\x00"
      "4d\n-123\x03\x00\x02"
      "99"s,
      "\x02"
      "8s\nabc.\x01xyz\x00"s,
      "\x06"
      "4x\n1fG\x05\x07"s,
      "\x01"
      "\nline\x04"
      "device\x00\x08"
      "more\x09\x0a"s,
      "\x00"
      "3.1F\n-1.5\x06\x01"
      "7.25\x00"s,
      "\x08"
      "10s\nGrüße 😀\x02\x02"s,
  };
}

// ---- Numbers and dates read from text --------------------------------------------------------

// Byte 0, bit 0: the locale with a decimal comma. The rest is the text. What the value model
// writes it must read back as the same text.
void numbers(const uint8_t* data, size_t size) {
  if (size < 1) return;
  setLocale((data[0] & 1) ? std::make_shared<FixedLocale>(",") : nullptr);
  const Variant value{std::string(text(data + 1, size - 1))};
  const auto attempt = [](auto conversion) {
    try {
      conversion();
    } catch (const VbError&) {
    }
  };
  attempt([&] {
    const double number = value.toDouble();
    const std::string once = Variant(number).toText();
    const std::string twice = Variant(Variant(once).toDouble()).toText();
    if (once != twice) finding("double text " + once + " reads back as " + twice);
  });
  attempt([&] {
    // Seven digits don't tell every Single from its neighbours (near 1E+28 two of them read
    // "1E+28"), so the text must read back to within a unit of its last digit.
    const float number = value.toSingle();
    const std::string once = Variant(number).toText();
    const float back = Variant(once).toSingle();
    if (std::isfinite(number) && !(std::fabs(back - number) <= std::fabs(number) * 1e-6f)) {
      finding("single text " + once + " reads back as " + Variant(back).toText());
    }
  });
  attempt([&] {
    const DateSerial date = value.toDate();
    const std::string once = Variant(date).toText();
    const std::string twice = Variant(Variant(once).toDate()).toText();
    if (once != twice) finding("date text " + once + " reads back as " + twice);
  });
  attempt([&] { value.toInt16(); });
  attempt([&] { value.toInt32(); });
  attempt([&] { value.toByte(); });
  attempt([&] { value.toBool(); });
  attempt([&] { formatGeneralNumber(value); });
  DataTypeController controller;
  for (const char* type : {"int16", "INT32", "float", "bool", "byte", "string"}) {
    attempt([&] { controller.MatchType(value, std::string(type)); });
  }
  setLocale(nullptr);
}

std::vector<std::string> numberSeeds() {
  return {
      "\x00"
      "12.5"s,
      "\x01"
      "12,5"s,
      "\x00"
      "-1,234.5e3"s,
      "\x00"
      "($1,234.50)"s,
      "\x00"
      "5-"s,
      "\x00"
      "&HFF"s,
      "\x00"
      "&O17"s,
      "\x00"
      "1/2/1970 6:00 PM"s,
      "\x00"
      "Jan 2, 1970"s,
      "\x00"
      "#TRUE#"s,
      "\x00"
      "1.7E+308"s,
      "\x00"
      "4.9E-324"s,
      "\x01"
      "1.234,5"s,
      "\x00"
      "12:30:15"s,
      "\x00"
      "2-Jan-70"s,
      "\x00"
      " - 5 "s};
}

// ---- Chart label formats and markup ----------------------------------------------------------

// Eight bytes of the value, a byte of choices, then the format text up to a 0 byte and the rest
// as the text of a title (read as markup). Both go through the chart API as the chart controls
// use it: the format on the axes and the meter's scale and through formatValue, the markup in a
// title, an axis title, a legend entry and a meter's text, and each chart is drawn small.
void labelFormats(const uint8_t* data, size_t size) {
  if (size < 9) return;
  ensureEnvironment();
  double value = 0;
  std::memcpy(&value, data, sizeof value);
  const uint8_t choices = data[8];
  std::string_view rest = text(data + 9, size - 9);
  const size_t stop = rest.find('\0');
  const Variant format{std::string(rest.substr(0, stop))};
  const Variant markup{stop == std::string_view::npos ? std::string()
                                                      : std::string(rest.substr(stop + 1))};
  const Variant picture((choices & 1) ? 4 : 0);
  const auto attempt = [](auto action) {
    try {
      action();
    } catch (const VbError&) {
    }
  };
  const Ref<platform::chart::ChartApi> api = platform::chart::createChartApi();
  attempt([&] {
    auto chart = api->XYChart(160, 120, 0xF4F4F4, -1, 0);
    chart->setPlotArea(40, 24, 100, 70, 0xFFFFFF, -1, -1, 0xCCCCCC, 0xCCCCCC);
    chart->addTitle(markup, "arialbd.ttf", 9, -65534, static_cast<int32_t>(0xFF000000), -1);
    chart->addLegend2(40, 4, 2, "arial.ttf", 8);
    auto y = chart->yAxis();
    y->setTitle(markup, "arialbd.ttf", 8, -65534);
    y->setLabelFormat(format);
    auto x = chart->xAxis();
    x->setLabelFormat(format);
    const double end = std::isfinite(value) && std::fabs(value) < 1e300 ? value : 1.0;
    if (choices & 2) {
      // Chart time: seconds from the year 1, around the value.
      x->setDateScale(end, end + 3600, 600, 0);
    } else if (choices & 4) {
      y->setLinearScale(std::min(0.0, end), std::max(0.0, end) + 1, 0, 0);
    }
    VariantArray samples;
    for (double k : {-1.0, 0.0, 0.5, 1.0}) samples.items.emplace_back(value * k);
    chart->addLineLayer(Variant(std::move(samples)), 0xFF0000, markup, 0);
    chart->formatValue(Variant(value), format);
    chart->makeChart2(picture);
  });
  attempt([&] {
    auto meter = api->AngularMeter(120, 90, api->meterBackgroundColor(90), 0, -1);
    meter->setMeter(60, 75, 50, -90, 90);
    const double upper = std::isfinite(value) && value != 0 ? value : 1.0;
    meter->setScale(0, upper, upper / 6, upper / 12, upper / 60);
    meter->setLabelFormat(format);
    meter->addPointer(Variant(value / 2), 0xCC0000, 0);
    meter->addText(60, 80, markup, "arial.ttf", 8, api->TextColor(), api->Center(), 0, false);
    meter->makeChart2(picture);
  });
}

std::vector<std::string> labelFormatSeeds() {
  std::vector<std::string> seeds;
  const double values[] = {12.345, -0.5, 63839011200.0, 1.7e308, 0};
  const char* formats[] = {"{value|2}",        "{value|2,.} bar",    "{value|e3}", "{value|P4}",
                           "{value|hh:nn:ss}", "{value|yyyy-mm-dd}", "{value|0}%", "{value|e5}"};
  const char* titles[] = {"Flow", "<*size=10*>{value}<*br*><*color=FF0000*>x<*/*>",
                          "<*bgColor=FFCCCC*><*font=arialbd.ttf*>Grüße 😀",
                          "<*block,valign=top*><*img=none.png*> <*/*>"};
  size_t k = 0;
  for (const char* format : formats) {
    std::string seed(8, '\0');
    std::memcpy(seed.data(), &values[k % std::size(values)], 8);
    seed += static_cast<char>(k % 8);
    seeds.push_back(seed + format + '\0' + titles[k % std::size(titles)]);
    ++k;
  }
  return seeds;
}

// ---- Pictures ----------------------------------------------------------------------------------

void pictures(const uint8_t* data, size_t size) {
  ensureEnvironment();
  const Variant encoded(
      Ref<Object>(std::make_shared<platform::ByteArray>(std::vector<uint8_t>(data, data + size))));
  const Ref<platform::Picture> picture = platform::PictureFromBytes(encoded);
  if (picture && static_cast<int64_t>(picture->image().pixels.size()) !=
                     int64_t{picture->Width()} * picture->Height()) {
    finding("a picture whose pixels don't fill its size");
  }
}

platform::PixelImage sampleImage(int32_t w, int32_t h, bool alpha) {
  platform::PixelImage image{w, h, {}};
  for (int32_t y = 0; y < h; ++y) {
    for (int32_t x = 0; x < w; ++x) {
      // Premultiplied: no channel above alpha.
      const uint32_t a = alpha ? static_cast<uint32_t>(32 + (x * 223) / w) : 255u;
      image.pixels.push_back(a << 24 | ((x * 40u) % a) << 16 | ((y * 60u) % a) << 8 | (a / 2));
    }
  }
  return image;
}

std::string toString(const std::vector<uint8_t>& v) { return {v.begin(), v.end()}; }

std::string gifSeed(bool interlace) {
  std::string out;
  int error = 0;
  GifFileType* g = EGifOpen(
      &out,
      [](GifFileType* g, const GifByteType* d, int n) {
        static_cast<std::string*>(g->UserData)->append(reinterpret_cast<const char*>(d), n);
        return n;
      },
      &error);
  const GifColorType colours[4] = {{0, 0, 0}, {255, 0, 0}, {0, 255, 0}, {0, 0, 255}};
  ColorMapObject* map = GifMakeMapObject(4, colours);
  EGifSetGifVersion(g, true);
  EGifPutScreenDesc(g, 8, 8, 8, 0, map);
  GraphicsControlBlock control{DISPOSAL_UNSPECIFIED, false, 0, 2};
  GifByteType extension[4];
  EGifGCBToExtension(&control, extension);
  EGifPutExtension(g, GRAPHICS_EXT_FUNC_CODE, 4, extension);
  EGifPutImageDesc(g, 1, 1, 6, 6, interlace, nullptr);
  GifPixelType line[6];
  for (int y = 0; y < 6; ++y) {
    for (int x = 0; x < 6; ++x) line[x] = static_cast<GifPixelType>((x + y) % 4);
    EGifPutLine(g, line, 6);
  }
  EGifCloseFile(g, &error);
  GifFreeMapObject(map);
  return out;
}

std::string iconOf(const std::string& image, uint8_t side, uint16_t bits) {
  std::string b = {0, 0, 1, 0, 1, 0, static_cast<char>(side), static_cast<char>(side), 0, 0, 1, 0};
  const auto le = [&b](uint32_t v, int n) {
    for (int i = 0; i < n; ++i) b += static_cast<char>(v >> (8 * i));
  };
  le(bits, 2);
  le(static_cast<uint32_t>(image.size()), 4);
  le(22, 4);
  return b + image;
}

// A bitmap of 4 by 2 pixels in eight-bit runs: a run of three, an absolute run, end of line, end.
std::string rleSeed() {
  const std::string pixels = {3, 1, 0, 3, 2, 1, 2, 0, 0, 0, 4, 1, 0, 1};
  std::string dib = {40, 0, 0, 0, 4, 0, 0, 0, 2, 0, 0, 0, 1, 0, 8, 0, 1, 0, 0, 0};
  dib += std::string(20, '\0');
  dib[32] = 3;  // three colours
  dib += std::string("\x00\x00\xFF\x00\x00\xFF\x00\x00\xFF\x00\x00\x00", 12);
  const uint32_t offset = 14 + static_cast<uint32_t>(dib.size());
  std::string file = "BM";
  const uint32_t total = offset + static_cast<uint32_t>(pixels.size());
  for (uint32_t v : {total, 0u, offset}) {
    for (int i = 0; i < 4; ++i) file += static_cast<char>(v >> (8 * i));
  }
  return file + dib + pixels;
}

std::vector<std::string> pictureSeeds() {
  const std::string png = toString(chart::encodePng(sampleImage(8, 8, true)));
  const std::string bmp = toString(chart::encodeBmp(sampleImage(5, 3, false)));
  // The DIB of an icon: the bitmap without its file header, twice the height for the mask.
  std::string dib = bmp.substr(14);
  dib[8] = 6;
  return {png,
          toString(chart::encodeJpeg(sampleImage(16, 16, false), 75)),
          bmp,
          rleSeed(),
          gifSeed(false),
          gifSeed(true),
          iconOf(png, 8, 32),
          iconOf(dib + std::string(8, '\0'), 5, 24)};
}

// ---- Saved forms
// ---------------------------------------------------------------------------------

// A form file's text, read strictly and leniently (as the studio reads it), loaded into
// controls as a host loads it, saved again, and read back.
void forms(const uint8_t* data, size_t size) {
  ensureEnvironment();
  const std::string_view input = text(data, size);
  xml::FormDocument document;
  std::vector<std::string> skipped;
  try {
    document = xml::parseForm(input, skipped);
  } catch (const VbError&) {
    return;
  }
  try {
    const xml::FormDocument strict = xml::parseForm(input);
    if (!skipped.empty() || strict.controls.size() != document.controls.size()) {
      finding("a form that the strict reading takes whole lost parts in the lenient one");
    }
  } catch (const VbError&) {
  }
  // Every control is made, so a huge form costs time without finding more.
  if (document.controls.size() > 64) return;
  std::vector<std::string> problems;
  const host::HostForm form = host::HostForm::load(document, problems);
  const std::string saved = xml::formText(form.save());
  try {
    xml::parseForm(saved);
  } catch (const VbError& error) {
    finding(std::string("a saved form that can't be read back: ") + error.what());
  }
}

std::vector<std::string> formSeeds() {
  return {
      R"(<form name="Pump" width="7200" height="4800">)"
      R"(<control progId="Tessaline.DTMDataTextBox" name="Pressure" left="120" top="120" )"
      R"(width="3480" height="360" tabIndex="0">)"
      R"(<property name="IDTMDataControl_Value" type="String" value="12.5"/>)"
      R"(<property name="IDtmControl_Enable" type="Boolean" value="False"/>)"
      R"(<property name="Font" type="Font" fontName="Arial" size="9.75" bold="True"/>)"
      R"(<property name="TextType" type="Long" value="0"/>)"
      R"(<property name="IDTMControlFormatter_EditFormat" type="String" value="5.2f"/>)"
      R"(</control>)"
      R"(<control progId="Tessaline.DTMDataComboBox" name="Mode" left="120" top="600" )"
      R"(width="3480" height="360" tabIndex="1">)"
      R"(<property name="IDTMDataControl_Hot" type="Boolean" value="True"/>)"
      R"(<property name="BackColor" type="Long" value="255"/></control>)"
      R"(<control progId="Tessaline.DTMDataGuageControl" name="G" left="0" top="0" )"
      R"(width="3113" height="2458" tabIndex="2">)"
      R"(<property name="DTMDataGaugeControl_LowerRange" type="String" value="0"/>)"
      R"(<property name="Moment" type="Date" value="1970-01-02 06:30:00"/>)"
      R"(<property name="Big" type="Double" value="1.7E+308"/>)"
      R"(<property name="Bytes" type="Array" lowerBound="1"><item type="Byte" value="7"/>)"
      R"(</property></control></form>)",
      R"(<form name="x" width="100" height="100"><control progId="Tessaline.DtmStaticLabel" )"
      R"(name="L" left="0" top="0" width="10" height="10" tabIndex="0">)"
      R"(<property name="IDTMControl_Caption" type="String" encoding="base64" value="AAEC"/>)"
      R"(</control></form>)",
  };
}

// ---- Menus ----------------------------------------------------------------------------------

// ---- Validators ----------------------------------------------------------------------------

// Byte 0 picks the data type and the kind of value; the rest is a validators element, put to
// the three validators.
void validators(const uint8_t* data, size_t size) {
  if (size < 1) return;
  ensureEnvironment();
  Ref<platform::XmlNode> node;
  try {
    node = xml::parseElement(text(data + 1, size - 1));
  } catch (const VbError&) {
    return;
  }
  const char* types[] = {"float", "int16", "INT32", "string", "byte", "bool", "date", ""};
  const std::string type = types[data[0] & 7];
  const Variant values[] = {Variant(5.0),    Variant("17"),       Variant(std::nan("")),
                            Variant::null(), Variant(),           Variant(1e308),
                            Variant("abc"),  Variant(int16_t{-3})};
  const Variant& value = values[(data[0] >> 3) & 7];
  try {
    RangeValidator().Validate(node, type, value);
  } catch (const VbError&) {
  }
  try {
    LengthValidator().Validate(node, value);
  } catch (const VbError&) {
  }
  try {
    DiscreteValidator().Validate(node, type, value);
  } catch (const VbError&) {
  }
}

std::vector<std::string> validatorSeeds() {
  return {
      std::string(1, '\0') +
          R"(<validators><rangeValidation min="1" max="10" error="E1"/></validators>)",
      std::string(1, '\x0B') + R"(<validators><lengthValidation min="2" max="4"/>)"
                               R"(<discreteValidation MATCH1="17" MATCH2="2"/></validators>)",
      std::string(1, '\x13') +
          R"(<validators><rangeValidation min="x" max="-1e999"/><discreteValidation/>)"
          R"(</validators>)",
  };
}

// Byte 0 is the host's answer to conditions (odd: true, also a failing host with bit 1); the rest
// is the menu's XML. The menu is built, every bar opened, every entry clicked and asked for.
void menus(const uint8_t* data, size_t size) {
  if (size < 1) return;
  ensureEnvironment();
  Ref<platform::XmlNode> node;
  try {
    node = xml::parseElement(text(data + 1, size - 1));
  } catch (const VbError&) {
    return;
  }
  auto host = std::make_shared<host::ReferenceHost>();
  const uint8_t answer = data[0];
  host->evaluate = [answer](const std::string& expression) -> bool {
    if ((answer & 2) && expression.size() % 3 == 0) throw VbError(err::Failed);
    return (answer & 1) != 0 || expression.size() % 2 == 0;
  };
  auto nav = DtmNavigation::create();
  nav->IDtmNavigation_Init(host, host);
  nav->IDtmNavigation_Load(node);
  auto& bar = headless::user(nav->NavigationBar());
  for (int32_t b = 1; b <= bar.BarCount(); ++b) {
    bar.click(b);
    auto* tree = dynamic_cast<headless::TreeView*>(bar.BarControl(b));
    if (!tree) continue;
    for (int32_t n = 1; n <= tree->NodeCount(); ++n) {
      tree->click(n);
      nav->IDtmNavigation_ActivateMenu(tree->NodeKey(n));
    }
  }
  nav->IDtmNavigation_ActivateMenu("");
  headless::current().takeUnhandledErrors();
}

std::vector<std::string> menuSeeds() {
  return {
      std::string(1, '\1') +
          R"(<navigation><menuGroup label="L" name="G" treename="t" icon="g.png">)"
          R"(<folder label="F" name="F" includeIf=" a "><menuItem label="I" name="I" )"
          R"(action="x"/></folder><menuItem label="J" name="J" action=""/></menuGroup>)"
          R"(<menuGroup label="M" name="H" treename="t" icon="..\..\h.png"/></navigation>)",
      std::string(1, '\2') +
          R"(<n><menuGroup label="L" name="G" treename="t" icon="g.png"><a label="A" name="A")"
          R"( includeIf="abc"><menuItem label="B" name="A" action="y"/></a><!-- c --></menuGroup>)"
          R"(<menuGroup label="L" name="G" treename="t" icon="g.png"/></n>)",
  };
}

const Target kTargets[] = {
    {"definitions", definitions, definitionSeeds},
    {"typing", typing, typingSeeds},
    {"numbers", numbers, numberSeeds},
    {"label_formats", labelFormats, labelFormatSeeds},
    {"pictures", pictures, pictureSeeds},
    {"forms", forms, formSeeds},
    {"menus", menus, menuSeeds},
    {"validators", validators, validatorSeeds},
};

}  // namespace

std::span<const Target> targets() { return kTargets; }

const Target* findTarget(std::string_view name) {
  for (const Target& target : kTargets) {
    if (name == target.name) return &target;
  }
  return nullptr;
}

}  // namespace tessaline::fuzz
