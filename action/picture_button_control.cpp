#include "tessaline/action/picture_button_control.h"

#include "tessaline/support/image_files.h"

namespace tessaline {

PictureButtonControl::PictureButtonControl(const std::string& className)
    : DataControl(className, nullptr) {
  window_->Width(480);
  window_->Height(480);
  ImgIcon_ = window_->createImage("ImgIcon");
  ImgIcon_->Width(480);
  ImgIcon_->Height(480);

  active_ = true;
  canSubscribe_ = true;
  access_ = 2;
  value_ = Variant("0");
}

PictureButtonControl::~PictureButtonControl() = default;

void PictureButtonControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, "DTMDataPicture");
}

void PictureButtonControl::IDtmControl_GenericDtm(Ref<GenericDtm> value) {
  host_ = value;
  PropertyChanged("IDtmControl_GenericDtm");
}

void PictureButtonControl::IDtmControl_DtmContainer(Ref<DtmContainer> value) {
  container_ = value;
  PropertyChanged("IDtmControl_DtmContainer");
}

void PictureButtonControl::IDtmControl_Enable(bool value) {
  enable_ = value;
  PropertyChanged("IDtmControl_Enable");
}

void PictureButtonControl::IDtmControl_Visible(bool value) {
  visible_ = value;
  ImgIcon_->Visible(value);
  PropertyChanged("IDtmControl_Visible");
}

void PictureButtonControl::IDTMDataControl_Access(int32_t value) {
  access_ = value;
  IDtmControl_Enable(value != 0);
  PropertyChanged("IDTMDataControl_Access");
}

Variant PictureButtonControl::IDTMDataControl_Value() {
  previousValue_ = Variant();
  return value_;
}

// A picture that can't be loaded ends the write before its notification.
void PictureButtonControl::IDTMDataControl_Value(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_Value ", [&] {
    value_ = value;
    previousValue_ = value;
    UpdateImage();
    PropertyChanged("IDTMDataControl_Value");
  });
}

Ref<Object> PictureButtonControl::IDTMDataControl_DataItemDef() {
  UpdateTooltip();
  return dataItemNode_;
}

void PictureButtonControl::IDTMDataControl_DataItemDef(Ref<Object> node) {
  storeDataItem(node, kAllElevenAttributes);
  PropertyChanged("IDTMDataControl_DataItemDef");
}

void PictureButtonControl::IDTMDataControl_SetMode(int32_t newValue, const std::string&) {
  statusMode_ = newValue;
}

void PictureButtonControl::IDTMDataControl_SetUserValue(const Variant& value) {
  IDTMDataControl_Value(value);
}

void PictureButtonControl::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataPicture Button IDTMDataControl_SetDeviceValue",
          [&] { IDTMDataControl_Value(value); });
}

// Every child takes a slot, also one without "name" or "code". A node of another name gives
// only the default picture; one without children keeps the table it had.
void PictureButtonControl::IDTMEnumeration_EnumDataDef(Ref<Object> node) {
  enumNode_ = node;
  const Ref<platform::XmlNode> enumeration = platform::asXmlNode(node);
  if (!enumeration) return;
  // A node that is no element has no attributes, and reading one from it fails; a missing
  // attribute is only the empty text.
  if (enumeration->attributes()) {
    defaultImage_ = platform::attributeValue(enumeration, "defaultImage").value_or("");
  } else {
    logger_->DebugL("Failed to find defaultImage attribute;Assigning null to defaultImage");
    defaultImage_.clear();
  }
  if (enumeration->nodeName() != "enumeration") return;
  const Ref<platform::XmlNodeList> children = enumeration->childNodes();
  const int32_t count = children->length();
  if (count == 0) return;
  makeEntries(count);
  for (int32_t i = 0; i < count; ++i) readEntry(children->item(i), i);
}

// The search doesn't stop at a match, so with equal codes the last entry wins. With no match
// the default picture shows and the function stays that of the last match.
void PictureButtonControl::UpdateImage() {
  const int32_t used = usedEntries();
  if (used < 0 || value_.isNull()) return;
  const std::string code = value_.toText();
  bool matched = false;
  for (int32_t i = 0; i < used; ++i) {
    const EnumData& entry = entryAt(i);
    if (entry.code != code) continue;
    matched = true;
    // The host is asked for the folder before the old picture goes.
    const std::string baseFolder = host_->BaseFolder();
    ImgIcon_->Picture(nullptr);
    ImgIcon_->Picture(LoadImagesPicture(baseFolder, entry.Image));
    takeFunctionOf(i);
  }
  if (!matched) ImgIcon_->Picture(LoadImagesPicture(host_->BaseFolder(), defaultImage_));
}

// One tool window per control: the old one goes before the new one is made.
void PictureButtonControl::UpdateTooltip() {
  tooltipText_ = LocalizeText(item_.Description);
  tooltip_.destroy();
  const platform::WindowHandle windows[] = {window_->hWnd()};
  tooltip_.create(*logger_, window_->hWnd(), windows, tooltipText_);
}

void PictureButtonControl::readNameAndCode(const Ref<platform::XmlNode>& child, EnumData& entry) {
  const auto name = platform::attributeValue(child, "name");
  const auto code = platform::attributeValue(child, "code");
  if (name && code) {
    entry.name = *name;
    entry.code = *code;
  }
}

}  // namespace tessaline
