// Controls: sizes, alignment, and what a user's clicks, keys and drags do to them.
#include "ToolkitFixture.h"

using namespace toolkit_test;

namespace {

using Controls = ToolkitTest;

TEST_F(Controls, AlignmentSliderCaptionsAndTextBoxesAsAUserSeesThem) {
    // The window's panel with its left edge at 5 and its right edge at 215: its children get the space
    // [10, 210], inside the window.
    HV_Panel* panel = PanelInAWindow();
    window->SetPositionSize(0, 768, 400, 400);
    panel->left = 5;
    panel->right = 215;
    const struct {
        char align;
        int left, right;
    } cases[] = {{kAlignRight, 168, 210},
                 {kAlignCenter, 110 - 21, 110 + 21},
                 {kAlignStretch, 10, 210},
                 {kAlignLeft, 10, 52}};
    for (const auto& c : cases) {
        SCOPED_TRACE(int(c.align));
        auto* button = new HV_CtrlButton("OK", c.align, true, true); // 6 pixels a character + 30
        ASSERT_TRUE(panel->AddChild(button, 0));
        EXPECT_EQ(GeometryOf(button->widget), (Rect{c.left, button->top - 5, c.right, button->top - 17}));
    }

    // A slider's value caption is zero-padded to the maximum's digits and follows a drag before the
    // handler runs.
    auto* hundred = new HV_CtrlSlider("Speed", 0, 100, 5, 10, true, true, true);
    auto* nine = new HV_CtrlSlider("Small", 0, 9, 5, 1, true, true, true);
    auto* negative = new HV_CtrlSlider("Signed", -50, -10, -20, 1, true, true, true);
    for (HV_Panel* slider : std::vector<HV_Panel*>{hundred, nine, negative})
        ASSERT_TRUE(panel->AddChild(slider, 0));
    EXPECT_EQ(DescriptorOf(hundred->valueCaption), "005");
    EXPECT_EQ(DescriptorOf(nine->valueCaption), "5");
    EXPECT_EQ(DescriptorOf(negative->valueCaption), "-20");
    hundred->SetValue(7);
    EXPECT_EQ(DescriptorOf(hundred->valueCaption), "007");
    hundred->SetMaximum(1000);
    EXPECT_EQ(DescriptorOf(hundred->valueCaption), "0007");

    std::vector<std::string> captionsSeen;
    recorder.onMessage = [&](const Heard& h) {
        if (h.message == xpMsg_ScrollBarSliderPositionChanged && h.source == nine)
            captionsSeen.push_back(DescriptorOf(nine->valueCaption));
    };
    nine->SetValue(0); // the thumb at the left end, where the drag starts
    const Rect track = GeometryOf(nine->widget);
    host().mouseDown(track.left + 2, track.midY());
    host().mouseDrag(track.midX(), track.midY());
    host().mouseDrag(track.right + 40, track.midY()); // past the end: the maximum
    host().mouseUp(track.right + 40, track.midY());
    EXPECT_EQ(nine->GetValue(), 9);
    ASSERT_FALSE(captionsSeen.empty());
    EXPECT_EQ(captionsSeen.back(), "9");

    // A text box refuses characters outside its list but lets editing keys through.
    auto* digits = new HV_CtrlTextBox("Speed", "12", 10, false, "0123456789.", true, true);
    auto* free = new HV_CtrlTextBox("", "", 0, true, nullptr, true, true);
    ASSERT_TRUE(panel->AddChild(digits, 0));
    ASSERT_TRUE(panel->AddChild(free, 0));
    EXPECT_LT(GeometryOf(digits->labelCaption).right, GeometryOf(digits->widget).left);
    EXPECT_EQ(free->labelCaption, nullptr);
    EXPECT_EQ(simhost::widgetProperty(free->widget, xpProperty_PasswordMode), 1);
    const auto textOf = [](HV_CtrlTextBox* box) {
        char text[32];
        box->GetText(text, sizeof text);
        return std::string(text);
    };
    ASSERT_TRUE(simhost::typeInto(host(), digits->widget, "3a.5"));
    EXPECT_EQ(textOf(digits), "123.5");
    host().pressKey(XPLM_VK_BACK, 0, XPLM_KEY_DELETE);
    EXPECT_EQ(textOf(digits), "123.");
    ASSERT_TRUE(simhost::typeInto(host(), free->widget, "Ab9"));
    EXPECT_EQ(textOf(free), "Ab9");
}

} // namespace
