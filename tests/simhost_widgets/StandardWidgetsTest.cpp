// The standard widgets' behaviour, operated as a user would.
#include "WidgetFixture.h"

namespace simhost::testing {
namespace {

using PushButton = WidgetTest;
using TextField = WidgetTest;
using ScrollBar = WidgetTest;

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
    EXPECT_EQ(widgetDescriptor(field), "bc D.");
    // Return is not the field's: it goes on up the chain to the window.
    seen().clear();
    pressKeyInto(*host, field, XPLM_VK_RETURN, 13);
    auto keys = seenOf(xpMsg_KeyPress);
    ASSERT_FALSE(keys.empty());
    EXPECT_EQ(keys[0].widget, window);
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
    seen().clear();
    host->click(385, 292); // at the end: no change, no message
    EXPECT_TRUE(seenOf(xpMsg_ScrollBarSliderPositionChanged).empty());
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

} // namespace
} // namespace simhost::testing
