// The tokenizer of both object-file readers: scanners that walk a byte cursor
// over a whole file held in memory. Every scanner takes the cursor by reference
// and the end of the text (one past the last byte) and never moves the cursor
// past the end.
//
// A blank is a tab or a space; a line end is NUL, CR or LF, so files with CR, LF
// or CR LF line ends read alike.
#pragma once

#include <string>

/// Skips every blank and line-end character (ends of lines, empty lines, leading blanks).
void TXT_MAP_finish_line(unsigned char*& p, const unsigned char* end);
/// Skips blanks, takes the rest of the line (trailing blanks included) into *out if not null, finishes the
/// line.
void TXT_MAP_str_scan_eoln(unsigned char*& p, const unsigned char* end, std::string* out);
/// Skips blanks, takes the characters up to the next blank or line end into *out if not null.
void TXT_MAP_str_scan_space(unsigned char*& p, const unsigned char* end, std::string* out);
/// Skips blanks and matches `word` followed by a blank (or a line end when eolOk); moves past it on success.
bool TXT_MAP_str_match_space(unsigned char*& p, const unsigned char* end, const char* word, bool eolOk);
/// Reads a decimal integer token (optional "-" then optional "+"; other characters folded in unchecked).
int TXT_MAP_int_scan(unsigned char*& p, const unsigned char* end, bool eolOk);
/// Reads a decimal number token (signs anywhere, last one wins; no exponent; single-precision mantissa).
float TXT_MAP_flt_scan(unsigned char*& p, const unsigned char* end, bool eolOk);

/// True for tab and space.
inline bool TXT_MAP_is_blank(unsigned char c) {
    return c == '\t' || c == ' ';
}
/// True for NUL, CR and LF.
inline bool TXT_MAP_is_eol(unsigned char c) {
    return c == 0 || c == '\r' || c == '\n';
}
