// Label and popup button.
#include <cstring>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "toolkit/ControlPlacement.h"
#include "toolkit/Controls.h"
#include "toolkit/PopupMenu.h"

namespace {

/// Space between the label and the popup button, pixels.
constexpr int kLabelGap = 10;

} // namespace

HV_CtrlPopup::HV_CtrlPopup(const char* label_, const char* items_, int selected_, bool enabled_,
                           bool visible_)
    : HV_Panel(kHV_NoStyle, false, 0, nullptr, true, visible_), label(HV_CopyString(label_)),
      items(HV_CopyString(items_)), selected(selected_), enabled(enabled_) {
    bottom = minHeight = maxHeight = kHeight;
    if (selected < 0 || selected >= XSBCountPopupItems(items)) selected = 0;
}

HV_CtrlPopup::~HV_CtrlPopup() {
    UnlinkWidget(labelCaption);
    delete[] label;
    delete[] items;
}

void HV_CtrlPopup::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    const int shown = visible ? 1 : 0;
    int buttonLeft = left;
    if (label[0] != '\0') {
        const int labelWidth = kHV_CharWidth * static_cast<int>(std::strlen(label));
        labelCaption = XPCreateWidget(left, top - margeY, left + labelWidth, top - kHeight, shown, label, 0,
                                      rootWidget, xpWidgetClass_Caption);
        LinkWidget(labelCaption);
        buttonLeft = left + labelWidth + kLabelGap;
    }
    widget =
        XSBCreatePopup(buttonLeft, top - margeY, right, top - kHeight, shown, items, selected, rootWidget);
    HV_SetWidgetEnabled(widget, enabled);
    LinkWidget(widget);
}

void HV_CtrlPopup::SetEnable(bool enable) {
    enabled = enable;
    HV_SetWidgetEnabled(widget, enabled);
}

bool HV_CtrlPopup::GetIsEnable() {
    return enabled;
}

void HV_CtrlPopup::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
    SetFrameVisible(labelCaption, visible);
}

int HV_CtrlPopup::Event(long message, void*, long param1, long param2) {
    if (message == kXSBMsg_PopupItemPicked && widget && reinterpret_cast<void*>(param1) == widget)
        selected = static_cast<int>(param2);
    return 0;
}

int HV_CtrlPopup::GetSelectedLine() {
    if (widget)
        selected = static_cast<int>(XPGetWidgetProperty(widget, kXSBProperty_PopupCurrentItem, nullptr));
    return selected;
}

void HV_CtrlPopup::SetSelectedLine(int line) {
    if (line < 0 || line >= XSBCountPopupItems(items)) return;
    selected = line;
    if (widget) XPSetWidgetProperty(widget, kXSBProperty_PopupCurrentItem, selected);
}

const char* HV_CtrlPopup::GetStringList() {
    return items;
}

void HV_CtrlPopup::SetStringList(const char* items_) {
    HV_ReplaceString(items, items_);
    if (widget) XPSetWidgetDescriptor(widget, items);
    const int line = GetSelectedLine();
    if (line < 0 || line >= XSBCountPopupItems(items)) {
        selected = 0;
        if (widget) XPSetWidgetProperty(widget, kXSBProperty_PopupCurrentItem, selected);
    }
}

void HV_CtrlPopup::GetSelectedString(char* buffer, int size) {
    if (!XSBGetPopupItem(items, GetSelectedLine(), buffer, size) && buffer && size > 0) buffer[0] = '\0';
}
