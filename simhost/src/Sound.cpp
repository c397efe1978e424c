// XPLMSound.h: PCM buffers played on the sim's mixing buses. There is no
// audio engine behind them: each play, stop and change is recorded in the
// transcript (kind "sound"), a channel ends when its buffer has played out on
// the host's wall clock (never when it loops), and its completion callback
// runs then or when it is stopped. With HostOptions::speechWavDir set, every
// 16-bit buffer played is also written there as sound-NNN.wav.
#include "HostInternal.h"

#include "XPLMSound.h"
#include "utils/Utf8Path.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

namespace simhost::detail {
namespace {

constexpr FMOD_RESULT kFmodErrInvalidHandle = static_cast<FMOD_RESULT>(30); ///< the engine's code for it
constexpr FMOD_RESULT kFmodErrInvalidParam = static_cast<FMOD_RESULT>(31);  ///< the engine's code for it
constexpr int kBytesPerSample = 2; ///< FMOD_SOUND_FORMAT_PCM16, the one format the API takes
constexpr int kMaxChannels = 8;    ///< interleaved channels accepted
constexpr int kMaxRateHz = 384000; ///< sample rates accepted
constexpr const char* kBusNames[] = {"com1",
                                     "com2",
                                     "pilot",
                                     "copilot",
                                     "exterior aircraft",
                                     "exterior environment",
                                     "exterior unprocessed",
                                     "interior",
                                     "ui",
                                     "ground",
                                     "master"};

SoundChannelRec* channel(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->soundHandles.count(handle)) return nullptr;
    auto* ch = static_cast<SoundChannelRec*>(handle);
    return ch->alive ? ch : nullptr;
}

std::string name(const SoundChannelRec& ch) {
    return "channel " + std::to_string(ch.id);
}

/// Ends a channel; its owner hears of it unless the owner is gone.
void finish(SoundChannelRec& ch, bool tell) {
    ch.alive = false;
    if (!tell || !ch.callback || !pluginActive(ch.owner)) return;
    auto fn = reinterpret_cast<XPLMPCMComplete_f>(ch.callback);
    void* refcon = ch.refcon;
    callInto(ch.owner, "sound completion", [&] { fn(refcon, FMOD_OK); });
}

void put32(std::ofstream& f, uint32_t v) {
    const char b[4] = {char(v), char(v >> 8), char(v >> 16), char(v >> 24)};
    f.write(b, 4);
}
void put16(std::ofstream& f, uint16_t v) {
    const char b[2] = {char(v), char(v >> 8)};
    f.write(b, 2);
}

/// Writes 16-bit PCM as a WAV file. False when the file cannot be written.
bool writeWav(const std::string& path, const void* pcm, uint32_t bytes, int rateHz, int channels) {
    std::ofstream f(HV_FileUtils::PathFromUtf8(path), std::ios::binary);
    if (!f) return false;
    f.write("RIFF", 4);
    put32(f, 36 + bytes);
    f.write("WAVEfmt ", 8);
    put32(f, 16); // fmt chunk size
    put16(f, 1);  // PCM
    put16(f, static_cast<uint16_t>(channels));
    put32(f, static_cast<uint32_t>(rateHz));
    put32(f, static_cast<uint32_t>(rateHz * channels * kBytesPerSample));
    put16(f, static_cast<uint16_t>(channels * kBytesPerSample));
    put16(f, 8 * kBytesPerSample);
    f.write("data", 4);
    put32(f, bytes);
    f.write(static_cast<const char*>(pcm), bytes);
    return static_cast<bool>(f);
}

FMOD_RESULT change(void* handle, const std::string& what) {
    SoundChannelRec* ch = channel(handle);
    if (!ch) return kFmodErrInvalidHandle;
    record("sound", name(*ch) + " " + what);
    return FMOD_OK;
}

std::string num(double v) {
    char b[32];
    std::snprintf(b, sizeof b, "%g", v);
    return b;
}

} // namespace

void stepSounds(HostCore& c) {
    if (c.soundsPlaying.empty()) return;
    // A completion callback may play or stop sounds: walk a copy, then keep the live ones.
    const std::vector<SoundChannelRec*> playing = c.soundsPlaying;
    for (SoundChannelRec* ch : playing)
        if (ch->alive && !ch->loop && c.wallTime >= ch->endsAt) {
            record("sound", name(*ch) + " ended");
            finish(*ch, true);
        }
    c.soundsPlaying.erase(std::remove_if(c.soundsPlaying.begin(), c.soundsPlaying.end(),
                                         [](const SoundChannelRec* ch) { return !ch->alive; }),
                          c.soundsPlaying.end());
}

void dropSounds(HostCore& c, int pluginId) {
    for (SoundChannelRec& ch : c.sounds)
        if (ch.alive && ch.owner == pluginId) finish(ch, false);
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

FMOD_CHANNEL* XPLMPlayPCMOnBus(void* audioBuffer, uint32_t bufferSize, FMOD_SOUND_FORMAT soundFormat,
                               int freqHz, int numChannels, int loop, XPLMAudioBus audioType,
                               XPLMPCMComplete_f inCallback, void* inRefcon) {
    HostCore* c = core();
    if (!c) return nullptr;
    if (!audioBuffer || bufferSize == 0 || soundFormat != FMOD_SOUND_FORMAT_PCM16 || freqHz <= 0 ||
        freqHz > kMaxRateHz || numChannels < 1 || numChannels > kMaxChannels ||
        audioType < xplm_AudioRadioCom1 || audioType > xplm_Master) {
        apiError("XPLMPlayPCMOnBus: needs a 16-bit PCM buffer, a rate, 1 to 8 channels and a bus");
        return nullptr;
    }
    c->sounds.emplace_back();
    SoundChannelRec& ch = c->sounds.back();
    ch.id = static_cast<int>(c->sounds.size());
    ch.owner = caller();
    ch.bus = audioType;
    ch.loop = loop != 0;
    const double seconds = double(bufferSize) / (double(freqHz) * numChannels * kBytesPerSample);
    ch.endsAt = c->wallTime + seconds;
    ch.callback = reinterpret_cast<void*>(inCallback);
    ch.refcon = inRefcon;
    c->soundHandles.insert(&ch);
    c->soundsPlaying.push_back(&ch);
    record("sound", name(ch) + " play on " + kBusNames[audioType] + ": " + std::to_string(freqHz) + " Hz, " +
                        std::to_string(numChannels) + " ch, " + num(seconds) + " s" +
                        (ch.loop ? ", looping" : ""));
    if (!c->opt.speechWavDir.empty()) {
        char file[32];
        std::snprintf(file, sizeof file, "sound-%03d.wav", ++c->soundsWritten);
        if (!writeWav(c->opt.speechWavDir + "/" + file, audioBuffer, bufferSize, freqHz, numChannels))
            writeLog("simhost: could not write " + c->opt.speechWavDir + "/" + file + "\n");
    }
    return &ch;
}

FMOD_RESULT XPLMStopAudio(FMOD_CHANNEL* fmod_channel) {
    SoundChannelRec* ch = channel(fmod_channel);
    if (!ch) return kFmodErrInvalidHandle;
    record("sound", name(*ch) + " stopped");
    finish(*ch, true);
    return FMOD_OK;
}

FMOD_RESULT XPLMSetAudioPosition(FMOD_CHANNEL* fmod_channel, FMOD_VECTOR* position, FMOD_VECTOR* velocity) {
    if (!position || !velocity) return channel(fmod_channel) ? kFmodErrInvalidParam : kFmodErrInvalidHandle;
    return change(fmod_channel, "position " + num(position->x) + " " + num(position->y) + " " +
                                    num(position->z) + " m, velocity " + num(velocity->x) + " " +
                                    num(velocity->y) + " " + num(velocity->z) + " m/s");
}

FMOD_RESULT XPLMSetAudioFadeDistance(FMOD_CHANNEL* fmod_channel, float min_fade_distance,
                                     float max_fade_distance) {
    return change(fmod_channel, "fade " + num(min_fade_distance) + " to " + num(max_fade_distance) + " m");
}

FMOD_RESULT XPLMSetAudioVolume(FMOD_CHANNEL* fmod_channel, float source_volume) {
    return change(fmod_channel, "volume " + num(source_volume));
}

FMOD_RESULT XPLMSetAudioPitch(FMOD_CHANNEL* fmod_channel, float audio_pitch_hz) {
    return change(fmod_channel, "pitch " + num(audio_pitch_hz) + " Hz");
}

FMOD_RESULT XPLMSetAudioCone(FMOD_CHANNEL* fmod_channel, float inside_angle, float outside_angle,
                             float outside_volume, FMOD_VECTOR* orientation) {
    if (!orientation) return channel(fmod_channel) ? kFmodErrInvalidParam : kFmodErrInvalidHandle;
    return change(fmod_channel, "cone " + num(inside_angle) + "/" + num(outside_angle) +
                                    " deg, outside volume " + num(outside_volume));
}

// Without the engine's headers these two are not declared; the sim still exports them. There is no audio
// engine here to hand out.
XPLM_API void* XPLMGetFMODStudio(void);
XPLM_API void* XPLMGetFMODChannelGroup(XPLMAudioBus audioType);
void* XPLMGetFMODStudio(void) {
    return nullptr;
}
void* XPLMGetFMODChannelGroup(XPLMAudioBus) {
    return nullptr;
}

} // extern "C"
