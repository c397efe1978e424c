// The ready-made dialog and the timed message.
#include <cstring>

#include "ToolkitFixture.h"
#include "toolkit/Controls.h"
#include "toolkit/Dialog.h"

using namespace toolkit_test;

namespace {

std::vector<int> gAnswers;
void Remember(int button) {
    gAnswers.push_back(button);
}

class DialogTest : public ToolkitTest {
protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        gAnswers.clear();
    }
    /// The one main window shown now.
    XPWidgetID OnlyWindow() {
        const std::vector<XPWidgetID> windows = MainWindows();
        EXPECT_EQ(windows.size(), 1u);
        return windows.empty() ? nullptr : windows.front();
    }
    std::vector<std::string> Captions(XPWidgetID root) {
        std::vector<std::string> texts;
        for (XPWidgetID w : WidgetsOfClass(root, xpWidgetClass_Caption))
            texts.push_back(DescriptorOf(w));
        return texts;
    }
};

TEST_F(DialogTest, OneButtonDialogShowsItsLinesAndAnswersOne) {
    HV_Dialog::Show("Title", "Line one;Line two", "OK", nullptr, Remember);
    XPWidgetID window = OnlyWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(DescriptorOf(window), "Title");
    EXPECT_EQ(PropertyOf(window, xpProperty_MainWindowHasCloseBoxes), 0);
    EXPECT_EQ(Captions(window), (std::vector<std::string>{"Line one", "Line two"}));
    const std::vector<XPWidgetID> buttons = WidgetsOfClass(window, xpWidgetClass_Button);
    ASSERT_EQ(buttons.size(), 1u);
    EXPECT_EQ(DescriptorOf(buttons[0]), "OK");

    // Width 6 x 8 + 30; the button stretches over the panel less the margins.
    const Rect frame = GeometryOf(window);
    EXPECT_EQ(frame.width(), 78);
    EXPECT_EQ(frame.top, 568);
    EXPECT_EQ(frame.left, 512 - 39);
    const Rect button = GeometryOf(buttons[0]);
    EXPECT_GT(button.width(), 42);
    // Root panel margin 1, button panel margin 10.
    EXPECT_EQ(button.left, frame.left + 1 + 10);
    EXPECT_EQ(button.right, frame.right - 1 - 10);
    // Lines and button lie inside the window, under its title.
    EXPECT_LT(button.top, frame.top - 20);
    EXPECT_GT(button.bottom, frame.bottom);

    Click(buttons[0]);
    EXPECT_EQ(gAnswers, (std::vector<int>{1}));
    EXPECT_TRUE(MainWindows().empty());
    simhost::WidgetInfo info;
    EXPECT_FALSE(simhost::widgetInfo(buttons[0], info)); // every widget is gone
    EXPECT_TRUE(simhost::findWidgets([](const simhost::WidgetInfo&) { return true; }).empty());
}

TEST_F(DialogTest, TwoButtonDialogIsAtLeastSixtyOneCharactersWideAndAnswersTwo) {
    HV_Dialog::Show("Question", "Go?", "Yes", "No", Remember);
    XPWidgetID window = OnlyWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(GeometryOf(window).width(), 6 * 61 + 30);
    EXPECT_EQ(GeometryOf(window).width(), 396);
    XPWidgetID no = FindByDescriptor(window, "No");
    XPWidgetID yes = FindByDescriptor(window, "Yes");
    ASSERT_NE(no, nullptr);
    ASSERT_NE(yes, nullptr);
    // Two columns of 185 pixels, each button stretched over its own.
    EXPECT_EQ(GeometryOf(yes).width(), 185);
    EXPECT_EQ(GeometryOf(no).left, GeometryOf(yes).left + 185);
    Click(no);
    EXPECT_EQ(gAnswers, (std::vector<int>{2}));
    EXPECT_TRUE(MainWindows().empty());
}

TEST_F(DialogTest, LongLinesWidenTheDialogAndEmptyTextIsOneLine) {
    const std::string line(80, 'x');
    HV_Dialog::Show("Wide", (line + ";short").c_str(), "OK", "Cancel", nullptr);
    XPWidgetID wide = OnlyWindow();
    ASSERT_NE(wide, nullptr);
    EXPECT_EQ(GeometryOf(wide).width(), 6 * 80 + 30);
    Click(FindByDescriptor(wide, "Cancel")); // no callback: closes all the same
    EXPECT_TRUE(MainWindows().empty());

    HV_Dialog::Show("Empty", "", "OK", nullptr, Remember);
    XPWidgetID empty = OnlyWindow();
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(Captions(empty), (std::vector<std::string>{""}));
    EXPECT_EQ(GeometryOf(empty).width(), 30);
    Click(FindByDescriptor(empty, "OK"));
    EXPECT_EQ(gAnswers, (std::vector<int>{1}));
}

class MessageTest : public ToolkitTest {
protected:
    void TearDown() override {
        HV_Message::Close();
        ToolkitTest::TearDown();
    }
    static HV_Message* Shown() {
        return gXPLMWindowID ? static_cast<HV_Message*>(XPLMGetWindowRefCon(gXPLMWindowID)) : nullptr;
    }
};

TEST_F(MessageTest, AMessageWindowShowsTheTextUntilItsTimeRunsOut) {
    HV_Message::Show("Push back requested", 3, 2);
    ASSERT_NE(gXPLMWindowID, nullptr);
    ASSERT_NE(Shown(), nullptr);
    EXPECT_STREQ(Shown()->text, "Push back requested");
    EXPECT_EQ(Shown()->type, 2);
    EXPECT_EQ(XPLMGetWindowIsVisible(gXPLMWindowID), 1);
    int left = 0, top = 0, right = 0, bottom = 0;
    XPLMGetWindowGeometry(gXPLMWindowID, &left, &top, &right, &bottom);
    EXPECT_EQ(left, 10);
    // Made with top 658 and bottom 688, the other way round; the host keeps its windows upright.
    EXPECT_EQ(top, 688);
    EXPECT_EQ(bottom, 658);
    EXPECT_EQ(right, 6 * 19 + 40);

    // Each frame the host draws the window; the frame is drawn here explicitly so that this
    // holds with and without rendering.
    host().runFor(1.0);
    HV_Message::MessageCallback(gXPLMWindowID, Shown());
    EXPECT_EQ(XPLMGetWindowIsVisible(gXPLMWindowID), 1);
    host().runFor(3.0);
    HV_Message::MessageCallback(gXPLMWindowID, Shown());
    EXPECT_EQ(XPLMGetWindowIsVisible(gXPLMWindowID), 0);
    EXPECT_NE(gXPLMWindowID, nullptr); // hidden, not gone
}

TEST_F(MessageTest, ASecondMessageReplacesTheFirstAtOnce) {
    HV_Message::Show("first", 30, 1);
    const size_t windowsWithOne = host().windows().size();
    HV_Message::Show("second", 30, 3);
    EXPECT_NE(gXPLMWindowID, nullptr);
    EXPECT_STREQ(Shown()->text, "second");
    EXPECT_EQ(host().windows().size(), windowsWithOne); // the first window was destroyed
}

TEST_F(MessageTest, TextsOverNinetyEightCharactersAreReplaced) {
    HV_Message::Show(std::string(98, 'a').c_str(), 5, 1);
    EXPECT_EQ(std::strlen(Shown()->text), 98u);
    HV_Message::Show(std::string(99, 'a').c_str(), 5, 1);
    EXPECT_STREQ(Shown()->text, "Text Too long [MAX 100 CHARACTERES]");
    HV_Message::Show(nullptr, 5, 1);
    EXPECT_STREQ(Shown()->text, "");
}

TEST_F(MessageTest, TheDrawCallbackFitsTheWidthToTheText) {
    HV_Message::Show("abc", 5, 1);
    HV_Message::MessageCallback(gXPLMWindowID, Shown());
    int left = 0, right = 0;
    XPLMGetWindowGeometry(gXPLMWindowID, &left, nullptr, &right, nullptr);
    EXPECT_EQ(right, left + 6 * 3 + 30);
}

} // namespace
