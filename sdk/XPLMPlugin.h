#ifndef XPLMPlugin_h
#define XPLMPlugin_h
/*
 * Plug-ins: finding and inspecting loaded plug-ins, enabling them, sending
 * them messages, and the sim's optional features.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/// The calling plug-in's ID.
XPLM_API XPLMPluginID XPLMGetMyID(void);
/// Number of loaded plug-ins.
XPLM_API int XPLMCountPlugins(void);
/// ID of the plug-in at inIndex (0 to count - 1, in no particular order).
XPLM_API XPLMPluginID XPLMGetNthPlugin(int inIndex);
/// ID of the plug-in loaded from inPath, or XPLM_NO_PLUGIN_ID.
XPLM_API XPLMPluginID XPLMFindPluginByPath(const char* inPath);
/// ID of the running plug-in with that signature, or XPLM_NO_PLUGIN_ID.
XPLM_API XPLMPluginID XPLMFindPluginBySignature(const char* inSignature);
/// Copies a plug-in's name, file path, signature and description; buffers >= 256 bytes, any may be NULL.
XPLM_API void XPLMGetPluginInfo(XPLMPluginID inPlugin, char* outName, char* outFilePath, char* outSignature,
                                char* outDescription);
/// 1 if the plug-in is enabled.
XPLM_API int XPLMIsPluginEnabled(XPLMPluginID inPluginID);
/// Enables a plug-in; returns 1 if it is (now) enabled.
XPLM_API int XPLMEnablePlugin(XPLMPluginID inPluginID);
/// Disables a plug-in.
XPLM_API void XPLMDisablePlugin(XPLMPluginID inPluginID);
/// Unloads and reloads every plug-in.
XPLM_API void XPLMReloadPlugins(void);
/// Delivers a message to one plug-in, or to every enabled plug-in when inPlugin is XPLM_NO_PLUGIN_ID.
XPLM_API void XPLMSendMessageToPlugin(XPLMPluginID inPlugin, int inMessage, void* inParam);

#if defined(XPLM200)
/// Called once per feature by XPLMEnumerateFeatures.
typedef void (*XPLMFeatureEnumerator_f)(const char* inFeature, void* inRef);
/// 1 if the sim knows the named feature.
XPLM_API int XPLMHasFeature(const char* inFeature);
/// 1 if the named feature is enabled for the calling plug-in.
XPLM_API int XPLMIsFeatureEnabled(const char* inFeature);
/// Enables (1) or disables (0) a feature for the calling plug-in.
XPLM_API void XPLMEnableFeature(const char* inFeature, int inEnable);
/// Calls inEnumerator for each feature the sim knows.
XPLM_API void XPLMEnumerateFeatures(XPLMFeatureEnumerator_f inEnumerator, void* inRef);
#endif

/* Messages the sim sends (0 to 0x00FFFFFF are reserved for it). The parameter
   is a pointer or an integer carried in the pointer. */
#define XPLM_MSG_PLANE_CRASHED 101          /* unused parameter */
#define XPLM_MSG_PLANE_LOADED 102           /* plane index; 0 = the user's */
#define XPLM_MSG_AIRPORT_LOADED 103         /* unused parameter */
#define XPLM_MSG_SCENERY_LOADED 104         /* unused parameter */
#define XPLM_MSG_AIRPLANE_COUNT_CHANGED 105 /* unused parameter */
#if defined(XPLM200)
#define XPLM_MSG_PLANE_UNLOADED 106 /* plane index */
#endif
#if defined(XPLM210)
#define XPLM_MSG_WILL_WRITE_PREFS 107 /* unused parameter */
#define XPLM_MSG_LIVERY_LOADED 108    /* plane index */
#endif
#if defined(XPLM301)
#define XPLM_MSG_ENTERED_VR 109
#define XPLM_MSG_EXITING_VR 110
#endif
#if defined(XPLM303)
#define XPLM_MSG_RELEASE_PLANES 111
#endif
#if defined(XPLM400)
#define XPLM_MSG_FMOD_BANK_LOADED 112    /* bank id */
#define XPLM_MSG_FMOD_BANK_UNLOADING 113 /* bank id */
#define XPLM_MSG_DATAREFS_ADDED 114      /* int* to the new dataref count */
#endif
#if defined(XPLM430)
#define XPLM_MSG_WEATHER_DELIVERED 115 /* 0 or 1 in the parameter */
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMPlugin_h */
