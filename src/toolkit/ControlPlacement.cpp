#include "toolkit/ControlPlacement.h"

#include <cstring>

#include "XPWidgets.h"
#include "toolkit/Controls.h"

int HV_NaturalWidth(const char* text) {
    return kHV_CharWidth * static_cast<int>(text ? std::strlen(text) : 0) + kHV_TextPadding;
}

HV_Span HV_PlaceByAlignment(int spaceLeft, int spaceRight, int align, int naturalWidth) {
    switch (align) {
    case kAlignRight:
        return {spaceRight - naturalWidth, naturalWidth};
    case kAlignCenter:
        return {(spaceLeft + spaceRight) / 2 - naturalWidth / 2, naturalWidth};
    case kAlignStretch:
        return {spaceLeft, spaceRight - spaceLeft};
    default:
        return {spaceLeft, naturalWidth};
    }
}

void HV_ReadDescriptor(XPWidgetID widget, char* buffer, int size) {
    if (!buffer || size <= 0) return;
    buffer[0] = '\0';
    if (!widget) return;
    XPGetWidgetDescriptor(widget, buffer, size - 1);
    buffer[size - 1] = '\0';
    // The library may leave a truncated copy unterminated, and a short one is terminated by it.
    const int length = XPGetWidgetDescriptor(widget, nullptr, 0);
    if (length >= 0 && length < size) buffer[length] = '\0';
}

void HV_ReplaceString(char*& owned, const char* text) {
    char* copy = HV_CopyString(text);
    delete[] owned;
    owned = copy;
}

void HV_SetWidgetEnabled(XPWidgetID widget, bool enabled) {
    if (widget) XPSetWidgetProperty(widget, xpProperty_Enabled, enabled ? 1 : 0);
}
