// Reads arbitrary bytes line by line; the first byte chooses the line buffer size.
#include "utils/HV_Files_Parser.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const int bufferSize = 1 + data[0] % 64;
    FILE* in = fmemopen(const_cast<uint8_t*>(data + 1), size - 1, "rb");
    if (!in) return 0;
    std::vector<char> buffer(static_cast<size_t>(bufferSize) + 1, '\x7f');
    size_t stored = 0;
    // A one-byte buffer never reads; stop after as many lines as there are bytes.
    for (size_t lines = 0; lines <= size; ++lines) {
        if (!HV_Files_Parser::cp_gets(buffer.data(), bufferSize, in)) break;
        const size_t length = strlen(buffer.data());
        if (length > static_cast<size_t>(bufferSize - 1) || buffer[bufferSize] != '\x7f') abort();
        for (size_t i = 0; i < length; ++i) {
            const unsigned char c = static_cast<unsigned char>(buffer[i]);
            if (c <= 15 && c != '\t') abort();
        }
        stored += length;
    }
    if (stored > size) abort();
    fclose(in);
    return 0;
}
