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
    EXPECT_STREQ(reader.GetValueString("Name=", nullptr), "Tug 1");
    EXPECT_STREQ(reader.GetValueString("B=", nullptr), "last"); // the last line has no break
    EXPECT_STREQ(reader.GetValueString("B=last", nullptr), "");
    EXPECT_EQ(reader.GetValueString("B=lastX", nullptr), nullptr);
    EXPECT_STREQ(reader.GetValueString("Colour=", "none"), "none");
    EXPECT_EQ(reader.GetValueLong("Colour="), 0);
    EXPECT_EQ(reader.GetValueFloat("Colour="), 0.0f);
}

TEST(KeyValueReader, IndexedKeysAndCountStopAtTheFirstGapOrTheLimit) {
    TempFolder dir;
    std::string many;
    for (int i = 0; i < 1005; ++i)
        many += "L[" + std::to_string(i) + "]=\n";
    const std::string overlong(200, 'n');
    HV_ReadHalvernFile reader(dir.write("d.txt", "Light[0]=1.5\nLight[1]=-2\nLight[3]=9\nWheel[0]=front\n" +
                                                     overlong + "[0]=7\n" + many)
                                  .c_str());
    EXPECT_EQ(reader.GetCountValueOf("Light"), 2);
    EXPECT_EQ(reader.GetCountValueOf("Door"), 0);
    EXPECT_EQ(reader.GetCountValueOf("L"), 1001);
    EXPECT_FLOAT_EQ(reader.GetValueIndexFloat("Light", 0), 1.5f);
    EXPECT_EQ(reader.GetValueIndexLong("Light", 3), 9);
    EXPECT_STREQ(reader.GetValueIndexString("Wheel", 0, nullptr), "front");
    EXPECT_STREQ(reader.GetValueIndexString("Wheel", 1, "none"), "none");
    EXPECT_STREQ(reader.GetValueIndexString(overlong.c_str(), 0, "default"), "default");
    EXPECT_EQ(reader.GetCountValueOf(overlong.c_str()), 0);
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
