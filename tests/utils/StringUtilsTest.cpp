#include "utils/MathUtils.h"
#include "utils/StringUtils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace HV_GNLUtils;
using namespace HV_MathUtils;

TEST(StringUtils, PositionOfNeverSearchesTheLastPossiblePosition) {
    EXPECT_EQ(GetPositionOf("xab", "ab"), -1);
    EXPECT_EQ(GetPositionOf("xabc", "ab"), 1);
    EXPECT_EQ(GetPositionOf("ab", "ab"), -1);
    EXPECT_EQ(GetPositionOf("abc", ""), 0);
    EXPECT_EQ(GetPositionOf("", ""), -1);
    EXPECT_EQ(GetPositionOf(nullptr, "a"), -1);
}

TEST(StringUtils, CaseChangesOnlyTheInnerLetters) {
    char upper[] = "abz ABZ byBY 1!", lower[] = "abz ABZ byBY 1!";
    SetUpperCase(upper);
    SetLowerCase(lower);
    EXPECT_STREQ(upper, "aBz ABZ BYBY 1!");
    EXPECT_STREQ(lower, "abz AbZ byby 1!");
    std::string lowerString = "abcXYZ";
    SetLowerCase(&lowerString); // the string form upper-cases too
    EXPECT_EQ(lowerString, "aBCXYZ");
}

TEST(NavigationMath, GreatCircleDistancesInNauticalMilesAndCourses) {
    EXPECT_NEAR(Math_GetDistance(0, 0, 0, 1), 60.0f, 1e-3); // a degree along the equator
    EXPECT_EQ(Math_GetHeading(0, 0, 0, 1), 90);
    EXPECT_EQ(Math_GetHeading(11, 5, 10, 5), 180);
    // Paris (49.0 N, 2.55 E) to New York (40.64 N, 73.78 W): about 3150 nm, initial course about 292.
    EXPECT_NEAR(Math_GetDistance(49.0f, 2.55f, 40.64f, -73.78f), 3150.0f, 15.0f);
    EXPECT_NEAR(Math_GetHeading(49.0f, 2.55f, 40.64f, -73.78f), 292, 2);
    EXPECT_EQ(Math_GetDistance(48.7f, 2.3f, 48.7f, 2.3f), 0.0f); // identical points: zero, not NaN
    EXPECT_EQ(Math_GetHeading(48.7f, 2.3f, 48.7f, 2.3f), 0);
    EXPECT_FLOAT_EQ(Math_Get3DDistance(1, 2, 3, 4, 6, 3), 5.0f);
}

TEST(NavigationMath, HeadingsWrapOnce) {
    const float wraps[][2] = {{-10, 350}, {725, 365}, {360, 0}, {0, 0}, {-400, -40}, {359.5f, 359.5f}};
    for (const auto& w : wraps)
        EXPECT_FLOAT_EQ(UTIL_Heading0_2_360(w[0]), w[1]) << w[0];
}
