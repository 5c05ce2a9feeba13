#pragma once

/// What the options of our optimised targets come to in code that is compiled with them.
namespace probe {

double productMinus(double left, double right, double subtrahend);

/// 0: not asked for.
extern const int stackProtection;
extern const int fortification;
extern const int controlFlowProtection;

} // namespace probe
