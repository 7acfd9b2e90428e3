#pragma once

#include <memory>
#include <string>

#include "tessaline/frame/host.h"
#include "tessaline/frame/interfaces.h"
#include "tessaline/frame/logger.h"
#include "tessaline/frame/property_table.h"
#include "tessaline/platform/property_bag.h"
#include "tessaline/platform/widgets.h"

namespace tessaline {

// What every composite control is made of: its own window, the references to its host and
// container, its logger (which drops all lines until IDTMControl_Init gives it a host), its
// table of members, and the form's three calls that the table drives.
class ControlFrame : public Dispatchable {
 public:
  // The control's own window: for the platform, and for tests that act as the user.
  platform::UserControl& window() { return *window_; }

  // Run by the form for a control that is new on it. Only some controls have this step; the
  // others keep the defaults of their creation.
  virtual void InitProperties() {}
  // Run by the form for a control that it saved: each property of the table's reading order is
  // read with its default and applied where its row says. A setter's failure travels to the
  // caller: there is no error block.
  void ReadProperties(platform::PropertyBag& PropBag);
  // Run by the form when it saves: each property is written with what the control gives for it
  // and its default.
  void WriteProperties(platform::PropertyBag& PropBag);

  // Marks the saved state stale under a property's name.
  void PropertyChanged(const std::string& name) override { window_->PropertyChanged(name); }

 protected:
  // A control on a form, or (with a parent) a control that stands on another one.
  ControlFrame(const std::string& className, platform::UserControl* parent);
  ~ControlFrame() override = default;

  // The start of IDTMControl_Init in the controls that share their host: keep the host, make
  // it the thread's shared host, make the logger under the given name.
  void takeHost(const Ref<GenericDtm>& host, const std::string& loggerName);

  std::unique_ptr<platform::UserControl> window_;
  Ref<GenericDtm> host_;
  Ref<DtmContainer> container_;
  Ref<Logger> logger_;
};

// What every control with IDtmControl shares: the data mode, stored and persisted for the host
// and read for no decision, and the member rows of the interface.
class DtmControlBase : public virtual IDtmControl, public ControlFrame {
 public:
  int32_t IDtmControl_DataMode() override { return dataMode_; }
  void IDtmControl_DataMode(int32_t value) override {
    dataMode_ = value;
    PropertyChanged("IDtmControl_DataMode");
  }

 protected:
  using ControlFrame::ControlFrame;

  template <class Self>
  static void addDtmControlMembers(MemberTableBuilder<Self>& table) {
    table.procedure("IDTMControl_Init", &Self::IDTMControl_Init)
        .TESSALINE_PROPERTY(Ref<GenericDtm>, IDtmControl_GenericDtm)
        .TESSALINE_PROPERTY(Ref<DtmContainer>, IDtmControl_DtmContainer)
        .TESSALINE_PROPERTY(int32_t, IDtmControl_DataMode)
        .TESSALINE_PROPERTY(std::string, IDtmControl_Name)
        .TESSALINE_PROPERTY(bool, IDtmControl_Enable)
        .TESSALINE_PROPERTY(bool, IDtmControl_Visible);
  }

  int32_t dataMode_ = 2;
};

// Stands in for IDTMDataControl in the controls that carry its stored members by name without
// implementing the interface (the gauges and the single-value trends).
struct NoDataControlInterface {};

// The members that the data controls and the gauges store for the host and read for no
// decision, each setter ending with its notification. With IDTMDataControl as Interface these
// are the interface's members; otherwise plain members reached by name.
template <class Interface>
class DataMembers : public DtmControlBase, public Interface {
 public:
  // IDtmControl_Name and IDTMDataControl_Name share one field.
  std::string IDtmControl_Name() { return name_; }
  void IDtmControl_Name(const std::string& value) { storeName(value, "IDtmControl_Name"); }
  std::string IDTMDataControl_Name() { return name_; }
  void IDTMDataControl_Name(const std::string& value) { storeName(value, "IDTMDataControl_Name"); }
  int32_t IDTMDataControl_Source() { return source_; }
  void IDTMDataControl_Source(int32_t value) {
    source_ = value;
    PropertyChanged("IDTMDataControl_Source");
  }
  bool IDTMDataControl_Active() { return active_; }
  void IDTMDataControl_Active(bool value) {
    active_ = value;
    PropertyChanged("IDTMDataControl_Active");
  }
  bool IDTMDataControl_CanSubscribe() { return canSubscribe_; }
  void IDTMDataControl_CanSubscribe(bool value) {
    canSubscribe_ = value;
    PropertyChanged("IDTMDataControl_CanSubscribe");
  }
  std::string IDTMDataControl_ErrorString() { return {}; }

 protected:
  using DtmControlBase::DtmControlBase;

  template <class Self>
  static void addDataMembers(MemberTableBuilder<Self>& table) {
    addDtmControlMembers(table);
    table.TESSALINE_PROPERTY(std::string, IDTMDataControl_Name)
        .TESSALINE_PROPERTY(int32_t, IDTMDataControl_Source)
        .TESSALINE_PROPERTY(bool, IDTMDataControl_Active)
        .TESSALINE_PROPERTY(bool, IDTMDataControl_CanSubscribe)
        .function("IDTMDataControl_ErrorString", &Self::IDTMDataControl_ErrorString);
  }

  std::string name_;
  int32_t source_ = 0;
  bool active_ = false;
  bool canSubscribe_ = false;

 private:
  void storeName(const std::string& value, const std::string& property) {
    name_ = value;
    PropertyChanged(property);
  }
};

}  // namespace tessaline
