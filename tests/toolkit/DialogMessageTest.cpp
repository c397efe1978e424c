// The ready-made dialog and the timed message.
#include "ToolkitFixture.h"
#include "toolkit/Dialog.h"

using namespace toolkit_test;

namespace {

constexpr int kCharWidth = 6; // pixels a character of the dialog font

std::vector<int> gAnswers;
void Remember(int button) {
    gAnswers.push_back(button);
}

class DialogTest : public ToolkitTest {
protected:
    void TearDown() override {
        HV_Message::Close();
        ToolkitTest::TearDown();
    }
    /// The one main window shown now.
    static XPWidgetID OnlyWindow() {
        const std::vector<XPWidgetID> windows = MainWindows();
        EXPECT_EQ(windows.size(), 1u);
        return windows.empty() ? nullptr : windows.front();
    }
    static HV_Message* Shown() {
        return gXPLMWindowID ? static_cast<HV_Message*>(XPLMGetWindowRefCon(gXPLMWindowID)) : nullptr;
    }
};

TEST_F(DialogTest, DialogsCentreTheirLinesWidenForTwoButtonsOrLongLinesAndAnswerTheButton) {
    gAnswers.clear();
    HV_Dialog::Show("Title", "Line one;Line two", "OK", nullptr, Remember);
    XPWidgetID window = OnlyWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(DescriptorOf(window), "Title");
    EXPECT_EQ(simhost::widgetProperty(window, xpProperty_MainWindowHasCloseBoxes), 0);
    std::vector<std::string> lines;
    for (XPWidgetID w : WidgetsOfClass(window, xpWidgetClass_Caption))
        lines.push_back(DescriptorOf(w));
    EXPECT_EQ(lines, (std::vector<std::string>{"Line one", "Line two"}));
    EXPECT_EQ(WidgetsOfClass(window, xpWidgetClass_Button).size(), 1u);
    const Rect frame = GeometryOf(window);
    EXPECT_EQ(frame, (Rect{512 - 39, 568, 512 + 39, frame.bottom})); // 6 x 8 + 30 wide, centred
    Click(simhost::findWidget("OK", window));
    EXPECT_EQ(gAnswers, (std::vector<int>{1}));
    EXPECT_TRUE(simhost::findWidgets([](const simhost::WidgetInfo&) { return true; }).empty());

    HV_Dialog::Show("Question", "Go?", "Yes", "No", Remember);
    window = OnlyWindow();
    EXPECT_EQ(GeometryOf(window).width(), kCharWidth * 61 + 30); // two buttons: at least 61 characters
    XPWidgetID yes = simhost::findWidget("Yes", window), no = simhost::findWidget("No", window);
    ASSERT_NE(no, nullptr);
    ASSERT_NE(yes, nullptr);
    EXPECT_EQ(GeometryOf(yes).width(), 185); // two columns, each button stretched over its own
    EXPECT_EQ(GeometryOf(no).left, GeometryOf(yes).left + 185);
    Click(no);
    EXPECT_EQ(gAnswers, (std::vector<int>{1, 2}));
    EXPECT_TRUE(MainWindows().empty());

    HV_Dialog::Show("Wide", (std::string(80, 'x') + ";short").c_str(), "OK", "Cancel", nullptr);
    EXPECT_EQ(GeometryOf(OnlyWindow()).width(), kCharWidth * 80 + 30);
    Click(simhost::findWidget("Cancel", OnlyWindow())); // no callback: closes all the same
    EXPECT_TRUE(MainWindows().empty());
}

TEST_F(DialogTest, AMessageShowsUntilItsTimeRunsOutAndTheNextReplacesIt) {
    HV_Message::Show("Push back requested", 3, 2);
    ASSERT_NE(Shown(), nullptr);
    EXPECT_STREQ(Shown()->text, "Push back requested");
    int left = 0, top = 0, right = 0, bottom = 0;
    XPLMGetWindowGeometry(gXPLMWindowID, &left, &top, &right, &bottom);
    // Made with top 658 and bottom 688, the other way round; the host keeps its windows upright.
    EXPECT_EQ((Rect{left, top, right, bottom}), (Rect{10, 688, kCharWidth * 19 + 40, 658}));
    // The draw callback fits the width to the text and hides the window once the time is up; it is
    // called here explicitly so that this holds with and without rendering.
    host().runFor(1.0);
    HV_Message::MessageCallback(gXPLMWindowID, Shown());
    XPLMGetWindowGeometry(gXPLMWindowID, &left, nullptr, &right, nullptr);
    EXPECT_EQ(right, left + kCharWidth * 19 + 30);
    EXPECT_EQ(XPLMGetWindowIsVisible(gXPLMWindowID), 1);
    host().runFor(3.0);
    HV_Message::MessageCallback(gXPLMWindowID, Shown());
    EXPECT_EQ(XPLMGetWindowIsVisible(gXPLMWindowID), 0);

    const size_t windowsWithOne = host().windows().size();
    HV_Message::Show("second", 30, 3);
    EXPECT_STREQ(Shown()->text, "second");
    EXPECT_EQ(host().windows().size(), windowsWithOne); // the first window was destroyed
    HV_Message::Show(std::string(98, 'a').c_str(), 5, 1);
    EXPECT_EQ(std::strlen(Shown()->text), 98u);
    HV_Message::Show(std::string(99, 'a').c_str(), 5, 1);
    EXPECT_STREQ(Shown()->text, "Text Too long [MAX 100 CHARACTERES]");
    HV_Message::Show(nullptr, 5, 1);
    EXPECT_STREQ(Shown()->text, "");
}

} // namespace
