// The helper macros of the widget utilities read the structures that widget
// message parameters point to, and test rectangles with +y up.
#include "XPStandardWidgets.h"
#include "XPWidgetUtils.h"

#include <gtest/gtest.h>

#include <cstdint>

TEST(SdkWidgetMacros, ReadMouseKeyAndGeometryParameters) {
    XPMouseState_t mouse{};
    mouse.x = 120;
    mouse.y = -7;
    const intptr_t mouseParam = reinterpret_cast<intptr_t>(&mouse);
    EXPECT_EQ(MOUSE_X(mouseParam), 120);
    EXPECT_EQ(MOUSE_Y(mouseParam), -7);

    XPKeyState_t key{};
    key.key = 'q';
    key.flags = xplm_DownFlag | xplm_ShiftFlag;
    key.vkey = static_cast<char>(XPLM_VK_LBRACE);
    const intptr_t keyParam = reinterpret_cast<intptr_t>(&key);
    EXPECT_EQ(KEY_CHAR(keyParam), 'q');
    EXPECT_EQ(KEY_FLAGS(keyParam), xplm_DownFlag | xplm_ShiftFlag);
    EXPECT_EQ(static_cast<unsigned char>(KEY_VKEY(keyParam)), XPLM_VK_LBRACE);

    XPWidgetGeometryChange_t change{3, -4, 10, 20};
    const intptr_t changeParam = reinterpret_cast<intptr_t>(&change);
    EXPECT_EQ(DELTA_X(changeParam), 3);
    EXPECT_EQ(DELTA_Y(changeParam), -4);
    EXPECT_EQ(DELTA_W(changeParam), 10);
    EXPECT_EQ(DELTA_H(changeParam), 20);
}

TEST(SdkWidgetMacros, InRectIncludesEveryEdgeWithTopAboveBottom) {
    // left 10, top 50, right 40, bottom 20
    EXPECT_TRUE(IN_RECT(10, 20, 10, 50, 40, 20));
    EXPECT_TRUE(IN_RECT(40, 50, 10, 50, 40, 20));
    EXPECT_TRUE(IN_RECT(25, 35, 10, 50, 40, 20));
    EXPECT_FALSE(IN_RECT(9, 35, 10, 50, 40, 20));
    EXPECT_FALSE(IN_RECT(41, 35, 10, 50, 40, 20));
    EXPECT_FALSE(IN_RECT(25, 51, 10, 50, 40, 20));
    EXPECT_FALSE(IN_RECT(25, 19, 10, 50, 40, 20));
}

TEST(SdkWidgetMacros, WidgetCountCountsTableEntries) {
    const XPWidgetCreate_t dialog[] = {
        {100, 400, 300, 200, 1, "Dialog", 1, NO_PARENT, xpWidgetClass_MainWindow},
        {110, 380, 290, 360, 1, "Name", 0, 0, xpWidgetClass_Caption},
        {110, 350, 290, 330, 1, "", 0, 0, xpWidgetClass_TextField},
        {110, 320, 200, 300, 1, "OK", 0, PARAM_PARENT, xpWidgetClass_Button},
    };
    EXPECT_EQ(WIDGET_COUNT(dialog), 4);
    EXPECT_EQ(dialog[3].containerIndex, -2);
}
