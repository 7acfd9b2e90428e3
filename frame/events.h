#pragma once

#include <cstdint>

namespace tessaline {

// The full set of events that a control may declare, with their dispatch identifiers:
// Change 1, Click 2, DblClick 3, KeyDown 4, KeyUp 5, KeyPress 6. Key arguments are by
// reference: what a host's handler leaves in them is what the control goes on with.
class ControlEvents {
 public:
  virtual ~ControlEvents() = default;
  virtual void Change() {}
  virtual void Click() {}
  virtual void DblClick() {}
  virtual void KeyDown([[maybe_unused]] int16_t& KeyCode, [[maybe_unused]] int16_t& Shift) {}
  virtual void KeyUp([[maybe_unused]] int16_t& KeyCode, [[maybe_unused]] int16_t& Shift) {}
  virtual void KeyPress([[maybe_unused]] int16_t& KeyAscii) {}
};

}  // namespace tessaline
