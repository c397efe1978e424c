// HV_Files_Parser: reading text files whose lines may end with any control character.
#include "utils/HV_Files_Parser.h"
#include "utils/Utf8Path.h"

namespace {

/// Highest character code that ends a line (TAB excepted).
constexpr int kLastControlCode = 15;
constexpr int kTab = 9;

bool EndsLine(int c) {
    return c == EOF || (c <= kLastControlCode && c != kTab);
}

} // namespace

HV_Files_Parser::~HV_Files_Parser() {
    if (file) fclose(file);
}

bool HV_Files_Parser::OpenFile(const char* path) {
    if (file) {
        fclose(file);
        file = nullptr;
    }
    if (!path) return false;
    file = HV_FileUtils::OpenFile(path, "r");
    return file != nullptr;
}

bool HV_Files_Parser::GetNextTocken(char* buffer, int size) {
    if (!file || !buffer) return false;
    return cp_gets(buffer, size, file) != nullptr;
}

char* HV_Files_Parser::cp_gets(char* buffer, int size, FILE* in) {
    if (!buffer || size <= 0 || !in) return nullptr;
    int stored = 0;
    bool hitEnd = false;
    while (stored < size - 1) {
        const int c = getc(in);
        if (c == EOF) {
            hitEnd = true;
            break;
        }
        if (EndsLine(c)) {
            // A second control character right after the first belongs to the same line end
            // ("\r\n"); anything printable is left for the next line.
            const int next = getc(in);
            if (next > kLastControlCode) ungetc(next, in);
            break;
        }
        buffer[stored++] = static_cast<char>(c);
    }
    buffer[stored] = '\0';
    if (hitEnd && stored == 0) return nullptr;
    return buffer;
}
