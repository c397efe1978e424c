// Splits arbitrary text on an arbitrary delimiter: the input is delimiter, a zero byte, text.
#include "utils/HV_StringTokenizer.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const size_t split = input.find('\0');
    if (split == std::string::npos) return 0;
    const std::string delimiter = input.substr(0, split);
    const std::string text = input.substr(split + 1);
    HV_StringTokenizer tokenizer(text.c_str(), delimiter.c_str());
    const size_t textLength = strlen(text.c_str());
    std::vector<char> out(textLength + 1);
    size_t consumed = 0;
    while (tokenizer.HasMoreTocken()) {
        if (!tokenizer.GetNextTocken(out.data(), static_cast<int>(out.size()))) abort();
        consumed += strlen(out.data()) + 1;
        if (consumed > textLength + 2) abort(); // every token moves forward
    }
    if (tokenizer.GetNextTocken(out.data(), static_cast<int>(out.size())) || out[0] != '\0') abort();
    return 0;
}
