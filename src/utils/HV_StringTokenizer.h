// Splits one string on a multi-character delimiter.
//
// Kept behaviour: the search never looks at a delimiter that ends exactly at the end of
// the text, and a last token no longer than the delimiter is lost ("a,b" on "," yields
// only "a"); consecutive delimiters yield empty tokens.
#pragma once

/// Longest delimiter, in bytes including the terminating zero; longer ones are cut.
constexpr int kTokenizerDelimiterBytes = 20;

/// Tokenizer over a private copy of the text.
class HV_StringTokenizer {
public:
    /// Copies text (null = "") and delimiter (cut to kTokenizerDelimiterBytes - 1 characters).
    HV_StringTokenizer(const char* text, const char* delimiter);
    ~HV_StringTokenizer();
    HV_StringTokenizer(const HV_StringTokenizer&) = delete;
    HV_StringTokenizer& operator=(const HV_StringTokenizer&) = delete;

    /// True while textLength > position + delimiterLength.
    bool HasMoreTocken() const;
    /// Copies the next token into out (null = skip it); false, with out = "", when none is left.
    /// maxLength bounds the copy (bytes incl. the zero); maxLength <= 0 means out holds the rest
    /// of the text plus one byte. A token longer than the bound is cut but still consumed.
    bool GetNextTocken(char* out, int maxLength);

private:
    char* text = nullptr;                          ///< owned copy of the input
    char delimiter[kTokenizerDelimiterBytes] = {}; ///< zero-terminated
    int position = 0;                              ///< index where the next token starts
    int textLength = 0;                            ///< strlen(text)
    int delimiterLength = 0;                       ///< strlen(delimiter)
};
