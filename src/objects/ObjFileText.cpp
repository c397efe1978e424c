// Whole-file loading for the object readers: one read call into one buffer.
#include "objects/ObjFileText.h"

#include "objects/TextScanners.h"
#include "utils/Utf8Path.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <stdexcept>

bool LoadObjText(const char* path, std::vector<unsigned char>& text) {
    text.clear();
    if (path == nullptr) return false;
    std::FILE* f = HV_FileUtils::OpenFile(path, "rb");
    if (!f) return false;
    long size = -1;
    if (std::fseek(f, 0, SEEK_END) == 0) size = std::ftell(f);
    if (size < 0 || std::fseek(f, 0, SEEK_SET) != 0) {
        std::fclose(f);
        return false;
    }
    try {
        text.resize(static_cast<size_t>(size) + 1);
    } catch (const std::exception&) { // bad_alloc, or length_error for an absurd size
        std::fclose(f);
        return false;
    }
    const size_t got = size > 0 ? std::fread(text.data(), 1, static_cast<size_t>(size), f) : 0;
    std::fclose(f);
    if (got != static_cast<size_t>(size)) {
        text.clear();
        return false;
    }
    text[static_cast<size_t>(size)] = 0;
    return true;
}

void CopyObjText(const void* data, size_t size, std::vector<unsigned char>& text) {
    text.resize(size + 1);
    if (size > 0) std::memcpy(text.data(), data, size);
    text[size] = 0;
}

int TruncToInt(float f) {
    if (std::isnan(f)) return 0;
    if (f >= 2147483647.0f) return std::numeric_limits<int32_t>::max();
    if (f <= -2147483648.0f) return std::numeric_limits<int32_t>::min();
    return static_cast<int>(f);
}

bool ReadObjHeader(unsigned char*& p, const unsigned char* end, int expectedVersion) {
    TXT_MAP_str_scan_eoln(p, end, nullptr); // conventionally a letter naming the line-end style
    const int version = TXT_MAP_int_scan(p, end, false);
    TXT_MAP_str_scan_eoln(p, end, nullptr);
    const bool isObj = TXT_MAP_str_match_space(p, end, "OBJ", true);
    TXT_MAP_str_scan_eoln(p, end, nullptr);
    return isObj && version == expectedVersion;
}
