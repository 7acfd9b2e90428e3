#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "tessaline/frame/control_frame.h"
#include "tessaline/frame/interfaces.h"
#include "tessaline/platform/xml.h"

namespace tessaline {

// The menu of a device type manager as a stack of bars, each with a picture, a caption and a
// tree of entries. The whole menu comes from one node that the host hands over once; the host's
// conditions decide which entries exist. A click on an entry whose action text isn't empty, or
// on a bar (which chooses its first such entry), raises LoadDialog with the entry's name; the
// host opens the dialog. The control opens nothing itself and never reads an action text beyond
// asking whether it is empty.
//
// Menus of any depth are built and walked without recursion: an entry 10,000 levels deep costs
// a step of a loop, never a frame of the stack.
class DtmNavigation : public virtual IDtmNavigation, public ControlFrame {
 public:
  struct Events {
    // The only event: the host is to show the dialog of this entry.
    std::function<void(const std::string& key)> LoadDialog;
  };
  Events events;

  static std::shared_ptr<DtmNavigation> create();
  static void describeMembers(MemberTableBuilder<DtmNavigation>& table);
  const MemberTable& members() const override { return memberTableOf<DtmNavigation>(); }

  // Writing is accepted and ignored; reading gives the empty text.
  std::string IDtmNavigation_Name() override { return {}; }
  void IDtmNavigation_Name(const std::string&) override {}
  // Keeps both objects and makes the logger; the thread's shared host stays as it is.
  void IDtmNavigation_Init(Ref<GenericDtm> genericDtm,
                           Ref<DtmContainer> dtmContainerCntrl) override;
  // Keeps the node and builds all bars. The menu is fixed from then on: a second load meets
  // the trees that exist and leaves the first menu.
  void IDtmNavigation_Load(Ref<Object> navigationNode) override;
  // Shows the first entry of that key in bar order, folders and roots included; raises no event.
  bool IDtmNavigation_ActivateMenu(const std::string& tabname) override;
  // Releases the container: clicks do nothing from then on, ActivateMenu goes on working.
  void IDtmNavigation_Uninitialize() override;

  // Builds one bar and its tree from a menuGroup, as element j of the trees.
  void BuildMenu(const Ref<platform::XmlNode>& menugroupNode, int16_t j);
  // Announces a key as chosen: a log line, LoadDialog, a repaint.
  void NavigationSelected(const std::string& strKey);

  int16_t Align() { return NavigationBar_->Align(); }
  void Align(int16_t value);

  platform::ShortcutBar& NavigationBar() { return *NavigationBar_; }
  // Element `index` of the trees, or null when it isn't loaded. Element 0 is the template and
  // never shown.
  platform::TreeView* TreeViews(int16_t index);

 private:
  DtmNavigation();

  void BuildMenuTree();
  void CreateTree(platform::TreeView& tree, const Ref<platform::XmlNodeList>& entries,
                  const std::string& name, const std::string& label);
  void CreateMenu(platform::TreeView& tree, const Ref<platform::XmlNode>& entry, int32_t parent);
  // One entry without what lies below it; its number, or 0 when it isn't there or its
  // building failed (a failure is logged as CreateMenu's).
  int32_t CreateEntry(platform::TreeView& tree, const Ref<platform::XmlNode>& entry,
                      int32_t parent);
  std::string GetLocalized(const std::string& key);
  platform::TreeView& LoadTreeView(int16_t index);

  void TreeViews_NodeClick(int16_t Index, int32_t node);
  void NavigationBar_BarClick(int32_t bar);
  void ActivateGroup(platform::TreeView* tree);
  void ActivateFirst(platform::TreeView* tree);
  bool ActivateMenu(platform::TreeView* tree, const std::string& key, int32_t bar);
  void UserControl_Resize();

  std::unique_ptr<platform::ShortcutBar> NavigationBar_;
  std::map<int16_t, std::unique_ptr<platform::TreeView>> TreeViews_;
  Ref<Object> navigationNode_;
};

}  // namespace tessaline
