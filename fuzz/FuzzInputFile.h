// Puts a fuzz input into a file, for readers that only take a path.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace kalvora_fuzz {

/// The input written to a scratch file private to this process, removed again when this goes out of
/// scope (the fuzzer ends a timed run without running exit handlers, so nothing may be left to them).
class InputFile {
public:
    InputFile(const uint8_t* data, size_t size) : path_("/tmp/kalvora-fuzz-" + std::to_string(getpid())) {
        if (FILE* out = std::fopen(path_.c_str(), "wb")) {
            std::fwrite(data, 1, size, out);
            std::fclose(out);
        }
    }
    ~InputFile() { std::remove(path_.c_str()); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    const char* path() const { return path_.c_str(); }

private:
    std::string path_;
};

} // namespace kalvora_fuzz
