// Matches arbitrary text against an arbitrary pattern (input: pattern, a zero byte, text),
// and checks the results every pattern must give.
#include "utils/FileUtils.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const size_t split = input.find('\0');
    if (split == std::string::npos) return 0;
    const std::string pattern = input.substr(0, split);
    const std::string text = input.substr(split + 1);
    const bool matched = HV_FileUtils::glob_match(text.c_str(), pattern.c_str());
    if (matched != HV_FileUtils::Parsing_match(text.c_str(), pattern.c_str())) abort();
    // A text without wildcards matches itself as a pattern; "*" around a pattern keeps a match.
    const std::string plain = text.substr(0, text.find_first_of("*?"));
    if (!HV_FileUtils::glob_match(plain.c_str(), plain.c_str())) abort();
    if (matched && !HV_FileUtils::glob_match(text.c_str(), ("*" + pattern + "*").c_str())) abort();
    return 0;
}
