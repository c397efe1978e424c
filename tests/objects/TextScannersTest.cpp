// The scanners' rules on odd numbers and blanks.
#include "objects/TextScanners.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// A text with a cursor, followed by a zero byte as the readers provide.
struct Text {
    explicit Text(const std::string& s) : bytes(s.begin(), s.end()) {
        bytes.push_back(0);
        p = bytes.data();
        end = bytes.data() + s.size();
    }
    size_t pos() const { return static_cast<size_t>(p - bytes.data()); }
    std::vector<unsigned char> bytes;
    unsigned char* p;
    const unsigned char* end;
};

} // namespace

TEST(TextScanners, NumbersHaveNoExponentTakeSignsAnywhereAndFoldEveryCharacter) {
    const std::pair<const char*, float> floats[] = {
        {"1.50", 1.5f},
        {"+3", 3},
        {"-.25", -0.25f},
        {".5", 0.5f},
        {"5-", -5},
        {"-+5", 5},
        {"\t\t 42.125", 42.125f},
        {"", 0},
        {"1e2", 1 * 100 + ('e' - '0') * 10 + 2}, // "e" is a digit of value 53
        {"123456789", 123456792.0f},             // the mantissa is a float
        {"1.23456789", static_cast<float>(123456792.0 / 1e8)}};
    for (const auto& f : floats) {
        Text t(f.first);
        EXPECT_FLOAT_EQ(TXT_MAP_flt_scan(t.p, t.end, false), f.second) << f.first;
    }
    const std::pair<const char*, int> ints[] = {
        {"-+7", 7}, {"-12", -12}, {"+12", 12}, {"1a", 1 * 10 + ('a' - '0')}, {"", 0}, {"   ", 0}};
    for (const auto& i : ints) {
        Text t(i.first);
        EXPECT_EQ(TXT_MAP_int_scan(t.p, t.end, false), i.second) << i.first;
    }
}
