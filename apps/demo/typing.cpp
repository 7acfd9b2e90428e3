#include <memory>

#include "apps/demo/scenes.h"
#include "tessaline/entry/data_multi_line_text_box.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace tessaline::demo {

namespace {

// Tells what became of each key: refused by the key filter (the host saw KeyPress 0),
// refused by the edit pattern (the text went back), or taken.
class KeyWatcher : public ControlEvents {
 public:
  void KeyPress(int16_t& KeyAscii) override { lastKey = KeyAscii; }
  int16_t lastKey = 0;
};

void typeAndTell(Transcript& t, TextEntry& box, KeyWatcher& watcher, const std::string& keys) {
  headless::TextBox& text = headless::user(box.Text1());
  for (char key : keys) {
    const std::string before = text.Text();
    text.type(std::string(1, key));
    std::string outcome;
    if (watcher.lastKey == 0) {
      outcome = "refused by the key filter";
    } else if (text.Text() == before) {
      outcome = "refused by the pattern " + box.editPattern();
    } else {
      outcome = "taken";
    }
    t.user(std::string("types '") + key + "': " + outcome + " -> \"" + text.Text() + "\"");
  }
}

}  // namespace

void playTyping(Transcript& t) {
  headless::install(".");
  regexp::install();
  auto host = std::make_shared<host::ReferenceHost>();
  host->translations = {{"Empty_value_not_allowed", "An empty value is not allowed for"},
                        {"Setpoint_label", "the setpoint"}};

  t.title("Typing into a 5.2f number");
  auto box = DTMDataTextBox::create();
  box->IDTMControl_Init(host);
  box->IDtmControl_Name("Setpoint");
  box->TextType(TextDataType::Numbers);
  box->IDTMControlFormatter_EditFormat("5.2f");
  auto watcher = std::make_shared<KeyWatcher>();
  box->Advise(watcher);
  t.host("makes a Numbers box with the edit format 5.2f: pattern " + box->editPattern());
  typeAndTell(t, *box, *watcher, "12a34567.8.95-");
  headless::TextBox& text = headless::user(box->Text1());
  t.user("moves the caret to the start");
  text.select(0, 0);
  typeAndTell(t, *box, *watcher, "-");
  t.user("types '-' at the start of the negative number: the entry restarts");
  text.select(0, 0);
  typeAndTell(t, *box, *watcher, "-");

  t.user("copies \"98765.4321\" elsewhere, selects all and presses Ctrl+V");
  headless::current().clipboard().SetText("98765.4321");
  text.select(0, static_cast<int32_t>(text.Text().size()));
  text.pressCtrl('V');
  t.shows(*box);
  t.note("a paste isn't guarded by the pattern: the host's check at the key release decides");

  t.title("Leaving an empty number in a multi-line box");
  t.listen(*host);
  auto notes = DTMDataMultiLnTextBox::create();
  notes->IDTMControl_Init(host);
  notes->IDtmControl_Name("Setpoint");
  notes->IDtmControl_DtmContainer(host);
  notes->TextType(TextDataType::Numbers);
  notes->IDTMDataControl_DataItemDef(
      xml::parseElement(R"(<dataItem name="Setpoint" label="Setpoint_label"/>)"));
  notes->IDTMDataControl_SetDeviceValue(Variant("40"));
  t.shows(*notes);
  t.user("clears the box with two backspaces and leaves it");
  headless::TextBox& field = headless::user(notes->Text1());
  field.select(2, 0);
  field.backspace();
  field.backspace();
  t.shows(*notes);
  field.blur();
  t.shows(*notes);

  for (const VbError& error : headless::current().takeUnhandledErrors()) {
    t.note(std::string("unhandled: ") + error.what());
  }
  SetSharedHost(nullptr);
}

}  // namespace tessaline::demo
