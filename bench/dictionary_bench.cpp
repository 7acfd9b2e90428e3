// A million keys into the Dictionary and then a million lookups, beside std::unordered_map with
// the same keys in the same run. Both are sized for a million first, as a user who stores that
// many would. The XOR hash decides the chains, so the key sets differ on purpose:
// - tags: instrument tags of a plant, "U03.TIC042.SP", the keys a device tool really holds;
// - numbered: "k" and a number, whose digits XOR into few hashes (long chains);
// - codes: four-character codes, which the hash keeps apart, for the table's own cost.
// The counters give the chains: the longest, and the comparisons of an average lookup.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "tessaline/support/dictionary.h"

namespace {

using tessaline::Dictionary;
using tessaline::Variant;

constexpr int32_t kKeys = 1000000;
// A prime near a million: the remainder then depends on every bit of the hash.
constexpr int32_t kHashSize = 1000003;

enum class KeySet { Tags, Numbered, Codes };

std::vector<std::string> makeKeys(KeySet set) {
  std::vector<std::string> keys;
  keys.reserve(kKeys);
  if (set == KeySet::Numbered) {
    for (int32_t i = 0; i < kKeys; ++i) keys.push_back("k" + std::to_string(i));
  } else if (set == KeySet::Codes) {
    const std::string digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    for (int32_t i = 0; i < kKeys; ++i) {
      std::string code;
      for (int32_t n = i, k = 0; k < 4; ++k, n /= 62) code += digits[static_cast<size_t>(n % 62)];
      keys.push_back(code);
    }
  } else {
    const char* types[] = {"FT",  "TT",  "PT", "LT", "FV", "TV", "PV", "LV", "FIC", "TIC",
                           "PIC", "LIC", "AT", "DT", "HS", "ZS", "XV", "FQ", "TE",  "PDT"};
    const char* parameters[] = {"PV",     "SP",     "OUT",    "MODE", "HI_LIM",
                                "LO_LIM", "ALM_HI", "ALM_LO", "UNIT", "DESC"};
    for (int32_t loop = 0; static_cast<int32_t>(keys.size()) < kKeys; ++loop) {
      char unit[16];
      std::snprintf(unit, sizeof unit, "U%02d.", loop / 1000);
      char number[8];
      std::snprintf(number, sizeof number, "%03d.", loop % 1000);
      for (const char* type : types) {
        for (const char* parameter : parameters) {
          keys.push_back(std::string(unit) + type + number + parameter);
        }
      }
    }
    keys.resize(kKeys);
  }
  return keys;
}

const std::vector<std::string>& keysOf(KeySet set) {
  static std::vector<std::string> sets[3];
  std::vector<std::string>& keys = sets[static_cast<int>(set)];
  if (keys.empty()) keys = makeKeys(set);
  return keys;
}

// The same keys in another order, so that lookups don't walk memory as the inserts did.
const std::vector<std::string>& shuffledKeysOf(KeySet set) {
  static std::vector<std::string> sets[3];
  std::vector<std::string>& keys = sets[static_cast<int>(set)];
  if (keys.empty()) {
    keys = keysOf(set);
    std::shuffle(keys.begin(), keys.end(), std::mt19937(42));
  }
  return keys;
}

void chainCounters(benchmark::State& state, KeySet set) {
  std::vector<int32_t> chains(kHashSize);
  for (const std::string& key : keysOf(set)) {
    ++chains[static_cast<size_t>(tessaline::dictionaryHash(key) % kHashSize)];
  }
  double comparisons = 0;
  for (const int32_t length : chains) comparisons += length * (length + 1) / 2.0;
  state.counters["longest_chain"] = *std::max_element(chains.begin(), chains.end());
  state.counters["compares_per_hit"] = comparisons / kKeys;
}

std::shared_ptr<Dictionary> filledDictionary(KeySet set) {
  auto d = std::make_shared<Dictionary>();
  d->SetSize(kHashSize, kKeys);
  int32_t i = 0;
  for (const std::string& key : keysOf(set)) d->Add(key, Variant(i++));
  return d;
}

std::unordered_map<std::string, Variant> filledMap(KeySet set) {
  std::unordered_map<std::string, Variant> map;
  map.reserve(kKeys);
  int32_t i = 0;
  for (const std::string& key : keysOf(set)) map.emplace(key, Variant(i++));
  return map;
}

void Dictionary_Insert(benchmark::State& state, KeySet set) {
  keysOf(set);
  for (auto _ : state) {
    auto d = filledDictionary(set);
    benchmark::DoNotOptimize(d->Count());
    state.PauseTiming();
    d.reset();
    state.ResumeTiming();
  }
  chainCounters(state, set);
}

void Dictionary_Insert_unordered_map(benchmark::State& state, KeySet set) {
  keysOf(set);
  for (auto _ : state) {
    auto map = std::make_unique<std::unordered_map<std::string, Variant>>(filledMap(set));
    benchmark::DoNotOptimize(map->size());
    state.PauseTiming();
    map.reset();
    state.ResumeTiming();
  }
}

void Dictionary_Lookup(benchmark::State& state, KeySet set) {
  const auto d = filledDictionary(set);
  const std::vector<std::string>& keys = shuffledKeysOf(set);
  for (auto _ : state) {
    for (const std::string& key : keys) benchmark::DoNotOptimize(d->item(key));
  }
  chainCounters(state, set);
}

void Dictionary_Lookup_unordered_map(benchmark::State& state, KeySet set) {
  const auto map = filledMap(set);
  const std::vector<std::string>& keys = shuffledKeysOf(set);
  for (auto _ : state) {
    for (const std::string& key : keys) benchmark::DoNotOptimize(Variant(map.find(key)->second));
  }
}

#define DICTIONARY_BENCH(function)                                                        \
  BENCHMARK_CAPTURE(function, tags, KeySet::Tags)->Unit(benchmark::kMillisecond);         \
  BENCHMARK_CAPTURE(function, numbered, KeySet::Numbered)->Unit(benchmark::kMillisecond); \
  BENCHMARK_CAPTURE(function, codes, KeySet::Codes)->Unit(benchmark::kMillisecond)

DICTIONARY_BENCH(Dictionary_Insert);
DICTIONARY_BENCH(Dictionary_Insert_unordered_map);
DICTIONARY_BENCH(Dictionary_Lookup);
DICTIONARY_BENCH(Dictionary_Lookup_unordered_map);

}  // namespace
