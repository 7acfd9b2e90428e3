#include "tessaline/host/form.h"

#include "tessaline/server/class_catalogue.h"

namespace tessaline::host {

namespace {

Ref<ControlFrame> create(const std::string& progId) {
  Ref<ControlFrame> control = refCast<ControlFrame>(CreateObject(progId));
  // cTooltip is creatable but no control: a form holds controls only.
  if (!control) throw VbError(err::CantCreateObject);
  return control;
}

void place(ControlFrame& control, int32_t left, int32_t top, int32_t width, int32_t height) {
  platform::UserControl& window = control.window();
  window.Left(left);
  window.Top(top);
  window.Width(width);
  window.Height(height);
}

}  // namespace

HostForm HostForm::load(const xml::FormDocument& document, std::vector<std::string>& problems,
                        const std::string& formName) {
  HostForm form;
  form.name = document.name;
  form.width = document.width;
  form.height = document.height;
  const std::string named = !formName.empty()        ? formName
                            : !document.name.empty() ? document.name
                                                     : "the form";
  for (const xml::FormControl& saved : document.controls) {
    const std::string where = named + ": " + saved.name + ": ";
    if (saved.width < 0 || saved.height < 0) {
      problems.push_back(where + "a size of " + std::to_string(saved.width) + " by " +
                         std::to_string(saved.height) + " twips can't be shown");
      continue;
    }
    Ref<ControlFrame> control;
    try {
      control = create(saved.progId);
    } catch (const VbError& error) {
      problems.push_back(where + saved.progId + " can't be created (" + error.what() + ")");
      continue;
    }
    const bool offTheForm = saved.left < 0 || saved.top < 0 ||
                            (document.width > 0 && saved.left >= document.width) ||
                            (document.height > 0 && saved.top >= document.height);
    if (offTheForm) {
      problems.push_back(where + "placed off the form at " + std::to_string(saved.left) + ", " +
                         std::to_string(saved.top));
    }
    // A control whose corner is on the form is cut at its edges; summed wide, so that a huge
    // size can't wrap around to a small one.
    int32_t width = saved.width, height = saved.height;
    if (!offTheForm && document.width > 0 && int64_t{saved.left} + saved.width > document.width) {
      width = document.width - saved.left;
    }
    if (!offTheForm && document.height > 0 && int64_t{saved.top} + saved.height > document.height) {
      height = document.height - saved.top;
    }
    if (width != saved.width || height != saved.height) {
      problems.push_back(where + "its size of " + std::to_string(saved.width) + " by " +
                         std::to_string(saved.height) + " twips reaches past the form; cut to " +
                         std::to_string(width) + " by " + std::to_string(height));
    }
    place(*control, saved.left, saved.top, width, height);
    control->window().TabIndex(saved.tabIndex);
    platform::MemoryPropertyBag bag = saved.properties;
    try {
      control->ReadProperties(bag);
    } catch (const VbError& error) {
      problems.push_back(where + "its saved properties stop at a value the control refuses (" +
                         error.what() + ")");
    }
    form.controls_.push_back({saved.progId, saved.name, std::move(control)});
  }
  return form;
}

ControlFrame& HostForm::add(const std::string& progId, const std::string& controlName, int32_t left,
                            int32_t top, int32_t width, int32_t height) {
  Ref<ControlFrame> control = create(progId);
  place(*control, left, top, width, height);
  control->InitProperties();
  controls_.push_back({progId, controlName, control});
  return *control;
}

void HostForm::adopt(const std::string& controlName, Ref<ControlFrame> control) {
  const std::string progId = "Tessaline." + control->window().ClassName();
  controls_.push_back({progId, controlName, std::move(control)});
}

xml::FormDocument HostForm::save() const {
  xml::FormDocument document;
  document.name = name;
  document.width = width;
  document.height = height;
  for (const PlacedControl& placed : controls_) {
    platform::UserControl& window = placed.control->window();
    xml::FormControl saved;
    saved.progId = placed.progId;
    saved.name = placed.name;
    saved.left = window.Left();
    saved.top = window.Top();
    saved.width = window.Width();
    saved.height = window.Height();
    saved.tabIndex = window.TabIndex();
    placed.control->WriteProperties(saved.properties);
    document.controls.push_back(std::move(saved));
  }
  return document;
}

std::vector<std::string> HostForm::differences(Dispatchable& saved, Dispatchable& restored) {
  std::vector<std::string> found;
  for (const PersistedProperty& row : saved.members().persisted()) {
    if (row.readAs.empty() || row.writtenAs.empty() || !row.restoresItsOwnMember) continue;
    if (row.readAs.starts_with("Sel")) continue;
    const Member* member = saved.members().find(row.readAs);
    if (!member || !member->get) continue;
    const Variant before = member->get(saved);
    const Variant after = member->get(restored);
    if (!platform::equalsDefault(before, after)) {
      found.push_back(row.readAs + ": " + describe(before) + " came back as " + describe(after));
    }
  }
  return found;
}

ControlFrame* HostForm::find(const std::string& controlName) const {
  for (const PlacedControl& placed : controls_) {
    if (placed.name == controlName) return placed.control.get();
  }
  return nullptr;
}

}  // namespace tessaline::host
