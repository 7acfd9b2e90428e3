#pragma once

#include <string>
#include <string_view>

#include "tessaline/frame/host.h"
#include "tessaline/values/object.h"
#include "tessaline/values/variant.h"
#include "tessaline/values/vb_error.h"

namespace tessaline {

// Hands a logger name and a line to the host's log. With no host set (before Init) every
// line is dropped. There is no queue, filter or format of its own; the level is the
// host's business. Each member returns Empty.
class Logger : public Object {
 public:
  Variant DebugL(const std::string& LogData);
  Variant Info(const std::string& LogData);
  Variant Error(const std::string& LogData);
  Variant Fatel(const std::string& LogData);
  Variant Init(const Ref<GenericDtm>& DTMLog, const std::string& LoggerName);

  const std::string& LoggerName() const { return name_; }

 private:
  Ref<GenericDtm> host_;
  std::string name_;
};

// A new logger, already initialized with the host and name.
Ref<Logger> MakeLogger(const Ref<GenericDtm>& host, const std::string& name);

// The shared host reference of this thread, behind LocalizeText. Each control's
// IDTMControl_Init overwrites it (the last one wins); it keeps that host alive.
void SetSharedHost(const Ref<GenericDtm>& host);
const Ref<GenericDtm>& SharedHost();

// The localized text of a key through the shared host: the key itself when it is empty or
// no host is set, without asking anybody.
std::string LocalizeText(const std::string& key);

// How a caught failure is written: literal, number, then " ,Description = " in members and
// ":" in tooltip code, then the description.
enum class ErrorLineStyle { Member, Tooltip };
std::string errorLine(std::string_view literal, const VbError& error, ErrorLineStyle style);

// Runs the body of a guarded member. A failure stops the body, becomes the thread's current
// error and one line through Logger.Error; the caller sees success with the state as far as
// the body got. A failure of the host's log itself travels to the caller.
template <class Body>
void guarded(Logger& logger, std::string_view literal, Body&& body,
             ErrorLineStyle style = ErrorLineStyle::Member) {
  try {
    body();
  } catch (...) {
    const VbError error = VbError::from(std::current_exception());
    currentError() = ErrorState{error.number(), error.description()};
    logger.Error(errorLine(literal, error, style));
  }
}

}  // namespace tessaline
