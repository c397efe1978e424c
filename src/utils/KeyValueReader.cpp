// HV_ReadHalvernFile: a file read once and queried by raw, unanchored text search.
#include "utils/HV_ReadHalvernFile.h"
#include "utils/Utf8Path.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

namespace {

/// Initial size of the result buffer, bytes.
constexpr int kInitialResultBytes = 100;
/// Size of the buffer in which indexed keys "name[i]=" are built, bytes.
constexpr int kIndexedKeyBytes = 150;
/// GetCountValueOf never counts past this many indexed keys.
constexpr int kMaxIndexedKeys = 1001;

/// Size of an open file from the file system, 0 when it is not a plain file.
int FileSize(std::FILE* file) {
    struct stat info {};
    const bool ok = fstat(fileno(file), &info) == 0 && S_ISREG(info.st_mode) && info.st_size <= INT_MAX;
    return ok ? static_cast<int>(info.st_size) : 0;
}

/// Builds "name[i]=" into key (kIndexedKeyBytes); false when it does not fit.
bool BuildIndexedKey(char* key, const char* name, int i) {
    const int written = snprintf(key, kIndexedKeyBytes, "%s[%d]=", name ? name : "", i);
    return written >= 0 && written < kIndexedKeyBytes;
}

} // namespace

HV_ReadHalvernFile::HV_ReadHalvernFile(const char* path) {
    result = static_cast<char*>(malloc(kInitialResultBytes));
    if (result) {
        result[0] = '\0';
        resultCapacity = kInitialResultBytes;
    }
    if (!path || !*path) return;
    FILE* in = HV_FileUtils::OpenFile(path, "rb");
    if (!in) return;
    dataSize = FileSize(in);
    if (dataSize > 0) {
        data = static_cast<char*>(malloc(static_cast<size_t>(dataSize)));
        if (data) {
            // A file that shrank since fstat is taken as read.
            dataSize = static_cast<int>(fread(data, 1, static_cast<size_t>(dataSize), in));
        } else {
            dataSize = 0;
        }
    }
    fclose(in);
}

HV_ReadHalvernFile::~HV_ReadHalvernFile() {
    free(data);
    free(result);
}

const char* HV_ReadHalvernFile::GetValueString(const char* key, const char* defaultValue) {
    if (!data || !key) return defaultValue;
    const size_t keyLength = strlen(key);
    const size_t size = static_cast<size_t>(dataSize);
    if (keyLength > size) return defaultValue;
    for (size_t at = 0; at + keyLength <= size; ++at) {
        if (memcmp(data + at, key, keyLength) != 0) continue;
        // The value runs to the next line break, or to the end of the data on a final line.
        const size_t start = at + keyLength;
        size_t end = start;
        while (end < size && data[end] != '\r' && data[end] != '\n')
            ++end;
        const size_t length = end - start;
        if (length + 1 > static_cast<size_t>(resultCapacity)) {
            char* larger = static_cast<char*>(malloc(length + 1));
            if (!larger) return defaultValue;
            free(result);
            result = larger;
            resultCapacity = static_cast<int>(length + 1);
        }
        memcpy(result, data + start, length);
        result[length] = '\0';
        return result;
    }
    return defaultValue;
}

long HV_ReadHalvernFile::GetValueLong(const char* key) {
    return strtol(GetValueString(key, ""), nullptr, 10);
}

float HV_ReadHalvernFile::GetValueFloat(const char* key) {
    return static_cast<float>(strtod(GetValueString(key, ""), nullptr));
}

long HV_ReadHalvernFile::GetValueIndexLong(const char* name, int i) {
    return strtol(GetValueIndexString(name, i, ""), nullptr, 10);
}

float HV_ReadHalvernFile::GetValueIndexFloat(const char* name, int i) {
    return static_cast<float>(strtod(GetValueIndexString(name, i, ""), nullptr));
}

const char* HV_ReadHalvernFile::GetValueIndexString(const char* name, int i, const char* defaultValue) {
    char key[kIndexedKeyBytes];
    if (!BuildIndexedKey(key, name, i)) return defaultValue;
    return GetValueString(key, defaultValue);
}

int HV_ReadHalvernFile::GetCountValueOf(const char* name) {
    int count = 0;
    while (count != kMaxIndexedKeys && GetValueIndexString(name, count, nullptr) != nullptr)
        ++count;
    return count;
}
