// The toolkit's controls: panels wrapping the simulator's standard widgets
// (button, text field, scroll bar, caption, progress bar) or a custom widget.
// Build one with its text and options, add it to a panel or window with
// AddChild (which sizes it and creates its widgets), and read user actions in
// the window's handler, which receives the control as its source.
//
// Every control has a fixed height (its bottom field, minHeight and maxHeight),
// copies the strings it is given, and stores `this` in property 0 of its widgets.
// Alignment (`kind`) of text-bearing controls: kAlignRight, kAlignCenter,
// kAlignStretch, anything else left. Natural width: 6 pixels per character + 30.
#pragma once

#include "toolkit/Panel.h"

class HV_Texture;

/// Alignment values of the text-bearing controls.
constexpr int kAlignLeft = 0;    ///< at the left of the space given
constexpr int kAlignRight = 1;   ///< at the right of the space given
constexpr int kAlignCenter = 2;  ///< centred in the space given
constexpr int kAlignStretch = 3; ///< the whole space given

/// Natural width of a control showing `text`: 6 pixels per character + 30.
int HV_NaturalWidth(const char* text);

/// Push button; reports 1300 (push button pressed).
class HV_CtrlButton : public HV_Panel {
public:
    static constexpr int kHeight = 17; ///< pixels
    char* text;                        ///< owned copy
    bool enabled;                      ///< enabled flag

    /// A push button showing `text`, aligned by `align`.
    HV_CtrlButton(const char* text, int align, bool enabled, bool visible);
    ~HV_CtrlButton() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetEnable(bool enable) override;
    bool GetIsEnable() override;
    void SetVisible(bool visible) override;
    /// Replaces the label.
    void SetText(const char* text);
    /// Copies the label into buffer (always terminated).
    void GetText(char* buffer, int size);
};

/// Push-button look with check-box behaviour; reports 1301 (state changed).
class HV_CtrlButtonChkBox : public HV_Panel {
public:
    static constexpr int kHeight = 17; ///< pixels
    char* text;                        ///< owned copy
    bool checked;                      ///< state, kept in step before the window handler runs
    bool enabled;                      ///< enabled flag

    /// A toggling push button showing `text`.
    HV_CtrlButtonChkBox(const char* text, int align, bool checked, bool enabled, bool visible);
    ~HV_CtrlButtonChkBox() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetEnable(bool enable) override;
    bool GetIsEnable() override;
    void SetVisible(bool visible) override;
    int Event(long message, void* widget, long param1, long param2) override;
    /// Sets the state (sends no message).
    void SetCheck(bool checked);
    /// The state.
    bool isChecked();
    /// Replaces the label.
    void SetText(const char* text);
    /// Copies the label into buffer (always terminated).
    void GetText(char* buffer, int size);
};

/// Check box with its text 18 pixels to the right; reports 1301 (state changed).
class HV_CtrlCheckBox : public HV_Panel {
public:
    static constexpr int kHeight = 16; ///< pixels
    char* text;                        ///< owned copy
    bool checked;                      ///< state, kept in step before the window handler runs
    bool enabled;                      ///< enabled flag
    void* caption = nullptr;           ///< the caption widget (widget is the box)

    /// A check box labelled `text`.
    HV_CtrlCheckBox(const char* text, bool checked, bool enabled, bool visible);
    ~HV_CtrlCheckBox() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetEnable(bool enable) override;
    bool GetIsEnable() override;
    void SetVisible(bool visible) override;
    int Event(long message, void* widget, long param1, long param2) override;
    /// Sets the state (sends no message).
    void SetCheck(bool checked);
    /// The state.
    bool isChecked();
    /// Replaces the label.
    void SetText(const char* text);
    /// Copies the label into buffer (always terminated).
    void GetText(char* buffer, int size);
};

/// A piece of a texture drawn at one screen pixel per texture pixel.
class HV_CtrlPicture : public HV_Panel {
public:
    HV_Texture* texture;         ///< not owned; null draws nothing
    int pieceLeft, pieceTop;     ///< piece corner, texture pixels
    int pieceRight, pieceBottom; ///< opposite corner, texture pixels
    bool nightLit;               ///< draw with the cockpit-light tint at night

    /// Shows the piece (left, top)-(right, bottom) of `texture`; the control is right - left wide and
    /// bottom - top high. `nightLit` draws the picture with the night tint.
    HV_CtrlPicture(HV_Texture* texture, int left, int top, int right, int bottom, bool nightLit,
                   bool visible);
    ~HV_CtrlPicture() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetVisible(bool visible) override;
    /// Shows another piece or texture (the control keeps its size).
    void SetPicture(HV_Texture* texture, int left, int top, int right, int bottom);
    /// Widget function: draws the piece.
    static int PictureHandler(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2);
};

/// A label and a popup button showing the selected line of a ";"-separated list; a pick sends
/// kXSBMsg_PopupItemPicked (PopupMenu.h) to the window's handler with the control as source and the
/// line as param2.
class HV_CtrlPopup : public HV_Panel {
public:
    static constexpr int kHeight = 18; ///< pixels
    char* label;                       ///< owned copy, may be empty
    char* items;                       ///< owned copy of the ";"-separated lines
    int selected;                      ///< selected line, 0-based
    bool enabled;                      ///< enabled flag
    void* labelCaption = nullptr;      ///< caption with the label, or null (widget is the popup button)

    /// A popup labelled `label` over `items` with line `selected` chosen.
    HV_CtrlPopup(const char* label, const char* items, int selected, bool enabled, bool visible);
    ~HV_CtrlPopup() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetEnable(bool enable) override;
    bool GetIsEnable() override;
    void SetVisible(bool visible) override;
    int Event(long message, void* widget, long param1, long param2) override;
    /// The selected line, 0-based.
    int GetSelectedLine();
    /// Selects a line; ignored when out of the list.
    void SetSelectedLine(int line);
    /// The ";"-separated lines.
    const char* GetStringList();
    /// Replaces the lines; the selection is kept when still in the list, else the first line.
    void SetStringList(const char* items);
    /// Copies the selected line into buffer (always terminated).
    void GetSelectedString(char* buffer, int size);
};

/// Progress bar between a minimum and a maximum.
class HV_CtrlProgress : public HV_Panel {
public:
    static constexpr int kHeight = 12; ///< pixels
    int minimum, maximum, position;    ///< as given, or as last set

    /// A progress bar at `position` between minimum (empty) and maximum (full).
    HV_CtrlProgress(int minimum, int maximum, int position);
    ~HV_CtrlProgress() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetVisible(bool visible) override;
    bool GetIsVisible() override;
    int Event(long message, void* widget, long param1, long param2) override;
    /// Moves the bar.
    void SetValue(int position);
    /// The bar's position.
    int GetValue();
};

/// Labelled slider with an optional value caption; reports 1500 (position changed).
class HV_CtrlSlider : public HV_Panel {
public:
    static constexpr int kHeight = 20; ///< pixels
    char* label;                       ///< owned copy
    int minimum, maximum;              ///< range of the slider
    int value;                         ///< position as given or last set (GetValue reads the widget)
    int pageStep;                      ///< step of a click beside the thumb
    bool showValue;                    ///< a caption shows the value, zero-padded to the maximum's digits
    bool enabled;                      ///< enabled flag
    void* labelCaption = nullptr;      ///< caption with the label
    void* valueCaption = nullptr;      ///< caption with the value, or null (widget is the scroll bar)

    /// A slider from minimum to maximum at `value`; a click beside the thumb moves by pageStep.
    HV_CtrlSlider(const char* label, int minimum, int maximum, int value, int pageStep, bool showValue,
                  bool enabled, bool visible);
    ~HV_CtrlSlider() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetEnable(bool enable) override;
    bool GetIsEnable() override;
    void SetVisible(bool visible) override;
    int Event(long message, void* widget, long param1, long param2) override;
    /// The slider's position.
    int GetValue();
    /// Moves the slider and updates the value caption.
    void SetValue(int value);
    /// Lower end.
    void SetMinimum(int minimum);
    /// Upper end (also the digits of the value caption).
    void SetMaximum(int maximum);
    /// Step of a click beside the thumb.
    void SetClickStep(int step);
    /// Replaces the label.
    void SetText(const char* text);
    /// Copies the label into buffer (always terminated).
    void GetText(char* buffer, int size);
    /// Shows the position zero-padded to the number of characters of the maximum (100, 7 -> "007").
    void SetTextWithSliderNum();
};

/// One line of text.
class HV_CtrlText : public HV_Panel {
public:
    static constexpr int kHeight = 15; ///< pixels
    char* text;                        ///< owned copy

    /// A caption showing `text`, aligned by `align`.
    HV_CtrlText(const char* text, int align, bool visible);
    ~HV_CtrlText() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetVisible(bool visible) override;
    /// Replaces the text.
    void SetText(const char* text);
    /// Copies the text into buffer (always terminated).
    void GetText(char* buffer, int size);
};

/// Labelled text field with a character filter; reports 1400 (text changed).
class HV_CtrlTextBox : public HV_Panel {
public:
    static constexpr int kHeight = 18; ///< pixels
    char* label;                       ///< owned copy, may be empty
    char* text;                        ///< owned copy of the initial text
    int maxCharacters;                 ///< 0 = unlimited
    bool password;                     ///< draw stars
    char* acceptedCharacters;          ///< owned copy; empty accepts everything
    bool enabled;                      ///< enabled flag
    void* labelCaption = nullptr;      ///< caption with the label, or null (widget is the field)

    /// A text field showing `text`, with `label` to its left when given; typed characters
    /// (codes 32 and up) not in acceptedCharacters are refused when that list is not empty.
    HV_CtrlTextBox(const char* label, const char* text, int maxCharacters, bool password,
                   const char* acceptedCharacters, bool enabled, bool visible);
    ~HV_CtrlTextBox() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetEnable(bool enable) override;
    bool GetIsEnable() override;
    void SetVisible(bool visible) override;
    /// Replaces the field's text.
    void SetText(const char* text);
    /// Copies the field's text into buffer (always terminated).
    void GetText(char* buffer, int size);
    /// Key filter on the text field: swallows refused characters.
    static int KeyFilter(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2);
};
