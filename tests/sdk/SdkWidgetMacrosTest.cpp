// The widget utilities' helper macros read the structures that widget message
// parameters point to and test rectangles with +y up.
#include "XPWidgetUtils.h"

#include <gtest/gtest.h>

#include <cstdint>

TEST(SdkWidgetMacros, ReadTheParametersOfWidgetMessagesAndTestRectangles) {
    XPMouseState_t mouse{120, -7, 0, 0};
    EXPECT_EQ(MOUSE_X(reinterpret_cast<intptr_t>(&mouse)), 120);
    EXPECT_EQ(MOUSE_Y(reinterpret_cast<intptr_t>(&mouse)), -7);
    XPKeyState_t key{'q', xplm_DownFlag | xplm_ShiftFlag, static_cast<char>(XPLM_VK_LBRACE)};
    const intptr_t keyParam = reinterpret_cast<intptr_t>(&key);
    EXPECT_EQ(KEY_CHAR(keyParam), 'q');
    EXPECT_EQ(KEY_FLAGS(keyParam), xplm_DownFlag | xplm_ShiftFlag);
    EXPECT_EQ(static_cast<unsigned char>(KEY_VKEY(keyParam)), XPLM_VK_LBRACE);

    // Left 10, top 50, right 40, bottom 20: every edge is inside.
    EXPECT_TRUE(IN_RECT(10, 20, 10, 50, 40, 20) && IN_RECT(40, 50, 10, 50, 40, 20));
    for (const auto& outside : {std::pair{9, 35}, {41, 35}, {25, 51}, {25, 19}})
        EXPECT_FALSE(IN_RECT(outside.first, outside.second, 10, 50, 40, 20))
            << outside.first << "," << outside.second;
}
