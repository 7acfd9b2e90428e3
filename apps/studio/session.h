#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "apps/studio/package.h"
#include "tessaline/host/form.h"
#include "tessaline/host/reference_host.h"

// The host's side of tessaline-studio, apart from any window: a device package's simulated
// device behind the reference host, the form on show with its controls bound to parameters,
// the check of each edit and the writing of edits to the device. It runs on any backend.
//
// Edits outlive a visit: a form left with edits that aren't applied yet stays open out of
// sight, its controls as the user left them and fed by the device like the form on show, until
// Apply writes the edits or discard() drops them. Showing it again brings it back as it was.
namespace tessaline::studio {

class Session {
 public:
  explicit Session(DevicePackage package);
  ~Session();

  const DevicePackage& package() const { return package_; }
  host::ReferenceHost& host() { return *host_; }

  // Shows a form: its controls are made (by ProgID, on the installed backend), given the host,
  // their parameters' definitions and device values; a form kept with its edits comes back as
  // it was. What can't be made or bound is told in `problems`, each problem once in a session;
  // the rest of the form runs. A form whose file couldn't be read shows nothing (the package's
  // reading told why).
  void openForm(size_t index, std::vector<std::string>& problems);
  host::HostForm* form() { return shown_.form.get(); }
  std::optional<size_t> formIndex() const { return formIndex_; }
  // The forms kept out of sight for their edits.
  std::vector<size_t> keptForms() const;

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
  // an edit gets the value that changed, on the form on show and on the kept ones.
  void tick(double seconds);
  double deviceTime() const { return time_; }

  // The edits not written yet, as "Form: Parameter", the form on show first.
  std::vector<std::string> unappliedEdits();
  // Writes each edited value of every open form to the device and clears its mark; one line
  // for each. The kept forms close.
  std::vector<std::string> apply();
  // Drops every edit: the kept forms close and the form on show is made anew with the device's
  // values.
  void discard(std::vector<std::string>& problems);

  // The check that the host makes at each key release: the parameter's validators, the error
  // text localized. True for an item it doesn't know. Validators that can't be used (a rule
  // without its limits, a limit that is no number) refuse the value with a message that says
  // so, and are told as a problem once.
  bool validate(const std::string& item, const Variant& value, std::string& errorText);

  // Told of a problem that arises while the session runs (rather than while a form opens).
  std::function<void(const std::string&)> onProblem;

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
  struct OpenForm {
    std::unique_ptr<host::HostForm> form;
    std::vector<Bound> bound;
    // The controls go before the form that holds them.
    void close();
  };

  void load(size_t index, std::vector<std::string>& problems);
  void bind(Bound& bound, const Binding& binding);
  void push(Bound& bound, bool force);
  // The host's side of the host-fed charts: each band value and then the item value of a
  // multi-trend; a freshly recorded wave form, drawn.
  void pushTrend(Bound& bound);
  void pushWave(Bound& bound);
  Variant moving(const Parameter& parameter) const;
  bool evaluate(const std::string& expression) const;
  bool check(const Parameter& parameter, const Variant& value, std::string& errorText);
  std::vector<std::string> hotParameters(OpenForm& open);
  std::vector<std::string> write(OpenForm& open);
  // push, with a control's refusal told as a problem.
  void offer(Bound& bound, bool force, std::vector<std::string>& problems);
  // A problem goes to `problems` the first time only.
  void tell(std::vector<std::string>& problems, const std::string& problem);

  DevicePackage package_;
  std::shared_ptr<host::ReferenceHost> host_;
  std::optional<size_t> formIndex_;
  OpenForm shown_;
  std::map<size_t, OpenForm> kept_;
  std::set<std::string> told_;
  double time_ = 0;
};

}  // namespace tessaline::studio
