// Popup control and array control, driven by clicks.
#include "ToolkitFixture.h"
#include "toolkit/Controls.h"
#include "toolkit/CtrlArray.h"
#include "toolkit/PopupMenu.h"
#include "toolkit/Window.h"

using namespace toolkit_test;

namespace {

/// Picks and selections the window handler received: (source, param2).
struct Picks {
    std::vector<std::pair<HV_Panel*, long>> popup;
    std::vector<std::pair<HV_Panel*, long>> rows;
};

int PickHandler(void* user, long message, HV_Panel* source, long, long param2) {
    auto* picks = static_cast<Picks*>(user);
    if (message == kXSBMsg_PopupItemPicked) picks->popup.emplace_back(source, param2);
    if (message == kHV_MsgArrayRowSelected) picks->rows.emplace_back(source, param2);
    return 0;
}

class PopupArray : public ToolkitTest {
protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        window = new HV_Window(&picks, PickHandler, 400, "Lists", false, true);
        panel = new HV_Panel(kHV_NoStyle, false, 0, nullptr, true, true);
        ASSERT_TRUE(window->AddChild(panel));
    }
    void TearDown() override {
        delete window;
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
    std::string Selected(HV_CtrlPopup* popup) {
        char text[64];
        popup->GetSelectedString(text, sizeof text);
        return text;
    }
    Picks picks;
    HV_Window* window = nullptr;
    HV_Panel* panel = nullptr;
};

TEST_F(PopupArray, PickingALineSelectsItAndTellsTheHandler) {
    auto* popup = new HV_CtrlPopup("Truck", "Small;Medium;Large", 0, true, true);
    ASSERT_TRUE(panel->AddChild(popup, 0));
    EXPECT_EQ(popup->bottom, 18);
    EXPECT_EQ(DescriptorOf(popup->labelCaption), "Truck");
    EXPECT_EQ(Selected(popup), "Small");

    Click(popup->widget);
    ASSERT_TRUE(XSBPopupIsOpen());
    int l = 0, t = 0, r = 0, b = 0;
    ASSERT_TRUE(XSBPopupListGeometry(&l, &t, &r, &b));
    EXPECT_EQ(t, GeometryOf(popup->widget).bottom); // right under the button
    EXPECT_EQ(t - b, 3 * kXSBPopupLineHeight);

    ClickMenuLine(2);
    EXPECT_FALSE(XSBPopupIsOpen());
    EXPECT_EQ(popup->GetSelectedLine(), 2);
    EXPECT_EQ(Selected(popup), "Large");
    ASSERT_EQ(picks.popup.size(), 1u);
    EXPECT_EQ(picks.popup[0].first, popup);
    EXPECT_EQ(picks.popup[0].second, 2);
}

TEST_F(PopupArray, AClickOutsideTheMenuClosesItWithoutChange) {
    auto* popup = new HV_CtrlPopup("", "One;Two", 1, true, true);
    ASSERT_TRUE(panel->AddChild(popup, 0));
    EXPECT_EQ(popup->labelCaption, nullptr);
    Click(popup->widget);
    ASSERT_TRUE(XSBPopupIsOpen());
    host().click(1000, 10);
    EXPECT_FALSE(XSBPopupIsOpen());
    EXPECT_EQ(popup->GetSelectedLine(), 1);
    EXPECT_TRUE(picks.popup.empty());
    // Reopened, it still works.
    Click(popup->widget);
    ClickMenuLine(0);
    EXPECT_EQ(Selected(popup), "One");
}

TEST_F(PopupArray, ADisabledPopupDoesNotOpen) {
    auto* popup = new HV_CtrlPopup("Mode", "A;B", 0, false, true);
    ASSERT_TRUE(panel->AddChild(popup, 0));
    Click(popup->widget);
    EXPECT_FALSE(XSBPopupIsOpen());
    popup->SetEnable(true);
    Click(popup->widget);
    EXPECT_TRUE(XSBPopupIsOpen());
}

TEST_F(PopupArray, SettersKeepLineListAndStringInAgreement) {
    auto* popup = new HV_CtrlPopup("Gear", "Front;Rear;Auto", 7, true, true);
    EXPECT_EQ(popup->selected, 0); // out of the list: the first line
    ASSERT_TRUE(panel->AddChild(popup, 0));
    popup->SetSelectedLine(1);
    EXPECT_EQ(Selected(popup), "Rear");
    popup->SetSelectedLine(3); // no such line
    EXPECT_EQ(popup->GetSelectedLine(), 1);
    popup->SetStringList("North;South;East;West");
    EXPECT_STREQ(popup->GetStringList(), "North;South;East;West");
    EXPECT_EQ(Selected(popup), "South");
    popup->SetStringList("Only");
    EXPECT_EQ(popup->GetSelectedLine(), 0);
    EXPECT_EQ(Selected(popup), "Only");
}

TEST(PopupItems, ListsSplitAtSemicolons) {
    char out[8];
    EXPECT_EQ(XSBCountPopupItems("a;b;c"), 3);
    EXPECT_EQ(XSBCountPopupItems(""), 1);
    EXPECT_EQ(XSBCountPopupItems("a;"), 2);
    EXPECT_TRUE(XSBGetPopupItem("alpha;beta", 1, out, sizeof out));
    EXPECT_STREQ(out, "beta");
    EXPECT_TRUE(XSBGetPopupItem("a;verylongitem", 1, out, sizeof out));
    EXPECT_STREQ(out, "verylon");
    EXPECT_FALSE(XSBGetPopupItem("a;b", 2, out, sizeof out));
    EXPECT_STREQ(out, "");
    std::string many;
    for (int i = 0; i < kXSBMaxPopupItems + 50; ++i)
        many += "x;";
    EXPECT_EQ(XSBCountPopupItems(many.c_str()), kXSBMaxPopupItems);
}

/// A three-row-high table of `rows` rows named "row N".
HV_CtrlArray* Table(int rows) {
    auto* table = new HV_CtrlArray(2, 3, true, true);
    table->SetColumn(0, "Name", 150);
    table->SetColumn(1, "Size", 60);
    table->SetRowCount(rows);
    for (int i = 0; i < rows; ++i)
        table->SetCellText(i, 0, ("row " + std::to_string(i)).c_str());
    return table;
}

TEST_F(PopupArray, ClickingARowSelectsItAndTellsTheHandler) {
    HV_CtrlArray* table = Table(3);
    ASSERT_TRUE(panel->AddChild(table, 0));
    EXPECT_FALSE(XPIsWidgetVisible(table->scrollBar)); // everything fits
    ClickRow(table, 1);
    EXPECT_EQ(table->GetSelectedRow(), 1);
    ClickRow(table, 2);
    EXPECT_EQ(table->GetSelectedRow(), 2);
    ASSERT_EQ(picks.rows.size(), 2u);
    EXPECT_EQ(picks.rows[0], std::make_pair(static_cast<HV_Panel*>(table), 1L));
    EXPECT_EQ(picks.rows[1], std::make_pair(static_cast<HV_Panel*>(table), 2L));
    // The header selects nothing.
    const Rect r = GeometryOf(table->widget);
    host().click(r.midX(), r.top - 3);
    EXPECT_EQ(picks.rows.size(), 2u);
}

TEST_F(PopupArray, MoreRowsThanFitScrollWithTheScrollBar) {
    HV_CtrlArray* table = Table(10);
    ASSERT_TRUE(panel->AddChild(table, 0));
    ASSERT_TRUE(XPIsWidgetVisible(table->scrollBar));
    EXPECT_EQ(table->GetFirstVisibleRow(), 0);
    EXPECT_FALSE(table->GetRowGeometry(5, nullptr, nullptr, nullptr, nullptr));
    // Scrolled down by the user through the scroll bar's lower end.
    const Rect bar = GeometryOf(table->scrollBar);
    for (int i = 0; i < 20 && table->GetFirstVisibleRow() < 7; ++i)
        host().click(bar.midX(), bar.bottom + 3);
    EXPECT_EQ(table->GetFirstVisibleRow(), 7);
    ClickRow(table, 9);
    EXPECT_EQ(table->GetSelectedRow(), 9);
    char cell[16];
    table->GetCellText(9, 0, cell, sizeof cell);
    EXPECT_STREQ(cell, "row 9");
    // The wheel scrolls back up.
    const Rect r = GeometryOf(table->widget);
    host().scroll(r.midX(), r.midY(), 10);
    EXPECT_EQ(table->GetFirstVisibleRow(), 0);
}

TEST_F(PopupArray, RowCountAndSelectionStayConsistent) {
    HV_CtrlArray* table = Table(10);
    ASSERT_TRUE(panel->AddChild(table, 0));
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
