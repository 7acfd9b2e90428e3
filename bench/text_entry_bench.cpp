// The keystroke path of a text box: KeyDown, the KeyPress filter, the insert, Change with the
// pattern's test, KeyUp with the host's check and the comparison with the baseline.
#include <benchmark/benchmark.h>

#include "quiet_host.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"

namespace {

using namespace tessaline;
using tessaline::QuietHost;

// Each iteration is two keys: a character that the box takes, and a backspace.
void typeAndErase(benchmark::State& state, TextDataType type, const char* format, const char* shown,
                  char key) {
  headless::install(".");
  regexp::install();
  auto host = std::make_shared<QuietHost>();
  auto box = DTMDataTextBox::create();
  box->IDTMControl_Init(host);
  box->IDtmControl_DtmContainer(host);
  box->TextType(type);
  box->IDTMControlFormatter_EditFormat(format);
  box->IDTMDataControl_SetDeviceValue(Variant(shown));
  headless::TextBox& text = headless::user(box->Text1());
  text.click();
  text.select(static_cast<int32_t>(std::string(shown).size()), 0);
  int16_t shift = 0;
  const auto code = static_cast<int16_t>(key >= 'a' ? key - 32 : key);
  for (auto _ : state) {
    text.pressKey(code, shift, key);
    text.backspace();
  }
  if (box->Text1().Text() != shown) state.SkipWithError("the box didn't take the key");
  state.counters["per_key"] =
      benchmark::Counter(2.0 * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  SetSharedHost(nullptr);
  platform::setBackend(nullptr);
}

void Keystroke_Number_5_2f(benchmark::State& state) {
  typeAndErase(state, TextDataType::Numbers, "5.2f", "123.4", '5');
}
BENCHMARK(Keystroke_Number_5_2f);

void Keystroke_Text_8s(benchmark::State& state) {
  typeAndErase(state, TextDataType::Latin1, "8s", "abc", 'd');
}
BENCHMARK(Keystroke_Text_8s);

}  // namespace
