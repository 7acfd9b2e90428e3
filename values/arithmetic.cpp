#include "tessaline/values/arithmetic.h"

#include <cmath>

#include "tessaline/values/vb_error.h"

namespace tessaline {

namespace {

double overflowChecked(double result, double a, double b) {
  if (std::isinf(result) && std::isfinite(a) && std::isfinite(b)) throw VbError(err::Overflow);
  return result;
}

}  // namespace

double checkedAdd(double a, double b) { return overflowChecked(a + b, a, b); }
double checkedSub(double a, double b) { return overflowChecked(a - b, a, b); }
double checkedMul(double a, double b) { return overflowChecked(a * b, a, b); }

}  // namespace tessaline
