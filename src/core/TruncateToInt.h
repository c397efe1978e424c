// Truncation toward zero of a float value to int that stays defined for any
// input: values from the host or other plug-ins may be NaN or out of range.
#pragma once

#include <climits>
#include <cmath>

/// (int)value for values in the int range; clamped beyond it; NaN gives INT_MIN (what x86 yields).
inline int TruncateToInt(double value) {
    if (std::isnan(value)) return INT_MIN;
    if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
    if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
    return static_cast<int>(value);
}
