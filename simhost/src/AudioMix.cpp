// The run's audio in one WAV (Host::writeAudioMix): every utterance and every
// sound a plug-in played that the audio folder kept, each placed at the sim
// time it began, as one listener hears them all. What PCM mixing can honour it
// does: a sound's gain from each XPLMSetAudioVolume on, looping until stopped
// (or the end of the run), cut where it was stopped, its rate and channels
// converted to the mix's. 3-D position, fade, cone and pitch are not heard.
#include "HostInternal.h"
#include "Wav.h"
#include "utils/Utf8Path.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>

namespace simhost {

using namespace detail;

namespace {

constexpr double kBlockSeconds = 1; ///< mixed and written a block at a time, to bound the memory used
constexpr int kBytesPerSample = 2;  ///< 16-bit PCM
constexpr uint32_t kWavHeaderBytes = 44;

/// A clip's PCM at its place in the mix.
struct Placed {
    const AudioClip* clip;
    Pcm16 pcm;
    int64_t firstFrame = 0, endFrame = 0; ///< mix frames [first, end)
};

/// The clip's sample for mix channel `out` (of `outChannels`) at source frame `f`: a mono clip is heard on
/// every channel; of a wider one the mix's left hears the even channels, the right the odd ones.
float sampleAt(const Pcm16& pcm, size_t f, int out, int outChannels) {
    const int16_t* frame = &pcm.samples[f * static_cast<size_t>(pcm.channels)];
    if (pcm.channels == 1) return frame[0];
    float sum = 0;
    int n = 0;
    for (int ch = outChannels == 1 ? 0 : out; ch < pcm.channels; ch += outChannels, ++n)
        sum += frame[ch];
    return n ? sum / n : 0;
}

/// Adds mix frames [from, to) of a placed clip into `block` (which starts at mix frame `from`).
void addClip(const Placed& p, int64_t from, int64_t to, int rateHz, int channels, std::vector<float>& block) {
    const size_t frames = p.pcm.frames();
    const double step = double(p.pcm.rateHz) / rateHz; // source frames per mix frame
    const auto& gains = p.clip->gains;
    size_t g = 0;
    float gain = 1;
    for (int64_t i = std::max(from, p.firstFrame); i < std::min(to, p.endFrame); ++i) {
        for (; g < gains.size() && std::llround(gains[g].first * rateHz) <= i; ++g)
            gain = gains[g].second;
        double at = double(i - p.firstFrame) * step;
        if (p.clip->loop) at = std::fmod(at, double(frames));
        // Linear interpolation between neighbouring source frames (a loop wraps to its start).
        const size_t f0 = std::min(static_cast<size_t>(at), frames - 1);
        const size_t f1 = f0 + 1 < frames ? f0 + 1 : p.clip->loop ? 0 : f0;
        const float w = static_cast<float>(at - double(f0));
        for (int ch = 0; ch < channels; ++ch) {
            const float v =
                sampleAt(p.pcm, f0, ch, channels) * (1 - w) + sampleAt(p.pcm, f1, ch, channels) * w;
            block[static_cast<size_t>((i - from) * channels + ch)] += gain * v;
        }
    }
}

} // namespace

bool Host::writeAudioMix(const std::string& wavPath) const {
    const HostCore& c = *core();
    std::vector<Placed> placed;
    int rateHz = 0, channels = 1;
    for (const AudioClip& clip : c.audioClips) {
        Placed p{&clip, {}, 0, 0};
        if (!readWav(clip.file, p.pcm) || p.pcm.frames() == 0) continue; // removed or damaged: left out
        rateHz = std::max(rateHz, p.pcm.rateHz);
        channels = std::max(channels, std::min(p.pcm.channels, 2));
        placed.push_back(std::move(p));
    }
    if (placed.empty()) return false;
    double speechFreeS = 0; // when the last utterance has been said
    int64_t totalFrames = 0;
    for (Placed& p : placed) {
        const double length = double(p.pcm.frames()) / p.pcm.rateHz;
        double start = p.clip->startS, end = start + length;
        if (p.clip->speech) {
            start = std::max(start, speechFreeS);
            end = speechFreeS = start + length;
        } else {
            if (p.clip->loop) end = c.simTime; // until the end of the run, unless stopped before
            if (p.clip->stopS >= 0) end = std::min(end, p.clip->stopS);
        }
        p.firstFrame = std::llround(start * rateHz);
        p.endFrame = std::max(p.firstFrame, static_cast<int64_t>(std::llround(end * rateHz)));
        totalFrames = std::max(totalFrames, p.endFrame);
    }
    const uint64_t dataBytes =
        static_cast<uint64_t>(totalFrames) * static_cast<uint64_t>(channels) * kBytesPerSample;
    if (dataBytes > std::numeric_limits<uint32_t>::max() - kWavHeaderBytes)
        return false; // beyond what a WAV holds

    std::ofstream out(HV_FileUtils::PathFromUtf8(wavPath), std::ios::binary);
    const std::string header = wavHeader(static_cast<uint32_t>(dataBytes), rateHz, channels);
    out.write(header.data(), static_cast<std::streamsize>(header.size()));
    const int64_t blockFrames = static_cast<int64_t>(kBlockSeconds * rateHz);
    std::vector<float> block;
    std::vector<int16_t> pcm;
    for (int64_t from = 0; from < totalFrames && out; from += blockFrames) {
        const int64_t to = std::min(totalFrames, from + blockFrames);
        block.assign(static_cast<size_t>((to - from) * channels), 0.0f);
        for (const Placed& p : placed)
            if (p.firstFrame < to && p.endFrame > from) addClip(p, from, to, rateHz, channels, block);
        pcm.resize(block.size());
        for (size_t i = 0; i < block.size(); ++i) // what sums beyond full scale is clipped, as a mixer does
            pcm[i] = static_cast<int16_t>(std::lround(std::clamp(block[i], -32768.0f, 32767.0f)));
        // 16-bit little-endian, as every platform simhost runs on keeps it in memory.
        out.write(reinterpret_cast<const char*>(pcm.data()),
                  static_cast<std::streamsize>(pcm.size() * kBytesPerSample));
    }
    return static_cast<bool>(out);
}

} // namespace simhost
