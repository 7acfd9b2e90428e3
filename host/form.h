#pragma once

#include <string>
#include <vector>

#include "tessaline/frame/control_frame.h"
#include "tessaline/platform/xml/form_file.h"

// A dialog form as a host keeps it: the controls it created through the class catalogue, each
// placed on the form in twips, and saved as its property bag.
namespace tessaline::host {

struct PlacedControl {
  std::string progId;
  // The control's name on the form (the extender's name, not IDtmControl_Name).
  std::string name;
  Ref<ControlFrame> control;
};

class HostForm {
 public:
  std::string name;
  int32_t width = 0;
  int32_t height = 0;

  // Creates each control of a saved form by its ProgID on the installed backend, places it
  // and reads its bag; the rest of the form loads whatever one control does. Each problem is
  // told in `problems`, naming the form (`formName`, else the document's name) and the control:
  // - a class that can't be created: the control is left out;
  // - a negative width or height: left out, since there is nothing to show;
  // - a corner off the form: kept where it was saved;
  // - a size that reaches past the form's right or bottom edge: kept, cut at the edge;
  // - a bag that a setter refuses: kept as far as its properties got.
  static HostForm load(const xml::FormDocument& document, std::vector<std::string>& problems,
                       const std::string& formName = {});

  // A control new on the form: created by ProgID, placed, given InitProperties. 429 for a
  // ProgID that the catalogue can't create.
  ControlFrame& add(const std::string& progId, const std::string& controlName, int32_t left,
                    int32_t top, int32_t width, int32_t height);
  // A control that the host made itself, taken onto the form as it stands.
  void adopt(const std::string& controlName, Ref<ControlFrame> control);

  // Each control's place and WriteProperties into a fresh bag.
  xml::FormDocument save() const;

  // What a control restored from a bag gives otherwise than the one it was saved from: one line
  // for each property that is read and written under one name and restored through its own
  // member. The selection is left out: it is the caret's state, and a saved selected text is
  // inserted again when it comes back.
  static std::vector<std::string> differences(Dispatchable& saved, Dispatchable& restored);

  const std::vector<PlacedControl>& controls() const { return controls_; }
  // The control of that name on the form, or null.
  ControlFrame* find(const std::string& controlName) const;

 private:
  std::vector<PlacedControl> controls_;
};

}  // namespace tessaline::host
