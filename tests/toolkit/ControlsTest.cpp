// Controls: sizes, alignment, and what a user's clicks, keys and drags do to them.
#include <cstring>

#include "ToolkitFixture.h"
#include "toolkit/Controls.h"
#include "toolkit/Window.h"

using namespace toolkit_test;

namespace {

/// The state of a check box control when its message reached the window handler.
struct CheckSeen {
    std::vector<bool> states;
    std::vector<long> sliderValues;
    HV_CtrlSlider* slider = nullptr;
};

int CheckHandler(void* user, long message, HV_Panel* source, long, long) {
    auto* seen = static_cast<CheckSeen*>(user);
    if (message == xpMsg_ButtonStateChanged) {
        if (auto* box = dynamic_cast<HV_CtrlCheckBox*>(source)) seen->states.push_back(box->isChecked());
        if (auto* box = dynamic_cast<HV_CtrlButtonChkBox*>(source)) seen->states.push_back(box->isChecked());
    }
    if (message == xpMsg_ScrollBarSliderPositionChanged && source == seen->slider)
        seen->sliderValues.push_back(seen->slider->GetValue());
    return 0;
}

class Controls : public ToolkitTest {
protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        window = new HV_Window(&seen, CheckHandler, 300, "Controls", false, true);
        window->SetPositionSize(0, 768, 400, 400); // so that the spaces below lie inside it
    }
    void TearDown() override {
        delete window;
        ToolkitTest::TearDown();
    }
    /// A one-column panel of the window with its left edge at 10 and its right edge at 210:
    /// its children get the space [10 + 5, 210 - 5].
    HV_Panel* Space() {
        auto* panel = new HV_Panel(kHV_NoStyle, false, 0, nullptr, true, true);
        EXPECT_TRUE(window->AddChild(panel));
        panel->left = 5;
        panel->right = 215;
        return panel;
    }
    std::string TextOf(HV_CtrlText* text) {
        char buffer[64];
        text->GetText(buffer, sizeof buffer);
        return buffer;
    }
    CheckSeen seen;
    HV_Window* window = nullptr;
};

TEST_F(Controls, ButtonsAreSixPixelsPerCharacterPlusThirtyAndSeventeenHigh) {
    HV_CtrlButton ok("OK", kAlignLeft, true, true);
    EXPECT_EQ(ok.bottom, 17);
    EXPECT_EQ(ok.minHeight, 17);
    EXPECT_EQ(ok.maxHeight, 17);
    EXPECT_EQ(ok.minWidth, 42);
    EXPECT_EQ(HV_NaturalWidth("OK"), 42);
    HV_CtrlText text("Hello", kAlignLeft, true);
    EXPECT_EQ(text.bottom, 15);
    EXPECT_EQ(text.minWidth, 60);
}

TEST_F(Controls, AlignmentPlacesTheWidgetInTheSpaceGiven) {
    HV_Panel* panel = Space();
    auto* right = new HV_CtrlButton("OK", kAlignRight, true, true);
    auto* centre = new HV_CtrlButton("OK", kAlignCenter, true, true);
    auto* stretched = new HV_CtrlButton("OK", kAlignStretch, true, true);
    auto* left = new HV_CtrlButton("OK", kAlignLeft, true, true);
    for (HV_Panel* button : {static_cast<HV_Panel*>(right), static_cast<HV_Panel*>(centre),
                             static_cast<HV_Panel*>(stretched), static_cast<HV_Panel*>(left)})
        ASSERT_TRUE(panel->AddChild(button, 0));
    // The space is [10, 210]: 200 pixels starting at 10.
    const Rect r = GeometryOf(right->widget);
    EXPECT_EQ(r.left, 168);
    EXPECT_EQ(r.right, 210);
    EXPECT_EQ(r.top, right->top - 5);
    EXPECT_EQ(r.bottom, right->top - 17);
    EXPECT_EQ(GeometryOf(centre->widget).left, 110 - 21);
    EXPECT_EQ(GeometryOf(centre->widget).width(), 42);
    EXPECT_EQ(GeometryOf(stretched->widget).left, 10);
    EXPECT_EQ(GeometryOf(stretched->widget).right, 210);
    EXPECT_EQ(GeometryOf(left->widget).left, 10);
    EXPECT_EQ(GeometryOf(left->widget).right, 52);
}

TEST_F(Controls, CheckBoxStateIsUpToDateWhenTheHandlerSeesTheChange) {
    HV_Panel* panel = Space();
    auto* box = new HV_CtrlCheckBox("Draw truck", false, true, true);
    auto* toggle = new HV_CtrlButtonChkBox("Toggle", kAlignLeft, true, true, true);
    ASSERT_TRUE(panel->AddChild(box, 0));
    ASSERT_TRUE(panel->AddChild(toggle, 0));
    EXPECT_EQ(DescriptorOf(box->caption), "Draw truck");
    EXPECT_EQ(GeometryOf(box->caption).left, GeometryOf(box->widget).left + 18);

    Click(box->widget);
    Click(box->widget);
    Click(toggle->widget);
    EXPECT_EQ(seen.states, (std::vector<bool>{true, false, false}));
    EXPECT_FALSE(box->isChecked());
    EXPECT_FALSE(toggle->isChecked());

    box->SetCheck(true); // from the program: no message, the widget follows
    EXPECT_EQ(PropertyOf(box->widget, xpProperty_ButtonState), 1);
    EXPECT_EQ(seen.states.size(), 3u);
    Click(box->widget);
    EXPECT_FALSE(box->isChecked());
}

TEST_F(Controls, SliderValueCaptionIsZeroPaddedToTheMaximumsDigits) {
    HV_Panel* panel = Space();
    auto* hundred = new HV_CtrlSlider("Speed", 0, 100, 5, 10, true, true, true);
    auto* nine = new HV_CtrlSlider("Small", 0, 9, 5, 1, true, true, true);
    auto* negative = new HV_CtrlSlider("Signed", -50, -10, -20, 1, true, true, true);
    ASSERT_TRUE(panel->AddChild(hundred, 0));
    ASSERT_TRUE(panel->AddChild(nine, 0));
    ASSERT_TRUE(panel->AddChild(negative, 0));
    EXPECT_EQ(DescriptorOf(hundred->valueCaption), "005");
    EXPECT_EQ(DescriptorOf(nine->valueCaption), "5");
    EXPECT_EQ(DescriptorOf(negative->valueCaption), "-20");
    hundred->SetValue(7);
    EXPECT_EQ(DescriptorOf(hundred->valueCaption), "007");
    hundred->SetMaximum(1000);
    EXPECT_EQ(DescriptorOf(hundred->valueCaption), "0007");
    EXPECT_EQ(DescriptorOf(hundred->labelCaption), "Speed");
    EXPECT_EQ(PropertyOf(hundred->widget, xpProperty_ScrollBarType), xpScrollBarTypeSlider);
}

TEST_F(Controls, DraggingTheSliderUpdatesItsCaptionBeforeTheHandlerRuns) {
    HV_Panel* panel = Space();
    auto* slider = new HV_CtrlSlider("Speed", 0, 50, 0, 1, true, true, true);
    ASSERT_TRUE(panel->AddChild(slider, 0));
    seen.slider = slider;
    const Rect track = GeometryOf(slider->widget);
    host().mouseDown(track.left + 2, track.midY());
    host().mouseDrag(track.midX(), track.midY());
    host().mouseDrag(track.right + 40, track.midY()); // past the end: the maximum
    host().mouseUp(track.right + 40, track.midY());
    EXPECT_EQ(slider->GetValue(), 50);
    EXPECT_EQ(DescriptorOf(slider->valueCaption), "50");
    ASSERT_FALSE(seen.sliderValues.empty());
    EXPECT_EQ(seen.sliderValues.back(), 50);
}

TEST_F(Controls, TextBoxRefusesCharactersOutsideItsListButLetsEditingKeysThrough) {
    HV_Panel* panel = Space();
    auto* box = new HV_CtrlTextBox("Speed", "12", 10, false, "0123456789.", true, true);
    ASSERT_TRUE(panel->AddChild(box, 0));
    EXPECT_EQ(DescriptorOf(box->labelCaption), "Speed");
    EXPECT_LT(GeometryOf(box->labelCaption).right, GeometryOf(box->widget).left);
    Click(box->widget);
    XPSetWidgetProperty(box->widget, xpProperty_EditFieldSelStart, 2);
    XPSetWidgetProperty(box->widget, xpProperty_EditFieldSelEnd, 2);
    Type("3a.5");
    char text[32];
    box->GetText(text, sizeof text);
    EXPECT_STREQ(text, "123.5");
    Backspace();
    box->GetText(text, sizeof text);
    EXPECT_STREQ(text, "123.");
}

TEST_F(Controls, TextBoxWithoutAListTakesEveryCharacter) {
    HV_Panel* panel = Space();
    auto* box = new HV_CtrlTextBox("", "", 0, true, nullptr, true, true);
    ASSERT_TRUE(panel->AddChild(box, 0));
    EXPECT_EQ(box->labelCaption, nullptr);
    EXPECT_EQ(PropertyOf(box->widget, xpProperty_PasswordMode), 1);
    Click(box->widget);
    Type("Ab9");
    char text[32];
    box->GetText(text, sizeof text);
    EXPECT_STREQ(text, "Ab9");
}

TEST_F(Controls, SettersChangeTheWidgets) {
    HV_Panel* panel = Space();
    auto* text = new HV_CtrlText("first", kAlignLeft, true);
    auto* progress = new HV_CtrlProgress(0, 10, 3);
    ASSERT_TRUE(panel->AddChild(text, 0));
    ASSERT_TRUE(panel->AddChild(progress, 0));
    text->SetText("second");
    EXPECT_EQ(TextOf(text), "second");
    char small[4];
    text->GetText(small, sizeof small);
    EXPECT_STREQ(small, "sec"); // cut and terminated
    text->SetVisible(false);
    EXPECT_FALSE(XPIsWidgetVisible(text->widget));
    EXPECT_EQ(PropertyOf(progress->widget, xpProperty_ProgressMax), 10);
    progress->SetValue(7);
    EXPECT_EQ(PropertyOf(progress->widget, xpProperty_ProgressPosition), 7);
    progress->SetVisible(false);
    EXPECT_FALSE(progress->GetIsVisible());
    EXPECT_FALSE(XPIsWidgetVisible(progress->widget));
}

TEST_F(Controls, EveryWidgetOfAControlLeadsBackToIt) {
    HV_Panel* panel = Space();
    auto* slider = new HV_CtrlSlider("Speed", 0, 100, 5, 10, true, true, true);
    ASSERT_TRUE(panel->AddChild(slider, 0));
    EXPECT_EQ(HV_Panel::FromWidget(slider->widget), slider);
    EXPECT_EQ(HV_Panel::FromWidget(slider->labelCaption), slider);
    EXPECT_EQ(HV_Panel::FromWidget(slider->valueCaption), slider);
    slider->SetVisible(false);
    EXPECT_FALSE(XPIsWidgetVisible(slider->labelCaption));
    EXPECT_FALSE(XPIsWidgetVisible(slider->valueCaption));
}

} // namespace
