#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/studio/package.h"
#include "host/form.h"
#include "host/reference_host.h"

// The host's side of tessaline-studio, apart from any window: a device package's simulated
// device behind the reference host, the form on show with its controls bound to parameters,
// the check of each edit and the writing of edits to the device. It runs on any backend.
namespace tessaline::studio {

class Session {
 public:
  explicit Session(DevicePackage package);
  ~Session();

  const DevicePackage& package() const { return package_; }
  host::ReferenceHost& host() { return *host_; }

  // Shows a form: its controls are made (by ProgID, on the installed backend), given the host,
  // their parameters' definitions and device values. What can't be made or bound is told in
  // `problems`; the rest of the form runs.
  void openForm(size_t index, std::vector<std::string>& problems);
  host::HostForm* form() { return form_.get(); }
  std::optional<size_t> formIndex() const { return formIndex_; }

  // The form of that name (a navigation entry's "name"), if the package has one.
  std::optional<size_t> formNamed(const std::string& name) const;
  // What the host does for a call that launches a function: open a form or show a message
  // (its text localized). Nothing for other calls and for functions the package doesn't know.
  // The caller acts on it after the click that led to it, since opening a form ends the
  // controls of the form on show.
  struct Answer {
    std::optional<size_t> form;
    std::string message;
  };
  std::optional<Answer> answerTo(const host::HostCall& call) const;

  // The device `seconds` later: moving values move, and every bound control that doesn't show
  // an edit gets the value that changed.
  void tick(double seconds);
  double deviceTime() const { return time_; }

  // Writes each edited value to the device and clears its mark; one line for each.
  std::vector<std::string> apply();

  // The check that the host makes at each key release: the parameter's validators, ranges of a
  // numeric item compared as numbers, the error text localized. True for an item it doesn't know.
  bool validate(const std::string& item, const Variant& value, std::string& errorText);

 private:
  struct Bound {
    ControlFrame* control;
    std::string parameter;
    // The subscription items of a gauge, with the value each was last given.
    std::map<std::string, Variant> items;
    Variant shown;
    // A multi-trend's or a wave form's definition.
    Ref<platform::XmlNode> chart;
  };

  void bind(Bound& bound, const Binding& binding, std::vector<std::string>& problems);
  void push(Bound& bound, bool force);
  // The host's side of the host-fed charts: each band value and then the item value of a
  // multi-trend; a freshly recorded wave form, drawn.
  void pushTrend(Bound& bound);
  void pushWave(Bound& bound);
  Variant moving(const Parameter& parameter) const;
  bool evaluate(const std::string& expression) const;

  DevicePackage package_;
  std::shared_ptr<host::ReferenceHost> host_;
  std::unique_ptr<host::HostForm> form_;
  std::optional<size_t> formIndex_;
  std::vector<Bound> bound_;
  double time_ = 0;
};

}  // namespace tessaline::studio
