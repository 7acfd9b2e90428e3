#define PCRE2_CODE_UNIT_WIDTH 8
#include "tessaline/platform/regexp/pcre2_regexp.h"

#include <pcre2.h>

#include <memory>
#include <unordered_map>

#include "tessaline/values/vb_error.h"

namespace tessaline::regexp {

namespace {

constexpr uint32_t kCompileOptions = PCRE2_UTF | PCRE2_MATCH_INVALID_UTF | PCRE2_DOLLAR_ENDONLY |
                                     PCRE2_ALT_BSUX | PCRE2_MATCH_UNSET_BACKREF |
                                     PCRE2_ALLOW_EMPTY_CLASS;
// A test gives up (and answers no match) rather than backtrack without end.
constexpr uint32_t kMatchLimit = 10'000'000;
constexpr size_t kCachedPatterns = 128;

// A compiled pattern, or the reason it was refused.
class Compiled {
 public:
  explicit Compiled(const std::string& pattern) {
    if (classicSyntaxError(pattern)) return;
    int errorCode = 0;
    PCRE2_SIZE errorOffset = 0;
    code_ = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(),
                          kCompileOptions, &errorCode, &errorOffset, nullptr);
    if (!code_) return;
    pcre2_jit_compile(code_, PCRE2_JIT_COMPLETE);
    match_ = pcre2_match_data_create_from_pattern(code_, nullptr);
    context_ = pcre2_match_context_create(nullptr);
    pcre2_set_match_limit(context_, kMatchLimit);
  }
  ~Compiled() {
    pcre2_match_context_free(context_);
    pcre2_match_data_free(match_);
    pcre2_code_free(code_);
  }
  Compiled(const Compiled&) = delete;
  Compiled& operator=(const Compiled&) = delete;

  bool test(const std::string& text) const {
    if (!code_) throw VbError(err::RegExpSyntax);
    const int rc = pcre2_match(code_, reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), 0, 0,
                               match_, context_);
    return rc >= 0;
  }

 private:
  pcre2_code* code_ = nullptr;
  pcre2_match_data* match_ = nullptr;
  pcre2_match_context* context_ = nullptr;
};

const Compiled& compiled(const std::string& pattern) {
  thread_local std::unordered_map<std::string, std::unique_ptr<Compiled>> cache;
  auto found = cache.find(pattern);
  if (found != cache.end()) return *found->second;
  if (cache.size() >= kCachedPatterns) cache.clear();
  return *cache.emplace(pattern, std::make_unique<Compiled>(pattern)).first->second;
}

class Pcre2RegExp : public platform::RegExp {
 public:
  std::string Pattern() override { return pattern_; }
  void Pattern(const std::string& value) override { pattern_ = value; }
  bool Test(const std::string& sourceString) override {
    return compiled(pattern_).test(sourceString);
  }

 private:
  std::string pattern_;
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::optional<std::string> classicSyntaxError(std::string_view pattern) {
  bool inClass = false;
  for (size_t i = 0; i < pattern.size(); ++i) {
    const char c = pattern[i];
    if (c == '\\') {
      ++i;
    } else if (inClass) {
      inClass = c != ']';
    } else if (c == '[') {
      inClass = true;
      if (i + 1 < pattern.size() && pattern[i + 1] == '^') ++i;
    } else if (c == '{') {
      size_t j = i + 1;
      const size_t minimum = j;
      while (j < pattern.size() && isDigit(pattern[j])) ++j;
      if (j == minimum) return "a brace that is no quantifier at offset " + std::to_string(i);
      if (j < pattern.size() && pattern[j] == ',') {
        ++j;
        while (j < pattern.size() && isDigit(pattern[j])) ++j;
      }
      if (j >= pattern.size() || pattern[j] != '}') {
        return "a brace that is no quantifier at offset " + std::to_string(i);
      }
      i = j;
    }
  }
  return std::nullopt;
}

void install() {
  platform::setRegExpEngine([] { return Ref<platform::RegExp>(std::make_shared<Pcre2RegExp>()); });
}

}  // namespace tessaline::regexp
