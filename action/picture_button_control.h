#pragma once

#include <memory>
#include <string>

#include "tessaline/frame/data_control.h"
#include "tessaline/platform/xml.h"
#include "tessaline/support/tooltip.h"
#include "tessaline/values/vb_array.h"

namespace tessaline {

// What the two picture buttons share: a device value shown as the picture of its enumeration
// entry, in the image ImgIcon, with a click on the picture that starts the function that the
// last matching entry set. No hot state, no validation, no status child; Enable reaches
// nothing, so clicks work regardless. How an entry names its function, and what a click
// starts, each button says itself.
class PictureButtonControl : public virtual IDTMEnumeration, public DataControl {
 public:
  ~PictureButtonControl() override;

  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return host_; }
  void IDtmControl_GenericDtm(Ref<GenericDtm> value) override;
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return container_; }
  void IDtmControl_DtmContainer(Ref<DtmContainer> value) override;
  bool IDtmControl_Enable() override { return enable_; }
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  bool IDTMDataControl_Hot() override { return false; }
  void IDTMDataControl_Hot(bool) override {}
  int32_t IDTMDataControl_Access() override { return access_; }
  // 0 disables, anything else enables.
  void IDTMDataControl_Access(int32_t value) override;
  // Reading empties the previous value.
  Variant IDTMDataControl_Value() override;
  // Stores the value, also as the previous one, and shows its entry's picture.
  void IDTMDataControl_Value(const Variant& value) override;
  // Reading the definition (not setting it) builds the tooltip from its description.
  Ref<Object> IDTMDataControl_DataItemDef() override;
  void IDTMDataControl_DataItemDef(Ref<Object> node) override;
  void IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) override;
  bool IDTMDataControl_Validate() override { return false; }
  bool IDTMDataControl_IsError() override { return false; }
  void IDTMDataControl_SetUserValue(const Variant& value) override;
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

  Ref<Object> IDTMEnumeration_EnumDataDef() override { return enumNode_; }
  void IDTMEnumeration_EnumDataDef(Ref<Object> node) override;
  // True when the table exists and its highest index is above 0.
  bool IDTMEnumeration_HasEnumData() { return usedEntries() > 0; }

  platform::Image& ImgIcon() { return *ImgIcon_; }
  const std::string& defaultImage() const { return defaultImage_; }
  const Ref<cTooltip>& tooltip() const { return tooltip_.object(); }

 protected:
  explicit PictureButtonControl(const std::string& className);

  // The entry table, sized to index 0 to `children` (the last slot stays empty).
  virtual void makeEntries(int32_t children) = 0;
  // Stores one child of the enumeration at an index: its name and code when it has both, and
  // the button's own attributes either way.
  virtual void readEntry(const Ref<platform::XmlNode>& child, int32_t index) = 0;
  // The table's highest index, which is the number of entries in use; -1 without a table.
  virtual int32_t usedEntries() const = 0;
  virtual const EnumData& entryAt(int32_t index) const = 0;
  // The last step of a match: the entry's function becomes the button's.
  virtual void takeFunctionOf(int32_t index) = 0;
  // The name and code of a child when it has both; the slot stays empty of them otherwise.
  static void readNameAndCode(const Ref<platform::XmlNode>& child, EnumData& entry);

  template <class Self>
  static void addPictureButtonMembers(MemberTableBuilder<Self>& table) {
    addDataControlMembers(table);
    table.TESSALINE_PROPERTY(Ref<Object>, IDTMEnumeration_EnumDataDef)
        .TESSALINE_READONLY(bool, IDTMEnumeration_HasEnumData);
  }

  std::unique_ptr<platform::Image> ImgIcon_;
  Ref<Object> enumNode_;
  std::string defaultImage_;
  bool enable_ = true;
  bool visible_ = true;
  Variant value_;

 private:
  void UpdateImage();
  void UpdateTooltip();

  ControlTooltip tooltip_{"Error in CreateTooltip of DtmPictureButton ", 10000};
};

// A picture button's entry table in the button's own kind of entry, with one spare slot behind
// the entries as every enumeration table has.
template <class Entry>
class PictureButtonWithEntries : public PictureButtonControl {
 public:
  const VbArray<Entry>& entries() const { return entries_; }

 protected:
  using PictureButtonControl::PictureButtonControl;

  void makeEntries(int32_t children) override { entries_.redim(children); }
  int32_t usedEntries() const override { return entries_.hasBounds() ? entries_.usedCount() : -1; }
  const EnumData& entryAt(int32_t index) const override { return entries_[index]; }

  VbArray<Entry> entries_;
};

}  // namespace tessaline
