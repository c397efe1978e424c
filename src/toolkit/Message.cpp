// The timed message window.
#include <cstring>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMProcessing.h"
#include "XPUIGraphics.h"
#include "toolkit/Dialog.h"
#include "utils/HV_LOGUtils.h"

const float gTempoDialogColor_BLEU[3] = {0.4f, 0.4f, 0.9f};
const float gTempoDialogColor_VERT[3] = {0.4f, 0.9f, 0.4f};
const float gTempoDialogColor_ROUGE[3] = {0.9f, 0.4f, 0.4f};

XPLMWindowID gXPLMWindowID = nullptr;

namespace {

/// The message record behind gXPLMWindowID; freed when its window is replaced.
HV_Message* gShownMessage = nullptr;

const float kShadowColor[3] = {0.1f, 0.1f, 0.1f};
/// Colour of message types other than 1..3.
const float kOtherTypeColor[3] = {1.0f, 1.0f, 1.0f};

/// Window placement, pixels: the initial rectangle (kept in this order: top below bottom) and the
/// width per character of text with the frame around it.
constexpr int kLeft = 10;
constexpr int kTop = 658;
constexpr int kBottom = 688;
constexpr int kCharWidth = 6;
constexpr int kCreateFrame = 40;
constexpr int kDrawFrame = 30;
/// Text offsets from the window's left and bottom edges, pixels (shadow one pixel right and down).
constexpr int kTextX = 15;
constexpr int kTextY = 20;

const float* ColorOf(char type) {
    switch (type) {
    case 1:
        return gTempoDialogColor_BLEU;
    case 2:
        return gTempoDialogColor_VERT;
    case 3:
        return gTempoDialogColor_ROUGE;
    default:
        return kOtherTypeColor;
    }
}

void IgnoreKey(XPLMWindowID, char, XPLMKeyFlags, char, void*, int) {}
int PassClick(XPLMWindowID, int, int, XPLMMouseStatus, void*) {
    return 0;
}

} // namespace

void HV_Message::Show(const char* text_, int seconds, char type_) {
    new HV_Message(text_, seconds, type_);
}

void HV_Message::Close() {
    if (gXPLMWindowID) XPLMDestroyWindow(gXPLMWindowID);
    gXPLMWindowID = nullptr;
    delete gShownMessage;
    gShownMessage = nullptr;
}

HV_Message::HV_Message(const char* text_, int seconds, char type_) : type(type_), text{}, endTime(0) {
    endTime = static_cast<int>(XPLMGetElapsedTime()) + seconds;
    if (!text_) text_ = "";
    if (std::strlen(text_) > static_cast<size_t>(kMaxTextLength))
        std::strncpy(text, kTooLongText, kTextBytes - 1);
    else
        std::strncpy(text, text_, kTextBytes - 1);
    text[kTextBytes - 1] = '\0';

    Close(); // one message at a time: the previous one goes at once
    const int length = static_cast<int>(std::strlen(text));
    gXPLMWindowID = XPLMCreateWindow(kLeft, kTop, kCharWidth * length + kCreateFrame, kBottom, 1,
                                     MessageCallback, IgnoreKey, PassClick, this);
    gShownMessage = this;
}

void HV_Message::MessageCallback(XPLMWindowID window, void* refcon) {
    try {
        auto* message = static_cast<HV_Message*>(refcon);
        if (!message) return;
        if (XPLMGetElapsedTime() > message->endTime) {
            XPLMSetWindowIsVisible(window, 0); // stays hidden until the next message replaces it
            return;
        }
        int left = 0, top = 0, right = 0, bottom = 0;
        XPLMGetWindowGeometry(window, &left, &top, &right, &bottom);
        const int length = static_cast<int>(std::strlen(message->text));
        XPLMSetWindowGeometry(window, left, top, left + kCharWidth * length + kDrawFrame, bottom);
        XPLMGetWindowGeometry(window, &left, &top, &right, &bottom);

        XPDrawWindow(left, bottom, right, top, xpWindow_Screen);
        XPLMDrawString(const_cast<float*>(kShadowColor), left + kTextX + 1, bottom + kTextY - 1,
                       message->text, nullptr, xplmFont_Basic);
        XPLMDrawString(const_cast<float*>(ColorOf(message->type)), left + kTextX, bottom + kTextY,
                       message->text, nullptr, xplmFont_Basic);
        XPLMSetGraphicsState(0, 0, 0, 0, 0, 0, 0);
    } catch (...) {
        HV_LOGUtils::Add2Log("HV_Message: drawing failed", HV_LOGUtils::kHV_LOG_ALERT);
    }
}
