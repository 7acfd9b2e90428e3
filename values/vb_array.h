#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "tessaline/values/vb_error.h"

namespace tessaline {

// An array as the controls keep their tables: lower bound 0, and no bounds at all until it
// is first dimensioned. Asking a table without bounds for its upper bound or an element
// raises 9, as it always did.
template <class T>
class VbArray {
 public:
  bool hasBounds() const { return items_.has_value(); }
  int32_t upperBound() const {
    if (!items_) throw VbError(err::SubscriptOutOfRange);
    return static_cast<int32_t>(items_->size()) - 1;
  }
  // Fresh elements 0 to upper.
  void redim(int32_t upper) { items_.emplace(static_cast<size_t>(upper + 1)); }
  // Elements 0 to upper, keeping those that were there.
  void redimPreserve(int32_t upper) {
    if (!items_) items_.emplace();
    items_->resize(static_cast<size_t>(upper + 1));
  }
  void erase() { items_.reset(); }

  // The tables of entries keep one empty slot behind their entries, and every reader walks
  // from 0 to one below the upper bound: these are the entries; none without bounds.
  int32_t usedCount() const {
    return items_ ? std::max(static_cast<int32_t>(items_->size()) - 1, 0) : 0;
  }
  std::span<T> usedSlots() {
    return items_ ? std::span<T>(*items_).first(usedCount()) : std::span<T>();
  }
  std::span<const T> usedSlots() const {
    return items_ ? std::span<const T>(*items_).first(usedCount()) : std::span<const T>();
  }

  T& operator[](int32_t index) { return items_->at(checked(index)); }
  const T& operator[](int32_t index) const { return items_->at(checked(index)); }

 private:
  size_t checked(int32_t index) const {
    if (!items_ || index < 0 || index >= static_cast<int32_t>(items_->size())) {
      throw VbError(err::SubscriptOutOfRange);
    }
    return static_cast<size_t>(index);
  }

  std::optional<std::vector<T>> items_;
};

}  // namespace tessaline
