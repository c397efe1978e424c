// Windows: construction, geometry, packing, centring, routing to the handler, closing.
#include "ToolkitFixture.h"
#include "toolkit/Controls.h"
#include "toolkit/Window.h"

using namespace toolkit_test;

namespace {

/// What a window handler saw.
struct Seen {
    std::vector<long> messages;
    std::vector<HV_Panel*> sources;
    int closeOn = -1; ///< message on which the handler answers 2
    bool sawDestroyedWindow = false;
};

int RecordingHandler(void* user, long message, HV_Panel* source, long, long) {
    auto* seen = static_cast<Seen*>(user);
    seen->messages.push_back(message);
    seen->sources.push_back(source);
    return message == seen->closeOn ? kHV_CloseWindow : 0;
}

using WindowTest = ToolkitTest;

TEST_F(WindowTest, ANewWindowIsAMainWindowAtFiftyAndSevenSixtyEight) {
    HV_Window window(nullptr, nullptr, 250, "Hello", true, true);
    EXPECT_EQ(GeometryOf(window.widget), (Rect{50, 768, 300, 368}));
    EXPECT_EQ(DescriptorOf(window.widget), "Hello");
    EXPECT_EQ(PropertyOf(window.widget, xpProperty_MainWindowHasCloseBoxes), 1);
    EXPECT_EQ(HV_Window::GetHV_WindowClass(window.widget), &window);
    EXPECT_TRUE(XPIsWidgetVisible(window.widget));
    // The root panel sits under the title bar and draws nothing.
    EXPECT_EQ(window.rootPanel->top, 748);
    EXPECT_EQ(window.rootPanel->left, 50);
    EXPECT_FALSE(XPIsWidgetVisible(window.rootPanel->widget));
}

TEST_F(WindowTest, CenterUsesAFixedScreenOf1024By768) {
    HV_Window window(nullptr, nullptr, 300, "Centre", false, true);
    window.SetSize(300, 200);
    window.Center();
    EXPECT_EQ(GeometryOf(window.widget), (Rect{362, 484, 662, 284}));
    EXPECT_EQ(window.left, 362);
    EXPECT_EQ(window.top, 484);
    int left = 0, top = 0;
    window.GetPosition(left, top);
    EXPECT_EQ(left, 362);
    EXPECT_EQ(top, 484);
}

TEST_F(WindowTest, SetPositionKeepsTheSizeAndMovesTheControls) {
    HV_Window window(nullptr, nullptr, 200, "Move", false, true);
    auto* button = new HV_CtrlButton("Go", kAlignLeft, true, true);
    ASSERT_TRUE(window.AddChild(button));
    const Rect before = GeometryOf(window.widget);
    const Rect buttonBefore = GeometryOf(button->widget);
    window.SetPosition(100, 600);
    const Rect after = GeometryOf(window.widget);
    EXPECT_EQ(after, (Rect{100, 600, 100 + before.width(), 600 - before.height()}));
    const Rect buttonAfter = GeometryOf(button->widget);
    EXPECT_EQ(buttonAfter.left - buttonBefore.left, 100 - before.left);
    EXPECT_EQ(buttonAfter.top - buttonBefore.top, 600 - before.top);
}

TEST_F(WindowTest, PackFitsTheHeightWithoutMovingTheControls) {
    HV_Window window(nullptr, nullptr, 200, "Pack", false, true);
    auto* panel = new HV_Panel(nullptr, false, 0, nullptr, true, true);
    ASSERT_TRUE(window.AddChild(panel));
    auto* text = new HV_CtrlText("line", kAlignLeft, true);
    ASSERT_TRUE(panel->AddChild(text, 0));
    const Rect textBefore = GeometryOf(text->widget);
    window.Pack();
    // Root panel height = top - lowest bottom + margin; the window adds twice the margin and 22.
    const int rootHeight = window.rootPanel->top - window.rootPanel->lowestBottom + window.rootPanel->margeY;
    EXPECT_EQ(window.rootPanel->bottom, rootHeight);
    EXPECT_EQ(GeometryOf(window.widget), (Rect{50, 768, 250, 768 - rootHeight - 2 - 22}));
    EXPECT_EQ(GeometryOf(text->widget), textBefore);
    EXPECT_FALSE(window.packing);
}

TEST_F(WindowTest, TheHandlerGetsTheControlThatWasPressed) {
    Seen seen;
    HV_Window window(&seen, RecordingHandler, 200, "Press", false, true);
    auto* ok = new HV_CtrlButton("OK", kAlignLeft, true, true);
    auto* other = new HV_CtrlButton("Other", kAlignLeft, true, true);
    ASSERT_TRUE(window.AddChild(ok));
    ASSERT_TRUE(window.AddChild(other));
    Click(other->widget);
    Click(ok->widget);
    std::vector<HV_Panel*> pressed;
    for (size_t i = 0; i < seen.messages.size(); ++i)
        if (seen.messages[i] == xpMsg_PushButtonPressed) pressed.push_back(seen.sources[i]);
    EXPECT_EQ(pressed, (std::vector<HV_Panel*>{other, ok}));
}

TEST_F(WindowTest, ADisabledButtonReportsNothing) {
    Seen seen;
    HV_Window window(&seen, RecordingHandler, 200, "Disabled", false, true);
    auto* button = new HV_CtrlButton("Off", kAlignLeft, false, true);
    ASSERT_TRUE(window.AddChild(button));
    EXPECT_EQ(PropertyOf(button->widget, xpProperty_Enabled), 0);
    Click(button->widget);
    EXPECT_EQ(std::count(seen.messages.begin(), seen.messages.end(), xpMsg_PushButtonPressed), 0);
    button->SetEnable(true);
    EXPECT_TRUE(button->GetIsEnable());
    Click(button->widget);
    EXPECT_EQ(std::count(seen.messages.begin(), seen.messages.end(), xpMsg_PushButtonPressed), 1);
}

TEST_F(WindowTest, AnsweringTwoToTheCloseBoxDestroysTheWindowAndItsWidgets) {
    Seen seen;
    seen.closeOn = xpMessage_CloseButtonPushed;
    auto* window = new HV_Window(&seen, RecordingHandler, 200, "Closing", true, true);
    auto* button = new HV_CtrlButton("Stay", kAlignLeft, true, true);
    ASSERT_TRUE(window->AddChild(button));
    XPWidgetID main = window->widget;
    XPWidgetID buttonWidget = button->widget;
    // The close box: the message a user's click on it sends.
    XPSendMessageToWidget(main, xpMessage_CloseButtonPushed, xpMode_UpChain, reinterpret_cast<intptr_t>(main),
                          0);
    ASSERT_FALSE(seen.messages.empty());
    EXPECT_EQ(seen.messages.back(), xpMessage_CloseButtonPushed);
    EXPECT_EQ(seen.sources.back(), nullptr); // the window itself is no control
    // Both handles are dead now: the library answers nothing for them.
    EXPECT_EQ(GeometryOf(main), Rect{});
    EXPECT_EQ(GeometryOf(buttonWidget), Rect{});
    EXPECT_EQ(XPCountChildWidgets(main), 0);
}

TEST_F(WindowTest, ClickingTheCloseBoxReachesTheHandler) {
    Seen seen;
    seen.closeOn = xpMessage_CloseButtonPushed;
    auto* window = new HV_Window(&seen, RecordingHandler, 200, "Close box", true, true);
    XPWidgetID main = window->widget;
    ASSERT_TRUE(simhost::clickCloseBox(host(), main));
    EXPECT_NE(std::find(seen.messages.begin(), seen.messages.end(), xpMessage_CloseButtonPushed),
              seen.messages.end());
    EXPECT_EQ(GeometryOf(main), Rect{});
}

TEST_F(WindowTest, TitleAndVisibilityFollowTheSetters) {
    HV_Window window(nullptr, nullptr, 200, "Before", false, true);
    window.SetWindowName("After");
    EXPECT_EQ(DescriptorOf(window.widget), "After");
    window.SetVisible(false);
    EXPECT_FALSE(XPIsWidgetVisible(window.widget));
    window.SetVisible(true);
    EXPECT_TRUE(XPIsWidgetVisible(window.widget));
    window.SetPositionSize(20, 700, 320, 240);
    EXPECT_EQ(GeometryOf(window.widget), (Rect{20, 700, 340, 460}));
}

} // namespace
