#ifndef XPLMGraphics_h
#define XPLMGraphics_h
/*
 * OpenGL helpers shared with the sim: its cached GL state, texture numbers,
 * conversion between world (lat/lon/elevation) and local OpenGL coordinates,
 * and text in the sim's fonts.
 *
 * Local OpenGL frame: metres, +X east, +Y up, +Z south at the origin, which
 * is a sea-level point near the user and may move.
 */

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Textures owned by the sim. */
enum { xplm_Tex_GeneralInterface = 0 };
#if defined(XPLM_DEPRECATED)
enum { xplm_Tex_AircraftPaint = 1, xplm_Tex_AircraftLiteMap = 2 };
#endif
#if defined(XPLM420)
enum { xplm_Tex_Radar_Pilot = 3, xplm_Tex_Radar_Copilot = 4 };
#endif
typedef int XPLMTextureID;

/* The sim's fonts. xplmFont_Basic is the monospaced interface font that is
   always available. */
enum { xplmFont_Basic = 0 };
#if defined(XPLM_DEPRECATED)
enum {
    xplmFont_Menus = 1,
    xplmFont_Metal = 2,
    xplmFont_Led = 3,
    xplmFont_LedWide = 4,
    xplmFont_PanelHUD = 5,
    xplmFont_PanelEFIS = 6,
    xplmFont_PanelGPS = 7,
    xplmFont_RadiosGA = 8,
    xplmFont_RadiosBC = 9,
    xplmFont_RadiosHM = 10,
    xplmFont_RadiosGANarrow = 11,
    xplmFont_RadiosBCNarrow = 12,
    xplmFont_RadiosHMNarrow = 13,
    xplmFont_Timer = 14,
    xplmFont_FullRound = 15,
    xplmFont_SmallRound = 16,
    xplmFont_Menus_Localized = 17
};
#endif
#if defined(XPLM200)
enum { xplmFont_Proportional = 18 };
#endif
typedef int XPLMFontID;

/// Sets fixed-function GL state through the sim's cache; inNumberTexUnits = 0 disables
/// 2-D texturing, n enables units 0 to n - 1.
XPLM_API void XPLMSetGraphicsState(int inEnableFog, int inNumberTexUnits, int inEnableLighting,
                                   int inEnableAlphaTesting, int inEnableAlphaBlending,
                                   int inEnableDepthTesting, int inEnableDepthWriting);
/// Binds a 2-D texture to a texture unit (0-based) through the sim's cache.
XPLM_API void XPLMBindTexture2d(int inTextureNum, int inTextureUnit);
/// Reserves texture numbers (instead of glGenTextures).
XPLM_API void XPLMGenerateTextureNumbers(int* outTextureIDs, int inCount);
/// GL texture number of one of the sim's textures.
XPLM_API int XPLMGetTexture(XPLMTextureID inTexture);
/// Latitude and longitude (degrees) and elevation (metres MSL) to local OpenGL metres.
XPLM_API void XPLMWorldToLocal(double inLatitude, double inLongitude, double inAltitude, double* outX,
                               double* outY, double* outZ);
/// Local OpenGL metres to latitude, longitude (degrees) and elevation (metres MSL); less precise.
XPLM_API void XPLMLocalToWorld(double inX, double inY, double inZ, double* outLatitude, double* outLongitude,
                               double* outAltitude);
/// Draws the sim's translucent dark box.
XPLM_API void XPLMDrawTranslucentDarkBox(int inLeft, int inTop, int inRight, int inBottom);
/// Draws a string in RGB (three floats 0 to 1) with the lower-left of its first character at
/// (x, y); inWordWrapWidth may be NULL. The 2.1 SDK declares inChar as char * (non-const):
/// code built against both passes a writable buffer or casts.
XPLM_API void XPLMDrawString(float* inColorRGB, int inXOffset, int inYOffset, const char* inChar,
                             int* inWordWrapWidth, XPLMFontID inFontID);
/// Draws a number with the given digits and decimals.
XPLM_API void XPLMDrawNumber(float* inColorRGB, int inXOffset, int inYOffset, double inValue, int inDigits,
                             int inDecimals, int inShowSign, XPLMFontID inFontID);
/// A font's character size and whether it has digits only; any pointer may be NULL.
XPLM_API void XPLMGetFontDimensions(XPLMFontID inFontID, int* outCharWidth, int* outCharHeight,
                                    int* outDigitsOnly);
#if defined(XPLM200)
/// Width in pixels of the first inNumChars characters of inChar.
XPLM_API float XPLMMeasureString(XPLMFontID inFontID, const char* inChar, int inNumChars);
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMGraphics_h */
