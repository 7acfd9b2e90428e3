#include "tessaline/navigation/navigation.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>

#include "apps/demo/scenes.h"
#include "tessaline/action/launch_button.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/platform/chart/codecs.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace tessaline::demo {

namespace {

constexpr const char* kMenu =
    R"(<navigation>)"
    R"(<menuGroup label="Nav_Setup" name="Setup" treename="setupTree" icon="setup.png">)"
    R"(<folder label="Nav_Basic" name="Basic">)"
    R"(<menuItem label="Nav_Flow" name="FlowSettings" action="dialogs/flow.xml"/>)"
    R"(<menuItem label="Nav_Service" name="ServiceSettings" action="dialogs/service.xml")"
    R"( includeIf=" UserRole == 'Service' "/>)"
    R"(</folder></menuGroup>)"
    R"(<menuGroup label="Nav_Diagnosis" name="Diagnosis" treename="diagTree" icon="diag.png">)"
    R"(<menuItem label="Nav_Status" name="DeviceStatus" action="dialogs/status.xml"/>)"
    R"(</menuGroup></navigation>)";

// What the host shows of a dialog it opens: its title and the caption of its one button.
struct HostDialog {
  std::string title;
  std::string button;
  int32_t function;
};

// A bar's picture: a square of one colour, written as a PNG file.
void writeIcon(const std::filesystem::path& path, uint32_t argb) {
  platform::PixelImage image{16, 16, std::vector<uint32_t>(256, argb)};
  const auto bytes = chart::encodePng(image);
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

void playNavigation(Transcript& t, const std::filesystem::path& out) {
  headless::install(".");
  auto host = std::make_shared<host::ReferenceHost>();
  host->translations = {{"Nav_Setup", "Setup"},
                        {"Nav_Basic", "Basic settings"},
                        {"Nav_Flow", "Flow"},
                        {"Nav_Diagnosis", "Diagnosis"},
                        {"Nav_Status", "Device status"},
                        {"Btn_Zero", "Zero the sensor"},
                        {"Btn_Log", "Show the event log"}};
  host->evaluate = [](const std::string& expression) {
    return expression != "UserRole == 'Service'";
  };
  // The device's folder: its pictures in images/, of which diag.png is missing.
  host->baseFolder = std::filesystem::absolute(out).string();
  std::filesystem::create_directories(out / "images");
  writeIcon(out / "images" / "setup.png", 0xFF2060C0u);
  std::filesystem::remove(out / "images" / "diag.png");
  const std::map<std::string, HostDialog> dialogs = {
      {"FlowSettings", {"Flow settings", "Btn_Zero", 12}},
      {"DeviceStatus", {"Device status", "Btn_Log", 30}},
  };

  t.title("A navigation menu driving the dialogs");
  t.host("creates the navigation, IDtmNavigation_Init, then IDtmNavigation_Load with the menu");
  auto nav = DtmNavigation::create();
  std::shared_ptr<DTMLaunchButton> button;
  // The host's handler of LoadDialog: it opens the dialog of that name and loads its controls.
  nav->events.LoadDialog = [&](const std::string& key) {
    t.note("LoadDialog(\"" + key + "\") reaches the host");
    const auto found = dialogs.find(key);
    if (found == dialogs.end()) {
      t.host("has no dialog named " + key);
      return;
    }
    t.host("opens the dialog \"" + found->second.title + "\" with a launch button");
    button = DTMLaunchButton::create();
    button->IDTMControl_Init(host);
    button->IDTMControl_Caption(found->second.button);
    button->IDTMControl_FunctionID(found->second.function);
  };
  nav->IDtmNavigation_Init(host, host);
  t.listen(*host);
  nav->IDtmNavigation_Load(xml::parseElement(kMenu));
  host->onCall = nullptr;
  auto& bar = headless::user(nav->NavigationBar());
  for (int32_t b = 1; b <= bar.BarCount(); ++b) {
    t.note("bar " + std::to_string(b) + " \"" + bar.BarCaption(b) + "\"" +
           (b == bar.SelectedBar() ? " (open)" : ""));
    auto& tree = headless::user(*nav->TreeViews(static_cast<int16_t>(b)));
    for (int32_t n = 1; n <= tree.NodeCount(); ++n) {
      int32_t depth = 0;
      for (int32_t p = tree.NodeParent(n); p != 0; p = tree.NodeParent(p)) ++depth;
      t.note("  " + std::string(static_cast<size_t>(depth) * 2, ' ') + tree.NodeText(n) +
             (tree.NodeTag(n).toText().empty() ? "" : "  -> " + tree.NodeKey(n)));
    }
  }
  t.note("the service entry is missing: the host's condition said no");
  t.note("diag.png is missing: one log line, and the bar comes without its picture");

  t.listen(*host);
  auto& setup = headless::user(*nav->TreeViews(1));
  t.user("clicks the folder \"Basic settings\": nothing to open");
  setup.click(2);
  t.user("clicks \"Flow\"");
  setup.click(setup.find("FlowSettings"));
  if (button) {
    t.user("clicks the button \"" + button->Command1().Caption() + "\"");
    headless::user(button->Command1()).click();
  }
  t.user("opens the bar \"Diagnosis\": its first entry opens at once");
  bar.click(2);
  t.host("shows the flow dialog itself and asks the menu to agree: no LoadDialog follows");
  const bool shown = nav->IDtmNavigation_ActivateMenu("FlowSettings");
  host->onCall = nullptr;
  t.note(std::string("IDtmNavigation_ActivateMenu(\"FlowSettings\") = ") +
         (shown ? "True" : "False") + "; the open bar is " + std::to_string(bar.SelectedBar()));
  nav->IDtmNavigation_Uninitialize();
  t.host("IDtmNavigation_Uninitialize: from now on clicks do nothing");
  button.reset();
  nav.reset();
  platform::setBackend(nullptr);
}

}  // namespace tessaline::demo
