#include "utils/HV_Files_Parser.h"
#include "utils/HV_StringTokenizer.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using kalvora_test::TempFolder;

namespace {

/// Every line the parser returns for the given file content.
std::vector<std::string> Lines(const std::string& content, int size = 256) {
    TempFolder dir;
    HV_Files_Parser parser;
    EXPECT_TRUE(parser.OpenFile(dir.write("f.txt", content).c_str()));
    std::vector<std::string> lines;
    std::vector<char> buffer(static_cast<size_t>(size));
    while (parser.GetNextTocken(buffer.data(), size))
        lines.emplace_back(buffer.data());
    return lines;
}

/// Every token the tokenizer returns.
std::vector<std::string> Tokens(const char* text, const char* delimiter) {
    HV_StringTokenizer tokenizer(text, delimiter);
    std::vector<std::string> tokens;
    char out[256];
    while (tokenizer.GetNextTocken(out, sizeof out))
        tokens.emplace_back(out);
    EXPECT_STREQ(out, "");
    return tokens;
}

using Strings = std::vector<std::string>;

} // namespace

TEST(LineParser, ControlCharactersEndLinesButTabIsKept) {
    EXPECT_EQ(Lines(std::string("ab\tc\x01"
                                "d")),
              (Strings{"ab\tc", "d"}));
    EXPECT_EQ(Lines("one\r\ntwo\nthree"), (Strings{"one", "two", "three"}));
    EXPECT_EQ(Lines("x\x0fy\x10z"), (Strings{"x", "y\x10z"}));
}

TEST(LineParser, SecondLineEndCharacterIsEatenSoOneEmptyLineDisappears) {
    EXPECT_EQ(Lines("a\n\nb\n"), (Strings{"a", "b"}));
    EXPECT_EQ(Lines("a\n\n\nb"), (Strings{"a", "", "b"}));
    // A TAB right after a line end is a control character too and goes with the line end.
    EXPECT_EQ(Lines("a\n\tb"), (Strings{"a", "b"}));
}

TEST(LineParser, LongLinesComeInPiecesAndEndOfFileGivesNull) {
    EXPECT_EQ(Lines("abcdefg\n", 4), (Strings{"abc", "def", "g"}));
    EXPECT_EQ(Lines(""), Strings{});
    EXPECT_EQ(Lines("\n"), Strings{""});
}

TEST(LineParser, ReadsHighBytesAsText) {
    EXPECT_EQ(Lines("caf\xc3\xa9\n"), Strings{"caf\xc3\xa9"});
}

TEST(LineParser, WithoutFileOrBufferNothingIsRead) {
    HV_Files_Parser parser;
    char buffer[8] = "keep";
    EXPECT_FALSE(parser.GetNextTocken(buffer, sizeof buffer));
    EXPECT_FALSE(parser.OpenFile("/nonexistent/kalvora/file"));
    EXPECT_FALSE(parser.GetNextTocken(buffer, sizeof buffer));
    EXPECT_FALSE(parser.OpenFile(nullptr));
    EXPECT_EQ(HV_Files_Parser::cp_gets(buffer, 0, stdin), nullptr);
}

TEST(LineParser, ReopeningSwitchesToTheNewFile) {
    TempFolder dir;
    HV_Files_Parser parser;
    char buffer[32];
    ASSERT_TRUE(parser.OpenFile(dir.write("a", "first\nmore\n").c_str()));
    ASSERT_TRUE(parser.GetNextTocken(buffer, sizeof buffer));
    ASSERT_TRUE(parser.OpenFile(dir.write("b", "second\n").c_str()));
    ASSERT_TRUE(parser.GetNextTocken(buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "second");
    EXPECT_FALSE(parser.GetNextTocken(buffer, sizeof buffer));
}

TEST(Tokenizer, LastTokenNoLongerThanTheDelimiterIsLost) {
    EXPECT_EQ(Tokens("a,b", ","), Strings{"a"});
    EXPECT_EQ(Tokens("a,bc", ","), (Strings{"a", "bc"}));
    EXPECT_EQ(Tokens("one--two--xy", "--"), (Strings{"one", "two"}));
    EXPECT_EQ(Tokens("one--two--xyz", "--"), (Strings{"one", "two", "xyz"}));
}

TEST(Tokenizer, EmptyTokensAndTrailingDelimiters) {
    EXPECT_EQ(Tokens("a,,bc", ","), (Strings{"a", "", "bc"}));
    // The delimiter that ends the text is never looked at, so it stays in the last token.
    EXPECT_EQ(Tokens("ab,cd,", ","), (Strings{"ab", "cd,"}));
    EXPECT_EQ(Tokens("", ","), Strings{});
    EXPECT_EQ(Tokens("x", ""), Strings{"x"});
    EXPECT_EQ(Tokens("no delimiter here", ";"), Strings{"no delimiter here"});
}

TEST(Tokenizer, HasMoreFollowsThePositionAndNullOutSkips) {
    HV_StringTokenizer tokenizer("alpha beta gamma", " ");
    EXPECT_TRUE(tokenizer.HasMoreTocken());
    EXPECT_TRUE(tokenizer.GetNextTocken(nullptr, 0));
    char out[32];
    EXPECT_TRUE(tokenizer.GetNextTocken(out, 0));
    EXPECT_STREQ(out, "beta");
    EXPECT_TRUE(tokenizer.GetNextTocken(out, sizeof out));
    EXPECT_STREQ(out, "gamma");
    EXPECT_FALSE(tokenizer.HasMoreTocken());
    EXPECT_FALSE(tokenizer.GetNextTocken(out, sizeof out));
}

TEST(Tokenizer, BoundsCutTokensAndDelimiters) {
    HV_StringTokenizer tokenizer("abcdefgh,ij", ",");
    char out[4];
    EXPECT_TRUE(tokenizer.GetNextTocken(out, sizeof out));
    EXPECT_STREQ(out, "abc");
    EXPECT_TRUE(tokenizer.GetNextTocken(out, sizeof out));
    EXPECT_STREQ(out, "ij");

    // A 25-character delimiter is cut to 19 characters, so its tail becomes text.
    const std::string delimiter(25, '#');
    const std::string text = "left" + delimiter + "right-hand-side-of-text";
    EXPECT_EQ(Tokens(text.c_str(), delimiter.c_str()), (Strings{"left", "######right-hand-side-of-text"}));
    EXPECT_EQ(Tokens(nullptr, ","), Strings{});
}
