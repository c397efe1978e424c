// Text line and text box.
#include <cstring>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "toolkit/ControlPlacement.h"
#include "toolkit/Controls.h"
#include "utils/HV_LOGUtils.h"

namespace {

/// Space between a text box's label and its field, pixels.
constexpr int kLabelGap = 10;
/// First character code the text box filter looks at; lower codes are editing keys.
constexpr unsigned char kFirstPrintable = 32;

void FixHeight(HV_Panel& panel, int height) {
    panel.bottom = panel.minHeight = panel.maxHeight = height;
}

} // namespace

// ---------------------------------------------------------------- HV_CtrlText

HV_CtrlText::HV_CtrlText(const char* text_, int align, bool visible_)
    : HV_Panel(kHV_NoStyle, false, static_cast<char>(align), nullptr, true, visible_),
      text(HV_CopyString(text_)) {
    FixHeight(*this, kHeight);
    minWidth = HV_NaturalWidth(text);
}

HV_CtrlText::~HV_CtrlText() {
    delete[] text;
}

void HV_CtrlText::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    const HV_Span span = HV_PlaceByAlignment(left, right, kind, HV_NaturalWidth(text));
    widget = XPCreateWidget(span.left, top - margeY, span.left + span.width, top - kHeight, visible ? 1 : 0,
                            text, 0, rootWidget, xpWidgetClass_Caption);
    LinkWidget(widget);
}

void HV_CtrlText::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
}

void HV_CtrlText::SetText(const char* text_) {
    HV_ReplaceString(text, text_);
    if (widget) XPSetWidgetDescriptor(widget, text);
}

void HV_CtrlText::GetText(char* buffer, int size) {
    HV_ReadDescriptor(widget, buffer, size);
}

// ---------------------------------------------------------------- HV_CtrlTextBox

HV_CtrlTextBox::HV_CtrlTextBox(const char* label_, const char* text_, int maxCharacters_, bool password_,
                               const char* acceptedCharacters_, bool enabled_, bool visible_)
    : HV_Panel(kHV_NoStyle, false, 0, nullptr, true, visible_), label(HV_CopyString(label_)),
      text(HV_CopyString(text_)), maxCharacters(maxCharacters_ > 0 ? maxCharacters_ : 0), password(password_),
      acceptedCharacters(HV_CopyString(acceptedCharacters_)), enabled(enabled_) {
    FixHeight(*this, kHeight);
}

HV_CtrlTextBox::~HV_CtrlTextBox() {
    UnlinkWidget(labelCaption);
    delete[] label;
    delete[] text;
    delete[] acceptedCharacters;
}

void HV_CtrlTextBox::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    int fieldLeft = left;
    if (label[0] != '\0') {
        const int labelWidth = kHV_CharWidth * static_cast<int>(std::strlen(label));
        labelCaption = XPCreateWidget(left, top - margeY, left + labelWidth, top - kHeight, visible ? 1 : 0,
                                      label, 0, rootWidget, xpWidgetClass_Caption);
        LinkWidget(labelCaption);
        fieldLeft = left + labelWidth + kLabelGap;
    }
    widget = XPCreateWidget(fieldLeft, top - margeY, right, top - kHeight, visible ? 1 : 0, text, 0,
                            rootWidget, xpWidgetClass_TextField);
    XPSetWidgetProperty(widget, xpProperty_TextFieldType, xpTextEntryField);
    XPSetWidgetProperty(widget, xpProperty_MaxCharacters, maxCharacters);
    if (password) XPSetWidgetProperty(widget, xpProperty_PasswordMode, 1);
    HV_SetWidgetEnabled(widget, enabled);
    LinkWidget(widget);
    XPAddWidgetCallback(widget, KeyFilter);
}

void HV_CtrlTextBox::SetEnable(bool enable) {
    enabled = enable;
    HV_SetWidgetEnabled(widget, enabled);
}

bool HV_CtrlTextBox::GetIsEnable() {
    return enabled;
}

void HV_CtrlTextBox::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
    SetFrameVisible(labelCaption, visible);
}

void HV_CtrlTextBox::SetText(const char* text_) {
    HV_ReplaceString(text, text_);
    if (widget) XPSetWidgetDescriptor(widget, text);
}

void HV_CtrlTextBox::GetText(char* buffer, int size) {
    HV_ReadDescriptor(widget, buffer, size);
}

int HV_CtrlTextBox::KeyFilter(XPWidgetMessage message, XPWidgetID widget_, intptr_t param1, intptr_t) {
    if (message != xpMsg_KeyPress || param1 == 0) return 0;
    try {
        auto* box = dynamic_cast<HV_CtrlTextBox*>(HV_Panel::FromWidget(widget_));
        if (!box || !box->acceptedCharacters || box->acceptedCharacters[0] == '\0') return 0;
        const auto* key = reinterpret_cast<const XPKeyState_t*>(param1);
        const auto code = static_cast<unsigned char>(key->key);
        if (code < kFirstPrintable) return 0; // backspace, return, tab... always pass
        return std::strchr(box->acceptedCharacters, key->key) ? 0 : 1;
    } catch (...) {
        HV_LOGUtils::Add2Log("text box: key filter failed", HV_LOGUtils::kHV_LOG_ALERT);
        return 0;
    }
}
