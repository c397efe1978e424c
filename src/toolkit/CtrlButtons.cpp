// Push button, toggling push button and check box.
#include <cstring>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "toolkit/ControlPlacement.h"
#include "toolkit/Controls.h"
#include "utils/HV_LOGUtils.h"

namespace {

/// Offset of a check box's text from the box's left edge, pixels.
constexpr int kCheckBoxTextOffset = 18;

void FixHeight(HV_Panel& panel, int height) {
    panel.bottom = panel.minHeight = panel.maxHeight = height;
}

/// Callback on a toggling button: copies the new state into the control before the message travels up
/// to the window, so the application handler already sees it. Returns 0: the message goes on.
template <class Control>
int FollowButtonState(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t) {
    if (message != xpMsg_ButtonStateChanged || reinterpret_cast<XPWidgetID>(param1) != widget) return 0;
    try {
        if (auto* control = dynamic_cast<Control*>(HV_Panel::FromWidget(widget)))
            control->checked = XPGetWidgetProperty(widget, xpProperty_ButtonState, nullptr) != 0;
    } catch (...) {
        HV_LOGUtils::Add2Log("check box: state update failed", HV_LOGUtils::kHV_LOG_ALERT);
    }
    return 0;
}

} // namespace

// ---------------------------------------------------------------- HV_CtrlButton

HV_CtrlButton::HV_CtrlButton(const char* text_, int align, bool enabled_, bool visible_)
    : HV_Panel(kHV_NoStyle, false, static_cast<char>(align), nullptr, true, visible_),
      text(HV_CopyString(text_)), enabled(enabled_) {
    FixHeight(*this, kHeight);
    minWidth = HV_NaturalWidth(text);
}

HV_CtrlButton::~HV_CtrlButton() {
    delete[] text;
}

void HV_CtrlButton::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    const HV_Span span = HV_PlaceByAlignment(left, right, kind, HV_NaturalWidth(text));
    widget = XPCreateWidget(span.left, top - margeY, span.left + span.width, top - kHeight, visible ? 1 : 0,
                            text, 0, rootWidget, xpWidgetClass_Button);
    XPSetWidgetProperty(widget, xpProperty_ButtonType, xpPushButton);
    XPSetWidgetProperty(widget, xpProperty_ButtonBehavior, xpButtonBehaviorPushButton);
    HV_SetWidgetEnabled(widget, enabled);
    LinkWidget(widget);
}

void HV_CtrlButton::SetEnable(bool enable) {
    enabled = enable;
    HV_SetWidgetEnabled(widget, enabled);
}

bool HV_CtrlButton::GetIsEnable() {
    return enabled;
}

void HV_CtrlButton::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
}

void HV_CtrlButton::SetText(const char* text_) {
    HV_ReplaceString(text, text_);
    if (widget) XPSetWidgetDescriptor(widget, text);
}

void HV_CtrlButton::GetText(char* buffer, int size) {
    HV_ReadDescriptor(widget, buffer, size);
}

// ---------------------------------------------------------------- HV_CtrlButtonChkBox

HV_CtrlButtonChkBox::HV_CtrlButtonChkBox(const char* text_, int align, bool checked_, bool enabled_,
                                         bool visible_)
    : HV_Panel(kHV_NoStyle, false, static_cast<char>(align), nullptr, true, visible_),
      text(HV_CopyString(text_)), checked(checked_), enabled(enabled_) {
    FixHeight(*this, kHeight);
}

HV_CtrlButtonChkBox::~HV_CtrlButtonChkBox() {
    delete[] text;
}

void HV_CtrlButtonChkBox::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    const HV_Span span = HV_PlaceByAlignment(left, right, kind, HV_NaturalWidth(text));
    widget = XPCreateWidget(span.left, top - margeY, span.left + span.width, top - kHeight, visible ? 1 : 0,
                            text, 0, rootWidget, xpWidgetClass_Button);
    XPSetWidgetProperty(widget, xpProperty_ButtonType, xpPushButton);
    XPSetWidgetProperty(widget, xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox);
    XPSetWidgetProperty(widget, xpProperty_ButtonState, checked ? 1 : 0);
    HV_SetWidgetEnabled(widget, enabled);
    LinkWidget(widget);
    XPAddWidgetCallback(widget, FollowButtonState<HV_CtrlButtonChkBox>);
}

void HV_CtrlButtonChkBox::SetEnable(bool enable) {
    enabled = enable;
    HV_SetWidgetEnabled(widget, enabled);
}

bool HV_CtrlButtonChkBox::GetIsEnable() {
    return enabled;
}

void HV_CtrlButtonChkBox::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
}

int HV_CtrlButtonChkBox::Event(long message, void*, long param1, long) {
    if (message == xpMsg_ButtonStateChanged && widget && reinterpret_cast<void*>(param1) == widget)
        checked = XPGetWidgetProperty(widget, xpProperty_ButtonState, nullptr) != 0;
    return 0;
}

void HV_CtrlButtonChkBox::SetCheck(bool checked_) {
    checked = checked_;
    if (widget) XPSetWidgetProperty(widget, xpProperty_ButtonState, checked ? 1 : 0);
}

bool HV_CtrlButtonChkBox::isChecked() {
    return checked;
}

void HV_CtrlButtonChkBox::SetText(const char* text_) {
    HV_ReplaceString(text, text_);
    if (widget) XPSetWidgetDescriptor(widget, text);
}

void HV_CtrlButtonChkBox::GetText(char* buffer, int size) {
    HV_ReadDescriptor(widget, buffer, size);
}

// ---------------------------------------------------------------- HV_CtrlCheckBox

HV_CtrlCheckBox::HV_CtrlCheckBox(const char* text_, bool checked_, bool enabled_, bool visible_)
    : HV_Panel(kHV_NoStyle, false, 0, nullptr, true, visible_), text(HV_CopyString(text_)), checked(checked_),
      enabled(enabled_) {
    FixHeight(*this, kHeight);
}

HV_CtrlCheckBox::~HV_CtrlCheckBox() {
    UnlinkWidget(caption);
    delete[] text;
}

void HV_CtrlCheckBox::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    const int boxTop = top - margeY, boxBottom = top - kHeight;
    const int boxSide = boxTop - boxBottom; // a square box
    widget = XPCreateWidget(left, boxTop, left + boxSide, boxBottom, visible ? 1 : 0, "", 0, rootWidget,
                            xpWidgetClass_Button);
    XPSetWidgetProperty(widget, xpProperty_ButtonType, xpRadioButton);
    XPSetWidgetProperty(widget, xpProperty_ButtonState, checked ? 1 : 0);
    XPSetWidgetProperty(widget, xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox);
    HV_SetWidgetEnabled(widget, enabled);
    LinkWidget(widget);
    XPAddWidgetCallback(widget, FollowButtonState<HV_CtrlCheckBox>);

    const int textLeft = left + kCheckBoxTextOffset;
    caption = XPCreateWidget(textLeft, boxTop, textLeft + kHV_CharWidth * static_cast<int>(std::strlen(text)),
                             boxBottom, visible ? 1 : 0, text, 0, rootWidget, xpWidgetClass_Caption);
    HV_SetWidgetEnabled(caption, enabled);
    LinkWidget(caption);
}

void HV_CtrlCheckBox::SetEnable(bool enable) {
    enabled = enable;
    HV_SetWidgetEnabled(widget, enabled);
    HV_SetWidgetEnabled(caption, enabled);
}

bool HV_CtrlCheckBox::GetIsEnable() {
    return enabled;
}

void HV_CtrlCheckBox::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
    SetFrameVisible(caption, visible);
}

int HV_CtrlCheckBox::Event(long message, void*, long param1, long) {
    if (message == xpMsg_ButtonStateChanged && widget && reinterpret_cast<void*>(param1) == widget)
        checked = XPGetWidgetProperty(widget, xpProperty_ButtonState, nullptr) != 0;
    return 0;
}

void HV_CtrlCheckBox::SetCheck(bool checked_) {
    checked = checked_;
    if (widget) XPSetWidgetProperty(widget, xpProperty_ButtonState, checked ? 1 : 0);
}

bool HV_CtrlCheckBox::isChecked() {
    return checked;
}

void HV_CtrlCheckBox::SetText(const char* text_) {
    HV_ReplaceString(text, text_);
    if (caption) XPSetWidgetDescriptor(caption, text);
}

void HV_CtrlCheckBox::GetText(char* buffer, int size) {
    HV_ReadDescriptor(caption, buffer, size);
}
