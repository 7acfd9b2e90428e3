#pragma once

// Double arithmetic as the platform does it: a result of finite operands that lies beyond the
// largest double fails with 6 (overflow). Carried on as an infinity, it would stay in a range
// that only grows and spoil every later scale. Operands that are already infinite or not a
// number pass through as the hardware computes them.
namespace tessaline {

double checkedAdd(double a, double b);
double checkedSub(double a, double b);
double checkedMul(double a, double b);

}  // namespace tessaline
