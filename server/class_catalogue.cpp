#include "tessaline/server/class_catalogue.h"

#include "tessaline/action/data_picture_button.h"
#include "tessaline/action/data_picture_fn_button.h"
#include "tessaline/action/function_button.h"
#include "tessaline/action/launch_button.h"
#include "tessaline/display/data_label.h"
#include "tessaline/display/launch_label.h"
#include "tessaline/display/static_label.h"
#include "tessaline/display/status_control.h"
#include "tessaline/entry/data_check_box.h"
#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/data_combo_box2.h"
#include "tessaline/entry/data_multi_line_text_box.h"
#include "tessaline/entry/data_text_box.h"
#include "tessaline/entry/date_time_control.h"
#include "tessaline/entry/list_control.h"
#include "tessaline/frame/data_type_controller.h"
#include "tessaline/gauges/angular_gauge.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/gauges/dynamic_gauge.h"
#include "tessaline/navigation/navigation.h"
#include "tessaline/support/data_constants.h"
#include "tessaline/support/dictionary.h"
#include "tessaline/support/tooltip.h"
#include "tessaline/trends/data_trend.h"
#include "tessaline/trends/dynamic_trend.h"
#include "tessaline/trends/multi_trend.h"
#include "tessaline/trends/waveform.h"
#include "tessaline/validation/validators.h"

namespace tessaline {

namespace {

// A class that a host receives from the library and can't create.
template <class C>
CatalogueEntry handedOut(std::string_view name) {
  return {findClassIdentity(name), nullptr, &memberTableOf<C>};
}

template <class C>
CatalogueEntry control(std::string_view name) {
  return {findClassIdentity(name), [] { return Ref<Object>(C::create()); }, &memberTableOf<C>};
}

const std::vector<CatalogueEntry>& entries() {
  static const std::vector<CatalogueEntry> list = {
      handedOut<DataConstants>("DataConstants"),
      {findClassIdentity("DataTypeController"), nullptr, nullptr},
      handedOut<DiscreteValidator>("DiscreteValidator"),
      handedOut<LengthValidator>("LengthValidator"),
      handedOut<RangeValidator>("RangeValidator"),
      {findClassIdentity("Logger"), nullptr, nullptr},
      handedOut<Dictionary>("Dictionary"),
      {findClassIdentity("cTooltip"), [] { return Ref<Object>(std::make_shared<cTooltip>()); },
       &memberTableOf<cTooltip>},
      control<DTMDataComboBox>("DTMDataComboBox"),
      control<DTMDataLabel>("DTMDataLabel"),
      control<DTMDataTextBox>("DTMDataTextBox"),
      control<DTMStatusControl>("DTMStatusControl"),
      control<DTMDataGuageControl>("DTMDataGuageControl"),
      control<DTMListControl>("DTMListControl"),
      control<DtmStaticLabel>("DtmStaticLabel"),
      control<DTMDataAngularGuage>("DTMDataAngularGuage"),
      control<DTMDynamicGuageControl>("DTMDynamicGuageControl"),
      control<DTMDataMultiLnTextBox>("DTMDataMultiLnTextBox"),
      control<DTMDataComboBox2>("DTMDataComboBox2"),
      control<DTMDataLaunchLabel>("DTMDataLaunchLabel"),
      control<DTMDataTrendControl>("DTMDataTrendControl"),
      control<DTMDynamicTrendControl>("DTMDynamicTrendControl"),
      control<DTMMultiTrendControl>("DTMMultiTrendControl"),
      control<DTMWaveFormControl>("DTMWaveFormControl"),
      control<DTMDataCheckBox>("DTMDataCheckBox"),
      control<DTMDateTimeControl>("DTMDateTimeControl"),
      control<DTMLaunchButton>("DTMLaunchButton"),
      control<DTMFunctionButton>("DTMFunctionButton"),
      control<DTMDataPictureButton>("DTMDataPictureButton"),
      control<DTMDataPictureFnButton>("DTMDataPictureFnButton"),
      control<DtmNavigation>("DtmNavigation"),
  };
  return list;
}

}  // namespace

std::span<const CatalogueEntry> catalogue() { return entries(); }

const CatalogueEntry* findClass(std::string_view key) {
  const ClassIdentity* identity = findClassIdentity(key);
  if (!identity) return nullptr;
  for (const CatalogueEntry& entry : entries()) {
    if (entry.identity == identity) return &entry;
  }
  return nullptr;
}

Ref<Object> CreateObject(std::string_view progIdOrClassId) {
  const CatalogueEntry* entry = findClass(progIdOrClassId);
  if (!entry || !entry->create || !entry->identity->creatable()) {
    throw VbError(err::CantCreateObject);
  }
  return entry->create();
}

}  // namespace tessaline
