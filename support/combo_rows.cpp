#include "tessaline/support/combo_rows.h"

#include "tessaline/values/text.h"

namespace tessaline::APICallBack {

namespace {

VbArray<ComboIndexRecord>& table() {
  thread_local VbArray<ComboIndexRecord> records;
  return records;
}

bool& hookInstalled() {
  thread_local bool installed = false;
  return installed;
}

// The table's records are addressed by 16-bit positions.
constexpr int32_t kMostRecords = 32767;

int16_t findIn(const VbArray<ComboIndexRecord>& records, platform::WindowHandle hWnd,
               bool wantRow) {
  const auto used = records.usedSlots();
  for (size_t i = 0; i < used.size(); ++i) {
    if (used[i].hWnd == hWnd) return static_cast<int16_t>(wantRow ? used[i].index : i);
  }
  return -1;
}

}  // namespace

void InstallComboHook() { hookInstalled() = true; }

bool comboHookInstalled() { return hookInstalled(); }

void RememberListIndex(platform::WindowHandle hWnd, int16_t row) {
  VbArray<ComboIndexRecord>& records = table();
  const int32_t upper = records.hasBounds() ? records.upperBound() : 0;
  const int16_t position = FindComboHandle(hWnd);
  if (position >= 0) {
    records[position].index = row;
    return;
  }
  if (upper >= kMostRecords) return;
  records.redimPreserve(upper + 1);
  records[upper] = {hWnd, row};
}

int16_t FindComboHandle(platform::WindowHandle hWnd) { return findIn(table(), hWnd, false); }

int16_t GetRememberedIndex(platform::WindowHandle hWnd) { return findIn(table(), hWnd, true); }

const VbArray<ComboIndexRecord>& ComboIndexTable() { return table(); }

platform::RowPaint paintComboRow(platform::WindowHandle combo, int32_t itemID, int32_t itemState,
                                 const std::string& text) {
  const int16_t current = GetRememberedIndex(combo);
  platform::RowPaint paint;
  paint.background = itemID == current ? platform::colors::kWhite : platform::colors::kYellow;
  // The row's text is fetched into a buffer of 255 characters and ends at the first NUL.
  const std::string_view fetched(text.c_str());
  paint.text = std::string(characterSlice(fetched, 0, 255));
  paint.textLeft = 1;
  paint.textTop = 1;
  paint.focusRectangle = (itemState & platform::kRowFocus) != 0;
  return paint;
}

void attachRowPainter(platform::ComboBox& combo) {
  if (!comboHookInstalled()) return;
  const platform::WindowHandle handle = combo.hWnd();
  combo.drawRow = [handle](int32_t itemID, int32_t itemState, const std::string& text) {
    return paintComboRow(handle, itemID, itemState, text);
  };
}

}  // namespace tessaline::APICallBack
