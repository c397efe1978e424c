// XPLMSound.h: PCM buffers played on the sim's mixing buses. There is no
// audio engine behind them: each play, stop and change is recorded in the
// transcript (kind "sound"), a channel ends when its buffer has played out on
// the host's wall clock (never when it loops), and its completion callback
// runs then or when it is stopped. With HostOptions::speechWavDir set, every
// 16-bit buffer played is also written there as sound-NNN.wav, and its play,
// stop and volume changes are kept for the run's audio mix (AudioMix.cpp).
#include "HostInternal.h"
#include "Wav.h"

#include "XPLMSound.h"

#include <algorithm>
#include <cstdio>

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

/// Ends a channel; its owner hears of it unless the owner is gone. Stopped before it played out, it
/// stops in the mix too.
void finish(SoundChannelRec& ch, bool tell, bool early) {
    ch.alive = false;
    HostCore* c = core();
    if (early && c && ch.clip >= 0) c->audioClips[static_cast<size_t>(ch.clip)].stopS = c->simTime;
    if (!tell || !ch.callback || !pluginActive(ch.owner)) return;
    auto fn = reinterpret_cast<XPLMPCMComplete_f>(ch.callback);
    void* refcon = ch.refcon;
    callInto(ch.owner, "sound completion", [&] { fn(refcon, FMOD_OK); });
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
            finish(*ch, true, false);
        }
    c.soundsPlaying.erase(std::remove_if(c.soundsPlaying.begin(), c.soundsPlaying.end(),
                                         [](const SoundChannelRec* ch) { return !ch->alive; }),
                          c.soundsPlaying.end());
}

void dropSounds(HostCore& c, int pluginId) {
    for (SoundChannelRec& ch : c.sounds)
        if (ch.alive && ch.owner == pluginId) finish(ch, false, true);
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
        const std::string path = c->opt.speechWavDir + "/" + file;
        if (writeWav(path, audioBuffer, bufferSize, freqHz, numChannels)) {
            ch.clip = static_cast<int>(c->audioClips.size());
            c->audioClips.push_back({path, c->simTime, -1, ch.loop, false, {}});
        } else {
            writeLog("simhost: could not write " + path + "\n");
        }
    }
    return &ch;
}

FMOD_RESULT XPLMStopAudio(FMOD_CHANNEL* fmod_channel) {
    SoundChannelRec* ch = channel(fmod_channel);
    if (!ch) return kFmodErrInvalidHandle;
    record("sound", name(*ch) + " stopped");
    finish(*ch, true, true);
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
    SoundChannelRec* ch = channel(fmod_channel);
    HostCore* c = core();
    if (ch && ch->clip >= 0 && c)
        c->audioClips[static_cast<size_t>(ch->clip)].gains.emplace_back(c->simTime, source_volume);
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
