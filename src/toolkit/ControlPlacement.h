// Placement and text plumbing shared by the controls (used inside the toolkit).
#pragma once

#include "XPWidgetDefs.h"

/// Width of one character of the simulator's basic font, pixels.
constexpr int kHV_CharWidth = 6;
/// Extra width of a text-bearing control around its text, pixels.
constexpr int kHV_TextPadding = 30;

/// Horizontal extent of a control inside the space its parent gave it.
struct HV_Span {
    int left;  ///< pixels
    int width; ///< pixels
};

/// Places a control of `naturalWidth` in [spaceLeft, spaceRight] by alignment: right, centred,
/// stretched over the whole space, or (any other value) at the left.
HV_Span HV_PlaceByAlignment(int spaceLeft, int spaceRight, int align, int naturalWidth);

/// Copies a widget's descriptor into buffer, always terminated (an empty string for a bad buffer size).
void HV_ReadDescriptor(XPWidgetID widget, char* buffer, int size);

/// Replaces an owned string with a copy of text.
void HV_ReplaceString(char*& owned, const char* text);

/// Sets the widget's enabled property (null widgets are ignored).
void HV_SetWidgetEnabled(XPWidgetID widget, bool enabled);
