#include "Wav.h"
#include "utils/Utf8Path.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace simhost::detail {
namespace {

constexpr int kBytesPerSample = 2;
constexpr uint16_t kFormatPcm = 1;
constexpr uint32_t kFmtChunkBytes = 16;
constexpr int kMaxChannels = 32;   ///< more is not a sound anybody plays
constexpr int kMaxRateHz = 768000; ///< well above any audio rate

void putLe(std::string& out, uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}

uint32_t le(const std::string& s, size_t at, int bytes) {
    uint32_t v = 0;
    for (int i = bytes - 1; i >= 0; --i)
        v = v << 8 | static_cast<unsigned char>(s[at + static_cast<size_t>(i)]);
    return v;
}

} // namespace

std::string wavHeader(uint32_t dataBytes, int rateHz, int channels) {
    std::string h = "RIFF";
    putLe(h, 36 + dataBytes, 4);
    h += "WAVEfmt ";
    putLe(h, kFmtChunkBytes, 4);
    putLe(h, kFormatPcm, 2);
    putLe(h, static_cast<uint32_t>(channels), 2);
    putLe(h, static_cast<uint32_t>(rateHz), 4);
    putLe(h, static_cast<uint32_t>(rateHz * channels * kBytesPerSample), 4); // bytes per second
    putLe(h, static_cast<uint32_t>(channels * kBytesPerSample), 2);          // bytes per frame
    putLe(h, 8 * kBytesPerSample, 2);                                        // bits per sample
    h += "data";
    putLe(h, dataBytes, 4);
    return h;
}

bool writeWav(const std::string& path, const void* pcm, uint32_t bytes, int rateHz, int channels) {
    std::ofstream f(HV_FileUtils::PathFromUtf8(path), std::ios::binary);
    if (!f) return false;
    const std::string header = wavHeader(bytes, rateHz, channels);
    f.write(header.data(), static_cast<std::streamsize>(header.size()));
    f.write(static_cast<const char*>(pcm), bytes);
    return static_cast<bool>(f);
}

bool readWav(const std::string& path, Pcm16& out) {
    std::ifstream in(HV_FileUtils::PathFromUtf8(path), std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (bytes.size() < 12 || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 4, "WAVE") != 0)
        return false;
    bool format = false, data = false;
    size_t at = 12;
    while (at + 8 <= bytes.size()) {
        const std::string id = bytes.substr(at, 4);
        const size_t size = le(bytes, at + 4, 4), body = at + 8;
        const size_t available = std::min(size, bytes.size() - body); // a cut-off file keeps what it has
        if (id == "fmt " && available >= kFmtChunkBytes) {
            if (le(bytes, body, 2) != kFormatPcm || le(bytes, body + 14, 2) != 8 * kBytesPerSample)
                return false;
            out.channels = static_cast<int>(le(bytes, body + 2, 2));
            out.rateHz = static_cast<int>(le(bytes, body + 4, 4));
            format = true;
        } else if (id == "data") {
            out.samples.resize(available / kBytesPerSample);
            for (size_t i = 0; i < out.samples.size(); ++i)
                out.samples[i] = static_cast<int16_t>(le(bytes, body + i * kBytesPerSample, kBytesPerSample));
            data = true;
        }
        at = body + size + (size & 1); // chunks are padded to an even size
    }
    return format && data && out.channels >= 1 && out.channels <= kMaxChannels && out.rateHz >= 1 &&
           out.rateHz <= kMaxRateHz;
}

} // namespace simhost::detail
