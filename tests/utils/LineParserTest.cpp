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
        // The character after a line end goes with it, so one empty line disappears; a TAB too.
        {"a\n\nb\n", 256, {"a", "b"}},
        {"a\n\n\nb", 256, {"a", "", "b"}},
        {"a\n\tb", 256, {"a", "b"}},
        {"abcdefg\n", 4, {"abc", "def", "g"}},
        {"\n", 256, {""}},
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
        {"x", "", {"x"}},
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
