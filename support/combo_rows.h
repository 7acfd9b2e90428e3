#pragma once

#include <cstdint>
#include <string>

#include "tessaline/platform/widgets.h"
#include "tessaline/values/vb_array.h"

// The colours of drop-down rows: the row of the device's value stays white, every other row
// is yellow, the colour of a modified value. The table of remembered rows is kept once per
// thread for all controls, and only grows: a record outlives its control, and a window handle
// that comes back finds its old record.
namespace tessaline::APICallBack {

struct ComboIndexRecord {
  platform::WindowHandle hWnd = 0;
  int32_t index = 0;
};

// From now on, the drop-down lists of combo boxes made on this thread are drawn by their
// controls (where a control attaches the painter).
void InstallComboHook();
bool comboHookInstalled();

// Records the row of the device's value in a list child. Failures are passed over.
void RememberListIndex(platform::WindowHandle hWnd, int16_t row);
// Position of the child's record, -1 if absent.
int16_t FindComboHandle(platform::WindowHandle hWnd);
// The remembered row of the child, -1 if absent.
int16_t GetRememberedIndex(platform::WindowHandle hWnd);
const VbArray<ComboIndexRecord>& ComboIndexTable();

// How one drop-down row of a combo child is drawn: white if it holds the device's value,
// yellow otherwise, the text one pixel in from the corner, the focus rectangle where the mouse
// is, and no highlight of the selection. A child without a record has no white row.
platform::RowPaint paintComboRow(platform::WindowHandle combo, int32_t itemID, int32_t itemState,
                                 const std::string& text);

// Lets the control draw its combo child's rows (what subclassing its window does), when the
// hook was in place as the child was made.
void attachRowPainter(platform::ComboBox& combo);

}  // namespace tessaline::APICallBack
