#include "utils/HV_ReadHalvernFile.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <string>

using kalvora_test::TempFolder;

TEST(KeyValueReader, FindsValuesUpToTheLineEnd) {
    TempFolder dir;
    HV_ReadHalvernFile reader(dir.write("d.txt", "Name=Tug 1\r\nSpeed=12\nRatio=0.25\n").c_str());
    EXPECT_STREQ(reader.GetValueString("Name=", "none"), "Tug 1");
    EXPECT_EQ(reader.GetValueLong("Speed="), 12);
    EXPECT_FLOAT_EQ(reader.GetValueFloat("Ratio="), 0.25f);
    EXPECT_STREQ(reader.GetValueString("Colour=", "none"), "none");
    EXPECT_EQ(reader.GetValueString("Colour=", nullptr), nullptr);
    EXPECT_EQ(reader.GetValueLong("Colour="), 0);
    EXPECT_EQ(reader.GetValueFloat("Colour="), 0.0f);
}

TEST(KeyValueReader, MatchIsNotAnchoredToLineStarts) {
    TempFolder dir;
    HV_ReadHalvernFile reader(
        dir.write("d.txt", "MaxSpeed=12\nSpeed=5\n# Mode=comment\nMode=real\n").c_str());
    EXPECT_EQ(reader.GetValueLong("Speed="), 12);
    EXPECT_STREQ(reader.GetValueString("Mode=", ""), "comment");
}

TEST(KeyValueReader, ResultBufferGrowsForLongValuesAndIsReused) {
    TempFolder dir;
    const std::string longValue(5000, 'x');
    HV_ReadHalvernFile reader(dir.write("d.txt", "Short=ab\nLong=" + longValue + "\n").c_str());
    const char* first = reader.GetValueString("Short=", nullptr);
    EXPECT_STREQ(first, "ab");
    EXPECT_EQ(std::string(reader.GetValueString("Long=", nullptr)), longValue);
    EXPECT_STREQ(reader.GetValueString("Short=", nullptr), "ab");
}

TEST(KeyValueReader, FinalLineWithoutBreakEndsAtTheEndOfTheData) {
    TempFolder dir;
    HV_ReadHalvernFile reader(dir.write("d.txt", "A=1\nB=last").c_str());
    EXPECT_STREQ(reader.GetValueString("B=", nullptr), "last");
    EXPECT_STREQ(reader.GetValueString("B=last", nullptr), "");
    EXPECT_EQ(reader.GetValueString("B=lastX", nullptr), nullptr);
}

TEST(KeyValueReader, IndexedKeysAndCountStopAtTheFirstGap) {
    TempFolder dir;
    HV_ReadHalvernFile reader(
        dir.write("d.txt", "Light[0]=1.5\nLight[1]=-2\nLight[3]=9\nWheel[0]=front\n").c_str());
    EXPECT_EQ(reader.GetCountValueOf("Light"), 2);
    EXPECT_EQ(reader.GetCountValueOf("Wheel"), 1);
    EXPECT_EQ(reader.GetCountValueOf("Door"), 0);
    EXPECT_FLOAT_EQ(reader.GetValueIndexFloat("Light", 0), 1.5f);
    EXPECT_EQ(reader.GetValueIndexLong("Light", 1), -2);
    EXPECT_EQ(reader.GetValueIndexLong("Light", 3), 9);
    EXPECT_STREQ(reader.GetValueIndexString("Wheel", 0, nullptr), "front");
    EXPECT_STREQ(reader.GetValueIndexString("Wheel", 1, "none"), "none");
}

TEST(KeyValueReader, CountNeverPassesTheLimit) {
    TempFolder dir;
    std::string data;
    for (int i = 0; i < 1005; ++i)
        data += "L[" + std::to_string(i) + "]=\n";
    HV_ReadHalvernFile reader(dir.write("d.txt", data).c_str());
    EXPECT_EQ(reader.GetCountValueOf("L"), 1001);
}

TEST(KeyValueReader, OverlongIndexedNameGivesTheDefault) {
    TempFolder dir;
    const std::string name(200, 'n');
    HV_ReadHalvernFile reader(dir.write("d.txt", name + "[0]=7\n").c_str());
    EXPECT_STREQ(reader.GetValueIndexString(name.c_str(), 0, "default"), "default");
    EXPECT_EQ(reader.GetCountValueOf(name.c_str()), 0);
}

TEST(KeyValueReader, MissingEmptyOrFolderPathAnswersDefaults) {
    TempFolder dir;
    for (const std::string& path : {dir.file("absent"), std::string(), dir.path(), dir.write("empty", "")}) {
        HV_ReadHalvernFile reader(path.c_str());
        EXPECT_STREQ(reader.GetValueString("A=", "def"), "def") << path;
        EXPECT_STREQ(reader.GetValueString("", "def"), "def") << path;
        EXPECT_EQ(reader.GetValueLong("A="), 0) << path;
        EXPECT_EQ(reader.GetCountValueOf("A"), 0) << path;
    }
    HV_ReadHalvernFile nullPath(nullptr);
    EXPECT_FALSE(nullPath.HasData());
    EXPECT_STREQ(nullPath.GetValueString(nullptr, "def"), "def");
}
