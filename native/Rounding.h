// Rounding half to even in the default rounding mode, without a library call:
// the kernels' and the pixel loops' one way of turning a float into an integer.
#pragma once

#include <cmath>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kwround {
inline int RoundF(float v) {
#if defined(__SSE2__)
    return _mm_cvtss_si32(_mm_set_ss(v));
#else
    return static_cast<int>(std::nearbyint(v));
#endif
}
inline int RoundD(double v) {
#if defined(__SSE2__)
    return _mm_cvtsd_si32(_mm_set_sd(v));
#else
    return static_cast<int>(std::nearbyint(v));
#endif
}
}  // namespace kwround
