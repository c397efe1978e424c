// The standard widgets' behaviour, operated as a user would.
#include "WidgetFixture.h"

namespace simhost::testing {
namespace {

using PushButton = WidgetTest;
using CheckBox = WidgetTest;
using TextField = WidgetTest;
using ScrollBar = WidgetTest;
using MainWindowClose = WidgetTest;

TEST_F(PushButton, PressedAndReleasedInsideTellsTheChainWithItsID) {
    XPWidgetID window = mainWindow(100, 400, 300, 200);
    XPWidgetID button = child(window, xpWidgetClass_Button, 150, 300, 250, 280, "Push");
    XPAddWidgetCallback(button, recordB);
    XPAddWidgetCallback(window, recordAndHandle);
    seen().clear();
    EXPECT_TRUE(clickWidget(*host, button));
    auto pressed = seenOf(xpMsg_PushButtonPressed);
    ASSERT_EQ(pressed.size(), 2u); // the button itself first, then its window, which handles it
    EXPECT_EQ(pressed[0].widget, button);
    EXPECT_EQ(pressed[1].widget, window);
    EXPECT_EQ(pressed[1].p1, reinterpret_cast<intptr_t>(button));
    EXPECT_EQ(widgetProperty(button, xpProperty_Hilited), 0);

    // Pressed inside but released outside: nothing.
    seen().clear();
    host->mouseDown(200, 290);
    EXPECT_EQ(widgetProperty(button, xpProperty_Hilited), 1);
    host->mouseDrag(120, 220);
    EXPECT_EQ(widgetProperty(button, xpProperty_Hilited), 0);
    host->mouseUp(120, 220);
    EXPECT_TRUE(seenOf(xpMsg_PushButtonPressed).empty());

    // A disabled button does nothing.
    XPSetWidgetProperty(button, xpProperty_Enabled, 0);
    seen().clear();
    clickWidget(*host, button);
    EXPECT_TRUE(seenOf(xpMsg_PushButtonPressed).empty());
}

/// The check box's state when its notification arrives.
intptr_t gStateSeenByHandler = -1;
int noteState(XPWidgetMessage msg, XPWidgetID w, intptr_t p1, intptr_t p2) {
    if (msg != xpMsg_ButtonStateChanged) return 0;
    gStateSeenByHandler =
        XPGetWidgetProperty(reinterpret_cast<XPWidgetID>(p1), xpProperty_ButtonState, nullptr);
    seen().push_back({"state", msg, w, p1, p2});
    return 1;
}

TEST_F(CheckBox, TogglesFirstThenReportsTheNewState) {
    XPWidgetID window = mainWindow(100, 400, 300, 200);
    XPWidgetID box = child(window, xpWidgetClass_Button, 110, 300, 250, 280, "Allow engines");
    XPSetWidgetProperty(box, xpProperty_ButtonType, xpRadioButton);
    XPSetWidgetProperty(box, xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox);
    XPAddWidgetCallback(window, noteState);
    clickWidget(*host, box);
    EXPECT_EQ(widgetProperty(box, xpProperty_ButtonState), 1);
    EXPECT_EQ(gStateSeenByHandler, 1);
    clickWidget(*host, box);
    EXPECT_EQ(widgetProperty(box, xpProperty_ButtonState), 0);
    auto changes = seenOf(xpMsg_ButtonStateChanged);
    ASSERT_EQ(changes.size(), 2u);
    EXPECT_EQ(changes[0].p1, reinterpret_cast<intptr_t>(box));
    EXPECT_EQ(changes[0].p2, 1);
    EXPECT_EQ(changes[1].p2, 0);
    // Setting the state from code sends no notification.
    XPSetWidgetProperty(box, xpProperty_ButtonState, 1);
    EXPECT_EQ(seenOf(xpMsg_ButtonStateChanged).size(), 2u);
}

TEST_F(CheckBox, RadioButtonsSetButNeverClear) {
    XPWidgetID window = mainWindow(100, 400, 300, 200);
    XPWidgetID one = child(window, xpWidgetClass_Button, 110, 300, 250, 280, "One");
    XPWidgetID two = child(window, xpWidgetClass_Button, 110, 270, 250, 250, "Two");
    for (XPWidgetID r : {one, two}) {
        XPSetWidgetProperty(r, xpProperty_ButtonType, xpRadioButton);
        XPSetWidgetProperty(r, xpProperty_ButtonBehavior, xpButtonBehaviorRadioButton);
    }
    XPAddWidgetCallback(window, noteState);
    clickWidget(*host, one);
    clickWidget(*host, one); // already set: no second notification
    clickWidget(*host, two);
    EXPECT_EQ(widgetProperty(one, xpProperty_ButtonState), 1); // the owner must clear the others
    EXPECT_EQ(widgetProperty(two, xpProperty_ButtonState), 1);
    auto changes = seenOf(xpMsg_ButtonStateChanged);
    ASSERT_EQ(changes.size(), 2u);
    EXPECT_EQ(changes[0].p1, reinterpret_cast<intptr_t>(one));
    EXPECT_EQ(changes[1].p1, reinterpret_cast<intptr_t>(two));
}

/// Swallows digit key presses, as a plug-in's key filter does.
int swallowDigits(XPWidgetMessage msg, XPWidgetID, intptr_t p1, intptr_t) {
    if (msg != xpMsg_KeyPress) return 0;
    char c = reinterpret_cast<XPKeyState_t*>(p1)->key;
    return (c >= '0' && c <= '9') ? 1 : 0;
}

TEST_F(TextField, KeysEditTheDescriptorAndEachEditIsReported) {
    XPWidgetID window = mainWindow(100, 400, 400, 200);
    XPWidgetID field = child(window, xpWidgetClass_TextField, 110, 300, 390, 280, "ab");
    XPAddWidgetCallback(window, recordA);
    seen().clear();
    ASSERT_TRUE(typeInto(*host, field, "c D.9"));
    EXPECT_EQ(widgetDescriptor(field), "abc D.9");
    auto changes = seenOf(xpMsg_TextFieldChanged);
    ASSERT_EQ(changes.size(), 5u);
    EXPECT_EQ(changes[0].p1, reinterpret_cast<intptr_t>(field));
    EXPECT_EQ(widgetProperty(field, xpProperty_EditFieldSelEnd), 7);
    pressKeyInto(*host, field, XPLM_VK_BACK, 8);
    EXPECT_EQ(widgetDescriptor(field), "abc D.");
    pressKeyInto(*host, field, XPLM_VK_HOME);
    pressKeyInto(*host, field, XPLM_VK_DELETE);
    pressKeyInto(*host, field, XPLM_VK_RIGHT);
    typeInto(*host, field, "");
    pressKeyInto(*host, field, XPLM_VK_LEFT);
    EXPECT_EQ(widgetDescriptor(field), "bc D.");
    // Return is not the field's: it goes on up the chain to the window.
    seen().clear();
    pressKeyInto(*host, field, XPLM_VK_RETURN, 13);
    auto keys = seenOf(xpMsg_KeyPress);
    ASSERT_FALSE(keys.empty());
    EXPECT_EQ(keys[0].widget, window);
}

TEST_F(TextField, ACallbackThatSwallowsKeyPressFiltersTheText) {
    XPWidgetID window = mainWindow(100, 400, 400, 200);
    XPWidgetID field = child(window, xpWidgetClass_TextField, 110, 300, 390, 280, "");
    XPAddWidgetCallback(field, swallowDigits);
    XPAddWidgetCallback(window, recordA);
    seen().clear();
    typeInto(*host, field, "a1b2c");
    EXPECT_EQ(widgetDescriptor(field), "abc");
    EXPECT_EQ(seenOf(xpMsg_TextFieldChanged).size(), 3u);
}

TEST_F(TextField, MaxCharactersAndPasswordMode) {
    XPWidgetID window = mainWindow(100, 400, 400, 200);
    XPWidgetID field = child(window, xpWidgetClass_TextField, 110, 300, 390, 280, "");
    XPSetWidgetProperty(field, xpProperty_MaxCharacters, 4);
    XPSetWidgetProperty(field, xpProperty_PasswordMode, 1);
    typeInto(*host, field, "secret");
    EXPECT_EQ(widgetDescriptor(field), "secr"); // the descriptor stays plain text
    // A field scrolled beyond its width keeps the caret visible.
    XPWidgetID narrow = child(window, xpWidgetClass_TextField, 110, 260, 160, 240, "");
    typeInto(*host, narrow, "a long line of text");
    EXPECT_EQ(widgetDescriptor(narrow), "a long line of text");
    EXPECT_GT(widgetProperty(narrow, xpProperty_ScrollPosition), 0);
}

TEST_F(ScrollBar, ArrowsPagesAndDragsMoveTheThumbAndReportIt) {
    XPWidgetID window = mainWindow(100, 400, 400, 200);
    XPWidgetID bar = child(window, xpWidgetClass_ScrollBar, 110, 300, 390, 284); // 280 x 16
    XPSetWidgetProperty(bar, xpProperty_ScrollBarMin, 0);
    XPSetWidgetProperty(bar, xpProperty_ScrollBarMax, 100);
    XPSetWidgetProperty(bar, xpProperty_ScrollBarPageAmount, 10);
    XPAddWidgetCallback(window, recordA);
    seen().clear();
    host->click(385, 292); // right arrow
    EXPECT_EQ(widgetProperty(bar, xpProperty_ScrollBarSliderPosition), 1);
    host->click(300, 292); // the track right of the thumb: a page
    EXPECT_EQ(widgetProperty(bar, xpProperty_ScrollBarSliderPosition), 11);
    host->click(115, 292); // left arrow
    EXPECT_EQ(widgetProperty(bar, xpProperty_ScrollBarSliderPosition), 10);
    ASSERT_EQ(seenOf(xpMsg_ScrollBarSliderPositionChanged).size(), 3u);
    EXPECT_EQ(seenOf(xpMsg_ScrollBarSliderPositionChanged)[0].p1, reinterpret_cast<intptr_t>(bar));
    EXPECT_TRUE(dragSliderTo(*host, bar, 73));
    EXPECT_EQ(widgetProperty(bar, xpProperty_ScrollBarSliderPosition), 73);
    EXPECT_FALSE(dragSliderTo(*host, bar, 150)); // clamped at the maximum
    EXPECT_EQ(widgetProperty(bar, xpProperty_ScrollBarSliderPosition), 100);
    host->click(115, 292);
    host->click(115, 292);
    EXPECT_EQ(widgetProperty(bar, xpProperty_ScrollBarSliderPosition), 98);
    seen().clear();
    host->click(385, 292);
    host->click(385, 292);
    host->click(385, 292); // at the end: no change, no message
    EXPECT_EQ(seenOf(xpMsg_ScrollBarSliderPositionChanged).size(), 2u);
}

TEST_F(ScrollBar, AVerticalSliderHasItsMinimumAtTheBottom) {
    XPWidgetID window = mainWindow(100, 400, 400, 100);
    XPWidgetID slider = child(window, xpWidgetClass_ScrollBar, 200, 380, 216, 120);
    XPSetWidgetProperty(slider, xpProperty_ScrollBarType, xpScrollBarTypeSlider);
    XPSetWidgetProperty(slider, xpProperty_ScrollBarMin, 0);
    XPSetWidgetProperty(slider, xpProperty_ScrollBarMax, 200);
    XPSetWidgetProperty(slider, xpProperty_ScrollBarPageAmount, 50);
    host->click(208, 375); // near the top: pages towards the maximum
    EXPECT_EQ(widgetProperty(slider, xpProperty_ScrollBarSliderPosition), 50);
    EXPECT_TRUE(dragSliderTo(*host, slider, 120));
    EXPECT_TRUE(dragSliderTo(*host, slider, 0));
}

TEST_F(ScrollBar, WildPropertiesFromAPlugInStayWithinTheRange) {
    XPWidgetID window = mainWindow(100, 400, 400, 200);
    XPWidgetID bar = child(window, xpWidgetClass_ScrollBar, 110, 300, 390, 284);
    XPSetWidgetProperty(bar, xpProperty_ScrollBarMin, INTPTR_MIN);
    XPSetWidgetProperty(bar, xpProperty_ScrollBarMax, INTPTR_MAX);
    XPSetWidgetProperty(bar, xpProperty_ScrollBarPageAmount, INTPTR_MAX);
    XPSetWidgetProperty(bar, xpProperty_ScrollBarSliderPosition, 0);
    host->click(300, 292); // a page towards the maximum
    intptr_t value = widgetProperty(bar, xpProperty_ScrollBarSliderPosition);
    EXPECT_GT(value, 0);
    host->click(150, 292); // and back: the thumb sits at the right end now
    EXPECT_LT(widgetProperty(bar, xpProperty_ScrollBarSliderPosition), value);
    // Reversed range: the axis runs the other way, the value stays inside it.
    XPSetWidgetProperty(bar, xpProperty_ScrollBarMin, 10);
    XPSetWidgetProperty(bar, xpProperty_ScrollBarMax, 0);
    XPSetWidgetProperty(bar, xpProperty_ScrollBarSliderPosition, 5);
    host->click(385, 292); // the arrow at the "max" end
    EXPECT_EQ(widgetProperty(bar, xpProperty_ScrollBarSliderPosition), 4);
}

TEST_F(MainWindowClose, TheCloseBoxReportsButLeavesTheWindowShown) {
    XPWidgetID window = mainWindow(100, 400, 400, 200, "Closable");
    XPWidgetID plain = mainWindow(500, 400, 700, 200, "No box");
    XPSetWidgetProperty(window, xpProperty_MainWindowHasCloseBoxes, 1);
    XPAddWidgetCallback(window, recordA);
    seen().clear();
    EXPECT_FALSE(clickCloseBox(*host, plain));
    ASSERT_TRUE(clickCloseBox(*host, window));
    auto closes = seenOf(xpMessage_CloseButtonPushed);
    ASSERT_EQ(closes.size(), 1u);
    EXPECT_EQ(closes[0].p1, reinterpret_cast<intptr_t>(window));
    EXPECT_TRUE(XPIsWidgetVisible(window));
}

TEST_F(MainWindowClose, DraggingTheTitleBarMovesTheWholeWindow) {
    XPWidgetID window = mainWindow(100, 400, 400, 200, "Drag me");
    XPWidgetID label = child(window, xpWidgetClass_Caption, 110, 380, 200, 360, "label");
    host->mouseDown(200, 395);
    host->mouseDrag(250, 345);
    host->mouseUp(250, 345);
    WidgetInfo w, l;
    ASSERT_TRUE(widgetInfo(window, w));
    ASSERT_TRUE(widgetInfo(label, l));
    EXPECT_EQ(w.left, 150);
    EXPECT_EQ(w.top, 350);
    EXPECT_EQ(l.left, 160);
    EXPECT_EQ(l.top, 330);
}

} // namespace
} // namespace simhost::testing
