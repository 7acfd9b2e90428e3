#include "tessaline/support/dictionary.h"

#include <gtest/gtest.h>

#include "support.h"
#include "tessaline/server/class_catalogue.h"
#include "tessaline/support/data_constants.h"

namespace tessaline {
namespace {

using testing::errorOf;
using Keys = std::vector<std::string>;

Keys keysOf(Dictionary& d) {
  const Variant all = d.Keys();
  EXPECT_EQ(all.toArray().lowerBound, 0);
  Keys keys;
  for (const Variant& key : all.toArray().items) keys.push_back(key.toText());
  return keys;
}

TEST(DictionaryHash, XorsLittleEndianWordsOfWindows1252Bytes) {
  const struct {
    std::string key;
    uint32_t hash;
  } cases[] = {
      {"a", 0x61},
      {"abcd", 0x64636261},
      {"abcde", 0x64636261 ^ 0x65},
      {"abcdabcd", 0},
      {"é", 0xE9},
      {"abcdé", 0x64636261 ^ 0xE9},
      {"éabcd", 0x636261E9 ^ 0x64},
      {"€Ÿ", 0x9F80},
      {"Ω\xff", 0x3F3F},  // neither has a byte in the code page
      {"abcé", 0xE9636261},
  };
  for (const auto& c : cases)
    EXPECT_EQ(dictionaryHash(c.key), static_cast<int32_t>(c.hash)) << c.key;
  EXPECT_EQ(dictionaryHash("abcdefgh"), dictionaryHash("efghabcd"));
}

TEST(Dictionary, ListsAddedKeysInOrderAndNotThoseMadeByItemLet) {
  Dictionary d;
  d.Add("b", 1);
  d.Add("a", "x");
  d.item("let", 3);
  EXPECT_EQ(d.Count(), 3);
  EXPECT_TRUE(d.Exists("let"));
  EXPECT_EQ(keysOf(d), (Keys{"b", "a"}));
  EXPECT_EQ(errorOf([&] { d.Add("a", 2); }), err::KeyAlreadyExists);
  EXPECT_EQ(d.item("a"), Variant("x"));
  EXPECT_EQ(d.item("unknown"), Variant());
  EXPECT_FALSE(d.Exists("unknown"));
  EXPECT_EQ(errorOf([&] { d.Remove("unknown"); }), err::InvalidCall);
  d.Remove("b");
  d.Remove("a");
  EXPECT_EQ(errorOf([&] { d.Keys(); }), err::SubscriptOutOfRange);
  EXPECT_EQ(d.Count(), 1);
}

TEST(Dictionary, ChainsHoldTogetherThroughRemovals) {
  Dictionary d;
  d.SetSize(1, 2, 1);  // one bucket, and growth by one slot at a time
  const Keys keys = {"abcdefgh", "efghabcd", "k1", "k2", "k3"};
  for (size_t round = 0; round < keys.size(); ++round) {
    for (size_t i = 0; i < keys.size(); ++i) d.item(keys[i], static_cast<int32_t>(i));
    d.Remove(keys[round]);
    for (size_t i = 0; i < keys.size(); ++i) {
      EXPECT_EQ(d.item(keys[i]), i == round ? Variant() : Variant(static_cast<int32_t>(i)));
    }
  }
  EXPECT_EQ(d.slotCount(), 6);
}

TEST(Dictionary, BadKeysFailAndLeaveTheTableAsItWas) {
  Dictionary d;
  d.Add("kept", 1);
  const std::function<void(std::string_view)> operations[] = {
      [&](std::string_view k) { d.Exists(k); }, [&](std::string_view k) { d.Add(k, 1); },
      [&](std::string_view k) { d.item(k); },   [&](std::string_view k) { d.item(k, 1); },
      [&](std::string_view k) { d.Remove(k); },
  };
  for (const auto& operation : operations) {
    EXPECT_EQ(errorOf([&] { operation(""); }), 1001);
    EXPECT_EQ(errorOf([&] { operation("abcé"); }), err::SubscriptOutOfRange);  // a negative hash
  }
  try {
    d.Exists("");
    ADD_FAILURE();
  } catch (const VbError& e) {
    EXPECT_EQ(e.description(), "Invalid key");
  }
  EXPECT_EQ(d.Count(), 1);
  EXPECT_EQ(keysOf(d), Keys{"kept"});
  // A negative hash that HashSize divides leaves no remainder: bucket 0 serves.
  ASSERT_EQ(dictionaryHash("abcéabc "), static_cast<int32_t>(0xC9000000));
  d.Add("abcéabc ", 2);
  d.Add("é", 3);
  EXPECT_EQ(d.item("abcéabc "), Variant(2));
  EXPECT_EQ(d.item("é"), Variant(3));
}

TEST(Dictionary, IgnoreCaseFoldsLookupsButNotTheKeyList) {
  Dictionary d;
  d.IgnoreCase(true);
  d.Add("abc", 1);
  d.Add("é", 2);
  EXPECT_TRUE(d.Exists("ABC"));
  EXPECT_TRUE(d.Exists("É"));
  EXPECT_EQ(errorOf([&] { d.Add("aBc", 3); }), err::KeyAlreadyExists);
  EXPECT_EQ(errorOf([&] { d.IgnoreCase(false); }), 1001);
  d.Remove("ABC");  // the entry goes, and "abc" stays listed
  EXPECT_EQ(keysOf(d), (Keys{"abc", "é"}));
  d.Add("abc", 4);
  d.Remove("abc");  // every listed "abc" goes
  EXPECT_EQ(keysOf(d), Keys{"é"});
  d.RemoveAll();
  d.IgnoreCase(false);
  d.Add("abc", 1);
  EXPECT_FALSE(d.Exists("ABC"));
}

TEST(Dictionary, GrowsByChunksAndResizes) {
  Dictionary d;
  EXPECT_EQ(d.slotCount(), 2049);
  for (int i = 0; i <= 2048; ++i) d.Add("k" + std::to_string(i), i);
  EXPECT_EQ(d.slotCount(), 3073);
  d.Remove("k5");
  d.Add("again", 0);  // takes the freed slot
  EXPECT_EQ(d.slotCount(), 3073);
  for (int i = 0; i <= 2048; ++i) {
    EXPECT_EQ(d.item("k" + std::to_string(i)), i == 5 ? Variant() : Variant(i));
  }
  EXPECT_EQ(errorOf([&] { d.SetSize(0); }), err::SubscriptOutOfRange);
  EXPECT_EQ(errorOf([&] { d.SetSize(16, -1); }), err::SubscriptOutOfRange);
  EXPECT_EQ(d.Count(), 2049);
  d.SetSize(16);  // empties the table, keeps the key list and the other sizes
  EXPECT_EQ(d.Count(), 0);
  EXPECT_FALSE(d.Exists("k1"));
  EXPECT_EQ(d.slotCount(), 2049);
  EXPECT_EQ(keysOf(d).size(), 2049u);
  d.RemoveAll();
  EXPECT_EQ(d.hashSize(), 16);
  EXPECT_EQ(errorOf([&] { d.Keys(); }), err::SubscriptOutOfRange);
}

TEST(Dictionary, TakesMegabyteKeysAndAMillionEntries) {
  Dictionary d;
  std::string big(1 << 20, 'x');
  d.Add(big, 1);
  big.back() = 'y';
  d.Add(big, 2);
  d.Remove(big);
  big.back() = 'x';
  EXPECT_EQ(d.item(big), Variant(1));

  Dictionary million;
  million.SetSize(1000003, 1000000);
  for (int32_t i = 0; i < 1000000; ++i) million.Add("k" + std::to_string(i), i);
  EXPECT_EQ(million.Count(), 1000000);
  EXPECT_EQ(million.slotCount(), 1000001);
  for (int32_t i = 0; i < 1000000; i += 997) {
    EXPECT_EQ(million.item("k" + std::to_string(i)), Variant(i));
  }
  const Keys keys = keysOf(million);
  ASSERT_EQ(keys.size(), 1000000u);
  EXPECT_EQ(keys.back(), "k999999");
}

TEST(Dictionary, AnswersByNameAndSitsInDataConstants) {
  auto d = std::make_shared<Dictionary>();
  d->call("item", {"b", 2});
  EXPECT_EQ(d->call("item", {"b"}), Variant(2));
  EXPECT_EQ(d->get("Count"), Variant(1));
  d->call("SetSize", {8});
  EXPECT_EQ(d->hashSize(), 8);
  EXPECT_EQ(d->listSize(), 2048);

  auto constants = std::make_shared<DataConstants>();
  EXPECT_TRUE(constants->get("FlowUnit").toObject() == nullptr);
  constants->let("FlowUnit", Variant(Ref<Dictionary>(d)));
  EXPECT_EQ(constants->FlowUnit().get(), d.get());
  EXPECT_EQ(errorOf([&] { constants->let("FlowUnit", Variant(constants)); }), err::TypeMismatch);
}

TEST(HandedOutClasses, DispatchByTheCataloguesTableAndCantBeCreated) {
  for (const char* name :
       {"Dictionary", "DataConstants", "RangeValidator", "LengthValidator", "DiscreteValidator"}) {
    const CatalogueEntry* entry = findClass(name);
    ASSERT_TRUE(entry && entry->members && !entry->create) << name;
    EXPECT_EQ(errorOf([&] { CreateObject(std::string("Tessaline.") + name); }), 429);
  }
  EXPECT_EQ(&findClass("Dictionary")->members(), &std::make_shared<Dictionary>()->members());
}

}  // namespace
}  // namespace tessaline
