#include "Probe.h"

namespace probe {

double productMinus(double left, double right, double subtrahend) {
    return left * right - subtrahend;
}

#if defined(__SSP_STRONG__)
const int stackProtection = __SSP_STRONG__;
#else
const int stackProtection = 0;
#endif

#if defined(_FORTIFY_SOURCE)
const int fortification = _FORTIFY_SOURCE;
#else
const int fortification = 0;
#endif

#if defined(__CET__)
const int controlFlowProtection = __CET__;
#else
const int controlFlowProtection = 0;
#endif

} // namespace probe
