// Panels: placement of children in columns, auto height, the child-bottom message.
#include "ToolkitFixture.h"

using namespace toolkit_test;

namespace {

constexpr int kMargin = 5; // a panel's default margin, pixels

/// A panel with a fixed height of `height` pixels, for layout arithmetic.
HV_Panel* Block(int height) {
    auto* block = new HV_Panel(kHV_NoStyle, false, 0, nullptr, true, true);
    block->bottom = block->minHeight = block->maxHeight = height;
    return block;
}

class PanelLayout : public ToolkitTest {
protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        window = new HV_Window(nullptr, nullptr, 300, "Layout", true, true);
    }
    /// An auto-height panel placed in the window.
    HV_Panel* AddPanel(int columns = 1) {
        auto* panel = new HV_Panel(nullptr, false, 0, nullptr, true, true);
        panel->SetNumberOfColumn(static_cast<char>(columns));
        EXPECT_TRUE(window->AddChild(panel));
        return panel;
    }
};

TEST_F(PanelLayout, ChildrenStackDownwardsColumnsPlaceThemAndAutoHeightFollowsTheTallest) {
    auto* panel = new HV_Panel(nullptr, true, 0, nullptr, true, true);
    panel->SetPosition(10, 700);
    panel->SetSize(400, 300);
    panel->SetNumberOfColumn(2);
    panel->SetColumnWidth(1, 120);
    ASSERT_TRUE(window->AddChild(panel));
    panel->left = 10; // AddChild placed it; the arithmetic below starts from here
    const int top = panel->top;
    HV_Panel* first = Block(20);
    HV_Panel* second = Block(30);
    HV_Panel* right = Block(20);
    ASSERT_TRUE(panel->AddChild(first, 0));
    ASSERT_TRUE(panel->AddChild(second, 0));
    ASSERT_TRUE(panel->AddChild(right, 1));
    EXPECT_EQ(first->top, top - kMargin);
    EXPECT_EQ(second->top, top - kMargin - (20 + kMargin));
    EXPECT_EQ(first->left, 10 + kMargin); // no column width: left + margin x (column + 1)
    EXPECT_EQ(first->right, panel->right - kMargin);
    EXPECT_EQ(right->left, 10 + 120 + kMargin);
    EXPECT_EQ(right->right, 10 + 120 + 120 + kMargin);
    EXPECT_EQ(right->top, top - kMargin);
    // Slots are read with index and column exchanged.
    EXPECT_EQ(panel->GetChildByIndex(0, 1), second);
    EXPECT_EQ(panel->GetChildByIndex(1, 0), right);
    EXPECT_EQ(panel->GetChildByIndex(2, 0), nullptr);

    // An auto-height panel follows its tallest column.
    HV_Panel* autoHeight = AddPanel(2);
    ASSERT_TRUE(autoHeight->AddChild(Block(20), 0));
    ASSERT_TRUE(autoHeight->AddChild(Block(30), 0));
    EXPECT_EQ(autoHeight->bottom, -(5 + 20 + 5 + 30 + 5) - kMargin);
    EXPECT_EQ(GeometryOf(autoHeight->widget).top, autoHeight->top - kMargin);
    EXPECT_EQ(GeometryOf(autoHeight->widget).bottom, autoHeight->top - (5 + 20 + 5 + 30 + 5));
    ASSERT_TRUE(autoHeight->AddChild(Block(80), 1)); // the taller column decides
    EXPECT_EQ(autoHeight->bottom, -(5 + 80 + 5) - kMargin);

    auto* inner = new HV_Panel(nullptr, false, 0, nullptr, true, true);
    HV_Panel* outer = AddPanel();
    ASSERT_TRUE(outer->AddChild(inner, 0));
    ASSERT_TRUE(inner->AddChild(Block(40), 0));
    // The inner panel sent its new lowest edge up: the outer panel and the root panel keep it.
    EXPECT_EQ(outer->lowestBottom, inner->bottom + inner->top - inner->margeY);
    EXPECT_EQ(GeometryOf(outer->widget).bottom, outer->lowestBottom);
    EXPECT_EQ(window->rootPanel->lowestBottom, outer->lowestBottom);
    const int lowest = outer->lowestBottom; // a higher edge later does not raise it again
    EXPECT_EQ(outer->Event(kHV_MsgChildBottomMoved, nullptr, lowest + 50, 0), 0);
    EXPECT_EQ(outer->lowestBottom, lowest);
}

} // namespace
