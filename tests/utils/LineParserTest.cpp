#include "utils/HV_Files_Parser.h"
#include "utils/HV_StringTokenizer.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using kalvora_test::TempFolder;
using Strings = std::vector<std::string>;

TEST(LineParser, LinesEndAtControlCharactersAndComeInPiecesWhenLong) {
    const struct {
        std::string content;
        int bufferBytes;
        Strings lines;
    } cases[] = {
        {std::string("ab\tc\x01") + "d", 256, {"ab\tc", "d"}}, // a TAB is text
        {"one\r\ntwo\nthree", 256, {"one", "two", "three"}},
        {"x\x0fy\x10z", 256, {"x", "y\x10z"}},
        // The character after a line end goes with it, so one empty line disappears; a TAB too.
        {"a\n\nb\n", 256, {"a", "b"}},
        {"a\n\n\nb", 256, {"a", "", "b"}},
        {"a\n\tb", 256, {"a", "b"}},
        {"abcdefg\n", 4, {"abc", "def", "g"}},
        {"", 256, {}},
        {"\n", 256, {""}},
        {"caf\xc3\xa9\n", 256, {"caf\xc3\xa9"}},
    };
    TempFolder dir;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.content);
        HV_Files_Parser parser;
        ASSERT_TRUE(parser.OpenFile(dir.write("f.txt", c.content).c_str()));
        Strings lines;
        std::vector<char> buffer(static_cast<size_t>(c.bufferBytes));
        while (parser.GetNextTocken(buffer.data(), c.bufferBytes))
            lines.emplace_back(buffer.data());
        EXPECT_EQ(lines, c.lines);
    }
}

TEST(LineParser, WithoutFileOrBufferNothingIsReadAndReopeningSwitchesFiles) {
    HV_Files_Parser parser;
    char buffer[32] = "keep";
    EXPECT_FALSE(parser.GetNextTocken(buffer, sizeof buffer));
    EXPECT_FALSE(parser.OpenFile("/nonexistent/kalvora/file"));
    EXPECT_FALSE(parser.GetNextTocken(buffer, sizeof buffer));
    EXPECT_FALSE(parser.OpenFile(nullptr));
    EXPECT_EQ(HV_Files_Parser::cp_gets(buffer, 0, stdin), nullptr);
    TempFolder dir;
    ASSERT_TRUE(parser.OpenFile(dir.write("a", "first\nmore\n").c_str()));
    ASSERT_TRUE(parser.GetNextTocken(buffer, sizeof buffer));
    ASSERT_TRUE(parser.OpenFile(dir.write("b", "second\n").c_str()));
    ASSERT_TRUE(parser.GetNextTocken(buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "second");
    EXPECT_FALSE(parser.GetNextTocken(buffer, sizeof buffer));
}

TEST(Tokenizer, SplitsAtTheDelimiterButLosesALastTokenNoLongerThanIt) {
    const std::string longDelimiter(25, '#'); // cut to 19 characters: its tail becomes text
    const struct {
        std::string text;
        std::string delimiter;
        Strings tokens;
    } cases[] = {
        {"a,b", ",", {"a"}},
        {"a,bc", ",", {"a", "bc"}},
        {"one--two--xy", "--", {"one", "two"}},
        {"one--two--xyz", "--", {"one", "two", "xyz"}},
        {"a,,bc", ",", {"a", "", "bc"}},
        {"ab,cd,", ",", {"ab", "cd,"}}, // the delimiter ending the text is never looked at
        {"", ",", {}},
        {"x", "", {"x"}},
        {"no delimiter here", ";", {"no delimiter here"}},
        {"left" + longDelimiter + "right-hand-side-of-text",
         longDelimiter,
         {"left", "######right-hand-side-of-text"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        HV_StringTokenizer tokenizer(c.text.c_str(), c.delimiter.c_str());
        Strings tokens;
        char out[256];
        while (tokenizer.GetNextTocken(out, sizeof out))
            tokens.emplace_back(out);
        EXPECT_STREQ(out, "");
        EXPECT_EQ(tokens, c.tokens);
    }
}

TEST(Tokenizer, HasMoreFollowsThePositionAndBoundsCutTokens) {
    HV_StringTokenizer tokenizer("alpha beta gamma", " ");
    EXPECT_TRUE(tokenizer.HasMoreTocken());
    EXPECT_TRUE(tokenizer.GetNextTocken(nullptr, 0)); // skipped
    char out[32];
    EXPECT_TRUE(tokenizer.GetNextTocken(out, 0)); // no bound given
    EXPECT_STREQ(out, "beta");
    EXPECT_TRUE(tokenizer.GetNextTocken(out, 4));
    EXPECT_STREQ(out, "gam");
    EXPECT_FALSE(tokenizer.HasMoreTocken());
    EXPECT_FALSE(tokenizer.GetNextTocken(out, sizeof out));
    HV_StringTokenizer none(nullptr, ",");
    EXPECT_FALSE(none.GetNextTocken(out, sizeof out));
}
