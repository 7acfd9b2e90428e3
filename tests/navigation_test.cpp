// The navigation: the menu's rules (conditions, folders, items, faults that stay local), its
// bars and trees as a user meets them, the choice announced to the host, the host's own
// activation, and menus that are deep, wide or broken.
#include "tessaline/navigation/navigation.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support.h"
#include "tessaline/platform/chart/codecs.h"

namespace tessaline {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMenu =
    "<navigation>"
    " <menuGroup label='Setup_L' name='Setup' treename='t1' icon='setup.png'>"
    "  <folder label='Basic_L' name='Basic'>"
    "   <menuItem label='Flow_L' name='Flow' action='dlgFlow'/>"
    "   <menuItem label='Units_L' name='Units' action='dlgUnits' includeIf=' hasUnits '/>"
    "  </folder>"
    "  <menuItem label='Empty_L' name='NoAction' action=''/>"
    " </menuGroup>"
    " <menuGroup label='Diag_L' name='Diag' treename='t2' icon='diag.png'>"
    "  <menuItem label='Status_L' name='Status' action='dlgStatus'>"
    "   <menuItem label='Detail_L' name='Detail' action='dlgDetail'/>"
    "  </menuItem>"
    " </menuGroup>"
    " <menuGroup label='Info_L' name='Info' treename='t3' icon='info.png'>"
    "  <folder label='About_L' name='About'/>"
    " </menuGroup>"
    "</navigation>";

class Navigation : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    base = fs::temp_directory_path() / ("tessaline-navigation-" + std::to_string(::getpid()));
    fs::create_directories(base / "images");
    host->baseFolder = base.string();
    for (const char* name : {"setup.png", "diag.png", "info.png"}) {
      platform::PixelImage image{2, 2, std::vector<uint32_t>(4, ~0u)};
      const auto bytes = chart::encodePng(image);
      std::ofstream(base / "images" / name, std::ios::binary)
          .write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
    }
    std::ofstream(base / "images" / "text.png") << "no picture";
    nav = DtmNavigation::create();
    nav->events.LoadDialog = [this](const std::string& key) { dialogs.push_back(key); };
  }
  void TearDown() override {
    fs::remove_all(base);
    HeadlessTest::TearDown();
  }
  void load(std::string_view xml) {
    nav->IDtmNavigation_Init(host, host);
    nav->IDtmNavigation_Load(testing::element(xml));
  }
  headless::ShortcutBar& bar() { return headless::user(nav->NavigationBar()); }
  headless::TreeView& tree(int16_t j) { return headless::user(*nav->TreeViews(j)); }
  // Each entry of a tree as "key=text[tag]" in collection order, with '+' when expanded.
  std::vector<std::string> entries(int16_t j) {
    std::vector<std::string> out;
    auto& t = tree(j);
    for (int32_t n = 1; n <= t.NodeCount(); ++n) {
      const Variant tag = t.NodeTag(n);
      out.push_back(t.NodeKey(n) + "=" + t.NodeText(n) +
                    (tag.isEmpty() ? "" : "[" + tag.toText() + "]") +
                    (t.NodeExpanded(n) ? "+" : ""));
    }
    return out;
  }
  std::vector<std::string> errorsStartingWith(const std::string& prefix) {
    std::vector<std::string> lines;
    for (const auto& line : host->errorLines()) {
      if (line.starts_with(prefix)) lines.push_back(line);
    }
    return lines;
  }

  fs::path base;
  std::shared_ptr<DtmNavigation> nav;
  std::vector<std::string> dialogs;
};

// ---- The menu ----

TEST_F(Navigation, EachGroupBecomesABarWithItsPictureCaptionAndFullyOpenTree) {
  host->translations = {{"Setup_L", "Einrichtung"}, {"Flow_L", "Durchfluss"}};
  load(kMenu);
  ASSERT_EQ(bar().BarCount(), 3);
  EXPECT_EQ(bar().BarCaption(1), "Einrichtung");
  EXPECT_EQ(bar().BarKey(2), "Diag");
  EXPECT_TRUE(bar().BarHasIcon(3));
  EXPECT_EQ(bar().openedPaths().at(0), base.string() + "/images/setup.png");
  EXPECT_EQ(bar().BarControl(2), nav->TreeViews(2));
  EXPECT_EQ(entries(1), (std::vector<std::string>{
                            "Setup=Einrichtung+", "Basic=Basic_L[]+", "Flow=Durchfluss[dlgFlow]+",
                            "Units=Units_L[dlgUnits]+", "NoAction=Empty_L[]+"}));
  EXPECT_EQ(tree(1).NodeParent(3), 2);
  EXPECT_EQ(tree(1).LineStyle(), 1);
  EXPECT_FALSE(tree(1).HideSelection());
  EXPECT_TRUE(tree(1).Visible());
  EXPECT_FALSE(nav->TreeViews(0)->Visible());
  EXPECT_EQ(bar().SelectedBar(), 1);
  EXPECT_TRUE(bar().Redraw());
  EXPECT_EQ(bar().Style(), 5);
  // Building chooses nothing.
  EXPECT_TRUE(dialogs.empty());
  EXPECT_TRUE(host->errorLines().empty());
}

TEST_F(Navigation, ConditionsGoToTheHostTrimmedInDocumentOrderAndFalseTakesTheSubtree) {
  std::vector<std::string> asked;
  host->evaluate = [&](const std::string& expression) {
    asked.push_back(expression);
    return expression != "no";
  };
  load(
      "<n><menuGroup label='G' name='G' treename='t' icon='setup.png'>"
      "<folder label='F' name='F' includeIf=' no '>"
      "<menuItem label='A' name='A' action='a' includeIf='yes'/></folder>"
      "<menuItem label='B' name='B' action='b' includeIf='   '/>"
      "<menuItem label='C' name='C' action='c' includeIf='later'/>"
      "</menuGroup></n>");
  EXPECT_EQ(asked, (std::vector<std::string>{"no", "", "later"}));
  EXPECT_EQ(entries(1), (std::vector<std::string>{"G=G+", "B=B[b]+", "C=C[c]+"}));

  // A blank condition keeps its entry whatever the host says.
  host->evaluate = [](const std::string&) { return false; };
  auto other = DtmNavigation::create();
  other->IDtmNavigation_Init(host, host);
  other->IDtmNavigation_Load(
      testing::element("<n><menuGroup label='G' name='G' treename='t' icon='setup.png'>"
                       "<menuItem label='B' name='B' action='b' includeIf=''/></menuGroup></n>"));
  EXPECT_EQ(other->TreeViews(1)->NodeCount(), 2);
}

TEST_F(Navigation, AFaultyEntryEndsOnlyItselfAndItsSiblingsAreBuilt) {
  host->evaluate = [](const std::string& expression) -> bool {
    if (expression == "throw") throw VbError(err::Failed);
    return true;
  };
  load(
      "<n><menuGroup label='G' name='G' treename='t' icon='setup.png'>"
      "<menuItem name='NoLabel' action='x'/>"
      "<menuItem label='NoName' action='x'/>"
      "<menuItem label='L' name='NoAction'><menuItem label='L' name='Lost' action='x'/></menuItem>"
      "<!-- a comment -->"
      "<menuItem label='L' name='Twice' action='x'/>"
      "<menuItem label='L' name='Twice' action='y'/>"
      "<menuItem label='L' name='Failing' action='x' includeIf='throw'/>"
      "<menuItem label='' name='Blank' action='x'/>"
      "</menuGroup></n>");
  EXPECT_EQ(entries(1),
            (std::vector<std::string>{"G=G+", "NoAction=L[]", "Twice=L[x]+", "Blank=[x]+"}));
  const auto lines = errorsStartingWith("Error on NavigationControl CreateMenu");
  ASSERT_EQ(lines.size(), 6u);
  EXPECT_EQ(lines[0],
            "Error on NavigationControl CreateMenu91 ,Description = Object variable or "
            "With block variable not set");
  EXPECT_EQ(lines[4],
            "Error on NavigationControl CreateMenu35602 ,Description = Key is not unique "
            "in collection");
  EXPECT_EQ(host->errorLines().size(), 6u);
}

TEST_F(Navigation, ABrokenGroupLeavesAGapInTheTreesAndADuplicateGroupItsTreeUnattached) {
  load(
      "<n><menuGroup label='A' name='A' treename='t' icon='setup.png'/>"
      "<menuGroup label='B' name='B' icon='setup.png'/>"
      "<menuGroup label='C' name='C' treename='t' icon='diag.png'/>"
      "<menuGroup label='A again' name='A' treename='t' icon='info.png'/></n>");
  EXPECT_EQ(bar().BarCount(), 2);
  EXPECT_FALSE(nav->TreeViews(2));
  EXPECT_EQ(bar().BarControl(2), nav->TreeViews(3));
  ASSERT_TRUE(nav->TreeViews(4));
  EXPECT_EQ(nav->TreeViews(4)->NodeCount(), 0);
  EXPECT_EQ(errorsStartingWith("Error on Naviation Control BuildMenu").size(), 2u);
}

TEST_F(Navigation, IconsThatCantBeReadOrLeaveTheFolderCostOnlyThePicture) {
  load(
      "<n><menuGroup label='A' name='A' treename='t' icon='missing.png'/>"
      "<menuGroup label='B' name='B' treename='t' icon='text.png'/>"
      "<menuGroup label='C' name='C' treename='t' icon='..\\..\\etc\\passwd'/></n>");
  EXPECT_EQ(bar().BarCount(), 3);
  for (int32_t b = 1; b <= 3; ++b) EXPECT_FALSE(bar().BarHasIcon(b));
  EXPECT_EQ(host->errorLines(),
            (std::vector<std::string>{"BuildMenu LoadIconImageFromFile A Failed",
                                      "BuildMenu LoadIconImageFromFile B Failed",
                                      "BuildMenu LoadIconImageFromFile C Failed"}));
  // The name that climbs out is never handed to the bar to open.
  EXPECT_EQ(bar().openedPaths().size(), 2u);
}

TEST_F(Navigation, WithoutAnyGroupTheFailureIsLoggedAndNothingIsPainted) {
  load("<n><other/></n>");
  EXPECT_EQ(host->errorLines(),
            std::vector<std::string>{"Error on Naviation Control BuildMenuTree35600 ,Description = "
                                     "Index out of bounds"});
  EXPECT_FALSE(bar().Redraw());
}

TEST_F(Navigation, ASecondLoadMeetsTheLoadedTreesAndKeepsTheFirstMenu) {
  load(kMenu);
  host->takeCalls();
  nav->IDtmNavigation_Load(
      testing::element("<n><menuGroup label='X' name='X' treename='t' icon='setup.png'/></n>"));
  EXPECT_EQ(bar().BarCount(), 3);
  ASSERT_EQ(host->errorLines().size(), 1u);
  EXPECT_TRUE(host->errorLines()[0].starts_with("Error on Naviation Control BuildMenu360"));
}

TEST_F(Navigation, InitKeepsItsOwnHostAndLeavesTheSharedOneAlone) {
  nav->IDtmNavigation_Init(host, host);
  EXPECT_FALSE(SharedHost());
  nav->NavigationSelected("X");
  EXPECT_EQ(host->callsOf("LogInfo").at(0).arguments,
            (std::vector<std::string>{"DtmNavigation", "Launching X"}));
}

// Ten thousand levels are built and walked without recursion.
TEST_F(Navigation, ADeepMenuIsBuiltAndWalkedWithoutRecursion) {
  constexpr int kDepth = 10000;
  std::string xml = "<n><menuGroup label='G' name='G' treename='t' icon='setup.png'>";
  for (int i = 0; i < kDepth; ++i) xml += "<f label='L' name='F" + std::to_string(i) + "'>";
  xml += "<menuItem label='Deep' name='Deep' action='d'/>";
  for (int i = 0; i < kDepth; ++i) xml += "</f>";
  xml += "</menuGroup></n>";
  load(xml);
  ASSERT_EQ(tree(1).NodeCount(), kDepth + 2);
  EXPECT_TRUE(tree(1).NodeExpanded(2));
  EXPECT_EQ(tree(1).NodeParent(kDepth + 2), kDepth + 1);
  bar().click(1);
  EXPECT_EQ(dialogs, std::vector<std::string>{"Deep"});
  EXPECT_TRUE(nav->IDtmNavigation_ActivateMenu("F9999"));
}

TEST_F(Navigation, AHugeLabelIsKeptWhole) {
  const std::string huge(1 << 20, 'x');
  load("<n><menuGroup label='G' name='G' treename='t' icon='setup.png'><menuItem label='" + huge +
       "' name='H' action='h'/></menuGroup></n>");
  EXPECT_EQ(tree(1).NodeText(2), huge);
}

// ---- Choosing ----

TEST_F(Navigation, AClickOnAnItemAnnouncesItsNameNeverItsAction) {
  load(kMenu);
  host->takeCalls();
  tree(1).click(3);
  EXPECT_EQ(dialogs, std::vector<std::string>{"Flow"});
  EXPECT_EQ(host->callsOf("LogInfo").at(0).arguments.at(1), "Launching Flow");
  // Folders, roots and items without an action change only the selection.
  for (int32_t node : {1, 2, 5}) tree(1).click(node);
  EXPECT_EQ(dialogs.size(), 1u);
  EXPECT_EQ(tree(1).SelectedNode(), 5);
  // An item with children stays choosable.
  tree(2).click(2);
  EXPECT_EQ(dialogs.back(), "Status");
}

TEST_F(Navigation, OpeningABarChoosesItsFirstItemBelowItsFolders) {
  load(kMenu);
  bar().click(1);
  EXPECT_EQ(dialogs, std::vector<std::string>{"Flow"});
  EXPECT_EQ(tree(1).SelectedNode(), 3);
  const int32_t repaints = bar().repaints();
  bar().click(3);
  EXPECT_EQ(dialogs.size(), 1u);
  EXPECT_EQ(tree(3).SelectedNode(), 0);
  EXPECT_EQ(bar().repaints(), repaints + 1);
}

TEST_F(Navigation, TheHostShowsAnyEntryWithoutAnEvent) {
  load(kMenu);
  host->takeCalls();
  EXPECT_TRUE(nav->IDtmNavigation_ActivateMenu("About"));
  EXPECT_EQ(bar().SelectedBar(), 3);
  EXPECT_TRUE(bar().BarSelected(3));
  EXPECT_EQ(tree(3).SelectedNode(), 2);
  EXPECT_TRUE(dialogs.empty());
  // One trace line for every entry visited, the matching one included.
  EXPECT_EQ(host->errorLines().size(), 5u + 3u + 2u);
  EXPECT_EQ(host->errorLines().back(), "Error on ActivateMenuAbout key :About");
  host->takeCalls();
  EXPECT_FALSE(nav->IDtmNavigation_ActivateMenu("flow"));
  EXPECT_EQ(host->errorLines().size(), 10u);
}

TEST_F(Navigation, AfterUninitializeClicksDoNothingAndActivationStillWorks) {
  load(kMenu);
  nav->IDtmNavigation_Uninitialize();
  host->takeCalls();
  tree(1).click(3);
  bar().click(2);
  EXPECT_TRUE(dialogs.empty());
  EXPECT_TRUE(host->calls().empty());
  EXPECT_TRUE(nav->IDtmNavigation_ActivateMenu("Detail"));
  EXPECT_EQ(bar().SelectedBar(), 2);
}

}  // namespace
}  // namespace tessaline
