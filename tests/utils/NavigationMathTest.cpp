#include "utils/MathUtils.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace HV_MathUtils;

TEST(GreatCircle, OneDegreeAlongTheEquator) {
    EXPECT_NEAR(Math_GetDistance(0, 0, 0, 1), 60.0f, 1e-3);
    EXPECT_EQ(Math_GetHeading(0, 0, 0, 1), 90);
    EXPECT_EQ(Math_GetHeading(0, 1, 0, 0), 270);
}

TEST(GreatCircle, MeridiansAndDiagonals) {
    EXPECT_EQ(Math_GetHeading(10, 5, 11, 5), 0);
    EXPECT_EQ(Math_GetHeading(11, 5, 10, 5), 180);
    EXPECT_NEAR(Math_GetDistance(10, 5, 11, 5), 60.0f, 1e-2);
    // Paris (49.0 N, 2.55 E) to New York (40.64 N, 73.78 W): about 3150 nm, initial course about 292.
    EXPECT_NEAR(Math_GetDistance(49.0f, 2.55f, 40.64f, -73.78f), 3150.0f, 15.0f);
    EXPECT_NEAR(Math_GetHeading(49.0f, 2.55f, 40.64f, -73.78f), 292, 2);
    EXPECT_NEAR(Math_GetDistance(0, 0, 0, 180), 10800.0f, 1.0f);
}

TEST(GreatCircle, IdenticalPointsGiveZeroNotNaN) {
    EXPECT_EQ(Math_GetDistance(48.7f, 2.3f, 48.7f, 2.3f), 0.0f);
    EXPECT_EQ(Math_GetHeading(48.7f, 2.3f, 48.7f, 2.3f), 0);
}

TEST(FlatHeading, ResultLiesInMinus360To0AndIsNotWrapped) {
    EXPECT_NEAR(Math_GetFlatHeading(0, 0, 0, -10), 0.0f, 1e-4);    // towards -z: north
    EXPECT_NEAR(Math_GetFlatHeading(0, 0, 10, 0), -270.0f, 1e-4);  // towards +x: east
    EXPECT_NEAR(Math_GetFlatHeading(0, 0, 0, 10), -180.0f, 1e-4);  // towards +z: south
    EXPECT_NEAR(Math_GetFlatHeading(0, 0, -10, 0), -90.0f, 1e-4);  // towards -x: west
    EXPECT_NEAR(Math_GetFlatHeading(5, 5, 15, -5), -315.0f, 1e-4); // north-east
    EXPECT_NEAR(UTIL_Heading0_2_360(Math_GetFlatHeading(5, 5, 15, -5)), 45.0f, 1e-4);
}

TEST(Distance3D, Euclidean) {
    EXPECT_FLOAT_EQ(Math_Get3DDistance(1, 2, 3, 4, 6, 3), 5.0f);
    EXPECT_FLOAT_EQ(Math_Get3DDistance(-1, -1, -1, 1, 1, 1), std::sqrt(12.0f));
}

TEST(HeadingWrap, WrapsOnceOnly) {
    EXPECT_FLOAT_EQ(UTIL_Heading0_2_360(-10), 350);
    EXPECT_FLOAT_EQ(UTIL_Heading0_2_360(725), 365);
    EXPECT_FLOAT_EQ(UTIL_Heading0_2_360(360), 0);
    EXPECT_FLOAT_EQ(UTIL_Heading0_2_360(0), 0);
    EXPECT_FLOAT_EQ(UTIL_Heading0_2_360(-400), -40);
    EXPECT_FLOAT_EQ(UTIL_Heading0_2_360(359.5f), 359.5f);
}

TEST(MagneticConversion, NegativeDerivationCountsByItsIntegerPartOnTheWayBack) {
    EXPECT_FLOAT_EQ(UTIL_TrueFromMagneticWith(100, -2.7f), 98);
    EXPECT_FLOAT_EQ(UTIL_MagneticFromTrueWith(100, -2.7f), 102.7f);
    EXPECT_FLOAT_EQ(UTIL_TrueFromMagneticWith(100, 2.7f), 97.3f);
    EXPECT_FLOAT_EQ(UTIL_MagneticFromTrueWith(100, 2.7f), 97.3f);
    EXPECT_FLOAT_EQ(UTIL_MagneticFromTrueWith(1, 3), 358);
    EXPECT_FLOAT_EQ(UTIL_TrueFromMagneticWith(359, -1.5f), 358);
    EXPECT_FLOAT_EQ(UTIL_TrueFromMagneticWith(0.5f, -0.9f), 0.5f);
}
