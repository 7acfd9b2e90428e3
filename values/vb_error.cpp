#include "tessaline/values/vb_error.h"

#include <new>

namespace tessaline {

std::string_view standardErrorText(int32_t number) {
  switch (number) {
    case 3:
      return "Return without GoSub";
    case 5:
      return "Invalid procedure call or argument";
    case 6:
      return "Overflow";
    case 7:
      return "Out of memory";
    case 9:
      return "Subscript out of range";
    case 10:
      return "This array is fixed or temporarily locked";
    case 11:
      return "Division by zero";
    case 13:
      return "Type mismatch";
    case 28:
      return "Out of stack space";
    case 51:
      return "Internal error";
    case 52:
      return "Bad file name or number";
    case 53:
      return "File not found";
    case 57:
      return "Device I/O error";
    case 75:
      return "Path/File access error";
    case 76:
      return "Path not found";
    case 91:
      return "Object variable or With block variable not set";
    case 94:
      return "Invalid use of Null";
    case 326:
      return "Resource with identifier not found";
    case 360:
      return "Object already loaded";
    case 380:
      return "Invalid property value";
    case 383:
      return "Property is read-only";
    case 381:
      return "Invalid property array index";
    case 424:
      return "Object required";
    case 429:
      return "ActiveX component can't create object";
    case 438:
      return "Object doesn't support this property or method";
    case 440:
      return "Automation error";
    case 449:
      return "Argument not optional";
    case 450:
      return "Wrong number of arguments or invalid property assignment";
    case 457:
      return "This key is already associated with an element of this collection";
    case 481:
      return "Invalid picture";
    case 711:
      return "Invalid class string";
    case 727:
      return "There is already a control with the name";
    case 730:
      return "Control not found";
    case 31037:
      return "Error loading from file";
    case 35600:
      return "Index out of bounds";
    case 35602:
      return "Key is not unique in collection";
    case 5017:
      return "Syntax error in regular expression";
    case err::Failed:
      return "Unspecified error";
    default:
      return {};
  }
}

namespace {
std::string describe(int32_t number, const std::string& description) {
  return "error " + std::to_string(number) + ": " + description;
}
}  // namespace

VbError::VbError(int32_t number) : VbError(number, std::string(standardErrorText(number))) {}

VbError::VbError(int32_t number, std::string description)
    : number_(number),
      description_(std::move(description)),
      what_(describe(number_, description_)) {}

VbError VbError::from(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const VbError& e) {
    return e;
  } catch (const std::bad_alloc&) {
    return VbError(err::OutOfMemory);
  } catch (const std::exception& e) {
    return VbError(err::InternalError, e.what());
  } catch (...) {
    return VbError(err::InternalError);
  }
}

ErrorState& currentError() {
  thread_local ErrorState state;
  return state;
}

void clearCurrentError() { currentError() = ErrorState{}; }

}  // namespace tessaline
