// Slider with its label and value captions, and the progress bar.
#include <cstdio>
#include <cstring>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "toolkit/ControlPlacement.h"
#include "toolkit/Controls.h"
#include "utils/HV_LOGUtils.h"

namespace {

/// Space between the slider's captions and its track, pixels.
constexpr int kCaptionGap = 10;
/// Bytes of a printed int with its sign and terminator.
constexpr int kIntTextBytes = 16;

void FixHeight(HV_Panel& panel, int height) {
    panel.bottom = panel.minHeight = panel.maxHeight = height;
}

int CharactersOf(int number) {
    char digits[kIntTextBytes];
    return std::snprintf(digits, sizeof digits, "%d", number);
}

/// Callback on the slider's scroll bar: refreshes the value caption as soon as the thumb moves, before
/// the window's handler runs. Returns 0: the message goes on.
int FollowSlider(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t) {
    if (message != xpMsg_ScrollBarSliderPositionChanged || reinterpret_cast<XPWidgetID>(param1) != widget)
        return 0;
    try {
        if (auto* slider = dynamic_cast<HV_CtrlSlider*>(HV_Panel::FromWidget(widget)))
            slider->SetTextWithSliderNum();
    } catch (...) {
        HV_LOGUtils::Add2Log("slider: value caption update failed", HV_LOGUtils::kHV_LOG_ALERT);
    }
    return 0;
}

} // namespace

// ---------------------------------------------------------------- HV_CtrlSlider

HV_CtrlSlider::HV_CtrlSlider(const char* label_, int minimum_, int maximum_, int value_, int pageStep_,
                             bool showValue_, bool enabled_, bool visible_)
    : HV_Panel(kHV_NoStyle, false, 0, nullptr, true, visible_), label(HV_CopyString(label_)),
      minimum(minimum_), maximum(maximum_), value(value_), pageStep(pageStep_), showValue(showValue_),
      enabled(enabled_) {
    FixHeight(*this, kHeight);
}

HV_CtrlSlider::~HV_CtrlSlider() {
    UnlinkWidget(labelCaption);
    UnlinkWidget(valueCaption);
    delete[] label;
}

void HV_CtrlSlider::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    const int rowTop = top - margeY, rowBottom = top - kHeight;
    const int shown = visible ? 1 : 0;
    int trackLeft = left;
    if (label[0] != '\0') {
        const int labelWidth = kHV_CharWidth * static_cast<int>(std::strlen(label));
        labelCaption = XPCreateWidget(left, rowTop, left + labelWidth, rowBottom, shown, label, 0, rootWidget,
                                      xpWidgetClass_Caption);
        LinkWidget(labelCaption);
        trackLeft = left + labelWidth + kCaptionGap;
    }
    int trackRight = right;
    if (showValue) {
        const int valueWidth = kHV_CharWidth * CharactersOf(maximum);
        valueCaption = XPCreateWidget(right - valueWidth, rowTop, right, rowBottom, shown, "", 0, rootWidget,
                                      xpWidgetClass_Caption);
        LinkWidget(valueCaption);
        trackRight = right - valueWidth - kCaptionGap;
    }
    widget = XPCreateWidget(trackLeft, rowTop, trackRight, rowBottom, shown, "", 0, rootWidget,
                            xpWidgetClass_ScrollBar);
    XPSetWidgetProperty(widget, xpProperty_ScrollBarType, xpScrollBarTypeSlider);
    XPSetWidgetProperty(widget, xpProperty_ScrollBarMin, minimum);
    XPSetWidgetProperty(widget, xpProperty_ScrollBarMax, maximum);
    XPSetWidgetProperty(widget, xpProperty_ScrollBarSliderPosition, value);
    XPSetWidgetProperty(widget, xpProperty_ScrollBarPageAmount, pageStep);
    HV_SetWidgetEnabled(widget, enabled);
    LinkWidget(widget);
    XPAddWidgetCallback(widget, FollowSlider);
    SetTextWithSliderNum();
}

void HV_CtrlSlider::SetEnable(bool enable) {
    enabled = enable;
    HV_SetWidgetEnabled(widget, enabled);
}

bool HV_CtrlSlider::GetIsEnable() {
    return enabled;
}

void HV_CtrlSlider::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
    SetFrameVisible(labelCaption, visible);
    SetFrameVisible(valueCaption, visible);
}

int HV_CtrlSlider::Event(long message, void*, long param1, long) {
    if (message == xpMsg_ScrollBarSliderPositionChanged && widget &&
        reinterpret_cast<void*>(param1) == widget)
        SetTextWithSliderNum();
    return 0;
}

int HV_CtrlSlider::GetValue() {
    if (widget)
        value = static_cast<int>(XPGetWidgetProperty(widget, xpProperty_ScrollBarSliderPosition, nullptr));
    return value;
}

void HV_CtrlSlider::SetValue(int value_) {
    value = value_;
    if (widget) XPSetWidgetProperty(widget, xpProperty_ScrollBarSliderPosition, value);
    SetTextWithSliderNum();
}

void HV_CtrlSlider::SetMinimum(int minimum_) {
    minimum = minimum_;
    if (widget) XPSetWidgetProperty(widget, xpProperty_ScrollBarMin, minimum);
}

void HV_CtrlSlider::SetMaximum(int maximum_) {
    maximum = maximum_;
    if (widget) XPSetWidgetProperty(widget, xpProperty_ScrollBarMax, maximum);
    SetTextWithSliderNum();
}

void HV_CtrlSlider::SetClickStep(int step) {
    pageStep = step;
    if (widget) XPSetWidgetProperty(widget, xpProperty_ScrollBarPageAmount, pageStep);
}

void HV_CtrlSlider::SetText(const char* text_) {
    HV_ReplaceString(label, text_);
    if (labelCaption) XPSetWidgetDescriptor(labelCaption, label);
}

void HV_CtrlSlider::GetText(char* buffer, int size) {
    HV_ReadDescriptor(labelCaption, buffer, size);
}

void HV_CtrlSlider::SetTextWithSliderNum() {
    if (!showValue || !widget || !valueCaption) return;
    // "%0<n>d" with n the characters of the maximum: maximum 100, position 7 -> "007".
    char format[kIntTextBytes];
    std::snprintf(format, sizeof format, "%%0%dd", CharactersOf(maximum));
    char shown[kIntTextBytes * 2];
    const long position = XPGetWidgetProperty(widget, xpProperty_ScrollBarSliderPosition, nullptr);
    std::snprintf(shown, sizeof shown, format, static_cast<int>(position));
    XPSetWidgetDescriptor(valueCaption, shown);
}

// ---------------------------------------------------------------- HV_CtrlProgress

HV_CtrlProgress::HV_CtrlProgress(int minimum_, int maximum_, int position_)
    : HV_Panel(kHV_NoStyle, false, 0, nullptr, true, true), minimum(minimum_), maximum(maximum_),
      position(position_) {
    FixHeight(*this, kHeight);
}

HV_CtrlProgress::~HV_CtrlProgress() = default;

void HV_CtrlProgress::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    widget = XPCreateWidget(left, top - margeY, right, top - kHeight, visible ? 1 : 0, "", 0, rootWidget,
                            xpWidgetClass_Progress);
    XPSetWidgetProperty(widget, xpProperty_ProgressMin, minimum);
    XPSetWidgetProperty(widget, xpProperty_ProgressMax, maximum);
    XPSetWidgetProperty(widget, xpProperty_ProgressPosition, position);
    LinkWidget(widget);
}

void HV_CtrlProgress::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
}

bool HV_CtrlProgress::GetIsVisible() {
    return visible;
}

int HV_CtrlProgress::Event(long, void*, long, long) {
    return 0;
}

void HV_CtrlProgress::SetValue(int position_) {
    position = position_;
    if (widget) XPSetWidgetProperty(widget, xpProperty_ProgressPosition, position);
}

int HV_CtrlProgress::GetValue() {
    return position;
}
