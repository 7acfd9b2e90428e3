#include "apps/studio/session.h"

#include <algorithm>
#include <cmath>

#include "tessaline/frame/interfaces.h"
#include "tessaline/validation/validators.h"
#include "tessaline/values/text.h"

namespace tessaline::studio {

namespace {

bool numericType(const Ref<platform::XmlNode>& dataItem) {
  if (!dataItem) return false;
  const std::string type = platform::attributeValue(dataItem, "type").value_or("");
  return type == "float" || type == "int16" || type == "int32" || type == "byte";
}

// The range of a numeric item, compared as numbers: the range validator compares text, so that
// "35" would lie outside 0 to 250 and a user would be told a right value is wrong. The rules are
// read as that validator reads them: the last one decides, an absent limit raises 91 and one
// that is no number 13. A value that is no number lies in no range.
bool numericRange(const Ref<platform::XmlNode>& validators, const Variant& value,
                  std::string& errorString) {
  double number = std::nan("");
  try {
    number = value.toDouble();
  } catch (const VbError&) {
  }
  bool result = true;
  const Ref<platform::XmlNodeList> rules = validators->childNodes();
  for (int32_t i = 0; i < rules->length(); ++i) {
    const Ref<platform::XmlNode> rule = rules->item(i);
    if (!rule || rule->nodeName() != "rangeValidation") continue;
    const double low = rule->attributes()->getNamedItem("min")->nodeValue().toDouble();
    const double high = rule->attributes()->getNamedItem("max")->nodeValue().toDouble();
    if (auto text = platform::attributeValue(rule, "errorString")) errorString = *text;
    result = number >= low && number <= high;
  }
  return result;
}

// The status modes that a "status" parameter goes through, one a period.
constexpr int32_t kStatusCycle[] = {0, 106, 0, 101, 0, 105};

}  // namespace

Session::Session(DevicePackage package)
    : package_(std::move(package)), host_(std::make_shared<host::ReferenceHost>()) {
  host_->translations = package_.texts;
  host_->baseFolder = package_.directory;
  host_->validate = [this](const std::string& item, const Variant& value, std::string& errorText) {
    return validate(item, value, errorText);
  };
  host_->evaluate = [this](const std::string& expression) { return evaluate(expression); };
  for (const Parameter& p : package_.parameters) host_->device.define(p.name, p.initial);
}

Session::~Session() {
  shown_.close();
  for (auto& [index, open] : kept_) open.close();
  SetSharedHost(nullptr);
}

void Session::OpenForm::close() {
  bound.clear();
  form.reset();
}

void Session::tell(std::vector<std::string>& problems, const std::string& problem) {
  if (told_.insert(problem).second) problems.push_back(problem);
}

std::vector<size_t> Session::keptForms() const {
  std::vector<size_t> indexes;
  for (const auto& [index, open] : kept_) indexes.push_back(index);
  return indexes;
}

void Session::openForm(size_t index, std::vector<std::string>& problems) {
  if (formIndex_ == index && shown_.form) return;
  if (formIndex_ && shown_.form && !hotParameters(shown_).empty()) {
    kept_[*formIndex_] = std::move(shown_);
  } else {
    shown_.close();
  }
  shown_ = {};
  formIndex_.reset();
  if (index >= package_.forms.size()) {
    tell(problems, "the package has no form " + std::to_string(index + 1));
    return;
  }
  formIndex_ = index;
  if (auto found = kept_.find(index); found != kept_.end()) {
    shown_ = std::move(found->second);
    kept_.erase(found);
    return;
  }
  if (package_.forms[index].loaded) load(index, problems);
}

void Session::load(size_t index, std::vector<std::string>& problems) {
  const FormEntry& entry = package_.forms[index];
  std::vector<std::string> found;
  shown_.form = std::make_unique<host::HostForm>(
      host::HostForm::load(entry.document, found, entry.title + " (" + entry.file + ")"));
  for (const host::PlacedControl& placed : shown_.form->controls()) {
    if (auto frame = queryInterface<IDtmControl>(placed.control)) {
      frame->IDTMControl_Init(host_);
      frame->IDtmControl_DtmContainer(host_);
    }
  }
  for (const Binding& binding : entry.bindings) {
    ControlFrame* control = shown_.form->find(binding.control);
    if (!control) {
      found.push_back(entry.title + ": no control " + binding.control + " on the form");
      continue;
    }
    Bound bound{control, binding.parameter, {}, {}, nullptr};
    try {
      bind(bound, binding);
    } catch (const VbError& error) {
      found.push_back(entry.title + ": " + binding.control + " can't be bound (" + error.what() +
                      ")");
      continue;
    }
    shown_.bound.push_back(std::move(bound));
  }
  for (Bound& bound : shown_.bound) offer(bound, true, problems);
  for (const std::string& problem : found) tell(problems, problem);
}

void Session::bind(Bound& bound, const Binding& binding) {
  const Parameter* parameter = package_.parameter(binding.parameter);
  const Ref<Object> control = bound.control->shared_from_this();
  if (bound.control->hasMember("IDtmControl_Name") && parameter) {
    bound.control->let("IDtmControl_Name", Variant(parameter->name));
  }
  if (parameter && parameter->dataItem && bound.control->hasMember("IDTMDataControl_DataItemDef")) {
    bound.control->let("IDTMDataControl_DataItemDef", Variant(Ref<Object>(parameter->dataItem)));
  }
  if (auto enumeration = queryInterface<IDTMEnumeration>(control);
      enumeration && parameter && parameter->enumeration) {
    enumeration->IDTMEnumeration_EnumDataDef(parameter->enumeration);
  }
  if (auto range = queryInterface<IDtmDataSubscriptionControlRange>(control);
      range && !binding.gauge.empty() && package_.gauges.count(binding.gauge)) {
    range->IDtmDataSubscriptionControlRange_GaugeDataDef(package_.gauges.at(binding.gauge));
  }
  if (!binding.chart.empty() && package_.charts.count(binding.chart)) {
    bound.chart = package_.charts.at(binding.chart);
    const auto text = [&](const char* name) {
      const auto attribute = bound.chart->attributes()->getNamedItem(name);
      return attribute ? attribute->nodeValue().toText() : std::string();
    };
    if (auto trend = queryInterface<IDtmTrendControl>(control)) {
      trend->IDtmTrendControl_TrendDataDef(bound.chart);
      trend->IDtmTrendControl_XLabel(host_->GetLocalizedString(text("title")));
      trend->IDtmTrendControl_YLabel(text("unit"));
    }
    if (auto wave = queryInterface<IDtmWaveFormControl>(control)) {
      wave->IDtmWaveFormControl_TrendDataDef(bound.chart);
      wave->IDtmWaveFormControl_title(host_->GetLocalizedString(text("title")));
      wave->IDtmWaveFormControl_XLabel(text("xLabel"));
      wave->IDtmWaveFormControl_YLabel(text("yLabel"));
      wave->IDtmWaveFormControl_SetXLowerValue(Variant(0));
      wave->IDtmWaveFormControl_SetXUpperValue(Variant(text("span")));
    }
  }
  if (auto subscription = queryInterface<IDtmDataSubscriptionControl>(control)) {
    const Variant items = subscription->IDtmDataSubscriptionControl_SubscriptionItems();
    if (items.isArray()) {
      for (const Variant& item : items.toArray().items) {
        const std::string name = item.toText();
        if (!name.empty()) bound.items.emplace(name, Variant());
      }
    }
  }
}

// The device's value of the bound parameter to its control, where it changed (or always, when
// forced); a control that shows an edit keeps it, as a host that reads the device does.
void Session::push(Bound& bound, bool force) {
  const Ref<Object> control = bound.control->shared_from_this();
  const auto read = [this](const std::string& name) -> std::optional<Variant> {
    if (!package_.parameter(name)) return std::nullopt;
    return host_->device.read(name);
  };
  if (auto subscription = queryInterface<IDtmDataSubscriptionControl>(control)) {
    for (auto& [item, last] : bound.items) {
      const auto value = read(item);
      if (!value || (!force && *value == last)) continue;
      last = *value;
      subscription->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, *value);
    }
    if (bound.chart) pushTrend(bound);
    return;
  }
  if (bound.chart) {
    pushWave(bound);
    return;
  }
  const auto value = read(bound.parameter);
  if (!value || (!force && *value == bound.shown)) return;
  bound.shown = *value;
  if (auto status = queryInterface<IDTMStatusControl>(control)) {
    try {
      status->IDTMStatusControl_Mode(value->toInt32());
    } catch (const VbError&) {
    }
  } else if (auto data = queryInterface<IDTMDataControl>(control)) {
    if (!data->IDTMDataControl_Hot()) data->IDTMDataControl_SetDeviceValue(*value);
  } else if (bound.control->hasMember("IDTMDataControl_SetDeviceValue")) {
    bound.control->call("IDTMDataControl_SetDeviceValue", {*value});
  }
}

// The items are read from the definition, as a host does: the bands' values first, the plotted
// item's last, since that one redraws.
void Session::pushTrend(Bound& bound) {
  auto trend = queryInterface<IDtmTrendControl>(bound.control->shared_from_this());
  if (!trend) return;
  const auto item = [&](const char* source, const char* attribute) -> std::optional<Variant> {
    const auto node = bound.chart->selectSingleNode(source);
    const auto name = node ? node->attributes()->getNamedItem(attribute) : nullptr;
    if (!name || !package_.parameter(name->nodeValue().toText())) return std::nullopt;
    return host_->device.read(name->nodeValue().toText());
  };
  if (auto v = item("rangeSource", "itemNameHi")) trend->IDtmTrendControl_RangeHighValue(*v);
  if (auto v = item("rangeSource", "itemNameLow")) trend->IDtmTrendControl_RangeLowValue(*v);
  if (auto v = item("limitSource", "itemNameHi")) trend->IDtmTrendControl_LimitHighValue(*v);
  if (auto v = item("limitSource", "itemNameLow")) trend->IDtmTrendControl_LimitLowValue(*v);
  if (auto v = item("alertSource", "itemNameHi")) trend->IDtmTrendControl_AlertHighValue(*v);
  if (auto v = item("alertSource", "itemNameLow")) trend->IDtmTrendControl_AlertLowValue(*v);
  if (auto v = item("trendSource", "itemName")) trend->IDtmTrendControl_ItemValue(*v);
}

// A vibration recorded over `span` milliseconds: two tones and a decaying ring, its phase moving
// with the session's time.
void Session::pushWave(Bound& bound) {
  auto wave = queryInterface<IDtmWaveFormControl>(bound.control->shared_from_this());
  if (!wave) return;
  const auto number = [&](const char* name, double fallback) {
    const auto attribute = bound.chart->attributes()->getNamedItem(name);
    try {
      return attribute ? attribute->nodeValue().toDouble() : fallback;
    } catch (const VbError&) {
      return fallback;
    }
  };
  const int points = static_cast<int>(std::clamp(number("points", 2000), 2.0, 200000.0));
  const double span = number("span", 200);
  VariantArray xs, ys;
  xs.items.reserve(static_cast<size_t>(points));
  ys.items.reserve(static_cast<size_t>(points));
  for (int i = 0; i < points; ++i) {
    const double ms = span * i / (points - 1);
    const double ring = std::fmod(ms + time_ * 40, 50.0);
    xs.items.emplace_back(ms);
    ys.items.emplace_back(4 * std::sin(ms * 0.31 + time_) + 1.5 * std::sin(ms * 2.9) +
                          0.8 * std::sin(ms * 37.0) * std::exp(-ring / 12));
  }
  wave->IDtmWaveFormControl_SetXAxisValues(Variant(std::move(xs)));
  wave->IDtmWaveFormControl_SetYAxisValues(Variant(std::move(ys)));
  wave->IDtmWaveFormControl_DrawChart();
}

Variant Session::moving(const Parameter& p) const {
  if (p.behaviour == "status") {
    const auto step = static_cast<int64_t>(time_ / std::max(p.period, 1.0));
    return Variant(kStatusCycle[step % std::size(kStatusCycle)]);
  }
  const double middle = (p.low + p.high) / 2, swing = (p.high - p.low) * 0.4;
  const double value = middle + swing * std::sin(2 * M_PI * time_ / std::max(p.period, 1.0)) +
                       p.noise * std::sin(time_ * 7.31 + 1.7) * std::cos(time_ * 3.17);
  return Variant(std::round(value * 100) / 100);
}

void Session::tick(double seconds) {
  time_ += seconds;
  for (const Parameter& p : package_.parameters) {
    if (p.behaviour == "process" || p.behaviour == "status")
      host_->device.define(p.name, moving(p));
  }
  std::vector<std::string> problems;
  for (Bound& bound : shown_.bound) offer(bound, false, problems);
  for (auto& [index, open] : kept_) {
    for (Bound& bound : open.bound) offer(bound, false, problems);
  }
  if (onProblem) {
    for (const std::string& problem : problems) onProblem(problem);
  }
}

// A control refuses a value as a failed call to its host: told once, and the others go on.
void Session::offer(Bound& bound, bool force, std::vector<std::string>& problems) {
  try {
    push(bound, force);
  } catch (const VbError& error) {
    tell(problems,
         bound.parameter + ": a control refused the device's value (" + error.what() + ")");
  }
}

std::vector<std::string> Session::hotParameters(OpenForm& open) {
  std::vector<std::string> hot;
  for (Bound& bound : open.bound) {
    auto data = queryInterface<IDTMDataControl>(bound.control->shared_from_this());
    if (data && data->IDTMDataControl_Hot() && package_.parameter(bound.parameter)) {
      hot.push_back(bound.parameter);
    }
  }
  return hot;
}

std::vector<std::string> Session::unappliedEdits() {
  std::vector<std::string> edits;
  const auto add = [&](size_t index, OpenForm& open) {
    for (const std::string& parameter : hotParameters(open)) {
      edits.push_back(package_.forms[index].title + ": " + parameter);
    }
  };
  if (formIndex_) add(*formIndex_, shown_);
  for (auto& [index, open] : kept_) add(index, open);
  return edits;
}

std::vector<std::string> Session::write(OpenForm& open) {
  std::vector<std::string> written;
  for (Bound& bound : open.bound) {
    auto data = queryInterface<IDTMDataControl>(bound.control->shared_from_this());
    if (!data || !data->IDTMDataControl_Hot() || !package_.parameter(bound.parameter)) continue;
    Variant value = data->IDTMDataControl_Value();
    const Parameter& parameter = *package_.parameter(bound.parameter);
    // The device keeps a number as a number.
    if (parameter.initial.isNumeric()) {
      try {
        value = Variant(value.toDouble());
      } catch (const VbError&) {
      }
    }
    host_->device.write(bound.parameter, value);
    bound.shown = value;
    data->IDTMDataControl_Hot(false);
    written.push_back(bound.parameter + " = " + value.toText());
  }
  return written;
}

std::vector<std::string> Session::apply() {
  std::vector<std::string> written = write(shown_);
  for (auto& [index, open] : kept_) {
    for (std::string& line : write(open)) written.push_back(std::move(line));
    open.close();
  }
  kept_.clear();
  return written;
}

void Session::discard(std::vector<std::string>& problems) {
  for (auto& [index, open] : kept_) open.close();
  kept_.clear();
  if (!formIndex_ || !shown_.form) return;
  shown_.close();
  load(*formIndex_, problems);
}

bool Session::validate(const std::string& item, const Variant& value, std::string& errorText) {
  const Parameter* parameter = package_.parameter(item);
  if (!parameter || !parameter->validators) return true;
  try {
    return check(*parameter, value, errorText);
  } catch (const VbError& error) {
    const std::string problem =
        item + ": its validators can't be used (" + std::string(error.what()) + ")";
    if (told_.insert(problem).second && onProblem) onProblem(problem);
    errorText = "The value can't be checked: the device's rules for " + item + " are broken.";
    return false;
  }
}

bool Session::check(const Parameter& parameter, const Variant& value, std::string& errorText) {
  const auto localized = [this](const std::string& key) {
    const auto found = package_.texts.find(key);
    return found == package_.texts.end() ? key : found->second;
  };
  const Ref<platform::XmlNode>& rules = parameter.validators;
  if (numericType(parameter.dataItem)) {
    std::string message;
    if (!numericRange(rules, value, message)) {
      errorText = localized(message);
      return false;
    }
  } else {
    RangeValidator range;
    if (!range.Validate(rules, "", value)) {
      errorText = localized(range.ErrorString());
      return false;
    }
  }
  LengthValidator length;
  if (!length.Validate(rules, value)) {
    errorText = localized(length.ErrorString());
    return false;
  }
  DiscreteValidator discrete;
  if (!discrete.Validate(rules, "", value)) {
    errorText = localized(discrete.ErrorString());
    return false;
  }
  return true;
}

// Conditions of the form "Name == 'value'" or "Name != 'value'", compared with the device's
// value as text; any other condition holds.
bool Session::evaluate(const std::string& expression) const {
  for (const std::string op : {"==", "!="}) {
    const size_t at = expression.find(op);
    if (at == std::string::npos) continue;
    const std::string name(trimSpaces(std::string_view(expression).substr(0, at)));
    std::string literal(trimSpaces(std::string_view(expression).substr(at + 2)));
    if (literal.size() >= 2 && literal.front() == '\'' && literal.back() == '\'') {
      literal = literal.substr(1, literal.size() - 2);
    }
    if (!package_.parameter(name)) return true;
    const bool same = host_->device.read(name).toText() == literal;
    return op == "==" ? same : !same;
  }
  return true;
}

std::optional<size_t> Session::formNamed(const std::string& name) const {
  for (size_t i = 0; i < package_.forms.size(); ++i) {
    if (package_.forms[i].name == name) return i;
  }
  return std::nullopt;
}

std::optional<Session::Answer> Session::answerTo(const host::HostCall& call) const {
  std::string key;
  if (call.operation.starts_with("LaunchFunction") && !call.arguments.empty()) {
    key = call.arguments[0];
  } else if (call.operation == "CallModuleFunction" && call.arguments.size() >= 2) {
    key = call.arguments[0] + "." + call.arguments[1];
  } else {
    return std::nullopt;
  }
  const auto found = package_.functions.find(key);
  if (found == package_.functions.end()) {
    return Answer{std::nullopt, "The device has no function " + key + "."};
  }
  if (!found->second.form.empty()) {
    if (auto index = formNamed(found->second.form)) return Answer{index, {}};
  }
  const auto text = package_.texts.find(found->second.message);
  return Answer{std::nullopt, text == package_.texts.end() ? found->second.message : text->second};
}

}  // namespace tessaline::studio
