#include "apps/studio/package.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "tessaline/platform/xml/pugi_dom.h"

namespace tessaline::studio {

namespace {

std::string attribute(const Ref<platform::XmlNode>& node, const char* name,
                      const std::string& otherwise = {}) {
  if (!node) return otherwise;
  return platform::attributeValue(node, name).value_or(otherwise);
}

// The child elements of a node of that name, in document order.
std::vector<Ref<platform::XmlNode>> children(const Ref<platform::XmlNode>& node,
                                             const std::string& name) {
  std::vector<Ref<platform::XmlNode>> found;
  if (!node) return found;
  const Ref<platform::XmlNodeList> list = node->childNodes();
  for (int32_t i = 0; i < list->length(); ++i) {
    Ref<platform::XmlNode> child = list->item(i);
    if (child && child->nodeName() == name) found.push_back(child);
  }
  return found;
}

Ref<platform::XmlNode> child(const Ref<platform::XmlNode>& node, const std::string& name) {
  const auto found = children(node, name);
  return found.empty() ? nullptr : found.front();
}

// A number of an attribute, or the default where it is absent or no number.
double number(const Ref<platform::XmlNode>& node, const char* name, double otherwise) {
  const auto text = node ? platform::attributeValue(node, name) : std::nullopt;
  if (!text) return otherwise;
  try {
    return Variant(*text).toDouble();
  } catch (const VbError&) {
    return otherwise;
  }
}

// The starting value in the kind that the item's type names: a float is a Double, an integer a
// Long, anything else text.
Variant initialValue(const std::string& text, const Ref<platform::XmlNode>& dataItem) {
  const std::string type = attribute(dataItem, "type");
  try {
    if (type == "float") return Variant(Variant(text).toDouble());
    if (type == "int16" || type == "int32" || type == "byte")
      return Variant(Variant(text).toInt32());
  } catch (const VbError&) {
  }
  return Variant(text);
}

// The file that a form names, when it lies inside the package's folder; nothing for a name that
// leads out of it (an absolute path, "..", a link to elsewhere).
std::optional<std::filesystem::path> insidePackage(const std::filesystem::path& root,
                                                   const std::string& file) {
  namespace fs = std::filesystem;
  std::error_code failure;
  fs::path base = fs::weakly_canonical(root, failure);
  if (failure) return std::nullopt;
  const fs::path path = fs::weakly_canonical(root / file, failure);
  if (failure) return std::nullopt;
  if (base.filename().empty()) base = base.parent_path();
  const auto [inBase, inPath] = std::mismatch(base.begin(), base.end(), path.begin(), path.end());
  if (inBase != base.end() || inPath == path.end()) return std::nullopt;
  return path;
}

}  // namespace

const Parameter* DevicePackage::parameter(const std::string& name) const {
  for (const Parameter& p : parameters) {
    if (p.name == name) return &p;
  }
  return nullptr;
}

DevicePackage loadPackage(const std::string& directory, std::vector<std::string>& problems) {
  DevicePackage package;
  package.directory = directory;
  const std::filesystem::path root(directory);
  try {
    package.document = xml::loadDocument((root / "device.xml").string());
  } catch (const VbError& error) {
    problems.push_back((root / "device.xml").string() + ": " + error.what());
    return package;
  }
  const Ref<platform::XmlNode> device = child(package.document, "device");
  if (!device) {
    problems.push_back((root / "device.xml").string() + ": no <device> element");
    return package;
  }
  package.name = attribute(device, "name", root.filename().string());

  for (const auto& text : children(child(device, "texts"), "text")) {
    package.texts[attribute(text, "key")] = text->text();
  }
  for (const auto& node : children(child(device, "parameters"), "parameter")) {
    Parameter p;
    p.name = attribute(node, "name");
    if (p.name.empty()) {
      problems.push_back("a parameter without a name is left out");
      continue;
    }
    p.dataItem = child(node, "dataItem");
    p.enumeration = child(node, "enumeration");
    p.validators = child(node, "validators");
    p.initial = initialValue(attribute(node, "value"), p.dataItem);
    p.behaviour = attribute(node, "behaviour", "static");
    p.low = number(node, "low", 0);
    p.high = number(node, "high", 100);
    p.noise = number(node, "noise", 0);
    p.period = number(node, "period", 600);
    package.parameters.push_back(std::move(p));
  }
  for (const auto& gauge : children(child(device, "gauges"), "gauge")) {
    package.gauges[attribute(gauge, "name")] = gauge;
  }
  for (const auto& chart : children(child(device, "charts"), "trend")) {
    package.charts[attribute(chart, "name")] = chart;
  }
  for (const auto& chart : children(child(device, "charts"), "wave")) {
    package.charts[attribute(chart, "name")] = chart;
  }
  package.navigation = child(device, "navigation");
  for (const auto& function : children(child(device, "functions"), "function")) {
    const std::string id = attribute(function, "id");
    const std::string key =
        id.empty() ? attribute(function, "module") + "." + attribute(function, "name") : id;
    package.functions[key] = {attribute(function, "form"), attribute(function, "message")};
  }
  for (const auto& node : children(child(device, "forms"), "form")) {
    FormEntry form;
    form.file = attribute(node, "file");
    form.title = attribute(node, "title", form.file);
    form.name = attribute(node, "name", form.title);
    for (const auto& bind : children(node, "bind")) {
      Binding binding{attribute(bind, "control"), attribute(bind, "parameter"),
                      attribute(bind, "gauge"), attribute(bind, "chart")};
      if (!binding.parameter.empty() && !package.parameter(binding.parameter)) {
        problems.push_back(form.title + ": " + binding.control + " is bound to an unknown " +
                           "parameter " + binding.parameter);
      }
      if (!binding.gauge.empty() && !package.gauges.count(binding.gauge)) {
        problems.push_back(form.title + ": " + binding.control + " names an unknown gauge " +
                           binding.gauge);
      }
      if (!binding.chart.empty() && !package.charts.count(binding.chart)) {
        problems.push_back(form.title + ": " + binding.control + " names an unknown chart " +
                           binding.chart);
      }
      form.bindings.push_back(std::move(binding));
    }
    const std::string named = form.title + " (" + form.file + ")";
    if (form.file.empty()) {
      form.failure = "the form names no file";
    } else if (const auto path = insidePackage(root, form.file); !path) {
      form.failure = "the file lies outside the package's folder";
    } else {
      std::vector<std::string> skipped;
      try {
        form.document = xml::loadForm(path->string(), skipped);
        form.loaded = true;
      } catch (const VbError& error) {
        form.failure = error.what();
      }
      for (const std::string& line : skipped) problems.push_back(named + ": " + line);
    }
    if (!form.loaded) problems.push_back(named + " can't be shown: " + form.failure);
    package.forms.push_back(std::move(form));
  }
  if (package.forms.empty()) problems.push_back(package.name + " has no forms");
  return package;
}

}  // namespace tessaline::studio
