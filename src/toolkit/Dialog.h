// Two ready-made pieces of interface: a modal-looking dialog with lines of text
// and one or two buttons, which reports the answer to a callback and closes
// itself; and a one-line coloured message shown near the top left of the screen
// for a number of seconds, of which only one exists at a time.
#pragma once

#include <cstdint>

#include "XPLMDisplay.h"

class HV_Panel;
class HV_CtrlButton;

/// Receives the button pressed: 1 or 2.
typedef void (*HV_DialogCallback_f)(int button);

/// A window of text lines and one or two buttons that frees itself when a button is pressed.
class HV_Dialog {
public:
    HV_DialogCallback_f callback; ///< may be null
    HV_CtrlButton* button1;       ///< owned by the window
    HV_CtrlButton* button2;       ///< owned by the window, or null

    /// Shows a dialog; `text` holds the lines separated by ";"; a null button2 gives one button.
    /// The answer comes through `callback` (1 or 2), after which the dialog is gone.
    static void Show(const char* title, const char* text, const char* button1, const char* button2,
                     HV_DialogCallback_f callback);
    /// Builds the window (use Show).
    HV_Dialog(const char* title, const char* text, const char* button1, const char* button2,
              HV_DialogCallback_f callback);
    HV_Dialog(const HV_Dialog&) = delete;
    HV_Dialog& operator=(const HV_Dialog&) = delete;

    /// Window handler: a press of either button calls the callback, frees the dialog and closes; the close
    /// message of HV_Window::CloseAll frees and closes it without an answer.
    static int HV_WindowHandler(void* dialog, long message, HV_Panel* source, long param1, long param2);
};

/// Message colours (red, green, blue).
extern const float gTempoDialogColor_BLEU[3];  ///< type 1
extern const float gTempoDialogColor_VERT[3];  ///< type 2
extern const float gTempoDialogColor_ROUGE[3]; ///< type 3

/// The one message window, or null.
extern XPLMWindowID gXPLMWindowID;

/// A coloured line of text shown for a while; the next one replaces it.
class HV_Message {
public:
    static constexpr int kTextBytes = 103;    ///< text buffer
    static constexpr int kMaxTextLength = 98; ///< longer texts are replaced by kTooLongText
    static constexpr const char* kTooLongText = "Text Too long [MAX 100 CHARACTERES]";

    char type;             ///< 1 blue, 2 green, 3 red; others white
    char text[kTextBytes]; ///< the line shown
    int endTime;           ///< simulator elapsed time when it hides, whole seconds

    /// Shows `text` for `seconds` in the colour of `type`, replacing the message shown.
    static void Show(const char* text, int seconds, char type);
    /// Destroys the message window (call when the plug-in stops).
    static void Close();
    /// Builds the message and its window (use Show).
    HV_Message(const char* text, int seconds, char type);
    HV_Message(const HV_Message&) = delete;
    HV_Message& operator=(const HV_Message&) = delete;

    /// Draw callback of the message window.
    static void MessageCallback(XPLMWindowID window, void* refcon);
};
