#include "toolkit/Dialog.h"

#include <algorithm>
#include <string>
#include <vector>

#include "XPStandardWidgets.h"
#include "toolkit/Controls.h"
#include "toolkit/Window.h"
#include "utils/HV_LOGUtils.h"

namespace {

/// With two buttons the dialog is at least this many characters wide.
constexpr int kTwoButtonMinChars = 61;
/// Width of one character and the frame around the longest line, pixels.
constexpr int kCharWidth = 6;
constexpr int kFrameWidth = 30;
/// Column width of each of two buttons, pixels.
constexpr int kButtonColumnWidth = 185;
/// Top edge a dialog is moved to after centring, pixels.
constexpr int kDialogTop = 568;

std::vector<std::string> SplitLines(const char* text) {
    std::vector<std::string> lines;
    std::string current;
    for (const char* p = text ? text : ""; *p; ++p) {
        if (*p == ';') {
            lines.push_back(current);
            current.clear();
        } else {
            current.push_back(*p);
        }
    }
    lines.push_back(current); // the text after the last ";" (or an empty text) is a line too
    return lines;
}

} // namespace

void HV_Dialog::Show(const char* title, const char* text, const char* button1_, const char* button2_,
                     HV_DialogCallback_f callback_) {
    new HV_Dialog(title, text, button1_, button2_, callback_); // freed by its handler
}

HV_Dialog::HV_Dialog(const char* title, const char* text, const char* button1_, const char* button2_,
                     HV_DialogCallback_f callback_)
    : callback(callback_), button1(nullptr), button2(nullptr) {
    const std::vector<std::string> lines = SplitLines(text);
    int longest = 0;
    for (const std::string& line : lines)
        longest = std::max(longest, static_cast<int>(line.size()));
    if (button2_) longest = std::max(longest, kTwoButtonMinChars);

    HV_Window* window =
        new HV_Window(this, HV_WindowHandler, kCharWidth * longest + kFrameWidth, title, false, true);

    HV_Panel* textPanel = new HV_Panel(nullptr, false, 0, nullptr, true, true);
    textPanel->SetMarge(10, 10);
    window->AddChild(textPanel);
    for (const std::string& line : lines)
        textPanel->AddChild(new HV_CtrlText(line.c_str(), kAlignLeft, true), 0);

    HV_Panel* buttonPanel = new HV_Panel(nullptr, false, 0, nullptr, true, true);
    buttonPanel->SetMarge(10, 5);
    buttonPanel->SetNumberOfColumn(2);
    window->AddChild(buttonPanel);
    if (button2_) {
        buttonPanel->SetColumnWidth(0, kButtonColumnWidth);
        buttonPanel->SetColumnWidth(1, kButtonColumnWidth);
    }
    button1 = new HV_CtrlButton(button1_, kAlignStretch, true, true);
    buttonPanel->AddChild(button1, 0);
    if (button2_) {
        button2 = new HV_CtrlButton(button2_, kAlignStretch, true, true);
        buttonPanel->AddChild(button2, 1);
    }

    window->Pack();
    window->Center();
    window->SetPosition(window->left, kDialogTop);
}

int HV_Dialog::HV_WindowHandler(void* dialogPtr, long message, HV_Panel* source, long, long) {
    if (!dialogPtr) return 0;
    auto* dialog = static_cast<HV_Dialog*>(dialogPtr);
    if (message == xpMessage_CloseButtonPushed) {
        // Without a close box this comes only from HV_Window::CloseAll: gone unanswered.
        delete dialog;
        return kHV_CloseWindow;
    }
    if (message != xpMsg_PushButtonPressed) return 0;
    int answer = 0;
    if (source && source == dialog->button1)
        answer = 1;
    else if (source && source == dialog->button2)
        answer = 2;
    if (answer == 0) return 0;
    if (dialog->callback) {
        try {
            dialog->callback(answer);
        } catch (...) {
            HV_LOGUtils::Add2Log("HV_Dialog: the answer callback failed", HV_LOGUtils::kHV_LOG_ALERT);
        }
    }
    delete dialog;
    return kHV_CloseWindow;
}
