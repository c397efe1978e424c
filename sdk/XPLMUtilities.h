#ifndef XPLMUtilities_h
#define XPLMUtilities_h
/*
 * Miscellaneous services of the sim: paths, logging, speech, versions,
 * language, run-time symbol lookup, commands, and the legacy key and joystick
 * button simulation.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The application hosting the plug-in. Values 2 to 11 named other, now
   retired, applications of the same family. */
enum { xplm_Host_Unknown = 0, xplm_Host_XPlane = 1 };
typedef int XPLMHostApplicationID;

/* The language the sim runs in. */
enum {
    xplm_Language_Unknown = 0,
    xplm_Language_English = 1,
    xplm_Language_French = 2,
    xplm_Language_German = 3,
    xplm_Language_Italian = 4,
    xplm_Language_Spanish = 5,
    xplm_Language_Korean = 6,
    xplm_Language_Russian = 7,
    xplm_Language_Greek = 8,
    xplm_Language_Japanese = 9
};
#if defined(XPLM300)
enum { xplm_Language_Chinese = 10 };
#endif
#if defined(XPLM400)
enum { xplm_Language_Ukrainian = 11 };
#endif
typedef int XPLMLanguageCode;

#if defined(XPLM200)
/* Kinds of data file the sim loads and saves. */
enum {
    xplm_DataFile_Situation = 1,  /* a situation (.sit): a flight's starting state */
    xplm_DataFile_ReplayMovie = 2 /* a replay (.smo) of a past flight */
};
typedef int XPLMDataFileType;
#endif

#if defined(XPLM200)
/// Receives reports of API misuse (bad parameters, bad struct sizes).
typedef void (*XPLMError_f)(const char* inMessage);
#endif

/// Full path of the X-Plane folder with a trailing separator; buffer >= 512 bytes.
XPLM_API void XPLMGetSystemPath(char* outSystemPath);
/// Full path of a file inside the preferences folder; buffer >= 512 bytes.
XPLM_API void XPLMGetPrefsPath(char* outPrefsPath);
/// A one-character string: "/" on Linux.
XPLM_API const char* XPLMGetDirectorySeparator(void);
/// Splits inFullPath in place at its last separator; returns the file part.
XPLM_API char* XPLMExtractFileAndPath(char* inFullPath);
/// Lists a folder (full path, no trailing separator) from its inFirstReturn-th entry on: names go
/// NUL-terminated into outFileNames followed by an empty name, outIndices (if given) points at each
/// with a NULL after the last. 1 when everything fitted, 0 on a buffer overrun.
XPLM_API int XPLMGetDirectoryContents(const char* inDirectoryPath, int inFirstReturn, char* outFileNames,
                                      int inFileNameBufSize, char** outIndices, int inIndexCount,
                                      int* outTotalFiles, int* outReturnedFiles);
#if defined(XPLM200)
/// Loads a situation or replay (path relative to the X-Plane folder; NULL clears the replay); 1 on success.
XPLM_API int XPLMLoadDataFile(XPLMDataFileType inFileType, const char* inFilePath);
/// Saves the current situation or replay (path relative to the X-Plane folder); 1 on success.
XPLM_API int XPLMSaveDataFile(XPLMDataFileType inFileType, const char* inFilePath);
#endif
/// Appends inString verbatim to Log.txt (no newline added) and flushes.
XPLM_API void XPLMDebugString(const char* inString);
/// Shows inString as an overlay and speaks it when speech is on.
XPLM_API void XPLMSpeakString(const char* inString);
/// Sim version (at least 3 digits), API version, host application.
XPLM_API void XPLMGetVersions(int* outXPlaneVersion, int* outXPLMVersion, XPLMHostApplicationID* outHostID);
/// The sim's language.
XPLM_API XPLMLanguageCode XPLMGetLanguage(void);
/// Readable name of a virtual key code (may be empty, "unknown" or NULL for unknown keys).
XPLM_API const char* XPLMGetVirtualKeyDescription(char inVirtualKey);
/// Reloads the scenery around the user.
XPLM_API void XPLMReloadScenery(void);

#if defined(XPLM200)
/// Address of the named API function, or NULL if this sim lacks it.
XPLM_API void* XPLMFindSymbol(const char* inString);
/// Installs the callback that receives API-misuse reports.
XPLM_API void XPLMSetErrorCallback(XPLMError_f inCallback);
#endif

#if defined(XPLM200)
/// Opaque handle of a command; NULL means "none".
typedef void* XPLMCommandRef;

/* Where a command is in its press. */
enum { xplm_CommandBegin = 0, xplm_CommandContinue = 1, xplm_CommandEnd = 2 };
typedef int XPLMCommandPhase;

/// A command handler; return 1 to let processing continue, 0 to stop it (before-handlers only).
typedef int (*XPLMCommandCallback_f)(XPLMCommandRef inCommand, XPLMCommandPhase inPhase, void* inRefcon);

/// Looks a command up by name; NULL if unknown.
XPLM_API XPLMCommandRef XPLMFindCommand(const char* inName);
/// Starts holding a command; balance with XPLMCommandEnd.
XPLM_API void XPLMCommandBegin(XPLMCommandRef inCommand);
/// Releases a command started with XPLMCommandBegin.
XPLM_API void XPLMCommandEnd(XPLMCommandRef inCommand);
/// XPLMCommandBegin immediately followed by XPLMCommandEnd.
XPLM_API void XPLMCommandOnce(XPLMCommandRef inCommand);
/// Creates a command, or returns the existing one of that name.
XPLM_API XPLMCommandRef XPLMCreateCommand(const char* inName, const char* inDescription);
/// Adds a handler run before (inBefore = 1) or after X-Plane's own.
XPLM_API void XPLMRegisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler,
                                         int inBefore, void* inRefcon);
/// Removes a handler; all four values must match the registration.
XPLM_API void XPLMUnregisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler,
                                           int inBefore, void* inRefcon);
#endif

#if defined(XPLM_DEPRECATED)
/* Sim functions triggered independently of the keyboard mapping, numbered
   from 0. Codes 6 to 72 name further sim functions not declared here. */
enum {
    xplm_key_pause = 0,
    xplm_key_revthrust = 1,
    xplm_key_jettison = 2,
    xplm_key_brakesreg = 3,
    xplm_key_brakesmax = 4,
    xplm_key_gear = 5,
    xplm_key_forward = 73,
    xplm_key_down = 74,
    xplm_key_left = 75,
    xplm_key_right = 76,
    xplm_key_back = 77,
    xplm_key_tower = 78,
    xplm_key_runway = 79,
    xplm_key_chase = 80,
    xplm_key_free1 = 81,
    xplm_key_free2 = 82,
    xplm_key_spot = 83,
    xplm_key_fullscrn1 = 84,
    xplm_key_fullscrn2 = 85,
    xplm_key_tanspan = 86,
    xplm_key_smoke = 87,
    xplm_key_map = 88,
    xplm_key_zoomin = 89,
    xplm_key_zoomout = 90,
    xplm_key_cycledump = 91,
    xplm_key_replay = 92,
    xplm_key_tranID = 93,
    xplm_key_max = 94
};
typedef int XPLMCommandKeyID;

/* Joystick button functions, numbered from 0 without gaps. */
enum {
    xplm_joy_nothing = 0,
    xplm_joy_start_all,
    xplm_joy_start_0,
    xplm_joy_start_1,
    xplm_joy_start_2,
    xplm_joy_start_3,
    xplm_joy_start_4,
    xplm_joy_start_5,
    xplm_joy_start_6,
    xplm_joy_start_7,
    xplm_joy_throt_up, /* 10 */
    xplm_joy_throt_dn,
    xplm_joy_prop_up,
    xplm_joy_prop_dn,
    xplm_joy_mixt_up,
    xplm_joy_mixt_dn,
    xplm_joy_carb_tog,
    xplm_joy_carb_on,
    xplm_joy_carb_off,
    xplm_joy_trev,
    xplm_joy_trm_up, /* 20 */
    xplm_joy_trm_dn,
    xplm_joy_rot_trm_up,
    xplm_joy_rot_trm_dn,
    xplm_joy_rud_lft,
    xplm_joy_rud_cntr,
    xplm_joy_rud_rgt,
    xplm_joy_ail_lft,
    xplm_joy_ail_cntr,
    xplm_joy_ail_rgt,
    xplm_joy_B_rud_lft, /* 30 */
    xplm_joy_B_rud_rgt,
    xplm_joy_look_up,
    xplm_joy_look_dn,
    xplm_joy_look_lft,
    xplm_joy_look_rgt,
    xplm_joy_glance_l,
    xplm_joy_glance_r,
    xplm_joy_v_fnh, /* view: forward, no HUD */
    xplm_joy_v_fwh, /* view: forward with HUD */
    xplm_joy_v_tra, /* 40 */
    xplm_joy_v_twr, /* view: tower */
    xplm_joy_v_run, /* view: runway */
    xplm_joy_v_cha, /* view: chase */
    xplm_joy_v_fr1, /* view: free 1 */
    xplm_joy_v_fr2, /* view: free 2 */
    xplm_joy_v_spo, /* 46, view: spot */
    xplm_joy_flapsup,
    xplm_joy_flapsdn,
    xplm_joy_vctswpfwd,
    xplm_joy_vctswpaft, /* 50 */
    xplm_joy_gear_tog,
    xplm_joy_gear_up,
    xplm_joy_gear_down,
    xplm_joy_lft_brake,
    xplm_joy_rgt_brake,
    xplm_joy_brakesREG,
    xplm_joy_brakesMAX,
    xplm_joy_speedbrake,
    xplm_joy_ott_dis,
    xplm_joy_ott_atr, /* 60 */
    xplm_joy_ott_asi,
    xplm_joy_ott_hdg,
    xplm_joy_ott_alt,
    xplm_joy_ott_vvi,
    xplm_joy_tim_start,
    xplm_joy_tim_reset,
    xplm_joy_ecam_up,
    xplm_joy_ecam_dn,
    xplm_joy_fadec,
    xplm_joy_yaw_damp, /* 70 */
    xplm_joy_art_stab,
    xplm_joy_chute,
    xplm_joy_JATO,
    xplm_joy_arrest,
    xplm_joy_jettison,
    xplm_joy_fuel_dump,
    xplm_joy_puffsmoke,
    xplm_joy_prerotate,
    xplm_joy_UL_prerot,
    xplm_joy_UL_collec, /* 80 */
    xplm_joy_TOGA,
    xplm_joy_shutdown,
    xplm_joy_con_atc,
    xplm_joy_fail_now,
    xplm_joy_pause, /* 85 */
    xplm_joy_rock_up,
    xplm_joy_rock_dn,
    xplm_joy_rock_lft,
    xplm_joy_rock_rgt,
    xplm_joy_rock_for, /* 90 */
    xplm_joy_rock_aft,
    xplm_joy_idle_hilo,
    xplm_joy_lanlights, /* 93 */
    xplm_joy_max        /* 94 */
};
typedef int XPLMCommandButtonID;

/// Sends a raw key straight to the sim (never to plug-ins).
XPLM_API void XPLMSimulateKeyPress(int inKeyType, int inKey);
/// Triggers a sim function independently of the keyboard mapping; prefer XPLMCommandOnce.
XPLM_API void XPLMCommandKeyStroke(XPLMCommandKeyID inKey);
/// Holds a joystick button function down; prefer XPLMCommandBegin.
XPLM_API void XPLMCommandButtonPress(XPLMCommandButtonID inButton);
/// Releases a button pressed with XPLMCommandButtonPress; prefer XPLMCommandEnd.
XPLM_API void XPLMCommandButtonRelease(XPLMCommandButtonID inButton);
/// Always true.
XPLM_API int XPLMInitialized(void);
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMUtilities_h */
