// A line reader that treats every control character (code <= 15, except TAB) as a line end.
#pragma once

#include <cstdio>

/// Reads an open text file line by line with cp_gets.
class HV_Files_Parser {
public:
    HV_Files_Parser() = default;
    ~HV_Files_Parser();
    HV_Files_Parser(const HV_Files_Parser&) = delete;
    HV_Files_Parser& operator=(const HV_Files_Parser&) = delete;

    /// Closes any open file and opens path for reading; true on success.
    bool OpenFile(const char* path);
    /// Next line into buffer (size bytes incl. the zero); false with no file or at end of file.
    bool GetNextTocken(char* buffer, int size);
    /// Reads one line of at most size - 1 characters; null only at end of file with nothing read.
    static char* cp_gets(char* buffer, int size, FILE* file);

private:
    FILE* file = nullptr; ///< open file, or null
};
