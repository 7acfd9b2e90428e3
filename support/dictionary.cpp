#include "tessaline/support/dictionary.h"

#include <algorithm>
#include <utility>

#include "tessaline/values/text.h"

namespace tessaline {

namespace {

constexpr int32_t kInvalidKey = 1001;

// The characters of Windows-1252 bytes 0x80 to 0x9F; the five bytes the code page leaves
// undefined stand for the control characters of the same number, as Windows maps them.
constexpr char32_t kCp1252Row8And9[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

uint8_t cp1252Byte(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<uint8_t>(c);
  for (uint8_t i = 0; i < 32; ++i) {
    if (kCp1252Row8And9[i] == c) return static_cast<uint8_t>(0x80 + i);
  }
  return '?';
}

uint32_t littleEndianWord(const unsigned char* p) {
  return uint32_t{p[0]} | uint32_t{p[1]} << 8 | uint32_t{p[2]} << 16 | uint32_t{p[3]} << 24;
}

// The simple upper case of a character, one character for one.
char32_t upperCase(char32_t c) {
  if (c >= 'a' && c <= 'z') return c - 0x20;
  if (c < 0xE0) return c;
  if ((c >= 0xE0 && c <= 0xFE && c != 0xF7) || (c >= 0x3B1 && c <= 0x3CB && c != 0x3C2) ||
      (c >= 0x430 && c <= 0x44F)) {
    return c - 0x20;
  }
  if (c == 0xFF) return 0x178;
  if (c == 0x131) return 'I';
  if (c == 0x17F) return 'S';
  if (c == 0x3C2) return 0x3A3;
  if (c == 0x3AC) return 0x386;
  if (c >= 0x3AD && c <= 0x3AF) return c - 0x25;
  if (c == 0x3CC) return 0x38C;
  if (c == 0x3CD || c == 0x3CE) return c - 0x3F;
  if (c >= 0x450 && c <= 0x45F) return c - 0x50;
  // Latin Extended-A pairs its cases upper then lower, except in the two runs that start
  // one later.
  const bool oddRun = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  const bool evenRun = (c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177);
  if (evenRun && c % 2 == 1) return c - 1;
  if (oddRun && c % 2 == 0) return c - 1;
  return c;
}

void foldToUpper(std::string_view key, std::string& out) {
  out.clear();
  for (size_t i = 0; i < key.size();) {
    const auto byte = static_cast<unsigned char>(key[i]);
    if (byte < 0x80) {
      out += static_cast<char>(byte >= 'a' && byte <= 'z' ? byte - 0x20 : byte);
      ++i;
      continue;
    }
    size_t length = 0;
    const char32_t c = decodeAt(key, i, length);
    // A byte that begins no character is kept as it is.
    if (c == 0xFFFD && length == 1) {
      out += key[i];
    } else {
      out += encodeUtf8(upperCase(c));
    }
    i += length;
  }
}

// Both hashes of a key in one pass over it: the XOR of its words, which picks the bucket, and
// a mixed fingerprint, which tells apart the keys of one chain (their XORs are often equal).
struct KeyHash {
  uint32_t words = 0;
  uint64_t mix = 0;

  void add(uint32_t word) {
    words ^= word;
    mix = (mix ^ word) * 0x9E3779B97F4A7C15u;
    mix ^= mix >> 32;
  }
};

KeyHash hashKey(std::string_view key) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(key.data());
  const size_t size = key.size();
  KeyHash hash;
  size_t i = 0;
  // Words of ASCII are their own Windows-1252 bytes: no conversion until a byte above 127.
  for (; i + 4 <= size; i += 4) {
    const uint32_t word = littleEndianWord(bytes + i);
    if (word & 0x80808080u) break;
    hash.add(word);
  }
  uint32_t word = 0;
  unsigned lane = 0;
  while (i < size) {
    uint8_t byte = bytes[i];
    if (byte < 0x80) {
      ++i;
    } else {
      size_t length = 0;
      byte = cp1252Byte(decodeAt(key, i, length));
      i += length;
    }
    word |= uint32_t{byte} << (8 * lane);
    if (++lane == 4) {
      hash.add(word);
      word = 0;
      lane = 0;
    }
  }
  if (lane != 0) hash.add(word);
  return hash;
}

}  // namespace

int32_t dictionaryHash(std::string_view key) { return static_cast<int32_t>(hashKey(key).words); }

Dictionary::Dictionary() { SetSize(1024, 2048, 1024); }

void Dictionary::SetSize(int32_t HashSize, int32_t ListSize, int32_t ChunkSize) {
  if (HashSize < 1 || ListSize < 0 || ChunkSize < 0) throw VbError(err::SubscriptOutOfRange);
  const int32_t listSize = ListSize != 0 ? ListSize : listSize_;
  const int32_t chunkSize = ChunkSize != 0 ? ChunkSize : chunkSize_;
  // The new tables are made before anything is replaced, so that a failed allocation changes
  // nothing.
  std::vector<int32_t> hashTable(static_cast<size_t>(HashSize), 0);
  std::vector<Link> links(static_cast<size_t>(listSize) + 1);
  std::vector<Entry> entries(links.size());
  for (int32_t i = 1; i < listSize; ++i) links[static_cast<size_t>(i)].NextItem = i + 1;
  hashTable_.swap(hashTable);
  links_.swap(links);
  entries_.swap(entries);
  hashSize_ = HashSize;
  listSize_ = listSize;
  chunkSize_ = chunkSize;
  count_ = 0;
  freeHead_ = listSize > 0 ? 1 : 0;
}

void Dictionary::IgnoreCase(bool value) {
  if (count_ > 0) throw VbError(kInvalidKey, "The Hash Table isn't empty");
  ignoreCase_ = value;
}

bool Dictionary::Exists(std::string_view key) { return locate(storedForm(key)).slot != 0; }

void Dictionary::Add(std::string_view key, const Variant& value) {
  const std::string_view stored = storedForm(key);
  const Position at = locate(stored);
  if (at.slot != 0) throw VbError(err::KeyAlreadyExists);
  // All that may fail happens before the entry is linked.
  std::string slotKey(stored);
  std::string listKey(key);
  Variant copy = value;
  if (keys_.size() == keys_.capacity()) keys_.reserve(std::max<size_t>(16, keys_.size() * 2));
  if (freeHead_ == 0) addSlots(chunkSize_);
  entries_[static_cast<size_t>(link(at, std::move(slotKey)))].Value = std::move(copy);
  keys_.push_back(std::move(listKey));
}

Variant Dictionary::item(std::string_view key) {
  const Position at = locate(storedForm(key));
  return at.slot != 0 ? entries_[static_cast<size_t>(at.slot)].Value : Variant();
}

void Dictionary::item(std::string_view key, const Variant& value) {
  const std::string_view stored = storedForm(key);
  const Position at = locate(stored);
  Variant copy = value;
  if (at.slot != 0) {
    entries_[static_cast<size_t>(at.slot)].Value = std::move(copy);
    return;
  }
  std::string slotKey(stored);
  if (freeHead_ == 0) addSlots(chunkSize_);
  entries_[static_cast<size_t>(link(at, std::move(slotKey)))].Value = std::move(copy);
}

void Dictionary::Remove(std::string_view key) {
  const Position at = locate(storedForm(key));
  if (at.slot == 0) throw VbError(err::InvalidCall);
  Link& slot = links_[static_cast<size_t>(at.slot)];
  int32_t& before = at.previous != 0 ? links_[static_cast<size_t>(at.previous)].NextItem
                                     : hashTable_[static_cast<size_t>(at.bucket)];
  before = slot.NextItem;
  slot.NextItem = freeHead_;
  freeHead_ = at.slot;
  std::erase_if(keys_, [key](const std::string& listed) { return listed == key; });
  --count_;
}

void Dictionary::RemoveAll() {
  SetSize(hashSize_, listSize_, chunkSize_);
  std::vector<std::string>().swap(keys_);
}

Variant Dictionary::Keys() {
  if (keys_.empty()) throw VbError(err::SubscriptOutOfRange);
  VariantArray keys;
  keys.items.reserve(keys_.size());
  for (const std::string& key : keys_) keys.items.emplace_back(key);
  return Variant(std::move(keys));
}

std::string_view Dictionary::storedForm(std::string_view key) {
  if (key.empty()) throw VbError(kInvalidKey, "Invalid key");
  if (!ignoreCase_) return key;
  foldToUpper(key, folded_);
  return folded_;
}

Dictionary::Position Dictionary::locate(std::string_view storedKey) const {
  const KeyHash hash = hashKey(storedKey);
  Position at;
  at.fingerprint = static_cast<uint32_t>(hash.mix);
  at.bucket = static_cast<int32_t>(hash.words) % hashSize_;
  if (at.bucket < 0) throw VbError(err::SubscriptOutOfRange);
  for (int32_t i = hashTable_[static_cast<size_t>(at.bucket)]; i != 0;
       i = links_[static_cast<size_t>(i)].NextItem) {
    if (links_[static_cast<size_t>(i)].fingerprint == at.fingerprint &&
        entries_[static_cast<size_t>(i)].Key == storedKey) {
      at.slot = i;
      return at;
    }
    at.previous = i;
  }
  return at;
}

void Dictionary::addSlots(int32_t count) {
  const size_t first = links_.size();
  const size_t size = first + static_cast<size_t>(count);
  if (size - 1 > static_cast<size_t>(INT32_MAX)) throw VbError(err::Overflow);
  // Room in both tables first, so that neither grows without the other; doubled, so that
  // chunks of any size cost amortized constant time.
  if (size > links_.capacity()) {
    const size_t capacity = std::max(size, 2 * links_.capacity());
    links_.reserve(capacity);
    entries_.reserve(capacity);
  }
  links_.resize(size);
  entries_.resize(size);
  for (size_t i = first; i + 1 < size; ++i) links_[i].NextItem = static_cast<int32_t>(i + 1);
  links_.back().NextItem = freeHead_;
  freeHead_ = static_cast<int32_t>(first);
}

int32_t Dictionary::link(const Position& at, std::string&& storedKey) noexcept {
  const int32_t taken = freeHead_;
  Link& slot = links_[static_cast<size_t>(taken)];
  freeHead_ = slot.NextItem;
  slot.NextItem = 0;
  slot.fingerprint = at.fingerprint;
  entries_[static_cast<size_t>(taken)].Key = std::move(storedKey);
  ++count_;
  if (at.previous != 0) {
    links_[static_cast<size_t>(at.previous)].NextItem = taken;
  } else {
    hashTable_[static_cast<size_t>(at.bucket)] = taken;
  }
  return taken;
}

void Dictionary::describeMembers(MemberTableBuilder<Dictionary>& table) {
  using Self = Dictionary;
  const auto optionalSize = [](const DispatchArgs& args, size_t index) {
    return index < args.size() ? args[index].toInt32() : 0;
  };
  table
      .method("SetSize",
              [optionalSize](Dictionary& d, DispatchArgs& a) {
                d.SetSize(argument(a, 0).toInt32(), optionalSize(a, 1), optionalSize(a, 2));
                return Variant();
              })
      .TESSALINE_PROPERTY(bool, IgnoreCase)
      .method("Exists", [](Dictionary& d,
                           DispatchArgs& a) { return Variant(d.Exists(argument(a, 0).toText())); })
      .method("Add",
              [](Dictionary& d, DispatchArgs& a) {
                d.Add(argument(a, 0).toText(), argument(a, 1));
                return Variant();
              })
      // A property with a key: the key alone reads it, the key and a value write it, as a
      // property put by dispatch passes them.
      .method("item",
              [](Dictionary& d, DispatchArgs& a) {
                const std::string key = argument(a, 0).toText();
                if (a.size() < 2) return d.item(key);
                d.item(key, a[1]);
                return Variant();
              })
      .method("Remove",
              [](Dictionary& d, DispatchArgs& a) {
                d.Remove(argument(a, 0).toText());
                return Variant();
              })
      .procedure("RemoveAll", &Self::RemoveAll)
      .TESSALINE_READONLY(int32_t, Count)
      .TESSALINE_READONLY(Variant, Keys);
}

}  // namespace tessaline
