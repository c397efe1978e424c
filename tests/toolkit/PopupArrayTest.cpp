// Popup control and array control, driven by clicks.
#include "ToolkitFixture.h"
#include "toolkit/CtrlArray.h"
#include "toolkit/PopupMenu.h"

using namespace toolkit_test;

namespace {

using Picks = std::vector<std::pair<HV_Panel*, long>>;

class PopupArray : public ToolkitTest {
protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        panel = PanelInAWindow();
    }
    void TearDown() override {
        XSBPopupCleanup();
        ToolkitTest::TearDown();
    }
    /// Clicks line `line` of the open popup menu.
    void ClickMenuLine(int line) {
        int l = 0, t = 0, r = 0, b = 0;
        ASSERT_TRUE(XSBPopupListGeometry(&l, &t, &r, &b));
        host().click((l + r) / 2, t - line * kXSBPopupLineHeight - kXSBPopupLineHeight / 2);
    }
    /// Clicks row `row` of a table (it must be shown).
    void ClickRow(HV_CtrlArray* table, int row) {
        int l = 0, t = 0, r = 0, b = 0;
        ASSERT_TRUE(table->GetRowGeometry(row, &l, &t, &r, &b)) << "row " << row << " not shown";
        host().click((l + r) / 2, (t + b) / 2);
    }
    HV_Panel* panel = nullptr;
};

TEST_F(PopupArray, PickingALineSelectsItAClickElsewhereChangesNothingAndBadListsAreCut) {
    auto* popup = new HV_CtrlPopup("Truck", "Small;Medium;Large", 0, true, true);
    ASSERT_TRUE(panel->AddChild(popup, 0));
    Click(popup->widget);
    ASSERT_TRUE(XSBPopupIsOpen());
    host().click(1000, 10);
    EXPECT_FALSE(XSBPopupIsOpen());
    EXPECT_TRUE(recorder.Of(kXSBMsg_PopupItemPicked).empty());

    Click(popup->widget);
    ClickMenuLine(2);
    EXPECT_FALSE(XSBPopupIsOpen());
    char selected[64];
    popup->GetSelectedString(selected, sizeof selected);
    EXPECT_STREQ(selected, "Large");
    EXPECT_EQ(recorder.Of(kXSBMsg_PopupItemPicked), (Picks{{popup, 2}}));

    // Long items are cut to the caller's buffer, and lists beyond the maximum too.
    char out[8];
    EXPECT_TRUE(XSBGetPopupItem("a;verylongitem", 1, out, sizeof out));
    EXPECT_STREQ(out, "verylon");
    EXPECT_FALSE(XSBGetPopupItem("a;b", 2, out, sizeof out));
    EXPECT_STREQ(out, "");
    std::string many;
    for (int i = 0; i < kXSBMaxPopupItems + 50; ++i)
        many += "x;";
    EXPECT_EQ(XSBCountPopupItems(many.c_str()), kXSBMaxPopupItems);
}

TEST_F(PopupArray, ClickingARowSelectsItMoreRowsThanFitScrollAndFewerHideTheScrollBar) {
    auto* table = new HV_CtrlArray(2, 3, true, true); // three rows high
    table->SetColumn(0, "Name", 150);
    table->SetColumn(1, "Size", 60);
    table->SetRowCount(10);
    for (int i = 0; i < 10; ++i)
        table->SetCellText(i, 0, ("row " + std::to_string(i)).c_str());
    ASSERT_TRUE(panel->AddChild(table, 0));
    ASSERT_TRUE(XPIsWidgetVisible(table->scrollBar));
    ClickRow(table, 1);
    const Rect r = GeometryOf(table->widget);
    host().click(r.midX(), r.top - 3); // the header selects nothing
    EXPECT_FALSE(table->GetRowGeometry(5, nullptr, nullptr, nullptr, nullptr));
    // Scrolled down by the user through the scroll bar's lower end.
    const Rect bar = GeometryOf(table->scrollBar);
    for (int i = 0; i < 20 && table->GetFirstVisibleRow() < 7; ++i)
        host().click(bar.midX(), bar.bottom + 3);
    EXPECT_EQ(table->GetFirstVisibleRow(), 7);
    ClickRow(table, 9);
    EXPECT_EQ(table->GetSelectedRow(), 9);
    EXPECT_EQ(recorder.Of(kHV_MsgArrayRowSelected), (Picks{{table, 1}, {table, 9}}));
    host().scroll(r.midX(), r.midY(), 10); // the wheel scrolls back up
    EXPECT_EQ(table->GetFirstVisibleRow(), 0);

    table->SetSelectedRow(8);
    EXPECT_EQ(table->GetSelectedRow(), 8);
    EXPECT_LE(table->GetFirstVisibleRow(), 8);
    EXPECT_GT(table->GetFirstVisibleRow() + table->visibleRows, 8); // scrolled into view
    table->SetRowCount(3);                                          // all rows fit again
    EXPECT_EQ(table->GetSelectedRow(), -1);
    EXPECT_FALSE(XPIsWidgetVisible(table->scrollBar));
    table->SetCellText(99, 0, "nowhere");
    table->SetCellText(0, 5, "nowhere");
    char cell[16];
    table->GetCellText(99, 0, cell, sizeof cell);
    EXPECT_STREQ(cell, "");
    table->SetRowCount(HV_CtrlArray::kMaxRows + 5);
    EXPECT_EQ(table->GetRowCount(), HV_CtrlArray::kMaxRows);
}

} // namespace
