// The numeric values and structure layouts of the X-Plane API that binary
// compatibility with the real sim rests on, at the plug-in's API levels
// (XPLM200 to XPLM303 with the deprecated part). A wrong value here fails the
// build; the values are X-Plane's documented ones.
#include "XPLMDefs.h"
#include "XPLMDataAccess.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "XPLMPlugin.h"
#include "XPLMMenus.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMCamera.h"
#include "XPLMPlanes.h"
#include "XPLMScenery.h"
#include "XPLMInstance.h"
#include "XPWidgetDefs.h"
#include "XPWidgets.h"
#include "XPStandardWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgetUtils.h"

#include <cstddef>
#include <cstdint>

// ---- Plug-in IDs, key flags, mouse and cursor states, key codes ----
static_assert(XPLM_NO_PLUGIN_ID == -1 && XPLM_PLUGIN_XPLANE == 0, "plug-in IDs");
static_assert(sizeof(XPLMPluginID) == 4, "XPLMPluginID is an int");
static_assert(xplm_ShiftFlag == 1 && xplm_OptionAltFlag == 2 && xplm_ControlFlag == 4 && xplm_DownFlag == 8 &&
                  xplm_UpFlag == 16,
              "key flags");
static_assert(xplm_MouseDown == 1 && xplm_MouseDrag == 2 && xplm_MouseUp == 3, "mouse states");
static_assert(xplm_CursorDefault == 0 && xplm_CursorHidden == 1 && xplm_CursorArrow == 2 &&
                  xplm_CursorCustom == 3,
              "cursor states");
static_assert(XPLM_KEY_RETURN == 13 && XPLM_KEY_ESCAPE == 27 && XPLM_KEY_TAB == 9 && XPLM_KEY_DELETE == 8,
              "ASCII keys");
static_assert(XPLM_KEY_LEFT == 28 && XPLM_KEY_RIGHT == 29 && XPLM_KEY_UP == 30 && XPLM_KEY_DOWN == 31,
              "ASCII arrows");
static_assert(XPLM_KEY_0 == 48 && XPLM_KEY_9 == 57 && XPLM_KEY_DECIMAL == 46, "ASCII digits");
static_assert(XPLM_VK_BACK == 0x08 && XPLM_VK_CLEAR == 0x0C && XPLM_VK_SPACE == 0x20 && XPLM_VK_HELP == 0x2F,
              "virtual keys: control block");
static_assert(XPLM_VK_LEFT == 0x25 && XPLM_VK_UP == 0x26 && XPLM_VK_RIGHT == 0x27 && XPLM_VK_DOWN == 0x28,
              "virtual keys: arrows");
static_assert(XPLM_VK_0 == '0' && XPLM_VK_9 == '9' && XPLM_VK_A == 'A' && XPLM_VK_Z == 'Z',
              "virtual keys: ASCII");
static_assert(XPLM_VK_NUMPAD0 == 0x60 && XPLM_VK_NUMPAD9 == 0x69 && XPLM_VK_DIVIDE == 0x6F,
              "virtual keys: numpad");
static_assert(XPLM_VK_F1 == 0x70 && XPLM_VK_F12 == 0x7B && XPLM_VK_F13 == 0x7C && XPLM_VK_F24 == 0x87,
              "virtual keys: function keys");
static_assert(XPLM_VK_EQUAL == 0xB0 && XPLM_VK_RBRACE == 0xB2 && XPLM_VK_LBRACE == 0xB3 &&
                  XPLM_VK_QUOTE == 0xB4 && XPLM_VK_SEMICOLON == 0xB5 && XPLM_VK_BACKSLASH == 0xB6 &&
                  XPLM_VK_BACKQUOTE == 0xBA && XPLM_VK_NUMPAD_EQ == 0xBD,
              "virtual keys: extended block");

// ---- Datarefs ----
static_assert(xplmType_Unknown == 0 && xplmType_Int == 1 && xplmType_Float == 2 && xplmType_Double == 4 &&
                  xplmType_FloatArray == 8 && xplmType_IntArray == 16 && xplmType_Data == 32,
              "dataref type bits");
static_assert(sizeof(XPLMDataRef) == 8 && sizeof(XPLMDataTypeID) == 4, "dataref handle and type");

// ---- Flight loops ----
static_assert(xplm_FlightLoop_Phase_BeforeFlightModel == 0 && xplm_FlightLoop_Phase_AfterFlightModel == 1,
              "flight-loop phases");
static_assert(sizeof(XPLMCreateFlightLoop_t) == 24 && offsetof(XPLMCreateFlightLoop_t, phase) == 4 &&
                  offsetof(XPLMCreateFlightLoop_t, callbackFunc) == 8 &&
                  offsetof(XPLMCreateFlightLoop_t, refcon) == 16,
              "XPLMCreateFlightLoop_t layout");

// ---- Utilities and commands ----
static_assert(xplm_Host_Unknown == 0 && xplm_Host_XPlane == 1, "host application");
static_assert(xplm_Language_Unknown == 0 && xplm_Language_English == 1 && xplm_Language_German == 3 &&
                  xplm_Language_Japanese == 9 && xplm_Language_Chinese == 10,
              "languages");
static_assert(xplm_CommandBegin == 0 && xplm_CommandContinue == 1 && xplm_CommandEnd == 2, "command phases");
static_assert(xplm_key_pause == 0 && xplm_key_gear == 5 && xplm_key_forward == 73 && xplm_key_chase == 80 &&
                  xplm_key_spot == 83 && xplm_key_tranID == 93 && xplm_key_max == 94,
              "command keys");
static_assert(xplm_joy_nothing == 0 && xplm_joy_start_all == 1 && xplm_joy_start_7 == 9 &&
                  xplm_joy_throt_dn == 11,
              "joystick buttons 0-11");
static_assert(xplm_joy_prop_up == 12 && xplm_joy_B_rud_rgt == 31 && xplm_joy_look_up == 32 &&
                  xplm_joy_glance_r == 37,
              "joystick buttons 12-37");
static_assert(xplm_joy_v_fnh == 38 && xplm_joy_v_tra == 40 && xplm_joy_v_twr == 41 && xplm_joy_v_cha == 43 &&
                  xplm_joy_v_spo == 46,
              "joystick view buttons");
static_assert(xplm_joy_flapsup == 47 && xplm_joy_pause == 85 && xplm_joy_lanlights == 93 &&
                  xplm_joy_max == 94,
              "joystick buttons 47-94");

// ---- Plug-in messages ----
static_assert(XPLM_MSG_PLANE_CRASHED == 101 && XPLM_MSG_PLANE_LOADED == 102 &&
                  XPLM_MSG_AIRPORT_LOADED == 103 && XPLM_MSG_SCENERY_LOADED == 104 &&
                  XPLM_MSG_AIRPLANE_COUNT_CHANGED == 105,
              "1.0 messages");
static_assert(XPLM_MSG_PLANE_UNLOADED == 106 && XPLM_MSG_WILL_WRITE_PREFS == 107 &&
                  XPLM_MSG_LIVERY_LOADED == 108 && XPLM_MSG_ENTERED_VR == 109 && XPLM_MSG_EXITING_VR == 110 &&
                  XPLM_MSG_RELEASE_PLANES == 111,
              "2.0 to 3.03 messages");

// ---- Menus ----
static_assert(xplm_Menu_NoCheck == 0 && xplm_Menu_Unchecked == 1 && xplm_Menu_Checked == 2, "menu checks");

// ---- Drawing and windows ----
static_assert(xplm_Phase_FirstScene == 0 && xplm_Phase_Terrain == 5 && xplm_Phase_Airports == 10 &&
                  xplm_Phase_Vectors == 15 && xplm_Phase_Objects == 20 && xplm_Phase_Airplanes == 25 &&
                  xplm_Phase_LastScene == 30 && xplm_Phase_Modern3D == 31,
              "3-D drawing phases");
static_assert(xplm_Phase_FirstCockpit == 35 && xplm_Phase_Panel == 40 && xplm_Phase_Gauges == 45 &&
                  xplm_Phase_Window == 50 && xplm_Phase_LastCockpit == 55,
              "2-D drawing phases");
static_assert(xplm_WindowDecorationNone == 0 && xplm_WindowDecorationRoundRectangle == 1 &&
                  xplm_WindowDecorationSelfDecorated == 2 && xplm_WindowDecorationSelfDecoratedResizable == 3,
              "window decorations");
static_assert(xplm_WindowLayerFlightOverlay == 0 && xplm_WindowLayerFloatingWindows == 1 &&
                  xplm_WindowLayerModal == 2 && xplm_WindowLayerGrowlNotifications == 3,
              "window layers");
static_assert(xplm_WindowPositionFree == 0 && xplm_WindowCenterOnMonitor == 1 &&
                  xplm_WindowFullScreenOnMonitor == 2 && xplm_WindowFullScreenOnAllMonitors == 3 &&
                  xplm_WindowPopOut == 4 && xplm_WindowVR == 5,
              "window positioning modes");
static_assert(offsetof(XPLMCreateWindow_t, left) == 4 && offsetof(XPLMCreateWindow_t, top) == 8 &&
                  offsetof(XPLMCreateWindow_t, right) == 12 && offsetof(XPLMCreateWindow_t, bottom) == 16 &&
                  offsetof(XPLMCreateWindow_t, visible) == 20,
              "XPLMCreateWindow_t bounds");
static_assert(offsetof(XPLMCreateWindow_t, drawWindowFunc) == 24 &&
                  offsetof(XPLMCreateWindow_t, handleMouseClickFunc) == 32 &&
                  offsetof(XPLMCreateWindow_t, handleKeyFunc) == 40 &&
                  offsetof(XPLMCreateWindow_t, handleCursorFunc) == 48 &&
                  offsetof(XPLMCreateWindow_t, handleMouseWheelFunc) == 56 &&
                  offsetof(XPLMCreateWindow_t, refcon) == 64,
              "XPLMCreateWindow_t callbacks");
static_assert(offsetof(XPLMCreateWindow_t, decorateAsFloatingWindow) == 72 &&
                  offsetof(XPLMCreateWindow_t, layer) == 76 &&
                  offsetof(XPLMCreateWindow_t, handleRightClickFunc) == 80 &&
                  sizeof(XPLMCreateWindow_t) == 88,
              "XPLMCreateWindow_t XPLM300/301 fields");

// ---- Graphics ----
static_assert(xplm_Tex_GeneralInterface == 0 && xplm_Tex_AircraftPaint == 1 && xplm_Tex_AircraftLiteMap == 2,
              "sim textures");
static_assert(xplmFont_Basic == 0 && xplmFont_Menus == 1 && xplmFont_PanelHUD == 5 && xplmFont_Timer == 14 &&
                  xplmFont_Menus_Localized == 17 && xplmFont_Proportional == 18,
              "fonts");

// ---- Camera ----
static_assert(xplm_ControlCameraUntilViewChanges == 1 && xplm_ControlCameraForever == 2, "camera durations");
static_assert(sizeof(XPLMCameraPosition_t) == 28 && offsetof(XPLMCameraPosition_t, pitch) == 12 &&
                  offsetof(XPLMCameraPosition_t, heading) == 16 &&
                  offsetof(XPLMCameraPosition_t, roll) == 20 && offsetof(XPLMCameraPosition_t, zoom) == 24,
              "XPLMCameraPosition_t: x, y, z, pitch, heading, roll, zoom");

// ---- Aircraft ----
static_assert(XPLM_USER_AIRCRAFT == 0, "the user's aircraft");

// ---- Scenery ----
static_assert(xplm_ProbeY == 0 && xplm_ProbeHitTerrain == 0 && xplm_ProbeError == 1 && xplm_ProbeMissed == 2,
              "probe type and results");
static_assert(sizeof(XPLMDrawInfo_t) == 28 && alignof(XPLMDrawInfo_t) == 4 &&
                  offsetof(XPLMDrawInfo_t, x) == 4 && offsetof(XPLMDrawInfo_t, pitch) == 16 &&
                  offsetof(XPLMDrawInfo_t, heading) == 20 && offsetof(XPLMDrawInfo_t, roll) == 24,
              "XPLMDrawInfo_t layout");
static_assert(sizeof(XPLMProbeInfo_t) == 44 && offsetof(XPLMProbeInfo_t, locationX) == 4 &&
                  offsetof(XPLMProbeInfo_t, normalX) == 16 && offsetof(XPLMProbeInfo_t, velocityX) == 28 &&
                  offsetof(XPLMProbeInfo_t, velocityZ) == 36 && offsetof(XPLMProbeInfo_t, is_wet) == 40,
              "XPLMProbeInfo_t layout");

// ---- Widgets ----
static_assert(xpProperty_Refcon == 0 && xpProperty_Dragging == 1 && xpProperty_DragYOff == 3 &&
                  xpProperty_Hilited == 4 && xpProperty_Object == 5 && xpProperty_Clip == 6 &&
                  xpProperty_Enabled == 7 && xpProperty_UserStart == 10000,
              "core widget properties");
static_assert(xpMode_Direct == 0 && xpMode_UpChain == 1 && xpMode_Recursive == 2 &&
                  xpMode_DirectAllCallbacks == 3 && xpMode_Once == 4,
              "dispatch modes");
static_assert(xpMsg_None == 0 && xpMsg_Create == 1 && xpMsg_Destroy == 2 && xpMsg_Paint == 3 &&
                  xpMsg_Draw == 4 && xpMsg_KeyPress == 5 && xpMsg_KeyTakeFocus == 6 &&
                  xpMsg_KeyLoseFocus == 7 && xpMsg_MouseDown == 8 && xpMsg_MouseDrag == 9 &&
                  xpMsg_MouseUp == 10,
              "widget messages 0-10");
static_assert(xpMsg_Reshape == 11 && xpMsg_ExposedChanged == 12 && xpMsg_AcceptChild == 13 &&
                  xpMsg_LoseChild == 14 && xpMsg_AcceptParent == 15 && xpMsg_Shown == 16 &&
                  xpMsg_Hidden == 17 && xpMsg_DescriptorChanged == 18 && xpMsg_PropertyChanged == 19 &&
                  xpMsg_MouseWheel == 20 && xpMsg_CursorAdjust == 21 && xpMsg_UserStart == 10000,
              "widget messages 11-21");
static_assert(sizeof(XPMouseState_t) == 16 && offsetof(XPMouseState_t, delta) == 12, "XPMouseState_t layout");
static_assert(sizeof(XPKeyState_t) == 12 && offsetof(XPKeyState_t, flags) == 4 &&
                  offsetof(XPKeyState_t, vkey) == 8,
              "XPKeyState_t layout");
static_assert(sizeof(XPWidgetGeometryChange_t) == 16, "XPWidgetGeometryChange_t layout");
static_assert(xpWidgetClass_None == 0 && xpWidgetClass_MainWindow == 1 && xpWidgetClass_SubWindow == 2 &&
                  xpWidgetClass_Button == 3 && xpWidgetClass_TextField == 4 && xpWidgetClass_ScrollBar == 5 &&
                  xpWidgetClass_Caption == 6 && xpWidgetClass_GeneralGraphics == 7 &&
                  xpWidgetClass_Progress == 8,
              "standard widget classes");
static_assert(xpProperty_MainWindowType == 1100 && xpProperty_MainWindowHasCloseBoxes == 1200 &&
                  xpMainWindowStyle_Translucent == 1 && xpMessage_CloseButtonPushed == 1200,
              "main window");
static_assert(xpProperty_SubWindowType == 1200 && xpSubWindowStyle_SubWindow == 0 &&
                  xpSubWindowStyle_Screen == 2 && xpSubWindowStyle_ListView == 3,
              "sub-window");
static_assert(xpPushButton == 0 && xpRadioButton == 1 && xpWindowCloseBox == 3 && xpLittleDownArrow == 5 &&
                  xpLittleUpArrow == 6,
              "button types");
static_assert(xpButtonBehaviorPushButton == 0 && xpButtonBehaviorCheckBox == 1 &&
                  xpButtonBehaviorRadioButton == 2 && xpProperty_ButtonType == 1300 &&
                  xpProperty_ButtonBehavior == 1301 && xpProperty_ButtonState == 1302 &&
                  xpMsg_PushButtonPressed == 1300 && xpMsg_ButtonStateChanged == 1301,
              "button behaviours, properties and messages");
static_assert(xpTextEntryField == 0 && xpTextTransparent == 3 && xpTextTranslucent == 4 &&
                  xpProperty_EditFieldSelStart == 1400 && xpProperty_EditFieldSelDragStart == 1402 &&
                  xpProperty_TextFieldType == 1403 && xpProperty_PasswordMode == 1404 &&
                  xpProperty_MaxCharacters == 1405 && xpProperty_ScrollPosition == 1406 &&
                  xpProperty_Font == 1407 && xpProperty_ActiveEditSide == 1408 &&
                  xpMsg_TextFieldChanged == 1400,
              "text field");
static_assert(xpScrollBarTypeScrollBar == 0 && xpScrollBarTypeSlider == 1 &&
                  xpProperty_ScrollBarSliderPosition == 1500 && xpProperty_ScrollBarMax == 1502 &&
                  xpProperty_ScrollBarPageAmount == 1503 && xpProperty_ScrollBarType == 1504 &&
                  xpProperty_ScrollBarSlop == 1505 && xpMsg_ScrollBarSliderPositionChanged == 1500,
              "scroll bar");
static_assert(xpProperty_CaptionLit == 1600 && xpProperty_GeneralGraphicsType == 1700 && xpShip == 4 &&
                  xp_Airport == 7 && xpVORWithCompassRose == 19 && xpOilPlatform == 21 && xpWayPoint == 23,
              "caption and general graphics");
static_assert(xpProperty_ProgressPosition == 1800 && xpProperty_ProgressMin == 1801 &&
                  xpProperty_ProgressMax == 1802,
              "progress indicator");
static_assert(xpWindow_Help == 0 && xpWindow_MainWindow == 1 && xpWindow_SubWindow == 2 &&
                  xpWindow_Screen == 4 && xpWindow_ListView == 5,
              "window styles");
static_assert(xpElement_TextField == 6 && xpElement_CheckBox == 9 && xpElement_WindowCloseBox == 14 &&
                  xpElement_PushButton == 16 && xpElement_PushButtonLit == 17 &&
                  xpElement_OilPlatform == 24 && xpElement_PowerLine == 41 && xpElement_CopyButtons == 45 &&
                  xpElement_VORWithCompassRose == 49 && xpElement_Zoomer == 51 &&
                  xpElement_LittleUpArrow == 54 && xpElement_WindowDragBar == 61 &&
                  xpElement_WindowDragBarSmooth == 62,
              "element styles");
static_assert(xpTrack_ScrollBar == 0 && xpTrack_Slider == 1 && xpTrack_Progress == 2, "track styles");
static_assert(sizeof(XPWidgetCreate_t) == 48 && offsetof(XPWidgetCreate_t, visible) == 16 &&
                  offsetof(XPWidgetCreate_t, descriptor) == 24 && offsetof(XPWidgetCreate_t, isRoot) == 32 &&
                  offsetof(XPWidgetCreate_t, containerIndex) == 36 &&
                  offsetof(XPWidgetCreate_t, widgetClass) == 40,
              "XPWidgetCreate_t layout");
static_assert(NO_PARENT == -1 && PARAM_PARENT == -2, "widget table parents");

// Message parameters and property values carry pointers on LP64.
static_assert(sizeof(intptr_t) == sizeof(void*), "intptr_t holds a pointer");
