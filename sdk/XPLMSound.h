#ifndef XPLMSound_h
#define XPLMSound_h
/*
 * Sound through the sim's audio engine (FMOD Studio underneath): play a PCM
 * buffer on one of the sim's mixing buses and steer the resulting channel
 * (3-D position, fade distances, volume, pitch, cone).
 *
 * A plug-in that includes the engine's own headers first gets the engine's
 * types and two more functions that hand out the engine's objects; otherwise
 * the few engine types the functions need are declared here.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(XPLM400)
/* The sim's mixing buses. */
enum {
    xplm_AudioRadioCom1 = 0,           /* speech heard on COM1 */
    xplm_AudioRadioCom2 = 1,           /* speech heard on COM2 */
    xplm_AudioRadioPilot = 2,          /* the pilot's own voice */
    xplm_AudioRadioCopilot = 3,        /* the co-pilot's own voice */
    xplm_AudioExteriorAircraft = 4,    /* the aircraft heard from outside */
    xplm_AudioExteriorEnvironment = 5, /* the world heard from outside */
    xplm_AudioExteriorUnprocessed = 6, /* outside, without the cockpit filter */
    xplm_AudioInterior = 7,            /* inside the cockpit */
    xplm_AudioUI = 8,                  /* the user interface */
    xplm_AudioGround = 9,              /* the ground crew's cable */
    xplm_Master = 10                   /* everything; not for direct use */
};
typedef int XPLMAudioBus;

/* The engine's sound banks. */
enum {
    xplm_MasterBank = 0, /* aircraft and environment */
    xplm_RadioBank = 1   /* COM1, COM2, ground, pilot, co-pilot */
};
typedef int XPLMBankID;

#if defined(_FMOD_COMMON_H)
/// The engine's studio system object.
XPLM_API FMOD_STUDIO_SYSTEM* XPLMGetFMODStudio(void);
/// The engine's channel group of one bus.
XPLM_API FMOD_CHANNELGROUP* XPLMGetFMODChannelGroup(XPLMAudioBus audioType);
#else
/* The engine types the functions below need, with the engine's values. */
typedef enum FMOD_RESULT { FMOD_OK } FMOD_RESULT;
typedef enum FMOD_SOUND_FORMAT { FMOD_SOUND_FORMAT_PCM16 = 2 } FMOD_SOUND_FORMAT;
typedef struct FMOD_VECTOR {
    float x, y, z;
} FMOD_VECTOR;
typedef void FMOD_CHANNEL;
#endif

/// Told when a channel from XPLMPlayPCMOnBus ends (played out or stopped); the channel is gone after.
typedef void (*XPLMPCMComplete_f)(void* inRefcon, FMOD_RESULT status);

/// Plays bufferSize bytes of PCM at freqHz with numChannels interleaved channels on a bus, looping when
/// loop is non-zero; the buffer must live until the channel ends. Returns the channel.
XPLM_API FMOD_CHANNEL* XPLMPlayPCMOnBus(void* audioBuffer, uint32_t bufferSize, FMOD_SOUND_FORMAT soundFormat,
                                        int freqHz, int numChannels, int loop, XPLMAudioBus audioType,
                                        XPLMPCMComplete_f inCallback, void* inRefcon);
/// Stops a channel; its completion callback runs.
XPLM_API FMOD_RESULT XPLMStopAudio(FMOD_CHANNEL* fmod_channel);
/// Places a 3-D channel in the local frame (metres, metres per second).
XPLM_API FMOD_RESULT XPLMSetAudioPosition(FMOD_CHANNEL* fmod_channel, FMOD_VECTOR* position,
                                          FMOD_VECTOR* velocity);
/// Distances (metres) at which a 3-D channel starts and stops fading.
XPLM_API FMOD_RESULT XPLMSetAudioFadeDistance(FMOD_CHANNEL* fmod_channel, float min_fade_distance,
                                              float max_fade_distance);
/// Volume, 0 silent to 1 full.
XPLM_API FMOD_RESULT XPLMSetAudioVolume(FMOD_CHANNEL* fmod_channel, float source_volume);
/// Playback frequency in Hz (the pitch).
XPLM_API FMOD_RESULT XPLMSetAudioPitch(FMOD_CHANNEL* fmod_channel, float audio_pitch_hz);
/// Directional cone: inner and outer angles (degrees), volume outside, and where it points.
XPLM_API FMOD_RESULT XPLMSetAudioCone(FMOD_CHANNEL* fmod_channel, float inside_angle, float outside_angle,
                                      float outside_volume, FMOD_VECTOR* orientation);
#endif /* XPLM400 */

#ifdef __cplusplus
}
#endif

#endif /* XPLMSound_h */
