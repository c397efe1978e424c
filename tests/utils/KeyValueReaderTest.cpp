#include "utils/HV_ReadHalvernFile.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <string>

using kalvora_test::TempFolder;

TEST(KeyValueReader, FindsValuesUpToTheLineEndAnywhereInALine) {
    TempFolder dir;
    const std::string longValue(5000, 'x'); // the result buffer grows and is reused
    HV_ReadHalvernFile reader(
        dir.write("d.txt", "Name=Tug 1\r\nMaxSpeed=12\nSpeed=5\nRatio=0.25\n# Mode=comment\n"
                           "Mode=real\nLong=" +
                               longValue + "\nB=last")
            .c_str());
    EXPECT_STREQ(reader.GetValueString("Name=", "none"), "Tug 1");
    EXPECT_EQ(reader.GetValueLong("Speed="), 12); // not anchored to line starts
    EXPECT_STREQ(reader.GetValueString("Mode=", ""), "comment");
    EXPECT_FLOAT_EQ(reader.GetValueFloat("Ratio="), 0.25f);
    EXPECT_EQ(std::string(reader.GetValueString("Long=", nullptr)), longValue);
    EXPECT_STREQ(reader.GetValueString("B=", nullptr), "last"); // the last line has no break
    EXPECT_STREQ(reader.GetValueString("B=last", nullptr), "");
    EXPECT_EQ(reader.GetValueString("B=lastX", nullptr), nullptr);
    EXPECT_STREQ(reader.GetValueString("Colour=", "none"), "none");
}
