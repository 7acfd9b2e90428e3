#include "tessaline/frame/interfaces.h"

#include "tessaline/values/text.h"

namespace tessaline {

namespace {

std::string normalizedIid(std::string_view iid) {
  if (iid.size() >= 2 && iid.front() == '{' && iid.back() == '}') {
    iid = iid.substr(1, iid.size() - 2);
  }
  return toLowerAscii(std::string(iid));
}

template <class Interface>
bool implements(const Ref<Object>& object, std::string_view iid) {
  return iid == Interface::kIid && dynamic_cast<Interface*>(object.get()) != nullptr;
}

}  // namespace

Ref<Object> queryInterface(const Ref<Object>& object, std::string_view iid) {
  if (!object) return nullptr;
  const std::string id = normalizedIid(iid);
  const bool found =
      implements<IDtmControl>(object, id) || implements<IDTMDataControl>(object, id) ||
      implements<IDTMEnumeration>(object, id) || implements<IDTMEnumeration1>(object, id) ||
      implements<IDTMControlFormatter>(object, id) ||
      implements<IDtmDataControlCaption>(object, id) || implements<IDTMStatusControl>(object, id) ||
      implements<IDtmDataSubscriptionControl>(object, id) ||
      implements<IDtmDataSubscriptionControlRange>(object, id) ||
      implements<IDtmNavigation>(object, id) || implements<IDtmTrendControl>(object, id) ||
      implements<IDtmWaveFormControl>(object, id) || implements<GenericDtm>(object, id) ||
      implements<DtmContainer>(object, id);
  return found ? object : nullptr;
}

}  // namespace tessaline
