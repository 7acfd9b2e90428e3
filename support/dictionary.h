#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tessaline/frame/property_table.h"
#include "tessaline/values/variant.h"

// A hash table from strings to values for fast lookup of many keys: a table of bucket heads
// over a slot table whose slot 0 is never used (0 means "none"), a free list, and growth by a
// whole chunk when the free list runs dry. New entries go to the end of their bucket's chain.
//
// Behaviour that callers meet:
// - An empty key fails with 1001, "Invalid key", in every operation.
// - A key that holds characters above 127 may hash to a negative number; its bucket is then a
//   negative remainder and the operation fails with 9. Keys of plain ASCII never do.
// - IgnoreCase folds keys to upper case (ASCII, Latin-1, Latin Extended-A, basic Greek and
//   Cyrillic; other characters stay as they are) before hashing and comparing.
// - The key list holds the keys as Add was given them, unfolded, in the order of Add. Keys
//   shows it (9 when it is empty); entries made by item let aren't in it, so Count may exceed
//   the number of Keys. Remove drops every key of the list equal to the given one with case,
//   so under IgnoreCase a Remove by another case leaves the added spelling in Keys.
// - SetSize empties the table and keeps the key list; RemoveAll empties both.
// - A removed entry's slot keeps its key and value, and so any object it refers to, until the
//   slot is used again or the table is emptied.
// - Sizes: HashSize below 1, or ListSize or ChunkSize below 0, fail with 9 (a table can't be
//   dimensioned so); growth past the 32-bit slot numbers fails with 6.
// - Every failure leaves the table as it was.
namespace tessaline {

// The hash of a key: its characters as Windows-1252 bytes (one '?' for each character that
// code page lacks), read as 32-bit words with the first byte lowest, the last word padded
// with zeros, all combined by exclusive-or.
int32_t dictionaryHash(std::string_view key);

class Dictionary : public Dispatchable {
 public:
  // Made as SetSize(1024, 2048, 1024) makes it.
  Dictionary();

  static void describeMembers(MemberTableBuilder<Dictionary>& table);
  const MemberTable& members() const override { return memberTableOf<Dictionary>(); }

  // A ListSize or ChunkSize of 0 keeps the one in force.
  void SetSize(int32_t HashSize, int32_t ListSize = 0, int32_t ChunkSize = 0);
  bool IgnoreCase() { return ignoreCase_; }
  // 1001 once the table holds an entry.
  void IgnoreCase(bool value);
  bool Exists(std::string_view key);
  // 457 for a key that exists.
  void Add(std::string_view key, const Variant& value);
  // Empty for an unknown key, which stays unknown.
  Variant item(std::string_view key);
  // Creates an unknown key, outside the key list.
  void item(std::string_view key, const Variant& value);
  // 5 for an unknown key.
  void Remove(std::string_view key);
  void RemoveAll();
  int32_t Count() { return count_; }
  // The key list as an array from index 0.
  Variant Keys();

  // The sizes in force and the slots made so far, slot 0 among them: for tests and tuning.
  int32_t hashSize() const { return hashSize_; }
  int32_t listSize() const { return listSize_; }
  int32_t chunkSize() const { return chunkSize_; }
  int32_t slotCount() const { return static_cast<int32_t>(links_.size()); }

 private:
  // A slot lives in two tables of the same length: its chain link with a fingerprint of its
  // key, which a lookup walks, and its key and value, which the lookup reads once the
  // fingerprint agrees. The walk so stays in a table small enough for the cache.
  struct Link {
    int32_t NextItem = 0;
    uint32_t fingerprint = 0;
  };
  struct Entry {
    std::string Key;
    Variant Value;
  };
  // Where a key is or would go: its bucket, its slot (0 when absent), and the slot before it
  // in the chain (the chain's last when absent; 0 when there is none).
  struct Position {
    int32_t bucket = 0;
    int32_t slot = 0;
    int32_t previous = 0;
    uint32_t fingerprint = 0;
  };

  std::string_view storedForm(std::string_view key);
  Position locate(std::string_view storedKey) const;
  void addSlots(int32_t count);
  int32_t link(const Position& at, std::string&& storedKey) noexcept;

  std::vector<int32_t> hashTable_;
  std::vector<Link> links_;
  std::vector<Entry> entries_;
  int32_t freeHead_ = 0;
  int32_t hashSize_ = 0;
  int32_t listSize_ = 0;
  int32_t chunkSize_ = 0;
  int32_t count_ = 0;
  std::vector<std::string> keys_;
  bool ignoreCase_ = false;
  // The folded key under IgnoreCase, kept so that lookups don't allocate.
  std::string folded_;
};

}  // namespace tessaline
