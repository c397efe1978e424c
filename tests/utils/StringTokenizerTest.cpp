#include "utils/HV_StringTokenizer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Strings = std::vector<std::string>;

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
