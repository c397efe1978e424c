#ifndef XPStandardWidgets_h
#define XPStandardWidgets_h
/*
 * The standard widget classes with their properties and messages. A standard
 * widget sends its notifications to itself with xpMode_UpChain and its own ID
 * in param1, so a handler on the widget or on any ancestor catches them.
 */

#include "XPWidgetDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Main window (class 1) ---- */
#define xpWidgetClass_MainWindow 1
enum { xpMainWindowStyle_MainWindow = 0, xpMainWindowStyle_Translucent = 1 };
enum {
    xpProperty_MainWindowType = 1100,
    xpProperty_MainWindowHasCloseBoxes = 1200 /* the same number as xpProperty_SubWindowType */
};
enum { xpMessage_CloseButtonPushed = 1200 /* close box clicked */ };

/* ---- Sub-window (class 2) ---- */
#define xpWidgetClass_SubWindow 2
enum { xpSubWindowStyle_SubWindow = 0, xpSubWindowStyle_Screen = 2, xpSubWindowStyle_ListView = 3 };
enum { xpProperty_SubWindowType = 1200 };

/* ---- Button (class 3) ---- */
#define xpWidgetClass_Button 3
enum {
    xpPushButton = 0,
    xpRadioButton = 1, /* check box or radio look */
    xpWindowCloseBox = 3,
    xpLittleDownArrow = 5,
    xpLittleUpArrow = 6
};
enum { xpButtonBehaviorPushButton = 0, xpButtonBehaviorCheckBox = 1, xpButtonBehaviorRadioButton = 2 };
enum {
    xpProperty_ButtonType = 1300,
    xpProperty_ButtonBehavior = 1301,
    xpProperty_ButtonState = 1302 /* 0/1, check boxes and radio buttons */
};
enum {
    xpMsg_PushButtonPressed = 1300, /* p1 = the button */
    xpMsg_ButtonStateChanged = 1301 /* p1 = the button, p2 = new state */
};

/* ---- Text field (class 4) ---- */
#define xpWidgetClass_TextField 4
enum { xpTextEntryField = 0, xpTextTransparent = 3, xpTextTranslucent = 4 };
enum {
    xpProperty_EditFieldSelStart = 1400,     /* character index, 0-based */
    xpProperty_EditFieldSelEnd = 1401,       /* character index; = start for an insertion point */
    xpProperty_EditFieldSelDragStart = 1402, /* index, -1 when no drag is in progress */
    xpProperty_TextFieldType = 1403,
    xpProperty_PasswordMode = 1404,   /* 1 = draw '*' */
    xpProperty_MaxCharacters = 1405,  /* 0 = unlimited */
    xpProperty_ScrollPosition = 1406, /* first visible character */
    xpProperty_Font = 1407,           /* an XPLMFontID */
    xpProperty_ActiveEditSide = 1408  /* internal */
};
enum { xpMsg_TextFieldChanged = 1400 /* p1 = the text field */ };

/* ---- Scroll bar (class 5) ---- */
#define xpWidgetClass_ScrollBar 5
enum { xpScrollBarTypeScrollBar = 0, xpScrollBarTypeSlider = 1 };
enum {
    xpProperty_ScrollBarSliderPosition = 1500, /* min <= value <= max */
    xpProperty_ScrollBarMin = 1501,
    xpProperty_ScrollBarMax = 1502,
    xpProperty_ScrollBarPageAmount = 1503, /* step when clicking beside the thumb */
    xpProperty_ScrollBarType = 1504,
    xpProperty_ScrollBarSlop = 1505 /* internal */
};
enum { xpMsg_ScrollBarSliderPositionChanged = 1500 /* p1 = the scroll bar */ };

/* ---- Caption (class 6) ---- */
#define xpWidgetClass_Caption 6
enum { xpProperty_CaptionLit = 1600 };

/* ---- General graphics (class 7) ---- */
#define xpWidgetClass_GeneralGraphics 7
enum {
    xpShip = 4,
    xpILSGlideScope = 5,
    xpMarkerLeft = 6,
    xp_Airport = 7,
    xpNDB = 8,
    xpVOR = 9,
    xpRadioTower = 10,
    xpAircraftCarrier = 11,
    xpFire = 12,
    xpMarkerRight = 13,
    xpCustomObject = 14,
    xpCoolingTower = 15,
    xpSmokeStack = 16,
    xpBuilding = 17,
    xpPowerLine = 18,
    xpVORWithCompassRose = 19,
    xpOilPlatform = 21,
    xpOilPlatformSmall = 22,
    xpWayPoint = 23
};
enum { xpProperty_GeneralGraphicsType = 1700 };

/* ---- Progress indicator (class 8) ---- */
#define xpWidgetClass_Progress 8
enum {
    xpProperty_ProgressPosition = 1800,
    xpProperty_ProgressMin = 1801, /* 0 % filled */
    xpProperty_ProgressMax = 1802  /* 100 % filled */
};

#ifdef __cplusplus
}
#endif

#endif /* XPStandardWidgets_h */
