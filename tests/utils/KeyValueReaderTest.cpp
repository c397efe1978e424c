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

TEST(KeyValueReader, MissingEmptyOrFolderPathAnswersDefaults) {
    TempFolder dir;
    for (const std::string& path : {dir.file("absent"), std::string(), dir.path(), dir.write("empty", "")}) {
        HV_ReadHalvernFile reader(path.c_str());
        EXPECT_STREQ(reader.GetValueString("A=", "def"), "def") << path;
        EXPECT_STREQ(reader.GetValueString("", "def"), "def") << path;
        EXPECT_EQ(reader.GetCountValueOf("A"), 0) << path;
    }
    HV_ReadHalvernFile nullPath(nullptr);
    EXPECT_FALSE(nullPath.HasData());
    EXPECT_STREQ(nullPath.GetValueString(nullptr, "def"), "def");
}
