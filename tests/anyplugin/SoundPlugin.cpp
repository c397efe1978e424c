// A sound plug-in: a chime played once on the interior bus when its command
// runs, and an engine hum that loops on the exterior bus, placed at the
// aircraft, until its stop command. It counts the completion callbacks, which
// the SDK promises for a sound that plays out and for one that is stopped.
// Published: sound/completions, sound/hum_playing.
#include "PluginSupport.h"

#include "XPLMPlugin.h"
#include "XPLMSound.h"

#include <cmath>
#include <cstring>
#include <vector>

using namespace plugin_support;

namespace {

constexpr int kRateHz = 22050;
constexpr float kChimeSeconds = 0.5f;
constexpr float kHumSeconds = 0.2f;
constexpr float kChimeHz = 880, kHumHz = 110;
constexpr float kAmplitude = 8000; ///< of 32767

std::vector<int16_t> gChime, gHum; ///< the buffers live as long as the plug-in: the channels read them
FMOD_CHANNEL* gHumChannel = nullptr;
int gCompletions = 0, gHumPlaying = 0;
XPLMCommandRef gPlay = nullptr, gHumOn = nullptr, gHumOff = nullptr;

std::vector<int16_t> tone(float hz, float seconds) {
    std::vector<int16_t> pcm(static_cast<size_t>(kRateHz * seconds));
    for (size_t i = 0; i < pcm.size(); ++i)
        pcm[i] = static_cast<int16_t>(kAmplitude * std::sin(2 * 3.14159265f * hz * i / kRateHz));
    return pcm;
}

void completed(void* refcon, FMOD_RESULT) {
    ++gCompletions;
    if (refcon == &gHumChannel) {
        gHumChannel = nullptr; // the channel is gone: forget it, as the SDK asks
        gHumPlaying = 0;
    }
}

uint32_t bytes(const std::vector<int16_t>& pcm) {
    return static_cast<uint32_t>(pcm.size() * sizeof(int16_t));
}

int command(XPLMCommandRef cmd, XPLMCommandPhase phase, void*) {
    if (phase != xplm_CommandBegin) return 0;
    if (cmd == gPlay) {
        XPLMPlayPCMOnBus(gChime.data(), bytes(gChime), FMOD_SOUND_FORMAT_PCM16, kRateHz, 1, 0,
                         xplm_AudioInterior, completed, nullptr);
    } else if (cmd == gHumOn && !gHumChannel) {
        gHumChannel = XPLMPlayPCMOnBus(gHum.data(), bytes(gHum), FMOD_SOUND_FORMAT_PCM16, kRateHz, 1, 1,
                                       xplm_AudioExteriorAircraft, completed, &gHumChannel);
        FMOD_VECTOR at{0, 2, 0}, still{0, 0, 0};
        XPLMSetAudioPosition(gHumChannel, &at, &still);
        XPLMSetAudioVolume(gHumChannel, 0.5f);
        gHumPlaying = gHumChannel ? 1 : 0;
    } else if (cmd == gHumOff && gHumChannel) {
        XPLMStopAudio(gHumChannel);
    }
    return 0;
}

} // namespace

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    std::strcpy(outName, "Sound");
    std::strcpy(outSig, "anyplugin.test.sound");
    std::strcpy(outDesc, "plays a chime and a looping hum");
    gChime = tone(kChimeHz, kChimeSeconds);
    gHum = tone(kHumHz, kHumSeconds);
    gPlay = XPLMCreateCommand("sound/chime", "Plays the chime");
    gHumOn = XPLMCreateCommand("sound/hum_start", "Starts the hum");
    gHumOff = XPLMCreateCommand("sound/hum_stop", "Stops the hum");
    for (XPLMCommandRef c : {gPlay, gHumOn, gHumOff})
        XPLMRegisterCommandHandler(c, command, 1, nullptr);
    publishInt("sound/completions", &gCompletions);
    publishInt("sound/hum_playing", &gHumPlaying);
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    if (gHumChannel) XPLMStopAudio(gHumChannel);
    for (XPLMCommandRef c : {gPlay, gHumOn, gHumOff})
        XPLMUnregisterCommandHandler(c, command, 1, nullptr);
    unpublishAll();
}

PLUGIN_API int XPluginEnable(void) {
    return 1;
}
PLUGIN_API void XPluginDisable(void) {}
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID, int, void*) {}
