#include "utils/StringUtils.h"

#include <gtest/gtest.h>

#include <string>

using namespace HV_GNLUtils;

TEST(PositionOf, LastPossiblePositionIsNotSearched) {
    EXPECT_EQ(GetPositionOf("xab", "ab"), -1);
    EXPECT_EQ(GetPositionOf("xabc", "ab"), 1);
    EXPECT_EQ(GetPositionOf("abab", "ab"), 0);
    EXPECT_EQ(GetPositionOf("ab", "ab"), -1);
    EXPECT_EQ(GetPositionOf("a", "abc"), -1);
    EXPECT_EQ(GetPositionOf("abc", ""), 0);
    EXPECT_EQ(GetPositionOf("", ""), -1);
    EXPECT_EQ(GetPositionOf(nullptr, "a"), -1);
}

TEST(LeftAndRight, SplitsAtTheFirstSlash) {
    char left[32], right[32];
    EXPECT_EQ(GetLeftAndRight("ab/cd/ef", left, right), 3);
    EXPECT_STREQ(left, "ab");
    EXPECT_STREQ(right, "cd/ef");
    EXPECT_EQ(GetLeftAndRight("/cd", left, right), 2);
    EXPECT_STREQ(left, "");
    EXPECT_STREQ(right, "cd");
    EXPECT_EQ(GetLeftAndRight("plain", left, right), 1);
    EXPECT_STREQ(left, "plain");
    EXPECT_STREQ(right, "");
    EXPECT_EQ(GetLeftAndRight("end/", left, right), 3);
    EXPECT_STREQ(left, "end");
    EXPECT_STREQ(right, "");
}

TEST(CaseChange, OnlyTheInnerLettersChange) {
    char text[] = "abz ABZ byBY 1!";
    SetUpperCase(text);
    EXPECT_STREQ(text, "aBz ABZ BYBY 1!");
    char other[] = "abz ABZ byBY 1!";
    SetLowerCase(other);
    EXPECT_STREQ(other, "abz AbZ byby 1!");
}

TEST(CaseChange, BothStringFormsUpperCase) {
    std::string upper = "abcxyz", lower = "abcXYZ";
    SetUpperCase(&upper);
    SetLowerCase(&lower);
    EXPECT_EQ(upper, "aBCXYz");
    EXPECT_EQ(lower, "aBCXYZ");
    std::string empty;
    SetLowerCase(&empty);
    EXPECT_EQ(empty, "");
}
