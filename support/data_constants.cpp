#include "tessaline/support/data_constants.h"

namespace tessaline {

void DataConstants::describeMembers(MemberTableBuilder<DataConstants>& table) {
  using Self = DataConstants;
  table.TESSALINE_PROPERTY(Ref<Dictionary>, FlowUnit);
}

}  // namespace tessaline
