// Panels: placement of children in columns, auto height, the child-bottom message, bounds.
#include "ToolkitFixture.h"
#include "toolkit/Controls.h"
#include "toolkit/PanelStyle.h"
#include "toolkit/Window.h"

using namespace toolkit_test;

namespace {

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
    void TearDown() override {
        delete window;
        ToolkitTest::TearDown();
    }
    /// An auto-height panel placed in the window.
    HV_Panel* AddPanel(int columns = 1) {
        auto* panel = new HV_Panel(nullptr, false, 0, nullptr, true, true);
        panel->SetNumberOfColumn(static_cast<char>(columns));
        EXPECT_TRUE(window->AddChild(panel));
        return panel;
    }
    HV_Window* window = nullptr;
};

TEST_F(PanelLayout, ColumnAcceptsNinetyNineChildrenAndRefusesTheHundredth) {
    HV_Panel* panel = AddPanel();
    for (int i = 0; i < 99; ++i)
        ASSERT_TRUE(panel->AddChild(Block(1), 0)) << "child " << i;
    HV_Panel* extra = Block(1);
    EXPECT_FALSE(panel->AddChild(extra, 0));
    EXPECT_EQ(panel->CountChild(0), 99);
    delete extra; // refused: still ours
}

TEST_F(PanelLayout, ColumnsOutsideTheCountAreRefused) {
    HV_Panel* panel = AddPanel(2);
    HV_Panel* child = Block(10);
    EXPECT_FALSE(panel->AddChild(child, 3));
    EXPECT_FALSE(panel->AddChild(child, -1));
    EXPECT_EQ(panel->CountChild(3), 0);
    EXPECT_TRUE(panel->AddChild(child, 1));
    EXPECT_EQ(panel->CountChild(1), 1);
}

TEST_F(PanelLayout, ChildrenStackDownwardsAndColumnWidthsPlaceThem) {
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

    EXPECT_EQ(first->top, top - 5);
    EXPECT_EQ(second->top, top - 5 - (20 + 5));
    EXPECT_EQ(first->left, 10 + 5); // no column width: left + margeX x (column + 1)
    EXPECT_EQ(first->right, panel->right - 5);
    EXPECT_EQ(right->left, 10 + 120 + 5);
    EXPECT_EQ(right->right, 10 + 120 + 120 + 5);
    EXPECT_EQ(right->top, top - 5);
}

TEST_F(PanelLayout, AutoHeightPanelTakesTheHeightOfItsChildren) {
    HV_Panel* panel = AddPanel();
    ASSERT_TRUE(panel->AddChild(Block(20), 0));
    ASSERT_TRUE(panel->AddChild(Block(30), 0));
    // Lowest point -(5 + 20 + 5 + 30 + 5) under the top, then the panel's own margin.
    EXPECT_EQ(panel->bottom, -(5 + 20 + 5 + 30 + 5) - 5);
    const Rect r = GeometryOf(panel->widget);
    EXPECT_EQ(r.top, panel->top - 5);
    EXPECT_EQ(r.bottom, panel->top - (5 + 20 + 5 + 30 + 5));
}

TEST_F(PanelLayout, AWideColumnDecidesTheHeight) {
    HV_Panel* panel = AddPanel(2);
    ASSERT_TRUE(panel->AddChild(Block(20), 0));
    ASSERT_TRUE(panel->AddChild(Block(80), 1));
    EXPECT_EQ(panel->bottom, -(5 + 80 + 5) - 5);
}

TEST_F(PanelLayout, NestedPanelsReportTheirBottomToTheHoldingPanel) {
    HV_Panel* outer = AddPanel();
    auto* inner = new HV_Panel(nullptr, false, 0, nullptr, true, true);
    ASSERT_TRUE(outer->AddChild(inner, 0));
    ASSERT_TRUE(inner->AddChild(Block(40), 0));
    // The inner panel sent 12104 with its new lowest edge: the outer panel keeps it.
    EXPECT_EQ(outer->lowestBottom, inner->bottom + inner->top - inner->margeY);
    EXPECT_EQ(GeometryOf(outer->widget).bottom, outer->lowestBottom);
    // The root panel heard it through the outer panel.
    EXPECT_EQ(window->rootPanel->lowestBottom, outer->lowestBottom);
    // A higher edge later does not raise it again.
    const int lowest = outer->lowestBottom;
    EXPECT_EQ(outer->Event(kHV_MsgChildBottomMoved, nullptr, lowest + 50, 0), 0);
    EXPECT_EQ(outer->lowestBottom, lowest);
}

TEST_F(PanelLayout, GetChildByIndexReadsTheTableWithIndexAndColumnExchanged) {
    HV_Panel* panel = AddPanel(3);
    HV_Panel* c0a = Block(10);
    HV_Panel* c0b = Block(10);
    HV_Panel* c1a = Block(10);
    HV_Panel* c1b = Block(10);
    ASSERT_TRUE(panel->AddChild(c0a, 0));
    ASSERT_TRUE(panel->AddChild(c0b, 0));
    ASSERT_TRUE(panel->AddChild(c1a, 1));
    ASSERT_TRUE(panel->AddChild(c1b, 1));
    EXPECT_EQ(panel->GetChildByIndex(0, 0), c0a);
    EXPECT_EQ(panel->GetChildByIndex(1, 1), c1b);
    EXPECT_EQ(panel->GetChildByIndex(0, 1), c0b); // slot 1 of column 0
    EXPECT_EQ(panel->GetChildByIndex(1, 0), c1a); // slot 0 of column 1
    EXPECT_EQ(panel->GetChildByIndex(2, 0), nullptr);
    EXPECT_EQ(panel->GetChildByIndex(0, 2), nullptr);
}

TEST_F(PanelLayout, ANamedPanelIsAFramedSubWindowWithItsTitleAbove) {
    auto* framed = new HV_Panel(nullptr, false, 0, "Options", true, true);
    ASSERT_TRUE(window->AddChild(framed));
    const int topBefore = window->rootPanel->top - window->rootPanel->margeY;
    EXPECT_EQ(framed->top, topBefore - 11); // children start under the title line
    XPWidgetID title = FindByDescriptor(window->widget, "Options");
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(GeometryOf(title).left, framed->left + 5);
    EXPECT_EQ(GeometryOf(title).width(), 6 * 7);
    EXPECT_EQ(GeometryOf(title).top, topBefore - 5);
    EXPECT_EQ(HV_Panel::FromWidget(framed->widget), framed);
    std::vector<XPWidgetID> subWindows = WidgetsOfClass(window->widget, xpWidgetClass_SubWindow);
    ASSERT_EQ(subWindows.size(), 1u);
    EXPECT_EQ(subWindows[0], framed->widget);
    HV_Panel* child = Block(20);
    ASSERT_TRUE(framed->AddChild(child, 0));
    EXPECT_EQ(child->top, framed->top - 5);
}

TEST(PanelBounds, SetSizeAndSetPositionIgnoreValuesOutsideTheBounds) {
    HV_Panel fixed(kHV_NoStyle, true, 0, nullptr, true, true);
    fixed.SetSize(200, 100);
    EXPECT_EQ(fixed.right, 200);
    EXPECT_EQ(fixed.bottom, 100);
    fixed.SetSize(5, 20000); // both outside [10, 9999]
    EXPECT_EQ(fixed.right, 200);
    EXPECT_EQ(fixed.bottom, 100);
    fixed.SetPosition(3, 500);
    EXPECT_EQ(fixed.left, 0);
    EXPECT_EQ(fixed.top, 500);

    HV_Panel automatic(kHV_NoStyle, false, 0, nullptr, true, true);
    automatic.SetSize(200, 100);
    EXPECT_EQ(automatic.right, 200);
    EXPECT_EQ(automatic.bottom, 0); // follows the children only
}

TEST(PanelBounds, ColumnCountAndWidthsStayInTheirRange) {
    HV_Panel panel(kHV_NoStyle, false, 0, nullptr, true, true);
    panel.SetNumberOfColumn(40);
    EXPECT_EQ(panel.numberOfColumns, HV_Panel::kMaxColumns);
    panel.SetNumberOfColumn(0);
    EXPECT_EQ(panel.numberOfColumns, 1);
    panel.SetColumnWidth(1, 50); // column 1 of a one-column panel
    EXPECT_EQ(panel.columnWidth[1], 0);
    panel.SetColumnWidth(0, 50);
    EXPECT_EQ(panel.columnWidth[0], 50);
}

TEST(PanelStyles, FactoriesGiveTheirColoursAndWidths) {
    std::unique_ptr<HV_PanelStyle> up(Style_Up(1.5f));
    EXPECT_FLOAT_EQ(up->backAlpha, 0.1f);
    EXPECT_FLOAT_EQ(up->border1Color[0], 1.0f); // white top-left: raised
    EXPECT_FLOAT_EQ(up->border2Color[0], 0.3f);
    EXPECT_FLOAT_EQ(up->border1Width, 1.5f);
    std::unique_ptr<HV_PanelStyle> down(Style_Down(2.0f));
    EXPECT_FLOAT_EQ(down->border1Color[0], 0.3f); // grey top-left: sunken
    EXPECT_FLOAT_EQ(down->border2Color[0], 1.0f);
    std::unique_ptr<HV_PanelStyle> classic(Style_ClassicNoBorder());
    EXPECT_FLOAT_EQ(classic->border1Width, 0.0f);
    EXPECT_FLOAT_EQ(classic->borderAlpha, 0.2f);
    const float teal[3] = {0.0f, 0.5f, 0.5f};
    std::unique_ptr<HV_PanelStyle> boxed(Style_BorderBack(3.0f, teal, teal, 0.9f));
    EXPECT_EQ(boxed->backColor, teal);
    EXPECT_FLOAT_EQ(boxed->backAlpha, 0.9f);
    EXPECT_FLOAT_EQ(boxed->borderAlpha, 1.0f);
    std::unique_ptr<HV_PanelStyle> nothing(Style_Nothing());
    EXPECT_FLOAT_EQ(nothing->backAlpha + nothing->borderAlpha + nothing->border1Width + nothing->border2Width,
                    0.0f);
}

TEST(PanelStyles, ANullStyleGetsTheClassicOne) {
    HV_Panel panel(nullptr, false, 0, nullptr, true, true);
    ASSERT_NE(panel.style, nullptr);
    ASSERT_NE(panel.style, kHV_NoStyle);
    EXPECT_FLOAT_EQ(panel.style->border1Width, 2.0f);
    EXPECT_FLOAT_EQ(panel.style->borderAlpha, 0.2f);
}

} // namespace
