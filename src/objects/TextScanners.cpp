// Byte-cursor scanners over an object file held in memory.
#include "objects/TextScanners.h"

#include <cmath>
#include <cstdint>

namespace {

/// Exact powers of ten a double holds without rounding (10^0 .. 10^22).
constexpr double kExactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr long kExactPowerCount = sizeof(kExactPowersOfTen) / sizeof(kExactPowersOfTen[0]);

bool IsDelimiter(unsigned char c) {
    return TXT_MAP_is_blank(c) || TXT_MAP_is_eol(c);
}

void SkipBlanks(unsigned char*& p, const unsigned char* end, bool eolToo) {
    while (p < end && (TXT_MAP_is_blank(*p) || (eolToo && TXT_MAP_is_eol(*p))))
        ++p;
}

} // namespace

void TXT_MAP_finish_line(unsigned char*& p, const unsigned char* end) {
    SkipBlanks(p, end, true);
}

void TXT_MAP_str_scan_eoln(unsigned char*& p, const unsigned char* end, std::string* out) {
    SkipBlanks(p, end, false);
    const unsigned char* start = p;
    while (p < end && !TXT_MAP_is_eol(*p))
        ++p;
    if (out) out->assign(reinterpret_cast<const char*>(start), static_cast<size_t>(p - start));
    TXT_MAP_finish_line(p, end);
}

void TXT_MAP_str_scan_space(unsigned char*& p, const unsigned char* end, std::string* out) {
    SkipBlanks(p, end, false);
    const unsigned char* start = p;
    while (p < end && !IsDelimiter(*p))
        ++p;
    if (out) out->assign(reinterpret_cast<const char*>(start), static_cast<size_t>(p - start));
}

bool TXT_MAP_str_match_space(unsigned char*& p, const unsigned char* end, const char* word, bool eolOk) {
    SkipBlanks(p, end, false);
    unsigned char* q = p;
    for (const char* w = word; *w; ++w, ++q)
        if (q >= end || *q != static_cast<unsigned char>(*w)) return false;
    // The text is followed by a zero byte, so the end of text reads as a line end.
    const unsigned char next = q < end ? *q : 0;
    if (TXT_MAP_is_blank(next) || (eolOk && TXT_MAP_is_eol(next))) {
        p = q;
        return true;
    }
    return false;
}

int TXT_MAP_int_scan(unsigned char*& p, const unsigned char* end, bool eolOk) {
    SkipBlanks(p, end, eolOk);
    if (p >= end) return 0;
    bool negative = false;
    if (*p == '-') {
        negative = true;
        ++p;
    }
    if (p < end && *p == '+') {
        negative = false;
        ++p;
    }
    // Unsigned arithmetic: an absurdly long token wraps instead of overflowing.
    uint32_t value = 0;
    while (p < end && !IsDelimiter(*p)) {
        value = value * 10u + static_cast<uint32_t>(static_cast<int>(*p) - '0');
        ++p;
    }
    if (negative) value = 0u - value;
    return static_cast<int32_t>(value);
}

float TXT_MAP_flt_scan(unsigned char*& p, const unsigned char* end, bool eolOk) {
    SkipBlanks(p, end, eolOk);
    float mantissa = 0.0f; // single precision on purpose: the format's accepted precision
    long decimals = 0;
    bool negative = false;
    bool point = false;
    while (p < end && !IsDelimiter(*p)) {
        const unsigned char c = *p++;
        if (c == '-')
            negative = true;
        else if (c == '+')
            negative = false;
        else if (c == '.')
            point = true;
        else {
            mantissa = mantissa * 10.0f + static_cast<float>(static_cast<int>(c) - '0');
            if (point) ++decimals;
        }
    }
    const double scale = decimals < kExactPowerCount ? kExactPowersOfTen[decimals]
                                                     : std::pow(10.0, static_cast<double>(decimals));
    const double sign = negative ? -1.0 : 1.0;
    return static_cast<float>(sign * (static_cast<double>(mantissa) / scale));
}
