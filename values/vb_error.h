#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace tessaline {

// Error numbers that the controls raise or meet, with the standard texts of the automation
// runtime. The one table of texts is in vb_error.cpp.
namespace err {
inline constexpr int32_t InvalidCall = 5;
inline constexpr int32_t Overflow = 6;
inline constexpr int32_t OutOfMemory = 7;
inline constexpr int32_t SubscriptOutOfRange = 9;
inline constexpr int32_t DivisionByZero = 11;
inline constexpr int32_t TypeMismatch = 13;
inline constexpr int32_t InternalError = 51;
inline constexpr int32_t FileNotFound = 53;
inline constexpr int32_t PathFileAccess = 75;
inline constexpr int32_t ObjectNotSet = 91;
inline constexpr int32_t InvalidUseOfNull = 94;
inline constexpr int32_t ResourceNotFound = 326;
inline constexpr int32_t ObjectAlreadyLoaded = 360;
inline constexpr int32_t InvalidPropertyValue = 380;
inline constexpr int32_t ReadOnlyProperty = 383;
inline constexpr int32_t ObjectRequired = 424;
inline constexpr int32_t CantCreateObject = 429;
inline constexpr int32_t MemberNotSupported = 438;
inline constexpr int32_t ArgumentNotOptional = 449;
inline constexpr int32_t WrongArgumentCount = 450;
inline constexpr int32_t KeyAlreadyExists = 457;
inline constexpr int32_t InvalidPicture = 481;
inline constexpr int32_t InvalidClassString = 711;
inline constexpr int32_t ControlNameTaken = 727;
inline constexpr int32_t ControlNotFound = 730;
inline constexpr int32_t RegExpSyntax = 5017;
inline constexpr int32_t FileLoadError = 31037;
inline constexpr int32_t IndexOutOfBounds = 35600;
inline constexpr int32_t KeyNotUnique = 35602;
inline constexpr int32_t Failed = -2147467259;  // E_FAIL, as a failed platform call reports it
}  // namespace err

// The standard description of an error number; empty for numbers without one.
std::string_view standardErrorText(int32_t number);

// A runtime error: a number and its description. Guarded members catch it at their
// boundary; everywhere else it travels to the caller as a failed call would.
class VbError : public std::exception {
 public:
  explicit VbError(int32_t number);
  VbError(int32_t number, std::string description);

  int32_t number() const noexcept { return number_; }
  const std::string& description() const noexcept { return description_; }
  const char* what() const noexcept override { return what_.c_str(); }

  // The error behind any exception a member may meet: a VbError as it is, an exhausted
  // allocation as 7, anything else as an internal error (51) with its text.
  static VbError from(const std::exception_ptr& failure);

 private:
  int32_t number_;
  std::string description_;
  std::string what_;
};

// The thread's current error: set where a guarded member catches a failure, read and
// cleared by IDTMDataControl_IsError of the text boxes.
struct ErrorState {
  int32_t number = 0;
  std::string description;
};
ErrorState& currentError();
void clearCurrentError();

}  // namespace tessaline
