#pragma once

#include "tessaline/frame/property_table.h"
#include "tessaline/support/dictionary.h"

namespace tessaline {

// Holds the table of flow units that a caller hands it; Nothing until one does.
class DataConstants : public Dispatchable {
 public:
  static void describeMembers(MemberTableBuilder<DataConstants>& table);
  const MemberTable& members() const override { return memberTableOf<DataConstants>(); }

  Ref<Dictionary> FlowUnit() { return flowUnit_; }
  void FlowUnit(const Ref<Dictionary>& value) { flowUnit_ = value; }

 private:
  Ref<Dictionary> flowUnit_;
};

}  // namespace tessaline
