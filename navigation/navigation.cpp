#include "tessaline/navigation/navigation.h"

#include <vector>

#include "tessaline/support/image_files.h"
#include "tessaline/values/text.h"

namespace tessaline {

namespace {

// A required attribute: its absence fails as reading it from Nothing would.
std::string required(const Ref<platform::XmlNode>& node, const std::string& name) {
  auto value = platform::attributeValue(node, name);
  if (!value) throw VbError(err::ObjectNotSet);
  return std::move(*value);
}

// An entry can be chosen when its tag isn't the empty text: a menuItem with an action. A root
// has no tag and a folder the empty text.
bool choosable(const platform::TreeView& tree, int32_t node) {
  return !tree.NodeTag(node).toText().empty();
}

platform::TreeView* treeOf(platform::Widget* content) {
  return dynamic_cast<platform::TreeView*>(content);
}

}  // namespace

std::shared_ptr<DtmNavigation> DtmNavigation::create() {
  return std::shared_ptr<DtmNavigation>(new DtmNavigation());
}

DtmNavigation::DtmNavigation() : ControlFrame("DtmNavigation", nullptr) {
  window_->Width(3000);
  window_->Height(6000);
  NavigationBar_ = window_->createShortcutBar("NavigationBar");
  NavigationBar_->BackColor(platform::colors::kButtonFace);
  NavigationBar_->property("EmptyPanelCaption", Variant("ShortcutPanel"));
  platform::childProperty(*NavigationBar_, "FontName", Variant("Tahoma"));
  platform::childProperty(*NavigationBar_, "FontSize", Variant(8.25));
  platform::childProperty(*NavigationBar_, "FontBold", Variant(true));
  NavigationBar_->Redraw(false);
  NavigationBar_->events.BarClick = [this](int32_t bar) { NavigationBar_BarClick(bar); };
  LoadTreeView(0).Visible(false);
  window_->events.Resize = [this] { UserControl_Resize(); };
  UserControl_Resize();
}

void DtmNavigation::IDtmNavigation_Init(Ref<GenericDtm> genericDtm,
                                        Ref<DtmContainer> dtmContainerCntrl) {
  host_ = genericDtm;
  container_ = dtmContainerCntrl;
  logger_ = MakeLogger(genericDtm, "DtmNavigation");
}

void DtmNavigation::IDtmNavigation_Load(Ref<Object> navigationNode) {
  navigationNode_ = navigationNode;
  BuildMenuTree();
}

void DtmNavigation::IDtmNavigation_Uninitialize() {
  try {
    container_.reset();
  } catch (...) {
  }
}

void DtmNavigation::Align(int16_t value) {
  NavigationBar_->Align(value);
  PropertyChanged("Align");
}

platform::TreeView* DtmNavigation::TreeViews(int16_t index) {
  const auto found = TreeViews_.find(index);
  return found == TreeViews_.end() ? nullptr : found->second.get();
}

// Loading an element that is loaded already fails, as loading a control twice does.
platform::TreeView& DtmNavigation::LoadTreeView(int16_t index) {
  if (TreeViews_.count(index)) throw VbError(err::ObjectAlreadyLoaded);
  auto tree = window_->createTreeView("TreeViews");
  tree->events.NodeClick = [this, index](int32_t node) { TreeViews_NodeClick(index, node); };
  platform::TreeView& made = *tree;
  TreeViews_[index] = std::move(tree);
  return made;
}

void DtmNavigation::UserControl_Resize() {
  NavigationBar_->Height(window_->Height());
  NavigationBar_->Width(window_->Width());
}

// ---- Building ----

// With no menuGroup there is no first bar to select: the failure is logged and Redraw stays
// false.
void DtmNavigation::BuildMenuTree() {
  guarded(*logger_, "Error on Naviation Control BuildMenuTree", [&] {
    const Ref<platform::XmlNode> node = platform::asXmlNode(navigationNode_);
    const Ref<platform::XmlNodeList> children = node->childNodes();
    const int32_t count = children->length();
    int32_t j = 0;
    for (int32_t i = 0; i < count; ++i) {
      const Ref<platform::XmlNode> group = children->item(i);
      if (group->nodeName() != "menuGroup") continue;
      if (++j > 32767) throw VbError(err::Overflow);
      BuildMenu(group, static_cast<int16_t>(j));
    }
    NavigationBar_->SelectedBar(1);
    NavigationBar_->Redraw(true);
    NavigationBar_->Style(5);
  });
}

// A group with a missing attribute ends here before anything of its bar exists. An icon that
// can't be loaded, or whose name would leave the images folder (which is then never opened),
// costs the bar its picture only.
void DtmNavigation::BuildMenu(const Ref<platform::XmlNode>& menugroupNode, int16_t j) {
  guarded(*logger_, "Error on Naviation Control BuildMenu", [&] {
    const std::string label = GetLocalized(required(menugroupNode, "label"));
    const std::string name = required(menugroupNode, "name");
    required(menugroupNode, "treename");
    const std::string icon = required(menugroupNode, "icon");
    const std::string path = imagesFolderPath(host_->BaseFolder(), icon);

    platform::TreeView& tree = LoadTreeView(j);
    tree.Move(0, 0, NavigationBar_->Width(), NavigationBar_->Height());
    const bool loaded = staysInImagesFolder(icon) &&
                        NavigationBar_->LoadIconImageFromFile(platformPath(path), name);
    if (!loaded) logger_->Error("BuildMenu LoadIconImageFromFile " + name + " Failed");
    const int32_t bar = NavigationBar_->AddBar(name, label, name);
    NavigationBar_->BarControl(bar, &tree);
    CreateTree(tree, menugroupNode->childNodes(), name, label);
    tree.Visible(true);
  });
}

void DtmNavigation::CreateTree(platform::TreeView& tree, const Ref<platform::XmlNodeList>& entries,
                               const std::string& name, const std::string& label) {
  guarded(*logger_, "Error on NavigationControl CreateTree", [&] {
    const int32_t root = tree.AddNode(0, name, label);
    const int32_t count = entries->length();
    for (int32_t i = 0; i < count; ++i) CreateMenu(tree, entries->item(i), root);
    tree.LineStyle(1);
    tree.HideSelection(false);
    tree.NodeExpanded(root, true);
  });
}

// Depth first, each entry before what lies below it, with an explicit stack in place of
// recursion. An entry is expanded once everything below it is built; one whose building
// failed keeps no children and stays closed, and its siblings are still built.
void DtmNavigation::CreateMenu(platform::TreeView& tree, const Ref<platform::XmlNode>& entry,
                               int32_t parent) {
  struct Level {
    Ref<platform::XmlNodeList> children;
    int32_t count;
    int32_t next;
    int32_t node;
  };
  const int32_t first = CreateEntry(tree, entry, parent);
  if (first == 0) return;
  std::vector<Level> stack;
  const auto descend = [&](const Ref<platform::XmlNode>& from, int32_t node) {
    guarded(*logger_, "Error on NavigationControl CreateMenu", [&] {
      Ref<platform::XmlNodeList> children = from->childNodes();
      const int32_t count = children->length();
      stack.push_back({std::move(children), count, 0, node});
    });
  };
  descend(entry, first);
  while (!stack.empty()) {
    Level& level = stack.back();
    if (level.next == level.count) {
      const int32_t node = level.node;
      stack.pop_back();
      guarded(*logger_, "Error on NavigationControl CreateMenu",
              [&] { tree.NodeExpanded(node, true); });
      continue;
    }
    const Ref<platform::XmlNode> child = level.children->item(level.next++);
    const int32_t made = CreateEntry(tree, child, level.node);
    if (made != 0) descend(child, made);
  }
}

// The host evaluates a condition whenever an entry has one, also a blank one, whose answer
// then doesn't count. A condition that fails in the host fails the entry.
int32_t DtmNavigation::CreateEntry(platform::TreeView& tree, const Ref<platform::XmlNode>& entry,
                                   int32_t parent) {
  int32_t made = 0;
  guarded(*logger_, "Error on NavigationControl CreateMenu", [&] {
    if (const auto condition = platform::attributeValue(entry, "includeIf")) {
      const std::string expression(trimSpaces(*condition));
      const bool included = host_->EvaluateCondition(expression);
      if (!expression.empty() && !included) return;
    }
    const std::string label = GetLocalized(required(entry, "label"));
    const std::string name = required(entry, "name");
    tree.Indentation(1);
    const int32_t node = tree.AddNode(parent, name, label);
    tree.NodeTag(node, Variant(""));
    if (entry->nodeName() == "menuItem") tree.NodeTag(node, Variant(required(entry, "action")));
    made = node;
  });
  return made;
}

std::string DtmNavigation::GetLocalized(const std::string& key) {
  std::string text;
  guarded(*logger_, "Error on Naviation Control GetLocalizedFailed",
          [&] { text = host_ ? host_->GetLocalizedString(key) : key; });
  return text;
}

// ---- Activation ----

void DtmNavigation::NavigationSelected(const std::string& strKey) {
  guarded(*logger_, "Error on Naviation Control NavigationSelected", [&] {
    logger_->Info("Launching " + strKey);
    if (events.LoadDialog) events.LoadDialog(strKey);
    NavigationBar_->Redraw(true);
  });
}

// The clicked entry belongs to the tree that raised the click.
void DtmNavigation::TreeViews_NodeClick(int16_t Index, int32_t node) {
  guarded(*logger_, "Error on TreeViews_NodeClick", [&] {
    if (!container_) return;
    platform::TreeView* tree = TreeViews(Index);
    if (!tree) throw VbError(err::ObjectNotSet);
    if (choosable(*tree, node)) NavigationSelected(tree->NodeKey(node));
  });
}

// Opening a bar at once opens its first dialog.
void DtmNavigation::NavigationBar_BarClick(int32_t bar) {
  if (!container_) return;
  guarded(*logger_, "Error on Naviation Control NavigationBar_BarClick", [&] {
    platform::TreeView* tree = treeOf(NavigationBar_->BarControl(bar));
    ActivateGroup(tree);
    NavigationBar_->Redraw(true);
  });
}

void DtmNavigation::ActivateGroup(platform::TreeView* tree) {
  guarded(*logger_, "Error on Naviation Control ActivateGroup", [&] { ActivateFirst(tree); });
}

// The entries in collection order: each before what lies below it, depth first.
void DtmNavigation::ActivateFirst(platform::TreeView* tree) {
  guarded(*logger_, "Error on NavigationControl ActivateFirst", [&] {
    if (!tree) throw VbError(err::ObjectNotSet);
    const int32_t count = tree->NodeCount();
    for (int32_t node = 1; node <= count; ++node) {
      if (!choosable(*tree, node)) continue;
      tree->SelectNode(node);
      NavigationSelected(tree->NodeKey(node));
      return;
    }
  });
}

bool DtmNavigation::IDtmNavigation_ActivateMenu(const std::string& tabname) {
  bool found = false;
  guarded(*logger_, "Error on Naviation Control IDtmNavigation_ActivateMenu", [&] {
    const int32_t bars = NavigationBar_->BarCount();
    for (int32_t bar = 1; bar <= bars && !found; ++bar) {
      found = ActivateMenu(treeOf(NavigationBar_->BarControl(bar)), tabname, bar);
    }
  });
  return found;
}

// Each entry visited leaves a trace line at the error level, the matching one included. A
// failing tree answers false, and the search goes on with the next bar.
bool DtmNavigation::ActivateMenu(platform::TreeView* tree, const std::string& key, int32_t bar) {
  bool found = false;
  guarded(*logger_, "Error on ActivateMenu", [&] {
    if (!tree) throw VbError(err::ObjectNotSet);
    const std::string prefix = "Error on ActivateMenu" + key + " key :";
    const int32_t count = tree->NodeCount();
    for (int32_t node = 1; node <= count; ++node) {
      const std::string nodeKey = tree->NodeKey(node);
      logger_->Error(prefix + nodeKey);
      if (nodeKey != key) continue;
      tree->SelectNode(node);
      NavigationBar_->BarSelected(bar, true);
      NavigationBar_->SelectedBar(bar);
      NavigationBar_->Redraw(true);
      found = true;
      return;
    }
  });
  return found;
}

void DtmNavigation::describeMembers(MemberTableBuilder<DtmNavigation>& table) {
  using Self = DtmNavigation;
  table.TESSALINE_PROPERTY(std::string, IDtmNavigation_Name)
      .procedure("IDtmNavigation_Init", &Self::IDtmNavigation_Init)
      .procedure("IDtmNavigation_Load", &Self::IDtmNavigation_Load)
      .function("IDtmNavigation_ActivateMenu", &Self::IDtmNavigation_ActivateMenu)
      .procedure("IDtmNavigation_Uninitialize", &Self::IDtmNavigation_Uninitialize)
      .method("BuildMenu",
              [](Self& self, DispatchArgs& args) {
                self.BuildMenu(platform::asXmlNode(argument(args, 0).toObject()),
                               argument(args, 1).toInt16());
                return Variant();
              })
      .procedure("NavigationSelected", &Self::NavigationSelected)
      .TESSALINE_PROPERTY(int16_t, Align)
      .persist({"Align"});
}

}  // namespace tessaline
