// Puts a fuzz input into a file, for readers that only take a path.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace kalvora_fuzz {

/// Path of a scratch file private to this process.
inline const std::string& ScratchPath() {
    static const std::string path = "/tmp/kalvora-fuzz-utils-" + std::to_string(getpid());
    return path;
}

/// Writes the input to the scratch file and returns its path.
inline const std::string& WriteInput(const uint8_t* data, size_t size) {
    FILE* out = fopen(ScratchPath().c_str(), "wb");
    if (out) {
        fwrite(data, 1, size, out);
        fclose(out);
    }
    return ScratchPath();
}

} // namespace kalvora_fuzz
