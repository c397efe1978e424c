// Windows: geometry, packing, centring, routing to the handler.
#include "ToolkitFixture.h"

using namespace toolkit_test;

namespace {

using WindowTest = ToolkitTest;

TEST_F(WindowTest, GeometryCentringMovingAndPacking) {
    HV_Window shown(nullptr, nullptr, 250, "Hello", true, true);
    EXPECT_EQ(GeometryOf(shown.widget), (Rect{50, 768, 300, 368}));
    EXPECT_EQ(simhost::widgetProperty(shown.widget, xpProperty_MainWindowHasCloseBoxes), 1);

    // Centred on a fixed 1024 x 768 screen, whatever the host's.
    HV_Window window(nullptr, nullptr, 200, "Move", false, true);
    auto* button = new HV_CtrlButton("Go", kAlignLeft, true, true);
    ASSERT_TRUE(window.AddChild(button));
    window.SetSize(300, 200);
    window.Center();
    EXPECT_EQ(GeometryOf(window.widget), (Rect{362, 484, 662, 284}));
    // Moving keeps the size and carries the controls along.
    const Rect buttonBefore = GeometryOf(button->widget);
    window.SetPosition(100, 600);
    EXPECT_EQ(GeometryOf(window.widget), (Rect{100, 600, 400, 400}));
    EXPECT_EQ(GeometryOf(button->widget).left - buttonBefore.left, 100 - 362);
    EXPECT_EQ(GeometryOf(button->widget).top - buttonBefore.top, 600 - 484);

    // Packing fits the height without moving the controls.
    HV_Window packed(nullptr, nullptr, 200, "Pack", false, true);
    auto* panel = new HV_Panel(nullptr, false, 0, nullptr, true, true);
    ASSERT_TRUE(packed.AddChild(panel));
    auto* text = new HV_CtrlText("line", kAlignLeft, true);
    ASSERT_TRUE(panel->AddChild(text, 0));
    const Rect textBefore = GeometryOf(text->widget);
    packed.Pack();
    // Root panel height = top - lowest bottom + margin; the window adds twice the margin and its
    // 22-pixel title bar.
    const int rootHeight = packed.rootPanel->top - packed.rootPanel->lowestBottom + packed.rootPanel->margeY;
    EXPECT_EQ(packed.rootPanel->bottom, rootHeight);
    EXPECT_EQ(GeometryOf(packed.widget), (Rect{50, 768, 250, 768 - rootHeight - 2 - 22}));
    EXPECT_EQ(GeometryOf(text->widget), textBefore);
    EXPECT_FALSE(packed.packing);
}

TEST_F(WindowTest, TheHandlerGetsEachPressedControlButNothingFromADisabledOne) {
    HV_Panel* panel = PanelInAWindow();
    auto* ok = new HV_CtrlButton("OK", kAlignLeft, true, true);
    auto* other = new HV_CtrlButton("Other", kAlignLeft, true, true);
    auto* off = new HV_CtrlButton("Off", kAlignLeft, false, true);
    for (HV_Panel* button : std::vector<HV_Panel*>{ok, other, off})
        ASSERT_TRUE(panel->AddChild(button, 0));
    Click(other->widget);
    Click(off->widget);
    Click(ok->widget);
    using Pressed = std::vector<std::pair<HV_Panel*, long>>;
    EXPECT_EQ(recorder.Of(xpMsg_PushButtonPressed), (Pressed{{other, 0}, {ok, 0}}));
    off->SetEnable(true);
    Click(off->widget);
    EXPECT_EQ(recorder.Of(xpMsg_PushButtonPressed).size(), 3u);
}

} // namespace
