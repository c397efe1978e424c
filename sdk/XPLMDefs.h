#ifndef XPLMDefs_h
#define XPLMDefs_h
/*
 * Kalvora's declarations of the X-Plane plug-in API: basic definitions shared
 * by every other header (linkage macros, plug-in IDs, key and mouse codes).
 * Written from the API's documented facts; ABI-compatible with X-Plane's own.
 */

#include <stdint.h> /* intptr_t, used by the widget headers */

#ifdef __cplusplus
extern "C" {
#endif

#if !defined(APL) || !defined(IBM) || !defined(LIN)
#error "Define APL, IBM and LIN (exactly one of them 1) before including the X-Plane API headers"
#endif
#if (APL + IBM + LIN) != 1
#error "Exactly one of APL, IBM and LIN must be 1"
#endif

/* What a plug-in exports: its five entry points. A Windows DLL exports what is
   marked dllexport; elsewhere, what has default visibility. */
#if IBM
#define KALVORA_SDK_EXPORT __declspec(dllexport)
#define KALVORA_SDK_IMPORT __declspec(dllimport)
#elif defined(__GNUC__) && __GNUC__ >= 4
#define KALVORA_SDK_EXPORT __attribute__((visibility("default")))
#define KALVORA_SDK_IMPORT
#else
#define KALVORA_SDK_EXPORT
#define KALVORA_SDK_IMPORT
#endif
#ifdef __cplusplus
#define PLUGIN_API extern "C" KALVORA_SDK_EXPORT
#else
#define PLUGIN_API KALVORA_SDK_EXPORT
#endif

/* What the host exports: exported while the host itself is built (XPLM /
   XPWIDGETS defined), imported from XPLM_64.dll / XPWidgets_64.dll by a Windows
   plug-in, and left to the loader elsewhere. */
#if defined(XPLM)
#define XPLM_API KALVORA_SDK_EXPORT
#else
#define XPLM_API KALVORA_SDK_IMPORT
#endif
#if defined(XPWIDGETS)
#define WIDGET_API KALVORA_SDK_EXPORT
#else
#define WIDGET_API KALVORA_SDK_IMPORT
#endif

/* A plug-in's ID: -1 none, 0 X-Plane itself, then one per loaded plug-in. */
typedef int XPLMPluginID;
#define XPLM_NO_PLUGIN_ID (-1)
#define XPLM_PLUGIN_XPLANE (0)
#define kXPLM_Version (303)

/* Modifier and press-state bits of a key event. */
enum {
    xplm_ShiftFlag = 1,     /* Shift down */
    xplm_OptionAltFlag = 2, /* Option/Alt down */
    xplm_ControlFlag = 4,   /* Control down */
    xplm_DownFlag = 8,      /* first message of a key press */
    xplm_UpFlag = 16        /* last message of a key press (released) */
};
typedef int XPLMKeyFlags;

/* ASCII key codes passed as the character of a key event. */
#define XPLM_KEY_RETURN 13
#define XPLM_KEY_ESCAPE 27
#define XPLM_KEY_TAB 9
#define XPLM_KEY_DELETE 8
#define XPLM_KEY_LEFT 28
#define XPLM_KEY_RIGHT 29
#define XPLM_KEY_UP 30
#define XPLM_KEY_DOWN 31
#define XPLM_KEY_0 48
#define XPLM_KEY_1 49
#define XPLM_KEY_2 50
#define XPLM_KEY_3 51
#define XPLM_KEY_4 52
#define XPLM_KEY_5 53
#define XPLM_KEY_6 54
#define XPLM_KEY_7 55
#define XPLM_KEY_8 56
#define XPLM_KEY_9 57
#define XPLM_KEY_DECIMAL 46

/* Virtual key codes. Callbacks receive them as (signed) char: cast to
   unsigned char before comparing with the codes above 0x7F. */
#define XPLM_VK_BACK 0x08
#define XPLM_VK_TAB 0x09
#define XPLM_VK_CLEAR 0x0C
#define XPLM_VK_RETURN 0x0D
#define XPLM_VK_ESCAPE 0x1B
#define XPLM_VK_SPACE 0x20
#define XPLM_VK_PRIOR 0x21
#define XPLM_VK_NEXT 0x22
#define XPLM_VK_END 0x23
#define XPLM_VK_HOME 0x24
#define XPLM_VK_LEFT 0x25
#define XPLM_VK_UP 0x26
#define XPLM_VK_RIGHT 0x27
#define XPLM_VK_DOWN 0x28
#define XPLM_VK_SELECT 0x29
#define XPLM_VK_PRINT 0x2A
#define XPLM_VK_EXECUTE 0x2B
#define XPLM_VK_SNAPSHOT 0x2C
#define XPLM_VK_INSERT 0x2D
#define XPLM_VK_DELETE 0x2E
#define XPLM_VK_HELP 0x2F
#define XPLM_VK_0 0x30
#define XPLM_VK_1 0x31
#define XPLM_VK_2 0x32
#define XPLM_VK_3 0x33
#define XPLM_VK_4 0x34
#define XPLM_VK_5 0x35
#define XPLM_VK_6 0x36
#define XPLM_VK_7 0x37
#define XPLM_VK_8 0x38
#define XPLM_VK_9 0x39
#define XPLM_VK_A 0x41
#define XPLM_VK_B 0x42
#define XPLM_VK_C 0x43
#define XPLM_VK_D 0x44
#define XPLM_VK_E 0x45
#define XPLM_VK_F 0x46
#define XPLM_VK_G 0x47
#define XPLM_VK_H 0x48
#define XPLM_VK_I 0x49
#define XPLM_VK_J 0x4A
#define XPLM_VK_K 0x4B
#define XPLM_VK_L 0x4C
#define XPLM_VK_M 0x4D
#define XPLM_VK_N 0x4E
#define XPLM_VK_O 0x4F
#define XPLM_VK_P 0x50
#define XPLM_VK_Q 0x51
#define XPLM_VK_R 0x52
#define XPLM_VK_S 0x53
#define XPLM_VK_T 0x54
#define XPLM_VK_U 0x55
#define XPLM_VK_V 0x56
#define XPLM_VK_W 0x57
#define XPLM_VK_X 0x58
#define XPLM_VK_Y 0x59
#define XPLM_VK_Z 0x5A
#define XPLM_VK_NUMPAD0 0x60
#define XPLM_VK_NUMPAD1 0x61
#define XPLM_VK_NUMPAD2 0x62
#define XPLM_VK_NUMPAD3 0x63
#define XPLM_VK_NUMPAD4 0x64
#define XPLM_VK_NUMPAD5 0x65
#define XPLM_VK_NUMPAD6 0x66
#define XPLM_VK_NUMPAD7 0x67
#define XPLM_VK_NUMPAD8 0x68
#define XPLM_VK_NUMPAD9 0x69
#define XPLM_VK_MULTIPLY 0x6A
#define XPLM_VK_ADD 0x6B
#define XPLM_VK_SEPARATOR 0x6C
#define XPLM_VK_SUBTRACT 0x6D
#define XPLM_VK_DECIMAL 0x6E
#define XPLM_VK_DIVIDE 0x6F
#define XPLM_VK_F1 0x70
#define XPLM_VK_F2 0x71
#define XPLM_VK_F3 0x72
#define XPLM_VK_F4 0x73
#define XPLM_VK_F5 0x74
#define XPLM_VK_F6 0x75
#define XPLM_VK_F7 0x76
#define XPLM_VK_F8 0x77
#define XPLM_VK_F9 0x78
#define XPLM_VK_F10 0x79
#define XPLM_VK_F11 0x7A
#define XPLM_VK_F12 0x7B
#define XPLM_VK_F13 0x7C
#define XPLM_VK_F14 0x7D
#define XPLM_VK_F15 0x7E
#define XPLM_VK_F16 0x7F
#define XPLM_VK_F17 0x80
#define XPLM_VK_F18 0x81
#define XPLM_VK_F19 0x82
#define XPLM_VK_F20 0x83
#define XPLM_VK_F21 0x84
#define XPLM_VK_F22 0x85
#define XPLM_VK_F23 0x86
#define XPLM_VK_F24 0x87
#define XPLM_VK_EQUAL 0xB0
#define XPLM_VK_MINUS 0xB1
#define XPLM_VK_RBRACE 0xB2
#define XPLM_VK_LBRACE 0xB3
#define XPLM_VK_QUOTE 0xB4
#define XPLM_VK_SEMICOLON 0xB5
#define XPLM_VK_BACKSLASH 0xB6
#define XPLM_VK_COMMA 0xB7
#define XPLM_VK_SLASH 0xB8
#define XPLM_VK_PERIOD 0xB9
#define XPLM_VK_BACKQUOTE 0xBA
#define XPLM_VK_ENTER 0xBB
#define XPLM_VK_NUMPAD_ENT 0xBC
#define XPLM_VK_NUMPAD_EQ 0xBD

/// A 150-character text buffer handed across the API by value (METAR reports).
typedef struct {
    char buffer[150];
} XPLMFixedString150_t;

/* Mouse events: one Down, any number of Drag, one Up, all to the same window. */
enum { xplm_MouseDown = 1, xplm_MouseDrag = 2, xplm_MouseUp = 3 };
typedef int XPLMMouseStatus;

#if defined(XPLM200)
enum { xplm_CursorDefault = 0, xplm_CursorHidden = 1, xplm_CursorArrow = 2, xplm_CursorCustom = 3 };
typedef int XPLMCursorStatus;
#endif

#ifdef __cplusplus
}
#endif

#endif /* XPLMDefs_h */
