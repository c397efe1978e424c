// Queries a key-value reader built from arbitrary bytes; the first input line is the key.
#include "utils/HV_ReadHalvernFile.h"

#include "FuzzInputFile.h"

#include <cstdlib>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const char* bytes = reinterpret_cast<const char*>(data);
    const char* newline = static_cast<const char*>(memchr(bytes, '\n', size));
    const size_t keyLength = newline ? static_cast<size_t>(newline - bytes) : size;
    const std::string key(bytes, strnlen(bytes, keyLength));
    const kalvora_fuzz::InputFile file(data, size);
    HV_ReadHalvernFile reader(file.path());
    const char* value = reader.GetValueString(key.c_str(), nullptr);
    if (value && (strchr(value, '\n') || strchr(value, '\r'))) abort();
    reader.GetValueLong(key.c_str());
    reader.GetValueFloat(key.c_str());
    if (reader.GetCountValueOf(key.c_str()) > 1001) abort();
    return 0;
}
