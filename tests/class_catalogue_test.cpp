// The class catalogue: every class's identity, and the factory that creates a control by its
// ProgID or class identifier.
#include "tessaline/server/class_catalogue.h"

#include <gtest/gtest.h>

#include <set>

#include "support.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/support/resources.h"
#include "tessaline/support/tooltip.h"

namespace tessaline {
namespace {

TEST(ClassIdentities, AreUniqueAndCompleteForTheLibrary) {
  std::set<std::string_view> names, ids, interfaces;
  std::set<int32_t> bitmaps;
  int controls = 0;
  for (const ClassIdentity& identity : classIdentities()) {
    EXPECT_TRUE(names.insert(identity.name).second) << identity.name;
    EXPECT_TRUE(ids.insert(identity.classId).second) << identity.name;
    EXPECT_TRUE(interfaces.insert(identity.defaultInterface).second) << identity.name;
    EXPECT_EQ(identity.classId.size(), 36u) << identity.name;
    if (identity.isControl()) {
      ++controls;
      EXPECT_TRUE(bitmaps.insert(identity.toolboxBitmap).second) << identity.name;
      EXPECT_FALSE(identity.eventInterface.empty()) << identity.name;
      EXPECT_TRUE(identity.creatable());
    }
  }
  EXPECT_EQ(controls, 23);
  EXPECT_EQ(names.size(), 31u);
  EXPECT_EQ(*bitmaps.begin(), 30000);
  EXPECT_EQ(*bitmaps.rbegin(), 30022);
  const std::set<std::string_view> creatableAutomation = [] {
    std::set<std::string_view> found;
    for (const ClassIdentity& identity : classIdentities()) {
      if (!identity.isControl() && identity.creatable()) found.insert(identity.name);
    }
    return found;
  }();
  EXPECT_EQ(creatableAutomation, std::set<std::string_view>{"cTooltip"});
}

TEST(ClassIdentities, AreFoundByNameProgIdOrClassIdentifier) {
  const ClassIdentity* box = findClassIdentity("Tessaline.DTMDataTextBox");
  ASSERT_TRUE(box);
  EXPECT_EQ(box->name, "DTMDataTextBox");
  EXPECT_EQ(box->progId(), "Tessaline.DTMDataTextBox");
  EXPECT_EQ(findClassIdentity("{2902F4B1-6052-4C62-9D26-D8BA1E7ED49A}"), box);
  EXPECT_EQ(findClassIdentity("dtmdatatextbox"), box);
  EXPECT_EQ(findClassIdentity("Tessaline.NoSuchControl"), nullptr);
  EXPECT_EQ(findClassIdentity(""), nullptr);
}

class Catalogue : public testing::HeadlessTest {};

TEST_F(Catalogue, CreatesAControlByProgIdOrClassIdentifierOnTheInstalledBackend) {
  const std::shared_ptr<platform::Backend> installed = headless::install(".");
  const Ref<Object> byProgId = CreateObject("Tessaline.DTMDataTextBox");
  const Ref<Object> byClassId = CreateObject("2902f4b1-6052-4c62-9d26-d8ba1e7ed49a");
  EXPECT_TRUE(refCast<DTMDataTextBox>(byProgId));
  EXPECT_TRUE(refCast<DTMDataTextBox>(byClassId));
  EXPECT_FALSE(byProgId == byClassId);
  EXPECT_TRUE(refCast<cTooltip>(CreateObject("Tessaline.cTooltip")));
  for (const char* refused : {"Tessaline.Logger", "Tessaline.DataTypeController", "Tessaline.X", "",
                              "{00000000-0000-0000-0000-000000000000}"}) {
    EXPECT_EQ(testing::errorOf([&] { CreateObject(refused); }), err::CantCreateObject) << refused;
  }
  platform::setBackend(nullptr);
  EXPECT_EQ(testing::errorOf([&] { CreateObject("Tessaline.DTMDataLabel"); }), err::Failed);
  platform::setBackend(installed);
}

TEST_F(Catalogue, EveryControlHasASixteenColourToolboxBitmap) {
  for (const ClassIdentity& identity : classIdentities()) {
    if (!identity.isControl()) continue;
    const std::string name = toolboxBitmapName(identity.toolboxBitmap);
    const auto bytes = resourceBytes(name);
    ASSERT_GE(bytes.size(), 54u) << name;
    EXPECT_EQ(bytes[28], 4) << name << ": bits per pixel";
    const Ref<platform::Picture> picture = platform::PictureFromBytes(Variant(Ref<Object>(
        std::make_shared<platform::ByteArray>(std::vector<uint8_t>(bytes.begin(), bytes.end())))));
    ASSERT_TRUE(picture) << name;
    EXPECT_EQ(picture->image().width, 16) << name;
    EXPECT_EQ(picture->image().height, 15) << name;
  }
}

TEST_F(Catalogue, HandsOutTheSameTableThatTheControlsDispatchBy) {
  for (const CatalogueEntry& entry : catalogue()) {
    if (!entry.identity->isControl()) continue;
    ASSERT_TRUE(entry.members) << entry.identity->name;
    const Ref<Object> control = entry.create();
    EXPECT_EQ(&refCast<Dispatchable>(control)->members(), &entry.members()) << entry.identity->name;
    EXPECT_FALSE(entry.members().persisted().empty()) << entry.identity->name;
  }
}

}  // namespace
}  // namespace tessaline
