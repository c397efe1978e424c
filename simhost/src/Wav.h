// 16-bit PCM WAV files: the form simhost keeps a plug-in's sound buffers and the
// spoken crew messages in, and the form of the run's mixed audio.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace simhost::detail {

struct Pcm16 {
    int rateHz = 0;
    int channels = 0;
    std::vector<int16_t> samples; ///< interleaved: `channels` samples per frame
    size_t frames() const { return channels > 0 ? samples.size() / static_cast<size_t>(channels) : 0; }
};

/// The 44-byte header of a 16-bit PCM WAV holding `dataBytes` of samples.
std::string wavHeader(uint32_t dataBytes, int rateHz, int channels);
/// Writes 16-bit PCM (little-endian, as every platform simhost runs on keeps it in memory) as a WAV
/// file. False when the file cannot be written.
bool writeWav(const std::string& path, const void* pcm, uint32_t bytes, int rateHz, int channels);
/// Reads a 16-bit PCM WAV file, chunk by chunk. False for anything else: another encoding or sample
/// size, no format or data, a rate or channel count out of range.
bool readWav(const std::string& path, Pcm16& out);

} // namespace simhost::detail
